#include "NotaNacional202.h"

namespace impnfse::testes::systemsolucoes {

class TSystemSolucoes : public TTesteNacional202 {
 protected:
  String Importar(const std::vector<String>& notas, const String& raiz = "GerarNfseResposta") {
    const auto lista = "><ListaNfse>{}<ProximaPagina>2</ProximaPagina></ListaNfse></";
    return ImportarNotas(notas, "<" + raiz + lista + raiz + ">", "55");
  }
};

// Each of several services is an item with its own base and ISS; the retained taxes and the totals are the note's. A
// single one has the base and the ISS of the note's summary.
TEST_F(TSystemSolucoes, UmEVariosServicos) {
  const String outro = R"(<Valores><ValorServicos>50</ValorServicos><ValorIss>1</ValorIss><Desconto>4</Desconto>
<DescontoIncondicionado>9</DescontoIncondicionado><ValorPis>10</ValorPis><ValorCofins>20</ValorCofins>
<ValorInss>30</ValorInss><ValorIr>40</ValorIr><ValorCsll>50</ValorCsll></Valores><IssRetido>1</IssRetido>
<Discriminacao>Óleo</Discriminacao><CodigoMunicipio>1</CodigoMunicipio><MunicipioIncidencia>0</MunicipioIncidencia>)";
  Importar({"Numero>1< => Numero>X202600000000123< | Retido>2 => Retido>S", "Retido>2 => Retido>Sim",
            kRetencoes202 + " | </Servico> => </Servico><Servico>" + outro + "</Servico>"});
  EXPECT_EQ(Campos(),
            "202600000000123|4106902|Rua A|105|S| AB "
            "|2026-03-15|2026-03-15|300.0000|20.0000|99.0000|0.0000|0.0000|300.0000|20.0000|280.0000|"
            "99.0000|9.0000|7.0000|14.02|1402|[1] Revisão");
  EXPECT_EQ(Tabela("SELECT VL_DOC, A.VL_DESC, VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, NUM_ITEM, VL_ITEM, I.VL_DESC, "
                   "VL_BC_ISS, I.VL_ISS, MUNICIPIODEVISS, IDREG0200 FROM ES02_REGA100 A JOIN ES02_REGA170 I ON "
                   "I.IDREGA100 = A.IDREGA100 ORDER BY IDREGA170"),
            "300.0000|20.0000|0.0000|0.0000|0|1|300.0000|20.0000|280.0000|99.0000|4106902|1\n"
            "300.0000|20.0000|0.0000|0.0000|1|1|300.0000|20.0000|280.0000|99.0000|4106902|1\n"
            "350.0000|24.0000|11.0000|22.0000|1|1|300.0000|20.0000|300.0000|15.0000|4106902|1\n"
            "350.0000|24.0000|11.0000|22.0000|1|2|50.0000|4.0000|50.0000|1.0000|4209102|2");
  EXPECT_EQ(Retencoes(),
            "1010|280.0000|99.0000|9.0000\n1010|280.0000|99.0000|9.0000\n0714|280.0000|44.0000|0.0000\n"
            "0910|280.0000|33.0000|0.0000\n1101|280.0000|11.0000|0.0000\n1102|280.0000|22.0000|0.0000\n"
            "1103|280.0000|55.0000|0.0000");
}

TEST_F(TSystemSolucoes, DatasMunicipioETomador) {
  const String propria = "99888777000166 => 11222333000181";
  Importar({"Nacional>1 => Nacional>2 | 2026-03-15T10:20:30 => 5/3/2026 | 41.06902 => ", "41.06902 => x | 4209102 => ",
            "11222333000181 =>  | " + propria, "Cnpj>11222333000181</Cnpj => Cnpj/><Cpf>9</Cpf | " + propria, propria});
  EXPECT_EQ(
      Documentos("A.DT_DOC, I.MUNICIPIODEVISS, Q.NOME, Q.CPF, Q.OPTANTESIMPLES"),
      "2026-03-05|4209102|Sul||N\n2026-03-15|4205407|Sul||N\n2026-03-15|4106902|-|-|-\n2026-03-15|4106902|Aurora|9|\n"
      "2026-03-15|4106902|Aurora||\n2026-03-15|4106902|Aurora||");
}

TEST_F(TSystemSolucoes, ARaizBastaAoArquivo) {
  const String alheia = "11222333000181 => 1";
  EXPECT_EQ(Importar({alheia, kSemNota202, ""}), "true []alheia\n");
  EXPECT_EQ(Importar({"", alheia}), "false []alheia\nalheia\n") << "the last note decides";
  EXPECT_EQ(Importar({alheia}, "ConsultarNfseFaixaResposta"), "false alheia\nalheia\n");
  EXPECT_EQ(Importar({}), "true ");
  EXPECT_EQ(Importar({"", "Iss>99 => Iss>x", ""}, "ConsultarNfseFaixaResposta"), "false []estrutura\n");
}

}  // namespace impnfse::testes::systemsolucoes
