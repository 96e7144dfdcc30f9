// A regular file, open for reading.
#pragma once

#include <cstddef>
#include <cstdint>

#include "VXUtilsTexto.h"

namespace impnfse {

// Everything raises EArquivo, in one Portuguese line that names the file and says why. What isn't a regular file (a
// folder, a pipe) is refused without waiting for it.
class TArquivoAberto {
 public:
  explicit TArquivoAberto(String caminho);
  ~TArquivoAberto();
  TArquivoAberto(const TArquivoAberto&) = delete;
  TArquivoAberto& operator=(const TArquivoAberto&) = delete;

  // The size in bytes, as it was when the file was opened.
  std::int64_t Tamanho() const { return FTamanho; }
  // The next bytes, `maximo` at most; 0 at the end.
  std::size_t Ler(char* destino, std::size_t maximo);
  [[noreturn]] void Falhar(int erroDoSistema) const;

 private:
  String FCaminho;
  int FDescritor;
  std::int64_t FTamanho = 0;
};

}  // namespace impnfse
