// The items of a note of the national schema. A note has one service with one description and its totals, but vendors
// smuggle item lists into the description; then the note's values are spread over the items.
#include <algorithm>
#include <cctype>

#include "UnVX03704BaseFuncoes.h"
#include "UnVX03704ImpNFSeAbrasf.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr std::string_view kDescricao = "Descrição";
constexpr std::string_view kGrupos = "[[Descricao=";

// The company's setting that takes the word "Valor:" out of a description.
constexpr Int64 kRemoverValor = 4;

// A number of the service list, without its dots.
int CodigoLST(const String& texto) { return InteiroDosDigitos(texto); }

// The activity as the municipality taxes it, or when the note is silent about that, as the national list has it.
String Tributacao(const IXMLDadosServicoAbrasf& servico) {
  const auto codigo = servico.Texto("CodigoTributacaoMunicipio");
  return Aparar(codigo).empty() ? servico.Texto("ItemListaServico") : codigo;
}

void LerRetidos(TItensNFSe& item, const IXMLValoresAbrasf& valores) {
  item.FValorIssRetido = ConverterCurrency(LerValorIssRetido(valores));
  const auto federais = LerRetencoesNacionais(valores);
  item.FValorCOFINS = federais.COFINS;
  item.FValorPIS = federais.PIS;
  item.FValorCSLL = federais.CSLL;
  item.FValorINSS = federais.INSS;
  item.FValorIR = federais.IR;
}

// A list in brackets without what stands outside of them, nor the blanks at the beginning of a field. Any other text is
// the answer as it was given.
String RetirarEspacosEmBranco(const String& texto) {
  const auto t = Aparar(texto);
  if (t.starts_with(kDescricao) || !t.starts_with('{')) return texto;
  String resultado;
  bool fora = true;
  for (std::size_t i = 0; i < t.size();) {
    const char c = t[i++];
    if (c == '[') {
      resultado += c;
      while (i < t.size() && t[i] == ' ') ++i;
      fora = false;
    } else if (c == ']') {
      fora = true;
      resultado += c;
    } else if (!fora) {
      resultado += c;
    }
    if (resultado.size() == 2 && resultado != "[[") return texto;
  }
  return resultado;
}

// Without every occurrence of the word, in small letters and in capitals.
String SemPalavra(const String& texto, std::string_view palavra) {
  const auto iguais = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
  String resultado;
  auto inicio = texto.begin();
  for (;;) {
    const auto achada = std::search(inicio, texto.end(), palavra.begin(), palavra.end(), iguais);
    resultado.append(inicio, achada);
    if (achada == texto.end()) return resultado;
    inicio = achada + static_cast<std::ptrdiff_t>(palavra.size());
  }
}

// Cuts the part ahead of the mark off the text, and the mark with it. Nothing when the mark isn't there.
std::optional<std::string_view> CortarAte(std::string_view& texto, std::string_view marca) {
  const auto posicao = texto.find(marca);
  if (posicao == texto.npos) return std::nullopt;
  const auto parte = texto.substr(0, posicao);
  texto.remove_prefix(posicao + marca.size());
  return parte;
}

}  // namespace

TListaItensNFSe TNFSeAbrasf::BuscarProdutos(const String& texto) {
  const auto s = RetirarEspacosEmBranco(texto);
  if (s.starts_with(kDescricao)) return {ProdutoDescricao(s)};
  if (s.starts_with(kGrupos)) return ProdutosEntreColchetes(s);
  return {ProdutoUnico(s)};
}

bool TNFSeAbrasf::ServicoTemISSRetido() const {
  const auto retido = LerIssRetido(GetServico());
  return retido == "1" || retido == "S";
}

