#include "LinhasCSV.h"

#include <fmt/format.h>

#include "VX03704Erros.h"
#include "VXUtilsLista.h"

namespace impnfse {
namespace {

std::vector<String> Celulas(std::string_view linha) {
  std::vector<String> celulas;
  for (;;) {
    const auto fim = linha.find(';');
    celulas.emplace_back(Aparar(linha.substr(0, fim)));
    if (fim == linha.npos) return celulas;
    linha.remove_prefix(fim + 1);
  }
}

}  // namespace

std::vector<TLinhaCSV> LerCSV(std::string_view csv, std::string_view cabecalho) {
  TStringList linhas;
  linhas.SetText(csv);
  if (linhas.Count() == 0 || Celulas(linhas[0]) != Celulas(cabecalho))
    throw EConversao(fmt::format("A primeira linha deve ser {}.", cabecalho));
  const auto colunas = Celulas(cabecalho).size();

  std::vector<TLinhaCSV> resultado;
  for (std::size_t i = 1; i < linhas.Count(); ++i) {
    if (Aparar(linhas[i]).empty()) continue;
    auto celulas = Celulas(linhas[i]);
    if (celulas.size() != colunas)
      throw EConversao(fmt::format("Linha {}: {} colunas, onde devem ser {}.", i + 1, celulas.size(), colunas));
    resultado.push_back({i + 1, std::move(celulas)});
  }
  return resultado;
}

}  // namespace impnfse
