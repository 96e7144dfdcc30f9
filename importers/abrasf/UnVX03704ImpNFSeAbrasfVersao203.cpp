#include "UnVX03704ImpNFSeAbrasfVersao203.h"

#include "UnVX03704BaseFuncoes.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

// The names of a note element, however the vendor writes its letters.
bool EhNota(std::string_view nome) {
  const auto maiusculo = Maiusculas(nome);
  return maiusculo == "NS2:COMPNFSE" || maiusculo == "COMPNFSE" || maiusculo == "COMPLNFSE";
}

// Only 1 is yes; S is not.
bool EhSim(const String& texto) { return StrToIntDef(texto, 0) == 1; }

}  // namespace

void TNFSeAbrasf_v203::Carregar() {
  TNFSeBase::Carregar();
  ComErroEstrutura([&] {
    // Serializers scatter it over a note. Where it is a declaration it says nothing; in a text it is no part of it.
    static constexpr std::array<std::string_view, 1> kNamespaceVazio = {"xmlns=\"\""};
    const auto documento = TArquivoXML(GetArquivo()).Documento(kNamespaceVazio);
    if (!CarregouArquivoXML(documento, documento->Raiz())) throw EXML("O arquivo não tem nenhuma nota.");
  });
}

bool TNFSeAbrasf_v203::CarregouArquivoXML(const std::shared_ptr<const TDocumentoXML>& documento, TNoXML no) {
  bool temNota = false;
  for (; no != TNoXML::Nenhum; no = documento->ProximoIrmao(no)) {
    if (EhNota(documento->Nome(no))) {
      const IXMLCompNfse_v203 comp(documento, no);
      FNota = comp.Filho<"Nfse/InfNfse">();
      FNotaCancelada = comp.Filho<"NfseCancelamento">();
      CarregouNota();
      temNota = true;
    } else if (CarregouArquivoXML(documento, documento->PrimeiroFilho(no))) {
      temNota = true;
    }
  }
  return temNota;
}

// The error flag is that of the last note alone, and a note that raises doesn't end the file.
void TNFSeAbrasf_v203::CarregouNota() {
  SetTemErros(false);
  ComErroEstrutura([&] {
    const auto numero = GetNota().Texto("Numero");
    CarregarDosDoisLados(
        numero, [&] { CarregouA100(); }, "Documento: " + numero + " - ");
  });
}

