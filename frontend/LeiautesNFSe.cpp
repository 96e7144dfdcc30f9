#include "LeiautesNFSe.h"

#include <array>

#include "UnVX03704ImpNFSe.h"
#include "UnVX03704ImpNFSeAbaseSistemas.h"
#include "UnVX03704ImpNFSeAbrasf.h"
#include "UnVX03704ImpNFSeAbrasfVersao203.h"
#include "UnVX03704ImpNFSeAgili.h"
#include "UnVX03704ImpNFSeAgili_v100.h"
#include "UnVX03704ImpNFSeBetha202.h"
#include "UnVX03704ImpNFSeBlumenau.h"
#include "UnVX03704ImpNFSeCampoGrande.h"
#include "UnVX03704ImpNFSeDBSeller.h"
#include "UnVX03704ImpNFSeDigifred.h"
#include "UnVX03704ImpNFSeELOTECH.h"
#include "UnVX03704ImpNFSeEquiplanoSistemas.h"
#include "UnVX03704ImpNFSeFacility.h"
#include "UnVX03704ImpNFSeGEFisco.h"
#include "UnVX03704ImpNFSeGINFES.h"
#include "UnVX03704ImpNFSeGrupoAssessor.h"
#include "UnVX03704ImpNFSeINFISC.h"
#include "UnVX03704ImpNFSeIPM.h"
#include "UnVX03704ImpNFSeJoinville.h"
#include "UnVX03704ImpNFSeJoinvilleServicosTomados.h"
#include "UnVX03704ImpNFSePaliariEngenhariaSoftware.h"
#include "UnVX03704ImpNFSePrefeituraModerna.h"
#include "UnVX03704ImpNFSeProdataInformatica.h"
#include "UnVX03704ImpNFSePronim.h"
#include "UnVX03704ImpNFSeRLZInformatica.h"
#include "UnVX03704ImpNFSeSEMFAZOnline_v108.h"
#include "UnVX03704ImpNFSeSIGCORP.h"
#include "UnVX03704ImpNFSeSoftplan.h"
#include "UnVX03704ImpNFSeSoftplanV022018.h"
#include "UnVX03704ImpNFSeSystemSolucoesSistemasInformacoes.h"
#include "UnVX03704ImpNFSeTecnosistemas.h"
#include "UnVX03704ImpNFSeTecnosistemasCFSe.h"
#include "UnVX03704ImpNFSeThemaISSQNEletronico.h"

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

// The family, under the ids that the rules above give. No rule gives 3 and 23.
constexpr std::array kImportadores = {
    TImportadorNFSe{1, "TNFSeAbrasf", Criar<TNFSeAbrasf>},
    TImportadorNFSe{2, "TNFSeJoinville", Criar<TNFSeJoinville>, TVariacaoNFSe::Nenhuma,
                    &TImpNFSe::NotaJoinvilleEhServicoPrestado},
    TImportadorNFSe{2, "TNFSeJoinvilleServicosTomados", Criar<TNFSeJoinvilleServicosTomados>},
    TImportadorNFSe{4, "TNFSeFacility", Criar<TNFSeFacility>},
    TImportadorNFSe{5, "TNFSeINFISC", Criar<TNFSeINFISC>},
    TImportadorNFSe{6, "TNFSeCampoGrande", Criar<TNFSeCampoGrande>},
    TImportadorNFSe{7, "TNFSeGEFisco", Criar<TNFSeGEFisco>, TVariacaoNFSe::ComRetorno},
    TImportadorNFSe{8, "TNFSeGINFES", Criar<TNFSeGINFES>},
    TImportadorNFSe{9, "TNFSePrefeituraModerna", Criar<TNFSePrefeituraModerna>},
    TImportadorNFSe{10, "TNFSeDigifred", Criar<TNFSeDigifred>},
    TImportadorNFSe{11, "TNFSeAgili", Criar<TNFSeAgili>},
    TImportadorNFSe{12, "TNFSeProdataInformatica", Criar<TNFSeProdataInformatica>},
    TImportadorNFSe{13, "TNFSeEquiplanoSistemas", Criar<TNFSeEquiplanoSistemas>},
    TImportadorNFSe{14, "TNFSePaliariEngenhariaSoftware", Criar<TNFSePaliariEngenhariaSoftware>},
    TImportadorNFSe{15, "TNFSeNFSeThemaISSQNEletronico", Criar<TNFSeNFSeThemaISSQNEletronico>},
    TImportadorNFSe{16, "TNFSeSIGCORP", Criar<TNFSeSIGCORP>},
    TImportadorNFSe{17, "TNFSeTecnosistemas", Criar<TNFSeTecnosistemas>},
    TImportadorNFSe{18, "TNFSeBetha202", Criar<TNFSeBetha202>, TVariacaoNFSe::SemErroNaLista},
    TImportadorNFSe{19, "TNFSeBlumenau", Criar<TNFSeBlumenau>, TVariacaoNFSe::SemErroNaLista},
    TImportadorNFSe{20, "TNFSeAgili_v100", Criar<TNFSeAgili_v100>},
    TImportadorNFSe{21, "TNFSeSoftplan", Criar<TNFSeSoftplan>},
    TImportadorNFSe{22, "TNFSeDBSeller", Criar<TNFSeDBSeller>},
    TImportadorNFSe{24, "TNFSePronim", Criar<TNFSePronim>},
    TImportadorNFSe{25, "TNFSeSystemSolucoesSistemasInformacoes", Criar<TNFSeSystemSolucoesSistemasInformacoes>},
    TImportadorNFSe{26, "TNFSeABASESistemas", Criar<TNFSeABASESistemas>},
    TImportadorNFSe{27, "TNFSeIPM", Criar<TNFSeIPM>},
    TImportadorNFSe{28, "TNFSeAbrasf_v203", Criar<TNFSeAbrasf_v203>},
    TImportadorNFSe{29, "TNFSeGrupoAssessor", Criar<TNFSeGrupoAssessor>},
    TImportadorNFSe{30, "TNFSeSoftplan022018", Criar<TNFSeSoftplan022018>},
    TImportadorNFSe{31, "TNFSeSEMFAZOnline", Criar<TNFSeSEMFAZOnline>},
    TImportadorNFSe{32, "TNFSeTecnosistemasCFSe", Criar<TNFSeTecnosistemasCFSe>},
    TImportadorNFSe{33, "TNFSeELOTECH", Criar<TNFSeELOTECH>},
    TImportadorNFSe{34, "TNFSeRLZInformatica", Criar<TNFSeRLZInformatica>},
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
        if (importador.Id == id) achados.push_back(&importador);
  }
  return achados;
}

}  // namespace impnfse
