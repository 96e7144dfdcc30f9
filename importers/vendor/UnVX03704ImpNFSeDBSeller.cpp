#include "UnVX03704ImpNFSeDBSeller.h"

#include <fmt/format.h>

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr std::size_t kAlgarismosDoNumero = 11;
constexpr int kSim = 1;
constexpr int kNao = 2;

// The country isn't told, of a party abroad (state "EX") neither: it stays as a new participant has it.
template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  return {.COD_MUN = InteiroDosDigitos(endereco.Texto("CodigoMunicipio")),
          .NOME = parte.Texto("RazaoSocial"),
          .ENDERECO = endereco.Texto("EnderecoDescricao"),
          .NUM = endereco.Texto("Numero"),
          .COMPL = endereco.Texto("Complemento"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Uf")};
}

}  // namespace

void TNFSeDBSeller::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeDBSeller::CarregarNFSe() {
  const auto raiz = LoadConsultaRPSCompetenciaDBSeller(GetArquivo());
  if (!raiz) {
    SetTemErros(true);
    Erro = BuscarErroEstruturaArquivo();
    return;
  }
  PercorrerNotasComProgresso(
      raiz->Itens<"ListaNfse/CompNfse">(),
      [&](const IXMLCompNfseDBSeller& nota) {
        FCompNfse = nota;
        const auto numero = GetNota().Texto("Numero");
        CarregarDosDoisLados(
            numero, [&] { CarregarA100(); }, "Documento: " + numero + " - ");
      },
      [&](const IXMLCompNfseDBSeller& nota, std::size_t indice, std::size_t ultimo) {
        return fmt::format("Carregando documento {} (Nº {}) de {}. {}", indice, nota.Texto("Nfse/InfNfse/Numero"),
                           ultimo, GetArquivo());
      });
}

String TNFSeDBSeller::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"PrestadorServico/IdentificacaoPrestador">());
}

String TNFSeDBSeller::GetIMEmitente() {
  return GetNota().Texto("PrestadorServico/IdentificacaoPrestador/InscricaoMunicipal");
}

String TNFSeDBSeller::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"TomadorServico/IdentificacaoTomador/CpfCnpj">());
}

String TNFSeDBSeller::GetIMDestinatario() {
  return GetNota().Texto("TomadorServico/IdentificacaoTomador/InscricaoMunicipal");
}

TDateTime TNFSeDBSeller::GetData() { return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia); }

String TNFSeDBSeller::GetNumeroDocumento() {
  return std::to_string(StrToInt64Def(Ultimos(GetNota().Texto("Numero"), kAlgarismosDoNumero), 0));
}

bool TNFSeDBSeller::GetDocumentoTemISSRetido() {
  return StrToIntDef(GetNota().Texto("Servico/Valores/IssRetido"), kNao) == kSim;
}

// The city's answer cancels, not the request.
bool TNFSeDBSeller::DocumentoEstaCancelado() const {
  return InteiroDosDigitos(FCompNfse.Texto("NfseCancelamento/Confirmacao/InfConfirmacaoCancelamento/Sucesso")) == kSim;
}

void TNFSeDBSeller::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNumeroDocumento(), 0), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeDBSeller::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("Servico/Valores/ValorServicos"));
  a100.SetVL_DESC(GetNota().Valor("Servico/Valores/DescontoIncondicionado"));
  a100.SetVL_ISS(GetValorISS());
  a100.SetVL_PIS_RET(GetValorPIS());
  a100.SetVL_COFINS_RET(GetValorCOFINS());
  MarcarISSRetido(GetDocumentoTemISSRetido());
  CarregarA170();
  CarregarA17R();
}

void TNFSeDBSeller::Carregar0150() {
  CarregarEmitente([&] {
    auto parte = LerParte(GetNota().Filho<"PrestadorServico">());
    parte.OPTANTESIMPLES = GetNota().Texto("OptanteSimplesNacional") == "1" ? "S" : "N";
    return parte;
  });
  CarregarDestinatario([&] { return LerParte(GetNota().Filho<"TomadorServico">()); },
                       {.PropriaEmpresa = true, .SemNumero = true});
}

// The item of the list is a number here: 07.02 is stored as 702, and none as 0.
Int64 TNFSeDBSeller::Carregar0200() {
  return CarregarItem({.DESCR_ITEM = GetNota().Texto("Servico/Discriminacao"),
                       .COD_LST = std::to_string(InteiroDosDigitos(GetNota().Texto("Servico/ItemListaServico")))});
}

void TNFSeDBSeller::CarregarA170() {
  const auto servico = GetNota().Filho<"Servico">();
  const auto tributacao = servico.Texto("CodigoTributacaoMunicipio");
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(servico.Valor("Valores/ValorServicos"));
  item->SetVL_DESC(servico.Valor("Valores/DescontoIncondicionado"));
  item->SetDEDUCAOISS(servico.Valor("Valores/ValorDeducoes"));
  item->SetATIVIDADE(FormatarCodigoAtividade(tributacao.empty() ? servico.Texto("ItemListaServico") : tributacao));
  item->SetVL_BC_ISS(GetBaseCalculo());
  item->SetVL_ISS(GetValorISS());
  item->SetALIQ_ISS(GetAliquotaISS());
  item->SetMUNICIPIODEVISS(MunicipioDevidoISS(
      {servico.Texto("CodigoMunicipio"), GetNota().Texto("TomadorServico/Endereco/CodigoMunicipio")}));
  item->SetAUX1(BuscarSomenteNumeros(GetNota().Texto("NaturezaOperacao")));
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
