// The binding of a document format: one constexpr table per format, and views of a document whose paths are checked
// against that table by the compiler.
//
// A table has one line per element type, in the order of the format:
//
//   "Type: Leaf, Child(ChildType), Item*(ItemType), @attribute, Name=Tag|OtherTag"
//
//   Leaf               an element with a text
//   Child(ChildType)   a structured element
//   Item*(ItemType)    a structured element that repeats
//   @attribute         an attribute, and "@attribute" in paths
//   Name=Tag|OtherTag  read under Name: the child Tag when there is one, else OtherTag; with "(Type)" for structured
//                      ones. Of a repeating one ("Name=Tag|OtherTag*(Type)") the items have either tag
//   Leaf?text          reads as that text when the element is absent; an empty element stays empty
//
// A path such as "Servico/Valores/ValorIss" starts at the element type at hand. A misspelt or impossible path doesn't
// compile; at run time a path is a few comparisons of names.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "VX03704Currency.h"
#include "VX03704Erros.h"
#include "XMLDocumento.h"

namespace impnfse {

// A text as a template argument.
template <std::size_t N>
struct TTextoFixo {
  std::array<char, N> Caracteres{};
  consteval TTextoFixo(const char (&texto)[N]) { std::copy_n(texto, N, Caracteres.begin()); }
  consteval explicit TTextoFixo(const std::array<char, N>& texto) : Caracteres(texto) {}
  constexpr operator std::string_view() const { return {Caracteres.data(), N - 1}; }
};

template <std::size_t N>
struct TFormato {
  std::array<std::string_view, N> Linhas;
};

// A format's table from its lines.
template <class... Linhas>
consteval auto Formato(Linhas... linhas) {
  return TFormato<sizeof...(Linhas)>{{linhas...}};
}

namespace formato {

// One thing that an element type may have.
struct TMembro {
  std::string_view Nome;
  std::string_view Tags;  // one, or several separated by "|"
  std::string_view Tipo;  // empty for a leaf
  std::string_view Padrao;
  bool Repete = false;
  bool Atributo = false;
};

// Where the mark begins in the text; the text's size when it isn't there. Character by character, because GCC 12 under
// the sanitizers takes string_view::find over a template argument for no constant.
constexpr std::size_t Posicao(std::string_view texto, std::string_view marca) {
  for (std::size_t i = 0; i + marca.size() <= texto.size(); ++i) {
    std::size_t iguais = 0;
    while (iguais < marca.size() && texto[i + iguais] == marca[iguais]) ++iguais;
    if (iguais == marca.size()) return i;
  }
  return texto.size();
}

// The part of `texto` ahead of the mark; `texto` keeps what is behind it.
constexpr std::string_view CortarAte(std::string_view& texto, std::string_view marca) {
  const auto fim = Posicao(texto, marca);
  const auto parte = texto.substr(0, fim);
  texto.remove_prefix(std::min(fim + marca.size(), texto.size()));
  return parte;
}

constexpr TMembro LerMembro(std::string_view texto) {
  TMembro membro;
  membro.Atributo = texto.starts_with('@');
  const auto parentese = texto.find('(');
  if (parentese != texto.npos) {
    membro.Tipo = texto.substr(parentese + 1, texto.size() - parentese - 2);
    texto = texto.substr(0, parentese);
  }
  const auto padrao = texto.find('?');
  if (padrao != texto.npos) {
    membro.Padrao = texto.substr(padrao + 1);
    texto = texto.substr(0, padrao);
  }
  if (texto.ends_with('*')) {
    membro.Repete = true;
    texto.remove_suffix(1);
  }
  const bool temTags = texto.find('=') != texto.npos;
  membro.Nome = CortarAte(texto, "=");
  membro.Tags = temTags ? texto : membro.Nome.substr(membro.Atributo ? 1 : 0);
  return membro;
}

// The members of a type. Fails to compile when the table has no such type.
template <std::size_t N>
constexpr std::string_view MembrosDoTipo(const TFormato<N>& f, std::string_view tipo) {
  for (auto linha : f.Linhas)
    if (CortarAte(linha, ": ") == tipo) return linha;
  throw "the format has no such element type";
}

// A member by its name. Fails to compile when the type has no such member.
template <std::size_t N>
constexpr TMembro Membro(const TFormato<N>& f, std::string_view tipo, std::string_view nome) {
  auto membros = MembrosDoTipo(f, tipo);
  while (!membros.empty()) {
    const auto membro = LerMembro(CortarAte(membros, ", "));
    if (membro.Nome == nome) return membro;
  }
  throw "the element type has no child or attribute of that name";
}

// What a path leads to.
template <std::size_t N>
constexpr TMembro Destino(const TFormato<N>& f, std::string_view tipo, std::string_view caminho) {
  TMembro membro;
  while (!caminho.empty()) {
    if (membro.Repete) throw "a path goes through a repeating element: take its items first";
    membro = Membro(f, tipo, CortarAte(caminho, "/"));
    tipo = membro.Tipo;
  }
  return membro;
}

// A path, taken apart: per step the tags to try.
struct TPassos {
  static constexpr std::size_t kMaximo = 8;
  std::array<std::string_view, kMaximo> Tags;
  std::size_t Quantidade = 0;
  bool Atributo = false;
  std::string_view Padrao;  // of the last step

