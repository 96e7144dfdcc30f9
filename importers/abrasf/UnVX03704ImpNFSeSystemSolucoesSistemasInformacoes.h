// System Soluções, layout code 55: a list of notes whose declaration may hold several services. Each is an item, and
// the document's totals are the sums over them, not what the note's summary says. No cancelled note is known.
#pragma once

#include "UnVX03704ImpNFSeBase.h"
#include "UnVX03704ImpNFSeXMLDBSystemSolucoesSistemasInformacoes.h"

namespace impnfse {

class TNFSeSystemSolucoesSistemasInformacoes final : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() override;

  String GetCNPJCPFEmitente() override;
  String GetCNPJCPFDestinatario() override;
  String GetChave() override;
  TDateTime GetData() override;

 private:
  // The forms of a file. Each answers whether the file has its root.
  void CarregarNFSe();
  bool CarregouConsultarNfseFaixaResposta(TArquivoXML& arquivo);
  bool CarregouGerarNfseResposta(TArquivoXML& arquivo);
  template <class Raiz>
  bool CarregouForma(TArquivoXML& arquivo, std::string_view tag);

  void CarregarA100();
  void Carregar0150();
  Int64 Carregar0200(const IXMLServicoSystemSolucoes& servico);
  void CarregarA170();
  void CarregarA17R();

  IXMLDeclaracaoSystemSolucoes GetDeclaracao() const;
  TServicosSystemSolucoes GetServicos() const;
  bool DocumentoTemISSRetido() const;

  IXMLInfNfseSystemSolucoes FNota;
  // Over the services of the note at hand.
  Currency FSomaValorDocumento;
  Currency FSomaDesconto;
  Currency FSomaPisRetido;
  Currency FSomaCofinsRetido;
};

}  // namespace impnfse
