// Reads the stored registers in the order of insertion, one at a time.
#pragma once

#include <functional>

#include "BancoFirebird.h"
#include "VX03704Registro.h"

namespace impnfse::app {

// Which registers: everything by default.
struct TFiltroRegistros {
  Int64 IdFilial = 0;   // only this branch's, and the participants and items of its company
  Int64 IdEmpresa = 0;  // the branch's company
  TDateTime De = 0;     // only documents of these days, and what they refer to
  TDateTime Ate = 0;
};

class TLeitorRegistros {
 public:
  TLeitorRegistros(TBancoFirebird& banco, const TFiltroRegistros& filtro) : FBanco(banco), FFiltro(filtro) {}

  // Each calls `receber` for every register. They raise EBanco.
  void Ler(const std::function<void(const TDadosRegistro0000&)>& receber);
  void Ler(const std::function<void(const TDadosRegistro0150&)>& receber);
  void Ler(const std::function<void(const TDadosRegistro0200&)>& receber);
  // A document comes with its children.
  void Ler(const std::function<void(TDadosRegistroA100&)>& receber);
  void Ler(const std::function<void(const TRegistroAuxManutencao&)>& receber);
  void Ler(const std::function<void(const TLinhaImportaCfg&)>& receber);

 private:
  bool TemDatas() const { return FFiltro.De != 0 || FFiltro.Ate != 0; }
  // The condition on the documents, over the tables A (A100) and P (0000).
  String CondicaoDosDocumentos() const;
  // Which rows R of a table kept per company are wanted, in order of their id: with dates, those that the documents
  // refer to by that column of `origem`.
  String DaEmpresa(std::string_view coluna, std::string_view origem) const;

  TBancoFirebird& FBanco;
  TFiltroRegistros FFiltro;
};

}  // namespace impnfse::app