  template <std::size_t N>
  consteval TPassos(const TFormato<N>& f, std::string_view tipo, std::string_view caminho) {
    while (!caminho.empty()) {
      const auto membro = Membro(f, tipo, CortarAte(caminho, "/"));
      Tags[Quantidade++] = membro.Tags;
      Atributo = membro.Atributo;
      Padrao = membro.Padrao;
      tipo = membro.Tipo;
    }
  }
};

// Whether the name is one of the tags.
inline bool EhTag(std::string_view nome, std::string_view tags) {
  while (!tags.empty())
    if (nome == CortarAte(tags, "|")) return true;
  return false;
}

// The child under the first of the tags that the element has.
inline TNoXML Descer(const TDocumentoXML& documento, TNoXML no, std::string_view tags) {
  while (!tags.empty()) {
    const auto filho = documento.Filho(no, CortarAte(tags, "|"));
    if (filho != TNoXML::Nenhum) return filho;
  }
  return TNoXML::Nenhum;
}

// The element behind the first `quantidade` steps.
inline TNoXML Descer(const TDocumentoXML& documento, TNoXML no, const TPassos& passos, std::size_t quantidade) {
  for (std::size_t i = 0; i < quantidade && no != TNoXML::Nenhum; ++i) no = Descer(documento, no, passos.Tags[i]);
  return no;
}

}  // namespace formato

// A path to a text (a leaf or an attribute) from an element type.
template <const auto& F, TTextoFixo Tipo>
struct TCaminho {
  formato::TPassos Passos;
  consteval TCaminho(const char* caminho) : Passos(F, Tipo, caminho) {
    const auto destino = formato::Destino(F, Tipo, caminho);
    if (!destino.Tipo.empty()) throw "the path leads to a structured element, which has no text";
    if (destino.Repete) throw "the path leads to a repeating element: take its items";
  }
};

template <const auto& F, TTextoFixo Tipo>
class TItens;

// A view of one element. A view of an absent element is empty: its texts are empty and so are its children.
template <const auto& F, TTextoFixo Tipo>
class TElemento {
 public:
  TElemento() = default;
  TElemento(std::shared_ptr<const TDocumentoXML> documento, TNoXML no) : FDocumento(std::move(documento)), FNo(no) {}

  // Whether the document has the element.
  bool Presente() const { return FNo != TNoXML::Nenhum; }

  // Whether it has no child elements; so has an absent one.
  bool Vazio() const { return !Presente() || FDocumento->PrimeiroFilho(FNo) == TNoXML::Nenhum; }

  // The text at the path; when something on the way is absent, what the format has for that, usually nothing. Raises
  // EXML when the element there has element children.
  String Texto(TCaminho<F, Tipo> caminho) const {
    const auto& passos = caminho.Passos;
    const auto ultimo = passos.Tags[passos.Quantidade - 1];
    if (passos.Atributo) {
      const auto pai = Presente() ? formato::Descer(*FDocumento, FNo, passos, passos.Quantidade - 1) : TNoXML::Nenhum;
      return pai == TNoXML::Nenhum ? String() : String(FDocumento->Atributo(pai, ultimo));
    }
    const auto folha = Folha(passos);
    return String(folha == TNoXML::Nenhum ? passos.Padrao : FDocumento->Texto(folha));
  }

  // The text at the path as a value; 0 for an empty one. Raises EConversao for what isn't a number.
  Currency Valor(TCaminho<F, Tipo> caminho) const { return ConverterCurrency(Texto(caminho)); }

  // Whether the document has the element at the path of a text.
  bool Tem(TCaminho<F, Tipo> caminho) const { return Folha(caminho.Passos) != TNoXML::Nenhum; }

  // The structured element at the path.
  template <TTextoFixo Caminho>
  auto Filho() const {
    constexpr auto kDestino = formato::Destino(F, Tipo, Caminho);
    static_assert(!kDestino.Tipo.empty() && !kDestino.Repete, "the path must lead to one structured element");
    return TElemento<F, TipoDe<Caminho>()>(FDocumento, NoDe<Caminho>());
  }

