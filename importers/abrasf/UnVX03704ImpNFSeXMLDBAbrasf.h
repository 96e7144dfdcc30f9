// The national schema (ABRASF) in its versions 1.0 and 2.x, whose tags live side by side here, and the shapes in which
// municipalities and their vendors deliver it: one root each.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoAbrasf = Formato(
    // The roots. Six of them are an answer that wraps a list.
    "Resposta: ListaNfse(ListaNfse)", "RpsResposta: CompNfse(CompNfse)", "CompNfseList: CompNfse*(CompNfse)",
    "ArrayOfTcCompNfse: tcCompNfse*(TcCompNfse)",
    // The wrappers of a note; Nfse, CompNfse and ListaNfse are roots as well. A list holds items of one kind.
    "ListaNfse: CompNfse*(CompNfse), ComplNfse*(ComplNfse)", "CompNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento)",
    "ComplNfse: Nfse(Nfse), NfseCancelamento(NfseCancelamento), NfseSubstituicao", "TcCompNfse: Nfse(Nfse)",
    "Nfse: InfNfse(InfNfse), @versao, Signature=Signature|dsig:Signature(Signature)",
    "Signature: @xmlns, SignatureValue",
    // The note.
    "InfNfse: @id, Numero, Serie, CodigoVerificacao, DataEmissao, NaturezaOperacao, "
    "IdentificacaoRps(IdentificacaoRps), "
    "RegimeEspecialTributacao, OptanteSimplesNacional, IncentivadorCultural, Competencia, NfseSubstituida, "
    "OutrasInformacoes, Servico(DadosServico), ValoresNfse(ValoresNfse), ValorCredito, "
    "PrestadorServico(DadosPrestador), EnderecoPrestadorServico(Endereco), TomadorServico(DadosTomador), "
    "OrgaoGerador=OrgaoGerador|IdentificacaoOrgaoGerador(IdentificacaoOrgaoGerador), "
    "DeclaracaoPrestacaoServico(DeclaracaoPrestacaoServico), DataEmissaoRps",
    // The last five begin with a small letter here, and with a capital in Valores.
    "ValoresNfse: BaseCalculo, Aliquota, ValorIss, ValorIssRetido, ValorLiquidoNfse, valorIr, valorPis, valorCsll, "
    "valorInss, valorCofins",
    "DadosServico: Valores(ValoresDeclaracaoServico), IssRetido, ResponsavelRetencao, ItemListaServico, CodigoCnae, "
    "CodigoTributacaoMunicipio, Discriminacao, CodigoMunicipio=CodigoMunicipio|MunicipioPrestacaoServico, CodigoPais, "
    "ExigibilidadeISS, MunicipioIncidencia, NumeroProcesso",
    "ValoresDeclaracaoServico: ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, "
    "OutrasRetencoes, ValorIss, Aliquota, DescontoIncondicionado, DescontoCondicionado, IssRetido, BaseCalculo, "
    "ValorLiquidoNfse, ValorIssRetido",
    "DadosPrestador: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, NomeFantasia, Endereco(Endereco), "
    "Contato(Contato)",
    "DadosTomador: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), Contato(Contato)",
    "DadosIntermediario: IdentificacaoIntermediario(IdentificacaoIntermediario), RazaoSocial",
    "IdentificacaoPrestador: CpfCnpj(CpfCnpj), Cnpj, Cpf, InscricaoMunicipal",
    "IdentificacaoTomador: CpfCnpj(CpfCnpj), Cnpj, Cpf, InscricaoMunicipal, InscricaoEstadual",
    "IdentificacaoIntermediario: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "Endereco: Endereco, Numero, Complemento, Bairro, CodigoMunicipio=CodigoMunicipio|Cidade, Uf=Uf|Estado, Cep, "
    "CodigoPais?1058",
    "Contato: Telefone, Email", "IdentificacaoOrgaoGerador: CodigoMunicipio, Uf",
    "IdentificacaoRps: Numero, Serie, Tipo",
    // The declaration of versions 2.x.
    "DeclaracaoPrestacaoServico: InfDeclaracaoPrestacaoServico(InfDeclaracaoPrestacaoServico), "
    "dsig:Signature(Signature)",
    "InfDeclaracaoPrestacaoServico: Rps(InfRps), Competencia, Servico(DadosServico), "
    "Prestador(IdentificacaoPrestador), Tomador(DadosTomador), Intermediario(DadosIntermediario), "
    "ConstrucaoCivil(DadosConstrucaoCivil), RegimeEspecialTributacao, OptanteSimplesNacional, IncentivoFiscal",
    "InfRps: @Id, IdentificacaoRps(IdentificacaoRps), DataEmissao, Status, RpsSubstituido(IdentificacaoRps)",
    "DadosConstrucaoCivil: CodigoObra, Art",
    // The cancellation.
    "NfseCancelamento: Confirmacao(Confirmacao)",
    "Confirmacao: Pedido(Pedido), InfConfirmacaoCancelamento(InfConfirmacaoCancelamento)",
    "InfConfirmacaoCancelamento: Sucesso, DataHora", "Pedido: InfPedidoCancelamento(InfPedidoCancelamento)",
    "InfPedidoCancelamento: IdentificacaoNfse(IdentificacaoNfse), CodigoCancelamento",
    "IdentificacaoNfse: Numero, CpfCnpj(CpfCnpj), InscricaoMunicipal, CodigoMunicipio");

