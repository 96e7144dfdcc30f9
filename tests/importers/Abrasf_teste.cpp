#include "Apoio.h"
#include "UnVX03704BaseFuncoes.h"

namespace impnfse::testes::abrasf {

constexpr const char* kAlheio = "77777777000177";

// A note of version 1.0, of the branch to a taker in Curitiba, without its declaration.
constexpr const char* kInfNfse =
    "<InfNfse Id='n'><Numero>1</Numero><Serie>U</Serie><CodigoVerificacao> AB-1 </CodigoVerificacao><DataEmissao>"
    "2026-03-15T10:00:00</DataEmissao><NaturezaOperacao>1</NaturezaOperacao><OptanteSimplesNacional>1"
    "</OptanteSimplesNacional><Competencia>2026-02-28</Competencia><Servico><Valores><ValorServicos>1000.00"
    "</ValorServicos><ValorDeducoes>10.00</ValorDeducoes><ValorPis>6.50</ValorPis><ValorCofins>30.00</ValorCofins>"
    "<ValorInss>11.00</ValorInss><ValorIr>15.00</ValorIr><ValorCsll>9.99</ValorCsll><IssRetido>2</IssRetido><ValorIss>"
    "48.50</ValorIss><BaseCalculo>970.00</BaseCalculo><Aliquota>0.0500</Aliquota><DescontoIncondicionado>20.00"
    "</DescontoIncondicionado></Valores><ItemListaServico>17.01</ItemListaServico><CodigoTributacaoMunicipio>1702"
    "</CodigoTributacaoMunicipio><Discriminacao>Consultoria</Discriminacao><CodigoMunicipio>4202404</CodigoMunicipio>"
    "</Servico><PrestadorServico><IdentificacaoPrestador><Cnpj>11.222.333/0001-81</Cnpj></IdentificacaoPrestador>"
    "<RazaoSocial>Aurora</RazaoSocial><Endereco><Endereco>Rua "
    "B</Endereco><Numero>5</Numero><Complemento>S</Complemento>"
    "<Bairro>Mar</Bairro><Cidade>4205407</Cidade><Estado>SC</Estado></Endereco></PrestadorServico><TomadorServico>"
    "<IdentificacaoTomador><CpfCnpj><Cnpj>99.888.777/0001-66</Cnpj></CpfCnpj></"
    "IdentificacaoTomador><RazaoSocial>Tomador"
    "</RazaoSocial><Endereco><Endereco>Rua A</Endereco><Numero>10</Numero><Complemento>Sala 2</Complemento><Bairro>"
    "Centro</Bairro><CodigoMunicipio>4106902</CodigoMunicipio><Uf>PR</Uf></Endereco></TomadorServico></InfNfse>";
// What version 2.x holds besides.
constexpr const char* kDeclaracao =
    "<ValoresNfse><BaseCalculo>800.00</BaseCalculo><Aliquota>3.00</Aliquota><ValorIss>24.00</"
    "ValorIss><ValorLiquidoNfse>"
    "700.00</ValorLiquidoNfse><valorPis>1.00</valorPis></ValoresNfse><DeclaracaoPrestacaoServico>"
    "<InfDeclaracaoPrestacaoServico><Servico><Valores><ValorServicos>900.00</ValorServicos></Valores><IssRetido>1"
    "</IssRetido><ItemListaServico>14.01</ItemListaServico><Discriminacao>Da "
    "declaração</Discriminacao><CodigoMunicipio>"
    "4209102</CodigoMunicipio><MunicipioIncidencia>4208203</MunicipioIncidencia></"
    "Servico><Tomador><IdentificacaoTomador>"
    "<CpfCnpj><Cpf>123.456.789-09</Cpf></CpfCnpj><InscricaoEstadual>IE9</InscricaoEstadual></IdentificacaoTomador>"
    "<RazaoSocial>Da declaração</RazaoSocial><Endereco><CodigoMunicipio>3550308</CodigoMunicipio></Endereco></Tomador>"
    "</InfDeclaracaoPrestacaoServico></DeclaracaoPrestacaoServico></InfNfse>";

// The document with that content in its first element of the name, or without the element.
String Com(const String& xml, const String& tag, const String& conteudo) {
  const auto inicio = xml.find("<" + tag + ">") + tag.size() + 2;
  return xml.substr(0, inicio) + conteudo + xml.substr(xml.find("</" + tag + ">"));
}
String Sem(const String& xml, const String& tag) {
  const auto inicio = xml.find("<" + tag + ">");
  return xml.substr(0, inicio) + xml.substr(xml.find("</" + tag + ">") + tag.size() + 3);
}
String Nota(const String& numero, const String& emitente = kCNPJFilial) {
  return Com(Com(kInfNfse, "Numero", numero), "Cnpj", emitente);
}
String Nota2(const String& nota) { return Substituir(nota, "</InfNfse>", kDeclaracao); }
String Comp(const String& infNfse, const String& cancelamento = "", const String& tag = "CompNfse") {
  return "<" + tag + "><Nfse versao='1'>" + infNfse + "</Nfse><NfseCancelamento>" + cancelamento +
         "</NfseCancelamento></" + tag + ">";
}
String Resposta(const String& raiz, const String& itens) {
  return "<?xml version='1.0' encoding='utf-8'?><" + raiz + " xmlns='urn:x'><ListaNfse>" + itens + "</ListaNfse></" +
         raiz + ">";
}

class TAbrasf : public TTesteComBanco {
 protected:
  // Imports the document; what came of it: the worker's flag and last error, the front end's flag, the error list, the
  // summary's numbers. The host's texts are "estrutura" and "de ninguém".
  String Rodar(const String& xml, const String& leiaute = "44") {
    Banco().Executar("DELETE FROM ES02_REGA100");
    const auto front = Importar(Pasta.Gravar("nota.xml", xml), leiaute);
    const auto& r = front->GetResumo();
    String numeros;
    for (const auto& d : r.Documentos) numeros += fmt::format(" {}:{}", int{d.Tipo}, d.Numero);
    const auto texto =
        fmt::format("{}{} [{}] {}{}", r.Importou ? "importou" : "não importou",
                    front->GetTemErros() ? " com erros" : "", r.Erro, Substituir(Erros(*front), "\n", "; "), numeros);
    return Substituir(Substituir(texto, front->BuscarErroNaoGerouBloco0(), "de ninguém"),
                      front->BuscarErroEstruturaArquivo(), "estrutura");
  }
};

TEST_F(TAbrasf, CadaCampoNoSeuLugar) {
  EXPECT_EQ(Rodar("<Nfse>" + String(kInfNfse) + "</Nfse>"), "importou []  0:");
  EXPECT_EQ(
      Documentos("A.COD_SIT, A.SER, A.NUM_DOC, A.CHV_NFSE, A.DT_DOC, A.DT_EXE_SERV, A.IND_PGTO, A.VL_DOC, A.VL_DESC, "
                 "A.VL_ISS, A.VL_PIS_RET, A.VL_COFINS_RET, A.TEMISSRETIDO, Q.NOME, Q.CNPJ, Q.COD_MUN, Q.ENDERECO, "
                 "Q.NUM, Q.COMPL, Q.BAIRRO, Q.UF, Q.COD_PAIS, Q.OPTANTESIMPLES, I.NUM_ITEM, I.QTD, I.VL_ITEM, "
                 "I.VL_DESC, I.DEDUCAOISS, I.ATIVIDADE, I.VL_BC_ISS, I.ALIQ_ISS, I.VL_ISS, I.MUNICIPIODEVISS, "
                 "I.CFOPICMS, I.AUX1, CAST(D.DESCR_ITEM AS VARCHAR(20)), D.COD_LST"),
      "0|U|1|AB-1|2026-03-15|2026-03-15|0|980.0000|20.0000|48.5000|6.5000|30.0000|0|Tomador|99888777000166|4106902|"
      "Rua A|10|Sala 2|Centro|PR|1058||1|1.0000|1000.0000|20.0000|10.0000|17.02|970.0000|5.0000|48.5000|4202404|"
      "6.933.000|1|Consultoria|1701");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO"),
            "0714|970.0000|15.0000\n0910|970.0000|11.0000\n1101|970.0000|6.5000\n1102|970.0000|30.0000\n"
            "1103|970.0000|9.9900");
  EXPECT_EQ(Tabela("SELECT X.IDREG - A.IDREGA100, X.TIPO, X.CAMPO, X.VALOR, X.CHAVEADICIONAL FROM ES02_AUXMANUTENCAO X "
                   "JOIN ES02_REGA100 A ON A.IDREGA100 = X.IDREG"),
            "0|NFSE|DT_COMPETENCIA|28.02.2026|" + BuscarInstanciaFuncoes()->GerarHash("AB-1" + Pasta / "nota.xml"));
  // Taken: the issuer is the participant, and tells whether it has opted for Simples.
  const auto tomada = Com(Nota("202600000000123", kAlheio), "CpfCnpj", "<Cnpj/><Cpf>" + String(kCNPJFilial) + "</Cpf>");
  EXPECT_EQ(Rodar("<NFSE>" + tomada + "</NFSE>"), "importou []  1:");
  EXPECT_EQ(Documentos("A.IND_OPER, A.NUM_DOC, Q.NOME, Q.CNPJ, Q.ENDERECO, Q.NUM, Q.COMPL, Q.BAIRRO, Q.COD_MUN, Q.UF, "
                       "Q.OPTANTESIMPLES"),
            "0|123|Aurora|77777777000177|Rua B|5|S|Mar|4205407|SC|S");
  Rodar(Resposta("ConsultarNfseResposta", Comp(tomada)));
  EXPECT_EQ(Documentos("A.NUM_DOC"), "202600000000123") << "the whole number in this answer alone";
}

