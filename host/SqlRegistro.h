// From a register's one list of fields to its SQL: the prepared insertion and the reading of its rows. Internal to the
// store.
#pragma once

#include <fmt/format.h>
#include <soci/soci.h>

#include <deque>
#include <memory>
#include <span>
#include <tuple>
#include <vector>

#include "VX03704Registro.h"

namespace impnfse {

// A text that was longer than its column.
struct TTextoLongo {
  std::string_view Coluna;
  const String* Texto;
};

// What SOCI binds for a field of type T, and the way there and back. Money goes as exact decimal text.
template <class T>
struct TVinculo {
  static_assert(std::is_integral_v<T> || std::is_enum_v<T>);
  using Buffer = std::conditional_t<sizeof(T) == sizeof(Int64), long long, int>;
  static void Ir(Buffer& b, soci::indicator&, const T& valor) { b = static_cast<Buffer>(valor); }
  static T Voltar(const Buffer& b, soci::indicator) { return static_cast<T>(b); }
};
template <>
struct TVinculo<String> {
  using Buffer = std::string;
  static void Ir(Buffer& b, soci::indicator&, const String& valor) { b = Primeiros(valor, kLarguraTexto); }
  static String Voltar(const Buffer& b, soci::indicator) { return b; }
};
template <>
struct TVinculo<TTextoLivre> {
  using Buffer = soci::long_string;
  static void Ir(Buffer& b, soci::indicator&, const TTextoLivre& valor) { b.value = valor.Valor; }
  static TTextoLivre Voltar(const Buffer& b, soci::indicator) { return b.value; }
};
template <>
struct TVinculo<Currency> {
  using Buffer = std::string;
  static void Ir(Buffer& b, soci::indicator&, Currency valor) { b = valor.Texto(); }
  static Currency Voltar(const Buffer& b, soci::indicator) { return ConverterCurrency(b); }
};
template <>
struct TVinculo<TDateTime> {
  using Buffer = std::tm;
  static void Ir(Buffer& b, soci::indicator& ind, TDateTime valor) {
    ind = valor == 0 ? soci::i_null : soci::i_ok;
    if (valor == 0) return;
    const auto data = DecodificarData(valor);
    b = {};
    b.tm_year = data.Ano - 1900;
    b.tm_mon = data.Mes - 1;
    b.tm_mday = data.Dia;
  }
  static TDateTime Voltar(const Buffer& b, soci::indicator ind) {
    return ind == soci::i_null ? 0 : DataDe(b.tm_year + 1900, b.tm_mon + 1, b.tm_mday);
  }
};

template <class T>
struct TBufferCampo {
  typename TVinculo<T>::Buffer Valor{};
  soci::indicator Indicador = soci::i_ok;
};

// One buffer for each field of the register, in order.
template <class Registro>
auto NovosBuffers() {
  return std::apply([](auto... campo) { return std::tuple<TBufferCampo<typename decltype(campo)::Tipo>...>(); },
                    Registro::Campos());
}

// Calls f(field, buffer) for each field.
template <class Registro, class Buffers, class F>
void ParaCadaCampo(Buffers& buffers, F f) {
  constexpr auto kCampos = Registro::Campos();
  [&]<std::size_t... I>(std::index_sequence<I...>) { (f(std::get<I>(kCampos), std::get<I>(buffers)), ...); }
  (std::make_index_sequence<std::tuple_size_v<decltype(kCampos)>>());
}

// "A, B, C" of the register's fields.
template <class Registro>
String ListaDeColunas() {
  String lista;
  std::apply([&](auto... campo) { ((lista += lista.empty() ? "" : ", ", lista += campo.Nome), ...); },
             Registro::Campos());
  return lista;
}

// The prepared INSERT of a register class, with the columns that the store itself keeps behind the fields.
template <class Registro>
class TInsercao {
 public:
  // `matching`: the columns of an UPDATE OR INSERT; empty for a plain INSERT.
  TInsercao(soci::session& sessao, std::vector<std::string_view> inteiros, std::vector<std::string_view> textos,
            std::string_view matching = {})
      : FInstrucao(sessao), FInteiros(inteiros.size()), FTextos(textos.size()) {
    String colunas = ListaDeColunas<Registro>();
    String valores;
    ParaCadaCampo<Registro>(FBuffers, [&](const auto& campo, auto& buffer) {
      valores += fmt::format("{}:{}", valores.empty() ? "" : ", ", campo.Nome);
      FInstrucao.exchange(soci::use(buffer.Valor, buffer.Indicador));
    });
    const auto acrescentar = [&](std::string_view nome) {
      colunas += fmt::format(", {}", nome);
      valores += fmt::format(", :{}", nome);
    };
    for (std::size_t i = 0; i < inteiros.size(); ++i) {
      acrescentar(inteiros[i]);
      FInstrucao.exchange(soci::use(FInteiros[i]));
    }
    for (std::size_t i = 0; i < textos.size(); ++i) {
      acrescentar(textos[i]);
      FInstrucao.exchange(soci::use(FTextos[i]));
    }
    FInstrucao.alloc();
    FInstrucao.prepare(fmt::format("{} {} ({}) VALUES ({}){}",
                                   matching.empty() ? "INSERT INTO" : "UPDATE OR INSERT INTO", Registro::kTabela,
                                   colunas, valores, matching.empty() ? "" : fmt::format(" MATCHING ({})", matching)));
    FInstrucao.define_and_bind();
  }

