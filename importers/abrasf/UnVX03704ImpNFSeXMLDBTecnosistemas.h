// The format of Tecnosistemas notes: the answer to a consultation, one root with many notes, several services per note.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

// The services of a note are `tcDadosServico` elements inside one `Servico` or `Servicos`, or as many `Servico`
// elements, each a service itself.
inline constexpr auto kFormatoTecnosistemas = Formato(
    "ConsultarNfseRpsResposta: ListaNfse(ListaNfse)", "ListaNfse: CompNfse*(CompNfse)",
    "CompNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento)", "Nfse: @versao, InfNfse(InfNfse)",
    "InfNfse: @Id, LinkNota, Numero, CodigoVerificacao, DataEmissao, NfseSubstituida, OutrasInformacoes, "
    "ValoresNfse(ValoresNfse), ValorCredito, EnderecoPrestadorServico(Endereco), ContatoPrestadorServico(Contato), "
    "OrgaoGerador(OrgaoGerador), DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico)",
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorLiquidoNfse",
    "Endereco: Endereco, Numero, Complemento, Bairro, CodigoMunicipio, Uf, CodigoPais, Cep", "Contato: Telefone, Email",
    "OrgaoGerador: CodigoMunicipio, Uf",
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico)",
    "InfDeclaracaoPrestacaoServico: @Id, Rps(Rps), Competencia, Servico=Servico|Servicos*(Servico), "
    "Prestador(Prestador), Tomador(Tomador), Intermediario(Intermediario), ConstrucaoCivil(ConstrucaoCivil), "
    "RegimeEspecialTributacao, NaturezaOperacao, OptanteSimplesNacional, IncentivoFiscal, PercentualCargaTributaria, "
    "ValorCargaTributaria, OutrasInformacoes, TipoNota, SiglaUF, IdCidade, EspecieDocumento, SerieTalonario, "
    "FormaPagamento, NumeroParcela",
    "Rps: IdentificacaoRps(IdentificacaoRps), DataEmissao, Status, RpsSubstituido(IdentificacaoRps)",
    "IdentificacaoRps: Numero, Serie, Tipo",
    "Servico: DadosServico=tcDadosServico|TcDadosServico*(Servico), Valores(Valores), IssRetido, ResponsavelRetencao, "
    "ItemListaServico, CodigoCnae, CodigoTributacaoMunicipio, Discriminacao, CodigoMunicipio, CodigoPais, "
    "ExigibilidadeISS, MunicipioIncidencia, NumeroProcesso",
    "Valores: BaseCalculoCRS, IrrfIndenizacao, ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, "
    "ValorIr, ValorCsll, OutrasRetencoes, ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado",
    "Prestador: CpfCnpj(CpfCnpj), RazaoSocial, InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Tomador: IdentificacaoTomador(Identificacao), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "Identificacao: CpfCnpj(CpfCnpj), InscricaoMunicipal",
    "Intermediario: IdentificacaoIntermediario(Identificacao), RazaoSocial", "ConstrucaoCivil: CodigoObra, Art",
    "NfseCancelamento: @versao, Confirmacao(Confirmacao)", "Confirmacao: @Id, Pedido(Pedido), DataHora",
    "Pedido: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: @Id, IdentificacaoNfse(IdentificacaoNfse), CodigoCancelamento, MotivoCancelamento",
    "IdentificacaoNfse: Numero, CpfCnpj(CpfCnpj), InscricaoMunicipal, CodigoMunicipio");

using IXMLConsultarNfseRpsRespostaTecnosistemas = TElemento<kFormatoTecnosistemas, "ConsultarNfseRpsResposta">;
using IXMLCompNfseTecnosistemas = TElemento<kFormatoTecnosistemas, "CompNfse">;
using IXMLInfNfseTecnosistemas = TElemento<kFormatoTecnosistemas, "InfNfse">;
using IXMLDeclaracaoTecnosistemas = TElemento<kFormatoTecnosistemas, "InfDeclaracaoPrestacaoServico">;
using IXMLServicoTecnosistemas = TElemento<kFormatoTecnosistemas, "Servico">;
using IXMLEnderecoTecnosistemas = TElemento<kFormatoTecnosistemas, "Endereco">;
using IXMLCpfCnpjTecnosistemas = TElemento<kFormatoTecnosistemas, "CpfCnpj">;

// The root of a Tecnosistemas file; nothing when it has another root.
inline std::optional<IXMLConsultarNfseRpsRespostaTecnosistemas> LoadConsultarNfseRpsRespostaTecnosistemas(
    const String& arquivo) {
  return Load<IXMLConsultarNfseRpsRespostaTecnosistemas>(arquivo, {.Tag = "ConsultarNfseRpsResposta"});
}

}  // namespace impnfse
