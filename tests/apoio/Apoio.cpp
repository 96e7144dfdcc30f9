#include "Apoio.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "XMLFormato.h"

namespace impnfse::testes {
namespace {

// Making a database takes longer than most tests do: they copy one. A run of ctest names the file that all of its
// processes share, and the first one makes; without that name each process makes its own.
const String& BancoModelo() {
  static const TPastaTemporaria pasta;
  static const String caminho = [] {
    const auto* const daExecucao = std::getenv("IMPNFSE_BANCO_MODELO");
    const String modelo = daExecucao != nullptr ? daExecucao : pasta / "modelo.fdb";
    if (fs::exists(modelo)) return modelo;
    const auto novo = fmt::format("{}.{}", modelo, ::getpid());
    TBancoFirebird::Criar(novo);
    fs::rename(novo, modelo);
    return modelo;
  }();
  return caminho;
}

}  // namespace

std::vector<std::pair<String, String>> Casos(std::string_view texto) {
  std::vector<std::pair<String, String>> casos;
  while (!texto.empty()) {
    auto caso = formato::CortarAte(texto, " | ");
    const auto entrada = formato::CortarAte(caso, " => ");
    casos.emplace_back(entrada, caso);
  }
  return casos;
}

TPastaTemporaria::TPastaTemporaria(const fs::path& onde) {
  auto modelo = (onde / "impnfse.XXXXXX").string();
  if (::mkdtemp(modelo.data()) == nullptr) throw std::runtime_error("sem pasta temporária em " + onde.string());
  FPasta = modelo;
}

TPastaTemporaria::~TPastaTemporaria() {
  std::error_code ignorado;
  fs::remove_all(FPasta, ignorado);
}

String TPastaTemporaria::Gravar(std::string_view nome, std::string_view bytes) const {
  const auto caminho = FPasta / nome;
  fs::create_directories(caminho.parent_path());
  std::ofstream(caminho, std::ios::binary) << bytes;
  return caminho.string();
}

TFilialRegistrada Filial(const String& cnpj, const String& uf, Int64 empresa) {
  TFilialRegistrada filial;
  filial.Dados = {
      .IDFILIAL = 0, .IDEMPRESA = empresa, .CODIGOMUNICIPIO = "42.05407", .UF = uf, .CNPJ = cnpj, .IE = "254000111"};
  filial.NOME = "Oficina d'Água Ltda; filial";
  return filial;
}

TTesteComBanco::TTesteComBanco() {
  fs::copy_file(BancoModelo(), Pasta / "banco.fdb");
  FSuite.emplace(Pasta / "banco.fdb");
  auto filial = Filial();
  filial.ArquivoMorto = Pasta / "morto";
  Registrar(filial);
}

void TTesteComBanco::Registrar(const TFilialRegistrada& filial) {
  GravarFilial(Banco(), filial);
  Suite().LerFiliais();
}

void TTesteComBanco::Reabrir() {
  FSuite.reset();
  FSuite.emplace(Pasta / "banco.fdb");
}

std::unique_ptr<TImpNFSe> TTesteComBanco::Importar(const String& arquivo, const String& leiaute, Int64 filial) {
  auto importacao = std::make_unique<TImpNFSe>();
  importacao->DadosArquivo = {
      .Arquivo = arquivo, .CodigoLeiaute = leiaute, .TipoImportacao = "NFSE", .IDFILIAL = filial};
  importacao->Start();
  importacao->WaitFor();
  return importacao;
}

std::unique_ptr<TImpNFSe> TTesteComBanco::ImportarTexto(std::string_view conteudo, const String& leiaute) {
  return Importar(Pasta.Gravar(fmt::format("entrada/{}.xml", ++FArquivos), conteudo), leiaute);
}

String TTesteComBanco::Tabela(const String& sql) {
  String texto;
  for (const auto& linha : Banco().Consultar(sql).Linhas) {
    if (!texto.empty()) texto += '\n';
    for (std::size_t i = 0; i < linha.size(); ++i) texto += (i == 0 ? "" : "|") + linha[i].value_or("-");
  }
  return texto;
}

String Erros(TArquivoImpBase& importacao) { return importacao.GetListaErros().Text(); }

}  // namespace impnfse::testes
