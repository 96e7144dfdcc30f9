#include "UnVX03704ImpNFSeAgili_v100.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr int kSituacaoCancelada = 2;
constexpr int kISSRetido = 1;

template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  return {.COD_MUN = InteiroDosDigitos(endereco.Texto("Municipio/CodigoMunicipioIBGE")),
          .NOME = parte.Texto("RazaoSocial"),
          .ENDERECO = endereco.Texto("Logradouro"),
          .NUM = endereco.Texto("Numero"),
          .COMPL = endereco.Texto("Complemento"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Municipio/Uf"),
          .COD_PAIS = CodigoPais(InteiroDosDigitos(endereco.Texto("Pais/CodigoPaisBacen"))),
          .MUNICIPIO = endereco.Texto("Municipio/Descricao")};
}

}  // namespace

void TNFSeAgili_v100::Carregar() {
  TNFSeBase::Carregar();
  CarregouNFSe();
}

// The root makes the file an imported one, whatever becomes of its note.
void TNFSeAgili_v100::CarregouNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadNfseAgili_v100(GetArquivo());
    if (!raiz) return;
    FNota = *raiz;
    Importou = true;
    CarregarDosDoisLados("", [&] { CarregouA100(); });
  });
}

String TNFSeAgili_v100::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(GetDeclaracao().Filho<"IdentificacaoPrestador/CpfCnpj">());
}

String TNFSeAgili_v100::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetDeclaracao().Filho<"DadosTomador/IdentificacaoTomador/CpfCnpj">());
}

TDateTime TNFSeAgili_v100::GetData() { return ConverterDataISOOuLocal(GetNota().Texto("DataEmissao")); }

bool TNFSeAgili_v100::DocumentoEstaCancelado() const {
  const auto situacao = GetNota().Filho<"SituacaoNfse">();
  return InteiroDosDigitos(situacao.Texto("Codigo")) == kSituacaoCancelada ||
         Maiusculas(situacao.Texto("Descricao")) == "CANCELADO";
}

bool TNFSeAgili_v100::DocumentoTemISSRetido() const {
  return InteiroDosDigitos(GetDeclaracao().Texto("ISSQNRetido")) == kISSRetido;
}

String TNFSeAgili_v100::OptanteSimples() const {
  const auto optante = GetDeclaracao().Texto("OptanteSimplesNacional");
  return optante == "0" || Maiusculas(optante) == "NÃO" ? "N" : "S";
}

void TNFSeAgili_v100::CarregouA100() {
  IniciarA100();
  Carregou0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("Numero"), 0), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregouValoresA100();
  ConcluirA100();
}

void TNFSeAgili_v100::CarregouValoresA100() {
  const auto declaracao = GetDeclaracao();
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DESC(declaracao.Valor("ValorDescontos"));
  a100.SetVL_DOC(declaracao.Valor("ValorServicos"));
  a100.SetVL_ISS(declaracao.Valor("ValorISSQNCalculado"));
  a100.SetVL_PIS_RET(declaracao.Valor("ValorPis"));
  a100.SetVL_COFINS_RET(declaracao.Valor("ValorCofins"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregouA17R();
  CarregouA170();
}

void TNFSeAgili_v100::Carregou0150() {
  CarregarEmitente([&] {
    auto parte = LerParte(GetNota().Filho<"DadosPrestador">());
    parte.OPTANTESIMPLES = OptanteSimples();
    return parte;
  });
  CarregarDestinatario([&] { return LerParte(GetDeclaracao().Filho<"DadosTomador">()); });
}

Int64 TNFSeAgili_v100::Carregou0200(const IXMLDadosServicoAgili_v100& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemLei116")});
}

// A single service has the note's base and ISS, each of several makes its own of its value; the deduction stands whole
// on every line.
void TNFSeAgili_v100::CarregouA170() {
  const auto declaracao = GetDeclaracao();
  const auto servicos = declaracao.Itens<"ListaServico/DadosServico">();
  int numero = 0;
  for (const auto& servico : servicos) {
    auto item = NovoA170(Carregou0200(servico), ++numero);
    item->SetVL_ITEM(servico.Valor("ValorServico"));
    item->SetVL_DESC(servico.Valor("ValorDesconto"));
    item->SetQTD(servico.Valor("Quantidade"));
    item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemLei116")));
    item->SetALIQ_ISS(declaracao.Valor("AliquotaISSQN"));
    if (servicos.Count() > 1) {
      item->SetVL_BC_ISS(item->GetVL_ITEM());
      item->SetVL_ISS(Arredondar(AplicarAliquota(item->GetVL_BC_ISS(), item->GetALIQ_ISS())));
    } else {
      item->SetVL_BC_ISS(declaracao.Valor("ValorBaseCalculoISSQN"));
      item->SetVL_ISS(declaracao.Valor("ValorISSQNCalculado"));
    }
    item->SetDEDUCAOISS(declaracao.Valor("ValorDeducaoConstCivil"));
    item->SetMUNICIPIODEVISS(
        MunicipioDevidoISS({declaracao.Texto("MunicipioIncidencia/CodigoMunicipioIBGE"),
                            declaracao.Texto("DadosTomador/Endereco/Municipio/CodigoMunicipioIBGE")}));
    AdicionarA170(std::move(item));
  }
}

void TNFSeAgili_v100::CarregouA17R() {
  const auto declaracao = GetDeclaracao();
  const auto base = declaracao.Valor("ValorBaseCalculoISSQN");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, declaracao.Valor("ValorISSQNCalculado"), declaracao.Valor("AliquotaISSQN"));
  InserirRetencoesFederais(base, {.IR = declaracao.Valor("ValorIrrf"),
                                  .INSS = declaracao.Valor("ValorInss"),
                                  .PIS = declaracao.Valor("ValorPis"),
                                  .COFINS = declaracao.Valor("ValorCofins"),
                                  .CSLL = declaracao.Valor("ValorCsll")});
}

}  // namespace impnfse
