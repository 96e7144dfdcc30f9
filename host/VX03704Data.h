// Dates as the registers hold them: a whole day count in a double, 0 for no date. Day 1 is 1899-12-31.
#pragma once

#include <string>
#include <string_view>

namespace impnfse {

using TDateTime = double;

// How a note writes its dates.
enum TFormatoData : int {
  fdDiaMesAno = 0,  // DD/MM/YYYY or DD-MM-YYYY
  fdAnoMesDia = 1,  // YYYY-MM-DD or YYYYMMDD
};

// The day count of a calendar day; 0 when there is no such day (2026-02-30).
TDateTime DataDe(int ano, int mes, int dia);

struct TDataDecodificada {
  int Ano;
  int Mes;
  int Dia;
};
// The calendar day of a day count.
TDataDecodificada DecodificarData(TDateTime data);

// First and last day of the month of a date.
TDateTime PrimeiroDiaDoMes(TDateTime data);
TDateTime UltimoDiaDoMes(TDateTime data);

// A date in one of the two formats, alone (padding aside) or followed by "T" or a blank and a time, which is dropped.
// Anything else, the empty text and days that don't exist included, gives 0.
TDateTime ConverteData(std::string_view texto, TFormatoData formato);

// A date written D/M/YYYY with nothing behind it; else the default.
TDateTime StrToDateDef(std::string_view texto, TDateTime padrao);

// "YYYY-MM-DD"; the empty text for 0.
std::string DataISO(TDateTime data);

// "DD.MM.YYYY", as the suite's load writes dates; the empty text for 0.
std::string DataComPontos(TDateTime data);

// The date as a quoted SQL literal, 'YYYY-MM-DD' with its apostrophes; NULL for 0.
std::string FormatarDataConsultaSQL(TDateTime data);

}  // namespace impnfse
