// Money as the registers hold it: an exact fixed-point decimal.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace impnfse {

// A signed 64-bit count of ten-thousandths: 1.0000 is the integer 10000. Sums, differences and products raise
// std::overflow_error when the result doesn't fit, so that a value is never silently wrong.
class Currency {
 public:
  constexpr Currency() = default;
  // A whole number of units: Currency(3) is 3.0000.
  constexpr Currency(int unidades) : FDecimosDeMilesimo(std::int64_t{unidades} * kEscala) {}

  static constexpr Currency DeDecimosDeMilesimo(std::int64_t valor) {
    Currency c;
    c.FDecimosDeMilesimo = valor;
    return c;
  }
  constexpr std::int64_t DecimosDeMilesimo() const { return FDecimosDeMilesimo; }

  friend constexpr auto operator<=>(const Currency&, const Currency&) = default;

  Currency operator+(Currency outro) const;
  Currency operator-(Currency outro) const;
  Currency operator-() const { return Currency() - *this; }
  // The product is computed in 128 bits and brought back in one division, toward zero.
  Currency operator*(Currency outro) const;
  // Rounded to ten-thousandths, half away from zero. Raises std::domain_error by 0.
  Currency operator/(Currency outro) const;
  Currency& operator+=(Currency outro) { return *this = *this + outro; }
  Currency& operator-=(Currency outro) { return *this = *this - outro; }

  // The exact decimal text with "." and four decimals: "-12.3400".
  std::string Texto() const;

  // The same without the zeros that say nothing behind the cents: "-12.34", "0.00", "2.0512".
  std::string TextoCurto() const;

  static constexpr std::int64_t kEscala = 10000;

 private:
  std::int64_t FDecimosDeMilesimo = 0;
};

// What a rate in percent makes of a base, brought back in one division, toward zero.
Currency AplicarAliquota(Currency base, Currency aliquota);

// The decimal text of a note as a value. Surrounding blanks are dropped and an empty text is 0. With both "." and ","
// the last of them is the decimal mark and the other groups thousands; one kind that occurs once is the decimal mark,
// one that occurs several times groups thousands. Digits beyond the fourth decimal round half away from zero. Anything
// else, a value out of range included, raises EConversao ("'<text>' não é um valor decimal válido").
Currency ConverterCurrency(std::string_view texto);

}  // namespace impnfse
