#include "UnVX03704ImpNFSeAgili.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr std::size_t kAlgarismosDoNumero = 15;
constexpr int kStatusCancelado = 2;
constexpr int kISSRetido = 1;

template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  auto dados = LerEnderecoNacional(endereco);
  dados.NOME = parte.Texto("RazaoSocial");
  dados.COD_MUN = StrToIntDef(endereco.Texto("Municipio/CodigoIbge"), 0);
  dados.MUNICIPIO = endereco.Texto("Municipio/Nome");
  dados.COD_PAIS = CodigoPais(StrToIntDef(endereco.Texto("CodigoPaisBacen"), 0));
  return dados;
}

}  // namespace

void TNFSeAgili::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// The root makes the file an imported one, whatever becomes of its notes.
void TNFSeAgili::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadConsultarNfseFaixaRespostaAgili(GetArquivo());
    Importou = true;
    PercorrerNotasComProgresso(raiz.Itens<"ListaNfse/CompNfse">(), [&](const IXMLCompNfseAgili& nota) {
      FNota = nota.Filho<"Nfse">();
      CarregarDosDoisLados("", [&] { CarregarA100(); });
    });
  });
}

String TNFSeAgili::GetCNPJCPFEmitente() { return LerCnpjOuCpfNacional(GetNota().Filho<"Prestador/CpfCnpj">()); }

String TNFSeAgili::GetCNPJCPFDestinatario() { return LerCnpjOuCpfNacional(GetNota().Filho<"Tomador/CpfCnpj">()); }

TDateTime TNFSeAgili::GetData() { return ConverterDataISOOuLocal(GetNota().Texto("DataEmissao")); }

bool TNFSeAgili::DocumentoEstaCancelado() const {
  const auto status = GetNota().Filho<"Status">();
  return StrToIntDef(status.Texto("Codigo"), 0) == kStatusCancelado ||
         Maiusculas(status.Texto("Descricao")) == "CANCELADO";
}

// Some files have the word where the code belongs. What the description says doesn't count.
bool TNFSeAgili::DocumentoTemISSRetido() const {
  const auto codigo = GetNota().Texto("IssRetido/Codigo");
  return StrToIntDef(codigo, 0) == kISSRetido || Maiusculas(codigo) == "SIM";
}

// Reversed: who says no has opted.
String TNFSeAgili::OptanteSimples() const {
  const auto optante = GetNota().Filho<"DeclaracaoPrestacaoServico/OptanteSimplesNacional">();
  return optante.Texto("Codigo") == "0" || Maiusculas(optante.Texto("Descricao")) == "NÃO" ? "S" : "N";
}

void TNFSeAgili::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(GetNota().Texto("Numero"), kAlgarismosDoNumero), 0),
                        DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeAgili::CarregarValoresA100() {
  const auto valores = GetNota().Filho<"ValoresNfse">();
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DESC(valores.Valor("Descontos"));
  a100.SetVL_DOC(valores.Valor("ValorTotalServicos") - a100.GetVL_DESC());
  a100.SetVL_ISS(valores.Valor("ValorIss"));
  a100.SetVL_PIS_RET(valores.Valor("RetencoesTributarias/ValorPis"));
  a100.SetVL_COFINS_RET(valores.Valor("RetencoesTributarias/ValorCofins"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

void TNFSeAgili::Carregar0150() {
  CarregarEmitente([&] {
    auto parte = LerParte(GetNota().Filho<"Prestador">());
    parte.OPTANTESIMPLES = OptanteSimples();
    return parte;
  });
  CarregarDestinatario([&] { return LerParte(GetNota().Filho<"Tomador">()); });
}

Int64 TNFSeAgili::Carregar0200(const IXMLServicoAgili& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemLei116/Codigo")});
}

// A single service has the note's base and ISS. Each of several makes its own of its value, and what they add up to
// isn't brought in line with the note. All have the activity that the municipality gives the note.
void TNFSeAgili::CarregarA170() {
  const auto valores = GetNota().Filho<"ValoresNfse">();
  const auto servicos = GetNota().Itens<"DeclaracaoPrestacaoServico/Servico">();
  int numero = 0;
  for (const auto& servico : servicos) {
    auto item = NovoA170(Carregar0200(servico), ++numero);
    item->SetVL_ITEM(servico.Valor("ValorServico"));
    item->SetVL_DESC(servico.Valor("Desconto"));
    item->SetQTD(servico.Valor("Quantidade"));
    item->SetATIVIDADE(
        FormatarCodigoAtividade(GetNota().Texto("DeclaracaoPrestacaoServico/TributacaoMunicipio/Codigo")));
    item->SetALIQ_ISS(valores.Valor("Aliquota"));
    if (servicos.Count() > 1) {
      item->SetVL_BC_ISS(item->GetVL_ITEM());
      item->SetVL_ISS(Arredondar(AplicarAliquota(item->GetVL_BC_ISS(), item->GetALIQ_ISS())));
    } else {
      item->SetVL_BC_ISS(valores.Valor("BaseCalculo"));
      item->SetVL_ISS(valores.Valor("ValorIss"));
    }
    item->SetMUNICIPIODEVISS(MunicipioDevidoISS(
        {GetNota().Texto("MunicipioIncidencia/CodigoIbge"), GetNota().Texto("Tomador/Endereco/Municipio/CodigoIbge")}));
    AdicionarA170(std::move(item));
  }
}

void TNFSeAgili::CarregarA17R() {
  const auto valores = GetNota().Filho<"ValoresNfse">();
  const auto base = valores.Valor("BaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores.Filho<"RetencoesTributarias">()));
}

}  // namespace impnfse
