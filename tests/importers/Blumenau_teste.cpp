#include "Apoio.h"
#include "UnVX03704BaseFuncoes.h"

namespace impnfse::testes::blumenau {

// The record: width and text of each field, dates and amounts as separated files write them. The others are read past.
constexpr auto kRegistro =
    "1 => 2 | 15 => 1.234 | 14 => 05/10/2026 14:30:00 | 8 => AB12 | 1 | 5 | 15 | 8 | 15 | 1 | 14 | 115 | 3 | 100 | 10 "
    "| 60 | 72 | 50 | 2 | 8 | 80 | 1 => 4 | 1 => N | 8 | 15 | 8 | 15 => 1.500,00 | 15 => 200,00 | 8 => 00001401 | 5 => "
    "3,50 | 15 => 45,50 | 15 => 1,00 | 1 => 1 | 1 => 2 | 14 => 99888777000166 | 15 | 15 => 255 | 115 => João | 3 | 100 "
    "=> Ipê | 10 => 10 | 60 => Sala 2 | 72 => Água | 50 => curitiba | 2 => PR | 8 | 80 | 15 => 45,00 | 15 => 15,00 | "
    "15 => 165,00 | 15 => 22,50 | 15 => 9,75 | 0 => Reparo; 2\tx ";

// A note's line in a shape (its separator, or 'L' for fixed widths), with other texts in some fields, by number.
String Linha(char forma, std::string_view trocas = "") {
  auto campos = Casos(kRegistro);
  for (const auto& [numero, texto] : Casos(trocas)) campos.at(std::stoul(numero) - 1).second = texto;
  String linha;
  for (auto& [largura, texto] : campos) {
    if (forma == 'L' && texto.find('/') == 2) texto = texto.substr(6, 4) + texto.substr(3, 2) + texto.substr(0, 2);
    if (forma == 'L' && texto.find(',') != texto.npos) texto = BuscarSomenteNumeros(texto);
    if (forma == 'L') texto = fmt::format(fmt::runtime(texto.empty() ? "{:ç<{}}" : "{:{}}"), texto, std::stoi(largura));
    linha += String(linha.empty() || forma == 'L' ? 0 : 1, forma) + texto;
  }
  return linha;
}

struct TBlumenau : TTesteComBanco {
  String Importar(const std::vector<String>& linhas) {
    return Resultado(*TTesteComBanco::Importar(Pasta.Gravar("b.txt", fmt::to_string(fmt::join(linhas, "\r\n"))), "42"));
  }
};

TEST_F(TBlumenau, CadaCampoNasTresFormas) {
  for (const auto forma : {'L', ';', '\t'}) {
    EXPECT_EQ(Importar({"1;2026", "", Linha(forma), "9"}), "00 [0 ]");
    EXPECT_EQ(Documentos("NUM_DOC, CHV_NFSE, DT_DOC, DT_EXE_SERV, VL_DOC, A.VL_ISS, VL_PIS_RET, "
                         "VL_COFINS_RET, TEMISSRETIDO, Q.NOME, CNPJ, CPF, IE, MUNICIPIO, IDMUNICIPIO, COD_MUN, "
                         "ENDERECO, NUM, COMPL, BAIRRO, Q.UF, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, DEDUCAOISS, ATIVIDADE, "
                         "CAST(DESCR_ITEM AS VARCHAR(99)), COD_LST, (SELECT CAST(LIST(COD_RECEITA || ' ' || (VL_BC + "
                         "VL_IMPOSTO)) AS VARCHAR(199)) FROM ES02_REGA17R)"),
              "1234|AB12|2026-10-05|2026-10-05|1500|45.5000|9.7500|45|1|João|99888777000166||255|curitiba|"
              "4006|4106902|Ipê|10|Sala 2|Água|PR|1300|45.5000|3.5000|200|1401|Reparo; 2\tx|1401|"
              "1010 1545.5000,0714 1522.5000,0910 1665,1101 1509.7500,1102 1545,1103 1515");
  }
}

TEST_F(TBlumenau, CanceladasValoresTomadoresEPeriodo) {
  const String data = "24 => 20/10/2026 | 23 => ";
  Importar(
      {// The date of the cancellation stands apart, and is the note's own where none is given.
       Linha(';', data + "C"), Linha('\t', "23 => C"), Linha(';', "23 => C | 24 => 31/02/2026"),
       // With fixed widths it takes the place of the note's date, and the service has none.
       Linha('L', data + "C"), Linha('L', "23 => C | 24 => 00000000"),
       // A small "c" moves the date, but the note stays in force.
       Linha('L', data + "c"), Linha(';', data + "c"), Linha('L', data + "N"),
       // With fixed widths the last two digits are cents; the branch bills itself. A person, without a registration.
       // Dots are read past; no service code; the state as the city has it; another month, but the file's period. The
       // last amount, which lacks its separator, has its width; a taker without a number, of a city that nobody knows.
       Linha('L', "27 => 1234 | 33 => 2 | 52 => -100 | 35 => 11222333000181"),
       Linha(';', "27 => 1234 | 33 =>  | 48 => -1 | 34 => 1 | 35 => 00012345678909 | 37 => 000"),
       Linha(';', "3 => 01/11/2026 | 27 => 12.5 | 29 => 14.01 | 35 => 12.345.678/0001-95 | 37 => ISENTO | 45 => "),
       Substituir(Linha(';', "35 =>  | 44 => Vila X | 45 =>  | 52 => 000000000001,75xReparo | 53 => §"), ";§", "")});
  EXPECT_EQ(Documentos("COD_SIT, DT_DOC - DT_INI, DT_EXE_SERV - DT_DOC, VL_DOC, VL_PIS_RET + VL_COFINS_RET, ATIVIDADE"),
            "2|4|15|0|0|-\n2|4|0|0|0|-\n2|4|-|0|0|-\n2|19|-|0|0|-\n2|4|-|0|0|-\n0|19|0|1500|54.7500|1401\n"
            "0|4|0|1500|54.7500|1401\n0|4|0|1500|54.7500|1401\n0|4|0|12.3400|45|1401\n0|4|0|1234|9.7500|1401\n"
            "0|31|0|125|54.7500|\n0|4|0|1500|46.7500|1401");
  EXPECT_EQ(Tabela("SELECT CNPJ, CPF, IE, COD_MUN, UF FROM ES02_REG0150"),
            "99888777000166||255|4106902|PR\n|12345678909||4106902|PR\n12345678000195||ISENTO|4106902|PR\n||255|0|");
  EXPECT_EQ(Contar("ES02_REGA17R"), 5 * 6 + 2 * 5);
}

// One bad field, or a line cut off, and nothing of the file is stored.
TEST_F(TBlumenau, ArquivosInvalidos) {
  for (const auto& [campo, texto] : Casos("2 => x | 2 => 2147483648 | 3 => 2026-10-05 | 3 =>  | 22 => T | 32 => 1x"))
    EXPECT_TRUE(Contem(Importar({Linha('\t'), Linha(';', campo + " => " + texto)}), "01 '" + texto + "' não é "));
  for (const auto& linha : {Linha('L').substr(0, 1100), Linha(';').substr(0, 180)})
    EXPECT_EQ(Importar({Linha(';'), linha}), "01 A linha da nota 1234 está incompleta.;");
  EXPECT_EQ(Importar({"1", "9"}), "01 ") << "a file without notes has no date";
  EXPECT_EQ(Contar("ES02_REG0150"), 0);
}

}  // namespace impnfse::testes::blumenau
