#include "Apoio.h"

namespace impnfse::testes::tecnosistemascfse {

// A cancelled receipt, which this layout imports as one in force.
constexpr std::string_view kCupom = R"(<CupomFiscal>Status=C;Numero=1202600000000123;ChaveAcesso=AB-1;<Prestador>
<CpfCnpj>Cnpj=11222333000181;</CpfCnpj>RazaoSocial=Loja;</Prestador><EnderecoPrestador>Endereco=Rua A;Numero=10;
Complemento=Sala;Bairro=Sul;CodigoMunicipio=42.05407;CodigoPais=249-6;</EnderecoPrestador><DadosTomador>Nome=João;
<CpfCnpj>Cnpj=;Cpf=123;</CpfCnpj></DadosTomador><Valores>BaseCalculo=91;ValorIss=99;</Valores><Servicos>{}</Servicos>
</CupomFiscal>)";
const String kServico = R"(<tcDadosServico><Valores>BaseCalculo=92;Aliquota=5;ValorIss=14;ValorServicos=100;
ValorDeducoes=7;ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorCsll=6;DescontoIncondicionado=8;</Valores>
IssRetido=2;ItemListaServico=0105;Discriminacao=Aula;CodigoMunicipio=42.09102;MunicipioIncidencia=41.06902;
</tcDadosServico>)";
const String kDeOutro = "11222333000181 => 99888777000166 | Cpf=123 => Cpf=11222333000181";

struct TTecnosistemasCFSe : TTesteComBanco {
  String Importar(const String& bytes) {
    return Resultado(*TTesteComBanco::Importar(Pasta.Gravar("n.xml", bytes), "27"));
  }
  // Receipts and the services of each, told by what they replace in the usual ones.
  static String Arquivo(const std::vector<String>& cupons, const std::vector<String>& servicos = {""}) {
    String linhas, xml = "<ConsultarCupomFiscalResposta xmlns='u'><ListaCupomFiscal>";
    for (const auto& trocas : servicos) linhas += Trocar(kServico, trocas);
    for (const auto& trocas : cupons) xml += Elementos(Trocar(Substituir(kCupom, "{}", linhas), trocas));
    return xml + "</ListaCupomFiscal></ConsultarCupomFiscalResposta>";
  }
};

