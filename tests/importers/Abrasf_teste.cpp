#include "Apoio.h"
#include "UnVX03704BaseFuncoes.h"

namespace impnfse::testes::abrasf {

// A note of version 1.0, of the branch to a taker in Curitiba, without its declaration.
constexpr std::string_view kInfNfse = R"(<InfNfse Id='n'>Numero=1;Serie=U;CodigoVerificacao= AB-1 ;
DataEmissao=2026-03-15T10:00:00;NaturezaOperacao=1;OptanteSimplesNacional=1;Competencia=2026-02-28;<Servico><Valores>
ValorServicos=1000.00;ValorDeducoes=10.00;ValorPis=6.50;ValorCofins=30.00;ValorInss=11.00;ValorIr=15.00;ValorCsll=9.99;
IssRetido=2;ValorIss=48.50;BaseCalculo=970.00;Aliquota=0.0500;DescontoIncondicionado=20.00;</Valores>
ItemListaServico=17.01;CodigoTributacaoMunicipio=1702;Discriminacao=Consultoria;CodigoMunicipio=4202404;</Servico>
<PrestadorServico><IdentificacaoPrestador>Cnpj=11.222.333/0001-81;</IdentificacaoPrestador>RazaoSocial=Aurora;<Endereco>
Endereco=Rua B;Numero=5;Complemento=S;Bairro=Mar;Cidade=4205407;Estado=SC;</Endereco></PrestadorServico><TomadorServico>
<IdentificacaoTomador><CpfCnpj>Cnpj=99.888.777/0001-66;</CpfCnpj></IdentificacaoTomador>RazaoSocial=Tomador;<Endereco>
Endereco=Rua A;Numero=10;Complemento=Sala 2;Bairro=Centro;CodigoMunicipio=4106902;Uf=PR;</Endereco></TomadorServico>
</InfNfse>)";
// What version 2.x holds besides.
constexpr std::string_view kDeclaracao = R"(<ValoresNfse>BaseCalculo=800.00;Aliquota=3.00;ValorIss=24.00;
ValorLiquidoNfse=700.00;valorPis=1.00;</ValoresNfse><DeclaracaoPrestacaoServico><InfDeclaracaoPrestacaoServico><Servico>
<Valores>ValorServicos=900.00;</Valores>IssRetido=1;ItemListaServico=14.01;Discriminacao=Da declaração;
CodigoMunicipio=4209102;MunicipioIncidencia=4208203;</Servico><Tomador><IdentificacaoTomador><CpfCnpj>
Cpf=123.456.789-09;</CpfCnpj>InscricaoEstadual=IE9;</IdentificacaoTomador>RazaoSocial=Da declaração;<Endereco>
CodigoMunicipio=3550308;</Endereco></Tomador></InfDeclaracaoPrestacaoServico></DeclaracaoPrestacaoServico></InfNfse>)";
const String kAlheia = "11.222.333/0001-81 => 77777777000177";
const String kSemTomador = "TomadorServico> => X>";

String Nota(const String& numero, const String& trocas = "") {
  return Elementos(Trocar(String(kInfNfse), "Numero=1; => Numero=" + numero + "; | " + trocas));
}
// The note of version 2.x, with replacements in what version 1.0 has as well.
String Nota2(const String& trocas = "") {
  return Elementos(Substituir(Trocar(String(kInfNfse), trocas), "</InfNfse>", kDeclaracao));
}
// The element, named with its attributes.
String Em(const String& tag, const String& conteudo) {
  return "<" + tag + ">" + conteudo + "</" + tag.substr(0, tag.find(' ')) + ">";
}
String Comp(const String& infNfse, const String& cancelamento = "") {
  return Em("CompNfse", Em("Nfse versao='1'", infNfse) + Em("NfseCancelamento", cancelamento));
}
String Resposta(const String& raiz, const String& itens) {
  return "<?xml version='1.0' encoding='utf-8'?>" + Em(raiz + " xmlns='urn:x'", Em("ListaNfse", itens));
}

