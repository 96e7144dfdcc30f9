#include "TabelaDeMunicipios.h"

#include <fmt/format.h>

#include <array>
#include <unordered_map>
#include <unordered_set>

#include "LinhasCSV.h"
#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"

namespace impnfse {
namespace {

constexpr std::string_view kCabecalho = "NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL";

// Characters that fit in each column.
constexpr std::array<std::size_t, 6> kMaximos = {120, 2, 10, 10, 10, 10};

std::optional<String> Opcional(String texto) {
  if (texto.empty()) return std::nullopt;
  return texto;
}

// An optional text and its indicator, as SOCI binds them.
struct TTextoOpcional {
  String Texto;
  soci::indicator Indicador = soci::i_ok;

  void operator=(const std::optional<String>& valor) {
    Texto = valor.value_or("");
    Indicador = valor ? soci::i_ok : soci::i_null;
  }
};

// The ids that the table has, by federal code, and the highest of them.
struct TIdsExistentes {
  std::unordered_map<String, long long> PorCodigo;
  long long Maior = 0;
};

TIdsExistentes LerIds(soci::session& sessao) {
  TIdsExistentes ids;
  long long id = 0;
  String codigo;
  soci::statement consulta =
      (sessao.prepare << "SELECT IDMUNICIPIO, CODIGOFEDERAL FROM CA06_MUNICIPIO_LINHA ORDER BY IDMUNICIPIO",
       soci::into(id), soci::into(codigo));
  consulta.execute();
  while (consulta.fetch()) {
    ids.PorCodigo.try_emplace(codigo, id);
    ids.Maior = id;
  }
  return ids;
}

void Remover(soci::session& sessao, const std::vector<TLinhaMunicipio>& linhas, TCargaMunicipios carga) {
  if (carga == TCargaMunicipios::Substituir) {
    sessao << "DELETE FROM CA06_MUNICIPIO_LINHA";
    return;
  }
  String codigo;
  soci::statement remocao =
      (sessao.prepare << "DELETE FROM CA06_MUNICIPIO_LINHA WHERE CODIGOFEDERAL = :codigo", soci::use(codigo));
  for (const auto& linha : linhas) {
    codigo = linha.CODIGOFEDERAL;
    remocao.execute(true);
  }
}

}  // namespace

std::vector<TLinhaMunicipio> LerMunicipiosCSV(std::string_view csv) {
  std::vector<TLinhaMunicipio> municipios;
  for (auto& linha : LerCSV(csv, kCabecalho)) {
    auto& c = linha.Celulas;
    if (c[0].empty() || c[1].empty() || c[2].empty())
      throw EConversao(fmt::format("Linha {}: NOME, UF e CODIGOFEDERAL são obrigatórios.", linha.Numero));
    if (BuscarSomenteNumeros(c[2]) != c[2])
      throw EConversao(fmt::format("Linha {}: CODIGOFEDERAL \"{}\" não é um número.", linha.Numero, c[2]));
    for (std::size_t i = 0; i < c.size(); ++i)
      if (Comprimento(c[i]) > kMaximos[i])
        throw EConversao(fmt::format("Linha {}: \"{}\" é longo demais.", linha.Numero, c[i]));
    municipios.push_back({c[0], Maiusculas(c[1]), c[2], Opcional(c[3]), Opcional(c[4]), Opcional(c[5])});
  }
  if (municipios.empty()) throw EConversao("Nenhum município depois do cabeçalho.");
  return municipios;
}

void GravarMunicipios(soci::session& sessao, const std::vector<TLinhaMunicipio>& linhas, TCargaMunicipios carga) {
  auto ids = LerIds(sessao);
  Remover(sessao, linhas, carga);

  // The view orders by ORDEM, so that FIRST 1 follows the order of loading wherever the rows lie on disk.
  long long ordem = 0;
  sessao << "SELECT COALESCE(MAX(ORDEM), 0) FROM CA06_MUNICIPIO_LINHA", soci::into(ordem);

  long long id = 0;
  String nome;
  String uf;
  String codigo;
  TTextoOpcional srf;
  TTextoOpcional cepGeral;
  TTextoOpcional cepFinal;
  soci::statement insercao =
      (sessao.prepare << "INSERT INTO CA06_MUNICIPIO_LINHA (IDMUNICIPIO, NOME, UF, CODIGOFEDERAL, CODSRF, CEPGERAL, "
                         "CEPFINAL, ORDEM) VALUES (:id, :nome, :uf, :codigo, :srf, :geral, :final, :ordem)",
       soci::use(id), soci::use(nome), soci::use(uf), soci::use(codigo), soci::use(srf.Texto, srf.Indicador),
       soci::use(cepGeral.Texto, cepGeral.Indicador), soci::use(cepFinal.Texto, cepFinal.Indicador), soci::use(ordem));
  for (const auto& linha : linhas) {
    // The first row of a code takes the id that the municipality had; another row of it is one more.
    const auto existente = ids.PorCodigo.extract(linha.CODIGOFEDERAL);
    id = existente.empty() ? ++ids.Maior : existente.mapped();
    nome = linha.NOME;
    uf = linha.UF;
    codigo = linha.CODIGOFEDERAL;
    srf = linha.CODSRF;
    cepGeral = linha.CEPGERAL;
    cepFinal = linha.CEPFINAL;
    ++ordem;
    insercao.execute(true);
  }
}

}  // namespace impnfse
