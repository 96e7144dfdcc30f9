#include "NotaNacional202.h"

namespace impnfse::testes::paliari {

struct TPaliari : TTesteNacional202 {
  String Importar(const std::vector<String>& notas, const String& lista = "<ListaNfse>{}</ListaNfse>",
                  const String& raiz = "ConsultarNfseServicoPrestadoResposta") {
    return ImportarNotas(notas, fmt::format("<{0} xmlns='urn:u'>{1}</{0}>", raiz, lista), "50");
  }
};

// The branch is the issuer of a note to a company in São José, which the note spells with dots.
const String kPrestada =
    "<Cnpj>11222333000181 => <Cnpj>77666555000144 | 99888777000166 => 11222333000181 | 4209102 => 42.16602 | ";

// The ISS, its rate and its base are the note's, not the declaration's; so are they of the retained tax.
TEST_F(TPaliari, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({kRetencoes202 + " | Retido>2 => Retido>1 | <Numero>1 => <Numero>7654321098765432 | "
                                      "<CodigoPais> 105 </CodigoPais> => <Numero>20</Numero><Complemento>Sala"
                                      "</Complemento><Bairro>Zona 7</Bairro><Uf>PR</Uf>"}),
            "true [7654321098765432]");
  EXPECT_EQ(Campos() + "\n" + Retencoes(),
            "654321098765432|0|Rua A|1058|| AB |2026-03-15|2026-03-15|300.0000|20.0000|99.0000|1.0000|2.0000|300.0000|"
            "20.0000|280.0000|99.0000|9.0000|0.0000|14.02|1402|[1] Revisão\n1010|280.0000|99.0000|9.0000\n"
            "0714|280.0000|4.0000|0.0000\n0910|280.0000|3.0000|0.0000\n1101|280.0000|1.0000|0.0000\n"
            "1102|280.0000|2.0000|0.0000\n1103|280.0000|5.0000|0.0000");
  EXPECT_EQ(Documentos("IND_OPER, COD_SIT, IND_PGTO, TEMISSRETIDO, NOME, CNPJ, IE, NUM, COMPL, BAIRRO, UF, NUM_ITEM, "
                       "QTD, MUNICIPIODEVISS, CFOPICMS"),
            "0|0|0|1|Sul|99888777000166||20|Sala|Zona 7|PR|1|1.0000|4204202|2.933.000");
}

// An issuer has no city, and a state only if the note tells it; the company met as taker elsewhere is the same one. A
// taker has the city, and the state that goes with it.
TEST_F(TPaliari, Partes) {
  Importar({"", kPrestada + "11222333000181 => 11222333000181", kPrestada + "77666555000144 => 99888777000166",
            kPrestada + "<Cnpj>77666555000144</Cnpj> => <Cnpj/><Cpf>52998224725</Cpf> | </CodigoMunicipio></Endereco>"
                        "</Tomador> => </CodigoMunicipio><Uf>RS</Uf></Endereco></Tomador>",
            "<Cnpj>99888777000166</Cnpj> => <Cpf>12345678909</Cpf>", kPrestada + "77666555000144 => ",
            "99888777000166 => 77666555000144"});
  EXPECT_EQ(Tabela("SELECT COD_PART, NOME, CNPJ, CPF, COD_MUN, UF FROM ES02_REG0150"),
            "1|Sul|99888777000166||0|\n2|Aurora|77666555000144||4216602|SC\n3|Aurora|99888777000166||4216602|SC\n"
            "4|Aurora||52998224725|4216602|RS\n5|Sul||12345678909|0|");
  EXPECT_EQ(Documentos("IND_OPER, A.COD_PART"), "0|1\n1|2\n1|3\n1|4\n0|5\n1|0\n0|2");
}

// The net value stands in for a gross one that isn't above 0; retained is "1" or a capital "S"; the city of the
// service, of incidence, of the taker, then the branch gets the ISS. A cancellation isn't looked at.
TEST_F(TPaliari, ValorLiquidoRetencaoELocalDoISS) {
  const String liquido =
      "</ValorIss></ValoresNfse> => </ValorIss><ValorLiquidoNfse>250</ValorLiquidoNfse>"
      "</ValoresNfse> | ";
  const String semLocal = "42-04202 =>  | ";
  Importar({liquido + "Retido>2 => Retido>S", liquido + "Servicos>300 => Servicos>0 | Retido>2 => Retido>s",
            liquido + "Servicos>300 => Servicos>-1 | Retido>2 => Retido>", semLocal + "Servicos>300 => Servicos>",
            semLocal + "41.06902 => 0", semLocal + "41.06902 => x | 4209102 => ",
            "</Nfse> => </Nfse><NfseCancelamento><Confirmacao><DataHora>2026-03-16</DataHora></Confirmacao>"
            "</NfseCancelamento>"});
  EXPECT_EQ(Documentos("COD_SIT, VL_DOC, VL_ITEM, TEMISSRETIDO, R.COD_RECEITA, MUNICIPIODEVISS"),
            "0|300.0000|300.0000|1|1010|4204202\n0|250.0000|250.0000|0|-|4204202\n0|250.0000|250.0000|0|-|4204202\n"
            "0|0.0000|0.0000|0|-|4106902\n0|300.0000|300.0000|0|-|4209102\n0|300.0000|300.0000|0|-|4205407\n"
            "0|300.0000|300.0000|0|-|4204202");
}

TEST_F(TPaliari, NotaDaEmpresaOuNao) {
  const String alheia = "11222333000181 => 1";
  EXPECT_EQ(Importar({alheia, ""}) + Importar({kSemNota202}), "true [1]alheia\nfalse alheia\nalheia\n");
  EXPECT_EQ(Importar({""}, "{}") + Importar({""}, "<ListaNfse>{}</ListaNfse>", "ConsultarNfseResposta"),
            "false \nfalse \n");
  EXPECT_EQ(Importar({"", "ValorIss>99 => ValorIss>x"}) + Importar({}, "<"), "true [1]false estrutura\n");
}

}  // namespace impnfse::testes::paliari
