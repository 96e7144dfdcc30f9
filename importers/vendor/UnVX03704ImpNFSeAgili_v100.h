// Agili 1.00, layout code 45 by the beginning of the file: a file of one note with many services. Flags are plain
// values, and that of the Simples regime is read as it says. The discount doesn't lower the value of the document.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBAgili_v100.h"

namespace impnfse {

class TNFSeAgili_v100 final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override { return GetNota().Texto("CodigoAutenticidade"); }
  TDateTime GetData() override;

 private:
  const IXMLNfseAgili_v100& GetNota() const { return FNota; }
  IXMLDeclaracaoAgili_v100 GetDeclaracao() const { return GetNota().Filho<"DeclaracaoPrestacaoServico">(); }

  void CarregouNFSe();
  void CarregouA100();
  void CarregouValoresA100();
  void Carregou0150();
  Int64 Carregou0200(const IXMLDadosServicoAgili_v100& servico);
  void CarregouA170();
  void CarregouA17R();

  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;
  String OptanteSimples() const;

  IXMLNfseAgili_v100 FNota;
};

}  // namespace impnfse
