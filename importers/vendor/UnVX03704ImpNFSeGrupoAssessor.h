// Grupo Assessor, layout code 59: a file of one flat note with a list of services, over which the note's ISS and
// deduction are shared out. Each retained tax has a flag of its own; the code of the situation says that a note is
// cancelled, its description that it has no values.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBGrupoAssessor.h"

namespace impnfse {

class TNFSeGrupoAssessor final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override { return GetNota().Texto("PRESTCPFCNPJ"); }
  String GetCNPJCPFDestinatario() override { return GetNota().Texto("TOMCPFCNPJ"); }
  TDateTime GetData() override;

 private:
  using TCampoNota = TCaminho<kFormatoGrupoAssessor, "NOTA">;
  // What the lines of a note sum up to so far.
  struct TSomas {
    Currency ISS;
    Currency Deducao;
  };

  const IXMLNOTAGrupoAssessor& GetNota() const { return FNota; }

  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void CarregarPISCOFINS();
  void Carregar0150();
  Int64 Carregar0200(const IXMLSERVICOGrupoAssessor& servico);
  void CarregarA170();
  void CarregarISSUnico(TDadosRegistroA170& item) const;
  void RatearISS(TDadosRegistroA170& item, TSomas& somas, bool ultimo) const;
  void CarregarA17R();

  bool EhDocumentoCancelado() const { return GetNota().Texto("SITCOD") == "3"; }
  bool EhDocumentoSemValores() const { return GetNota().Texto("SITDESC") == "CANCELADA/ESTRAVIADA"; }
  bool EhRetido(TCampoNota sinal) const { return GetNota().Texto(sinal) == "S"; }
  String BuscarCodigoMunicipioDevidoISS();

  IXMLNOTAGrupoAssessor FNota;
};

}  // namespace impnfse