struct TAbrasf : TTesteComBanco {
  // The outcome of the document, which then stands alone in the database.
  String Rodar(const String& xml, const String& leiaute = "44") {
    Banco().Executar("DELETE FROM ES02_REGA100");
    return Resultado(*Importar(Pasta.Gravar("nota.xml", xml), leiaute));
  }
};

TEST_F(TAbrasf, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Rodar(Em("Nfse", Nota("1"))), "10 [0 ]");
  EXPECT_EQ(
      Documentos("COD_SIT, SER, NUM_DOC, CHV_NFSE, DT_DOC, DT_EXE_SERV, IND_PGTO, VL_DOC, A.VL_DESC, A.VL_ISS, "
                 "VL_PIS_RET, VL_COFINS_RET, TEMISSRETIDO, NOME, CNPJ, COD_MUN, ENDERECO, NUM, COMPL, BAIRRO, UF, "
                 "COD_PAIS, OPTANTESIMPLES, NUM_ITEM, QTD, VL_ITEM, I.VL_DESC, DEDUCAOISS, ATIVIDADE, VL_BC_ISS, "
                 "ALIQ_ISS, I.VL_ISS, MUNICIPIODEVISS, CFOPICMS, I.AUX1, CAST(DESCR_ITEM AS VARCHAR(20)), COD_LST"),
      "0|U|1|AB-1|2026-03-15|2026-03-15|0|980|20|48.5000|6.5000|30|0|Tomador|99888777000166|4106902|Rua A|10|Sala 2|"
      "Centro|PR|1058||1|1|1000|20|10|17.02|970|5|48.5000|4202404|6.933.000|1|Consultoria|1701");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO"),
            "0714|970|15\n0910|970|11\n1101|970|6.5000\n1102|970|30\n1103|970|9.9900");
  EXPECT_EQ(Tabela("SELECT IDREG, TIPO, CAMPO, VALOR, CHAVEADICIONAL FROM ES02_AUXMANUTENCAO"),
            "1|NFSE|DT_COMPETENCIA|28.02.2026|" + BuscarInstanciaFuncoes()->GerarHash("AB-1" + Pasta / "nota.xml"));
  // Taken: the issuer is the participant, and tells whether it has opted for Simples.
  const auto tomada = Nota("202600000000123", kAlheia + " | Cnpj=99.888.777/0001-66 => Cnpj=;Cpf=11222333000181");
  EXPECT_EQ(Rodar(Em("NFSE", tomada)), "10 [1 ]");
  EXPECT_EQ(Documentos("IND_OPER, NUM_DOC, NOME, CNPJ, ENDERECO, NUM, COMPL, BAIRRO, COD_MUN, UF, OPTANTESIMPLES"),
            "0|123|Aurora|77777777000177|Rua B|5|S|Mar|4205407|SC|S");
  Rodar(Resposta("ConsultarNfseResposta", Comp(tomada)));
  EXPECT_EQ(Documentos("NUM_DOC"), "202600000000123") << "the whole number in this answer alone";
}

TEST_F(TAbrasf, Tomadores) {
  const auto nota = Nota2(kSemTomador + " | 2026-03-15T10:00:00 => 15/03/2026");
  const auto tomador = [&](const String& xml) {
    Rodar(xml);
    return Documentos("CPF, NOME, COD_MUN, UF, IE, DT_DOC");
  };
  // Its name and place are found in the declaration in every shape, its number in four of them.
  EXPECT_EQ(tomador(Em("Nfse", nota)), "|Da declaração|3550308|SP||2026-03-15");
  EXPECT_EQ(tomador(Em("ListaNfse", Comp(nota))), "12345678909|Da declaração|3550308|SP||2026-03-15");
  for (const auto& [codigo, pais] : Casos(" 2496  => 2496 | EUA => 1058 | -1 => 1058 |  => 1058")) {
    Banco().Executar("DELETE FROM ES02_REG0150");
    Rodar(Em("Nfse", Nota("1", "Uf=PR; => Uf=EX;CodigoPais=" + codigo + ";")));
    EXPECT_EQ(Documentos("COD_PAIS, UF"), pais + "|EX") << codigo;
  }
  // A company that bills itself is its own participant.
  Rodar(Em("Nfse", Nota("1", "99.888.777/0001-66 => 11222333000181")));
  EXPECT_EQ(Documentos("IND_OPER, CNPJ, NOME"), "1|11222333000181|Tomador\n0|11222333000181|Tomador");
}

