// Companies and their branches, as registered in the database.
#pragma once

#include <optional>
#include <vector>

#include "BancoFirebird.h"
#include "VX03704Tipos.h"

namespace impnfse {

// A branch with its settings.
struct TFilialRegistrada {
  TDadosFilial Dados = {};
  String NOME = {};
  int CasasPrefixoCFOP = 3;   // digits behind the CFOP of a service
  int RemoverCaracteres = 0;  // TCfgCA06_IMPORTACFG::REMOVERCARACTERES
  String ArquivoMorto = {};   // archive folder; files stay where they are when it is empty
};

// All branches, in the order of registration.
std::vector<TFilialRegistrada> ListarFiliais(TBancoFirebird& banco);

// The branch with the CNPJ, if it is registered.
std::optional<TFilialRegistrada> BuscarFilial(TBancoFirebird& banco, const String& cnpj);

// Registers the branch, or updates the one with the same CNPJ (which keeps its id).
void GravarFilial(TBancoFirebird& banco, const TFilialRegistrada& filial);

}  // namespace impnfse
