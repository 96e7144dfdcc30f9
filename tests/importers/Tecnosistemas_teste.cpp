#include "Apoio.h"

namespace impnfse::testes::tecnosistemas {

// A note of two services. It is cancelled, which this layout imports as one in force.
constexpr std::string_view kNota = R"(<CompNfse><Nfse><InfNfse>Numero=1202600000000123;CodigoVerificacao=AB-1;
DataEmissao=2026-03-15;<ValoresNfse>BaseCalculo=90;Aliquota=6;ValorIss=7;</ValoresNfse><EnderecoPrestadorServico>
CodigoMunicipio=42.05407;</EnderecoPrestadorServico><DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico><Servico>
<tcDadosServico><Valores>ValorServicos=100;ValorDeducoes=5;ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorCsll=5;
ValorIss=10;Aliquota=2;DescontoIncondicionado=8;</Valores>IssRetido=1;ItemListaServico=0105;Discriminacao=Aula;
MunicipioIncidencia=42.02404;CodigoMunicipio=4216602;</tcDadosServico><tcDadosServico><Valores>ValorServicos=200;
ValorPis=30;ValorIss=20;</Valores>IssRetido=2;MunicipioIncidencia=0;CodigoMunicipio=42.09102;</tcDadosServico></Servico>
<Prestador><CpfCnpj>Cnpj=11222333000181;</CpfCnpj>RazaoSocial=Loja;</Prestador><Tomador><IdentificacaoTomador><CpfCnpj>
Cnpj=99888777000166;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Bar;<Endereco>CodigoMunicipio=41.06902;CodigoPais=1058;
</Endereco></Tomador>NaturezaOperacao=N1;</InfDeclaracaoPrestacaoServico></DeclaracaoPrestacaoServico></InfNfse></Nfse>
<NfseCancelamento><Confirmacao><Pedido><InfPedidoCancelamento>CodigoCancelamento=1;</InfPedidoCancelamento></Pedido>
</Confirmacao></NfseCancelamento></CompNfse>)";

struct TTecnosistemas : TTesteComBanco {};

TEST_F(TTecnosistemas, ServicosDocumentosEParticipantes) {
  EXPECT_EQ(
      ImportarNotas(
          "27", kNota,
          {"",
           // One Servicos; a taken note.
           "<Servico> => <Servicos> | </Servico> => </Servicos> | tcD => TcD | 11222333000181 => 9 | "
           "99888777000166 => 11222333000181",
           // Many Servico; a flag that isn't the digit alone; a taker without a number, who is no participant.
           "</tcDadosServico><tcD => </Servico><Servico><tcD | <tcDadosServico> =>  | </tcDadosServico> =>  | "
           "IssRetido=1 => IssRetido= 1 | 99888777000166 => ",
           // No service; a blank Cnpj and a foreign address.
           "<Servico> => <Servico/><Outro> | </Servico> => </Outro> | 1058 => 249-6 | 99888777000166 =>  ;Cpf=123",
           // ISS retained, but none; the company bills itself, and is the participant of either side.
           "ValorIss=10 => ValorIss=0 | 99888777000166 => 11222333000181",
           // A foreign note; no note at all.
           "11222333000181 => 9", "InfNfse => Inf"},
          "<ConsultarNfseRpsResposta><ListaNfse>{}</ListaNfse></ConsultarNfseRpsResposta>"),
      Trocar("11 [0 N][1 N][0 N][0 N][0 N][1 N]!alheia alheia;", "N => 1202600000000123"));
  EXPECT_EQ(Tabela("SELECT COD_SIT, IND_OPER, VL_DOC, TEMISSRETIDO, (SELECT COUNT(*) FROM ES02_REGA170 I WHERE "
                   "I.IDREGA100 = A.IDREGA100), NOME, CNPJ, CPF, IE, COD_MUN, UF, COD_PAIS FROM ES02_REGA100 A "
                   "LEFT JOIN ES02_REG0150 USING (COD_PART) ORDER BY IDREGA100"),
            "0|1|292|1|2|Bar|99888777000166||ISENTO|4106902|PR|1058\n0|0|292|1|2|Loja||9|ISENTO|4205407|SC|"
            "1058\n0|1|292|0|2|-|-|-|-|-|-|-\n0|1|0|0|0|Bar||123|ISENTO|4106902|PR|2496\n0|1|292|0|2|Bar|"
            "11222333000181||ISENTO|4106902|PR|1058\n0|0|292|0|2|Loja|11222333000181||ISENTO|4205407|SC|1058");
  EXPECT_EQ(
      Documentos("FIRST 2 NUM_DOC, CHV_NFSE, A.VL_DESC, A.VL_ISS, NUM_ITEM, VL_ITEM, I.VL_DESC, VL_BC_ISS, I.VL_ISS, "
                 "ALIQ_ISS, DEDUCAOISS, ATIVIDADE, CFOPICMS, MUNICIPIODEVISS, TPRECOLHIMENTO, I.AUX1, COD_LST"),
      "202600000000123|AB-1|8|7|1|100|8|100|10|2|5|01.05|6.933.000|4202404|1|1|0105\n"
      "202600000000123|AB-1|8|7|2|200|0|200|20|0|0||6.933.000|4209102|2|1|");
  EXPECT_EQ(Tabela("SELECT FIRST 6 COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R"),
            "1010|90|10|6\n0714|90|4|0\n0910|90|3|0\n1101|90|31|0\n1102|90|2|0\n1103|90|5|0");
}

}  // namespace impnfse::testes::tecnosistemas
