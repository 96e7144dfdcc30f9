// Any bytes as a file of any layout, through the module into a database: the first byte tells which layout.
#include <fmt/format.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Suite.h"
#include "UnVX03704ImpNFSe.h"

namespace {

using namespace impnfse;
namespace fs = std::filesystem;

// A new database with one branch, open as long as the process lives.
TSuite& Suite() {
  static const auto banco = fs::temp_directory_path() / ("impnfse_fuzz." + std::to_string(::getpid()) + ".fdb");
  static const bool criado = [] {
    TBancoFirebird::Criar(banco);
    TBancoFirebird aberto(banco);
    TFilialRegistrada filial;
    filial.Dados = {.IDEMPRESA = 1, .CODIGOMUNICIPIO = "4205407", .UF = "SC", .CNPJ = "11222333000181", .IE = ""};
    GravarFilial(aberto, filial);
    return true;
  }();
  static TSuite suite(criado ? banco.string() : "");
  return suite;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  if (tamanho == 0) return 0;
  auto& suite = Suite();
  const auto regras = RegrasDeLeiaute();
  const auto& regra = regras[dados[0] % regras.size()];
  const auto arquivo = fs::temp_directory_path() / fmt::format("{}_impnfse_fuzz.{}.{}", dados[0] % 2 == 0 ? 'C' : 'D',
                                                               ::getpid(), dados[0] < 128 ? "xml" : "txt");
  std::ofstream(arquivo, std::ios::binary)
      .write(reinterpret_cast<const char*>(dados + 1), static_cast<std::streamsize>(tamanho - 1));
  TImpNFSe importacao;
  importacao.DadosArquivo = {
      .Arquivo = arquivo, .CodigoLeiaute = String(regra.Codigo), .TipoImportacao = "NFSE", .IDFILIAL = 0};
  importacao.OnArquivoCarregado = [](TArquivoImpBase*) {};
  importacao.Start();
  importacao.WaitFor();
  // What was told as loaded is stored, whatever else the file holds. Without an archive the file stays.
  const auto gravados = suite.Banco().ConsultarInteiro("SELECT COUNT(*) FROM ES02_REGA100");
  if (importacao.GetResumo().Documentos.empty() != (gravados == 0) || !fs::exists(arquivo)) std::abort();
  suite.Banco().Executar("DELETE FROM ES02_REGA100");
  return 0;
}
