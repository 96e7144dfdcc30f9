#include "Apoio.h"

namespace impnfse::testes::infisc {

constexpr std::string_view kNota = R"(<NFS-e><infNFSe><Id>cNFS-e=K;natOp=1-2;serie=S1;nNFS-e=12;dEmi=2026-03-15;
dSaiEnt= 20/3/2026 ;cMunFG=4106902;</Id><emit>CNPJ=11222333000181;xNome=L;<end>xLgr=Av;nro=1;xBairro=Sul;cMun=05407;
xMun=Ilha;xCpl=B;UF=SC;IE=25;</end>IE=99;regimeTrib=1;</emit><TomS>CNPJ=99888777000166;xNome=Bar;<ender>xLgr=Rua;nro=2;
xMun=LONDRINA;UF=PR;cPais=105;</ender>IE=90;</TomS><det>nItem=1;<serv>cServ=0105;xServ=Aula;uTrib=HR;qTrib=3;
vUnit=10.50;vServ=99;vDesc=1;vBCISS=30;pISS=2;vISS=6;pRetINSS=11;vRetINSS=3;cLCServ=8.02;localTributacao=4202404;
vBCINSS=29;vBCRetIR=28;pRetIR=1;vRetIR=4;vBCCOFINS=27;pRetCOFINS=3;vRetCOFINS=8;vBCCSLL=26;pRetCSLL=9;vRetCSLL=5;
vBCPISPASEP=25;pRetPISPASEP=6;vRetPISPASEP=2;</serv></det><total>vDesc=5;vtNF=300;<fat>vLiq=0;</fat></total><cobr><dup>
dVenc=2026-04-01;</dup></cobr><faturas><fat>vFat=0;dVenc=01/04/2026;</fat></faturas></infNFSe></NFS-e>)";

struct TINFISC : TTesteComBanco {
  String Importar(const std::vector<String>& notas, const String& raiz = "<lote>{}</lote>") {
    return ImportarNotas("39", kNota, notas, raiz);
  }
};

TEST_F(TINFISC, CadaRaizTerminaASeuModo) {
  const String alheia = "11222333000181 => 1", vazia = "infNFSe><Id => infNFSe/><X><Id | /infNFSe => /X";
  const String envelope = "<envioLote versao='1'><CNPJ>9</CNPJ>{}</envioLote>";
  EXPECT_EQ(Importar({"=12; => =11;"}, envelope), "01 [0 11]!estrutura estrutura;") << "a failure that has imported";
  EXPECT_EQ(Importar({alheia}, envelope), "01 !estrutura alheia;estrutura;");
  EXPECT_EQ(Importar({}), "10 !estrutura ") << "the text is left over from trying the envelope";
  EXPECT_EQ(Importar({"", alheia, vazia, "=12; => =2147483648;"}), "11 [0 12][0 2147483648]alheia;");
  EXPECT_EQ(Importar({alheia}), "11 !alheia alheia;");
  EXPECT_EQ(Importar({"", "vtNF=300 => vtNF=x", "=12; => =13;"}), "11 [0 12]!estrutura ");
  EXPECT_EQ(Importar({"=12; => =2147483647;"}, "{}"), "10 [0 ]") << "alone it goes without its number";
  EXPECT_EQ(Importar({alheia}, "{}"), "01 !alheia alheia;alheia;");
  for (const auto raiz : {"<NFS-e/>", "<outra>{}</outra>", "<lote>{}"})
    EXPECT_EQ(Importar({""}, raiz), "01 !estrutura estrutura;") << raiz;
  EXPECT_EQ(Documentos("A.NUM_DOC"), "11\n0\n12\n2147483647") << "a number beyond 32 bits is none";
}

