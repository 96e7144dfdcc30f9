#include "UnVX03704ImpNFSeFacility.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <span>
#include <type_traits>

#include "LinhaDeCampos.h"
#include "TabelaDeServicos.h"
#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"

namespace impnfse {
namespace {

constexpr char kSeparador = ';';

// Fields
// -------------------------------------------------------------------------------------------------------------

String ProximoTexto(TLinhaDeCampos& linha) { return String(Aparar(linha.CortarAte(kSeparador))); }

// A number may be blank, but every record goes on behind it: a line that doesn't was cut off, and what is left of its
// values would be other ones.
String ProximoNumero(TLinhaDeCampos& linha) {
  if (linha.Resto().find(kSeparador) == std::string_view::npos)
    throw EConversao("O arquivo está incompleto: uma linha termina no meio do registro.");
  return ProximoTexto(linha);
}

// Takes the next field off the line and puts it in its place.
template <class Registro>
using TCampo = void (*)(TLinhaDeCampos& linha, Registro& registro);

// So many fields that no register has.
template <std::size_t Quantidade = 1, class Registro>
void Pular(TLinhaDeCampos& linha, Registro& /*registro*/) {
  for (std::size_t i = 0; i < Quantidade; ++i) linha.CortarAte(kSeparador);
}

template <std::size_t Tamanho, class Registro>
void PularFixo(TLinhaDeCampos& linha, Registro& /*registro*/) {
  linha.Cortar(Tamanho, 1);
}

template <auto Membro, class Registro>
void Texto(TLinhaDeCampos& linha, Registro& registro) {
  registro.*Membro = ProximoTexto(linha);
}

template <auto Membro, std::size_t Tamanho, class Registro>
void TextoFixo(TLinhaDeCampos& linha, Registro& registro) {
  registro.*Membro = Aparar(linha.Cortar(Tamanho, 1));
}

template <auto Membro, class Registro>
void Inteiro(TLinhaDeCampos& linha, Registro& registro) {
  registro.*Membro = ConverterCampoInteiro(ProximoNumero(linha));
}

template <auto Membro, class Registro>
void Data(TLinhaDeCampos& linha, Registro& registro) {
  registro.*Membro = ConverterCampoData(ProximoNumero(linha));
}

// "." and "," are the same decimal mark: nothing groups thousands.
template <auto Membro, class Registro>
void Decimal(TLinhaDeCampos& linha, Registro& registro) {
  const auto texto = ProximoNumero(linha);
  if (std::ranges::count_if(texto, [](char c) { return c == '.' || c == ','; }) > 1)
    throw EConversao(fmt::format("'{}' não é um valor decimal válido", texto));
  registro.*Membro = ConverterCurrency(texto);
}

// The parties
// --------------------------------------------------------------------------------------------------------

// A CPF that was filled to the length of a CNPJ with zeros, on either side.
String RetirarZeros(const String& cpf) {
  constexpr std::size_t kTamanhoCPF = 11;
  constexpr std::string_view kZeros = "000";
  const auto inicio = Primeiros(cpf, kTamanhoCPF);
  const auto sobra = std::string_view(cpf).substr(inicio.size());
  if (!sobra.empty() && cpf.starts_with(kZeros))
    return String(Primeiros(std::string_view(cpf).substr(kZeros.size()), kTamanhoCPF));
  return sobra.starts_with(kZeros) ? String(inicio) : cpf;
}

// The party's number. `tipoDoCNPJ` is the kind that decides about a CNPJ: a party of neither kind has no field for one.
void LerNumero(TLinhaDeCampos& linha, TNFSeFacilityPessoa& pessoa, const String& tipoDoCNPJ) {
  pessoa.Cpf.clear();
  pessoa.Cnpj.clear();
  if (pessoa.TipoPessoa == "F")
    pessoa.Cpf = RetirarZeros(ProximoTexto(linha));
  else if (tipoDoCNPJ == "J")
    pessoa.Cnpj = ProximoTexto(linha);
}

void IdentificacaoDaPessoa(TLinhaDeCampos& linha, TNFSeFacilityPessoa& pessoa) {
  pessoa.SetTipoPessoa(ProximoTexto(linha));
  LerNumero(linha, pessoa, pessoa.TipoPessoa);
}

template <auto Membro>
void Pessoa(TLinhaDeCampos& linha, TNotaFacility& nota) {
  IdentificacaoDaPessoa(linha, nota.*Membro);
}

// In documents of exit the issuer's kind decides about the taker's CNPJ: that of a company billed by a person isn't
// read, and the fields behind it move up.
void TomadorDeSaida(TLinhaDeCampos& linha, TNotaFacility& nota) {
  nota.Tomador.SetTipoPessoa(ProximoTexto(linha));
  LerNumero(linha, nota.Tomador, nota.Prestador.TipoPessoa);
}

// A service line tells its issuer again.
void PularPrestador(TLinhaDeCampos& linha, TNFSeFacilityServico& /*servico*/) {
  TNFSeFacilityPessoa prestador;
  IdentificacaoDaPessoa(linha, prestador);
}

// Fields of one meaning
// ----------------------------------------------------------------------------------------------

void Cancelado(TLinhaDeCampos& linha, TNotaFacility& nota) { nota.Cancelado = ProximoTexto(linha) == "C"; }

void CodigoDoServico(TLinhaDeCampos& linha, TNFSeFacilityServico& servico) {
  servico.CodigoItemLista = std::to_string(ConverterCampoInteiro(ProximoNumero(linha)));
}

// Documents of entry name the service by its code alone.
void CodigoEDescricaoDoServico(TLinhaDeCampos& linha, TNFSeFacilityServico& servico) {
  CodigoDoServico(linha, servico);
  servico.Descricao = DescricaoDoServico(StrToIntDef(servico.CodigoItemLista, 0));
}

void CST(TLinhaDeCampos& linha, TNFSeFacilityServico& servico) {
  const auto texto = ProximoTexto(linha);
  servico.CST = Comprimento(texto) == 1 ? "0" + texto : texto;
}

void TributadoMunicipioPrestador(TLinhaDeCampos& linha, TNFSeFacilityServico& servico) {
  const auto texto = ProximoTexto(linha);
  servico.TributadoMunicipioPrestador = texto == "1" || texto == "S";
}

// The records
// --------------------------------------------------------------------------------------------------------

// The fields behind the record type, up to the last one that a register has.
using N = TNotaFacility;
using S = TNFSeFacilityServico;
using P = TNFSeFacilityPessoa;

constexpr TCampo<N> kNotaDeEntrada[] = {
    Pular<2>,
    Inteiro<&N::NumeroDoc>,
    Pular<>,
    Pessoa<&N::Prestador>,
    Pessoa<&N::Tomador>,
    Data<&N::DataEmissao>,
    Decimal<&N::ValorTotalNota>,
    Cancelado,
};

constexpr TCampo<S> kServicoDeEntrada[] = {
    Pular<8>,
    CodigoEDescricaoDoServico,
    Decimal<&S::Aliquota>,
    Decimal<&S::ValorTributavel>,
    Decimal<&S::Deducao>,
    Pular<>,  // the retained value
    Texto<&S::LocalPrestacao>,
    CST,
    TributadoMunicipioPrestador,
};

constexpr TCampo<N> kNotaDeSaida[] = {
    Pessoa<&N::Prestador>,
    Inteiro<&N::Serie>,
    Inteiro<&N::NumeroDoc>,
    Texto<&N::Chave>,
    Data<&N::DataEmissao>,
    Pular<>,  // the hour
    TomadorDeSaida,
    Decimal<&N::ValorTotalNota>,
    Decimal<&N::ValorDesconto>,
    Decimal<&N::ValorIR>,
    Decimal<&N::ValorINSS>,
    Decimal<&N::ValorCSLL>,
    Cancelado,
    PularFixo<250>,  // the document's remarks
    Pular<2>,        // date of and remarks on the cancellation
    Decimal<&N::ValorPis>,
    Decimal<&N::ValorCofins>,
};

constexpr TCampo<S> kServicoDeSaida[] = {
    PularPrestador,
    Pular<2>,  // the second one is the note's number
    CodigoDoServico,
    Decimal<&S::Aliquota>,
    TextoFixo<&S::Descricao, 250>,
    CST,
    Decimal<&S::ValorTributavel>,
    Decimal<&S::Deducao>,
    Pular<>,  // the retained value
    Texto<&S::LocalPrestacao>,
    TributadoMunicipioPrestador,
};

constexpr TCampo<P> kPessoa[] = {
    IdentificacaoDaPessoa,
    Texto<&P::Nome>,
    TextoFixo<&P::Endereco, 40>,
    Texto<&P::NR>,
    TextoFixo<&P::Complemento, 20>,
    Texto<&P::Bairro>,
    Texto<&P::Cidade>,
    Texto<&P::UF>,
    Texto<&P::CEP>,
};

template <class Registro>
void Ler(TLinhaDeCampos& linha, std::type_identity_t<std::span<const TCampo<Registro>>> campos, Registro& registro) {
  for (const auto campo : campos) campo(linha, registro);
}

// A piece of the report; none without documents.
String Relatar(std::string_view titulo, const std::vector<String>& documentos) {
  return documentos.empty() ? String() : fmt::format("{}: {}. ", titulo, fmt::join(documentos, ", "));
}

}  // namespace

void TNFSeFacilityPessoa::SetTipoPessoa(const String& valor) {
  if (valor.empty()) return;
  TipoPessoa = valor.starts_with('F') || valor.starts_with('J') ? valor : "J";
}

// The file
// -----------------------------------------------------------------------------------------------------------

void TNFSeFacility::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// The last note decides whether the file counts as imported. The error is always the report on all of them.
void TNFSeFacility::CarregarNFSe() {
  CarregarArquivo();
  std::vector<String> carregados;
  std::vector<String> naoCarregados;
  String erro;
  PercorrerNotasComProgresso(Notas, [&](const TNotaFacility& nota) {
    LimitarProgresso(Notas.Count());
    Importou = true;
    const bool entrada = TipoDocumento == TTipoDocumento::Entrada;
    const auto numero = std::to_string(nota.NumeroDoc);
    bool carregou = false;
    for (const auto lado : {entrada ? tpeDestinatario : tpeEmitente, entrada ? tpeEmitente : tpeDestinatario}) {
      if (!CarregouLado(lado)) continue;
      carregados.push_back(numero);
      carregou = true;
    }
    LimparDadosEmitenteDestinatario();
    if (!carregou) {
      Importou = false;
      SetTemErros(true);
      erro = BuscarErroNaoGerouBloco0();
      naoCarregados.push_back(numero);
    }
    ++NotaAtual;
  });
  Erro = Relatar("Documentos carregados", carregados) + Relatar("Documentos que não foram carregados", naoCarregados) +
         erro;
}

bool TNFSeFacility::CarregouLado(TTPEmpresaArquivo lado) {
  const auto busca = lado == tpeEmitente ? CarregouRegistro0000Emitente(kTipoRegistro0000)
                                         : CarregouRegistro0000Destinatario(kTipoRegistro0000);
  if (!busca.Carregou) return false;
  CarregarA100();
  IncluirFilialDocumento(lado, std::to_string(GetNota().NumeroDoc));
  return true;
}

void TNFSeFacility::CarregarArquivo() {
  TStringList arquivo;
  arquivo.LoadFromFile(GetArquivo());
  if (BarraProgresso != nullptr) BarraProgresso->BuscarBarraProgresso(1)->SetPosicao(0);
  LimitarProgresso(arquivo.Count());
  if (arquivo.Count() == 0) return;

  TLinhaDeCampos primeira(arquivo[0]);
  ProximoTexto(primeira);
  const auto tipo = ProximoTexto(primeira);
  if (tipo == "1") TipoDocumento = TTipoDocumento::EntradaDoTomador;
  if (tipo == "2") TipoDocumento = TTipoDocumento::Entrada;
  for (std::size_t i = 1; i < arquivo.Count(); ++i) LerLinha(arquivo[i]);
}

// Lines of other types are passed over, and so is what belongs to a note while none is open.
void TNFSeFacility::LerLinha(const String& texto) {
  TLinhaDeCampos linha(texto);
  const auto registro = ProximoTexto(linha);
  const bool saida = TipoDocumento == TTipoDocumento::Saida;
  if (registro == "10") {
    auto& nota = Notas.Add();
    saida ? Ler(linha, kNotaDeSaida, nota) : Ler(linha, kNotaDeEntrada, nota);
  } else if (registro == "20" && Notas.Count() > 0) {
    auto& servico = Notas.Ultima().Itens.emplace_back();
    saida ? Ler(linha, kServicoDeSaida, servico) : Ler(linha, kServicoDeEntrada, servico);
  } else if (registro == "30" && Notas.Count() > 0) {
    auto& nota = Notas.Ultima();
    Ler(linha, kPessoa, TipoDocumento == TTipoDocumento::Entrada ? nota.Prestador : nota.Tomador);
  }
}

// Both displays of this layout count up to the last index.
void TNFSeFacility::LimitarProgresso(std::size_t quantidade) {
  if (BarraProgresso != nullptr)
    BarraProgresso->BuscarBarraProgresso(1)->SetValorMaximo(static_cast<int>(quantidade) - 1);
}

String TNFSeFacility::GetCNPJCPFEmitente() { return GetNota().Prestador.GetNumero(); }

String TNFSeFacility::GetCNPJCPFDestinatario() { return GetNota().Tomador.GetNumero(); }

String TNFSeFacility::GetChave() { return GetNota().Chave; }

TDateTime TNFSeFacility::GetData() { return GetNota().DataEmissao; }

// The registers
// ------------------------------------------------------------------------------------------------------

void TNFSeFacility::CarregarA100() {
  const auto& nota = GetNota();
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(nota.NumeroDoc, nota.Cancelado);
  auto& a100 = *GetDadosA100();
  a100.SetSER(std::to_string(nota.Serie));
  if (nota.Cancelado) {
    // Of the cancelled notes only those of others keep their key.
    if (GetEmissao() == teTerceiros) a100.SetCHV_NFSE(GetChave());
    return ConcluirA100();
  }
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(nota.ValorTotalNota);
  a100.SetVL_DESC(nota.ValorDesconto);
  CarregarA170();
  CarregarA17R();
  a100.SetVL_PIS_RET(nota.ValorPis);
  a100.SetVL_COFINS_RET(nota.ValorCofins);
  MarcarISSRetido(DocumentoTemISSRetido());
  ConcluirA100();
}

void TNFSeFacility::Carregar0150() {
  CarregarDestinatario([&] { return LerParte(GetNota().Tomador); });
  CarregarEmitente([&] { return LerParte(GetNota().Prestador); });
}

TDadosParte TNFSeFacility::LerParte(const TNFSeFacilityPessoa& pessoa) {
  auto municipio = InteiroDosDigitos(BuscarMunicipio(pessoa.UF, pessoa.Cidade).CODIGOFEDERAL);
  if (municipio <= 0 && !pessoa.CEP.empty()) municipio = StrToIntDef(BuscarMunicipioPorCEP(pessoa.CEP, pessoa.UF), 0);
  return {.COD_MUN = municipio,
          .NOME = pessoa.Nome,
          .ENDERECO = pessoa.Endereco,
          .NUM = pessoa.NR,
          .COMPL = pessoa.Complemento,
          .BAIRRO = pessoa.Bairro,
          .UF = pessoa.UF};
}

Int64 TNFSeFacility::Carregar0200(const TNFSeFacilityServico& servico) {
  return CarregarItem({.DESCR_ITEM = servico.Descricao, .COD_LST = servico.CodigoItemLista});
}

// The note's discount stands on each of its lines, and all of them are number 1. The ISS of the note is that of its
// lines.
void TNFSeFacility::CarregarA170() {
  const auto& nota = GetNota();
  for (std::size_t i = 0; i < nota.Itens.size(); ++i) {
    const auto& servico = nota.Itens[i];
    auto item = NovoA170(Carregar0200(servico));
    item->SetVL_ITEM(servico.ValorTributavel);
    item->SetVL_DESC(nota.ValorDesconto);
    item->SetATIVIDADE(FormatarCodigoAtividade(servico.CodigoItemLista));
    item->SetDEDUCAOISS(servico.Deducao);
    item->SetALIQ_ISS(servico.Aliquota);
    item->SetTPRECOLHIMENTO(servico.CST);
    // Only the situations 0 to 5 have a base and ISS.
    if (const auto cst = StrToIntDef(servico.CST, -1); cst >= 0 && cst <= 5) {
      item->SetVL_BC_ISS(servico.ValorTributavel - servico.Deducao);
      item->SetVL_ISS(Arredondar(AplicarAliquota(item->GetVL_BC_ISS(), item->GetALIQ_ISS())));
    }
    GetDadosA100()->SetVL_ISS(GetDadosA100()->GetVL_ISS() + item->GetVL_ISS());
    item->SetMUNICIPIODEVISS(BuscarMunicipioDevidoISS(servico));
    item->SetChaveCondicaoAdicional(fmt::format("{}{}", NotaAtual, i));
    AdicionarA170(std::move(item));
  }
}

// Due to the issuer's municipality: the participant's in documents of entry of kind 2, the company's own in the others.
// Else due where the service was rendered and, but for that kind, to the participant's. The company's own is the last
// resort.
String TNFSeFacility::BuscarMunicipioDevidoISS(const TNFSeFacilityServico& servico) {
  const bool entrada = TipoDocumento == TTipoDocumento::Entrada;
  const auto participante = std::to_string(GetDados0150()->GetCOD_MUN());
  if (servico.TributadoMunicipioPrestador) return entrada ? MunicipioDevidoISS({participante}) : MunicipioDaFilial();
  const auto local = servico.LocalPrestacao.empty() ? String() : BuscarMunicipioPorSRF(servico.LocalPrestacao);
  return entrada ? MunicipioDevidoISS({local}) : MunicipioDevidoISS({local, participante});
}

// The layout has no value of retained ISS: its row, as any without a value, is offered and left out.
void TNFSeFacility::CarregarA17R() {
  const auto& nota = GetNota();
  InserirRetencao(receita::kISS, 0, 0, nota.Itens.empty() ? Currency() : nota.Itens.back().Aliquota);
  InserirRetencoesFederais(nota.ValorTotalNota, {.IR = nota.ValorIR,
                                                 .INSS = nota.ValorINSS,
                                                 .PIS = nota.ValorPis,
                                                 .COFINS = nota.ValorCofins,
                                                 .CSLL = nota.ValorCSLL});
}

}  // namespace impnfse
