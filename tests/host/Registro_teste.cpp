// The registers: what is included, what their dictionaries and copies hold, and each field's way to its column and
// back.
#include <limits>
#include <set>

#include "Apoio.h"
#include "SqlRegistro.h"

namespace impnfse::testes::registro {

std::unique_ptr<TDadosRegistroA170> Item(Int64 id) {
  auto item = std::make_unique<TDadosRegistroA170>();
  item->SetIDREGA170(id);
  return item;
}

// A value for a field: money next to both its ends, texts that begin with `texto`. Without a text there is no date.
template <class T>
T Valor(int n, const String& texto) {
  if constexpr (std::is_same_v<T, Currency>)
    return Currency::DeDecimosDeMilesimo((n % 2 == 0 ? 1 : -1) * (std::numeric_limits<std::int64_t>::max() - n));
  else if constexpr (std::is_same_v<T, TDateTime>)
    return texto.empty() ? 0 : 46000 + n;
  else if constexpr (std::is_same_v<T, String> || std::is_same_v<T, TTextoLivre>)
    return texto + std::to_string(n);
  else
    return static_cast<T>(n);
}

// The fields that, each alone, make the register one to be stored.
template <class Registro>
String QueIncluem() {
  String nomes;
  const auto testar = [&](auto campo) {
    Registro registro;
    registro.*campo.Membro = Valor<std::decay_t<decltype(registro.*campo.Membro)>>(1, "x");
    if (registro.DeveIncluir()) nomes += String(campo.Nome) + " ";
  };
  std::apply([&](auto... campo) { (testar(campo), ...); }, Registro::Campos());
  return nomes;
}

TEST(Registro, TesteDeInclusao) {
  EXPECT_EQ(QueIncluem<TDadosRegistroA170>(), "IDREG0200 VL_ITEM VL_DESC VL_BC_ISS VL_ISS ALIQ_ISS DEDUCAOISS ");
  EXPECT_EQ(QueIncluem<TDadosRegistroA17R>(), "VL_IMPOSTO ");
  EXPECT_EQ(QueIncluem<TDadosRegistro0000MSG>(), "INFORMACAO4 ");
  EXPECT_TRUE(TDadosRegistroA100().DeveIncluir());
}

TEST(Registro, DicionarioGuardaAOrdemDeInsercao) {
  TDicionario<TDadosRegistroA170> itens;
  for (const auto id : {30, 4, 200, 1}) itens.Add(Item(id)->GetChaveDicionario(), Item(id));
  itens.Add("4", Item(5));  // takes the old place
  String ids;
  for (const auto& item : itens.Values()) ids += std::to_string(item->GetIDREGA170()) + " ";
  EXPECT_EQ(ids, "30 5 200 1 ");
}

TEST(Registro, CopiaLevaOsFilhos) {
  TDadosRegistroA100 original;
  original.SetIDREGA100(7);
  original.GetDados0150().SetNOME("Alguém");
  original.SetUtilizarUpdateORInsert(true);
  original.GetListaDadosA170().Add("1", Item(1));
  // A retained value of 0 is in the dictionary too.
  original.InserirA17R({.IDREGA17R = 9, .COD_RECEITA = "1010", .VL_BC = 100, .VL_IMPOSTO = 0, .ALIQUOTA = 5});
  TDadosRegistroA100 copia;
  copia.Assign(original);
  original.GetListaDadosA170().Clear();  // the copy has its own
  const auto& retido = *copia.GetListaDadosA17R().Values().front();
  EXPECT_EQ(fmt::format("{} {} {} {} {} {}", copia.GetIDREGA100(), copia.GetDados0150().GetNOME(),
                        copia.GetUtilizarUpdateORInsert(), copia.GetListaDadosA170().Count(), retido.GetIDREGA100(),
                        retido.GetCOD_RECEITA()),
            "7 Alguém true 1 7 1010");
}

using TRegistroBanco = TTesteComBanco;

// Every field has its column, and the table has no column that no field feeds but those that the store keeps.
TEST_F(TRegistroBanco, TabelasTemOsCamposDosRegistros) {
  const auto conferir = [&]<class Registro>(const Registro&, std::set<String> esperadas) {
    std::apply([&](auto... campo) { (esperadas.insert(Maiusculas(campo.Nome)), ...); }, Registro::Campos());
    String nomes;
    for (const auto& nome : esperadas) nomes += (nomes.empty() ? "" : "\n") + nome;
    EXPECT_EQ(Tabela(fmt::format("SELECT TRIM(RDB$FIELD_NAME) FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = '{}' "
                                 "ORDER BY 1",
                                 Registro::kTabela)),
              nomes);
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

template <class Registro>
void Comparar(const Registro& lido, const Registro& esperado) {
  const auto conferir = [&](auto campo) {
    EXPECT_TRUE(lido.*campo.Membro == esperado.*campo.Membro) << Registro::kTabela << ' ' << campo.Nome;
  };
  std::apply([&](auto... campo) { (conferir(campo), ...); }, Registro::Campos());
}

TEST_F(TRegistroBanco, CadaCampoVoltaComoFoi) {
  Armazem().IniciarExecucao(1);
  int documento = 0;
  String texto;
  const auto conferir = [&]<class Registro>(Registro registro) {
    int n = documento;
    const auto preencher = [&]<class T>(T& membro) { membro = Valor<T>(++n, texto); };
    std::apply([&](auto... campo) { (preencher(registro.*campo.Membro), ...); }, Registro::Campos());
    if constexpr (std::is_same_v<Registro, TDadosRegistro0000MSG>)
      registro.SetIDREG(documento), registro.SetAUX1("a"), registro.SetChaveCondicaoAdicional("b");
    else if constexpr (requires { registro.SetIDREGA100(1); })
      registro.SetIDREGA100(documento);
    Armazem().Inserir(registro);
    TLeitura<Registro> leitura(Banco().Sessao(), "ORDER BY 1 DESC", 0);
    leitura.Abrir();
    Registro lido;
    ASSERT_TRUE(leitura.Proximo(lido));
    Comparar(lido, registro);

    // The same row through a data set, as the layout that completes stored documents reads them.
    if constexpr (std::is_same_v<Registro, TDadosRegistroA100> || std::is_same_v<Registro, TDadosRegistro0150>) {
      if (documento > 100) return;
      TVXClientDataSet linha;
      linha.Abrir(Banco().Consultar(fmt::format("SELECT * FROM {}", Registro::kTabela)));
      Registro daLinha;
      daLinha.AssignDataSet(linha);
      Comparar(daLinha, registro);
    }
  };
  for (const String& t :
       {String("d'Água; DROP TABLE 'x'; -- :p0 ? 💳 \""), Repetir("ç", 300), String(100'000, 'x'), String()}) {
    texto = t;
    documento += 100;
    const auto conferirTodos = [&](auto... registro) { (conferir(registro), ...); };
    conferirTodos(TDadosRegistro0150(), TDadosRegistro0200(), TDadosRegistroA100(), TDadosRegistroA170(),
                  TDadosRegistroA17R(), TDadosRegistro0000MSG(), TRegistroAuxManutencao());
  }
  EXPECT_EQ(Tabela("SELECT DT_DOC FROM ES02_REGA100 WHERE IDREGA100 = 400"), "-") << "no date is NULL";
}

}  // namespace impnfse::testes::registro
