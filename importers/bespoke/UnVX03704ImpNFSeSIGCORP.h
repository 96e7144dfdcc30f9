// SIGCORP, layout code 21: a file of one note with one service. Its flags are read by exclusion: a note is cancelled
// unless it says that it is in force, and ISS is retained unless it says that it isn't.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBSIGCORP.h"

namespace impnfse {

class TNFSeSIGCORP final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetNota().Texto("CPFCNPJPrestador/Documento"); }
  String GetIEEmitente() override;
  String GetCNPJCPFDestinatario() override { return GetNota().Texto("CPFCNPJTomador/Documento"); }
  String GetIEDestinatario() override;
  String GetChave() override { return GetNota().Texto("ChaveNFe/CodigoVerificacao"); }
  TDateTime GetData() override;

 private:
  const IXMLNFeSIGCORP& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  TDadosParte LerParte(const String& nome, const IXMLEnderecoSIGCORP& endereco);
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;
  String BuscarMunicipioDevidoISS();

  IXMLNFeSIGCORP FNota;
};

}  // namespace impnfse
