#include "UnVX03704ImpNFSeELOTECH.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

// The address has a complement and a country, which this layout doesn't use.
template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  return {.COD_MUN = CodigoMunicipio(endereco.Texto("CodigoMunicipio")),
          .NOME = parte.Texto("RazaoSocial"),
          .ENDERECO = endereco.Texto("Endereco"),
          .NUM = endereco.Texto("Numero"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Uf"),
          .MUNICIPIO = endereco.Texto("CidadeNome")};
}

}  // namespace

void TNFSeELOTECH::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeELOTECH::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadCompNfseELOTECH(GetArquivo());
    if (!raiz) return;
    FNota = raiz->Filho<"Nfse/InfNfse">();
    FNotaCancelamento = raiz->Filho<"NfseCancelamento">();
    if (!GetNota().Vazio()) CarregarDosDoisLados(GetNota().Texto("Numero"), [&] { CarregarA100(); });
  });
}

IXMLDeclaracaoELOTECH TNFSeELOTECH::GetDeclaracao() const {
  return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

// An issuer is known by a CNPJ only; some files have it beside its identification.
String TNFSeELOTECH::GetCNPJCPFEmitente() {
  const auto prestador = GetDeclaracao().Filho<"DadosPrestador">();
  const auto cnpj = prestador.Texto("IdentificacaoPrestador/CpfCnpj/Cnpj");
  return cnpj.empty() ? prestador.Texto("CpfCnpj/Cnpj") : cnpj;
}

String TNFSeELOTECH::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetDeclaracao().Filho<"Tomador/IdentificacaoTomador/CpfCnpj">());
}

String TNFSeELOTECH::GetChave() { return GetNota().Texto("CodigoVerificacao"); }

TDateTime TNFSeELOTECH::GetData() { return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia); }

bool TNFSeELOTECH::DocumentoEstaCancelado() const {
  return !FNotaCancelamento.Texto("ConfirmacaoCancelamento/Pedido/InfPedidoCancelamento/CodigoCancelamento").empty();
}

bool TNFSeELOTECH::DocumentoTemISSRetido() const { return GetDeclaracao().Texto("Servico/IssRetido") == "1"; }

void TNFSeELOTECH::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("Numero"), 0), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeELOTECH::CarregarValoresA100() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(valores.Valor("ValorServicos"));
  a100.SetVL_PIS(valores.Valor("ValorPis"));
  a100.SetVL_COFINS(valores.Valor("ValorCofins"));
  a100.SetVL_ISS(valores.Valor("ValorIss"));
  CarregarA17R();
  CarregarA170();
  MarcarISSRetido(DocumentoTemISSRetido());
}

void TNFSeELOTECH::Carregar0150() {
  CarregarEmitente([&] { return LerParte(GetDeclaracao().Filho<"DadosPrestador">()); });
  CarregarDestinatario([&] { return LerParte(GetDeclaracao().Filho<"Tomador">()); });
}

// No item has a place in the national list.
Int64 TNFSeELOTECH::Carregar0200(const IXMLItemServicoELOTECH& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Descricao")});
}

// Every line is number 1 and carries the ISS, its base and the deductions of the whole note; its own value is that of
// one unit, whatever the quantity. The city of the taker gets the ISS, as its code stands.
void TNFSeELOTECH::CarregarA170() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  for (const auto& servico : GetDeclaracao().Itens<"Servico/ListaItensServico/ItemServico">()) {
    auto item = NovoA170(Carregar0200(servico));
    item->SetVL_ITEM(servico.Valor("ValorUnitario"));
    item->SetVL_DESC(servico.Valor("ValorDesconto"));
    item->SetQTD(servico.Valor("Quantidade"));
    item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
    item->SetALIQ_ISS(valores.Valor("Aliquota"));
    item->SetVL_ISS(valores.Valor("ValorIss"));
    item->SetVL_BC_ISS(GetNota().Valor("ValoresNfse/BaseCalculo"));
    item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
    item->SetMUNICIPIODEVISS(GetDeclaracao().Texto("Tomador/Endereco/CodigoMunicipio"));
    AdicionarA170(std::move(item));
  }
}

void TNFSeELOTECH::CarregarA17R() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  const auto base = GetNota().Valor("ValoresNfse/BaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

}  // namespace impnfse
