// Prodata DMS, layout code 48: the monthly declaration of one taxpayer, whose kind tells whether the services were
// provided or taken. Of the other party a note has a number and a name, and the only tax is the ISS, which is computed.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBProdataInformatica.h"

namespace impnfse {

class TNFSeProdataInformatica final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  // 1 when the declaration is of provided services: the taxpayer is the issuer of every note.
  int GetTPNF() override;
  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  TDateTime GetData() override;

 private:
  const IXMLItemDeServicoProdataInformatica& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  void CarregarA17R();
  void CarregarA170();

  bool DocumentoEstaCancelado() const { return GetNota().Texto("notaFiscalCancelada") == "1"; }
  bool DocumentoTemISSRetido() const { return GetNota().Texto("recolhidoPeloTomador") == "1"; }
  Currency GetBaseDeCalculo() const { return GetNota().Valor("baseDeCalculo"); }
  Currency GetAliquota() const { return GetNota().Valor("aliquota"); }
  Currency CalcularISS() const;

  IXMLDeclaracaoProdataInformatica FDeclaracao;
  IXMLItemDeServicoProdataInformatica FNota;
};

}  // namespace impnfse
