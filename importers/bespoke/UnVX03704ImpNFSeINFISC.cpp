#include "UnVX03704ImpNFSeINFISC.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

// The country's code as it stands: a blank behind the number makes it Brazil's, as does any number not above 0.
template <class Endereco>
TDadosParte LerEndereco(const Endereco& endereco) {
  return {.ENDERECO = endereco.Texto("xLgr"),
          .NUM = endereco.Texto("nro"),
          .COMPL = endereco.Texto("xCpl"),
          .BAIRRO = endereco.Texto("xBairro"),
          .UF = endereco.Texto("UF"),
          .COD_PAIS = CodigoPais(StrToIntDef(endereco.Texto("cPais"), 0)),
          .MUNICIPIO = endereco.Texto("xMun")};
}

// DDMMYYYYHHMMSSZZZ.
String Agora() {
  const auto agora = std::chrono::system_clock::now();
  const auto milissegundos =
      std::chrono::duration_cast<std::chrono::milliseconds>(agora.time_since_epoch()).count() % 1000;
  return fmt::format("{:%d%m%Y%H%M%S}{:03}", fmt::localtime(std::chrono::system_clock::to_time_t(agora)),
                     milissegundos);
}

}  // namespace

void TNFSeINFISC::TTotal::Somar(Currency aliquota, Currency valor, Currency base) {
  Aliquota = aliquota;
  Valor += valor;
  Base += base;
}

// The file and its three roots
// ---------------------------------------------------------------------------------------

void TNFSeINFISC::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// An envelope never counts as loaded, not even with its note imported: it goes on through the other two, and ends with
// their structure error.
void TNFSeINFISC::CarregarNFSe() {
  TArquivoXML arquivo(GetArquivo());
  Importou = CarregouEnvioLoteNotas(arquivo);
  if (!Importou) Importou = CarregouLoteNotas(arquivo);
  if (!Importou) Importou = CarregouNota(arquivo);
  if (!Importou) SetTemErros(true);
}

bool TNFSeINFISC::CarregouEnvioLoteNotas(TArquivoXML& arquivo) {
  ComErroEstrutura(
      [&] {
        CarregarNota(LoadSemGuarda<IXMLINFISC<"envioLote">>(arquivo, {.Tag = "envioLote"}).Filho<"NFS-e">(), true);
      },
      TMarcaDeErro::SoTexto);
  return false;
}

// The root alone makes a batch loaded.
bool TNFSeINFISC::CarregouLoteNotas(TArquivoXML& arquivo) {
  SetTemErros(false);
  bool ehLote = false;
  ComErroEstrutura([&] {
    const auto lote = Load<IXMLINFISC<"lote">>(arquivo, {.Tag = "lote"});
    ehLote = lote.has_value();
    if (lote) PercorrerNotasComProgresso(lote->Itens<"NFS-e">(), [&](const auto& nota) { CarregarNota(nota, true); });
  });
  return ehLote;
}

bool TNFSeINFISC::CarregouNota(TArquivoXML& arquivo) {
  ComErroEstrutura([&] { CarregarNota(LoadSemGuarda<IXMLINFISC<"NFSe">>(arquivo, {.Tag = "NFS-e"}), false); },
                   TMarcaDeErro::SoTexto);
  return Importou;
}

void TNFSeINFISC::CarregarNota(const IXMLINFISC<"NFSe">& nota, bool comNumero) {
  FInfNFSe = nota.Filho<"infNFSe">();
  if (GetNota().Vazio()) return;
  CarregarDosDoisLados(comNumero ? GetNota().Texto("Id/nNFS-e") : "", [&] { CarregarA100(); });
}

// The note
// -----------------------------------------------------------------------------------------------------------------

String TNFSeINFISC::GetCNPJCPFEmitente() {
  const auto emitente = GetNota().Texto("emit/Documento");
  return emitente.empty() ? GetNota().Texto("prest/Documento") : emitente;
}

// Of the address: the registration beside it is never the one meant.
String TNFSeINFISC::GetIEEmitente() {
  const auto ie = GetNota().Texto("emit/end/IE");
  return ie.empty() ? GetNota().Texto("prest/end/IE") : ie;
}

String TNFSeINFISC::GetCNPJCPFDestinatario() { return GetNota().Texto("TomS/Documento"); }

String TNFSeINFISC::GetIEDestinatario() { return GetNota().Texto("TomS/IE"); }

TDateTime TNFSeINFISC::GetData() { return ConverterDataLocalOuISO(GetNota().Texto("Id/dEmi")); }

String TNFSeINFISC::GetChave() {
  const auto referencia = GetNota().Texto("Id/refNF");
  return referencia.empty() ? GetNota().Texto("Id/cNFS-e") : referencia;
}

bool TNFSeINFISC::DocumentoEstaCancelado() const {
  return Maiusculas(GetNota().Texto("Id/cancelada")) == "S" || Maiusculas(GetNota().Texto("Id/anulada")) == "S";
}

