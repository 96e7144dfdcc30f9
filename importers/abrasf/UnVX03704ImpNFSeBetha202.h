// Betha in ABRASF 2.02: the files of layout code 1 that name the version. A list of notes, one item each. The layout
// has no series and no state registrations.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBBetha202.h"

namespace impnfse {

class TNFSeBetha202 final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const IXMLInfNfseBetha202& GetNota() const { return FNota; }
  // Its declaration, where all stands that the issuer declared.
  IXMLInfDeclaracaoBetha202 GetDeclaracao() const;
  IXMLTomadorBetha202 GetTomador() const { return GetDeclaracao().Filho<"Tomador">(); }

  void CarregarNFSe();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA17R();
  void CarregarA170();

  bool DocumentoTemISSRetido() const;
  Currency BuscarValorDocumento() const;
  TDateTime BuscarDataExecucaoOuConclusaoServico();
  String BuscarCodigoMunicipioDevidoISS();

  IXMLInfNfseBetha202 FNota;
  bool FNotaCancelada = false;
};

}  // namespace impnfse
