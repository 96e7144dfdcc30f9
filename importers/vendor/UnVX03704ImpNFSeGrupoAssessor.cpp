#include "UnVX03704ImpNFSeGrupoAssessor.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {

void TNFSeGrupoAssessor::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeGrupoAssessor::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadNFSEGrupoAssessor(GetArquivo());
    if (!raiz) return;
    FNota = raiz->Filho<"NOTA">();
    CarregarDosDoisLados(GetNota().Texto("COD"), [&] { CarregarA100(); });
  });
}

TDateTime TNFSeGrupoAssessor::GetData() { return StrToDateDef(GetNota().Texto("DATA"), 0); }

// A service with LOCALSERV "D" was rendered at home, in the branch's city; any other is the taker's city's.
String TNFSeGrupoAssessor::BuscarCodigoMunicipioDevidoISS() {
  if (GetNota().Texto("LOCALSERV") == "D") return MunicipioDaFilial();
  return MunicipioDevidoISS({GetNota().Texto("TOMMUNICIPIOCOD")});
}

// Code and description of the situation are asked apart, also where they disagree: a note cancelled by its code alone
// keeps its values, one without values by its description alone is in force.
void TNFSeGrupoAssessor::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("COD"), 0), EhDocumentoCancelado());
  if (!EhDocumentoSemValores()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeGrupoAssessor::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("VALORTOTALSERVICOS"));
  a100.SetVL_ISS(GetNota().Valor("IMPOSTO"));
  a100.SetSER(GetNota().Texto("SERIECOD"));
  CarregarPISCOFINS();
  MarcarISSRetido(EhRetido("RETIDO"));
  CarregarA17R();
  CarregarA170();
}

// What isn't retained is the issuer's own tax, over the base of the ISS.
void TNFSeGrupoAssessor::CarregarPISCOFINS() {
  auto& a100 = *GetDadosA100();
  const auto pis = GetNota().Valor("PIS");
  if (EhRetido("RETPIS")) {
    a100.SetVL_PIS_RET(pis);
  } else {
    a100.SetVL_PIS(pis);
    if (pis > 0) a100.SetVL_BC_PIS(GetNota().Valor("BASECALC"));
  }
  const auto cofins = GetNota().Valor("COFINS");
  if (EhRetido("RETCOFINS")) {
    a100.SetVL_COFINS_RET(cofins);
  } else {
    a100.SetVL_COFINS(cofins);
    if (cofins > 0) a100.SetVL_BC_COFINS(GetNota().Valor("BASECALC"));
  }
}

// Kind and name of the street are joined as they stand: a blank between them is the vendor's to write.
void TNFSeGrupoAssessor::Carregar0150() {
  CarregarEmitente([&]() -> TDadosParte {
    return {.COD_MUN = CodigoMunicipio(GetNota().Texto("PRESTMUNICIPIOCOD")),
            .NOME = GetNota().Texto("PRESTNOMERAZAO"),
            .ENDERECO = GetNota().Texto("PRESTPREFIXODESC") + GetNota().Texto("PRESTLOGDESC"),
            .NUM = GetNota().Texto("PRESTNUMERO"),
            .BAIRRO = GetNota().Texto("PRESTBAIRRODESC"),
            .UF = GetNota().Texto("PRESTMUNICIPIOUF"),
            .MUNICIPIO = GetNota().Texto("PRESTMUNICIPIODESC")};
  });
  CarregarDestinatario([&]() -> TDadosParte {
    return {.COD_MUN = CodigoMunicipio(GetNota().Texto("TOMMUNICIPIOCOD")),
            .NOME = GetNota().Texto("TOMNOMERAZAO"),
            .ENDERECO = GetNota().Texto("TOMPREFIXODESC") + GetNota().Texto("TOMLOGDESC"),
            .NUM = GetNota().Texto("TOMNUMERO"),
            .BAIRRO = GetNota().Texto("TOMBAIRRODESC"),
            .UF = GetNota().Texto("TOMMUNICIPIOUF"),
            .MUNICIPIO = GetNota().Texto("TOMMUNICIPIODESC")};
  });
}

