// The steps that every importer shares, through an importer that a test writes.
#include "ImportadorFalso.h"

namespace impnfse::testes {
namespace {

class TEsqueleto : public TTesteComBanco {
 protected:
  // Runs the importer with that action on a file of its own.
  TImportadorFalso& Executar(TImportadorFalso::TAcao acao, const String& tipo = "NFSE", const String& leiaute = "43") {
    TImportadorFalso::AoCarregar = std::move(acao);
    Importador = std::make_unique<TImportadorFalso>();
    Importador->DadosArquivo = {.Arquivo = Pasta.Gravar("entrada/nota.xml", "x"),
                                .CodigoLeiaute = leiaute,
                                .TipoImportacao = tipo,
                                .IDFILIAL = 0};
    Importador->BarraProgresso = BarraProgresso;
    Importador->Start();
    Importador->WaitFor();
    return *Importador;
  }

  std::unique_ptr<TImportadorFalso> Importador;
  TVXBarraProgresso* BarraProgresso = nullptr;
};

TEST_F(TEsqueleto, LadosEPeriodo) {
  auto& falso = Executar([&](TImportadorFalso& f) {
    EXPECT_EQ(f.GetOrigem(), toSaida) << "no side chosen yet";
    EXPECT_EQ(f.GetEmissao(), tePropria);
    f.Documento("1", [&] {
      EXPECT_EQ(f.GetOrigem(), toSaida);
      EXPECT_EQ(f.GetTPNF(), 1);
    });
    std::swap(f.Emitente, f.Destinatario);
    f.Data = DataDe(2024, 2, 29);
    f.Documento("2", [&] {
      EXPECT_EQ(f.GetOrigem(), toEntrada);
      EXPECT_EQ(f.GetEmissao(), teTerceiros);
      EXPECT_EQ(f.GetTPNF(), 0);
    });
    EXPECT_EQ(f.GetOrigem(), toSaida) << "the side goes with its note";
    EXPECT_EQ(BuscarInstanciaEmpresaImportacao()->DataFinal, DataDe(2024, 2, 29)) << "the period stays";
    f.Data = 0;
    f.Documento("3");  // no date, no period
    f.Data = DataDe(2024, 2, 1);
    f.Destinatario = "11.222.333/0001-81";  // numbers are compared as text
    f.Documento("4");
  });
  EXPECT_EQ(Tabela("SELECT A.NUM_DOC, A.IND_OPER, A.IND_EMIT, P.DT_INI, P.DT_FIN FROM ES02_REGA100 A JOIN ES02_REG0000 "
                   "P ON P.IDREG0000 = A.IDREG0000 ORDER BY A.IDREGA100"),
            "1|1|1|2026-03-01|2026-03-31\n2|0|0|2024-02-01|2024-02-29");
  const auto semPeriodo = falso.BuscarErroNaoGerouBloco0();
  EXPECT_EQ(Erros(falso), "Documento: 3 - " + semPeriodo + "\nDocumento: 4 - " + semPeriodo + "\n");
  EXPECT_EQ(falso.GetErro(), semPeriodo) << "the last error has no prefix";
  EXPECT_TRUE(falso.GetTemErros() && falso.GetImportou());
}

TEST_F(TEsqueleto, RetencoesEFilhosNaOrdemESoOsQueDizemAlgo) {
  class TComRetencoes : public TImportadorFalso {
   public:
    bool GetDocumentoTemISSRetido() override { return Retido; }
    Currency GetBaseCalculo() override { return 100; }
    Currency GetValorISS() override { return 5; }
    Currency GetAliquotaISS() override { return 2; }
    Currency GetValorIR() override { return 1; }
    Currency GetValorPIS() override { return 3; }
    Currency GetValorCSLL() override { return 4; }
    bool Retido = false;
  };
  TImportadorFalso::AoCarregar = [](TImportadorFalso& f) {
    f.Documento("1", [&] { f.CarregarA17R(); });
    static_cast<TComRetencoes&>(f).Retido = true;
    f.Documento("2", [&] {
      f.CarregarA17R();
      f.AdicionarA170(f.NovoA170(0));  // names no item and carries no value
      f.AdicionarA170(f.NovoA170(f.CarregarItem({.DESCR_ITEM = "Serviço", .COD_LST = "1.01", .UNID_INV = "H"}), 7));
      f.GetDadosA100()->GetListaMSG().Add("1", std::make_unique<TDadosRegistro0000MSG>());
    });
  };
  TComRetencoes f;
  f.DadosArquivo.Arquivo = Pasta.Gravar("nota.xml", "x");
  f.Start();
  f.WaitFor();
  EXPECT_EQ(Tabela("SELECT A.NUM_DOC, R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA FROM ES02_REGA17R R JOIN "
                   "ES02_REGA100 A ON A.IDREGA100 = R.IDREGA100 ORDER BY R.IDREGA17R"),
            "1|0714|100.0000|1.0000|0.0000\n1|1101|100.0000|3.0000|0.0000\n1|1103|100.0000|4.0000|0.0000\n"
            "2|1010|100.0000|5.0000|2.0000\n2|0714|100.0000|1.0000|0.0000\n2|1101|100.0000|3.0000|0.0000\n"
            "2|1103|100.0000|4.0000|0.0000");
  EXPECT_EQ(Tabela("SELECT NUM_ITEM, QTD, UNID, COD_ITEM, MUNICIPIODEVISS FROM ES02_REGA170"),
            "7|1.0000|UN|SEMCOD|4205407");
  EXPECT_EQ(Tabela("SELECT COD_ITEM, TIPO_ITEM, COD_GEN, COD_LST, UNID_INV, IND_EMIT FROM ES02_REG0200"),
            "SEMCOD|9|0|1.01|H|1");
  EXPECT_EQ(Contar("ES02_REG0000MSG"), 0);
}

TEST_F(TEsqueleto, DocumentoNovoDepoisDeSolto) {
  Executar([](TImportadorFalso& f) {
    f.Documento("1", [&] {
      auto* const primeiro = f.GetDadosA100();
      EXPECT_EQ(f.GetDadosA100(), primeiro);
      primeiro->SetSER("velho");
      f.DestroyA100();
      f.DestroyA100();
      EXPECT_EQ(f.GetDadosA100()->GetSER(), "");
      EXPECT_EQ(f.GetDadosA100()->GetIDREG0000(), f.GetIDREG0000());
      EXPECT_NE(f.GetIDREG0000(), 0);
    });
    EXPECT_GT(f.BuscarID("0150", true).ID, 0);
    EXPECT_THROW(f.BuscarID("0151", true), std::invalid_argument);
  });
}

TEST_F(TEsqueleto, ItemPerdeCaracteresEspeciaisQuandoAFilialPede) {
  auto filial = Filial();
  filial.RemoverCaracteres = 1;
  Registrar(filial);
  Executar([](TImportadorFalso& f) {
    f.Documento("1", [&] {
      const auto id = f.CarregarItem({.DESCR_ITEM = "Manutenção *n# 1*", .COD_LST = ""});
      EXPECT_EQ(f.CarregarItem({.DESCR_ITEM = "Manutenção n 1", .COD_LST = ""}), id);
      EXPECT_NE(f.CarregarItem({.DESCR_ITEM = "Manutenção n 2", .COD_LST = ""}), id);
    });
  });
  EXPECT_EQ(Tabela("SELECT CAST(DESCR_ITEM AS VARCHAR(50)) FROM ES02_REG0200 ORDER BY IDREG0200"),
            "Manutenção n 1\nManutenção n 2");
}

TEST_F(TEsqueleto, Progresso) {
  struct TLista {
    std::size_t Count() const { return 3; }
    int operator[](std::size_t i) const { return static_cast<int>(i); }
  };
  TVXBarraProgresso barra;
  auto& item = *barra.BuscarBarraProgresso(1);
  item.SetPosicao(99);
  std::vector<String> vistos;
  Application->SetAoProcessarMensagens([&] {
    vistos.push_back(fmt::format("{}/{} {}", item.GetPosicao(), item.GetValorMaximo(),
                                 Substituir(item.GetTexto(), Pasta / "entrada", "")));
  });
  const auto percorrer = [](TImportadorFalso& f) { f.PercorrerNotasComProgresso(TLista(), [](int) {}); };
  Executar(percorrer);
  EXPECT_TRUE(vistos.empty()) << "without a display nothing is shown";
  BarraProgresso = &barra;
  Executar(percorrer);
  const auto texto = [](int i) { return fmt::format("Carregando documento {} de 2. /nota.xml", i); };
  EXPECT_EQ(vistos, (std::vector<String>{"0/3 " + texto(0), "1/3 " + texto(0), "1/3 " + texto(1), "2/3 " + texto(1),
                                         "2/3 " + texto(2), "3/3 " + texto(2)}));
}

TEST_F(TEsqueleto, LeiauteLembrado) {
  const auto linhas = [&] {
    return Tabela(
        "SELECT IDEMPRESA, IDFILIAL, ORIGEM, TP, DATAINICIO, INFORMACAO3 FROM CA06_IMPORTACFG ORDER BY "
        "IDFILIAL");
  };
  const auto documento = [](TImportadorFalso& f) { f.Documento("1"); };
  Executar(documento, "NFE");
  EXPECT_EQ(linhas(), "") << "only for this kind of import";
  Executar([](TImportadorFalso& f) { f.Documento("1"), f.Data = DataDe(2026, 5, 1), f.Documento("2"); });
  EXPECT_EQ(linhas(), "1|1|1000|3|2026-05-01|43") << "the last one";
  Registrar(Filial("44555666000177", "PR"));
  const auto deOutra = [](TImportadorFalso& f) {
    f.Destinatario = "44555666000177";
    f.Documento("1");
    EXPECT_EQ(BuscarInstanciaEmpresaImportacao()->GetDadosFilial().CNPJ, kCNPJFilial) << "the branch that asked";
  };
  Executar(deOutra, "NFSE", "4'3");
  EXPECT_EQ(linhas(), "1|1|1000|3|2026-03-01|4'3\n1|2|1000|3|2026-03-01|4'3");

  // What can't be remembered is told, and the document goes on.
  String mostrado;
  const TVXUtilsDialogs dialogo([&](const String& texto) { mostrado = texto; });
  auto* const anterior = std::exchange(GVXUtilsDialogs, const_cast<TVXUtilsDialogs*>(&dialogo));
  auto& falso = Executar([](TImportadorFalso& f) { f.Documento("77"); }, "NFSE", String(300, '4'));
  GVXUtilsDialogs = anterior;
  EXPECT_TRUE(mostrado.starts_with("Falha no banco ")) << mostrado;
  EXPECT_TRUE(falso.GetImportou());
  EXPECT_EQ(Tabela("SELECT NUM_DOC FROM ES02_REGA100 WHERE NUM_DOC = 77"), "77");
}

TEST_F(TEsqueleto, ExcecaoSemGuardaGuardaOQueVeioAntes) {
  auto& falso = Executar([](TImportadorFalso& f) {
    f.Documento("1");
    f.Documento("2", [&] {
      f.InserirRetencao(receita::kIR, 1, 1);
      throw std::runtime_error("quebrou");
    });
  });
  EXPECT_EQ(Erros(falso), "quebrou\n");
  EXPECT_TRUE(falso.GetTemErros());
  EXPECT_TRUE(falso.GetImportou());
  EXPECT_EQ(Tabela("SELECT NUM_DOC FROM ES02_REGA100"), "1");
  EXPECT_EQ(Contar("ES02_REGA17R"), 0);
  EXPECT_TRUE(falso.MoveuArquivo());
}

TEST_F(TEsqueleto, NadaPassaDeUmaParteNemDeUmaExecucaoParaAOutra) {
  const TRegistroAuxManutencao registro;
  Executar([&](TImportadorFalso& f) {
    f.Documento("1", [&] {
      f.BuscarOuInserirParticipante("1", "", {.NOME = "A", .UF = "SC"});
      f.GetDados0150()->SetOPTANTESIMPLES("S");
      f.GetDados0150()->SetCOD_PAIS(9);
      f.BuscarOuInserirParticipante("2", "", {.NOME = "B"});
      EXPECT_EQ(f.GetDados0150()->GetOPTANTESIMPLES(), "");
    });
    BuscarInstanciaCarregamento()->BuscarAuxManutencao(&registro);
  });
  EXPECT_EQ(Tabela("SELECT NOME, OPTANTESIMPLES, COD_PAIS, UF FROM ES02_REG0150 ORDER BY IDREG0150"),
            "A||1058|SC\nB||1058|");
  Executar([](TImportadorFalso&) { BuscarInstanciaCarregamento()->ImportouArquivos(); });
  EXPECT_EQ(Contar("ES02_AUXMANUTENCAO"), 0) << "what the run before left unwritten is forgotten";
  Executar([&](TImportadorFalso&) {
    BuscarInstanciaCarregamento()->BuscarAuxManutencao(&registro);
    BuscarInstanciaCarregamento()->ImportouArquivos();
  });
  EXPECT_EQ(Contar("ES02_AUXMANUTENCAO"), 1);
}

TEST_F(TEsqueleto, SemFilialNadaComeca) {
  Banco().Executar("DELETE FROM CA01_FILIAL");
  Suite().LerFiliais();
  bool carregou = false;
  auto& falso = Executar([&](TImportadorFalso&) { carregou = true; });
  EXPECT_FALSE(carregou);
  EXPECT_FALSE(falso.GetImportou());
  EXPECT_TRUE(Erros(falso).starts_with("Nenhuma filial registrada.")) << Erros(falso);
}

}  // namespace
}  // namespace impnfse::testes
