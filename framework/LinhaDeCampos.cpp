#include "LinhaDeCampos.h"

#include <fmt/format.h>

#include "VX03704Erros.h"

namespace impnfse {

String TLinhaDeCampos::Cortar(std::size_t caracteres, std::size_t depois) {
  String campo(Primeiros(Resto(), caracteres));
  FInicio += campo.size();
  FInicio += Primeiros(Resto(), depois).size();
  return campo;
}

String TLinhaDeCampos::CortarAte(char separador, std::size_t semSeparador) {
  const auto fim = Resto().find(separador);
  if (fim == std::string_view::npos) return Cortar(semSeparador, 1);
  String campo(Resto().substr(0, fim));
  FInicio += fim + 1;
  return campo;
}

String TLinhaDeCampos::CortarResto() {
  String campo(Resto());
  FInicio = FLinha.size();
  return campo;
}

int ConverterCampoInteiro(std::string_view texto) {
  const auto aparado = Aparar(texto);
  if (aparado.empty()) return 0;
  // No value is both defaults at once.
  const int valor = StrToIntDef(aparado, 0);
  if (valor == 0 && StrToIntDef(aparado, 1) != 0) throw EConversao(fmt::format("'{}' não é um número válido", texto));
  return valor;
}

TDateTime ConverterCampoData(std::string_view texto) {
  if (Aparar(texto).empty()) return 0;
  const auto data = ConverteData(texto, fdDiaMesAno);
  if (data == 0) throw EConversao(fmt::format("'{}' não é uma data válida", texto));
  return data;
}

}  // namespace impnfse
