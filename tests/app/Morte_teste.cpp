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

namespace impnfse::testes {
namespace {

using TRelogio = std::chrono::steady_clock;

constexpr std::size_t kNotas = 1500;
constexpr unsigned kSemente = 20261031;
// Every document of a file has one value; here, as the JSON shows it.
constexpr const char* kValorAntigo = "1000.0";
constexpr const char* kValorNovo = "2000.0";

class TTesteMorte : public TTestePrograma {
 protected:
  // Runs begin with nothing stored (0), or with the file's documents under the old value (1).
  TTesteMorte() : Conteudo(Arquivo(kValorNovo)) {
    fs::copy_file(Pasta / "banco.fdb", Pasta / "vazio.fdb");
    Pasta.Gravar("entrada/x.xml", Arquivo(kValorAntigo));
    EXPECT_EQ(Importar({"entrada/x.xml"}).Status, 0);
    fs::copy_file(Pasta / "banco.fdb", Pasta / "cheio.fdb");
  }

  static String Arquivo(const String& valor) {
    std::vector<TNotaGINFES> notas(kNotas);
    for (std::size_t i = 0; i < kNotas; ++i) {
      notas[i].Numero = std::to_string(i + 1);
      notas[i].ValorServicos = valor;
      notas[i].Discriminacao = fmt::format("Serviço {}", i);
      notas[i].Tomador.Documento = CNPJ(fmt::format("{:014}", 50'000'000'000'000 + i));
    }
    return ArquivoGINFES(notas);
  }

  void Preparar(int comeco) const {
    fs::copy_file(Pasta / (comeco == 0 ? "vazio.fdb" : "cheio.fdb"), Pasta / "banco.fdb",
                  fs::copy_options::overwrite_existing);
    fs::remove_all(Pasta / "morto");
    Pasta.Gravar("entrada/x.xml", Conteudo);
  }

  // The value that all stored documents have, and "" when there are none. Anything in between is a failure.
  String ValorGravado() const {
    const auto registros = Registros();
    const auto& documentos = registros["A100"];
    for (const auto* outros : {"0150", "0200"}) EXPECT_EQ(registros[outros].size(), documentos.size()) << outros;
    if (documentos.empty()) return "";
    EXPECT_EQ(documentos.size(), kNotas);
    const auto& valor = documentos[0]["VL_DOC"];
    for (const auto& documento : documentos)
      if (documento["VL_DOC"] != valor || documento["A170"].size() != 1) ADD_FAILURE() << documento;
    return valor.dump();
  }

  enum class TMomento { AntesDeGravar, AntesDeMover, DepoisDeMover };

  // Checks what a run left behind that ended whenever, and that the next one completes it.
  TMomento ConferirECompletar(int comeco) const {
    const auto valor = ValorGravado();
    const bool gravou = valor == kValorNovo;
    EXPECT_TRUE(gravou || valor == (comeco == 0 ? "" : kValorAntigo)) << valor;
    const bool ficou = Existe("entrada/x.xml");
    EXPECT_NE(ficou, Existe("morto/NFSe/x.xml"));
    EXPECT_TRUE(ficou || gravou) << "no arquivo morto sem registros";
    EXPECT_TRUE(LerTudo(Pasta / (ficou ? "entrada/x.xml" : "morto/NFSe/x.xml")) == Conteudo);
    if (ficou) {
      const auto proxima = Importar({"entrada/x.xml"});
      EXPECT_EQ(proxima.Status, 0) << proxima.Saida << proxima.Erros;
      EXPECT_TRUE(Existe("morto/NFSe/x.xml") && !Existe("entrada/x.xml"));
      EXPECT_EQ(ValorGravado(), kValorNovo);
    }
    return !ficou ? TMomento::DepoisDeMover : gravou ? TMomento::AntesDeMover : TMomento::AntesDeGravar;
  }

  // A run that gets the signal after so long.
  TExecucao Interromper(int comeco, int sinal, TRelogio::duration espera) const {
    Preparar(comeco);
    TProcesso processo({"importar", "banco.fdb", "--leiaute", "43", "entrada/x.xml"}, {.Pasta = Pasta / ""});
    std::this_thread::sleep_for(espera);
    processo.Sinalizar(sinal);
    return processo.Esperar();
  }

  TRelogio::duration Cronometrar(int comeco) const {
    Preparar(comeco);
    const auto inicio = TRelogio::now();
    EXPECT_EQ(Importar({"entrada/x.xml"}).Status, 0);
    return TRelogio::now() - inicio;
  }

  String Conteudo;
};

TEST_F(TTesteMorte, AQualquerMomento) {
  constexpr int kMortes = 40;
  // Also a busy machine gets through: moments are drawn, so that fewer of them still cover the run.
  const auto limite = TRelogio::now() + std::chrono::seconds(40);
  const std::array duracoes{Cronometrar(0), Cronometrar(1)};
  std::mt19937 sorteio(kSemente);
  std::uniform_real_distribution<double> desvio(0, 1);
  std::map<TMomento, int> mortes;
  for (int i = 0; i < kMortes && TRelogio::now() < limite; ++i) {
    const int comeco = i % 2;
    // Half of the deaths are spread over the run, half over its end, where it commits and moves.
    const double parte = desvio(sorteio);
    const auto espera = std::chrono::duration_cast<std::chrono::milliseconds>(
        duracoes[static_cast<std::size_t>(comeco)] * (i % 4 < 2 ? parte : 0.9 + 0.3 * parte));
    SCOPED_TRACE(fmt::format("semente {}, morte {}, depois de {} ms", kSemente, i, espera.count()));
    Interromper(comeco, SIGKILL, espera);
    ++mortes[ConferirECompletar(comeco)];
  }
  fmt::print("{} antes de gravar, {} entre gravar e mover, {} depois de mover\n", mortes[TMomento::AntesDeGravar],
             mortes[TMomento::AntesDeMover], mortes[TMomento::DepoisDeMover]);
  EXPECT_GT(mortes[TMomento::AntesDeGravar], 0);
}

// The moment that a chance hardly meets.
TEST_F(TTesteMorte, EntreGravarEMover) {
  for (const int comeco : {0, 1}) {
    Preparar(comeco);
    EXPECT_EQ(Importar({"entrada/x.xml"}, {.MorreAoChamar = SYS_renameat2}).Status, -SIGSYS);
    EXPECT_EQ(ConferirECompletar(comeco), TMomento::AntesDeMover);
  }
}

// Ctrl+C, or the machine going down: the run may end or stop, but in order.
TEST_F(TTesteMorte, PedidoParaParar) {
  const auto duracao = Cronometrar(0);
  for (const int sinal : {SIGINT, SIGTERM})
    for (const double parte : {0.1, 0.4, 0.7}) {
      SCOPED_TRACE(fmt::format("sinal {}, parte {}", sinal, parte));
      const auto execucao = Interromper(0, sinal, std::chrono::duration_cast<TRelogio::duration>(duracao * parte));
      EXPECT_NE(execucao.Status, -SIGABRT);
      EXPECT_FALSE(Contem(execucao.Erros + execucao.Saida, "terminate"));
      ConferirECompletar(0);
    }
}

}  // namespace
}  // namespace impnfse::testes
