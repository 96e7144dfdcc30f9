#include <algorithm>
#include <set>

#include "Apoio.h"

namespace impnfse::testes {
namespace {

std::unique_ptr<TDadosRegistroA170> Item(Int64 id) {
  auto item = std::make_unique<TDadosRegistroA170>();
  item->SetIDREGA170(id);
  return item;
}

TEST(Registro, TesteDeInclusao) {
  TDadosRegistroA170 a170;
  a170.SetIDREGA170(1);
  a170.SetIDREGA100(2);
  a170.SetIDREG0000(3);
  a170.SetNUM_ITEM(4);
  a170.SetQTD(1);
  a170.SetCOD_ITEM("SEMCOD");
  EXPECT_FALSE(a170.DeveIncluir()) << "ids, number and quantity say nothing";
  const std::vector<void (*)(TDadosRegistroA170&)> preenchimentos = {
      [](auto& r) { r.SetIDREG0200(1); }, [](auto& r) { r.SetVL_ITEM(1); }, [](auto& r) { r.SetVL_DESC(-1); },
      [](auto& r) { r.SetVL_BC_ISS(1); }, [](auto& r) { r.SetVL_ISS(1); },  [](auto& r) { r.SetALIQ_ISS(1); },
      [](auto& r) { r.SetDEDUCAOISS(1); }};
  for (const auto& preencher : preenchimentos) {
    auto preenchido = a170;
    preencher(preenchido);
    EXPECT_TRUE(preenchido.DeveIncluir()) << &preencher - preenchimentos.data();
  }

  TDadosRegistroA17R a17r;
  a17r.SetVL_BC(100);
  a17r.SetALIQUOTA(5);
  EXPECT_FALSE(a17r.DeveIncluir());
  a17r.SetVL_IMPOSTO(Currency::DeDecimosDeMilesimo(-1));
  EXPECT_TRUE(a17r.DeveIncluir());

  TDadosRegistro0000MSG msg;
  msg.SetIDREG(1);
  EXPECT_FALSE(msg.DeveIncluir());
  msg.SetINFORMACAO4("x");
  EXPECT_TRUE(msg.DeveIncluir());
  EXPECT_TRUE(TDadosRegistroA100().DeveIncluir());
}

TEST(Registro, DicionarioGuardaAOrdemDeInsercao) {
  TDicionario<TDadosRegistroA170> itens;
  for (const auto id : {30, 4, 200, 1}) itens.Add(Item(id)->GetChaveDicionario(), Item(id));
  itens.Add("4", Item(5));  // takes the old place
  std::vector<Int64> ids;
  for (const auto& item : itens.Values()) ids.push_back(item->GetIDREGA170());
  EXPECT_EQ(ids, (std::vector<Int64>{30, 5, 200, 1}));
  EXPECT_EQ(itens.Count(), 4U);
  EXPECT_EQ(itens.TryGetValue("200")->GetIDREGA170(), 200);
  EXPECT_EQ(itens.TryGetValue("7"), nullptr);
  itens.Clear();
  EXPECT_EQ(itens.TryGetValue("4"), nullptr);
  EXPECT_NE(TDadosRegistro0000MSG().GetChaveDicionario(), TDadosRegistro0000MSG().GetChaveDicionario());
}

TEST(Registro, CopiaLevaOsFilhos) {
  TDadosRegistroA100 original;
  original.SetIDREGA100(7);
  original.SetNUM_DOC(70);
  original.SetIDREG0000(5);
  original.GetDados0150().SetNOME("Alguém");
  original.SetUtilizarUpdateORInsert(true);
  original.GetListaDadosA170().Add("1", Item(1));
  original.InserirA17R({.IDREGA17R = 9, .COD_RECEITA = "1010", .VL_BC = 100, .VL_IMPOSTO = 0, .ALIQUOTA = 5});
  original.GetListaMSG().Add("1", std::make_unique<TDadosRegistro0000MSG>());

  TDadosRegistroA100 copia;
  copia.Assign(original);
  original.GetListaDadosA170().TryGetValue("1")->SetVL_ITEM(1);
  original.GetListaMSG().Clear();
  EXPECT_EQ(copia.GetNUM_DOC(), 70);
  EXPECT_EQ(copia.GetDados0150().GetNOME(), "Alguém");
  EXPECT_TRUE(copia.GetUtilizarUpdateORInsert());
  ASSERT_EQ(copia.GetListaDadosA170().Count(), 1U);
  EXPECT_EQ(copia.GetListaDadosA170().TryGetValue("1")->GetVL_ITEM(), 0) << "the copy has its own";
  EXPECT_EQ(copia.GetListaMSG().Count(), 1U);
  const auto* retido = copia.GetListaDadosA17R().TryGetValue("9");
  ASSERT_NE(retido, nullptr) << "a retained value of 0 is in the dictionary too";
  EXPECT_EQ(retido->GetIDREGA100(), 7);
  EXPECT_EQ(retido->GetIDREG0000(), 5);
  EXPECT_EQ(retido->GetCOD_RECEITA(), "1010");
  EXPECT_EQ(retido->GetALIQUOTA(), 5);
  EXPECT_THROW(copia.Assign(TDadosRegistro0150()), std::bad_cast);
}

TEST(Registro, BitDaRemocaoDeCaracteres) {
  for (const auto& [palavra, remove] : Casos("0 => 0 | 1 => 1 | 4 => 0 | 5 => 1"))
    EXPECT_EQ(TDadosRegistro0200::GetRemoverCaracteresEspeciaisDescricaoNFSe(StrToIntDef(palavra, 0)), remove == "1");
  EXPECT_EQ(TDadosRegistro0150().GetCOD_PAIS(), 1058);
}

using TRegistroBanco = TTesteComBanco;

// Every field has its column, and the table has no column that no field feeds but those that the store keeps.
TEST_F(TRegistroBanco, TabelasTemOsCamposDosRegistros) {
  const auto conferir = [&]<class Registro>(const Registro&, std::initializer_list<const char*> doArmazem) {
    std::set<String> esperadas(doArmazem.begin(), doArmazem.end());
    std::apply([&](auto... campo) { (esperadas.insert(Maiusculas(campo.Nome)), ...); }, Registro::Campos());
    std::set<String> colunas;
    for (const auto& linha : Banco()
                                 .Consultar(fmt::format("SELECT TRIM(RDB$FIELD_NAME) FROM RDB$RELATION_FIELDS WHERE "
                                                        "RDB$RELATION_NAME = '{}'",
                                                        Registro::kTabela))
                                 .Linhas)
      colunas.insert(linha.front().value_or(""));
    EXPECT_EQ(colunas, esperadas) << Registro::kTabela;
  };
  conferir(TDadosRegistro0000(), {});
  conferir(TDadosRegistro0150(), {"IDEMPRESA", "DOCUMENTO"});
  conferir(TDadosRegistro0200(), {"IDEMPRESA", "HASHDESCRICAO"});
  conferir(TDadosRegistroA100(), {"IDREG0150"});
  conferir(TDadosRegistroA170(), {});
  conferir(TDadosRegistroA17R(), {});
  conferir(TDadosRegistro0000MSG(), {"IDREG0000MSG"});
  conferir(TRegistroAuxManutencao(), {"IDAUXMANUTENCAO"});
  conferir(TLinhaImportaCfg(), {"IDIMPORTACFG", "SEQUENCIA"});
}

// A different value for each field of a register, so that two that are swapped show.
template <class Registro>
void Preencher(Registro& registro) {
  int n = 100;
  const auto valor = [&]<class T>(T& membro) {
    ++n;
    if constexpr (std::is_same_v<T, Currency>)
      membro = Currency::DeDecimosDeMilesimo(std::int64_t{n} * 10001);
    else if constexpr (std::is_same_v<T, TDateTime>)
      membro = 46000 + n;
    else if constexpr (std::is_same_v<T, String> || std::is_same_v<T, TTextoLivre>)
      membro = fmt::format("té'xto; {}", n);
    else
      membro = static_cast<T>(n);
  };
  std::apply([&](auto... campo) { (valor(registro.*campo.Membro), ...); }, Registro::Campos());
}

template <class Registro>
void Comparar(const Registro& lido, const Registro& esperado) {
  const auto conferir = [&](auto campo) {
    EXPECT_TRUE(lido.*campo.Membro == esperado.*campo.Membro) << Registro::kTabela << ' ' << campo.Nome;
  };
  std::apply([&](auto... campo) { (conferir(campo), ...); }, Registro::Campos());
}

TEST_F(TRegistroBanco, CadaCampoVoltaComoFoi) {
  Armazem().IniciarExecucao(1);
  Int64 documento = 0;
  const auto conferir = [&]<class Registro>(Registro registro) {
    Preencher(registro);
    if constexpr (std::is_same_v<Registro, TDadosRegistroA100>)
      documento = registro.GetIDREGA100();
    else if constexpr (std::is_same_v<Registro, TDadosRegistro0000MSG>)
      registro.SetIDREG(documento);
    else if constexpr (requires { registro.SetIDREGA100(1); })
      registro.SetIDREGA100(documento);
    Armazem().Inserir(registro);
    Comparar(Ler<Registro>().at(0), registro);

    // The same row through a data set, as the layout that completes stored documents reads them.
    if constexpr (std::is_same_v<Registro, TDadosRegistroA100> || std::is_same_v<Registro, TDadosRegistro0150>) {
      TVXClientDataSet linha;
      linha.Abrir(Banco().Consultar(fmt::format("SELECT * FROM {}", Registro::kTabela)));
      Registro lido;
      lido.AssignDataSet(linha);
      Comparar(lido, registro);
    }
  };
  conferir(TDadosRegistro0150());
  conferir(TDadosRegistro0200());
  conferir(TDadosRegistroA100());
  conferir(TDadosRegistroA170());
  conferir(TDadosRegistroA17R());
  conferir(TDadosRegistro0000MSG());
  conferir(TRegistroAuxManutencao());
}

TEST_F(TRegistroBanco, ValoresExatosEDatasVazias) {
  Armazem().IniciarExecucao(1);
  TDadosRegistroA100 a100;
  a100.SetIDREGA100(1);
  a100.SetVL_DOC(ConverterCurrency("922337203685477.5807"));
  a100.SetVL_ISS(ConverterCurrency("-922337203685477.5807"));
  a100.SetVL_DESC(ConverterCurrency("-0.0001"));
  a100.SetNUM_DOC(std::numeric_limits<Int64>::max());
  Armazem().Inserir(a100);
  Armazem().Confirmar();
  EXPECT_EQ(Tabela("SELECT VL_DOC, VL_ISS, VL_DESC, VL_PIS, NUM_DOC, DT_DOC FROM ES02_REGA100"),
            "922337203685477.5807|-922337203685477.5807|-0.0001|0.0000|9223372036854775807|-");
  const auto lido = Ler<TDadosRegistroA100>().front();
  EXPECT_EQ(lido.GetVL_DOC(), a100.GetVL_DOC());
  EXPECT_EQ(lido.GetVL_ISS(), a100.GetVL_ISS());
  EXPECT_EQ(lido.GetVL_DESC(), a100.GetVL_DESC());
  EXPECT_EQ(lido.GetDT_DOC(), 0);
}

}  // namespace
}  // namespace impnfse::testes
