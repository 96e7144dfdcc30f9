#include "UnVX03704ImpNFSeSIGCORP.h"

#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

String OuIsento(const String& ie) { return ie.empty() ? "ISENTO" : ie; }

}  // namespace

void TNFSeSIGCORP::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeSIGCORP::CarregarNFSe() {
  Importou = false;
  ComErroEstrutura([&] {
    const auto raiz = LoadNFeSIGCORP(GetArquivo());
    if (!raiz) return;
    FNota = *raiz;
    CarregarDosDoisLados(GetNota().Texto("ChaveNFe/NumeroNFe"), [&] { CarregarA100(); });
  });
}

String TNFSeSIGCORP::GetIEEmitente() { return OuIsento(GetNota().Texto("IEPrestador")); }

String TNFSeSIGCORP::GetIEDestinatario() { return OuIsento(GetNota().Texto("IETomador")); }

TDateTime TNFSeSIGCORP::GetData() { return ConverteData(GetNota().Texto("ChaveNFe/DataEmissaoNFe"), fdAnoMesDia); }

bool TNFSeSIGCORP::DocumentoEstaCancelado() const {
  return Maiusculas(Aparar(GetNota().Texto("StatusNFe"))) != "ATIVA";
}

// The tilde counts: "NAO" is retained.
bool TNFSeSIGCORP::DocumentoTemISSRetido() const { return Maiusculas(Aparar(GetNota().Texto("ISSRetido"))) != "NÃO"; }

// ISS due to the issuer's city, where the note says so, else to the taker's; each by its name.
String TNFSeSIGCORP::BuscarMunicipioDevidoISS() {
  const auto codigo = [&](const IXMLEnderecoSIGCORP& endereco) {
    return BuscarMunicipio(String(Aparar(endereco.Texto("UF"))), String(Aparar(endereco.Texto("Cidade"))))
        .CODIGOFEDERAL;
  };
  const bool doPrestador = Maiusculas(GetNota().Texto("TributacaoNFe")).find("PRESTADOR") != String::npos;
  return MunicipioDevidoISS({doPrestador ? codigo(GetNota().Filho<"EnderecoPrestador">()) : "",
                             codigo(GetNota().Filho<"EnderecoTomador">())});
}

void TNFSeSIGCORP::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("ChaveNFe/NumeroNFe"), 0), DocumentoEstaCancelado());
  GetDadosA100()->SetSER(GetNota().Texto("ChaveNFe/SerieNFe"));
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

void TNFSeSIGCORP::CarregarValoresA100() {
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(GetNota().Valor("ValorServicos"));
  a100.SetVL_ISS(GetNota().Valor("ValorISS"));
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
}

void TNFSeSIGCORP::Carregar0150() {
  CarregarEmitente([&] {
    auto parte = LerParte(GetNota().Texto("RazaoSocialPrestador"), GetNota().Filho<"EnderecoPrestador">());
    parte.OPTANTESIMPLES = GetNota().Texto("OpcaoSimples") == "SIM" ? "S" : "N";
    return parte;
  });
  CarregarDestinatario(
      [&] { return LerParte(GetNota().Texto("RazaoSocialTomador"), GetNota().Filho<"EnderecoTomador">()); });
}

// The city is known by its name only.
TDadosParte TNFSeSIGCORP::LerParte(const String& nome, const IXMLEnderecoSIGCORP& endereco) {
  const auto municipio = BuscarMunicipio(endereco.Texto("UF"), endereco.Texto("Cidade"));
  return {.COD_MUN = InteiroDosDigitos(municipio.CODIGOFEDERAL),
          .NOME = nome,
          .ENDERECO = endereco.Texto("Logradouro"),
          .NUM = endereco.Texto("NumeroEndereco"),
          .COMPL = endereco.Texto("ComplementoEndereco"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("UF"),
          .MUNICIPIO = endereco.Texto("Cidade")};
}

Int64 TNFSeSIGCORP::Carregar0200() {
  return CarregarItem({.DESCR_ITEM = GetNota().Texto("Discriminacao"), .COD_LST = GetNota().Texto("CodigoServico")});
}

void TNFSeSIGCORP::CarregarA170() {
  const auto base = GetNota().Valor("ValorBase");
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(GetNota().Valor("ValorServicos"));
  item->SetATIVIDADE(FormatarCodigoAtividade(GetNota().Texto("CodigoServico")));
  item->SetVL_BC_ISS(base > 0 ? base : item->GetVL_ITEM());
  item->SetVL_ISS(GetNota().Valor("ValorISS"));
  item->SetALIQ_ISS(GetNota().Valor("AliquotaServicos"));
  item->SetMUNICIPIODEVISS(BuscarMunicipioDevidoISS());
  AdicionarA170(std::move(item));
}

// The base is the note's, also where it has none.
void TNFSeSIGCORP::CarregarA17R() {
  const auto valor = [&](TCaminho<kFormatoSIGCORP, "NFe"> caminho) { return GetNota().Valor(caminho); };
  const auto base = valor("ValorBase");
  if (DocumentoTemISSRetido()) InserirRetencao(receita::kISS, base, valor("ValorISS"), valor("AliquotaServicos"));
  InserirRetencoesFederais(base, {.IR = valor("ValorIR"),
                                  .INSS = valor("ValorINSS"),
                                  .PIS = valor("ValorPIS"),
                                  .COFINS = valor("ValorCOFINS"),
                                  .CSLL = valor("ValorCSLL")});
}

}  // namespace impnfse
