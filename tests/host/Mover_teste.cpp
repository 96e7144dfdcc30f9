// The move of a file to the archive.
#include <unistd.h>

#include <iterator>

#include "Apoio.h"

namespace impnfse::testes::mover {

// Where the file went; what failed, in brackets, when it didn't.
String Mover(const String& origem, const String& destino) {
  TMoverArquivoIOP mover;
  mover.SetArquivoOrigem(origem);
  mover.SetArquivoDestino(destino);
  return mover.MoveuArquivo() ? mover.GetArquivoFinal() : "[" + mover.GetFalha() + "]" + mover.GetArquivoFinal();
}

TEST(Mover, FazAsPastasENuncaSobrepoe) {
  const TPastaTemporaria pasta;
  const auto casos = Casos(
      "a/b/nota.fiscal.xml => a/b/nota.fiscal.xml | a/b/nota.fiscal.xml => a/b/nota.fiscal (2).xml | "
      "a/b/nota.fiscal.xml => a/b/nota.fiscal (3).xml | a/b/sem extensão => a/b/sem extensão | a/b/sem extensão => "
      "a/b/sem extensão (2)");
  for (const auto& [destino, final] : casos) {
    EXPECT_EQ(Mover(pasta.Gravar("origem.xml", final), pasta / destino), pasta / final);
    EXPECT_FALSE(pasta.Tem("origem.xml"));
  }
  for (const auto& [destino, final] : casos) EXPECT_EQ(LerArquivo(pasta / final), final);
  EXPECT_EQ(Mover(pasta / "a/b/nota.fiscal.xml", ""), "[]") << "no destination is no failure, and no move";
  EXPECT_TRUE(pasta.Tem("a/b/nota.fiscal.xml"));
}

TEST(Mover, EntreSistemasDeArquivos) {
  if (::access("/dev/shm", W_OK) != 0) GTEST_SKIP() << "no other file system here";
  const TPastaTemporaria pasta;
  const TPastaTemporaria outra("/dev/shm");
  const auto conteudo = Repetir("linha\n", 100'000);
  // A long name too: it is allowed, so the passing name of the copy must not be longer.
  const auto longo = String(246, 'n') + ".xml";
  for (const auto& nome : {String("nota.xml"), String("nota.xml"), longo}) {
    const auto origem = pasta.Gravar(nome, conteudo);
    fs::permissions(origem, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    const auto final = Mover(origem, outra / ("NFSe/" + nome));
    EXPECT_FALSE(fs::exists(origem));
    EXPECT_EQ(LerArquivo(final), conteudo);
    EXPECT_EQ(fs::status(final).permissions() & fs::perms::others_all, fs::perms::none);
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(outra / "NFSe"), {}), 3) << "no partial copy";
}

}  // namespace impnfse::testes::mover
