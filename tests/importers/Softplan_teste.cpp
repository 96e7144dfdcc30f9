#include "Apoio.h"

namespace impnfse::testes::softplan {

// A note of either generation, its number and its services left open, and a service with its rate and value open.
constexpr std::string_view kAntiga = R"(<ns2:NFPSe xmlns:ns2='u' xmlns:ns3='v'><ns2:InfNFPSe>CodigoVerificacao=AB-1;
NumeroSerie= A-{0} ;NumeroSerieSubst=B-9{0};DataEmissao=2026-03-15T10:00;CFPS=9202;StatusNFPSe=0;<ns3:DadosServico>{1}
BaseCalculo=300;ValorISSQN=10.01;ValorTotalServicos=290;</ns3:DadosServico><Prestador><IdentificacaoPrestador>
CNPJ=11222333000181;</IdentificacaoPrestador>RazaoSocial=Sul;<Endereco>Logradouro=Rua A;NumeroEndereco=1;
ComplementoEndereco=B;Bairro=Centro;<Municipio>CodigoMunicipio=42.09102;NomeMunicipio=Joinville;</Municipio>Pais=249;
</Endereco></Prestador><Tomador><IdentificacaoTomador><DocIdTomador><CPFCNPJ>CNPJ=998887770001{0:02};</CPFCNPJ>
</DocIdTomador></IdentificacaoTomador>RazaoSocial=Bar;<Endereco>Logradouro=Rua C;NumeroEndereco=2;Bairro=Norte;
ComplementoEndereco=D;<Municipio>CodigoMunicipio=41-06902;NomeMunicipio=Curitiba;</Municipio>Pais=1058;</Endereco>
</Tomador></ns2:InfNFPSe></ns2:NFPSe>)";
constexpr std::string_view kServicoAntigo =
    "<ItemServico>CodigoAtividade=10501;DescricaoServico=Aula;Aliquota={};Quantidade=1.5;ValorTotal={};</ItemServico>";
constexpr std::string_view kNova = R"(<xmlNfpse>numeroSerie= A-{0} ;NumeroSerieSubst=B-9{0};codigoVerificacao=AB-1;
dataEmissao=20260315;cfps=9202;statusNFPSe=0;baseCalculo=300;valorISSQN=10.01;valorTotalServicos=290;
cnpjPrestador=11222333000181;razaoSocialPrestador=Sul;logradouroPrestador=Rua A;bairroPrestador=Centro;
nomeMunicipioPrestador=Joinville;ufPrestador=PR;identificacaoTomador=998887770001{0:02};razaoSocialTomador=Bar;
logradouroTomador=Rua C;numeroEnderecoTomador=2;bairroTomador=Norte;codigoMunicipioTomador=41-06902;paisTomador=1058;
<itensServico>{1}</itensServico></xmlNfpse>)";
constexpr std::string_view kServicoNovo =
    "<itemServico>aliquota={};codigoCNAE=10501;descricaoServico=Aula;quantidade=1.5;valorTotal={};</itemServico>";

struct TSoftplan : TTesteComBanco {
  int Numero = 0;

  // Imports one note of each generation, with services of "rate => value", under a number of its own.
  String Importar(const String& servicos, const String& trocas = {}) {
    String saida;
    for (const auto& [nota, servico] : {std::pair(kAntiga, kServicoAntigo), std::pair(kNova, kServicoNovo)}) {
      String itens;
      for (const auto& [aliquota, valor] : Casos(servicos))
        itens += fmt::format(fmt::runtime(servico), aliquota, valor);
      saida += ImportarNotas("53", fmt::format(fmt::runtime(Trocar(String(nota), trocas)), ++Numero, itens), {""});
    }
    return saida;
  }
};

TEST_F(TSoftplan, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar("0.05 => 200"), "10 [0 1]10 [0 2]");
  Importar("0.05 => 200", "11222333000181 => {0} | 998887770001{0:02} => 11222333000181");
  EXPECT_EQ(
      Documentos(
          "IND_OPER, NUM_DOC, SER, DT_DOC, DT_EXE_SERV, CHV_NFSE, COD_SIT, VL_DOC, A.VL_ISS, TEMISSRETIDO, NOME, CNPJ, "
          "CPF, COD_MUN, MUNICIPIO, ENDERECO, NUM, COMPL, BAIRRO, Q.UF, COD_PAIS, NUM_ITEM, VL_ITEM, QTD, ATIVIDADE, "
          "CFOPICMS, CFOPISS, MUNICIPIODEVISS, I.CHAVECONDICAOADICIONAL, COD_LST, CAST(DESCR_ITEM AS VARCHAR(9))"),
      "1|1||2026-03-15|2026-03-15|AB-1|0|290|10.0100|0|Bar|99888777000101||4106902|Curitiba|Rua C|2|D|Norte|PR|"
      "1058|1|200|1.5000|10.501|6.933.000|9202|4106902|||Aula\n1|2||2026-03-15|2026-03-15|AB-1|0|290|10.0100|"
      "0|Bar|99888777000102||4106902||Rua C|2||Norte|PR|1058|1|200|1.5000|10501|6.933.000|9202|4106902|0||Aula\n"
      "0|3||2026-03-15|2026-03-15|AB-1|0|290|10.0100|0|Sul||3|4209102|Joinville|Rua A|1|B|Centro|SC|1058|1|"
      "200|1.5000|10.501|1.933.000|9202|4106902|||Aula\n0|4||2026-03-15|2026-03-15|AB-1|0|290|10.0100|0|Sul||"
      "4|0|Joinville|Rua A|||Centro|PR|1058|1|200|1.5000|10501|2.933.000|9202|4106902|0||Aula");
}

