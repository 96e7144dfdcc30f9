#include "LeiautesNFSe.h"

#include <array>

#include "UnVX03704ImpNFSe.h"
#include "UnVX03704ImpNFSeGINFES.h"

namespace impnfse {
namespace {

constexpr std::array kRegras = {
    TRegraLeiaute{"17", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"22", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"33", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"44", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"46", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"47", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"57", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"58", 1, &TImpNFSe::EhLeiauteABRASFVersao203, 28},
    TRegraLeiaute{"34", 4, &TImpNFSe::EhLeiauteIPM, 27},
    TRegraLeiaute{"36", 2},
    TRegraLeiaute{"39", 5},
    TRegraLeiaute{"40", 6},
    TRegraLeiaute{"41", 7},
    TRegraLeiaute{"42", 19},
    TRegraLeiaute{"43", 8},
    TRegraLeiaute{"8", 9},
    TRegraLeiaute{"32", 10},
    TRegraLeiaute{"45", 11, &TImpNFSe::EhLeiauteAgiliVersao100, 20},
    TRegraLeiaute{"48", 12},
    TRegraLeiaute{"49", 13},
    TRegraLeiaute{"50", 14},
    TRegraLeiaute{"7", 15},
    TRegraLeiaute{"21", 16},
    TRegraLeiaute{"27", 17, &TImpNFSe::EhLeiauteTecnosistemasCFSe, 32},
    TRegraLeiaute{"53", 21, &TImpNFSe::EhLeiauteSoftplanVersao022018, 30},
    TRegraLeiaute{"54", 22},
    TRegraLeiaute{"51", 1, &TImpNFSe::EhLeiautePronimVersao202, 24},
    TRegraLeiaute{"55", 25},
    TRegraLeiaute{"1", 1, &TImpNFSe::EhLeiauteBethaVersao202, 18},
    TRegraLeiaute{"31", 26},
    TRegraLeiaute{"59", 29},
    TRegraLeiaute{"60", 31},
    TRegraLeiaute{"61", 33},
    TRegraLeiaute{"62", 34},
};

template <class Importador>
std::unique_ptr<TNFSeBase> Criar() {
  return std::make_unique<Importador>(false);
}

// Every importer has its row here, under the id that the rules above give; an id without a row is an unknown code.
constexpr std::array kImportadores = {
    TImportadorNFSe{8, "TNFSeGINFES", Criar<TNFSeGINFES>},
};

}  // namespace

std::span<const TRegraLeiaute> RegrasDeLeiaute() { return kRegras; }

std::span<const TImportadorNFSe> ImportadoresNFSe() { return kImportadores; }

std::vector<const TImportadorNFSe*> ImportadoresDoLeiaute(std::string_view codigo) {
  std::vector<const TImportadorNFSe*> achados;
  for (const auto& regra : kRegras) {
    if (regra.Codigo != codigo) continue;
    for (const auto id : {regra.Id, regra.IdSeVale})
      for (const auto& importador : kImportadores)
        if (id != 0 && importador.Id == id) achados.push_back(&importador);
  }
  return achados;
}

}  // namespace impnfse
