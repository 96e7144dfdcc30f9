// The registers: what is included, what their dictionaries and copies hold, and each field's way to its column and
// back.
#include <limits>
#include <set>

#include "Apoio.h"
#include "SqlRegistro.h"

namespace impnfse::testes::registro {

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
  for (const int id : {30, 4, 200, 1, 4}) {  // the second 4 takes the place of the first
    itens.Add(std::to_string(id), std::make_unique<TDadosRegistroA170>());
    itens.TryGetValue(std::to_string(id))->SetIDREGA170(id);
  }
  String ids;
  for (const auto& item : itens.Values()) ids += std::to_string(item->GetIDREGA170()) + " ";
  EXPECT_EQ(ids, "30 4 200 1 ");
}

using TRegistroBanco = TTesteComBanco;

// Every field has its column, and no table has a column that no field feeds but those that the store keeps.
TEST_F(TRegistroBanco, TabelasTemOsCamposDosRegistros) {
  std::size_t faltam = 0;
  String sobram;
  const auto conferir = [&]<class Registro>(const Registro&) {
    const auto colunas = Banco().Consultar(fmt::format(
        "SELECT TRIM(RDB$FIELD_NAME) FROM RDB$RELATION_FIELDS WHERE RDB$RELATION_NAME = '{}'", Registro::kTabela));
    std::set<String> nomes;
    for (const auto& linha : colunas.Linhas) nomes.insert(linha.front().value());
    std::apply([&](auto... campo) { ((faltam += 1 - nomes.erase(Maiusculas(campo.Nome))), ...); }, Registro::Campos());
    for (const auto& nome : nomes) sobram += fmt::format("{}.{} ", Registro::kTabela, nome);
  };
  const auto conferirTodos = [&](const auto&... registro) { (conferir(registro), ...); };
  conferirTodos(TDadosRegistro0000(), TDadosRegistro0150(), TDadosRegistro0200(), TDadosRegistroA100(),
                TDadosRegistroA170(), TDadosRegistroA17R(), TDadosRegistro0000MSG(), TRegistroAuxManutencao(),
                TLinhaImportaCfg());
  EXPECT_EQ(faltam, 0U);
  EXPECT_EQ(sobram,
            "ES02_REG0150.DOCUMENTO ES02_REG0150.IDEMPRESA ES02_REG0200.HASHDESCRICAO ES02_REG0200.IDEMPRESA "
            "ES02_REGA100.IDREG0150 ES02_REG0000MSG.IDREG0000MSG ES02_AUXMANUTENCAO.IDAUXMANUTENCAO "
            "CA06_IMPORTACFG.IDIMPORTACFG CA06_IMPORTACFG.SEQUENCIA ");
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
    const auto comparar = [&](auto campo) {
      EXPECT_TRUE(lido.*campo.Membro == registro.*campo.Membro) << Registro::kTabela << ' ' << campo.Nome;
    };
    std::apply([&](auto... campo) { (comparar(campo), ...); }, Registro::Campos());
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
