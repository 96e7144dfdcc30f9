// The floor of an import: what no importer can do without.
#pragma once

#include <string>

namespace impnfse::bench {

struct TPiso {
  double Leitura;   // seconds of one libxml2 parse of the file's bytes, whole tree, freed again; 0 for a text file
  double Insercao;  // seconds of inserting the same rows: prepared statements, one transaction, commit included
  double Linhas;    // rows inserted
};

// Measures the floor of the import that filled the database `importado`: its rows are read back first, then inserted
// into `vazio`, a database as the import found it. Raises when some row of any table is then missing in it.
TPiso MedirPiso(const std::string& arquivo, const std::string& importado, const std::string& vazio);

}  // namespace impnfse::bench
