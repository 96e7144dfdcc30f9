#include "Apoio.h"

namespace impnfse::testes::dbseller {

// A note of the branch to a taker in Curitiba, who retains.
constexpr const char* kNota = R"(<CompNfse><Nfse><InfNfse>Numero=98765432109876;CodigoVerificacao=K9;
DataEmissao=2026-03-15T10:20:30;NaturezaOperacao=1-b2;OptanteSimplesNacional=1;<Servico><Valores>ValorServicos=300;
ValorDeducoes=7;ValorPis=1;ValorCofins=2;ValorInss=3;ValorIr=4;ValorIss=15;ValorCsll=5;IssRetido=1;ValorIssRetido=16;
BaseCalculo=280;Aliquota=5.5;DescontoIncondicionado=20;</Valores>ItemListaServico=07.02;Discriminacao=Obra;
CodigoMunicipio=42-04202;CodigoTributacaoMunicipio=0105;</Servico><PrestadorServico><IdentificacaoPrestador>
Cnpj=11222333000181;</IdentificacaoPrestador>RazaoSocial=Aurora;<Endereco>EnderecoDescricao=Rua B;Numero=5;
CodigoMunicipio=42.09102;Uf=;</Endereco></PrestadorServico><TomadorServico><IdentificacaoTomador><CpfCnpj>
Cnpj=99888777000166;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Bar;<Endereco>EnderecoDescricao=Rua A;Numero=10;
Complemento=Sala;Bairro=Centro;CodigoMunicipio=41/06902;Uf=PR;</Endereco></TomadorServico></InfNfse></Nfse>
<NfseCancelamento><Confirmacao><Pedido><InfPedidoCancelamento>CodigoCancelamento=1;</InfPedidoCancelamento></Pedido>
<InfConfirmacaoCancelamento>Sucesso=;</InfConfirmacaoCancelamento></Confirmacao></NfseCancelamento></CompNfse>)";
const String kRaiz = "<ConsultaRPSCompetencia xmlns='urn:u'><ListaNfse>{}</ListaNfse></ConsultaRPSCompetencia>";
// The branch is the taker, of an issuer with what follows for a number.
const String kTomada = "99888777000166 => 11222333000181 | Cnpj=11222333000181;</IdentificacaoPrestador> => ";

struct TDBSeller : TTesteComBanco {
  // As ImportarNotas does, with a progress bar.
  String Importar(const std::vector<String>& notas, const String& raiz = kRaiz) {
    String xml;
    for (const auto& trocas : notas) xml += Elementos(Trocar(kNota, trocas));
    const auto arquivo = Pasta.Gravar("n.xml", Substituir(raiz, "{}", xml));
    TImpNFSe i;
    i.BarraProgresso = &Barra;
    i.DadosArquivo = {.Arquivo = arquivo, .CodigoLeiaute = "54", .TipoImportacao = "NFSE", .IDFILIAL = 0};
    i.Start();
    i.WaitFor();
    return Resultado(i);
  }
  TVXBarraProgresso Barra;
};

// The base tells the retained taxes by the layout's own answers: in order, each over the note's base, ISS alone with a
// rate, and none of a value of 0.
TEST_F(TDBSeller, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Importar({""}), "10 [0 98765432109876]");
  EXPECT_EQ(
      Documentos("NUM_DOC, COD_SIT, IND_PGTO, DT_DOC, DT_EXE_SERV, CHV_NFSE, VL_DOC, A.VL_DESC, A.VL_ISS, VL_PIS_RET, "
                 "VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, IE, Q.COD_MUN, ENDERECO, NUM, COMPL, BAIRRO, UF, COD_PAIS, "
                 "OPTANTESIMPLES, NUM_ITEM, QTD, VL_ITEM, I.VL_DESC, DEDUCAOISS, ATIVIDADE, VL_BC_ISS, I.VL_ISS, "
                 "ALIQ_ISS, MUNICIPIODEVISS, I.AUX1, CFOPICMS, COD_LST, CAST(DESCR_ITEM AS VARCHAR(9))"),
      "65432109876|0|0|2026-03-15|2026-03-15|K9|300|20|15|1|2|1|Bar|99888777000166||4106902|Rua A|10|Sala|Centro|PR|"
      "1058||1|1|300|20|7|01.05|280|15|5.5000|4204202|12|6.933.000|702|Obra");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO, R.ALIQUOTA"),
            "1010|280|15|5.5000\n0714|280|4|0\n0910|280|3|0\n1101|280|1|0\n1102|280|2|0\n1103|280|5|0");
  Importar({"ValorPis=1; => ValorPis=0; | ValorCsll=5; => ", "IssRetido=1 => IssRetido=2",
            "ValorIss=15 => ValorIss=0 | ValorIr=4; =>  | ValorInss=3; =>  | ValorCofins=2; => "});
  EXPECT_EQ(Tabela("SELECT IDREGA100 - 1, COD_RECEITA FROM ES02_REGA17R WHERE IDREGA100 > 1 ORDER BY IDREGA17R"),
            "1|1010\n1|0714\n1|0910\n1|1102\n2|0714\n2|0910\n2|1101\n2|1102\n2|1103\n3|1101\n3|1103");
}

