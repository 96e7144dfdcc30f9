// From a layout code to the importer, and the run of the importer as a worker.
#include <map>
#include <thread>

#include "ImportadorFalso.h"
#include "NotaGINFES.h"

namespace impnfse::testes {
namespace {

// The id for a code and a file of that name and content.
int Id(const String& codigo, std::string_view conteudo, std::string_view nome = "nota.xml") {
  const TPastaTemporaria pasta;
  TImpNFSe front;
  front.DadosArquivo.Arquivo = pasta.Gravar(nome, conteudo);
  return front.BuscarIdentificacaoNFSe(codigo);
}

TEST(Despacho, TabelaDosCodigos) {
  std::map<String, int> esperados;
  for (const auto& [codigo, id] : Casos(
           "17 => 1 | 22 => 1 | 33 => 1 | 44 => 1 | 46 => 1 | 47 => 1 | 57 => 1 | 58 => 1 | 34 => 27 | 36 => 2 | 39 => "
           "5 | 40 => 6 | 41 => 7 | 42 => 19 | 43 => 8 | 8 => 9 | 32 => 10 | 45 => 11 | 48 => 12 | 49 => 13 | 50 => 14 "
           "| 7 => 15 | 21 => 16 | 27 => 17 | 53 => 21 | 54 => 22 | 51 => 1 | 55 => 25 | 1 => 1 | 31 => 26 | 59 => 29 "
           "| "
           "60 => 31 | 61 => 33 | 62 => 34"))
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
  const auto recheio = [](std::size_t caracteres) {
    return "\r\n" + Substituir(String(caracteres - 1, '.'), ".", "ç");
  };
  const std::vector<std::tuple<const char*, String, int, int>> casos = {{"1", "versao=\"2.02\"", 18, 1},
                                                                        {"51", "versao=\"2.02\"", 24, 1},
                                                                        {"17", "versao=\"2.01\"", 28, 1},
                                                                        {"53", "<xmlNfpse", 30, 21},
                                                                        {"27", "<ListaCupomFiscal", 32, 17}};
  for (const auto& [codigo, marca, dentro, fora] : casos) {
    EXPECT_EQ(Id(codigo, recheio(350 - marca.size()) + marca), dentro) << codigo;
    EXPECT_EQ(Id(codigo, recheio(351 - marca.size()) + marca), fora) << codigo;
  }
  EXPECT_EQ(Id("45", "<Nfse>" + recheio(50 - 11) + "agili"), 20);
  EXPECT_EQ(Id("45", "<Nfse>" + recheio(51 - 11) + "agili"), 11);

  const TPastaTemporaria pasta;
  TImpNFSe front;
  const auto prestado = [&](const String& conteudo) {
    front.DadosArquivo.Arquivo = pasta.Gravar("joinville.xml", conteudo);
    return front.NotaJoinvilleEhServicoPrestado();
  };
  EXPECT_FALSE(prestado(recheio(350 - 15) + "<nota_recebida>"));
  EXPECT_TRUE(prestado(recheio(351 - 15) + "<nota_recebida>"));
  EXPECT_TRUE(prestado("<Nota_Recebida>"));
}

TEST(Despacho, IPMPelaExtensaoSemAbrirOArquivo) {
  TImpNFSe front;
  for (const auto& [nome, id] : std::vector<std::pair<String, int>>{{"nota.xml", 27},
                                                                    {"nota.Xml", 27},
                                                                    {"NOTA.XML", 27},
                                                                    {"nota.txt", 4},
                                                                    {"notaxml", 4},
                                                                    {"nota.xml.txt", 4},
                                                                    {"xml", 4}}) {
    front.DadosArquivo.Arquivo = "/não/existe/" + nome;
    EXPECT_EQ(front.BuscarIdentificacaoNFSe("34"), id) << nome;
  }
  EXPECT_THROW(front.BuscarIdentificacaoNFSe("17"), EArquivo);
  EXPECT_EQ(front.BuscarIdentificacaoNFSe("43"), 8) << "no refinement, no reading";
}

TEST(Despacho, LinhasDosImportadores) {
  const auto esperadas = Casos(
      "1 => TNFSeAbrasf | 2 => TNFSeJoinville | 2 => TNFSeJoinvilleServicosTomados | 4 => TNFSeFacility | 5 => "
      "TNFSeINFISC | 6 => TNFSeCampoGrande | 7 => TNFSeGEFisco | 8 => TNFSeGINFES | 9 => TNFSePrefeituraModerna | 10 "
      "=> "
      "TNFSeDigifred | 11 => TNFSeAgili | 12 => TNFSeProdataInformatica | 13 => TNFSeEquiplanoSistemas | 14 => "
      "TNFSePaliariEngenhariaSoftware | 15 => TNFSeNFSeThemaISSQNEletronico | 16 => TNFSeSIGCORP | 17 => "
      "TNFSeTecnosistemas | 18 => TNFSeBetha202 | 19 => TNFSeBlumenau | 20 => TNFSeAgili_v100 | 21 => TNFSeSoftplan | "
      "22 => TNFSeDBSeller | 24 => TNFSePronim | 25 => TNFSeSystemSolucoesSistemasInformacoes | 26 => "
      "TNFSeABASESistemas | 27 => TNFSeIPM | 28 => TNFSeAbrasf_v203 | 29 => TNFSeGrupoAssessor | 30 => "
      "TNFSeSoftplan022018 | 31 => TNFSeSEMFAZOnline | 32 => TNFSeTecnosistemasCFSe | 33 => TNFSeELOTECH | 34 => "
      "TNFSeRLZInformatica");
  std::multimap<String, String> linhas;
  for (const auto& linha : ImportadoresNFSe()) {
    SCOPED_TRACE(linha.Classe);
    linhas.emplace(std::to_string(linha.Id), linha.Classe);
    EXPECT_EQ(linha.Variacao, linha.Id == 7                      ? TVariacaoNFSe::ComRetorno
                              : linha.Id == 18 || linha.Id == 19 ? TVariacaoNFSe::SemErroNaLista
                                                                 : TVariacaoNFSe::Nenhuma);
    EXPECT_EQ(linha.Teste != nullptr, linha.Classe == "TNFSeJoinville");
    EXPECT_TRUE(linha.Criar == nullptr || linha.Criar() != nullptr);
  }
  EXPECT_EQ(linhas, (std::multimap<String, String>(esperadas.begin(), esperadas.end())));
}

// A front end whose file is read by the importer of the test.
class TFrontFalso : public TImpNFSe {
 public:
  void Carregar() override {
    TArquivoImpBase::Carregar();
    CarregarNFSe({.Id = 99, .Classe = "TNFSeFalso", .Criar = TImportadorFalso::Criar, .Variacao = Variacao});
  }
  TVariacaoNFSe Variacao = TVariacaoNFSe::Nenhuma;
};

class TExecucao : public TTesteComBanco {
 protected:
  ~TExecucao() override {
    TImportadorFalso::AoInicializar = nullptr;
    TImportadorFalso::AoCarregar = nullptr;
  }
  void Executar(TVariacaoNFSe variacao = TVariacaoNFSe::Nenhuma) {
    Front.Variacao = variacao;
    Front.DadosArquivo = {
        .Arquivo = Pasta.Gravar("nota.xml", "x"), .CodigoLeiaute = "43", .TipoImportacao = "NFSE", .IDFILIAL = 1};
    Front.Start();
    Front.WaitFor();
  }
  bool ArquivoFicou() const { return fs::exists(Pasta / "nota.xml"); }

