#include "UnVX03704ImpNFSeAbaseSistemas.h"

#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr std::array<std::string_view, 2> kCancelada = {"SIM", "2"};
constexpr std::array<std::string_view, 2> kRetido = {"1", "S"};

bool ISSRetido(const IXMLServicoAbaseSistemas& servico) {
  return RegInStr(servico.Texto("Valores/IssRetido"), kRetido, 1);
}

// The service's calculation base; nothing when it can't be read.
std::optional<Currency> LerBase(const IXMLServicoAbaseSistemas& servico) {
  try {
    return servico.Valor("Valores/BaseCalculo");
  } catch (const EConversao&) {
    return std::nullopt;
  }
}

}  // namespace

void TNFSeABASESistemas::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeABASESistemas::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    FNota = LoadNfseAbaseSistemas(GetArquivo()).Filho<"InfNfse">();
    CarregarDosDoisLados(GetNota().Texto("Numero"), [&] { CarregarA100(); });
  });
}

String TNFSeABASESistemas::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"PrestadorServico/IdentificacaoPrestador/CpfCnpj">());
}

String TNFSeABASESistemas::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"TomadorServico/IdentificacaoTomador/CpfCnpj">());
}

TDateTime TNFSeABASESistemas::GetData() { return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia); }

bool TNFSeABASESistemas::DocumentoEstaCancelado() const {
  return RegInStr(Maiusculas(GetNota().Texto("Status")), kCancelada, 1);
}

// ISS due to the city where the service was rendered, else to the one that generated the note. The former's code comes
// without a state, so that one without the state's digits stays without them.
String TNFSeABASESistemas::BuscarMunicipioDevidoISS(const IXMLServicoAbaseSistemas& servico) {
  const auto prestacao = servico.Texto("MunicipioPrestacaoServico");
  if (StrToIntDef(prestacao, 0) > 0) return std::to_string(BuscarCodigoMunicipio(prestacao, "", ""));
  const auto gerador = GetNota().Texto("OrgaoGerador/CodigoMunicipio");
  if (StrToIntDef(gerador, 0) > 0)
    return std::to_string(BuscarCodigoMunicipio(gerador, GetNota().Texto("OrgaoGerador/Uf"), ""));
  return MunicipioDaFilial();
}

void TNFSeABASESistemas::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("Numero"), 0), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeABASESistemas::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  FISSRetido = false;
  FValorServicos = FValorDesconto = FValorISS = 0;
  CarregarA170();
  a100.SetVL_DOC(FValorServicos);
  a100.SetVL_DESC(FValorDesconto);
  a100.SetVL_ISS(FValorISS);
  MarcarISSRetido(GetDocumentoTemISSRetido());
}

// Whoever the issuer is, only the state and the number are its own: all else is the taker's.
void TNFSeABASESistemas::Carregar0150() {
  CarregarEmitente([&] { return LerTomador(GetNota().Texto("PrestadorServico/Endereco/Estado")); });
  CarregarDestinatario([&] { return LerTomador(GetNota().Texto("TomadorServico/Endereco/Estado")); });
}

// The city is known by its name only, and is looked for in the state given.
TDadosParte TNFSeABASESistemas::LerTomador(const String& estado) {
  const auto tomador = GetNota().Filho<"TomadorServico">();
  const auto endereco = tomador.Filho<"Endereco">();
  return {.COD_MUN = BuscarCodigoMunicipio("", estado, endereco.Texto("Cidade")),
          .NOME = tomador.Texto("RazaoSocial"),
          .ENDERECO = endereco.Texto("Endereco"),
          .NUM = endereco.Texto("Numero"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = estado,
          .MUNICIPIO = endereco.Texto("Cidade")};
}

Int64 TNFSeABASESistemas::Carregar0200(const IXMLServicoAbaseSistemas& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeABASESistemas::CarregarA170() {
  std::size_t indice = 0;
  for (const auto& servico : GetNota().Itens<"Servicos/Servico">()) CarregarA170(servico, indice++);
}

// Every line is number 1; its place in the note tells it apart.
void TNFSeABASESistemas::CarregarA170(const IXMLServicoAbaseSistemas& servico, std::size_t indice) {
  const auto valores = servico.Filho<"Valores">();
  const auto base = LerBase(servico);
  auto item = NovoA170(Carregar0200(servico));
  item->SetVL_ITEM(valores.Valor("ValorServicos"));
  item->SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("CodigoTributacaoMunicipio")));
  item->SetVL_BC_ISS(base.value_or(0));
  item->SetVL_ISS(valores.Valor("ValorIss"));
  item->SetALIQ_ISS(valores.Valor("Aliquota"));
  item->SetMUNICIPIODEVISS(BuscarMunicipioDevidoISS(servico));
  item->SetChaveCondicaoAdicional(std::to_string(indice));
  FValorServicos += item->GetVL_ITEM();
  FValorDesconto += item->GetVL_DESC();
  FValorISS += item->GetVL_ISS();
  FISSRetido = FISSRetido || ISSRetido(servico);
  AdicionarA170(std::move(item));
  CarregarA17R(servico, base);
}

// Of the ISS, only what this service retains. Without a base that can be read, the taxes are taken from its value.
void TNFSeABASESistemas::CarregarA17R(const IXMLServicoAbaseSistemas& servico, std::optional<Currency> baseLida) {
  const auto valores = servico.Filho<"Valores">();
  if (!baseLida) InserirMensagemDivergencia();
  const auto base = baseLida ? *baseLida : valores.Valor("ValorServicos");
  if (ISSRetido(servico)) InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

}  // namespace impnfse
