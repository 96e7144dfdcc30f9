#include "UnVX03704ImpNFSeTecnosistemasCFSe.h"

#include <fmt/chrono.h>

#include <ctime>

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

// `NUM_DOC` takes so many digits of a number that begins with the year.
constexpr std::size_t kDigitosDoNumero = 15;
constexpr TDateTime kSemData = 0;

}  // namespace

void TNFSeTecnosistemasCFSe::Carregar() {
  TNFSeBase::Carregar();
  CarregarCFSe();
}

void TNFSeTecnosistemasCFSe::CarregarCFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadConsultarCupomFiscalRespostaTecnosistemasCFSe(GetArquivo());
    if (!raiz) return;
    PercorrerNotasComProgresso(raiz->Itens<"ListaCupomFiscal/CupomFiscal">(),
                               [&](const IXMLCupomFiscalTecnosistemasCFSe& nota) {
                                 FNota = nota;
                                 CarregarDosDoisLados(GetNota().Texto("Numero"), [&] { CarregouA100(); });
                               });
  });
}

String TNFSeTecnosistemasCFSe::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"Prestador/CpfCnpj">());
}

String TNFSeTecnosistemasCFSe::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"DadosTomador/CpfCnpj">());
}

// Today, which places the receipt on a period and goes no further.
TDateTime TNFSeTecnosistemasCFSe::GetData() {
  constexpr int kAnoZero = 1900;
  const auto hoje = fmt::localtime(std::time(nullptr));
  return DataDe(kAnoZero + hoje.tm_year, 1 + hoje.tm_mon, hoje.tm_mday);
}

// A cancelled receipt is imported as one in force: its `Status` isn't looked at. The document is net of discounts, its
// items are gross.
void TNFSeTecnosistemasCFSe::CarregouA100() {
  IniciarA100();
  FISSRetido = false;
  Carregou0150();
  CarregarIdentificacaoA100();
  auto& a100 = *GetDadosA100();
  a100.SetNUM_DOC(StrToInt64Def(Ultimos(GetNota().Texto("Numero"), kDigitosDoNumero), 0));
  CarregarExecucaoA100(kSemData);
  FValorServicos = FValorDesconto = FValorISS = 0;
  CarregouA170();
  a100.SetVL_DESC(FValorDesconto);
  a100.SetVL_DOC(FValorServicos - FValorDesconto);
  a100.SetVL_ISS(FValorISS);
  MarcarISSRetido(DocumentoTemISSRetido());
  ConcluirA100();
}

// The one participant is the other side of the receipt, also where the company bills itself. The taker is a number and
// a name.
void TNFSeTecnosistemasCFSe::Carregou0150() {
  if (GetOrigem() == toEntrada) {
    const auto endereco = GetNota().Filho<"EnderecoPrestador">();
    auto parte = LerEnderecoNacional(endereco);
    parte.NOME = GetNota().Texto("Prestador/RazaoSocial");
    parte.COD_MUN = InteiroDosDigitos(endereco.Texto("CodigoMunicipio"));
    parte.COD_PAIS = CodigoPais(InteiroDosDigitos(endereco.Texto("CodigoPais")));
    parte.IDREG0000 = GetIDREG0000();
    BuscarOuInserirParticipante(GetCNPJCPFEmitente(), GetIEEmitente(), parte);
    return;
  }
  BuscarOuInserirParticipante(GetCNPJCPFDestinatario(), GetIEDestinatario(),
                              {.NOME = GetNota().Texto("DadosTomador/Nome"), .SemUFDoMunicipio = true},
                              TSemNumero::NaoParticipa);
}

Int64 TNFSeTecnosistemasCFSe::Carregou0200(const IXMLTcDadosServicoTecnosistemasCFSe& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeTecnosistemasCFSe::CarregouA170() {
  const auto servicos = GetNota().Itens<"Servicos/DadosServico">();
  int numero = 0;
  for (const auto& servico : servicos) CarregouA170(servico, ++numero, servicos.Count() == 1);
}

// The whole service is the base, unless it is the receipt's only one, whose base is the receipt's.
void TNFSeTecnosistemasCFSe::CarregouA170(const IXMLTcDadosServicoTecnosistemasCFSe& servico, int numero, bool unico) {
  const auto valores = servico.Filho<"Valores">();
  auto item = NovoA170(Carregou0200(servico), numero);
  item->SetVL_ITEM(valores.Valor("ValorServicos"));
  item->SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
  item->SetTPRECOLHIMENTO(servico.Texto("IssRetido"));
  item->SetVL_BC_ISS(unico ? GetNota().Valor("Valores/BaseCalculo") : item->GetVL_ITEM());
  item->SetVL_ISS(valores.Valor("ValorIss"));
  item->SetALIQ_ISS(valores.Valor("Aliquota"));
  item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
  item->SetMUNICIPIODEVISS(
      MunicipioDevidoISS({servico.Texto("MunicipioIncidencia"), servico.Texto("CodigoMunicipio")}));
  FValorServicos += item->GetVL_ITEM();
  FValorDesconto += item->GetVL_DESC();
  FValorISS += item->GetVL_ISS();
  FISSRetido = FISSRetido || item->GetTPRECOLHIMENTO() == "1";
  AdicionarA170(std::move(item));
  CarregouA17R(servico);
}

// Once a service retained ISS, all that come behind it carry theirs as retained too, whatever they say.
void TNFSeTecnosistemasCFSe::CarregouA17R(const IXMLTcDadosServicoTecnosistemasCFSe& servico) {
  const auto valores = servico.Filho<"Valores">();
  const auto calculo = valores.Valor("BaseCalculo");
  const auto base = calculo > 0 ? calculo : valores.Valor("ValorServicos");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

}  // namespace impnfse
