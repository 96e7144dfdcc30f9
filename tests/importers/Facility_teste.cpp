#include "Apoio.h"
#include "XMLFormato.h"

namespace impnfse::testes::facility {

// A field of fixed length, in characters; separators within it separate nothing.
String Fixo(std::string_view texto, int tamanho) { return fmt::format("{:<{}}", texto, tamanho); }

const String kPessoa = "30;J;99888777000166; Bar Azul ;" + Fixo("Rua São;João", 40) + ";10;" + Fixo("Sala;ç", 20) +
                       ";Centro;curitiba;PR;80010-000;1;2\n";
const String kSaida = "10;J;11222333000181;3;77;CHV;05/10/2026;10:00;J;99888777000166;1000.50;20;15;110;10;N;" +
                      Fixo("obs; ç", 250) + ";;;6,5;30;9\n20;J;11222333000181;x;77;1701;2.5;" + Fixo("Aula; ção", 250) +
                      ";0;1000;100;7;;S\n" + kPessoa;
const String kEntrada = "10;a;b;77;c;J;99888777000166;J;11222333000181;05/10/2026;600;N;o;p\n" +
                        String("20;1;2;3;4;5;6;7;8;0101;2;500;0;0;;1;1;z\n") + kPessoa;

struct TFacility : TTesteComBanco {
  // Codes of the federal revenue service and postal codes, which the shipped table doesn't have.
  TFacility() {
    Banco().Executar(
        "UPDATE CA06_MUNICIPIO_LINHA SET CODSRF = '7667', CEPGERAL = '80', CEPFINAL = '82' WHERE NOME = 'Londrina'");
  }
  void Executar(const String& texto) {
    Front.emplace();
    Front->BarraProgresso = &Barra;
    Front->DadosArquivo = {.Arquivo = Pasta.Gravar("n.txt", texto), .CodigoLeiaute = "34", .TipoImportacao = "NFSE"};
    Front->Start();
    Front->WaitFor();
  }
  // The columns of the documents of a file. Its notes, between " & ", are told by what replaces what in a usual one
  // ("@" is the other party's number); the lines ahead of them belong to none.
  String Notas(const String& colunas, const String& notas = "", const String& tipo = "3") {
    const auto& modelo = tipo == "3" ? kSaida : kEntrada;
    auto texto = fmt::format("\xEF\xBB\xBF{};{};x\n90;\n\n{}", 10, tipo, modelo.substr(modelo.find("20;")));
    const auto todas = Substituir(notas + " & ", "@", "99888777000166");
    for (std::string_view resto = todas; !resto.empty();) texto += Trocar(modelo, formato::CortarAte(resto, " & "));
    Banco().Executar("DELETE FROM ES02_REGA100");
    Executar(texto);
    return Documentos(colunas);
  }
  TVXBarraProgresso Barra;
  const TFrameVXBarraProgressoItem& Item = *Barra.BuscarBarraProgresso(1);
  std::optional<TImpNFSe> Front;
};

TEST_F(TFacility, DocumentoDeSaida) {
  EXPECT_EQ(Notas("NUM_DOC, SER, CHV_NFSE, DT_DOC, VL_DOC, A.VL_DESC, A.VL_ISS, VL_PIS_RET, "
                  "VL_COFINS_RET, TEMISSRETIDO, NOME, ENDERECO, NUM, COMPL, BAIRRO, UF, COD_LST, "
                  "CAST(DESCR_ITEM AS VARCHAR(99)), VL_ITEM, I.VL_DESC, DEDUCAOISS, ALIQ_ISS, ATIVIDADE"),
            "77|3|CHV|2026-10-05|1000.5000|20|22.5000|6.5000|30|1|Bar Azul|Rua São;João|10|Sala;ç|Centro|PR|"
            "1701|Aula; ção|1000|20|100|2.5000|17.01");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO"),
            "0714|1000.5000|15\n0910|1000.5000|110\n1101|1000.5000|6.5000\n1102|1000.5000|30\n1103|1000.5000|10");
}

// A file of kind 2 completes the issuer and begins at the taker's side, one of kind 1 the other way round. A note
// between two branches is two documents. All lines of a note are number 1.
TEST_F(TFacility, DocumentosDeEntrada) {
  Registrar(Filial(kOutraFilial, "PR"));
  const String trocar = "J;@;J;11222333000181 => J;11222333000181;J;@";
  const String deCasa = "@ => 11222333000262 | ;77; => ;78;";
  EXPECT_EQ(Notas("NUM_DOC, IND_OPER, P.IDFILIAL, SER, VL_DOC, A.VL_ISS, NOME, NUM_ITEM, COD_LST, "
                  "CAST(DESCR_ITEM AS VARCHAR(99)), I.ChaveCondicaoAdicional",
                  "30; => 20;1;2;3;4;5;6;7;8;999;2;100;0;0;;1;1;z\n30; & " + deCasa, "2"),
            fmt::format("77|0|1|0|600|12|Bar Azul|{0}00\n77|0|1|0|600|12|Bar Azul|1|999||01\n"
                        "78|0|1|0|600|10|Bar Azul|{0}10\n78|1|2|0|600|10||{0}10",
                        "1|101|Análise e desenvolvimento de sistemas.|"));
  EXPECT_EQ(Notas("NUM_DOC, IND_OPER, P.IDFILIAL, NOME", trocar + " & " + trocar + " | " + deCasa, "1"),
            "77|1|1|Bar Azul\n78|1|1|Bar Azul\n78|0|2|");
  EXPECT_EQ(Front->GetResumo().Erro, "Documentos carregados: 77, 78, 78. ");
  EXPECT_TRUE(Item.GetPosicao() == 2 && Item.GetValorMaximo() == 1 &&
              Item.GetTexto().ends_with("1 de 1. " + Pasta / "n.txt"));
}

