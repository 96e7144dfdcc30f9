#include "Apoio.h"

namespace impnfse::testes::thema {

// A note of the branch, whose taker in Joinville retains.
constexpr std::string_view kNota = R"(<tc:Nota>cpfCnpjTomador=99888777000166;numeroNota=7654321098765432;
dataEmissao=2026-03-15T10:20:30;situacaoNota=E;valorBruto=300;codigoVerificacao=K9;
naturezaOperacao=[5.1] Tributação] fora;cpfCnpjPrestador=11222333000181;nome=Aurora;serieNota=U;aliquotaServicos=0.055;
valorDeducao=8;valorIss=15;valorLiquidoNfse=250;valorCofins=2;valorInss=3;valorIr=4;valorCsll=5;valorPis=1;
valorDescontoCondicionado=9;valorDescontoIncondicionado=20;discriminacao=Pneus, etc: 4;
municipioPrestacaoServico=42-09102;itemListaServico=07.02;razaoSocialTomador=Bar;</tc:Nota>)";

struct TThema : TTesteComBanco {
  String Importar(const std::vector<String>& notas, const String& raiz = "<tc:Notas xmlns:tc='u'>{}</tc:Notas>") {
    return ImportarNotas("7", kNota, notas, raiz);
  }
};

// The prefix goes out of the texts too.
TEST_F(TThema, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({""}), "10 [0 7654321098765432]");
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, COD_SIT, IND_PGTO, DT_DOC, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_DESC, A.VL_ISS, "
                 "VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, UF, COD_PAIS, NUM_ITEM, QTD, "
                 "VL_ITEM, I.VL_DESC, DEDUCAOISS, ATIVIDADE, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, MUNICIPIODEVISS, I.AUX1, "
                 "CFOPICMS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(19))"),
      "654321098765432|U|0|0|2026-03-15|2026-03-15|K9|300|20|15|1|2|1|Bar|99888777000166||4209102||1058|1|1|300|0|0|"
      "7.02|300|15|5.5000|4209102|5.1|5.933.000|07.02|Pneus, e 4");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|300|15|5.5000\n0714|300|4|0\n0910|300|3|0\n1101|300|1|0\n1102|300|2|0\n1103|300|5|0");
}

// The code of the nature needs a bracket, and a blank behind it; five codes retain. A rate is a fraction only below
// 10%.
TEST_F(TThema, NaturezaEAliquota) {
  std::vector<String> notas;
  for (const auto& [natureza, aliquota] :
       Casos("[6.1] Não => 0.05 | [5.4] => 0.0333 | [6.4]\tx => 0.5 | [5.7] x => 5,5 | ç5.1] x => 0.05.1 | [5.2] x => "
             "0.0 | [5.1]x => 0.0,5 | 5.1 => 0.0x |  [5.1] x => 00.05 | ] x =>  | x =>  0.05 | x => 1.234,5"))
    notas.push_back(fmt::format("=[5.1] Tributação] fora => ={} | =0.055 => ={}", natureza, aliquota));
  Importar(notas);
  EXPECT_EQ(Documentos("TEMISSRETIDO, I.AUX1, ALIQ_ISS"),
            "1|6.1|5\n1|5.4|3.3300\n1|6.4|0.5000\n1|5.7|5.5000\n1|5.1|0\n0|5.2|0\n0|5.1]|0\n"
            "0||0\n0|[5.1|0.0500\n0||0\n0||0.0500\n0||1234.5000");
  EXPECT_EQ(Tabela("SELECT ALIQUOTA FROM ES02_REGA17R WHERE COD_RECEITA = '1010' ORDER BY IDREGA17R"),
            "5\n3.3300\n0.5000\n5.5000\n0");
}

// "N" is a cancelled note. Without a number a taker is nobody, and in another place of service it is another one; a
// place that can't be read is the branch's for the ISS.
TEST_F(TThema, SituacaoEPartes) {
  const String tomada = "11222333000181 => 52998224725 | 99888777000166 => 11222333000181";
  Importar({"=E => = n ", "=E => =NORMAL", "=E => =", "99888777000166 =>  | 42-09102 => ", tomada,
            "99888777000166 => 11222333000181 | 07.02 => 7.10", "42-09102 => 4106902", "42-09102 => 0 | 07.02 => x"});
  EXPECT_EQ(Documentos("IND_OPER, COD_SIT, SER, CHV_NFSE, VL_DOC, A.COD_PART, MUNICIPIODEVISS, ATIVIDADE, CFOPICMS"),
            "1|2|||0|1|-|-|-\n1|0|U|K9|300|1|4209102|7.02|5.933.000\n1|0|U|K9|300|1|4209102|7.02|"
            "5.933.000\n1|0|U|K9|300|0|4205407|7.02|5.933.000\n0|0|U|K9|300|2|4209102|7.02|1.933.000\n"
            "1|0|U|K9|300|0|4209102|7.1|5.933.000\n0|0|U|K9|300|0|4209102|7.1|1.933.000\n"
            "1|0|U|K9|300|3|4106902|7.02|5.933.000\n1|0|U|K9|300|1|4205407|0.00|5.933.000");
  EXPECT_EQ(Tabela("SELECT NOME, CNPJ, CPF, COD_MUN, UF FROM ES02_REG0150"),
            "Bar|99888777000166||4209102|\nAurora||52998224725|4209102|\nBar|99888777000166||4106902|");
}

TEST_F(TThema, NotaDaEmpresaOuNao) {
  const String alheia = "11222333000181 => 1";
  EXPECT_EQ(Importar({alheia, "7654321098765432 => 8"}), "11 [0 8]alheia;");
  EXPECT_EQ(Importar({alheia}), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar({""}, "<Nota>{}</Nota>"), "00 ;") << "no root";
  EXPECT_EQ(Importar({}), "00 ;") << "no note";
  EXPECT_EQ(Importar({"", "=0.055 => =5%"}), "11 [0 7654321098765432]!estrutura ");
  EXPECT_EQ(Importar({"valorIr=4 => valorIr=x"}), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar({""}, "{}<"), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::thema
