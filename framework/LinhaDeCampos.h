// Fields off the lines of text layouts.
#pragma once

#include "VX03704Currency.h"
#include "VX03704Data.h"
#include "VXUtilsTexto.h"

namespace impnfse {

// A line that is read from its beginning, field by field. Lengths are characters; what isn't there reads as empty.
class TLinhaDeCampos {
 public:
  explicit TLinhaDeCampos(String linha) : FLinha(std::move(linha)) {}

  // What has not been read yet.
  std::string_view Resto() const { return std::string_view(FLinha).substr(FInicio); }

  // So many characters, and past them so many that are no field (a separator behind a field of fixed length).
  String Cortar(std::size_t caracteres, std::size_t depois = 0);
  // Up to the separator, which goes as well. Without one the field is the rest of the line, or its first characters
  // when a length is given; then one more character goes.
  String CortarAte(char separador, std::size_t semSeparador = std::string_view::npos);
  // All of it.
  String CortarResto();

 private:
  String FLinha;
  std::size_t FInicio = 0;
};

// The value of a field: 0 for a blank one. Decimal fields are read by ConverterCurrency. Both raise EConversao for a
// text that is no such value: "'<text>' não é um número válido", "'<text>' não é uma data válida".
int ConverterCampoInteiro(std::string_view texto);
// Written DD/MM/YYYY.
TDateTime ConverterCampoData(std::string_view texto);

// A value that a file holds with two implied decimals.
inline Currency ComDecimaisImplicitas(Currency valor) {
  return Currency::DeDecimosDeMilesimo(valor.DecimosDeMilesimo() / 100);
}

}  // namespace impnfse
