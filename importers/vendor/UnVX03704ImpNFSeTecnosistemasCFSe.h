// Tecnosistemas receipts (CFSe), layout code 27 like the same vendor's notes: a file of many receipts, each with
// several services, whose values the document sums up. A receipt has no date: it belongs to the month of its import.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBTecnosistemasCFSe.h"

namespace impnfse {

class TNFSeTecnosistemasCFSe final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override { return "ISENTO"; }
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override { return "ISENTO"; }
  String GetChave() override { return GetNota().Texto("ChaveAcesso"); }
  TDateTime GetData() override;

 private:
  const IXMLCupomFiscalTecnosistemasCFSe& GetNota() const { return FNota; }

  void CarregarCFSe();
  void CarregouA100();
  void Carregou0150();
  Int64 Carregou0200(const IXMLTcDadosServicoTecnosistemasCFSe& servico);
  void CarregouA170();
  void CarregouA170(const IXMLTcDadosServicoTecnosistemasCFSe& servico, int numero, bool unico);
  void CarregouA17R(const IXMLTcDadosServicoTecnosistemasCFSe& servico);

  bool DocumentoTemISSRetido() const { return FISSRetido; }

  IXMLCupomFiscalTecnosistemasCFSe FNota;
  bool FISSRetido = false;  // of some service so far
  Currency FValorServicos;
  Currency FValorDesconto;
  Currency FValorISS;
};

}  // namespace impnfse