TEST_F(TAbrasf, Tomadores) {
  const auto nota = Nota2(Com(Sem(kInfNfse, "TomadorServico"), "DataEmissao", "15/03/2026"));
  const auto tomador = [&](const String& xml) {
    Rodar(xml);
    return Documentos("Q.CPF, Q.NOME, Q.COD_MUN, Q.UF, Q.IE, A.DT_DOC");
  };
  // Its name and place are found in the declaration in every shape, its number in four of them.
  EXPECT_EQ(tomador("<Nfse>" + nota + "</Nfse>"), "|Da declaração|3550308|SP||2026-03-15");
  EXPECT_EQ(tomador("<ListaNfse>" + Comp(nota) + "</ListaNfse>"), "12345678909|Da declaração|3550308|SP||2026-03-15");
  const auto pais = [&](const String& codigo) {
    Banco().Executar("DELETE FROM ES02_REG0150");
    Rodar("<Nfse>" + Com(kInfNfse, "Uf", "EX</Uf><CodigoPais>" + codigo + "</CodigoPais><Uf>") + "</Nfse>");
    return Documentos("Q.COD_PAIS, Q.UF");
  };
  EXPECT_EQ(pais(" 2496 "), "2496|EX");
  EXPECT_EQ(pais("EUA") + pais("-1") + pais(""), "1058|EX1058|EX1058|EX");
  // A company that bills itself is its own participant.
  Rodar("<Nfse>" + Com(kInfNfse, "CpfCnpj", "<Cnpj>" + String(kCNPJFilial) + "</Cnpj>") + "</Nfse>");
  EXPECT_EQ(Documentos("A.IND_OPER, Q.CNPJ, Q.NOME"), "1|11222333000181|Tomador\n0|11222333000181|Tomador");
}

