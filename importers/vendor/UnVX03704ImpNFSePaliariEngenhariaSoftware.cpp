#include "UnVX03704ImpNFSePaliariEngenhariaSoftware.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

constexpr std::size_t kAlgarismosDoNumero = 15;

}  // namespace

void TNFSePaliariEngenhariaSoftware::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSePaliariEngenhariaSoftware::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadConsultarNfseServicoPrestadoRespostaPaliari(GetArquivo());
    if (!raiz) return;
    PercorrerNotasComProgresso(raiz->Itens<"ListaNfse/CompNfse">(), [&](const IXMLCompNfsePaliari& nota) {
      FNota = nota.Filho<"Nfse/InfNfse">();
      CarregarDosDoisLados(GetNota().Texto("Numero"), [&] { CarregarA100(); });
    });
  });
}

IXMLDeclaracaoPaliari TNFSePaliariEngenhariaSoftware::GetDeclaracao() const {
  return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

String TNFSePaliariEngenhariaSoftware::GetCNPJCPFEmitente() {
  return LerCnpjOuCpfNacional(GetNota().Filho<"PrestadorServico/IdentificacaoPrestador/CpfCnpj">());
}

String TNFSePaliariEngenhariaSoftware::GetCNPJCPFDestinatario() {
  return LerCnpjOuCpfNacional(GetDeclaracao().Filho<"Tomador/IdentificacaoTomador/CpfCnpj">());
}

TDateTime TNFSePaliariEngenhariaSoftware::GetData() {
  return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia);
}

bool TNFSePaliariEngenhariaSoftware::DocumentoTemISSRetido() const {
  const auto retido = GetDeclaracao().Texto("Servico/IssRetido");
  return retido == "1" || retido == "S";
}

// Where the gross value isn't told, what was paid stands for it.
Currency TNFSePaliariEngenhariaSoftware::BuscarValorServicos() const {
  const auto bruto = GetDeclaracao().Valor("Servico/Valores/ValorServicos");
  return bruto > 0 ? bruto : GetNota().Valor("ValoresNfse/ValorLiquidoNfse");
}

void TNFSePaliariEngenhariaSoftware::CarregarA100() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(Ultimos(GetNota().Texto("Numero"), kAlgarismosDoNumero), 0));
  CarregarExecucaoA100(GetData());
  auto& a100 = *GetDadosA100();
  a100.SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  a100.SetVL_DOC(BuscarValorServicos());
  a100.SetVL_ISS(GetNota().Valor("ValoresNfse/ValorIss"));
  a100.SetVL_PIS_RET(valores.Valor("ValorPis"));
  a100.SetVL_COFINS_RET(valores.Valor("ValorCofins"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
  ConcluirA100();
}

// An issuer is known without its municipality, and a state that the note doesn't tell stays unknown.
void TNFSePaliariEngenhariaSoftware::Carregar0150() {
  CarregarEmitente([&] {
    auto parte = LerEnderecoNacional(GetNota().Filho<"PrestadorServico/Endereco">());
    parte.NOME = GetNota().Texto("PrestadorServico/RazaoSocial");
    parte.SemUFDoMunicipio = true;
    return parte;
  });
  CarregarDestinatario([&] {
    const auto tomador = GetDeclaracao().Filho<"Tomador">();
    auto parte = LerEnderecoNacional(tomador.Filho<"Endereco">());
    parte.NOME = tomador.Texto("RazaoSocial");
    parte.COD_MUN = CodigoMunicipio(tomador.Texto("Endereco/CodigoMunicipio"));
    return parte;
  });
}

Int64 TNFSePaliariEngenhariaSoftware::Carregar0200() {
  return CarregarItem({.DESCR_ITEM = GetDeclaracao().Texto("Servico/Discriminacao"),
                       .COD_LST = GetDeclaracao().Texto("Servico/ItemListaServico")});
}

void TNFSePaliariEngenhariaSoftware::CarregarA170() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(BuscarValorServicos());
  item->SetVL_DESC(servico.Valor("Valores/DescontoIncondicionado"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
  item->SetVL_BC_ISS(GetNota().Valor("ValoresNfse/BaseCalculo"));
  item->SetVL_ISS(GetNota().Valor("ValoresNfse/ValorIss"));
  item->SetALIQ_ISS(GetNota().Valor("ValoresNfse/Aliquota"));
  item->SetMUNICIPIODEVISS(MunicipioDevidoISS({servico.Texto("CodigoMunicipio"), servico.Texto("MunicipioIncidencia"),
                                               GetDeclaracao().Texto("Tomador/Endereco/CodigoMunicipio")}));
  AdicionarA170(std::move(item));
}

void TNFSePaliariEngenhariaSoftware::CarregarA17R() {
  const auto valoresNfse = GetNota().Filho<"ValoresNfse">();
  const auto base = valoresNfse.Valor("BaseCalculo");
  if (DocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valoresNfse.Valor("ValorIss"), valoresNfse.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(GetDeclaracao().Filho<"Servico/Valores">()));
}

}  // namespace impnfse
