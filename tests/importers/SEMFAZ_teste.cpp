#include "Apoio.h"

namespace impnfse::testes::semfaz {

constexpr std::string_view kNota = R"(<nfse LinkPdf='u'><Prestador>NumeroDocumento=11222333000181;Inscricao=80;
Localidade=Joinville;</Prestador>NumeroNota=7;Serie=U;CodigoVerificacao=K;DataEmissao=2026-03-15T08:00:00;IssRetido=0;
SituacaoNota=1;<Tomador>Documento=99888777000166;Nome=Bar;NumeroLogradouro=10;ComplementoLogradouro=Sala;Bairro=Sul;
Cidade=Curitiba;Uf=;CodigoMunicipioIbge=41.06902;CodigoPaisBacen=2496;</Tomador>ItemListaServico=1401;Descricao=Reparo;
CodigoMunicipioIbgePrestacao=4209102;CodigoMunicipioIbgeIncidencia=4209102;<Valores>ValorServicos=300;ValorDeducoes=20;
ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorCsll=6;ValorBaseCalculo=280;ValorAliquota=5;ValorIss=14;
ValorIssRetido=12;</Valores></nfse>)";

struct TSEMFAZ : TTesteComBanco {
  String Importar(const String& trocas) { return ImportarNotas("60", kNota, {trocas}); }
};

TEST_F(TSEMFAZ, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar("IssRetido=0 => IssRetido=1"), "10 [0 7]");
  EXPECT_EQ(Documentos("IND_OPER, NUM_DOC, SER, COD_SIT, DT_DOC, DT_EXE_SERV, IND_PGTO, CHV_NFSE, VL_DOC, A.VL_DESC, "
                       "A.VL_ISS, VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, MUNICIPIO, "
                       "ENDERECO, NUM, COMPL, BAIRRO, UF, COD_PAIS"),
            "1|7|U|0|2026-03-15|2026-03-15|0||300|0|14|0|0|1|Bar|99888777000166||4106902|Curitiba||10||Sul|PR|1058");
  EXPECT_EQ(Documentos("NUM_ITEM, VL_ITEM, I.VL_DESC, DEDUCAOISS, QTD, ATIVIDADE, ALIQ_ISS, I.VL_ISS, VL_BC_ISS, "
                       "CFOPICMS, MUNICIPIODEVISS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(20))"),
            "1|300|20|20|1|14.01|5|14|280|6.933.000|41.06902||Reparo");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280|12|5\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|6|0");
}

// The retained ISS stands in for one that isn't above 0, retained or not; only the digit 2 cancels; the taker's city,
// and nothing in its place, gets the ISS.
TEST_F(TSEMFAZ, ISSSituacaoEMunicipio) {
  int numero = 10;
  for (const String trocas : {"Iss=14 => Iss=0", "Iss=14 => Iss= | IssRetido=12 => IssRetido=", "Iss=14 => Iss=-1",
                              "IssRetido=0 => IssRetido=S", "SituacaoNota=1 => SituacaoNota=2",
                              "SituacaoNota=1 => SituacaoNota=02", "=41.06902 => "})
    Importar(fmt::format("NumeroNota=7 => NumeroNota={} | {}", numero++, trocas));
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, SER, VL_DOC, DT_EXE_SERV, A.VL_ISS, I.VL_ISS, TEMISSRETIDO, MUNICIPIODEVISS"),
            "10|0|U|300|2026-03-15|12|12|0|41.06902\n11|0|U|300|2026-03-15|0|0|0|41.06902\n"
            "12|0|U|300|2026-03-15|12|12|0|41.06902\n13|0|U|300|2026-03-15|14|14|0|41.06902\n14|2||0|-|0|-|0|-\n"
            "15|0|U|300|2026-03-15|14|14|0|41.06902\n16|0|U|300|2026-03-15|14|14|0|");
  EXPECT_EQ(Tabela("SELECT COUNT(*) FROM ES02_REGA17R WHERE COD_RECEITA = '1010'"), "0");
}

// A new issuer is a number and nothing else.
TEST_F(TSEMFAZ, EmitenteSemNomeENotasAlheias) {
  EXPECT_EQ(Importar("11222333000181 => 123 | 99888777000166 => 11222333000181"), "10 [1 7]");
  EXPECT_EQ(Tabela("SELECT CPF, CNPJ, NOME, IE, COD_MUN, UF, NUM, MUNICIPIO, COD_PAIS FROM ES02_REG0150"),
            "123||||0||||1058");
  EXPECT_EQ(Importar("99888777000166 => 11222333000181"), "10 [0 7][1 7]");
  EXPECT_EQ(Importar("99888777000166 => "), "10 [0 7]");
  EXPECT_EQ(Contar("ES02_REG0150"), 1);
  EXPECT_EQ(Importar("11222333000181 => 9"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar("Pis=1 => Pis=x"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("nfse => Nfse"), "00 ;");
  EXPECT_EQ(Importar("</nfse> => "), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::semfaz
