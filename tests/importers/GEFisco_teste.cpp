#include "Apoio.h"

namespace impnfse::testes::gefisco {

constexpr const char* kC =
    "C;7;A;15/03/2026;N;N;R;100000;5000;90000;;99888777000166;Bar d'Água;Curitiba;80000000;;;;500;400;100;200;300;500;"
    ";;;;;;PR;\n";
constexpr const char* kD =
    "D;7;A;15/03/2026;1;1401;UN;60000;Reparo;500;3000;60000\nD;7;A;15/03/2026;2;105;UN;300.50;Aula;5;20,00;40000\n";

class TGEFisco : public TTesteComBanco {
 protected:
  // Imports one file for each letter, each in a run of its own over a database opened anew; the last one's error list.
  String Importar(const String& letras, const String& c = kC, const String& d = kD) {
    String erros;
    for (const char letra : letras) {
      Reabrir();
      fs::remove_all(Pasta / "morto");
      const auto i = Executar(fmt::format("{}1.txt", letra), letra == 'C' ? c : d);
      erros = Erros(*i);
      Moveu = i->GetResumo().Moveu;
    }
    return erros;
  }
  std::unique_ptr<TImpNFSe> Executar(const String& nome, const String& conteudo) {
    auto i = std::make_unique<TImpNFSe>();
    i->DadosArquivo = {
        .Arquivo = Pasta.Gravar(nome, conteudo), .CodigoLeiaute = "41", .TipoImportacao = "NFSE", .IDFILIAL = 0};
    i->OnArquivoCarregado = [](TArquivoImpBase*) {};
    i->Start();
    i->WaitFor();
    return i;
  }
  String Cabecas() {
    return Tabela(
        "SELECT NUM_DOC, SER, DT_DOC, COD_SIT, IND_OPER, VL_DOC, VL_ISS, VL_PIS_RET, VL_COFINS_RET, "
        "TEMISSRETIDO, Q.NOME, Q.UF, (SELECT COUNT(*) FROM ES02_REGA170 I WHERE I.IDREGA100 = A.IDREGA100), "
        "(SELECT COUNT(*) FROM ES02_REGA17R R WHERE R.IDREGA100 = A.IDREGA100) FROM ES02_REGA100 A LEFT JOIN "
        "ES02_REG0150 Q ON Q.COD_PART = A.COD_PART ORDER BY A.IDREGA100");
  }
  bool Moveu = false;
};

// Heads and items come in any order, also twice, each in a run of its own, and meet in one document.
TEST_F(TGEFisco, CabecasEItensEmQualquerOrdem) {
  for (const auto* const ordem : {"CD", "DC", "CDC", "DCD", "CCDD", "DDCC"}) {
    SCOPED_TRACE(ordem);
    Banco().Executar("DELETE FROM ES02_REGA100");
    EXPECT_EQ(Importar(ordem), "");
    EXPECT_TRUE(Moveu);
    EXPECT_EQ(Cabecas(), "7|A|2026-03-15|0|1|1000|50|1|2|0|Bar d'Água|PR|2|6");
    EXPECT_EQ(Documentos("NUM_ITEM, CAST(DESCR_ITEM AS VARCHAR(9)), VL_ITEM, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, ATIVIDADE, "
                         "UNID, MUNICIPIODEVISS"),
              "1|Reparo|600|600|30|5|14.01|UN|4205407\n2|Aula|400|3.0050|0.2000|0.0500|1.05|UN|4205407")
        << "money has two implied decimals, also where a mark is written";
    EXPECT_EQ(Tabela("SELECT COD_RECEITA, VL_BC, VL_IMPOSTO, ALIQUOTA FROM ES02_REGA17R ORDER BY COD_RECEITA"),
              "0714|900|4|0\n0910|900|3|0\n1010|900|50|0\n1101|900|1|0\n1102|900|2|0\n1103|900|5|0");
  }
  EXPECT_EQ(Contar("ES02_REG0150"), 1);
}

TEST_F(TGEFisco, CorrecoesCanceladasEMeses) {
  const String outra = Trocar(kC, "15/03 => 01/04"), cancelada = Trocar(kC, ";7; => ;8; | ;N;N; => ;C;N;");
  EXPECT_EQ(Importar("C", "\n" + String(kC) + outra + cancelada), "");
  // A correction changes what it says, and leaves what it doesn't.
  Importar("C", Trocar(kC, "100000;5000 => 120000;0 | ;N;N; => ;;N;"));
  EXPECT_EQ(Cabecas(),
            "7|A|2026-03-15|0|1|1200|50|1|2|0|Bar d'Água|PR|0|5\n7|A|2026-04-01|0|1|1000|50|1|2|0|Bar d'Água|PR|0|6\n"
            "8|A|2026-03-15|2|1|1000|50|1|2|0|Bar d'Água|PR|0|6");
  // A key that stands twice in a file is one document, with the items of both lines.
  Importar("D", kC, String(kD) + "D;7;A;15/03/2026;3;1;;100;;0;0;100\n");
  EXPECT_EQ(Tabela("SELECT NUM_ITEM FROM ES02_REGA170 ORDER BY NUM_ITEM"), "1\n2")
      << "a further line without a text is none";
  EXPECT_EQ(Importar("C", Substituir(kC, "99888777000166", "")), "");
  EXPECT_EQ(Tabela("SELECT FIRST 1 COD_PART FROM ES02_REGA100"), "1") << "a line without a party leaves the one stored";
}

TEST_F(TGEFisco, NomesDatasECamposErrados) {
  for (const auto* const nome : {"X1.txt", "c1.txt", "1C.txt"}) {
    const auto i = Executar(nome, kC);
    EXPECT_EQ(Erros(*i), "") << nome;
    EXPECT_TRUE(Pasta.Tem(nome));
  }
  EXPECT_EQ(Importar("C", Substituir(kC, "15/03/2026", "")), "") << "a note without a date is passed over in silence";
  EXPECT_EQ(Importar("C", String(kC) + Substituir(kC, "15/03", "31/02")), "'31/02/2026' não é uma data válida\n");
  EXPECT_EQ(Importar("C", String(kC) + Substituir(kC, ";7;", ";7x;")), "'7x' não é um número válido\n");
  EXPECT_EQ(Importar("D", kC, "D;7;A;15/03/2026;1;1;UN;abc"), "'abc' não é um valor decimal válido\n");
  EXPECT_EQ(Contar("ES02_REGA100"), 0) << "nothing is stored before the last line was read";
}

}  // namespace impnfse::testes::gefisco
