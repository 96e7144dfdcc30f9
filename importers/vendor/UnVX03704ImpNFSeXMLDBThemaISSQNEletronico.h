// The format of Thema files: flat notes, each with one service.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

inline constexpr auto kFormatoThema = Formato(
    "Notas: camposModificados, Nota*(Nota)",
    "Nota: cpfCnpjTomador, numeroNota, dataEmissao, situacaoNota, valorBruto, codigoVerificacao, competencia, "
    "inscricaoAtividade, naturezaOperacao, cpfCnpjPrestador, guia, nome, serieNota, aliquotaServicos, valorDeducao, "
    "valorIss, valorLiquidoNfse, valorCofins, valorInss, valorIr, valorCsll, valorPis, outrasRetencoes, "
    "valorDescontoCondicionado, valorDescontoIncondicionado, discriminacao, municipioPrestacaoServico, "
    "numeroProtocolo, numeroServico, itemListaServico, codigoCnae, razaoSocialTomador, codigoCancelamento, "
    "dataCancelamento");

using IXMLNotasThema = TElemento<kFormatoThema, "Notas">;
using IXMLNotaThema = TElemento<kFormatoThema, "Nota">;

// The root of a Thema file; nothing when it has another root.
inline std::optional<IXMLNotasThema> LoadNotasThema(const String& arquivo) {
  static constexpr std::array<std::string_view, 1> kPrefixos = {"tc:"};
  return Load<IXMLNotasThema>(arquivo, {.Tag = "Notas", .Prefixos = kPrefixos});
}

}  // namespace impnfse
