// The base of electronic document files: the side of the note on which the company stands, the participant, and the
// run's transaction.
#pragma once

#include "VX03704EmpresaImportacao.h"
#include "VX03704ImpBase.h"

namespace impnfse {

class TImpDocEletBase : public TArquivoImpBase {
 public:
  // The thread is created not running; the argument is the suite's and always false.
  explicit TImpDocEletBase(bool) {}

  // One transaction per file: begins it, runs Carregar under guard, and commits. When the database refused anything,
  // nothing is kept, Importou is false and Erro tells why.
  void Execute() override;

  // The virtual operations below stand in the order in which the importers' base lists them.

  // The date text of a note as a date; 0 when it is none. See ConverteData of VX03704Data.h.
  virtual TDateTime ConverteData(const String& texto, TFormatoData formato);
  // `Carregou` is true when the number of the issuer (taker) is a branch of the company and GetData is a date. That
  // branch becomes the current one, and the period record of the date's month is found or made: it is in `ID` and in
  // GetIDREG0000. The argument is the suite's.
  virtual TBuscarID CarregouRegistro0000Emitente(int tipo);
  virtual TBuscarID CarregouRegistro0000Destinatario(int tipo);
  // The file's path in the archive of the current branch, under the folder; empty when the branch has no archive.
  virtual String BuscarDiretorioDestinoArquivo(const String& subpasta);
  // The side in force: exit and own issue from the issuer's side, also while no side is chosen; entry and third party's
  // issue from the taker's.
  virtual TTipoOperacao GetOrigem() { return FLadoDestinatario ? toEntrada : toSaida; }
  virtual int GetTPNF() { return FLadoDestinatario ? 0 : 1; }
  virtual String GetCNPJCPFEmitente() { return {}; }
  virtual String GetIEEmitente() { return {}; }
  virtual String GetIMEmitente() { return {}; }
  virtual String GetCNPJCPFDestinatario() { return {}; }
  virtual String GetIEDestinatario() { return {}; }
  virtual String GetIMDestinatario() { return {}; }
  virtual String GetChave() { return {}; }
  virtual String GetCNPJCliFor() { return {}; }
  virtual String GetIECliFor() { return {}; }
  virtual TDateTime GetData() { return 0; }
  virtual TEmissao GetEmissao() { return FLadoDestinatario ? teTerceiros : tePropria; }
  virtual String GetNumeroDocumento() { return {}; }

  // The last error of the run.
  const String& GetErro() const { return Erro; }
  // Whether a document was imported.
  bool GetImportou() const { return Importou; }

  // The importer's one participant object.
  TDadosRegistro0150* GetDados0150() { return &FDados0150; }
  // The number in COD_PART of the company's participant with that key, who is then in GetDados0150; else 0.
  int BuscarIdParticipante(const TDadosPesquisaRegistro0150IOP* chave);
  // Fills IDREG0200 when the company has an item with the same description as it would be stored.
  void BuscarDadosRegistro0200Descricao(TDadosRegistro0200* item);
  // See ConverterCurrency of VX03704Currency.h.
  Currency ConverterCurrency(const String& texto) const { return impnfse::ConverterCurrency(texto); }
  // Forgets the side and empties the participant; the branch of the request is the current one again. The period in
  // force stays.
  void LimparDadosEmitenteDestinatario();

 protected:
  String Erro;
  bool Importou = false;

  // Whether the run stored a document.
  bool ArmazenouDocumento() const;

 private:
  TBuscarID CarregarPeriodo(const String& cnpj, bool ladoDestinatario);
  void EncerrarExecucao();

  TDadosRegistro0150 FDados0150;
  bool FLadoDestinatario = false;
  bool FArmazenouDocumento = false;
};

}  // namespace impnfse
