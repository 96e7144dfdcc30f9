// The two tables of the dispatch: from a layout code to an importer's id, and from an id to the importer.
#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "UnVX03704ImpNFSeBase.h"

namespace impnfse {

class TImpNFSe;

// One row: a layout code, the id of its importer, and where the code covers two generations, the test for the other one
// and the id if the test holds.
struct TRegraLeiaute {
  std::string_view Codigo;
  int Id;
  bool (TImpNFSe::*Teste)() const = nullptr;
  int IdSeVale = 0;
};
std::span<const TRegraLeiaute> RegrasDeLeiaute();

// How the run of an importer differs from that of the others.
enum class TVariacaoNFSe {
  Nenhuma,
  SemErroNaLista,  // the worker's last error isn't added to the list: its own list says it
  ComRetorno,      // the same, and the callback of a loaded file is called with the worker
};

struct TImportadorNFSe {
  int Id;
  std::string_view Classe;  // the text given to InicializarDados, and the name of the class
  std::unique_ptr<TNFSeBase> (*Criar)();
  TVariacaoNFSe Variacao = TVariacaoNFSe::Nenhuma;
  // Where one id has two importers: whether the file is this one's. The first whose test holds reads it.
  bool (TImpNFSe::*Teste)() const = nullptr;
};
// The family of importers, by id.
std::span<const TImportadorNFSe> ImportadoresNFSe();

// The importers that a code can lead to, in the order of the tables: what an operator sees beside a layout.
std::vector<const TImportadorNFSe*> ImportadoresDoLeiaute(std::string_view codigo);

}  // namespace impnfse