// Note 2 of 3 is nobody's. The lists go on behind it; two answers end there, and keep the error.
TEST_F(TAbrasf, NotaAlheiaEmCadaForma) {
  const auto notas = [](const auto& embrulhar) {
    return embrulhar(Nota("1")) + embrulhar(Nota("2", kAlheio)) + embrulhar(Nota("3"));
  };
  const auto comps = notas([](const String& n) { return Comp(n); });
  const auto compls = notas([](const String& n) { return Comp(n, "", "ComplNfse"); });
  const auto tcs = notas([](const String& n) { return "<tcCompNfse><Nfse>" + n + "</Nfse></tcCompNfse>"; });
  const auto comPrefixo = Substituir(Substituir("<ListaNfse>" + comps + "</ListaNfse>", "<", "<tc:"), "<tc:/", "</tc:");
  const String seguem = "importou com erros [] Documento: 2 - de ninguém;  0:1 0:3";
  for (const auto* const raiz :
       {"GerarNfseResposta", "ConsultarNfseLote", "ConsultarNfseResposta", "ConsultarNfseServicoPrestadoResposta"})
    EXPECT_EQ(Rodar(Resposta(raiz, comps)), seguem) << raiz;
  EXPECT_EQ(Rodar("<ListaNfse>" + comps + "</ListaNfse>"), seguem);
  EXPECT_EQ(Rodar(comPrefixo), seguem);
  EXPECT_EQ(Rodar("<CompNfseList>" + comps + "</CompNfseList>"), seguem);
  EXPECT_EQ(Rodar("<ArrayOfTcCompNfse>" + tcs + "</ArrayOfTcCompNfse>"), seguem);
  EXPECT_EQ(Rodar(Resposta("ConsultarNfseResposta", compls)), seguem);
  const String terminam = "não importou com erros [de ninguém] Documento: 2 - de ninguém; de ninguém;  0:1";
  EXPECT_EQ(Rodar(Resposta("consultarNotaResponse", compls)), terminam);
  EXPECT_EQ(Documentos("A.NUM_DOC"), "1") << "what came before it is stored, and the file archived";
  EXPECT_FALSE(Pasta.Tem("nota.xml"));
  EXPECT_EQ(Rodar(Resposta("ConsultarNfseFaixaResposta", comps)), terminam);
  // As the last one it leaves its error to any list. A single note has no number in the report.
  EXPECT_EQ(Rodar("<ListaNfse>" + Comp(Nota("1")) + Comp(Nota("2", kAlheio)) + "</ListaNfse>"), terminam);
  for (const String& xml : {Comp(Nota("2", kAlheio)), "<Nfse>" + Nota("2", kAlheio) + "</Nfse>",
                            "<ConsultarNfseRpsResposta>" + Comp(Nota("2", kAlheio)) + "</ConsultarNfseRpsResposta>"})
    EXPECT_EQ(Rodar(xml), "não importou com erros [de ninguém] de ninguém; de ninguém; de ninguém; ")
        << "once by its shape, once by the last resort";
}

