// The format of Equiplano files: a list of notes or one note, one service each.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoEquiplano = Formato(
    "listaNfs: @xmlns, nfs*(Nfs)",
    "Nfs: nrNfs, cdAutenticacao, dtEmissaoNfs, nrRps, nrEmissorRps, dtEmissaoRps, tpTributacao, "
    "isOptanteSimplesNacional, isIssRetido, isNfsCancelada, isNfsCartaCorrecao, servicos(Servicos), vlCofins, "
    "vlAliquotaCofins, vlCsll, vlAliquotaCsll, vlInss, vlAliquotaInss, vlIrpj, vlAliquotaIrpj, vlPis, vlAliquotaPis, "
    "vlBaseCalculo, vlTotalNota, vlTotalDeducoes, vlImposto, prestadorServico(PrestadorServico), "
    "tomadorServico(TomadorServico)",
    "Servicos: servico(Servico)", "Servico: nrServico, dsDiscriminacaoServico, vlAliquota, vlDeducao, vlServico",
    "PrestadorServico: nmPrestador, nrDocumento, dsEndereco, nrEndereco, nmPais, nmCidade, nmBairro, nmUf, nrCep",
    "TomadorServico: nmTomador, nrDocumento, dsEndereco, nrEndereco, nmPais, nmCidade, nmBairro, nmUf, cdIbge, nrCep");

using IXMLListaNfsEquiplano = TElemento<kFormatoEquiplano, "listaNfs">;
using IXMLNfsEquiplano = TElemento<kFormatoEquiplano, "Nfs">;

}  // namespace impnfse
