// The format of Softplan's NFPS-e since February 2018: one note, all of it under the root but its several services.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoSoftplanV022018 = Formato(
    "xmlNfpse: numeroAEDF, numeroSerie, NumeroSerieSubst, codigoVerificacao, dataEmissao, dataProcessamento, "
    "dataCancelamento, motivoCancelamento, cfps, statusNFPSe, baseCalculo, valorISSQN, valorTotalServicos, "
    "dadosAdicionais, cnpjPrestador, inscricaoMunicipalPrestador, razaoSocialPrestador, logradouroPrestador, "
    "bairroPrestador, nomeMunicipioPrestador, codigoPostalPrestador, ufPrestador, emailPrestador, telefonePrestador, "
    "identificacao, identificacaoTomador, razaoSocialTomador, logradouroTomador, numeroEnderecoTomador, bairroTomador, "
    "codigoMunicipioTomador, codigoPostalTomador, ufTomador, paisTomador, emailTomador, telefoneTomador, "
    "itensServico(ItensServico)",
    "ItensServico: itemServico*(ItemServico)",
    "ItemServico: aliquota, codigoCNAE, cst, descricaoCNAE, descricaoServico, idCNAE, quantidade, valorTotal, "
    "valorUnitario");

using IXMLxmlNfpse = TElemento<kFormatoSoftplanV022018, "xmlNfpse">;
using IXMLitemServicoSoftplanV022018 = TElemento<kFormatoSoftplanV022018, "ItemServico">;

// The root of a file; nothing when it has another root.
inline std::optional<IXMLxmlNfpse> LoadxmlNfpse(const String& arquivo) {
  return Load<IXMLxmlNfpse>(arquivo, {.Tag = "xmlNfpse"});
}

}  // namespace impnfse
