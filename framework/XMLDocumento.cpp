#include "XMLDocumento.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "VX03704Erros.h"

namespace impnfse {
namespace {

String SemOcorrencias(String texto, std::span<const std::string_view> prefixos) {
  for (const auto prefixo : prefixos) texto = Substituir(texto, prefixo, "");
  return texto;
}

bool Ocorre(std::string_view texto, std::span<const std::string_view> prefixos) {
  return std::any_of(prefixos.begin(), prefixos.end(), [&](std::string_view p) { return texto.find(p) != texto.npos; });
}

bool PodeComecarNome(char c) { return c != '-' && c != '.' && !(c >= '0' && c <= '9'); }

}  // namespace

TNoXML TDocumentoXML::Filho(TNoXML no, std::string_view nome) const {
  auto filho = PrimeiroFilho(no);
  while (filho != TNoXML::Nenhum && Nome(filho) != nome) filho = ProximoIrmao(filho);
  return filho;
}

bool TDocumentoXML::TemConteudo(TNoXML no) const {
  return PrimeiroFilho(no) != TNoXML::Nenhum || !Aparar(Ler(No(no).Texto)).empty();
}

std::string_view TDocumentoXML::Texto(TNoXML no) const {
  if (PrimeiroFilho(no) != TNoXML::Nenhum)
    throw EXML(fmt::format("O elemento {} tem outros elementos onde se espera um texto.", Nome(no)));
  return Ler(No(no).Texto);
}

std::string_view TDocumentoXML::Atributo(TNoXML no, std::string_view nome) const {
  const auto& elemento = No(no);
  for (auto i = elemento.PrimeiroAtributo; i < elemento.PrimeiroAtributo + elemento.Atributos; ++i) {
    const auto& atributo = (*FAtributos)[i];
    if (FNomes[atributo.Nome] == nome) return Ler(atributo.Valor);
  }
  return {};
}

std::shared_ptr<const TDocumentoXML> TDocumentoXML::SemPrefixos(std::span<const std::string_view> prefixos) const {
  auto documento = std::make_shared<TDocumentoXML>(*this);
  for (auto& nome : documento->FNomes) {
    nome = SemOcorrencias(std::move(nome), prefixos);
    if (nome.empty() || !PodeComecarNome(nome.front()))
      throw EXML("Um elemento ou atributo ficou sem nome válido sem o seu prefixo.");
  }
  documento->ConferirAtributos();
  if (!Ocorre(*FTextos, prefixos)) return documento;

  auto nos = std::make_shared<std::vector<TElementoXML>>(*FNos);
  auto atributos = std::make_shared<std::vector<TAtributoXML>>(*FAtributos);
  auto textos = std::make_shared<std::string>();
  const auto copiar = [&](TTrecho& trecho) {
    const auto texto = SemOcorrencias(String(Ler(trecho)), prefixos);
    trecho = {static_cast<std::uint32_t>(textos->size()), static_cast<std::uint32_t>(texto.size())};
    *textos += texto;
  };
  for (auto& no : *nos) copiar(no.Texto);
  for (auto& atributo : *atributos) copiar(atributo.Valor);
  documento->FNos = std::move(nos);
  documento->FAtributos = std::move(atributos);
  documento->FTextos = std::move(textos);
  return documento;
}

// Two attributes that differed by their prefixes alone are one twice without them, which no document may have.
void TDocumentoXML::ConferirAtributos() const {
  for (const auto& no : *FNos) {
    for (auto i = no.PrimeiroAtributo; i < no.PrimeiroAtributo + no.Atributos; ++i)
      for (auto j = no.PrimeiroAtributo; j < i; ++j)
        if (FNomes[(*FAtributos)[i].Nome] == FNomes[(*FAtributos)[j].Nome])
          throw EXML(fmt::format("Atributo {} repetido sem o seu prefixo.", FNomes[(*FAtributos)[i].Nome]));
  }
}

const std::shared_ptr<const TDocumentoXML>& TArquivoXML::Documento(std::span<const std::string_view> prefixos) {
  auto leitura = std::find_if(FLeituras.begin(), FLeituras.end(), [&](const TLeitura& l) {
    return std::equal(l.Prefixos.begin(), l.Prefixos.end(), prefixos.begin(), prefixos.end());
  });
  if (leitura == FLeituras.end()) {
    TLeitura nova{{prefixos.begin(), prefixos.end()}, nullptr, nullptr};
    try {
      nova.Documento = Ler(prefixos);
    } catch (...) {
      nova.Falha = std::current_exception();
    }
    leitura = FLeituras.insert(FLeituras.end(), std::move(nova));
  }
  if (leitura->Falha) std::rethrow_exception(leitura->Falha);
  return leitura->Documento;
}

std::shared_ptr<const TDocumentoXML> TArquivoXML::Ler(std::span<const std::string_view> prefixos) {
  return prefixos.empty() ? LoadXMLDocument(FCaminho) : Documento()->SemPrefixos(prefixos);
}

}  // namespace impnfse
