#include "UnVX03704BaseFuncoes.h"

#include <fmt/format.h>
#include <openssl/evp.h>
#include <openssl/sha.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "Suite.h"
#include "VXUtils.h"

namespace impnfse {
namespace {

struct TEstado {
  std::string_view UF;
  int CodigoIBGE;
};

constexpr std::array<TEstado, 27> kEstados = {{
    {"RO", 11}, {"AC", 12}, {"AM", 13}, {"RR", 14}, {"PA", 15}, {"AP", 16}, {"TO", 17}, {"MA", 21}, {"PI", 22},
    {"CE", 23}, {"RN", 24}, {"PB", 25}, {"PE", 26}, {"AL", 27}, {"SE", 28}, {"BA", 29}, {"MG", 31}, {"ES", 32},
    {"RJ", 33}, {"SP", 35}, {"PR", 41}, {"SC", 42}, {"RS", 43}, {"MS", 50}, {"MT", 51}, {"GO", 52}, {"DF", 53},
}};

}  // namespace

String BuscarSomenteNumeros(std::string_view texto) {
  String digitos;
  std::copy_if(texto.begin(), texto.end(), std::back_inserter(digitos), [](char c) { return c >= '0' && c <= '9'; });
  return digitos;
}

int InteiroDosDigitos(std::string_view texto) { return StrToIntDef(BuscarSomenteNumeros(texto), 0); }

String BuscarUFMunicipio(const String& codigo) {
  const auto& dados = TSuite::Atual().ConsultarMemorizado(
      "SELECT FIRST 1 UF FROM CA06_MUNICIPIO WHERE CODIGOFEDERAL = " + CitarSQL(codigo));
  return dados.Linhas.empty() ? String() : dados.Linhas.front().front().value_or("");
}

int BuscarCodigoIBGEUF(std::string_view uf) {
  const auto* const estado =
      std::find_if(kEstados.begin(), kEstados.end(), [&](const TEstado& e) { return e.UF == uf; });
  return estado == kEstados.end() ? 0 : estado->CodigoIBGE;
}

bool RegInStr(std::string_view valor, std::span<const std::string_view> lista, int ultimo) {
  const auto procurados = lista.first(std::min(lista.size(), static_cast<std::size_t>(ultimo + 1)));
  return std::find(procurados.begin(), procurados.end(), valor) != procurados.end();
}

Currency Arredondar(Currency valor) { return TVXUtilsMatematica::Arredondar(valor, 2); }

String TFuncoes::GerarHash(std::string_view texto) const {
  std::array<unsigned char, SHA256_DIGEST_LENGTH> resumo{};
  // Looked up once: that takes longer than most texts do.
  static const EVP_MD* const kSHA256 = EVP_MD_fetch(nullptr, "SHA256", nullptr);
  EVP_Digest(texto.data(), texto.size(), resumo.data(), nullptr, kSHA256, nullptr);
  constexpr std::string_view kDigitos = "0123456789abcdef";
  String hexadecimal;
  hexadecimal.reserve(2 * resumo.size());
  for (const auto byte : resumo) {
    hexadecimal += kDigitos[byte >> 4U];
    hexadecimal += kDigitos[byte & 15U];
  }
  return hexadecimal;
}

TFuncoes* BuscarInstanciaFuncoes() {
  static TFuncoes funcoes;
  return &funcoes;
}

}  // namespace impnfse
