// ELOTECH, layout code 61: a file of one note with a list of services, on each of which the note's taxes are repeated
// whole. PIS and COFINS count as the document's own and stand among the retained taxes all the same.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBELOTECH.h"

namespace impnfse {

class TNFSeELOTECH final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const IXMLInfNfseELOTECH& GetNota() const { return FNota; }
  IXMLDeclaracaoELOTECH GetDeclaracao() const;

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLItemServicoELOTECH& servico);
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;

  IXMLInfNfseELOTECH FNota;
  IXMLNfseCancelamentoELOTECH FNotaCancelamento;
};

}  // namespace impnfse
