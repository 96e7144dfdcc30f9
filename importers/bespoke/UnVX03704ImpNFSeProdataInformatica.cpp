#include "UnVX03704ImpNFSeProdataInformatica.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {

void TNFSeProdataInformatica::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// A declaration of a month without services is imported too.
void TNFSeProdataInformatica::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto declaracao = LoadDeclaracaoDeServicoDms(GetArquivo());
    if (!declaracao) return;
    FDeclaracao = *declaracao;
    Importou = true;
    PercorrerNotasComProgresso(FDeclaracao.Itens<"itensDeServico/itemDeServico">(), [&](const auto& nota) {
      FNota = nota;
      CarregarDosDoisLados("", [&] { CarregarA100(); });
    });
  });
}

int TNFSeProdataInformatica::GetTPNF() { return FDeclaracao.Texto("servicoDms/tipo") == "1" ? 1 : 0; }

String TNFSeProdataInformatica::GetCNPJCPFEmitente() {
  return GetTPNF() == 1 ? FDeclaracao.Texto("contribuinte/cgc") : GetNota().Texto("cnpjPrestadorTomador");
}

String TNFSeProdataInformatica::GetCNPJCPFDestinatario() {
  return GetTPNF() == 1 ? GetNota().Texto("cnpjPrestadorTomador") : FDeclaracao.Texto("contribuinte/cgc");
}

TDateTime TNFSeProdataInformatica::GetData() { return ConverteData(GetNota().Texto("dataDaNotaFiscal"), fdAnoMesDia); }

Currency TNFSeProdataInformatica::CalcularISS() const { return AplicarAliquota(GetBaseDeCalculo(), GetAliquota()); }

void TNFSeProdataInformatica::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("numeroDaNotaFiscal"), 0), DocumentoEstaCancelado());
  GetDadosA100()->SetSER(GetNota().Texto("serieDaNotaFiscal"));
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeProdataInformatica::CarregarValoresA100() {
  CarregarExecucaoA100(GetData());
  GetDadosA100()->SetVL_DOC(GetNota().Valor("valorDaNotaFiscal"));
  GetDadosA100()->SetVL_ISS(CalcularISS());
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

// The one name in the note serves either party, also when the other one is the taxpayer.
void TNFSeProdataInformatica::Carregar0150() {
  const auto lerParte = [&]() -> TDadosParte {
    return {.NOME = GetNota().Texto("razaoSocialDePrestadorTomadorNaoCadastrado"), .SemUFDoMunicipio = true};
  };
  CarregarEmitente(lerParte);
  CarregarDestinatario(lerParte);
}

void TNFSeProdataInformatica::CarregarA17R() {
  if (!DocumentoTemISSRetido()) return;
  GetDadosA100()->CarregouA17R({.IDREGA17R = BuscarID("A17R", true).ID,
                                .COD_RECEITA = String(receita::kISS),
                                .VL_BC = GetBaseDeCalculo(),
                                .VL_IMPOSTO = CalcularISS(),
                                .ALIQUOTA = GetAliquota()});
}

void TNFSeProdataInformatica::CarregarA170() {
  auto item = NovoA170(CarregarItem({.DESCR_ITEM = GetNota().Texto("historicoDaNotaFiscal")}));
  item->SetVL_ITEM(GetNota().Valor("valorDaNotaFiscal"));
  item->SetVL_BC_ISS(GetBaseDeCalculo());
  item->SetALIQ_ISS(GetAliquota());
  item->SetVL_ISS(CalcularISS());
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
