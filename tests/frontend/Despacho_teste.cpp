// From a layout code to the importer, and the run of the importer as a worker.
#include <map>
#include <set>
#include <thread>

#include "ImportadorFalso.h"
#include "NotaGINFES.h"
#include "VXUtilsLista.h"

namespace impnfse::testes::despacho {

// The id for a code and a file of that content.
int Id(const String& codigo, std::string_view conteudo) {
  static const TPastaTemporaria pasta;
  TImpNFSe front;
  front.DadosArquivo.Arquivo = pasta.Gravar("nota.xml", conteudo);
  return front.BuscarIdentificacaoNFSe(codigo);
}

TEST(Despacho, TabelaDosCodigos) {
  std::map<String, int> esperados;
  for (const auto& [codigo, id] : Casos(
           "17 => 1 | 22 => 1 | 33 => 1 | 44 => 1 | 46 => 1 | 47 => 1 | 57 => 1 | 58 => 1 | 34 => 27 | 36 => 2 | 39 => "
           "5 | 40 => 6 | 41 => 7 | 42 => 19 | 43 => 8 | 8 => 9 | 32 => 10 | 45 => 11 | 48 => 12 | 49 => 13 | 50 => 14 "
           "| 7 => 15 | 21 => 16 | 27 => 17 | 53 => 21 | 54 => 22 | 51 => 1 | 55 => 25 | 1 => 1 | 31 => 26 | 59 => 29 "
           "| 60 => 31 | 61 => 33 | 62 => 34"))
    esperados[codigo] = StrToIntDef(id, 0);
  for (int codigo = -1; codigo < 120; ++codigo)
    EXPECT_EQ(Id(std::to_string(codigo), "<a/>"), esperados[std::to_string(codigo)]) << codigo;
  for (const auto* const codigo : {"", "01", " 1", "1 ", "043", "4 3", "+1", "1.0"}) EXPECT_EQ(Id(codigo, "<a/>"), 0);
}

TEST(Despacho, GeracoesPelaCabecaDoArquivo) {
  const std::map<String, String> porCodigo = {
      {"1", "versao=\"2.02\" => 18 | versao=\"2.03\" => 1 | versao='2.02' => 1 | Versao=\"2.02\" => 1"},
      {"51", "versao=\"2.02\" => 24 | versao=\"2.01\" => 1"},
      {"17", "versao=\"2.01\" => 28 | versao=\"2.02\" => 28 | versao=\"2.04\" => 1 | versao=\"1.00\" => 1"},
      {"45",
       "<Nfse xmlns=\"agili\"> => 20 | <agili><Nfse/> => 20 | <NFSE a=\"agili\"> => 11 | <Nfse a=\"Agili\"> => 11 | "
       "<Nfse> => 11 | <agili> => 11"},
      {"53", "<xmlNfpse => 30 | <numeroAEDF> => 30 | <numeroAEDF  => 21 | <xmlnfpse => 21"},
      {"27", "<ListaCupomFiscal => 32 | <CupomFiscal> => 32 | <CupomFiscal  => 17"},
      {"43", "versao=\"2.02\" => 8"}};
  for (const auto& [codigo, casos] : porCodigo)
    for (const auto& [cabeca, id] : Casos(casos))
      EXPECT_EQ(Id(codigo, cabeca), StrToIntDef(id, 0)) << codigo << ' ' << cabeca;
  for (const auto* const codigo : {"17", "22", "33", "44", "46", "47", "57", "58"})
    EXPECT_EQ(Id(codigo, "versao=\"2.03\""), 28) << codigo;
}

// Characters count, not bytes, and a line break counts as one.
TEST(Despacho, CabecaTerminaNoCaractereCerto) {
  const auto ate = [](const String& marca, int caracteres) {
    return "\r\n" + Repetir("ç", caracteres - 1 - static_cast<int>(marca.size())) + marca;
  };
  for (const auto& [codigo, marca] :
       Casos("1 => versao=\"2.02\" | 51 => versao=\"2.02\" | 17 => versao=\"2.01\" | 53 => <xmlNfpse | 27 => "
             "<ListaCupomFiscal | 45 => agili")) {
    const String inicio = codigo == "45" ? "<Nfse>" : "";
    const int caracteres = codigo == "45" ? 50 - 6 : 350;
    EXPECT_EQ(Id(codigo, inicio + ate(marca, caracteres)), Id(codigo, inicio + marca)) << codigo;
    EXPECT_EQ(Id(codigo, inicio + ate(marca, caracteres + 1)), Id(codigo, inicio)) << codigo;
  }
  const TPastaTemporaria pasta;
  TImpNFSe front;
  const auto prestado = [&](const String& conteudo) {
    front.DadosArquivo.Arquivo = pasta.Gravar("joinville.xml", conteudo);
    return front.NotaJoinvilleEhServicoPrestado();
  };
  EXPECT_FALSE(prestado(ate("<nota_recebida>", 350)));
  EXPECT_TRUE(prestado(ate("<nota_recebida>", 351)));
}

TEST(Despacho, IPMPelaExtensaoSemAbrirOArquivo) {
  TImpNFSe front;
  for (const auto& [nome, id] :
       Casos("n.xml => 27 | n.XmL => 27 | n.txt => 4 | nxml => 4 | n.xml.txt => 4 | xml => 4")) {
    front.DadosArquivo.Arquivo = "/não/existe/" + nome;
    EXPECT_EQ(std::to_string(front.BuscarIdentificacaoNFSe("34")), id) << nome;
  }
  EXPECT_THROW(front.BuscarIdentificacaoNFSe("17"), EArquivo);
  EXPECT_EQ(front.BuscarIdentificacaoNFSe("43"), 8) << "no refinement, no reading";
}

TEST(Despacho, TodoIdTemImportador) {
  std::set<int> ids;
  for (const auto& importador : ImportadoresNFSe()) ids.insert(importador.Id);
  for (int id = 0; id < 40; ++id) EXPECT_EQ(ids.contains(id), id >= 1 && id <= 34 && id != 3 && id != 23) << id;
}

// The table of layouts in the documentation has exactly the codes that lead to an importer.
TEST(Despacho, DocumentacaoDosLeiautes) {
  String documentados, comImportador;
  TStringList linhas;
  linhas.LoadFromFile(IMPNFSE_DADOS "/../docs/layouts.md");
  for (const auto& linha : linhas)
    if (const auto codigo = StrToIntDef(linha.substr(std::min(linha.size(), std::size_t{1}), linha.find(" |") - 1), 0);
        codigo > 0)
      documentados += std::to_string(codigo) + " ";
  for (int codigo = 0; codigo < 100; ++codigo)
    if (!ImportadoresDoLeiaute(std::to_string(codigo)).empty()) comImportador += std::to_string(codigo) + " ";
  EXPECT_EQ(documentados, comImportador);
}

using TTrabalhador = TTesteComImportador;

TEST_F(TTrabalhador, RecebeOPedidoERodaNaSuaThread) {
  const auto principal = std::this_thread::get_id();
  TVXBarraProgresso barra;
  Barra = &barra;
  auto& item = *barra.BuscarBarraProgresso(1);
  item.SetPosicao(99);
  String visto;
  Application->SetAoProcessarMensagens(
      [&] { visto += fmt::format("{}/{} {}; ", item.GetPosicao(), item.GetValorMaximo(), item.GetTexto()); });
  Executar([&](TImportadorFalso& f) {
    EXPECT_NE(std::this_thread::get_id(), principal);
    const auto& [arquivo, leiaute, tipo, filial] = f.DadosArquivo;
    visto += fmt::format("{} {} {} {}; ", leiaute, tipo, filial, f.GetResumo().Classe);
    TStringList lista;
    lista.SetText("5\n6");
    f.PercorrerNotasComProgresso(lista, [&](const String& numero) { f.Documento(numero); });
    f.CarregarUmaComProgresso([] {});
  });
  EXPECT_EQ(
      Substituir(visto, Pasta / "nota.xml", "~"),
      "43 NFSE 1 TNFSeFalso; 0/2 Carregando documento 0 de 1. ~; 1/2 Carregando documento 0 de 1. ~; 1/2 "
      "Carregando documento 1 de 1. ~; 2/2 Carregando documento 1 de 1. ~; 0/1 Carregando documento 1 de 1. ~; 1/1 "
      "Carregando documento 1 de 1. ~; ");
  EXPECT_EQ(Resultado(), "importou, , sem erros, foi: ");
  EXPECT_EQ(Front->GetResumo().Destino, Pasta / "morto/NFSe/nota.xml");
}

TEST_F(TTrabalhador, UltimoErroEntraNaListaSoNaVariacaoComum) {
  const auto falhar = [](TImportadorFalso& f) { f.GetListaErros().Add("da lista"), f.Falhar("último"); };
  Executar(falhar);
  EXPECT_EQ(Resultado(), "não importou, último, sem erros, ficou: da lista; último; ") << "no flag of the front's own";
  Executar(falhar, TVariacaoNFSe::SemErroNaLista);
  EXPECT_EQ(Resultado(), "não importou, último, sem erros, ficou: da lista; ");
}

TEST_F(TTrabalhador, RetornoVemAntesDoResultadoEDoArquivo) {
  const auto carregar = [](TImportadorFalso& f) { f.Documento("1"), f.GetListaErros().Add("da lista"); };
  Retorno = [&](TArquivoImpBase* trabalhador) {
    EXPECT_TRUE(trabalhador->GetResumo().Importou) << "it has run";
    EXPECT_EQ(Resultado(), "não importou, , sem erros, ficou: ");
    throw std::runtime_error("quebrou");
  };
  Executar(carregar, TVariacaoNFSe::ComRetorno);
  EXPECT_EQ(Resultado(), "importou, , tem erros, foi: da lista; quebrou; ");
  Retorno = nullptr;  // now it is the call that raises
  Executar(carregar, TVariacaoNFSe::ComRetorno);
  EXPECT_TRUE(Resultado().starts_with("importou, , tem erros, foi: da lista; ")) << Resultado();
}

TEST_F(TTrabalhador, ConfirmacaoRecusadaNaoGuardaNadaEDeixaOArquivo) {
  Banco().Executar("CREATE EXCEPTION EX_TESTE 'recusado'");
  Banco().Executar(
      "CREATE TRIGGER TR_TESTE ON TRANSACTION COMMIT AS BEGIN IF (EXISTS (SELECT 1 FROM ES02_REGA100)) THEN EXCEPTION "
      "EX_TESTE; END");
  const auto documento = [](TImportadorFalso& f) { f.Documento("1"); };
  Executar(documento);
  const auto erro = Front->GetResumo().Erro;
  EXPECT_TRUE(erro.starts_with("Falha no banco ")) << erro;
  EXPECT_EQ(Resultado(), fmt::format("não importou, {0}, tem erros, ficou: {0}; {0}; ", erro));
  EXPECT_EQ(Contar("ES02_REGA100") + Contar("CA06_IMPORTACFG"), 0) << "the remembered layout neither";
  Banco().Executar("DROP TRIGGER TR_TESTE");
  Executar(documento);
  EXPECT_EQ(Resultado(), "importou, , sem erros, foi: ") << "the next file goes well";
}

TEST_F(TTrabalhador, RecusaNoMeioQueOImportadorEngoleAindaDerrubaTudo) {
  Executar([](TImportadorFalso& f) { f.Documento("1"); });
  Executar([&](TImportadorFalso& f) {
    f.Documento("1", [&] { f.GetDadosA100()->SetVL_DOC(2); });
    const auto id = Armazem().ProximoId(TGerador::RegA100);
    for (const auto* const numero : {"2", "3"})  // the second one has the id of the first
      f.ComErroEstrutura([&] { f.Documento(numero, [&] { f.GetDadosA100()->SetIDREGA100(id); }); });
    f.Documento("4");
  });
  EXPECT_EQ(Documentos("A.NUM_DOC, A.VL_DOC"), "1|0") << "what it would have replaced stays";
  EXPECT_TRUE(Resultado().starts_with("não importou, Falha no banco ")) << Resultado();
  EXPECT_TRUE(Pasta.Tem("nota.xml"));
}

}  // namespace impnfse::testes::despacho
