// ABRASF 2.03: the files of the layout codes 17, 22, 33, 44, 46, 47, 57 and 58 that name a version from 2.01 to 2.03.
// Any number of notes, whatever wraps them; each gives one item. The layout has no series and no state registrations.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBAbrasf_v203.h"

namespace impnfse {

class TNFSeAbrasf_v203 final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIMEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIMDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;
  bool GetDocumentoTemISSRetido() override;

 private:
  const IXMLInfNfse_v203& GetNota() const { return FNota; }
  // Its declaration, where all stands that the issuer declared.
  IXMLInfDeclaracao_v203 GetDeclaracao() const;

  // Loads the notes among the element and its later siblings, and below them; whether there is any.
  bool CarregouArquivoXML(const std::shared_ptr<const TDocumentoXML>& documento, TNoXML no);
  void CarregouNota();
  void CarregouA100();
  void Carregou0150();
  Int64 Carregou0200();
  void CarregouA170();
  void CarregouA17R();

  bool NotaEstaCancelado() const;
  Currency BuscarValorISS() const;
  String BuscarCodigoMunicipioDevidoISS();

  IXMLInfNfse_v203 FNota;
  IXMLCancelamentoNfse_v203 FNotaCancelada;
};

}  // namespace impnfse
