// importar: its reports, the archive, the branches.
#include "Programa.h"

namespace impnfse::testes::importar {

using TTesteImportar = TTestePrograma;

// Comparing the whole text holds the keys, their order and their types.
TEST_F(TTesteImportar, JSONTemAsChavesDoContratoNaOrdem) {
  RegistrarFilial("--arquivo-morto morto", kOutraFilial);
  const TNotaGINFES aOutra = {.Numero = "8", .Tomador = {.Documento = CNPJ(kOutraFilial)}};
  Pasta.Gravar("entrada/boa.xml", ArquivoGINFES({{.Numero = "7"}, aOutra}));
  auto execucao = Importar("--json entrada/boa.xml --filial 11.222.333/0002-62");
  EXPECT_EQ(
      fmt::format("{} {} {}", execucao.Status, execucao.Erros, Json::parse(execucao.Saida).dump()),
      R"(0  [{"arquivo":"entrada/boa.xml","leiaute":"43","classe":"TNFSeGINFES","importou":true,"temErros":false,)"
      R"("erro":"","erros":[],"documentos":[{"tipo":0,"numero":"7"},{"tipo":0,"numero":"8"},{"tipo":1,"numero":)"
      R"("8"}],"destino":")" +
          Pasta / "morto/NFSe/boa.xml" + R"(","moveu":true}])");
  // An unknown code: the structure error, and no importer.
  Pasta.Gravar("entrada/ma.xml", ArquivoGINFES({{}}));
  for (const String codigo : {"99", " 43", "'"}) {
    execucao = Rodar("importar banco.fdb entrada/ma.xml --json --leiaute '" + Substituir(codigo, "'", "\\'") + "'");
    EXPECT_EQ(fmt::format("{} {}", execucao.Status, Json::parse(execucao.Saida).dump()),
              R"(1 [{"arquivo":"entrada/ma.xml","leiaute":")" + codigo +
                  R"(","classe":"","importou":false,"temErros":)"
                  R"(true,"erro":"","erros":[")" +
                  kErroEstrutura + R"("],"documentos":[],"destino":"","moveu":false}])");
  }
  EXPECT_TRUE(Pasta.Tem("entrada/ma.xml"));
}

TEST_F(TTesteImportar, RelataVariosArquivosEUmaPasta) {
  Pasta.Gravar("entrada/c.txt", "isto não é XML");
  Pasta.Gravar("entrada/d alheia.xml", ArquivoGINFES({{.Prestador = {.Documento = CNPJ("99888777000155")}}}));
  int numero = 0;
  for (const auto* const nome :
       {"entrada/b.xml", "entrada/a d'água ção.xml", "entrada/.oculto.xml", "entrada/outra/d.xml"})
    Pasta.Gravar(nome, ArquivoGINFES({{.Numero = std::to_string(++numero)}}));
  const auto execucao = Importar("entrada falta.xml");
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
✗ falta.xml
    nenhum documento
    O arquivo falta.xml não pode ser lido: não existe.
    A estrutura do arquivo não corresponde a um leiaute de NFS-e conhecido.

5 arquivos: 2 carregados, 3 não carregados ou com erros. 2 documentos.
)");
  for (const auto* ficou : {"entrada/c.txt", "entrada/d alheia.xml", "entrada/.oculto.xml", "entrada/outra/d.xml"})
    EXPECT_TRUE(Pasta.Tem(ficou)) << ficou;
}

TEST_F(TTesteImportar, OMesmoArquivoDeNovoNaoDobraENaoSobrepoe) {
  RegistrarFilial("", kOutraFilial);
  for (const String valor : {"1000", "1000", "1200.5000"}) {
    const TParteGINFES estaFilial = {.Documento = CNPJ(kCNPJFilial)};
    ImportarNotas(
        {{.Numero = "1", .ValorServicos = valor, .IssRetido = "1"},
         {.Numero = "2", .ValorServicos = valor, .Tomador = {.Documento = CNPJ(kOutraFilial)}},
         {.ValorServicos = valor, .Prestador = {.Documento = CNPJ("99888777000166")}, .Tomador = estaFilial}});
    EXPECT_EQ(
        Tabela("SELECT (SELECT COUNT(*) FROM ES02_REG0000), (SELECT COUNT(*) FROM ES02_REG0150), (SELECT COUNT(*) "
               "FROM ES02_REG0200), (SELECT COUNT(*) FROM ES02_REGA170), (SELECT COUNT(*) FROM ES02_REGA17R), "
               "COUNT(*), MIN(VL_DOC), MAX(VL_DOC) FROM ES02_REGA100"),
        fmt::format("2|3|1|4|1|4|{0}|{0}", valor));
  }
  for (const auto* nome : {"x.xml", "x (2).xml", "x (3).xml"}) EXPECT_TRUE(Pasta.Tem(String("morto/NFSe/") + nome));
}

// Relative paths hold from the folder that the program runs in; without an archive the file stays. A report that nobody
// got is no success.
TEST_F(TTesteImportar, DeOutraPastaESemArquivoMorto) {
  RegistrarFilial("--arquivo-morto ''");
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES({{}}));
  const auto execucao = Rodar("importar ../banco.fdb x.xml --leiaute 43", {.Pasta = Pasta / "entrada"});
  EXPECT_EQ(execucao.Status, 0) << execucao.Erros;
  EXPECT_TRUE(Contem(execucao.Saida, "o arquivo ficou onde estava: a filial não tem arquivo morto"));
  EXPECT_TRUE(Pasta.Tem("entrada/x.xml"));
  EXPECT_EQ(Tabela("SELECT CAMINHOARQORIG, CAMINHOARQDEST FROM ES02_REGA100"), Pasta / "entrada/x.xml" + "|");
  EXPECT_NE(Importar("entrada --json", {.Saida = "/dev/full"}).Status, 0);
  EXPECT_NE(Rodar("registros banco.fdb --json", {.Saida = "/dev/full"}).Status, 0);
}

}  // namespace impnfse::testes::importar