IXMLInfDeclaracao_v203 TNFSeAbrasf_v203::GetDeclaracao() const {
  return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

String TNFSeAbrasf_v203::GetCNPJCPFEmitente() {
  return BuscarSomenteNumeros(
      LerCnpjOuCpfNacional(GetNota().Filho<"PrestadorServico/IdentificacaoPrestador/CpfCnpj">()));
}

String TNFSeAbrasf_v203::GetIMEmitente() {
  return GetNota().Texto("PrestadorServico/IdentificacaoPrestador/InscricaoMunicipal");
}

String TNFSeAbrasf_v203::GetCNPJCPFDestinatario() {
  return BuscarSomenteNumeros(LerCnpjOuCpfNacional(GetDeclaracao().Filho<"Tomador/IdentificacaoTomador/CpfCnpj">()));
}

String TNFSeAbrasf_v203::GetIMDestinatario() {
  return GetDeclaracao().Texto("Tomador/IdentificacaoTomador/InscricaoMunicipal");
}

String TNFSeAbrasf_v203::GetChave() { return GetNota().Texto("CodigoVerificacao"); }

TDateTime TNFSeAbrasf_v203::GetData() { return ConverterDataPelaBarra(GetNota().Texto("DataEmissao")); }

bool TNFSeAbrasf_v203::GetDocumentoTemISSRetido() { return EhSim(GetDeclaracao().Texto("Servico/IssRetido")); }

// Some municipalities send an empty cancellation with every note: only the date in it tells.
bool TNFSeAbrasf_v203::NotaEstaCancelado() const { return !FNotaCancelada.Texto("Confirmacao/DataHora").empty(); }

// The municipality's own figure stands in for a value that wasn't declared.
Currency TNFSeAbrasf_v203::BuscarValorISS() const {
  const auto declarado = GetDeclaracao().Valor("Servico/Valores/ValorIss");
  return declarado == 0 ? GetNota().Valor("ValoresNfse/ValorIss") : declarado;
}

String TNFSeAbrasf_v203::BuscarCodigoMunicipioDevidoISS() {
  const auto declaracao = GetDeclaracao();
  return MunicipioDevidoISS({declaracao.Texto("Servico/MunicipioIncidencia"),
                             declaracao.Texto("Servico/CodigoMunicipio"),
                             declaracao.Texto("Tomador/Endereco/CodigoMunicipio")});
}

void TNFSeAbrasf_v203::CarregouA100() {
  IniciarA100();
  Carregou0150();
  CarregarCabecalhoA100(StrToInt64Def(GetNota().Texto("Numero"), 0), NotaEstaCancelado());
  if (!NotaEstaCancelado()) {
    CarregarExecucaoA100(GetData());
    const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
    const auto desconto = valores.Valor("DescontoIncondicionado");
    const auto valor = valores.Valor("ValorServicos") - desconto;
    auto& a100 = *GetDadosA100();
    a100.SetVL_DOC(valor > 0 ? valor : GetNota().Valor("ValoresNfse/ValorLiquidoNfse"));
    a100.SetVL_DESC(desconto);
    a100.SetVL_ISS(BuscarValorISS());
    a100.SetVL_PIS_RET(valores.Valor("ValorPis"));
    a100.SetVL_COFINS_RET(valores.Valor("ValorCofins"));
    CarregouA170();
    CarregouA17R();
    MarcarISSRetido(GetDocumentoTemISSRetido());
  }
  ConcluirA100();
}

void TNFSeAbrasf_v203::Carregou0150() {
  CarregarEmitente([&] {
    auto dados = LerParteNacional(GetNota().Filho<"PrestadorServico">());
    dados.OPTANTESIMPLES = EhSim(GetDeclaracao().Texto("OptanteSimplesNacional")) ? "S" : "N";
    return dados;
  });
  CarregarDestinatario(
      [&] {
        const auto tomador = GetDeclaracao().Filho<"Tomador">();
        auto dados = LerParteNacional(tomador);
        // Of the taker's code, unlike the issuer's, the dots don't count.
        dados.COD_MUN = InteiroDosDigitos(tomador.Texto("Endereco/CodigoMunicipio"));
        return dados;
      },
      {.PropriaEmpresa = true, .SemNumero = true});
}

Int64 TNFSeAbrasf_v203::Carregou0200() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  return CarregarItem({.DESCR_ITEM = servico.Texto("Discriminacao"), .COD_LST = servico.Texto("ItemListaServico")});
}

void TNFSeAbrasf_v203::CarregouA170() {
  const auto servico = GetDeclaracao().Filho<"Servico">();
  const auto valores = servico.Filho<"Valores">();
  const auto aliquota = valores.Valor("Aliquota");
  auto item = NovoA170(Carregou0200());
  item->SetVL_ITEM(valores.Valor("ValorServicos"));
  item->SetATIVIDADE(FormatarCodigoAtividade(servico.Texto("ItemListaServico")));
  item->SetVL_BC_ISS(GetNota().Valor("ValoresNfse/BaseCalculo"));
  item->SetDEDUCAOISS(valores.Valor("ValorDeducoes"));
  item->SetVL_ISS(BuscarValorISS());
  item->SetALIQ_ISS(aliquota == 0 ? GetNota().Valor("ValoresNfse/Aliquota") : aliquota);
  item->SetMUNICIPIODEVISS(BuscarCodigoMunicipioDevidoISS());
  item->SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  AdicionarA170(std::move(item));
}

// Retained is what was declared: here the municipality's figures don't stand in, except for the base.
void TNFSeAbrasf_v203::CarregouA17R() {
  const auto valores = GetDeclaracao().Filho<"Servico/Valores">();
  const auto base = GetNota().Valor("ValoresNfse/BaseCalculo");
  if (GetDocumentoTemISSRetido())
    InserirRetencao(receita::kISS, base, valores.Valor("ValorIss"), valores.Valor("Aliquota"));
  InserirRetencoesFederais(base, LerRetencoesNacionais(valores));
}

}  // namespace impnfse
