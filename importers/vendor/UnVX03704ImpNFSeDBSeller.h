// DBSeller, layout code 54: the listing of a month, one service a note. The retained taxes are the base's own, from the
// getters below. A taker becomes a participant without a number too, and so does a company that bills itself. What
// can't be read ends the file with its own text, not with the structure error.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBDBSeller.h"

namespace impnfse {

class TNFSeDBSeller final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIMEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIMDestinatario() override;
  String GetChave() override { return GetNota().Texto("CodigoVerificacao"); }
  TDateTime GetData() override;
  String GetNumeroDocumento() override;

  bool GetDocumentoTemISSRetido() override;
  Currency GetBaseCalculo() override { return GetNota().Valor("Servico/Valores/BaseCalculo"); }
  Currency GetValorISS() override { return GetNota().Valor("Servico/Valores/ValorIss"); }
  Currency GetAliquotaISS() override { return GetNota().Valor("Servico/Valores/Aliquota"); }
  Currency GetValorIR() override { return GetNota().Valor("Servico/Valores/ValorIr"); }
  Currency GetValorINSS() override { return GetNota().Valor("Servico/Valores/ValorInss"); }
  Currency GetValorPIS() override { return GetNota().Valor("Servico/Valores/ValorPis"); }
  Currency GetValorCOFINS() override { return GetNota().Valor("Servico/Valores/ValorCofins"); }
  Currency GetValorCSLL() override { return GetNota().Valor("Servico/Valores/ValorCsll"); }

 private:
  IXMLInfNfseDBSeller GetNota() const { return FCompNfse.Filho<"Nfse/InfNfse">(); }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA170();

  bool DocumentoEstaCancelado() const;

  IXMLCompNfseDBSeller FCompNfse;
};

}  // namespace impnfse
