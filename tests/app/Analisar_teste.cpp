// analisar, and importar when no layout was named.
#include "Programa.h"

namespace impnfse::testes::analisar {

using TTesteAnalisar = TTestePrograma;

// A file at whose beginning stands the root alone, which two layouts have.
String ArquivoAmbiguo() { return "<NFSE>" + Repetir(" ", 200) + TNotaGINFES().Xml() + "</NFSE>"; }

TEST_F(TTesteAnalisar, CandidatosEmTextoEmJSON) {
  Pasta.Gravar("n.xml", "<ns:NFSE xmlns:ns='x'/>");
  EXPECT_EQ(Exigir("analisar banco.fdb n.xml"),
            "Código  Leiaute\n    43  GINFES\n    44  ABRASF: nota avulsa, lista ou resposta, em qualquer forma\n");
  EXPECT_EQ(Json::parse(Exigir("analisar banco.fdb n.xml --json")).dump(),
            R"([{"codigo":"43","descricao":"GINFES","tp":4},{"codigo":"44","descricao":"ABRASF: nota avulsa, lista ou )"
            R"(resposta, em qualquer forma","tp":4}])");
  Pasta.Gravar("vazio.xml", "");
  EXPECT_EQ(Exigir("analisar banco.fdb vazio.xml"), "Nenhum leiaute foi reconhecido em vazio.xml.\n");
  EXPECT_EQ(Exigir("analisar banco.fdb vazio.xml --json"), "[]\n");
  EXPECT_TRUE(FalhouComUmaLinha(Rodar("analisar banco.fdb falta.xml --json"), 1, "falta.xml não pode ser lido"));
}

TEST_F(TTesteAnalisar, LembradoDaFilialOuUnicoOuListaNoFim) {
  RegistrarFilial("--arquivo-morto morto", kOutraFilial);
  const auto nota = ArquivoAmbiguo();
  Pasta.Gravar("entrada/a.xml", nota);
  Pasta.Gravar("entrada/b.xml", "\n<outra/>");
  Pasta.Gravar("entrada/c.xml", "<notas/>");
  Pasta.Gravar("entrada/d.xml", Repetir(" ", 200) + nota);
  auto execucao = Rodar("importar banco.fdb entrada falta.xml");
  EXPECT_EQ(fmt::format("{} {}{}", execucao.Status, execucao.Erros, execucao.Saida), R"(1 ✗ entrada/c.xml
    leiaute 62, o único que serve ao arquivo
    nenhum documento
    Nenhuma nota do leiaute 62 foi encontrada no arquivo.
✗ falta.xml
    nenhum documento
    O arquivo falta.xml não pode ser lido: não existe.

Sem leiaute:
? entrada/a.xml
    43  GINFES
    44  ABRASF: nota avulsa, lista ou resposta, em qualquer forma
? entrada/b.xml
        nenhum leiaute foi reconhecido
? entrada/d.xml
        nenhum leiaute foi reconhecido
Informe o leiaute com: impnfse importar banco.fdb ARQUIVO --leiaute CODIGO

5 arquivos: 0 carregados, 5 não carregados ou com erros. 0 documentos.
)");
  execucao = Rodar("importar banco.fdb entrada/a.xml entrada/b.xml falta.xml --json");
  const auto erros = [](const Json& arquivos) {
    String texto;
    for (const auto& a : arquivos)
      texto += fmt::format("[{}] {} {}\n", a["leiaute"].get<String>(), a["temErros"].dump(), a["erros"].dump());
    return texto;
  };
  EXPECT_EQ(execucao.Status, 1);
  EXPECT_EQ(erros(Json::parse(execucao.Saida)),
            "[] true [\"Mais de um leiaute serve: 43, 44. Informe um com --leiaute CODIGO.\"]\n"
            "[] true [\"Nenhum leiaute foi reconhecido. Informe um com --leiaute CODIGO.\"]\n"
            "[] true [\"O arquivo falta.xml não pode ser lido: não existe.\"]\n");

  // The branch has used 43: it is taken where it is a candidate, and nowhere else. The other branch hasn't.
  ImportarNotas({{}});
  execucao = Rodar("importar banco.fdb entrada/a.xml entrada/b.xml --json --filial " + String(kOutraFilial));
  EXPECT_TRUE(erros(Json::parse(execucao.Saida)).starts_with("[] true [\"Mais de um")) << execucao.Saida;
  execucao = Rodar("importar banco.fdb entrada/a.xml entrada/b.xml --json");
  EXPECT_TRUE(erros(Json::parse(execucao.Saida)).starts_with("[43] false []\n[] true [\"Nenhum")) << execucao.Saida;
}

TEST_F(TTesteAnalisar, PerguntaNoTerminal) {
  const auto importar = [&](const String& teclado, const String& opcoes = "") {
    Pasta.Gravar("n.xml", ArquivoAmbiguo());
    return Rodar("importar banco.fdb n.xml " + opcoes, {.Teclado = teclado});
  };
  auto execucao = importar("3\nx\n 1 \n");
  EXPECT_EQ(execucao.Status, 0) << execucao.Erros;
  EXPECT_TRUE(Contem(execucao.Saida, "✓ n.xml\n    leiaute 43, o escolhido\n    1 documento"));
  const String pergunta =
      "n.xml serve a mais de um leiaute:\n   1) GINFES (leiaute 43)\n   2) ABRASF: nota avulsa, lista ou resposta, em "
      "qualquer forma (leiaute 44)\nQual? [Enter = 1, 0 = nenhum] Responda com um número de 0 a 2.\n";
  EXPECT_TRUE(Contem(execucao.Erros, pergunta));
  EXPECT_FALSE(Contem(importar("0\n").Erros, "Qual?")) << "the layout is remembered now";

  Executar("DELETE FROM CA06_IMPORTACFG");
  EXPECT_EQ(Json::parse(importar("2\n", "--json").Saida)[0]["leiaute"], "44");
  for (const auto* const nenhum : {"0\n", "\x04"}) {
    execucao = importar(nenhum);
    EXPECT_EQ(execucao.Status, 1);
    EXPECT_TRUE(Contem(execucao.Saida, "? n.xml\n    43  GINFES\n"));
  }
  EXPECT_EQ(Json::parse(importar("\n", "--json").Saida)[0]["leiaute"], "43") << "Enter takes the first";
}

}  // namespace impnfse::testes::analisar
