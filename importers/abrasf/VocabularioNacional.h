// Words of the national schema (ABRASF) that its versions and the vendors who built on it write alike.
#pragma once

#include "UnVX03704ImpNFSeBase.h"

namespace impnfse {

// Street, number, complement, district and state of an `Endereco`. The municipality and the country are read by each
// layout in its own way.
template <class Endereco>
TDadosParte LerEnderecoNacional(const Endereco& endereco) {
  return {.ENDERECO = endereco.Texto("Endereco"),
          .NUM = endereco.Texto("Numero"),
          .COMPL = endereco.Texto("Complemento"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Uf")};
}

// A party: its name, its address, its municipality and its country, codes as they stand.
template <class Parte>
TDadosParte LerParteNacional(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  auto dados = LerEnderecoNacional(endereco);
  dados.NOME = parte.Texto("RazaoSocial");
  dados.COD_MUN = StrToIntDef(endereco.Texto("CodigoMunicipio"), 0);
  dados.COD_PAIS = CodigoPais(endereco.Texto("CodigoPais"));
  return dados;
}

// The CNPJ of a `CpfCnpj`, or the CPF when that is empty.
template <class CpfCnpj>
String LerCnpjOuCpfNacional(const CpfCnpj& documento) {
  const auto cnpj = documento.Texto("Cnpj");
  return cnpj.empty() ? documento.Texto("Cpf") : cnpj;
}

// The federal taxes among the `Valores` of a service.
template <class Valores>
TRetencoesFederais LerRetencoesNacionais(const Valores& valores) {
  return {.IR = valores.Valor("ValorIr"),
          .INSS = valores.Valor("ValorInss"),
          .PIS = valores.Valor("ValorPis"),
          .COFINS = valores.Valor("ValorCofins"),
          .CSLL = valores.Valor("ValorCsll")};
}

}  // namespace impnfse