TEST_F(TAbrasf, ListasDeOutroTipoEVazias) {
  const auto compl_ = Comp(Nota("1"), "", "ComplNfse");
  // A list of the other kind is no list for these shapes: the last resort takes its first note.
  for (const auto* const raiz : {"GerarNfseResposta", "ConsultarNfseFaixaResposta"})
    EXPECT_EQ(Rodar(Resposta(raiz, compl_ + compl_)), "importou []  0: 0:") << raiz;
  EXPECT_EQ(Rodar(Resposta("consultarNotaResponse", Comp(Nota("1")))), "importou []  0:") << "only ComplNfse there";
  EXPECT_EQ(Rodar(Resposta("ConsultarNfseResposta", "")), "importou [] ") << "no note, and no error either";
  EXPECT_EQ(Rodar("<ListaNfse>" + Comp("") + Comp("<InfNfse/>") + Comp(Nota("7")) + "</ListaNfse>"), "importou []  0:7")
      << "a note without content is passed over";
}

TEST_F(TAbrasf, Canceladas) {
  const auto sucesso = [](const String& s) {
    return "<Confirmacao><InfConfirmacaoCancelamento><Sucesso>" + s +
           "</Sucesso></InfConfirmacaoCancelamento></Confirmacao>";
  };
  const String pedido =
      "<Confirmacao><Pedido><InfPedidoCancelamento><CodigoCancelamento>1</CodigoCancelamento></InfPedidoCancelamento>"
      "</Pedido></Confirmacao>";
  const std::vector<String> provas = {sucesso(" 1 "), sucesso("sim"), sucesso(" True "), sucesso("true"), pedido, ""};
  const auto situacoes = [&](const auto& embrulhar) {
    String texto;
    for (const auto& prova : provas) {
      Rodar(embrulhar(prova));
      texto += Tabela("SELECT COD_SIT FROM ES02_REGA100");
    }
    return texto;
  };
  EXPECT_EQ(situacoes([](const String& p) { return Comp(Nota("1"), p); }), "200000");
  EXPECT_EQ(situacoes([](const String& p) { return "<ListaNfse>" + Comp(Nota("1"), p) + "</ListaNfse>"; }), "022220");
  EXPECT_EQ(situacoes([](const String& p) { return Resposta("ConsultarNfseResposta", Comp(Nota("1"), p)); }), "022220");
  EXPECT_EQ(situacoes([](const String& p) { return Resposta("ConsultarNfseFaixaResposta", Comp(Nota("1"), p)); }),
            "000200");
  EXPECT_EQ(situacoes([](const String& p) { return Resposta("GerarNfseResposta", Comp(Nota("1"), p)); }), "000000");

  // It keeps its number and its month, and nothing else; the next note isn't cancelled by it.
  Rodar("<ListaNfse>" + Comp(Nota("1"), pedido) + Comp(Nota("2")) + "</ListaNfse>");
  EXPECT_EQ(
      Tabela("SELECT A.NUM_DOC, A.SER, A.DT_DOC, A.COD_SIT, A.CHV_NFSE, A.IND_PGTO, A.VL_DOC, (SELECT COUNT(*) FROM "
             "ES02_REGA170 I WHERE I.IDREGA100 = A.IDREGA100), X.VALOR FROM ES02_REGA100 A JOIN ES02_AUXMANUTENCAO "
             "X ON X.IDREG = A.IDREGA100 ORDER BY A.IDREGA100"),
      "1|U|2026-03-15|2|||0.0000|0|28.02.2026\n2|U|2026-03-15|0|AB-1|0|980.0000|1|28.02.2026");
}

