// impnfse: the program that stands where the suite's screens stood.
#include <fmt/format.h>
#include <ibase.h>
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <array>
#include <cstdio>
#include <iostream>

#include "Comandos.h"
#include "VX03704Erros.h"

namespace {

using namespace impnfse;
using namespace impnfse::app;

constexpr int kComErros = 1;
constexpr int kNaoComecou = 2;
constexpr int kInterrompido = 130;

void EmPortugues(CLI::App& app) {
  app.option_defaults()->group("Opções");
  app.set_help_flag("-h,--help", "Mostra esta ajuda e termina")->group("Opções");
  auto formatador = std::make_shared<CLI::Formatter>();
  for (const auto& [chave, texto] : {std::pair{"Usage", "Uso"},
                                     {"Options", "Opções"},
                                     {"OPTIONS", "OPÇÕES"},
                                     {"Positionals", "Argumentos"},
                                     {"Subcommands", "Comandos"},
                                     {"SUBCOMMAND", "COMANDO"},
                                     {"SUBCOMMANDS", "COMANDOS"},
                                     {"REQUIRED", "(obrigatório)"},
                                     {"TEXT", "TEXTO"},
                                     {"INT", "N"}})
    formatador->label(chave, texto);
  formatador->column_width(36);
  app.formatter(formatador);
}

// What CLI11 found wrong, in one Portuguese line.
String TextoDoErro(const CLI::ParseError& erro) {
  String original = erro.what();
  const auto depoisDe = [&](std::string_view marca) {
    const auto posicao = original.find(marca);
    return posicao == original.npos ? original : original.substr(posicao + marca.size());
  };
  if (dynamic_cast<const CLI::RequiredError*>(&erro) != nullptr) {
    const auto nome = original.substr(0, original.find(" is required"));
    return nome == "A subcommand" ? String("falta o comando") : "falta " + nome;
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&erro) != nullptr)
    return "argumento desconhecido: " + depoisDe("not expected: ");
  if (dynamic_cast<const CLI::ConversionError*>(&erro) != nullptr)
    return "valor inválido em " + depoisDe("Could not convert: ");
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&erro) != nullptr)
    return "número errado de valores em " + original.substr(0, original.find(':'));
  return original;
}

struct TLinhaDeComando {
  CLI::App App{"impnfse: notas fiscais de serviço (NFS-e) de arquivos para os registros fiscais", "impnfse"};
  int Saida = 0;
  String Banco;
  String ArquivoCSV;
  bool Substituir = false;
  bool JSON = false;
  TOpcoesFilial OpcoesFilial;
  TOpcoesAnalisar OpcoesAnalisar;
  TOpcoesImportar OpcoesImportar;
  TOpcoesRegistros OpcoesRegistros;

