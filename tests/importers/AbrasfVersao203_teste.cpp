#include "NotaNacional202.h"

namespace impnfse::testes::abrasf203 {

class TAbrasf203 : public TTesteNacional202 {
 protected:
  String Importar(const std::vector<String>& notas, const String& raiz = "<Resposta><T/><Lista>{}</Lista></Resposta>") {
    return ImportarNotas(notas, raiz, "17");
  }
};

TEST_F(TAbrasf203, CadaCampoNoSeuLugar) {
  const String trocas = " | Retido>2 => Retido>1 | [1] => xmlns=\"\" | 2026-03-15 => 16/03/2026";
  Importar({kRetencoes202 + trocas + " | <InfNfse> => <InfNfse xmlns=\"\">"});
  EXPECT_EQ(Campos() + "\n" + Retencoes(),
            "1|4106902|Rua A|105|S| AB |2026-03-16|2026-03-16|280.0000|20.0000|15.0000|1.0000|2.0000|300.0000|"
            "20.0000|280.0000|15.0000|5.0000|7.0000|14.02|1402| Revisão\n"
            "1010|280.0000|15.0000|5.0000\n0714|280.0000|4.0000|0.0000\n0910|280.0000|3.0000|0.0000\n"
            "1101|280.0000|1.0000|0.0000\n1102|280.0000|2.0000|0.0000\n1103|280.0000|5.0000|0.0000");
}

TEST_F(TAbrasf203, Particularidades) {
  const String cancelada =
      "</Nfse> => </Nfse><NfseCancelamento><Confirmacao><DataHora>x</DataHora></Confirmacao></NfseCancelamento>";
  const String emitida = "99888777000166 => 11.222.333/0001-81", semLocal = "41.06902 =>  | 42-04202 => 0";
  Importar(
      {// Only 1 is retained. What wasn't declared the municipality tells, but what is retained was declared.
       "Retido>2 => Retido>S", "Retido>2 => Retido>1 | Iss>15 => Iss>0 | Aliquota>5 => Aliquota>",
       // Where nothing remains after the discount, the net value.
       "Servicos>300 => Servicos>20 | </ValoresNfse> => <ValorLiquidoNfse>55</ValorLiquidoNfse></ValoresNfse>",
       // ISS is due where it is said, else where the service was done, else in the taker's city, else the branch's.
       "41.06902 => 0", semLocal, semLocal + " | 4209102 => x",
       // Cancelled is what has a date of it.
       cancelada, Substituir(cancelada, ">x<", "><"),
       // Punctuation is taken out of both parties' numbers, but only of the taker's city.
       "Cnpj>99888777000166</Cnpj => Cnpj/><Cpf>123.456.789-09</Cpf | >4106902 => >41.06902 | Nacional>1 => Nacional>S",
       // A taker without a number is a participant, and so is a company that bills itself: it has both documents.
       emitida + " | Cnpj>11222333000181</Cnpj => Cnpj/ | 4209102 => 42.09102 | </Tomador> => </TomadorServico> | "
                 "<Tomador> => <TomadorServico>",
       emitida});
  EXPECT_EQ(Documentos("COD_SIT, VL_DOC, A.VL_ISS, TEMISSRETIDO, CAST(ALIQ_ISS AS INT), MUNICIPIODEVISS, A.COD_PART"),
            "0|280.0000|15.0000|0|5|4106902|1\n0|280.0000|99.0000|1|9|4106902|1\n0|55.0000|15.0000|0|5|4106902|1\n"
            "0|280.0000|15.0000|0|5|4204202|1\n0|280.0000|15.0000|0|5|4209102|1\n0|280.0000|15.0000|0|5|4205407|1\n"
            "2|0.0000|0.0000|0|-|-|1\n0|280.0000|15.0000|0|5|4106902|1\n0|280.0000|15.0000|0|5|4106902|2\n"
            "0|280.0000|15.0000|0|5|4106902|3\n0|280.0000|15.0000|0|5|4106902|4\n0|280.0000|15.0000|0|5|4106902|4");
  EXPECT_EQ(Tabela("SELECT NOME, CPF, CNPJ, COD_MUN, OPTANTESIMPLES FROM ES02_REG0150"),
            "Sul||99888777000166|4106902|S\nSul|12345678909||0|N\nAurora|||4209102|\nAurora||11222333000181|4209102|");
  EXPECT_EQ(Contar("ES02_REGA17R"), 0);
}

TEST_F(TAbrasf203, NotasOndeEstiverem) {
  const auto como = [](const char* tag) { return fmt::format("<CompNfse> => <{0}> | </CompNfse> => </{0}>", tag); };
  EXPECT_EQ(Importar({como("ns2:compnfse"), como("ComplNfse"), como("tc:CompNfse"), ""}), "true [1][1][1]");
  EXPECT_EQ(Importar({""}, "<tc:CompNfse>{}</tc:CompNfse>"), "true [1]");
  EXPECT_EQ(Importar({como("tc:CompNfse")}) + Importar({""}, "<Lista>{}"), "false estrutura\nfalse estrutura\n");
  EXPECT_EQ(Importar({"Iss>15 => Iss>x", "Cnpj>11222333000181 => Cnpj>1", ""}), "true [1]Documento: 1 - alheia\n");
  const String certa(kNotaNacional202), xml = "<a>" + Substituir(certa, "Iss>15", "Iss>x") + certa + "</a>";
  EXPECT_FALSE(TTesteNacional202::Importar(Pasta.Gravar("n.xml", xml), "17")->GetTemErros()) << "the last note's flag";
}

}  // namespace impnfse::testes::abrasf203
