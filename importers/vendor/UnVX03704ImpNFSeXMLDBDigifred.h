// The format of Digifred files: the answer to the sending of a receipt, one note with one service.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoDigifred = Formato(
    "GerarNfseResposta: ListaNfse(ListaNfse)", "ListaNfse: CompNfse(CompNfse)", "CompNfse: Nfse(Nfse)",
    "Nfse: @versao, InfNfse(InfNfse)",
    "InfNfse: @Id, Numero, CodigoVerificacao, DataEmissao, OutrasInformacoes, ValoresNfse(ValoresNfse), "
    "EnderecoPrestadorServico(Endereco), OrgaoGerador(OrgaoGerador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse", "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: @Id, Rps(Rps), Competencia, Servico(Servico), Prestador(Prestador), "
    "Tomador(Tomador), RegimeEspecialTributacao, OptanteSimplesNacional, IncentivoFiscal",
    "Rps: IdentificacaoRps(IdentificacaoRps), DataEmissao, Status", "IdentificacaoRps: Numero, Serie, Tipo",
    "Servico: Valores(Valores), IssRetido, ItemListaServico, CodigoCnae, CodigoTributacaoMunicipio, Discriminacao, "
    "CodigoMunicipio, ExigibilidadeISS, MunicipioIncidencia",
    "Valores: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, OutrasRetencoes, "
    "DescontoIncondicionado, DescontoCondicionado",
    "Prestador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: CnpjCpf=Cnpj|Cpf",
    "Tomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj)", "Endereco: Endereco, Numero, Bairro, CodigoMunicipio, Uf, Cep");

using IXMLGerarNfseRespostaDigifred = TElemento<kFormatoDigifred, "GerarNfseResposta">;
using IXMLInfNfseDigifred = TElemento<kFormatoDigifred, "InfNfse">;
using IXMLDeclaracaoDigifred = TElemento<kFormatoDigifred, "InfDeclaracaoPrestacaoServico">;
using IXMLEnderecoDigifred = TElemento<kFormatoDigifred, "Endereco">;

// The root of a Digifred file. Another root is an error.
inline IXMLGerarNfseRespostaDigifred LoadGerarNfseRespostaDigifred(const String& arquivo) {
  return LoadSemGuarda<IXMLGerarNfseRespostaDigifred>(arquivo, {.Tag = "GerarNfseResposta"});
}

}  // namespace impnfse