// No item has a place in the national list.
Int64 TNFSeGrupoAssessor::Carregar0200(const IXMLSERVICOGrupoAssessor& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("DESCRICAO")});
}

// The activity code stays as the note has it, without a dot put in.
void TNFSeGrupoAssessor::CarregarA170() {
  const auto servicos = GetNota().Itens<"SERVICOS/SERVICO">();
  TSomas somas;
  for (std::size_t i = 0; i < servicos.Count(); ++i) {
    const auto servico = servicos[i];
    auto item = NovoA170(Carregar0200(servico), static_cast<int>(i) + 1);
    item->SetChaveCondicaoAdicional(std::to_string(i));
    item->SetVL_ITEM(servico.Valor("VALOR"));
    item->SetVL_DESC(servico.Valor("DESCONTO"));
    item->SetQTD(servico.Valor("QUANTIDADE"));
    item->SetATIVIDADE(GetNota().Texto("ATIVCOD"));
    item->SetALIQ_ISS(GetNota().Valor("ALIQUOTA"));
    item->SetMUNICIPIODEVISS(BuscarCodigoMunicipioDevidoISS());
    if (servicos.Count() == 1)
      CarregarISSUnico(*item);
    else
      RatearISS(*item, somas, i + 1 == servicos.Count());
    AdicionarA170(std::move(item));
  }
}

void TNFSeGrupoAssessor::CarregarISSUnico(TDadosRegistroA170& item) const {
  item.SetVL_ISS(GetNota().Valor("IMPOSTO"));
  item.SetVL_BC_ISS(GetNota().Valor("BASECALC"));
  item.SetDEDUCAOISS(GetNota().Valor("DEDUCAO"));
}

// A line has the ISS of its own value, and as deduction the running total of the shares up to it. What the sums have
// more than the note comes on top of the last line, and is not taken from it; what they have less is taken.
void TNFSeGrupoAssessor::RatearISS(TDadosRegistroA170& item, TSomas& somas, bool ultimo) const {
  const auto deducao = GetNota().Valor("DEDUCAO");
  const auto percentual = item.GetVL_ITEM() * 100 / GetNota().Valor("VALORTOTALSERVICOS");
  item.SetVL_BC_ISS(item.GetVL_ITEM());
  item.SetVL_ISS(AplicarAliquota(item.GetVL_BC_ISS(), item.GetALIQ_ISS()));
  somas.ISS += item.GetVL_ISS();
  somas.Deducao += deducao * percentual / 100;
  item.SetDEDUCAOISS(somas.Deducao);
  if (!ultimo) return;
  item.SetVL_ISS(item.GetVL_ISS() + (somas.ISS - GetNota().Valor("IMPOSTO")));
  item.SetDEDUCAOISS(item.GetDEDUCAOISS() + (somas.Deducao - deducao));
}

// A tax whose flag isn't set is not retained, whatever its value.
void TNFSeGrupoAssessor::CarregarA17R() {
  const auto valor = [&](TCampoNota campo) { return GetNota().Valor(campo); };
  const auto inserir = [&](TCampoNota sinal, std::string_view codigo, TCampoNota imposto) {
    if (EhRetido(sinal)) InserirRetencao(codigo, valor("BASECALC"), valor(imposto));
  };
  if (EhRetido("RETIDO")) InserirRetencao(receita::kISS, valor("BASECALC"), valor("IMPOSTO"), valor("ALIQUOTA"));
  inserir("RETIR", receita::kIR, "IR");
  inserir("RETINSS", receita::kINSS, "INSS");
  inserir("RETPIS", receita::kPIS, "PIS");
  inserir("RETCOFINS", receita::kCOFINS, "COFINS");
  inserir("RETCSLL", receita::kCSLL, "CSLL");
}

}  // namespace impnfse
