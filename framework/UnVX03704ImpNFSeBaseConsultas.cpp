// What the notes write loosely: municipalities, activity codes, and the CFOP that they don't carry at all.
#include <fmt/format.h>

#include "UnVX03704BaseFuncoes.h"
#include "UnVX03704ImpNFSeBase.h"

namespace impnfse {
namespace {

// "´", which some municipalities write for an apostrophe.
constexpr std::string_view kAcentoAgudo = "\xC2\xB4";
// Digits of a municipality's code without the state's two.
constexpr std::size_t kDigitosDoMunicipio = 5;

String ConsultaDeMunicipio(const String& uf, const String& nome) {
  String sql =
      " SELECT FIRST 1\n"
      "CA06_MUNICIPIO.IDMUNICIPIO,\n"
      "CA06_MUNICIPIO.CODIGOFEDERAL,\n"
      "CA06_MUNICIPIO.UF\n"
      "FROM CA06_MUNICIPIO\n"
      "WHERE ";
  if (!Aparar(uf).empty()) sql += fmt::format("CA06_MUNICIPIO.UF = {}\n    AND ", CitarSQL(uf));
  sql += fmt::format("(CA06_MUNICIPIO.NOME CONTAINING {}", CitarSQL(nome));
  if (nome.find(kAcentoAgudo) != nome.npos)
    for (const auto* const apostrofo : {"'", "' "})
      sql += fmt::format("\n     OR CA06_MUNICIPIO.NOME CONTAINING {}",
                         CitarSQL(Substituir(nome, kAcentoAgudo, apostrofo)));
  return sql + ")";
}

// A state as the comparisons take it.
String EstadoNormalizado(const String& uf) { return Maiusculas(Aparar(uf)); }

}  // namespace

TDadosMunicipio TNFSeBase::BuscarMunicipio(const String& uf, const String& nome) {
  TDadosMunicipio municipio{.IDMUNICIPIO = 0, .CODIGOFEDERAL = "0", .UF = uf};
  if (Aparar(nome).empty()) return municipio;
  auto& consulta = GetDataModule().DataSetConsulta;
  consulta.SetCommandText(ConsultaDeMunicipio(uf, nome));
  GetDataModule().AbrirDataSetMemorizado(&consulta);
  if (!consulta.IsEmpty())
    municipio = {.IDMUNICIPIO = consulta.GetInt64FieldValue("IDMUNICIPIO"),
                 .CODIGOFEDERAL = consulta.FieldByName("CODIGOFEDERAL").GetAsString(),
                 .UF = consulta.FieldByName("UF").GetAsString()};
  consulta.Close();
  return municipio;
}

int TNFSeBase::BuscarCodigoMunicipio(const String& codigo, const String& uf, const String& municipio) {
  String texto = codigo;
  if (StrToIntDef(codigo, 0) <= 0) {
    texto = BuscarMunicipio(uf, municipio).CODIGOFEDERAL;
  } else if (const auto tamanho = Comprimento(codigo); tamanho <= kDigitosDoMunicipio) {
    texto = std::to_string(BuscarCodigoIBGEUF(uf)) + String(kDigitosDoMunicipio - tamanho, '0') + codigo;
  }
  return CodigoMunicipio(texto);
}

String TNFSeBase::BuscarMunicipioPorSRF(const String& codigo) {
  return ConsultarCodigoFederal(fmt::format(
      "SELECT CA06_MUNICIPIO.CODIGOFEDERAL\n  FROM CA06_MUNICIPIO\n WHERE CA06_MUNICIPIO.CODSRF = {}\n    OR "
      "CA06_MUNICIPIO.CODSRF = {}",
      CitarSQL(std::to_string(StrToIntDef(codigo, 0))), CitarSQL(codigo)));
}

String TNFSeBase::BuscarMunicipioPorCEP(const String& cep, const std::optional<String>& uf) {
  const auto faixa =
      fmt::format("({0} BETWEEN CEPGERAL AND CEPFINAL)      OR ({0} = CEPGERAL AND CEPFINAL IS NULL) ", CitarSQL(cep));
  return ConsultarCodigoFederal(" SELECT CODIGOFEDERAL    FROM CA06_MUNICIPIO   WHERE " +
                                (uf ? fmt::format("(UF = {})     AND ({}) ", CitarSQL(*uf), faixa) : faixa));
}

String TNFSeBase::ConsultarCodigoFederal(const String& sql) {
  auto& consulta = GetDataModule().DataSetConsulta;
  consulta.SetCommandText(sql);
  GetDataModule().AbrirDataSetMemorizado(&consulta);
  auto codigo =
      consulta.IsEmpty() ? String() : BuscarSomenteNumeros(consulta.FieldByName("CODIGOFEDERAL").GetAsString());
  consulta.Close();
  return codigo;
}

String TNFSeBase::FormatarCodigoAtividade(const String& codigo) {
  if (codigo.find('.') != codigo.npos) return codigo;
  const auto digitos = BuscarSomenteNumeros(codigo);
  if (digitos.empty()) return codigo;
  if (digitos.size() == 1) return digitos + ".00";
  // Three digits are a number in hundredths, without zeros that say nothing: "101" is 1.01, "700" is 7.
  if (digitos.size() == 3) return fmt::format("{:g}", StrToIntDef(digitos, 0) / 100.0);
  return digitos.substr(0, 2) + "." + digitos.substr(2);
}

String TNFSeBase::BuscarCFOPIcmsServico() {
  auto& empresa = *GetDadosEmpresaImportacao();
  const String prefixo(static_cast<std::size_t>(std::max(empresa.GetQuantidadeCasasPrefixoCFOP(), 0)), '0');
  const auto ufFilial = EstadoNormalizado(empresa.GetDadosFilial().UF);
  const auto ufParticipante = EstadoNormalizado(GetDados0150()->GetUF());
  const bool noEstado = ufFilial.empty() || ufParticipante.empty() || ufFilial == ufParticipante;
  if (GetOrigem() == toEntrada) return (noEstado ? "1.933." : "2.933.") + prefixo;
  return (noEstado ? "5.933." : "6.933.") + prefixo;
}

}  // namespace impnfse
