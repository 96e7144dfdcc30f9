// Thema ISSQN Eletrônico, layout code 7: flat notes of one service each, without addresses: the place of service stands
// for the city of both parties. Retained ISS is read out of the code at the head of the nature of the operation, and a
// situation "N" is a cancelled note.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBThemaISSQNEletronico.h"

namespace impnfse {

class TNFSeNFSeThemaISSQNEletronico final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetNota().Texto("cpfCnpjPrestador"); }
  String GetCNPJCPFDestinatario() override { return GetNota().Texto("cpfCnpjTomador"); }
  String GetChave() override { return GetNota().Texto("codigoVerificacao"); }
  TDateTime GetData() override;

 private:
  const IXMLNotaThema& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  TDadosParte LerParte(const String& nome) const;
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;
  String BuscarCodigoNatureza() const;
  Currency BuscarAliquotaISSServico() const;

  IXMLNotaThema FNota;
};

}  // namespace impnfse
