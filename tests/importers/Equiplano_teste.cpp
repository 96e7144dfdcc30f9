#include "Apoio.h"

namespace impnfse::testes::equiplano {

// A note of the branch to a taker in Curitiba, who retains the ISS.
constexpr std::string_view kNota = R"(<nfs>nrNfs=201900000000000123;cdAutenticacao=AB;dtEmissaoNfs=2026-03-15;
isOptanteSimplesNacional=;isIssRetido= sim ;isNfsCancelada=Não;isNfsCartaCorrecao=Sim;<servicos><servico>nrServico=1401;
dsDiscriminacaoServico=Reparo;vlAliquota=5;vlDeducao=7;vlServico=300;</servico></servicos>vlCofins=2;
vlAliquotaCofins=0.2;vlCsll=5;vlAliquotaCsll=0.5;vlInss=3;vlAliquotaInss=0.3;vlIrpj=4;vlAliquotaIrpj=0.4;vlPis=1;
vlAliquotaPis=0.1;vlBaseCalculo=293;vlTotalNota=310;vlImposto=15;<prestadorServico>nmPrestador=Aurora;
nrDocumento=11222333000181;dsEndereco=Rua B;nrEndereco=5;nmCidade=Floripa;nmBairro=Mar;nmUf=;</prestadorServico>
<tomadorServico>nmTomador=Bar;nrDocumento=99888777000166;dsEndereco=Rua A;nrEndereco=10;nmCidade=Curitiba;
nmBairro=Centro;nmUf=;cdIbge=4106902;</tomadorServico></nfs>)";

struct TEquiplano : TTesteComBanco {
  String Importar(const std::vector<String>& notas, const String& raiz = "<listaNfs>{}</listaNfs>") {
    return ImportarNotas("49", kNota, notas, raiz);
  }
};

TEST_F(TEquiplano, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({""}), "10 [0 ]");
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_ISS, VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, "
                 "NOME, Q.COD_MUN, UF, MUNICIPIO, ENDERECO, NUM, BAIRRO, VL_ITEM, DEDUCAOISS, VL_BC_ISS, I.VL_ISS, "
                 "ALIQ_ISS, ATIVIDADE, MUNICIPIODEVISS, COD_LST"),
      "900000000000123||2026-03-15|AB|310|15|1|2|1|Bar|4106902|PR|Curitiba|"
      "Rua A|10|Centro|300|7|293|15|5|14.01|4106902|");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|293|15|5\n0714|293|4|0.4000\n0910|293|3|0.3000\n"
            "1101|293|1|0.1000\n1102|293|2|0.2000\n1103|293|5|0.5000");
}

TEST_F(TEquiplano, PalavrasEPartes) {
  const String tomada = "11222333000181 => 5 | 99888777000166 => 11222333000181";
  // A place without a state lends a party without a municipality none.
  Banco().Executar("UPDATE CA06_MUNICIPIO_LINHA SET CODIGOFEDERAL = '0' WHERE CODIGOFEDERAL = '5300108'");
  Importar({"= sim  => =S", "Cancelada=Não => Cancelada= Sim ", tomada,
            tomada + " | Nacional= => Nacional= não Optante | =5; => =55555555000155;",
            "99888777000166 =>  | 4106902 => x"});
  EXPECT_EQ(Documentos("COD_SIT, TEMISSRETIDO, CHV_NFSE, MUNICIPIODEVISS, CPF, CNPJ, Q.COD_MUN, UF, OPTANTESIMPLES"),
            "0|0|AB|4106902||99888777000166|4106902|PR|\n2|0||-||99888777000166|4106902|PR|\n0|1|AB|4106902|5||0||S\n"
            "0|1|AB|4106902||55555555000155|0||N\n0|1|AB|4205407|-|-|-|-|-");
}

TEST_F(TEquiplano, RaizesEErros) {
  EXPECT_EQ(Importar({}), "10 ") << "an empty list counts as imported";
  EXPECT_EQ(Importar({"11222333000181 => 9", ""}), "11 [0 ]alheia;");
  EXPECT_EQ(Importar({""}, "{}"), "10 [0 ]");
  EXPECT_EQ(Importar({"", "vlServico=300 => vlServico=x"}), "11 [0 ]!estrutura ");
  for (const auto* raiz : {"<outra/>", "<nfs>"}) EXPECT_EQ(Importar({}, raiz), "01 !estrutura estrutura;") << raiz;
}

}  // namespace impnfse::testes::equiplano
