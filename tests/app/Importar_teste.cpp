// importar: its reports, the archive, the branches.
#include "Programa.h"

namespace impnfse::testes {
namespace {

using TTesteImportar = TTestePrograma;

constexpr const char* kOutraFilial = "11222333000262";

TNotaGINFES Nota(const String& numero, const String& valor = "1000.00") {
  TNotaGINFES nota;
  nota.Numero = numero;
  nota.ValorServicos = valor;
  return nota;
}

// Comparing objects whole holds the keys, their order and their types.
TEST_F(TTesteImportar, JSONTemAsChavesDoContratoNaOrdem) {
  const auto resultado = [](const String& arquivo, const String& leiaute, const String& classe, const Json& documentos,
                            const String& erro, const String& destino) {
    return Json({{"arquivo", arquivo},
                 {"leiaute", leiaute},
                 {"classe", classe},
                 {"importou", !destino.empty()},
                 {"temErros", destino.empty()},
                 {"erro", classe.empty() ? "" : erro},
                 {"erros", erro.empty() ? Json::array() : Json::array({erro})},
                 {"documentos", documentos},
                 {"destino", destino},
                 {"moveu", !destino.empty()}});
  };
  Pasta.Gravar("entrada/boa.xml", ArquivoGINFES({Nota("7"), Nota("8")}));
  auto execucao = Importar({"--json", "entrada/boa.xml"});
  EXPECT_EQ(execucao.Status, 0);
  EXPECT_EQ(execucao.Erros, "");
  const Json documentos = {{{"tipo", 0}, {"numero", "7"}}, {{"tipo", 0}, {"numero", "8"}}};
  EXPECT_EQ(
      Json::parse(execucao.Saida),
      Json::array({resultado("entrada/boa.xml", "43", "TNFSeGINFES", documentos, "", Pasta / "morto/NFSe/boa.xml")}));

  // No GINFES file: its importer says so. An unknown code: the same text, and no importer.
  Pasta.Gravar("entrada/ma.xml", "<NFSE>");
  for (const String codigo : {"43", "99", " 43", "'"}) {
    execucao = Rodar({"importar", "banco.fdb", "entrada/ma.xml", "--leiaute", codigo, "--json"});
    EXPECT_EQ(execucao.Status, 1);
    EXPECT_EQ(execucao.Erros, "");
    EXPECT_EQ(Json::parse(execucao.Saida),
              Json::array({resultado("entrada/ma.xml", codigo, codigo == "43" ? "TNFSeGINFES" : "", Json::array(),
                                     kErroEstrutura, "")}));
  }
  EXPECT_TRUE(Existe("entrada/ma.xml"));
}

TEST_F(TTesteImportar, RelataVariosArquivosEUmaPasta) {
  Pasta.Gravar("entrada/b.xml", ArquivoGINFES({Nota("2")}));
  Pasta.Gravar("entrada/a d'água ção.xml", ArquivoGINFES({Nota("1")}));
  Pasta.Gravar("entrada/c.txt", "isto não é XML");
  auto alheia = Nota("6");
  alheia.Prestador.Documento = CNPJ("99888777000155");
  Pasta.Gravar("entrada/d alheia.xml", ArquivoGINFES({alheia}));
  Pasta.Gravar("entrada/.oculto.xml", ArquivoGINFES({Nota("3")}));
  Pasta.Gravar("entrada/outra/d.xml", ArquivoGINFES({Nota("4")}));
  Pasta.Gravar("avulso.xml", ArquivoGINFES({Nota("5")}));
  const auto execucao = Importar({"entrada", "avulso.xml", "avulso.xml"});
  EXPECT_EQ(execucao.Status, 1);
  EXPECT_EQ(execucao.Erros, "");
  // What the front end says of a note that is nobody's stands twice in its list, and once here.
  EXPECT_EQ(Substituir(execucao.Saida, Pasta / "", "~/"), R"(✓ entrada/a d'água ção.xml
    1 documento: 1 de saída (emitente), 0 de entrada (tomador)
    arquivado em ~/morto/NFSe/a d'água ção.xml
✓ entrada/b.xml
    1 documento: 1 de saída (emitente), 0 de entrada (tomador)
    arquivado em ~/morto/NFSe/b.xml
✗ entrada/c.txt
    nenhum documento
    A estrutura do arquivo não corresponde a um leiaute de NFS-e conhecido.
✗ entrada/d alheia.xml
    nenhum documento
    Não foi possível gerar o período do documento: nem o emitente nem o destinatário é uma filial da empresa.
✓ avulso.xml
    1 documento: 1 de saída (emitente), 0 de entrada (tomador)
    arquivado em ~/morto/NFSe/avulso.xml
✗ avulso.xml
    nenhum documento
    O arquivo avulso.xml não pode ser lido: não existe.
    A estrutura do arquivo não corresponde a um leiaute de NFS-e conhecido.

6 arquivos: 3 carregados, 3 não carregados ou com erros. 3 documentos.
)");
  for (const auto* ficou : {"entrada/c.txt", "entrada/d alheia.xml", "entrada/.oculto.xml", "entrada/outra/d.xml"})
    EXPECT_TRUE(Existe(ficou)) << ficou;
  EXPECT_EQ(Registros()["A100"].size(), 3U);

  fs::create_directory(Pasta / "vazia");
  EXPECT_EQ(Importar({"vazia", "--json"}).Saida, "[]\n");
}

TEST_F(TTesteImportar, OMesmoArquivoDeNovoNaoDobraENaoSobrepoe) {
  for (const String valor : {"1000.00", "1000.00", "1200.50"}) {
    Pasta.Gravar("entrada/notas.xml", ArquivoGINFES({Nota("1", valor), Nota("2", valor)}));
    EXPECT_EQ(Importar({"entrada/notas.xml"}).Status, 0);
  }
  const auto registros = Registros();
  ASSERT_EQ(registros["A100"].size(), 2U);
  for (const auto& documento : registros["A100"]) {
    EXPECT_EQ(documento["VL_DOC"], 1200.50);
    EXPECT_EQ(documento["A170"].size(), 1U);
  }
  EXPECT_EQ(registros["0150"].size(), 1U);
  EXPECT_EQ(registros["0200"].size(), 1U);
  for (const auto* nome : {"notas.xml", "notas (2).xml", "notas (3).xml"})
    EXPECT_TRUE(Existe(String("morto/NFSe/") + nome)) << nome;
}

TEST_F(TTesteImportar, DuasFiliaisDosDoisLadosDaNota) {
  RegistrarFilial({"--arquivo-morto", "morto"}, kOutraFilial);
  auto nota = Nota("31");
  nota.Tomador.Documento = CNPJ(kOutraFilial);
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES({nota}));
  const auto execucao = Importar({"entrada/x.xml", "--filial", "11.222.333/0002-62", "--json"});
  EXPECT_EQ(execucao.Status, 0) << execucao.Saida;
  EXPECT_EQ(Json::parse(execucao.Saida)[0]["documentos"],
            Json({{{"tipo", 0}, {"numero", "31"}}, {{"tipo", 1}, {"numero", "31"}}}));

