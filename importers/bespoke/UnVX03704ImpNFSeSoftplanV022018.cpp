#include "UnVX03704ImpNFSeSoftplanV022018.h"

#include "UnVX03704ImpNFSeSoftplanComum.h"
#include "VXUtils.h"

namespace impnfse {
namespace {

constexpr int kCentavos = 2;

// The issuer's city has a name and no code, its house no number.
TDadosParte LerPrestador(const IXMLxmlNfpse& nota) {
  return {.NOME = nota.Texto("razaoSocialPrestador"),
          .ENDERECO = nota.Texto("logradouroPrestador"),
          .BAIRRO = nota.Texto("bairroPrestador"),
          .UF = nota.Texto("ufPrestador"),
          .MUNICIPIO = nota.Texto("nomeMunicipioPrestador")};
}

// The taker's has a code and no name. The number of a taker abroad, of any length, stands for a CNPJ. A blank behind
// the country's number makes it Brazil, as does any number not above 0.
TDadosParte LerTomador(const IXMLxmlNfpse& nota) {
  const auto pais = CodigoPais(StrToIntDef(nota.Texto("paisTomador"), 0));
  return {.COD_MUN = InteiroDosDigitos(nota.Texto("codigoMunicipioTomador")),
          .NOME = nota.Texto("razaoSocialTomador"),
          .ENDERECO = nota.Texto("logradouroTomador"),
          .NUM = nota.Texto("numeroEnderecoTomador"),
          .BAIRRO = nota.Texto("bairroTomador"),
          .UF = nota.Texto("ufTomador"),
          .COD_PAIS = pais,
          .SempreCNPJ = pais != TDadosRegistro0150::kBrasil};
}

}  // namespace

void TNFSeSoftplan022018::Carregar() {
  TNFSeBase::Carregar();
  CarregouNFSe();
}

void TNFSeSoftplan022018::CarregouNFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadxmlNfpse(GetArquivo());
    if (!raiz) return;
    FNota = *raiz;
    CarregarDosDoisLados(std::to_string(BuscarNumeroDocumento()), [&] { CarregouA100(); });
  });
}

String TNFSeSoftplan022018::GetCNPJCPFEmitente() { return GetNota().Texto("cnpjPrestador"); }

String TNFSeSoftplan022018::GetCNPJCPFDestinatario() { return GetNota().Texto("identificacaoTomador"); }

String TNFSeSoftplan022018::GetChave() { return GetNota().Texto("codigoVerificacao"); }

TDateTime TNFSeSoftplan022018::GetData() { return ConverteData(GetNota().Texto("dataEmissao"), fdAnoMesDia); }

int TNFSeSoftplan022018::BuscarNumeroDocumento() const {
  return softplan::BuscarNumeroDocumento(GetNota().Texto("numeroSerie"), GetNota().Texto("NumeroSerieSubst"));
}

bool TNFSeSoftplan022018::DocumentoEstaCancelado() const {
  return Aparar(GetNota().Texto("statusNFPSe")).starts_with('1');
}

void TNFSeSoftplan022018::CarregouA100() {
  IniciarA100();
  Carregou0150();
  CarregarCabecalhoA100(BuscarNumeroDocumento(), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregouValoresA100();
  ConcluirA100();
}

// The layout can't say that ISS is retained: no document is marked so, and none has a retained tax.
void TNFSeSoftplan022018::CarregouValoresA100() {
  CarregarExecucaoA100(GetData());
  GetDadosA100()->SetVL_DOC(GetNota().Valor("valorTotalServicos"));
  GetDadosA100()->SetVL_ISS(GetNota().Valor("valorISSQN"));
  CarregouA170();
}

void TNFSeSoftplan022018::Carregou0150() {
  CarregarEmitente([&] { return LerPrestador(GetNota()); });
  CarregarDestinatario([&] { return LerTomador(GetNota()); });
}

// No item has a place in the national list.
Int64 TNFSeSoftplan022018::Carregou0200(const IXMLitemServicoSoftplanV022018& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("descricaoServico")});
}

// The city of the taker gets the ISS. The last service takes what the note's ISS has more, or less, than all of them,
// whatever that comes to.
void TNFSeSoftplan022018::CarregouA170() {
  const auto servicos = GetNota().Itens<"itensServico/itemServico">();
  Currency saldo = GetDadosA100()->GetVL_ISS();
  std::size_t indice = 0;
  for (const auto& servico : servicos) {
    auto item = NovoA170(Carregou0200(servico), static_cast<int>(indice) + 1);
    item->SetVL_ITEM(servico.Valor("valorTotal"));
    item->SetQTD(servico.Valor("quantidade"));
    item->SetATIVIDADE(servico.Texto("codigoCNAE"));
    item->SetCFOPISS(GetNota().Texto("cfps"));
    item->SetALIQ_ISS(softplan::BuscarAliquotaISSServico(servico.Texto("aliquota")));
    if (item->GetALIQ_ISS() > 0) item->SetVL_BC_ISS(item->GetVL_ITEM());
    item->SetVL_ISS(BuscarValorISS(*item, servicos.Count() == 1));
    saldo -= item->GetVL_ISS();
    if (indice + 1 == servicos.Count()) item->SetVL_ISS(item->GetVL_ISS() + saldo);
    item->SetMUNICIPIODEVISS(MunicipioDevidoISS({GetNota().Texto("codigoMunicipioTomador")}));
    item->SetChaveCondicaoAdicional(std::to_string(indice));
    AdicionarA170(std::move(item));
    ++indice;
  }
}

// In cents: a single service has the note's, of several each has its own. A note without a base has none.
Currency TNFSeSoftplan022018::BuscarValorISS(const TDadosRegistroA170& item, bool unico) const {
  if (item.GetALIQ_ISS() <= 0 || GetNota().Valor("baseCalculo") <= 0) return 0;
  const auto valor = unico ? GetNota().Valor("valorISSQN") : AplicarAliquota(item.GetVL_BC_ISS(), item.GetALIQ_ISS());
  return TVXUtilsMatematica::Arredondar(valor, kCentavos);
}

}  // namespace impnfse
