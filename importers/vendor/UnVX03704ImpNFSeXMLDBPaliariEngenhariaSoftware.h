// The format of Paliari files: the answer to a provider who asks for its notes, each with one service.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoPaliari = Formato(
    "ConsultarNfseServicoPrestadoResposta: ListaNfse(ListaNfse)", "ListaNfse: CompNfse*(CompNfse)",
    "CompNfse: Nfse(Nfse)", "Nfse: @versao, InfNfse(InfNfse)",
    "InfNfse: Numero, CodigoVerificacao, DataEmissao, ValoresNfse(ValoresNfse), PrestadorServico(PrestadorServico), "
    "OrgaoGerador(OrgaoGerador), DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse",
    "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Endereco: Endereco, Numero, Complemento, Bairro, CodigoMunicipio, Uf, Cep", "Contato: Telefone, Email",
    "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: Competencia, Servico(Servico), Prestador(Prestador), Tomador(Tomador), "
    "RegimeEspecialTributacao, OptanteSimplesNacional, IncentivoFiscal",
    "Servico: Valores(Valores), IssRetido, ItemListaServico, CodigoCnae, Discriminacao, CodigoMunicipio, "
    "ExigibilidadeISS, MunicipioIncidencia",
    "Valores: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, OutrasRetencoes, "
    "ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado",
    "Prestador: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "Tomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj)");

using IXMLConsultarNfseServicoPrestadoRespostaPaliari =
    TElemento<kFormatoPaliari, "ConsultarNfseServicoPrestadoResposta">;
using IXMLCompNfsePaliari = TElemento<kFormatoPaliari, "CompNfse">;
using IXMLInfNfsePaliari = TElemento<kFormatoPaliari, "InfNfse">;
using IXMLDeclaracaoPaliari = TElemento<kFormatoPaliari, "InfDeclaracaoPrestacaoServico">;

// The root of a Paliari file; nothing when it has another root.
inline std::optional<IXMLConsultarNfseServicoPrestadoRespostaPaliari> LoadConsultarNfseServicoPrestadoRespostaPaliari(
    const String& arquivo) {
  return Load<IXMLConsultarNfseServicoPrestadoRespostaPaliari>(arquivo,
                                                               {.Tag = "ConsultarNfseServicoPrestadoResposta"});
}

}  // namespace impnfse
