// The format of Betha's answers in ABRASF 2.02: one root with a list of notes, one service per note.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoBetha202 = Formato(
    "ConsultarNfseResposta: @xmlns, ListaNfse(ListaNfse)", "ListaNfse: CompNfse*(CompNfse)",
    "CompNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento)", "Nfse: @versao, InfNfse(InfNfse)",
    "InfNfse: Numero, CodigoVerificacao, DataEmissao, OutrasInformacoes, ValoresNfse(ValoresNfse), "
    "PrestadorServico(PrestadorServico), OrgaoGerador(OrgaoGerador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse",
    "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj=Cnpj|Cpf",
    "Endereco: Endereco, Numero, Complemento, Bairro, CodigoMunicipio, Uf, Cep, CodigoPais", "Contato: Telefone, Email",
    "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: Rps(Rps), Competencia, Servico(Servico), Prestador(Prestador), Tomador(Tomador), "
    "OptanteSimplesNacional, IncentivoFiscal",
    "Rps: IdentificacaoRps(IdentificacaoRps), DataEmissao, Status", "IdentificacaoRps: Numero, Serie, Tipo",
    "Servico: Valores(Valores), IssRetido, ResponsavelRetencao, ItemListaServico, Discriminacao, CodigoMunicipio, "
    "ExigibilidadeISS, MunicipioIncidencia",
    "Valores: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, OutrasRetencoes, "
    "ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado",
    "Prestador: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "Tomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj)", "NfseCancelamento: @versao, Confirmacao(Confirmacao)",
    "Confirmacao: Pedido(Pedido), DataHora", "Pedido: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: IdentificacaoNfse(IdentificacaoNfse)",
    "IdentificacaoNfse: Numero, CpfCnpj(CpfCnpj), InscricaoMunicipal, CodigoMunicipio");

using IXMLConsultarNfseRespostaBetha202 = TElemento<kFormatoBetha202, "ConsultarNfseResposta">;
using IXMLCompNfseBetha202 = TElemento<kFormatoBetha202, "CompNfse">;
using IXMLInfNfseBetha202 = TElemento<kFormatoBetha202, "InfNfse">;
using IXMLInfDeclaracaoBetha202 = TElemento<kFormatoBetha202, "InfDeclaracaoPrestacaoServico">;
using IXMLTomadorBetha202 = TElemento<kFormatoBetha202, "Tomador">;

// The root of a Betha 2.02 file; nothing when it has another root.
inline std::optional<IXMLConsultarNfseRespostaBetha202> LoadConsultarNfseRespostaBetha202(const String& arquivo) {
  return Load<IXMLConsultarNfseRespostaBetha202>(arquivo, {.Tag = "ConsultarNfseResposta"});
}

}  // namespace impnfse
