// A list of text lines, as loaded from a file.
#pragma once

#include <cstddef>
#include <deque>
#include <string_view>

#include "VXUtilsTexto.h"

namespace impnfse {

// Lines end at CRLF, LF or CR. An index behind the last line raises std::out_of_range. Taking line 0 off again and
// again costs the same each time.
class TStringList {
 public:
  // Replaces the lines by those of the file, decoded as DecodificarTexto tells. Raises EArquivo.
  void LoadFromFile(const String& caminho);

  void SetText(std::string_view texto);
  // The lines, each followed by "\n".
  String Text() const;

  std::size_t Count() const { return FLinhas.size(); }
  const String& operator[](std::size_t i) const { return FLinhas.at(i); }
  void Add(String linha) { FLinhas.push_back(std::move(linha)); }
  void Delete(std::size_t i);
  void Clear() { FLinhas.clear(); }

  auto begin() const { return FLinhas.begin(); }
  auto end() const { return FLinhas.end(); }

 private:
  std::deque<String> FLinhas;
};

// The first characters of a file's text, as Text() of its list would have them. Raises EArquivo.
String InicioDoArquivo(const String& caminho, std::size_t caracteres);

}  // namespace impnfse
