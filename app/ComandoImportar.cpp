// importar: runs the module on each file, and reports.
#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

#include "BarraTerminal.h"
#include "Comandos.h"
#include "ErrosDoSistema.h"
#include "EscolhaDeLeiaute.h"
#include "EscritorJSON.h"
#include "Suite.h"
#include "UnVX03704ImpNFSe.h"

namespace impnfse::app {
namespace {

namespace fs = std::filesystem;

// The full path of a file, as the system finds it: "..", and a link to a folder, lead where the kernel would go. A link
// to the file itself stays.
String CaminhoInteiro(const String& arquivo) {
  const fs::path caminho = fs::absolute(arquivo);
  std::error_code erro;
  const auto pasta = fs::canonical(caminho.parent_path(), erro);
  return (erro ? caminho : pasta / caminho.filename()).string();
}

// The files that the arguments stand for; those of a folder by name, hidden ones left out.
std::vector<String> Arquivos(const std::vector<String>& argumentos) {
  std::vector<String> arquivos;
  for (const auto& argumento : argumentos) {
    std::error_code erro;
    if (!fs::is_directory(argumento, erro)) {
      arquivos.push_back(argumento);
      continue;
    }
    std::vector<String> daPasta;
    fs::directory_iterator entrada(argumento, erro);
    for (; !erro && entrada != fs::directory_iterator(); entrada.increment(erro)) {
      std::error_code ilegivel;
      if (entrada->is_regular_file(ilegivel) && !entrada->path().filename().string().starts_with('.'))
        daPasta.push_back(entrada->path().string());
    }
    if (erro) throw EUso(fmt::format("a pasta {} não pode ser lida: {}", argumento, MotivoDoSistema(erro.value())));
    std::sort(daPasta.begin(), daPasta.end());
    arquivos.insert(arquivos.end(), daPasta.begin(), daPasta.end());
  }
  return arquivos;
}

TDadosFilial FilialDoPedido(TBancoFirebird& banco, const String& cnpj) {
  const auto filiais = ListarFiliais(banco);
  if (filiais.empty())
    throw EUso("nenhuma filial registrada. Registre uma com: impnfse filial BANCO --cnpj N --uf UF --municipio CODIGO");
  if (cnpj.empty()) return filiais.front().Dados;
  const auto filial = BuscarFilial(banco, NormalizarCNPJ(cnpj));
  if (!filial) throw EUso(fmt::format("a filial {} não está registrada. Registre-a com: impnfse filial", cnpj));
  return filial->Dados;
}

// What became of one file.
struct TResultado {
  String Arquivo;
  TEscolha Escolha;
  TResumoArquivo Resumo = {};
  bool TemErros = false;
  std::vector<String> Erros = {};

  // The file could be analysed, and its layout is still to be named.
  bool Indeciso = false;