template <TTextoFixo Tipo>
using IXMLAbrasf = TElemento<kFormatoAbrasf, Tipo>;
using IXMLInfNfseAbrasf = IXMLAbrasf<"InfNfse">;
using IXMLDadosServicoAbrasf = IXMLAbrasf<"DadosServico">;
using IXMLDadosTomadorAbrasf = IXMLAbrasf<"DadosTomador">;
using IXMLValoresAbrasf = IXMLAbrasf<"ValoresDeclaracaoServico">;
using IXMLNfseCancelamentoAbrasf = IXMLAbrasf<"NfseCancelamento">;
using IXMLInfDeclaracaoAbrasf = IXMLAbrasf<"InfDeclaracaoPrestacaoServico">;

// What is read in another way than from one element, or the first of two.

// The CNPJ, or when that is empty the CPF, of an issuer or a taker: inside CpfCnpj when there is one, else bare.
template <class Identificacao>
String LerCnpjOuCpf(const Identificacao& identificacao) {
  if (identificacao.template Filho<"CpfCnpj">().Presente()) {
    const auto cnpj = identificacao.Texto("CpfCnpj/Cnpj");
    return cnpj.empty() ? identificacao.Texto("CpfCnpj/Cpf") : cnpj;
  }
  const auto cnpj = identificacao.Texto("Cnpj");
  return cnpj.empty() ? identificacao.Texto("Cpf") : cnpj;
}

// A flag that says nothing is 2, not retained.
inline String LerIssRetido(const IXMLValoresAbrasf& valores) {
  auto retido = valores.Texto("IssRetido");
  return Aparar(retido).empty() ? "2" : retido;
}
// Version 2.x has the flag beside the values, 1.0 among them.
inline String LerIssRetido(const IXMLDadosServicoAbrasf& servico) {
  if (servico.Tem("IssRetido")) return servico.Texto("IssRetido");
  return LerIssRetido(servico.Filho<"Valores">());
}

// Where the retained ISS has no element of its own, it is the ISS when the flag says so.
inline String LerValorIssRetido(const IXMLValoresAbrasf& valores) {
  if (valores.Tem("ValorIssRetido")) return valores.Texto("ValorIssRetido");
  return LerIssRetido(valores) == "1" ? valores.Texto("ValorIss") : "0";
}

}  // namespace impnfse