  // The repeating element at the path: its items.
  template <TTextoFixo Caminho>
  auto Itens() const {
    constexpr auto kDestino = formato::Destino(F, Tipo, Caminho);
    static_assert(!kDestino.Tipo.empty() && kDestino.Repete, "the path must lead to a repeating element");
    constexpr formato::TPassos kPassos(F, Tipo, Caminho);
    const auto pai = Presente() ? formato::Descer(*FDocumento, FNo, kPassos, kPassos.Quantidade - 1) : TNoXML::Nenhum;
    return TItens<F, TipoDe<Caminho>()>(FDocumento, pai, kDestino.Tags);
  }

 private:
  // The type of the element at a path, as a template argument.
  template <TTextoFixo Caminho>
  static consteval auto TipoDe() {
    constexpr auto kTipo = formato::Destino(F, Tipo, Caminho).Tipo;
    std::array<char, kTipo.size() + 1> texto{};
    std::copy(kTipo.begin(), kTipo.end(), texto.begin());
    return TTextoFixo<kTipo.size() + 1>(texto);
  }

  template <TTextoFixo Caminho>
  TNoXML NoDe() const {
    constexpr formato::TPassos kPassos(F, Tipo, Caminho);
    return Folha(kPassos);
  }

  TNoXML Folha(const formato::TPassos& passos) const {
    return Presente() ? formato::Descer(*FDocumento, FNo, passos, passos.Quantidade) : TNoXML::Nenhum;
  }

  std::shared_ptr<const TDocumentoXML> FDocumento;
  TNoXML FNo = TNoXML::Nenhum;
};

// The items of a repeating element, in the order of the document; only children with the item's tags count.
template <const auto& F, TTextoFixo Tipo>
class TItens {
 public:
  TItens(std::shared_ptr<const TDocumentoXML> documento, TNoXML pai, std::string_view tags)
      : FDocumento(std::move(documento)) {
    if (pai == TNoXML::Nenhum) return;
    for (auto no = FDocumento->PrimeiroFilho(pai); no != TNoXML::Nenhum; no = FDocumento->ProximoIrmao(no))
      if (formato::EhTag(FDocumento->Nome(no), tags)) FNos.push_back(no);
  }

  std::size_t Count() const { return FNos.size(); }
  // Raises std::out_of_range behind the last one.
  TElemento<F, Tipo> operator[](std::size_t i) const { return {FDocumento, FNos.at(i)}; }

  class TIterador {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = TElemento<F, Tipo>;
    using difference_type = std::ptrdiff_t;
    using pointer = const value_type*;
    using reference = value_type;

    TIterador(const TItens& itens, std::size_t i) : FItens(&itens), FIndice(i) {}
    TElemento<F, Tipo> operator*() const { return (*FItens)[FIndice]; }
    TIterador& operator++() { return ++FIndice, *this; }
    bool operator==(const TIterador& outro) const { return FIndice == outro.FIndice; }

   private:
    const TItens* FItens;
    std::size_t FIndice;
  };
  TIterador begin() const { return {*this, 0}; }
  TIterador end() const { return {*this, FNos.size()}; }

 private:
  std::shared_ptr<const TDocumentoXML> FDocumento;
  std::vector<TNoXML> FNos;
};

// How a file of the format is opened.
struct TRaiz {
  std::string_view Tag;                             // the root element's name
  std::span<const std::string_view> Prefixos = {};  // taken out of the whole text first, in this order
};

// The root of the document; nothing when it has another one.
template <class Elemento>
std::optional<Elemento> Load(const std::shared_ptr<const TDocumentoXML>& documento, std::string_view tag) {
  if (documento->Nome(documento->Raiz()) != tag) return std::nullopt;
  return Elemento(documento, documento->Raiz());
}
// The same of a file. Raises EArquivo and EXML, as LoadXMLDocument does.
template <class Elemento>
std::optional<Elemento> Load(TArquivoXML& arquivo, const TRaiz& raiz) {
  return Load<Elemento>(arquivo.Documento(raiz.Prefixos), raiz.Tag);
}
template <class Elemento>
std::optional<Elemento> Load(const String& caminho, const TRaiz& raiz) {
  TArquivoXML arquivo(caminho);
  return Load<Elemento>(arquivo, raiz);
}

// The same for the formats in which another root is an error: raises EXML.
template <class Elemento>
Elemento LoadSemGuarda(TArquivoXML& arquivo, const TRaiz& raiz) {
  auto elemento = Load<Elemento>(arquivo, raiz);
  if (!elemento) throw EXML("O elemento raiz não é " + String(raiz.Tag) + ".");
  return *std::move(elemento);
}
template <class Elemento>
Elemento LoadSemGuarda(const String& caminho, const TRaiz& raiz) {
  TArquivoXML arquivo(caminho);
  return LoadSemGuarda<Elemento>(arquivo, raiz);
}

}  // namespace impnfse