TEST_F(TAbrasf, RespostaDeRPSLeDeNovoDosValoresDaNota) {
  const auto nota = Nota2(Sem(kInfNfse, "TomadorServico"));
  const auto rodar = [&](const String& infNfse, const String& leiaute = "44") {
    const auto xml = Substituir(Substituir(Comp(infNfse), "<", "<ns2:"), "<ns2:/", "</ns2:");
    Rodar("<ns2:ConsultarNfseRpsResposta xmlns:ns2='u'>" + xml + "</ns2:ConsultarNfseRpsResposta>", leiaute);
    return Documentos(
        "A.VL_DOC, A.VL_ISS, A.VL_PIS_RET, A.TEMISSRETIDO, Q.CPF, Q.IE, I.VL_ITEM, I.VL_BC_ISS, I.ALIQ_ISS, "
        "I.VL_ISS, I.ATIVIDADE, CAST(D.DESCR_ITEM AS VARCHAR(20))");
  };
  // The service has its own description: its values stand, but the declaration says that ISS is retained.
  EXPECT_EQ(rodar(nota),
            "980.0000|48.5000|6.5000|1|12345678909|IE9|1000.0000|970.0000|5.0000|48.5000|17.02|Consultoria");
  EXPECT_EQ(Documentos("R.COD_RECEITA, R.VL_BC, R.VL_IMPOSTO").substr(0, 21), "1010|970.0000|48.5000");
  // Without it the declaration's service counts, and what that lacks is the note's.
  const String doRps = "900.0000|24.0000|1.0000|1|12345678909|IE9|900.0000|800.0000|3.0000|24.0000|14.01|Da declaração";
  EXPECT_EQ(rodar(Sem(nota, "Servico")), doRps);
  // Under code 17 the activity is the item of the list as it stands, also where another code has another one.
  EXPECT_EQ(rodar(nota, "17"), Substituir(rodar(nota), "17.02", "17.01"));
  EXPECT_EQ(rodar(Com(nota, "ItemListaServico", "1701"), "51"), Substituir(rodar(nota), "17.02", "17.01"));
}

TEST_F(TAbrasf, MunicipioDevidoISS) {
  const auto municipio = [&](const String& raiz, const String& nota, const String& leiaute = "44") {
    Rodar(Resposta(raiz, Comp(nota)), leiaute);
    return Tabela("SELECT MUNICIPIODEVISS FROM ES02_REGA170");
  };
  const auto sem = Com(kInfNfse, "CodigoMunicipio", "0");
  const auto natureza = [&](const String& codigo) { return Com(sem, "NaturezaOperacao", codigo); };
  EXPECT_EQ(municipio("GerarNfseResposta", Com(kInfNfse, "CodigoMunicipio", "42.02404")), "4202404");
  EXPECT_EQ(municipio("GerarNfseResposta", sem), "4205407") << "the branch's";
  EXPECT_EQ(municipio("GerarNfseResposta", natureza("2")), "4106902") << "outside: the taker's";
  EXPECT_EQ(municipio("GerarNfseResposta", natureza("111")), "4205407");
  EXPECT_EQ(municipio("ConsultarNfseResposta", natureza("111")), "4106902");
  EXPECT_EQ(municipio("ConsultarNfseResposta", natureza("511")), "4106902");
  EXPECT_EQ(municipio("ConsultarNfseFaixaResposta", Nota2(sem)), "4208203") << "the incidence first";
  EXPECT_EQ(municipio("ConsultarNfseFaixaResposta", Sem(Nota2(sem), "MunicipioIncidencia")), "4209102");
  EXPECT_EQ(municipio("GerarNfseResposta", Nota2(kInfNfse), "58"), "4208203") << "whatever the note says";
  EXPECT_EQ(municipio("GerarNfseResposta", Sem(Nota2(kInfNfse), "MunicipioIncidencia"), "58"), "3550308");
  // Under this code the service is the declaration's as well, but the base is the note's.
  EXPECT_EQ(Documentos("A.VL_DOC, I.VL_ITEM, R.VL_BC, I.ATIVIDADE"), "900.0000|900.0000|-|14.01");
  EXPECT_EQ(municipio("ConsultarNfseFaixaResposta", Com(Nota2(kInfNfse), "ValorServicos", "1")), "4202404");
  EXPECT_EQ(Documentos("A.VL_DOC, I.VL_ITEM, D.COD_LST"), "900.0000|900.0000|1401");
}

