// One note of the national schema into the registers.
#include <algorithm>

#include "UnVX03704BaseFuncoes.h"
#include "UnVX03704ImpNFSeAbrasf.h"
#include "VX03704Carregamento.h"
#include "VocabularioNacional.h"

namespace impnfse {
namespace {

// Numbers of 15 digits begin with the year; the registers take the rest.
constexpr std::size_t kAlgarismosDoNumero = 11;

// What NaturezaOperacao says of where the ISS is due.
constexpr std::string_view kForaDoMunicipio = "2";
constexpr std::string_view kNoMunicipioDoTomador = "111";
constexpr std::string_view kNoMunicipioDoTomadorComRetencao = "511";

bool EhMunicipio(const String& digitos) { return StrToIntDef(digitos, 0) > 0; }

}  // namespace

// The note
// -----------------------------------------------------------------------------------------------------------------

bool TNFSeAbrasf::EhForma(std::initializer_list<TEstruturaArquivo> formas) const {
  return std::find(formas.begin(), formas.end(), FEstruturaArquivo) != formas.end();
}

IXMLInfDeclaracaoAbrasf TNFSeAbrasf::GetDeclaracao() const {
  return GetNota().Filho<"DeclaracaoPrestacaoServico/InfDeclaracaoPrestacaoServico">();
}

IXMLDadosServicoAbrasf TNFSeAbrasf::GetServico() const { return FServico ? *FServico : GetNota().Filho<"Servico">(); }

String TNFSeAbrasf::GetChave() { return String(Aparar(GetNota().Texto("CodigoVerificacao"))); }

TDateTime TNFSeAbrasf::GetData() { return ConverterDataPelaBarra(GetNota().Texto("DataEmissao")); }

String TNFSeAbrasf::GetCNPJCPFEmitente() {
  return BuscarSomenteNumeros(LerCnpjOuCpf(GetNota().Filho<"PrestadorServico/IdentificacaoPrestador">()));
}

String TNFSeAbrasf::GetCNPJCPFDestinatario() {
  auto numero = LerCnpjOuCpf(GetNota().Filho<"TomadorServico/IdentificacaoTomador">());
  if (numero.empty() && EhForma({eaListaNfse, eaConsultarNfseRpsResposta, eaAbrasf, eaConsultarNfseFaixaResposta}))
    numero = LerCnpjOuCpf(GetDeclaracao().Filho<"Tomador/IdentificacaoTomador">());
  return BuscarSomenteNumeros(numero);
}

String TNFSeAbrasf::GetIEDestinatario() {
  if (!EhForma({eaConsultarNfseRpsResposta})) return {};
  return GetDeclaracao().Texto("Tomador/IdentificacaoTomador/InscricaoEstadual");
}

String TNFSeAbrasf::GetIMEmitente() {
  return GetNota().Texto("PrestadorServico/IdentificacaoPrestador/InscricaoMunicipal");
}

String TNFSeAbrasf::GetIMDestinatario() {
  auto inscricao = GetNota().Texto("TomadorServico/IdentificacaoTomador/InscricaoMunicipal");
  if (inscricao.empty() && EhForma({eaConsultarNfseRpsResposta, eaAbrasf}))
    inscricao = GetDeclaracao().Texto("Tomador/IdentificacaoTomador/InscricaoMunicipal");
  return inscricao;
}

// The document
// -------------------------------------------------------------------------------------------------------------

void TNFSeAbrasf::CarregarA100() {
  EscolherServico();
  IniciarA100();
  Carregar0150();
  FTemISSRetido = false;
  CarregarCabecalhoA100(NumeroDocumento(), FNotaCancelada);
  GetDadosA100()->SetSER(GetNota().Texto("Serie"));
  if (!FNotaCancelada) CarregarValoresA100();
  ImportarA100();
  CarregouAuxManutencao();
  DestroyA100();
}

// The declaration's service, once chosen, stays for the rest of the file.
void TNFSeAbrasf::EscolherServico() {
  const bool daDeclaracao =
      EhForma({eaConsultarNfseFaixaResposta}) ||
      (EhForma({eaConsultarNfseRpsResposta}) && GetNota().Texto("Servico/Discriminacao").empty()) || EhLeiaute("58");
  if (daDeclaracao) FServico = GetDeclaracao().Filho<"Servico">();
}

Int64 TNFSeAbrasf::NumeroDocumento() const {
  const auto numero = GetNota().Texto("Numero");
  return StrToInt64Def(EhForma({eaConsultarNfseResposta}) ? numero : Ultimos(numero, kAlgarismosDoNumero), 0);
}

void TNFSeAbrasf::CarregarValoresA100() {
  const auto valores = GetServico().Filho<"Valores">();
  auto& a100 = *GetDadosA100();
  CarregarExecucaoA100(BuscarDataExecucaoOuConclusaoServico());
  a100.SetVL_DOC(BuscarValorDocumento());
  a100.SetVL_DESC(valores.Valor("DescontoIncondicionado"));
  a100.SetVL_ISS(valores.Valor("ValorIss"));
  FSomaValorRetencaoCOFINSA170 = FSomaValorRetencaoPISA170 = FSomaValorISSA170 = 0;
  CarregarA170();
  if (a100.GetVL_ISS() <= 0 && FSomaValorISSA170 > 0) a100.SetVL_ISS(FSomaValorISSA170);
  a100.SetVL_PIS_RET(FSomaValorRetencaoPISA170);
  a100.SetVL_COFINS_RET(FSomaValorRetencaoCOFINSA170);
  MarcarISSRetido(DocumentoTemISSRetido());
}

Currency TNFSeAbrasf::BuscarValorDocumento() const {
  if (EhForma({eaConsultarNfseServicoPrestadoResposta, eaConsultarNfseFaixaResposta}))
    return GetDeclaracao().Valor("Servico/Valores/ValorServicos");
  const auto valores = GetServico().Filho<"Valores">();
  const auto valor = valores.Valor("ValorServicos") - valores.Valor("DescontoIncondicionado");
  return EhForma({eaConsultarNfseRpsResposta}) && valor <= 0 ? GetNota().Valor("ValoresNfse/ValorLiquidoNfse") : valor;
}

TDateTime TNFSeAbrasf::BuscarDataExecucaoOuConclusaoServico() {
  const auto emissaoRps = GetNota().Texto("DataEmissaoRps");
  const auto data = emissaoRps.empty() ? 0 : ConverteData(emissaoRps, fdAnoMesDia);
  return data > 0 ? data : GetData();
}

// Each step replaces what the steps before it have found.
String TNFSeAbrasf::BuscarCodigoMunicipioDevidoISS() {
  const auto declaracao = GetDeclaracao();
  const auto natureza = GetNota().Texto("NaturezaOperacao");
  auto municipio = BuscarSomenteNumeros(GetNota().Texto("Servico/CodigoMunicipio"));

  if (EhForma({eaConsultarNfseFaixaResposta}) && !EhMunicipio(municipio))
    municipio = BuscarSomenteNumeros(declaracao.Texto("Servico/MunicipioIncidencia"));

  if (EhForma({eaConsultarNfseRpsResposta, eaConsultarNfseFaixaResposta}) && !EhMunicipio(municipio)) {
    municipio = BuscarSomenteNumeros(declaracao.Texto("Servico/CodigoMunicipio"));
    if (!EhMunicipio(municipio)) municipio = BuscarSomenteNumeros(declaracao.Texto("Tomador/Endereco/CodigoMunicipio"));
  }

  const auto doTomador = GetTomadorServico().Texto("Endereco/CodigoMunicipio");
  if (!EhMunicipio(municipio) && natureza == kForaDoMunicipio && !Aparar(doTomador).empty())
    municipio = BuscarSomenteNumeros(doTomador);

  if (EhForma({eaConsultarNfseResposta}) && !EhMunicipio(municipio) &&
      (natureza == kNoMunicipioDoTomador || natureza == kNoMunicipioDoTomadorComRetencao))
    municipio = BuscarSomenteNumeros(doTomador);

  // This vendor's incidence counts whatever the note says.
  if (EhLeiaute("58")) {
    municipio = BuscarSomenteNumeros(declaracao.Texto("Servico/MunicipioIncidencia"));
    if (!EhMunicipio(municipio)) municipio = BuscarSomenteNumeros(declaracao.Texto("Tomador/Endereco/CodigoMunicipio"));
  }

  return EhMunicipio(municipio) ? municipio : MunicipioDaFilial();
}

// Some vendors write the rate as a fraction (0.0500), others as a percentage (5,00). A fraction is known by its length
// and its beginning: 0.12 and 0,05 are percentages.
Currency TNFSeAbrasf::BuscarAliquotaISSServico(const String& texto) const {
  constexpr std::size_t kMaiorSemConversao = 4;
  if (Comprimento(texto) <= kMaiorSemConversao || !(texto.starts_with("0.0") || texto.starts_with("0,0")))
    return ConverterCurrency(texto);
  return ConverterCurrency(texto.substr(3, 1) + "," + texto.substr(4));
}

// The month to which the service belongs, for the suite's load. Also a cancelled note has it.
void TNFSeAbrasf::CarregouAuxManutencao() {
  TRegistroAuxManutencao registro;
  registro.SetIDREG0000(GetDadosA100()->GetIDREG0000());
  registro.SetIDREG(GetDadosA100()->GetIDREGA100());
  registro.SetChaveAdicional(BuscarInstanciaFuncoes()->GerarHash(GetChave() + GetArquivo()));
  registro.SetCampo("DT_COMPETENCIA");
  registro.SetTipo("NFSE");
  registro.SetValor(DataComPontos(ConverterDataPelaBarra(GetNota().Texto("Competencia"))));
  auto& carregamento = *BuscarInstanciaCarregamento();
  carregamento.BuscarAuxManutencao(&registro);
  carregamento.ImportouArquivos();
  carregamento.LimpouInformacoes();
}

// The participants
// ---------------------------------------------------------------------------------------------------------

void TNFSeAbrasf::Carregar0150() {
  CarregarEmitente([&] {
    const auto prestador = GetNota().Filho<"PrestadorServico">();
    auto parte = LerEnderecoNacional(prestador.Filho<"Endereco">());
    parte.COD_MUN = StrToIntDef(prestador.Texto("Endereco/CodigoMunicipio"), 0);
    parte.NOME = prestador.Texto("RazaoSocial");
    parte.COD_PAIS = CodigoPais(prestador.Texto("Endereco/CodigoPais"));
    parte.OPTANTESIMPLES = GetNota().Texto("OptanteSimplesNacional") == "1" ? "S" : "N";
    return parte;
  });
  CarregarDestinatario(
      [&] {
        return TDadosParte{.COD_MUN = BuscarCodigoMunicipioTomador(),
                           .NOME = BuscarRazaoSocialTomador(),
                           .ENDERECO = BuscarEnderecoTomador(),
                           .NUM = BuscarNumeroEnderecoTomador(),
                           .COMPL = BuscarComplementoTomador(),
                           .BAIRRO = BuscarBairroTomador(),
                           .UF = BuscarUFTomador(),
                           .COD_PAIS = BuscarCodigoPaisTomador()};
      },
      {.PropriaEmpresa = true, .SemNumero = true});
}

// Of the taker, what the note doesn't say is read from the declaration, in every shape.
String TNFSeAbrasf::LerDoTomador(TCaminho<kFormatoAbrasf, "DadosTomador"> caminho) const {
  auto texto = GetTomadorServico().Texto(caminho);
  return texto.empty() ? GetDeclaracao().Filho<"Tomador">().Texto(caminho) : texto;
}
String TNFSeAbrasf::BuscarRazaoSocialTomador() const { return LerDoTomador("RazaoSocial"); }
String TNFSeAbrasf::BuscarEnderecoTomador() const { return LerDoTomador("Endereco/Endereco"); }
String TNFSeAbrasf::BuscarNumeroEnderecoTomador() const { return LerDoTomador("Endereco/Numero"); }
String TNFSeAbrasf::BuscarComplementoTomador() const { return LerDoTomador("Endereco/Complemento"); }
String TNFSeAbrasf::BuscarBairroTomador() const { return LerDoTomador("Endereco/Bairro"); }
String TNFSeAbrasf::BuscarUFTomador() const { return LerDoTomador("Endereco/Uf"); }

int TNFSeAbrasf::BuscarCodigoMunicipioTomador() const {
  const auto codigo = StrToIntDef(GetTomadorServico().Texto("Endereco/CodigoMunicipio"), 0);
  return codigo != 0 ? codigo : StrToIntDef(GetDeclaracao().Texto("Tomador/Endereco/CodigoMunicipio"), 0);
}

// An absent country reads as Brazil, so the declaration is asked only when the note has one that is no number.
int TNFSeAbrasf::BuscarCodigoPaisTomador() const {
  auto codigo = StrToIntDef(Aparar(GetTomadorServico().Texto("Endereco/CodigoPais")), 0);
  if (codigo == 0) codigo = StrToIntDef(GetDeclaracao().Texto("Tomador/Endereco/CodigoPais"), 0);
  return CodigoPais(codigo);
}

// The items and the retained taxes
// -----------------------------------------------------------------------------------------

void TNFSeAbrasf::CarregarA170() {
  auto texto = GetServico().Texto("Discriminacao");
  if (texto.empty()) texto = GetDeclaracao().Texto("Servico/Discriminacao");
  const auto municipio = BuscarCodigoMunicipioDevidoISS();
  const auto natureza = BuscarSomenteNumeros(GetNota().Texto("NaturezaOperacao"));
  for (const auto& item : BuscarProdutos(texto)) {
    auto a170 = NovoA170(Carregar0200(item), item.FNumeroItem);
    a170->SetVL_ITEM(item.FValor > 0 ? item.FValor : item.FValorUnitario * item.FQuantidade);
    a170->SetVL_DESC(item.FDesconto);
    a170->SetQTD(item.FQuantidade);
    a170->SetATIVIDADE(item.FCodigoAtividade);
    if (item.FValorISS + item.FValorIssRetido > 0) {
      a170->SetVL_BC_ISS(item.FBaseCalculoISS);
      a170->SetALIQ_ISS(item.FAliquotaISS);
      a170->SetVL_ISS(item.FValorISS > 0 ? item.FValorISS : item.FValorIssRetido);
      FSomaValorISSA170 += a170->GetVL_ISS();
    }
    a170->SetDEDUCAOISS(item.FDeducao);
    a170->SetMUNICIPIODEVISS(municipio);
    a170->SetAUX1(natureza);
    AdicionarA170(std::move(a170));
    CarregarA17R(item);
  }
}

Int64 TNFSeAbrasf::Carregar0200(const TItensNFSe& item) {
  return CarregarItem({.DESCR_ITEM = item.FDescricao, .COD_LST = std::to_string(item.FCOD_LST)});
}

void TNFSeAbrasf::CarregarA17R(const TItensNFSe& item) {
  FSomaValorRetencaoPISA170 += item.FValorPIS;
  FSomaValorRetencaoCOFINSA170 += item.FValorCOFINS;
  if (item.FISSRetido || item.FValorIssRetido > 0) {
    FTemISSRetido = true;
    InserirRetencao(receita::kISS, item.FBaseCalculoA17R,
                    item.FValorIssRetido > 0 ? item.FValorIssRetido : item.FValorISS, item.FAliquotaISS);
  }
  InserirRetencoesFederais(item.FBaseCalculoA17R, {.IR = item.FValorIR,
                                                   .INSS = item.FValorINSS,
                                                   .PIS = item.FValorPIS,
                                                   .COFINS = item.FValorCOFINS,
                                                   .CSLL = item.FValorCSLL});
}

}  // namespace impnfse
