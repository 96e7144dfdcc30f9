// Text operations. A String is UTF-8; a character is a Unicode code point, so every length and position below counts
// code points, never bytes. Bytes that aren't UTF-8 count one each and are kept.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace impnfse {

using String = std::string;

// Without the white space and control characters (U+0000 to U+0020) at both ends.
std::string_view Aparar(std::string_view texto);

// Unicode upper-casing: "não" gives "NÃO".
String Maiusculas(std::string_view texto);

// Number of characters.
std::size_t Comprimento(std::string_view texto);

// The first (last) `n` characters; the whole text when it has fewer.
std::string_view Primeiros(std::string_view texto, std::size_t n);
std::string_view Ultimos(std::string_view texto, std::size_t n);

// Every occurrence of `de`, from left to right, becomes `para`. Case-sensitive; an empty `de` changes nothing.
String Substituir(std::string_view texto, std::string_view de, std::string_view para);

// The text as an SQL string literal: between apostrophes, those inside doubled.
String CitarSQL(std::string_view texto);

// Keeps the letters (of any alphabet), digits, blanks and . , ; : / ( ) - % & + = and drops the rest.
String SemCaracteresEspeciais(std::string_view texto);

// Blanks ahead, an optional sign, decimal digits only, within the type's range; anything else is the default.
int StrToIntDef(std::string_view texto, int padrao);
std::int64_t StrToInt64Def(std::string_view texto, std::int64_t padrao);

// The bytes of a file as UTF-8 text: a byte-order mark decides (UTF-8, UTF-16), else valid UTF-8 is UTF-8, else the
// bytes are Windows-1252. The mark isn't part of the text. With `maximo`, the text of about so many bytes from the
// beginning, at whose end a character may be cut in two; what the encoding is, all of the bytes tell.
String DecodificarTexto(std::string_view bytes, std::size_t maximo = std::string_view::npos);

// Whether the bytes are valid UTF-8.
bool EhUTF8(std::string_view bytes);

// The bytes of a file as they stand. Raises EArquivo when it isn't a readable regular file.
String LerArquivo(const String& caminho);

}  // namespace impnfse
