// The suite's one connection to its database.
#pragma once

#include "BancoFirebird.h"
#include "VX03704Tipos.h"

namespace impnfse {

class TVXConnection {
 public:
  explicit TVXConnection(TBancoFirebird& banco) : FBanco(banco) {}

  // Runs one statement, within the run's transaction when there is one. True when it went through; a refusal raises
  // nothing and is told in the status. The two middle arguments are the suite's and change nothing here.
  bool ExecutouSQL(const String& sql, int opcao, bool mostraErro, TResultStatus& status);

 private:
  TBancoFirebird& FBanco;
};
// Set while a TSuite lives.
inline TVXConnection* VXConnection = nullptr;

}  // namespace impnfse
