// The format of SEMFAZ Online files, version 1.08: one note with one service.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoSEMFAZOnline = Formato(
    "NfseType: @LinkPdf, Prestador(PrestadorType), NumeroNota, Serie, CodigoVerificacao, Competencia, DataEmissao, "
    "IssRetido, NaturezaOperacao, RegimeEspecialTributacao, SimplesNacional, IncentivoFiscal, SituacaoNota, "
    "Tomador(TomadorType), ItemListaServico, Descricao, CodigoMunicipioIbgePrestacao, CodigoMunicipioIbgeIncidencia, "
    "Tdis(TdisType), Valores(ValoresType)",
    "PrestadorType: NumeroDocumento, Inscricao, Localidade",
    "TomadorType: Documento, Nome, Email, NumeroLogradouro, ComplementoLogradouro, Telefone, Bairro, Cidade, Uf, Cep, "
    "CodigoMunicipioIbge, CodigoPaisBacen",
    "TdisType: @LinkPdf, DataCancelamento, Motivacao",
    "ValoresType: ValorCredito, ValorServicos, ValorDeducoes, ValorPis, ValorCofins, ValorInss, ValorIr, ValorCsll, "
    "ValorOutrasRetencoes, ValorBaseCalculo, ValorAliquota, ValorIss, ValorIssRetido");

using IXMLNfseTypeSEMFAZOnline = TElemento<kFormatoSEMFAZOnline, "NfseType">;

// The root of a SEMFAZ Online file; nothing when it has another root.
inline std::optional<IXMLNfseTypeSEMFAZOnline> LoadnfseSEMFAZOnline(const String& arquivo) {
  return Load<IXMLNfseTypeSEMFAZOnline>(arquivo, {.Tag = "nfse"});
}

}  // namespace impnfse