// A text that begins with the word "Descrição".
TItensNFSe TNFSeAbrasf::ProdutoDescricao(const String& s) {
  // The word goes, and the character behind it.
  String descricao = s.substr(Primeiros(s, Comprimento(kDescricao) + 1).size());
  const auto configuracao = GetDadosEmpresaImportacao()->GetConfiguracao()->GetConfiguracao();
  descricao = BIN_IN(kRemoverValor, configuracao.REMOVERCARACTERES) ? SemPalavra(descricao, "Valor:")
                                                                    : Substituir(descricao, "\n", " ");
  const auto servico = GetServico();
  const auto valores = servico.Filho<"Valores">();
  const auto valor = [&](TCaminho<kFormatoAbrasf, "ValoresDeclaracaoServico"> caminho) {
    return valores.Valor(caminho);
  };
  TItensNFSe item{.FNumeroItem = 1, .FDescricao = std::move(descricao)};
  item.FValor = item.FValorUnitario = valor("ValorServicos");
  item.FDesconto = valor("DescontoIncondicionado");
  item.FDeducao = valor("ValorDeducoes");
  item.FBaseCalculoISS = item.FBaseCalculoA17R = valor("BaseCalculo");
  item.FAliquotaISS = valor("Aliquota");  // also a fraction stays as it is
  item.FValorISS = valor("ValorIss");
  LerRetidos(item, valores);
  item.FISSRetido = ServicoTemISSRetido();
  item.FCOD_LST = CodigoLST(servico.Texto("ItemListaServico"));
  item.FCodigoAtividade = FormatarCodigoAtividade(Tributacao(servico));
  return item;
}

// A list of items in double brackets, each a row of fields [key=value]. The note's ISS is spread over them: each gets
// its own by its base and rate, and the last one what the rounding has left, so that they add up to the note's.
TListaItensNFSe TNFSeAbrasf::ProdutosEntreColchetes(std::string_view s) {
  const auto servico = GetServico();
  const auto valores = servico.Filho<"Valores">();
  const auto valor = [&](TCaminho<kFormatoAbrasf, "ValoresDeclaracaoServico"> caminho) {
    return valores.Valor(caminho);
  };
  const auto iss = valor("ValorIss");
  const auto aliquota = BuscarAliquotaISSServico(valores.Texto("Aliquota"));
  const bool retido = ServicoTemISSRetido();
  auto saldo = iss;
  TListaItensNFSe itens;
  while (const auto cortado = CortarAte(s, "]]")) {
    const auto grupo = Substituir(*cortado, "[[", "[") + "]";
    const bool primeiro = itens.empty();
    auto& item = itens.emplace_back();
    item.FNumeroItem = static_cast<int>(itens.size());
    item.FAliquotaISS = aliquota;
    for (std::string_view campos = grupo; !campos.empty();)
      if (!LerCampoEntreColchetes(campos, item)) break;
    item.FISSRetido = retido;
    if (primeiro) {  // retained taxes stay whole
      LerRetidos(item, valores);
      item.FBaseCalculoA17R = valor("BaseCalculo");
    }
    if (iss > 0) {
      const auto bruto = item.FValor > 0 ? item.FValor : item.FValorUnitario * item.FQuantidade;
      item.FBaseCalculoISS = Arredondar(bruto - item.FDeducao - item.FDesconto);
      item.FValorISS = Arredondar(AplicarAliquota(item.FBaseCalculoISS, item.FAliquotaISS));
      saldo -= item.FValorISS;
      if (s.empty()) item.FValorISS += saldo;
    }
    if (item.FCodigoAtividade.empty()) item.FCodigoAtividade = FormatarCodigoAtividade(Tributacao(servico));
    if (saldo < 0) saldo = 0;  // what is too much isn't taken from the items that follow
  }
  return itens;
}

