// The format of GINFES files: one root with many notes, one service per note.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoGINFES =
    Formato("NFSE: Nfse*(Nfse)",
            "Nfse: IdentificacaoNfse(IdentificacaoNfse), DataEmissao, NaturezaOperacao, RegimeEspecialTributacao, "
            "OptanteSimplesNacional, IncetivadorCultural, Competencia, Servico(Servico), ValorCredito, "
            "PrestadorServico(PrestadorServico), OrgaoGerador(OrgaoGerador), TomadorServico(TomadorServico), "
            "NfseSubstituida(NfseSubstituida)",
            "IdentificacaoNfse: Numero, CodigoVerificacao",
            "Servico: Valores(Valores), ItemListaServico, CodigoTributacaoMunicipio, Discriminacao, "
            "MunicipioPrestacaoServico",
            "Valores: ValorServicos, IssRetido, ValorIss, BaseCalculo, Aliquota, ValorLiquidoNfse, ValorIssRetido",
            "PrestadorServico: IdentificacaoPrestador(IdentificacaoPrestador), RazaoSocial, Endereco(Endereco), "
            "Contato",
            "IdentificacaoPrestador: CnpjCpf=Cnpj|Cpf, InscricaoMunicipal",
            "Endereco: Endereco, Numero, Bairro, Cidade, Estado, Cep, Complemento", "OrgaoGerador: CodigoMunicipio, Uf",
            "TomadorServico: IdentificacaoTomador(IdentificacaoTomador), RazaoSocial, Endereco(Endereco), "
            "Contato(Contato)",
            "IdentificacaoTomador: CpfCnpj(CpfCnpj), InscricaoMunicipal", "CpfCnpj: CnpjCpf=Cnpj|Cpf",
            "Contato: Telefone, Email", "NfseSubstituida: Numero, CodigoVerificacao");

using IXMLNFSEGINFES = TElemento<kFormatoGINFES, "NFSE">;
using IXMLNfseGINFES = TElemento<kFormatoGINFES, "Nfse">;

// The root of a GINFES file; nothing when it has another root.
inline std::optional<IXMLNFSEGINFES> LoadNFSE(const String& arquivo) {
  static constexpr std::array<std::string_view, 2> kPrefixos = {"ns2:", "ns3:"};
  return Load<IXMLNFSEGINFES>(arquivo, {.Tag = "NFSE", .Prefixos = kPrefixos});
}

}  // namespace impnfse