// Note 2 of 3 is nobody's. The lists go on behind it; two answers end there, and keep the error.
TEST_F(TAbrasf, NotaAlheiaEmCadaForma) {
  const auto alheia = Comp(Nota("2", kAlheia)), comps = Comp(Nota("1")) + alheia + Comp(Nota("3"));
  const auto compls = Substituir(comps, "CompNfse", "ComplNfse"), lista = Em("ListaNfse", comps);
  const String seguem = "11 [0 1][0 3]Documento: 2 - alheia;";
  for (const auto* const raiz :
       {"GerarNfseResposta", "ConsultarNfseLote", "ConsultarNfseResposta", "ConsultarNfseServicoPrestadoResposta"})
    EXPECT_EQ(Rodar(Resposta(raiz, comps)), seguem) << raiz;
  for (const auto& xml : {lista, Trocar(lista, "< => <tc: | <tc:/ => </tc:"), Em("CompNfseList", comps),
                          Em("ArrayOfTcCompNfse", Substituir(comps, "CompNfse", "tcCompNfse")),
                          Resposta("ConsultarNfseResposta", compls)})
    EXPECT_EQ(Rodar(xml), seguem) << xml.substr(0, 80);
  const String terminam = "01 [0 1]!alheia Documento: 2 - alheia;alheia;";
  EXPECT_EQ(Rodar(Resposta("consultarNotaResponse", compls)), terminam);
  EXPECT_EQ(Documentos("NUM_DOC"), "1") << "what came before it is stored, and the file archived";
  EXPECT_FALSE(Pasta.Tem("nota.xml"));
  EXPECT_EQ(Rodar(Resposta("ConsultarNfseFaixaResposta", comps)), terminam);
  // As the last one it leaves its error to any list. A single note has no number in the report.
  EXPECT_EQ(Rodar(Em("ListaNfse", Comp(Nota("1")) + alheia)), terminam);
  for (const auto& xml : {alheia, Em("Nfse", Nota("2", kAlheia)), Em("ConsultarNfseRpsResposta", alheia)})
    EXPECT_EQ(Rodar(xml), "01 !alheia alheia;alheia;alheia;") << "once by its shape, once by the last resort";
}

TEST_F(TAbrasf, ListasDeOutroTipoEVazias) {
  const auto compl_ = Substituir(Comp(Nota("1")), "CompNfse", "ComplNfse");
  // A list of the other kind is no list for these shapes: the last resort takes its first note.
  for (const auto* const raiz : {"GerarNfseResposta", "ConsultarNfseFaixaResposta"})
    EXPECT_EQ(Rodar(Resposta(raiz, compl_ + compl_)), "10 [0 ][0 ]") << raiz;
  EXPECT_EQ(Rodar(Resposta("consultarNotaResponse", Comp(Nota("1")))), "10 [0 ]") << "only ComplNfse there";
  EXPECT_EQ(Rodar(Resposta("ConsultarNfseResposta", "")), "10 ") << "no note, and no error either";
  EXPECT_EQ(Rodar(Em("ListaNfse", Comp("") + Comp("<InfNfse/>") + Comp(Nota("7")))), "10 [0 7]")
      << "a note without content is passed over";
}

