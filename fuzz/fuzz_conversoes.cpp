// Any text as a value, a date, a number or a file of lines.
#include <cstdint>
#include <cstdlib>

#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"
#include "VXUtilsLista.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using namespace impnfse;
  const std::string_view texto(reinterpret_cast<const char*>(dados), tamanho);
  try {
    // What is read is written and read again as the same value.
    const auto valor = ConverterCurrency(texto);
    if (ConverterCurrency(valor.Texto()) != valor) std::abort();
    Arredondar(valor);
  } catch (const EConversao&) {
    // Not a value.
  } catch (const std::overflow_error&) {
    // Rounded up beyond the largest value.
  }
  for (const auto formato : {fdDiaMesAno, fdAnoMesDia}) {
    const auto data = ConverteData(texto, formato);
    if (data != 0 && ConverteData(DataISO(data), fdAnoMesDia) != data) std::abort();
  }
  StrToDateDef(texto, 0);
  StrToInt64Def(texto, 0);
  const auto decodificado = DecodificarTexto(texto);
  if (!EhUTF8(decodificado)) std::abort();
  if (Comprimento(Primeiros(decodificado, 10)) > 10 || Comprimento(Ultimos(decodificado, 10)) > 10) std::abort();
  SemCaracteresEspeciais(Maiusculas(decodificado));
  TStringList linhas;
  linhas.SetText(decodificado);
  while (linhas.Count() > 0) linhas.Delete(0);
  return 0;
}