TEST_F(TAbrasf, AliquotaComoFracaoOuPorcentagemEISSRetido) {
  String notas;
  for (const auto* const aliquota : {"0.0500", "0,0250", "0.0050", "5,00", "0.05", "0,05", "0.12", "0.1200", "", "2"})
    notas += Comp(Com(kInfNfse, "Aliquota", aliquota));
  Rodar("<ListaNfse>" + notas + "</ListaNfse>");
  EXPECT_EQ(Tabela("SELECT ALIQ_ISS FROM ES02_REGA170 ORDER BY IDREGA170"),
            "5.0000\n2.5000\n0.5000\n5.0000\n0.0500\n0.0500\n0.1200\n0.1200\n0.0000\n2.0000");
  // A flag beside the values counts before the one among them; retained ISS without a value of its own is the ISS.
  notas = "";
  for (const auto& nota :
       {Com(kInfNfse, "IssRetido", "1"), Com(kInfNfse, "IssRetido", "S"), Com(kInfNfse, "IssRetido", " "),
        Substituir(kInfNfse, "</BaseCalculo>", "</BaseCalculo><ValorIssRetido>3</ValorIssRetido>"),
        Substituir(kInfNfse, "</Servico>", "<IssRetido>1</IssRetido></Servico>"),
        Substituir(kInfNfse, "</Servico>", "<IssRetido/></Servico>")})
    notas += Comp(nota);
  Rodar("<ListaNfse>" + notas + "</ListaNfse>");
  EXPECT_EQ(
      Tabela("SELECT A.TEMISSRETIDO, A.VL_ISS, R.VL_IMPOSTO, R.ALIQUOTA FROM ES02_REGA100 A LEFT JOIN ES02_REGA17R R "
             "ON R.IDREGA100 = A.IDREGA100 AND R.COD_RECEITA = '1010' ORDER BY A.IDREGA100"),
      "1|48.5000|48.5000|5.0000\n1|48.5000|48.5000|5.0000\n0|48.5000|-|-\n1|48.5000|3.0000|5.0000\n"
      "1|48.5000|48.5000|5.0000\n0|48.5000|-|-");
}