TEST_F(TAbrasf, Canceladas) {
  const auto sucesso = [](auto s) { return Em("Confirmacao", Em("InfConfirmacaoCancelamento", Em("Sucesso", s))); };
  const auto pedido = Em("Confirmacao", Em("Pedido", Em("InfPedidoCancelamento", Em("CodigoCancelamento", "1"))));
  const auto situacoes = [&](const String& modelo) {
    String texto;
    for (const auto& prova : {sucesso(" 1 "), sucesso("sim"), sucesso(" True "), sucesso("true"), pedido, String()}) {
      Rodar(Substituir(modelo, "PROVA", prova));
      texto += Tabela("SELECT COD_SIT FROM ES02_REGA100");
    }
    return texto;
  };
  const auto comp = Comp(Nota("1"), "PROVA");
  EXPECT_EQ(situacoes(comp), "200000");
  EXPECT_EQ(situacoes(Em("ListaNfse", comp)), "022220");
  EXPECT_EQ(situacoes(Resposta("ConsultarNfseResposta", comp)), "022220");
  EXPECT_EQ(situacoes(Resposta("ConsultarNfseFaixaResposta", comp)), "000200");
  EXPECT_EQ(situacoes(Resposta("GerarNfseResposta", comp)), "000000");

  // It keeps its number and its month, and nothing else; the next note isn't cancelled by it.
  Rodar(Em("ListaNfse", Comp(Nota("1"), pedido) + Comp(Nota("2"))));
  EXPECT_EQ(Documentos("NUM_DOC, SER, DT_DOC, COD_SIT, CHV_NFSE, IND_PGTO, VL_DOC, NUM_ITEM, (SELECT VALOR FROM "
                       "ES02_AUXMANUTENCAO WHERE IDREG = A.IDREGA100)"),
            "1|U|2026-03-15|2|||0|-|28.02.2026\n2|U|2026-03-15|0|AB-1|0|980|1|28.02.2026");
}

TEST_F(TAbrasf, RespostaDeRPSLeDeNovoDosValoresDaNota) {
  const auto rodar = [&](const String& trocas, const String& leiaute = "44") {
    const auto xml = Em("ConsultarNfseRpsResposta xmlns:ns2='u'", Comp(Nota2(kSemTomador + trocas)));
    Rodar(Trocar(xml, "< => <ns2: | <ns2:/ => </ns2:"), leiaute);
    return Documentos(
        "VL_DOC, A.VL_ISS, VL_PIS_RET, TEMISSRETIDO, CPF, IE, VL_ITEM, VL_BC_ISS, ALIQ_ISS, "
        "I.VL_ISS, ATIVIDADE, CAST(DESCR_ITEM AS VARCHAR(20))");
  };
  // The service has its own description: its values stand, but the declaration says that ISS is retained.
  EXPECT_EQ(rodar(""), "980|48.5000|6.5000|1|12345678909|IE9|1000|970|5|48.5000|17.02|Consultoria");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO").substr(0, 16), "1010|970|48.5000");
  // Without it the declaration's service counts, and what that lacks is the note's.
  const String doRps = "900|24|1|1|12345678909|IE9|900|800|3|24|14.01|Da declaração";
  EXPECT_EQ(rodar(" | <Servico> => <X> | </Servico> => </X>"), doRps);
  // Under code 17 the activity is the item of the list as it stands, also where another code has another one.
  EXPECT_EQ(rodar("", "17"), Substituir(rodar(""), "17.02", "17.01"));
  EXPECT_EQ(rodar(" | 17.01 => 1701", "51"), Substituir(rodar(""), "17.02", "17.01"));
}

