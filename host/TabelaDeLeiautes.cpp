#include "TabelaDeLeiautes.h"

#include <fmt/format.h>

#include "LinhasCSV.h"
#include "VX03704Erros.h"

namespace impnfse {

std::vector<TLinhaLeiaute> LerLeiautesCSV(std::string_view csv) {
  std::vector<TLinhaLeiaute> leiautes;
  for (const auto& linha : LerCSV(csv, "CODIGO;TP;DESCRICAO")) {
    const TLinhaLeiaute leiaute{StrToIntDef(linha.Celulas[0], 0), StrToIntDef(linha.Celulas[1], 0), linha.Celulas[2]};
    if (leiaute.CODIGO <= 0 || leiaute.TP <= 0 || leiaute.DESCRICAO.empty())
      throw EConversao(fmt::format("Linha {}: CODIGO, TP e DESCRICAO são obrigatórios.", linha.Numero));
    leiautes.push_back(leiaute);
  }
  return leiautes;
}

void GravarLeiautes(soci::session& sessao, const std::vector<TLinhaLeiaute>& leiautes) {
  TLinhaLeiaute leiaute;
  soci::statement insercao = (sessao.prepare << "INSERT INTO ES02_SERVICOLEIAUTE (IDSERVICOLEIAUTE, CODIGO, TP, "
                                                "DESCRICAO) VALUES (GEN_ID(GN_ES02_SERVICOLEIAUTE, 1), :codigo, :tp, "
                                                ":descricao)",
                              soci::use(leiaute.CODIGO), soci::use(leiaute.TP), soci::use(leiaute.DESCRICAO));
  for (const auto& l : leiautes) {
    leiaute = l;
    insercao.execute(true);
  }
}

}  // namespace impnfse
