// INFISC, layout code 39: one note, one in an envelope or a batch, with several services each. The taxes of the
// services are summed up; the taker's state decides what counts as tax substitution.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBINFISC.h"

namespace impnfse {

class TNFSeINFISC final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  // One tax over the items of a note: the rate of the last one, the sums of the others.
  struct TTotal {
    Currency Aliquota;
    Currency Valor;
    Currency Base;
    void Somar(Currency aliquota, Currency valor, Currency base);
  };

  const IXMLINFISC<"InfNFSe">& GetNota() const { return FInfNFSe; }

  // The three roots, tried in this order.
  void CarregarNFSe();
  bool CarregouEnvioLoteNotas(TArquivoXML& arquivo);
  bool CarregouLoteNotas(TArquivoXML& arquivo);
  bool CarregouNota(TArquivoXML& arquivo);
  void CarregarNota(const IXMLINFISC<"NFSe">& nota, bool comNumero);

  void CarregarA100();
  void CarregarValoresA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLINFISC<"Serv">& serv);
  void CarregarA170();
  void CarregarA170(const IXMLINFISC<"Det">& det, std::size_t indice);
  void SomarItem(const IXMLINFISC<"Det">& det);
  void CarregarA17R();
  void InserirRetencaoOuTotal(std::string_view codigo, Currency aliquota, Currency valor, const TTotal& total);

  IXMLINFISC<"Emit"> Emitente() const;
  bool TomadorNoRS() const { return GetNota().Texto("TomS/ender/UF") == "RS"; }
  bool DocumentoEstaCancelado() const;
  bool DocumentoTemISSRetido() const;
  bool ExisteFatura() const;
  bool ExisteDuplicata();
  String BuscarIndicadorPagamento();
  TDateTime BuscarDataExecucaoOuConclusaoServico();
  String BuscarMunicipioDevidoISS(const IXMLINFISC<"Serv">& serv);

  IXMLINFISC<"InfNFSe"> FInfNFSe;
  TTotal FISS;
  TTotal FINSS;
  TTotal FIR;
  TTotal FCSLL;
  TTotal FCOFINS;
  TTotal FPIS;
};

}  // namespace impnfse