TEST_F(TAbrasf, ItensEntreColchetes) {
  const auto itens = [&](const String& texto, const String& iss, const String& aliquota = "5,00") {
    Rodar("<Nfse>" + Com(Com(Com(kInfNfse, "Discriminacao", texto), "ValorIss", iss), "Aliquota", aliquota) +
          "</Nfse>");
    return Tabela(
        "SELECT I.NUM_ITEM, CAST(D.DESCR_ITEM AS VARCHAR(20)), I.QTD, I.VL_ITEM, I.VL_BC_ISS, I.ALIQ_ISS, I.VL_ISS "
        "FROM ES02_REGA170 I JOIN ES02_REG0200 D ON D.IDREG0200 = I.IDREG0200 ORDER BY I.IDREGA170");
  };
  const String aulas =
      "{ [[Descricao=Aula][Quantidade=2,00][ValorUnitario=50,00]]\n [ [ Descricao=Livro][Valor=30,00] ] }";
  EXPECT_EQ(itens(aulas, "6,50"),
            "1|Aula|2.0000|100.0000|100.0000|5.0000|5.0000\n2|Livro|1.0000|30.0000|30.0000|5.0000|1.5000");
  EXPECT_EQ(itens(aulas, "0"),
            "1|Aula|2.0000|100.0000|0.0000|0.0000|0.0000\n2|Livro|1.0000|30.0000|0.0000|0.0000|0.0000");
  // What the rounding leaves goes to the last item; what is too much isn't taken back once it is below zero.
  const String tercos = "{[[Descricao=A][Valor=33,33]][[Descricao=B][Valor=33,33]][[Descricao=C][Valor=33,34]]}";
  EXPECT_EQ(itens(tercos, "2,50", "2.5"),
            "1|A|1.0000|33.3300|33.3300|2.5000|0.8300\n2|B|1.0000|33.3300|33.3300|2.5000|0.8300\n"
            "3|C|1.0000|33.3400|33.3400|2.5000|0.8400");
  EXPECT_EQ(itens(tercos, "1,00", "2.5"),
            "1|A|1.0000|33.3300|33.3300|2.5000|0.8300\n2|B|1.0000|33.3300|33.3300|2.5000|0.8300\n"
            "3|C|1.0000|33.3400|0.0000|0.0000|0.0000");
  EXPECT_EQ(
      itens("{[[Descricao=A][Valor=10][Deducoes=1][DescontoIncondicionado=2][Aliquota=0.0300][Quantidade=0]]}", "1"),
      "1|A|1.0000|10.0000|7.0000|3.0000|1.0000");
  // Half a cent is rounded up, by exact arithmetic.
  EXPECT_EQ(itens("{[[Descricao=A][Valor=20,10]][[Descricao=B][Valor=1]]}", "2", "2.5").substr(0, 41),
            "1|A|1.0000|20.1000|20.1000|2.5000|0.5000\n");
  // Keys are exact, and a field or a group that isn't closed ends there.
  EXPECT_EQ(
      itens("{[[Descricao=A][valor=10][ValorTotal=4]][[descricao=x][Valor=5][aberto]][[Descricao=C][Valor=9", "1"),
      "1|A|1.0000|4.0000|4.0000|5.0000|0.2000\n2||1.0000|5.0000|5.0000|5.0000|0.2500");
  // The taxes stay whole on the first item; an item without an activity has the service's.
  itens("{[[Descricao=A][Valor=10][ItemServico=1.05]][[Descricao=B][Valor=10]]}", "1");
  EXPECT_EQ(Tabela("SELECT ATIVIDADE FROM ES02_REGA170 ORDER BY IDREGA170"), "1.05\n17.02");
  EXPECT_EQ(Tabela("SELECT SUM(VL_IMPOSTO), COUNT(*) FROM ES02_REGA17R"), "72.4900|5");
  EXPECT_EQ(Tabela("SELECT VL_PIS_RET, VL_COFINS_RET FROM ES02_REGA100"), "6.5000|30.0000");
}

TEST_F(TAbrasf, OutrosTextosSaoUmItem) {
  const auto item = [&](const String& texto, const String& aliquota = "0.0500") {
    Rodar("<Nfse>" + Com(Com(kInfNfse, "Discriminacao", texto), "Aliquota", aliquota) + "</Nfse>");
    return Documentos("CAST(D.DESCR_ITEM AS VARCHAR(40)), I.ALIQ_ISS, I.VL_ITEM, I.ATIVIDADE, D.COD_LST");
  };
  const String resto = "|1000.0000|17.02|1701";
  EXPECT_EQ(item("Descrição: x\nValor: 5"), " x Valor: 5|0.0500" + resto) << "the rate as written, though a fraction";
  EXPECT_EQ(item(" Descrição: x"), " Descrição: x|5.0000" + resto);
  EXPECT_EQ(item("{[a]}"), "{[a]}|5.0000" + resto);
  EXPECT_EQ(item("{abc}"), "|5.0000" + resto) << "a text without any bracket inside is lost";
  EXPECT_EQ(item("{[[Descricao: A]]}"), "[[Descricao: A]]|5.0000" + resto);
  auto filial = Filial();
  filial.RemoverCaracteres = 4;
  Registrar(filial);
  EXPECT_EQ(item("Descrição: x\nVALOR: 5 valor:"), " x\n 5 |0.0500" + resto);
}

