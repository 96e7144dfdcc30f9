#include "UnVX03704ImpNFSePronim.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
void TNFSePronim::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSePronim::CarregarNFSe() {
  TArquivoXML arquivo(GetArquivo());
  if (!CarregouListaNfse(arquivo) && !CarregouConsultarLoteRpsResposta(arquivo)) CarregouCompNfse(arquivo);
  ConcluirPeloErro();
}

bool TNFSePronim::CarregouListaNfse(TArquivoXML& arquivo) {
  return CarregouForma([&] {
    const auto raiz = Load<IXMLListaNfsePronim>(arquivo, {.Tag = "ListaNfse"});
    if (raiz) CarregarLista(raiz->Itens<"CompNfse">());
  });
}

bool TNFSePronim::CarregouConsultarLoteRpsResposta(TArquivoXML& arquivo) {
  return CarregouForma([&] {
    const auto raiz = Load<IXMLConsultarLoteRpsRespostaPronim>(arquivo, {.Tag = "ConsultarLoteRpsResposta"});
    if (raiz) CarregarLista(raiz->Itens<"ListaNfse/CompNfse">());
  });
}

// The note alone goes without its number, to the summary and to the error list.
bool TNFSePronim::CarregouCompNfse(TArquivoXML& arquivo) {
  return CarregouForma([&] {
    const auto raiz = Load<IXMLCompNfsePronim>(arquivo, {.Tag = "CompNfse"});
    if (raiz && AssumiuNota(*raiz)) CarregarDosDoisLados("", [&] { CarregarA100(); });
  });
}

// A form clears the flag of the one tried before it, not its text: that decides in the end.
template <class Forma>
bool TNFSePronim::CarregouForma(Forma forma) {
  SetTemErros(false);
  ComErroEstrutura(forma);
  return Importou;
}

template <class Itens>
void TNFSePronim::CarregarLista(const Itens& notas) {
  PercorrerNotasComProgresso(notas, [&](const IXMLCompNfsePronim& nota) {
    if (!AssumiuNota(nota)) return;
    const auto numero = FNota.Texto("Numero");
    CarregarDosDoisLados(
        numero, [&] { CarregarA100(); }, "Documento: " + numero + " - ");
  });
}

// The confirmation's Id tells the cancellation, its date and hour don't.
bool TNFSePronim::AssumiuNota(const IXMLCompNfsePronim& nota) {
  FNota = nota.Filho<"Nfse/InfNfse">();
  FNotaCancelada = !nota.Texto("NfseCancelamento/Confirmacao/@Id").empty();
  return !FNota.Vazio();
}

String TNFSePronim::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(FNota.Filho<"PrestadorServico/IdentificacaoPrestador/CpfCnpj">());
}

String TNFSePronim::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetDeclaracao().Filho<"Tomador/IdentificacaoTomador/CpfCnpj">());
}

String TNFSePronim::GetChave() { return String(Aparar(FNota.Texto("CodigoVerificacao"))); }

TDateTime TNFSePronim::GetData() { return ConverteData(FNota.Texto("DataEmissao"), fdAnoMesDia); }

IXMLDeclaracaoPronim TNFSePronim::GetDeclaracao() const {
  return FNota.Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

bool TNFSePronim::DocumentoTemISSRetido() const { return GetDeclaracao().Texto("Servico/IssRetido") == "1"; }

String TNFSePronim::BuscarCodigoMunicipioDevidoISS() {
  const auto declaracao = GetDeclaracao();
  return MunicipioDevidoISS({declaracao.Texto("Servico/MunicipioIncidencia"),
                             declaracao.Texto("Servico/CodigoMunicipio"),
                             declaracao.Texto("Tomador/Endereco/CodigoMunicipio")});
}

void TNFSePronim::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(FNota.Texto("Numero"), 0), FNotaCancelada);
  if (!FNotaCancelada) {
    const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
    const auto desconto = valores.Valor("DescontoIncondicionado");
    CarregarExecucaoA100(GetData());
    auto& a100 = *GetDadosA100();
    a100.SetVL_DOC(valores.Valor("ValorServicos") - desconto);
    a100.SetVL_DESC(desconto);
    a100.SetVL_ISS(valores.Valor("ValorIss"));
    a100.SetVL_PIS_RET(valores.Valor("ValorPis"));
    a100.SetVL_COFINS_RET(valores.Valor("ValorCofins"));
    MarcarISSRetido(DocumentoTemISSRetido());
    CarregarA170();
    CarregarA17R();
  }
  ConcluirA100();
}

void TNFSePronim::Carregar0150() {
  CarregarEmitente([&] {
    auto emitente = LerParteNacional(FNota.Filho<"PrestadorServico">());
    emitente.OPTANTESIMPLES = GetDeclaracao().Texto("OptanteSimplesNacional") == "1" ? "S" : "N";
    return emitente;
  });
  CarregarDestinatario([&] { return LerParteNacional(GetDeclaracao().Filho<"Tomador">()); },
                       {.PropriaEmpresa = true, .SemNumero = true});
}

Int64 TNFSePronim::Carregar0200() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSePronim::CarregarA170() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  const auto valores = servico.Filho<"Valores">();
  const auto valorServicos = valores.Valor("ValorServicos");
  const auto valorIss = valores.Valor("ValorIss");
  const auto base = FNota.Valor("ValoresNfse/BaseCalculo");
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(valorServicos);
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
  item->SetVL_ISS(valorIss);
  // Where ISS is told without a base, it is due on the whole service. The retained taxes keep the base as told.
  item->SetVL_BC_ISS(base <= 0 && valorIss > 0 ? valorServicos : base);
  item->SetALIQ_ISS(valores.Valor("Aliquota"));
  item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
  item->SetMUNICIPIODEVISS(BuscarCodigoMunicipioDevidoISS());
  AdicionarA170(std::move(item));
}

void TNFSePronim::CarregarA17R() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  const auto base = FNota.Valor("ValoresNfse/BaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

}  // namespace impnfse
