#include "VXUtils.h"

#include <algorithm>
#include <filesystem>

namespace impnfse {

String TArquivoInfo::GetExtensao() const { return std::filesystem::path(FArquivo).extension().string(); }

Currency TVXUtilsMatematica::Arredondar(Currency valor, int decimais) {
  std::int64_t passo = Currency::kEscala;
  for (; decimais > 0 && passo > 1; --decimais) passo /= 10;
  const auto resto = valor.DecimosDeMilesimo() % passo;
  const auto truncado = valor - Currency::DeDecimosDeMilesimo(resto);
  if (std::abs(resto) * 2 < passo) return truncado;
  return truncado + Currency::DeDecimosDeMilesimo(resto < 0 ? -passo : passo);
}

bool TVXUtilsStrings::TextoEhSomenteNumerico(std::string_view texto) {
  return !texto.empty() && std::all_of(texto.begin(), texto.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace impnfse
