// registros: what was stored, whole and exact, as JSON and as a table.
#include "Programa.h"

namespace impnfse::testes {
namespace {

using TTesteRegistros = TTestePrograma;

TEST_F(TTesteRegistros, JSONTemOsCamposNaOrdemComOsTiposDeles) {
  TNotaGINFES nota;
  nota.IssRetido = "1";
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES({nota}));
  ASSERT_EQ(Importar({"entrada"}).Status, 0);
  {
    // What no GINFES file brings.
    TBancoFirebird banco(Pasta / "banco.fdb");
    banco.Executar(
        "INSERT INTO ES02_REG0000MSG (IDREG0000, AUX1, CHAVECONDICAOADICIONAL, IDREG, INFORMACAO4, "
        "IDREG0000MSG) SELECT IDREG0000, '', '', IDREGA100, 'aviso', 1 FROM ES02_REGA100");
    banco.Executar(
        "INSERT INTO ES02_AUXMANUTENCAO (IDREG0000, IDREG, TIPO, CAMPO, VALOR, CHAVEADICIONAL, "
        "IDAUXMANUTENCAO) SELECT IDREG0000, IDREGA100, 'NFSE', 'DT', '', '', 1 FROM ES02_REGA100");
    banco.Executar("UPDATE ES02_REGA100 SET DT_EXE_SERV = NULL");
  }
  const auto registros = Registros();
  EXPECT_EQ(Forma(registros), "0000:a 0150:a 0200:a A100:a AUXMANUTENCAO:a IMPORTACFG:a");
  for (const auto& [chave, linhas] : registros.items()) ASSERT_EQ(linhas.size(), 1U) << chave;
  const auto& a100 = registros["A100"][0];
  for (const auto* filhos : {"A170", "A17R", "MSG"}) ASSERT_EQ(a100[filhos].size(), 1U) << filhos;

  const String comuns = "IDREG0000:i AUX1:s ChaveCondicaoAdicional:s ";
  EXPECT_EQ(Forma(registros["0000"][0]), "IDREG0000:i IDEMPRESA:i IDFILIAL:i DT_INI:s DT_FIN:s");
  EXPECT_EQ(Forma(registros["0150"][0]),
            comuns +
                "IDREG0150:i COD_PART:s NOME:s CNPJ:s CPF:s IE:s COD_MUN:i MUNICIPIO:s IDMUNICIPIO:i ENDERECO:s NUM:s "
                "COMPL:s BAIRRO:s UF:s COD_PAIS:i OPTANTESIMPLES:s TPIMPORTACAO:i");
  EXPECT_EQ(Forma(registros["0200"][0]),
            comuns +
                "IDREG0200:i COD_ITEM:s COD_PART:s IND_EMIT:i DESCR_ITEM:s TIPO_ITEM:i COD_GEN:i COD_LST:s UNID_INV:s "
                "TPIMPORTACAO:i");
  EXPECT_EQ(Forma(a100),
            comuns +
                "IDREGA100:i TPIMPORTACAO:i CAMINHOARQORIG:s CAMINHOARQDEST:s IND_OPER:i IND_EMIT:i COD_PART:s "
                "COD_MOD:s COD_SIT:i SER:s NUM_DOC:i CHV_NFSE:s DT_DOC:s DT_EXE_SERV:z IND_PGTO:s VL_DOC:n VL_DESC:n "
                "VL_ISS:n VL_PIS:n VL_COFINS:n VL_PIS_RET:n VL_COFINS_RET:n VL_BC_PIS:n VL_BC_COFINS:n TEMISSRETIDO:i "
                "A170:a A17R:a MSG:a");
  EXPECT_EQ(Forma(a100["A170"][0]),
            comuns +
                "IDREGA170:i IDREGA100:i IDREG0200:i NUM_ITEM:i COD_ITEM:s QTD:n UNID:s VL_ITEM:n VL_DESC:n "
                "VL_BC_ISS:n VL_ISS:n ALIQ_ISS:n DEDUCAOISS:n ATIVIDADE:s CFOPICMS:s CFOPISS:s MUNICIPIODEVISS:s "
                "TPRECOLHIMENTO:s");
  EXPECT_EQ(Forma(a100["A17R"][0]), comuns + "IDREGA17R:i IDREGA100:i COD_RECEITA:s VL_BC:n VL_IMPOSTO:n ALIQUOTA:n");
  EXPECT_EQ(Forma(a100["MSG"][0]), comuns + "IDREG:i INFORMACAO4:s");
  EXPECT_EQ(Forma(registros["AUXMANUTENCAO"][0]), "IDREG0000:i IDREG:i Tipo:s Campo:s Valor:s ChaveAdicional:s");
  EXPECT_EQ(Forma(registros["IMPORTACFG"][0]), "IDEMPRESA:i IDFILIAL:i ORIGEM:i TP:i DATAINICIO:s INFORMACAO3:s");
  EXPECT_EQ(registros["0000"][0]["DT_FIN"], "2026-03-31");
}

TEST_F(TTesteRegistros, ValoresETextosSaoExatos) {
  TNotaGINFES nota;
  nota.ValorServicos = "98765432109876.5432";
  nota.BaseCalculo = "0.0001";
  nota.ValorIss = "37.5";
  nota.Aliquota = "2.0125";
  nota.Tomador.Nome = "D'Água &amp; Cia; \"Filhos\" \\ S.A.";
  nota.Discriminacao = "Primeira linha; d'água\nSegunda linha\n\n  quarta";
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES({nota}));
  ASSERT_EQ(Importar({"entrada"}).Status, 0);

