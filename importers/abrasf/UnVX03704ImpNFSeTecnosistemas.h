// Tecnosistemas, layout code 27: a file of many notes, each with several services, whose values the document sums up.
// Only the other side of the note becomes a participant. The receipts of the same vendor are a layout of their own.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBTecnosistemas.h"

namespace impnfse {

class TNFSeTecnosistemas final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override { return "ISENTO"; }
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override { return "ISENTO"; }
  String GetChave() override;
  TDateTime GetData() override;

 private:
  // What the services of a note come to.
  struct TSomas {
    Currency Documento;
    Currency Desconto;
    Currency ISSRetido;  // only of the services whose ISS is retained
    TRetencoesFederais Federais;
  };

  const IXMLInfNfseTecnosistemas& GetNota() const { return Nota; }
  IXMLDeclaracaoTecnosistemas Declaracao() const;

  void CarregarNFSe();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLServicoTecnosistemas& servico);
  void CarregarA170();
  void CarregarA170(const IXMLServicoTecnosistemas& servico, int numero);
  void CarregarA17R();

  bool DocumentoTemISSRetido() const { return Somas.ISSRetido > 0; }

  IXMLInfNfseTecnosistemas Nota;
  TSomas Somas;
};

}  // namespace impnfse
