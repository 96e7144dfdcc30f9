// The store: who is found again, what replaces what, and that a run is kept whole or not at all.
#include "Apoio.h"

namespace impnfse::testes::armazem {

const String kLongo(100'000, 'x');

class TArmazem : public TTesteComBanco {
 protected:
  // What one run does, kept at its end.
  template <class Acao>
  void Execucao(Acao acao, Int64 empresa = 1) {
    Armazem().IniciarExecucao(empresa);
    acao();
    Armazem().Confirmar();
  }

  void Participante(const String& codigo, const String& documento, const String& ie, int municipio) {
    TDadosRegistro0150 p;
    p.SetIDREG0150(Armazem().ProximoId(TGerador::Reg0150));
    p.SetCOD_PART(codigo);
    documento.size() == 14 ? p.SetCNPJ(documento) : p.SetCPF(documento);
    p.SetIE(ie);
    p.SetCOD_MUN(municipio);
    Armazem().Inserir(p);
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
    a100.SetCHV_NFSE(kLongo);
    return a100;
  }
  // Stores the document with a child of each kind named in `filhos`, all told apart by the mark: an item (I), a tax
  // (T), a message (M), a maintenance record (X).
  void Gravar(const TDadosRegistroA100& a100, const String& marca, std::string_view filhos = "ITMX") {
    Armazem().Inserir(a100);
    const auto inserir = [&](auto filho, auto marcar) {
      marcar(filho);
      if constexpr (requires { filho.SetIDREGA100(1); })
        filho.SetIDREGA100(a100.GetIDREGA100());
      else
        filho.SetIDREG(a100.GetIDREGA100());
      if constexpr (requires { filho.SetIDREGA170(1); }) filho.SetIDREGA170(Armazem().ProximoId(TGerador::RegA170));
      if constexpr (requires { filho.SetIDREGA17R(1); }) filho.SetIDREGA17R(Armazem().ProximoId(TGerador::RegA17R));
      Armazem().Inserir(filho);
    };
    for (const char tipo : filhos) {
      if (tipo == 'I') inserir(TDadosRegistroA170(), [&](auto& r) { r.SetATIVIDADE(marca); });
      if (tipo == 'T') inserir(TDadosRegistroA17R(), [&](auto& r) { r.SetCOD_RECEITA(marca); });
      if (tipo == 'M') inserir(TDadosRegistro0000MSG(), [&](auto& r) { r.SetINFORMACAO4(marca); });
      if (tipo == 'X') inserir(TRegistroAuxManutencao(), [&](auto& r) { r.SetTipo("NFSE"), r.SetValor(marca); });
    }
  }
  // The marks of the stored children: items / taxes / messages / maintenance records /
  String Filhos() {
    String marcas;
    for (const auto* const origem :
         {"ATIVIDADE FROM ES02_REGA170 ORDER BY IDREGA170", "COD_RECEITA FROM ES02_REGA17R ORDER BY IDREGA17R",
          "CAST(INFORMACAO4 AS VARCHAR(99)) FROM ES02_REG0000MSG ORDER BY IDREG0000MSG",
          "VALOR FROM ES02_AUXMANUTENCAO ORDER BY IDAUXMANUTENCAO"})
      marcas += Substituir(Tabela(String("SELECT ") + origem), "\n", ",") + "/";
    return marcas;
  }
};

// Without municipality the oldest is found, but a stored municipality 0 is no wildcard. Blanks aren't nothing, and long
// keys are compared whole.
const std::tuple<String, String, int> kChaves[] = {{"11111111000111", "", 4205407},    {"11111111000111", "", 4106902},
                                                   {"11111111000111", "", 0},          {"11111111000111", "", 3550308},
                                                   {"11111111000111", "1", 4205407},   {"11111111000111", " ", 4205407},
                                                   {"1111111100011", "", 0},           {"12345678909", "ISENTO", 0},
                                                   {"12345678909", "ISENTO", 4205407}, {kLongo, kLongo, 0},
                                                   {kLongo + "1", kLongo, 0}};

TEST_F(TArmazem, ParticipantePorNumeroInscricaoEMunicipio) {
  const auto achados = [&] {
    String codigos;
    for (const auto& [documento, ie, municipio] : kChaves) {
      const auto* p = Armazem().BuscarParticipante({.CNPJCPF = documento, .IE = ie, .COD_MUN = municipio});
      codigos += p == nullptr ? "- " : p->GetCOD_PART() + " ";
    }
    return codigos;
  };
  Execucao([&] {
    EXPECT_EQ(achados(), Repetir("- ", 11));
    Participante("1", "11111111000111", "", 4205407);
    Participante("2", "11111111000111", "", 4106902);
    Participante("3", "12345678909", "ISENTO", 0);
    Participante("4", kLongo, kLongo, 0);
    EXPECT_EQ(achados(), "1 2 1 - - - - 3 - 4 - ") << "those of the run itself";
  });
  Reabrir();
  Execucao([&] {
    EXPECT_EQ(achados(), "1 2 1 - - - - 3 - 4 - ");
    Participante("5", "11111111000111", "", 3550308);
    EXPECT_EQ(achados(), "1 2 1 5 - - - 3 - 4 - ");
  });
  Registrar(Filial("44555666000177", "PR", 2));
  Execucao([&] { EXPECT_EQ(achados(), Repetir("- ", 11)); }, 2);
}

TEST_F(TArmazem, ItemPelaDescricaoComoSeriaGravada) {
  const auto inserir = [&](const String& descricao) {
    TDadosRegistro0200 item;
    item.SetRemoverCaracteresEspeciaisNome(true);
    item.SetDESCR_ITEM(descricao);
    item.SetIDREG0200(Armazem().ProximoId(TGerador::Reg0200));
    Armazem().Inserir(item);
    return item.GetIDREG0200();
  };
  Int64 limpo = 0;
  Int64 longo = 0;
  const auto conferir = [&] {
    EXPECT_EQ(Armazem().BuscarItem("Serviço A 1"), limpo);
    EXPECT_EQ(Armazem().BuscarItem(kLongo + "1"), longo);
    for (const String outra : {"Serviço \"A\" #1", "serviço A 1", "Serviço A 1 ", "", "Novo"})
      EXPECT_EQ(Armazem().BuscarItem(outra), 0) << outra;
    EXPECT_EQ(Armazem().BuscarItem(kLongo + "2"), 0);
  };
  Execucao([&] { limpo = inserir("Serviço \"A\" #1"), longo = inserir(kLongo + "1"), conferir(); });
  Reabrir();
  Execucao([&] {
    conferir();
    const auto novo = inserir("Novo");
    EXPECT_EQ(Armazem().BuscarItem("Novo"), novo) << "also after it was missed";
  });
  Registrar(Filial("44555666000177", "PR", 2));
  Execucao([&] { EXPECT_EQ(Armazem().BuscarItem("Serviço A 1"), 0); }, 2);
}

TEST_F(TArmazem, DocumentoDeExecucaoAnteriorESubstituido) {
  // A file's own documents never replace each other.
  Execucao([&] { Gravar(Documento(10), "a"), Gravar(Documento(10), "b"), Gravar(Documento(0), "sem número"); });
  EXPECT_EQ(Filhos(), Repetir("a,b,sem número/", 4));
  Execucao([&] { Gravar(Documento(10), "c"), Gravar(Documento(10), "d"), Gravar(Documento(0), "sem número 2"); });
  EXPECT_EQ(Filhos(), Repetir("sem número,c,d,sem número 2/", 4));
  Execucao([&] { Gravar(Documento(10), "e"); });
  EXPECT_EQ(Filhos(), Repetir("sem número,sem número 2,e/", 4));
  EXPECT_EQ(Contar("ES02_TEXTOLONGO"), 3) << "long texts go with their document";
}

TEST_F(TArmazem, SoOMesmoDocumentoESubstituido) {
  Registrar(Filial("44555666000177", "PR"));
  Execucao([&] { Gravar(Documento(10), "a", "I"); });
  const auto periodo = [&](std::size_t filial, TDateTime data) {
    return Armazem().BuscarPeriodo(ListarFiliais(Banco())[filial].Dados, data);
  };
  const std::vector<std::function<void(TDadosRegistroA100&)>> diferencas = {
      [](auto& d) { d.SetNUM_DOC(11); },
      [](auto& d) { d.SetSER("2"); },
      [](auto& d) { d.SetSER(""); },
      [](auto& d) { d.SetSER("1 "); },
      [](auto& d) { d.SetSER(kLongo); },
      [](auto& d) { d.SetCOD_PART("6"); },
      [](auto& d) { d.SetIND_OPER(toSaida); },
      [](auto& d) { d.SetIND_EMIT(tePropria); },
      [](auto& d) { d.SetDT_DOC(DataDe(2026, 3, 16)); },
      [&](auto& d) { d.SetIDREG0000(periodo(1, DataDe(2026, 3, 31))); },
      [&](auto& d) { d.SetIDREG0000(periodo(0, DataDe(2026, 4, 1))); }};
  for (int vez = 0; vez < 2; ++vez) {
    Execucao([&] {
      for (const auto& diferenciar : diferencas) {
        auto documento = Documento(10);
        diferenciar(documento);
        Gravar(documento, "b", "I");
      }
    });
    EXPECT_EQ(Filhos(), "a" + Repetir(",b", static_cast<int>(diferencas.size())) + "////") << vez;
    Reabrir();
  }
  EXPECT_EQ(Tabela("SELECT IDEMPRESA, IDFILIAL, DT_INI, DT_FIN FROM ES02_REG0000 ORDER BY IDREG0000"),
            "1|1|2026-03-01|2026-03-31\n1|2|2026-03-01|2026-03-31\n1|1|2026-04-01|2026-04-30")
      << "one period for a month of a branch";
}

TEST_F(TArmazem, CompletarSubstituiSoOsTiposDeFilhoQueTraz) {
  Armazem().IniciarExecucao(1);
  auto a100 = Documento(10);
  Gravar(a100, "a");
  Gravar(Documento(11), "outro", "IT");
  Armazem().Confirmar();
  a100.SetUtilizarUpdateORInsert(true);
  a100.SetVL_DOC(77);
  a100.SetCHV_NFSE("nova");
  // Heads alone, then with items, then with taxes; within one run the same document comes twice and its children meet.
  Execucao([&] { Gravar(a100, "", ""); });
  EXPECT_EQ(Filhos(), "a,outro/a,outro/a/a/");
  Execucao([&] { Gravar(a100, "b", "I"), Gravar(a100, "c", "I"); });
  EXPECT_EQ(Filhos(), "outro,b,c/a,outro/a/a/");
  Execucao([&] { Gravar(a100, "d", "TT"), Gravar(a100, "", ""), Gravar(a100, "e", "M"); });
  EXPECT_EQ(Filhos(), "outro,b,c/outro,d,d/e/a/");
  // A document that isn't there yet is inserted.
  a100.SetIDREGA100(Armazem().ProximoId(TGerador::RegA100));
  a100.SetNUM_DOC(12);
  Execucao([&] { Gravar(a100, "f", "I"); });
  EXPECT_EQ(Tabela("SELECT NUM_DOC, VL_DOC, LEFT(CHV_NFSE, 4) FROM ES02_REGA100 ORDER BY IDREGA100"),
            "10|77|nova\n11|0|xxxx\n12|77|nova");
  EXPECT_EQ(Contar("ES02_TEXTOLONGO"), 1);
}

}  // namespace impnfse::testes::armazem
