// The format of Abase files: one note with a list of services, each with its own values.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoAbaseSistemas = Formato(
    "Nfse: InfNfse(InfNfse)",
    "InfNfse: Link, Numero, CodigoVerificacao, DataEmissao, Status, OptanteSimplesNacional, Competencia, "
    "NfseSubstituida, OutrasInformacoes, Servicos(Servicos), PrestadorServico(PrestadorServico), "
    "TomadorServico(TomadorServico), OrgaoGerador(OrgaoGerador)",
    "Servicos: Servico*(Servico)",
    "Servico: ItemListaServico, CodigoTributacaoMunicipio, Discriminacao, MunicipioPrestacaoServico, Valores(Valores)",
    "Valores: ValorServicos, IssRetido, BaseCalculo, Aliquota, ValorLiquidoNfse, ValorIss, ValorInss, ValorIr, "
    "ValorPis, ValorCofins, ValorCsll, DescontoCondicionado, DescontoIncondicionado",
    "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco)",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Endereco: Endereco, Numero, Bairro, Cidade, Estado, Cep",
    "TomadorServico: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj)", "OrgaoGerador: CodigoMunicipio, Uf");

using IXMLNfseAbaseSistemas = TElemento<kFormatoAbaseSistemas, "Nfse">;
using IXMLInfNfseAbaseSistemas = TElemento<kFormatoAbaseSistemas, "InfNfse">;
using IXMLServicoAbaseSistemas = TElemento<kFormatoAbaseSistemas, "Servico">;

// The root of an Abase file. Raises EXML when it has another root.
inline IXMLNfseAbaseSistemas LoadNfseAbaseSistemas(const String& arquivo) {
  return LoadSemGuarda<IXMLNfseAbaseSistemas>(arquivo, {.Tag = "Nfse"});
}

}  // namespace impnfse
