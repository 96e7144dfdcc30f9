// The free functions that the importers share.
#pragma once

#include <span>

#include "VX03704Currency.h"
#include "VX03704Data.h"
#include "VX03704RegistroCampos.h"
#include "VXUtilsTexto.h"

namespace impnfse {

// The decimal digits of the text, in order.
String BuscarSomenteNumeros(std::string_view texto);

// The number that these digits make; 0 without one, or beyond 32 bits.
int InteiroDosDigitos(std::string_view texto);

// The state of a municipality by federal code, from CA06_MUNICIPIO; empty when unknown. Raises EBanco, and
// std::logic_error while no TSuite lives.
String BuscarUFMunicipio(const String& codigo);

// The state's two-digit IBGE number; 0 for anything that isn't a state's two letters.
int BuscarCodigoIBGEUF(std::string_view uf);

// Whether the value equals, to the letter, one of the first `ultimo` + 1 strings of the list.
bool RegInStr(std::string_view valor, std::span<const std::string_view> lista, int ultimo);

// Rounded to two decimals, half away from zero. Raises std::overflow_error beyond the largest value.
Currency Arredondar(Currency valor);

// Whether the bits of the first lie in the second.
constexpr bool BIN_IN(Int64 bits, Int64 palavra) { return (bits & palavra) == bits; }

class TFuncoes {
 public:
  // SHA-256 of the text in 64 hexadecimal digits.
  String GerarHash(std::string_view texto) const;
};
TFuncoes* BuscarInstanciaFuncoes();

}  // namespace impnfse
