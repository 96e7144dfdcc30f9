// Writing files so that no crash and no full disk loses one.
#pragma once

#include <string_view>

#include "VXUtilsTexto.h"

namespace impnfse {

[[noreturn]] void FalharNoSistema(int erro);

// A file descriptor that closes itself. One that couldn't be opened raises std::system_error.
class TDescritor {
 public:
  explicit TDescritor(int descritor);
  ~TDescritor();
  TDescritor(const TDescritor&) = delete;
  TDescritor& operator=(const TDescritor&) = delete;
  operator int() const { return FDescritor; }

  // All of the bytes. Raises std::system_error.
  void Escrever(std::string_view bytes) const;
  // What was written is on the disk. Raises std::system_error.
  void Descarregar() const;

 private:
  int FDescritor;
};

// Gives the file new content, keeping its permissions: at any moment it has the old one or the new one, whole. Behind a
// link it is the file that is rewritten. Raises std::system_error, and the file is as it was.
void RegravarArquivo(const String& caminho, std::string_view bytes);

}  // namespace impnfse
