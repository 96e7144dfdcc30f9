// Runs the program as its users do, and tells what came of it.
#pragma once

#include <sys/types.h>

#include <nlohmann/json.hpp>

#include "NotaGINFES.h"

namespace impnfse::testes {

using Json = nlohmann::ordered_json;
using TArgumentos = std::vector<String>;

struct TOpcoesExecucao {
  String Pasta = {};            // the folder that it runs in; empty, that of the test
  String Saida = {};            // a file that takes its standard output
  bool Terminal = false;        // its standard error is a terminal
  bool SemPrivilegios = false;  // permissions hold for it, also where the tests run as root
  int MorreAoChamar = -1;       // the system call that kills it
};

struct TExecucao {
  int Status = 0;  // the exit status; -N when signal N ended it
  String Saida;
  String Erros;
};

// The program while it runs. One that hangs is ended by SIGALRM after a minute.
class TProcesso {
 public:
  TProcesso(TArgumentos argumentos, const TOpcoesExecucao& opcoes);
  ~TProcesso() { Esperar(); }
  TProcesso(const TProcesso&) = delete;
  TProcesso& operator=(const TProcesso&) = delete;

  void Sinalizar(int sinal) const;
  const TExecucao& Esperar();

 private:
  pid_t FPid = -1;
  int FSaida = -1;
  int FErros = -1;
  TExecucao FExecucao;
};

// A folder with a database, banco.fdb, with the branch kCNPJFilial, whose archive is the folder "morto". The program
// runs in that folder.
class TTestePrograma : public ::testing::Test {
 protected:
  TTestePrograma();

  TExecucao Rodar(const TArgumentos& argumentos, TOpcoesExecucao opcoes = {}) const;
  // importar banco.fdb --leiaute 43, with what follows.
  TExecucao Importar(const TArgumentos& resto, const TOpcoesExecucao& opcoes = {}) const;
  TExecucao RegistrarFilial(const TArgumentos& resto, const String& cnpj = kCNPJFilial) const;
  // registros --json, read.
  Json Registros(const TArgumentos& filtros = {}) const;
  bool Existe(std::string_view nome) const { return fs::exists(fs::symlink_status(Pasta / nome)); }

  TPastaTemporaria Pasta;
};

TArgumentos Juntar(TArgumentos inicio, const TArgumentos& resto);
::testing::AssertionResult Contem(const String& texto, std::string_view parte);
// The run kept to the contract of a failure: this exit status, nothing on standard output, and on standard error one
// Portuguese line that begins with the program's name and says `parte`.
::testing::AssertionResult FalhouComUmaLinha(const TExecucao& execucao, int status, std::string_view parte);
// The keys of an object in order, each with its type: i integer, n decimal, s text, b boolean, a array, z null.
String Forma(const Json& objeto);
String LerTudo(const String& caminho);

inline constexpr const char* kErroEstrutura = "A estrutura do arquivo não corresponde a um leiaute de NFS-e conhecido.";

}  // namespace impnfse::testes
