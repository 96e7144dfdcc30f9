#include "UnVX03704ImpNFSePrefeituraModerna.h"

#include <array>

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

// The states of a note, of either gender, are its `tipo_nota`.
constexpr std::array<std::string_view, 2> kCancelada = {"CANCELADA", "CANCELADO"};
constexpr std::array<std::string_view, 2> kRetida = {"RETIDO", "RETIDA"};

}  // namespace

void TNFSePrefeituraModerna::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSePrefeituraModerna::CarregarNFSe() {
  ComErroEstrutura([&] {
    FMovimento = Loadmovimento_economico(GetArquivo());
    for (const auto& periodo : FMovimento.Itens<"periodos/periodo">()) CarregarPeriodo(periodo);
  });
}

// The first note decides for all of the period, its month included: a period without notes raises.
void TNFSePrefeituraModerna::CarregarPeriodo(const IXMLPeriodoPrefeituraModerna& periodo) {
  const auto notas = periodo.Itens<"nota">();
  FNota = notas[0];
  CarregarDeUmLado(CarregouRegistro0000Emitente(kTipoRegistro0000), [&] {
    PercorrerNotas(notas, [&](const IXMLNotaPrefeituraModerna& nota) {
      FNota = nota;
      CarregarA100();
      IncluirFilialDocumento(tpeEmitente, "");
      Importou = true;
    });
  });
}

String TNFSePrefeituraModerna::GetCNPJCPFEmitente() {
  return BuscarSomenteNumeros(FMovimento.Texto("prestador/cpf_cnpj"));
}

String TNFSePrefeituraModerna::GetIEEmitente() { return FMovimento.Texto("prestador/inscricao_estadual"); }

String TNFSePrefeituraModerna::GetCNPJCPFDestinatario() {
  return BuscarSomenteNumeros(GetNota().Texto("tomador/cpf_cnpj"));
}

String TNFSePrefeituraModerna::GetIEDestinatario() { return GetNota().Texto("tomador/inscricao_estadual"); }

TDateTime TNFSePrefeituraModerna::GetData() { return ConverterDataLocalOuISO(GetNota().Texto("data_emissao")); }

bool TNFSePrefeituraModerna::DocumentoEstaCancelado() const {
  return RegInStr(GetNota().Texto("tipo_nota"), kCancelada, 1);
}

bool TNFSePrefeituraModerna::DocumentoTemISSRetido() const {
  return RegInStr(GetNota().Texto("tipo_nota"), kRetida, 1);
}

void TNFSePrefeituraModerna::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("@numero"), 0), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSePrefeituraModerna::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("valor_nota"));
  a100.SetVL_PIS_RET(GetNota().Valor("valor_pis"));
  a100.SetVL_COFINS_RET(GetNota().Valor("valor_cofins"));
  a100.SetVL_ISS(GetNota().Valor("valor_iss"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

// The issuer is the branch, never a participant.
void TNFSePrefeituraModerna::Carregar0150() {
  CarregarDestinatario([&]() -> TDadosParte {
    const auto tomador = GetNota().Filho<"tomador">();
    const auto endereco = tomador.Filho<"endereco">();
    return {.COD_MUN = CodigoMunicipio(endereco.Texto("ibge_cidade")),
            .NOME = tomador.Texto("razao_social"),
            .ENDERECO = endereco.Texto("logradouro"),
            .NUM = endereco.Texto("numero"),
            .COMPL = endereco.Texto("apto_loja"),
            .BAIRRO = endereco.Texto("bairro"),
            .UF = endereco.Texto("uf"),
            .MUNICIPIO = endereco.Texto("cidade")};
  });
}

// No item has a place in the national list.
Int64 TNFSePrefeituraModerna::Carregar0200() { return CarregarItem({.DESCR_ITEM = GetNota().Texto("nome_atividade")}); }

void TNFSePrefeituraModerna::CarregarA17R() {
  const auto valor = [&](TCaminho<kFormatoPrefeituraModerna, "Nota"> caminho) { return GetNota().Valor(caminho); };
  const auto base = valor("base_calculo") > 0 ? valor("base_calculo") : valor("valor_liquido");
  if (DocumentoTemISSRetido()) InserirRetencao(receita::kISS, base, valor("valor_iss"), valor("valor_aliquota"));
  InserirRetencoesFederais(base, {.IR = valor("valor_ir"),
                                  .INSS = valor("valor_inss"),
                                  .PIS = valor("valor_pis"),
                                  .COFINS = valor("valor_cofins"),
                                  .CSLL = valor("valor_csll")});
}

// Retained ISS is a kind of payment of its own for the main branch alone.
void TNFSePrefeituraModerna::CarregarA170() {
  const auto& empresa = *GetDadosEmpresaImportacao();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(GetNota().Valor("valor_nota"));
  item->SetATIVIDADE(FormatarCodigoAtividade(GetNota().Texto("codigo_atividade")));
  item->SetVL_BC_ISS(GetNota().Valor("base_calculo"));
  item->SetVL_ISS(GetNota().Valor("valor_iss"));
  item->SetALIQ_ISS(GetNota().Valor("valor_aliquota"));
  if (DocumentoTemISSRetido() && empresa.GetDadosFilial().IDFILIAL == empresa.GetIDFilialPrincipal())
    item->SetTPRECOLHIMENTO("R");
  item->SetMUNICIPIODEVISS(MunicipioDevidoISS({GetNota().Texto("ibge_cidade_prestacao")}));
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
