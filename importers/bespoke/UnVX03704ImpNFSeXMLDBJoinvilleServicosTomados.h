// The format of the notes that a company received, as the portal of Joinville exports them: one company, many notes.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoJoinvilleServicosTomados = Formato(
    "lote: @xmlns, tomador(Empresa), mes, ano, nota_recebida*(Nota_recebida)", "Empresa: documento, razao_social",
    "Nota_recebida: numero, codigo_verificacao, data_emissao, data_rps, serie_rps, numero_rps, numero_rps_inicial, "
    "numero_rps_final, cancelada, prestador(Prestador), servico, descricao_servicos, destino_servico, valor_total, "
    "valor_base_calculo, aliquota_iss, valor_iss, iss_retido, valor_irrf, valor_inss, valor_pis, valor_cofins, "
    "valor_csll, observacao, local_servico",
    "Prestador: documento, nome, nome_fantasia, inscricao_municipal, cep, endereco, numero, complemento, bairro, "
    "cidade, estado");

using IXMLLoteJoinvilleServicosTomados = TElemento<kFormatoJoinvilleServicosTomados, "lote">;
using IXMLNotaJoinvilleServicosTomados = TElemento<kFormatoJoinvilleServicosTomados, "Nota_recebida">;

// The root of the file; nothing when it has another root.
inline std::optional<IXMLLoteJoinvilleServicosTomados> LoadloteJoinvilleServicosTomados(const String& arquivo) {
  static constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};
  return Load<IXMLLoteJoinvilleServicosTomados>(arquivo, {.Tag = "lote", .Prefixos = kPrefixos});
}

}  // namespace impnfse
