#include "TabelaDeServicos.h"

#include <algorithm>
#include <vector>

#include "DadosEmbutidos.h"
#include "VXUtilsLista.h"

namespace impnfse {
namespace {

// A line is the code, ";" and the text, between quotes when it has a ";" itself.
TLinhaServico LerLinha(std::string_view linha) {
  const auto separador = linha.find(';');
  auto texto = linha.substr(separador + 1);
  if (texto.starts_with('"')) texto = texto.substr(1, texto.size() - 2);
  return {StrToIntDef(linha.substr(0, separador), 0), String(texto)};
}

std::vector<TLinhaServico> LerServicos() {
  TStringList linhas;
  linhas.SetText(embutidos::kServicosCSV);
  linhas.Delete(0);  // the header
  std::vector<TLinhaServico> servicos;
  for (const auto& linha : linhas) servicos.push_back(LerLinha(linha));
  return servicos;
}

}  // namespace

std::span<const TLinhaServico> ServicosDaLista() {
  static const auto servicos = LerServicos();
  return servicos;
}

String DescricaoDoServico(int codigo) {
  const auto servicos = ServicosDaLista();
  const auto achado = std::ranges::lower_bound(servicos, codigo, {}, &TLinhaServico::CODIGO);
  return achado != servicos.end() && achado->CODIGO == codigo ? achado->DESCRICAO : String();
}

}  // namespace impnfse
