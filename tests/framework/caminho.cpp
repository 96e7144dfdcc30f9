// Compiled by the tests only as far as its syntax, once for each CASO_.
#include "XMLFormato.h"

inline constexpr auto kFormato =
    impnfse::Formato("Raiz: Nota*(Nota)", "Nota: Numero, Valores(Valores)", "Valores: ISS");

impnfse::String Ler(const impnfse::TElemento<kFormato, "Raiz">& raiz,
                    const impnfse::TElemento<kFormato, "Nota">& nota) {
#ifdef CASO_TAG_ERRADA
  return nota.Texto("Valores/Iss");
#elif defined(CASO_ESTRUTURADO_COMO_TEXTO)
  return nota.Texto("Valores");
#elif defined(CASO_ATRAVES_DE_ITENS)
  return raiz.Texto("Nota/Numero");
#else
  return raiz.Itens<"Nota">()[0].Texto("Valores/ISS") + nota.Texto("Numero");
#endif
}
