#include "UnVX03704ImpNFSeBlumenau.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <span>
#include <type_traits>
#include <variant>

#include "LinhaDeCampos.h"
#include "UnVX03704BaseFuncoes.h"
#include "VX03704Erros.h"

namespace impnfse {
namespace {

// The shape of a line: the separator of its fields, none when they have fixed widths.
using TTipoArquivo = std::optional<char>;

TTipoArquivo BuscarTipoArquivo(const String& linha) {
  constexpr std::size_t kInicio = 30;
  const auto inicio = Primeiros(linha, kInicio);
  for (const char separador : {'\t', ';'})
    if (inicio.find(separador) != inicio.npos) return separador;
  return std::nullopt;
}

// The record
// ---------------------------------------------------------------------------------------------------------

struct TCampoLido {
  std::variant<String, int, Currency> Valor;
  bool LarguraFixa;  // of the line

  const String& Texto() const { return std::get<String>(Valor); }
  int Inteiro() const { return std::get<int>(Valor); }
};

struct TCampo {
  std::size_t Largura;  // 0: the rest of the line
  TTipoDeDado Tipo = tdTexto;
  void (*Guardar)(TNotaServico& nota, const TCampoLido& campo) = nullptr;  // null: read past
};

template <auto Membro>
void NaNota(TNotaServico& nota, const TCampoLido& campo) {
  auto& destino = nota.*Membro;
  destino = std::get<std::remove_reference_t<decltype(destino)>>(campo.Valor);
}

template <auto Membro>
void NoTomador(TNotaServico& nota, const TCampoLido& campo) {
  nota.Tomador.*Membro = campo.Texto();
}

// 0 for a text that is no date.
TDateTime ConverterData(std::string_view texto, bool larguraFixa) {
  return ConverteData(texto, larguraFixa ? fdAnoMesDia : fdDiaMesAno);
}

// What stands behind the day is the time.
void GuardarDataEmissao(TNotaServico& nota, const TCampoLido& campo) {
  constexpr std::size_t kAnoMesDia = 8;
  constexpr std::size_t kDiaMesAno = 10;
  const auto dia = Primeiros(campo.Texto(), campo.LarguraFixa ? kAnoMesDia : kDiaMesAno);
  nota.DataEmissao = ConverterData(dia, campo.LarguraFixa);
  if (nota.DataEmissao == 0) throw EConversao(fmt::format("'{}' não é uma data válida", dia));
}

// The date of the cancellation becomes the note's own on a line of fixed width, and stays apart on the others. Here the
// situation counts in either case.
void GuardarDataCancelamento(TNotaServico& nota, const TCampoLido& campo) {
  if (Maiusculas(nota.Situacao) != "C") return;
  const auto data = campo.Texto().empty() ? nota.DataEmissao : ConverterData(campo.Texto(), campo.LarguraFixa);
  if (data != 0) (campo.LarguraFixa ? nota.DataEmissao : nota.DataCancelamento) = data;
}

void GuardarTipoTributacao(TNotaServico& nota, const TCampoLido& campo) {
  const auto codigo = campo.Inteiro();
  nota.TipoTributacao = codigo == 4 ? 1 : codigo == 5 ? 2 : codigo == 7 ? 3 : 0;
}

// Without the zeros ahead. A code that isn't a number is no code.
void GuardarCodigoServico(TNotaServico& nota, const TCampoLido& campo) {
  const auto codigo = StrToIntDef(campo.Texto(), 0);
  nota.CodigoServico = codigo == 0 ? "" : std::to_string(codigo);
}

void GuardarISSRetido(TNotaServico& nota, const TCampoLido& campo) { nota.ISSRetido = campo.Inteiro() == 1; }

void GuardarTipoPessoa(TNotaServico& nota, const TCampoLido& campo) {
  nota.Tomador.TipoPessoa = campo.Texto() == "2" ? "J" : "F";
}

// A CPF stands behind the zeros that fill the field.
void GuardarCNPJCPF(TNotaServico& nota, const TCampoLido& campo) {
  constexpr std::size_t kTamanhoCPF = 11;
  const auto tamanho = nota.Tomador.TipoPessoa == "J" ? kTamanhoCNPJ : kTamanhoCPF;
  nota.Tomador.CNPJCPF = Ultimos(BuscarSomenteNumeros(campo.Texto()), tamanho);
}

// A registration of zeros is none; one with letters ("ISENTO") stays.
void GuardarIE(TNotaServico& nota, const TCampoLido& campo) {
  nota.Tomador.IE = StrToInt64Def(campo.Texto(), 1) > 0 ? campo.Texto() : "";
}

using N = TNotaServico;
using P = TPessoa;

constexpr std::array kCampos = {
    TCampo{1},  // the record type
    TCampo{15, tdInteiro, NaNota<&N::Numero>},
    TCampo{14, tdTexto, GuardarDataEmissao},
    TCampo{8, tdTexto, NaNota<&N::CodigoVerificacao>},
    // The receipt that became the note, then the issuer: the branch itself.
    TCampo{1},
    TCampo{5},
    TCampo{15},
    TCampo{8},
    TCampo{15},
    TCampo{1},
    TCampo{14},
    TCampo{115},
    TCampo{3},
    TCampo{100},
    TCampo{10},
    TCampo{60},
    TCampo{72},
    TCampo{50},
    TCampo{2},
    TCampo{8},
    TCampo{80},
    TCampo{1, tdInteiro, GuardarTipoTributacao},
    TCampo{1, tdTexto, NaNota<&N::Situacao>},
    TCampo{8, tdTexto, GuardarDataCancelamento},
    TCampo{15},
    TCampo{8},
    TCampo{15, tdMoeda, NaNota<&N::ValorServicos>},
    TCampo{15, tdMoeda, NaNota<&N::ValorDeducoes>},
    TCampo{8, tdTexto, GuardarCodigoServico},
    TCampo{5, tdMoeda, NaNota<&N::Aliquota>},
    TCampo{15, tdMoeda, NaNota<&N::ValorISS>},
    TCampo{15, tdMoeda, NaNota<&N::ValorCredito>},
    TCampo{1, tdInteiro, GuardarISSRetido},
    TCampo{1, tdTexto, GuardarTipoPessoa},
    TCampo{14, tdTexto, GuardarCNPJCPF},
    TCampo{15},
    TCampo{15, tdTexto, GuardarIE},
    TCampo{115, tdTexto, NoTomador<&P::Nome>},
    TCampo{3},
    TCampo{100, tdTexto, NoTomador<&P::Endereco>},
    TCampo{10, tdTexto, NoTomador<&P::Numero>},
    TCampo{60, tdTexto, NoTomador<&P::Complemento>},
    TCampo{72, tdTexto, NoTomador<&P::Bairro>},
    TCampo{50, tdTexto, NoTomador<&P::Municipio>},
    TCampo{2, tdTexto, NoTomador<&P::UF>},
    TCampo{8},
    TCampo{80},
    TCampo{15, tdMoeda, NaNota<&N::ValorCOFINS>},
    TCampo{15, tdMoeda, NaNota<&N::ValorCSLL>},
    TCampo{15, tdMoeda, NaNota<&N::ValorINSS>},
    TCampo{15, tdMoeda, NaNota<&N::ValorIR>},
    TCampo{15, tdMoeda, NaNota<&N::ValorPIS>},
    TCampo{0, tdTexto, NaNota<&N::Discriminacao>},
};

// A field without a separator behind it has its width, whatever the line's shape. The dots of a number group thousands;
// with fixed widths its last two digits are cents.
TCampoLido BuscarValorProximoCampo(TLinhaDeCampos& linha, TTipoArquivo separador, const TCampo& campo) {
  const auto inteiro = campo.Largura == 0 ? linha.CortarResto()
                       : separador        ? linha.CortarAte(*separador, campo.Largura)
                                          : linha.Cortar(campo.Largura);
  const auto texto = Aparar(inteiro);
  const bool larguraFixa = !separador;
  if (campo.Tipo == tdTexto) return {String(texto), larguraFixa};
  const auto numero = Substituir(texto, ".", "");
  if (campo.Tipo == tdInteiro) return {ConverterCampoInteiro(numero), larguraFixa};
  const auto valor = ConverterCurrency(numero);
  return {larguraFixa ? ComDecimaisImplicitas(valor) : valor, larguraFixa};
}

// Whether the line ends ahead of a number, or within one of fixed width. A number may be blank, but it has its place:
// the note of such a line was cut off, and what is left of its values would be other ones.
bool EstaCortada(const TLinhaDeCampos& linha, TTipoArquivo separador, const TCampo& campo) {
  return campo.Tipo != tdTexto && linha.Resto().size() < (separador ? 1 : campo.Largura);
}

// Nothing for a line of another record type: 1 is the header, 9 the trailer.
std::optional<TNotaServico> LerNota(const String& texto) {
  TLinhaDeCampos linha(texto);
  const auto separador = BuscarTipoArquivo(texto);
  if (BuscarValorProximoCampo(linha, separador, kCampos.front()).Texto() != "2") return std::nullopt;
  TNotaServico nota;
  for (const auto& campo : std::span(kCampos).subspan(1)) {
    if (EstaCortada(linha, separador, campo))
      throw EConversao(fmt::format("A linha da nota {} está incompleta.", nota.Numero));
    const auto lido = BuscarValorProximoCampo(linha, separador, campo);
    if (campo.Guardar != nullptr) campo.Guardar(nota, lido);
  }
  return nota;
}

}  // namespace

// The file
// -----------------------------------------------------------------------------------------------------------

void TNFSeBlumenau::Carregar() {
  TNFSeBase::Carregar();
  CarregarNFSe();
}

// The date of the first note places the whole file on its period.
void TNFSeBlumenau::CarregarNFSe() {
  CarregarDadosArquivo();
  if (!CarregouRegistro0000Emitente(kTipoRegistro0000).Carregou) SetTemErros(true);
  LimparDadosEmitenteDestinatario();
  if (GetTemErros()) return;
  for (NotaAtual = 0; NotaAtual < Notas.size(); ++NotaAtual) {
    CarregarA100();
    IncluirFilialDocumento(tpeEmitente, "");
  }
}

void TNFSeBlumenau::CarregarDadosArquivo() {
  PercorrerLinhas([&](const String& linha) {
    if (auto nota = LerNota(linha)) Notas.push_back(*std::move(nota));
  });
}

String TNFSeBlumenau::GetCNPJCPFEmitente() { return GetDadosEmpresaImportacao()->GetDadosFilial().CNPJ; }

String TNFSeBlumenau::GetIEEmitente() { return GetDadosEmpresaImportacao()->GetDadosFilial().IE; }

String TNFSeBlumenau::GetCNPJCPFDestinatario() { return GetNota().Tomador.CNPJCPF; }

String TNFSeBlumenau::GetIEDestinatario() { return GetNota().Tomador.IE; }

String TNFSeBlumenau::GetChave() { return GetNota().CodigoVerificacao; }

// A file without notes has no date.
TDateTime TNFSeBlumenau::GetData() { return Notas.empty() ? 0 : GetNota().DataEmissao; }

// The registers
// ------------------------------------------------------------------------------------------------------

void TNFSeBlumenau::CarregarA100() {
  const auto& nota = GetNota();
  const bool cancelada = nota.Situacao == "C";
  IniciarA100();
  Carregar0150();
  CarregarCabecalhoA100(nota.Numero, cancelada);
  auto& a100 = *GetDadosA100();
  if (cancelada) {
    a100.SetDT_EXE_SERV(nota.DataCancelamento);
    return ConcluirA100();
  }
  CarregarExecucaoA100(GetData());
  a100.SetVL_DOC(nota.ValorServicos);
  a100.SetVL_ISS(nota.ValorISS);
  if (nota.ValorPIS > 0) a100.SetVL_PIS_RET(nota.ValorPIS);
  if (nota.ValorCOFINS > 0) a100.SetVL_COFINS_RET(nota.ValorCOFINS);
  MarcarISSRetido(DocumentoTemISSRetido());
  CarregarA17R();
  CarregarA170();
  ConcluirA100();
}

void TNFSeBlumenau::Carregar0150() {
  CarregarDestinatario(
      [&]() -> TDadosParte {
        const auto& tomador = GetNota().Tomador;
        const auto municipio = BuscarMunicipio(tomador.UF, tomador.Municipio);
        return {.COD_MUN = InteiroDosDigitos(municipio.CODIGOFEDERAL),
                .NOME = tomador.Nome,
                .ENDERECO = tomador.Endereco,
                .NUM = tomador.Numero,
                .COMPL = tomador.Complemento,
                .BAIRRO = tomador.Bairro,
                .UF = tomador.UF.empty() ? municipio.UF : tomador.UF,
                .MUNICIPIO = tomador.Municipio,
                .IDMUNICIPIO = municipio.IDMUNICIPIO};
      },
      {.SemNumero = true});
}

void TNFSeBlumenau::CarregarA17R() {
  const auto& nota = GetNota();
  if (DocumentoTemISSRetido()) InserirRetencao(receita::kISS, nota.ValorServicos, nota.ValorISS, nota.Aliquota);
  InserirRetencoesFederais(nota.ValorServicos, {.IR = nota.ValorIR,
                                                .INSS = nota.ValorINSS,
                                                .PIS = nota.ValorPIS,
                                                .COFINS = nota.ValorCOFINS,
                                                .CSLL = nota.ValorCSLL});
}

Int64 TNFSeBlumenau::Carregar0200() {
  return CarregarItem({.DESCR_ITEM = GetNota().Discriminacao, .COD_LST = GetNota().CodigoServico});
}

void TNFSeBlumenau::CarregarA170() {
  const auto& nota = GetNota();
  auto item = NovoA170(Carregar0200());
  item->SetVL_ITEM(nota.ValorServicos);
  item->SetATIVIDADE(nota.CodigoServico);
  item->SetVL_BC_ISS(nota.ValorServicos - nota.ValorDeducoes);
  item->SetVL_ISS(nota.ValorISS);
  item->SetALIQ_ISS(nota.Aliquota);
  item->SetDEDUCAOISS(nota.ValorDeducoes);
  AdicionarA170(std::move(item));
}

}  // namespace impnfse
