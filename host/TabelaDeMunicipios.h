// CA06_MUNICIPIO, the table of municipalities, and its CSV form.
#pragma once

#include <soci/soci.h>

#include <optional>
#include <string_view>
#include <vector>

#include "VXUtilsTexto.h"

namespace impnfse {

// One municipality. Unknown values are absent, and NULL in the table.
struct TLinhaMunicipio {
  String NOME;
  String UF;
  String CODIGOFEDERAL;            // IBGE's seven digits
  std::optional<String> CODSRF;    // code at the federal revenue
  std::optional<String> CEPGERAL;  // first postal code of its range, or its only one
  std::optional<String> CEPFINAL;  // last postal code of its range
};

enum class TCargaMunicipios {
  Completar,   // replaces the municipalities whose federal code the rows have; the others stay, ahead of the
               // rows
  Substituir,  // empties the table first
};

// A CSV with the header NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL. An empty cell is absent. Raises EConversao with
// the number of the first line that is wrong.
std::vector<TLinhaMunicipio> LerMunicipiosCSV(std::string_view csv);

// Writes the rows in the transaction in force. Raises what SOCI raises. A lookup that takes the first row finds them in
// the order given. A municipality that the table already had keeps its IDMUNICIPIO, which registers refer to.
void GravarMunicipios(soci::session& sessao, const std::vector<TLinhaMunicipio>& linhas, TCargaMunicipios carga);

}  // namespace impnfse
