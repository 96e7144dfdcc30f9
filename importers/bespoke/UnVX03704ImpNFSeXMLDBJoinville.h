// The format of the notes that a company issued, as the portal of Joinville exports them: one company, many notes.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoJoinville =
    Formato("lote: @xmlns, prestador(Empresa), mes, ano, nota*(Nota)", "Empresa: documento, razao_social",
            "Nota: numero, codigo_verificacao, data_emissao, data_rps, serie_rps, numero_rps, numero_rps_inicial, "
            "numero_rps_final, cancelada, tomador(Tomador), servico, descricao_servicos, destino_servico, valor_total, "
            "valor_base_calculo, aliquota_iss, valor_iss, iss_retido, valor_irrf, valor_inss, valor_pis, valor_cofins, "
            "valor_csll, observacao",
            "Tomador: documento, nome, inscricao_municipal, situacao_especial, endereco, cidade, cep, bairro, estado, "
            "numero, complemento, pais");

using IXMLLoteJoinville = TElemento<kFormatoJoinville, "lote">;
using IXMLNotaJoinville = TElemento<kFormatoJoinville, "Nota">;

// The root of the file; nothing when it has another root.
inline std::optional<IXMLLoteJoinville> LoadloteJoinville(const String& arquivo) {
  static constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};
  return Load<IXMLLoteJoinville>(arquivo, {.Tag = "lote", .Prefixos = kPrefixos});
}

}  // namespace impnfse
