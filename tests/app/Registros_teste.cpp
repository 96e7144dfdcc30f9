// registros: what was stored, whole and exact, as JSON and as a table.
#include "Programa.h"

namespace impnfse::testes::registros {

using TTesteRegistros = TTestePrograma;

// The keys in order, each with its type: i integer, d decimal, s text, n null, and the rows of an array.
String Forma(const Json& valor) {
  String forma;
  for (const auto& [chave, v] : valor.items()) {
    if (valor.is_object()) forma += chave + ":";
    forma += v.is_structured()       ? "{" + Forma(v) + "}"
             : v.is_number_float()   ? "d "
             : v.is_number_integer() ? "i "
                                     : String(v.type_name(), 1) + " ";
  }
  return forma;
}

TEST_F(TTesteRegistros, JSONTemOsCamposNaOrdemComOsTiposDeles) {
  ImportarNotas({{.IssRetido = "1"}});
  // What no GINFES file brings.
  Executar(
      "INSERT INTO ES02_REG0000MSG (IDREG0000, AUX1, CHAVECONDICAOADICIONAL, IDREG, INFORMACAO4, IDREG0000MSG) SELECT "
      "IDREG0000, '', '', IDREGA100, 'aviso', 1 FROM ES02_REGA100");
  Executar(
      "INSERT INTO ES02_AUXMANUTENCAO (IDREG0000, IDREG, TIPO, CAMPO, VALOR, CHAVEADICIONAL, IDAUXMANUTENCAO) SELECT "
      "IDREG0000, IDREGA100, 'NFSE', 'DT', '', '', 1 FROM ES02_REGA100");
  Executar("UPDATE ES02_REGA100 SET DT_EXE_SERV = NULL");
  const String comuns = "{IDREG0000:i AUX1:s ChaveCondicaoAdicional:s ";
  EXPECT_EQ(
      Substituir(Forma(Registros()), comuns, "{... "),
      "0000:{{IDREG0000:i IDEMPRESA:i IDFILIAL:i DT_INI:s DT_FIN:s }}0150:{{... IDREG0150:i COD_PART:s NOME:s "
      "CNPJ:s CPF:s IE:s COD_MUN:i MUNICIPIO:s IDMUNICIPIO:i ENDERECO:s NUM:s COMPL:s BAIRRO:s UF:s COD_PAIS:i "
      "OPTANTESIMPLES:s TPIMPORTACAO:i }}0200:{{... IDREG0200:i COD_ITEM:s COD_PART:s IND_EMIT:i DESCR_ITEM:s "
      "TIPO_ITEM:i COD_GEN:i COD_LST:s UNID_INV:s TPIMPORTACAO:i }}A100:{{... IDREGA100:i TPIMPORTACAO:i "
      "CAMINHOARQORIG:s CAMINHOARQDEST:s IND_OPER:i IND_EMIT:i COD_PART:s COD_MOD:s COD_SIT:i SER:s NUM_DOC:i "
      "CHV_NFSE:s DT_DOC:s DT_EXE_SERV:n IND_PGTO:s VL_DOC:d VL_DESC:d VL_ISS:d VL_PIS:d VL_COFINS:d "
      "VL_PIS_RET:d VL_COFINS_RET:d VL_BC_PIS:d VL_BC_COFINS:d TEMISSRETIDO:i A170:{{... IDREGA170:i IDREGA100:i "
      "IDREG0200:i NUM_ITEM:i COD_ITEM:s QTD:d UNID:s VL_ITEM:d VL_DESC:d VL_BC_ISS:d VL_ISS:d ALIQ_ISS:d "
      "DEDUCAOISS:d ATIVIDADE:s CFOPICMS:s CFOPISS:s MUNICIPIODEVISS:s TPRECOLHIMENTO:s }}A17R:{{... IDREGA17R:i "
      "IDREGA100:i COD_RECEITA:s VL_BC:d VL_IMPOSTO:d ALIQUOTA:d }}MSG:{{... IDREG:i INFORMACAO4:s "
      "}}}}AUXMANUTENCAO:{{IDREG0000:i IDREG:i Tipo:s Campo:s Valor:s ChaveAdicional:s }}IMPORTACFG:{{IDEMPRESA:i "
      "IDFILIAL:i ORIGEM:i TP:i DATAINICIO:s INFORMACAO3:s }}");
}

TEST_F(TTesteRegistros, ValoresETextosSaoExatos) {
  const String discriminacao = "Primeira linha; d'água\nSegunda linha\n\n  quarta";
  ImportarNotas({{.ValorServicos = "922337203685477.5807",
                  .ValorIss = "37.5",
                  .BaseCalculo = "-0.0001",
                  .Aliquota = "2.0125",
                  .Discriminacao = discriminacao,
                  .Tomador = {.Documento = CNPJ("99888777000166"), .Nome = "D'Água &amp; Cia; \"Filhos\" \\ S.A."}}});
  // The numbers as text: a parser would round them.
  const auto texto = Rodar("registros banco.fdb --json").Saida;
  for (const auto* numero : {R"("VL_DOC":922337203685477.5807,)", R"("VL_BC_ISS":-0.0001,)", R"("VL_ISS":37.50,)",
                             R"("ALIQ_ISS":2.0125,)", R"("VL_DESC":0.00,)", R"("DT_FIN":"2026-03-31")"})
    EXPECT_TRUE(Contem(texto, numero));
  const auto registros = Json::parse(texto);
  EXPECT_EQ(registros["0150"][0]["NOME"], "D'Água & Cia; \"Filhos\" \\ S.A.");
  EXPECT_EQ(registros["0200"][0]["DESCR_ITEM"], discriminacao);

  const auto tabela = Rodar("registros banco.fdb").Saida;
  for (const auto* parte :
       {"03/2026  11.222.333/0001-81 Oficina d'Água; matriz\n", "D'Água & Cia; \"Filhos\" \\ S.A.",
        "99.888.777/0001-66  PR\n", "15/03/2026  nº 1 ", "R$ 922.337.203.685.477,5807  ISS      37,50",
        "Primeira linha; d'água Segunda linha", "\n1 documento, R$ 922.337.203.685.477,5807 no total\n"})
    EXPECT_TRUE(Contem(tabela, parte));
}

TEST_F(TTesteRegistros, TextoDeCemMilCaracteresNaoPerdeANota) {
  const auto longo = "início d'água; " + Repetir("é", 100'000);
  fs::copy_file(Pasta / "banco.fdb", Pasta / "vazio.fdb");
  // The register and field that take the text; none where only a part of it is kept (a code, a number, a flag).
  for (const auto& [elemento, campo] : Casos(
           ">Padaria Exemplo Ltda< => /0150/0/NOME | >99888777000166< => /0150/0/CNPJ | >Rua A< => /0150/0/ENDERECO | "
           ">10< => /0150/0/NUM | >Sala 2< => /0150/0/COMPL | >Centro< => /0150/0/BAIRRO | >PR< => /0150/0/UF | "
           ">ABC-1< => /A100/0/CHV_NFSE | >Consultoria fiscal< => /0200/0/DESCR_ITEM | >17.01< => /0200/0/COD_LST | "
           ">4106902< =>  | >0105< =>  | >N1< =>  | >2< =>  | >77< => ")) {
    const auto xml = ArquivoGINFES({{.Numero = "77"}});
    const auto comLongo = Substituir(xml, elemento, ">" + longo + "<");
    EXPECT_NE(comLongo, xml);
    fs::copy_file(Pasta / "vazio.fdb", Pasta / "banco.fdb", fs::copy_options::overwrite_existing);
    Pasta.Gravar("entrada/x.xml", comLongo);
    EXPECT_EQ(Importar().Status, 0) << elemento;
    const auto registros = Registros();
    EXPECT_EQ(registros["A100"].size(), 1U) << elemento;
    EXPECT_TRUE(campo.empty() || registros.at(Json::json_pointer(campo)) == longo) << campo;
  }
}

TEST_F(TTesteRegistros, Filtros) {
  RegistrarFilial("", kOutraFilial);
  std::vector<TNotaGINFES> notas;
  for (const auto& [numero, data] : Casos("1 => 2026-03-15 | 2 => 2026-03-31 | 3 => 2026-04-02"))
    notas.push_back({.Numero = numero,
                     .DataEmissao = data,
                     .Discriminacao = "Serviço " + numero,
                     .Tomador = {.Documento = CNPJ("9988877700016" + numero)}});
  notas[1].Tomador.Documento = CNPJ(kOutraFilial);
  ImportarNotas(notas);
  // The numbers of the documents; how many periods, participants and items. With a filter by date, only the
  // participants and items that these documents refer to.
  for (const auto& [filtro, esperado] :
       Casos(" => 1 2 2 3 (3 4 3) | --de 2026-03-31 => 2 2 3 (3 3 2) | --ate 2026-03-31 => 1 2 2 (2 3 2) | --de "
             "2026-03-16 --ate 01/04/2026 => 2 2 (3 2 1) | --de 2026-04-03 => (1 0 0) | --de 2026-05-01 => (0 0 0) | "
             "--filial 11222333000262 => 2 (1 4 3) | --filial 11222333000181 --ate 2026-03-15 => 1 (1 1 1)")) {
    const auto registros = Registros(filtro);
    String numeros;
    for (const auto& documento : registros["A100"]) numeros += documento["NUM_DOC"].dump() + " ";
    EXPECT_EQ(fmt::format("{}({} {} {})", numeros, registros["0000"].size(), registros["0150"].size(),
                          registros["0200"].size()),
              esperado)
        << filtro;
  }
}

}  // namespace impnfse::testes::registros
