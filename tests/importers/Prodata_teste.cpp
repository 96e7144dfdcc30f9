#include "Apoio.h"

namespace impnfse::testes::prodata {

constexpr std::string_view kItem = R"(<itemDeServico>cnpjPrestadorTomador=99888777000166;
razaoSocialDePrestadorTomadorNaoCadastrado=Bar;numeroDaNotaFiscal=7;serieDaNotaFiscal=U;dataDaNotaFiscal=2026-03-15;
notaFiscalCancelada=0;historicoDaNotaFiscal=Obra;valorDaNotaFiscal=1200;baseDeCalculo=333.33;aliquota=2.75;
recolhidoPeloTomador=0;</itemDeServico>)";

struct TProdata : TTesteComBanco {
  // Imports a declaration of that kind.
  String Importar(const String& tipo, const std::vector<String>& itens, const String& cgc = kCNPJFilial) {
    return ImportarNotas("48", kItem, itens,
                         fmt::format("<declaracaoDeServicoDms xmlns='u'><contribuinte><cgc>{}</cgc></contribuinte>"
                                     "<servicoDms><tipo>{}</tipo></servicoDms><itensDeServico>{{}}</itensDeServico>"
                                     "</declaracaoDeServicoDms>",
                                     cgc, tipo));
  }
};

// Services of kind 1 are provided, those of any other kind, none as well, are taken; only a 1 says yes. The ISS is
// computed, toward zero. A declaration of someone else has the company on the other side of its items, and their name
// is then the taxpayer's.
TEST_F(TProdata, TiposSinaisEDeclaracaoAlheia) {
  Banco().Executar("UPDATE CA06_MUNICIPIO_LINHA SET CODIGOFEDERAL = '0' WHERE CODIGOFEDERAL = '5300108'");
  EXPECT_EQ(Importar("2", {}), "10 ") << "a month without services";
  EXPECT_EQ(
      Importar("1", {"PeloTomador=0 => PeloTomador=1", "99888777000166 => ", "Cancelada=0 => Cancelada=1 | 1200 => x",
                     "PeloTomador=0 => PeloTomador=S | Cancelada=0 => Cancelada=S"}),
      "10 [0 ][0 ][0 ][0 ]");
  EXPECT_EQ(Importar("", {"99888777000166 => 12345678909"}), "10 [1 ]");
  EXPECT_EQ(Importar("1", {"99888777000166 => 11222333000181", ""}, "55666777000188"), "11 [1 ]!alheia alheia;");
  EXPECT_EQ(Importar("S", {"=7; => =8;", "2.75 => x", ""}), "11 [1 ]!estrutura ") << "what came before stays";
  EXPECT_EQ(
      Documentos(
          "FIRST 1 SER, DT_DOC, DT_EXE_SERV, VL_DOC, NOME, UF, VL_ITEM, VL_BC_ISS, ALIQ_ISS, ATIVIDADE, "
          "MUNICIPIODEVISS, CAST(DESCR_ITEM AS VARCHAR(9)), COD_LST, R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
      "U|2026-03-15|2026-03-15|1200|Bar||1200|333.3300|2.7500||4205407|Obra||1010|333.3300|9.1665|2.7500");
  EXPECT_EQ(
      Documentos(
          "IND_OPER, NUM_DOC, SER, A.DT_DOC, NOME, UF, COD_SIT, TEMISSRETIDO, CNPJ, CPF, A.VL_ISS, I.VL_ISS, R.VL_BC"),
      "1|7|U|2026-03-15|Bar||0|1|99888777000166||9.1665|9.1665|333.3300\n1|7|U|2026-03-15|-|-|0|0|-|-|9.1665|9.1665|-\n"
      "1|7|U|2026-03-15|Bar||2|0|99888777000166||0|-|-\n1|7|U|2026-03-15|Bar||0|0|99888777000166||9.1665|9.1665|-"
      "\n0|7|U|2026-03-15|Bar||0|0||12345678909|9.1665|9.1665|-\n0|7|U|2026-03-15|Bar||0|0|55666777000188||9.1665|"
      "9.1665|-\n0|8|U|2026-03-15|Bar||0|0|99888777000166||9.1665|9.1665|-");
}

}  // namespace impnfse::testes::prodata
