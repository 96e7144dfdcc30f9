#include <unistd.h>

#include <set>

#include "Apoio.h"

namespace impnfse::testes {
namespace {

struct TResultado {
  bool Moveu;
  String Final;
  String Falha;
};

TResultado Mover(const String& origem, const String& destino) {
  TMoverArquivoIOP mover;
  mover.SetArquivoOrigem(origem);
  mover.SetArquivoDestino(destino);
  const bool moveu = mover.MoveuArquivo();
  return {moveu, mover.GetArquivoFinal(), mover.GetFalha()};
}

TEST(Mover, FazAsPastasENuncaSobrepoe) {
  const TPastaTemporaria pasta;
  const std::vector<std::pair<const char*, const char*>> casos = {{"a/b/nota.fiscal.xml", "a/b/nota.fiscal.xml"},
                                                                  {"a/b/nota.fiscal.xml", "a/b/nota.fiscal (2).xml"},
                                                                  {"a/b/nota.fiscal.xml", "a/b/nota.fiscal (3).xml"},
                                                                  {"a/b/sem extensão", "a/b/sem extensão"},
                                                                  {"a/b/sem extensão", "a/b/sem extensão (2)"}};
  for (std::size_t i = 0; i < casos.size(); ++i) {
    const auto origem = pasta.Gravar("origem.xml", std::to_string(i));
    const auto resultado = Mover(origem, pasta / casos[i].first);
    EXPECT_TRUE(resultado.Moveu) << resultado.Falha;
    EXPECT_EQ(resultado.Final, pasta / casos[i].second);
    EXPECT_FALSE(fs::exists(origem));
  }
  for (std::size_t i = 0; i < casos.size(); ++i) EXPECT_EQ(LerArquivo(pasta / casos[i].second), std::to_string(i));
}

TEST(Mover, DeixaOArquivoQuandoNaoDa) {
  const TPastaTemporaria pasta;
  const auto origem = pasta.Gravar("nota.xml", "x");
  const auto semDestino = Mover(origem, "");
  EXPECT_FALSE(semDestino.Moveu);
  EXPECT_EQ(semDestino.Falha, "") << "an empty destination isn't a failure";

  pasta.Gravar("arquivo", "");
  fs::create_directory(pasta / "fechada");
  fs::permissions(pasta / "fechada", fs::perms::owner_read | fs::perms::owner_exec);
  std::vector<String> impossiveis = {pasta / "arquivo/NFSe/nota.xml", "/proc/impnfse/nota.xml"};
  if (::geteuid() != 0) impossiveis.push_back(pasta / "fechada/nota.xml");
  for (const auto& destino : impossiveis) {
    const auto resultado = Mover(origem, destino);
    EXPECT_FALSE(resultado.Moveu);
    EXPECT_EQ(resultado.Final, "");
    EXPECT_NE(resultado.Falha.find("não foi possível movê-lo para " + fs::path(destino).parent_path().string()),
              String::npos)
        << resultado.Falha;
    EXPECT_EQ(LerArquivo(origem), "x");
  }
  EXPECT_FALSE(Mover(pasta / "falta.xml", pasta / "destino.xml").Moveu);
  EXPECT_FALSE(fs::exists(pasta / "destino.xml"));
}

TEST(Mover, EntreSistemasDeArquivos) {
  const TPastaTemporaria pasta;
  if (::access("/dev/shm", W_OK) != 0) GTEST_SKIP() << "no other file system here";
  const TPastaTemporaria outra("/dev/shm");
  String conteudo;
  for (int i = 0; i < 100000; ++i) conteudo += "linha " + std::to_string(i) + "\n";
  // A long name too: it is allowed, so the passing name of the copy must not be longer.
  const auto longo = String(246, 'n') + ".xml";
  for (const auto& nome : {String("nota.xml"), String("nota.xml"), longo}) {
    const auto origem = pasta.Gravar(nome, conteudo);
    fs::permissions(origem, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const auto resultado = Mover(origem, outra / ("NFSe/" + nome));
    ASSERT_TRUE(resultado.Moveu) << resultado.Falha;
    EXPECT_FALSE(fs::exists(origem));
    EXPECT_EQ(LerArquivo(resultado.Final), conteudo);
    EXPECT_EQ(fs::status(resultado.Final).permissions() & fs::perms::others_all, fs::perms::none);
  }
  std::set<String> nomes;
  for (const auto& arquivo : fs::directory_iterator(outra / "NFSe")) nomes.insert(arquivo.path().filename().string());
  EXPECT_EQ(nomes, (std::set<String>{"nota.xml", "nota (2).xml", longo})) << "and no partial copy";
}

}  // namespace
}  // namespace impnfse::testes
