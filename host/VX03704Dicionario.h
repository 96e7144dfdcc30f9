// A dictionary from text to registers, walked in the order of insertion.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace impnfse {

// Owns its values; a copy has copies of them. A key that is already there takes the new value in the old place. Most
// dictionaries are the children of one document, and have a handful of entries: an index is kept of larger ones only.
template <class T>
class TDicionario {
 public:
  TDicionario() = default;
  TDicionario(TDicionario&&) noexcept = default;
  TDicionario& operator=(TDicionario&&) noexcept = default;
  TDicionario(const TDicionario& outro) : FChaves(outro.FChaves) {
    FValores.reserve(outro.FValores.size());
    for (const auto& valor : outro.FValores) FValores.push_back(std::make_unique<T>(*valor));
    if (FChaves.size() > kSemIndice) Indexar();
  }
  TDicionario& operator=(const TDicionario& outro) { return *this = TDicionario(outro); }
  ~TDicionario() = default;

  T& Add(const std::string& chave, std::unique_ptr<T> valor) {
    if (const auto posicao = Posicao(chave); posicao < Count()) return *(FValores[posicao] = std::move(valor));
    FChaves.push_back(chave);
    FValores.push_back(std::move(valor));
    if (FIndice != nullptr)
      FIndice->emplace(chave, Count() - 1);
    else if (Count() > kSemIndice)
      Indexar();
    return *FValores.back();
  }

  // The value under the key; null when there is none.
  T* TryGetValue(const std::string& chave) {
    const auto posicao = Posicao(chave);
    return posicao < Count() ? FValores[posicao].get() : nullptr;
  }

  std::size_t Count() const { return FValores.size(); }
  const std::vector<std::unique_ptr<T>>& Values() const { return FValores; }
  // Takes the value at that place out of the dictionary, where nothing stays in its place.
  std::unique_ptr<T> Retirar(std::size_t posicao) { return std::move(FValores[posicao]); }
  void Clear() { *this = TDicionario(); }

 private:
  static constexpr std::size_t kSemIndice = 16;

  // Where the key's value is; behind the last one when there is none.
  std::size_t Posicao(const std::string& chave) const {
    if (FIndice == nullptr)
      return static_cast<std::size_t>(std::find(FChaves.begin(), FChaves.end(), chave) - FChaves.begin());
    const auto achada = FIndice->find(chave);
    return achada == FIndice->end() ? Count() : achada->second;
  }
  void Indexar() {
    FIndice = std::make_unique<std::unordered_map<std::string, std::size_t>>();
    for (std::size_t i = 0; i < FChaves.size(); ++i) FIndice->emplace(FChaves[i], i);
  }

  std::vector<std::string> FChaves;
  std::vector<std::unique_ptr<T>> FValores;
  std::unique_ptr<std::unordered_map<std::string, std::size_t>> FIndice;
};

}  // namespace impnfse
