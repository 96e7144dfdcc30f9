#include "NotaNacional202.h"

namespace impnfse::testes::betha202 {

class TBetha202 : public TTesteNacional202 {
 protected:
  String Importar(const std::vector<String>& notas, const String& raiz = "ConsultarNfseResposta") {
    return ImportarNotas(notas, fmt::format("<{0}><ListaNfse>{{}}</ListaNfse></{0}>", raiz), "1");
  }
};

TEST_F(TBetha202, CadaCampoNoSeuLugar) {
  const String trocas = " | Numero>1< => Numero>2600000000123< | Retido>2 => Retido>s | 2026-03-15 => 16/03/2026";
  EXPECT_EQ(Importar({kRetencoes202 + trocas}), "true [2600000000123]");
  EXPECT_EQ(Campos() + "\n" + Retencoes(),
            "123|4106902|Rua A|105|S|AB|2026-03-16|2026-03-16|280.0000|20.0000|15.0000|1.0000|2.0000|300.0000|"
            "0.0000|280.0000|15.0000|5.0000|7.0000|14.02|1402|[1] Revisão\n"
            "1010|280.0000|15.0000|5.0000\n0714|280.0000|4.0000|0.0000\n0910|280.0000|3.0000|0.0000\n"
            "1101|280.0000|1.0000|0.0000\n1102|280.0000|2.0000|0.0000\n1103|280.0000|5.0000|0.0000");
}

TEST_F(TBetha202, Particularidades) {
  const String cancelada =
      "</Nfse> => </Nfse><NfseCancelamento><Confirmacao><DataHora>x</DataHora></Confirmacao></NfseCancelamento>";
  const String emitida = "99888777000166 => 11222333000181", semLocal = "41.06902 =>  | 42-04202 => 0";
  const String recibo = "<Servico> => <Rps><DataEmissao>2026-02-28</DataEmissao></Rps><Servico> | Retido>2 => Retido>";
  Importar(
      {// The service was done on the date of the provisional receipt, if it is one, which begins with the year.
       recibo + "1", Substituir(recibo, "2026-02-28", "28/02/2026") + " 1",
       // The municipality's figures don't stand in, but for the net value where nothing remains.
       "Iss>15 => Iss> | Servicos>300 => Servicos>20 | <BaseC => <ValorLiquidoNfse>55</ValorLiquidoNfse><BaseC",
       // ISS is due where it is said, else where the service was done, else in the taker's city, else the branch's.
       "41.06902 => 0", semLocal, semLocal + " | 4209102 => x",
       // Cancelled is what has a date of it.
       cancelada, Substituir(cancelada, ">x<", "><"),
       // The number and the city's code as they stand.
       "<Cnpj>99888777000166</Cnpj> => <Cpf>123.456.789-</Cpf> | >4106902 => >41.06902 | Nacional>1 => Nacional>S",
       // A company that bills itself is a participant; a taker without a number isn't.
       emitida, emitida + " | Cnpj>11222333000181 => Cnpj>"});
  EXPECT_EQ(Documentos("COD_SIT, DT_EXE_SERV - DT_DOC, VL_DOC, A.VL_ISS, TEMISSRETIDO, MUNICIPIODEVISS, A.COD_PART"),
            "0|-15|280.0000|15.0000|1|4106902|1\n0|0|280.0000|15.0000|0|4106902|1\n0|0|55.0000|0.0000|0|4106902|1\n"
            "0|0|280.0000|15.0000|0|4204202|1\n0|0|280.0000|15.0000|0|4209102|1\n0|0|280.0000|15.0000|0|4205407|1\n"
            "2|-|0.0000|0.0000|0|-|1\n0|0|280.0000|15.0000|0|4106902|1\n0|0|280.0000|15.0000|0|4106902|2\n"
            "0|0|280.0000|15.0000|0|4106902|3\n0|0|280.0000|15.0000|0|4106902|3\n0|0|280.0000|15.0000|0|4106902|0");
  EXPECT_EQ(Tabela("SELECT NOME, CPF, CNPJ, COD_MUN, OPTANTESIMPLES FROM ES02_REG0150"),
            "Sul||99888777000166|4106902|S\nSul|123.456.789-||0|N\nAurora||11222333000181|4209102|");
}

TEST_F(TBetha202, NotasDoArquivo) {
  const String alheia = "Cnpj>11222333000181 => Cnpj>11.222.333/0001-81 | Numero>1< => Numero>20<";
  EXPECT_EQ(Importar({alheia, kSemNota202, "", "Iss>15 => Iss>x", ""}), "true [1]Documento: 20 - alheia\n");
  // The last error stands in the list once, and another root is no error.
  EXPECT_EQ(Importar({alheia}) + Importar({""}, "Resposta"), "false Documento: 20 - alheia\nfalse ");
}

}  // namespace impnfse::testes::betha202
