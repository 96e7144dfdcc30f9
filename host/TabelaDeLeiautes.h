// ES02_SERVICOLEIAUTE, the list of layouts that an operator chooses from, and its CSV form.
#pragma once

#include <soci/soci.h>

#include <string_view>
#include <vector>

#include "VXUtilsTexto.h"

namespace impnfse {

struct TLinhaLeiaute {
  int CODIGO = 0;
  int TP = 0;  // bit word; bit value 4 marks a layout of NFS-e files
  String DESCRICAO;
};

// A CSV with the header CODIGO;TP;DESCRICAO. Raises EConversao with the number of the first line that is wrong.
std::vector<TLinhaLeiaute> LerLeiautesCSV(std::string_view csv);

// Adds the layouts to the empty table, in the transaction in force. Raises what SOCI raises.
void GravarLeiautes(soci::session& sessao, const std::vector<TLinhaLeiaute>& leiautes);

}  // namespace impnfse
