// Runs the program as its users do, and tells what came of it.
#pragma once

#include <sys/types.h>

#include <nlohmann/json.hpp>

#include "NotaGINFES.h"

namespace impnfse::testes {

using Json = nlohmann::ordered_json;

struct TOpcoesExecucao {
  String Pasta = {};            // the folder that it runs in; empty, that of the test
  String Saida = {};            // a file that takes its standard output
  bool SemPrivilegios = false;  // permissions hold for it, also where the tests run as root
  int MorreAoChamar = -1;       // the system call that kills it
  String Teclado = {};          // typed at a terminal, which then also takes its standard error
};

struct TExecucao {
  int Status = 0;  // the exit status; -N when signal N ended it
  String Saida;
  String Erros;
};

// The program while it runs. One that hangs is ended by SIGALRM after a minute.
class TProcesso {
 public:
  // `linha`: the arguments as typed, one with blanks in single quotes.
  TProcesso(const String& linha, const TOpcoesExecucao& opcoes);
  ~TProcesso() { Esperar(); }

  void Sinalizar(int sinal) const;
  const TExecucao& Esperar();

 private:
  pid_t FPid = -1;
  int FSaida = -1;
  int FErros = -1;
  int FTerminal = -1;  // the program's end of the terminal, and FErros the other
  TExecucao FExecucao;
};

// A folder with a database, banco.fdb, with the branch kCNPJFilial, whose archive is the folder "morto". The program
// runs in that folder.
class TTestePrograma : public ::testing::Test {
 protected:
  TTestePrograma();

  TExecucao Rodar(const String& linha, TOpcoesExecucao opcoes = {}) const;
  // The same for what must do; gives its standard output.
  String Exigir(const String& linha) const;
  TExecucao Importar(const String& resto = "entrada", const TOpcoesExecucao& opcoes = {}) const {
    return Rodar("importar banco.fdb --leiaute 43 " + resto, opcoes);
  }
  // Imports the notes, as entrada/x.xml, which must pass.
  void ImportarNotas(const std::vector<TNotaGINFES>& notas) const;
  String RegistrarFilial(const String& resto, const String& cnpj = kCNPJFilial) const;
  // registros --json, read.
  Json Registros(const String& filtros = "") const {
    return Json::parse(Exigir("registros banco.fdb --json " + filtros));
  }
  void Executar(const String& sql) const { TBancoFirebird(Pasta / "banco.fdb").Executar(sql); }
  String Tabela(const String& sql) const;

  TPastaTemporaria Pasta;
};

// The run kept to the contract of a failure: this exit status, nothing on standard output, and on standard error one
// Portuguese line that begins with the program's name and says `parte`.
::testing::AssertionResult FalhouComUmaLinha(const TExecucao& execucao, int status, std::string_view parte);

inline constexpr const char* kErroEstrutura = "A estrutura do arquivo não corresponde a um leiaute de NFS-e conhecido.";

}  // namespace impnfse::testes
