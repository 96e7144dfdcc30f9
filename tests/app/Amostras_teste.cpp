// The samples of all layouts, imported by the program into one database, against listings of the registers that
// somebody has reviewed: tests/amostras, one per folder of samples. ferramentas/regravar-amostras.sh writes them anew.
#include <cstdlib>
#include <fstream>
#include <set>

#include "LeiautesNFSe.h"
#include "Programa.h"

namespace impnfse::testes::amostras {

const fs::path kAmostras = IMPNFSE_AMOSTRAS;
const fs::path kListagens = IMPNFSE_LISTAGENS;

// What every register has alike, what depends on the order of the import, and where the files lie.
bool EhIgualEmTodos(const String& campo) {
  return campo.starts_with("ID") || campo.starts_with("CAMINHOARQ") || campo == "COD_PART" || campo == "COD_ITEM" ||
         campo == "COD_GEN" || campo == "TIPO_ITEM" || campo == "TPIMPORTACAO";
}

// Whether the field has something to say. The additional keys of INFISC are the moment of the import.
bool Conta(const String& campo, const Json& valor) {
  const bool ehMomento = campo == "ChaveCondicaoAdicional" && valor.get<String>().size() > 9;
  return !EhIgualEmTodos(campo) && !ehMomento && !valor.is_structured() && !valor.is_null() && valor != "" &&
         valor != 0;
}

String Linha(const String& margem, const String& registro, const Json& campos) {
  String linha;
  for (const auto& [campo, valor] : campos.items())
    if (Conta(campo, valor)) linha += fmt::format("{}{} {}", linha.empty() ? "" : "; ", campo, valor.dump());
  return fmt::format("{}{}: {}\n", margem, registro, linha.empty() ? "nenhum" : linha);
}

const Json& Buscar(const Json& registros, const String& campo, const Json& valor) {
  static const Json kNenhum = Json::object();
  const auto achado =
      std::find_if(registros.begin(), registros.end(), [&](const Json& r) { return r[campo] == valor; });
  return achado == registros.end() ? kNenhum : *achado;
}

// A document of one without a date lies in the month of its import, which isn't told.
String Listar(const Json& documento, const Json& registros) {
  const auto& periodo = Buscar(registros["0000"], "IDREG0000", documento["IDREG0000"]);
  const auto mes = documento["DT_DOC"].is_null() ? String() : periodo["DT_INI"].get<String>().substr(0, 7);
  auto texto = Linha("  ", fmt::format("A100 filial {} {}", periodo["IDFILIAL"].dump(), mes), documento);
  texto += Linha("    ", "0150", Buscar(registros["0150"], "COD_PART", documento["COD_PART"]));
  for (const auto& item : documento["A170"]) {
    texto += Linha("    ", "A170", item);
    texto += Linha("      ", "0200", Buscar(registros["0200"], "IDREG0200", item["IDREG0200"]));
  }
  for (const auto* const tipo : {"A17R", "MSG"})
    for (const auto& filho : documento[tipo]) texto += Linha("    ", tipo, filho);
  return texto;
}

String ListarArquivo(const Json& resultado, const Json& registros) {
  const auto arquivo = resultado["arquivo"].get<String>();
  auto texto = fmt::format("{}: {}", fs::path(arquivo).filename().string(), resultado["classe"].get<String>());
  for (const auto& documento : resultado["documentos"])
    texto += fmt::format(" [{} {}]", documento["tipo"].dump(), documento["numero"].get<String>());
  texto += "\n";
  for (const auto& erro : resultado["erros"]) texto += fmt::format("  erro: {}\n", erro.get<String>());
  for (const auto& documento : registros["A100"])
    if (documento["CAMINHOARQORIG"].get<String>().ends_with("/" + arquivo)) texto += Listar(documento, registros);
  return texto;
}

String LerListagem(const fs::path& caminho) { return fs::exists(caminho) ? LerArquivo(caminho.string()) : String(); }

using TTesteAmostras = TTestePrograma;

TEST_F(TTesteAmostras, RegistrosDeTodosOsLeiautesComoRevistos) {
  Exigir(fmt::format("filial banco.fdb --cnpj {} --uf PR --municipio 4106902 --arquivo-morto morto", kOutraFilial));
  // An office's own table has what the shipped one lacks.
  for (const auto& [municipio, codigos] :
       Casos("4209102 => CODSRF = '8179', CEPGERAL = '89200000', CEPFINAL = '89239999' | 4106902 => CODSRF = '7535', "
             "CEPGERAL = '80000000', CEPFINAL = '82999999'"))
    Executar(fmt::format("UPDATE CA06_MUNICIPIO_LINHA SET {} WHERE CODIGOFEDERAL = '{}'", codigos, municipio));
  std::set<fs::path> pastas;
  for (const auto& pasta : fs::directory_iterator(kAmostras)) pastas.insert(pasta.path().filename());
  std::map<String, Json> resultados;
  std::set<String> classes;
  for (const auto& pasta : pastas) {
    fs::copy(kAmostras / pasta, fs::path(Pasta / "entrada") / pasta);
    const auto nome = pasta.string();
    auto& resultado = resultados[nome] = Json::parse(
        Exigir(fmt::format("importar banco.fdb entrada/{} --leiaute {} --json", nome, nome.substr(0, nome.find('-')))));
    for (const auto& arquivo : resultado) classes.insert(arquivo["classe"].get<String>());
  }
  for (const auto& importador : ImportadoresNFSe())
    EXPECT_TRUE(classes.contains(String(importador.Classe))) << importador.Classe << " has no sample";

  const bool regravar = std::getenv("IMPNFSE_REGRAVAR_AMOSTRAS") != nullptr;
  const auto registros = Registros();
  std::set<fs::path> listagens;
  for (const auto& [nome, resultado] : resultados) {
    String listagem;
    for (const auto& arquivo : resultado) listagem += ListarArquivo(arquivo, registros);
    const auto caminho = kListagens / (nome + ".txt");
    if (regravar) std::ofstream(caminho, std::ios::binary) << listagem;
    EXPECT_EQ(LerListagem(caminho), listagem) << nome;
  }
  for (const auto& listagem : fs::directory_iterator(kListagens))
    EXPECT_TRUE(resultados.contains(listagem.path().stem().string())) << listagem.path() << " has no sample any more";
}

}  // namespace impnfse::testes::amostras
