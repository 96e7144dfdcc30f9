#include "VXUtilsTexto.h"

#include <fmt/format.h>
#include <iconv.h>
#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <memory>
#include <system_error>

#include "ArquivoAberto.h"

namespace impnfse {
namespace {

// The code point at the beginning of `texto` and its length in bytes; a byte that isn't UTF-8 gives -1 and 1.
struct TCaractere {
  utf8proc_int32_t codigo;
  std::size_t bytes;
};

TCaractere PrimeiroCaractere(std::string_view texto) {
  utf8proc_int32_t codigo = -1;
  const auto lidos = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(texto.data()),
                                      static_cast<utf8proc_ssize_t>(texto.size()), &codigo);
  if (lidos <= 0) return {-1, 1};
  return {codigo, static_cast<std::size_t>(lidos)};
}

void Acrescentar(String& texto, utf8proc_int32_t codigo) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const auto n = utf8proc_encode_char(codigo, bytes.data());
  texto.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(n));
}

// `bytesPorUnidade`: of one code unit of the encoding, 1 or 2.
String Converter(std::string_view bytes, const char* codificacao, std::size_t bytesPorUnidade) {
  struct Fechar {
    void operator()(void* conversor) const { iconv_close(conversor); }
  };
  const std::unique_ptr<void, Fechar> conversor(iconv_open("UTF-8", codificacao));
  String saida;
  std::array<char, 4096> bloco{};
  auto* origem = const_cast<char*>(bytes.data());
  std::size_t resta = bytes.size();
  while (resta > 0) {
    char* destino = bloco.data();
    std::size_t livre = bloco.size();
    const auto r = iconv(conversor.get(), &origem, &resta, &destino, &livre);
    const int erro = errno;
    saida.append(bloco.data(), bloco.size() - livre);
    if (r != static_cast<std::size_t>(-1) || erro == E2BIG) continue;
    // A byte that the encoding doesn't define (five of Windows-1252) stays as the control character of that number;
    // half a character of UTF-16 is no character.
    constexpr utf8proc_int32_t kSubstituto = 0xFFFD;
    Acrescentar(saida, bytesPorUnidade == 1 ? static_cast<unsigned char>(*origem) : kSubstituto);
    const auto pulados = std::min(bytesPorUnidade, resta);
    origem += pulados;
    resta -= pulados;
  }
  return saida;
}

template <class Inteiro>
Inteiro StrToInteiroDef(std::string_view texto, Inteiro padrao) {
  const auto inicio = texto.find_first_not_of(' ');
  if (inicio == texto.npos) return padrao;
  texto.remove_prefix(inicio);
  if (texto.front() == '+') {
    texto.remove_prefix(1);
    if (!texto.empty() && texto.front() == '-') return padrao;
  }
  Inteiro valor{};
  const auto* const fim = texto.data() + texto.size();
  const auto [resto, erro] = std::from_chars(texto.data(), fim, valor);
  return erro == std::errc() && resto == fim ? valor : padrao;
}

}  // namespace

std::string_view Aparar(std::string_view texto) {
  const auto visivel = [](char c) { return static_cast<unsigned char>(c) > ' '; };
  const auto inicio = std::find_if(texto.begin(), texto.end(), visivel);
  const auto fim = std::find_if(texto.rbegin(), std::make_reverse_iterator(inicio), visivel).base();
  return {inicio, fim};
}

String Maiusculas(std::string_view texto) {
  String saida;
  saida.reserve(texto.size());
  while (!texto.empty()) {
    const auto [codigo, bytes] = PrimeiroCaractere(texto);
    if (codigo < 0)
      saida += texto.front();
    else
      Acrescentar(saida, utf8proc_toupper(codigo));
    texto.remove_prefix(bytes);
  }
  return saida;
}

std::size_t Comprimento(std::string_view texto) {
  std::size_t n = 0;
  for (; !texto.empty(); ++n) texto.remove_prefix(PrimeiroCaractere(texto).bytes);
  return n;
}

std::string_view Primeiros(std::string_view texto, std::size_t n) {
  if (texto.size() <= n) return texto;
  std::size_t bytes = 0;
  for (; n > 0 && bytes < texto.size(); --n) bytes += PrimeiroCaractere(texto.substr(bytes)).bytes;
  return texto.substr(0, bytes);
}

std::string_view Ultimos(std::string_view texto, std::size_t n) {
  const auto total = Comprimento(texto);
  if (total > n) texto.remove_prefix(Primeiros(texto, total - n).size());
  return texto;
}