  const auto registros = Registros();
  ASSERT_EQ(registros["0000"].size(), 2U);
  ASSERT_EQ(registros["A100"].size(), 2U);
  EXPECT_EQ(registros["A100"][0]["IND_OPER"], 1);
  EXPECT_EQ(registros["A100"][1]["IND_OPER"], 0);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(registros["A100"][i]["IDREG0000"], registros["0000"][i]["IDREG0000"]);
    const auto daFilial = Registros({"--filial", i == 0 ? kCNPJFilial : kOutraFilial});
    ASSERT_EQ(daFilial["A100"].size(), 1U);
    EXPECT_EQ(daFilial["A100"][0], registros["A100"][i]);
    EXPECT_EQ(daFilial["0000"], Json::array({registros["0000"][i]}));
  }
}

// Relative paths hold from the folder that the program runs in; without an archive the file stays.
TEST_F(TTesteImportar, DeOutraPastaESemArquivoMorto) {
  RegistrarFilial({"--arquivo-morto", ""});
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES({Nota("1")}));
  const auto execucao = Rodar({"importar", "../banco.fdb", "x.xml", "--leiaute", "43"}, {.Pasta = Pasta / "entrada"});
  EXPECT_EQ(execucao.Status, 0) << execucao.Erros;
  EXPECT_TRUE(Contem(execucao.Saida, "o arquivo ficou onde estava: a filial não tem arquivo morto"));
  EXPECT_TRUE(Existe("entrada/x.xml"));
  EXPECT_EQ(Registros()["A100"][0]["CAMINHOARQORIG"], Pasta / "entrada/x.xml");
  EXPECT_EQ(Registros()["A100"][0]["CAMINHOARQDEST"], "");
}

TEST_F(TTesteImportar, ABarraSoApareceNumTerminal) {
  for (const bool terminal : {false, true}) {
    Pasta.Gravar("entrada/x.xml", ArquivoGINFES({Nota("1")}));
    const auto execucao = Importar({"entrada"}, {.Terminal = terminal});
    EXPECT_EQ(execucao.Status, 0);
    EXPECT_EQ(execucao.Saida.find('\x1b'), String::npos);
    EXPECT_EQ(execucao.Erros.find("Arquivo x.xml") != String::npos, terminal);
    EXPECT_EQ(execucao.Erros.empty(), !terminal);
  }
}

// A report that nobody got is no success.
TEST_F(TTesteImportar, SaidaQueNaoCabeNaoEFeita) {
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES({Nota("1")}));
  const TOpcoesExecucao opcoes{.Saida = "/dev/full"};
  EXPECT_NE(Importar({"entrada", "--json"}, opcoes).Status, 0);
  EXPECT_NE(Rodar({"registros", "banco.fdb", "--json"}, opcoes).Status, 0);
}

}  // namespace
}  // namespace impnfse::testes
