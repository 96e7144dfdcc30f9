// The program dies at any moment of a run: all registers of the file are there or none, the file lies in one place, and
// the next run completes.
#include <sys/syscall.h>

#include <array>
#include <chrono>
#include <csignal>
#include <map>
#include <random>
#include <thread>

#include "Programa.h"

namespace impnfse::testes::morte {

using TRelogio = std::chrono::steady_clock;

constexpr unsigned kSemente = 20261031;

// What is stored, as Gravado tells it: nothing, or all documents of a file, with their children, under one value.
constexpr std::array kComecos = {"0|-|-|0|0|0", "1500|1000|1000|1500|1500|1500"};
constexpr const char* kNovo = "1500|2000|2000|1500|1500|1500";

class TTesteMorte : public TTestePrograma {
 protected:
  // Runs begin with nothing stored (0), or with the file's documents under an old value (1).
  TTesteMorte() : Conteudo(Arquivo("2000.0")) {
    fs::copy_file(Pasta / "banco.fdb", Pasta / "0.fdb");
    Pasta.Gravar("entrada/x.xml", Arquivo("1000.0"));
    const auto inicio = TRelogio::now();
    Importar();
    Duracao = TRelogio::now() - inicio;
    fs::copy_file(Pasta / "banco.fdb", Pasta / "1.fdb");
  }

  static String Arquivo(const String& valor) {
    std::vector<TNotaGINFES> notas;
    for (int i = 1; i <= 1500; ++i)
      notas.push_back({.Numero = std::to_string(i),
                       .ValorServicos = valor,
                       .Discriminacao = fmt::format("Serviço {}", i),
                       .Tomador = {.Documento = CNPJ(std::to_string(50'000'000'000'000 + i))}});
    return ArquivoGINFES(notas);
  }

  void Preparar(int comeco) const {
    fs::copy_file(Pasta / fmt::format("{}.fdb", comeco), Pasta / "banco.fdb", fs::copy_options::overwrite_existing);
    fs::remove_all(Pasta / "morto");
    Pasta.Gravar("entrada/x.xml", Conteudo);
  }

  String Gravado() const {
    return Tabela(
        "SELECT COUNT(*), MIN(VL_DOC), MAX(VL_DOC), (SELECT COUNT(DISTINCT IDREGA100) FROM ES02_REGA170), "
        "(SELECT COUNT(*) FROM ES02_REG0150), (SELECT COUNT(*) FROM ES02_REG0200) FROM ES02_REGA100");
  }

  // Checks what a run left behind that ended whenever, and that the next one completes it. Gives the moment of its end.
  String ConferirECompletar(int comeco) const {
    const auto gravado = Gravado();
    const bool gravou = gravado == kNovo;
    EXPECT_TRUE(gravou || gravado == kComecos.at(static_cast<std::size_t>(comeco))) << gravado;
    const bool ficou = Pasta.Tem("entrada/x.xml");
    EXPECT_NE(ficou, Pasta.Tem("morto/NFSe/x.xml"));
    EXPECT_TRUE(ficou || gravou) << "no arquivo morto sem registros";
    EXPECT_TRUE(LerArquivo(Pasta / (ficou ? "entrada/x.xml" : "morto/NFSe/x.xml")) == Conteudo);
    if (!ficou) return "depois de mover";
    EXPECT_EQ(Importar().Status, 0);
    EXPECT_TRUE(Pasta.Tem("morto/NFSe/x.xml") && !Pasta.Tem("entrada/x.xml") && Gravado() == kNovo);
    return gravou ? "entre gravar e mover" : "antes de gravar";
  }

  // A run that gets the signal after that part of the time that the first one took.
  TExecucao Interromper(int comeco, int sinal, double parte) const {
    Preparar(comeco);
    TProcesso processo("importar banco.fdb --leiaute 43 entrada", {.Pasta = Pasta / ""});
    std::this_thread::sleep_for(Duracao * parte);
    processo.Sinalizar(sinal);
    return processo.Esperar();
  }

  String Conteudo;
  TRelogio::duration Duracao;
};

TEST_F(TTesteMorte, AQualquerMomento) {
  // Also a busy machine gets through: moments are drawn, so that fewer of them still cover the run.
  const auto limite = TRelogio::now() + std::chrono::seconds(20);
  std::mt19937 sorteio(kSemente);
  std::uniform_real_distribution<double> desvio(0, 1);
  std::map<String, int> mortes;
  for (int i = 0; i < 40 && TRelogio::now() < limite; ++i) {
    // Half of the deaths are spread over the run, half over its end, where it commits and moves.
    const double parte = i % 4 < 2 ? desvio(sorteio) : 0.9 + 0.6 * desvio(sorteio);
    SCOPED_TRACE(fmt::format("semente {}, morte {}, em {}", kSemente, i, parte));
    Interromper(i % 2, SIGKILL, parte);
    ++mortes[ConferirECompletar(i % 2)];
  }
  for (const auto& [momento, vezes] : mortes) fmt::print("{} {}\n", vezes, momento);
  EXPECT_GT(mortes["antes de gravar"], 0);
}

// The moment that a chance hardly meets.
TEST_F(TTesteMorte, EntreGravarEMover) {
  for (const int comeco : {0, 1}) {
    Preparar(comeco);
    EXPECT_EQ(Importar("entrada", {.MorreAoChamar = SYS_renameat2}).Status, -SIGSYS);
    EXPECT_EQ(ConferirECompletar(comeco), "entre gravar e mover");
  }
}

// Ctrl+C, or the machine going down: the run may end or stop, but in order.
TEST_F(TTesteMorte, PedidoParaParar) {
  for (const int sinal : {SIGINT, SIGTERM})
    for (const double parte : {0.1, 0.4, 0.7}) {
      SCOPED_TRACE(fmt::format("sinal {}, parte {}", sinal, parte));
      const auto execucao = Interromper(0, sinal, parte);
      EXPECT_NE(execucao.Status, -SIGABRT);
      EXPECT_FALSE(Contem(execucao.Erros + execucao.Saida, "terminate"));
      ConferirECompletar(0);
    }
}

}  // namespace impnfse::testes::morte