// Only the city's "1" cancels, a request doesn't; only a 1 retains. The activity goes by the item of the list, and the
// ISS to the taker's city, then to the branch's, where the service doesn't tell them.
TEST_F(TDBSeller, CancelamentoRetencaoEServico) {
  Importar({"Sucesso= => Sucesso= 1x", "Sucesso= => Sucesso=true", "Sucesso= => Sucesso=2", "IssRetido=1; => ",
            "IssRetido=1 => IssRetido=S | =0105 => =", "=42-04202 => =0",
            "=42-04202 => = | 41/06902 => x | 07.02 => x | =0105 => =S | =Obra => =Outra"});
  EXPECT_EQ(Documentos("COD_SIT, IND_PGTO || CHV_NFSE, VL_DOC, TEMISSRETIDO, ATIVIDADE, MUNICIPIODEVISS, COD_LST"),
            "2||0|0|-|-|-\n0|0K9|300|1|01.05|4204202|702\n0|0K9|300|1|01.05|4204202|702\n0|0K9|300|0|01.05|4204202|"
            "702\n0|0K9|300|0|07.02|4204202|702\n0|0K9|300|1|01.05|4106902|702\n0|0K9|300|1|S|4205407|0");
}

// Who becomes a participant: a taker without a number (once a city), one abroad, an issuer by its CPF, and the company
// itself when it bills itself, in both of its documents.
TEST_F(TDBSeller, Participantes) {
  const String semNumero = "Cnpj=99888777000166; => ";
  Importar({semNumero, semNumero, semNumero + " | 41/06902 => 9999999 | Uf=PR => Uf=EX",
            kTomada + "<Cnpj/>Cpf=52998224725;</IdentificacaoPrestador> | Nacional=1 => Nacional=2",
            kTomada + "Cnpj=55666777000188;Cpf=9;</IdentificacaoPrestador> | Nacional=1 => Nacional= 1",
            kTomada + "Cnpj=66777888000199;</IdentificacaoPrestador>", "99888777000166 => 11222333000181"});
  EXPECT_EQ(Tabela("SELECT COD_PART, NOME, CNPJ, CPF, COD_MUN, UF, COD_PAIS, OPTANTESIMPLES FROM ES02_REG0150"),
            "1|Bar|||4106902|PR|1058|\n2|Bar|||9999999|EX|1058|\n3|Aurora||52998224725|4209102|SC|1058|N\n"
            "4|Aurora|55666777000188||4209102|SC|1058|N\n5|Aurora|66777888000199||4209102|SC|1058|S\n"
            "6|Bar|11222333000181||4106902|PR|1058|");
  EXPECT_EQ(Documentos("IND_OPER, A.COD_PART, CFOPICMS"),
            "1|1|6.933.000\n1|1|6.933.000\n1|2|6.933.000\n0|3|1.933.000\n0|4|1.933.000\n0|5|1.933.000\n"
            "1|6|6.933.000\n0|6|2.933.000");
}

// Another root is told as an error here; what can't be read ends the file, with its own text, behind the notes ahead.
TEST_F(TDBSeller, ErrosETextoDoProgresso) {
  const String alheia = "11222333000181 => 9", outra = "109876; => 109872;";
  EXPECT_EQ(Importar({""}, Substituir(kRaiz, "RPSCompetencia", "Rps")), "01 !estrutura estrutura;");
  EXPECT_EQ(Importar({alheia}), "01 !alheia Documento: 98765432109876 - alheia;alheia;");
  EXPECT_EQ(Importar({"", "ValorIr=4 => ValorIr=x", ""}), "11 [0 98765432109876]'x' não é um valor decimal válido;");
  EXPECT_EQ(Importar({}, "<a>"), "01 XML malformado na linha 1.;;");
  String visto;
  Application->SetAoProcessarMensagens([&] { visto += Barra.BuscarBarraProgresso(1)->GetTexto() + "; "; });
  EXPECT_EQ(Importar({alheia, outra}), "11 [0 98765432109872]Documento: 98765432109876 - alheia;");
  EXPECT_EQ(Substituir(visto, Pasta / "n.xml", "~"),
            "Carregando documento 0 (Nº 98765432109876) de 1. ~; Carregando documento 0 (Nº 98765432109876) de 1. ~; "
            "Carregando documento 1 (Nº 98765432109872) de 1. ~; Carregando documento 1 (Nº 98765432109872) de 1. ~; ");
}

}  // namespace impnfse::testes::dbseller
