// The format of Agili files of version 1.00: one note with its services, whose values stand flat in the declaration.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoAgili_v100 = Formato(
    "Nfse: @xmlns, Numero, CodigoAutenticidade, DataEmissao, SituacaoNfse(SituacaoNfse), "
    "IdentificacaoOrgaoGerador(IdentificacaoOrgaoGerador), DadosPrestador(DadosPrestador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "SituacaoNfse: Codigo, DataCancelamento, Descricao", "IdentificacaoOrgaoGerador: Municipio(Municipio)",
    "Municipio: CodigoMunicipioIBGE, Descricao, Uf", "DadosPrestador: RazaoSocial, NomeFantasia, Endereco(Endereco)",
    "Endereco: TipoLogradouro, Logradouro, Numero, Complemento, Bairro, Municipio(Municipio), Pais(Pais), Cep",
    "Pais: CodigoPaisBacen, Descricao",
    "DeclaracaoPrestacaoServico: IdentificacaoPrestador(IdentificacaoPrestador), NfseSubstituida, "
    "DadosTomador(DadosTomador), OptanteSimplesNacional, OptanteMEISimei, ISSQNRetido, ResponsavelISSQN(Par), "
    "CodigoAtividadeEconomica, ExigibilidadeISSQN(Par), MunicipioIncidencia(Municipio), ValorServicos, "
    "ValorDescontos, ValorPis, ValorCofins, ValorInss, ValorIrrf, ValorCsll, ValorOutrasRetencoes, "
    "ValorBaseCalculoISSQN, AliquotaISSQN, ValorISSQNCalculado, PercAbatimento, ValorISSQNRecolher, "
    "ValorDeducaoConstCivil, ValorLiquido, ListaServico(ListaServico), Versao",
    "IdentificacaoPrestador: ChaveDigital, CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "DadosTomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, LocalEndereco, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "Contato: Telefone, Email", "Par: Codigo, Descricao",
    "ListaServico: DadosServico*(DadosServico)",
    "DadosServico: Discriminacao, CodigoCnae, ItemLei116, Quantidade, ValorServico, ValorDesconto");

using IXMLNfseAgili_v100 = TElemento<kFormatoAgili_v100, "Nfse">;
using IXMLDeclaracaoAgili_v100 = TElemento<kFormatoAgili_v100, "DeclaracaoPrestacaoServico">;
using IXMLDadosServicoAgili_v100 = TElemento<kFormatoAgili_v100, "DadosServico">;

// The root of an Agili 1.00 file; nothing when it has another root.
inline std::optional<IXMLNfseAgili_v100> LoadNfseAgili_v100(const String& arquivo) {
  return Load<IXMLNfseAgili_v100>(arquivo, {.Tag = "Nfse"});
}

}  // namespace impnfse
