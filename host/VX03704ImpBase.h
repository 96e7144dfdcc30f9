// The base of everything that imports one file: the front end and its worker.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "VX03704Base.h"
#include "VX03704Registro.h"
#include "VXBarraProgresso.h"

namespace impnfse {

// What a run tells of its file.
struct TResumoArquivo {
  struct TDocumento {
    TTPEmpresaArquivo Tipo;
    String Numero;
  };
  String Classe;                       // as given to InicializarDados; empty when no worker ran
  bool Importou = false;               // the worker's flag
  String Erro;                         // the worker's last error
  std::vector<TDocumento> Documentos;  // the documents loaded, in order
  bool Moveu = false;                  // the file went to the archive
  String Destino;                      // where it lies there
  String FalhaAoMover;                 // why it couldn't go there, when it should have
};

// What reads or stores anything raises EBanco when the database refuses.
class TArquivoImpBase : public TThread03704Base {
 public:
  // The request, the progress display (may be null) and the callback: set before Start.
  TDadosListaImportacaoArquivo DadosArquivo;
  TVXBarraProgresso* BarraProgresso = nullptr;
  std::function<void(TArquivoImpBase*)> OnArquivoCarregado;

  // Runs Carregar and turns an exception into a line of GetListaErros and the error flag.
  void Execute() override;
  // Prepares the object for the class name given.
  virtual void InicializarDados(const String& classe);
  // The base's part of the preparation; each override calls it first.
  virtual void Carregar();

  TDmVX03704Base& GetDataModule() { return FDataModule; }
  // Id of the period record now in force; 0 before the first one.
  Int64 GetIDREG0000() const { return FIDREG0000; }
  // In `ID`, the next free id of a register: "0150", "0200", "A100", "A170" or "A17R". Raises std::invalid_argument for
  // another name. `proximo` is always true.
  TBuscarID BuscarID(const String& registro, bool proximo);
  // The next free participant code.
  Int64 BuscarProximoCodigoParticipante();
  // Stores the register in the run's output. `documento` is true for the A100 only.
  void InserirRegistro(const TDadosRegistroSped* registro, bool documento);
  // Notes the document under the branch's side for the run's summary; the number may be empty.
  void IncluirFilialDocumento(TTPEmpresaArquivo tipo, const String& numero);
  // Takes over the worker's errors and summary.
  void AtribuirRetornoArquivo(TArquivoImpBase* trabalhador);

  // The suite's texts.
  String BuscarErroEstruturaArquivo() const;
  String BuscarErroNaoGerouBloco0() const;

  const TResumoArquivo& GetResumo() const { return *FResumo; }

 protected:
  void SetIDREG0000(Int64 id) { FIDREG0000 = id; }
  TResumoArquivo& Resumo() { return *FResumo; }

 private:
  TDmVX03704Base FDataModule;
  Int64 FIDREG0000 = 0;
  // Shared with the front end once it has taken it over: the worker moves the file afterwards.
  std::shared_ptr<TResumoArquivo> FResumo = std::make_shared<TResumoArquivo>();
};

// Moves a file to its place in the archive.
class TMoverArquivoIOP {
 public:
  void SetArquivoOrigem(String caminho) { FOrigem = std::move(caminho); }
  void SetArquivoDestino(String caminho) { FDestino = std::move(caminho); }

  // Moves the file, making missing folders. Never overwrites: a taken name gets " (2)", " (3)", ... before its
  // extension. Works across file systems, and leaves the file on any failure. False when it didn't go; an empty
  // destination leaves the file without being a failure.
  bool MoveuArquivo();

  // Where the file went; empty when it didn't.
  const String& GetArquivoFinal() const { return FArquivoFinal; }
  // Why it didn't go, in Portuguese; empty when nothing failed.
  const String& GetFalha() const { return FFalha; }

 private:
  String FOrigem;
  String FDestino;
  String FArquivoFinal;
  String FFalha;
};

}  // namespace impnfse
