#include "UnVX03704ImpNFSeDigifred.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr std::size_t kAlgarismosDoNumero = 15;
constexpr int kISSRetido = 1;
constexpr int kISSNaoRetido = 2;

TDadosParte LerEndereco(const IXMLEnderecoDigifred& endereco) {
  return {.COD_MUN = StrToIntDef(endereco.Texto("CodigoMunicipio"), 0),
          .ENDERECO = endereco.Texto("Endereco"),
          .NUM = endereco.Texto("Numero"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Uf")};
}

}  // namespace

void TNFSeDigifred::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// The root makes the file an imported one, also without a note in it.
void TNFSeDigifred::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadGerarNfseRespostaDigifred(GetArquivo());
    Importou = true;
    FNota = raiz.Filho<"ListaNfse/CompNfse/Nfse/InfNfse">();
    if (!GetNota().Vazio()) CarregarDosDoisLados("", [&] { CarregarA100(); });
  });
}

bool TNFSeDigifred::DocumentoTemISSRetido() const {
  return StrToIntDef(GetDeclaracao().Texto("Servico/IssRetido"), kISSNaoRetido) == kISSRetido;
}

void TNFSeDigifred::CarregarA100() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(GetNota().Texto("Numero"), kAlgarismosDoNumero), 0));
  CarregarExecucaoA100(GetData());
  auto& a100 = *GetDadosA100();
  a100.SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  a100.SetVL_DOC(valores.Valor("ValorServicos") - a100.GetVL_DESC());
  a100.SetVL_ISS(GetNota().Valor("ValoresNfse/ValorIss"));
  a100.SetVL_PIS_RET(valores.Valor("ValorPis"));
  a100.SetVL_COFINS_RET(valores.Valor("ValorCofins"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
  ConcluirA100();
}

void TNFSeDigifred::Carregar0150() {
  CarregarEmitente([&] {
    auto parte = LerEndereco(GetNota().Filho<"EnderecoPrestadorServico">());
    parte.OPTANTESIMPLES = GetDeclaracao().Texto("OptanteSimplesNacional") == "1" ? "S" : "N";
    return parte;
  });
  CarregarDestinatario([&] {
    const auto tomador = GetDeclaracao().Filho<"Tomador">();
    auto parte = LerEndereco(tomador.Filho<"Endereco">());
    parte.NOME = tomador.Texto("RazaoSocial");
    return parte;
  });
}

Int64 TNFSeDigifred::Carregar0200() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeDigifred::CarregarA170() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  const auto valores = GetNota().Filho<"ValoresNfse">();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(servico.Valor("Valores/ValorServicos"));
  item->SetVL_DESC(servico.Valor("Valores/DescontoIncondicionado"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("CodigoTributacaoMunicipio")));
  item->SetVL_BC_ISS(valores.Valor("BaseCalculo"));
  item->SetVL_ISS(valores.Valor("ValorIss"));
  item->SetALIQ_ISS(valores.Valor("Aliquota"));
  item->SetMUNICIPIODEVISS(MunicipioDevidoISS({servico.Texto("MunicipioIncidencia")}));
  AdicionarA170(std::move(item));
}

void TNFSeDigifred::CarregarA17R() {
  const auto valores = GetNota().Filho<"ValoresNfse">();
  const auto base = valores.Valor("BaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(GetDeclaracao().Filho<"Servico/Valores">()));
}

}  // namespace impnfse
