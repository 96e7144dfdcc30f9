// The format of Softplan's NFPS-e as it was until January 2018: one note, several services. Beside the note stand the
// documents that ask for one and for its cancellation, which nobody imports.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoSoftplan = Formato(
    "NFPSe: InfNFPSe(InfNFPSe), Protocolo(Protocolo)", "Protocolo: @Id",
    "InfNFPSe: @Id, Versao, TipoSistema, Identificacao, AEDF(InformacaoAEDF), CodigoVerificacao, NumeroSerie, "
    "NumeroSerieSubst, DataEmissao, DataProcessamento, DataCancelamento, MotivoCancelamento, CFPS, CodigoCampanha, "
    "StatusNFPSe, DadosServico(DadosServico), Prestador(DadosPrestador), Tomador(DadosTomador)",
    "InformacaoAEDF: AEDF, TipoAedf",
    "DadosServico: ItemServico*(ItemServico), BaseCalculo, ValorISSQN, BaseCalculoSubstituicao, "
    "ValorISSQNSubstituicao, ValorTotalServicos, DadosAdicionais",
    "ItemServico: IdCNAE, CodigoAtividade, DescricaoServico, CST, Aliquota, ValorUnitario, Quantidade, ValorTotal",
    "DadosPrestador: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "IdentificacaoPrestador: CNPJ, InscricaoMunicipal",
    "DadosTomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "IdentificacaoTomador: DocIdTomador(DocIdTomador), InscricaoMunicipal", "DocIdTomador: CPFCNPJ(CPFCNPJ), Outros",
    "CPFCNPJ: CNPJCPF=CNPJ|CPF", "Contato: Email, Telefone",
    "Endereco: Logradouro, NumeroEndereco, ComplementoEndereco, Bairro, Municipio(Municipio), "
    "CodigoPostal(CodigoPostal), UF, Pais",
    "Municipio: CodigoMunicipio, NomeMunicipio", "CodigoPostal: CEP, PostalCode",
    "Requisicao: InfRequisicao(InfRequisicao)",
    "InfRequisicao: @Id, Versao, TipoSistema, Identificacao, AEDF(InformacaoAEDF), CodigoVerificacao, DataEmissao, "
    "NumeroSerieRequisicao, NumeroSerieSubst, CFPS, StatusRequisicao, DadosServico(DadosServico), "
    "Prestador(DadosPrestador), Tomador(DadosTomador)",
    "RequisicaoCancelamento: InfRequisicaoCancelamento(InfRequisicaoCancelamento)",
    "InfRequisicaoCancelamento: @Id, Versao, TipoSistema, AEDF, NumeroSerie, MotivoCancelamento");

using IXMLNFPSe = TElemento<kFormatoSoftplan, "NFPSe">;
using IXMLInfNFPSe = TElemento<kFormatoSoftplan, "InfNFPSe">;
using IXMLItemServicoSoftplan = TElemento<kFormatoSoftplan, "ItemServico">;

// The root of a file; nothing when it has another root.
inline std::optional<IXMLNFPSe> LoadNFPSe(const String& arquivo) {
  static constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};
  return Load<IXMLNFPSe>(arquivo, {.Tag = "NFPSe", .Prefixos = kPrefixos});
}

}  // namespace impnfse
