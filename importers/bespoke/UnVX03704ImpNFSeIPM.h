// IPM, layout code 34 in .xml files: one note per file, with several services. The tax situation of each service tells
// whether its ISS is retained; the format has no verification code.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBIPM.h"

namespace impnfse {

class TNFSeIPM final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override;
  TDateTime GetData() override;

 private:
  const IXMLIPM<"nfse">& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLIPM<"Lista">& lista);
  void CarregarA170();
  void CarregarA170(const IXMLIPM<"Lista">& lista, int numero);
  void CarregarA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;
  int BuscarCodigoMunicipioTomador();
  String BuscarCodigoMunicipioDevidoISS(const IXMLIPM<"Lista">& lista);

  IXMLIPM<"nfse"> FNota;
  Currency FValorISS;  // the sum over the services
};

}  // namespace impnfse
