#include "Apoio.h"

namespace impnfse::testes::abase {

constexpr std::string_view kNota = R"(<Nfse xmlns='http://exemplo'><InfNfse>Numero=7;CodigoVerificacao=K;
DataEmissao=2026-03-15T08:00;Status=NORMAL;<Servicos>{}</Servicos><PrestadorServico><IdentificacaoPrestador><CpfCnpj>
Cnpj=11222333000181;</CpfCnpj></IdentificacaoPrestador>RazaoSocial=Aurora;<Endereco>Endereco=Rua B;Numero=9;
Bairro=Norte;Cidade=Joinville;Estado=SC;</Endereco></PrestadorServico><TomadorServico><IdentificacaoTomador><CpfCnpj>
Cnpj=99888777000166;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Bar;<Endereco>Endereco=Rua A;Numero=10;Bairro=Sul;
Cidade=curitiba;Estado=PR;</Endereco></TomadorServico><OrgaoGerador>CodigoMunicipio=2404;Uf=SC;</OrgaoGerador></InfNfse>
</Nfse>)";
const String kServico = R"(<Servico>ItemListaServico=1401;CodigoTributacaoMunicipio=1402;Discriminacao=Reparo;
MunicipioPrestacaoServico=4106902;<Valores>ValorServicos=300;IssRetido=2;BaseCalculo=280;Aliquota=5;ValorLiquidoNfse=9;
ValorIss=14;ValorInss=3;ValorIr=4;ValorPis=1;ValorCofins=2;ValorCsll=6;DescontoCondicionado=8;DescontoIncondicionado=20;
</Valores></Servico>)";

struct TAbase : TTesteComBanco {
  // A service is told by what it replaces in the usual one.
  String Importar(const String& trocas, const std::vector<String>& servicos = {""}) {
    String linhas;
    for (const auto& servico : servicos) linhas += Trocar(kServico, servico);
    return ImportarNotas("31", Substituir(kNota, "{}", linhas), {trocas});
  }
};

// The totals are sums of the lines, and only a line that is retained itself has a row of ISS.
TEST_F(TAbase, CadaCampoNoSeuLugar) {
  const String outro =
      "=1401; => =0802; | =1402; => =803; | Reparo => Curso | =300 => =50.25 | Retido=2 => Retido=S | "
      "=280 => =48 | =5; => =2; | =14; => =0.96; | =20; => =2.25;";
  EXPECT_EQ(Importar("", {"", outro}), "10 [0 7]");
  EXPECT_EQ(Documentos("FIRST 1 IND_OPER, NUM_DOC, SER, COD_SIT, DT_DOC, DT_EXE_SERV, IND_PGTO, CHV_NFSE, VL_DOC, "
                       "A.VL_DESC, A.VL_ISS, VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, "
                       "MUNICIPIO, ENDERECO, NUM, BAIRRO, UF, COD_PAIS"),
            "1|7||0|2026-03-15|2026-03-15|0|K|350.2500|22.2500|14.9600|0|0|1|Bar|99888777000166||4106902|"
            "curitiba|Rua A|10|Sul|PR|1058");
  EXPECT_EQ(Documentos("NUM_ITEM, I.CHAVECONDICAOADICIONAL, VL_ITEM, I.VL_DESC, QTD, ATIVIDADE, VL_BC_ISS, I.VL_ISS, "
                       "ALIQ_ISS, CFOPICMS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(20))"),
            "1|0|300|20|1|14.02|280|14|5|6.933.000|1401|Reparo\n"
            "1|1|50.2500|2.2500|1|8.03|48|0.9600|2|6.933.000|0802|Curso");
  EXPECT_EQ(Tabela("SELECT FIRST 7 COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R"),
            "0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|6|0\n1010|48|0.9600|2\n0714|48|4|0");
}

// A service with a base that can't be read: no base, a message, and its taxes are taken from its value.
TEST_F(TAbase, BaseIlegivelViraMensagem) {
  EXPECT_EQ(Importar("", {"=280 => =isento | Retido=2 => Retido=1", "", "=280 => =1,2.3.4,5"}), "10 [0 7]");
  EXPECT_EQ(Documentos("TEMISSRETIDO, VL_BC_ISS"), "1|0\n1|280\n1|0");
  EXPECT_EQ(Tabela("SELECT VL_BC, COUNT(*) FROM ES02_REGA17R GROUP BY 1"), "280|5\n300|11");
  EXPECT_EQ(Tabela("SELECT COUNT(*) FROM ES02_REG0000MSG JOIN ES02_REGA100 ON IDREG = IDREGA100"), "2");
  EXPECT_EQ(Importar("", {"=280 => =x | ValorServicos=300 => ValorServicos=x"}), "01 !estrutura estrutura;");
}

// Cancelled is "2" or "SIM" in any letters; retained is "1" or a capital S. The place of the service has no state,
// that of the note has one, and the branch stands in.
TEST_F(TAbase, SituacaoRetencaoELocalDoISS) {
  int numero = 10;
  for (const String trocas :
       {"=NORMAL => =sim", "=NORMAL => =2", "=NORMAL => = 2", "=NORMAL => =CANCELADA", "Retido=2 => Retido=1",
        "Retido=2 => Retido=s", "=4106902 => =5407", "=4106902 => =42.05407", "=4106902 => =0 | =2404 => =4209102",
        "=4106902 =>  | =2404 => =0"})
    Importar(fmt::format("Numero=7 => Numero={} | {}", numero++, trocas));
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, VL_DOC, DT_EXE_SERV, CHV_NFSE, TEMISSRETIDO, MUNICIPIODEVISS"),
            "10|2|0|-||0|-\n11|2|0|-||0|-\n12|0|300|2026-03-15|K|0|4106902\n13|0|300|2026-03-15|K|0|4106902\n"
            "14|0|300|2026-03-15|K|1|4106902\n15|0|300|2026-03-15|K|0|4106902\n16|0|300|2026-03-15|K|0|5407\n"
            "17|0|300|2026-03-15|K|0|4202404\n18|0|300|2026-03-15|K|0|4209102\n19|0|300|2026-03-15|K|0|4205407");
}

// An unknown issuer takes the taker's name and address, and its city is looked for in the issuer's own state: Curitiba,
// in Santa Catarina, is Curitibanos.
TEST_F(TAbase, EmitenteNovoTemONomeDoTomador) {
  const String tomada = "Cnpj=11222333000181 => Cpf=123 | 99888777000166 => 11222333000181";
  for (const auto* const trocas : {"", " | =SC; => =;"}) EXPECT_EQ(Importar(tomada + trocas), "10 [1 7]");
  EXPECT_EQ(Tabela("SELECT NOME, CPF, CNPJ, COD_MUN, MUNICIPIO, ENDERECO, NUM, BAIRRO, UF FROM ES02_REG0150"),
            "Bar|123||4204806|curitiba|Rua A|10|Sul|SC\nBar|123||4106902|curitiba|Rua A|10|Sul|PR");
  EXPECT_EQ(Importar("99888777000166 => 11222333000181"), "10 [0 7][1 7]");
  EXPECT_EQ(Tabela("SELECT DISTINCT VL_DOC, VL_DESC, VL_ISS FROM ES02_REGA100"), "300|20|14");
  EXPECT_EQ(Importar("11222333000181 => 9"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar("InfNfse> => Inf>"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar("Nfse => NFSE"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("</Nfse> => "), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::abase
