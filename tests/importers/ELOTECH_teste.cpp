#include "NotaNacional202.h"

namespace impnfse::testes::elotech {

// What makes the national note one of this vendor's: the issuer in the declaration, known twice, and three lines beside
// the note's values. What other vendors read of the note stays in it.
const String kElotech = R"(<PrestadorServico> => <DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico>
<DadosPrestador><CpfCnpj>Cnpj=44333222000111;</CpfCnpj> | </PrestadorServico><DeclaracaoPrestacaoServico>
<InfDeclaracaoPrestacaoServico> => </DadosPrestador> | Rua A; => Rua A;Numero=20;Complemento=Sala;Bairro=Zona 7;
CidadeNome=Maringá; | 4106902 => 41.15200 | 4209102 => 42.09102 | </Servico> => <ListaItensServico><ItemServico>
Quantidade=3;ItemListaServico=0105;Descricao=Aula;ValorUnitario=50.5;ValorDesconto=4;</ItemServico><ItemServico>
Quantidade=0.5;ValorUnitario=97;</ItemServico><ItemServico>Descricao=Aula;</ItemServico></ListaItensServico>
</Servico> | )";

struct TELOTECH : TTesteNacional202 {
  String Importar(const String& trocas, const String& raiz = "{}") {
    return ImportarNotas("61", {kElotech + trocas}, raiz);
  }
};

TEST_F(TELOTECH, CadaLinhaRepeteOsValoresDaNota) {
  Importar(kRetencoes202 + " | Retido=2 => Retido=1");
  EXPECT_EQ(Campos(),
            "1|4115200|Rua A|1058|| AB |2026-03-15|2026-03-15|300|0|15|0|0|50.5000|4|280|15|5|7|01.05||Aula\n"
            "1010|280|15|5\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
  EXPECT_EQ(Documentos("NUM_ITEM, VL_ITEM, QTD, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, DEDUCAOISS, I.IDREG0200, VL_PIS, "
                       "VL_COFINS, NUM, COMPL, BAIRRO, MUNICIPIO"),
            "1|50.5000|3|280|15|5|7|1|1|2|20||Zona 7|Maringá\n1|97|0.5000|280|15|5|7|2|1|2|20||Zona 7|Maringá\n"
            "1|0|0|280|15|5|7|1|1|2|20||Zona 7|Maringá");
}

TEST_F(TELOTECH, CancelamentoRetencaoEPartes) {
  const String pedido = kRetencoes202 + R"( | Retido=2 => Retido=1 | </Nfse> => </Nfse><NfseCancelamento>
<ConfirmacaoCancelamento><Pedido><InfPedidoCancelamento>CodigoCancelamento={};</InfPedidoCancelamento></Pedido>
</ConfirmacaoCancelamento></NfseCancelamento> | )";
  // The issuer by its other name; beside its identification; with a CPF, who then has no number; the company itself. A
  // request without a code cancels nothing, retained is the digit alone, and nothing stands in for the taker's city.
  Importar(Substituir(pedido, "{}", "3") + "<DadosP => <P | </DadosP => </P");
  Importar(Substituir(pedido, "{}", "") + "99888777000166 => ");
  Importar("99888777000166 =>  | 44333222000111 => ;Cpf=9 | 42.09102 =>  | Retido=2 => Retido= 1");
  Importar("Cnpj=11222333000181 => Cnpj=;Cpf=123 | 99888777000166 => 11222333000181");
  EXPECT_EQ(Tabela("SELECT COD_SIT, VL_DOC, DT_EXE_SERV, CHV_NFSE, TEMISSRETIDO, (SELECT COUNT(*) FROM ES02_REGA17R "
                   "WHERE IDREGA100 = A.IDREGA100), (SELECT MAX(MUNICIPIODEVISS) FROM ES02_REGA170 WHERE IDREGA100 = "
                   "A.IDREGA100), NOME, CNPJ, CPF, COD_MUN FROM ES02_REGA100 A JOIN ES02_REG0150 USING (COD_PART) "
                   "ORDER BY IDREGA100"),
            "2|0|-||0|0|-|Sul|99888777000166||4115200\n0|300|2026-03-15| AB |1|6|42.09102|Sul|44333222000111||4115200\n"
            "0|300|2026-03-15| AB |0|0||Sul|||4115200\n0|300|2026-03-15| AB |0|0|42.09102|Aurora||123|4209102");
}

TEST_F(TELOTECH, NotaDaEmpresaOuNao) {
  EXPECT_EQ(Importar(""), "10 [1 1]");
  EXPECT_EQ(Importar("Cnpj=11222333000181 => Cnpj=1"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar(kSemNota202), "00 ;");
  EXPECT_EQ(Importar("", "<Lista>{}</Lista>"), "00 ;");
  EXPECT_EQ(Importar("Iss=15 => Iss=x"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("", "{}<"), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::elotech