TEST_F(TAbrasf, MunicipioDevidoISS) {
  const auto municipio = [&](const String& raiz, const String& nota, const String& leiaute = "44") {
    Rodar(Resposta(raiz, Comp(nota)), leiaute);
    return Tabela("SELECT MUNICIPIODEVISS FROM ES02_REGA170");
  };
  const auto natureza = [](const String& codigo) {
    return Nota("1", "4202404 => 0 | Operacao=1 => Operacao=" + codigo);
  };
  EXPECT_EQ(municipio("GerarNfseResposta", Nota("1", "4202404 => 42.02404")), "4202404");
  EXPECT_EQ(municipio("GerarNfseResposta", natureza("1")), "4205407") << "the branch's";
  EXPECT_EQ(municipio("GerarNfseResposta", natureza("2")), "4106902") << "outside: the taker's";
  EXPECT_EQ(municipio("GerarNfseResposta", natureza("111")), "4205407");
  EXPECT_EQ(municipio("ConsultarNfseResposta", natureza("111")), "4106902");
  EXPECT_EQ(municipio("ConsultarNfseResposta", natureza("511")), "4106902");
  EXPECT_EQ(municipio("ConsultarNfseFaixaResposta", Nota2("4202404 => 0")), "4208203") << "the incidence first";
  EXPECT_EQ(municipio("ConsultarNfseFaixaResposta", Substituir(Nota2("4202404 => 0"), "Incidencia", "")), "4209102");
  EXPECT_EQ(municipio("GerarNfseResposta", Nota2(), "58"), "4208203") << "whatever the note says";
  EXPECT_EQ(municipio("GerarNfseResposta", Substituir(Nota2(), "Incidencia", ""), "58"), "3550308");
  // Under this code the service is the declaration's as well, but the base is the note's.
  EXPECT_EQ(Documentos("VL_DOC, VL_ITEM, R.VL_BC, ATIVIDADE"), "900|900|-|14.01");
  EXPECT_EQ(municipio("ConsultarNfseFaixaResposta", Nota2("1000.00 => 1")), "4202404");
  EXPECT_EQ(Documentos("VL_DOC, VL_ITEM, COD_LST"), "900|900|1401");
}

TEST_F(TAbrasf, AliquotaComoFracaoOuPorcentagemEISSRetido) {
  String notas;
  for (const auto* const aliquota : {"0.0500", "0,0250", "0.0050", "5,00", "0.05", "0,05", "0.12", "0.1200", "", "2"})
    notas += Comp(Nota("1", "0.0500 => " + String(aliquota)));
  Rodar(Em("ListaNfse", notas));
  EXPECT_EQ(Tabela("SELECT ALIQ_ISS FROM ES02_REGA170 ORDER BY IDREGA170"),
            "5\n2.5000\n0.5000\n5\n0.0500\n0.0500\n0.1200\n0.1200\n0\n2");
  // A flag beside the values counts before the one among them; retained ISS without a value of its own is the ISS.
  notas = "";
  for (const auto* const trocas : {"Retido=2 => Retido=1", "Retido=2 => Retido=S", "Retido=2 => Retido= ",
                                   "BaseCalculo=970.00; => BaseCalculo=970.00;ValorIssRetido=3;",
                                   "</Servico> => IssRetido=1;</Servico>", "</Servico> => <IssRetido/></Servico>"})
    notas += Comp(Nota("1", trocas));
  Rodar(Em("ListaNfse", notas));
  EXPECT_EQ(
      Tabela("SELECT A.TEMISSRETIDO, A.VL_ISS, R.VL_IMPOSTO, R.ALIQUOTA FROM ES02_REGA100 A LEFT JOIN ES02_REGA17R R "
             "ON R.IDREGA100 = A.IDREGA100 AND R.COD_RECEITA = '1010' ORDER BY A.IDREGA100"),
      "1|48.5000|48.5000|5\n1|48.5000|48.5000|5\n0|48.5000|-|-\n1|48.5000|3|5\n1|48.5000|48.5000|5\n0|48.5000|-|-");
}

