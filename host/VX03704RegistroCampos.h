// How a register declares its fields: once each. One line of a register's list gives the field's getter and setter, its
// column and its key in the JSON dump, all under the same name.
#pragma once

#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "VX03704Currency.h"
#include "VX03704Data.h"
#include "VXUtilsTexto.h"

namespace impnfse {

using Int64 = std::int64_t;

// Text of any length (a service's description): a text BLOB in the database. Plain String fields have a column of
// kLarguraTexto characters; a longer value keeps its beginning there and the whole of it in ES02_TEXTOLONGO.
struct TTextoLivre {
  String Valor;

  TTextoLivre() = default;
  TTextoLivre(String texto) : Valor(std::move(texto)) {}
  TTextoLivre(const char* texto) : Valor(texto) {}
  operator const String&() const { return Valor; }
  bool operator==(const TTextoLivre&) const = default;
};

inline constexpr std::size_t kLarguraTexto = 255;

// One field of a register: its name and where its value is.
template <class Registro, class T>
struct TCampo {
  using Tipo = T;
  std::string_view Nome;
  T Registro::*Membro;
};

template <class Registro, class T>
constexpr TCampo<Registro, T> Campo(std::string_view nome, T Registro::*membro) {
  return {nome, membro};
}

// IMPNFSE_CAMPOS(TDadosRegistroX, LISTA) stands in the class body, where LISTA(CAMPO) is a macro with one CAMPO(type,
// NAME) per field. It declares the members, getters and setters, and `CamposProprios()`: a tuple of TCampo.
#define IMPNFSE_DECLARAR_CAMPO(Tipo, NOME)                   \
 public:                                                     \
  const Tipo& Get##NOME() const { return F##NOME; }          \
  void Set##NOME(Tipo valor) { F##NOME = std::move(valor); } \
                                                             \
 private:                                                    \
  Tipo F##NOME{};

#define IMPNFSE_ENUMERAR_CAMPO(Tipo, NOME) , std::make_tuple(::impnfse::Campo(#NOME, &TEsteRegistro::F##NOME))

#define IMPNFSE_CAMPOS(Registro, LISTA) \
  LISTA(IMPNFSE_DECLARAR_CAMPO)         \
 private:                               \
  using TEsteRegistro = Registro;       \
                                        \
 public:                                \
  static constexpr auto CamposProprios() { return std::tuple_cat(std::tuple<>() LISTA(IMPNFSE_ENUMERAR_CAMPO)); }

}  // namespace impnfse
