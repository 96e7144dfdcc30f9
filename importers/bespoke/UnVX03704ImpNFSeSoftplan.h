// Softplan, layout code 53, as it was until January 2018: a file of one note with several services, whose rates are
// written as fractions or as percentages. No ISS is ever retained.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBSoftplan.h"

namespace impnfse {

class TNFSeSoftplan final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const IXMLInfNFPSe& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLItemServicoSoftplan& servico);
  void CarregarA170();
  Currency BuscarValorISS(const TDadosRegistroA170& item, bool unico) const;

  int BuscarNumeroDocumento() const;
  bool DocumentoEstaCancelado() const;

  IXMLInfNFPSe FNota;
};

}  // namespace impnfse
