#include "UnVX03704ImpNFSeEquiplanoSistemas.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

constexpr std::size_t kAlgarismosDoNumero = 15;

// A word of the note as it is compared.
String Palavra(const String& texto) { return Maiusculas(Aparar(texto)); }

// What both parties have alike.
template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  return {.ENDERECO = parte.Texto("dsEndereco"),
          .NUM = parte.Texto("nrEndereco"),
          .BAIRRO = parte.Texto("nmBairro"),
          .UF = parte.Texto("nmUf"),
          .MUNICIPIO = parte.Texto("nmCidade")};
}

}  // namespace

void TNFSeEquiplanoSistemas::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeEquiplanoSistemas::CarregarNFSe() {
  TArquivoXML arquivo(GetArquivo());
  if (CarregouListaNFSe(arquivo) || CarregouNFSe(arquivo)) return;
  Importou = false;
  SetTemErros(true);
  Erro = BuscarErroEstruturaArquivo();
}

bool TNFSeEquiplanoSistemas::CarregouListaNFSe(TArquivoXML& arquivo) {
  bool temRaiz = false;
  ComErroEstrutura([&] {
    const auto lista = Load<IXMLListaNfsEquiplano>(arquivo, {.Tag = "listaNfs"});
    if (!lista) return;
    temRaiz = Importou = true;
    PercorrerNotasComProgresso(lista->Itens<"nfs">(), [&](const IXMLNfsEquiplano& nota) { CarregarNota(nota); });
  });
  return temRaiz;
}

bool TNFSeEquiplanoSistemas::CarregouNFSe(TArquivoXML& arquivo) {
  bool temRaiz = false;
  ComErroEstrutura([&] {
    const auto nota = Load<IXMLNfsEquiplano>(arquivo, {.Tag = "nfs"});
    if (!nota) return;
    temRaiz = Importou = true;
    CarregarUmaComProgresso([&] { CarregarNota(*nota); });
  });
  return temRaiz;
}

void TNFSeEquiplanoSistemas::CarregarNota(const IXMLNfsEquiplano& nota) {
  FNota = nota;
  CarregarDosDoisLados("", [&] { CarregarA100(); });
}

TDateTime TNFSeEquiplanoSistemas::GetData() { return ConverteData(GetNota().Texto("dtEmissaoNfs"), fdAnoMesDia); }

bool TNFSeEquiplanoSistemas::DocumentoEstaCancelado() const {
  return Palavra(GetNota().Texto("isNfsCancelada")) == "SIM";
}

bool TNFSeEquiplanoSistemas::DocumentoTemISSRetido() const { return Palavra(GetNota().Texto("isIssRetido")) == "SIM"; }

void TNFSeEquiplanoSistemas::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(GetNota().Texto("nrNfs"), kAlgarismosDoNumero), 0),
                        DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeEquiplanoSistemas::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("vlTotalNota"));
  a100.SetVL_ISS(GetNota().Valor("vlImposto"));
  a100.SetVL_PIS_RET(GetNota().Valor("vlPis"));
  a100.SetVL_COFINS_RET(GetNota().Valor("vlCofins"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

// The issuer has no municipal code here. Whoever isn't told apart as having opted out of Simples has opted for it.
void TNFSeEquiplanoSistemas::Carregar0150() {
  CarregarEmitente([&] {
    const auto prestador = GetNota().Filho<"prestadorServico">();
    auto parte = LerParte(prestador);
    parte.NOME = prestador.Texto("nmPrestador");
    parte.SemUFDoMunicipio = true;
    parte.OPTANTESIMPLES = Palavra(GetNota().Texto("isOptanteSimplesNacional")) == "NÃO OPTANTE" ? "N" : "S";
    return parte;
  });
  CarregarDestinatario([&] {
    const auto tomador = GetNota().Filho<"tomadorServico">();
    auto parte = LerParte(tomador);
    parte.NOME = tomador.Texto("nmTomador");
    parte.COD_MUN = StrToIntDef(tomador.Texto("cdIbge"), 0);
    return parte;
  });
}

Int64 TNFSeEquiplanoSistemas::Carregar0200() {
  return CarregarItem({.DESCR_ITEM = GetNota().Texto("servicos/servico/dsDiscriminacaoServico")});
}

void TNFSeEquiplanoSistemas::CarregarA170() {
  const auto servico = GetNota().Filho<"servicos/servico">();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(servico.Valor("vlServico"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("nrServico")));
  item->SetDEDUCAOISS(servico.Valor("vlDeducao"));
  item->SetVL_BC_ISS(GetNota().Valor("vlBaseCalculo"));
  item->SetVL_ISS(GetNota().Valor("vlImposto"));
  item->SetALIQ_ISS(servico.Valor("vlAliquota"));
  item->SetMUNICIPIODEVISS(MunicipioDevidoISS({GetNota().Texto("tomadorServico/cdIbge")}));
  AdicionarA170(std::move(item));
}

// Each of the retained taxes has a rate of its own here.
void TNFSeEquiplanoSistemas::CarregarA17R() {
  const auto valor = [&](TCaminho<kFormatoEquiplano, "Nfs"> caminho) { return GetNota().Valor(caminho); };
  const auto base = valor("vlBaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valor("vlImposto"), valor("servicos/servico/vlAliquota"));
  InserirRetencao(receita::kIR, base, valor("vlIrpj"), valor("vlAliquotaIrpj"));
  InserirRetencao(receita::kINSS, base, valor("vlInss"), valor("vlAliquotaInss"));
  InserirRetencao(receita::kPIS, base, valor("vlPis"), valor("vlAliquotaPis"));
  InserirRetencao(receita::kCOFINS, base, valor("vlCofins"), valor("vlAliquotaCofins"));
  InserirRetencao(receita::kCSLL, base, valor("vlCsll"), valor("vlAliquotaCsll"));
}

}  // namespace impnfse
