// The format of System Soluções files, an ABRASF of its own: two roots over one list of notes, and a declaration may
// hold several services.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoSystemSolucoes = Formato(
    "ConsultarNfseFaixaResposta: @xmlns, ListaNfse(ListaNfse)", "GerarNfseResposta: @xmlns, ListaNfse(ListaNfse)",
    "ListaNfse: CompNfse*(CompNfse), ProximaPagina", "CompNfse: Nfse(Nfse)", "Nfse: InfNfse(InfNfse)",
    "InfNfse: @Id, Numero, CodigoVerificacao, DataEmissao, OutrasInformacoes, ValoresNfse(ValoresNfse), "
    "PrestadorServico(PrestadorServico), OrgaoGerador(OrgaoGerador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse",
    "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Endereco: Endereco, Numero, Bairro, CodigoMunicipio, Uf, CodigoPais, Cep, Complemento", "Contato: Email, Telefone",
    "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: @Id, Competencia, Servico*(Servico), Prestador(Prestador), Tomador(Tomador), "
    "RegimeEspecialTributacao, OptanteSimplesNacional, IncentivoFiscal",
    "Servico: Valores(Valores), IssRetido, ItemListaServico, Discriminacao, CodigoMunicipio, ExigibilidadeISS, "
    "MunicipioIncidencia",
    "Valores: ValorServicos, ValorIss, Aliquota, Desconto, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, "
    "ValorCsll, DescontoIncondicionado, DescontoCondicionado",
    "Prestador: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "Tomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), Contato(Contato)");

using IXMLConsultarNfseFaixaRespostaSystemSolucoes = TElemento<kFormatoSystemSolucoes, "ConsultarNfseFaixaResposta">;
using IXMLGerarNfseRespostaSystemSolucoes = TElemento<kFormatoSystemSolucoes, "GerarNfseResposta">;
using IXMLCompNfseSystemSolucoes = TElemento<kFormatoSystemSolucoes, "CompNfse">;
using IXMLInfNfseSystemSolucoes = TElemento<kFormatoSystemSolucoes, "InfNfse">;
using IXMLCpfCnpjSystemSolucoes = TElemento<kFormatoSystemSolucoes, "CpfCnpj">;
using IXMLDeclaracaoSystemSolucoes = TElemento<kFormatoSystemSolucoes, "InfDeclaracaoPrestacaoServico">;
using IXMLServicoSystemSolucoes = TElemento<kFormatoSystemSolucoes, "Servico">;
using TServicosSystemSolucoes = TItens<kFormatoSystemSolucoes, "Servico">;

}  // namespace impnfse