TEST_F(TAbrasf, ItensEntreColchetes) {
  const auto itens = [&](const String& texto, const String& iss, const String& aliquota = "5,00") {
    const auto trocas = fmt::format("Consultoria => {} | Iss=48.50 => Iss={} | 0.0500 => {}", texto, iss, aliquota);
    Rodar(Em("Nfse", Nota("1", trocas)));
    return Documentos("NUM_ITEM, CAST(DESCR_ITEM AS VARCHAR(20)), QTD, VL_ITEM, VL_BC_ISS, ALIQ_ISS, I.VL_ISS");
  };
  const String aulas =
      "{ [[Descricao=Aula][Quantidade=2,00][ValorUnitario=50,00]]\n [ [ Descricao=Livro][Valor=30,00] ] }";
  EXPECT_EQ(itens(aulas, "6,50"), "1|Aula|2|100|100|5|5\n2|Livro|1|30|30|5|1.5000");
  EXPECT_EQ(itens(aulas, "0"), "1|Aula|2|100|0|0|0\n2|Livro|1|30|0|0|0");
  // What the rounding leaves goes to the last item; what is too much isn't taken back once it is below zero.
  const String tercos = "{[[Descricao=A][Valor=33,33]][[Descricao=B][Valor=33,33]][[Descricao=C][Valor=33,34]]}";
  EXPECT_EQ(itens(tercos, "2,50", "2.5"),
            "1|A|1|33.3300|33.3300|2.5000|0.8300\n2|B|1|33.3300|33.3300|2.5000|0.8300\n"
            "3|C|1|33.3400|33.3400|2.5000|0.8400");
  EXPECT_EQ(itens(tercos, "1,00", "2.5"),
            "1|A|1|33.3300|33.3300|2.5000|0.8300\n2|B|1|33.3300|33.3300|2.5000|0.8300\n3|C|1|33.3400|0|0|0");
  EXPECT_EQ(
      itens("{[[Descricao=A][Valor=10][Deducoes=1][DescontoIncondicionado=2][Aliquota=0.0300][Quantidade=0]]}", "1"),
      "1|A|1|10|7|3|1");
  // Half a cent is rounded up, by exact arithmetic.
  EXPECT_EQ(itens("{[[Descricao=A][Valor=40,20]][[Descricao=B][Valor=1]]}", "2", "2.5"),
            "1|A|1|40.2000|40.2000|2.5000|1.0100\n2|B|1|1|1|2.5000|0.9900");
  // Keys are exact, and a field or a group that isn't closed ends there.
  EXPECT_EQ(
      itens("{[[Descricao=A][valor=10][ValorTotal=4]][[descricao=x][Valor=5][aberto]][[Descricao=C][Valor=9", "1"),
      "1|A|1|4|4|5|0.2000\n2||1|5|5|5|0.2500");
  // The taxes stay whole on the first item; an item without an activity has the service's.
  itens("{[[Descricao=A][Valor=10][ItemServico=1.05]][[Descricao=B][Valor=10]]}", "1");
  EXPECT_EQ(Tabela("SELECT ATIVIDADE FROM ES02_REGA170 ORDER BY IDREGA170"), "1.05\n17.02");
  EXPECT_EQ(Tabela("SELECT SUM(VL_IMPOSTO), COUNT(*) FROM ES02_REGA17R"), "72.4900|5");
  EXPECT_EQ(Tabela("SELECT VL_PIS_RET, VL_COFINS_RET FROM ES02_REGA100"), "6.5000|30");
}

TEST_F(TAbrasf, OutrosTextosSaoUmItem) {
  const auto item = [&](const String& texto) {
    Rodar(Em("Nfse", Nota("1", "Consultoria => " + texto)));
    return Documentos("CAST(DESCR_ITEM AS VARCHAR(40)), ALIQ_ISS, VL_ITEM, ATIVIDADE, COD_LST");
  };
  const String resto = "|1000|17.02|1701";
  EXPECT_EQ(item("Descrição: x\nValor: 5"), " x Valor: 5|0.0500" + resto) << "the rate as written, though a fraction";
  EXPECT_EQ(item(" Descrição: x"), " Descrição: x|5" + resto);
  EXPECT_EQ(item("{[a]}"), "{[a]}|5" + resto);
  EXPECT_EQ(item("{abc}"), "|5" + resto) << "a text without any bracket inside is lost";
  EXPECT_EQ(item("{[[Descricao: A]]}"), "[[Descricao: A]]|5" + resto);
  auto filial = Filial();
  filial.RemoverCaracteres = 4;
  Registrar(filial);
  EXPECT_EQ(item("Descrição: x\nVALOR: 5 valor:"), " x\n 5 |0.0500" + resto);
}