  TLinhaDeComando() {
    EmPortugues(App);
    App.set_version_flag("--version", "impnfse " IMPNFSE_VERSAO, "Mostra a versão e termina")->group("Opções");
    App.require_subcommand(1);
    App.footer(
        "BANCO é o caminho de um banco Firebird (um arquivo, sem servidor), ou servidor:caminho.\n"
        "Saída: 0 feito; 1 algum arquivo não foi carregado ou tem erros; 2 uso incorreto ou banco que não abre.");

    auto* criar = Comando("criar", "Cria o banco: esquema, municípios e leiautes", [&] { return Criar(Banco); });
    criar->footer("O banco não pode existir ainda.");

    auto* filial = Comando("filial", "Registra ou atualiza uma filial", [&] { return Filial(Banco, OpcoesFilial); });
    filial->add_option("--cnpj", OpcoesFilial.CNPJ, "CNPJ da filial")->required();
    filial->add_option("--uf", OpcoesFilial.UF, "Estado (SC, SP, ...)")->required();
    filial->add_option("--municipio", OpcoesFilial.Municipio, "Código do município no IBGE")->required();
    filial->add_option("--ie", OpcoesFilial.IE, "Inscrição estadual");
    filial->add_option("--nome", OpcoesFilial.Nome, "Nome da filial");
    filial->add_option("--empresa", OpcoesFilial.Empresa, "Número da empresa (1)");
    filial->add_option("--casas-cfop", OpcoesFilial.CasasCFOP, "Casas depois do CFOP do serviço (3)");
    filial->add_option("--remover-caracteres", OpcoesFilial.RemoverCaracteres,
                       "Caracteres removidos das descrições: soma de bits; 1 tira os especiais (0)");
    filial->add_option("--arquivo-morto", OpcoesFilial.ArquivoMorto,
                       "Pasta para onde vão os arquivos importados; sem ela ficam onde estão");

    auto* municipios = Comando("municipios", "Carrega a tabela de municípios de um CSV",
                               [&] { return Municipios(Banco, ArquivoCSV, Substituir); });
    municipios->add_option("ARQUIVO", ArquivoCSV, "CSV com NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL")->required();
    municipios->add_flag("--substituir", Substituir, "Esvazia a tabela antes");

    auto* leiautes = Comando("leiautes", "Lista os leiautes", [&] { return Leiautes(Banco, JSON); });
    leiautes->add_flag("--json", JSON, "Saída em JSON");

    auto* analisar = Comando("analisar", "Mostra os leiautes que um arquivo pode ter",
                             [&] { return Analisar(Banco, OpcoesAnalisar); });
    analisar->add_option("ARQUIVO", OpcoesAnalisar.Arquivo, "O arquivo")->required();
    analisar->add_flag("--json", OpcoesAnalisar.JSON, "Saída em JSON");

    auto* importar = Comando("importar", "Importa arquivos de notas", [&] { return Importar(Banco, OpcoesImportar); });
    importar->add_option("ARQUIVO", OpcoesImportar.Arquivos, "Arquivos, ou pastas com os arquivos")->required();
    importar->add_option(
        "--leiaute", OpcoesImportar.Leiaute,
        "Código do leiaute (veja: impnfse leiautes); sem ele, o último da filial que sirva ao arquivo, "
        "ou o único que sirva, ou uma pergunta no terminal");
    importar->add_option("--filial", OpcoesImportar.Filial, "CNPJ da filial que importa (a primeira registrada)");
    importar->add_flag("--json", OpcoesImportar.JSON, "Saída em JSON");

    auto* registros =
        Comando("registros", "Mostra os registros gravados", [&] { return Registros(Banco, OpcoesRegistros); });
    registros->add_option("--filial", OpcoesRegistros.Filial, "Só os da filial com este CNPJ");
    registros->add_option("--de", OpcoesRegistros.De, "Só documentos desde esta data (AAAA-MM-DD)");
    registros->add_option("--ate", OpcoesRegistros.Ate, "Só documentos até esta data (AAAA-MM-DD)");
    registros->add_flag("--json", OpcoesRegistros.JSON, "Saída em JSON");
  }

 private:
  CLI::App* Comando(const char* nome, const char* descricao, std::function<int()> acao) {
    auto* comando = App.add_subcommand(nome, descricao);
    comando->group("Comandos");
    EmPortugues(*comando);
    comando->add_option("BANCO", Banco, "O banco de dados")->required();
    comando->callback([this, acao = std::move(acao)] { Saida = acao(); });
    return comando;
  }
};

// A request to stop (Ctrl+C, or the machine going down) ends the process at once, as a loss of power would: what isn't
// committed is as if it had never been. The Firebird client otherwise ends the database under the run's feet.
void PararQuandoPedirem() {
  std::array<ISC_STATUS, 20> status{};
  const auto parar = [](int razao, int, void*) {
    if (razao == fb_shutrsn_signal) ::_exit(kInterrompido);
    return 0;
  };
  fb_shutdown_callback(status.data(), parar, fb_shut_confirmation, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  PararQuandoPedirem();
  TLinhaDeComando linha;
  try {
    linha.App.parse(argc, argv);
    // A report that nobody got is no success.
    if (std::fflush(stdout) == 0 && std::cout.flush()) return linha.Saida;
    fmt::print(stderr, "impnfse: a saída não pôde ser escrita.\n");
    return kComErros;
  } catch (const CLI::Success& ajuda) {
    return linha.App.exit(ajuda);
  } catch (const CLI::ParseError& erro) {
    const auto escolhidos = linha.App.get_subcommands();
    const bool semComando = escolhidos.empty() && argc > 1;
    fmt::print(stderr, "impnfse: {}. Veja: impnfse {}--help\n",
               semComando ? fmt::format("comando desconhecido: {}", argv[1]) : TextoDoErro(erro),
               escolhidos.empty() ? "" : escolhidos.front()->get_name() + " ");
  } catch (const std::exception& erro) {
    fmt::print(stderr, "impnfse: {}\n", erro.what());
  }
  return kNaoComecou;
}
