#include "NotaNacional202.h"

namespace impnfse::testes::paliari {

struct TPaliari : TTesteNacional202 {
  String Importar(const std::vector<String>& notas, const String& lista = "<ListaNfse>{}</ListaNfse>",
                  const String& raiz = "ConsultarNfseServicoPrestadoResposta") {
    return ImportarNotas("50", notas, fmt::format("<{0} xmlns='urn:u'>{1}</{0}>", raiz, lista));
  }
};

// The branch is the issuer of a note to a company in São José, which the note spells with dots.
const String kPrestada =
    "Cnpj=11222333000181 => Cnpj=77666555000144 | 99888777000166 => 11222333000181 | 4209102 => 42.16602 | ";

// The ISS, its rate and its base are the note's, not the declaration's; so are they of the retained tax.
TEST_F(TPaliari, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({kRetencoes202 + " | Retido=2 => Retido=1 | Numero=1 => Numero=7654321098765432 | "
                                      "CodigoPais= 105 ; => Numero=20;Complemento=Sala;Bairro=Zona 7;Uf=PR;"}),
            "10 [1 7654321098765432]");
  EXPECT_EQ(Campos(),
            "654321098765432|0|Rua A|1058|| AB |2026-03-15|2026-03-15|300|20|99|1|2|300|20|280|99|9|0|14.02|1402|[1] "
            "Revisão\n1010|280|99|9\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
  EXPECT_EQ(Documentos("IND_OPER, COD_SIT, IND_PGTO, TEMISSRETIDO, NOME, CNPJ, IE, NUM, COMPL, BAIRRO, UF, NUM_ITEM, "
                       "QTD, MUNICIPIODEVISS, CFOPICMS"),
            "0|0|0|1|Sul|99888777000166||20|Sala|Zona 7|PR|1|1|4204202|2.933.000");
}

// An issuer has no city, and a state only if the note tells it; the company met as taker elsewhere is the same one. A
// taker has the city, and the state that goes with it.
TEST_F(TPaliari, Partes) {
  Importar({"", kPrestada, kPrestada + "77666555000144 => 99888777000166",
            kPrestada + "Cnpj=77666555000144; => Cnpj=;Cpf=52998224725; | 42.16602; => 42.16602;Uf=RS;",
            "Cnpj=99888777000166; => Cpf=12345678909;", kPrestada + "77666555000144 => ",
            "99888777000166 => 77666555000144"});
  EXPECT_EQ(Tabela("SELECT COD_PART, NOME, CNPJ, CPF, COD_MUN, UF FROM ES02_REG0150"),
            "1|Sul|99888777000166||0|\n2|Aurora|77666555000144||4216602|SC\n3|Aurora|99888777000166||4216602|SC\n"
            "4|Aurora||52998224725|4216602|RS\n5|Sul||12345678909|0|");
  EXPECT_EQ(Documentos("IND_OPER, A.COD_PART"), "0|1\n1|2\n1|3\n1|4\n0|5\n1|0\n0|2");
}

// The net value stands in for a gross one that isn't above 0; retained is "1" or a capital "S"; the city of the
// service, of incidence, of the taker, then the branch gets the ISS. A cancellation isn't looked at.
TEST_F(TPaliari, ValorLiquidoRetencaoELocalDoISS) {
  const String liquido = "</ValoresNfse> => ValorLiquidoNfse=250;</ValoresNfse> | ";
  const String semLocal = "42-04202 =>  | ";
  Importar({liquido + "Retido=2 => Retido=S", liquido + "Servicos=300 => Servicos=0 | Retido=2 => Retido=s",
            liquido + "Servicos=300 => Servicos=-1 | Retido=2 => Retido=", semLocal + "Servicos=300 => Servicos=",
            semLocal + "41.06902 => 0", semLocal + "41.06902 => x | 4209102 => ",
            "</Nfse> => </Nfse><NfseCancelamento><Confirmacao>DataHora=2026-03-16;</Confirmacao></NfseCancelamento>"});
  EXPECT_EQ(Documentos("COD_SIT, VL_DOC, VL_ITEM, TEMISSRETIDO, R.COD_RECEITA, MUNICIPIODEVISS"),
            "0|300|300|1|1010|4204202\n0|250|250|0|-|4204202\n0|250|250|0|-|4204202\n0|0|0|0|-|4106902\n"
            "0|300|300|0|-|4209102\n0|300|300|0|-|4205407\n0|300|300|0|-|4204202");
}

TEST_F(TPaliari, NotaDaEmpresaOuNao) {
  const String alheia = "11222333000181 => 1";
  EXPECT_EQ(Importar({alheia, ""}), "11 [1 1]alheia;");
  EXPECT_EQ(Importar({kSemNota202}), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar({""}, "{}"), "00 ;");
  EXPECT_EQ(Importar({""}, "<ListaNfse>{}</ListaNfse>", "ConsultarNfseResposta"), "00 ;");
  EXPECT_EQ(Importar({"", "ValorIss=99 => ValorIss=x"}), "11 [1 1]!estrutura ");
  EXPECT_EQ(Importar({}, "<"), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::paliari
