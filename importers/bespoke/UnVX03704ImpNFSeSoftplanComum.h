// What the two kinds of Softplan files, layout code 53, read alike.
#pragma once

#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"

namespace impnfse::softplan {

// A rate below 10% may be written as a fraction ("0.05"), which its beginning tells: "0.5" is half a percent. A
// fraction that is no number, one with a second decimal mark included, is 0, where another rate raises EConversao.
inline Currency BuscarAliquotaISSServico(const String& texto) {
  if (Primeiros(texto, 3) != "0.0") return ConverterCurrency(texto);
  if (texto.find_first_of(".,") != texto.find_last_of(".,")) return 0;
  try {
    return ConverterCurrency(texto) * 100;
  } catch (const EConversao&) {
    return 0;
  }
}

// Without a number of its own a note goes by that of the note it replaces; 0 without either.
inline int BuscarNumeroDocumento(const String& numero, const String& substituida) {
  const auto digitos = BuscarSomenteNumeros(numero);
  return StrToIntDef(digitos.empty() ? BuscarSomenteNumeros(substituida) : digitos, 0);
}

}  // namespace impnfse::softplan