  // What was noted as loaded counts, and not the worker's flag: some importers never set it, others set it for a file
  // in which they found nothing.
  bool DeuCerto() const { return !TemErros && Resumo.FalhaAoMover.empty() && !Resumo.Documentos.empty(); }
};

TResultado ImportarArquivo(const String& arquivo, const TEscolha& escolha, Int64 idFilial, TBarraTerminal& barra) {
  TImpNFSe importacao;
  importacao.DadosArquivo = {.Arquivo = CaminhoInteiro(arquivo),
                             .CodigoLeiaute = escolha.Leiaute,
                             .TipoImportacao = "NFSE",
                             .IDFILIAL = idFilial};
  importacao.BarraProgresso = barra.Display();
  importacao.OnArquivoCarregado = [](TArquivoImpBase*) {};
  importacao.Start();
  importacao.WaitFor();
  return {.Arquivo = arquivo,
          .Escolha = escolha,
          .Resumo = importacao.GetResumo(),
          .TemErros = importacao.GetTemErros(),
          .Erros = {importacao.GetListaErros().begin(), importacao.GetListaErros().end()}};
}

// A file that none of the candidates was chosen for.
TResultado DeixarIndeciso(const String& arquivo, const TEscolha& escolha) {
  String codigos;
  for (const auto& candidato : escolha.Candidatos) codigos += (codigos.empty() ? "" : ", ") + candidato.Codigo;
  const auto texto =
      codigos.empty() ? String("Nenhum leiaute foi reconhecido.") : "Mais de um leiaute serve: " + codigos + ".";
  return {.Arquivo = arquivo,
          .Escolha = escolha,
          .TemErros = true,
          .Erros = {texto + " Informe um com --leiaute CODIGO."},
          .Indeciso = true};
}

nlohmann::ordered_json ComoJSON(const TResultado& r) {
  auto documentos = nlohmann::ordered_json::array();
  for (const auto& documento : r.Resumo.Documentos)
    documentos.push_back({{"tipo", static_cast<int>(documento.Tipo)}, {"numero", documento.Numero}});
  return {{"arquivo", r.Arquivo},
          {"leiaute", r.Escolha.Leiaute},
          {"classe", r.Resumo.Classe},
          {"importou", r.Resumo.Importou},
          {"temErros", r.TemErros},
          {"erro", r.Resumo.Erro},
          {"erros", r.Erros},
          {"documentos", std::move(documentos)},
          {"destino", r.Resumo.Destino},
          {"moveu", r.Resumo.Moveu}};
}

String Contar(std::ptrdiff_t n, std::string_view um, std::string_view varios) {
  return fmt::format("{} {}", n, n == 1 ? um : varios);
}

// Why a file that can't be read at all can't: the importer only knows that it has no structure.
String FalhaDeLeitura(const String& arquivo) {
  try {
    return LerArquivo(arquivo).empty() ? "O arquivo está vazio." : "";
  } catch (const EArquivo& falha) {
    return falha.what();
  }
}

// The readable report of one file. A line that stands twice in the list is shown once.
void Relatar(const TResultado& r) {
  const auto& documentos = r.Resumo.Documentos;
  const auto emitidos =
      std::count_if(documentos.begin(), documentos.end(), [](const auto& d) { return d.Tipo == tpeEmitente; });
  const auto total = static_cast<std::ptrdiff_t>(documentos.size());
  fmt::print("{} {}\n", r.DeuCerto() ? "✓" : total > 0 ? "!" : "✗", r.Arquivo);
  if (!r.Escolha.Porque.empty()) fmt::print("    leiaute {}, {}\n", r.Escolha.Leiaute, r.Escolha.Porque);
  if (total > 0)
    fmt::print("    {}: {}, {}\n", Contar(total, "documento", "documentos"),
               Contar(emitidos, "de saída (emitente)", "de saída (emitente)"),
               Contar(total - emitidos, "de entrada (tomador)", "de entrada (tomador)"));
  else
    fmt::print("    nenhum documento\n");

  std::vector<String> linhas;
  if (!r.DeuCerto() && total == 0) linhas.push_back(FalhaDeLeitura(r.Arquivo));
  const auto& leiaute = r.Escolha.Leiaute;
  if (!leiaute.empty() && r.Resumo.Classe.empty() && ImportadoresDoLeiaute(leiaute).empty())
    linhas.push_back(fmt::format("O leiaute \"{}\" não tem importador (veja: impnfse leiautes).", leiaute));
  linhas.insert(linhas.end(), r.Erros.begin(), r.Erros.end());
  linhas.push_back(r.Resumo.Erro);
  linhas.push_back(r.Resumo.FalhaAoMover);
  if (total == 0 && !r.DeuCerto() &&
      std::all_of(linhas.begin(), linhas.end(), [](const String& l) { return l.empty(); }))
    linhas.push_back(fmt::format("Nenhuma nota do leiaute {} foi encontrada no arquivo.", leiaute));
  for (auto linha = linhas.begin(); linha != linhas.end(); ++linha)
    if (!linha->empty() && std::find(linhas.begin(), linha, *linha) == linha) fmt::print("    {}\n", *linha);

  if (r.Resumo.Moveu)
    fmt::print("    arquivado em {}\n", r.Resumo.Destino);
  else if (total > 0 && r.Resumo.FalhaAoMover.empty())
    fmt::print("    o arquivo ficou onde estava: a filial não tem arquivo morto\n");
}

// The files whose layout is still to be named, with what may be named.
void ListarIndecisos(const String& banco, const std::vector<TResultado>& resultados) {
  bool algum = false;
  for (const auto& r : resultados) {
    if (!r.Indeciso) continue;
    if (!algum) fmt::print("\nSem leiaute:\n");
    algum = true;
    const auto& candidatos = r.Escolha.Candidatos;
    fmt::print("? {}\n{}", r.Arquivo,
               candidatos.empty() ? "        nenhum leiaute foi reconhecido\n" : ListarCandidatos(candidatos));
  }
  if (algum) fmt::print("Informe o leiaute com: impnfse importar {} ARQUIVO --leiaute CODIGO\n", banco);
}

void Resumir(const std::vector<TResultado>& resultados) {
  const auto certos = std::count_if(resultados.begin(), resultados.end(), [](const auto& r) { return r.DeuCerto(); });
  std::size_t documentos = 0;
  for (const auto& r : resultados) documentos += r.Resumo.Documentos.size();
  const auto total = static_cast<std::ptrdiff_t>(resultados.size());
  fmt::print("\n{}: {}, {}. {}.\n", Contar(total, "arquivo", "arquivos"), Contar(certos, "carregado", "carregados"),
             Contar(total - certos, "não carregado ou com erros", "não carregados ou com erros"),
             Contar(static_cast<std::ptrdiff_t>(documentos), "documento", "documentos"));
}

}  // namespace

int Analisar(const String& banco, const TOpcoesAnalisar& opcoes) {
  TSuite suite(banco);
  std::vector<TCandidato> candidatos;
  try {
    candidatos = AnalisarArquivo(suite, opcoes.Arquivo);
  } catch (const EArquivo& falha) {
    fmt::print(stderr, "impnfse: {}\n", falha.what());
    return 1;
  }
  if (opcoes.JSON) {
    auto lista = nlohmann::ordered_json::array();
    for (const auto& [codigo, descricao, tp] : candidatos)
      lista.push_back({{"codigo", codigo}, {"descricao", descricao}, {"tp", tp}});
    fmt::print("{}\n", TextoJSON(lista, 2));
  } else if (candidatos.empty()) {
    fmt::print("Nenhum leiaute foi reconhecido em {}.\n", opcoes.Arquivo);
  } else {
    fmt::print("Código  Leiaute\n{}", ListarCandidatos(candidatos));
  }
  return 0;
}

int Importar(const String& banco, const TOpcoesImportar& opcoes) {
  const auto arquivos = Arquivos(opcoes.Arquivos);

  TBarraTerminal barra;
  TSuite suite(banco, {.Mostrar = [&](const String& texto) {
                 barra.Apagar();
                 fmt::print(stderr, "impnfse: {}\n", texto);
               }});
  Application->SetAoProcessarMensagens([&] { barra.Atualizar(); });
  const auto filial = FilialDoPedido(suite.Banco(), opcoes.Filial);

  const auto escolherEImportar = [&](const String& arquivo) -> TResultado {
    TEscolha escolha{.Leiaute = opcoes.Leiaute};
    if (escolha.Leiaute.empty()) {
      barra.Apagar();
      try {
        escolha = EscolherLeiaute(suite, filial, arquivo);
      } catch (const std::exception& falha) {
        return {.Arquivo = arquivo, .Escolha = {}, .TemErros = true, .Erros = {falha.what()}};
      }
      if (escolha.Leiaute.empty()) return DeixarIndeciso(arquivo, escolha);
    }
    return ImportarArquivo(arquivo, escolha, filial.IDFILIAL, barra);
  };

  std::vector<TResultado> resultados;
  for (std::size_t i = 0; i < arquivos.size(); ++i) {
    barra.IniciarArquivo(arquivos[i], i, arquivos.size());
    resultados.push_back(escolherEImportar(arquivos[i]));
    barra.Apagar();
    if (!opcoes.JSON && !resultados.back().Indeciso) Relatar(resultados.back());
  }

  if (arquivos.empty() && !opcoes.JSON) fmt::print("Nenhum arquivo para importar.\n");
  if (opcoes.JSON) {
    auto lista = nlohmann::ordered_json::array();
    for (const auto& resultado : resultados) {
      lista.push_back(ComoJSON(resultado));
      if (!resultado.Resumo.FalhaAoMover.empty())
        fmt::print(stderr, "impnfse: {}: {}\n", resultado.Arquivo, resultado.Resumo.FalhaAoMover);
    }
    fmt::print("{}\n", TextoJSON(lista, 2));
  } else {
    ListarIndecisos(banco, resultados);
    if (resultados.size() > 1) Resumir(resultados);
  }
  return std::all_of(resultados.begin(), resultados.end(), [](const auto& r) { return r.DeuCerto(); }) ? 0 : 1;
}

}  // namespace impnfse::app
