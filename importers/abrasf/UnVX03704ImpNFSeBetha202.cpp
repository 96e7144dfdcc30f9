#include "UnVX03704ImpNFSeBetha202.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

// The last characters of a number, which begins with the year.
constexpr std::size_t kCaracteresDoNumero = 11;

}  // namespace

void TNFSeBetha202::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeBetha202::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadConsultarNfseRespostaBetha202(GetArquivo());
    if (!raiz) return;
    PercorrerNotasComProgresso(raiz->Itens<"ListaNfse/CompNfse">(), [&](const IXMLCompNfseBetha202& comp) {
      FNota = comp.Filho<"Nfse/InfNfse">();
      FNotaCancelada = !comp.Texto("NfseCancelamento/Confirmacao/DataHora").empty();
      if (GetNota().Vazio()) return;
      const auto numero = GetNota().Texto("Numero");
      CarregarDosDoisLados(
          numero, [&] { CarregarA100(); }, "Documento: " + numero + " - ");
    });
  });
}

IXMLInfDeclaracaoBetha202 TNFSeBetha202::GetDeclaracao() const {
  return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

// Neither number loses its punctuation: one that has any is nobody's branch.
String TNFSeBetha202::GetCNPJCPFEmitente() {
  return GetNota().Texto("PrestadorServico/IdentificacaoPrestador/CpfCnpj/Cnpj");
}

String TNFSeBetha202::GetCNPJCPFDestinatario() { return GetTomador().Texto("IdentificacaoTomador/CpfCnpj/Cnpj"); }

String TNFSeBetha202::GetChave() { return String(Aparar(GetNota().Texto("CodigoVerificacao"))); }

TDateTime TNFSeBetha202::GetData() { return ConverterDataPelaBarra(GetNota().Texto("DataEmissao")); }

bool TNFSeBetha202::DocumentoTemISSRetido() const {
  const auto retido = Maiusculas(GetDeclaracao().Texto("Servico/IssRetido"));
  return retido == "1" || retido == "S";
}

Currency TNFSeBetha202::BuscarValorDocumento() const {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  const auto valor = valores.Valor("ValorServicos") - valores.Valor("DescontoIncondicionado");
  return valor > 0 ? valor : GetNota().Valor("ValoresNfse/ValorLiquidoNfse");
}

// The service was done when its provisional receipt was given.
TDateTime TNFSeBetha202::BuscarDataExecucaoOuConclusaoServico() {
  const auto data = ConverteData(GetDeclaracao().Texto("Rps/DataEmissao"), fdAnoMesDia);
  return data > 0 ? data : GetData();
}

String TNFSeBetha202::BuscarCodigoMunicipioDevidoISS() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  return MunicipioDevidoISS({servico.Texto("MunicipioIncidencia"), servico.Texto("CodigoMunicipio"),
                             GetTomador().Texto("Endereco/CodigoMunicipio")});
}

void TNFSeBetha202::CarregarA100() {
  IniciarA100();
  Carregar0150();
  const auto numero = GetNota().Texto("Numero");
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(numero, kCaracteresDoNumero), 0), FNotaCancelada);
  if (!FNotaCancelada) {
    CarregarExecucaoA100(BuscarDataExecucaoOuConclusaoServico());
    const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
    auto& a100 = *GetDadosA100();
    a100.SetVL_DOC(BuscarValorDocumento());
    a100.SetVL_DESC(valores.Valor("DescontoIncondicionado"));
    a100.SetVL_ISS(valores.Valor("ValorIss"));
    a100.SetVL_PIS_RET(valores.Valor("ValorPis"));
    a100.SetVL_COFINS_RET(valores.Valor("ValorCofins"));
    MarcarISSRetido(DocumentoTemISSRetido());
    CarregarA17R();
    CarregarA170();
  }
  ConcluirA100();
}

void TNFSeBetha202::Carregar0150() {
  CarregarEmitente([&] {
    auto dados = LerParteNacional(GetNota().Filho<"PrestadorServico">());
    dados.OPTANTESIMPLES = GetDeclaracao().Texto("OptanteSimplesNacional") == "1" ? "S" : "N";
    return dados;
  });
  CarregarDestinatario([&] { return LerParteNacional(GetTomador()); }, {.PropriaEmpresa = true});
}

Int64 TNFSeBetha202::Carregar0200() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeBetha202::CarregarA17R() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  const auto base = GetNota().Valor("ValoresNfse/BaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

// The item has no discount; the document has it.
void TNFSeBetha202::CarregarA170() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  const auto valores = servico.Filho<"Valores">();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(valores.Valor("ValorServicos"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
  item->SetVL_BC_ISS(GetNota().Valor("ValoresNfse/BaseCalculo"));
  item->SetVL_ISS(valores.Valor("ValorIss"));
  item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
  item->SetALIQ_ISS(valores.Valor("Aliquota"));
  item->SetMUNICIPIODEVISS(BuscarCodigoMunicipioDevidoISS());
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
