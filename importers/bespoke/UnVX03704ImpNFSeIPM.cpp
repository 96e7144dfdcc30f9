#include "UnVX03704ImpNFSeIPM.h"

#include <fmt/format.h>

#include <algorithm>

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

// The files leave the zeros at the left of a CNPJ or CPF out. A party without a number is all zeros, not nobody.
String CompletarCNPJ(const String& numero) { return fmt::format("{:0>14}", numero); }
String CompletarCPF(const String& numero) { return fmt::format("{:0>11}", numero); }

// The taker retains the ISS of a service in situation 1 and in situation 4.
bool TemISSRetido(const IXMLIPM<"Lista">& lista) {
  const auto situacao = StrToIntDef(lista.Texto("situacao_tributaria"), 0);
  return situacao == 1 || situacao == 4;
}

}  // namespace

void TNFSeIPM::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeIPM::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    FNota = LoadnfseIPM(GetArquivo());
    CarregarDosDoisLados(GetNota().Texto("nf/numero_nfse"), [&] { CarregarA100(); });
  });
}

String TNFSeIPM::GetCNPJCPFEmitente() { return CompletarCNPJ(GetNota().Texto("prestador/cpfcnpj")); }

String TNFSeIPM::GetCNPJCPFDestinatario() {
  const auto numero = GetNota().Texto("tomador/cpfcnpj");
  return Maiusculas(GetNota().Texto("tomador/tipo")) == "J" ? CompletarCNPJ(numero) : CompletarCPF(numero);
}

String TNFSeIPM::GetIEDestinatario() { return GetNota().Texto("tomador/ie"); }

TDateTime TNFSeIPM::GetData() { return ConverteData(GetNota().Texto("nf/data_nfse"), fdDiaMesAno); }

bool TNFSeIPM::DocumentoEstaCancelado() const {
  return StrToIntDef(GetNota().Texto("nf/situacao_codigo_nfse"), 0) == 2;
}

bool TNFSeIPM::DocumentoTemISSRetido() const {
  const auto itens = GetNota().Itens<"itens/lista">();
  return std::any_of(itens.begin(), itens.end(), TemISSRetido);
}

// The mark of retained ISS is the auxiliary text here, on a cancelled note as well. The number is the end of a longer
// one that begins with the year.
void TNFSeIPM::CarregarA100() {
  IniciarA100();
  FValorISS = {};
  Carregar0150();
  const auto nf = GetNota().Filho<"nf">();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(nf.Texto("numero_nfse"), 11), 0), DocumentoEstaCancelado());
  GetDadosA100()->SetSER(nf.Texto("serie_nfse"));
  if (DocumentoTemISSRetido()) GetDadosA100()->SetAUX1("1");
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

// The ISS of the note is what its services come to.
void TNFSeIPM::CarregarValoresA100() {
  const auto nf = GetNota().Filho<"nf">();
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(nf.Valor("valor_total"));
  a100.SetVL_DESC(nf.Valor("valor_desconto"));
  CarregarA170();
  CarregarA17R();
  a100.SetVL_PIS_RET(nf.Valor("valor_pis"));
  a100.SetVL_COFINS_RET(nf.Valor("valor_cofins"));
  a100.SetVL_ISS(FValorISS);
}

// The participants
// ---------------------------------------------------------------------------------------------------

// Of an issuer the number is all: the format has no name, and the city isn't read.
void TNFSeIPM::Carregar0150() {
  CarregarEmitente([] { return TDadosParte{}; });
  CarregarDestinatario([&] {
    const auto tomador = GetNota().Filho<"tomador">();
    return TDadosParte{.COD_MUN = BuscarCodigoMunicipioTomador(),
                       .NOME = tomador.Texto("nome_razao_social"),
                       .ENDERECO = tomador.Texto("logradouro"),
                       .COMPL = tomador.Texto("complemento"),
                       .BAIRRO = tomador.Texto("bairro"),
                       .MUNICIPIO = tomador.Texto("cidade")};
  });
}

// The postal code decides; where it tells nothing, the first municipality of that name in any state.
int TNFSeIPM::BuscarCodigoMunicipioTomador() {
  return BuscarCodigoMunicipio(BuscarMunicipioPorCEP(GetNota().Texto("tomador/cep")), "",
                               GetNota().Texto("tomador/cidade"));
}

// The items and the retained taxes
// -----------------------------------------------------------------------------------

Int64 TNFSeIPM::Carregar0200(const IXMLIPM<"Lista">& lista) {
  return CarregarItem(
      {.DESCR_ITEM = String(Aparar(lista.Texto("descritivo"))), .COD_LST = lista.Texto("codigo_item_lista_servico")});
}

void TNFSeIPM::CarregarA170() {
  int numero = 0;
  for (const auto& lista : GetNota().Itens<"itens/lista">()) CarregarA170(lista, ++numero);
}

// A service without a rate has no base, though it may have ISS. Its quantity isn't read: the value is the line's whole.
void TNFSeIPM::CarregarA170(const IXMLIPM<"Lista">& lista, int numero) {
  const auto tributavel = lista.Valor("valor_tributavel");
  const auto aliquota = lista.Valor("aliquota_item_lista_servico");
  const auto iss = lista.Valor("valor_issrf");
  auto item = NovoA170(Carregar0200(lista), numero);
  item->SetVL_ITEM(tributavel);
  item->SetATIVIDADE(FormatarCodigoAtividade(lista.Texto("codigo_item_lista_servico")));
  item->SetALIQ_ISS(aliquota);
  if (aliquota > 0) item->SetVL_BC_ISS(tributavel);
  item->SetVL_ISS(iss);
  FValorISS += iss;
  item->SetDEDUCAOISS(lista.Valor("valor_deducao"));
  item->SetMUNICIPIODEVISS(BuscarCodigoMunicipioDevidoISS(lista));
  item->SetAUX1(String(Aparar(lista.Texto("situacao_tributaria"))));
  AdicionarA170(std::move(item));
  if (TemISSRetido(lista)) InserirRetencao(receita::kISS, tributavel, iss, aliquota);
}

// "1" and "N" both say that the ISS is due where the service was rendered, whose code is the federal revenue service's;
// an unknown place gives way to the participant's.
String TNFSeIPM::BuscarCodigoMunicipioDevidoISS(const IXMLIPM<"Lista">& lista) {
  const auto tributa = Maiusculas(Aparar(lista.Texto("tributa_municipio_prestador")));
  if (tributa != "1" && tributa != "N") return MunicipioDaFilial();
  return MunicipioDevidoISS({BuscarMunicipioPorSRF(lista.Texto("codigo_local_prestacao_servico")),
                             std::to_string(GetDados0150()->GetCOD_MUN())});
}

void TNFSeIPM::CarregarA17R() {
  const auto nf = GetNota().Filho<"nf">();
  InserirRetencoesFederais(nf.Valor("valor_total"), {.IR = nf.Valor("valor_ir"),
                                                     .INSS = nf.Valor("valor_inss"),
                                                     .PIS = nf.Valor("valor_pis"),
                                                     .COFINS = nf.Valor("valor_cofins"),
                                                     .CSLL = nf.Valor("valor_contribuicao_social")});
}

}  // namespace impnfse
