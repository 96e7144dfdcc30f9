#include "Apoio.h"

namespace impnfse::testes::rlz {

constexpr std::string_view kNota = R"(<nota>numero=7;mes=3;cidade=CURITIBA;uf=PR;data=2026-03-05;serie=E;
optantesimples= Sim ;situacao=emitida;valorbruto=300;basecalculo=280.07;valoriss=14;valorissretidonafonte=13;
aliquotapis=0.65;aliquotacsll=1;aliquotacofins=3;aliquotairrf=1.5;valorirrf=4;<servicos>{}</servicos><prestador>
endereco=Rua B;numero=9;complemento=C;bairro=Norte;cidade=joinville;uf=;nome=Aurora;inscricao=8;cpfcnpj=11222333000181;
</prestador><tomador>endereco=Rua A;numero=10;complemento=D;bairro=Sul;cidade=Blumenau;uf=;nome=Bar;inscricao=9;
cpfcnpj=99888777000166;</tomador></nota>)";
const String kServico = R"(<servico>quantidade=2;atividade=Reparo;valor=150.5;deducao=7;codigoatividade=1;
codigoservico=1401;aliquota=5;inss=3;total=1;</servico>)";

struct TRLZ : TTesteComBanco {
  String Importar(const std::vector<String>& notas, const String& raiz = "<notas>{}</notas>") {
    return ImportarNotas("62", Substituir(kNota, "{}", kServico), notas, raiz);
  }
};

// Rates make values toward zero. Where a party has no state, a taker has that of the city, an issuer none.
TEST_F(TRLZ, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({""}), "10 [0 ]");
  EXPECT_EQ(Documentos("NUM_DOC, SER, COD_SIT, DT_DOC, DT_EXE_SERV, VL_DOC, A.VL_ISS, VL_PIS_RET, TEMISSRETIDO, IE, "
                       "NUM_ITEM, I.CHAVECONDICAOADICIONAL, VL_ITEM, QTD, ATIVIDADE, ALIQ_ISS, VL_BC_ISS, I.VL_ISS, "
                       "DEDUCAOISS, MUNICIPIODEVISS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(9))"),
            "7||0|2026-03-05|2026-03-05|300|14|0|1||1|0|301|2|14.01|5|280.0700|14|7|4106902|1401|Reparo");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280.0700|13|5\n0910|280.0700|3|0\n0714|280.0700|4|1.5000\n"
            "1101|280.0700|1.8204|0.6500\n1102|280.0700|8.4021|3\n1103|280.0700|2.8007|1");
  // The city takes no part in the search of a party; an unknown one has no code.
  const String tomada = "11222333000181 => 123 | 99888777000166 => 11222333000181 | ";
  Importar({tomada, tomada + "=joinville => =Sombrio", tomada + "=123 => =124 | =joinville => =Nenhures | Sim => S",
            "99888777000166 => 99 | Blumenau => Nenhures | uf=;nome=B => uf=XX;nome=B", "99888777000166 => "});
  EXPECT_EQ(Tabela("SELECT NOME, CPF || CNPJ, COD_MUN, MUNICIPIO, ENDERECO, NUM, COMPL, BAIRRO, UF, "
                   "OPTANTESIMPLES FROM ES02_REG0150 ORDER BY IDREG0150"),
            "Bar|99888777000166|4202404|Blumenau|Rua A|10||Sul|SC|\nAurora|123|4209102|joinville|Rua B|9||Norte||S\n"
            "Aurora|124|0|Nenhures|Rua B|9||Norte||N\nBar|99|0|Nenhures|Rua A|10||Sul|XX|");
}

// Every situation but the one word cancels. ISS retained at the source stands in for the note's own.
TEST_F(TRLZ, SituacaoRetencaoELocalDoISS) {
  Importar({"=emitida => =Cancelada", "=emitida => =", "=emitida => = Emitida | valorbruto=300 => valorbruto=x",
            "=emitida => =EMITIDA | valoriss=14 => valoriss=0",
            "nafonte=13 => nafonte=0 | pis=0.65 => pis=0 | cofins=3 => cofins=-3 | inss=3 => inss=0",
            "valoriss=14 => valoriss=-1 | nafonte=13 => nafonte=0 | =CURITIBA => =Nenhures | irrf=4 => irrf=0"});
  EXPECT_EQ(Documentos("COD_SIT, VL_DOC, A.VL_ISS, I.VL_ISS, TEMISSRETIDO, MUNICIPIODEVISS, (SELECT "
                       "CAST(LIST(COD_RECEITA, ' ') AS VARCHAR(50)) FROM ES02_REGA17R WHERE IDREGA100 = A.IDREGA100)"),
            "2|0|0|-|0|-|-\n2|0|0|-|0|-|-\n2|0|0|-|0|-|-\n0|300|13|13|1|4106902|1010 0910 0714 1101 1102 1103\n"
            "0|300|14|14|0|4106902|0714 1103\n0|300|0|0|0|4205407|0910 1101 1102 1103");
}

// Of several services each has the ISS of its own value, toward zero; the last one takes what the note's has more or
// less. Each has its INSS, and the first one's rate is that of the retained ISS.
TEST_F(TRLZ, RateioEntreVariosServicos) {
  const String sem = "valoriss=14 => valoriss=0 | ";
  const String dois = kServico + " => " + kServico + Trocar(kServico, "inss=3 => inss=2 | =5; => =2.75;") + " | ";
  Importar({dois, dois + "valoriss=14 => valoriss=30", dois + sem,
            dois + sem + "nafonte=13 => nafonte=0 | =150.5 => =33.33 | quantidade=2 => quantidade=0.3333",
            kServico + " => "});
  EXPECT_EQ(Documentos("NUM_ITEM, I.CHAVECONDICAOADICIONAL, VL_BC_ISS, I.VL_ISS"),
            "1|0|301|15.0500\n2|1|301|-1.0500\n1|0|301|15.0500\n2|1|301|14.9500\n"
            "1|0|301|15.0500\n2|1|301|-2.0500\n1|0|11.1088|0.5554\n2|1|11.1088|0.3054\n-|-|-|-");
  EXPECT_EQ(Tabela("SELECT VL_IMPOSTO, ALIQUOTA, COUNT(*) FROM ES02_REGA17R WHERE COD_RECEITA IN ('1010', '0910') "
                   "GROUP BY 1, 2"),
            "2|0|4\n3|0|4\n13|0|1\n13|5|3");
}

TEST_F(TRLZ, NotaDaEmpresaOuNao) {
  EXPECT_EQ(Importar({"99888777000166 => 11222333000181", "11222333000181 => 9", ""}), "11 [0 ][1 ][0 ]");
  EXPECT_EQ(Importar({"", "2026-03-05 => 05/03/2026"}), "11 [0 ]!alheia ");
  EXPECT_EQ(Importar({"", "=280.07 => =x", ""}), "11 [0 ]!estrutura ");
  EXPECT_EQ(Importar({""}, "<nota>{}</nota>"), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::rlz
