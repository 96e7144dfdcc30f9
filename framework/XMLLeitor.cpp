// The parse of a file into a TDocumentoXML: libxml2's events, without its tree.
#include <fmt/format.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <cerrno>
#include <exception>
#include <functional>
#include <limits>
#include <unordered_map>

#include "ArquivoAberto.h"
#include "VX03704Erros.h"
#include "XMLDocumento.h"

namespace impnfse {
namespace {

constexpr std::int64_t kFolgaDeTexto = 1 << 20;

std::string_view Vista(const xmlChar* texto) {
  return texto == nullptr ? std::string_view() : reinterpret_cast<const char*>(texto);
}

// A name as the parser hands it over: prefix and local part, each one pointer per distinct text.
struct TNomeQualificado {
  const xmlChar* Prefixo;
  const xmlChar* Local;
  bool operator==(const TNomeQualificado&) const = default;
};
struct TDispersao {
  std::size_t operator()(const TNomeQualificado& n) const {
    const std::hash<const void*> h;
    return h(n.Prefixo) * 31 + h(n.Local);
  }
};

}  // namespace

class TLeitorXML {
 public:
  // Gives the next bytes of the document, `maximo` at most; 0 at the end.
  using TLerBytes = std::function<std::size_t(char* destino, std::size_t maximo)>;
  std::shared_ptr<const TDocumentoXML> Ler(std::int64_t tamanhoTotal, const TLerBytes& lerBytes);

 private:
  static void Recusar(void* contexto, const char* motivo) {
    De(contexto).FRecusa = motivo;
    xmlStopParser(static_cast<xmlParserCtxtPtr>(contexto));
  }
  // Counts text that the parser has handed over. Comes last in an event: refusing frees what the parser read into.
  static void Contar(void* contexto, std::size_t tamanho) {
    auto& resta = De(contexto).FRestaDeTexto;
    resta -= static_cast<std::int64_t>(tamanho);
    if (resta < 0) Recusar(contexto, "As entidades do arquivo se expandem além do limite.");
  }
  static TLeitorXML& De(void* contexto) {
    return *static_cast<TLeitorXML*>(static_cast<xmlParserCtxtPtr>(contexto)->_private);
  }
  static xmlSAXHandler Eventos();
  void AbrirElemento(TNomeQualificado nome);
  void AcrescentarAtributo(TNomeQualificado nome, std::string_view valor);
  void FecharElemento() { FAbertos.pop_back(); }
  void AcrescentarTexto(std::string_view texto);
  void ContarNoDeTopo() {
    if (FAbertos.empty()) ++(FNos.empty() ? FNosAntesDaRaiz : FNosDepoisDaRaiz);
  }
  std::uint32_t NumeroDoNome(TNomeQualificado nome);
  TDocumentoXML::TTrecho Guardar(std::string_view texto);
  static xmlEntityPtr SoInterna(void* contexto, xmlEntityPtr entidade);