  // The numbers as text: a parser would round them.
  const auto texto = Rodar({"registros", "banco.fdb", "--json"}).Saida;
  for (const auto* numero : {R"("VL_DOC":98765432109876.5432,)", R"("VL_BC_ISS":0.0001,)", R"("VL_ISS":37.50,)",
                             R"("ALIQ_ISS":2.0125,)", R"("VL_DESC":0.00,)"})
    EXPECT_TRUE(Contem(texto, numero));
  const auto registros = Json::parse(texto);
  EXPECT_EQ(registros["0150"][0]["NOME"], "D'Água & Cia; \"Filhos\" \\ S.A.");
  EXPECT_EQ(registros["0200"][0]["DESCR_ITEM"], nota.Discriminacao);

  const auto tabela = Rodar({"registros", "banco.fdb"}).Saida;
  for (const auto* parte :
       {"03/2026  11.222.333/0001-81 Oficina d'Água; matriz\n", "D'Água & Cia; \"Filhos\" \\ S.A.",
        "99.888.777/0001-66  PR\n", "15/03/2026  nº 1 ", "R$ 98.765.432.109.876,5432  ISS      37,50", "0200",
        "Primeira linha; d'água Segunda linha", "\n1 documento, R$ 98.765.432.109.876,5432 no total\n"})
    EXPECT_TRUE(Contem(tabela, parte));
}

TEST_F(TTesteRegistros, TextoDeCemMilCaracteresNaoPerdeANota) {
  String longo = "início d'água; ";
  for (int i = 0; i < 100'000; ++i) longo += "é";
  fs::copy_file(Pasta / "banco.fdb", Pasta / "vazio.fdb");
  // The register and field that take the text; none where only a part of it is kept (a code, a number, a flag).
  const std::tuple<const char*, const char*, const char*> casos[] = {
      {">Padaria Exemplo Ltda<", "0150", "NOME"},
      {">99888777000166<", "0150", "CNPJ"},
      {">Rua A<", "0150", "ENDERECO"},
      {">10<", "0150", "NUM"},
      {">Sala 2<", "0150", "COMPL"},
      {">Centro<", "0150", "BAIRRO"},
      {">PR<", "0150", "UF"},
      {">ABC-1<", "A100", "CHV_NFSE"},
      {">Consultoria fiscal<", "0200", "DESCR_ITEM"},
      {">17.01<", "0200", "COD_LST"},
      {">4106902<", "", ""},
      {">0105<", "", ""},
      {">N1<", "", ""},
      {">2<", "", ""},
      {">77<", "", ""},
  };
  for (const auto& [elemento, registro, campo] : casos) {
    SCOPED_TRACE(elemento);
    TNotaGINFES nota;
    nota.Numero = "77";
    const auto xml = ArquivoGINFES({nota});
    const auto comLongo = Substituir(xml, elemento, ">" + longo + "<");
    ASSERT_NE(comLongo, xml);
    fs::copy_file(Pasta / "vazio.fdb", Pasta / "banco.fdb", fs::copy_options::overwrite_existing);
    Pasta.Gravar("entrada/x.xml", comLongo);
    const auto execucao = Importar({"entrada"});
    EXPECT_EQ(execucao.Status, 0) << execucao.Saida;
    const auto registros = Registros();
    ASSERT_EQ(registros["A100"].size(), 1U);
    EXPECT_TRUE(*registro == '\0' || registros[registro][0][campo] == longo) << campo;
  }
}

TEST_F(TTesteRegistros, FiltrosDeData) {
  std::vector<TNotaGINFES> notas(3);
  const char* const datas[] = {"2026-03-15", "2026-03-31", "2026-04-02"};
  for (std::size_t i = 0; i < notas.size(); ++i) {
    notas[i].Numero = std::to_string(i + 1);
    notas[i].DataEmissao = datas[i];
    notas[i].Discriminacao = fmt::format("Serviço {}", i + 1);
    notas[i].Tomador.Documento = CNPJ(fmt::format("9988877700016{}", i));
  }
  Pasta.Gravar("entrada/x.xml", ArquivoGINFES(notas));
  ASSERT_EQ(Importar({"entrada"}).Status, 0);

  const struct {
    TArgumentos Filtro;
    const char* Numeros;
    std::size_t Periodos;
  } casos[] = {
      {{}, "1 2 3 ", 2},
      {{"--de", "2026-03-31"}, "2 3 ", 2},
      {{"--ate", "2026-03-31"}, "1 2 ", 1},
      {{"--de", "2026-03-16", "--ate", "01/04/2026"}, "2 ", 2},
      {{"--de", "2026-04-03"}, "", 1},
      {{"--de", "2026-05-01"}, "", 0},
      {{"--filial", kCNPJFilial, "--ate", "2026-03-15"}, "1 ", 1},
  };
  for (const auto& caso : casos) {
    const auto registros = Registros(caso.Filtro);
    String numeros;
    for (const auto& documento : registros["A100"]) numeros += documento["NUM_DOC"].dump() + " ";
    SCOPED_TRACE(caso.Numeros);
    EXPECT_EQ(numeros, caso.Numeros);
    EXPECT_EQ(registros["0000"].size(), caso.Periodos);
    // With a filter by date, only what these documents refer to.
    EXPECT_EQ(registros["0150"].size(), registros["A100"].size());
    EXPECT_EQ(registros["0200"].size(), registros["A100"].size());
  }
}

}  // namespace
}  // namespace impnfse::testes
