#include "NotaNacional202.h"

namespace impnfse::testes::abrasf203 {

struct TAbrasf203 : TTesteNacional202 {
  String Importar(const std::vector<String>& notas, const String& raiz = "<Resposta><T/><Lista>{}</Lista></Resposta>") {
    return ImportarNotas("17", notas, raiz);
  }
};

TEST_F(TAbrasf203, CadaCampoNoSeuLugar) {
  const String trocas = " | Retido=2 => Retido=1 | [1] => xmlns=\"\" | 2026-03-15 => 16/03/2026";
  Importar({kRetencoes202 + trocas + " | <InfNfse> => <InfNfse xmlns=\"\">"});
  EXPECT_EQ(Campos(),
            "1|4106902|Rua A|105|S| AB |2026-03-16|2026-03-16|280|20|15|1|2|300|20|280|15|5|7|14.02|1402| Revisão\n"
            "1010|280|15|5\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

TEST_F(TAbrasf203, Particularidades) {
  const String cancelada =
      "</Nfse> => </Nfse><NfseCancelamento><Confirmacao>DataHora=x;</Confirmacao></NfseCancelamento>";
  const String emitida = "99888777000166 => 11.222.333/0001-81", semLocal = "41.06902 =>  | 42-04202 => 0";
  Importar(
      {// Only 1 is retained. What wasn't declared the municipality tells, but what is retained was declared.
       "Retido=2 => Retido=S", "Retido=2 => Retido=1 | Iss=15 => Iss=0 | Aliquota=5 => Aliquota=",
       // Where nothing remains after the discount, the net value.
       "Servicos=300 => Servicos=20 | </ValoresNfse> => ValorLiquidoNfse=55;</ValoresNfse>",
       // ISS is due where it is said, else where the service was done, else in the taker's city, else the branch's.
       "41.06902 => 0", semLocal, semLocal + " | 4209102 => x",
       // Cancelled is what has a date of it.
       cancelada, Substituir(cancelada, "=x", "="),
       // Punctuation is taken out of both parties' numbers, but only of the taker's city.
       "Cnpj=99888777000166 => Cnpj=;Cpf=123.456.789-09 | 4106902 => 41.06902 | Nacional=1 => Nacional=S",
       // A taker without a number is a participant, and so is a company that bills itself: it has both documents.
       emitida + " | Cnpj=11222333000181 => Cnpj= | 4209102 => 42.09102 | </Tomador> => </TomadorServico> | "
                 "<Tomador> => <TomadorServico>",
       emitida});
  EXPECT_EQ(Documentos("COD_SIT, VL_DOC, A.VL_ISS, TEMISSRETIDO, CAST(ALIQ_ISS AS INT), MUNICIPIODEVISS, A.COD_PART"),
            "0|280|15|0|5|4106902|1\n0|280|99|1|9|4106902|1\n0|55|15|0|5|4106902|1\n0|280|15|0|5|4204202|1\n"
            "0|280|15|0|5|4209102|1\n0|280|15|0|5|4205407|1\n2|0|0|0|-|-|1\n0|280|15|0|5|4106902|1\n"
            "0|280|15|0|5|4106902|2\n0|280|15|0|5|4106902|3\n0|280|15|0|5|4106902|4\n0|280|15|0|5|4106902|4");
  EXPECT_EQ(Tabela("SELECT NOME, CPF, CNPJ, COD_MUN, OPTANTESIMPLES FROM ES02_REG0150"),
            "Sul||99888777000166|4106902|S\nSul|12345678909||0|N\nAurora|||4209102|\nAurora||11222333000181|4209102|");
  EXPECT_EQ(Contar("ES02_REGA17R"), 0);
}

TEST_F(TAbrasf203, NotasOndeEstiverem) {
  const auto como = [](const char* tag) { return fmt::format("<CompNfse> => <{0}> | </CompNfse> => </{0}>", tag); };
  EXPECT_EQ(Importar({como("ns2:compnfse"), como("ComplNfse"), como("tc:CompNfse"), ""}), "10 [1 1][1 1][1 1]");
  EXPECT_EQ(Importar({""}, "<tc:CompNfse>{}</tc:CompNfse>"), "10 [1 1]");
  EXPECT_EQ(Importar({como("tc:CompNfse")}), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar({""}, "<Lista>{}"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar({"Iss=15 => Iss=x", "Cnpj=11222333000181 => Cnpj=1", ""}), "10 [1 1]Documento: 1 - alheia;");
  EXPECT_EQ(Importar({"Iss=15 => Iss=x", ""}), "10 [1 1]") << "the last note's flag";
}

}  // namespace impnfse::testes::abrasf203
