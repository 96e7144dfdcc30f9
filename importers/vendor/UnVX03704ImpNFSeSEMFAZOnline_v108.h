// SEMFAZ Online 1.08, layout code 60: a file of one note with one service. The issuer is a number and no more. The
// deduction serves as the item's discount too, and the retained ISS stands in where no other ISS is due.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBSEMFAZOnline_v108.h"

namespace impnfse {

class TNFSeSEMFAZOnline final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetNota().Texto("Prestador/NumeroDocumento"); }
  String GetCNPJCPFDestinatario() override { return GetNota().Texto("Tomador/Documento"); }
  TDateTime GetData() override;

 private:
  const IXMLNfseTypeSEMFAZOnline& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  bool EhDocumentoCancelado() const { return GetNota().Texto("SituacaoNota") == "2"; }
  bool DocumentoTemISSRetido() const { return GetNota().Texto("IssRetido") == "1"; }
  Currency BuscarValorISS() const;

  IXMLNfseTypeSEMFAZOnline FNota;
};

}  // namespace impnfse
