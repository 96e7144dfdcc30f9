#include "Apoio.h"

namespace impnfse::testes::joinville {

// A note to, or from, someone in Curitiba.
constexpr std::string_view kNota = R"(<NOTA>numero=12;codigo_verificacao=AB-1;data_emissao=2026-03-15T10:20;
serie_rps=A1;cancelada=0;<PARTE>documento=DOC;nome=Bar;endereco=Rua A;cidade=Curitiba;cep=89200000;bairro=Sul;estado=PR;
numero=10;complemento=B;</PARTE>servico=1706;descricao_servicos=Faixa;valor_total=1000;valor_base_calculo=900;
aliquota_iss=5;valor_iss=45;iss_retido=0;valor_irrf=1;valor_inss=2;valor_pis=3;valor_cofins=4;valor_csll=6;
local_servico=Bom Jesus;</NOTA>)";

struct TJoinville : TTesteComBanco {
  // Imports notes in a file with the company at its head; the other parties are 100, 101, ... (200, ...).
  String Importar(bool recebidas, std::vector<String> notas, const String& noArquivo = "") {
    const String lado = recebidas ? "NOTA => nota_recebida | PARTE => prestador | DONA => tomador | "
                                  : "NOTA => nota | PARTE => tomador | DONA => prestador | ";
    for (int doc = recebidas ? 200 : 100; auto& trocas : notas)
      trocas = fmt::format("{}{} | DOC => {}", lado, trocas, doc++);
    const auto* const raiz = "<lote xmlns='u'><DONA><documento>11222333000181</documento></DONA>{}</lote>";
    return ImportarNotas("36", kNota, notas, Trocar(raiz, lado + noArquivo));
  }
};

TEST_F(TJoinville, CadaCampoNoSeuLugar) {
  for (const bool recebidas : {false, true}) Importar(recebidas, {"retido=0 => retido=1"});
  EXPECT_EQ(Documentos("NUM_DOC, SER, CHV_NFSE, DT_EXE_SERV, VL_DOC, A.VL_ISS, TEMISSRETIDO, NOME, CPF, MUNICIPIO, "
                       "COD_MUN, ENDERECO, NUM, COMPL, BAIRRO, UF, VL_ITEM, ATIVIDADE, VL_BC_ISS, I.VL_ISS, "
                       "ALIQ_ISS, TPRECOLHIMENTO, CAST(DESCR_ITEM AS VARCHAR(9)), COD_LST, CFOPICMS, MUNICIPIODEVISS"),
            "12|A1|AB-1|2026-03-15|1000|45|1|Bar|100|Curitiba|4106902|Rua A|10|B|Sul|PR|1000|17.06|"
            "900|45|5|1|Faixa||6.933.000|4106902\n12|A1|AB-1|2026-03-15|1000|45|1|Bar|200|"
            "Curitiba|4106902|Rua A|10|B|Sul|PR|1000|17.06|900|45|5|1|Faixa||2.933.000|4103156");
  EXPECT_EQ(Documentos("R.COD_RECEITA, CAST(R.VL_BC AS INT), CAST(R.VL_IMPOSTO AS INT), CAST(R.ALIQUOTA AS INT)"),
            "1010|900|45|5\n0714|1000|1|0\n0910|1000|2|0\n1101|1000|3|0\n1102|1000|4|0\n1103|1000|6|0\n1010|900|45|"
            "5\n0714|900|1|0\n0910|900|2|0\n1101|900|3|0\n1102|900|4|0\n1103|900|6|0");
}

