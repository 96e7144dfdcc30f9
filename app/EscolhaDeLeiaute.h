// Which layout a file is imported with when none was named.
#pragma once

#include <vector>

#include "Suite.h"

namespace impnfse::app {

// A layout that a file may follow, as the analysis has left it in TMP_GENERICA.
struct TCandidato {
  String Codigo;
  String Descricao;
  Int64 TP = 0;
};

// Analyses the file, and reads back its candidates in the order of the analysis. Raises EArquivo and EBanco.
std::vector<TCandidato> AnalisarArquivo(TSuite& suite, const String& arquivo);

// What was decided for a file.
struct TEscolha {
  String Leiaute = {};  // empty: nothing
  String Porque = {};   // for the report
  std::vector<TCandidato> Candidatos = {};
};

// The layout that the branch used last, if it is a candidate; else the only candidate; else the operator's answer, when
// the program stands on a terminal. Raises as AnalisarArquivo does.
TEscolha EscolherLeiaute(TSuite& suite, const TDadosFilial& filial, const String& arquivo);

// One line per candidate: its code and description.
String ListarCandidatos(const std::vector<TCandidato>& candidatos);

}  // namespace impnfse::app
