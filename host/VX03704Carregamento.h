// The suite's load of maintenance records. One per process.
#pragma once

#include <vector>

#include "ArmazemRegistros.h"

namespace impnfse {

class TCarregamento {
 public:
  explicit TCarregamento(TArmazemRegistros& armazem) : FArmazem(armazem) {}

  // Adds a record to what the load will write.
  void BuscarAuxManutencao(const TRegistroAuxManutencao* registro) { FPendentes.push_back(*registro); }
  // Writes the added records within the run's transaction. Raises EBanco.
  bool ImportouArquivos();
  // Forgets the added records.
  bool LimpouInformacoes();

 private:
  TArmazemRegistros& FArmazem;
  std::vector<TRegistroAuxManutencao> FPendentes;
};
// Raises std::logic_error while no TSuite lives.
TCarregamento* BuscarInstanciaCarregamento();

}  // namespace impnfse
