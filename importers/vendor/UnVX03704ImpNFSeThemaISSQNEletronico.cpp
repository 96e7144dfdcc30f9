#include "UnVX03704ImpNFSeThemaISSQNEletronico.h"

#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"

namespace impnfse {
namespace {

constexpr std::size_t kAlgarismosDoNumero = 15;

// The natures of operation under which the taker retains the ISS.
constexpr std::array<std::string_view, 5> kNaturezasComISSRetido = {"5.1", "6.1", "5.4", "6.4", "5.7"};

}  // namespace

void TNFSeNFSeThemaISSQNEletronico::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeNFSeThemaISSQNEletronico::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadNotasThema(GetArquivo());
    if (!raiz) return;
    PercorrerNotasComProgresso(raiz->Itens<"Nota">(), [&](const IXMLNotaThema& nota) {
      FNota = nota;
      CarregarDosDoisLados(GetNota().Texto("numeroNota"), [&] { CarregarA100(); });
    });
  });
}

TDateTime TNFSeNFSeThemaISSQNEletronico::GetData() { return ConverteData(GetNota().Texto("dataEmissao"), fdAnoMesDia); }

// The letter isn't "normal".
bool TNFSeNFSeThemaISSQNEletronico::DocumentoEstaCancelado() const {
  return Maiusculas(Aparar(GetNota().Texto("situacaoNota"))) == "N";
}

bool TNFSeNFSeThemaISSQNEletronico::DocumentoTemISSRetido() const {
  return RegInStr(BuscarCodigoNatureza(), kNaturezasComISSRetido, kNaturezasComISSRetido.size() - 1);
}

// "[5.1] Tributação no município" has the code 5.1. The blank counts: of "[5.1]Tributação" the bracket stays, and that
// code is none.
String TNFSeNFSeThemaISSQNEletronico::BuscarCodigoNatureza() const {
  const auto natureza = GetNota().Texto("naturezaOperacao");
  const auto colchete = natureza.find(']');
  if (colchete == natureza.npos) return {};
  const auto ateDepois = Primeiros(natureza, Comprimento(natureza.substr(0, colchete)) + 2);
  const auto codigo = Aparar(Ultimos(ateDepois, Comprimento(ateDepois) - 1));
  return String(codigo.empty() ? codigo : Primeiros(codigo, Comprimento(codigo) - 1));
}

// A rate below 10% may be written as a fraction ("0.05"), which its beginning tells: "0.5" is half a percent. A
// fraction that is no number, one with a second decimal mark included, is 0, where another rate raises EConversao.
Currency TNFSeNFSeThemaISSQNEletronico::BuscarAliquotaISSServico() const {
  const auto texto = GetNota().Texto("aliquotaServicos");
  if (Primeiros(texto, 3) != "0.0") return ConverterCurrency(texto);
  if (texto.find_last_of(".,") != texto.find('.')) return 0;
  try {
    return ConverterCurrency(texto) * 100;
  } catch (const EConversao&) {
    return 0;
  }
}

void TNFSeNFSeThemaISSQNEletronico::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(GetNota().Texto("numeroNota"), kAlgarismosDoNumero), 0),
                        DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeNFSeThemaISSQNEletronico::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetSER(GetNota().Texto("serieNota"));
  a100.SetVL_DOC(GetNota().Valor("valorBruto"));
  a100.SetVL_DESC(GetNota().Valor("valorDescontoIncondicionado"));
  a100.SetVL_ISS(GetNota().Valor("valorIss"));
  a100.SetVL_PIS_RET(GetNota().Valor("valorPis"));
  a100.SetVL_COFINS_RET(GetNota().Valor("valorCofins"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

void TNFSeNFSeThemaISSQNEletronico::Carregar0150() {
  CarregarEmitente([&] { return LerParte(GetNota().Texto("nome")); });
  CarregarDestinatario([&] { return LerParte(GetNota().Texto("razaoSocialTomador")); });
}

// The state of the place of service would say nothing about a party: it stays unknown.
TDadosParte TNFSeNFSeThemaISSQNEletronico::LerParte(const String& nome) const {
  return {.COD_MUN = InteiroDosDigitos(GetNota().Texto("municipioPrestacaoServico")),
          .NOME = nome,
          .SemUFDoMunicipio = true};
}

Int64 TNFSeNFSeThemaISSQNEletronico::Carregar0200() {
  return CarregarItem({.DESCR_ITEM = GetNota().Texto("discriminacao"), .COD_LST = GetNota().Texto("itemListaServico")});
}

// The activity is the item of the list as a number: 07.02 becomes 7.02, and 7.10 loses its zero.
void TNFSeNFSeThemaISSQNEletronico::CarregarA170() {
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(GetNota().Valor("valorBruto"));
  item->SetATIVIDADE(FormatarCodigoAtividade(std::to_string(InteiroDosDigitos(GetNota().Texto("itemListaServico")))));
  item->SetVL_BC_ISS(GetNota().Valor("valorBruto"));
  item->SetVL_ISS(GetNota().Valor("valorIss"));
  item->SetALIQ_ISS(BuscarAliquotaISSServico());
  item->SetMUNICIPIODEVISS(MunicipioDevidoISS({GetNota().Texto("municipioPrestacaoServico")}));
  item->SetAUX1(BuscarCodigoNatureza());
  AdicionarA170(std::move(item));
}

void TNFSeNFSeThemaISSQNEletronico::CarregarA17R() {
  const auto valor = [&](TCaminho<kFormatoThema, "Nota"> caminho) { return GetNota().Valor(caminho); };
  const auto base = valor("valorBruto");
  if (DocumentoTemISSRetido()) InserirRetencao(receita::kISS, base, valor("valorIss"), BuscarAliquotaISSServico());
  InserirRetencoesFederais(base, {.IR = valor("valorIr"),
                                  .INSS = valor("valorInss"),
                                  .PIS = valor("valorPis"),
                                  .COFINS = valor("valorCofins"),
                                  .CSLL = valor("valorCsll")});
}

}  // namespace impnfse
