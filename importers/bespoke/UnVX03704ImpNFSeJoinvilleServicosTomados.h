// Joinville, layout code 36: the notes that the company received.
#pragma once

#include "UnVX03704ImpNFSeJoinvilleComum.h"
#include "UnVX03704ImpNFSeXMLDBJoinvilleServicosTomados.h"

namespace impnfse {

class TNFSeJoinvilleServicosTomados final
    : public TNFSeJoinvilleComum<IXMLLoteJoinvilleServicosTomados, IXMLNotaJoinvilleServicosTomados, "nota_recebida"> {
 public:
  using TNFSeJoinvilleComum::TNFSeJoinvilleComum;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;

 private:
  std::optional<IXMLLoteJoinvilleServicosTomados> LoadLote() const override {
    return LoadloteJoinvilleServicosTomados(GetArquivo());
  }
  TBuscarID CarregouRegistro0000DaEmpresa(int tipo) override;
  void Carregar0150() override;
  String BuscarMunicipioDevidoISS() override;
  Currency GetBaseRetencoes() const override;

  TDadosParte LerPrestador();
};

}  // namespace impnfse
