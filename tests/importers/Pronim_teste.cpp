#include "NotaNacional202.h"

namespace impnfse::testes::pronim {

class TPronim : public TTesteNacional202 {
 protected:
  String Importar(const std::vector<String>& notas, const String& raiz = "<ListaNfse>{}</ListaNfse>") {
    return ImportarNotas(notas, raiz, "51");
  }
};

TEST_F(TPronim, CadaCampoNoSeuLugar) {
  Importar({kRetencoes202 + " | Retido>2 => Retido>1"});
  EXPECT_EQ(
      Campos(),
      "1|4106902|Rua "
      "A|105|S|AB|2026-03-15|2026-03-15|280.0000|20.0000|15.0000|1.0000|2.0000|300.0000|0.0000|280.0000|15.0000|5.0000|"
      "7.0000|14.02|1402|[1] Revisão");
  EXPECT_EQ(Retencoes(),
            "1010|280.0000|15.0000|5.0000\n0714|280.0000|4.0000|0.0000\n0910|280.0000|3.0000|0.0000\n"
            "1101|280.0000|1.0000|0.0000\n1102|280.0000|2.0000|0.0000\n1103|280.0000|5.0000|0.0000");
}

TEST_F(TPronim, CancelamentoRetencaoBaseMunicipioETomador) {
  const String propria = "99888777000166 => 11222333000181", semLocal = "41.06902 => 0 | 42-04202 => x";
  const String semData = "</Nfse> => </Nfse><NfseCancelamento><Confirmacao Id='c'/></NfseCancelamento>";
  const String semId = Substituir(semData, " Id='c'/>", "><DataHora>2026-03-16</DataHora></Confirmacao>");
  Importar({semData + " | Nacional>1 => Nacional>2", semId + " | 41.06902 => ",
            "Numero>1< => Numero>1A< | Retido>2 => Retido>S | " + semLocal,
            "Calculo>280 => Calculo>0 | Retido>2 => Retido>1 | 4209102 =>  | " + semLocal,
            "Calculo>280 => Calculo>0 | Iss>15 => Iss>0 | 11222333000181 =>  | " + propria,
            "Cnpj>11222333000181</Cnpj => Cnpj/><Cpf>9</Cpf | " + propria, propria});
  EXPECT_EQ(
      Documentos("A.NUM_DOC, A.COD_SIT, A.VL_DOC, A.TEMISSRETIDO, I.VL_BC_ISS, I.MUNICIPIODEVISS, R.VL_BC, "
                 "Q.NOME, Q.CPF, Q.OPTANTESIMPLES"),
      "1|2|0.0000|0|-|-|-|Sul||N\n1|0|280.0000|0|280.0000|4204202|-|Sul||N\n0|0|280.0000|0|280.0000|4209102|-|Sul||N\n"
      "1|0|280.0000|1|300.0000|4205407|0.0000|Sul||N\n1|0|280.0000|0|0.0000|4106902|-|Aurora||\n"
      "1|0|280.0000|0|280.0000|4106902|-|Aurora|9|\n1|0|280.0000|0|280.0000|4106902|-|Aurora||\n"
      "1|0|280.0000|0|280.0000|4106902|-|Aurora||");
}

TEST_F(TPronim, CadaRaizContaSeusErros) {
  const String alheia = "11222333000181 => 1 | Numero>1< => Numero>9<";
  const String lote = "<ConsultarLoteRpsResposta><ListaNfse>{}</ListaNfse></ConsultarLoteRpsResposta>";
  EXPECT_EQ(Importar({alheia, kSemNota202, ""}), "true [1]Documento: 9 - alheia\n");
  EXPECT_EQ(Importar({"", alheia}, lote), "false [1]Documento: 9 - alheia\nalheia\n") << "the last note decides";
  EXPECT_EQ(Importar({""}, "{}"), "true []") << "a note alone goes without its number";
  EXPECT_EQ(Importar({alheia}, "{}"), "false alheia\nalheia\n");
  EXPECT_EQ(Importar({"", "Iss>15 => Iss>x", ""}), "false [1]estrutura\n") << "what was stored before stays";
  EXPECT_EQ(Importar({""}, "<ListaNfse>{}"), "false estrutura\n");
}

}  // namespace impnfse::testes::pronim