// A CPF loses the zeros that fill it up to the length of a CNPJ, on either side. A kind that is none is a company's; an
// empty one leaves what the note said. A city that isn't found is looked up by its postal code.
TEST_F(TFacility, NumerosEMunicipiosDasPessoas) {
  EXPECT_EQ(
      Notas("CPF, CNPJ, COD_MUN, NOME",
            "J;@ => F;00012345678909 & J;@ => F;11144477735000 & J;@ => F;000444777 & J;@ => f;98888777222000 & "
            "J;@ => F;00022345678909 | 30;F; => 30;; & 30; => 31; | J;@ => ;96888777000166 & curitiba => x? | @ => 9 & "
            "curitiba;PR;80 => x?;PR;99 | @ => 8 & @ => "),
      "12345678909||4106902|Bar Azul\n11144477735||4106902|Bar Azul\n000444777||4106902|Bar Azul\n"
      "|98888777222000|4106902|Bar Azul\n22345678909||4106902|Bar Azul\n|96888777000166|0|\n"
      "9||4113700|Bar Azul\n8||0|Bar Azul\n-|-|-|-");
}

// The issuer's kind stands where the taker's should: the taker's number becomes the note's value, and so on.
TEST_F(TFacility, EmpresaTomadoraDePessoaFisicaDeslocaOsCampos) {
  EXPECT_EQ(Notas("VL_DOC, A.VL_DESC, VL_PIS_RET, VL_COFINS_RET, VL_ITEM", "10;J;11 => 10;F;11"),
            "99888777000166|1000.5000|0|6.5000|1000");
}

// ISS is due where the service was rendered, to the participant's municipality, to the branch's.
TEST_F(TFacility, SituacaoTributariaEMunicipioDoISS) {
  EXPECT_EQ(Notas("TPRECOLHIMENTO, VL_BC_ISS, I.VL_ISS",
                  ";0;1000 => ;5;1000 & ;0;1000 => ;06;1000 & ;0;1000 => ;;1000 & ;0;1000 => ;X;1000"),
            "05|900|22.5000\n06|0|0\n|0|0\n0X|0|0");
  EXPECT_EQ(Notas("MUNICIPIODEVISS",
                  ";;S => ;7667;N & ;;S => ;07667;0 & ;;S => ;1; & ;;S => ;; & ;;S => ;; | @ =>  & ;;S => ;; | @ => 9 "
                  "| curitiba;PR;80 => x?;PR;99 & ;;S => ;7667;1"),
            "4113700\n4113700\n4106902\n4106902\n4205407\n4205407\n4205407");
  EXPECT_EQ(Notas("MUNICIPIODEVISS", ";;1;1;z => ;7667;1;S;z & ;;1;1;z => ;7667;1;N;z & ;;1;1;z => ;;1;;z", "2"),
            "4106902\n4113700\n4205407");
}

TEST_F(TFacility, CanceladaNaoTemItensNemChaveQuandoPropria) {
  EXPECT_EQ(Notas("COD_SIT, IND_OPER, CHV_NFSE, VL_DOC, VL_ITEM",
                  "N;obs => C;obs & N;obs => c;obs & N;obs => C;obs | @ => 11222333000181 | 10;J;11 => 10;J;9"),
            "2|1||0|-\n0|1|CHV|1000.5000|1000\n2|0|CHV|0|-");
}

// The last note decides whether the report is an error.
TEST_F(TFacility, RelatorioDoQueFoiCarregado) {
  EXPECT_EQ(Notas("NUM_DOC", " & 10;J;11 => 10;J;1 | ;77; => ;78; & 05/10/2026 =>  | ;77; => ;;"), "77");
  EXPECT_EQ(Erros(*Front), "Documentos carregados: 77. Documentos que não foram carregados: 78, 0. " +
                               Front->BuscarErroNaoGerouBloco0() + "\n");
  EXPECT_EQ(Notas("NUM_DOC", "10;J;11 => 10;J;1 & ;77; => ;78;"), "78");
  EXPECT_TRUE(Erros(*Front).empty() && Front->GetTemErros() && Front->GetResumo().Moveu);
}

// One line that can't be read, or that ends in the middle, and nothing of the file is stored.
TEST_F(TFacility, CampoInvalidoOuArquivoIncompleto) {
  for (const auto& [campo, erro] :
       Casos("1000.50;1.000,50 => valor decimal válido | 77;7.7 => número válido | 1701;17.01 => número válido | "
             "05/10/2026;5/1 => data válida")) {
    EXPECT_EQ(Notas("NUM_DOC", " & " + Substituir(campo, ";", " => ")), "");
    EXPECT_TRUE(Contem(Erros(*Front), erro));
  }
  const auto texto = "0;3\n" + kSaida;
  for (const auto corte : {";2.5", ";100;7", "000166;1000.50", ";30;9"}) {
    Executar(texto.substr(0, texto.find(corte) + 3));
    EXPECT_EQ(Erros(*Front), "O arquivo está incompleto: uma linha termina no meio do registro.\n\n") << corte;
  }
  EXPECT_TRUE(Contar("ES02_REGA100") == 0 && Item.GetPosicao() == 0 && Item.GetValorMaximo() == 1);
  Executar("");
  EXPECT_EQ(Erros(*Front), "\n");
}

}  // namespace impnfse::testes::facility
