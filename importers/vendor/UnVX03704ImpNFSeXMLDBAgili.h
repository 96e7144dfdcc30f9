// The format of Agili files before version 1.00: the answer to a range query, many notes with many services each. Flags
// are pairs of a code and a description.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoAgili = Formato(
    "ConsultarNfseFaixaResposta: ListaNfse(ListaNfse)", "ListaNfse: CompNfse*(CompNfse)", "CompNfse: Nfse(Nfse)",
    "Nfse: Numero, DataDeclaracao, OrgaoGerador(OrgaoGerador), DataEmissao, Status(Status), NfseSubstituida, "
    "ExigibilidadeISS(Par), NumeroProcesso, MunicipioIncidencia(MunicipioIncidencia), IssRetido(Par), "
    "ResponsavelRetencao(Par), CodigoAutenticidade, Prestador(Prestador), Tomador(Tomador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico), Observacao, ValoresNfse(ValoresNfse)",
    "OrgaoGerador: Municipio(Municipio), UF", "Municipio: CodigoIbge, Nome",
    "Status: Codigo, Descricao, DataCancelamento, MotivoCancelamento(Par)", "Par: Codigo, Descricao",
    "MunicipioIncidencia: CodigoIbge, Nome, UF",
    "Prestador: CpfCnpj(CpfCnpj), RazaoSocial, NomeFantasia, InscricaoMunicipal, InscricaoEstadual, "
    "Endereco(Endereco), Contato(Contato)",
    "CpfCnpj: Cnpj, Cpf",
    "Endereco: TipoLogradouro, Endereco, Numero, Complemento, Bairro, Municipio(Municipio), Uf, Cep, CodigoPaisBacen",
    "Contato: Telefone, Email",
    "Tomador: CpfCnpj(CpfCnpj), InscricaoMunicipal, InscricaoEstadual, RazaoSocial, Endereco(Endereco), Telefone, "
    "Email, Origem, Fantasia",
    "DeclaracaoPrestacaoServico: OptanteSimplesNacional(Par), RegimeEspecialTributacao(Par), "
    "TributacaoMunicipio(Par), Cnae(Par), Servico*(Servico)",
    "Servico: Discriminacao, Quantidade, ValorServico, Desconto, ItemLei116(Par)",
    "ValoresNfse: ValorTotalServicos, Descontos, RetencoesTributarias(RetencoesTributarias), ValorLiquido, "
    "DeducaoConstrucaoCivil, BaseCalculo, Aliquota, ValorIss, PercentualIsencao, ValorIssRecolher",
    "RetencoesTributarias: ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, OutrasRetencoes");

using IXMLConsultarNfseFaixaRespostaAgili = TElemento<kFormatoAgili, "ConsultarNfseFaixaResposta">;
using IXMLCompNfseAgili = TElemento<kFormatoAgili, "CompNfse">;
using IXMLNfseAgili = TElemento<kFormatoAgili, "Nfse">;
using IXMLServicoAgili = TElemento<kFormatoAgili, "Servico">;

// The root of an Agili file. Another root is an error.
inline IXMLConsultarNfseFaixaRespostaAgili LoadConsultarNfseFaixaRespostaAgili(const String& arquivo) {
  return LoadSemGuarda<IXMLConsultarNfseFaixaRespostaAgili>(arquivo, {.Tag = "ConsultarNfseFaixaResposta"});
}

}  // namespace impnfse
