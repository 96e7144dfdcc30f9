#include "NotaGINFES.h"

namespace impnfse::testes {
namespace {

constexpr const char* kOutraFilial = "11222333000262";
constexpr const char* kA100 =
    "SELECT NUM_DOC, IND_OPER, COD_PART, VL_DOC, VL_ISS, TEMISSRETIDO FROM ES02_REGA100 ORDER BY IDREGA100";
constexpr const char* kA170 = "SELECT VL_ITEM, VL_BC_ISS, VL_ISS, ALIQ_ISS, ATIVIDADE FROM ES02_REGA170 ORDER BY 1";

class TGINFES : public TTesteComBanco {
 protected:
  std::unique_ptr<TImpNFSe> ImportarNotas(const std::vector<TNotaGINFES>& notas) {
    return ImportarTexto(ArquivoGINFES(notas));
  }
};

TNotaGINFES Recebida(const String& prestador = CNPJ("99888777000166")) {
  return {.Prestador = {.Documento = prestador}, .Tomador = {.Documento = CNPJ(kCNPJFilial)}};
}

TEST_F(TGINFES, CadaCampoNoSeuLugar) {
  const auto importacao = ImportarNotas({{.Numero = "12345", .IssRetido = "1"}});
  EXPECT_EQ(Erros(*importacao), "");
  EXPECT_FALSE(importacao->GetTemErros());
  const auto& resumo = importacao->GetResumo();
  EXPECT_EQ(resumo.Classe, "TNFSeGINFES");
  EXPECT_TRUE(resumo.Importou);
  ASSERT_EQ(resumo.Documentos.size(), 1U);
  EXPECT_EQ(resumo.Documentos[0].Tipo, tpeEmitente);
  EXPECT_EQ(resumo.Documentos[0].Numero, "12345");
  const auto destino = Pasta / "morto/NFSe/1.xml";
  EXPECT_TRUE(resumo.Moveu);
  EXPECT_EQ(resumo.Destino, destino);
  EXPECT_TRUE(fs::exists(destino) && !fs::exists(Pasta / "entrada/1.xml"));

  EXPECT_EQ(
      Tabela("SELECT TPIMPORTACAO, CAMINHOARQORIG, CAMINHOARQDEST, IND_OPER, IND_EMIT, COD_PART, COD_MOD, COD_SIT, "
             "SER, NUM_DOC, CHV_NFSE, DT_DOC, DT_EXE_SERV, IND_PGTO, VL_DOC, VL_DESC, VL_ISS, TEMISSRETIDO FROM "
             "ES02_REGA100"),
      fmt::format("1|{}|{}|1|1|1||0||12345|ABC-1|2026-03-15|2026-03-15|0|1000.0000|0.0000|50.0000|1",
                  Pasta / "entrada/1.xml", destino));
  EXPECT_EQ(Tabela("SELECT COD_PART, NOME, CNPJ, CPF, IE, COD_MUN, ENDERECO, NUM, COMPL, BAIRRO, UF, COD_PAIS, "
                   "TPIMPORTACAO FROM ES02_REG0150"),
            "1|Padaria Exemplo Ltda|99888777000166|||4106902|Rua A|10|Sala 2|Centro|PR|1058|1");
  EXPECT_EQ(Tabela("SELECT COD_ITEM, COD_PART, IND_EMIT, CAST(DESCR_ITEM AS VARCHAR(99)), TIPO_ITEM, COD_GEN, COD_LST, "
                   "UNID_INV, TPIMPORTACAO FROM ES02_REG0200"),
            "SEMCOD|1|1|Consultoria fiscal|9|0|17.01|UN|1");
  EXPECT_EQ(Tabela("SELECT I.NUM_ITEM, I.COD_ITEM, I.QTD, I.UNID, I.VL_ITEM, I.VL_DESC, I.VL_BC_ISS, I.VL_ISS, "
                   "I.ALIQ_ISS, I.ATIVIDADE, I.CFOPICMS, I.CFOPISS, I.MUNICIPIODEVISS, I.AUX1, D.COD_LST FROM "
                   "ES02_REGA170 I JOIN ES02_REG0200 D ON D.IDREG0200 = I.IDREG0200"),
            "1|SEMCOD|1.0000|UN|1000.0000|0.0000|900.0000|50.0000|5.0000|01.05|6.933.000||4205407|1|17.01");
  EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R"),
            "1010|900.0000|50.0000|5.0000");
  EXPECT_EQ(Tabela("SELECT COUNT(DISTINCT X.IDREG0000) FROM (SELECT IDREG0000 FROM ES02_REGA100 UNION ALL SELECT "
                   "IDREG0000 FROM ES02_REGA170 UNION ALL SELECT IDREG0000 FROM ES02_REGA17R UNION ALL SELECT "
                   "IDREG0000 FROM ES02_REG0000) X"),
            "1");
}

TEST_F(TGINFES, ValoresDoISS) {
  const struct {
    TNotaGINFES Nota;
    const char* A100;
    const char* A170;
    const char* A17R;
  } casos[] = {
      {{.ValorIss = "0.00", .ValorIssRetido = "30.00"}, "1000.0000|30.0000|0", "900.0000|30.0000", ""},
      {{.ValorIss = "50.00", .ValorIssRetido = "30.00"}, "1000.0000|50.0000|0", "900.0000|50.0000", ""},
      {{.ValorIss = "-1", .ValorIssRetido = "30.00"}, "1000.0000|30.0000|0", "900.0000|30.0000", ""},
      {{.IssRetido = ""}, "1000.0000|50.0000|0", "900.0000|50.0000", ""},
      {{.IssRetido = "x"}, "1000.0000|50.0000|0", "900.0000|50.0000", ""},
      {{.IssRetido = " 1"}, "1000.0000|50.0000|1", "900.0000|50.0000", "900.0000|50.0000"},
      {{.IssRetido = "1", .ValorIss = "", .ValorIssRetido = "30.00"}, "1000.0000|30.0000|1", "900.0000|30.0000", ""},
      {{.IssRetido = "1", .BaseCalculo = "0"}, "1000.0000|50.0000|1", "0.0000|50.0000", "1000.0000|50.0000"},
      {{.ValorServicos = "1.234,56", .ValorIss = "", .BaseCalculo = "", .Aliquota = ""},
       "1234.5600|0.0000|0",
       "0.0000|0.0000",
       ""}};
  for (const auto& caso : casos) {
    SCOPED_TRACE(&caso - casos);
    ImportarNotas({caso.Nota});
    EXPECT_EQ(Tabela("SELECT VL_DOC, VL_ISS, TEMISSRETIDO FROM ES02_REGA100"), caso.A100);
    EXPECT_EQ(Tabela("SELECT VL_BC_ISS, VL_ISS FROM ES02_REGA170"), caso.A170);
    EXPECT_EQ(Tabela("SELECT VL_BC, VL_IMPOSTO FROM ES02_REGA17R"), caso.A17R);
  }
}

TEST_F(TGINFES, DatasNumerosEPrefixos) {
  ImportarNotas({{.Numero = "1", .DataEmissao = "5/3/2026"},
                 {.Numero = "x2", .DataEmissao = "20260306"},
                 {.Numero = "9223372036854775807", .DataEmissao = "2026-03-07"}});
  EXPECT_EQ(Tabela("SELECT NUM_DOC, DT_DOC, DT_EXE_SERV FROM ES02_REGA100 ORDER BY DT_DOC"),
            "1|2026-03-05|2026-03-05\n0|2026-03-06|2026-03-06\n9223372036854775807|2026-03-07|2026-03-07");
  for (const auto* const data : {"", "2026-02-30", "05/03/2026 10:00", "5.3.2026"}) {
    const auto importacao = ImportarNotas({{.DataEmissao = data}});
    EXPECT_EQ(importacao->GetResumo().Erro, importacao->BuscarErroNaoGerouBloco0()) << data;
  }
  // Both prefixes are taken out of names and texts alike; another prefix isn't the layout's.
  const auto com = [&](std::string_view prefixo) {
    auto xml = TNotaGINFES{.Numero = "77", .Discriminacao = "a ns3:b"}.Xml();
    xml = Substituir(Substituir(xml, "</", "\x01"), "<", fmt::format("<{}:", prefixo));
    xml = Substituir(xml, "\x01", fmt::format("</{}:", prefixo));
    return fmt::format("<{0}:NFSE xmlns:{0}='u'>{1}</{0}:NFSE>", prefixo, xml);
  };
  EXPECT_FALSE(ImportarTexto(com("ns4"))->GetResumo().Importou);
  for (const auto* const prefixo : {"ns2", "ns3"}) {
    EXPECT_TRUE(ImportarTexto(com(prefixo))->GetResumo().Importou);
    EXPECT_EQ(Tabela("SELECT CAST(D.DESCR_ITEM AS VARCHAR(9)) FROM ES02_REGA100 A JOIN ES02_REGA170 I ON I.IDREGA100 = "
                     "A.IDREGA100 JOIN ES02_REG0200 D ON D.IDREG0200 = I.IDREG0200 WHERE A.NUM_DOC = 77"),
              "a b");
  }
}

TEST_F(TGINFES, DoisLadosDaoDoisDocumentos) {
  Registrar(Filial(kOutraFilial, "PR"));
  Registrar(Filial("44555666000177", "PR", 2));
  const auto importacao = ImportarNotas({
      {.Numero = "1", .Tomador = {.Documento = CNPJ(kOutraFilial)}},
      {.Numero = "2", .Tomador = {.Documento = CNPJ(kCNPJFilial)}},
      {.Numero = "3", .Tomador = {.Documento = CNPJ("44555666000177")}},  // a branch, but of another company
  });
  EXPECT_EQ(Erros(*importacao), "");
  String documentos;
  for (const auto& d : importacao->GetResumo().Documentos)
    documentos += fmt::format("{}{} ", static_cast<int>(d.Tipo), d.Numero);
  EXPECT_EQ(documentos, "01 11 02 12 03 ");
  EXPECT_EQ(Tabela("SELECT A.NUM_DOC, A.IND_OPER, A.IND_EMIT, P.IDFILIAL, Q.CNPJ, I.CFOPICMS FROM ES02_REGA100 A JOIN "
                   "ES02_REG0000 P ON P.IDREG0000 = A.IDREG0000 JOIN ES02_REGA170 I ON I.IDREGA100 = A.IDREGA100 LEFT "
                   "JOIN ES02_REG0150 Q ON Q.COD_PART = A.COD_PART ORDER BY A.IDREGA100"),
            "1|1|1|1|11222333000262|6.933.000\n1|0|0|2|11222333000181|2.933.000\n"
            "2|1|1|1|-|5.933.000\n2|0|0|1|-|1.933.000\n"
            "3|1|1|1|44555666000177|6.933.000");
  EXPECT_EQ(Tabela("SELECT COD_PART FROM ES02_REGA100 WHERE NUM_DOC = 2"), "0\n0") << "never its own participant";
  EXPECT_EQ(Contar("ES02_REG0200"), 1);
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
  EXPECT_EQ(Tabela("SELECT CNPJ, CPF, COD_MUN, UF FROM ES02_REG0150 ORDER BY IDREG0150"),
            "|12345678909|4106902|PR\n|1234567890123|0|\n12345678901234||4106902|PR");
  EXPECT_EQ(Tabela("SELECT A.NUM_DOC, A.COD_PART, I.CFOPICMS FROM ES02_REGA100 A JOIN ES02_REGA170 I ON I.IDREGA100 = "
                   "A.IDREGA100 ORDER BY A.NUM_DOC"),
            "1|0|5.933.000\n2|1|6.933.000\n3|2|5.933.000\n4|3|6.933.000\n5|1|6.933.000\n6|0|5.933.000");
}

TEST_F(TGINFES, ParticipanteConhecidoDaOMesmoDocumento) {
  const auto documentos = [&] {
    return Tabela(
        "SELECT A.COD_PART, I.CFOPICMS, D.COD_PART FROM ES02_REGA100 A JOIN ES02_REGA170 I ON I.IDREGA100 = "
        "A.IDREGA100 JOIN ES02_REG0200 D ON D.IDREG0200 = I.IDREG0200 ORDER BY A.NUM_DOC");
  };
  auto nota = Recebida();
  nota.Numero = "1";
  auto seguinte = nota;
  seguinte.Numero = "2";
  seguinte.Discriminacao = "Outro serviço";
  ImportarNotas({nota, seguinte});
  EXPECT_EQ(documentos(), "1|2.933.000|1\n1|2.933.000|1");
  Reabrir();
  seguinte.Numero = "3";
  seguinte.Discriminacao = "Mais um";
  ImportarNotas({seguinte});
  EXPECT_EQ(documentos(), "1|2.933.000|1\n1|2.933.000|1\n1|2.933.000|1");
  EXPECT_EQ(Contar("ES02_REG0150"), 1);
  EXPECT_EQ(Contar("ES02_REG0200"), 3);
}

TEST_F(TGINFES, NotaAlheiaNoMeio) {
  auto alheia = Recebida();
  alheia.Tomador.Documento = CNPJ("77777777000177");
  const auto importacao = ImportarNotas({{.Numero = "1"}, alheia, {.Numero = "3"}});
  EXPECT_EQ(Tabela("SELECT NUM_DOC FROM ES02_REGA100 ORDER BY 1"), "1\n3");
  EXPECT_EQ(Erros(*importacao), importacao->BuscarErroNaoGerouBloco0() + "\n");
  EXPECT_TRUE(importacao->GetTemErros());
  EXPECT_EQ(importacao->GetResumo().Erro, "") << "the next note clears it";
  EXPECT_TRUE(importacao->GetResumo().Moveu);
  EXPECT_EQ(Contar("ES02_REG0150"), 1) << "nothing of a foreign note is stored";

  const auto soAlheia = ImportarNotas({alheia});
  EXPECT_FALSE(soAlheia->GetResumo().Importou);
  const auto erro = soAlheia->BuscarErroNaoGerouBloco0() + "\n";
  EXPECT_EQ(Erros(*soAlheia), erro + erro) << "the importer's line, then the front end's";
  EXPECT_TRUE(fs::exists(Pasta / "entrada/2.xml"));
}

TEST_F(TGINFES, ExcecaoNoMeioGuardaAsNotasAnteriores) {
  auto recebida = Recebida();
  recebida.Numero = "1";
  const auto importacao =
      ImportarNotas({recebida, {.Numero = "2", .IssRetido = "1", .Aliquota = "abc"}, {.Numero = "3"}});
  EXPECT_EQ(Tabela(kA100), "1|0|1|1000.0000|50.0000|0") << "the half-built one and what follows are gone";
  EXPECT_EQ(Contar("ES02_REGA170"), 1);
  EXPECT_EQ(Contar("ES02_REGA17R"), 0);
  EXPECT_TRUE(importacao->GetTemErros());
  EXPECT_EQ(Erros(*importacao), "");
  EXPECT_EQ(importacao->GetResumo().Erro, importacao->BuscarErroEstruturaArquivo());
  EXPECT_TRUE(importacao->GetResumo().Importou);
  EXPECT_TRUE(importacao->GetResumo().Moveu);
}

TEST_F(TGINFES, ArquivoQueNaoServeFicaOndeEsta) {
  const auto inteiro = ArquivoGINFES({{.Numero = "1"}});
  const std::vector<std::pair<String, bool>> casos = {
      {inteiro.substr(0, inteiro.size() - 3), true},
      {"", true},
      {String("\0\1\2", 3), true},
      {ArquivoGINFES({{.ValorServicos = "R$ 10"}}), true},
      {ArquivoGINFES({{.Discriminacao = "a<b/>c"}}), true},  // a text that has become an element
      {"<Nfse/>", false},                                    // another root isn't an error of its own
      {"<NFSE/>", false}};
  for (std::size_t i = 0; i < casos.size(); ++i) {
    SCOPED_TRACE(i);
    const auto importacao = ImportarTexto(casos[i].first);
    EXPECT_EQ(importacao->GetTemErros(), casos[i].second);
    EXPECT_EQ(Erros(*importacao), (casos[i].second ? importacao->BuscarErroEstruturaArquivo() : "") + "\n");
    EXPECT_FALSE(importacao->GetResumo().Importou || importacao->GetResumo().Moveu);
    EXPECT_TRUE(fs::exists(Pasta / fmt::format("entrada/{}.xml", i + 1)));
    EXPECT_EQ(Contar("ES02_REGA100"), 0);
  }
}

TEST_F(TGINFES, OMesmoArquivoDeNovoNaoDobraNada) {
  Registrar(Filial(kOutraFilial, "PR"));
  const std::vector<TNotaGINFES> notas = {
      {.Numero = "1", .IssRetido = "1"}, {.Numero = "2", .Tomador = {.Documento = CNPJ(kOutraFilial)}}, Recebida()};
  const auto todas = [&] {
    String contagens;
    for (const auto* const tabela : {"REG0000", "REG0150", "REG0200", "REGA100", "REGA170", "REGA17R"})
      contagens += fmt::format("{} ", Contar(String("ES02_") + tabela));
    return contagens + Tabela(kA100) + Tabela(kA170);
  };
  ImportarNotas(notas);
  const auto antes = todas();
  EXPECT_TRUE(antes.starts_with("2 3 1 4 4 1 ")) << antes;
  ImportarNotas(notas);
  Reabrir();
  ImportarNotas(notas);
  EXPECT_EQ(todas(), antes);
}

TEST_F(TGINFES, TextosDificeis) {
  const String nome = "D'Água; DROP TABLE ES02_REGA100; -- &amp; &lt;Cia&gt; &quot;São João&quot;";
  const auto descricao = String(100000, 'd') + "'é";
  ImportarNotas({{.Discriminacao = descricao, .Tomador = {.Documento = CNPJ("99888777000166"), .Nome = nome}}});
  EXPECT_EQ(Tabela("SELECT NOME FROM ES02_REG0150"), "D'Água; DROP TABLE ES02_REGA100; -- & <Cia> \"São João\"");
  EXPECT_TRUE(Ler<TDadosRegistro0200>().front().GetDESCR_ITEM().Valor == descricao);

  // A file name in another encoding than the system's, as old archives bring it.
  const auto importacao =
      Importar(Pasta.Gravar("nota\xE7"
                            "a.xml",
                            ArquivoGINFES({{.Numero = "88"}})));
  EXPECT_EQ(Erros(*importacao), "");
  EXPECT_EQ(Contar("ES02_REGA100 WHERE NUM_DOC = 88"), 1);
}

TEST_F(TGINFES, PedidoDeOutraFilial) {
  auto filial = Filial("44555666000177", "PR", 2);
  filial.ArquivoMorto = "";
  Registrar(filial);
  const auto caminho = Pasta.Gravar("nota.xml", ArquivoGINFES({{.Tomador = {.Documento = CNPJ("44555666000177")}}}));
  const auto importacao = Importar(caminho, "43", 2);
  EXPECT_EQ(Tabela("SELECT IND_OPER, CAMINHOARQDEST FROM ES02_REGA100"), "0|");
  EXPECT_TRUE(fs::exists(caminho)) << "a branch without an archive leaves the file";
  EXPECT_EQ(importacao->GetResumo().FalhaAoMover, "");
  EXPECT_EQ(Tabela("SELECT IDEMPRESA, IDFILIAL FROM CA06_IMPORTACFG"), "2|2");
}

}  // namespace
}  // namespace impnfse::testes
