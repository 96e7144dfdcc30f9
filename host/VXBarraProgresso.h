// The suite's progress display. The importers set its state; whoever shows it draws when the suite's pending messages
// are processed.
#pragma once

#include <functional>

#include "VXUtilsTexto.h"

namespace impnfse {

// One bar: a position between 0 and a maximum, and a text.
class TFrameVXBarraProgressoItem {
 public:
  void SetPosicao(int posicao) { FPosicao = posicao; }
  void SetValorMaximo(int maximo) { FValorMaximo = maximo; }
  void SetTexto(String texto) { FTexto = std::move(texto); }
  // Moves on by the quantity given; 0 moves on by one.
  void AvancarProgresso(int quantidade) { FPosicao += quantidade == 0 ? 1 : quantidade; }

  int GetPosicao() const { return FPosicao; }
  int GetValorMaximo() const { return FValorMaximo; }
  const String& GetTexto() const { return FTexto; }

 private:
  int FPosicao = 0;
  int FValorMaximo = 0;
  String FTexto;
};

class TVXBarraProgresso {
 public:
  // The display has one item, number 1.
  TFrameVXBarraProgressoItem* BuscarBarraProgresso(int /*item*/) { return &FItem; }

 private:
  TFrameVXBarraProgressoItem FItem;
};

// The suite's application object: its pending messages are whatever the host registered, such as drawing the bar.
class TApplication {
 public:
  void SetAoProcessarMensagens(std::function<void()> acao) { FAoProcessarMensagens = std::move(acao); }
  void ProcessMessages() const {
    if (FAoProcessarMensagens) FAoProcessarMensagens();
  }

 private:
  std::function<void()> FAoProcessarMensagens;
};
// Set while a TSuite lives.
inline TApplication* Application = nullptr;

}  // namespace impnfse
