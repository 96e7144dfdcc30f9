#include "Apoio.h"

namespace impnfse::testes::digifred {

// A note of the branch to a taker in Curitiba, who retains the ISS.
constexpr std::string_view kNota = R"(<GerarNfseResposta><ListaNfse><CompNfse><Nfse versao='2.02'><InfNfse Id='n'>
Numero=20260900000000000123;CodigoVerificacao=AB;DataEmissao=2026-03-15T10:20:30;<ValoresNfse>BaseCalculo=280;
Aliquota=2.5;ValorIss=14;ValorLiquidoNfse=7;</ValoresNfse><EnderecoPrestadorServico>Endereco=Mar;Numero=5;Bairro=Norte;
CodigoMunicipio=4209102;Uf=;</EnderecoPrestadorServico><OrgaoGerador>CodigoMunicipio=4205407;</OrgaoGerador>
<DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico><Rps>DataEmissao=2026-02-01;</Rps>Competencia=2026-01-01;
<Servico><Valores>ValorServicos=300;ValorDeducoes=9;ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorCsll=5;
OutrasRetencoes=6;DescontoIncondicionado=20;DescontoCondicionado=8;</Valores>IssRetido=1;ItemListaServico=802;
CodigoTributacaoMunicipio=0105;Discriminacao=Aula;CodigoMunicipio=4205407;MunicipioIncidencia=42.04202;</Servico>
<Prestador><CpfCnpj>Cnpj=11222333000181;</CpfCnpj></Prestador><Tomador><IdentificacaoTomador><CpfCnpj>
Cnpj=99888777000166;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Bar;<Endereco>Endereco=Rua A;Numero=10;Bairro=Sul;
CodigoMunicipio=4106902;Uf=PR;</Endereco></Tomador>OptanteSimplesNacional=1;</InfDeclaracaoPrestacaoServico>
</DeclaracaoPrestacaoServico></InfNfse></Nfse></CompNfse></ListaNfse></GerarNfseResposta>)";

struct TDigifred : TTesteComBanco {
  String Importar(const String& trocas) { return ImportarNotas("32", kNota, {trocas}); }
};

TEST_F(TDigifred, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar(""), "10 [0 ]");
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, DT_DOC, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_DESC, A.VL_ISS, VL_PIS_RET, "
                       "VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, MUNICIPIO, UF, ENDERECO, NUM, BAIRRO, "
                       "COD_PAIS, OPTANTESIMPLES, NUM_ITEM, VL_ITEM, I.VL_DESC, QTD, ATIVIDADE, ALIQ_ISS, VL_BC_ISS, "
                       "I.VL_ISS, DEDUCAOISS, CFOPICMS, MUNICIPIODEVISS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(9))"),
            "900000000000123|0|2026-03-15|2026-03-15|AB|280|20|14|1|2|1|Bar|99888777000166||4106902||PR|Rua A|10|Sul|"
            "1058||1|300|20|1|01.05|2.5000|280|14|0|6.933.000|4204202|802|Aula");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280|14|2.5000\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

// The issuer has no name. An empty CNPJ is the number there is, with a CPF beside it too. The ISS goes to the city of
// incidence or to the branch's, never to the taker's. A code with a dot is none.
TEST_F(TDigifred, PartesRetencaoELocalDoISS) {
  const String tomada = "11222333000181 => 44333222000111 | 99888777000166 => 11222333000181 | ";
  Registrar(Filial(kOutraFilial, "PR"));
  for (const auto& trocas :
       {tomada + "IssRetido=1 => IssRetido=2", tomada + "Cnpj=44333222000111 => Cpf=123 | Nacional=1 => Nacional=01",
        tomada + "Cnpj=44333222000111 => Cnpj=;Cpf=456 | 4209102 => 41.06902 | IssRetido=1 => IssRetido=S",
        tomada + "<CpfCnpj>Cnpj=44333222000111;</CpfCnpj> => ",
        String("Cnpj=99888777000166 => Cnpj=;Cpf=789 | 42.04202 => "),
        String("99888777000166 => 11222333000262 | =PR => = | IssRetido=1 => IssRetido= 1")})
    Importar(trocas);
  EXPECT_EQ(Documentos("TEMISSRETIDO, MUNICIPIODEVISS, IND_OPER, A.COD_PART, CNPJ, CPF, "
                       "NOME, Q.COD_MUN, UF, ENDERECO, NUM, BAIRRO, OPTANTESIMPLES, "
                       "(SELECT COUNT(*) FROM ES02_REGA17R T WHERE T.IDREGA100 = A.IDREGA100)"),
            "0|4204202|0|1|44333222000111|||4209102|SC|Mar|5|Norte|S|5\n1|4204202|0|2||123||4209102|SC|Mar|"
            "5|Norte|N|6\n0|4204202|0|3||||0||Mar|5|Norte|S|5\n1|4204202|0|4||||4209102|SC|Mar|5|Norte|S|6\n"
            "1|4205407|1|0|-|-|-|-|-|-|-|-|-|6\n1|4204202|1|5|11222333000262||Bar|4106902|PR|Rua A|10|Sul||6\n"
            "1|4204202|0|6|11222333000181|||4209102|SC|Mar|5|Norte|S|6");
}

// A date may have either form. A note with a cancellation is in force: the layout knows none.
TEST_F(TDigifred, DatasERaiz) {
  Importar("2026-03-15T10:20:30 => 5/3/2026 | <InfNfse => <NfseCancelamento/><InfNfse");
  EXPECT_EQ(Documentos("DT_DOC, COD_SIT"), "2026-03-05|0");
  EXPECT_EQ(Importar("11222333000181 => 9"), "11 !alheia alheia;");
  EXPECT_EQ(Importar("2026-03-15T10:20:30 => 15.03.2026"), "11 !alheia alheia;");
  EXPECT_EQ(Importar("<InfNfse => <InfNfse/><X | </InfNfse => </X"), "10 ");
  EXPECT_EQ(Importar("ValorIss=14 => ValorIss=x"), "11 !estrutura ");
  EXPECT_EQ(Importar("GerarNfseResposta => GerarNfse"), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar("</InfNfse> => "), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::digifred
