// Softplan, layout code 53, since February 2018: a file of one note with several services, whose ISS always comes to
// that of the note. No ISS is ever retained.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBSoftplanV022018.h"

namespace impnfse {

class TNFSeSoftplan022018 final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const IXMLxmlNfpse& GetNota() const { return FNota; }

  void CarregouNFSe();
  void CarregouA100();
  void CarregouValoresA100();
  void Carregou0150();
  Int64 Carregou0200(const IXMLitemServicoSoftplanV022018& servico);
  void CarregouA170();
  Currency BuscarValorISS(const TDadosRegistroA170& item, bool unico) const;

  int BuscarNumeroDocumento() const;
  bool DocumentoEstaCancelado() const;

  IXMLxmlNfpse FNota;
};

}  // namespace impnfse
