#include "Apoio.h"

namespace impnfse::testes::sigcorp {

constexpr std::string_view kNota = R"(<ns2:NFe xmlns:ns2='u'>IEPrestador=;<CPFCNPJPrestador>CNPJ=11222333000181;
</CPFCNPJPrestador><ChaveNFe>NumeroNFe=7;SerieNFe=A;CodigoVerificacao=K;DataEmissaoNFe=2026-03-15;</ChaveNFe>
RazaoSocialPrestador=Aurora;<EnderecoPrestador>Logradouro=Rua B;Cidade=Florianópolis;UF=SC;</EnderecoPrestador>
StatusNFe= ativa ;TributacaoNFe=tributado no prestador;OpcaoSimples=SIM;ValorServicos=300;ValorBase=280;
CodigoServico=1401;AliquotaServicos=5;ValorINSS=3;ValorIR=4;ValorPIS=1;ValorCOFINS=2;ValorCSLL=5;ValorISS=14;
ISSRetido=não;<CPFCNPJTomador>CNPJ=99888777000166;</CPFCNPJTomador>IETomador=90;RazaoSocialTomador=Bar;
<EnderecoTomador>Logradouro=Rua A;NumeroEndereco=10;ComplementoEndereco=S;Bairro=Centro;Cidade=curitiba;UF=PR;
</EnderecoTomador>Discriminacao=Reparo;</ns2:NFe>)";

struct TSIGCORP : TTesteComBanco {
  String Importar(const String& trocas) { return ImportarNotas("21", kNota, {trocas}); }
};

TEST_F(TSIGCORP, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar(""), "10 [0 7]");
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, COD_SIT, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_ISS, VL_PIS_RET, TEMISSRETIDO, NOME, IE, "
                 "Q.COD_MUN, UF, MUNICIPIO, ENDERECO, NUM, COMPL, BAIRRO, VL_ITEM, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, "
                 "ATIVIDADE, MUNICIPIODEVISS, COD_LST"),
      "7|A|0|2026-03-15|K|300|14|0|0|Bar|90|4106902|PR|curitiba|Rua A|10|S|Centro|300|280|14|5|14.01|4205407|1401");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

// What a flag doesn't say counts against the note: cancelled, and retained.
TEST_F(TSIGCORP, SinaisPorExclusaoELocalDoISS) {
  int numero = 10;
  for (const String trocas :
       {"= ativa  => =", "= ativa  => =Inativa", "=não => =NAO",
        "=não => =", "ValorBase=280 => ValorBase=0 | =não => =sim", "no prestador => no tomador",
        "=Florianópolis => =Nenhures", "=SIM => =Sim | 11222333000181 => 9 | CNPJ=99888777000166 => CPF=11222333000181",
        "CNPJ=99888777000166 => CPF= | =curitiba => =Nenhures | no prestador => x",
        "11222333000181 => 9 | CNPJ=99888777000166 => CPF=11222333000181",
        "11222333000181 => 8 | CNPJ=99888777000166 => CPF=11222333000181",
        "UF=PR => UF= PR  | no prestador => no tomador"})
    Importar(fmt::format("NumeroNFe=7 => NumeroNFe={} | {}", numero++, trocas));
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, COD_SIT, TEMISSRETIDO, VL_BC_ISS, MUNICIPIODEVISS, A.COD_PART, Q.COD_MUN"),
      "10|A|2|0|-|-|1|4106902\n11|A|2|0|-|-|1|4106902\n12|A|0|1|280|4205407|1|4106902\n13|A|0|1|280|4205407|1|4106902\n"
      "14|A|0|1|300|4205407|1|4106902\n15|A|0|0|280|4106902|1|4106902\n16|A|0|0|280|4106902|1|4106902\n"
      "17|A|0|0|280|4205407|2|4205407\n18|A|0|0|280|4205407|0|-\n19|A|0|0|280|4205407|2|4205407\n"
      "20|A|0|0|280|4205407|3|4205407\n21|A|0|0|280|4106902|1|4106902");
  EXPECT_EQ(Tabela("SELECT CNPJ, CPF, IE, OPTANTESIMPLES FROM ES02_REG0150"),
            "99888777000166||90|\n|9|ISENTO|N\n|8|ISENTO|S");
  EXPECT_EQ(Tabela("SELECT VL_BC, VL_IMPOSTO FROM ES02_REGA17R WHERE COD_RECEITA = '1010'"), "280|14\n280|14\n0|14");
  EXPECT_EQ(Importar("ValorISS=14 => ValorISS=x"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("11222333000181 => 9"), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar("ns2:NFe => ns4:NFe"), "00 ;");
}

}  // namespace impnfse::testes::sigcorp
