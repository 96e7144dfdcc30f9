// The format of ABRASF 2.03 notes. There is no root: a note stands anywhere in a document.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoAbrasf_v203 = Formato(
    "CompNfse: Nfse(Nfse), NfseCancelamento(CancelamentoNfse), NfseSubstituicao(SubstituicaoNfse)",
    "Nfse: InfNfse(InfNfse), @versao",
    "InfNfse: @Id, Numero, CodigoVerificacao, DataEmissao, NfseSubstituida, OutrasInformacoes, "
    "ValoresNfse(ValoresNfse), ValorCredito, PrestadorServico(DadosPrestador), "
    "OrgaoGerador(IdentificacaoOrgaoGerador), DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse",
    "DadosPrestador: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Endereco: Endereco, Numero, Complemento, Bairro, CodigoMunicipio, Uf, Cep, CodigoPais?1058",
    "Contato: Telefone, Email", "IdentificacaoOrgaoGerador: CodigoMunicipio, UF",
    "IdentificacaoRps: Numero, Serie, Tipo",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico), Signature",
    "InfDeclaracaoPrestacaoServico: Rps(InfRps), Competencia, Servico(DadosServico), "
    "Prestador(IdentificacaoPrestador), Tomador=Tomador|TomadorServico(DadosTomador), "
    "Intermediario(DadosIntermediario), ConstrucaoCivil(DadosConstrucaoCivil), RegimeEspecialTributacao, "
    "OptanteSimplesNacional, IncentivoFiscal, Id",
    "InfRps: Id, IdentificacaoRps(IdentificacaoRps), DataEmissao, Status, RpsSubstituido(IdentificacaoRps)",
    "DadosServico: Valores(ValoresDeclaracaoServico), IssRetido, ResponsavelRetencao, ItemListaServico, CodigoCnae, "
    "CodigoTributacaoMunicipio, CodigoNbs, Discriminacao, CodigoMunicipio, CodigoPais, ExigibilidadeISS, "
    "MunicipioIncidencia, NumeroProcesso",
    "ValoresDeclaracaoServico: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, "
    "OutrasRetencoes, ValTotTributos, ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado",
    "DadosTomador: IdentificacaoTomador(IdentificacaoTomador), NifTomador, RazaoSocial, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "DadosIntermediario: IdentificacaoIntermediario(IdentificacaoIntermediario), RazaoSocial, CodigoMunicipio",
    "IdentificacaoIntermediario: CpfCnpj(CpfCnpj), InscricaoMunicipal", "DadosConstrucaoCivil: CodigoObra, Art",
    "CancelamentoNfse: Confirmacao(ConfirmacaoCancelamento), versao",
    "ConfirmacaoCancelamento: Pedido(PedidoCancelamento), DataHora, Id",
    "PedidoCancelamento: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: IdentificacaoNfse(IdentificacaoNfse), CodigoCancelamento, Id",
    "IdentificacaoNfse: Numero, CpfCnpj(CpfCnpj), InscricaoMunicipal, CodigoMunicipio",
    "SubstituicaoNfse: SubstituicaoNfse(InfSubstituicaoNfse), versao", "InfSubstituicaoNfse: NfseSubstituidora, Id");

using IXMLCompNfse_v203 = TElemento<kFormatoAbrasf_v203, "CompNfse">;
using IXMLInfNfse_v203 = TElemento<kFormatoAbrasf_v203, "InfNfse">;
using IXMLInfDeclaracao_v203 = TElemento<kFormatoAbrasf_v203, "InfDeclaracaoPrestacaoServico">;
using IXMLCancelamentoNfse_v203 = TElemento<kFormatoAbrasf_v203, "CancelamentoNfse">;

}  // namespace impnfse
