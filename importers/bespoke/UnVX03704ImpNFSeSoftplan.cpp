#include "UnVX03704ImpNFSeSoftplan.h"

#include "UnVX03704ImpNFSeSoftplanComum.h"

namespace impnfse {
namespace {

// Both parties are told alike; but the issuer is of Brazil, whatever its address says.
template <class Parte>
TDadosParte LerParte(const Parte& parte) {
  const auto endereco = parte.template Filho<"Endereco">();
  return {.COD_MUN = InteiroDosDigitos(endereco.Texto("Municipio/CodigoMunicipio")),
          .NOME = parte.Texto("RazaoSocial"),
          .ENDERECO = endereco.Texto("Logradouro"),
          .NUM = endereco.Texto("NumeroEndereco"),
          .COMPL = endereco.Texto("ComplementoEndereco"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("UF"),
          .MUNICIPIO = endereco.Texto("Municipio/NomeMunicipio")};
}

}  // namespace

void TNFSeSoftplan::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

void TNFSeSoftplan::CarregarNFSe() {
  ComErroEstrutura([&] {
    const auto raiz = LoadNFPSe(GetArquivo());
    if (!raiz) return;
    FNota = raiz->Filho<"InfNFPSe">();
    CarregarDosDoisLados(std::to_string(BuscarNumeroDocumento()), [&] { CarregarA100(); });
  });
}

String TNFSeSoftplan::GetCNPJCPFEmitente() { return GetNota().Texto("Prestador/IdentificacaoPrestador/CNPJ"); }

String TNFSeSoftplan::GetCNPJCPFDestinatario() {
  return GetNota().Texto("Tomador/IdentificacaoTomador/DocIdTomador/CPFCNPJ/CNPJCPF");
}

String TNFSeSoftplan::GetChave() { return GetNota().Texto("CodigoVerificacao"); }

TDateTime TNFSeSoftplan::GetData() { return ConverteData(GetNota().Texto("DataEmissao"), fdAnoMesDia); }

int TNFSeSoftplan::BuscarNumeroDocumento() const {
  return softplan::BuscarNumeroDocumento(GetNota().Texto("NumeroSerie"), GetNota().Texto("NumeroSerieSubst"));
}

bool TNFSeSoftplan::DocumentoEstaCancelado() const { return Aparar(GetNota().Texto("StatusNFPSe")).starts_with('1'); }

void TNFSeSoftplan::CarregarA100() {
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(BuscarNumeroDocumento(), DocumentoEstaCancelado());
  if (!DocumentoEstaCancelado()) CarregarValoresA100();
  ConcluirA100();
}

// The layout can't say that ISS is retained, not even by its values of tax substitution: no document is marked so, and
// none has a retained tax.
void TNFSeSoftplan::CarregarValoresA100() {
  CarregarExecucaoA100(GetData());
  GetDadosA100()->SetVL_DOC(GetNota().Valor("DadosServico/ValorTotalServicos"));
  GetDadosA100()->SetVL_ISS(GetNota().Valor("DadosServico/ValorISSQN"));
  CarregarA170();
}

// A taker's country as it stands: a blank behind the number makes it Brazil, as does any number not above 0.
void TNFSeSoftplan::Carregar0150() {
  CarregarEmitente([&] { return LerParte(GetNota().Filho<"Prestador">()); });
  CarregarDestinatario([&] {
    auto parte = LerParte(GetNota().Filho<"Tomador">());
    parte.COD_PAIS = CodigoPais(StrToIntDef(GetNota().Texto("Tomador/Endereco/Pais"), 0));
    return parte;
  });
}

// No item has a place in the national list.
Int64 TNFSeSoftplan::Carregar0200(const IXMLItemServicoSoftplan& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Texto("DescricaoServico")});
}

// The city of the taker gets the ISS.
void TNFSeSoftplan::CarregarA170() {
  const auto servicos = GetNota().Itens<"DadosServico/ItemServico">();
  int numero = 0;
  for (const auto& servico : servicos) {
    auto item = NovoA170(Carregar0200(servico), ++numero);
    item->SetVL_ITEM(servico.Valor("ValorTotal"));
    item->SetQTD(servico.Valor("Quantidade"));
    item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("CodigoAtividade")));
    item->SetCFOPISS(GetNota().Texto("CFPS"));
    item->SetALIQ_ISS(softplan::BuscarAliquotaISSServico(servico.Texto("Aliquota")));
    if (item->GetALIQ_ISS() > 0) item->SetVL_BC_ISS(item->GetVL_ITEM());
    item->SetVL_ISS(BuscarValorISS(*item, servicos.Count() == 1));
    item->SetMUNICIPIODEVISS(MunicipioDevidoISS({GetNota().Texto("Tomador/Endereco/Municipio/CodigoMunicipio")}));
    AdicionarA170(std::move(item));
  }
}

// The note tells one ISS: a single service has it, of several each has its own, whatever they come to. A note without
// a base has no ISS on its services.
Currency TNFSeSoftplan::BuscarValorISS(const TDadosRegistroA170& item, bool unico) const {
  const auto servico = GetNota().Filho<"DadosServico">();
  if (item.GetALIQ_ISS() <= 0 || servico.Valor("BaseCalculo") <= 0) return 0;
  return unico ? servico.Valor("ValorISSQN") : AplicarAliquota(item.GetVL_BC_ISS(), item.GetALIQ_ISS());
}

}  // namespace impnfse
