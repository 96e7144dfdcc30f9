// Any bytes as an XML file: refused, or a document that can be walked whole, with and without its prefixes.
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>

#include "UnVX03704ImpNFSeXMLDBGINFES.h"

namespace {

using namespace impnfse;

std::size_t Percorrer(const TDocumentoXML& documento, TNoXML no) {
  std::size_t total = documento.Nome(no).size() + documento.Atributo(no, "id").size();
  auto filho = documento.PrimeiroFilho(no);
  if (filho == TNoXML::Nenhum) total += documento.Texto(no).size();
  for (; filho != TNoXML::Nenhum; filho = documento.ProximoIrmao(filho)) total += Percorrer(documento, filho);
  return total;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  const int descritor = ::memfd_create("entrada", 0);
  if (descritor < 0 || ::write(descritor, dados, tamanho) != static_cast<ssize_t>(tamanho)) std::abort();
  const auto caminho = "/proc/self/fd/" + std::to_string(descritor);
  static constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "a"};
  try {
    const auto documento = LoadXMLDocument(caminho);
    Percorrer(*documento, documento->Raiz());
    const auto semPrefixos = documento->SemPrefixos(kPrefixos);
    Percorrer(*semPrefixos, semPrefixos->Raiz());
    if (const auto raiz = LoadNFSE(caminho)) {
      const auto notas = raiz->Itens<"Nfse">();
      for (std::size_t i = 0; i < notas.Count(); ++i) notas[i].Texto("Servico/Valores/ValorServicos");
    }
  } catch (const EXML&) {
    // Refused: as good an answer as any.
  }
  ::close(descritor);
  return 0;
}
