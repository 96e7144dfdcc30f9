// The format of Prodata declarations: one taxpayer, one month, and the notes of its provided or taken services.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoProdataInformatica = Formato(
    "declaracaoDeServicoDms: contribuinte(Contribuinte), servicoDms(ServicoDms), itensDeServico(ItensDeServico)",
    "Contribuinte: cgc", "ServicoDms: anoDeReferencia, mesDeReferencia, tipo, tipoDeDeclaracao, situacao",
    "ItensDeServico: itemDeServico*(ItemDeServico)",
    "ItemDeServico: cnpjPrestadorTomador, razaoSocialDePrestadorTomadorNaoCadastrado, numeroDaNotaFiscal, "
    "serieDaNotaFiscal, dataDaNotaFiscal, notaFiscalCancelada, historicoDaNotaFiscal, valorDaNotaFiscal, "
    "baseDeCalculo, aliquota, recolhidoPeloTomador");

using IXMLDeclaracaoProdataInformatica = TElemento<kFormatoProdataInformatica, "declaracaoDeServicoDms">;
using IXMLItemDeServicoProdataInformatica = TElemento<kFormatoProdataInformatica, "ItemDeServico">;

// The root of a Prodata declaration; nothing when it has another root.
inline std::optional<IXMLDeclaracaoProdataInformatica> LoadDeclaracaoDeServicoDms(const String& arquivo) {
  return Load<IXMLDeclaracaoProdataInformatica>(arquivo, {.Tag = "declaracaoDeServicoDms"});
}

}  // namespace impnfse
