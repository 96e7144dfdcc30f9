// Equiplano (ESNFS), layout code 49: a list of notes or one note, one service each. Flags come as words.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBEquiplanoSistemas.h"

namespace impnfse {

class TNFSeEquiplanoSistemas final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetNota().Texto("prestadorServico/nrDocumento"); }
  String GetCNPJCPFDestinatario() override { return GetNota().Texto("tomadorServico/nrDocumento"); }
  String GetChave() override { return GetNota().Texto("cdAutenticacao"); }
  TDateTime GetData() override;

 private:
  const IXMLNfsEquiplano& GetNota() const { return FNota; }

  // The two roots. Each answers whether the file has it, whatever its notes gave.
  void CarregarNFSe();
  bool CarregouListaNFSe(TArquivoXML& arquivo);
  bool CarregouNFSe(TArquivoXML& arquivo);
  void CarregarNota(const IXMLNfsEquiplano& nota);

  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;

  IXMLNfsEquiplano FNota;
};

}  // namespace impnfse
