// GINFES, layout code 43: a file of many notes, one service each. The format has no cancelled notes, no state
// registrations, and of the retained taxes only ISS.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBGINFES.h"

namespace impnfse {

class TNFSeGINFES final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const IXMLNfseGINFES& GetNota() const { return Nota; }

  void CarregarNFSe();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA17R();
  void CarregarA170();

  bool DocumentoTemISSRetido() const;
  Currency ValorISS() const;

  IXMLNfseGINFES Nota;
};

}  // namespace impnfse
