// The process-wide services, all in one object: it opens the database, installs them, and removes them when it goes.
#pragma once

#include <functional>
#include <unordered_map>

#include "ArmazemRegistros.h"
#include "BancoFirebird.h"
#include "VX03704Carregamento.h"
#include "VX03704EmpresaImportacao.h"
#include "VXBarraProgresso.h"
#include "VXConnection.h"
#include "VXUtils.h"

namespace impnfse {

// What a host can set when it opens the suite.
struct TOpcoesSuite {
  // Shows a text to the operator.
  std::function<void(const String&)> Mostrar = [](const String&) {};
};

// One at a time in a process. The constructor raises EBanco when the database can't be opened, and std::logic_error
// when another suite lives.
class TSuite {
 public:
  explicit TSuite(const String& conexao, TOpcoesSuite opcoes = {});
  ~TSuite();
  TSuite(const TSuite&) = delete;
  TSuite& operator=(const TSuite&) = delete;

  // The suite that lives. Raises std::logic_error when there is none.
  static TSuite& Atual();

  TBancoFirebird& Banco() { return FBanco; }
  TArmazemRegistros& Armazem() { return FArmazem; }
  TDadosEmpresaImportacao& EmpresaImportacao() { return FEmpresaImportacao; }
  TCarregamento& Carregamento() { return FCarregamento; }

  // Begins the run of one file, asked for by the branch (0: the first one registered). Raises EBanco.
  void IniciarExecucao(Int64 idFilial);
  // Reads again the branches, which a host may have changed.
  void LerFiliais();

  // A query over tables that no import changes (municipalities, layouts): asked of the database once per run.
  const TLinhasConsulta& ConsultarMemorizado(const String& sql);

 private:
  TBancoFirebird FBanco;
  TArmazemRegistros FArmazem;
  TVXConnection FConnection;
  TDadosEmpresaImportacao FEmpresaImportacao;
  TCarregamento FCarregamento;
  TVXUtilsDialogs FDialogs;
  TApplication FApplication;
  std::unordered_map<String, TLinhasConsulta> FConsultas;
};

}  // namespace impnfse
