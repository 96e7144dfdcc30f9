// The format of ELOTECH files: one note with its cancellation. Of the vendor's schema, whose messages of sending and
// asking nobody archives, this is what a note holds.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoELOTECH = Formato(
    "CompNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento), NfseSubstituicao(NfseSubstituicao), Xml",
    "Nfse: InfNfse(InfNfse)",
    "InfNfse: Numero, CodigoVerificacao, DataEmissao, NfseSubstituida, OutrasInformacoes, ValoresNfse(ValoresNfse), "
    "ValorCredito, OrgaoGerador(OrgaoGerador), DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico), ChaveAcesso",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse", "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: Rps(Rps), Competencia, Servico(Servico), "
    "DadosPrestador=DadosPrestador|Prestador(DadosPrestador), Tomador(Tomador), Intermediario(Intermediario), "
    "ConstrucaoCivil(ConstrucaoCivil), RegimeEspecialTributacao, IncentivoFiscal",
    "Rps: IdentificacaoRps(IdentificacaoRps), DataEmissao, Status, RpsSubstituido(IdentificacaoRps)",
    "IdentificacaoRps: Numero, Serie, Tipo",
    "Servico: Valores(Valores), IssRetido, ResponsavelRetencao, Discriminacao, CodigoMunicipio, CodigoPais, "
    "ExigibilidadeISS, MunicipioIncidencia, NumeroProcesso, ListaItensServico(ListaItensServico)",
    "Valores: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, OutrasRetencoes, "
    "ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado",
    "ListaItensServico: ItemServico*(ItemServico)",
    "ItemServico: ItemListaServico, CodigoCnae, Descricao, Tributavel, Quantidade, ValorUnitario, ValorDesconto, "
    "ValorLiquido, DadosDeducao(DadosDeducao)",
    "DadosDeducao: TipoDeducao, Cpf, Cnpj, NumeroNotaFiscalReferencia, ValorTotalNotaFiscal, PercentualADeduzir, "
    "ValorADeduzir",
    "DadosPrestador: IdentificacaoPrestador(Identificacao), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato), CpfCnpj(CpfCnpj)",
    "Identificacao: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cpf, Cnpj",
    "Endereco: Endereco, Numero, Complemento, Bairro, CodigoMunicipio, CidadeNome, Uf, CodigoPais, Cep",
    "Contato: Telefone, Email",
    "Tomador: IdentificacaoTomador(Identificacao), RazaoSocial, Endereco(Endereco), Contato(Contato), "
    "InscricaoEstadual",
    "Intermediario: IdentificacaoIntermediario(Identificacao), RazaoSocial",
    "ConstrucaoCivil: CodigoObra, Art, Incorporacao", "NfseCancelamento: ConfirmacaoCancelamento(Confirmacao)",
    "Confirmacao: Pedido(Pedido), DataHora", "Pedido: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: Numero, ChaveAcesso, CodigoCancelamento",
    "NfseSubstituicao: SubstituicaoNfse(SubstituicaoNfse)", "SubstituicaoNfse: NfseSubstituidora");

using IXMLCompNfseELOTECH = TElemento<kFormatoELOTECH, "CompNfse">;
using IXMLInfNfseELOTECH = TElemento<kFormatoELOTECH, "InfNfse">;
using IXMLNfseCancelamentoELOTECH = TElemento<kFormatoELOTECH, "NfseCancelamento">;
using IXMLDeclaracaoELOTECH = TElemento<kFormatoELOTECH, "InfDeclaracaoPrestacaoServico">;
using IXMLItemServicoELOTECH = TElemento<kFormatoELOTECH, "ItemServico">;

// The root of an ELOTECH file; nothing when it has another root.
inline std::optional<IXMLCompNfseELOTECH> LoadCompNfseELOTECH(const String& arquivo) {
  return Load<IXMLCompNfseELOTECH>(arquivo, {.Tag = "CompNfse"});
}

}  // namespace impnfse
