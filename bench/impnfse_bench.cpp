// What an import costs, against its floor, in one run. Every measurement has a process of its own, which starts from
// the same database file.
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <locale>
#include <map>
#include <stdexcept>
#include <type_traits>
#include <vector>

#include "GeradorDeArquivos.h"
#include "Piso.h"
#include "Suite.h"
#include "UnVX03704ImpNFSe.h"

namespace impnfse::bench {
namespace {

namespace fs = std::filesystem;

constexpr double kMiB = 1024.0 * 1024.0;

// What must hold: at 10,000 notes against the floor; per note, at 100,000 notes against 1,000; at every size.
constexpr double kRazaoMaxima = 1.5;
constexpr double kCrescimentoMaximo = 1.2;
constexpr double kMemoriaPorTamanho = 12;
constexpr double kMemoriaFixa = 64 * kMiB;

// Small files need more repetitions for a stable median.
struct TTamanho {
  std::size_t Notas;
  int Repeticoes;
};
constexpr std::array<TTamanho, 5> kTamanhos = {{{10, 21}, {100, 21}, {1'000, 11}, {10'000, 7}, {100'000, 3}}};

struct TImportacao {
  double Segundos;
  double Memoria;  // peak of the process, in bytes
};

struct TMedida {
  std::size_t Notas;
  double Tamanho;  // of the file, in bytes
  double Importacao, Leitura, Insercao, Memoria;

  double Piso() const { return Leitura + Insercao; }
  double Razao() const { return Importacao / Piso(); }
  double PorNota(double segundos) const { return segundos * 1e6 / static_cast<double>(Notas); }
};

struct TPontuacaoBrasileira final : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

// The result of `acao`, run in a child process: its memory is its own, and nothing is warm.
template <class Acao>
auto EmProcesso(Acao acao) {
  using Resultado = decltype(acao());
  static_assert(std::is_trivially_copyable_v<Resultado>);
  std::array<int, 2> canal{};
  if (pipe(canal.data()) != 0) throw std::runtime_error("pipe falhou");
  std::fflush(nullptr);
  const auto filho = fork();
  if (filho < 0) throw std::runtime_error("fork falhou");
  if (filho == 0) {
    int saida = 1;
    try {
      const Resultado r = acao();
      saida = write(canal[1], &r, sizeof r) == sizeof r ? 0 : 1;
    } catch (const std::exception& erro) {
      fmt::print(stderr, "{}\n", erro.what());
    }
    _exit(saida);
  }
  close(canal[1]);
  Resultado r{};
  const bool leu = read(canal[0], &r, sizeof r) == sizeof r;
  close(canal[0]);
  int estado = 0;
  waitpid(filho, &estado, 0);
  if (!leu || estado != 0) throw std::runtime_error("uma medida falhou");
  return r;
}

bool CriarModelo(const fs::path& banco, const fs::path& arquivoMorto) {
  TBancoFirebird::Criar(banco);
  TBancoFirebird aberto(banco);
  TFilialRegistrada filial;
  filial.Dados.IDEMPRESA = 1;
  filial.Dados.CNPJ = kCNPJPrestador;
  filial.Dados.UF = kUFPrestador;
  filial.Dados.CODIGOMUNICIPIO = kMunicipioPrestador;
  filial.NOME = "Serviços Sabiá Ltda.";
  filial.CasasPrefixoCFOP = 3;
  filial.ArquivoMorto = arquivoMorto;
  GravarFilial(aberto, filial);
  return true;
}

TImportacao Importar(const fs::path& banco, const fs::path& arquivo, std::size_t notas) {
  TSuite suite(banco);
  TImpNFSe importacao;
  importacao.DadosArquivo = {.Arquivo = arquivo, .CodigoLeiaute = "43", .TipoImportacao = "NFSE", .IDFILIAL = 0};
  const auto inicio = std::chrono::steady_clock::now();
  importacao.Start();
  importacao.WaitFor();
  const std::chrono::duration<double> duracao = std::chrono::steady_clock::now() - inicio;
  rusage uso{};
  getrusage(RUSAGE_SELF, &uso);

  const auto& resumo = importacao.GetResumo();
  const auto gravados = suite.Banco().ConsultarInteiro("SELECT COUNT(*) FROM ES02_REGA100");
  if (!resumo.Moveu || importacao.GetTemErros() || resumo.Documentos.size() != notas ||
      gravados != static_cast<Int64>(notas))
    throw std::runtime_error(fmt::format("a importação de {} notas gravou {}: {}", notas, gravados, resumo.Erro));
  fs::rename(resumo.Destino, arquivo);
  return {.Segundos = duracao.count(), .Memoria = static_cast<double>(uso.ru_maxrss) * 1024};
}

double Mediana(std::vector<double> valores) {
  std::sort(valores.begin(), valores.end());
  const auto meio = valores.size() / 2;
  return valores.size() % 2 == 1 ? valores[meio] : (valores[meio - 1] + valores[meio]) / 2;
}

// Imports and floors take turns, so that both see the same machine.
TMedida Medir(const fs::path& pasta, const fs::path& modelo, const TTamanho& tamanho) {
  const auto arquivo = pasta / fmt::format("notas-{}.xml", tamanho.Notas);
  {
    std::ofstream saida(arquivo, std::ios::binary);
    EscreverGINFES(saida, tamanho.Notas);
    if (!saida.flush()) throw std::runtime_error("não foi possível gravar " + arquivo.string());
  }
  const auto importado = pasta / "importado.fdb";
  const auto inserido = pasta / "inserido.fdb";
  std::vector<double> importacao, leitura, insercao, memoria;
  for (int i = 0; i < tamanho.Repeticoes; ++i) {
    for (const auto& banco : {importado, inserido}) fs::copy_file(modelo, banco, fs::copy_options::overwrite_existing);
    const auto uma = EmProcesso([&] { return Importar(importado, arquivo, tamanho.Notas); });
    const auto piso = EmProcesso([&] { return MedirPiso(arquivo, importado, inserido); });
    importacao.push_back(uma.Segundos);
    memoria.push_back(uma.Memoria);
    leitura.push_back(piso.Leitura);
    insercao.push_back(piso.Insercao);
  }
  const TMedida medida{.Notas = tamanho.Notas,
                       .Tamanho = static_cast<double>(fs::file_size(arquivo)),
                       .Importacao = Mediana(importacao),
                       .Leitura = Mediana(leitura),
                       .Insercao = Mediana(insercao),
                       .Memoria = *std::max_element(memoria.begin(), memoria.end())};
  fs::remove(arquivo);
  return medida;
}

template <class... Valores>
void Escrever(fmt::string_view formato, const Valores&... valores) {
  static const std::locale kLocal(std::locale::classic(), new TPontuacaoBrasileira);
  fmt::print("{}", fmt::vformat(kLocal, formato, fmt::make_format_args(valores...)));
  std::fflush(stdout);
}

void EscreverCabecalho() {
  constexpr auto kFormato = "{:>8}{:>10}{:>7}{:>10}{:>10}{:>10}{:>10}{:>10}{:>9}{:>9}{:>11}\n";
  Escrever(kFormato, "", "arquivo", "", "", "importar", "piso", "leitura", "inserção", "importar", "memória",
           "memória");
  Escrever(kFormato, "notas", "MiB", "vezes", "notas/s", "µs/nota", "µs/nota", "µs/nota", "µs/nota", "÷ piso", "MiB",
           "÷ arquivo");
}

void EscreverLinha(const TMedida& m, int repeticoes) {
  Escrever("{:>8L}{:>10.2Lf}{:>7}{:>10.0Lf}{:>10.1Lf}{:>10.1Lf}{:>10.1Lf}{:>10.1Lf}{:>9.2Lf}{:>9.1Lf}{:>11.1Lf}\n",
           m.Notas, m.Tamanho / kMiB, repeticoes, static_cast<double>(m.Notas) / m.Importacao, m.PorNota(m.Importacao),
           m.PorNota(m.Piso()), m.PorNota(m.Leitura), m.PorNota(m.Insercao), m.Razao(), m.Memoria / kMiB,
           m.Memoria / m.Tamanho);
}

// One line per limit. True when all those that were measured hold.
bool EscreverLimites(const std::map<std::size_t, TMedida>& medidas) {
  bool todos = true;
  const auto limite = [&](const char* texto, bool medido, auto valor, double maximo) {
    if (!medido) return Escrever("  {}: não medido\n", texto);
    const double v = valor();
    todos = todos && v <= maximo;
    Escrever("  {}: {:.2Lf} (no máximo {:.2Lf}): {}\n", texto, v, maximo, v <= maximo ? "cumprido" : "NÃO CUMPRIDO");
  };
  const auto porNota = [&](std::size_t notas) { return medidas.at(notas).PorNota(medidas.at(notas).Importacao); };
  Escrever("\nLimites\n");
  limite(
      "Custo de 10.000 notas ÷ piso", medidas.contains(10'000), [&] { return medidas.at(10'000).Razao(); },
      kRazaoMaxima);
  limite(
      "Custo por nota, 100.000 ÷ 1.000 notas", medidas.contains(100'000),
      [&] { return porNota(100'000) / porNota(1'000); }, kCrescimentoMaximo);
  limite(
      "Memória ÷ (12 × arquivo + 64 MiB), o maior", true,
      [&] {
        double pior = 0;
        for (const auto& [notas, m] : medidas)
          pior = std::max(pior, m.Memoria / (kMemoriaPorTamanho * m.Tamanho + kMemoriaFixa));
        return pior;
      },
      1.0);
  return todos;
}

bool Executar(std::size_t ate) {
  const auto pasta = fs::temp_directory_path() / fmt::format("impnfse_bench.{}", getpid());
  const auto modelo = pasta / "modelo.fdb";
  std::map<std::size_t, TMedida> medidas;
  try {
    fs::create_directory(pasta);
    EmProcesso([&] { return CriarModelo(modelo, pasta / "arquivo-morto"); });
    EscreverCabecalho();
    for (const auto& tamanho : kTamanhos) {
      if (tamanho.Notas > ate) break;
      const auto medida = Medir(pasta, modelo, tamanho);
      EscreverLinha(medida, tamanho.Repeticoes);
      medidas.emplace(tamanho.Notas, medida);
    }
  } catch (...) {
    fs::remove_all(pasta);
    throw;
  }
  fs::remove_all(pasta);
  return EscreverLimites(medidas);
}

}  // namespace
}  // namespace impnfse::bench

// Exit status: 0 when every measured limit holds, 1 when one doesn't, 2 when nothing could be measured.
int main(int argc, char** argv) {
  using namespace impnfse;
  Int64 ate = argc == 1 ? 100'000 : 0;
  if (argc == 3 && std::string_view(argv[1]) == "--ate") ate = StrToInt64Def(argv[2], 0);
  if (ate < 10) {
    fmt::print(stderr, "Uso: impnfse_bench [--ate N]\n  --ate N  mede arquivos de até N notas (de 10 a 100.000)\n");
    return 2;
  }
  try {
    return bench::Executar(static_cast<std::size_t>(ate)) ? 0 : 1;
  } catch (const std::exception& erro) {
    fmt::print(stderr, "impnfse_bench: {}\n", erro.what());
    return 2;
  }
}