TEST_F(TAbrasf, UltimoRecurso) {
  const auto docs = [&](const String& xml) {
    const auto resultado = Rodar(xml);
    return resultado + " " + Documentos("A.NUM_DOC");
  };
  const auto n = [](const String& numero) { return "<Qualquer>" + Com(kInfNfse, "Numero", numero) + "</Qualquer>"; };
  EXPECT_EQ(docs("<a><b>" + n("5") + "</b></a>"), "importou []  0: 5");
  EXPECT_EQ(docs("<a>" + Nota("5") + Nota("6") + "</a>"), "importou []  0: 5") << "siblings: the first one alone";
  EXPECT_EQ(docs("<a>" + n("5") + n("6") + "</a>"), "importou []  0: 0: 5\n6")
      << "found deeper, they don't stop the next";
  EXPECT_EQ(docs(Nota("5")), "importou []  0: 5");
  EXPECT_EQ(docs("<?xml version='1.0'?><!-- --><?x y?>" + Nota("5")), "importou []  0: 5");
  EXPECT_EQ(docs("<?xml version='1.0'?><!-- --><?x y?><!-- -->" + Nota("5")), "importou []  ")
      << "looked for no further";
  EXPECT_EQ(docs("<a><b/></a>"), "importou []  ");
  EXPECT_EQ(docs("<a/><!-- --><!-- --><!-- -->"), "importou []  ");
  EXPECT_EQ(docs("<a/>"), "não importou com erros [] O documento não tem nenhum conteúdo.; ;  ");
  EXPECT_EQ(docs("<a>"), "não importou com erros [estrutura] XML malformado na linha 1.; estrutura;  ");
  // This answer isn't stripped of the prefix: its first note is found by its number.
  const auto faixa = Resposta("ConsultarNfseFaixaResposta", Comp(Nota("1")) + Comp(Nota("2")));
  EXPECT_EQ(docs(Substituir(faixa, "ListaNfse", "tc:ListaNfse")), "importou []  0: 0: 1\n2");
  EXPECT_EQ(docs("<a>" + Com(Nota("5"), "ValorIss", "x") + "</a>"),
            "não importou com erros [] 'x' não é um valor decimal válido; ;  ");
  EXPECT_EQ(
      docs("<ListaNfse>" + Comp(Nota("1")) + Comp(Com(Nota("2"), "ValorIss", "x")) + Comp(Nota("3")) + "</ListaNfse>"),
      "não importou com erros [estrutura] estrutura;  0:1 1")
      << "a shape ends there, and keeps what it has";
}

TEST_F(TAbrasf, BackspacesSaemDoArquivo) {
  using namespace std::string_literals;
  const auto xml = "<Nfse>" + Com(kInfNfse, "Discriminacao", "n\u00e3o\bx") + "</Nfse>";
  const auto rodar = [&](const String& bytes) {
    const auto resultado = Rodar(bytes);
    return resultado.substr(0, resultado.find(' ')) + ": " + Documentos("CAST(D.DESCR_ITEM AS VARCHAR(9))");
  };
  const auto guardado = [&] {
    return LerArquivo(Pasta / (Pasta.Tem("nota.xml") ? "nota.xml" : "morto/NFSe/nota.xml"));
  };
  EXPECT_EQ(rodar("\xEF\xBB\xBF\r\n" + xml), "importou: nãox");
  EXPECT_EQ(guardado(), "\xEF\xBB\xBF\r\n" + Substituir(xml, "\b", "")) << "only they go";
  fs::remove_all(Pasta / "morto");
  EXPECT_EQ(rodar("<?xml version='1.0' encoding='ISO-8859-1'?>" + Substituir(xml, "\u00e3", "\xE3")), "importou: nãox");
  fs::remove_all(Pasta / "morto");
  const auto larga = [](const String& texto, bool invertida) {  // UTF-16; 8 is also half of another character there
    auto bytes = invertida ? "\xFE\xFF"s : "\xFF\xFE"s;
    for (const char c : texto) bytes += invertida ? "\0"s + c : c + "\0"s;
    return Substituir(bytes, invertida ? "\0Z"s : "Z\0"s, invertida ? "\1\b"s : "\b\1"s);
  };
  const auto ascii = "<Nfse>" + Com(kInfNfse, "Discriminacao", "Z\bx") + "</Nfse>";
  for (const bool invertida : {false, true}) {
    EXPECT_EQ(rodar(larga(ascii, invertida)), "importou: Ĉx");
    EXPECT_EQ(guardado(), larga(Substituir(ascii, "\b", ""), invertida));
    fs::remove_all(Pasta / "morto");
  }
  EXPECT_EQ(rodar("<a>\b"), "não: ");
  EXPECT_EQ(guardado(), "<a>") << "repaired, and broken otherwise";
}

}  // namespace impnfse::testes::abrasf
