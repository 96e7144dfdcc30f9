#include "Apoio.h"

namespace impnfse::testes::agili {

// A note of the branch to a taker in Curitiba, who retains the ISS, with one service.
constexpr std::string_view kNota = R"(<CompNfse><Nfse>Numero=20260900000000000123;DataDeclaracao=2026-02-01;
DataEmissao=2026-03-15T10:20:30;<Status>Codigo=1;Descricao=Normal;</Status><MunicipioIncidencia>CodigoIbge=42.09102;
</MunicipioIncidencia><IssRetido>Codigo=sim;Descricao=Reter;</IssRetido>CodigoAutenticidade=AB;<Prestador><CpfCnpj>
Cnpj=11222333000181;</CpfCnpj>RazaoSocial=Aurora;InscricaoEstadual=50;<Endereco>Endereco=Mar;<Municipio>
CodigoIbge=4209102;Nome=Joinville;</Municipio>Uf=;CodigoPaisBacen=0;</Endereco></Prestador><Tomador><CpfCnpj>
Cnpj=99888777000166;</CpfCnpj>InscricaoEstadual=90;RazaoSocial=Bar;<Endereco>TipoLogradouro=R;Endereco=Rua A;Numero=10;
Complemento=Sl;Bairro=Sul;<Municipio>CodigoIbge=4106902;Nome=Ctba;</Municipio>Uf=PR;CodigoPaisBacen=105;</Endereco>
</Tomador><DeclaracaoPrestacaoServico><OptanteSimplesNacional>Codigo=8;Descricao=Opta;</OptanteSimplesNacional>
<TributacaoMunicipio>Codigo=0105;</TributacaoMunicipio><Servico>Discriminacao=Aula;Quantidade=1,75;ValorServico=310;
Desconto=12;<ItemLei116>Codigo=802;</ItemLei116></Servico></DeclaracaoPrestacaoServico><ValoresNfse>
ValorTotalServicos=300;Descontos=20;<RetencoesTributarias>ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorCsll=5;
</RetencoesTributarias>ValorLiquido=7;DeducaoConstrucaoCivil=9;BaseCalculo=280;Aliquota=2.5;ValorIss=14;
ValorIssRecolher=13;</ValoresNfse></Nfse></CompNfse>)";
const String kRaiz = "<ConsultarNfseFaixaResposta><ListaNfse>{}</ListaNfse></ConsultarNfseFaixaResposta>";

struct TAgili : TTesteComBanco {
  String Importar(const std::vector<String>& notas, const String& raiz = kRaiz) {
    return ImportarNotas("45", kNota, notas, raiz);
  }
};

TEST_F(TAgili, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({""}), "10 [0 ]");
  EXPECT_EQ(
      Documentos("NUM_DOC, COD_SIT, DT_DOC, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_DESC, A.VL_ISS, VL_PIS_RET, "
                 "VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, MUNICIPIO, UF, ENDERECO, NUM, COMPL, "
                 "BAIRRO, COD_PAIS, OPTANTESIMPLES, NUM_ITEM, VL_ITEM, I.VL_DESC, QTD, ATIVIDADE, ALIQ_ISS, "
                 "VL_BC_ISS, I.VL_ISS, DEDUCAOISS, CFOPICMS, MUNICIPIODEVISS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(9))"),
      "900000000000123|0|2026-03-15|2026-03-15|AB|280|20|14|1|2|1|Bar|99888777000166|90|4106902|Ctba|PR|Rua A|10|Sl|"
      "Sul|105||1|310|12|1.7500|01.05|2.5000|280|14|0|6.933.000|4209102|802|Aula");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280|14|2.5000\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
}

// Cancelled is a 2 or the word, each by itself, and of such a note the head remains. Retained is a 1 or the word, but
// only in the place of the code. An issuer who isn't in Simples counts as one who is. A party's code with a dot is
// none. The city of the ISS is the note's, the taker's, or the branch's.
TEST_F(TAgili, SinaisPartesELocalDoISS) {
  const String tomada = "11222333000181 => 44333222000111 | 99888777000166 => 11222333000181 | ";
  Registrar(Filial(kOutraFilial, "PR"));
  Importar({tomada + "=8 => =0 | Codigo=1; => Codigo=2; | 4106902 => x", "Normal => cancelado",
            tomada + "Cnpj=44333222000111 => Cnpj=;Cpf=123 | =Opta => =não | =420 => =42.0 | Normal => Cancelada",
            "Cnpj=99888777000166 => Cnpj= | =sim => =1 | 42.09102 => 0 | 4106902 => x",
            "99888777000166 => 11222333000262 | Uf=PR => Uf= | =sim;Descricao=Reter => =2;Descricao=SIM | "
            "42.09102 =>  | 2026-03-15T10:20:30 => 5/3/2026"});
  EXPECT_EQ(
      Documentos("COD_SIT, TEMISSRETIDO, VL_DOC, CHV_NFSE, DT_DOC, DT_EXE_SERV, MUNICIPIODEVISS, IND_OPER, "
                 "A.COD_PART, CNPJ, CPF, NOME, IE, Q.COD_MUN, MUNICIPIO, UF, COD_PAIS, OPTANTESIMPLES, "
                 "(SELECT COUNT(*) FROM ES02_REGA17R T WHERE T.IDREGA100 = A.IDREGA100)"),
      "2|0|0||2026-03-15|-|-|0|1|44333222000111||Aurora|50|4209102|Joinville|SC|1058|S|0\n2|0|0||2026-03-15|-|-|1|2|"
      "99888777000166||Bar|90|4106902|Ctba|PR|105||0\n0|1|280|AB|2026-03-15|2026-03-15|4209102|0|3||123|Aurora|50|0|"
      "Joinville||1058|S|6\n0|1|280|AB|2026-03-15|2026-03-15|4205407|1|0|-|-|-|-|-|-|-|-|-|6\n"
      "0|0|280|AB|2026-03-05|2026-03-05|4106902|1|4|11222333000262||Bar|90|4106902|Ctba|PR|105||5\n"
      "0|0|280|AB|2026-03-05|2026-03-05|4106902|0|5|11222333000181||Aurora|50|4209102|Joinville|SC|1058|N|5");
}

// Several services: each has the ISS of its own value, rounded to the cent, and the note keeps the one that it states.
TEST_F(TAgili, VariosServicos) {
  Importar({"</Servico> => </Servico><Servico>ValorServico=20.2;</Servico><Servico>ValorServico=10.19;</Servico>"});
  EXPECT_EQ(Documentos("A.VL_ISS, NUM_ITEM, VL_ITEM, I.VL_DESC, QTD, VL_BC_ISS, I.VL_ISS, ATIVIDADE, COD_LST"),
            "14|1|310|12|1.7500|310|7.7500|01.05|802\n14|2|20.2000|0|0|20.2000|"
            "0.5100|01.05|\n14|3|10.1900|0|0|10.1900|0.2500|01.05|");
}

TEST_F(TAgili, ARaizBastaAoArquivo) {
  EXPECT_EQ(Importar({}), "10 ");
  EXPECT_EQ(Importar({"11222333000181 => 9", ""}), "11 [0 ]alheia;");
  EXPECT_EQ(Importar({"2026-03-15T10:20:30 => 2026-02-30"}), "11 !alheia alheia;");
  EXPECT_EQ(Importar({"", "ValorIss=14 => ValorIss=x", ""}), "11 [0 ]!estrutura ");
  EXPECT_EQ(Importar({""}, Substituir(kRaiz, "Faixa", "")), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar({"<Nfse> => "}), "01 !estrutura estrutura;");
}

}  // namespace impnfse::testes::agili
