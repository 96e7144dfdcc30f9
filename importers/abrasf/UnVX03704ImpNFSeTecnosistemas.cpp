#include "UnVX03704ImpNFSeTecnosistemas.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

// `NUM_DOC` takes so many digits of a number that begins with the year.
constexpr std::size_t kDigitosDoNumero = 15;

String CNPJCPF(const IXMLCpfCnpjTecnosistemas& documento) {
  const auto cnpj = documento.Texto("Cnpj");
  return Aparar(cnpj).empty() ? documento.Texto("Cpf") : cnpj;
}

TDadosParte LerParte(const String& nome, const IXMLEnderecoTecnosistemas& endereco) {
  auto parte = LerEnderecoNacional(endereco);
  parte.NOME = nome;
  parte.COD_MUN = InteiroDosDigitos(endereco.Texto("CodigoMunicipio"));
  parte.COD_PAIS = CodigoPais(BuscarSomenteNumeros(endereco.Texto("CodigoPais")));
  return parte;
}

// The services of the note, in the form that it has.
std::vector<IXMLServicoTecnosistemas> BuscarServicos(const IXMLDeclaracaoTecnosistemas& declaracao) {
  std::vector<IXMLServicoTecnosistemas> servicos;
  for (const auto& elemento : declaracao.Itens<"Servico">()) {
    const auto dados = elemento.Itens<"DadosServico">();
    if (dados.Count() == 0 && !elemento.Vazio()) servicos.push_back(elemento);
    servicos.insert(servicos.end(), dados.begin(), dados.end());
  }
  return servicos;
}

}  // namespace

void TNFSeTecnosistemas::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeTecnosistemas::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadConsultarNfseRpsRespostaTecnosistemas(GetArquivo());
    if (!raiz) return;
    PercorrerNotasComProgresso(raiz->Itens<"ListaNfse/CompNfse">(), [&](const IXMLCompNfseTecnosistemas& nota) {
      Nota = nota.Filho<"Nfse/InfNfse">();
      if (GetNota().Vazio()) return;
      CarregarDosDoisLados(GetNota().Texto("Numero"), [&] { CarregarA100(); });
    });
  });
}

IXMLDeclaracaoTecnosistemas TNFSeTecnosistemas::Declaracao() const {
  return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

String TNFSeTecnosistemas::GetCNPJCPFEmitente() { return CNPJCPF(Declaracao().Filho<"Prestador/CpfCnpj">()); }

String TNFSeTecnosistemas::GetCNPJCPFDestinatario() {
  return CNPJCPF(Declaracao().Filho<"Tomador/IdentificacaoTomador/CpfCnpj">());
}

String TNFSeTecnosistemas::GetChave() { return GetNota().Texto("CodigoVerificacao"); }

TDateTime TNFSeTecnosistemas::GetData() { return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia); }

// A cancelled note is imported as a note in force: this layout's `NfseCancelamento` isn't looked at. The document is
// net of discounts, its items are gross.
void TNFSeTecnosistemas::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(GetNota().Texto("Numero"), kDigitosDoNumero), 0));
  CarregarExecucaoA100(GetData());
  Somas = {};
  CarregarA170();
  GetDadosA100()->SetVL_DOC(Somas.Documento - Somas.Desconto);
  GetDadosA100()->SetVL_DESC(Somas.Desconto);
  GetDadosA100()->SetVL_ISS(GetNota().Valor("ValoresNfse/ValorIss"));
  MarcarISSRetido(DocumentoTemISSRetido());
  ConcluirA100();
}

// The one participant is the other side of the note, also where the company bills itself.
void TNFSeTecnosistemas::Carregar0150() {
  const auto declaracao = Declaracao();
  if (GetOrigem() == toEntrada) {
    BuscarOuInserirParticipante(
        GetCNPJCPFEmitente(), GetIEEmitente(),
        LerParte(declaracao.Texto("Prestador/RazaoSocial"), GetNota().Filho<"EnderecoPrestadorServico">()));
    return;
  }
  BuscarOuInserirParticipante(GetCNPJCPFDestinatario(), GetIEDestinatario(),
                              LerParte(declaracao.Texto("Tomador/RazaoSocial"), declaracao.Filho<"Tomador/Endereco">()),
                              TSemNumero::NaoParticipa);
}

Int64 TNFSeTecnosistemas::Carregar0200(const IXMLServicoTecnosistemas& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeTecnosistemas::CarregarA170() {
  int numero = 0;
  for (const auto& servico : BuscarServicos(Declaracao())) CarregarA170(servico, ++numero);
  CarregarA17R();
}

void TNFSeTecnosistemas::CarregarA170(const IXMLServicoTecnosistemas& servico, int numero) {
  const auto valores = servico.Filho<"Valores">();
  auto item = NovoA170(Carregar0200(servico), numero);
  // The whole service is the base, deductions included.
  item->SetVL_ITEM(valores.Valor("ValorServicos"));
  item->SetVL_BC_ISS(item->GetVL_ITEM());
  item->SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
  item->SetTPRECOLHIMENTO(servico.Texto("IssRetido"));
  item->SetVL_ISS(valores.Valor("ValorIss"));
  item->SetALIQ_ISS(valores.Valor("Aliquota"));
  item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
  item->SetMUNICIPIODEVISS(
      MunicipioDevidoISS({servico.Texto("MunicipioIncidencia"), servico.Texto("CodigoMunicipio")}));
  item->SetAUX1(BuscarSomenteNumeros(Declaracao().Texto("NaturezaOperacao")));

  Somas.Documento += item->GetVL_ITEM();
  Somas.Desconto += item->GetVL_DESC();
  if (item->GetTPRECOLHIMENTO() == "1") Somas.ISSRetido += item->GetVL_ISS();
  Somas.Federais.IR += valores.Valor("ValorIr");
  Somas.Federais.INSS += valores.Valor("ValorInss");
  Somas.Federais.PIS += valores.Valor("ValorPis");
  Somas.Federais.COFINS += valores.Valor("ValorCofins");
  Somas.Federais.CSLL += valores.Valor("ValorCsll");
  AdicionarA170(std::move(item));
}

void TNFSeTecnosistemas::CarregarA17R() {
  const auto valores = GetNota().Filho<"ValoresNfse">();
  const auto base = valores.Valor("BaseCalculo");
  if (DocumentoTemISSRetido()) InserirRetencao(receita::kISS, base, Somas.ISSRetido, valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, Somas.Federais);
}

}  // namespace impnfse
