// Pronim's ABRASF 2.02, layout code 51 where the file says that version: a file of one or many notes, under one of
// three roots. Each note gives one item. A cancelled note is known, and keeps its number and date alone.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBPronim_v202.h"

namespace impnfse {

class TNFSePronim final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  // The forms of a file. Each answers whether it imported a note.
  void CarregarNFSe();
  bool CarregouListaNfse(TArquivoXML& arquivo);
  bool CarregouConsultarLoteRpsResposta(TArquivoXML& arquivo);
  bool CarregouCompNfse(TArquivoXML& arquivo);
  template <class Forma>
  bool CarregouForma(Forma forma);
  template <class Itens>
  void CarregarLista(const Itens& notas);
  // Makes the note the one at hand; false for one to be passed over.
  bool AssumiuNota(const IXMLCompNfsePronim& nota);

  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA170();
  void CarregarA17R();

  IXMLDeclaracaoPronim GetDeclaracao() const;
  bool DocumentoTemISSRetido() const;
  String BuscarCodigoMunicipioDevidoISS();

  IXMLInfNfsePronim FNota;
  bool FNotaCancelada = false;
};

}  // namespace impnfse
