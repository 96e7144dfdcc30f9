#include "VXDataAccess.h"

#include <algorithm>

namespace impnfse {

TCampoDataSet TVXClientDataSet::FieldByName(std::string_view nome) const {
  return TCampoDataSet(&FDados.Linhas.at(FPosicao).at(Coluna(nome)));
}

Int64 TVXClientDataSet::GetInt64FieldValue(std::string_view nome) const {
  return StrToInt64Def(FieldByName(nome).GetAsString(), 0);
}

void TVXClientDataSet::Abrir(TLinhasConsulta dados) {
  FDados = std::move(dados);
  FPosicao = 0;
}

std::size_t TVXClientDataSet::Coluna(std::string_view nome) const {
  // Column names stand in capitals in the database, whatever the case of the register's field.
  const auto achada = std::find(FDados.Colunas.begin(), FDados.Colunas.end(), Maiusculas(nome));
  return static_cast<std::size_t>(achada - FDados.Colunas.begin());
}

}  // namespace impnfse
