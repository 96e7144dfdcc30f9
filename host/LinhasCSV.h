// The CSV files of this module: a header line, then cells separated by ";", without quoting.
#pragma once

#include <string_view>
#include <vector>

#include "VXUtilsTexto.h"

namespace impnfse {

struct TLinhaCSV {
  std::size_t Numero;           // in the file, from 1
  std::vector<String> Celulas;  // trimmed; as many as the header has
};

// The lines behind the header; blank lines are passed over. Raises EConversao for another header or a line with another
// number of cells.
std::vector<TLinhaCSV> LerCSV(std::string_view csv, std::string_view cabecalho);

}  // namespace impnfse
