// The progress bar on a terminal, on standard error: the file at hand, and the importer's own position and text.
#pragma once

#include <chrono>

#include "VXBarraProgresso.h"

namespace impnfse::app {

// Draws nothing when standard error isn't a terminal.
class TBarraTerminal {
 public:
  TBarraTerminal();
  // The display for the importer; null when there is no terminal.
  TVXBarraProgresso* Display() { return FLigada ? &FDisplay : nullptr; }

  // Shows that a file begins, the i-th (from 0) of so many.
  void IniciarArquivo(const String& arquivo, std::size_t indice, std::size_t quantidade);
  // Draws the importer's state, a few times a second at most.
  void Atualizar();
  // Takes the bar off the screen.
  void Apagar();

 private:
  void Desenhar();

  TVXBarraProgresso FDisplay;
  bool FLigada;
  std::chrono::steady_clock::time_point FUltimoDesenho;
};

}  // namespace impnfse::app
