#include "Apoio.h"

namespace impnfse::testes::prefeituramoderna {

constexpr std::string_view kNota = R"(<nota numero='7' conta='9' serie='S'><tipo_nota>NORMAL</tipo_nota>
<data_emissao>15/3/2026</data_emissao><codigo_atividade>105</codigo_atividade><nome_atividade>Aula</nome_atividade>
<ibge_cidade_prestacao>42-02404</ibge_cidade_prestacao><base_calculo>90</base_calculo><valor_aliquota>2</valor_aliquota>
<valor_nota>100</valor_nota><valor_iss>1.80</valor_iss><valor_ir>1</valor_ir><valor_pis>2</valor_pis>
<valor_cofins>3</valor_cofins><valor_inss>4</valor_inss><valor_csll>5</valor_csll><valor_liquido>80</valor_liquido>
<tomador><razao_social>Bar</razao_social><inscricao_estadual>25</inscricao_estadual><cpf_cnpj>123.456.789-09</cpf_cnpj>
<endereco><logradouro>Rua C</logradouro><numero>2</numero><bairro>Norte</bairro><edificio>E</edificio>
<apto_loja>D</apto_loja><ibge_cidade>4.106.902</ibge_cidade><cidade>Curitiba</cidade><uf/></endereco></tomador></nota>)";

class TPrefeituraModerna : public TTesteComBanco {
 protected:
  // Imports a file whose notes are told by what each replaces in the valid one; "#" begins another period. The outcome:
  // imported and with errors or not, the numbers in the summary, the error list, the last error.
  String Importar(const std::vector<String>& notas, const String& cnpj = "11.222.333/0001-81 ",
                  const String& raiz = "movimento_economico") {
    auto xml = fmt::format("<{}><prestador><cpf_cnpj>{}</cpf_cnpj></prestador><periodos><periodo>", raiz, cnpj);
    for (const auto& trocas : notas) {
      String nota(trocas == "#" ? "</periodo><periodo>" : kNota);
      for (const auto& [de, para] : Casos(trocas)) nota = Substituir(nota, de, para);
      xml += nota;
    }
    xml += "</periodo></periodos></" + raiz + ">";
    const auto i = TTesteComBanco::Importar(Pasta.Gravar("nota.xml", xml), "8");
    auto saida = fmt::format("{:d}{:d} ", i->GetResumo().Importou, i->GetTemErros());
    for (const auto& documento : i->GetResumo().Documentos) saida += "[" + documento.Numero + "]";
    saida = Substituir(saida + Erros(*i) + "/" + i->GetResumo().Erro, i->BuscarErroNaoGerouBloco0(), "alheia");
    return Substituir(saida, i->BuscarErroEstruturaArquivo(), "estrutura");
  }
};

TEST_F(TPrefeituraModerna, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({"NORMAL => RETIDA"}), "10 []/");
  EXPECT_EQ(
      Documentos("NUM_DOC, SER, DT_DOC, DT_EXE_SERV, CHV_NFSE, COD_SIT, VL_DOC, A.VL_ISS, VL_PIS, VL_PIS_RET, "
                 "VL_COFINS_RET, TEMISSRETIDO, NOME, CPF, Q.IE, COD_MUN, MUNICIPIO, ENDERECO, NUM, COMPL, BAIRRO, "
                 "Q.UF, NUM_ITEM, VL_ITEM, QTD, ATIVIDADE, CFOPICMS, CFOPISS, VL_BC_ISS, ALIQ_ISS, I.VL_ISS, "
                 "TPRECOLHIMENTO, MUNICIPIODEVISS, COD_LST, UNID_INV, CAST(DESCR_ITEM AS VARCHAR(9))"),
      "7||2026-03-15|2026-03-15||0|100.0000|1.8000|0.0000|2.0000|3.0000|1|Bar|12345678909|25|4106902|Curitiba|"
      "Rua C|2|D|Norte|PR|1|100.0000|1.0000|1.05|6.933.000||90.0000|2.0000|1.8000|R|4202404||UN|Aula");
  EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R"),
            "1010|90.0000|1.8000|2.0000\n0714|90.0000|1.0000|0.0000\n0910|90.0000|4.0000|0.0000\n"
            "1101|90.0000|2.0000|0.0000\n1102|90.0000|3.0000|0.0000\n1103|90.0000|5.0000|0.0000");
}

TEST_F(TPrefeituraModerna, SituacoesDaNota) {
  Registrar(Filial(kOutraFilial));
  Importar({"'7' => '1' | NORMAL => RETIDO", "'7' => '2' | NORMAL => Retido", "'7' => '3' | NORMAL => CANCELADA",
            "'7' => '4' | NORMAL => CANCELADO", "'7' => '5' | >90< => >0< | 42-02404 => "});
  // Only the main branch has a kind of payment. The branch stays that of the file for all of the period.
  Importar({"NORMAL => RETIDA", "'7' => '8' | NORMAL => RETIDA"}, kOutraFilial);
  EXPECT_EQ(
      Tabela("SELECT IDFILIAL, NUM_DOC, COD_SIT, VL_DOC, TEMISSRETIDO, VL_BC_ISS, TPRECOLHIMENTO, MUNICIPIODEVISS, "
             "(SELECT COUNT(*) || ' de ' || MAX(VL_BC) FROM ES02_REGA17R R WHERE R.IDREGA100 = A.IDREGA100) FROM "
             "ES02_REGA100 A JOIN ES02_REG0000 USING (IDREG0000) LEFT JOIN ES02_REGA170 USING (IDREGA100) "
             "ORDER BY NUM_DOC"),
      "1|1|0|100.0000|1|90.0000|R|4202404|6 de 90.0000\n1|2|0|100.0000|0|90.0000||4202404|5 de 90.0000\n"
      "1|3|2|0.0000|0|-|-|-|-\n1|4|2|0.0000|0|-|-|-|-\n1|5|0|100.0000|0|0.0000||4205407|5 de 80.0000\n"
      "2|7|0|100.0000|1|90.0000||4202404|6 de 90.0000\n2|8|0|100.0000|1|90.0000||4202404|6 de 90.0000");
}

TEST_F(TPrefeituraModerna, APrimeiraNotaDecidePeloPeriodo) {
  // A refused period stays the last error of the file, outside of the list. A taker without a number doesn't get the
  // state of the one before.
  const String semData = "15/3/2026 => ", semNumero = "'7' => '2' | 123.456.789-09 => ";
  EXPECT_EQ(Importar({"'7' => '1'", semNumero, semData, "#", semData, "", "#", "'7' => '3' | 15/3/2026 => 2026-04-01"}),
            "11 [][][][]/alheia");
  EXPECT_EQ(Importar({"'7' => '4'", "#", "#", ""}), "11 []/estrutura") << "a period without notes ends the file";
  EXPECT_EQ(Importar({""}, "5"), "01 alheia\n/alheia");
  EXPECT_EQ(Importar({""}, kCNPJFilial, "outra"), "01 estrutura\n/estrutura");
  EXPECT_EQ(Documentos("NUM_DOC, P.DT_INI, DT_DOC, A.COD_PART, CFOPICMS"),
            "1|2026-03-01|2026-03-15|1|6.933.000\n2|2026-03-01|2026-03-15|0|5.933.000\n7|2026-03-01|-|1|6.933.000\n"
            "3|2026-04-01|2026-04-01|1|6.933.000\n4|2026-03-01|2026-03-15|1|6.933.000");
}

}  // namespace impnfse::testes::prefeituramoderna
