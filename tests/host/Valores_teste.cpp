// Money, dates, texts, lists and the small functions: what every amount of a register goes through.
#include <limits>

#include "Apoio.h"
#include "UnVX03704BaseFuncoes.h"
#include "VXUtils.h"
#include "VXUtilsLista.h"

namespace impnfse::testes::valores {

Currency C(std::int64_t decimosDeMilesimo) { return Currency::DeDecimosDeMilesimo(decimosDeMilesimo); }

// Each input of the table through the function, which gives a text.
template <class Funcao>
void Conferir(Funcao funcao, std::string_view casos) {
  for (const auto& [entrada, esperado] : Casos(casos)) EXPECT_EQ(funcao(entrada), esperado) << '"' << entrada << '"';
}

TEST(Currency, ConverteOTextoDasNotas) {
  Conferir([](const String& texto) { return ConverterCurrency(texto).Texto(); },
           " => 0.0000 |   \t  => 0.0000 | 7 => 7.0000 | 1234.56 => 1234.5600 | 1234,56 => 1234.5600 | 1.234,56 => "
           "1234.5600 | 1,234.56 => 1234.5600 | 1.234.567,8 => 1234567.8000 | 1,234,567.8 => 1234567.8000 | 1.234.567 "
           "=> 1234567.0000 | 1,234,567 => 1234567.0000 | 1.234 => 1.2340 | 1,234 => 1.2340 | 5. => 5.0000 | .5 => "
           "0.5000 | -12,34 => -12.3400 | +12,34 => 12.3400 |  10.00\n => 10.0000 | 0.00004 => 0.0000 | 0.00005 => "
           "0.0001 | -0.00005 => -0.0001 | 0.000049999999 => 0.0000 | 2.99995 => 3.0000 | -0.0001 => -0.0001 | "
           "000000000000000000000000000001.00 => 1.0000 | 922337203685477.5807 => 922337203685477.5807 | "
           "922337203685477.58074 => 922337203685477.5807 | -922337203685477.5807 => -922337203685477.5807");
}

TEST(Currency, RecusaOQueNaoEhValorComOTextoInteiro) {
  for (const String texto :
       {"abc", "1a", "R$ 10,00", "1 000,00", "10-", "--1", "+-1", "- 1", ".", ",", "-", "1e3", "0x10", "٣", "10%",
        "922337203685477.5808", "922337203685477.58075", "99999999999999999999999999999999999999999999"})
    EXPECT_EQ(Levantado([&] { ConverterCurrency(texto); }), "'" + texto + "' não é um valor decimal válido");
}

TEST(Currency, Contas) {
  EXPECT_EQ(C(33333) * C(30000), C(99999));
  EXPECT_EQ(C(-1) * C(19999), C(-1)) << "toward zero, not down";
  // The product of both counts doesn't fit in 64 bits; the value does.
  EXPECT_EQ(C(30000000000000) * C(20000000), C(60000000000000000));
  EXPECT_THROW(Currency(2000000000) * Currency(2000000000), std::overflow_error);
  const auto maximo = C(std::numeric_limits<std::int64_t>::max());
  EXPECT_THROW(maximo + C(1), std::overflow_error);
  EXPECT_THROW(-maximo - C(2), std::overflow_error);
  EXPECT_EQ((C(10) - C(25) + Currency(3)).Texto(), "2.9985");
  // A quotient rounds half away from zero; a rate goes toward zero.
  EXPECT_EQ(Currency(1) / Currency(3), C(3333));
  EXPECT_EQ(Currency(2) / Currency(-3), C(-6667));
  EXPECT_EQ(C(-1) / Currency(2), C(-1));
  EXPECT_EQ(C(499) / Currency(1000), C(0));
  EXPECT_THROW(Currency(1) / Currency(0), std::domain_error);
  EXPECT_EQ(AplicarAliquota(C(3333300), C(27500)), C(91665));
  EXPECT_EQ(AplicarAliquota(C(-199), C(19999)), C(-3));
  EXPECT_EQ(AplicarAliquota(maximo, Currency(100)), maximo) << "no overflow on the way";
  EXPECT_EQ(C(std::numeric_limits<std::int64_t>::min()).Texto(), "-922337203685477.5808");
  Conferir([](const String& valor) { return Arredondar(ConverterCurrency(valor)).Texto(); },
           "1.2349 => 1.2300 | 1.2350 => 1.2400 | -1.2349 => -1.2300 | -1.2350 => -1.2400 | 0.0049 => 0.0000 | "
           "0.0050 => 0.0100 | -0.0050 => -0.0100");
  EXPECT_EQ(TVXUtilsMatematica::Arredondar(C(12345), 3), C(12350));
}

TEST(Data, FormatosDasNotas) {
  Conferir([](const String& texto) { return DataISO(ConverteData(texto, fdAnoMesDia)); },
           "2026-03-15 => 2026-03-15 | 20260315 => 2026-03-15 | 2026-03-15T10:20:30 => 2026-03-15 | 2026-03-15 10:20 "
           "=> 2026-03-15 | 2026-03-15T10:20:30.123-03:00 => 2026-03-15 | 2024-02-29 => 2024-02-29 |  =>  | 2026-02-30 "
           "=>  | 2026-13-01 =>  | 2026-00-10 =>  | 15/03/2026 =>  | 2026/03/15 =>  | 2026-0315 =>  | 202603-15 =>  | "
           "26-03-15 =>  | 2026-3-15 =>  | 2026-03-15x =>  | abc =>  | 0000-00-00 => ");
  Conferir([](const String& texto) { return DataISO(ConverteData(texto, fdDiaMesAno)); },
           "29/02/2024 => 2024-02-29 | 29-02-2024 => 2024-02-29 | 29/02/2024 08:00:00 => 2024-02-29 | "
           "29/02/2024T08:00 => 2024-02-29 | 29/02/2026 =>  | 29/02-2024 =>  | 9/2/2024 =>  | 2024-02-29 =>  | "
           "29.02.2024 =>  | 29/02/24 => ");
  Conferir([](const String& texto) { return DataISO(StrToDateDef(texto, 0)); },
           "1/2/2026 => 2026-02-01 | 01/02/2026 => 2026-02-01 |  =>  | 01/02/2026 10:00 =>  | 2026-02-01 =>  | "
           "31/02/2026 =>  | 1-2-2026 =>  | 1/2/26 =>  | // => ");
  EXPECT_EQ(FormatarDataConsultaSQL(46096) + FormatarDataConsultaSQL(0), "'2026-03-15'NULL");
  EXPECT_EQ(DataISO(UltimoDiaDoMes(DataDe(2026, 12, 31))), "2026-12-31");
}

TEST(Texto, ContaCaracteresENaoBytes) {
  EXPECT_EQ(Comprimento("não€𝒳"), 5U);
  EXPECT_EQ(Comprimento("a\xE7\xE3o"), 4U) << "bytes that aren't UTF-8 count one each";
  Conferir([](const String& texto) { return String(Primeiros(texto, 3)) + ";" + String(Ultimos(texto, 3)); },
           "ação => açã;ção | ab => ab;ab |  => ;");
  Conferir(Maiusculas, "não é ação, sim ÿ => NÃO É AÇÃO, SIM Ÿ | \xE3x => \xE3X");
  EXPECT_EQ(SemCaracteresEspeciais("Ação nº 1: 50% (R$ 10,00) - A&B + C=D; x/y. [z] {w} \"q\" 'a'\n*#@!?_|\\"),
            "Ação nº 1: 50% (R 10,00) - A&B + C=D; x/y. z w q a");
}

TEST(Texto, InteirosComPadrao) {
  Conferir([](const String& texto) { return std::to_string(StrToIntDef(texto, 99)); },
           "12 => 12 |   -7 => -7 | +3 => 3 | 0012 => 12 | 2147483647 => 2147483647 | -2147483648 => -2147483648 | "
           "2147483648 => 99 |  => 99 |   => 99 | 12  => 99 | 1.0 => 99 | 0x1F => 99 | +-1 => 99 | --1 => 99 | - 1 => "
           "99 | \t1 => 99 | 1a => 99");
  EXPECT_EQ(StrToInt64Def("9223372036854775808", -1), -1);
}

TEST(Lista, DecodificaOsArquivos) {
  using namespace std::string_literals;
  const std::vector<std::pair<String, String>> casos = {
      {"\xEF\xBB\xBFnão", "não\n"},
      {"n\xC3\xA3o", "não\n"},
      {"n\xE3o \x80 \x81", "não € \xC2\x81\n"},
      {"\xFF\xFEn\0\xE3\0o\0\x3D\xD8\xB3\xDC"s, "não\xF0\x9F\x92\xB3\n"},
      {"\xFE\xFF\0n\0\xE3\0o"s, "não\n"},
      {"", ""},
      {"a\r\nb\nc\rd", "a\nb\nc\nd\n"},
      {"\n\r\n\r", "\n\n\n"},
      {"a\n\rb", "a\n\nb\n"}};
  const TPastaTemporaria pasta;
  TStringList lista;
  for (const auto& [bytes, texto] : casos) {
    lista.LoadFromFile(pasta.Gravar("lista.txt", bytes));
    EXPECT_EQ(lista.Text(), texto) << testing::PrintToString(bytes);
  }
  // Half of a surrogate pair spoils one character, not everything behind it.
  EXPECT_TRUE(DecodificarTexto("\xFF\xFE\x3D\xD8n\0o\0"s).ends_with("no"));
  // Cut off within a character; a letter of Windows-1252 at the end is one.
  EXPECT_EQ(DecodificarTexto("ação n\xC3"), "ação n");
  EXPECT_EQ(DecodificarTexto("ação \xE2\x82"), "ação ");
  EXPECT_EQ(DecodificarTexto("caf\xE9"), "café");
}

}  // namespace impnfse::testes::valores
