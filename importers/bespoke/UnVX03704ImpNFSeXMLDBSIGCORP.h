// The format of SIGCORP files: one note with one service.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoSIGCORP = Formato(
    "NFe: Prefeitura, InscricaoPrestador, IEPrestador, CPFCNPJPrestador(CPFCNPJ), ChaveNFe(ChaveNFe), "
    "RazaoSocialPrestador, EnderecoPrestador(Endereco), TelefonePrestador, EmailPrestador, StatusNFe, TributacaoNFe, "
    "OpcaoSimples, ValorServicos, ValorBase, CodigoServico, AliquotaServicos, ValorINSS, ValorIR, ValorPIS, "
    "ValorCOFINS, ValorCSLL, ValorISS, ISSRetido, InscricaoTomador, CPFCNPJTomador(CPFCNPJ), IETomador, "
    "RazaoSocialTomador, EnderecoTomador(Endereco), TelefoneTomador, EmailTomador, Discriminacao",
    "CPFCNPJ: Documento=CNPJ|CPF", "ChaveNFe: NumeroNFe, SerieNFe, CodigoVerificacao, DataEmissaoNFe",
    "Endereco: Logradouro, NumeroEndereco, ComplementoEndereco, Bairro, Cidade, UF, CEP");

using IXMLNFeSIGCORP = TElemento<kFormatoSIGCORP, "NFe">;
using IXMLEnderecoSIGCORP = TElemento<kFormatoSIGCORP, "Endereco">;

// The root of a SIGCORP file; nothing when it has another root.
inline std::optional<IXMLNFeSIGCORP> LoadNFeSIGCORP(const String& arquivo) {
  static constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};
  return Load<IXMLNFeSIGCORP>(arquivo, {.Tag = "NFe", .Prefixos = kPrefixos});
}

}  // namespace impnfse