// In Rio Grande do Sul only the note's total decides.
bool TNFSeINFISC::DocumentoTemISSRetido() const {
  if (GetNota().Valor("total/ISS/vSTISS") > 0) return true;
  if (TomadorNoRS()) return false;
  for (const auto& det : GetNota().Itens<"det">())
    if (det.Valor("ISSST/vISSST") > 0) return true;
  return false;
}

bool TNFSeINFISC::ExisteFatura() const {
  return GetNota().Valor("faturas/fat/vFat") > 0 || GetNota().Valor("total/fat/vLiq") > 0;
}

// An invoice is due year first, a duplicate day first.
bool TNFSeINFISC::ExisteDuplicata() {
  return GetData() < ConverteData(GetNota().Texto("faturas/fat/dVenc"), fdAnoMesDia) ||
         GetData() < StrToDateDef(GetNota().Texto("cobr/dup/dVenc"), 0);
}

String TNFSeINFISC::BuscarIndicadorPagamento() { return ExisteFatura() && ExisteDuplicata() ? "1" : "0"; }

TDateTime TNFSeINFISC::BuscarDataExecucaoOuConclusaoServico() {
  const auto saida = GetNota().Texto("Id/dSaiEnt");
  return Aparar(saida).empty() ? GetData() : StrToDateDef(Aparar(saida), 0);
}

// The document
// -------------------------------------------------------------------------------------------------------------

