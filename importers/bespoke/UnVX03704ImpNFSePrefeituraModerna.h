// Prefeitura Moderna, layout code 8: the economic movement of one provider, by periods of many notes. Only the
// provider's side exists. The format has no key.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBPrefeituraModerna.h"

namespace impnfse {

class TNFSePrefeituraModerna final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override;
  TDateTime GetData() override;

 private:
  const IXMLNotaPrefeituraModerna& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarPeriodo(const IXMLPeriodoPrefeituraModerna& periodo);
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA17R();
  void CarregarA170();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;

  IXMLmovimento_economico FMovimento;
  IXMLNotaPrefeituraModerna FNota;
};

}  // namespace impnfse
