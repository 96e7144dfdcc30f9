// The files of sql/ and data/ that the module carries in itself.
#pragma once

#include <string_view>

namespace impnfse::embutidos {

extern const std::string_view kEsquemaSQL;
extern const std::string_view kMunicipiosCSV;
extern const std::string_view kLeiautesCSV;
extern const std::string_view kServicosCSV;

}  // namespace impnfse::embutidos
