#include "VX03704Filiais.h"

#include <fmt/format.h>

#include <algorithm>

namespace impnfse {

std::vector<TFilialRegistrada> ListarFiliais(TBancoFirebird& banco) {
  TVXClientDataSet linhas;
  linhas.Abrir(banco.Consultar("SELECT * FROM CA01_FILIAL ORDER BY IDFILIAL"));
  std::vector<TFilialRegistrada> filiais;
  for (; !linhas.IsEmpty(); linhas.Next()) {
    const auto texto = [&](std::string_view coluna) { return linhas.FieldByName(coluna).GetAsString(); };
    const auto inteiro = [&](std::string_view coluna) { return static_cast<int>(linhas.GetInt64FieldValue(coluna)); };
    filiais.push_back({.Dados = {.IDFILIAL = linhas.GetInt64FieldValue("IDFILIAL"),
                                 .IDEMPRESA = linhas.GetInt64FieldValue("IDEMPRESA"),
                                 .CODIGOMUNICIPIO = texto("CODIGOMUNICIPIO"),
                                 .UF = texto("UF"),
                                 .CNPJ = texto("CNPJ"),
                                 .IE = texto("IE")},
                       .NOME = texto("NOME"),
                       .CasasPrefixoCFOP = inteiro("CASASPREFIXOCFOP"),
                       .RemoverCaracteres = inteiro("REMOVERCARACTERES"),
                       .ArquivoMorto = texto("ARQUIVOMORTO")});
  }
  return filiais;
}

std::optional<TFilialRegistrada> BuscarFilial(TBancoFirebird& banco, const String& cnpj) {
  const auto filiais = ListarFiliais(banco);
  const auto achada = std::find_if(filiais.begin(), filiais.end(), [&](const auto& f) { return f.Dados.CNPJ == cnpj; });
  if (achada == filiais.end()) return std::nullopt;
  return *achada;
}

void GravarFilial(TBancoFirebird& banco, const TFilialRegistrada& filial) {
  const auto& dados = filial.Dados;
  const auto existente = BuscarFilial(banco, dados.CNPJ);
  banco.Iniciar();
  try {
    banco.Executar(fmt::format("UPDATE OR INSERT INTO CA01_EMPRESA (IDEMPRESA) VALUES ({})", dados.IDEMPRESA));
    const auto id = existente ? std::to_string(existente->Dados.IDFILIAL) : "GEN_ID(GN_CA01_FILIAL, 1)";
    banco.Executar(fmt::format(
        "UPDATE OR INSERT INTO CA01_FILIAL (IDFILIAL, IDEMPRESA, CNPJ, NOME, IE, UF, CODIGOMUNICIPIO, "
        "CASASPREFIXOCFOP, REMOVERCARACTERES, ARQUIVOMORTO) VALUES ({}, {}, {}, {}, {}, {}, {}, {}, {}, {}) "
        "MATCHING "
        "(CNPJ)",
        id, dados.IDEMPRESA, CitarSQL(dados.CNPJ), CitarSQL(Primeiros(filial.NOME, kLarguraTexto)), CitarSQL(dados.IE),
        CitarSQL(dados.UF), CitarSQL(dados.CODIGOMUNICIPIO), filial.CasasPrefixoCFOP, filial.RemoverCaracteres,
        CitarSQL(filial.ArquivoMorto)));
    banco.Confirmar();
  } catch (...) {
    banco.Desfazer();
    throw;
  }
}

}  // namespace impnfse
