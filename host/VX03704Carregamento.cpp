#include "VX03704Carregamento.h"

#include "Suite.h"

namespace impnfse {

bool TCarregamento::ImportouArquivos() {
  for (const auto& registro : FPendentes) FArmazem.Inserir(registro);
  return true;
}

bool TCarregamento::LimpouInformacoes() {
  FPendentes.clear();
  return true;
}

TCarregamento* BuscarInstanciaCarregamento() { return &TSuite::Atual().Carregamento(); }

}  // namespace impnfse
