// Joinville, layout code 36: the notes that the company issued.
#pragma once

#include "UnVX03704ImpNFSeJoinvilleComum.h"
#include "UnVX03704ImpNFSeXMLDBJoinville.h"

namespace impnfse {

class TNFSeJoinville final : public TNFSeJoinvilleComum<IXMLLoteJoinville, IXMLNotaJoinville, "nota"> {
 public:
  using TNFSeJoinvilleComum::TNFSeJoinvilleComum;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;

 private:
  std::optional<IXMLLoteJoinville> LoadLote() const override { return LoadloteJoinville(GetArquivo()); }
  TBuscarID CarregouRegistro0000DaEmpresa(int tipo) override;
  void Carregar0150() override;
  String BuscarMunicipioDevidoISS() override;
  Currency GetBaseRetencoes() const override;

  int BuscarCodigoMunicipioTomador();
};

}  // namespace impnfse