// A flag of 2 retains the ISS without being the kind of payment.
TEST_F(TJoinville, CanceladaRetencaoEBase) {
  Importar(false, {"cancelada=0 => cancelada=1 | total=1000 => total=x", "cancelada=0 => cancelada=S | =12; => =1A;",
                   "retido=0 => retido=2 | calculo=900 => calculo=-1"});
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, DT_DOC, COD_SIT, CHV_NFSE, TEMISSRETIDO, TPRECOLHIMENTO, VL_BC_ISS, (SELECT COUNT(*) "
                 "FROM ES02_REGA17R X WHERE X.IDREGA100 = A.IDREGA100)"),
      "12|A1|2026-03-15|2||0|-|-|0\n0|A1|2026-03-15|0|AB-1|0||900|5\n12|A1|2026-03-15|0|AB-1|1||1000|6");
}

// The first note decides on side and period of the whole file; each note has its own participant, or none.
TEST_F(TJoinville, UmaEmpresaEUmPeriodoPorArquivo) {
  for (const bool r : {false, true}) {
    const String estrutura = "01 !estrutura estrutura;", alheia = "01 !alheia alheia;";
    EXPECT_EQ(Importar(r, {"", "2026-03 => 2026-04", "2026-03 => x", "DOC => 11222333000181"}), "10 [0 ][0 ][0 ][0 ]");
    EXPECT_EQ(Importar(r, {"DOC => 11222333000181"}, "11222333000181 => 1"), alheia);
    EXPECT_EQ(Importar(r, {"2026-03-15T => 2026-02-30T", ""}), alheia);
    EXPECT_EQ(Importar(r, {}), estrutura);
    EXPECT_EQ(Importar(r, {"=12; => =13;", "iss=45 => iss=x", ""}), "11 [0 ]!estrutura ") << "what came before stays";
    EXPECT_EQ(Importar(r, {""}, "lote => Lote"), "00 ;");
    EXPECT_EQ(Importar(r, {"=12; => =14;"}, "lote xmlns => ns2:lote xmlns:ns2 | /lote => /ns3:lote"), estrutura);
    const auto prefixo = fmt::format("lote xmlns => ns{0}:lote xmlns:ns{0} | /lote => /ns{0}:lote", r ? 3 : 2);
    EXPECT_EQ(Importar(r, {"=12; => =14;"}, prefixo), "10 [0 ]");
  }
  EXPECT_EQ(Documentos("IND_OPER, NUM_DOC, EXTRACT(MONTH FROM P.DT_INI), A.COD_PART, LEFT(CFOPICMS, 1)"),
            "1|12|3|1|6\n1|12|3|2|6\n1|12|3|3|6\n1|12|3|0|5\n1|13|3|1|6\n1|14|3|1|6\n0|12|3|4|2\n0|12|3|5|2\n0|12|3|6|"
            "2\n0|12|3|0|1\n0|13|3|4|2\n0|14|3|4|2");
}

// Only a taker's city is trimmed, and sought by its postal code within the state as it stands.
TEST_F(TJoinville, CidadeDaOutraParteEMunicipioDoISS) {
  Banco().Executar("UPDATE CA06_MUNICIPIO_LINHA SET CEPGERAL = '89200000' WHERE CODIGOFEDERAL = '4209102'");
  const String fora = "Curitiba => Nenhures";
  for (const bool recebidas : {false, true})
    Importar(recebidas,
             {"=Curitiba => = curitiba ", fora + " | PR => SC", fora, "PR =>  PR ", "PR =>  | Bom Jesus => joinville",
              "DOC =>  | Bom Jesus =>  Joinville ", "Bom Jesus => Nenhures", "Bom Jesus =>  "});
  EXPECT_EQ(Documentos("COD_MUN, UF, MUNICIPIODEVISS"),
            "4106902|PR|4106902\n4209102|SC|4209102\n0|PR|4205407\n0|PR|4205407\n4106902|PR|4106902\n-|-|4205407\n"
            "4106902|PR|4106902\n4106902|PR|4106902\n0|PR|4103156\n0|SC|4202537\n0|PR|4103156\n0| PR |4103156\n"
            "4106902|PR|4209102\n-|-|4209102\n4106902|PR|4205407\n4106902|PR|4205407");
}

}  // namespace impnfse::testes::joinville