// The receipt is of today's month and has no date; the taker is a number and a name. With one service, its base is the
// receipt's, but that of its taxes its own.
TEST_F(TTecnosistemasCFSe, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar(Arquivo({"", "Cpf=123 => Cpf=", kDeOutro})),
            "10 [0 1202600000000123][0 1202600000000123][1 1202600000000123]");
  EXPECT_EQ(
      Documentos("FIRST 1 IIF(CURRENT_DATE BETWEEN DT_INI AND DT_FIN, 1, 0), NUM_DOC, COD_SIT, DT_DOC, "
                 "DT_EXE_SERV, IND_PGTO, CHV_NFSE, VL_DOC, A.VL_DESC, A.VL_ISS, TEMISSRETIDO, NUM_ITEM, VL_ITEM, "
                 "I.VL_DESC, QTD, VL_BC_ISS, I.VL_ISS, ALIQ_ISS, DEDUCAOISS, ATIVIDADE, TPRECOLHIMENTO, CFOPICMS, "
                 "MUNICIPIODEVISS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(20))"),
      "1|202600000000123|0|-|-|0|AB-1|92|8|14|0|1|100|8|1|91|14|5|7|01.05|2|5.933.000|4106902|0105|Aula");
  EXPECT_EQ(Documentos("FIRST 5 R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "0714|92|4|0\n0910|92|3|0\n1101|92|1|0\n1102|92|2|0\n1103|92|6|0");
  EXPECT_EQ(Tabela("SELECT IND_OPER, NOME, CPF, CNPJ, IE, COD_MUN, UF, ENDERECO, NUM, COMPL, BAIRRO, COD_PAIS, "
                   "Q.IDREG0000 FROM ES02_REGA100 LEFT JOIN ES02_REG0150 Q USING (COD_PART) ORDER BY IDREGA100"),
            "1|João|123||ISENTO|0||||||1058|0\n1|-|-|-|-|-|-|-|-|-|-|-|-\n"
            "0|Loja||99888777000166|ISENTO|4205407|SC|Rua A|10|Sala|Sul|2496|1");
  // The company that bills itself is its own participant, on either side.
  EXPECT_EQ(Importar(Arquivo({"Cpf=123 => Cpf=11222333000181"})), "10 [0 1202600000000123][1 1202600000000123]");
  EXPECT_EQ(Tabela("SELECT NOME, COD_MUN FROM ES02_REG0150 WHERE CNPJ = '11222333000181'"), "João|0\nLoja|4205407");
}

// Once a service retained ISS, all behind it carry theirs as retained too. The base of each of several is its value;
// that of its taxes too, when it has none.
TEST_F(TTecnosistemasCFSe, ISSRetidoDoServicoEmDiante) {
  Importar(
      Arquivo({""}, {"Retido=2 => Retido=2,0 | =92 => =0 | =41.06902 => =0", "Retido=2 => Retido=1 | =92 => =93", ""}));
  EXPECT_EQ(Documentos("VL_DOC, A.VL_DESC, A.VL_ISS, TEMISSRETIDO, NUM_ITEM, VL_BC_ISS, TPRECOLHIMENTO, "
                       "MUNICIPIODEVISS"),
            "276|24|42|1|1|100|2,0|4209102\n276|24|42|1|2|100|1|4106902\n276|24|42|1|3|100|2|4106902");
  EXPECT_EQ(Tabela("SELECT VL_BC, COUNT(*), MAX(ALIQUOTA) FROM ES02_REGA17R GROUP BY 1 ORDER BY 1"),
            "92|6|5\n93|6|5\n100|5|0");
  // Nothing of it goes on to the next receipt; the tags of the services vary.
  Banco().Executar("DELETE FROM ES02_REGA100");
  Importar(Arquivo({"=1202600000000123 => =8 | Retido=2 => Retido=1",
                    "=1202600000000123 => =9 | tcDadosServico> => TcDadosServico> | Servicos> => Servico>"}));
  EXPECT_EQ(Documentos("NUM_DOC, VL_DOC, TEMISSRETIDO, TPRECOLHIMENTO"), "8|92|1|1\n9|92|0|2");
}

// A declaration of UTF-16 in lower case is put right, one in capitals isn't. A file that is what it declares reads
// well. What can't be opened isn't reported; what is wrong behind that is.
TEST_F(TTecnosistemasCFSe, AberturaDoArquivo) {
  const auto declarar = [](const String& codificacao, const String& trocas) {
    return fmt::format("<?xml version=\"1.0\" encoding=\"{}\"?>{}", codificacao, Arquivo({trocas}));
  };
  const auto emUTF16 = [](String latina) {
    for (auto i = latina.size(); i > 0; --i) latina.insert(i, 1, '\0');
    return "\xFF\xFE" + latina;
  };
  const String latina = "João => Jo\xE3o | Cpf=123 => Cpf=", lido = "10 [0 1202600000000123]";
  EXPECT_EQ(Importar(declarar("utf-16", "Cpf=123 => Cpf=1")), lido);
  EXPECT_EQ(Importar(declarar("UTF-16", "")), "00 ;");
  EXPECT_EQ(Importar(emUTF16(declarar("utf-16", latina + "2"))), lido);
  EXPECT_EQ(Importar(emUTF16(declarar("UTF-16", latina + "3"))), lido);
  EXPECT_EQ(Importar(declarar("ISO-8859-1", latina + "4")), lido);
  EXPECT_EQ(Importar(declarar("utf-8", latina + "5")), lido) << "not what it says";
  EXPECT_EQ(Importar(Arquivo({latina + "6"})), lido);
  EXPECT_EQ(Tabela("SELECT CPF, NOME FROM ES02_REG0150"), "1|João\n2|João\n3|João\n4|João\n5|João\n6|João");
  EXPECT_EQ(Importar(Substituir(Arquivo({""}), "Resposta", "Outra")), "00 ;");
  EXPECT_EQ(Importar(Arquivo({""}) + "<"), "00 ;");
  EXPECT_EQ(Importar(Arquivo({"11222333000181 => 9"})), "01 !alheia alheia;alheia;");
  EXPECT_EQ(Importar(Arquivo({"", "=100 => =x"})), "11 [0 1202600000000123]!estrutura ");
}

}  // namespace impnfse::testes::tecnosistemascfse
