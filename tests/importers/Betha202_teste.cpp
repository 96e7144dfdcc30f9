#include "NotaNacional202.h"

namespace impnfse::testes::betha202 {

struct TBetha202 : TTesteNacional202 {
  String Importar(const std::vector<String>& notas, const String& raiz = "ConsultarNfseResposta") {
    return ImportarNotas("1", notas, fmt::format("<{0}><ListaNfse>{{}}</ListaNfse></{0}>", raiz));
  }
};

TEST_F(TBetha202, CadaCampoNoSeuLugar) {
  const String trocas = " | Numero=1 => Numero=2600000000123 | Retido=2 => Retido=s | 2026-03-15 => 16/03/2026";
  EXPECT_EQ(Importar({kRetencoes202 + trocas}), "10 [1 2600000000123]");
  EXPECT_EQ(Campos(),
            "123|4106902|Rua A|105|S|AB|2026-03-16|2026-03-16|280|20|15|1|2|300|0|280|15|5|7|14.02|1402|[1] Revisão\n"
            "1010|280|15|5\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

TEST_F(TBetha202, Particularidades) {
  const String cancelada =
      "</Nfse> => </Nfse><NfseCancelamento><Confirmacao>DataHora=x;</Confirmacao></NfseCancelamento>";
  const String emitida = "99888777000166 => 11222333000181", semLocal = "41.06902 =>  | 42-04202 => 0";
  const String recibo = "<Servico> => <Rps>DataEmissao=2026-02-28;</Rps><Servico> | Retido=2 => Retido=";
  Importar(
      {// The service was done on the date of the provisional receipt, if it is one, which begins with the year.
       recibo + "1", Substituir(recibo, "2026-02-28", "28/02/2026") + " 1",
       // The municipality's figures don't stand in, but for the net value where nothing remains.
       "Iss=15 => Iss= | Servicos=300 => Servicos=20 | BaseC => ValorLiquidoNfse=55;BaseC",
       // ISS is due where it is said, else where the service was done, else in the taker's city, else the branch's.
       "41.06902 => 0", semLocal, semLocal + " | 4209102 => x",
       // Cancelled is what has a date of it.
       cancelada, Substituir(cancelada, "=x", "="),
       // The number and the city's code as they stand.
       "Cnpj=99888777000166; => Cpf=123.456.789-; | 4106902 => 41.06902 | Nacional=1 => Nacional=S",
       // A company that bills itself is a participant; a taker without a number isn't.
       emitida, "Cnpj=11222333000181 => Cnpj= | " + emitida});
  EXPECT_EQ(Documentos("COD_SIT, DT_EXE_SERV - DT_DOC, VL_DOC, A.VL_ISS, TEMISSRETIDO, MUNICIPIODEVISS, A.COD_PART"),
            "0|-15|280|15|1|4106902|1\n0|0|280|15|0|4106902|1\n0|0|55|0|0|4106902|1\n0|0|280|15|0|4204202|1\n"
            "0|0|280|15|0|4209102|1\n0|0|280|15|0|4205407|1\n2|-|0|0|0|-|1\n0|0|280|15|0|4106902|1\n"
            "0|0|280|15|0|4106902|2\n0|0|280|15|0|4106902|3\n0|0|280|15|0|4106902|3\n0|0|280|15|0|4106902|0");
  EXPECT_EQ(Tabela("SELECT NOME, CPF, CNPJ, COD_MUN, OPTANTESIMPLES FROM ES02_REG0150"),
            "Sul||99888777000166|4106902|S\nSul|123.456.789-||0|N\nAurora||11222333000181|4209102|");
}

TEST_F(TBetha202, NotasDoArquivo) {
  const String alheia = "Cnpj=11222333000181 => Cnpj=11.222.333/0001-81 | Numero=1 => Numero=20";
  EXPECT_EQ(Importar({alheia, kSemNota202, "", "Iss=15 => Iss=x", ""}), "11 [1 1]!estrutura Documento: 20 - alheia;");
  // The last error stands in the list once, and another root is no error.
  EXPECT_EQ(Importar({alheia}), "01 !alheia Documento: 20 - alheia;");
  EXPECT_EQ(Importar({""}, "Resposta"), "00 ");
}

}  // namespace impnfse::testes::betha202
