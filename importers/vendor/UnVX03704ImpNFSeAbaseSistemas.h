// Abase, layout code 31: a file of one note with a list of services, whose values the document sums up and whose
// retained taxes are written service by service. The issuer's participant takes the taker's name and address, and a
// calculation base that can't be read costs the note a message, not its import.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBAbaseSistemas.h"

namespace impnfse {

class TNFSeABASESistemas final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override { return GetNota().Texto("CodigoVerificacao"); }
  TDateTime GetData() override;
  bool GetDocumentoTemISSRetido() override { return FISSRetido; }

 private:
  const IXMLInfNfseAbaseSistemas& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  TDadosParte LerTomador(const String& estado);
  Int64 Carregar0200(const IXMLServicoAbaseSistemas& servico);
  void CarregarA170();
  void CarregarA170(const IXMLServicoAbaseSistemas& servico, std::size_t indice);
  void CarregarA17R(const IXMLServicoAbaseSistemas& servico, std::optional<Currency> baseLida);

  bool DocumentoEstaCancelado() const;
  String BuscarMunicipioDevidoISS(const IXMLServicoAbaseSistemas& servico);

  IXMLInfNfseAbaseSistemas FNota;
  bool FISSRetido = false;  // of some service so far
  Currency FValorServicos;
  Currency FValorDesconto;
  Currency FValorISS;
};

}  // namespace impnfse
