// A query data set: the rows of one SELECT, read whole.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "VX03704RegistroCampos.h"
#include "VXUtilsTexto.h"

namespace impnfse {

// The rows that a query gave, every cell as text: integers in decimal, money with all its decimals, dates as
// YYYY-MM-DD, NULL as nothing.
struct TLinhasConsulta {
  std::vector<String> Colunas;  // in capitals
  std::vector<std::vector<std::optional<String>>> Linhas;
};

// One cell of the current row.
class TCampoDataSet {
 public:
  explicit TCampoDataSet(const std::optional<String>* celula) : FCelula(celula) {}
  // The empty text for NULL.
  String GetAsString() const { return FCelula->value_or(String()); }

 private:
  const std::optional<String>* FCelula;
};

class TVXClientDataSet {
 public:
  // Empties the data set; the command text stays.
  void Close() { Abrir({}); }
  void SetCommandText(String sql) { FCommandText = std::move(sql); }
  const String& GetCommandText() const { return FCommandText; }

  bool IsEmpty() const { return FPosicao >= FDados.Linhas.size(); }
  // Goes to the next row; past the last one the data set is empty.
  void Next() { ++FPosicao; }

  bool TemColuna(std::string_view nome) const { return Coluna(nome) < FDados.Colunas.size(); }
  // A cell of the current row. Raises std::out_of_range without a row or for a column that the query doesn't have.
  TCampoDataSet FieldByName(std::string_view nome) const;
  // The same as an integer; 0 for NULL.
  Int64 GetInt64FieldValue(std::string_view nome) const;

  // Called by the data module: the rows of the command.
  void Abrir(TLinhasConsulta dados);

 private:
  std::size_t Coluna(std::string_view nome) const;

  String FCommandText;
  TLinhasConsulta FDados;
  std::size_t FPosicao = 0;
};

}  // namespace impnfse
