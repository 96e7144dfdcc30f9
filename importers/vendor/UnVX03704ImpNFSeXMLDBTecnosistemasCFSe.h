// The format of Tecnosistemas receipts (CFSe): the answer to a consultation, one root with many receipts, several
// services per receipt.
#pragma once

#include "XMLFormato.h"

namespace impnfse {

// The services of a receipt are `tcDadosServico` elements inside one `Servicos` or `Servico`.
inline constexpr auto kFormatoTecnosistemasCFSe = Formato(
    "ConsultarCupomFiscalResposta: @xmlns, ListaCupomFiscal(ListaCupomFiscal)",
    "ListaCupomFiscal: CupomFiscal*(CupomFiscal)",
    "CupomFiscal: Status, Numero, Substituido, Substituto, NumeroRPS, ChaveAcesso, Protocolo, Link, "
    "Prestador(Prestador), EnderecoPrestador(EnderecoPrestador), DadosTomador(DadosTomador), Valores(Valores), "
    "Servicos=Servicos|Servico(Servicos)",
    "Prestador: CpfCnpj(CpfCnpj), RazaoSocial, InscricaoMunicipal", "CpfCnpj: Cnpj, Cpf",
    "EnderecoPrestador: Endereco, Numero, Complemento, Bairro, CodigoMunicipio, Uf, CodigoPais, Cep",
    "DadosTomador: Email, Nome, CpfCnpj(CpfCnpj)",
    "Valores: PercentualCargaTributariaMunicipal, ValorCargaTributariaMunicipal, PercentualCargaTributariaEstadual, "
    "ValorCargaTributariaEstadual, PercentualCargaTributariaFederal, ValorCargaTributariaFederal, BaseCalculo, "
    "Aliquota, ValorIss, BaseCalculoCRS, IrrfIndenizacao, ValorServicos, ValorDeducoes, ValorPis, ValorCofins, "
    "ValorInss, ValorIr, ValorCsll, OutrasRetencoes, DescontoIncondicionado, DescontoCondicionado",
    "Servicos: DadosServico=tcDadosServico|TcDadosServico*(TcDadosServico)",
    "TcDadosServico: Valores(Valores), IssRetido, ResponsavelRetencao, ItemListaServico, CodigoCnae, "
    "CodigoTributacaoMunicipio, Discriminacao, CodigoMunicipio, CodigoPais, ExigibilidadeISS, MunicipioIncidencia, "
    "NumeroProcesso");

using IXMLConsultarCupomFiscalRespostaTecnosistemasCFSe =
    TElemento<kFormatoTecnosistemasCFSe, "ConsultarCupomFiscalResposta">;
using IXMLCupomFiscalTecnosistemasCFSe = TElemento<kFormatoTecnosistemasCFSe, "CupomFiscal">;
using IXMLTcDadosServicoTecnosistemasCFSe = TElemento<kFormatoTecnosistemasCFSe, "TcDadosServico">;

// The root of a file of receipts; nothing when it has another root or can't be opened at all. A declaration of UTF-16
// in lower case, which files of this vendor carry whatever their bytes are, is put right ahead of the parse. Any other
// file is read as its own declaration tells, or else, when its bytes aren't of that encoding, as its text.
inline std::optional<IXMLConsultarCupomFiscalRespostaTecnosistemasCFSe>
LoadConsultarCupomFiscalRespostaTecnosistemasCFSe(const String& arquivo) {
  static constexpr std::string_view kDeclarada = R"(encoding="utf-16")";
  static constexpr std::string_view kCorreta = R"(encoding="utf-8")";
  const auto load = [](std::string_view bytes) {
    return Load<IXMLConsultarCupomFiscalRespostaTecnosistemasCFSe>(LoadXMLTexto(bytes), "ConsultarCupomFiscalResposta");
  };
  try {
    const auto bytes = LerArquivo(arquivo);
    const auto texto = DecodificarTexto(bytes);
    if (texto.find(kDeclarada) != texto.npos) return load(Substituir(texto, kDeclarada, kCorreta));
    try {
      return load(bytes);
    } catch (const EXML&) {
      return load(texto);
    }
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace impnfse
