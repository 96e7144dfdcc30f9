// What the two kinds of Joinville files, layout code 36, have in common: the company is named once, at the head, and
// all notes go under its side and period, which the first note decides. Each note has one service.
#pragma once

#include <optional>

#include "UnVX03704BaseFuncoes.h"
#include "UnVX03704ImpNFSeBase.h"
#include "XMLFormato.h"

namespace impnfse {

template <class Lote, class Nota, TTextoFixo ItemDoLote>
class TNFSeJoinvilleComum : public TNFSeBase {
 public:
  using TNFSeBase::TNFSeBase;

  void Carregar() final;

  String GetChave() final { return GetNota().Texto("codigo_verificacao"); }
  TDateTime GetData() final { return ConverteData(GetNota().Texto("data_emissao"), fdAnoMesDia); }

 protected:
  const Lote& GetLote() const { return FLote; }
  const Nota& GetNota() const { return FNota; }

  // The kind's decisions: its root, the company's side of the file, the other party, who gets the ISS, and the base of
  // the taxes retained besides it.
  virtual std::optional<Lote> LoadLote() const = 0;
  virtual TBuscarID CarregouRegistro0000DaEmpresa(int tipo) = 0;
  virtual void Carregar0150() = 0;
  virtual String BuscarMunicipioDevidoISS() = 0;
  virtual Currency GetBaseRetencoes() const = 0;

 private:
  void CarregarNFSe();
  void CarregarA100();
  void CarregarValoresA100();
  void CarregarA17R();
  void CarregarA170();

  bool DocumentoEstaCancelado() const { return StrToIntDef(GetNota().Texto("cancelada"), 0) > 0; }
  bool DocumentoTemISSRetido() const { return StrToIntDef(GetNota().Texto("iss_retido"), 0) > 0; }

  Lote FLote;
  Nota FNota;
};

template <class Lote, class Nota, TTextoFixo ItemDoLote>
void TNFSeJoinvilleComum<Lote, Nota, ItemDoLote>::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// A file without notes has no first one, which is an error of its structure. A document is noted as the issuer's in
// either kind.
template <class Lote, class Nota, TTextoFixo ItemDoLote>
void TNFSeJoinvilleComum<Lote, Nota, ItemDoLote>::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto lote = LoadLote();
    if (!lote) return;
    FLote = *lote;
    const auto notas = FLote.template Itens<ItemDoLote>();
    FNota = notas[0];
    CarregarDeUmLado(CarregouRegistro0000DaEmpresa(kTipoRegistro0000), [&] {
      PercorrerNotasComProgresso(notas, [&](const Nota& nota) {
        FNota = nota;
        CarregarA100();
        IncluirFilialDocumento(tpeEmitente, "");
        Importou = true;
      });
    });
  });
}

template <class Lote, class Nota, TTextoFixo ItemDoLote>
void TNFSeJoinvilleComum<Lote, Nota, ItemDoLote>::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("numero"), 0), DocumentoEstaCancelado());
  GetDadosA100()->SetSER(GetNota().Texto("serie_rps"));
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

template <class Lote, class Nota, TTextoFixo ItemDoLote>
void TNFSeJoinvilleComum<Lote, Nota, ItemDoLote>::CarregarValoresA100() {
  CarregarExecucaoA100(GetData());
  GetDadosA100()->SetVL_DOC(GetNota().Valor("valor_total"));
  GetDadosA100()->SetVL_ISS(GetNota().Valor("valor_iss"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

template <class Lote, class Nota, TTextoFixo ItemDoLote>
void TNFSeJoinvilleComum<Lote, Nota, ItemDoLote>::CarregarA17R() {
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, GetNota().Valor("valor_base_calculo"), GetNota().Valor("valor_iss"),
                    GetNota().Valor("aliquota_iss"));
  InserirRetencoesFederais(GetBaseRetencoes(), {.IR = GetNota().Valor("valor_irrf"),
                                                .INSS = GetNota().Valor("valor_inss"),
                                                .PIS = GetNota().Valor("valor_pis"),
                                                .COFINS = GetNota().Valor("valor_cofins"),
                                                .CSLL = GetNota().Valor("valor_csll")});
}

// The kind of payment compares the flag's text, where retention reads its number: a 2 is retained without one.
template <class Lote, class Nota, TTextoFixo ItemDoLote>
void TNFSeJoinvilleComum<Lote, Nota, ItemDoLote>::CarregarA170() {
  auto item = NovoA170(CarregarItem({.DESCR_ITEM = GetNota().Texto("descricao_servicos")}));
  item->SetVL_ITEM(GetNota().Valor("valor_total"));
  item->SetATIVIDADE(FormatarCodigoAtividade(GetNota().Texto("servico")));
  const auto base = GetNota().Valor("valor_base_calculo");
  item->SetVL_BC_ISS(base > 0 ? base : item->GetVL_ITEM());
  item->SetVL_ISS(GetNota().Valor("valor_iss"));
  item->SetALIQ_ISS(GetNota().Valor("aliquota_iss"));
  if (GetNota().Texto("iss_retido") == "1") item->SetTPRECOLHIMENTO("1");
  item->SetMUNICIPIODEVISS(BuscarMunicipioDevidoISS());
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