  // An element that is still open, and its last child so far.
  struct TAberto {
    std::size_t No;
    std::uint32_t UltimoFilho;
  };
  std::vector<TDocumentoXML::TElementoXML> FNos;
  std::vector<TDocumentoXML::TAtributoXML> FAtributos;
  std::string FTextos;
  std::vector<String> FNomes;
  std::unordered_map<TNomeQualificado, std::uint32_t, TDispersao> FNumeros;
  std::vector<TAberto> FAbertos;
  // What the entities may add up to: texts can't be much longer than the file, whatever its encoding, unless entities
  // expand to them again and again.
  std::int64_t FRestaDeTexto = 0;
  std::size_t FNosAntesDaRaiz = 0;
  std::size_t FNosDepoisDaRaiz = 0;
  const char* FRecusa = nullptr;  // why the document was refused, when the parser itself would have gone on
};

std::uint32_t TLeitorXML::NumeroDoNome(TNomeQualificado nome) {
  const auto [posicao, novo] = FNumeros.try_emplace(nome, static_cast<std::uint32_t>(FNomes.size()));
  if (novo)
    FNomes.push_back(nome.Prefixo == nullptr ? String(Vista(nome.Local))
                                             : fmt::format("{}:{}", Vista(nome.Prefixo), Vista(nome.Local)));
  return posicao->second;
}

TDocumentoXML::TTrecho TLeitorXML::Guardar(std::string_view texto) {
  const TDocumentoXML::TTrecho trecho{static_cast<std::uint32_t>(FTextos.size()),
                                      static_cast<std::uint32_t>(texto.size())};
  FTextos += texto;
  return trecho;
}

void TLeitorXML::AbrirElemento(TNomeQualificado nome) {
  const auto numero = static_cast<std::uint32_t>(FNos.size());
  if (!FAbertos.empty()) {
    auto& [pai, ultimo] = FAbertos.back();
    if (FNos[pai].PrimeiroFilho == static_cast<std::uint32_t>(TNoXML::Nenhum)) {
      // What stood ahead of the first child is no text: nearly always the line break and the indentation.
      if (FNos[pai].Texto.Tamanho > 0) FTextos.resize(FNos[pai].Texto.Inicio);
      FNos[pai].Texto = {};
      FNos[pai].PrimeiroFilho = numero;
    } else {
      FNos[ultimo].ProximoIrmao = numero;
    }
    ultimo = numero;
  }
  TDocumentoXML::TElementoXML no;
  no.Nome = NumeroDoNome(nome);
  no.PrimeiroAtributo = static_cast<std::uint32_t>(FAtributos.size());
  FNos.push_back(no);
  FAbertos.push_back({numero, 0});
}

void TLeitorXML::AcrescentarAtributo(TNomeQualificado nome, std::string_view valor) {
  FAtributos.push_back({NumeroDoNome(nome), Guardar(valor)});
  ++FNos.back().Atributos;
}

void TLeitorXML::AcrescentarTexto(std::string_view texto) {
  if (FAbertos.empty()) return;
  auto& no = FNos[FAbertos.back().No];
  if (no.PrimeiroFilho != static_cast<std::uint32_t>(TNoXML::Nenhum)) return;
  if (no.Texto.Tamanho == 0) no.Texto.Inicio = static_cast<std::uint32_t>(FTextos.size());
  FTextos += texto;
  no.Texto.Tamanho += static_cast<std::uint32_t>(texto.size());
}

// An entity that stands outside the file is never read: a document that uses one is refused.
xmlEntityPtr TLeitorXML::SoInterna(void* contexto, xmlEntityPtr entidade) {
  if (entidade == nullptr || entidade->etype == XML_INTERNAL_GENERAL_ENTITY ||
      entidade->etype == XML_INTERNAL_PARAMETER_ENTITY || entidade->etype == XML_INTERNAL_PREDEFINED_ENTITY)
    return entidade;
  Recusar(contexto, "O arquivo usa uma entidade externa, que não é lida.");
  return nullptr;
}

xmlSAXHandler TLeitorXML::Eventos() {
  xmlSAXHandler sax{};
  xmlSAXVersion(&sax, 2);
  sax.startElementNs = [](void* contexto, const xmlChar* local, const xmlChar* prefixo, const xmlChar* /*uri*/,
                          int declaracoes, const xmlChar** namespaces, int atributos, int /*assumidos*/,
                          const xmlChar** valores) {
    static const auto* const kXmlns = reinterpret_cast<const xmlChar*>("xmlns");
    auto& leitor = De(contexto);
    leitor.AbrirElemento({prefixo, local});
    for (int i = 0; i < declaracoes; ++i) {
      const auto* const declarado = namespaces[std::ptrdiff_t{2} * i];
      const auto nome = declarado == nullptr ? TNomeQualificado{nullptr, kXmlns} : TNomeQualificado{kXmlns, declarado};
      leitor.AcrescentarAtributo(nome, Vista(namespaces[std::ptrdiff_t{2} * i + 1]));
    }
    std::size_t total = 0;
    for (int i = 0; i < atributos; ++i) {
      const auto* const* const a =
          valores + std::ptrdiff_t{5} * i;  // local part, prefix, URI, beginning and end of the value
      const std::string_view valor(reinterpret_cast<const char*>(a[3]), static_cast<std::size_t>(a[4] - a[3]));
      leitor.AcrescentarAtributo({a[1], a[0]}, valor);
      total += valor.size();
    }
    Contar(contexto, total);
  };
  sax.endElementNs = [](void* contexto, const xmlChar*, const xmlChar*, const xmlChar*) {
    De(contexto).FecharElemento();
  };
  sax.characters = [](void* contexto, const xmlChar* texto, int tamanho) {
    De(contexto).AcrescentarTexto({reinterpret_cast<const char*>(texto), static_cast<std::size_t>(tamanho)});
    Contar(contexto, static_cast<std::size_t>(tamanho));
  };
  sax.ignorableWhitespace = sax.characters;
  sax.cdataBlock = sax.characters;
  sax.comment = [](void* contexto, const xmlChar*) { De(contexto).ContarNoDeTopo(); };
  sax.processingInstruction = [](void* contexto, const xmlChar*, const xmlChar*) { De(contexto).ContarNoDeTopo(); };
  sax.resolveEntity = [](void*, const xmlChar*, const xmlChar*) -> xmlParserInputPtr { return nullptr; };
  sax.getEntity = [](void* contexto, const xmlChar* nome) {
    return SoInterna(contexto, xmlSAX2GetEntity(contexto, nome));
  };
  sax.getParameterEntity = [](void* contexto, const xmlChar* nome) {
    return SoInterna(contexto, xmlSAX2GetParameterEntity(contexto, nome));
  };
  // Errors are read from the context at the end; nothing is printed.
  sax.error = nullptr;
  sax.warning = nullptr;
  sax.fatalError = nullptr;
  sax.serror = [](void*, xmlErrorPtr) {};
  return sax;
}

std::shared_ptr<const TDocumentoXML> TLeitorXML::Ler(std::int64_t tamanhoTotal, const TLerBytes& lerBytes) {
  FRestaDeTexto = 4 * tamanhoTotal + kFolgaDeTexto;
  FTextos.reserve(static_cast<std::size_t>(tamanhoTotal) / 4);

  // No exception may pass through the parser: one of the reading is kept until it has ended.
  struct TOrigem {
    const TLerBytes& Ler;
    std::exception_ptr Falha;
  } origem{lerBytes, nullptr};
  const auto ler = [](void* o, char* bloco, int tamanho) {
    auto* const lida = static_cast<TOrigem*>(o);
    try {
      return static_cast<int>(lida->Ler(bloco, static_cast<std::size_t>(tamanho)));
    } catch (const std::exception&) {
      lida->Falha = std::current_exception();
      return -1;
    }
  };
  const auto liberar = [](xmlParserCtxtPtr c) {
    if (c->myDoc != nullptr) xmlFreeDoc(c->myDoc);
    xmlFreeParserCtxt(c);
  };
  auto sax = Eventos();
  const std::unique_ptr<xmlParserCtxt, decltype(liberar)> contexto(
      xmlCreateIOParserCtxt(&sax, nullptr, ler, nullptr, &origem, XML_CHAR_ENCODING_NONE), liberar);
  if (contexto == nullptr) throw EXML("O arquivo não pôde ser aberto como XML.");
  contexto->_private = this;
  xmlCtxtUseOptions(contexto.get(), XML_PARSE_NONET | XML_PARSE_NOENT);
  xmlParseDocument(contexto.get());

  if (origem.Falha) std::rethrow_exception(origem.Falha);
  if (FRecusa != nullptr) throw EXML(FRecusa);
  if (contexto->wellFormed == 0 || FNos.empty()) {
    const auto* const erro = xmlCtxtGetLastError(contexto.get());
    throw EXML(fmt::format("XML malformado na linha {}.", erro == nullptr ? 1 : erro->line));
  }
  auto documento = std::make_shared<TDocumentoXML>();
  // The parser has -1 here for a document without declaration.
  const bool temDeclaracao = contexto->standalone != -1;
  const bool temTipo = contexto->myDoc != nullptr && contexto->myDoc->intSubset != nullptr;
  documento->FNosAntesDaRaiz = FNosAntesDaRaiz + (temDeclaracao ? 1 : 0) + (temTipo ? 1 : 0);
  documento->FNosDepoisDaRaiz = FNosDepoisDaRaiz;
  documento->FNos = std::make_shared<const std::vector<TDocumentoXML::TElementoXML>>(std::move(FNos));
  documento->FAtributos = std::make_shared<const std::vector<TDocumentoXML::TAtributoXML>>(std::move(FAtributos));
  documento->FTextos = std::make_shared<const std::string>(std::move(FTextos));
  documento->FNomes = std::move(FNomes);
  return documento;
}

std::shared_ptr<const TDocumentoXML> LoadXMLDocument(const String& caminho) {
  TArquivoAberto arquivo(caminho);
  // Places in a document are counted in 32 bits.
  if (arquivo.Tamanho() > std::numeric_limits<std::int32_t>::max()) arquivo.Falhar(EFBIG);
  return TLeitorXML().Ler(arquivo.Tamanho(),
                          [&](char* destino, std::size_t maximo) { return arquivo.Ler(destino, maximo); });
}

std::shared_ptr<const TDocumentoXML> LoadXMLTexto(std::string_view bytes) {
  if (bytes.size() > std::numeric_limits<std::int32_t>::max()) throw EXML("O texto é grande demais para um documento.");
  return TLeitorXML().Ler(static_cast<std::int64_t>(bytes.size()), [&](char* destino, std::size_t maximo) {
    const auto lidos = bytes.copy(destino, maximo);
    bytes.remove_prefix(lidos);
    return lidos;
  });
}

}  // namespace impnfse