  TFrontFalso Front;
};

TEST_F(TExecucao, TrabalhadorRecebeOPedidoERodaNaSuaThread) {
  TVXBarraProgresso barra;
  Front.BarraProgresso = &barra;
  std::thread::id threadDoTrabalhador;
  TImportadorFalso::AoCarregar = [&](TImportadorFalso& f) {
    threadDoTrabalhador = std::this_thread::get_id();
    EXPECT_EQ(f.DadosArquivo.Arquivo, Pasta / "nota.xml");
    EXPECT_EQ(f.DadosArquivo.CodigoLeiaute, "43");
    EXPECT_EQ(f.DadosArquivo.TipoImportacao, "NFSE");
    EXPECT_EQ(f.DadosArquivo.IDFILIAL, 1);
    EXPECT_EQ(f.BarraProgresso, &barra);
    EXPECT_EQ(f.GetPriority(), tpNormal);
    EXPECT_EQ(f.GetResumo().Classe, "TNFSeFalso");
    f.Documento("5");
  };
  Executar();
  EXPECT_NE(threadDoTrabalhador, std::thread::id());
  EXPECT_NE(threadDoTrabalhador, std::this_thread::get_id());
  EXPECT_EQ(Erros(Front), "");
  EXPECT_FALSE(Front.GetTemErros());
  EXPECT_EQ(Front.GetResumo().Destino, Pasta / "morto/NFSe/nota.xml");
  EXPECT_FALSE(ArquivoFicou());
}

TEST_F(TExecucao, UltimoErroDoTrabalhadorEntraNaListaSoNaVariacaoComum) {
  TImportadorFalso::AoCarregar = [](TImportadorFalso& f) {
    f.GetListaErros().Add("da lista");
    f.Falhar("último");
  };
  Executar();
  EXPECT_EQ(Erros(Front), "da lista\núltimo\n");
  EXPECT_FALSE(Front.GetTemErros()) << "the front end adds no flag of its own";
  EXPECT_EQ(Front.GetResumo().Erro, "último");
  EXPECT_TRUE(ArquivoFicou());
  Executar(TVariacaoNFSe::SemErroNaLista);
  EXPECT_EQ(Erros(Front), "da lista\n");
}

TEST_F(TExecucao, RetornoVemAntesDoResultadoEDoArquivo) {
  int chamadas = 0;
  TImportadorFalso::AoCarregar = [](TImportadorFalso& f) {
    EXPECT_TRUE(f.OnArquivoCarregado);
    f.Documento("1");
    f.GetListaErros().Add("da lista");
  };
  Front.OnArquivoCarregado = [&](TArquivoImpBase* trabalhador) {
    ++chamadas;
    EXPECT_NE(trabalhador, &Front);
    EXPECT_EQ(trabalhador->GetResumo().Documentos.size(), 1U) << "it has run";
    EXPECT_EQ(Erros(Front), "");
    EXPECT_TRUE(ArquivoFicou());
  };
  Executar(TVariacaoNFSe::ComRetorno);
  EXPECT_EQ(chamadas, 1);
  EXPECT_EQ(Erros(Front), "da lista\n");
  EXPECT_FALSE(ArquivoFicou());
}

using TRetorno = std::function<void(TArquivoImpBase*)>;

TEST_F(TExecucao, RetornoQueLevantaNaoPerdeOResultadoNemOArquivo) {
  TImportadorFalso::AoCarregar = [](TImportadorFalso& f) { f.Documento("1"); };
  // Without a callback at all it is the call that raises.
  for (const auto& retorno : {TRetorno([](TArquivoImpBase*) { throw std::runtime_error("quebrou"); }), TRetorno()}) {
    Front.OnArquivoCarregado = retorno;
    Executar(TVariacaoNFSe::ComRetorno);
    EXPECT_TRUE(Front.GetTemErros());
    EXPECT_NE(Erros(Front), "");
    EXPECT_TRUE(Front.GetResumo().Importou && Front.GetResumo().Moveu);
  }
}

TEST_F(TExecucao, ExcecaoNaPreparacaoAindaRecolheOResultado) {
  bool carregou = false;
  TImportadorFalso::AoInicializar = [](TImportadorFalso& f) {
    f.Falhar("do trabalhador");
    throw std::runtime_error("preparação quebrou");
  };
  TImportadorFalso::AoCarregar = [&](TImportadorFalso&) { carregou = true; };
  Executar();
  EXPECT_FALSE(carregou);
  EXPECT_EQ(Erros(Front), "do trabalhador\npreparação quebrou\n");
  EXPECT_TRUE(Front.GetTemErros());
  EXPECT_TRUE(ArquivoFicou());
}

TEST_F(TExecucao, ConfirmacaoRecusadaNaoGuardaNadaEDeixaOArquivo) {
  Banco().Executar("CREATE EXCEPTION EX_TESTE 'recusado'");
  Banco().Executar(
      "CREATE TRIGGER TR_TESTE ON TRANSACTION COMMIT AS BEGIN IF (EXISTS (SELECT 1 FROM ES02_REGA100)) THEN EXCEPTION "
      "EX_TESTE; END");
  TImportadorFalso::AoCarregar = [](TImportadorFalso& f) { f.Documento("1"); };
  Executar();
  EXPECT_FALSE(Front.GetResumo().Importou);
  EXPECT_TRUE(Front.GetTemErros());
  EXPECT_TRUE(Front.GetResumo().Documentos.empty());
  EXPECT_TRUE(Front.GetResumo().Erro.starts_with("Falha no banco ")) << Front.GetResumo().Erro;
  EXPECT_EQ(Erros(Front), Front.GetResumo().Erro + "\n" + Front.GetResumo().Erro + "\n");
  EXPECT_TRUE(ArquivoFicou());
  EXPECT_EQ(Contar("ES02_REGA100"), 0);
  EXPECT_EQ(Contar("CA06_IMPORTACFG"), 0) << "the remembered layout neither";
  Banco().Executar("DROP TRIGGER TR_TESTE");
  EXPECT_TRUE(ImportarTexto(ArquivoGINFES({TNotaGINFES()}))->GetResumo().Importou) << "the next file goes well";
}

TEST_F(TExecucao, RecusaNoMeioQueOImportadorEngoleAindaDerrubaTudo) {
  TImportadorFalso::AoCarregar = [](TImportadorFalso& f) {
    f.Documento("1");
    f.ComErroEstrutura([&] { f.Documento("2", [&] { f.GetDadosA100()->SetIDREGA100(1); }); });
    f.Documento("3");
  };
  Executar();
  EXPECT_EQ(Contar("ES02_REGA100"), 0);
  EXPECT_FALSE(Front.GetResumo().Importou);
  EXPECT_TRUE(Front.GetResumo().Erro.starts_with("Falha no banco ")) << Front.GetResumo().Erro;
  EXPECT_TRUE(ArquivoFicou());
}

using TDespachoComBanco = TTesteComBanco;

TEST_F(TDespachoComBanco, CodigoDesconhecidoEArquivoIlegivel) {
  const auto arquivo = Pasta.Gravar("nota.xml", ArquivoGINFES({TNotaGINFES()}));
  for (const auto* const codigo : {"2", "35", "", "01", "999"}) {
    const auto importacao = Importar(arquivo, codigo);
    EXPECT_EQ(Erros(*importacao), importacao->BuscarErroEstruturaArquivo() + "\n") << codigo;
    EXPECT_TRUE(importacao->GetTemErros());
    EXPECT_EQ(importacao->GetResumo().Classe, "") << "no worker";
    EXPECT_TRUE(fs::exists(arquivo));
  }
  const auto ilegivel = Importar(Pasta / "falta.xml", "1");
  EXPECT_NE(Erros(*ilegivel).find(Pasta / "falta.xml"), String::npos) << Erros(*ilegivel);
  EXPECT_TRUE(ilegivel->GetTemErros());
  EXPECT_EQ(ilegivel->GetResumo().Classe, "");
  const auto daGINFES = Importar(Pasta / "falta.xml", "43");
  EXPECT_EQ(Erros(*daGINFES), daGINFES->BuscarErroEstruturaArquivo() + "\n");
  EXPECT_EQ(daGINFES->GetResumo().Classe, "TNFSeGINFES");
}

TEST_F(TDespachoComBanco, ArquivoMortoImpossivelDeixaOArquivoETudoGravado) {
  auto filial = Filial();
  filial.ArquivoMorto = Pasta.Gravar("arquivo", "não é pasta");
  Registrar(filial);
  const auto importacao = ImportarTexto(ArquivoGINFES({TNotaGINFES()}));
  EXPECT_EQ(Contar("ES02_REGA100"), 1);
  EXPECT_FALSE(importacao->GetResumo().Moveu);
  EXPECT_NE(importacao->GetResumo().FalhaAoMover, "");
  EXPECT_TRUE(fs::exists(Pasta / "entrada/1.xml"));
}

}  // namespace
}  // namespace impnfse::testes