// Two services to a taker in Paraná, who substitutes the ISS of the first; that of the second the issuer owes.
TEST_F(TINFISC, ItensSomasESubstituicao) {
  const String dois =
      "<det> => <det>nItem=7;<serv>cServ=14.01-2;xServ=Reparo;qTrib=1.5001;vUnit=0.3333;pRetINSS=7;vRetINSS=1; "
      "vBCINSS=10;</serv><ISSST>vBCST=200;pISSST=4;vISSST=8;</ISSST></det><det> | ";
  const String rs = dois + "UF=PR => UF=RS", st = " | 2;</serv> => 2;</serv><ISSST>vBCST=9;vISSST=3;</ISSST>";
  Importar({dois,
            rs + " | vtNF=300; => vtNF=0;<ISS>vISS=10;vSTISS=2;</ISS><Ret>vtRetINSS=55;pRetIRF=60;vRetIRF=6; "
                 "pRetLei10833-PIS-PASEP=70;vRetLei10833-PIS-PASEP=7;pRetLei10833-COFINS=80;vRetLei10833-COFINS=8; "
                 "pRetLei10833-CSLL=90;vRetLei10833-CSLL=9;</Ret>",
            rs, dois + "UF=PR => UF=rs", dois + "vISS=6 => vISS=0" + st, dois + "ISSST=8 => ISSST=0" + st});
  EXPECT_EQ(Documentos("FIRST 2 NUM_ITEM, QTD, UNID, VL_ITEM, I.VL_DESC, VL_BC_ISS, ALIQ_ISS, I.VL_ISS, ATIVIDADE, "
                       "CFOPICMS, MUNICIPIODEVISS, I.AUX1, COD_LST, UNID_INV, CAST(DESCR_ITEM AS VARCHAR(9))"),
            "7|1.5001||0.4999|0|200|4|8|14.01-2|6.933.000|4106902|12|14012||Reparo\n"
            "1|3|HR|31.5000|1|30|2|6|0105|6.933.000|4202404|12|802|HR|Aula");
  EXPECT_EQ(Contar("ES02_REGA170 WHERE CHAVECONDICAOADICIONAL SIMILAR TO '1[0-3][0-9][01][0-9]20[0-9]{11}'"), 6);
  EXPECT_EQ(Documentos("VL_DOC, VL_PIS_RET, VL_COFINS_RET, A.VL_ISS, TEMISSRETIDO, VL_BC_ISS, ALIQ_ISS, I.VL_ISS"),
            "300|2|8|14|1|200|4|8\n300|2|8|14|1|30|2|6\n0|7|8|12|1|200|4|8\n0|7|8|12|1|30|2|6\n300|2|8|6|0|200|4|8\n"
            "300|2|8|6|0|30|2|6\n300|2|8|14|1|200|4|8\n300|2|8|14|1|30|2|6\n300|2|8|8|1|200|4|8\n300|2|8|8|1|9|2|3\n"
            "300|2|8|6|1|0|0|0\n300|2|8|6|1|30|2|6");
  EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R WHERE IDREGA100 < 3 OR "
                   "COD_RECEITA = '1010' ORDER BY IDREGA17R"),
            "1010|200|8|4\n0714|28|4|1\n0910|39|4|11\n1101|25|2|6\n1102|27|8|3\n1103|26|5|9\n"
            "1010|200|8|4\n0714|0|6|60\n0910|39|4|11\n1101|0|7|70\n1102|0|8|80\n1103|0|9|90\n"
            "1010|200|8|4\n1010|200|8|4\n1010|9|3|0\n1010|9|3|0");
}

// An invoice is due year first, a duplicate day first: as the note has them, neither is later than the note.
TEST_F(TINFISC, PrazosECancelamento) {
  const String fatura = "vFat=0 => vFat=1 | ";
  Importar({fatura + "01/04/2026 => 2026-04-01 | 2026-03-15 => 14/3/2026", fatura + " 20/3/2026  => 2026-03-20",
            fatura + "01/04/2026 => 2026-03-15 | 20/3/2026 => ", "2026-04-01 => 1/4/2026",
            "vLiq=0 => vLiq=1 | 2026-04-01 => 1/4/2026 | </Id> => refNF=R;</Id>", "</Id> => cancelada=s;</Id>",
            "</Id> => anulada=S;cancelada=N;</Id>"});
  EXPECT_EQ(Documentos("IND_PGTO, DT_DOC, DT_EXE_SERV, CHV_NFSE, COD_SIT, SER, NUM_DOC, A.VL_DESC, NUM_ITEM"),
            "1|2026-03-14|2026-03-20|K|0|S1|12|5|1\n0|2026-03-15|-|K|0|S1|12|5|1\n0|2026-03-15|2026-03-15|"
            "K|0|S1|12|5|1\n0|2026-03-15|2026-03-20|K|0|S1|12|5|1\n1|2026-03-15|2026-03-20|R|0|S1|12|5|1\n|"
            "2026-03-15|-||2|S1|12|0|-\n|2026-03-15|-||2|S1|12|0|-");
}

TEST_F(TINFISC, MunicipiosEParticipantes) {
  const String semLocal = "4202404 => 0 | 4106902 => 42.05407 | ";
  const String tomada = "11222333000181 => 1 | 99888777000166 => 11222333000181 | ";
  const String prest = tomada + "<emit> => <prest> | </emit> => </prest> | ";
  Importar({semLocal + "</infNFSe> => infAdicLT=09102;</infNFSe>", semLocal + "99888777000166 => 8 | =105 => =105 ",
            semLocal + "LONDRINA => Xyz | 99888777000166 => ", tomada + "4202404 =>  | IE=25; =>  | Trib=1; => Trib=2;",
            prest, prest + "<prest> => <emit><end>cMun=4106902;IE=7;</end></emit><prest>"});
  EXPECT_EQ(Documentos("MUNICIPIODEVISS, Q.COD_MUN, MUNICIPIO, UF, COD_PAIS, OPTANTESIMPLES, CNPJ, CPF, IE, NOME, "
                       "ENDERECO, NUM, COMPL, BAIRRO"),
            "9102|4113700|LONDRINA|PR|105||99888777000166||90|Bar|Rua|2||\n4113700|4113700|LONDRINA|PR|1058|||8|"
            "90|Bar|Rua|2||\n4205407|-|-|-|-|-|-|-|-|-|-|-|-|-\n4106902|4205407|Ilha|SC|1058|N||1||L|Av|1|B|Sul\n"
            "4202404|0|Ilha|SC|1058|S||1|25|L|Av|1|B|Sul\n4202404|4106902|Ilha|SC|1058|S||1|7|L|Av|1|B|Sul");
}

}  // namespace impnfse::testes::infisc
