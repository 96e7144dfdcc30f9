// A dictionary from text to registers, walked in the order of insertion.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace impnfse {

// Owns its values; a copy has copies of them. A key that is already there takes the new value in the old place.
template <class T>
class TDicionario {
 public:
  TDicionario() = default;
  TDicionario(TDicionario&&) noexcept = default;
  TDicionario& operator=(TDicionario&&) noexcept = default;
  TDicionario(const TDicionario& outro) : FPosicoes(outro.FPosicoes) {
    FValores.reserve(outro.FValores.size());
    for (const auto& valor : outro.FValores) FValores.push_back(std::make_unique<T>(*valor));
  }
  TDicionario& operator=(const TDicionario& outro) { return *this = TDicionario(outro); }
  ~TDicionario() = default;

  T& Add(const std::string& chave, std::unique_ptr<T> valor) {
    const auto [posicao, nova] = FPosicoes.try_emplace(chave, FValores.size());
    if (nova) FValores.emplace_back();
    return *(FValores[posicao->second] = std::move(valor));
  }

  // The value under the key; null when there is none.
  T* TryGetValue(const std::string& chave) {
    const auto posicao = FPosicoes.find(chave);
    return posicao == FPosicoes.end() ? nullptr : FValores[posicao->second].get();
  }

  std::size_t Count() const { return FValores.size(); }
  const std::vector<std::unique_ptr<T>>& Values() const { return FValores; }
  void Clear() {
    FPosicoes.clear();
    FValores.clear();
  }

 private:
  std::unordered_map<std::string, std::size_t> FPosicoes;
  std::vector<std::unique_ptr<T>> FValores;
};

}  // namespace impnfse
