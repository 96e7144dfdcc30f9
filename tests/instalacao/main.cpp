// A program of somebody else's: imports one file and answers how many documents it gave.
#include <Suite.h>
#include <UnVX03704ImpNFSe.h>

int main(int, char** argv) {
  using namespace impnfse;
  TBancoFirebird::Criar(argv[1]);
  {
    TBancoFirebird banco(argv[1]);
    GravarFilial(banco,
                 {.Dados = {.IDEMPRESA = 1, .CODIGOMUNICIPIO = "4205407", .UF = "SC", .CNPJ = "11222333000181"}});
  }
  TSuite suite(argv[1]);
  TImpNFSe importacao;
  importacao.DadosArquivo = {.Arquivo = argv[2], .CodigoLeiaute = "43", .TipoImportacao = "NFSE"};
  importacao.Start();
  importacao.WaitFor();
  return static_cast<int>(importacao.GetResumo().Documentos.size());
}
