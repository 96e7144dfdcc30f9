// The format of DBSeller files: the notes of one month, each with its cancellation.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoDBSeller = Formato(
    "ConsultaRPSCompetencia: Mes, Ano, ListaNfse(ListaNfse)", "ListaNfse: CompNfse*(CompNfse)",
    "CompNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento)", "Nfse: InfNfse(InfNfse)",
    "InfNfse: Numero, CodigoVerificacao, DataEmissao, IdentificacaoRps(IdentificacaoRps), DataEmissaoRps, "
    "NaturezaOperacao, RegimeEspecialTributacao, OptanteSimplesNacional, IncentivadorCultural, Competencia, "
    "OutrasInformacoes, Servico(Servico), PrestadorServico(PrestadorServico), TomadorServico(TomadorServico), "
    "IntermediarioServico(IntermediarioServico), OrgaoGerador(OrgaoGerador), ConstrucaoCivil(ConstrucaoCivil)",
    "IdentificacaoRps: Numero, Serie, Tipo",
    "Servico: Valores(Valores), ItemListaServico, CodigoCnae, Discriminacao, CodigoMunicipio, "
    "CodigoTributacaoMunicipio",
    "Valores: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorIss, ValorCsll, IssRetido, "
    "ValorIssRetido, OutrasRetencoes, BaseCalculo, Aliquota, ValorLiquidoNfse, DescontoIncondicionado, "
    "DescontoCondicionado",
    "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoPrestador: Cnpj, Cpf, InscricaoMunicipal",
    "Endereco: EnderecoDescricao, Numero, Complemento, Bairro, CodigoMunicipio, Uf, Cep", "Contato: Telefone, Email",
    "TomadorServico: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "IntermediarioServico: CpfCnpj(CpfCnpj)", "OrgaoGerador: CodigoMunicipio, Uf", "ConstrucaoCivil: CodigoObra, Art",
    "NfseCancelamento: Confirmacao(Confirmacao)",
    "Confirmacao: Pedido(Pedido), InfConfirmacaoCancelamento(InfConfirmacaoCancelamento)",
    "Pedido: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: IdentificacaoNfse(IdentificacaoNfse), CodigoCancelamento",
    "IdentificacaoNfse: Numero, Cnpj, InscricaoMunicipal, CodigoMunicipio",
    "InfConfirmacaoCancelamento: Sucesso, DataHora");

using IXMLConsultaRPSCompetenciaDBSeller = TElemento<kFormatoDBSeller, "ConsultaRPSCompetencia">;
using IXMLCompNfseDBSeller = TElemento<kFormatoDBSeller, "CompNfse">;
using IXMLInfNfseDBSeller = TElemento<kFormatoDBSeller, "InfNfse">;

// The root of a DBSeller file; nothing when it has another root.
inline std::optional<IXMLConsultaRPSCompetenciaDBSeller> LoadConsultaRPSCompetenciaDBSeller(const String& arquivo) {
  return Load<IXMLConsultaRPSCompetenciaDBSeller>(arquivo, {.Tag = "ConsultaRPSCompetencia"});
}

}  // namespace impnfse
