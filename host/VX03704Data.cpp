#include "VX03704Data.h"

#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <optional>
#include <system_error>

namespace impnfse {
namespace {

using namespace std::chrono;

constexpr sys_days kDiaZero{year{1899} / 12 / 30};

year_month_day Calendario(TDateTime data) { return kDiaZero + days{static_cast<int>(data)}; }

TDateTime Contagem(sys_days dia) { return static_cast<TDateTime>((dia - kDiaZero).count()); }

// A run of `minimo` to `maximo` digits at the beginning of `texto`, which loses it.
std::optional<int> TomarDigitos(std::string_view& texto, std::size_t minimo, std::size_t maximo) {
  const auto naoDigito = texto.find_first_not_of("0123456789");
  const auto n = std::min(naoDigito == texto.npos ? texto.size() : naoDigito, maximo);
  if (n < minimo) return std::nullopt;
  int valor = 0;
  std::from_chars(texto.data(), texto.data() + n, valor);
  texto.remove_prefix(n);
  return valor;
}

bool TomarMarca(std::string_view& texto, char marca) {
  if (texto.empty() || texto.front() != marca) return false;
  texto.remove_prefix(1);
  return true;
}

// A time of day, with or without ":", seconds, a fraction and a zone: "10:20", "10:20:30.123-03:00", "102030Z".
bool EhHora(std::string_view texto) {
  const auto hora = TomarDigitos(texto, 2, 2);
  const bool temMarca = TomarMarca(texto, ':');
  const auto minuto = TomarDigitos(texto, 2, 2);
  if (!hora || !minuto || *hora > 24 || *minuto > 59) return false;
  const bool temSegundos =
      temMarca ? TomarMarca(texto, ':') : !texto.empty() && texto.front() >= '0' && texto.front() <= '9';
  if (temSegundos) {
    const auto segundo = TomarDigitos(texto, 2, 2);
    if (!segundo || *segundo > 60) return false;
    if ((TomarMarca(texto, '.') || TomarMarca(texto, ',')) && !TomarDigitos(texto, 1, 9)) return false;
  }
  if (TomarMarca(texto, 'Z')) return texto.empty();
  if (TomarMarca(texto, '+') || TomarMarca(texto, '-')) {
    if (!TomarDigitos(texto, 2, 2)) return false;
    TomarMarca(texto, ':');
    if (!TomarDigitos(texto, 2, 2)) return false;
  }
  return texto.empty();
}

// What may stand behind a date: nothing, or "T" or a blank and a time. Blanks at the end don't count.
bool TerminaAData(std::string_view resto) {
  const auto fim = resto.find_last_not_of(' ');
  if (fim == resto.npos) return true;
  resto = resto.substr(0, fim + 1);
  return (TomarMarca(resto, 'T') || TomarMarca(resto, ' ')) && EhHora(resto);
}

TDateTime ConverteAnoMesDia(std::string_view texto) {
  const auto ano = TomarDigitos(texto, 4, 4);
  const bool temMarca = TomarMarca(texto, '-');
  const auto mes = TomarDigitos(texto, 2, 2);
  if (temMarca && !TomarMarca(texto, '-')) return 0;
  const auto dia = TomarDigitos(texto, 2, 2);
  return ano && mes && dia && TerminaAData(texto) ? DataDe(*ano, *mes, *dia) : 0;
}

TDateTime ConverteDiaMesAno(std::string_view texto) {
  const auto dia = TomarDigitos(texto, 2, 2);
  const char marca = texto.empty() ? '\0' : texto.front();
  if ((marca != '/' && marca != '-') || !TomarMarca(texto, marca)) return 0;
  const auto mes = TomarDigitos(texto, 2, 2);
  if (!TomarMarca(texto, marca)) return 0;
  const auto ano = TomarDigitos(texto, 4, 4);
  return dia && mes && ano && TerminaAData(texto) ? DataDe(*ano, *mes, *dia) : 0;
}

}  // namespace

TDateTime DataDe(int ano, int mes, int dia) {
  const year_month_day data{year{ano}, month{static_cast<unsigned>(mes)}, day{static_cast<unsigned>(dia)}};
  return data.ok() ? Contagem(data) : 0;
}

TDataDecodificada DecodificarData(TDateTime data) {
  const auto d = Calendario(data);
  return {static_cast<int>(d.year()), static_cast<int>(static_cast<unsigned>(d.month())),
          static_cast<int>(static_cast<unsigned>(d.day()))};
}

TDateTime PrimeiroDiaDoMes(TDateTime data) {
  const auto d = Calendario(data);
  return Contagem(d.year() / d.month() / 1);
}

TDateTime UltimoDiaDoMes(TDateTime data) {
  const auto d = Calendario(data);
  return Contagem(d.year() / d.month() / last);
}

TDateTime ConverteData(std::string_view texto, TFormatoData formato) {
  return formato == fdAnoMesDia ? ConverteAnoMesDia(texto) : ConverteDiaMesAno(texto);
}

TDateTime StrToDateDef(std::string_view texto, TDateTime padrao) {
  const auto dia = TomarDigitos(texto, 1, 2);
  if (!dia || !TomarMarca(texto, '/')) return padrao;
  const auto mes = TomarDigitos(texto, 1, 2);
  if (!mes || !TomarMarca(texto, '/')) return padrao;
  const auto ano = TomarDigitos(texto, 4, 4);
  if (!ano || !texto.empty()) return padrao;
  const auto data = DataDe(*ano, *mes, *dia);
  return data > 0 ? data : padrao;
}

std::string DataISO(TDateTime data) {
  if (data == 0) return {};
  const auto [ano, mes, dia] = DecodificarData(data);
  return fmt::format("{:04}-{:02}-{:02}", ano, mes, dia);
}

std::string DataComPontos(TDateTime data) {
  if (data == 0) return {};
  const auto [ano, mes, dia] = DecodificarData(data);
  return fmt::format("{:02}.{:02}.{:04}", dia, mes, ano);
}

std::string FormatarDataConsultaSQL(TDateTime data) { return data == 0 ? "NULL" : fmt::format("'{}'", DataISO(data)); }

}  // namespace impnfse
