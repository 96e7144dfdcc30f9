#include "UnVX03704ImpNFSeBase.h"

#include <fmt/format.h>

#include "UnVX03704BaseFuncoes.h"
#include "VX03704Carregamento.h"
#include "VXConnection.h"
#include "VXUtils.h"

namespace impnfse {
namespace {

// The one bar of the progress display.
constexpr int kBarra = 1;

constexpr std::string_view kSemCodigo = "SEMCOD";
constexpr int kTipoItemServico = 9;
constexpr int kUmaUnidade = 1;

constexpr std::string_view kDivergencia =
    "Existem divergências entre o leiaute da nota importada com o leiaute da NFSe suportada pelo sistema.Entre em "
    "contato com a concessionária autorizada para que seja providenciada a correção/atualização do leiaute.";

// COD_SIT.
constexpr int kRegular = 0;
constexpr int kCancelado = 2;

}  // namespace

int CodigoMunicipio(std::string_view texto) { return StrToIntDef(Substituir(texto, ".", ""), 0); }

int CodigoPais(int codigo) { return codigo > 0 ? codigo : TDadosRegistro0150::kBrasil; }

int CodigoPais(std::string_view texto) { return CodigoPais(StrToIntDef(Aparar(texto), 0)); }

// Placing a note
// -----------------------------------------------------------------------------------------------------

TBuscarID TNFSeBase::CarregouRegistro0000Emitente(int tipo) {
  auto busca = TImpDocEletBase::CarregouRegistro0000Emitente(tipo);
  if (busca.Carregou) GravarCodigoLeiauteNFSe();
  return busca;
}

TBuscarID TNFSeBase::CarregouRegistro0000Destinatario(int tipo) {
  auto busca = TImpDocEletBase::CarregouRegistro0000Destinatario(tipo);
  if (busca.Carregou) GravarCodigoLeiauteNFSe();
  return busca;
}

void TNFSeBase::GravarCodigoLeiauteNFSe() {
  if (DadosArquivo.TipoImportacao != "NFSE") return;
  auto& empresa = *GetDadosEmpresaImportacao();
  const auto& filial = empresa.GetDadosFilial();
  auto sql = fmt::format(
      "UPDATE OR INSERT INTO CA06_IMPORTACFG (IDIMPORTACFG, IDEMPRESA, IDFILIAL, ORIGEM, TP, DATAINICIO, "
      "INFORMACAO3)\nVALUES (GEN_ID(GN_CA06_IMPORTACFG, 1), {}, {}, 1000, 3, {}, {} ) MATCHING (IDEMPRESA, "
      "IDFILIAL, "
      "ORIGEM, TP)",
      filial.IDEMPRESA, filial.IDFILIAL, FormatarDataConsultaSQL(empresa.DataInicial),
      CitarSQL(DadosArquivo.CodigoLeiaute));
  // The notes of a file nearly always say the same as the one before: what is already remembered isn't sent again.
  if (sql == FLeiauteGravado) return;
  TResultStatus status;
  VXConnection->ExecutouSQL(sql, 0, true, status);
  if (status.Sucesso)
    FLeiauteGravado = std::move(sql);
  else
    GVXUtilsDialogs->Informacao(status.Mensagem);
}

bool TNFSeBase::CarregarDosDoisLados(const String& numero, const std::function<void()>& carregarA100,
                                     const std::optional<String>& prefixoErro) {
  bool carregou = false;
  const auto carregar = [&](const TBuscarID& busca, TTPEmpresaArquivo lado) {
    if (!busca.Carregou) return;
    carregarA100();
    IncluirFilialDocumento(lado, numero);
    Importou = true;
    carregou = true;
  };
  carregar(CarregouRegistro0000Emitente(kTipoRegistro0000), tpeEmitente);
  carregar(CarregouRegistro0000Destinatario(kTipoRegistro0000), tpeDestinatario);
  LimparDadosEmitenteDestinatario();
  Erro.clear();
  if (carregou) return true;
  SetTemErros(true);
  Erro = BuscarErroNaoGerouBloco0();
  if (prefixoErro) GetListaErros().Add(*prefixoErro + Erro);
  return false;
}

void TNFSeBase::CarregarDeUmLado(const TBuscarID& lado, const std::function<void()>& carregarNotas) {
  if (lado.Carregou) {
    carregarNotas();
  } else {
    SetTemErros(true);
    Erro = BuscarErroNaoGerouBloco0();
  }
  LimparDadosEmitenteDestinatario();
}

void TNFSeBase::ConcluirPeloErro() {
  Importou = Aparar(GetErro()).empty();
  if (!Importou) SetTemErros(true);
}

void TNFSeBase::TratarErroEstrutura(TMarcaDeErro marca) {
  DestroyA100();
  BuscarInstanciaCarregamento()->LimpouInformacoes();
  LimparDadosEmitenteDestinatario();
  if (marca == TMarcaDeErro::TextoESinal) SetTemErros(true);
  Erro = BuscarErroEstruturaArquivo();
}

// Progress
// -----------------------------------------------------------------------------------------------------------

void TNFSeBase::IniciarProgresso(std::size_t quantidade) {
  if (BarraProgresso == nullptr) return;
  auto* const barra = BarraProgresso->BuscarBarraProgresso(kBarra);
  barra->SetPosicao(0);
  barra->SetValorMaximo(static_cast<int>(quantidade));
}

String TNFSeBase::TextoProgresso(std::size_t indice, std::size_t ultimo) const {
  return fmt::format("Carregando documento {} de {}. {}", indice, ultimo, GetArquivo());
}

void TNFSeBase::MostrarProgresso(const String& texto) {
  if (BarraProgresso == nullptr) return;
  BarraProgresso->BuscarBarraProgresso(kBarra)->SetTexto(texto);
  Application->ProcessMessages();
}

void TNFSeBase::AvancarProgresso() {
  if (BarraProgresso == nullptr) return;
  BarraProgresso->BuscarBarraProgresso(kBarra)->AvancarProgresso(0);
  Application->ProcessMessages();
}

// The file's destination
// ---------------------------------------------------------------------------------------------

const String& TNFSeBase::BuscarDiretorioDestinoArquivo() {
  return DiretorioDestino = BuscarDiretorioDestinoArquivo("NFSe");
}

bool TNFSeBase::MoveuArquivo() {
  TMoverArquivoIOP mover;
  mover.SetArquivoDestino(ArmazenouDocumento() ? DiretorioDestino : String());
  mover.SetArquivoOrigem(GetArquivo());
  const bool moveu = mover.MoveuArquivo();
  Resumo().Moveu = moveu;
  Resumo().Destino = mover.GetArquivoFinal();
  Resumo().FalhaAoMover = mover.GetFalha();
  return moveu;
}

// The document
// -------------------------------------------------------------------------------------------------------

TDadosRegistroA100* TNFSeBase::GetDadosA100() {
  if (DadosA100 == nullptr) {
    DadosA100 = std::make_unique<TDadosRegistroA100>();
    DadosA100->SetIDREG0000(GetIDREG0000());
  }
  return DadosA100.get();
}

void TNFSeBase::IniciarA100() {
  DestroyA100();
  *GetDados0150() = {};
  IDParticipante = 0;
}

void TNFSeBase::CarregarIdentificacaoA100() {
  auto& a100 = *GetDadosA100();
  a100.SetIDREGA100(BuscarID("A100", true).ID);
  a100.SetTPIMPORTACAO(teaDocumentoEletronico);
  // A file name may be in an older encoding than the system's; a register's text is UTF-8.
  a100.SetCAMINHOARQORIG(DecodificarTexto(GetArquivo()));
  a100.SetCAMINHOARQDEST(DecodificarTexto(BuscarDiretorioDestinoArquivo()));
  a100.SetIND_OPER(GetOrigem());
  a100.SetIND_EMIT(GetEmissao());
  a100.SetCOD_PART(std::to_string(IDParticipante));
}

void TNFSeBase::CarregarCabecalhoA100(Int64 numero, bool cancelado) {
  CarregarIdentificacaoA100();
  auto& a100 = *GetDadosA100();
  a100.SetNUM_DOC(numero);
  a100.SetDT_DOC(GetData());
  a100.SetCOD_SIT(cancelado ? kCancelado : kRegular);
}

void TNFSeBase::CarregarExecucaoA100(TDateTime execucao) {
  auto& a100 = *GetDadosA100();
  a100.SetIND_PGTO("0");
  a100.SetDT_EXE_SERV(execucao);
  a100.SetCHV_NFSE(GetChave());
}

TDateTime TNFSeBase::ConverterDataLocalOuISO(const String& texto) {
  const auto data = StrToDateDef(texto, 0);
  return data > 0 ? data : ConverteData(texto, fdAnoMesDia);
}

TDateTime TNFSeBase::ConverterDataISOOuLocal(const String& texto) {
  const auto data = ConverteData(texto, fdAnoMesDia);
  return data > 0 ? data : StrToDateDef(texto, 0);
}

TDateTime TNFSeBase::ConverterDataPelaBarra(const String& texto) {
  return ConverteData(texto, Ultimos(Primeiros(texto, 3), 1) == "/" ? fdDiaMesAno : fdAnoMesDia);
}

void TNFSeBase::MarcarISSRetido(bool retido) {
  if (retido) GetDadosA100()->SetTEMISSRETIDO(1);
}

void TNFSeBase::ConcluirA100() {
  ImportarA100();
  DestroyA100();
}

void TNFSeBase::ImportarA100(TDadosRegistroA100& documento) {
  InserirRegistro(&documento, true);
  if (!documento.DeveIncluir()) return;
  const auto inserirFilhos = [&](const auto& lista) {
    for (const auto& filho : lista.Values())
      if (filho->DeveIncluir()) InserirRegistro(filho.get(), false);
  };
  inserirFilhos(documento.GetListaDadosA17R());
  inserirFilhos(documento.GetListaDadosA170());
  inserirFilhos(documento.GetListaMSG());
}

// The participants
// ---------------------------------------------------------------------------------------------------

void TNFSeBase::CarregarEmitente(const TLerParte& lerParte, TSemNumero semNumero) {
  const auto numero = GetCNPJCPFEmitente();
  if (numero == GetDadosEmpresaImportacao()->GetDadosFilial().CNPJ) return;
  BuscarOuInserirParticipante(numero, GetIEEmitente(), lerParte(), semNumero);
}

void TNFSeBase::CarregarDestinatario(const TLerParte& lerParte, TRegraDestinatario regra) {
  const auto numero = GetCNPJCPFDestinatario();
  const bool ehAFilial = numero == GetDadosEmpresaImportacao()->GetDadosFilial().CNPJ;
  if (ehAFilial && !(regra.PropriaEmpresa && GetCNPJCPFEmitente() == numero)) return;
  BuscarOuInserirParticipante(numero, GetIEDestinatario(), lerParte(),
                              regra.SemNumero ? TSemNumero::Participa : TSemNumero::NaoParticipa);
}

void TNFSeBase::BuscarOuInserirParticipante(const String& numero, const String& ie, const TDadosParte& parte,
                                            TSemNumero semNumero) {
  if (EncontrouParticipante(numero, ie, parte)) return;
  if (!numero.empty() || semNumero == TSemNumero::Participa) InserirParticipante(numero, ie, parte);
}

bool TNFSeBase::EncontrouParticipante(const String& numero, const String& ie, const TDadosParte& parte) {
  const TDadosPesquisaRegistro0150IOP chave{
      .CNPJCPF = numero, .IE = ie, .COD_MUN = parte.BuscaSemMunicipio ? 0 : parte.COD_MUN};
  IDParticipante = BuscarIdParticipante(&chave);
  return IDParticipante != 0;
}

void TNFSeBase::InserirParticipante(const String& numero, const String& ie, const TDadosParte& parte) {
  IDParticipante = BuscarProximoCodigoParticipante();
  auto& participante = *GetDados0150();
  participante = {};
  participante.SetIDREG0000(parte.IDREG0000);
  participante.SetIDREG0150(BuscarID("0150", true).ID);
  participante.SetCOD_PART(std::to_string(IDParticipante));
  participante.SetNOME(parte.NOME);
  const bool ehCPF = !parte.SempreCNPJ && Comprimento(numero) < kTamanhoCNPJ;
  participante.SetCPF(ehCPF ? numero : "");
  participante.SetCNPJ(ehCPF ? "" : numero);
  participante.SetIE(ie);
  participante.SetCOD_MUN(parte.COD_MUN);
  participante.SetENDERECO(parte.ENDERECO);
  participante.SetNUM(parte.NUM);
  participante.SetCOMPL(parte.COMPL);
  participante.SetBAIRRO(parte.BAIRRO);
  const bool ufDoMunicipio = parte.UF.empty() && !parte.SemUFDoMunicipio;
  participante.SetUF(ufDoMunicipio ? BuscarUFMunicipio(std::to_string(parte.COD_MUN)) : parte.UF);
  participante.SetCOD_PAIS(parte.COD_PAIS);
  participante.SetOPTANTESIMPLES(parte.OPTANTESIMPLES);
  participante.SetMUNICIPIO(parte.MUNICIPIO);
  participante.SetIDMUNICIPIO(parte.IDMUNICIPIO);
  participante.SetTPIMPORTACAO(teaDocumentoEletronico);
  InserirRegistro(&participante, false);
}

// The items and the retained taxes
// -----------------------------------------------------------------------------------

Int64 TNFSeBase::CarregarItem(const TDadosServico& servico) {
  const auto configuracao = GetDadosEmpresaImportacao()->GetConfiguracao()->GetConfiguracao();
  TDadosRegistro0200 item;
  item.SetRemoverCaracteresEspeciaisNome(
      TDadosRegistro0200::GetRemoverCaracteresEspeciaisDescricaoNFSe(configuracao.REMOVERCARACTERES));
  item.SetIDREG0000(GetIDREG0000());
  item.SetCOD_ITEM(String(kSemCodigo));
  item.SetCOD_PART(GetDados0150()->GetCOD_PART());
  item.SetIND_EMIT(GetDadosA100()->GetIND_EMIT());
  item.SetDESCR_ITEM(servico.DESCR_ITEM);
  item.SetTPIMPORTACAO(teaDocumentoEletronico);
  item.SetTIPO_ITEM(kTipoItemServico);
  item.SetCOD_GEN(0);
  item.SetCOD_LST(servico.COD_LST);
  item.SetUNID_INV(servico.UNID_INV);
  BuscarDadosRegistro0200Descricao(&item);
  if (item.GetIDREG0200() <= 0) {
    item.SetIDREG0200(BuscarID("0200", true).ID);
    InserirRegistro(&item, false);
  }
  return item.GetIDREG0200();
}

std::unique_ptr<TDadosRegistroA170> TNFSeBase::NovoA170(Int64 idItem, int numero) {
  auto a170 = std::make_unique<TDadosRegistroA170>();
  a170->SetIDREG0000(GetDadosA100()->GetIDREG0000());
  a170->SetIDREGA100(GetDadosA100()->GetIDREGA100());
  a170->SetIDREGA170(BuscarID("A170", true).ID);
  a170->SetIDREG0200(idItem);
  a170->SetNUM_ITEM(numero);
  a170->SetCOD_ITEM(String(kSemCodigo));
  a170->SetQTD(kUmaUnidade);
  a170->SetUNID("UN");
  a170->SetCFOPICMS(BuscarCFOPIcmsServico());
  a170->SetMUNICIPIODEVISS(MunicipioDaFilial());
  return a170;
}

void TNFSeBase::AdicionarA170(std::unique_ptr<TDadosRegistroA170> item) {
  const auto chave = item->GetChaveDicionario();
  GetDadosA100()->GetListaDadosA170().Add(chave, std::move(item));
}

String TNFSeBase::MunicipioDaFilial() {
  return BuscarSomenteNumeros(GetDadosEmpresaImportacao()->GetDadosFilial().CODIGOMUNICIPIO);
}

String TNFSeBase::MunicipioDevidoISS(std::initializer_list<String> codigos) {
  for (const auto& codigo : codigos) {
    auto digitos = BuscarSomenteNumeros(codigo);
    if (StrToIntDef(digitos, 0) > 0) return digitos;
  }
  return MunicipioDaFilial();
}

void TNFSeBase::InserirMensagemDivergencia() {
  auto& a100 = *GetDadosA100();
  auto mensagem = std::make_unique<TDadosRegistro0000MSG>();
  mensagem->SetIDREG(a100.GetIDREGA100());
  mensagem->SetIDREG0000(a100.GetIDREG0000());
  mensagem->SetINFORMACAO4(String(kDivergencia));
  const auto chave = mensagem->GetChaveDicionario();
  a100.GetListaMSG().Add(chave, std::move(mensagem));
}

void TNFSeBase::InserirRetencao(std::string_view codigo, Currency base, Currency valor, Currency aliquota) {
  GetDadosA100()->InserirA17R({.IDREGA17R = BuscarID("A17R", true).ID,
                               .COD_RECEITA = String(codigo),
                               .VL_BC = base,
                               .VL_IMPOSTO = valor,
                               .ALIQUOTA = aliquota});
}

void TNFSeBase::InserirRetencoesFederais(Currency base, const TRetencoesFederais& valores) {
  InserirRetencao(receita::kIR, base, valores.IR);
  InserirRetencao(receita::kINSS, base, valores.INSS);
  InserirRetencao(receita::kPIS, base, valores.PIS);
  InserirRetencao(receita::kCOFINS, base, valores.COFINS);
  InserirRetencao(receita::kCSLL, base, valores.CSLL);
}

void TNFSeBase::CarregarA17R() {
  CarregarISSRetido();
  CarregarIRRetido();
  CarregarINSSRetido();
  CarregarPISRetido();
  CarregarCOFINSRetido();
  CarregarCSLLRetido();
}

void TNFSeBase::CarregarISSRetido() {
  if (GetDocumentoTemISSRetido()) InserirRetencao(receita::kISS, GetBaseCalculo(), GetValorISS(), GetAliquotaISS());
}
void TNFSeBase::CarregarIRRetido() { InserirRetencao(receita::kIR, GetBaseCalculo(), GetValorIR()); }
void TNFSeBase::CarregarINSSRetido() { InserirRetencao(receita::kINSS, GetBaseCalculo(), GetValorINSS()); }
void TNFSeBase::CarregarPISRetido() { InserirRetencao(receita::kPIS, GetBaseCalculo(), GetValorPIS()); }
void TNFSeBase::CarregarCOFINSRetido() { InserirRetencao(receita::kCOFINS, GetBaseCalculo(), GetValorCOFINS()); }
void TNFSeBase::CarregarCSLLRetido() { InserirRetencao(receita::kCSLL, GetBaseCalculo(), GetValorCSLL()); }

}  // namespace impnfse
