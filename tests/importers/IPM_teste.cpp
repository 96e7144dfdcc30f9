#include "Apoio.h"

namespace impnfse::testes::ipm {

// Two services to a bar in Londrina, who retains the ISS of the first; that one has no rate.
constexpr std::string_view kNota = R"(<nfse><nf>numero_nfse=201900000000123;serie_nfse=S1;data_nfse=15/03/2026;
valor_total=1.000,00;valor_desconto=50,00;valor_ir=4;valor_inss=3;valor_contribuicao_social=5;valor_pis=1;
valor_cofins=2;situacao_codigo_nfse=1;</nf><prestador>cpfcnpj=11222333000181;</prestador><tomador>tipo=j;
cpfcnpj=888777000166;ie=90;nome_razao_social=Bar;logradouro=Rua C;complemento=D;bairro=Norte;cidade=londrina;
cep=80010000;</tomador><itens><lista>codigo_local_prestacao_servico=08047;codigo_item_lista_servico=105;
descritivo= Aula ;aliquota_item_lista_servico=0;situacao_tributaria=4;valor_tributavel=700;valor_deducao=7;
valor_issrf=14;tributa_municipio_prestador= n ;unidade_quantidade=2;</lista><lista>codigo_local_prestacao_servico=8047;
codigo_item_lista_servico=1402;descritivo=Reparo;aliquota_item_lista_servico=5;situacao_tributaria= 0 ;
valor_tributavel=300;valor_issrf=15;tributa_municipio_prestador=S;</lista></itens></nfse>)";

struct TIPM : TTesteComBanco {
  String Importar(const String& trocas) { return ImportarNotas("34", kNota, {trocas}); }
};

TEST_F(TIPM, CadaServicoTemSeuISS) {
  Banco().Executar("UPDATE CA06_MUNICIPIO_LINHA SET CODSRF = '8047' WHERE CODIGOFEDERAL = '4209102'");
  EXPECT_EQ(Importar(""), "10 [0 201900000000123]");
  EXPECT_EQ(Tabela("SELECT NUM_DOC, SER, DT_DOC, DT_EXE_SERV, CHV_NFSE, VL_DESC, VL_ISS, VL_PIS_RET, VL_COFINS_RET, "
                   "TEMISSRETIDO, IE, MUNICIPIO, ENDERECO, NUM, COMPL, BAIRRO, UF FROM ES02_REGA100, ES02_REG0150"),
            "123|S1|2026-03-15|2026-03-15||50|29|1|2|0|90|londrina|Rua C||D|Norte|PR");
  EXPECT_EQ(Documentos("NUM_ITEM, CAST(DESCR_ITEM AS VARCHAR(9)), COD_LST, ATIVIDADE, QTD, VL_ITEM, ALIQ_ISS, "
                       "VL_BC_ISS, I.VL_ISS, DEDUCAOISS, MUNICIPIODEVISS, I.AUX1"),
            "1|Aula|105|1.05|1|700|0|0|14|7|4209102|4\n2|Reparo|1402|14.02|1|300|5|300|15|0|4205407|0");
  EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY IDREGA17R"),
            "1010|700|14|0\n0714|1000|4|0\n0910|1000|3|0\n1101|1000|1|0\n1102|1000|2|0\n1103|1000|5|0");
}

TEST_F(TIPM, MunicipiosPartesECancelamento) {
  Banco().Executar("UPDATE CA06_MUNICIPIO_LINHA SET CEPGERAL = '80', CEPFINAL = '81' WHERE CODIGOFEDERAL = '4106902'");
  Banco().Executar("UPDATE CA06_MUNICIPIO_LINHA SET CEPGERAL = '89010000' WHERE CODIGOFEDERAL = '4202404'");
  const String cancelada = "nfse=1; => nfse=2;", cpf = "tipo=j => tipo=F | ", sem = "888777000166 => ";
  int numero = 1;
  for (const auto& trocas :
       std::vector<String>{"", "80010000 => 89010000 | 888777000166 => 1",
                           "80010000 => 89010001 | londrina => campo grande | = n ; => =1;",
                           // A taker without a number is one of zeros; a short number is completed.
                           sem, cpf + sem, cpf + "888777000166 => 123 | 80010000 =>  | londrina => ",
                           // Nothing is kept of a cancelled note but its mark of retained ISS.
                           cancelada, cancelada + " | ria=4; => ria=4 ;", "= 0 ; => = 1; | ria=4; => ria=2;",
                           // Taken: of the issuer there is a number and nothing else.
                           "11222333000181 => 55666000188 | 888777000166 => 11222333000181"})
    Importar(fmt::format("000123 => 000{:03} | {}", numero++, trocas));
  EXPECT_EQ(Tabela("SELECT COD_SIT, CAST(VL_DOC AS INT), A.AUX1, (SELECT FIRST 1 MUNICIPIODEVISS FROM ES02_REGA170 I "
                   "WHERE I.IDREGA100 = A.IDREGA100), (SELECT CAST(VL_BC AS INT) || ' ' || CAST(ALIQUOTA AS INT) FROM "
                   "ES02_REGA17R R WHERE R.IDREGA100 = A.IDREGA100 AND COD_RECEITA = '1010'), NOME, CNPJ, CPF, COD_MUN "
                   "FROM ES02_REGA100 A LEFT JOIN ES02_REG0150 USING (COD_PART) ORDER BY IDREGA100"),
            "0|1000|1|4106902|700 0|Bar|00888777000166||4106902\n0|1000|1|4202404|700 0|Bar|00000000000001||4202404\n"
            "0|1000|1|2202133|700 0|Bar|00888777000166||2202133\n0|1000|1|4106902|700 0|Bar|00000000000000||4106902\n"
            "0|1000|1|4106902|700 0|Bar||00000000000|4106902\n0|1000|1|4205407|700 0|Bar||00000000123|0\n"
            "2|0|1|-|-|Bar|00888777000166||4106902\n2|0||-|-|Bar|00888777000166||4106902\n"
            "0|1000|1|4106902|300 5|Bar|00888777000166||4106902\n0|1000|1|4205407|700 0||00055666000188||0");
}

TEST_F(TIPM, DosDoisLadosOISSEASomaDosServicosCadaVez) {
  Registrar(Filial(kOutraFilial));
  Importar("888777000166 => 11222333000262");
  EXPECT_EQ(Tabela("SELECT IND_OPER, VL_ISS FROM ES02_REGA100 ORDER BY IDREGA100"), "1|29\n0|29");
}

TEST_F(TIPM, ArquivosSemNotaDaEmpresa) {
  for (const auto trocas : {"<nfse> => <nota> | </nfse> => </nota>", "cofins=2 => cofins=x", "</itens></nfse> => "})
    EXPECT_EQ(Importar(trocas), "01 !estrutura estrutura;") << trocas;
  EXPECT_EQ(Importar("11222333000181 => 1"), "01 !alheia alheia;alheia;");
}

}  // namespace impnfse::testes::ipm
