// Digifred, layout code 32: a file of one note with one service. The issuer has a number and an address but no name; no
// note is ever cancelled; and a date is read day first before it is read year first.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBDigifred.h"

namespace impnfse {

class TNFSeDigifred final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetDeclaracao().Texto("Prestador/CpfCnpj/CnpjCpf"); }
  String GetCNPJCPFDestinatario() override {
    return GetDeclaracao().Texto("Tomador/IdentificacaoTomador/CpfCnpj/CnpjCpf");
  }
  String GetChave() override { return GetNota().Texto("CodigoVerificacao"); }
  TDateTime GetData() override { return ConverterDataLocalOuISO(GetNota().Texto("DataEmissao")); }

 private:
  const IXMLInfNfseDigifred& GetNota() const { return FNota; }
  IXMLDeclaracaoDigifred GetDeclaracao() const {
    return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
  }

  void CarregarNFSe();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  bool DocumentoTemISSRetido() const;

  IXMLInfNfseDigifred FNota;
};

}  // namespace impnfse
