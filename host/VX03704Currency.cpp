#include "VX03704Currency.h"

#include <fmt/format.h>

#include <cctype>
#include <limits>
#include <stdexcept>

#include "VX03704Erros.h"
#include "VXUtilsTexto.h"

namespace impnfse {
namespace {

__extension__ using Inteiro128 = __int128;

std::int64_t Caber(Inteiro128 valor) {
  if (valor > std::numeric_limits<std::int64_t>::max() || valor < std::numeric_limits<std::int64_t>::min())
    throw std::overflow_error("valor fora do intervalo de Currency");
  return static_cast<std::int64_t>(valor);
}

// The position of the decimal mark, or npos when the text has none.
std::size_t PosicaoDaVirgulaDecimal(std::string_view texto) {
  const auto ponto = texto.rfind('.');
  const auto virgula = texto.rfind(',');
  if (ponto != texto.npos && virgula != texto.npos) return std::max(ponto, virgula);
  const auto marca = ponto != texto.npos ? ponto : virgula;
  if (marca == texto.npos) return marca;
  const bool agrupaMilhares = texto.find(texto[marca]) != marca;
  return agrupaMilhares ? texto.npos : marca;
}

}  // namespace

Currency Currency::operator+(Currency outro) const {
  return DeDecimosDeMilesimo(Caber(Inteiro128{FDecimosDeMilesimo} + outro.FDecimosDeMilesimo));
}

Currency Currency::operator-(Currency outro) const {
  return DeDecimosDeMilesimo(Caber(Inteiro128{FDecimosDeMilesimo} - outro.FDecimosDeMilesimo));
}

Currency Currency::operator*(Currency outro) const {
  return DeDecimosDeMilesimo(Caber(Inteiro128{FDecimosDeMilesimo} * outro.FDecimosDeMilesimo / kEscala));
}

Currency Currency::operator/(Currency outro) const {
  if (outro.FDecimosDeMilesimo == 0) throw std::domain_error("divisão de um valor por zero");
  const auto dividendo = Inteiro128{FDecimosDeMilesimo} * kEscala;
  const Inteiro128 divisor = outro.FDecimosDeMilesimo;
  const auto resto = dividendo % divisor;
  const auto modulo = [](Inteiro128 valor) { return valor < 0 ? -valor : valor; };
  const bool arredonda = modulo(resto) * 2 >= modulo(divisor);
  const Inteiro128 passo = (dividendo < 0) == (divisor < 0) ? 1 : -1;
  return DeDecimosDeMilesimo(Caber(dividendo / divisor + (arredonda ? passo : 0)));
}

std::string Currency::Texto() const {
  const bool negativo = FDecimosDeMilesimo < 0;
  const auto modulo =
      negativo ? 0 - static_cast<std::uint64_t>(FDecimosDeMilesimo) : static_cast<std::uint64_t>(FDecimosDeMilesimo);
  return fmt::format("{}{}.{:04}", negativo ? "-" : "", modulo / kEscala, modulo % kEscala);
}

std::string Currency::TextoCurto() const {
  auto texto = Texto();
  for (int i = 0; i < 2 && texto.back() == '0'; ++i) texto.pop_back();
  return texto;
}

Currency AplicarAliquota(Currency base, Currency aliquota) {
  constexpr Inteiro128 kPorCento = 100 * Currency::kEscala;
  return Currency::DeDecimosDeMilesimo(
      Caber(Inteiro128{base.DecimosDeMilesimo()} * aliquota.DecimosDeMilesimo() / kPorCento));
}

Currency ConverterCurrency(std::string_view texto) {
  const auto invalido = [&] { return EConversao(fmt::format("'{}' não é um valor decimal válido", texto)); };
  std::string_view resto = Aparar(texto);
  if (resto.empty()) return {};

  const bool negativo = resto.front() == '-';
  if (negativo || resto.front() == '+') resto.remove_prefix(1);

  const auto marca = PosicaoDaVirgulaDecimal(resto);
  // A decimal mark stands once, whatever groups the thousands.
  if (marca != resto.npos && resto.find(resto[marca]) != marca) throw invalido();
  // One more than the largest value: the smallest one's digits.
  constexpr Inteiro128 kLimite = Inteiro128{std::numeric_limits<std::int64_t>::max()} + 1;
  Inteiro128 valor = 0;
  int decimais = 0;
  bool temDigito = false;
  bool arredondaParaCima = false;
  for (std::size_t i = 0; i < resto.size(); ++i) {
    const char c = resto[i];
    if (c == '.' || c == ',') continue;  // the decimal mark, or one that groups thousands ahead of it
    if (c < '0' || c > '9') throw invalido();
    temDigito = true;
    const bool ehDecimal = marca != resto.npos && i > marca;
    if (ehDecimal && decimais == 4) {
      arredondaParaCima = c >= '5';
      decimais = 5;
    } else if (!ehDecimal || decimais < 4) {
      valor = valor * 10 + (c - '0');
      if (valor > kLimite) throw invalido();
      if (ehDecimal) ++decimais;
    }
  }
  if (!temDigito) throw invalido();
  for (; decimais < 4; ++decimais) valor *= 10;
  if (arredondaParaCima) ++valor;
  if (negativo) valor = -valor;
  if (valor < -kLimite || valor >= kLimite) throw invalido();
  return Currency::DeDecimosDeMilesimo(static_cast<std::int64_t>(valor));
}

}  // namespace impnfse
