// The store: who is found again, what replaces what, and that a run is kept whole or not at all.
#include <functional>
#include <set>

#include "Apoio.h"

namespace impnfse::testes {
namespace {

class TArmazem : public TTesteComBanco {
 protected:
  // What one run does, kept at its end.
  template <class Acao>
  void Execucao(Acao acao, Int64 empresa = 1) {
    Armazem().IniciarExecucao(empresa);
    acao();
    Armazem().Confirmar();
  }

  // Stores a participant and gives its code.
  String Participante(const String& documento, const String& ie, int municipio) {
    TDadosRegistro0150 p;
    p.SetIDREG0150(Armazem().ProximoId(TGerador::Reg0150));
    p.SetCOD_PART(std::to_string(Armazem().ProximoId(TGerador::CodigoParticipante)));
    (documento.size() < 14 ? p.SetCPF(documento) : p.SetCNPJ(documento));
    p.SetIE(ie);
    p.SetCOD_MUN(municipio);
    Armazem().Inserir(p);
    return p.GetCOD_PART();
  }
  // The code of the participant that the key finds; empty for none.
  String Achado(const String& documento, const String& ie, int municipio) {
    const auto* p = Armazem().BuscarParticipante({.CNPJCPF = documento, .IE = ie, .COD_MUN = municipio});
    return p == nullptr ? "" : p->GetCOD_PART();
  }

