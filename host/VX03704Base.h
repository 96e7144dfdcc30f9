// The bases of a file's thread and its way to the database.
#pragma once

#include <thread>

#include "VX03704Tipos.h"
#include "VXDataAccess.h"
#include "VXUtilsLista.h"

namespace impnfse {

// A thread with a list of error texts and an error flag. It doesn't start on its own, and once started it must be
// waited for before the object goes.
class TThread03704Base {
 public:
  TThread03704Base() = default;
  virtual ~TThread03704Base();
  TThread03704Base(const TThread03704Base&) = delete;
  TThread03704Base& operator=(const TThread03704Base&) = delete;

  // Called on the thread itself when Execute has ended.
  virtual void DoTerminate() {}
  // The thread's body.
  virtual void Execute() = 0;

  // Begins Execute on a thread of its own. Once per object.
  void Start();
  // Blocks until the thread has ended; returns at once when it was never started.
  void WaitFor();
  void SetPriority(TThreadPriority prioridade) { FPrioridade = prioridade; }
  TThreadPriority GetPriority() const { return FPrioridade; }

  // The error texts, in order of arrival.
  TStringList& GetListaErros() { return FListaErros; }
  bool GetTemErros() const { return FTemErros; }
  void SetTemErros(bool valor) { FTemErros = valor; }

 private:
  std::thread FThread;
  TThreadPriority FPrioridade = tpNormal;
  TStringList FListaErros;
  bool FTemErros = false;
};

// A thread's data module.
class TDmVX03704Base {
 public:
  // The one shared query data set.
  TVXClientDataSet DataSetConsulta;

  // Runs one statement. Raises EBanco; an empty statement succeeds.
  bool ExecutouSQL(const String& sql);
  // Opens the data set's command read-only: its rows, from the first. Raises EBanco.
  void AbrirDataSetSomenteLeitura(TVXClientDataSet* dataSet);
  // The same for a command over tables that no import changes: asked of the database once per run.
  void AbrirDataSetMemorizado(TVXClientDataSet* dataSet);
};

}  // namespace impnfse
