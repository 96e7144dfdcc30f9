// The format of Pronim's ABRASF 2.02 files: a list of notes, the answer to a batch of provisional receipts, or one note
// alone; one service per note.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoPronim = Formato(
    "ListaNfse: CompNfse*(CompNfse)", "ConsultarLoteRpsResposta: Situacao, ListaNfse(ListaNfse)",
    "CompNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento)", "Nfse: @versao, InfNfse(InfNfse)",
    "InfNfse: @Id, Numero, CodigoVerificacao, DataEmissao, OutrasInformacoes, ValoresNfse(ValoresNfse), "
    "PrestadorServico(PrestadorServico), OrgaoGerador(OrgaoGerador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse",
    "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato)",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Endereco: Endereco, Numero, Bairro, CodigoMunicipio, Uf, CodigoPais, Cep, Complemento", "Contato: Telefone, Email",
    "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: Competencia, Servico(Servico), Prestador(Prestador), Tomador(Tomador), "
    "OptanteSimplesNacional, IncentivoFiscal",
    "Servico: Valores(Valores), IssRetido, ItemListaServico, CodigoTributacaoMunicipio, Discriminacao, "
    "CodigoMunicipio, CodigoPais, ExigibilidadeISS, MunicipioIncidencia",
    "Valores: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, OutrasRetencoes, "
    "ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado",
    "Prestador: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "Tomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj)", "NfseCancelamento: @versao, Confirmacao(Confirmacao)",
    "Confirmacao: @Id, Pedido(Pedido), DataHora", "Pedido: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: @Id, IdentificacaoNfse(IdentificacaoNfse), CodigoCancelamento",
    "IdentificacaoNfse: Numero, CpfCnpj(CpfCnpj), InscricaoMunicipal, CodigoMunicipio");

using IXMLListaNfsePronim = TElemento<kFormatoPronim, "ListaNfse">;
using IXMLConsultarLoteRpsRespostaPronim = TElemento<kFormatoPronim, "ConsultarLoteRpsResposta">;
using IXMLCompNfsePronim = TElemento<kFormatoPronim, "CompNfse">;
using IXMLInfNfsePronim = TElemento<kFormatoPronim, "InfNfse">;
using IXMLCpfCnpjPronim = TElemento<kFormatoPronim, "CpfCnpj">;
using IXMLDeclaracaoPronim = TElemento<kFormatoPronim, "InfDeclaracaoPrestacaoServico">;

}  // namespace impnfse