void TNFSeINFISC::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToIntDef(GetNota().Texto("Id/nNFS-e"), 0), DocumentoEstaCancelado());
  GetDadosA100()->SetSER(GetNota().Texto("Id/serie"));
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeINFISC::CarregarValoresA100() {
  const auto total = GetNota().Filho<"total">();
  const auto valor = [&](TCaminho<kFormatoINFISC, "Total"> caminho) { return total.Valor(caminho); };
  const auto ouTotal = [](Currency daNota, const TTotal& dosItens) { return daNota > 0 ? daNota : dosItens.Valor; };
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(BuscarDataExecucaoOuConclusaoServico());
  a100.SetIND_PGTO(BuscarIndicadorPagamento());
  a100.SetVL_DOC(valor("vtNF"));
  a100.SetVL_DESC(valor("vDesc"));
  FISS = FINSS = FIR = FCSLL = FCOFINS = FPIS = {};
  CarregarA170();
  a100.SetVL_PIS_RET(ouTotal(valor("Ret/vRetLei10833-PIS-PASEP"), FPIS));
  a100.SetVL_COFINS_RET(ouTotal(valor("Ret/vRetLei10833-COFINS"), FCOFINS));
  a100.SetVL_ISS(ouTotal(valor("ISS/vISS"), FISS) + valor("ISS/vSTISS"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
}

IXMLINFISC<"Emit"> TNFSeINFISC::Emitente() const {
  auto emitente = GetNota().Filho<"emit">();
  return emitente.Texto("Documento").empty() ? GetNota().Filho<"prest">() : emitente;
}

// The issuer's municipality is always that of `emit`, also where all else comes from `prest`.
void TNFSeINFISC::Carregar0150() {
  CarregarEmitente([&] {
    const auto emit = GetNota().Filho<"emit/end">();
    const auto emitente = Emitente();
    auto parte = LerEndereco(emitente.Filho<"end">());
    parte.COD_MUN = BuscarCodigoMunicipio(emit.Texto("cMun"), emit.Texto("UF"), emit.Texto("xMun"));
    parte.NOME = emitente.Texto("xNome");
    parte.OPTANTESIMPLES = StrToIntDef(emitente.Texto("regimeTrib"), 0) == 1 ? "S" : "N";
    return parte;
  });
  CarregarDestinatario([&] {
    const auto endereco = GetNota().Filho<"TomS/ender">();
    auto parte = LerEndereco(endereco);
    parte.COD_MUN = BuscarCodigoMunicipio(endereco.Texto("cMun"), endereco.Texto("UF"), endereco.Texto("xMun"));
    parte.NOME = GetNota().Texto("TomS/xNome");
    return parte;
  });
}

// The items and the retained taxes
// -----------------------------------------------------------------------------------------

Int64 TNFSeINFISC::Carregar0200(const IXMLINFISC<"Serv">& serv) {
  const auto lista = BuscarSomenteNumeros(serv.Texto("cLCServ"));
  return CarregarItem({.DESCR_ITEM = serv.Texto("xServ"),
                       .COD_LST = StrToInt64Def(lista, 0) > 0 ? lista : BuscarSomenteNumeros(serv.Texto("cServ")),
                       .UNID_INV = serv.Texto("uTrib")});
}

void TNFSeINFISC::CarregarA170() {
  std::size_t indice = 0;
  for (const auto& det : GetNota().Itens<"det">()) {
    CarregarA170(det, indice++);
    SomarItem(det);
  }
}

// The value is the unit's times the quantity, whatever the line says of itself.
void TNFSeINFISC::CarregarA170(const IXMLINFISC<"Det">& det, std::size_t indice) {
  const auto serv = det.Filho<"serv">();
  auto item = NovoA170(Carregar0200(serv), StrToIntDef(det.Texto("nItem"), 0));
  item->SetQTD(serv.Valor("qTrib"));
  item->SetVL_ITEM(serv.Valor("vUnit") * item->GetQTD());
  item->SetVL_DESC(serv.Valor("vDesc"));
  item->SetATIVIDADE(serv.Texto("cServ"));
  item->SetVL_BC_ISS(serv.Valor("vBCISS"));
  item->SetALIQ_ISS(serv.Valor("pISS"));
  item->SetVL_ISS(serv.Valor("vISS"));
  if (item->GetVL_ISS() <= 0 && det.Valor("ISSST/vISSST") > 0) {
    const auto aliquota = det.Valor("ISSST/pISSST");
    item->SetVL_BC_ISS(det.Valor("ISSST/vBCST"));
    if (aliquota > 0) item->SetALIQ_ISS(aliquota);
    item->SetVL_ISS(det.Valor("ISSST/vISSST"));
  }
  item->SetUNID(serv.Texto("uTrib"));
  item->SetMUNICIPIODEVISS(BuscarMunicipioDevidoISS(serv));
  item->SetAUX1(BuscarSomenteNumeros(GetNota().Texto("Id/natOp")));
  item->SetChaveCondicaoAdicional(std::to_string(indice) + Agora());
  AdicionarA170(std::move(item));
}

String TNFSeINFISC::BuscarMunicipioDevidoISS(const IXMLINFISC<"Serv">& serv) {
  const auto codigo = [&](const String& candidato) { return std::to_string(BuscarCodigoMunicipio(candidato, "", "")); };
  const auto tomador = GetNota().Filho<"TomS/ender">();
  return MunicipioDevidoISS(
      {codigo(serv.Texto("localTributacao")), codigo(GetNota().Texto("Id/cMunFG")),
       codigo(GetNota().Texto("infAdicLT")),
       std::to_string(BuscarCodigoMunicipio(tomador.Texto("cMun"), tomador.Texto("UF"), tomador.Texto("xMun")))});
}

// Outside of Rio Grande do Sul an item without ISS of its own counts with what its taker substitutes.
void TNFSeINFISC::SomarItem(const IXMLINFISC<"Det">& det) {
  const auto serv = det.Filho<"serv">();
  const auto valor = [&](TCaminho<kFormatoINFISC, "Serv"> caminho) { return serv.Valor(caminho); };
  if (valor("vISS") + valor("vBCISS") <= 0 && !TomadorNoRS()) {
    FISS.Somar(det.Valor("ISSST/pISSST"), det.Valor("ISSST/vISSST"), det.Valor("ISSST/vBCST"));
  } else {
    FISS.Somar(valor("pISS"), valor("vISS"), valor("vBCISS"));
  }
  FINSS.Somar(valor("pRetINSS"), valor("vRetINSS"), valor("vBCINSS"));
  FIR.Somar(valor("pRetIR"), valor("vRetIR"), valor("vBCRetIR"));
  FCSLL.Somar(valor("pRetCSLL"), valor("vRetCSLL"), valor("vBCCSLL"));
  FCOFINS.Somar(valor("pRetCOFINS"), valor("vRetCOFINS"), valor("vBCCOFINS"));
  FPIS.Somar(valor("pRetPISPASEP"), valor("vRetPISPASEP"), valor("vBCPISPASEP"));
}

void TNFSeINFISC::CarregarA17R() {
  if (DocumentoTemISSRetido())
    for (const auto& det : GetNota().Itens<"det">())
      InserirRetencao(receita::kISS, det.Valor("ISSST/vBCST"), det.Valor("ISSST/vISSST"), det.Valor("ISSST/pISSST"));
  const auto ret = GetNota().Filho<"total/Ret">();
  const auto valor = [&](TCaminho<kFormatoINFISC, "Ret"> caminho) { return ret.Valor(caminho); };
  InserirRetencaoOuTotal(receita::kIR, valor("pRetIRF"), valor("vRetIRF"), FIR);
  if (FINSS.Valor > 0) InserirRetencao(receita::kINSS, FINSS.Base, FINSS.Valor, FINSS.Aliquota);
  InserirRetencaoOuTotal(receita::kPIS, valor("pRetLei10833-PIS-PASEP"), valor("vRetLei10833-PIS-PASEP"), FPIS);
  InserirRetencaoOuTotal(receita::kCOFINS, valor("pRetLei10833-COFINS"), valor("vRetLei10833-COFINS"), FCOFINS);
  InserirRetencaoOuTotal(receita::kCSLL, valor("pRetLei10833-CSLL"), valor("vRetLei10833-CSLL"), FCSLL);
}

// What the note's total says, over the whole note; where it says nothing, what the items come to.
void TNFSeINFISC::InserirRetencaoOuTotal(std::string_view codigo, Currency aliquota, Currency valor,
                                         const TTotal& total) {
  if (valor > 0)
    InserirRetencao(codigo, GetNota().Valor("total/vtNF"), valor, aliquota);
  else
    InserirRetencao(codigo, total.Base, total.Valor, total.Aliquota);
}

}  // namespace impnfse
