// An XML document, read once and never changed: a compact tree that many importers' views can share.
#pragma once

#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "VXUtilsTexto.h"

namespace impnfse {

// An element of a document, by its place in it.
enum class TNoXML : std::uint32_t { Nenhum = 0xFFFFFFFF };

// Names are as written, prefix included: "tc:Numero" isn't "Numero". A default namespace changes nothing. Of the text,
// only that of elements without element children is kept; it is as it stands in the file, entities and character
// references resolved.
class TDocumentoXML {
 public:
  // The root element.
  TNoXML Raiz() const { return FNos->empty() ? TNoXML::Nenhum : TNoXML{0}; }
  std::string_view Nome(TNoXML no) const { return FNomes[No(no).Nome]; }

  // `no` is never Nenhum in what follows.

  // The first child (the next sibling) element of any name; Nenhum when there is none.
  TNoXML PrimeiroFilho(TNoXML no) const { return TNoXML{No(no).PrimeiroFilho}; }
  TNoXML ProximoIrmao(TNoXML no) const { return TNoXML{No(no).ProximoIrmao}; }
  // The first child element of that name; Nenhum when there is none.
  TNoXML Filho(TNoXML no, std::string_view nome) const;

  // Whether the element has any content: other elements, or a text that isn't blank.
  bool TemConteudo(TNoXML no) const;
  // The element's text; empty when it has none. Raises EXML for an element with element children.
  std::string_view Texto(TNoXML no) const;
  // The attribute's value; empty when the element doesn't have it.
  std::string_view Atributo(TNoXML no, std::string_view nome) const;

  // How many nodes stand beside the root element, ahead of it and behind it: an XML declaration, comments, processing
  // instructions, a document type.
  std::size_t NosAntesDaRaiz() const { return FNosAntesDaRaiz; }
  std::size_t NosDepoisDaRaiz() const { return FNosDepoisDaRaiz; }

  // The document as if each prefix in turn had been taken out of its whole text, wherever it occurs: in names,
  // attribute values and texts. Raises EXML when what remains isn't well-formed.
  std::shared_ptr<const TDocumentoXML> SemPrefixos(std::span<const std::string_view> prefixos) const;

 private:
  friend class TLeitorXML;

  struct TTrecho {
    std::uint32_t Inicio = 0;
    std::uint32_t Tamanho = 0;
  };
  struct TElementoXML {
    std::uint32_t Nome = 0;
    std::uint32_t PrimeiroFilho = static_cast<std::uint32_t>(TNoXML::Nenhum);
    std::uint32_t ProximoIrmao = static_cast<std::uint32_t>(TNoXML::Nenhum);
    std::uint32_t PrimeiroAtributo = 0;
    std::uint32_t Atributos = 0;
    TTrecho Texto;
  };
  struct TAtributoXML {
    std::uint32_t Nome = 0;
    TTrecho Valor;
  };

  const TElementoXML& No(TNoXML no) const { return (*FNos)[static_cast<std::size_t>(no)]; }
  std::string_view Ler(TTrecho t) const { return std::string_view(*FTextos).substr(t.Inicio, t.Tamanho); }
  void ConferirAtributos() const;

  // Shared with the documents made of this one, as far as they are the same.
  std::shared_ptr<const std::vector<TElementoXML>> FNos;
  std::shared_ptr<const std::vector<TAtributoXML>> FAtributos;
  std::shared_ptr<const std::string> FTextos;
  std::vector<String> FNomes;
  std::size_t FNosAntesDaRaiz = 0;
  std::size_t FNosDepoisDaRaiz = 0;
};

// Reads a file in whatever encoding it declares. Raises EArquivo when it can't be read, EXML when it isn't well-formed.
// Nothing outside the file is read; the expansion of entities and the depth are bounded.
std::shared_ptr<const TDocumentoXML> LoadXMLDocument(const String& caminho);
// The same of a document in memory.
std::shared_ptr<const TDocumentoXML> LoadXMLTexto(std::string_view bytes);

// A file of which several roots are tried. It is read and parsed once, and edited once per list of prefixes; what that
// raised is raised again each time.
class TArquivoXML {
 public:
  explicit TArquivoXML(String caminho) : FCaminho(std::move(caminho)) {}

  // The document without those prefixes. Raises as LoadXMLDocument and SemPrefixos do.
  const std::shared_ptr<const TDocumentoXML>& Documento(std::span<const std::string_view> prefixos = {});

 private:
  struct TLeitura {
    std::vector<std::string_view> Prefixos;
    std::shared_ptr<const TDocumentoXML> Documento;
    std::exception_ptr Falha;
  };
  std::shared_ptr<const TDocumentoXML> Ler(std::span<const std::string_view> prefixos);

  String FCaminho;
  std::deque<TLeitura> FLeituras;
};

}  // namespace impnfse
