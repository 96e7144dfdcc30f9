#include "Apoio.h"

namespace impnfse::testes::prefeituramoderna {

constexpr std::string_view kNota = R"(<nota numero='7' conta='9' serie='S'>tipo_nota=NORMAL;data_emissao=15/3/2026;
codigo_atividade=105;nome_atividade=Aula;ibge_cidade_prestacao=42-02404;base_calculo=90;valor_aliquota=2;valor_nota=100;
valor_iss=1.80;valor_ir=1;valor_pis=2;valor_cofins=3;valor_inss=4;valor_csll=5;valor_liquido=80;<tomador>
razao_social=Bar;inscricao_estadual=25;cpf_cnpj=123.456.789-09;<endereco>logradouro=Rua C;numero=2;bairro=Norte;
edificio=E;apto_loja=D;ibge_cidade=4.106.902;cidade=Curitiba;uf=;</endereco></tomador></nota>)";

struct TPrefeituraModerna : TTesteComBanco {
  String Importar(const std::vector<String>& notas, const String& noArquivo = "") {
    const auto* const raiz = R"(<movimento_economico><prestador><cpf_cnpj>11.222.333/0001-81 </cpf_cnpj></prestador>
<periodos><periodo>{}</periodo></periodos></movimento_economico>)";
    return ImportarNotas("8", kNota, notas, Trocar(raiz, noArquivo));
  }
};

TEST_F(TPrefeituraModerna, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({"NORMAL => RETIDA"}), "10 [0 ]");
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, DT_DOC, DT_EXE_SERV, CHV_NFSE, COD_SIT, VL_DOC, A.VL_ISS, VL_PIS, VL_PIS_RET, "
                 "VL_COFINS_RET, TEMISSRETIDO, NOME, CPF, Q.IE, COD_MUN, MUNICIPIO, ENDERECO, NUM, COMPL, "
                 "BAIRRO, Q.UF, NUM_ITEM, VL_ITEM, QTD, ATIVIDADE, CFOPICMS, CFOPISS, VL_BC_ISS, ALIQ_ISS, I.VL_ISS, "
                 "TPRECOLHIMENTO, MUNICIPIODEVISS, COD_LST, UNID_INV, CAST(DESCR_ITEM AS VARCHAR(9))"),
      "7||2026-03-15|2026-03-15||0|100|1.8000|0|2|3|1|Bar|12345678909|25|"
      "4106902|Curitiba|Rua C|2|D|Norte|PR|1|100|1|1.05|6.933.000||90|2|1.8000|R|4202404||UN|Aula");
  EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R"),
            "1010|90|1.8000|2\n0714|90|1|0\n0910|90|4|0\n1101|90|2|0\n1102|90|3|0\n1103|90|5|0");
}

TEST_F(TPrefeituraModerna, SituacoesDaNota) {
  Registrar(Filial(kOutraFilial));
  Importar({"'7' => '1' | NORMAL => RETIDO", "'7' => '2' | NORMAL => Retido", "'7' => '3' | NORMAL => CANCELADA",
            "'7' => '4' | NORMAL => CANCELADO", "'7' => '5' | calculo=90 => calculo=0 | 42-02404 => "});
  // Only the main branch has a kind of payment. The branch stays that of the file for all of the period.
  Importar({"NORMAL => RETIDA", "'7' => '8' | NORMAL => RETIDA"}, "0001-81 => 0002-62");
  EXPECT_EQ(Documentos(
                "IDFILIAL, NUM_DOC, COD_SIT, VL_DOC, TEMISSRETIDO, VL_BC_ISS, TPRECOLHIMENTO, MUNICIPIODEVISS, (SELECT "
                "COUNT(*) || ' de ' || MAX(VL_BC) FROM ES02_REGA17R X WHERE X.IDREGA100 = A.IDREGA100)"),
            "1|1|0|100|1|90|R|4202404|6 de 90\n1|2|0|100|0|90||4202404|5 de 90\n1|3|2|0|0|-|-|-|-\n1|4|2|0|0|-|-|-|-\n"
            "1|5|0|100|0|0||4205407|5 de 80\n2|7|0|100|1|90||4202404|6 de 90\n2|8|0|100|1|90||4202404|6 de 90");
}

TEST_F(TPrefeituraModerna, APrimeiraNotaDecidePeloPeriodo) {
  // A refused period stays the last error of the file, outside of the list. A taker without a number doesn't get the
  // state of the one before.
  const String semData = "15/3/2026 => ", outro = "<nota => </periodo><periodo><nota | ";
  EXPECT_EQ(Importar({"'7' => '1'", "'7' => '2' | 123.456.789-09 => ", semData, outro + semData, "",
                      outro + "'7' => '3' | 15/3/2026 => 2026-04-01"}),
            "11 [0 ][0 ][0 ][0 ]!alheia ");
  EXPECT_EQ(Importar({"'7' => '4'", outro + outro}), "11 [0 ]!estrutura ") << "a period without notes ends the file";
  EXPECT_EQ(Importar({""}, "11.222.333/0001-81 => 5"), "01 !alheia alheia;");
  EXPECT_EQ(Importar({""}, "movimento_economico => outra"), "01 !estrutura estrutura;");
  EXPECT_EQ(Documentos("NUM_DOC, P.DT_INI, DT_DOC, A.COD_PART, CFOPICMS"),
            "1|2026-03-01|2026-03-15|1|6.933.000\n2|2026-03-01|2026-03-15|0|5.933.000\n"
            "7|2026-03-01|-|1|6.933.000\n3|2026-04-01|2026-04-01|1|6.933.000\n4|2026-03-01|2026-03-15|1|6.933.000");
}

}  // namespace impnfse::testes::prefeituramoderna
