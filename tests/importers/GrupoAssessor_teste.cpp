#include "Apoio.h"

namespace impnfse::testes::grupoassessor {

constexpr std::string_view kNota = R"(<NFSE><NOTA>COD=7;DATA=5/3/2026;HORA=09:10;LOCALSERV=F;SERIECOD=U;SITCOD=1;
SITDESC=NORMAL;RETIDO=S;ATIVCOD=1401;BASECALC=280;IMPOSTO=14;DEDUCAO=40;PIS=1;RETPIS=S;COFINS=2;RETCOFINS=S;INSS=3;
RETINSS=S;IR=4;RETIR=S;CSLL=5;RETCSLL=S;ALIQUOTA=5;PRESTCPFCNPJ=11222333000181;PRESTNOMERAZAO=Aurora;
PRESTPREFIXODESC=Rua ;PRESTLOGDESC=B;PRESTBAIRRODESC=Norte;PRESTMUNICIPIOCOD=42.05407;PRESTMUNICIPIODESC=Floripa;
PRESTMUNICIPIOUF=;PRESTNUMERO=9;TOMCPFCNPJ=99888777000166;TOMRGIE=90;TOMNOMERAZAO=Bar;TOMPREFIXODESC=Av;TOMLOGDESC=A;
TOMBAIRRODESC=Sul;TOMMUNICIPIOCOD=41.06902;TOMMUNICIPIODESC=curitiba;TOMMUNICIPIOUF=PR;TOMNUMERO=10;<SERVICOS>{}
</SERVICOS>VALORTOTALSERVICOS=400;</NOTA></NFSE>)";
constexpr auto kServico = "<SERVICO>DESCRICAO=Reparo {};QUANTIDADE=2.5;DESCONTO=6;VALOR={};</SERVICO>";

struct TGrupoAssessor : TTesteComBanco {
  // Imports the note with services of these values.
  String Importar(const String& trocas, const std::vector<String>& valores = {"100"}) {
    String servicos;
    for (const auto& valor : valores) servicos += Substituir(kServico, "{}", valor);
    return ImportarNotas("59", Substituir(kNota, "{}", servicos), {trocas});
  }
};

TEST_F(TGrupoAssessor, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar(""), "10 [0 7]");
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, COD_SIT, DT_DOC, DT_EXE_SERV, VL_DOC, A.VL_ISS, VL_PIS_RET, VL_COFINS_RET, NOME, "
                 "CNPJ, IE, Q.COD_MUN, MUNICIPIO, ENDERECO, NUM, BAIRRO, UF, NUM_ITEM, VL_ITEM, I.VL_DESC, QTD, "
                 "ATIVIDADE, ALIQ_ISS, VL_BC_ISS, I.VL_ISS, DEDUCAOISS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(10))"),
      "7|U|0|2026-03-05|2026-03-05|400|14|1|2|Bar|99888777000166||4106902|curitiba|AvA|10|"
      "Sul|PR|1|100|6|2.5000|1401|5|280|14|40||Reparo 100");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280|14|5\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
  // Taken from someone with a CPF, whose state is that of the city.
  EXPECT_EQ(Importar("11222333000181 => 12345678909 | 99888777000166 => 11222333000181"), "10 [1 7]");
  EXPECT_EQ(Tabela("SELECT NOME, CPF, COD_MUN, MUNICIPIO, ENDERECO, NUM, BAIRRO, UF FROM ES02_REG0150 WHERE CNPJ = ''"),
            "Aurora|12345678909|4205407|Floripa|Rua B|9|Norte|SC");
}