  // A document of March 2026; nothing of it is stored yet.
  TDadosRegistroA100 Documento(Int64 numero) {
    TDadosRegistroA100 a100;
    a100.SetIDREG0000(Armazem().BuscarPeriodo(Suite().EmpresaImportacao().GetDadosFilial(), DataDe(2026, 3, 15)));
    a100.SetIDREGA100(Armazem().ProximoId(TGerador::RegA100));
    a100.SetNUM_DOC(numero);
    a100.SetDT_DOC(DataDe(2026, 3, 15));
    a100.SetCOD_PART("5");
    a100.SetSER("1");
    return a100;
  }
  // Stores the document with a child of each kind named in `filhos` and a maintenance record, told apart by the mark.
  void Gravar(const TDadosRegistroA100& a100, const String& marca, std::string_view filhos = "ITMX") {
    Armazem().Inserir(a100);
    for (const char filho : filhos) GravarFilho(a100.GetIDREGA100(), filho, marca);
  }
  void GravarFilho(Int64 idA100, char tipo, const String& marca) {
    if (tipo == 'I') {
      TDadosRegistroA170 r;
      r.SetIDREGA170(Armazem().ProximoId(TGerador::RegA170));
      r.SetIDREGA100(idA100);
      r.SetATIVIDADE(marca);
      Armazem().Inserir(r);
    } else if (tipo == 'T') {
      TDadosRegistroA17R r;
      r.SetIDREGA17R(Armazem().ProximoId(TGerador::RegA17R));
      r.SetIDREGA100(idA100);
      r.SetCOD_RECEITA(marca);
      Armazem().Inserir(r);
    } else if (tipo == 'M') {
      TDadosRegistro0000MSG r;
      r.SetIDREG(idA100);
      r.SetINFORMACAO4(marca);
      Armazem().Inserir(r);
    } else {
      TRegistroAuxManutencao r;
      r.SetIDREG(idA100);
      r.SetTipo("NFSE");
      r.SetValor(marca);
      Armazem().Inserir(r);
    }
  }
  // The marks of the stored children: items / taxes / messages / maintenance records.
  String Filhos() {
    const auto marcas = [&](const char* consulta) { return Substituir(Tabela(consulta), "\n", ","); };
    return marcas("SELECT ATIVIDADE FROM ES02_REGA170 ORDER BY IDREGA170") + "/" +
           marcas("SELECT COD_RECEITA FROM ES02_REGA17R ORDER BY IDREGA17R") + "/" +
           marcas("SELECT CAST(INFORMACAO4 AS VARCHAR(99)) FROM ES02_REG0000MSG ORDER BY IDREG0000MSG") + "/" +
           marcas("SELECT VALOR FROM ES02_AUXMANUTENCAO ORDER BY IDAUXMANUTENCAO");
  }
};

TEST_F(TArmazem, ParticipantePorNumeroInscricaoEMunicipio) {
  String a;
  String b;
  const auto conferir = [&] {
    EXPECT_EQ(Achado("11111111000111", "", 4205407), a);
    EXPECT_EQ(Achado("11111111000111", "", 4106902), b);
    EXPECT_EQ(Achado("11111111000111", "", 0), a) << "without municipality, the oldest";
    EXPECT_EQ(Achado("11111111000111", "", 3550308), "");
    EXPECT_EQ(Achado("11111111000111", "1", 4205407), "") << "another registration";
    EXPECT_EQ(Achado("11111111000111", " ", 4205407), "") << "blanks aren't nothing";
    EXPECT_EQ(Achado("1111111100011", "", 0), "");
  };
  Execucao([&] {
    EXPECT_EQ(Achado("11111111000111", "", 0), "");
    a = Participante("11111111000111", "", 4205407);
    b = Participante("11111111000111", "", 4106902);
    Participante("12345678909", "ISENTO", 0);
    conferir();  // those of the run itself
  });
  Reabrir();
  Execucao([&] {
    conferir();
    EXPECT_NE(Achado("12345678909", "ISENTO", 0), "") << "by CPF";
    EXPECT_EQ(Achado("12345678909", "ISENTO", 4205407), "") << "a stored municipality 0 is no wildcard";
    const auto c = Participante("11111111000111", "", 3550308);
    EXPECT_EQ(Achado("11111111000111", "", 3550308), c);
    EXPECT_EQ(Achado("11111111000111", "", 0), a) << "still the oldest";
  });
  Registrar(Filial("44555666000177", "PR", 2));
  Execucao([&] { EXPECT_EQ(Achado("11111111000111", "", 0), ""); }, 2);
}

TEST_F(TArmazem, ItemPelaDescricaoComoSeriaGravada) {
  const auto inserir = [&](const String& descricao, bool remover) {
    TDadosRegistro0200 item;
    item.SetRemoverCaracteresEspeciaisNome(remover);
    item.SetDESCR_ITEM(descricao);
    item.SetIDREG0200(Armazem().ProximoId(TGerador::Reg0200));
    Armazem().Inserir(item);
    return item.GetIDREG0200();
  };
  Int64 limpo = 0;
  Int64 longo = 0;
  const String descricao(70000, 'd');
  Execucao([&] {
    limpo = inserir("Serviço \"A\" #1", true);
    longo = inserir(descricao + "1", false);
    EXPECT_EQ(Armazem().BuscarItem("Serviço A 1"), limpo);
  });
  Reabrir();
  Execucao([&] {
    EXPECT_EQ(Armazem().BuscarItem("Serviço A 1"), limpo);
    for (const auto* const outra : {"Serviço \"A\" #1", "serviço A 1", "Serviço A 1 ", ""})
      EXPECT_EQ(Armazem().BuscarItem(outra), 0) << outra;
    EXPECT_EQ(Armazem().BuscarItem(descricao + "1"), longo);
    EXPECT_EQ(Armazem().BuscarItem(descricao + "2"), 0);
    EXPECT_EQ(Armazem().BuscarItem("Novo"), 0);
    const auto novo = inserir("Novo", false);
    EXPECT_EQ(Armazem().BuscarItem("Novo"), novo) << "also after it was missed";
  });
  EXPECT_EQ(Ler<TDadosRegistro0200>().front().GetDESCR_ITEM().Valor, "Serviço A 1");
  Registrar(Filial("44555666000177", "PR", 2));
  Execucao([&] { EXPECT_EQ(Armazem().BuscarItem("Serviço A 1"), 0); }, 2);
}

TEST_F(TArmazem, UmPeriodoPorMesEFilial) {
  Registrar(Filial("44555666000177", "PR"));
  const auto filiais = ListarFiliais(Banco());
  Int64 marco = 0;
  Execucao([&] {
    marco = Armazem().BuscarPeriodo(filiais[0].Dados, DataDe(2026, 3, 1));
    EXPECT_EQ(Armazem().BuscarPeriodo(filiais[0].Dados, DataDe(2026, 3, 31)), marco);
    EXPECT_NE(Armazem().BuscarPeriodo(filiais[0].Dados, DataDe(2026, 4, 1)), marco);
    EXPECT_NE(Armazem().BuscarPeriodo(filiais[1].Dados, DataDe(2026, 3, 1)), marco);
  });
  Reabrir();
  Execucao([&] { EXPECT_EQ(Armazem().BuscarPeriodo(filiais[0].Dados, DataDe(2026, 3, 9)), marco); });
  EXPECT_EQ(Tabela("SELECT IDEMPRESA, IDFILIAL, DT_INI, DT_FIN FROM ES02_REG0000 ORDER BY IDREG0000"),
            "1|1|2026-03-01|2026-03-31\n1|1|2026-04-01|2026-04-30\n1|2|2026-03-01|2026-03-31");
}

TEST_F(TArmazem, DocumentoDeExecucaoAnteriorESubstituido) {
  Execucao([&] {
    Gravar(Documento(10), "a");
    Gravar(Documento(10), "b");  // a file's own documents never replace each other
    Gravar(Documento(0), "sem número");
  });
  EXPECT_EQ(Filhos(), "a,b,sem número/a,b,sem número/a,b,sem número/a,b,sem número");
  Execucao([&] {
    auto longo = Documento(10);
    longo.SetCHV_NFSE(String(300, 'k'));
    Gravar(longo, "c");
    Gravar(Documento(10), "d");
    Gravar(Documento(0), "sem número 2");
  });
  EXPECT_EQ(Filhos(),
            "sem número,c,d,sem número 2/sem número,c,d,sem número 2/sem número,c,d,sem número 2/"
            "sem número,c,d,sem número 2");
  Execucao([&] { Gravar(Documento(10), "e"); });
  EXPECT_EQ(Filhos(),
            "sem número,sem número 2,e/sem número,sem número 2,e/sem número,sem número 2,e/"
            "sem número,sem número 2,e");
  EXPECT_EQ(Contar("ES02_TEXTOLONGO"), 0) << "long texts go with their document";
}

TEST_F(TArmazem, SoOMesmoDocumentoESubstituido) {
  Registrar(Filial("44555666000177", "PR"));
  Execucao([&] { Gravar(Documento(10), "a", "I"); });
  const std::vector<std::function<void(TDadosRegistroA100&)>> diferencas = {
      [](auto& d) { d.SetNUM_DOC(11); },
      [](auto& d) { d.SetSER("2"); },
      [](auto& d) { d.SetSER(""); },
      [](auto& d) { d.SetSER("1 "); },
      [](auto& d) { d.SetCOD_PART("6"); },
      [](auto& d) { d.SetIND_OPER(toSaida); },
      [](auto& d) { d.SetIND_EMIT(tePropria); },
      [](auto& d) { d.SetDT_DOC(DataDe(2026, 3, 16)); },
      [&](auto& d) { d.SetIDREG0000(Armazem().BuscarPeriodo(ListarFiliais(Banco())[1].Dados, d.GetDT_DOC())); },
      [&](auto& d) { d.SetIDREG0000(Armazem().BuscarPeriodo(ListarFiliais(Banco())[0].Dados, DataDe(2026, 4, 1))); }};
  for (int vez = 0; vez < 2; ++vez)
    Execucao([&] {
      for (const auto& diferenciar : diferencas) {
        auto documento = Documento(10);
        diferenciar(documento);
        Gravar(documento, "b", "I");
      }
    });
  EXPECT_EQ(Contar("ES02_REGA100"), static_cast<Int64>(diferencas.size()) + 1) << "the second time replaces the first";
  EXPECT_EQ(Contar("ES02_REGA170"), static_cast<Int64>(diferencas.size()) + 1);
}

TEST_F(TArmazem, CompletarSubstituiSoOsTiposDeFilhoQueTraz) {
  TDadosRegistroA100 a100;
  Execucao([&] {
    a100 = Documento(10);
    a100.SetCHV_NFSE(String(300, 'k'));
    Gravar(a100, "a");
    Gravar(Documento(11), "outro", "IT");
  });
  a100.SetUtilizarUpdateORInsert(true);
  a100.SetVL_DOC(77);
  a100.SetCHV_NFSE("nova");
  // Heads alone, then with items, then with taxes; within one run the same document comes twice and its children meet.
  Execucao([&] { Gravar(a100, "", ""); });
  EXPECT_EQ(Filhos(), "a,outro/a,outro/a/a");
  Execucao([&] {
    Gravar(a100, "b", "I");
    Gravar(a100, "c", "I");
  });
  EXPECT_EQ(Filhos(), "outro,b,c/a,outro/a/a");
  Execucao([&] {
    Gravar(a100, "d", "TT");
    Gravar(a100, "", "");
    Gravar(a100, "e", "M");
  });
  EXPECT_EQ(Filhos(), "outro,b,c/outro,d,d/e/a");
  // A document that isn't there yet is inserted.
  Execucao([&] {
    a100.SetIDREGA100(Armazem().ProximoId(TGerador::RegA100));
    a100.SetNUM_DOC(12);
    Gravar(a100, "f", "I");
  });
  EXPECT_EQ(Tabela("SELECT NUM_DOC, VL_DOC, CHV_NFSE FROM ES02_REGA100 ORDER BY IDREGA100"),
            "10|77.0000|nova\n11|0.0000|\n12|77.0000|nova");
  EXPECT_EQ(Contar("ES02_TEXTOLONGO"), 0);
}

TEST_F(TArmazem, TextosLongosEDificeisVoltamInteiros) {
  const String longo = String(99999, 'x') + "é";
  const String acentos = Substituir(String(300, '.'), ".", "ç");
  const String dificil = "d'Água; DROP TABLE 'x'; -- :p0 ? \xF0\x9F\x92\xB3 \"";
  Execucao([&] {
    TDadosRegistro0150 p;
    p.SetIDREG0150(1);
    p.SetCOD_PART("1");
    p.SetNOME(longo + "1");
    p.SetENDERECO(longo + "2");
    p.SetCPF(longo);
    p.SetIE(longo);
    p.SetBAIRRO(acentos);
    p.SetCOMPL(dificil);
    p.SetNUM(String(255, 'n'));
    Armazem().Inserir(p);
    TDadosRegistroA170 item;
    auto documento = Documento(1);
    documento.SetSER(longo);
    Armazem().Inserir(documento);
    item.SetIDREGA100(documento.GetIDREGA100());
    item.SetATIVIDADE(longo + "3");
    Armazem().Inserir(item);
    TDadosRegistro0000MSG msg;
    msg.SetIDREG(documento.GetIDREGA100());
    msg.SetINFORMACAO4(longo + dificil);
    Armazem().Inserir(msg);
    TRegistroAuxManutencao aux;
    aux.SetValor(longo + "4");
    Armazem().Inserir(aux);
    Armazem().Inserir(aux);
  });
  Reabrir();
  const auto p = Ler<TDadosRegistro0150>().front();
  EXPECT_TRUE(p.GetNOME() == longo + "1" && p.GetENDERECO() == longo + "2");
  EXPECT_EQ(p.GetBAIRRO(), acentos);
  EXPECT_EQ(p.GetCOMPL(), dificil);
  EXPECT_EQ(p.GetNUM(), String(255, 'n'));
  EXPECT_TRUE(Ler<TDadosRegistroA100>().front().GetSER() == longo);
  EXPECT_TRUE(Ler<TDadosRegistroA170>().front().GetATIVIDADE() == longo + "3");
  EXPECT_TRUE(Ler<TDadosRegistro0000MSG>().front().GetINFORMACAO4().Valor == longo + dificil);
  const auto aux = Ler<TRegistroAuxManutencao>();
  EXPECT_TRUE(aux.size() == 2 && aux[0].GetValor() == longo + "4" && aux[1].GetValor() == longo + "4");
  Execucao([&] {
    EXPECT_EQ(Achado(longo, longo, 0), "1") << "long keys are compared whole";
    EXPECT_EQ(Achado(longo + "1", longo, 0), "");
  });
}

TEST_F(TArmazem, RecusaDoBancoDesfazAExecucaoInteira) {
  Execucao([&] { Gravar(Documento(1), "a"); });
  Armazem().IniciarExecucao(1);
  Gravar(Documento(1), "b");
  auto repetido = Documento(2);
  Armazem().Inserir(repetido);
  EXPECT_THROW(Armazem().Inserir(repetido), EBanco);
  Gravar(Documento(3), "c");  // an importer that took the exception goes on
  EXPECT_THROW(Armazem().Confirmar(), EBanco);
  EXPECT_FALSE(Banco().EmTransacao());
  EXPECT_EQ(Tabela("SELECT NUM_DOC FROM ES02_REGA100"), "1");
  EXPECT_EQ(Filhos(), "a/a/a/a");
  Execucao([&] { Gravar(Documento(1), "d"); });  // the store still works
  EXPECT_EQ(Filhos(), "d/d/d/d");

  Armazem().IniciarExecucao(1);
  Gravar(Documento(9), "e");
  Armazem().Desfazer();
  Reabrir();
  EXPECT_EQ(Filhos(), "d/d/d/d");
}

TEST_F(TArmazem, IdsNuncaSeRepetem) {
  std::set<Int64> ids;
  for (int vez = 0; vez < 3; ++vez) {
    for (int i = 0; i < 5000; ++i) EXPECT_TRUE(ids.insert(Armazem().ProximoId(TGerador::RegA100)).second);
    Reabrir();
  }
  EXPECT_GT(*ids.begin(), 0);
}

using TBanco = TTesteComBanco;

TEST_F(TBanco, RecusasEmUmaLinhaQueDizOQueFazer) {
  const auto texto = [](auto acao) -> String {
    try {
      acao();
    } catch (const EBanco& erro) {
      return erro.what();
    }
    return "";
  };
  const auto abrir = [&](const String& caminho) { return texto([&] { TBancoFirebird banco(caminho); }); };
  EXPECT_EQ(abrir(Pasta / "falta.fdb"),
            fmt::format("O banco {0} não existe. Crie-o com: impnfse criar {0}", Pasta / "falta.fdb"));
  EXPECT_NE(abrir(Pasta.Gravar("lixo.fdb", String(100000, 'x'))).find("não é um banco Firebird"), String::npos);
  EXPECT_NE(texto([&] { TBancoFirebird::Criar(Pasta / "banco.fdb"); }).find("já existe"), String::npos);
  EXPECT_NE(texto([&] { TBancoFirebird::Criar(Pasta / "falta/banco.fdb"); }), "");
  EXPECT_THROW(TSuite(Pasta / "banco.fdb"), std::logic_error) << "one suite at a time";

  Banco().Executar("");
  Banco().Executar("UPDATE IMPNFSE_ESQUEMA SET VERSAO = 99");
  EXPECT_NE(texto([&] { Reabrir(); }).find("esquema da versão 99"), String::npos);
}

TEST_F(TBanco, CaminhosComEspacosEAcentos) {
  const auto caminho = Pasta / "pasta com espaço/bancó d'água.fdb";
  fs::create_directory(Pasta / "pasta com espaço");
  TBancoFirebird::Criar(caminho);
  EXPECT_EQ(TBancoFirebird(caminho).ConsultarInteiro("SELECT MAX(VERSAO) FROM IMPNFSE_ESQUEMA"), kVersaoEsquema);
}

TEST_F(TBanco, FilialMantemOIdQuandoMuda) {
  Registrar(Filial("44555666000177", "PR"));
  auto filial = Filial(kCNPJFilial, "RS");
  filial.CasasPrefixoCFOP = 0;
  filial.ArquivoMorto = String(3000, 'p');
  Registrar(filial);
  const auto filiais = ListarFiliais(Banco());
  ASSERT_EQ(filiais.size(), 2U);
  EXPECT_EQ(filiais[0].Dados.IDFILIAL, 1);
  EXPECT_EQ(filiais[0].Dados.UF, "RS");
  EXPECT_EQ(filiais[0].NOME, "Oficina d'Água Ltda; filial");
  EXPECT_EQ(filiais[0].CasasPrefixoCFOP, 0);
  EXPECT_EQ(filiais[0].ArquivoMorto, filial.ArquivoMorto);
  EXPECT_FALSE(BuscarFilial(Banco(), "00000000000000"));
}

}  // namespace
}  // namespace impnfse::testes
