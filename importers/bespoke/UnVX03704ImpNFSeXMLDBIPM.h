// The format of IPM files: one note with its services. The issuer is a number and a city, no more.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoIPM = Formato(
    "nfse: nf(Nf), prestador(Prestador), tomador(Tomador), itens(Itens)",
    "Nf: numero_nfse, serie_nfse, data_nfse, hora_nfse, valor_total, valor_desconto, valor_ir, valor_inss, "
    "valor_contribuicao_social, valor_rps, valor_pis, valor_cofins, observacao, situacao_codigo_nfse",
    "Prestador: cpfcnpj, cidade",
    "Tomador: tipo, cpfcnpj, ie, nome_razao_social, sobrenome_nome_fantasia, logradouro, email, complemento, "
    "ponto_referencia, bairro, cidade, cep, ddd_fone_comercial, fone_comercial, ddd_fone_residencial, "
    "fone_residencial, ddd_fax, fone_fax",
    "Itens: lista*(Lista)",
    "Lista: codigo_local_prestacao_servico, codigo_item_lista_servico, descritivo, aliquota_item_lista_servico, "
    "situacao_tributaria, valor_tributavel, valor_deducao, valor_issrf, tributa_municipio_prestador, unidade_codigo, "
    "unidade_quantidade, unidade_valor_unitario");

template <TTextoFixo Tipo>
using IXMLIPM = TElemento<kFormatoIPM, Tipo>;

// The root of an IPM file. Raises EXML when the file has another one.
inline IXMLIPM<"nfse"> LoadnfseIPM(const String& arquivo) {
  return LoadSemGuarda<IXMLIPM<"nfse">>(arquivo, {.Tag = "nfse"});
}

}  // namespace impnfse
