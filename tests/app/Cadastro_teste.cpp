// criar, filial, municipios, leiautes, and the manners of the command line.
#include "Programa.h"
#include "VX03704Filiais.h"

namespace impnfse::testes {
namespace {

class TTesteCadastro : public TTestePrograma {
 protected:
  TFilialRegistrada LerFilial() {
    TBancoFirebird banco(Pasta / "banco.fdb");
    return BuscarFilial(banco, kCNPJFilial).value();
  }
  // The rows of the municipalities that the shipped table doesn't have, cells separated by "|".
  String MunicipiosNovos() {
    TBancoFirebird banco(Pasta / "banco.fdb");
    String texto;
    for (const auto& linha : banco
                                 .Consultar("SELECT NOME, UF, CODIGOFEDERAL, CODSRF, CEPGERAL, CEPFINAL FROM "
                                            "CA06_MUNICIPIO WHERE CODIGOFEDERAL STARTING WITH '99'")
                                 .Linhas) {
      for (const auto& celula : linha) texto += celula.value_or("NULL") + "|";
      texto += "\n";
    }
    return texto;
  }
};

TEST_F(TTesteCadastro, CriarDeixaComoEstaOQueJaExiste) {
  const auto antes = LerTudo(Pasta / "banco.fdb");
  EXPECT_TRUE(FalhouComUmaLinha(Rodar({"criar", "banco.fdb"}), 2, "já existe"));
  EXPECT_TRUE(LerTudo(Pasta / "banco.fdb") == antes);

  // To advise what has just been tried is no help.
  EXPECT_TRUE(FalhouComUmaLinha(Rodar({"criar", "sem/pasta/b.fdb"}), 2, "sem/pasta"));
  EXPECT_FALSE(Contem(Rodar({"criar", "sem/pasta/b.fdb"}).Erros, "Crie-o"));
}

TEST_F(TTesteCadastro, NomesComBrancosAspasEAcentos) {
  for (const String nome : {"meu banco d'agua; 1.fdb", "ação.fdb", "Área de trabalho/b.fdb"}) {
    SCOPED_TRACE(nome);
    fs::create_directories(fs::path(Pasta / nome).parent_path());
    EXPECT_TRUE(Contem(Rodar({"criar", nome}).Saida, "5570 municípios"));
    EXPECT_TRUE(Existe(nome));
    EXPECT_EQ(Rodar({"leiautes", nome}).Status, 0);
  }
  // A folder whose name nobody wrote down counts as well.
  EXPECT_EQ(Rodar({"leiautes", "b.fdb"}, {.Pasta = Pasta / "Área de trabalho"}).Status, 0);
}

TEST_F(TTesteCadastro, UsoIncorretoDizOQueFaltaEmUmaLinha) {
  const TArgumentos filial = {"filial", "banco.fdb", "--cnpj", kCNPJFilial, "--uf", "SC", "--municipio", "4205407"};
  const auto filialCom = [&](std::size_t i, const String& valor) {
    auto argumentos = filial;
    argumentos[i] = valor;
    return argumentos;
  };
  const struct {
    TArgumentos Argumentos;
    const char* Parte;
  } casos[] = {
      {{}, "comando"},
      {{"exportar"}, "comando"},
      {{"criar"}, "BANCO"},
      {{"criar", "a.fdb", "b.fdb"}, "b.fdb"},
      {{"leiautes", "banco.fdb", "--jsom"}, "--jsom"},
      {{"filial", "banco.fdb"}, "--cnpj"},
      {filialCom(3, "123"), "\"123\" não é um CNPJ"},
      {filialCom(5, "XX"), "\"XX\""},
      {filialCom(7, "Florianópolis"), "\"Florianópolis\""},
      {Juntar(filial, {"--empresa", "um"}), "--empresa"},
      {Juntar(filial, {"--casas-cfop", "21"}), "--casas-cfop"},
      {Juntar(filial, {"--ie", String(31, '1')}), ""},
      {{"municipios", "banco.fdb"}, "ARQUIVO"},
      {{"importar", "banco.fdb", "--leiaute", "43"}, "ARQUIVO"},
      {{"importar", "banco.fdb", "x.xml", "--leiaute", "43", "--filial", "99888777000166"}, "não está registrada"},
      {{"registros", "banco.fdb", "--de", "ontem"}, "\"ontem\" não é uma data"},
      {{"registros", "banco.fdb", "--ate", "2026-02-30"}, "--ate"},
      {{"registros", "banco.fdb", "--filial", "99888777000166"}, "não está registrada"},
  };
  for (const auto& caso : casos) EXPECT_TRUE(FalhouComUmaLinha(Rodar(caso.Argumentos), 2, caso.Parte));

  ASSERT_EQ(Rodar({"criar", "vazio.fdb"}).Status, 0);
  EXPECT_TRUE(FalhouComUmaLinha(Rodar({"importar", "vazio.fdb", "x.xml", "--leiaute", "43"}), 2, "nenhuma filial"));
}

TEST_F(TTesteCadastro, TodoComandoRespondeAHelp) {
  for (const String comando : {"", "criar", "filial", "municipios", "leiautes", "importar", "registros"}) {
    const auto ajuda = Rodar(comando.empty() ? TArgumentos{"--help"} : TArgumentos{comando, "--help"});
    EXPECT_EQ(ajuda.Status, 0) << comando;
    EXPECT_TRUE(Contem(ajuda.Saida, "Uso: impnfse " + comando));
    for (const auto* ingles : {"Options", "Subcommands", "REQUIRED", "TEXT "})
      EXPECT_FALSE(Contem(ajuda.Saida, ingles)) << comando;
  }
}

TEST_F(TTesteCadastro, FilialAtualizaSoOQueEDado) {
  const auto nova = LerFilial();
  EXPECT_EQ(nova.Dados.IDEMPRESA, 1);
  EXPECT_EQ(nova.CasasPrefixoCFOP, 3);
  EXPECT_EQ(nova.RemoverCaracteres, 0);

  RegistrarFilial({"--empresa", "7", "--casas-cfop", "2", "--ie", "254/1", "--remover-caracteres", "1"});
  const auto saida = RegistrarFilial({"--nome", "Outro; nome d'ela"}, "11.222.333/0001-81").Saida;
  EXPECT_TRUE(Contem(saida, "11.222.333/0001-81 (Outro; nome d'ela) atualizada: empresa 7, Florianópolis/SC"));
  EXPECT_TRUE(Contem(saida, Pasta / "morto/NFSe"));

  const auto filial = LerFilial();
  EXPECT_EQ(filial.Dados.IDFILIAL, nova.Dados.IDFILIAL);
  EXPECT_EQ(filial.Dados.IDEMPRESA, 7);
  EXPECT_EQ(filial.Dados.IE, "254/1");
  EXPECT_EQ(filial.NOME, "Outro; nome d'ela");
  EXPECT_EQ(filial.CasasPrefixoCFOP, 2);
  EXPECT_EQ(filial.RemoverCaracteres, 1);
  EXPECT_EQ(filial.ArquivoMorto, Pasta / "morto");
}

TEST_F(TTesteCadastro, MunicipiosCompletaOuSubstitui) {
  const String cabecalho = "NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL\r\n";
  const auto carregar = [&](const String& csv, const TArgumentos& opcoes = {}) {
    return Rodar(Juntar({"municipios", "banco.fdb", Pasta.Gravar("m.csv", csv)}, opcoes));
  };
  EXPECT_TRUE(Contem(carregar(cabecalho + "Vila d'Água;sc;9900001;;88000000;\r\nSão João;PR;9900002;12;1;2").Saida,
                     "a tabela tem 5572"));
  EXPECT_EQ(MunicipiosNovos(), "Vila d'Água|SC|9900001|NULL|88000000|NULL|\nSão João|PR|9900002|12|1|2|\n");
  EXPECT_TRUE(Contem(carregar(cabecalho + "Vila Nova;SC;9900001;;;\n").Saida, "a tabela tem 5572"));

  const auto antes = MunicipiosNovos();
  for (const String& errado : {cabecalho + "A;SC;9900003;;;;\n", cabecalho + "A;SC;9900003;;\n", String("NOME,UF\n"),
                               cabecalho + "A;SC;9900003;;;\nB;;9900004;;;\n", cabecalho + "A;SC;99x;;;\n", String()})
    EXPECT_TRUE(FalhouComUmaLinha(carregar(errado, {"--substituir"}), 1, "Nada foi alterado")) << errado;
  EXPECT_TRUE(FalhouComUmaLinha(Rodar({"municipios", "banco.fdb", "nada.csv"}), 1, "não existe"));
  EXPECT_EQ(MunicipiosNovos(), antes);

  EXPECT_TRUE(Contem(carregar(cabecalho + "Só Esta;SC;9900009;;;\n", {"--substituir"}).Saida, "a tabela tem 1."));
}

TEST_F(TTesteCadastro, Leiautes) {
  const auto leiautes = Json::parse(Rodar({"leiautes", "banco.fdb", "--json"}).Saida);
  int ginfes = 0;
  for (const auto& leiaute : leiautes) {
    EXPECT_EQ(Forma(leiaute), "codigo:s descricao:s importadores:a");
    if (leiaute["codigo"] != "43") continue;
    ++ginfes;
    EXPECT_EQ(leiaute["descricao"], "GINFES");
    EXPECT_EQ(leiaute["importadores"], Json::array({"TNFSeGINFES"}));
  }
  EXPECT_EQ(ginfes, 1);
  EXPECT_TRUE(Contem(Rodar({"leiautes", "banco.fdb"}).Saida, "    43  GINFES\n        TNFSeGINFES\n"));
}

}  // namespace
}  // namespace impnfse::testes
