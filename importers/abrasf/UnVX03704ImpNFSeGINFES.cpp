#include "UnVX03704ImpNFSeGINFES.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

// Both parties are told alike.
template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  return {.COD_MUN = CodigoMunicipio(endereco.Texto("Cidade")),
          .NOME = parte.Texto("RazaoSocial"),
          .ENDERECO = endereco.Texto("Endereco"),
          .NUM = endereco.Texto("Numero"),
          .COMPL = endereco.Texto("Complemento"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Estado")};
}

}  // namespace

void TNFSeGINFES::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeGINFES::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadNFSE(GetArquivo());
    if (!raiz) return;
    PercorrerNotas(raiz->Itens<"Nfse">(), [&](const IXMLNfseGINFES& nota) {
      Nota = nota;
      CarregarDosDoisLados(GetNota().Texto("IdentificacaoNfse/Numero"), [&] { CarregarA100(); });
    });
  });
}

String TNFSeGINFES::GetCNPJCPFEmitente() { return GetNota().Texto("PrestadorServico/IdentificacaoPrestador/CnpjCpf"); }

String TNFSeGINFES::GetCNPJCPFDestinatario() {
  return GetNota().Texto("TomadorServico/IdentificacaoTomador/CpfCnpj/CnpjCpf");
}

String TNFSeGINFES::GetChave() { return GetNota().Texto("IdentificacaoNfse/CodigoVerificacao"); }

TDateTime TNFSeGINFES::GetData() { return ConverterDataLocalOuISO(GetNota().Texto("DataEmissao")); }

// An empty flag is 2, not retained.
bool TNFSeGINFES::DocumentoTemISSRetido() const {
  return StrToIntDef(GetNota().Texto("Servico/Valores/IssRetido"), 2) == 1;
}

// Where the taker retains the ISS, its value stands in a field of its own.
Currency TNFSeGINFES::ValorISS() const {
  const auto valor = GetNota().Valor("Servico/Valores/ValorIss");
  return valor > 0 ? valor : GetNota().Valor("Servico/Valores/ValorIssRetido");
}

void TNFSeGINFES::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("IdentificacaoNfse/Numero"), 0));
  CarregarExecucaoA100(GetData());
  GetDadosA100()->SetVL_DOC(GetNota().Valor("Servico/Valores/ValorServicos"));
  GetDadosA100()->SetVL_ISS(ValorISS());
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
  ConcluirA100();
}

void TNFSeGINFES::Carregar0150() {
  CarregarEmitente([&] { return LerParte(GetNota().Filho<"PrestadorServico">()); });
  CarregarDestinatario([&] { return LerParte(GetNota().Filho<"TomadorServico">()); });
}

// The retained value is ValorIss alone, also where ValorIssRetido is filled.
void TNFSeGINFES::CarregarA17R() {
  if (!DocumentoTemISSRetido()) return;
  const auto valores = GetNota().Filho<"Servico/Valores">();
  const auto base = valores.Valor("BaseCalculo");
  InserirRetencao(receita::kISS, base > 0 ? base : valores.Valor("ValorServicos"), valores.Valor("ValorIss"),
                  valores.Valor("Aliquota"));
}

Int64 TNFSeGINFES::Carregar0200() {
  return CarregarItem(
      {.DESCR_ITEM = GetNota().Texto("Servico/Discriminacao"), .COD_LST = GetNota().Texto("Servico/ItemListaServico")});
}

void TNFSeGINFES::CarregarA170() {
  const auto servico = GetNota().Filho<"Servico">();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(servico.Valor("Valores/ValorServicos"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("CodigoTributacaoMunicipio")));
  item->SetVL_BC_ISS(servico.Valor("Valores/BaseCalculo"));
  item->SetVL_ISS(ValorISS());
  item->SetALIQ_ISS(servico.Valor("Valores/Aliquota"));
  item->SetAUX1(BuscarSomenteNumeros(GetNota().Texto("NaturezaOperacao")));
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
