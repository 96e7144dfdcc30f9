// The steps that every importer shares, through an importer that a test writes.
#include "ImportadorFalso.h"

namespace impnfse::testes::esqueleto {

using TEsqueleto = TTesteComImportador;

TEST_F(TEsqueleto, LadosEPeriodo) {
  String lados;
  Executar([&](TImportadorFalso& f) {
    const auto anotar = [&] { lados += fmt::format("{}{}{} ", int{f.GetOrigem()}, int{f.GetEmissao()}, f.GetTPNF()); };
    anotar();
    f.Documento("1", anotar);
    std::swap(f.Emitente, f.Destinatario);
    f.Data = DataDe(2024, 2, 29);
    f.Documento("2", anotar);
    anotar();
    lados += DataISO(BuscarInstanciaEmpresaImportacao()->DataFinal);
    f.Data = 0;
    f.Documento("3");  // no date, no period
    f.Data = DataDe(2024, 2, 1);
    f.Destinatario = "11.222.333/0001-81";  // numbers are compared as text
    f.Documento("4");
  });
  EXPECT_EQ(lados, "111 111 000 111 2024-02-29") << "the side goes with its note, the period stays";
  EXPECT_EQ(Documentos("A.NUM_DOC, A.IND_OPER, A.IND_EMIT, P.DT_INI, P.DT_FIN"),
            "1|1|1|2026-03-01|2026-03-31\n2|0|0|2024-02-01|2024-02-29");
  EXPECT_EQ(Resultado(), fmt::format("importou, {0}, tem erros, foi: Documento: 3 - {0}; Documento: 4 - {0}; ",
                                     Front->BuscarErroNaoGerouBloco0()));
}

TEST_F(TEsqueleto, RetencoesEFilhosNaOrdemESoOsQueDizemAlgo) {
  Executar([](TImportadorFalso& f) {
    f.Documento("1", [&] { f.CarregarA17R(); });
    f.ISSRetido = true;
    f.Documento("2", [&] {
      f.CarregarA17R();
      f.AdicionarA170(f.NovoA170(0));  // names no item and carries no value
      f.AdicionarA170(f.NovoA170(f.CarregarItem({.DESCR_ITEM = "Serviço", .COD_LST = "1.01", .UNID_INV = "H"}), 7));
      f.GetDadosA100()->GetListaMSG().Add("1", std::make_unique<TDadosRegistro0000MSG>());
    });
  });
  EXPECT_EQ(Documentos("A.NUM_DOC, R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1|0714|100|1|0\n1|1103|100|4|0\n2|1010|100|5|2\n2|0714|100|1|0\n2|1103|100|4|0");
  EXPECT_EQ(Tabela("SELECT NUM_ITEM, QTD, UNID, COD_ITEM, MUNICIPIODEVISS FROM ES02_REGA170"), "7|1|UN|SEMCOD|4205407");
  EXPECT_EQ(Contar("ES02_REG0000MSG"), 0);
}

// Nothing passes from one party to the next, and an item loses its special characters when the branch asks for that.
TEST_F(TEsqueleto, ParticipantesEItens) {
  auto filial = Filial();
  filial.CasasPrefixoCFOP = 0;
  filial.RemoverCaracteres = 5;  // a bit word, of which 1 counts here
  Registrar(filial);
  Executar([](TImportadorFalso& f) {
    f.BuscarOuInserirParticipante("1", "", {.NOME = "A", .UF = "SC"});
    f.GetDados0150()->SetOPTANTESIMPLES("S");
    f.GetDados0150()->SetCOD_PAIS(9);
    f.BuscarOuInserirParticipante("2", "", {.NOME = "B"});
    for (const String nome : {"Ação *n# 1*", "Ação n 1", "Ação n 2"})
      f.CarregarItem({.DESCR_ITEM = nome, .COD_LST = ""});
    EXPECT_EQ(f.BuscarCFOPIcmsServico(), "5.933.");
    f.Documento("1");
  });
  EXPECT_EQ(Tabela("SELECT NOME, OPTANTESIMPLES, COD_PAIS, UF FROM ES02_REG0150 ORDER BY IDREG0150"),
            "A||1058|SC\nB||1058|");
  EXPECT_EQ(Tabela("SELECT CAST(DESCR_ITEM AS VARCHAR(50)) FROM ES02_REG0200 ORDER BY IDREG0200"),
            "Ação n 1\nAção n 2");
}

TEST_F(TEsqueleto, LeiauteLembrado) {
  const auto linhas = [&] {
    return Tabela("SELECT IDEMPRESA, IDFILIAL, ORIGEM, TP, DATAINICIO, INFORMACAO3 FROM CA06_IMPORTACFG ORDER BY 2");
  };
  const auto documentos = [](TImportadorFalso& f) { f.Documento("1"), f.Data = DataDe(2026, 5, 1), f.Documento("2"); };
  Executar(documentos, TVariacaoNFSe::Nenhuma, "43", "NFE");
  EXPECT_EQ(linhas(), "") << "only for this kind of import";
  Executar(documentos);
  EXPECT_EQ(linhas(), "1|1|1000|3|2026-05-01|43") << "the last one";
  Registrar(Filial(kOutraFilial, "PR"));
  const auto comOutra = [](TImportadorFalso& f) {
    f.Destinatario = kOutraFilial;
    f.Documento("1");
    EXPECT_EQ(BuscarInstanciaEmpresaImportacao()->GetDadosFilial().CNPJ, kCNPJFilial) << "the branch that asked";
  };
  Executar(comOutra, TVariacaoNFSe::Nenhuma, "4'3");
  EXPECT_EQ(linhas(), "1|1|1000|3|2026-03-01|4'3\n1|2|1000|3|2026-03-01|4'3");
}

TEST_F(TEsqueleto, ExcecaoSemGuardaGuardaOQueVeioAntes) {
  Executar([](TImportadorFalso& f) {
    f.Documento("1");
    f.Documento("2", [&] { f.CarregarA17R(), throw std::runtime_error("quebrou"); });
  });
  EXPECT_EQ(Resultado(), "importou, , tem erros, foi: quebrou; ");
  EXPECT_EQ(Documentos("A.NUM_DOC, R.COD_RECEITA"), "1|-");
}

}  // namespace impnfse::testes::esqueleto
