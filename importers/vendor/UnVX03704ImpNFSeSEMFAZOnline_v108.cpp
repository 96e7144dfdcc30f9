#include "UnVX03704ImpNFSeSEMFAZOnline_v108.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {

void TNFSeSEMFAZOnline::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeSEMFAZOnline::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadnfseSEMFAZOnline(GetArquivo());
    if (!raiz) return;
    FNota = *raiz;
    CarregarDosDoisLados(GetNota().Texto("NumeroNota"), [&] { CarregarA100(); });
  });
}

TDateTime TNFSeSEMFAZOnline::GetData() { return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia); }

Currency TNFSeSEMFAZOnline::BuscarValorISS() const {
  const auto devido = GetNota().Valor("Valores/ValorIss");
  return devido > 0 ? devido : GetNota().Valor("Valores/ValorIssRetido");
}

void TNFSeSEMFAZOnline::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("NumeroNota"), 0), EhDocumentoCancelado());
  if (!EhDocumentoCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeSEMFAZOnline::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("Valores/ValorServicos"));
  a100.SetVL_ISS(BuscarValorISS());
  a100.SetSER(GetNota().Texto("Serie"));
  CarregarA17R();
  CarregarA170();
  MarcarISSRetido(DocumentoTemISSRetido());
}

// Of the taker's street the layout has the number only; its country isn't looked at.
void TNFSeSEMFAZOnline::Carregar0150() {
  CarregarEmitente([] { return TDadosParte{.SemUFDoMunicipio = true}; });
  CarregarDestinatario([&] {
    const auto tomador = GetNota().Filho<"Tomador">();
    return TDadosParte{.COD_MUN = CodigoMunicipio(tomador.Texto("CodigoMunicipioIbge")),
                       .NOME = tomador.Texto("Nome"),
                       .NUM = tomador.Texto("NumeroLogradouro"),
                       .BAIRRO = tomador.Texto("Bairro"),
                       .UF = tomador.Texto("Uf"),
                       .MUNICIPIO = tomador.Texto("Cidade")};
  });
}

// No item has a place in the national list.
Int64 TNFSeSEMFAZOnline::Carregar0200() { return CarregarItem({.DESCR_ITEM = GetNota().Texto("Descricao")}); }

// The city of the taker gets the ISS, as its code stands: those of rendering and of incidence aren't looked at.
void TNFSeSEMFAZOnline::CarregarA170() {
  const auto valores = GetNota().Filho<"Valores">();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(valores.Valor("ValorServicos"));
  item->SetVL_DESC(valores.Valor("ValorDeducoes"));
  item->SetATIVIDADE(FormatarCodigoAtividade(GetNota().Texto("ItemListaServico")));
  item->SetALIQ_ISS(valores.Valor("ValorAliquota"));
  item->SetVL_ISS(BuscarValorISS());
  item->SetVL_BC_ISS(valores.Valor("ValorBaseCalculo"));
  item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
  item->SetMUNICIPIODEVISS(GetNota().Texto("Tomador/CodigoMunicipioIbge"));
  AdicionarA170(std::move(item));
}

void TNFSeSEMFAZOnline::CarregarA17R() {
  const auto valores = GetNota().Filho<"Valores">();
  const auto base = valores.Valor("ValorBaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIssRetido"), valores.Valor("ValorAliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

}  // namespace impnfse
