// The company that imports: its current branch, its configuration, the period in force. One per process.
#pragma once

#include <vector>

#include "VX03704Filiais.h"
#include "VX03704Tipos.h"

namespace impnfse {

class TConfiguracao {
 public:
  explicit TConfiguracao(const TCfgCA06_IMPORTACFG& cfg) : FCfg(cfg) {}
  TCfgCA06_IMPORTACFG GetConfiguracao() const { return FCfg; }

 private:
  TCfgCA06_IMPORTACFG FCfg;
};

class TDadosEmpresaImportacao {
 public:
  // The period record's month: first and last day; 0 before the first one.
  TDateTime DataInicial = 0;
  TDateTime DataFinal = 0;

  explicit TDadosEmpresaImportacao(std::vector<TFilialRegistrada> filiais);

  // Without a branch selected, what reads the current branch raises std::out_of_range.

  // The current branch: the one that asked for the import, or the one found on a side of the note at hand.
  const TDadosFilial& GetDadosFilial() const { return Filial().Dados; }
  // The id of the company's main branch: the first one registered.
  Int64 GetIDFilialPrincipal() const;
  const TConfiguracao* GetConfiguracao() const { return &FConfiguracao; }
  // Number of digits behind the CFOP of a service.
  int GetQuantidadeCasasPrefixoCFOP() const { return Filial().CasasPrefixoCFOP; }
  // Archive folder of the current branch; empty when it has none.
  const String& GetArquivoMorto() const { return Filial().ArquivoMorto; }

  // The branch that asks for the import, by id (0: the first one registered), becomes the current one. No period is in
  // force. Raises EBanco when no branch fits.
  void SelecionarFilialDoPedido(Int64 idFilial);
  // The company's branch with that CNPJ, compared as text, becomes the current one; false when there is none.
  bool SelecionouFilialDaEmpresa(const String& cnpj);
  // Back to the branch that asked.
  void RetornarAFilialDoPedido() { Selecionar(FPedido); }

 private:
  const TFilialRegistrada& Filial() const { return FFiliais.at(FAtual); }
  void Selecionar(std::size_t indice);

  std::vector<TFilialRegistrada> FFiliais;
  std::size_t FPedido = 0;
  std::size_t FAtual = 0;
  TConfiguracao FConfiguracao{{}};
};
// Raises std::logic_error while no TSuite lives.
TDadosEmpresaImportacao* BuscarInstanciaEmpresaImportacao();

}  // namespace impnfse
