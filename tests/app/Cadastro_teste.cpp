// criar, filial, municipios, leiautes, and the manners of the command line.
#include "Programa.h"

namespace impnfse::testes::cadastro {

using TTesteCadastro = TTestePrograma;

TEST_F(TTesteCadastro, Criar) {
  const auto antes = LerArquivo(Pasta / "banco.fdb");
  EXPECT_TRUE(FalhouComUmaLinha(Rodar("criar banco.fdb"), 2, "já existe"));
  EXPECT_TRUE(LerArquivo(Pasta / "banco.fdb") == antes);
  const auto semPasta = Rodar("criar sem/pasta/b.fdb");
  EXPECT_TRUE(FalhouComUmaLinha(semPasta, 2, "sem/pasta"));
  EXPECT_FALSE(Contem(semPasta.Erros, "Crie-o")) << "to advise what has just been tried is no help";
  // Names with blanks, quotes and accents.
  fs::create_directory(Pasta / "Área de trabalho");
  for (const String nome : {"'meu banco d\\'agua; 1.fdb'", "ação.fdb", "'Área de trabalho/b.fdb'"}) {
    EXPECT_TRUE(Contem(Exigir("criar " + nome), "5570 municípios"));
    Exigir("leiautes " + nome);
  }
  EXPECT_TRUE(Pasta.Tem("meu banco d'agua; 1.fdb"));
  // A folder whose name nobody wrote down counts as well.
  EXPECT_EQ(Rodar("leiautes b.fdb", {.Pasta = Pasta / "Área de trabalho"}).Status, 0);
}

TEST_F(TTesteCadastro, UsoIncorretoDizOQueFaltaEmUmaLinha) {
  ASSERT_EQ(Rodar("criar vazio.fdb").Status, 0);
  for (const auto& [linha, parte] : Casos(
           " => comando | exportar => comando | criar => BANCO | criar a.fdb b.fdb => b.fdb | leiautes banco.fdb "
           "--jsom => "
           "--jsom | filial banco.fdb => --cnpj | municipios banco.fdb => ARQUIVO | importar banco.fdb --leiaute 43 => "
           "ARQUIVO | importar banco.fdb x.xml --leiaute 43 --filial 99888777000166 => não está registrada | importar "
           "vazio.fdb x.xml --leiaute 43 => nenhuma filial | registros banco.fdb --de ontem => \"ontem\" não é uma "
           "data | "
           "registros banco.fdb --ate 2026-02-30 => --ate | registros banco.fdb --filial 99888777000166 => não está "
           "registrada | filial banco.fdb --cnpj 123 --uf SC --municipio 4205407 => \"123\" não é um CNPJ | filial "
           "banco.fdb "
           "--cnpj 11222333000181 --uf XX --municipio 4205407 => \"XX\" | filial banco.fdb --cnpj 11222333000181 --uf "
           "SC "
           "--municipio Florianópolis => \"Florianópolis\" | filial banco.fdb --cnpj 11222333000181 --uf SC "
           "--municipio "
           "4205407 --empresa um => --empresa | filial banco.fdb --cnpj 11222333000181 --uf SC --municipio 4205407 "
           "--casas-cfop 21 => --casas-cfop"))
    EXPECT_TRUE(FalhouComUmaLinha(Rodar(linha), 2, parte)) << linha;
}

TEST_F(TTesteCadastro, TodoComandoRespondeAHelp) {
  for (const String comando :
       {"", "criar ", "filial ", "municipios ", "leiautes ", "analisar ", "importar ", "registros "}) {
    const auto ajuda = Exigir(comando + "--help");
    EXPECT_TRUE(Contem(ajuda, "Uso: impnfse " + comando));
    EXPECT_FALSE(Contem(ajuda, "Options") || Contem(ajuda, "REQUIRED")) << ajuda;
  }
}

TEST_F(TTesteCadastro, FilialAtualizaSoOQueEDado) {
  const auto filial = [&] { return Tabela("SELECT * FROM CA01_FILIAL"); };
  EXPECT_EQ(filial(), "1|1|11222333000181|Oficina d'Água; matriz||SC|4205407|3|0|" + Pasta / "morto");
  RegistrarFilial("--empresa 7 --casas-cfop 2 --ie 254/1 --remover-caracteres 1");
  const auto saida = RegistrarFilial("--nome 'Outro; nome d\\'ela'", "11.222.333/0001-81");
  EXPECT_TRUE(Contem(saida, "11.222.333/0001-81 (Outro; nome d'ela) atualizada: empresa 7, Florianópolis/SC"));
  EXPECT_TRUE(Contem(saida, Pasta / "morto/NFSe"));
  EXPECT_EQ(filial(), "1|7|11222333000181|Outro; nome d'ela|254/1|SC|4205407|2|1|" + Pasta / "morto");
}

TEST_F(TTesteCadastro, MunicipiosCompletaOuSubstitui) {
  const String cabecalho = "NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL\r\n";
  const auto carregar = [&](const String& csv, const String& opcoes = "") {
    return Rodar("municipios banco.fdb " + Pasta.Gravar("m.csv", csv) + opcoes);
  };
  // Those that the shipped table doesn't have.
  const auto novos = [&] {
    return Tabela(
        "SELECT NOME, UF, CODIGOFEDERAL, CODSRF, CEPGERAL, CEPFINAL FROM CA06_MUNICIPIO WHERE CODIGOFEDERAL "
        "STARTING WITH '99'");
  };
  EXPECT_TRUE(Contem(carregar(cabecalho + "Vila d'Água;sc;9900001;;88000000;\r\nSão João;PR;9900002;12;1;2").Saida,
                     "a tabela tem 5572"));
  EXPECT_EQ(novos(), "Vila d'Água|SC|9900001|-|88000000|-\nSão João|PR|9900002|12|1|2");
  EXPECT_TRUE(Contem(carregar(cabecalho + "Vila Nova;SC;9900001;;;\n").Saida, "a tabela tem 5572"));

  const auto antes = novos();
  for (const auto& [linhas, parte] :
       Casos("A;SC;9900003;;;; => Linha 2: 7 colunas, onde devem ser 6. | A;SC;9900003;;;\n\nA;SC;1 => Linha 4: 3 "
             "colunas, onde devem ser 6. | A;SC;9900003;;;\nB;;9900004;;; => Linha 3: NOME, UF e CODIGOFEDERAL são "
             "obrigatórios. | A;SC;99x;;; => Linha 2: CODIGOFEDERAL \"99x\" não é um número. | NOME,UF\n => A primeira "
             "linha deve ser NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL."))
    EXPECT_TRUE(FalhouComUmaLinha(carregar((linhas[0] == 'N' ? "" : cabecalho) + linhas, " --substituir"), 1,
                                  parte + " Nada foi alterado"));
  EXPECT_TRUE(FalhouComUmaLinha(Rodar("municipios banco.fdb nada.csv"), 1, "não existe"));
  EXPECT_EQ(novos(), antes);

  EXPECT_TRUE(Contem(carregar(cabecalho + "Só Esta;SC;9900009;;;\n", " --substituir").Saida, "a tabela tem 1."));
}

TEST_F(TTesteCadastro, Leiautes) {
  const auto leiautes = Json::parse(Rodar("leiautes banco.fdb --json").Saida);
  const Json ginfes = {
      {"codigo", "43"}, {"descricao", "GINFES"}, {"importadores", {"TNFSeGINFES"}}, {"proposto", true}};
  EXPECT_EQ(std::count(leiautes.begin(), leiautes.end(), ginfes), 1) << leiautes;
  const auto texto = Rodar("leiautes banco.fdb").Saida;
  EXPECT_TRUE(Contem(texto, "    43  GINFES\n        TNFSeGINFES\n"));
  for (const auto& leiaute : leiautes) {
    const auto codigo = leiaute["codigo"].get<String>();
    EXPECT_EQ(leiaute["proposto"], codigo != "59" && codigo != "60");
    EXPECT_FALSE(leiaute["importadores"].empty()) << codigo;
    EXPECT_EQ(texto.find("nunca o propõe: importe com --leiaute " + codigo) != texto.npos, !leiaute["proposto"]);
  }
}

}  // namespace impnfse::testes::cadastro