TEST_F(TAbrasf, UltimoRecurso) {
  const auto docs = [&](const String& xml) {
    const auto resultado = Rodar(xml);
    return resultado + " " + Documentos("NUM_DOC");
  };
  const auto n = [](const String& numero) { return Em("Qualquer", Nota(numero)); };
  EXPECT_EQ(docs(Em("a", Em("b", n("5")))), "10 [0 ] 5");
  EXPECT_EQ(docs(Em("a", Nota("5") + Nota("6"))), "10 [0 ] 5") << "siblings: the first one alone";
  EXPECT_EQ(docs(Em("a", n("5") + n("6"))), "10 [0 ][0 ] 5\n6") << "found deeper, they don't stop the next";
  EXPECT_EQ(docs(Nota("5")), "10 [0 ] 5");
  EXPECT_EQ(docs("<?xml version='1.0'?><!-- --><?x y?>" + Nota("5")), "10 [0 ] 5");
  EXPECT_EQ(docs("<?xml version='1.0'?><!-- --><?x y?><!-- -->" + Nota("5")), "10  ") << "looked for no further";
  EXPECT_EQ(docs("<a><b/></a>"), "10  ");
  EXPECT_EQ(docs("<a/><!-- --><!-- --><!-- -->"), "10  ");
  EXPECT_EQ(docs("<a/>"), "01 O documento não tem nenhum conteúdo.;; ");
  EXPECT_EQ(docs("<a>"), "01 !estrutura XML malformado na linha 1.;estrutura; ");
  // This answer isn't stripped of the prefix: its first note is found by its number.
  const auto faixa = Resposta("ConsultarNfseFaixaResposta", Comp(Nota("1")) + Comp(Nota("2")));
  EXPECT_EQ(docs(Substituir(faixa, "ListaNfse", "tc:ListaNfse")), "10 [0 ][0 ] 1\n2");
  const auto errada = Nota("2", "48.50 => x");
  EXPECT_EQ(docs(Em("a", errada)), "01 'x' não é um valor decimal válido;; ");
  EXPECT_EQ(docs(Em("ListaNfse", Comp(Nota("1")) + Comp(errada) + Comp(Nota("3")))), "01 [0 1]!estrutura estrutura; 1")
      << "a shape ends there, and keeps what it has";
}

TEST_F(TAbrasf, BackspacesSaemDoArquivo) {
  using namespace std::string_literals;
  const auto xml = Em("Nfse", Nota("1", "Consultoria => n\u00e3o\bx"));
  const auto rodar = [&](const String& bytes) {
    const auto resultado = Rodar(bytes);
    return resultado + " " + Documentos("CAST(DESCR_ITEM AS VARCHAR(9))");
  };
  const auto guardado = [&] {
    return LerArquivo(Pasta / (Pasta.Tem("nota.xml") ? "nota.xml" : "morto/NFSe/nota.xml"));
  };
  EXPECT_EQ(rodar("\xEF\xBB\xBF\r\n" + xml), "10 [0 ] nãox");
  EXPECT_EQ(guardado(), "\xEF\xBB\xBF\r\n" + Substituir(xml, "\b", "")) << "only they go";
  fs::remove_all(Pasta / "morto");
  EXPECT_EQ(rodar("<?xml version='1.0' encoding='ISO-8859-1'?>" + Substituir(xml, "\u00e3", "\xE3")), "10 [0 ] nãox");
  fs::remove_all(Pasta / "morto");
  const auto larga = [](const String& texto, bool invertida) {  // UTF-16; 8 is also half of another character there
    auto bytes = invertida ? "\xFE\xFF"s : "\xFF\xFE"s;
    for (const char c : texto) bytes += invertida ? "\0"s + c : c + "\0"s;
    return Substituir(bytes, invertida ? "\0Z"s : "Z\0"s, invertida ? "\1\b"s : "\b\1"s);
  };
  const auto ascii = Em("Nfse", Nota("1", "Consultoria => Z\bx"));
  for (const bool invertida : {false, true}) {
    EXPECT_EQ(rodar(larga(ascii, invertida)), "10 [0 ] Ĉx");
    EXPECT_EQ(guardado(), larga(Substituir(ascii, "\b", ""), invertida));
    fs::remove_all(Pasta / "morto");
  }
  EXPECT_EQ(rodar("<a>\b"), "01 !estrutura XML malformado na linha 1.;estrutura; ");
  EXPECT_EQ(guardado(), "<a>") << "repaired, and broken otherwise";
}

}  // namespace impnfse::testes::abrasf
