#include "NotaNacional202.h"

namespace impnfse::testes::elotech {

// What makes the national note one of this vendor's: the issuer in the declaration, known twice, and three lines beside
// the note's values. What other vendors read of the note stays in it.
const String kElotech = R"(<PrestadorServico> => <DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico>
<DadosPrestador><CpfCnpj><Cnpj>44333222000111</Cnpj></CpfCnpj> | </PrestadorServico>
<DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico> => </DadosPrestador> | Rua A</Endereco> => Rua A</Endereco>
<Numero>20</Numero><Complemento>Sala</Complemento><Bairro>Zona 7</Bairro><CidadeNome>Maringá</CidadeNome>
 | 4106902 => 41.15200 | 4209102 => 42.09102 | </Servico> => <ListaItensServico><ItemServico><Quantidade>3</Quantidade>
<ItemListaServico>0105</ItemListaServico><Descricao>Aula</Descricao><ValorUnitario>50.5</ValorUnitario><ValorDesconto>4
</ValorDesconto></ItemServico><ItemServico><Quantidade>0.5</Quantidade><ValorUnitario>97</ValorUnitario></ItemServico>
<ItemServico><Descricao>Aula</Descricao></ItemServico></ListaItensServico></Servico> | )";

struct TELOTECH : TTesteNacional202 {
  String Importar(const String& trocas, const String& raiz = "{}") {
    return ImportarNotas({kElotech + trocas}, raiz, "61");
  }
};

TEST_F(TELOTECH, CadaLinhaRepeteOsValoresDaNota) {
  Importar(kRetencoes202 + " | Retido>2 => Retido>1");
  EXPECT_EQ(Campos() + "\n" + Retencoes(),
            "1|4115200|Rua A|1058|| AB |2026-03-15|2026-03-15|300.0000|0.0000|15.0000|0.0000|0.0000|50.5000|4.0000|"
            "280.0000|15.0000|5.0000|7.0000|01.05||Aula\n1010|280.0000|15.0000|5.0000\n0714|280.0000|4.0000|0.0000\n"
            "0910|280.0000|3.0000|0.0000\n1101|280.0000|1.0000|0.0000\n1102|280.0000|2.0000|0.0000\n1103|280.0000|"
            "5.0000|0.0000");
  EXPECT_EQ(Documentos("NUM_ITEM, VL_ITEM, QTD, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, DEDUCAOISS, I.IDREG0200, VL_PIS, "
                       "VL_COFINS, NUM, COMPL, BAIRRO, MUNICIPIO"),
            "1|50.5000|3.0000|280.0000|15.0000|5.0000|7.0000|1|1.0000|2.0000|20||Zona 7|Maringá\n1|97.0000|0.5000|"
            "280.0000|15.0000|5.0000|7.0000|2|1.0000|2.0000|20||Zona 7|Maringá\n1|0.0000|0.0000|280.0000|15.0000|"
            "5.0000|7.0000|1|1.0000|2.0000|20||Zona 7|Maringá");
}

TEST_F(TELOTECH, CancelamentoRetencaoEPartes) {
  const String pedido = kRetencoes202 + R"( | Retido>2 => Retido>1 | </Nfse> => </Nfse><NfseCancelamento>
<ConfirmacaoCancelamento><Pedido><InfPedidoCancelamento><CodigoCancelamento>{}</CodigoCancelamento>
</InfPedidoCancelamento></Pedido></ConfirmacaoCancelamento></NfseCancelamento> | )";
  // The issuer by its other name; beside its identification; with a CPF, who then has no number; the company itself. A
  // request without a code cancels nothing, retained is the digit alone, and nothing stands in for the taker's city.
  Importar(Substituir(pedido, "{}", "3") + "<DadosP => <P | </DadosP => </P");
  Importar(Substituir(pedido, "{}", "") + "99888777000166 => ");
  Importar("99888777000166 =>  | 44333222000111</Cnpj => </Cnpj><Cpf>9</Cpf | 42.09102 =>  | Retido>2 => Retido> 1");
  Importar("Cnpj>11222333000181</Cnpj => Cnpj/><Cpf>123</Cpf | 99888777000166 => 11222333000181");
  EXPECT_EQ(Tabela("SELECT COD_SIT, VL_DOC, DT_EXE_SERV, CHV_NFSE, TEMISSRETIDO, (SELECT COUNT(*) FROM ES02_REGA17R "
                   "WHERE IDREGA100 = A.IDREGA100), (SELECT MAX(MUNICIPIODEVISS) FROM ES02_REGA170 WHERE IDREGA100 = "
                   "A.IDREGA100), NOME, CNPJ, CPF, COD_MUN FROM ES02_REGA100 A JOIN ES02_REG0150 USING (COD_PART) "
                   "ORDER BY IDREGA100"),
            "2|0.0000|-||0|0|-|Sul|99888777000166||4115200\n0|300.0000|2026-03-15| AB |1|6|42.09102|Sul|"
            "44333222000111||4115200\n0|300.0000|2026-03-15| AB |0|0||Sul|||4115200\n0|300.0000|2026-03-15| AB |0|0|"
            "42.09102|Aurora||123|4209102");
}

TEST_F(TELOTECH, NotaDaEmpresaOuNao) {
  EXPECT_EQ(Importar("") + Importar("Cnpj>11222333000181 => Cnpj>1"), "true [1]false alheia\nalheia\n");
  EXPECT_EQ(Importar(kSemNota202) + Importar("", "<Lista>{}</Lista>"), "false \nfalse \n");
  EXPECT_EQ(Importar("Iss>15 => Iss>x") + Importar("", "{}<"), "false estrutura\nfalse estrutura\n");
}

}  // namespace impnfse::testes::elotech
