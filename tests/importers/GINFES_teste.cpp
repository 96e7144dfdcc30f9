#include "NotaGINFES.h"

namespace impnfse::testes::ginfes {

struct TGINFES : TTesteComBanco {
  String ImportarNotas(const std::vector<TNotaGINFES>& notas) {
    return Resultado(*Importar(Pasta.Gravar("entrada/notas.xml", ArquivoGINFES(notas))));
  }
};

TEST_F(TGINFES, CadaCampoNoSeuLugar) {
  // The file name is in another encoding than the system's, as old archives bring it.
  const auto importacao =
      Importar(Pasta.Gravar("entrada/n\xE3o.xml", ArquivoGINFES({{.Numero = "12345", .IssRetido = "1"}})));
  EXPECT_EQ(Resultado(*importacao), "10 [0 12345]");
  EXPECT_EQ(importacao->GetResumo().Destino, Pasta / "morto/NFSe/n\xE3o.xml");
  EXPECT_TRUE(Pasta.Tem("morto/NFSe/n\xE3o.xml") && !Pasta.Tem("entrada/n\xE3o.xml"));
  EXPECT_EQ(Documentos("A.TPIMPORTACAO, A.CAMINHOARQORIG, A.CAMINHOARQDEST, IND_OPER, A.IND_EMIT, A.COD_PART, "
                       "COD_MOD, COD_SIT, SER, NUM_DOC, CHV_NFSE, DT_DOC, DT_EXE_SERV, IND_PGTO, "
                       "VL_DOC, A.VL_DESC, A.VL_ISS, TEMISSRETIDO, NOME, CNPJ, CPF, IE, COD_MUN, "
                       "ENDERECO, NUM, COMPL, BAIRRO, UF, COD_PAIS, Q.TPIMPORTACAO"),
            fmt::format("1|{}|{}|1|1|1||0||12345|ABC-1|2026-03-15|2026-03-15|0|1000|0|50|1|Padaria "
                        "Exemplo Ltda|99888777000166|||4106902|Rua A|10|Sala 2|Centro|PR|1058|1",
                        Pasta / "entrada/não.xml", Pasta / "morto/NFSe/não.xml"));
  EXPECT_EQ(
      Documentos("NUM_ITEM, I.COD_ITEM, QTD, UNID, VL_ITEM, I.VL_DESC, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, ATIVIDADE, "
                 "CFOPICMS, CFOPISS, MUNICIPIODEVISS, I.AUX1, D.COD_ITEM, D.COD_PART, D.IND_EMIT, CAST(DESCR_ITEM AS "
                 "VARCHAR(99)), D.TIPO_ITEM, D.COD_GEN, COD_LST, UNID_INV, D.TPIMPORTACAO, R.COD_RECEITA, R.VL_BC, "
                 "R.VL_IMPOSTO, R.ALIQUOTA, I.IDREG0000 - P.IDREG0000, R.IDREG0000 - P.IDREG0000"),
      "1|SEMCOD|1|UN|1000|0|900|50|5|01.05|6.933.000||4205407|1|SEMCOD|1|1|"
      "Consultoria fiscal|9|0|17.01|UN|1|1010|900|50|5|0|0");
}

TEST_F(TGINFES, ValoresDoISS) {
  ImportarNotas({{.ValorIss = "0.00", .ValorIssRetido = "30.00"},
                 {.ValorIss = "50.00", .ValorIssRetido = "30.00"},
                 {.ValorIss = "-1", .ValorIssRetido = "30.00"},
                 {.IssRetido = ""},
                 {.IssRetido = "x"},
                 {.IssRetido = " 1"},
                 {.IssRetido = "1", .ValorIss = "", .ValorIssRetido = "30.00"},
                 {.IssRetido = "1", .BaseCalculo = "0"},
                 {.ValorServicos = "1.234,56", .ValorIss = "", .BaseCalculo = "", .Aliquota = ""}});
  EXPECT_EQ(Documentos("VL_DOC, A.VL_ISS, TEMISSRETIDO, VL_BC_ISS, I.VL_ISS, R.VL_BC, R.VL_IMPOSTO"),
            "1000|30|0|900|30|-|-\n1000|50|0|900|50|-|-\n1000|30|0|900|30|-|-\n1000|50|0|900|50|-|-\n1000|50|0|900|50|"
            "-|-\n1000|50|1|900|50|900|50\n1000|30|1|900|30|-|-\n1000|50|1|0|50|1000|50\n1234.5600|0|0|0|0|-|-");
}

TEST_F(TGINFES, DatasENumeros) {
  std::vector<TNotaGINFES> notas;
  for (const auto& [numero, data] :
       Casos("1 => 5/3/2026 | x2 => 20260306 | 9223372036854775807 => 2026-03-07 | 4 =>  | 5 => 2026-02-30 | 6 => "
             "05/03/2026 10:00 | 7 => 5.3.2026"))
    notas.push_back({.Numero = numero, .DataEmissao = data});
  EXPECT_EQ(ImportarNotas(notas), "11 [0 1][0 x2][0 9223372036854775807]!alheia alheia;alheia;alheia;alheia;");
  EXPECT_EQ(Documentos("NUM_DOC, DT_DOC, DT_EXE_SERV"),
            "1|2026-03-05|2026-03-05\n0|2026-03-06|2026-03-06\n9223372036854775807|2026-03-07|2026-03-07");
}

// Both prefixes are taken out of names and texts alike; another prefix isn't the layout's.
TEST_F(TGINFES, Prefixos) {
  for (const auto& [prefixo, resultado] : Casos("ns4 => 00 ; | ns2 => 10 [0 2] | ns3 => 10 [0 3]")) {
    auto xml = Substituir(TNotaGINFES{.Numero = prefixo.substr(2), .Discriminacao = "a ns3:b"}.Xml(), "</", "\x01");
    xml = Substituir(Substituir(xml, "<", "<" + prefixo + ":"), "\x01", "</" + prefixo + ":");
    xml = fmt::format("<{0}:NFSE xmlns:{0}='u'>{1}</{0}:NFSE>", prefixo, xml);
    EXPECT_EQ(Resultado(*Importar(Pasta.Gravar("nota.xml", xml))), resultado);
  }
  EXPECT_EQ(Documentos("CAST(DESCR_ITEM AS VARCHAR(9))"), "a b\na b");
}

TEST_F(TGINFES, DoisLadosDaoDoisDocumentos) {
  Registrar(Filial(kOutraFilial, "PR"));
  Registrar(Filial("44555666000177", "PR", 2));
  EXPECT_EQ(ImportarNotas({{.Numero = "1", .Tomador = {.Documento = CNPJ(kOutraFilial)}},
                           {.Numero = "2", .Tomador = {.Documento = CNPJ(kCNPJFilial)}},
                           // A branch, but of another company.
                           {.Numero = "3", .Tomador = {.Documento = CNPJ("44555666000177")}}}),
            "10 [0 1][1 1][0 2][1 2][0 3]");
  EXPECT_EQ(Documentos("NUM_DOC, IND_OPER, A.IND_EMIT, P.IDFILIAL, A.COD_PART, CNPJ, CFOPICMS, D.IDREG0200"),
            "1|1|1|1|1|11222333000262|6.933.000|1\n1|0|0|2|2|11222333000181|2.933.000|1\n"
            "2|1|1|1|0|-|5.933.000|1\n2|0|0|1|0|-|1.933.000|1\n"  // never its own participant
            "3|1|1|1|3|44555666000177|6.933.000|1");
}

TEST_F(TGINFES, ParticipantesECPF) {
  ImportarNotas({
      {.Numero = "1", .Tomador = {.Documento = ""}},  // unknown: no participant
      {.Numero = "2", .Tomador = {.Documento = "<Cpf>12345678909</Cpf>", .Cidade = "41.06902", .Estado = ""}},
      {.Numero = "3", .Tomador = {.Documento = "<Cpf>1234567890123</Cpf>", .Cidade = "x", .Estado = ""}},
      {.Numero = "4", .Tomador = {.Documento = "<Cpf>9</Cpf><Cnpj>12345678901234</Cnpj>"}},
      {.Numero = "5", .Tomador = {.Documento = "<Cpf>12345678909</Cpf>", .Estado = "SC"}},  // met before
      {.Numero = "6", .Tomador = {.Documento = "<Cnpj/><Cpf>1</Cpf>"}},  // an empty Cnpj is the number
  });
  Reabrir();
  // One met in an earlier run gives the same document and item as a new one.
  ImportarNotas({{.Numero = "7", .Discriminacao = "Outro", .Tomador = {.Documento = "<Cpf>12345678909</Cpf>"}}});
  EXPECT_EQ(Documentos("NUM_DOC, A.COD_PART, CNPJ, CPF, COD_MUN, UF, CFOPICMS, D.COD_PART"),
            "1|0|-|-|-|-|5.933.000|\n2|1||12345678909|4106902|PR|6.933.000|\n3|2||1234567890123|0||5.933.000|\n"
            "4|3|12345678901234||4106902|PR|6.933.000|\n5|1||12345678909|4106902|PR|6.933.000|\n"
            "6|0|-|-|-|-|5.933.000|\n7|1||12345678909|4106902|PR|6.933.000|1");
  EXPECT_EQ(Contar("ES02_REG0150"), 3);
}

TEST_F(TGINFES, NotaAlheiaNoMeio) {
  const TNotaGINFES alheia = {.Numero = "2", .Prestador = {.Documento = CNPJ("77777777000177")}};
  EXPECT_EQ(ImportarNotas({{.Numero = "1"}, alheia, {.Numero = "3"}}), "11 [0 1][0 3]alheia;")
      << "the next note clears it";
  EXPECT_EQ(Documentos("NUM_DOC"), "1\n3");
  EXPECT_EQ(Contar("ES02_REG0150"), 1) << "nothing of a foreign note is stored";
  EXPECT_FALSE(Pasta.Tem("entrada/notas.xml"));

  EXPECT_EQ(ImportarNotas({alheia}), "01 !alheia alheia;alheia;") << "the importer's line, then the front end's";
  EXPECT_TRUE(Pasta.Tem("entrada/notas.xml"));
}

TEST_F(TGINFES, ExcecaoNoMeioGuardaAsNotasAnteriores) {
  EXPECT_EQ(ImportarNotas({{.Numero = "1"}, {.Numero = "2", .IssRetido = "1", .Aliquota = "abc"}, {.Numero = "3"}}),
            "11 [0 1]!estrutura ");
  EXPECT_EQ(Documentos("NUM_DOC, VL_ITEM"), "1|1000") << "the half-built one and what follows are gone";
  EXPECT_EQ(Contar("ES02_REGA17R"), 0);
  EXPECT_FALSE(Pasta.Tem("entrada/notas.xml"));
}

}  // namespace impnfse::testes::ginfes
