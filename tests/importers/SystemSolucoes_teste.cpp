#include "NotaNacional202.h"

namespace impnfse::testes::systemsolucoes {

struct TSystemSolucoes : TTesteNacional202 {
  String Importar(const std::vector<String>& notas, const String& raiz = "GerarNfseResposta") {
    const auto lista = "><ListaNfse>{}<ProximaPagina>2</ProximaPagina></ListaNfse></";
    return ImportarNotas("55", notas, "<" + raiz + lista + raiz + ">");
  }
};

// Each of several services is an item with its own base and ISS; the retained taxes and the totals are the note's. A
// single one has the base and the ISS of the note's summary.
TEST_F(TSystemSolucoes, UmEVariosServicos) {
  const String outro = R"(<Valores>ValorServicos=50;ValorIss=1;Desconto=4;DescontoIncondicionado=9;ValorPis=10;
ValorCofins=20;ValorInss=30;ValorIr=40;ValorCsll=50;</Valores>IssRetido=1;Discriminacao=Óleo;CodigoMunicipio=1;
MunicipioIncidencia=0;)";
  Importar({"Numero=1 => Numero=X202600000000123 | Retido=2 => Retido=S", "Retido=2 => Retido=Sim",
            kRetencoes202 + " | </Servico> => </Servico><Servico>" + outro + "</Servico>"});
  EXPECT_EQ(Campos(),
            "202600000000123|4106902|Rua A|105|S| AB |2026-03-15|2026-03-15|300|20|99|0|0|300|20|280|99|9|7|14.02|1402|"
            "[1] Revisão\n1010|280|99|9\n1010|280|99|9\n0714|280|44|0\n0910|280|33|0\n1101|280|11|0\n1102|280|22|0\n"
            "1103|280|55|0");
  EXPECT_EQ(Documentos("VL_DOC, A.VL_DESC, VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, NUM_ITEM, VL_ITEM, I.VL_DESC, "
                       "VL_BC_ISS, I.VL_ISS, MUNICIPIODEVISS, I.IDREG0200"),
            "300|20|0|0|0|1|300|20|280|99|4106902|1\n300|20|0|0|1|1|300|20|280|99|4106902|1\n"
            "350|24|11|22|1|1|300|20|300|15|4106902|1\n350|24|11|22|1|2|50|4|50|1|4209102|2");
}

TEST_F(TSystemSolucoes, DatasMunicipioETomador) {
  const String propria = "99888777000166 => 11222333000181";
  Importar({"Nacional=1 => Nacional=2 | 2026-03-15T10:20:30 => 5/3/2026 | 41.06902 => ", "41.06902 => x | 4209102 => ",
            "11222333000181 =>  | " + propria, "Cnpj=11222333000181 => Cnpj=;Cpf=9 | " + propria, propria});
  EXPECT_EQ(
      Documentos("DT_DOC, MUNICIPIODEVISS, NOME, CPF, OPTANTESIMPLES"),
      "2026-03-05|4209102|Sul||N\n2026-03-15|4205407|Sul||N\n2026-03-15|4106902|-|-|-\n2026-03-15|4106902|Aurora|9|\n"
      "2026-03-15|4106902|Aurora||\n2026-03-15|4106902|Aurora||");
}

TEST_F(TSystemSolucoes, ARaizBastaAoArquivo) {
  const String alheia = "11222333000181 => 1";
  EXPECT_EQ(Importar({alheia, kSemNota202, ""}), "11 [1 ]alheia;");
  EXPECT_EQ(Importar({"", alheia}), "01 [1 ]!alheia alheia;alheia;") << "the last note decides";
  EXPECT_EQ(Importar({alheia}, "ConsultarNfseFaixaResposta"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar({}), "10 ");
  EXPECT_EQ(Importar({"", "Iss=99 => Iss=x", ""}, "ConsultarNfseFaixaResposta"), "01 [1 ]!estrutura estrutura;");
}

}  // namespace impnfse::testes::systemsolucoes
