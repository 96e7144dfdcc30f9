#include "Apoio.h"

namespace impnfse::testes::agiliv100 {

// A note of the branch to a taker in Curitiba, who retains the ISS, with one service.
constexpr std::string_view kNota = R"(<Nfse xmlns='urn:agili'>Numero=1202600000000000123;CodigoAutenticidade=AB;
DataEmissao=2026-03-15T10:20:30;<SituacaoNfse>Codigo=1;Descricao=Normal;</SituacaoNfse><DadosPrestador>
RazaoSocial=Aurora;<Endereco>Logradouro=Mar;Numero=5;<Municipio>CodigoMunicipioIBGE=42.09102;Descricao=Joinville;Uf=;
</Municipio><Pais/></Endereco></DadosPrestador><DeclaracaoPrestacaoServico><IdentificacaoPrestador><CpfCnpj>
Cnpj=11222333000181;</CpfCnpj></IdentificacaoPrestador><DadosTomador><IdentificacaoTomador><CpfCnpj>
Cnpj=99888777000166;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Bar;<Endereco>Logradouro=Rua A;Numero=10;
Complemento=Sl;Bairro=Sul;<Municipio>CodigoMunicipioIBGE=4106902;Descricao=Ctba;Uf=PR;</Municipio><Pais>
CodigoPaisBacen=0-105;</Pais></Endereco></DadosTomador>OptanteSimplesNacional=;ISSQNRetido=01;
CodigoAtividadeEconomica=85996;<MunicipioIncidencia>CodigoMunicipioIBGE=42.04202;</MunicipioIncidencia>
ValorServicos=300;ValorDescontos=20;ValorPis=1;ValorCofins=2;ValorInss=3;ValorIrrf=4;ValorCsll=5;ValorOutrasRetencoes=6;
ValorBaseCalculoISSQN=280;AliquotaISSQN=2.5;ValorISSQNCalculado=14;ValorISSQNRecolher=13;ValorDeducaoConstCivil=9;
ValorLiquido=7;<ListaServico><DadosServico>Discriminacao=Aula;CodigoCnae=8599;ItemLei116=802;Quantidade=1,75;
ValorServico=310;ValorDesconto=12;</DadosServico></ListaServico></DeclaracaoPrestacaoServico></Nfse>)";

struct TAgiliV100 : TTesteComBanco {
  String Importar(const String& trocas) { return ImportarNotas("45", kNota, {trocas}); }
};

TEST_F(TAgiliV100, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar(""), "10 [0 ]");
  EXPECT_EQ(Documentos("NUM_DOC, COD_SIT, DT_DOC, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_DESC, A.VL_ISS, VL_PIS_RET, "
                       "VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, MUNICIPIO, UF, ENDERECO, NUM, "
                       "COMPL, BAIRRO, COD_PAIS, OPTANTESIMPLES, NUM_ITEM, VL_ITEM, I.VL_DESC, QTD, ATIVIDADE, "
                       "ALIQ_ISS, VL_BC_ISS, I.VL_ISS, DEDUCAOISS, CFOPICMS, MUNICIPIODEVISS, COD_LST, "
                       "CAST(DESCR_ITEM AS VARCHAR(9))"),
            "1202600000000000123|0|2026-03-15|2026-03-15|AB|300|20|14|1|2|1|Bar|99888777000166||4106902|Ctba|PR|Rua A|"
            "10|Sl|Sul|105||1|310|12|1.7500|8.02|2.5000|280|14|9|6.933.000|4204202|802|Aula");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280|14|2.5000\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

// Of a code the digits count: "02" cancels, and so does the word. No word retains. The issuer is in Simples unless the
// note says no. The city of the ISS is the note's, the taker's, or the branch's.
TEST_F(TAgiliV100, SinaisPartesELocalDoISS) {
  const String tomada = "11222333000181 => 44333222000111 | 99888777000166 => 11222333000181 | ";
  Registrar(Filial(kOutraFilial, "PR"));
  for (const auto& trocas :
       {tomada + "=1;D => = 02;D | 4106902 => x", tomada + "=44333222000111 => =;Cpf=123 | Nacional= => Nacional=não",
        tomada + "44333222000111 => 55333222000111 | Nacional= => Nacional=0 | Normal => Cancelado",
        String("=99888777000166 => = | =01 => =SIM | 42.04202 => 0"),
        String("99888777000166 => 11222333000262 | =PR => = | =01 => =2 | 42.04202 =>  | 4106902 => x | "
               "2026-03-15T10:20:30 => 5/3/2026 | Nacional= => Nacional=Sim")})
    Importar(trocas);
  EXPECT_EQ(Documentos("COD_SIT, TEMISSRETIDO, VL_DOC, CHV_NFSE, DT_DOC, DT_EXE_SERV, MUNICIPIODEVISS, IND_OPER, "
                       "A.COD_PART, CNPJ, CPF, NOME, Q.COD_MUN, MUNICIPIO, UF, COD_PAIS, OPTANTESIMPLES, "
                       "(SELECT COUNT(*) FROM ES02_REGA17R T WHERE T.IDREGA100 = A.IDREGA100)"),
            "2|0|0||2026-03-15|-|-|0|1|44333222000111||Aurora|4209102|Joinville|SC|1058|S|0\n"
            "0|1|300|AB|2026-03-15|2026-03-15|4204202|0|2||123|Aurora|4209102|Joinville|SC|1058|N|6\n2|0|0||2026-03-15|"
            "-|-|0|3|55333222000111||Aurora|4209102|Joinville|SC|1058|N|0\n0|0|300|AB|2026-03-15|2026-03-15|4106902|1|"
            "0|-|-|-|-|-|-|-|-|5\n0|0|300|AB|2026-03-05|2026-03-05|4205407|1|4|11222333000262||Bar|0|Ctba||105||5\n"
            "0|0|300|AB|2026-03-05|2026-03-05|4205407|0|5|11222333000181||Aurora|4209102|Joinville|SC|1058|S|5");
}

// Several services: each has the ISS of its own value and an activity of its own, and the whole note's deduction.
TEST_F(TAgiliV100, VariosServicos) {
  Importar("</DadosServico> => </DadosServico><DadosServico>ItemLei116=0105;ValorServico=20.2;</DadosServico>");
  EXPECT_EQ(Documentos("A.VL_ISS, NUM_ITEM, VL_ITEM, I.VL_DESC, QTD, VL_BC_ISS, I.VL_ISS, DEDUCAOISS, ATIVIDADE"),
            "14|1|310|12|1.7500|310|7.7500|9|8.02\n14|2|20.2000|0|0|20.2000|0.5100|9|01.05");
}

TEST_F(TAgiliV100, ARaizBastaAoArquivo) {
  EXPECT_EQ(Importar("11222333000181 => 9"), "11 !alheia alheia;");
  EXPECT_EQ(Importar("2026-03-15T10:20:30 => "), "11 !alheia alheia;");
  EXPECT_EQ(Importar("Calculado=14 => Calculado=x"), "11 !estrutura ");
  EXPECT_EQ(Importar("<Nfse => <Lista><Nfse | </Nfse> => </Nfse></Lista>"), "00 ;");
  EXPECT_EQ(Importar("</Nfse> => "), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::agiliv100