// Takes one field off the group. False when it isn't closed: the group ends there.
bool TNFSeAbrasf::LerCampoEntreColchetes(std::string_view& grupo, TItensNFSe& item) {
  const auto chave = CortarAte(grupo, "=");
  const auto achado = chave ? CortarAte(grupo, "]") : std::nullopt;
  if (!achado) return false;
  const String valor(*achado);
  if (*chave == "[Descricao") {
    item.FDescricao = valor;
  } else if (*chave == "[Quantidade") {
    const auto quantidade = ConverterCurrency(valor);
    item.FQuantidade = quantidade > 0 ? quantidade : 1;
  } else if (*chave == "[ValorUnitario") {
    item.FValorUnitario = ConverterCurrency(valor);
  } else if (*chave == "[Valor" || *chave == "[ValorTotal") {
    item.FValor = ConverterCurrency(valor);
  } else if (*chave == "[Deducoes") {
    item.FDeducao = ConverterCurrency(valor);
  } else if (*chave == "[DescontoIncondicionado") {
    item.FDesconto = ConverterCurrency(valor);
  } else if (*chave == "[ItemServico" || *chave == "[itemServico") {
    item.FCodigoAtividade = FormatarCodigoAtividade(valor);
    item.FCOD_LST = CodigoLST(valor);
  } else if (*chave == "[Aliquota" || *chave == "[aliquota") {
    item.FAliquotaISS = BuscarAliquotaISSServico(valor);
  }
  return true;
}

// Any other text is one item. In the answer to an RPS the values of the service are often absent: what gave nothing
// there is read a second time from the note's.
TItensNFSe TNFSeAbrasf::ProdutoUnico(const String& s) {
  const auto servico = GetServico();
  const auto valores = servico.Filho<"Valores">();
  const auto daNota = GetNota().Filho<"ValoresNfse">();
  const bool ehRps = EhForma({eaConsultarNfseRpsResposta});
  using TCaminhoValores = TCaminho<kFormatoAbrasf, "ValoresDeclaracaoServico">;
  using TCaminhoNota = TCaminho<kFormatoAbrasf, "ValoresNfse">;
  const auto ouDaNota = [&](Currency doServico, TCaminhoNota caminho) {
    return ehRps && doServico == 0 ? daNota.Valor(caminho) : doServico;
  };
  const auto valor = [&](TCaminhoValores caminho) { return valores.Valor(caminho); };

  TItensNFSe item{.FNumeroItem = 1, .FDescricao = s};
  item.FISSRetido = ServicoTemISSRetido() || (ehRps && LerIssRetido(GetDeclaracao().Filho<"Servico">()) == "1");
  item.FValor = item.FValorUnitario = ouDaNota(valor("ValorServicos"), "ValorLiquidoNfse");
  item.FDesconto = valor("DescontoIncondicionado");
  item.FDeducao = valor("ValorDeducoes");
  item.FBaseCalculoISS = valor("BaseCalculo");
  if ((EhForma({eaConsultarNfseRpsResposta, eaConsultarNfseFaixaResposta}) && item.FBaseCalculoISS == 0) ||
      EhLeiaute("58"))
    item.FBaseCalculoISS = daNota.Valor("BaseCalculo");
  item.FBaseCalculoA17R = item.FBaseCalculoISS;
  item.FAliquotaISS = BuscarAliquotaISSServico(valores.Texto("Aliquota"));
  if (ehRps && item.FAliquotaISS == 0) item.FAliquotaISS = BuscarAliquotaISSServico(daNota.Texto("Aliquota"));
  item.FValorISS = ouDaNota(valor("ValorIss"), "ValorIss");
  item.FValorCOFINS = ouDaNota(valor("ValorCofins"), "valorCofins");
  item.FValorPIS = ouDaNota(valor("ValorPis"), "valorPis");
  item.FValorIssRetido = ouDaNota(ConverterCurrency(LerValorIssRetido(valores)), "ValorIssRetido");
  if (ehRps && item.FValorIssRetido == 0 && item.FISSRetido) {
    item.FValorIssRetido = item.FValorISS;
    item.FValorISS = 0;
  }
  item.FValorCSLL = ouDaNota(valor("ValorCsll"), "valorCsll");
  item.FValorINSS = ouDaNota(valor("ValorInss"), "valorInss");
  item.FValorIR = ouDaNota(valor("ValorIr"), "valorIr");

  const auto itemLista = servico.Texto("ItemListaServico");
  item.FCOD_LST = CodigoLST(itemLista);
  if (EhLeiaute("17"))
    item.FCodigoAtividade = itemLista;
  else
    item.FCodigoAtividade =
        FormatarCodigoAtividade(EhLeiaute("51") || EhLeiaute("58") ? itemLista : Tributacao(servico));
  return item;
}

}  // namespace impnfse
