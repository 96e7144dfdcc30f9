// Blumenau, layout code 42: a text file of notes that the current branch issued, one line each, in three shapes (fields
// of fixed width, separated by ";", separated by a tab). The whole file is read before any register is made.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeTypes.h"

namespace impnfse {

class TNFSeBlumenau final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  // Raises EConversao for a field that can't be read, with nothing stored.
  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetIEEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetIEDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  const TNotaServico& GetNota() const { return Notas[NotaAtual]; }

  void CarregarNFSe();
  void CarregarDadosArquivo();
  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200();
  void CarregarA17R();
  void CarregarA170();

  bool DocumentoTemISSRetido() const { return GetNota().ISSRetido; }

  TListaNFSeBlumenau Notas;
  std::size_t NotaAtual = 0;
};

}  // namespace impnfse
