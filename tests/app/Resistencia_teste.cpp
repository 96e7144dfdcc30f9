// What the program must withstand: hostile files, databases and folders that fail it.
#include <iconv.h>
#include <sys/mount.h>

#include <csignal>

#include "Programa.h"

namespace impnfse::testes {
namespace {

using TTesteResistencia = TTestePrograma;

const String kBoa = ArquivoGINFES({TNotaGINFES{}});

String Repetir(std::string_view texto, int vezes) {
  String repetido;
  for (int i = 0; i < vezes; ++i) repetido += texto;
  return repetido;
}

// The good file with something else in place of the taker's name.
String ComNome(const String& nome) { return Substituir(kBoa, "Padaria Exemplo Ltda", nome); }

// The same with a document type, the name being its entity "x".
String ComEntidade(const String& definicoes) {
  return Substituir(ComNome("&x;"), "?><NFSE", "?><!DOCTYPE NFSE [" + definicoes + "]><NFSE");
}

String Converter(const String& texto, const char* codificacao) {
  const auto conversor = ::iconv_open(codificacao, "UTF-8");
  String origem = texto;
  String destino(texto.size() * 4, '\0');
  char* de = origem.data();
  char* para = destino.data();
  auto faltam = origem.size();
  auto cabem = destino.size();
  EXPECT_NE(::iconv(conversor, &de, &faltam, &para, &cabem), static_cast<std::size_t>(-1)) << codificacao;
  ::iconv_close(conversor);
  destino.resize(destino.size() - cabem);
  return destino;
}

// One bad file after another in one run: each is refused as it is and stays as it was, and the good one passes.
TEST_F(TTesteResistencia, ArquivosHostis) {
  String bomba = "<!ENTITY a0 'lol'>";
  for (int i = 1; i < 30; ++i) bomba += fmt::format("<!ENTITY a{0} '&a{1};&a{1};&a{1};'>", i, i - 1);
  const auto segredo = Pasta.Gravar("segredo.txt", "Segredo");
  const std::pair<const char*, String> hostis[] = {
      {"vazio", ""},
      {"brancos", " \r\n\t"},
      {"binario", LerTudo(Pasta / "banco.fdb").substr(0, 100'000)},
      {"truncado", kBoa.substr(0, kBoa.size() / 2)},
      {"sem fim", kBoa.substr(0, kBoa.size() - 7)},
      {"e comercial", ComNome("A & B")},
      {"controle", ComNome("A\x02")},
      {"controle escrito", ComNome("A&#2;")},
      {"zero", ComNome(String("A\0B", 3))},
      {"utf-8 quebrado", ComNome("A\xC3(")},
      {"trocadas", Substituir(kBoa, "</Bairro></", "</Cidade></") + "<a></b>"},
      {"duas raizes", kBoa + "<NFSE/>"},
      {"outra raiz", Substituir(kBoa, "NFSE", "NFSe")},
      {"bomba", ComEntidade(bomba + "<!ENTITY x '&a29;'>")},
      {"recursiva", ComEntidade("<!ENTITY x '&y;'><!ENTITY y '&x;'>")},
      {"externa", ComEntidade("<!ENTITY x SYSTEM '" + segredo + "'>")},
      {"externa de parametro", ComEntidade("<!ENTITY % y SYSTEM '" + segredo + "'> %y; <!ENTITY x 'a'>")},
      {"indefinida", ComNome("&x;")},
      {"profundo", Substituir(kBoa, "<Nfse>", "<Nfse>" + Repetir("<a>", 100'000) + Repetir("</a>", 100'000))},
      {"profundo sem fim", Repetir("<NFSE>", 100'000)},
      {"muitos atributos", Substituir(kBoa, "<Nfse>", "<Nfse " + Repetir("a='1' ", 50'000) + ">")},
  };
  for (const auto& [nome, bytes] : hostis) Pasta.Gravar(fmt::format("entrada/{}.xml", nome), bytes);
  Pasta.Gravar("entrada/zz boa.xml", kBoa);
  const auto execucao = Importar({"entrada", "nao-existe.xml", "--json"});
  EXPECT_EQ(execucao.Status, 1);
  EXPECT_EQ(execucao.Erros, "");
  const auto resultados = Json::parse(execucao.Saida);
  ASSERT_EQ(resultados.size(), std::size(hostis) + 2);
  for (const auto& r : resultados) {
    SCOPED_TRACE(r["arquivo"]);
    const bool boa = r["arquivo"] == "entrada/zz boa.xml";
    EXPECT_EQ(r["importou"], boa);
    // Another root is no note, and no error of the file's structure either.
    const bool outraRaiz = r["arquivo"] == "entrada/outra raiz.xml";
    EXPECT_EQ(r["temErros"], !boa && !outraRaiz);
    EXPECT_EQ(r["moveu"], boa);
    EXPECT_EQ(r["documentos"].size(), boa ? 1U : 0U);
    EXPECT_EQ(r["erro"], boa || outraRaiz ? "" : kErroEstrutura);
  }
  for (const auto& [nome, bytes] : hostis)
    EXPECT_TRUE(LerTudo(Pasta / fmt::format("entrada/{}.xml", nome)) == bytes) << nome;
  EXPECT_EQ(Registros()["A100"].size(), 1U);
}

TEST_F(TTesteResistencia, Codificacoes) {
  const String nome = "São João d'Água Ltda çãÉ";
  const struct {
    const char* Codificacao;
    const char* Declarada;
    String Marca;
    String Nome;
  } casos[] = {
      {"UTF-8", "UTF-8", "\xEF\xBB\xBF", nome + " €"},         {"UTF-16LE", "UTF-16", "\xFF\xFE", nome + " €"},
      {"UTF-16BE", "UTF-16", "\xFE\xFF", nome + " €"},         {"ISO-8859-1", "ISO-8859-1", "", nome},
      {"WINDOWS-1252", "Windows-1252", "", nome + " “€” – ™"},
  };
  for (std::size_t i = 0; i < std::size(casos); ++i) {
    const auto& caso = casos[i];
    SCOPED_TRACE(caso.Codificacao);
    const auto xml =
        Substituir(ComNome(caso.Nome), "encoding=\"UTF-8\"", fmt::format("encoding=\"{}\"", caso.Declarada));
    const auto comDocumento = Substituir(xml, "99888777000166", fmt::format("9988877700016{}", i));
    Pasta.Gravar("entrada/x.xml", caso.Marca + Converter(comDocumento, caso.Codificacao));
    EXPECT_EQ(Importar({"entrada"}).Status, 0);
    const auto participantes = Registros()["0150"];
    ASSERT_EQ(participantes.size(), i + 1);
    EXPECT_EQ(participantes[i]["NOME"], caso.Nome);
  }
}

TEST_F(TTesteResistencia, BancoQueNaoServe) {
  const auto entrada = Pasta.Gravar("entrada/x.xml", kBoa);
  const auto recusa = [&](const char* parte, const TOpcoesExecucao& opcoes = {}) {
    EXPECT_TRUE(FalhouComUmaLinha(Importar({entrada}, opcoes), 2, parte));
    EXPECT_TRUE(FalhouComUmaLinha(Rodar({"registros", "banco.fdb"}, opcoes), 2, parte));
    EXPECT_TRUE(LerTudo(entrada) == kBoa);
  };
  {
    const TBancoFirebird outro(Pasta / "banco.fdb");
    recusa("em uso por outro processo");
  }
  fs::permissions(Pasta / "", fs::perms::all);
  fs::permissions(Pasta / "banco.fdb", fs::perms{0444});
  recusa("Sem permissão", {.SemPrivilegios = true});
  fs::permissions(Pasta / "banco.fdb", fs::perms{0666});

  const auto inteiro = LerTudo(Pasta / "banco.fdb");
  TBancoFirebird(Pasta / "banco.fdb").Executar("UPDATE IMPNFSE_ESQUEMA SET VERSAO = 999");
  recusa("versão 999");
  Pasta.Gravar("banco.fdb", inteiro);
  TBancoFirebird(Pasta / "banco.fdb").Executar("DROP TABLE IMPNFSE_ESQUEMA");
  recusa("não tem o esquema");
  for (const String& bytes :
       {String("isto não é um banco"), String(), inteiro.substr(0, 1'000'000), String(99'999, 'x')}) {
    Pasta.Gravar("banco.fdb", bytes);
    recusa("não é um banco Firebird");
  }
  fs::remove(Pasta / "banco.fdb");
  recusa("Crie-o com: impnfse criar banco.fdb");
}

TEST_F(TTesteResistencia, ArquivoOuArquivoMortoSemPermissao) {
  for (const auto* nome : {"", "entrada"}) fs::permissions(Pasta / nome, fs::perms::all);
  fs::permissions(Pasta / "banco.fdb", fs::perms{0666});
  const TOpcoesExecucao comum{.SemPrivilegios = true};
  const auto entrada = Pasta.Gravar("entrada/x.xml", kBoa);
  fs::permissions(entrada, fs::perms::none);
  const auto naoLeu = Importar({entrada}, comum);
  EXPECT_EQ(naoLeu.Status, 1) << naoLeu.Erros;
  EXPECT_TRUE(Contem(naoLeu.Saida, "não pode ser lido: sem permissão."));
  EXPECT_EQ(Registros()["A100"].size(), 0U);

  fs::permissions(entrada, fs::perms{0644});
  const auto ficou = [&](const TOpcoesExecucao& opcoes) {
    const auto execucao = Importar({entrada, "--json"}, opcoes);
    EXPECT_TRUE(FalhouComUmaLinha({execucao.Status, "", execucao.Erros}, 1, "O arquivo ficou onde estava"));
    const auto resultado = Json::parse(execucao.Saida)[0];
    EXPECT_EQ(resultado["importou"], true);
    EXPECT_EQ(resultado["moveu"], false);
    EXPECT_EQ(resultado["destino"], "");
    EXPECT_TRUE(LerTudo(entrada) == kBoa);
    EXPECT_EQ(Registros()["A100"].size(), 1U);
  };
  fs::create_directories(Pasta / "morto/NFSe");
  fs::permissions(Pasta / "morto/NFSe", fs::perms{0555});
  ficou(comum);
  fs::remove_all(Pasta / "morto");
  Pasta.Gravar("morto", "um arquivo onde devia haver uma pasta");
  ficou({});
}

TEST_F(TTesteResistencia, DiscoCheio) {
  fs::create_directory(Pasta / "disco");
  if (::mount("none", (Pasta / "disco").c_str(), "tmpfs", 0, "size=8m") != 0)
    GTEST_SKIP() << "montar um disco pequeno não é permitido aqui";
  struct TDesmontar {
    String Onde;
    ~TDesmontar() { ::umount2(Onde.c_str(), MNT_DETACH); }
  } const desmontar{Pasta / "disco"};
  fs::copy_file(Pasta / "banco.fdb", Pasta / "disco/banco.fdb");
  std::vector<TNotaGINFES> notas(10'000);
  for (std::size_t i = 0; i < notas.size(); ++i) notas[i].Numero = std::to_string(i + 1);
  const auto entrada = Pasta.Gravar("entrada/x.xml", ArquivoGINFES(notas));

  const auto execucao = Rodar({"importar", "disco/banco.fdb", entrada, "--leiaute", "43"});
  EXPECT_EQ(execucao.Status, 1);
  EXPECT_TRUE(Contem(execucao.Saida, "Não há espaço em disco"));
  EXPECT_TRUE(Existe("entrada/x.xml"));
  EXPECT_TRUE(Contem(Rodar({"registros", "disco/banco.fdb"}).Saida, "\n0 documentos"));

  // What couldn't be made isn't in the way of the next try.
  EXPECT_TRUE(FalhouComUmaLinha(Rodar({"criar", "disco/outro.fdb"}), 2, "espaço em disco"));
  EXPECT_FALSE(Existe("disco/outro.fdb"));
}

}  // namespace
}  // namespace impnfse::testes