  // Writes the row. The texts that didn't fit are in TextosLongos(), until the next row.
  void Gravar(const Registro& registro, std::initializer_list<Int64> inteiros = {},
              std::initializer_list<std::string_view> textos = {}) {
    FTextosLongos.clear();
    ParaCadaCampo<Registro>(FBuffers, [&](const auto& campo, auto& buffer) {
      using T = typename std::decay_t<decltype(campo)>::Tipo;
      const T& valor = registro.*campo.Membro;
      TVinculo<T>::Ir(buffer.Valor, buffer.Indicador, valor);
      if constexpr (std::is_same_v<T, String>)
        if (buffer.Valor.size() < valor.size()) FTextosLongos.push_back({campo.Nome, &valor});
    });
    std::copy(inteiros.begin(), inteiros.end(), FInteiros.begin());
    for (std::size_t i = 0; i < textos.size(); ++i) FTextos[i] = Primeiros(textos.begin()[i], kLarguraTexto);
    FInstrucao.execute(true);
  }

  const std::vector<TTextoLongo>& TextosLongos() const { return FTextosLongos; }

 private:
  soci::statement FInstrucao;
  decltype(NovosBuffers<Registro>()) FBuffers;
  std::vector<long long> FInteiros;
  std::vector<std::string> FTextos;
  std::vector<TTextoLongo> FTextosLongos;
};

// The rows of a register, by a prepared SELECT whose parameters are all texts (the engine converts).
template <class Registro>
class TLeitura {
 public:
  // `resto`: what follows "SELECT ... FROM table R", with parameters :p0, :p1, ...
  TLeitura(soci::session& sessao, std::string_view resto, std::size_t parametros)
      : FInstrucao(sessao), FParametros(parametros), FSessao(&sessao) {
    String colunas;
    ParaCadaCampo<Registro>(FBuffers, [&](const auto& campo, auto& buffer) {
      colunas += fmt::format("R.{}, ", campo.Nome);
      FInstrucao.exchange(soci::into(buffer.Valor, buffer.Indicador));
    });
    FInstrucao.exchange(soci::into(FId));
    for (auto& parametro : FParametros) FInstrucao.exchange(soci::use(parametro));
    FInstrucao.alloc();
    FInstrucao.prepare(
        fmt::format("SELECT {}R.{} FROM {} R {}", colunas, Registro::kColunaId, Registro::kTabela, resto));
    FInstrucao.define_and_bind();
  }

  void Abrir(std::initializer_list<std::string_view> parametros = {}) {
    for (std::size_t i = 0; i < parametros.size(); ++i) FParametros[i] = parametros.begin()[i];
    FInstrucao.execute();
  }

  // The next row into `registro`; false behind the last one.
  bool Proximo(Registro& registro) {
    if (!FInstrucao.fetch()) return false;
    ParaCadaCampo<Registro>(FBuffers, [&](const auto& campo, auto& buffer) {
      using T = typename std::decay_t<decltype(campo)>::Tipo;
      T& valor = registro.*campo.Membro;
      valor = TVinculo<T>::Voltar(buffer.Valor, buffer.Indicador);
      if constexpr (std::is_same_v<T, String>)
        if (valor.size() >= kLarguraTexto && Comprimento(valor) == kLarguraTexto) LerTextoLongo(campo.Nome, valor);
    });
    return true;
  }

 private:
  void LerTextoLongo(std::string_view coluna, String& valor) {
    soci::long_string inteiro;
    *FSessao << "SELECT TEXTO FROM ES02_TEXTOLONGO WHERE TABELA = '" << Registro::kTabela
             << "' AND IDREGISTRO = " << FId << " AND COLUNA = '" << coluna << "'",
        soci::into(inteiro);
    if (FSessao->got_data()) valor = std::move(inteiro.value);
  }

  soci::statement FInstrucao;
  decltype(NovosBuffers<Registro>()) FBuffers;
  std::vector<std::string> FParametros;
  long long FId = 0;
  soci::session* FSessao;
};

}  // namespace impnfse
