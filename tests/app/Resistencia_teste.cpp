// What the program must withstand: hostile files, databases and folders that fail it.
#include <iconv.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include "Programa.h"

namespace impnfse::testes::resistencia {

using TTesteResistencia = TTestePrograma;

const String kBoa = ArquivoGINFES({{}});

// The good file with something else in place of the taker's name.
String ComNome(const String& nome) { return Substituir(kBoa, "Padaria Exemplo Ltda", nome); }

// The same with a document type, the name being its entity "x" so many times.
String ComEntidade(const String& definicoes, int vezes = 1) {
  return Substituir(ComNome(Repetir("&x;", vezes)), "?><NFSE", "?><!DOCTYPE NFSE [" + definicoes + "]><NFSE");
}

String Converter(String texto, const char* codificacao) {
  const auto conversor = ::iconv_open(codificacao, "UTF-8");
  String destino(texto.size() * 4, '\0');
  char* de = texto.data();
  char* para = destino.data();
  auto faltam = texto.size();
  auto cabem = destino.size();
  EXPECT_NE(::iconv(conversor, &de, &faltam, &para, &cabem), static_cast<std::size_t>(-1)) << codificacao;
  ::iconv_close(conversor);
  return destino.substr(0, destino.size() - cabem);
}

// One bad file after another in one run: each is refused as it is and stays as it was, and the good one passes.
TEST_F(TTesteResistencia, ArquivosHostis) {
  String bomba = "<!ENTITY a0 'lol'>";
  for (int i = 1; i < 30; ++i) bomba += fmt::format("<!ENTITY a{0} '&a{1};&a{1};&a{1};'>", i, i - 1);
  bomba += "<!ENTITY x '&a29;'>";
  const std::pair<const char*, String> hostis[] = {
      {"vazio", ""},
      {"binario", LerArquivo(Pasta / "banco.fdb").substr(0, 100'000)},
      {"truncado", kBoa.substr(0, kBoa.size() / 2)},
      {"bomba", ComEntidade(bomba)},
      {"bomba em atributo", Substituir(ComEntidade(bomba, 0), "<Nfse>", "<Nfse a='&x;'>")},
      {"quadratica", ComEntidade("<!ENTITY x '" + String(100'000, 'x') + "'>", 3000)},
      {"recursiva", ComEntidade("<!ENTITY x '&y;'><!ENTITY y '&x;'>")},
      {"externa", ComEntidade("<!ENTITY x SYSTEM 'banco.fdb'>")},
      {"profundo", Substituir(kBoa, "<Nfse>", "<Nfse>" + Repetir("<a>", 100'000) + Repetir("</a>", 100'000))},
      {"profundo sem fim", Repetir("<NFSE>", 100'000)},
      {"valor", ArquivoGINFES({{.ValorServicos = "R$ 10"}})},
      {"elemento no texto", ArquivoGINFES({{.Discriminacao = "a<b/>c"}})},
      // Another root is no note, and no error of the file's structure either.
      {"outra raiz", Substituir(kBoa, "NFSE", "NFSe")},
      {"raiz sem nota", "<NFSE/>"},
  };
  for (const auto& [nome, bytes] : hostis) Pasta.Gravar(fmt::format("entrada/{}.xml", nome), bytes);
  Pasta.Gravar("entrada/zz boa.xml", kBoa);
  // A pipe that nobody writes to must be refused, not waited for.
  ASSERT_EQ(::mkfifo((Pasta / "fila.xml").c_str(), 0600), 0);
  const auto execucao = Importar("entrada fila.xml nao-existe.xml --json");
  EXPECT_EQ(execucao.Status, 1);
  EXPECT_EQ(execucao.Erros, "");
  const auto resultados = Json::parse(execucao.Saida);
  ASSERT_EQ(resultados.size(), std::size(hostis) + 3);
  for (const auto& r : resultados) {
    const auto arquivo = r["arquivo"].get<String>();
    const bool boa = arquivo == "entrada/zz boa.xml";
    const String erro = boa || arquivo.find("raiz") != arquivo.npos ? "" : kErroEstrutura;
    EXPECT_EQ(Json({r["importou"], r["moveu"], r["documentos"].size(), r["temErros"], r["erro"], r["erros"]}),
              Json({boa, boa, boa ? 1U : 0U, !erro.empty(), erro, boa ? Json::array() : Json::array({erro})}))
        << arquivo;
  }
  for (const auto& [nome, bytes] : hostis)
    EXPECT_TRUE(LerArquivo(Pasta / fmt::format("entrada/{}.xml", nome)) == bytes) << nome;
  EXPECT_EQ(Registros()["A100"].size(), 1U);
}

TEST_F(TTesteResistencia, Codificacoes) {
  for (const auto& [codificacao, marca] : Casos("UTF-8 =>  | UTF-8 => \uFEFF | UTF-16LE => \uFEFF | UTF-16BE => \uFEFF "
                                                "| ISO-8859-1 =>  | WINDOWS-1252 => ")) {
    const String euro = codificacao == "ISO-8859-1" ? "&#8364;" : "€";
    const auto declarada = codificacao.starts_with("UTF-16") ? "UTF-16" : codificacao;
    const auto xml = Substituir(ComNome("São d'Água Ltda çãÉ " + euro), "g=\"UTF-8\"", "g=\"" + declarada + "\"");
    Pasta.Gravar("entrada/x.xml", Converter(marca + xml, codificacao.c_str()));
    EXPECT_EQ(Importar().Status, 0);
    EXPECT_EQ(Tabela("SELECT NOME FROM ES02_REG0150"), "São d'Água Ltda çãÉ €") << codificacao << marca;
    Executar("DELETE FROM ES02_REG0150");
  }
}

TEST_F(TTesteResistencia, BancoQueNaoServe) {
  const auto entrada = Pasta.Gravar("entrada/x.xml", kBoa);
  const auto recusa = [&](const char* parte, const TOpcoesExecucao& opcoes = {}) {
    EXPECT_TRUE(FalhouComUmaLinha(Importar("entrada", opcoes), 2, parte));
    EXPECT_TRUE(FalhouComUmaLinha(Rodar("registros banco.fdb", opcoes), 2, parte));
    EXPECT_TRUE(LerArquivo(entrada) == kBoa);
  };
  {
    const TBancoFirebird outro(Pasta / "banco.fdb");
    recusa("em uso por outro processo");
  }
  fs::permissions(Pasta / "", fs::perms::all);
  fs::permissions(Pasta / "banco.fdb", fs::perms{0444});
  recusa("Sem permissão", {.SemPrivilegios = true});
  fs::permissions(Pasta / "banco.fdb", fs::perms{0666});

  const auto inteiro = LerArquivo(Pasta / "banco.fdb");
  Executar("UPDATE IMPNFSE_ESQUEMA SET VERSAO = 999");
  recusa("versão 999");
  Pasta.Gravar("banco.fdb", inteiro);
  Executar("DROP TABLE IMPNFSE_ESQUEMA");
  recusa("não tem o esquema");
  for (const String& bytes : {String(), inteiro.substr(0, 1'000'000), String(99'999, 'x')}) {
    Pasta.Gravar("banco.fdb", bytes);
    recusa("não é um banco Firebird");
  }
  fs::remove(Pasta / "banco.fdb");
  recusa("Crie-o com: impnfse criar banco.fdb");
}

TEST_F(TTesteResistencia, ArquivoOuArquivoMortoSemPermissao) {
  for (const auto* nome : {"", "entrada"}) fs::permissions(Pasta / nome, fs::perms::all);
  fs::permissions(Pasta / "banco.fdb", fs::perms{0666});
  const auto entrada = Pasta.Gravar("entrada/x.xml", kBoa);
  fs::permissions(entrada, fs::perms::none);
  const auto naoLeu = Importar(entrada, {.SemPrivilegios = true});
  EXPECT_EQ(naoLeu.Status, 1) << naoLeu.Erros;
  EXPECT_TRUE(Contem(naoLeu.Saida, "não pode ser lido: sem permissão."));
  EXPECT_EQ(Registros()["A100"].size(), 0U);

  fs::permissions(entrada, fs::perms{0644});
  const auto ficou = [&](const TOpcoesExecucao& opcoes) {
    const auto execucao = Importar("entrada --json", opcoes);
    EXPECT_TRUE(FalhouComUmaLinha({execucao.Status, "", execucao.Erros}, 1, "O arquivo ficou onde estava"));
    const auto r = Json::parse(execucao.Saida)[0];
    EXPECT_EQ(Json({r["importou"], r["moveu"], r["destino"]}), Json({true, false, ""}));
    EXPECT_TRUE(LerArquivo(entrada) == kBoa);
    EXPECT_EQ(Registros()["A100"].size(), 1U);
  };
  fs::create_directories(Pasta / "morto/NFSe");
  fs::permissions(Pasta / "morto/NFSe", fs::perms{0555});
  ficou({.SemPrivilegios = true});
  fs::remove_all(Pasta / "morto");
  Pasta.Gravar("morto", "um arquivo onde devia haver uma pasta");
  ficou({});
}

TEST_F(TTesteResistencia, DiscoCheio) {
  fs::create_directory(Pasta / "disco");
  if (::mount("none", (Pasta / "disco").c_str(), "tmpfs", 0, "size=8m") != 0)
    GTEST_SKIP() << "montar um disco pequeno não é permitido aqui";
  fs::copy_file(Pasta / "banco.fdb", Pasta / "disco/banco.fdb");
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES(std::vector<TNotaGINFES>(10'000)));

  const auto execucao = Rodar("importar disco/banco.fdb entrada --leiaute 43");
  EXPECT_EQ(execucao.Status, 1);
  EXPECT_TRUE(Contem(execucao.Saida, "Não há espaço em disco"));
  EXPECT_TRUE(Pasta.Tem("entrada/x.xml"));
  EXPECT_TRUE(Contem(Rodar("registros disco/banco.fdb").Saida, "\n0 documentos"));

  // What couldn't be made isn't in the way of the next try.
  EXPECT_TRUE(FalhouComUmaLinha(Rodar("criar disco/outro.fdb"), 2, "espaço em disco"));
  EXPECT_FALSE(Pasta.Tem("disco/outro.fdb"));
  EXPECT_EQ(::umount2((Pasta / "disco").c_str(), MNT_DETACH), 0);
}

}  // namespace impnfse::testes::resistencia
