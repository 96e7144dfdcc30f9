// Paliari, layout code 50: the answer to a provider who asks for its notes, one service a note. The ISS is that of the
// note's own values, everything else that of the declaration; a note without a gross value goes by its net value. No
// file tells of cancellations.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBPaliariEngenhariaSoftware.h"

namespace impnfse {

class TNFSePaliariEngenhariaSoftware final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override { return GetNota().Texto("CodigoVerificacao"); }
  TDateTime GetData() override;

 private:
  const IXMLInfNfsePaliari& GetNota() const { return FNota; }
  IXMLDeclaracaoPaliari GetDeclaracao() const;

  void CarregarNFSe();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoTemISSRetido() const;
  Currency BuscarValorServicos() const;

  IXMLInfNfsePaliari FNota;
};

}  // namespace impnfse
