#include "Apoio.h"

namespace impnfse::testes::campogrande {

// Two services to a bar in Dourados, with deductions of 10 and 5.
constexpr std::string_view kNota = R"(<NOTA_FISCAL>NUM_NOTA=12;DATA_HORA_EMISSAO=15/03/2026 10:20:30;SITUACAO_NF=normal;
CODIGO_CIDADE=2704;PRESTADOR_CPF_CNPJ=11222333000181;PRESTADOR_RAZAO_SOCIAL=Aurora;PRESTADOR_PREST_NUMERO=1;
PRESTADOR_CIDADE_CODIGO=09102;PRESTADOR_UF=SC;TOMADOR_CPF_CNPJ=99888777000166;TOMADOR_RAZAO_SOCIAL=Bar;
TOMADOR_LOGRADOURO=Rua C;TOMADOR_NUMERO=2;TOMADOR_COMPLEMENTO=D;TOMADOR_BAIRRO=Norte;TOMADOR_CIDADE=DOURADOS;
TOMADOR_UF=MS;VALOR_NOTA=100;VALOR_ISS=5;VALOR_PIS=1;VALOR_COFINS=2;VALOR_INSS=3;VALOR_IR=4;VALOR_CSLL=6;
ALIQUOTA_PIS=0.65;ALIQUOTA_COFINS=3;ALIQUOTA_INSS=11;ALIQUOTA_IR=1.5;ALIQUOTA_CSLL=1;COS_SERVICO=105;ALIQUOTA=5;
UF_PRESTACAO=MS;CIDADE_CODIGO_PRESTACAO=03702;SERIE_PRESTACAO=99;CODIGO_VERIFICACAO=AB;VALOR_ISS_RET=5.5;ALIQ_RET=2;
<ITENS><ITEM>TRIBUTAVEL=s;DESCRICAO=Aula;QUANTIDADE=0;VALOR_TOTAL=70;DEDUCAO=10;</ITEM><ITEM>DESCRICAO=Reparo;
QUANTIDADE=2;VALOR_TOTAL=30;DEDUCAO=5,00;VALOR_ISS_UNITARIO=1.5;</ITEM></ITENS></NOTA_FISCAL>)";

struct TCampoGrande : TTesteComBanco {
  // The notes' numbers count up from 1.
  String Importar(std::vector<String> notas, const String& raiz = "<NOTAS_FISCAIS>{}</NOTAS_FISCAIS>") {
    for (int numero = 1; auto& trocas : notas) trocas = fmt::format("NOTA=12 => NOTA={} | {}", numero++, trocas);
    return ImportarNotas("40", kNota, notas, raiz);
  }
};

TEST_F(TCampoGrande, CadaCampoNoSeuLugar) {
  Importar({""});
  EXPECT_EQ(Documentos("NUM_ITEM, CAST(DESCR_ITEM AS VARCHAR(9)), COD_LST, ATIVIDADE, QTD, VL_ITEM, VL_BC_ISS, "
                       "I.VL_ISS, ALIQ_ISS, MUNICIPIODEVISS, A.VL_ISS, VL_PIS_RET, VL_COFINS_RET, DT_EXE_SERV"),
            "1|Aula|105|1.05|1|70|70|0|5|5003702|5|1|2|2026-03-15\n"
            "2|Reparo|105|1.05|2|30|30|1.5000|5|5003702|5|1|2|2026-03-15");
  EXPECT_EQ(Tabela("SELECT MUNICIPIO, ENDERECO, NUM, COMPL, BAIRRO, UF FROM ES02_REG0150"),
            "DOURADOS|Rua C|2|D|Norte|MS");
  EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R"),
            "1010|85|5.5000|2\n0714|85|4|1.5000\n0910|85|3|11\n1101|85|1|0.6500\n1102|85|2|3\n1103|85|6|1");
}

TEST_F(TCampoGrande, SituacaoDeducaoEMunicipio) {
  const String soUm = "<ITEM>DESC => <X>DESC | 1.5;</ITEM> => 1.5;</X>", semLocal = "TACAO=03702 => TACAO=0";
  const String semCidade = semLocal + " | CIDADE=2704 => CIDADE=x", alheia = "11222333000181 => 44555666000199";
  EXPECT_EQ(Importar({// Replaced, with its values; the accent makes it another word, as does any other: the head alone.
                      "normal => Substituida", "normal => SUBSTITUÍDA", "normal => CANCELADA",
                      // The only service takes the ISS of the note.
                      soUm, soUm + " | TRIBUTAVEL=s => TRIBUTAVEL=N", soUm + " | DEDUCAO=10; => VALOR_ISS_UNITARIO=2;",
                      // A deduction that can't be read costs the note all of them, and is told.
                      "DEDUCAO=5,00 => DEDUCAO=5%", semLocal + " | ISS_RET=5.5 => ISS_RET=0", semCidade,
                      semCidade + " | =09102 => =", alheia + " | 99888777000166 => 11222333000181", alheia, ""}),
            "11 [0 1][0 2][0 3][0 4][0 5][0 6][0 7][0 8][0 9][0 10][1 11][0 13]alheia;");
  EXPECT_EQ(
      Tabela("SELECT NUM_DOC, COD_SIT, CAST(VL_DOC AS INT), SER, CHV_NFSE, TEMISSRETIDO, NOME, COD_MUN, (SELECT "
             "FIRST 1 I.VL_ISS || '|' || MUNICIPIODEVISS FROM ES02_REGA170 I WHERE I.IDREGA100 = A.IDREGA100), "
             "(SELECT CAST(SUM(VL_BC) AS INT) FROM ES02_REGA17R R WHERE R.IDREGA100 = A.IDREGA100), (SELECT CAST("
             "SUBSTRING(INFORMACAO4 FROM 93 FOR 24) AS VARCHAR(24)) FROM ES02_REG0000MSG WHERE IDREG = IDREGA100) "
             "FROM ES02_REGA100 A LEFT JOIN ES02_REG0150 USING (COD_PART) ORDER BY IDREGA100"),
      "1|2|100|99|AB|1|Bar|5003702|0|5003702|510|-\n2|2|0|99||0|Bar|5003702|-|-|-\n3|2|0|99||0|Bar|5003702|-|-|-\n"
      "4|0|100|99|AB|1|Bar|5003702|5|5003702|540|-\n5|0|100|99|AB|1|Bar|5003702|0|5003702|540|-\n6|0|100|99|AB|1|Bar|"
      "5003702|2|5003702|600|-\n7|0|100|99|AB|1|Bar|5003702|0|5003702|600|sistema.Entre em contato\n8|0|100|99|AB|0|"
      "Bar|5003702|0|5002704|425|-\n9|0|100|99|AB|1|Bar|5003702|0|4209102|510|-\n10|0|100|99|AB|1|Bar|5003702|0|"
      "4205407|510|-\n11|0|100|99|AB|1|Aurora|4209102|0|5003702|510|-\n13|0|100|99|AB|1|Bar|5003702|0|5003702|510|-");
}

TEST_F(TCampoGrande, ErroDeEstrutura) {
  EXPECT_EQ(Importar({"", "VALOR_NOTA=100 => VALOR_NOTA=x", ""}), "11 [0 1]!estrutura ")
      << "what was stored before stays";
  EXPECT_EQ(Importar({""}, "<NOTAS>{}</NOTAS>"), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::campogrande
