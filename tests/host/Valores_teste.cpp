// Money, dates, texts, lists and the small functions: what every amount of a register goes through.
#include <sys/stat.h>

#include <array>
#include <chrono>
#include <fstream>
#include <future>
#include <limits>

#include "Apoio.h"
#include "UnVX03704BaseFuncoes.h"
#include "VXUtils.h"
#include "VXUtilsLista.h"
#include "XMLDocumento.h"

namespace impnfse::testes {
namespace {

using std::chrono::seconds;

Currency C(std::int64_t decimosDeMilesimo) { return Currency::DeDecimosDeMilesimo(decimosDeMilesimo); }

TEST(Currency, ConverteOTextoDasNotas) {
  for (const auto& [texto, esperado] : Casos(
           " => 0.0000 |   \t  => 0.0000 | 7 => 7.0000 | 1234.56 => 1234.5600 | 1234,56 => 1234.5600 | 1.234,56 => "
           "1234.5600 | 1,234.56 => 1234.5600 | 1.234.567,8 => 1234567.8000 | 1,234,567.8 => 1234567.8000 | 1.234.567 "
           "=> 1234567.0000 | 1,234,567 => 1234567.0000 | 1.234 => 1.2340 | 1,234 => 1.2340 | 5. => 5.0000 | .5 => "
           "0.5000 | -12,34 => -12.3400 | +12,34 => 12.3400 |  10.00\n => 10.0000 | 0.00004 => 0.0000 | 0.00005 => "
           "0.0001 | -0.00005 => -0.0001 | 0.000049999999 => 0.0000 | 2.99995 => 3.0000 | -0.0001 => -0.0001 | "
           "000000000000000000000000000001.00 => 1.0000 | 922337203685477.5807 => 922337203685477.5807 | "
           "922337203685477.58074 => 922337203685477.5807 | -922337203685477.5807 => -922337203685477.5807"))
    EXPECT_EQ(ConverterCurrency(texto).Texto(), esperado) << '"' << texto << '"';
}

TEST(Currency, RecusaOQueNaoEhValorComOTextoInteiro) {
  for (const String texto :
       {"abc", "1a", "R$ 10,00", "1 000,00", "10-", "--1", "+-1", "- 1", ".", ",", "-", "1e3", "0x10", "٣", "10%",
        "922337203685477.5808", "922337203685477.58075", "99999999999999999999999999999999999999999999"}) {
    try {
      ConverterCurrency(texto);
      ADD_FAILURE() << texto << " foi aceito";
    } catch (const EConversao& erro) {
      EXPECT_EQ(erro.what(), "'" + texto + "' não é um valor decimal válido");
    }
  }
}

TEST(Currency, Contas) {
  EXPECT_EQ((C(33333) * C(30000)).DecimosDeMilesimo(), 99999);
  EXPECT_EQ((C(1) * C(9999)).DecimosDeMilesimo(), 0);
  EXPECT_EQ((C(-1) * C(19999)).DecimosDeMilesimo(), -1) << "toward zero, not down";
  // The product of both counts doesn't fit in 64 bits; the value does.
  EXPECT_EQ((C(30000000000000) * C(20000000)).DecimosDeMilesimo(), 60000000000000000);
  EXPECT_THROW(Currency(2000000000) * Currency(2000000000), std::overflow_error);
  const auto maximo = C(std::numeric_limits<std::int64_t>::max());
  EXPECT_THROW(maximo + C(1), std::overflow_error);
  EXPECT_THROW(-maximo - C(2), std::overflow_error);
  EXPECT_EQ(C(10) - C(25) + C(5), C(-10));
  EXPECT_EQ(Currency(3).DecimosDeMilesimo(), 30000);

  for (const auto& [valor, esperado] :
       Casos("1.2349 => 1.2300 | 1.2350 => 1.2400 | -1.2349 => -1.2300 | -1.2350 => -1.2400 | 0.0049 => 0.0000 | "
             "0.0050 => 0.0100 | -0.0050 => -0.0100"))
    EXPECT_EQ(Arredondar(ConverterCurrency(valor)).Texto(), esperado) << valor;
  EXPECT_EQ(TVXUtilsMatematica::Arredondar(C(15000), 0), C(20000));
  EXPECT_EQ(TVXUtilsMatematica::Arredondar(C(12345), 3), C(12350));
  EXPECT_EQ(TVXUtilsMatematica::Arredondar(C(12345), 4), C(12345));
}

TEST(Currency, TextoExato) {
  EXPECT_EQ(C(0).Texto(), "0.0000");
  EXPECT_EQ(C(-1).Texto(), "-0.0001");
  EXPECT_EQ(C(123400).Texto(), "12.3400");
  EXPECT_EQ(C(std::numeric_limits<std::int64_t>::max()).Texto(), "922337203685477.5807");
  EXPECT_EQ(C(std::numeric_limits<std::int64_t>::min()).Texto(), "-922337203685477.5808");
}

TEST(Data, FormatosDasNotas) {
  for (const auto& [texto, esperada] : Casos(
           "2026-03-15 => 2026-03-15 | 20260315 => 2026-03-15 | 2026-03-15T10:20:30 => 2026-03-15 | 2026-03-15 10:20 "
           "=> 2026-03-15 | 2026-03-15T10:20:30.123-03:00 => 2026-03-15 | 2024-02-29 => 2024-02-29 |  =>  | 2026-02-30 "
           "=>  | 2026-13-01 =>  | 2026-00-10 =>  | 15/03/2026 =>  | 2026/03/15 =>  | 2026-0315 =>  | 202603-15 =>  | "
           "26-03-15 =>  | 2026-3-15 =>  | 2026-03-15x =>  | abc =>  | 0000-00-00 => "))
    EXPECT_EQ(DataISO(ConverteData(texto, fdAnoMesDia)), esperada) << texto;
  for (const auto& [texto, esperada] :
       Casos("29/02/2024 => 2024-02-29 | 29-02-2024 => 2024-02-29 | 29/02/2024 08:00:00 => 2024-02-29 | "
             "29/02/2024T08:00 => 2024-02-29 | 29/02/2026 =>  | 29/02-2024 =>  | 9/2/2024 =>  | 2024-02-29 =>  | "
             "29.02.2024 =>  | 29/02/24 => "))
    EXPECT_EQ(DataISO(ConverteData(texto, fdDiaMesAno)), esperada) << texto;
  for (const auto& [texto, esperada] :
       Casos("1/2/2026 => 2026-02-01 | 01/02/2026 => 2026-02-01 |  =>  | 01/02/2026 10:00 =>  | 2026-02-01 =>  | "
             "31/02/2026 =>  | 1-2-2026 =>  | 1/2/26 =>  | // => "))
    EXPECT_EQ(DataISO(StrToDateDef(texto, 0)), esperada) << texto;
  EXPECT_EQ(StrToDateDef("x", 7), 7);
}

TEST(Data, ContagemEMes) {
  EXPECT_EQ(DataDe(1899, 12, 31), 1);
  EXPECT_EQ(DataDe(2026, 3, 15), 46096);
  EXPECT_EQ(FormatarDataConsultaSQL(46096), "'2026-03-15'");
  EXPECT_EQ(FormatarDataConsultaSQL(0), "NULL");
  EXPECT_EQ(DataISO(PrimeiroDiaDoMes(DataDe(2024, 2, 10))), "2024-02-01");
  EXPECT_EQ(DataISO(UltimoDiaDoMes(DataDe(2024, 2, 10))), "2024-02-29");
  EXPECT_EQ(DataISO(UltimoDiaDoMes(DataDe(2026, 12, 31))), "2026-12-31");
}

TEST(Texto, ContaCaracteresENaoBytes) {
  EXPECT_EQ(Comprimento("não€𝒳"), 5U);
  EXPECT_EQ(Primeiros("ação", 3), "açã");
  EXPECT_EQ(Ultimos("ação", 3), "ção");
  EXPECT_EQ(Primeiros("abc", 9), "abc");
  EXPECT_EQ(Ultimos("", 2), "");
  EXPECT_EQ(Comprimento("a\xE7\xE3o"), 4U) << "bytes that aren't UTF-8 count one each";
  EXPECT_EQ(Maiusculas("não é ação, sim ÿ"), "NÃO É AÇÃO, SIM Ÿ");
  EXPECT_EQ(Maiusculas("\xE3x"), "\xE3X");
  EXPECT_EQ(Aparar(" \t\r\n a b \n"), "a b");
  EXPECT_EQ(Substituir("aaa", "aa", "b"), "ba");
  EXPECT_EQ(Substituir("abc", "", "x"), "abc");
  EXPECT_EQ(CitarSQL("d'Água''"), "'d''Água'''''");
}

TEST(Texto, SemCaracteresEspeciais) {
  EXPECT_EQ(SemCaracteresEspeciais("Ação nº 1: 50% (R$ 10,00) - A&B + C=D; x/y. [z] {w} \"q\" 'a'\n*#@!?_|\\"),
            "Ação nº 1: 50% (R 10,00) - A&B + C=D; x/y. z w q a");
}

TEST(Texto, InteirosComPadrao) {
  for (const auto& [texto, esperado] : Casos(
           "12 => 12 |   -7 => -7 | +3 => 3 | 0012 => 12 | 2147483647 => 2147483647 | -2147483648 => -2147483648 | "
           "2147483648 => 99 |  => 99 |   => 99 | 12  => 99 | 1.0 => 99 | 0x1F => 99 | +-1 => 99 | --1 => 99 | - 1 => "
           "99 | \t1 => 99 | 1a => 99"))
    EXPECT_EQ(std::to_string(StrToIntDef(texto, 99)), esperado) << '"' << texto << '"';
  EXPECT_EQ(StrToInt64Def("9223372036854775807", 0), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(StrToInt64Def("9223372036854775808", -1), -1);
}

TEST(Funcoes, Pequenas) {
  EXPECT_EQ(BuscarSomenteNumeros("42.054-07 a٣"), "4205407");
  EXPECT_EQ(BuscarCodigoIBGEUF("SC"), 42);
  EXPECT_EQ(BuscarCodigoIBGEUF("DF"), 53);
  EXPECT_EQ(BuscarCodigoIBGEUF("XX"), 0);
  constexpr std::array<std::string_view, 3> kLista = {"a", "b", "c"};
  EXPECT_TRUE(RegInStr("b", kLista, 1));
  EXPECT_FALSE(RegInStr("c", kLista, 1)) << "beyond the last index";
  EXPECT_FALSE(RegInStr("B", kLista, 2));
  EXPECT_TRUE(BIN_IN(5, 7));
  EXPECT_FALSE(BIN_IN(5, 6));
  EXPECT_EQ(BuscarInstanciaFuncoes()->GerarHash("abc"),
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  TArquivoInfo info;
  info.SetArquivo("/pasta.x/nota.fiscal.XML");
  EXPECT_EQ(info.GetExtensao(), ".XML");
  EXPECT_FALSE(TVXUtilsStrings::TextoEhSomenteNumerico(""));
  EXPECT_TRUE(TVXUtilsStrings::TextoEhSomenteNumerico("0123"));
  EXPECT_FALSE(TVXUtilsStrings::TextoEhSomenteNumerico("12.3"));
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
  for (const auto& [bytes, texto] : casos) {
    TStringList lista;
    lista.LoadFromFile(pasta.Gravar("lista.txt", bytes));
    EXPECT_EQ(lista.Text(), texto) << testing::PrintToString(bytes);
  }
  // Half of a surrogate pair spoils one character, not everything behind it.
  EXPECT_TRUE(DecodificarTexto("\xFF\xFE\x3D\xD8n\0o\0"s).ends_with("no"));
}

TEST(Lista, TirarAPrimeiraLinhaCustaSempreOMesmo) {
  String texto;
  for (int i = 0; i < 100000; ++i) texto += std::to_string(i) + "\r\n";
  TStringList lista;
  lista.SetText(texto);
  const auto inicio = std::chrono::steady_clock::now();
  for (int i = 0; i < 99999; ++i) lista.Delete(0);
  EXPECT_LT(std::chrono::steady_clock::now() - inicio, seconds(1));
  EXPECT_EQ(lista.Text(), "99999\n");
  EXPECT_THROW(lista.Delete(1), std::out_of_range);
}

TEST(Lista, GravaEReclamaDoQueNaoSeLe) {
  const TPastaTemporaria pasta;
  TStringList lista;
  lista.Add("ação");
  lista.Add("");
  lista.SaveToFile(pasta / "nova.txt");
  EXPECT_EQ(LerArquivo(pasta / "nova.txt"), "ação\n\n");
  EXPECT_THROW(lista.SaveToFile(pasta / "falta/nova.txt"), EArquivo);
  EXPECT_THROW(lista.LoadFromFile(pasta / "falta.txt"), EArquivo);
  EXPECT_THROW(lista.LoadFromFile(pasta / "."), EArquivo);
}

// A pipe that nobody writes to must be refused, not waited for.
TEST(Lista, NaoEsperaPorUmaFila) {
  const TPastaTemporaria pasta;
  const auto fila = pasta / "fila.xml";
  ASSERT_EQ(::mkfifo(fila.c_str(), 0600), 0);
  auto leitura = std::async(std::launch::async, [&] { LerArquivo(fila); });
  auto documento = std::async(std::launch::async, [&] { LoadXMLDocument(fila); });
  EXPECT_EQ(leitura.wait_for(seconds(2)), std::future_status::ready);
  EXPECT_EQ(documento.wait_for(seconds(2)), std::future_status::ready);
  const std::fstream liberar(fila, std::ios::in | std::ios::out);
  EXPECT_THROW(leitura.get(), EArquivo);
  EXPECT_THROW(documento.get(), EArquivo);
}

}  // namespace
}  // namespace impnfse::testes
