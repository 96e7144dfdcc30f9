// GEFisco, layout code 41: documents issued by the branch, in two text files with fields separated by ";". A file whose
// name begins with "C" has the heads of documents, one whose name begins with "D" their items. They come separately, in
// any order, and meet in the database: what an earlier file stored of a document is completed.
#pragma once

#include <unordered_map>
#include <unordered_set>

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeTypes.h"

namespace impnfse {

class TNFSeGEFisco final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override;
  String GetCNPJCPFDestinatario() override;
  TDateTime GetData() override;

 private:
  const TNotaGEFisco& GetNota() const { return Notas.front(); }

  void CarregarNFSe();
  void CarregarNotas();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200(const TDadosRegistroA100& documento);
  void CarregarA17R(TDadosRegistroA100& documento);
  void CarregarA170(TDadosRegistroA100& documento);
  void Importar(bool todos);

  bool DocumentoTemISSRetido() const;
  static String BuscarChave(int numero, const String& serie, TDateTime data);
  String BuscarChave() const { return BuscarChave(GetNota().Numero, GetNota().Serie, GetNota().Data); }
  TDadosRegistroA100& DocumentoDaNota();
  bool PodeEstarNoBanco(const TDadosRegistroA100& documento);
  void AssignA100Banco(TDadosRegistroA100& documento);

  TListaNFSeGEFisco Notas;                         // the file's lines, from the one at hand
  TDicionario<TDadosRegistroA100> ListaDadosA100;  // the file's documents by number, series and date
  std::size_t Importados = 0;                      // how many of them are stored, and gone since
  std::unordered_map<String, int> LinhasPorVir;    // of each document
  bool NumeroEmDuasDatas = false;
  std::unordered_map<Int64, std::unordered_set<Int64>> NumerosNoBanco;  // NUM_DOC by period
};

}  // namespace impnfse
