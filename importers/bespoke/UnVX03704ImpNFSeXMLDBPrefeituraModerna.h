// The format of Prefeitura Moderna's exports: the economic movement of one provider, by periods of many notes, one
// service per note.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoPrefeituraModerna = Formato(
    "movimento_economico: filtro, usuario_geracao, data_geracao, prefeitura, prestador(Pessoa), periodos(Periodos)",
    "Pessoa: tipo_pessoa, nome, razao_social, cmc, inscricao_estadual, cpf_cnpj, email, telefone, endereco(Endereco)",
    "Endereco: logradouro, numero, cep, bairro, edificio, apto_loja, ibge_cidade, cidade, uf",
    "Periodos: periodo*(Periodo)", "Periodo: @ano, @mes, nota*(Nota)",
    "Nota: @numero, @conta, @serie, rps, tipo_nota, data_emissao, isento, simples_nacional, codigo_atividade, "
    "cnae_atividade, nome_atividade, ibge_cidade_prestacao, cidade_prestacao, base_calculo, valor_aliquota, "
    "valor_nota, valor_iss, valor_ir, valor_pis, valor_cofins, valor_inss, valor_csll, valor_liquido, "
    "tomador(Pessoa)");

using IXMLmovimento_economico = TElemento<kFormatoPrefeituraModerna, "movimento_economico">;
using IXMLPeriodoPrefeituraModerna = TElemento<kFormatoPrefeituraModerna, "Periodo">;
using IXMLNotaPrefeituraModerna = TElemento<kFormatoPrefeituraModerna, "Nota">;

// The root of a file. Raises EXML when it has another root.
inline IXMLmovimento_economico Loadmovimento_economico(const String& arquivo) {
  return LoadSemGuarda<IXMLmovimento_economico>(arquivo, {.Tag = "movimento_economico"});
}

}  // namespace impnfse
