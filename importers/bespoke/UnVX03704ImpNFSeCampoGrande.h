// Campo Grande, layout code 40: a file of many notes, several services each. A word tells the situation of a note; of a
// substituted one the values are kept. The format has no state registrations.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBCampoGrande.h"

namespace impnfse {

class TNFSeCampoGrande final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const IXMLCampoGrande<"NotaFiscal">& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLCampoGrande<"Item">& linha);
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoTemISSRetido() const;
  Currency BaseRetencoes();
  Currency BuscarValorISS(const IXMLCampoGrande<"Item">& linha, bool unica) const;
  String BuscarMunicipioDevidoISS();

  IXMLCampoGrande<"NotaFiscal"> FNota;
};

}  // namespace impnfse
