// The entry of the module: one file with its layout code goes in; its importer runs as a worker, its outcome is
// collected, and the file goes to the archive.
//
//   TImpNFSe importacao;
//   importacao.DadosArquivo = {.Arquivo = "...", .CodigoLeiaute = "43", .TipoImportacao = "NFSE"};
//   importacao.Start();
//   importacao.WaitFor();
//
// A TSuite must live. One object serves one file, and one worker runs at a time in a process.
#pragma once

#include "LeiautesNFSe.h"
#include "VX03704ImpBase.h"

namespace impnfse {

class TImpNFSe : public TArquivoImpBase {
 public:
  void Execute() override;
  // Loads the file. The outcome is in GetListaErros, GetTemErros and GetResumo. A code without importer adds the
  // structure error and leaves the file. Raises EArquivo when the file can't be read to tell its generation.
  void Carregar() override;

  // The id of the importer for the code, which is compared as exact text, and for the generation that the head of the
  // file tells, where a code covers two. 0 when there is none. Raises EArquivo.
  int BuscarIdentificacaoNFSe(const String& codigo) const;

  // Writes to TMP_GENERICA, in place of what an earlier analysis has left there, one row for each layout that the file
  // may follow, as far as ES02_SERVICOLEIAUTE has it: what the beginning of the file and its extension hint at, no
  // more. Always true. Raises EArquivo, with the rows of before still there, and EBanco.
  bool AnalisouLeiauteArquivo(const String& arquivo);
  // The mark of those rows: the values of their columns TP12 and ID12.
  static String GetTMP_GENERICA_TP12() { return "3704"; }
  static String GetTMP_GENERICA_ID12() { return "180920170811"; }

  // What the head of the file (its first characters) or its name tells. Each reads the file anew, and raises EArquivo.
  bool EhLeiauteABRASFVersao203() const;
  bool EhLeiauteAgiliVersao100() const;
  bool EhLeiauteBethaVersao202() const;
  bool EhLeiauteIPM() const;
  bool EhLeiautePronimVersao202() const;
  bool EhLeiauteSoftplanVersao022018() const;
  bool EhLeiauteTecnosistemasCFSe() const;
  bool NotaJoinvilleEhServicoPrestado() const;

 protected:
  // Runs the importer as a worker: the one sequence that all importers share, with the differences that its row tells.
  void CarregarNFSe(const TImportadorNFSe& importador);

 private:
  static bool EncontrouTexto(const String& texto, const String& agulha);
  // With its dot, trimmed, in capitals.
  static String BuscarExtencaoArquivo(const String& arquivo);
  bool ExcluiuLeiauteTMPGenerica();
  bool IncluiuLeiauteTMPGenerica(const String& codigo);
};

// Whether the analysis proposes the layout for some file. Those that it never does are chosen by hand.
bool AnalisePropoeLeiaute(std::string_view codigo);

}  // namespace impnfse
