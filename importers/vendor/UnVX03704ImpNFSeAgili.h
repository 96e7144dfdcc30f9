// Agili before version 1.00, layout code 45: the answer to a range query, many notes with many services each. A flag is
// a pair of a code and a description, and which of the two counts is another matter for each flag. That of the Simples
// regime is read the other way round.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBAgili.h"

namespace impnfse {

class TNFSeAgili final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override { return GetNota().Texto("Prestador/InscricaoEstadual"); }
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override { return GetNota().Texto("Tomador/InscricaoEstadual"); }
  String GetChave() override { return GetNota().Texto("CodigoAutenticidade"); }
  TDateTime GetData() override;

 private:
  const IXMLNfseAgili& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLServicoAgili& servico);
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;
  String OptanteSimples() const;

  IXMLNfseAgili FNota;
};

}  // namespace impnfse
