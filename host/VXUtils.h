// Small utilities of the suite.
#pragma once

#include <functional>

#include "VX03704Currency.h"
#include "VXUtilsTexto.h"

namespace impnfse {

// What a path tells about its file.
class TArquivoInfo {
 public:
  void SetArquivo(String caminho) { FArquivo = std::move(caminho); }
  // The extension with its dot, as written; empty when the name has none.
  String GetExtensao() const;

 private:
  String FArquivo;
};

// Shows texts to the operator, wherever the host shows them.
class TVXUtilsDialogs {
 public:
  explicit TVXUtilsDialogs(std::function<void(const String&)> mostrar) : FMostrar(std::move(mostrar)) {}
  void Informacao(const String& texto) const { FMostrar(texto); }

 private:
  std::function<void(const String&)> FMostrar;
};
// Set while a TSuite lives.
inline TVXUtilsDialogs* GVXUtilsDialogs = nullptr;

struct TVXUtilsMatematica {
  // Rounded to so many decimals (0 to 4), half away from zero.
  static Currency Arredondar(Currency valor, int decimais);
};

struct TVXUtilsStrings {
  // Whether the text has nothing but decimal digits, and at least one.
  static bool TextoEhSomenteNumerico(std::string_view texto);
};

struct TVXUtilsValidacoes {
  template <class T>
  static T Iif(bool condicao, T seVerdadeiro, T seFalso) {
    return condicao ? std::move(seVerdadeiro) : std::move(seFalso);
  }
};

}  // namespace impnfse
