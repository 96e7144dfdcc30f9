// A value that most of its owners never need.
#pragma once

#include <memory>

namespace impnfse {

// A value that takes room once somebody writes it, and reads as a new one until then. A copy has its own.
template <class T>
class TSobDemanda {
 public:
  TSobDemanda() = default;
  TSobDemanda(TSobDemanda&&) noexcept = default;
  TSobDemanda& operator=(TSobDemanda&&) noexcept = default;
  TSobDemanda(const TSobDemanda& outro)
      : FValor(outro.FValor == nullptr ? nullptr : std::make_unique<T>(*outro.FValor)) {}
  TSobDemanda& operator=(const TSobDemanda& outro) { return *this = TSobDemanda(outro); }
  ~TSobDemanda() = default;

  T& operator*() {
    if (FValor == nullptr) FValor = std::make_unique<T>();
    return *FValor;
  }
  const T& operator*() const {
    static const T kNovo;
    return FValor == nullptr ? kNovo : *FValor;
  }

 private:
  std::unique_ptr<T> FValor;
};

}  // namespace impnfse
