#include "NotaNacional202.h"

namespace impnfse::testes::pronim {

struct TPronim : TTesteNacional202 {
  String Importar(const std::vector<String>& notas, const String& raiz = "<ListaNfse>{}</ListaNfse>") {
    return ImportarNotas("51", notas, raiz);
  }
};

TEST_F(TPronim, CadaCampoNoSeuLugar) {
  Importar({kRetencoes202 + " | Retido=2 => Retido=1"});
  EXPECT_EQ(Campos(),
            "1|4106902|Rua A|105|S|AB|2026-03-15|2026-03-15|280|20|15|1|2|300|0|280|15|5|7|14.02|1402|[1] Revisão\n"
            "1010|280|15|5\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

TEST_F(TPronim, CancelamentoRetencaoBaseMunicipioETomador) {
  const String propria = "99888777000166 => 11222333000181", semLocal = "41.06902 => 0 | 42-04202 => x";
  const String semData = "</Nfse> => </Nfse><NfseCancelamento><Confirmacao Id='c'/></NfseCancelamento>";
  const String semId = Substituir(semData, " Id='c'/>", ">DataHora=2026-03-16;</Confirmacao>");
  Importar({semData + " | Nacional=1 => Nacional=2", semId + " | 41.06902 => ",
            "Numero=1 => Numero=1A | Retido=2 => Retido=S | " + semLocal,
            "Calculo=280 => Calculo=0 | Retido=2 => Retido=1 | 4209102 =>  | " + semLocal,
            "Calculo=280 => Calculo=0 | Iss=15 => Iss=0 | 11222333000181 =>  | " + propria,
            "Cnpj=11222333000181 => Cnpj=;Cpf=9 | " + propria, propria});
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, VL_DOC, TEMISSRETIDO, VL_BC_ISS, MUNICIPIODEVISS, R.VL_BC, "
                       "NOME, CPF, OPTANTESIMPLES"),
            "1|2|0|0|-|-|-|Sul||N\n1|0|280|0|280|4204202|-|Sul||N\n0|0|280|0|280|4209102|-|Sul||N\n"
            "1|0|280|1|300|4205407|0|Sul||N\n1|0|280|0|0|4106902|-|Aurora||\n1|0|280|0|280|4106902|-|Aurora|9|\n"
            "1|0|280|0|280|4106902|-|Aurora||\n1|0|280|0|280|4106902|-|Aurora||");
}

TEST_F(TPronim, CadaRaizContaSeusErros) {
  const String alheia = "11222333000181 => 1 | Numero=1 => Numero=9";
  const String lote = "<ConsultarLoteRpsResposta><ListaNfse>{}</ListaNfse></ConsultarLoteRpsResposta>";
  EXPECT_EQ(Importar({alheia, kSemNota202, ""}), "11 [1 1]Documento: 9 - alheia;");
  EXPECT_EQ(Importar({"", alheia}, lote), "01 [1 1]!alheia Documento: 9 - alheia;alheia;") << "the last note decides";
  EXPECT_EQ(Importar({""}, "{}"), "10 [1 ]") << "a note alone goes without its number";
  EXPECT_EQ(Importar({alheia}, "{}"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar({"", "Iss=15 => Iss=x", ""}), "01 [1 1]!estrutura estrutura;") << "what was stored before stays";
  EXPECT_EQ(Importar({""}, "<ListaNfse>{}"), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::pronim
