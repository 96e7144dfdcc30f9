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
#include <optional>
#include <span>
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

// What must hold: at 10,000 notes against the floor; per note, at the largest size against 1,000 notes; at every size.
constexpr double kRazaoMaxima = 1.5;
constexpr double kCrescimentoMaximo = 1.2;
constexpr double kMemoriaPorTamanho = 12;
constexpr double kMemoriaFixa = 64 * kMiB;

// Notes in a file.
constexpr std::array<std::size_t, 5> kTamanhos = {10, 100, 1'000, 10'000, 100'000};

// What is measured of a layout.
struct TLeiaute {
  std::string_view Nome;  // as --leiaute takes it
  std::string_view Codigo;
  std::string_view Extensao;
  void (*Escrever)(std::ostream& saida, std::size_t notas);
  std::size_t ItensPorNota;
  // The largest size, unless --ate asks for another.
  std::size_t Maior;
  // At each size: small files need more for a stable median.
  std::array<int, kTamanhos.size()> Repeticoes;
};
constexpr std::array kLeiautes = {
    TLeiaute{"GINFES", "43", "xml", EscreverGINFES, 1, 100'000, {21, 21, 11, 7, 3}},
    TLeiaute{"ABRASF", "47", "xml", EscreverABRASF, 1, 100'000, {21, 21, 11, 7, 3}},
    TLeiaute{"ABRASF-itens", "47", "xml", EscreverABRASFItens, kItensPorNota, 10'000, {11, 11, 7, 3, 1}},
    TLeiaute{"Blumenau", "42", "txt", EscreverBlumenau, 1, 100'000, {21, 21, 11, 7, 3}},
};

struct TImportacao {
  double Segundos;
  double Memoria;  // peak of the process, in bytes
};

struct TMedida {
  std::size_t Notas;
  double Tamanho;  // of the file, in bytes
  double Linhas;   // that it became
  double Importacao, Leitura, Insercao, Memoria;

  double Piso() const { return Leitura + Insercao; }
  double Razao() const { return Importacao / Piso(); }
  // Microseconds.
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

TImportacao Importar(const TLeiaute& leiaute, const fs::path& banco, const fs::path& arquivo, std::size_t notas) {
  TSuite suite(banco);
  TImpNFSe importacao;
  importacao.DadosArquivo = {
      .Arquivo = arquivo, .CodigoLeiaute = String(leiaute.Codigo), .TipoImportacao = "NFSE", .IDFILIAL = 0};
  const auto inicio = std::chrono::steady_clock::now();
  importacao.Start();
  importacao.WaitFor();
  const std::chrono::duration<double> duracao = std::chrono::steady_clock::now() - inicio;
  rusage uso{};
  getrusage(RUSAGE_SELF, &uso);

  const auto& resumo = importacao.GetResumo();
  const auto documentos = suite.Banco().ConsultarInteiro("SELECT COUNT(*) FROM ES02_REGA100");
  const auto itens = suite.Banco().ConsultarInteiro("SELECT COUNT(*) FROM ES02_REGA170");
  if (!resumo.Moveu || importacao.GetTemErros() || resumo.Documentos.size() != notas ||
      documentos != static_cast<Int64>(notas) || itens != static_cast<Int64>(notas * leiaute.ItensPorNota))
    throw std::runtime_error(fmt::format("a importação de {} notas ({}) gravou {} com {} itens: {}", notas,
                                         leiaute.Nome, documentos, itens, resumo.Erro));
  fs::rename(resumo.Destino, arquivo);
  return {.Segundos = duracao.count(), .Memoria = static_cast<double>(uso.ru_maxrss) * 1024};
}

double Mediana(std::vector<double> valores) {
  std::sort(valores.begin(), valores.end());
  const auto meio = valores.size() / 2;
  return valores.size() % 2 == 1 ? valores[meio] : (valores[meio - 1] + valores[meio]) / 2;
}

// Imports and floors take turns, so that both see the same machine.
TMedida Medir(const TLeiaute& leiaute, const fs::path& pasta, const fs::path& modelo, std::size_t notas,
              int repeticoes) {
  const auto arquivo = pasta / fmt::format("notas-{}.{}", notas, leiaute.Extensao);
  {
    std::ofstream saida(arquivo, std::ios::binary);
    leiaute.Escrever(saida, notas);
    if (!saida.flush()) throw std::runtime_error("não foi possível gravar " + arquivo.string());
  }
  const auto importado = pasta / "importado.fdb";
  const auto inserido = pasta / "inserido.fdb";
  std::vector<double> importacao, leitura, insercao, memoria;
  double linhas = 0;
  for (int i = 0; i < repeticoes; ++i) {
    for (const auto& banco : {importado, inserido}) fs::copy_file(modelo, banco, fs::copy_options::overwrite_existing);
    const auto uma = EmProcesso([&] { return Importar(leiaute, importado, arquivo, notas); });
    const auto piso = EmProcesso([&] { return MedirPiso(arquivo, importado, inserido); });
    importacao.push_back(uma.Segundos);
    memoria.push_back(uma.Memoria);
    leitura.push_back(piso.Leitura);
    insercao.push_back(piso.Insercao);
    linhas = piso.Linhas;
  }
  const TMedida medida{.Notas = notas,
                       .Tamanho = static_cast<double>(fs::file_size(arquivo)),
                       .Linhas = linhas,
                       .Importacao = Mediana(importacao),
                       .Leitura = Mediana(leitura),
                       .Insercao = Mediana(insercao),
                       .Memoria = *std::max_element(memoria.begin(), memoria.end())};
  fs::remove(arquivo);
  return medida;
}

const std::locale& LocalBrasileiro() {
  static const std::locale kLocal(std::locale::classic(), new TPontuacaoBrasileira);
  return kLocal;
}

template <class... Valores>
void Escrever(fmt::string_view formato, const Valores&... valores) {
  fmt::print("{}", fmt::vformat(LocalBrasileiro(), formato, fmt::make_format_args(valores...)));
  std::fflush(stdout);
}

void EscreverCabecalho(const TLeiaute& leiaute) {
  constexpr auto kFormato = "{:>8}{:>10}{:>8}{:>7}{:>10}{:>10}{:>10}{:>10}{:>10}{:>9}{:>9}{:>11}\n";
  Escrever("{} (leiaute {})\n", leiaute.Nome, leiaute.Codigo);
  Escrever(kFormato, "", "arquivo", "linhas", "", "", "importar", "piso", "leitura", "inserção", "importar", "memória",
           "memória");
  Escrever(kFormato, "notas", "MiB", "÷ nota", "vezes", "notas/s", "µs/nota", "µs/nota", "µs/nota", "µs/nota", "÷ piso",
           "MiB", "÷ arquivo");
}

void EscreverLinha(const TMedida& m, int repeticoes) {
  const auto notas = static_cast<double>(m.Notas);
  Escrever(
      "{:>8L}{:>10.2Lf}{:>8.1Lf}{:>7}{:>10.0Lf}{:>10.1Lf}{:>10.1Lf}{:>10.1Lf}{:>10.1Lf}{:>9.2Lf}{:>9.1Lf}{:>11.1Lf}\n",
      m.Notas, m.Tamanho / kMiB, m.Linhas / notas, repeticoes, notas / m.Importacao, m.PorNota(m.Importacao),
      m.PorNota(m.Piso()), m.PorNota(m.Leitura), m.PorNota(m.Insercao), m.Razao(), m.Memoria / kMiB,
      m.Memoria / m.Tamanho);
}

// One line per limit. True when all those that were measured hold.
bool EscreverLimites(const std::map<std::size_t, TMedida>& medidas) {
  bool todos = true;
  const auto limite = [&](const std::string& texto, bool medido, auto valor, double maximo) {
    if (!medido) return Escrever("    {}: não medido\n", texto);
    const double v = valor();
    todos = todos && v <= maximo;
    Escrever("    {}: {:.2Lf} (no máximo {:.2Lf}): {}\n", texto, v, maximo, v <= maximo ? "cumprido" : "NÃO CUMPRIDO");
  };
  const auto porNota = [&](std::size_t notas) { return medidas.at(notas).PorNota(medidas.at(notas).Importacao); };
  const auto maior = medidas.rbegin()->first;
  Escrever("\n  Limites\n");
  limite(
      "Custo de 10.000 notas ÷ piso", medidas.contains(10'000), [&] { return medidas.at(10'000).Razao(); },
      kRazaoMaxima);
  limite(
      maior > 1'000 ? fmt::format(LocalBrasileiro(), "Custo por nota, {:L} ÷ 1.000 notas", maior)
                    : "Custo por nota, o maior tamanho ÷ 1.000 notas",
      maior > 1'000, [&] { return porNota(maior) / porNota(1'000); }, kCrescimentoMaximo);
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

// One block of the report.
bool MedirLeiaute(const TLeiaute& leiaute, const fs::path& pasta, const fs::path& modelo, std::size_t ate) {
  std::map<std::size_t, TMedida> medidas;
  EscreverCabecalho(leiaute);
  for (std::size_t i = 0; i < kTamanhos.size() && kTamanhos[i] <= ate; ++i) {
    const auto medida = Medir(leiaute, pasta, modelo, kTamanhos[i], leiaute.Repeticoes[i]);
    EscreverLinha(medida, leiaute.Repeticoes[i]);
    medidas.emplace(medida.Notas, medida);
  }
  return EscreverLimites(medidas);
}

// What the command line asks for.
struct TPedido {
  std::vector<TLeiaute> Leiautes{kLeiautes.begin(), kLeiautes.end()};
  std::optional<std::size_t> Ate;
};

bool Executar(const TPedido& pedido) {
  const auto pasta = fs::temp_directory_path() / fmt::format("impnfse_bench.{}", getpid());
  const auto modelo = pasta / "modelo.fdb";
  bool todos = true;
  try {
    fs::create_directory(pasta);
    EmProcesso([&] { return CriarModelo(modelo, pasta / "arquivo-morto"); });
    for (const auto& leiaute : pedido.Leiautes) {
      todos = MedirLeiaute(leiaute, pasta, modelo, pedido.Ate.value_or(leiaute.Maior)) && todos;
      Escrever("\n");
    }
  } catch (...) {
    fs::remove_all(pasta);
    throw;
  }
  fs::remove_all(pasta);
  return todos;
}

// Nothing when the options aren't understood.
std::optional<TPedido> LerOpcoes(std::span<char*> argumentos) {
  TPedido pedido;
  for (; argumentos.size() >= 2; argumentos = argumentos.subspan(2)) {
    const std::string_view opcao = argumentos[0];
    const std::string_view valor = argumentos[1];
    if (opcao == "--ate") {
      const auto ate = StrToInt64Def(valor, 0);
      if (ate < static_cast<Int64>(kTamanhos.front())) return std::nullopt;
      pedido.Ate = static_cast<std::size_t>(ate);
    } else if (opcao == "--leiaute") {
      std::erase_if(pedido.Leiautes, [&](const auto& l) { return Maiusculas(l.Nome) != Maiusculas(valor); });
    } else {
      return std::nullopt;
    }
  }
  if (!argumentos.empty() || pedido.Leiautes.empty()) return std::nullopt;
  return pedido;
}

void EscreverUso() {
  fmt::print(stderr,
             "Uso: impnfse_bench [--leiaute NOME] [--ate N]\n"
             "  --leiaute NOME  mede só um leiaute:");
  for (const auto& leiaute : kLeiautes) fmt::print(stderr, " {}", leiaute.Nome);
  fmt::print(stderr, "\n  --ate N         mede arquivos de até N notas (de 10 a 100.000)\n");
}

}  // namespace
}  // namespace impnfse::bench

// Exit status: 0 when every measured limit holds, 1 when one doesn't, 2 when nothing could be measured.
int main(int argc, char** argv) {
  using namespace impnfse;
  const auto pedido = bench::LerOpcoes(std::span(argv, static_cast<std::size_t>(argc)).subspan(1));
  if (!pedido) {
    bench::EscreverUso();
    return 2;
  }
  try {
    return bench::Executar(*pedido) ? 0 : 1;
  } catch (const std::exception& erro) {
    fmt::print(stderr, "impnfse_bench: {}\n", erro.what());
    return 2;
  }
}