String Substituir(std::string_view texto, std::string_view de, std::string_view para) {
  if (de.empty()) return String(texto);
  String saida;
  for (;;) {
    const auto achado = texto.find(de);
    if (achado == texto.npos) return saida.append(texto);
    saida.append(texto.substr(0, achado)).append(para);
    texto.remove_prefix(achado + de.size());
  }
}

String CitarSQL(std::string_view texto) {
  // No statement can have a NUL, and no name that a note looks for does.
  return fmt::format("'{}'", Substituir(Substituir(texto, std::string_view("\0", 1), ""), "'", "''"));
}

String SemCaracteresEspeciais(std::string_view texto) {
  constexpr std::string_view kMantidos = " .,;:/()-%&+=";
  String saida;
  while (!texto.empty()) {
    const auto [codigo, bytes] = PrimeiroCaractere(texto);
    if (codigo >= 0) {
      const auto categoria = utf8proc_category(codigo);
      const bool letra = categoria >= UTF8PROC_CATEGORY_LU && categoria <= UTF8PROC_CATEGORY_LO;
      const bool mantido = bytes == 1 && kMantidos.find(texto.front()) != kMantidos.npos;
      if (letra || categoria == UTF8PROC_CATEGORY_ND || mantido) saida.append(texto.substr(0, bytes));
    }
    texto.remove_prefix(bytes);
  }
  return saida;
}

int StrToIntDef(std::string_view texto, int padrao) { return StrToInteiroDef(texto, padrao); }

std::int64_t StrToInt64Def(std::string_view texto, std::int64_t padrao) { return StrToInteiroDef(texto, padrao); }

bool EhUTF8(std::string_view bytes) {
  while (!bytes.empty()) {
    // Plain ASCII, which is nearly everything, needs no decoding.
    const auto naoASCII = std::find_if(bytes.begin(), bytes.end(), [](char c) { return c < 0; });
    bytes.remove_prefix(static_cast<std::size_t>(naoASCII - bytes.begin()));
    if (bytes.empty()) return true;
    const auto caractere = PrimeiroCaractere(bytes);
    if (caractere.codigo < 0) return false;
    bytes.remove_prefix(caractere.bytes);
  }
  return true;
}

namespace {

// The bytes without a character that was cut off at their end; all of them where nothing else is UTF-8 beyond ASCII,
// since in another encoding the last byte may well be a letter.
std::string_view SemCaractereCortado(std::string_view bytes) {
  constexpr std::size_t kMaisLongo = 4;
  for (std::size_t n = 1; n < kMaisLongo && n <= bytes.size(); ++n) {
    const auto byte = static_cast<unsigned char>(bytes[bytes.size() - n]);
    if ((byte & 0xC0U) == 0x80U) continue;  // not the first one of a character
    const std::size_t tamanho = byte >= 0xF0U ? 4 : byte >= 0xE0U ? 3 : byte >= 0xC0U ? 2 : 1;
    const auto inteiros = bytes.substr(0, bytes.size() - n);
    const bool temOutros = std::any_of(inteiros.begin(), inteiros.end(), [](char c) { return c < 0; });
    return tamanho > n && temOutros ? inteiros : bytes;
  }
  return bytes;
}

}  // namespace

String DecodificarTexto(std::string_view bytes, std::size_t maximo) {
  if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (bytes.starts_with("\xFF\xFE")) return Converter(bytes.substr(2, maximo), "UTF-16LE", 2);
  if (bytes.starts_with("\xFE\xFF")) return Converter(bytes.substr(2, maximo), "UTF-16BE", 2);
  // A file that was cut off within a character is still what it was.
  const auto inteiros = SemCaractereCortado(bytes);
  return EhUTF8(inteiros) ? String(inteiros.substr(0, maximo)) : Converter(bytes.substr(0, maximo), "WINDOWS-1252", 1);
}

String LerArquivo(const String& caminho) {
  TArquivoAberto arquivo(caminho);
  String bytes(static_cast<std::size_t>(arquivo.Tamanho()), '\0');
  std::size_t lidos = 0;
  while (lidos < bytes.size()) {
    const auto n = arquivo.Ler(bytes.data() + lidos, bytes.size() - lidos);
    if (n == 0) break;
    lidos += n;
  }
  bytes.resize(lidos);
  return bytes;
}

}  // namespace impnfse