// The code of the situation cancels a note, its description takes the values away, and neither knows of the other. Only
// an S retains, tax by tax; PIS and COFINS that aren't retained are the company's own, with a base if there is a value.
TEST_F(TGrupoAssessor, SituacaoSinaisELocalDoISS) {
  int numero = 10;
  for (const String trocas :
       {"SITCOD=1 => SITCOD=3 | RETIDO=S => RETIDO=s", "NORMAL => CANCELADA/ESTRAVIADA | ;PIS=1 => ;PIS=x",
        "SITCOD=1 => SITCOD=3 | NORMAL => CANCELADA/ESTRAVIADA",
        "SITCOD=1 => SITCOD=03 | NORMAL => CANCELADA | RETIR=S => RETIR=N", "RETINSS=S => RETINSS= | =41.06902 => =0",
        "RETPIS=S => RETPIS=s | =41.06902 => =", "RETCOFINS=S => RETCOFINS=N",
        "RETCSLL=S => RETCSLL=N | RETPIS=S => X= | RETCOFINS=S => Y= | ;PIS=1 => ;PIS=0 | COFINS=2 => COFINS=0 | "
        "=F; => =D;"})
    Importar(fmt::format("COD=7 => COD={} | {}", numero++, trocas));
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, VL_DOC, MUNICIPIODEVISS, TEMISSRETIDO, "
                       "(SELECT CAST(SUM(VL_IMPOSTO) AS INT) FROM ES02_REGA17R WHERE IDREGA100 = A.IDREGA100), "
                       "VL_PIS - VL_PIS_RET, VL_BC_PIS, VL_COFINS - VL_COFINS_RET, VL_BC_COFINS"),
            "10|2|400|4106902|0|15|-1|0|-2|0\n11|0|0|-|0|-|0|0|0|0\n12|2|0|-|0|-|0|0|0|0\n"
            "13|0|400|4106902|1|25|-1|0|-2|0\n14|0|400|4205407|1|26|-1|0|-2|0\n15|0|400|4205407|1|28|1|280|-2|0\n"
            "16|0|400|4106902|1|27|-1|0|2|280\n17|0|400|4205407|1|21|0|0|0|0");
}

// Of several services each has the ISS of its own value, and the running total of the deduction up to it. What the sums
// have more than the note is put on the last one once more; what they have less is taken from it.
TEST_F(TGrupoAssessor, RateioEntreVariosServicos) {
  const auto ratear = [&](const String& trocas, const std::vector<String>& valores) {
    Banco().Executar("DELETE FROM ES02_REGA100");
    EXPECT_EQ(Importar(trocas, valores), "10 [0 7]");
    return Documentos("NUM_ITEM, I.CHAVECONDICAOADICIONAL, VL_BC_ISS, I.VL_ISS, DEDUCAOISS");
  };
  const String abaixo = "=14 => =15.02 | =40; => =10; | =400 => =300";
  const String tercos = "=14 => =2.7498 | =40; => =10; | =400 => =99.999 | ALIQUOTA=5 => ALIQUOTA=2.75";
  EXPECT_EQ(ratear("=14 => =20", {"100", "300"}), "1|0|100|5|10\n2|1|300|15|40");
  EXPECT_EQ(ratear("=14 => =19.99", {"100", "300"}), "1|0|100|5|10\n2|1|300|15.0100|40");
  EXPECT_EQ(ratear(abaixo, {"100", "200"}), "1|0|100|5|3.3333\n2|1|200|9.9800|10");
  EXPECT_EQ(ratear(tercos, {"33.333", "33.333", "33.333"}),
            "1|0|33.3330|0.9166|3.3333\n2|1|33.3330|0.9166|6.6666\n3|2|33.3330|0.9166|9.9998");
  EXPECT_EQ(ratear("", {}), "-|-|-|-|-");
}

TEST_F(TGrupoAssessor, NotaDaEmpresaOuNao) {
  EXPECT_EQ(Importar("99888777000166 => 11222333000181"), "10 [0 7][1 7]");
  for (const auto* trocas : {"11222333000181 => 9", "5/3/2026 => 2026-03-05", "NOTA> => NOTAS>"})
    EXPECT_EQ(Importar(trocas), "01 !alheia alheia;alheia;") << trocas;
  // There is no share in a total of 0; a single service needs none.
  EXPECT_EQ(Importar("=400 => =0", {"1", "2"}), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("=400 => =0"), "10 [0 7]");
  EXPECT_EQ(Importar("ALIQUOTA=5 => ALIQUOTA=x"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("NFSE => NFSe"), "00 ;");
  EXPECT_EQ(Importar("</NFSE> => "), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::grupoassessor