// A rate is a fraction or a percentage. Only since 2018 do the services come to the ISS of the note, cents included.
TEST_F(TSoftplan, AliquotasEISSDeCadaServico) {
  Importar("0.05 => 100 | 5.00 => 100");
  Importar("5 => 33.33 | 5 => 33.33 | 5 => 33.33", "10.01 => 5.00");
  Importar("5 => 100 | 5 => 100", "10.01 => 7");
  Importar("0.00 => 100 | 0.0x => 100 | 0.05,1 => 100 | 0,05 => 100 | 0.5 => 100");
  Importar("0.0125 => 100", "alculo=300 => alculo=0");
  Importar("0 => 100");
  EXPECT_EQ(Importar("x => 100"), Repetir("01 !estrutura estrutura;", 2));
  EXPECT_EQ(Importar("5 => 100", "10.01 => x"), Repetir("01 !estrutura estrutura;", 2));
  EXPECT_EQ(Documentos("NUM_DOC, ALIQ_ISS, VL_BC_ISS, I.VL_ISS"),
            "1|5|100|5\n1|5|100|5\n2|5|100|5\n2|5|100|5.0100\n3|5|33.3300|1.6665\n3|5|33.3300|1.6665\n3|5|33.3300|"
            "1.6665\n4|5|33.3300|1.6700\n4|5|33.3300|1.6700\n4|5|33.3300|1.6600\n5|5|100|5\n5|5|100|5\n6|5|100|5\n6|5|"
            "100|2\n7|0|0|0\n7|0|0|0\n7|0|0|0\n7|0.0500|100|0.0500\n7|0.5000|100|0.5000\n8|0|0|0\n8|0|0|0\n8|0|0|0\n8|"
            "0.0500|100|0.0500\n8|0.5000|100|9.9600\n9|1.2500|100|0\n10|1.2500|100|10.0100\n11|0|0|0\n12|0|0|10.0100");
}

TEST_F(TSoftplan, NumeroSituacaoETomadores) {
  const String doc = "998887770001{0:02}", cpf = "CNPJ=" + doc + " => CPF=7{0} | " + doc + " => 7{0} | 1058 => ";
  Importar("5 => 100", "tatusNFPSe=0 => tatusNFPSe= 100");
  for (const auto& trocas : {cpf + "249", cpf + "249 ", cpf + "-1 | 41-06902 => x", doc + " => "})
    Importar("5 => 100", trocas);
  EXPECT_EQ(Importar("5 => 100", "A-{0} => x | tatusNFPSe=0 => tatusNFPSe=01"), "10 [0 911]10 [0 912]");
  EXPECT_EQ(Importar("5 => 100", "A-{0} => 2147483648"), "10 [0 0]10 [0 0]") << "no stand-in for a number too long";
  EXPECT_EQ(Importar("5 => 100", "11222333000181 => 1"), Repetir("01 !alheia alheia;alheia;", 2));
  const String raiz = "<xmlNfpse> => <R><xmlNfpse> | </xmlNfpse> => </xmlNfpse></R> | NFPSe => Outra";
  EXPECT_EQ(Importar("5 => 100", raiz), "00 ;00 ;") << "another root is no error";
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, CHV_NFSE, A.COD_PART, CNPJ, CPF, COD_PAIS, MUNICIPIODEVISS"),
            "1|2||1|99888777000101||1058|-\n2|2||2|99888777000102||1058|-\n3|0|AB-1|3||73|249|4106902\n4|0|AB-1|4|74||"
            "249|4106902\n5|0|AB-1|5||75|1058|4106902\n6|0|AB-1|6||76|1058|4106902\n7|0|AB-1|7||77|1058|4205407\n"
            "8|0|AB-1|8||78|1058|4205407\n9|0|AB-1|0|-|-|-|4106902\n10|0|AB-1|0|-|-|-|4106902\n"
            "911|0|AB-1|9|99888777000111||1058|4106902\n912|0|AB-1|10|99888777000112||1058|4106902\n"
            "0|0|AB-1|11|99888777000113||1058|4106902\n0|0|AB-1|12|99888777000114||1058|4106902");
}

}  // namespace impnfse::testes::softplan
