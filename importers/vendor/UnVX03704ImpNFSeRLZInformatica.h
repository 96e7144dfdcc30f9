// RLZ, layout code 62: a list of notes with several services each, cancelled unless they say that they were issued.
// Cities have names only, and PIS, COFINS and CSLL come as rates; INSS is retained service by service.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBRLZInformatica.h"

namespace impnfse {

class TNFSeRLZInformatica final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetNota().Texto("prestador/cpfcnpj"); }
  String GetCNPJCPFDestinatario() override { return GetNota().Texto("tomador/cpfcnpj"); }
  TDateTime GetData() override;

 private:
  const IXMLNotaRLZInformatica& GetNota() const { return FNota; }

  void CarregouNFSe();
  void CarregouA100();
  void CarregouValoresA100();
  void Carregou0150();
  TDadosParte LerParte(const IXMLParteRLZInformatica& parte);
  Int64 Carregou0200(const IXMLServicoRLZInformatica& servico);
  void CarregouA170();
  void CarregouA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const { return GetNota().Valor("valorissretidonafonte") > 0; }
  String BuscarCodigoMunicipioDevidoISS();
  Currency BuscarValorISS() const;
  Currency BuscarValorImposto(Currency aliquota) const;

  IXMLNotaRLZInformatica FNota;
};

}  // namespace impnfse
