#include "UnVX03704ImpNFSeSystemSolucoesSistemasInformacoes.h"

#include <algorithm>

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

bool TemISSRetido(const IXMLServicoSystemSolucoes& servico) {
  const auto retido = servico.Texto("IssRetido");
  return StrToIntDef(retido, 0) == 1 || Maiusculas(retido) == "SIM";
}

}  // namespace

void TNFSeSystemSolucoesSistemasInformacoes::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeSystemSolucoesSistemasInformacoes::CarregarNFSe() {
  TArquivoXML arquivo(GetArquivo());
  if (!CarregouConsultarNfseFaixaResposta(arquivo)) CarregouGerarNfseResposta(arquivo);
  ConcluirPeloErro();
}

bool TNFSeSystemSolucoesSistemasInformacoes::CarregouConsultarNfseFaixaResposta(TArquivoXML& arquivo) {
  return CarregouForma<IXMLConsultarNfseFaixaRespostaSystemSolucoes>(arquivo, "ConsultarNfseFaixaResposta");
}

bool TNFSeSystemSolucoesSistemasInformacoes::CarregouGerarNfseResposta(TArquivoXML& arquivo) {
  return CarregouForma<IXMLGerarNfseRespostaSystemSolucoes>(arquivo, "GerarNfseResposta");
}

// The root alone makes the form the file's, before any note.
template <class Raiz>
bool TNFSeSystemSolucoesSistemasInformacoes::CarregouForma(TArquivoXML& arquivo, std::string_view tag) {
  Importou = false;
  Erro.clear();
  ComErroEstrutura([&] {
    const auto raiz = Load<Raiz>(arquivo, {.Tag = tag});
    if (!raiz) return;
    Importou = true;
    PercorrerNotasComProgresso(raiz->template Itens<"ListaNfse/CompNfse">(),
                               [&](const IXMLCompNfseSystemSolucoes& nota) {
                                 FNota = nota.Filho<"Nfse/InfNfse">();
                                 if (!FNota.Vazio()) CarregarDosDoisLados("", [&] { CarregarA100(); });
                               });
  });
  return Importou;
}

String TNFSeSystemSolucoesSistemasInformacoes::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(FNota.Filho<"PrestadorServico/IdentificacaoPrestador/CpfCnpj">());
}

String TNFSeSystemSolucoesSistemasInformacoes::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetDeclaracao().Filho<"Tomador/IdentificacaoTomador/CpfCnpj">());
}

String TNFSeSystemSolucoesSistemasInformacoes::GetChave() { return FNota.Texto("CodigoVerificacao"); }

TDateTime TNFSeSystemSolucoesSistemasInformacoes::GetData() {
  return ConverterDataISOOuLocal(FNota.Texto("DataEmissao"));
}

IXMLDeclaracaoSystemSolucoes TNFSeSystemSolucoesSistemasInformacoes::GetDeclaracao() const {
  return FNota.Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

TServicosSystemSolucoes TNFSeSystemSolucoesSistemasInformacoes::GetServicos() const {
  return GetDeclaracao().Itens<"Servico">();
}

// One retained service retains the whole note.
bool TNFSeSystemSolucoesSistemasInformacoes::DocumentoTemISSRetido() const {
  const auto servicos = GetServicos();
  return std::any_of(servicos.begin(), servicos.end(), TemISSRetido);
}

void TNFSeSystemSolucoesSistemasInformacoes::CarregarA100() {
  IniciarA100();
  Carregar0150();
  // 15 characters are a whole national number: the year that it begins with stays.
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(FNota.Texto("Numero"), 15), 0));
  CarregarExecucaoA100(GetData());
  auto& a100 = *GetDadosA100();
  a100.SetVL_ISS(FNota.Valor("ValoresNfse/ValorIss"));
  MarcarISSRetido(DocumentoTemISSRetido());
  FSomaValorDocumento = FSomaDesconto = FSomaPisRetido = FSomaCofinsRetido = 0;
  CarregarA17R();
  CarregarA170();
  a100.SetVL_DOC(FSomaValorDocumento);
  a100.SetVL_DESC(FSomaDesconto);
  a100.SetVL_PIS_RET(FSomaPisRetido);
  a100.SetVL_COFINS_RET(FSomaCofinsRetido);
  ConcluirA100();
}

void TNFSeSystemSolucoesSistemasInformacoes::Carregar0150() {
  CarregarEmitente([&] {
    auto emitente = LerParteNacional(FNota.Filho<"PrestadorServico">());
    emitente.OPTANTESIMPLES = GetDeclaracao().Texto("OptanteSimplesNacional") == "1" ? "S" : "N";
    return emitente;
  });
  CarregarDestinatario([&] { return LerParteNacional(GetDeclaracao().Filho<"Tomador">()); }, {.PropriaEmpresa = true});
}

Int64 TNFSeSystemSolucoesSistemasInformacoes::Carregar0200(const IXMLServicoSystemSolucoes& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeSystemSolucoesSistemasInformacoes::CarregarA170() {
  const auto resumo = FNota.Filho<"ValoresNfse">();
  const auto servicos = GetServicos();
  int numero = 0;
  for (const auto& servico : servicos) {
    const auto valores = servico.Filho<"Valores">();
    const auto valor = valores.Valor("ValorServicos");
    auto desconto = valores.Valor("Desconto");
    if (desconto <= 0) desconto = valores.Valor("DescontoIncondicionado");
    FSomaValorDocumento += valor;
    FSomaDesconto += desconto;

    auto item = NovoA170(Carregar0200(servico), ++numero);
    item->SetVL_ITEM(valor);
    item->SetVL_DESC(desconto);
    item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
    item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
    item->SetALIQ_ISS(resumo.Valor("Aliquota"));
    // The summary's base and ISS are the whole note's: they are a service's only where it is the one service.
    const bool unico = servicos.Count() == 1;
    item->SetVL_BC_ISS(unico ? resumo.Valor("BaseCalculo") : valor);
    item->SetVL_ISS(unico ? resumo.Valor("ValorIss") : valores.Valor("ValorIss"));
    item->SetMUNICIPIODEVISS(MunicipioDevidoISS(
        {servico.Texto("MunicipioIncidencia"), GetDeclaracao().Texto("Tomador/Endereco/CodigoMunicipio")}));
    AdicionarA170(std::move(item));
  }
}

// The retained taxes are the note's, not an item's.
void TNFSeSystemSolucoesSistemasInformacoes::CarregarA17R() {
  const auto resumo = FNota.Filho<"ValoresNfse">();
  const auto base = resumo.Valor("BaseCalculo");
  if (DocumentoTemISSRetido()) InserirRetencao(receita::kISS, base, resumo.Valor("ValorIss"), resumo.Valor("Aliquota"));
  TRetencoesFederais somas;
  for (const auto& servico : GetServicos()) {
    const auto valores = servico.Filho<"Valores">();
    somas.IR += valores.Valor("ValorIr");
    somas.INSS += valores.Valor("ValorInss");
    somas.CSLL += valores.Valor("ValorCsll");
    FSomaPisRetido += valores.Valor("ValorPis");
    FSomaCofinsRetido += valores.Valor("ValorCofins");
  }
  somas.PIS = FSomaPisRetido;
  somas.COFINS = FSomaCofinsRetido;
  InserirRetencoesFederais(base, somas);
}

}  // namespace impnfse
