// The base class of all importers. One importer is one thread that reads one file of one layout.
//
// The steps that every layout shares stand here once, small and non-virtual, with plain arguments. An importer composes
// them and decides the rest: which element feeds which field, in which order, with which oddity.
#pragma once

#include <exception>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <type_traits>

#include "VX03704ImpDocEletBase.h"

namespace impnfse {

// The codes of the retained taxes, as the A17R carries them.
namespace receita {
inline constexpr std::string_view kISS = "1010";
inline constexpr std::string_view kIR = "0714";
inline constexpr std::string_view kINSS = "0910";
inline constexpr std::string_view kPIS = "1101";
inline constexpr std::string_view kCOFINS = "1102";
inline constexpr std::string_view kCSLL = "1103";
}  // namespace receita

// A municipality as CA06_MUNICIPIO has it.
struct TDadosMunicipio {
  Int64 IDMUNICIPIO = 0;       // 0 when not found
  String CODIGOFEDERAL = "0";  // "0" when not found
  String UF = {};              // the one asked for when not found
};

// What a note tells of one party, as far as the layout has it.
struct TDadosParte {
  int COD_MUN = 0;  // federal code of the municipality
  String NOME = {};
  String ENDERECO = {};
  String NUM = {};
  String COMPL = {};
  String BAIRRO = {};
  String UF = {};  // empty: the state of COD_MUN, unless told otherwise
  int COD_PAIS = TDadosRegistro0150::kBrasil;
  bool SempreCNPJ = false;         // the number is stored as CNPJ whatever its length
  bool SemUFDoMunicipio = false;   // an empty UF stays empty
  bool BuscaSemMunicipio = false;  // known by number and registration, whatever the municipality
  String OPTANTESIMPLES = {};
  String MUNICIPIO = {};  // its name
  Int64 IDMUNICIPIO = 0;  // its id in CA06_MUNICIPIO
  Int64 IDREG0000 = 0;    // a period that the participant belongs to
};

// The municipality's federal code, without the dots that some layouts write in it; 0 for what is no number then.
int CodigoMunicipio(std::string_view texto);

// The country's code, Brazil's unless it is above 0; of a text, blanks aside.
int CodigoPais(int codigo);
int CodigoPais(std::string_view texto);

// Which takers become participants besides those with a number that isn't the branch's.
struct TRegraDestinatario {
  bool PropriaEmpresa = false;  // the company itself, when it bills itself: issuer and taker are the branch
  bool SemNumero = false;       // one without a number
};

// What a note tells of one service, as an item.
struct TDadosServico {
  String DESCR_ITEM = {};
  String COD_LST = {};  // item of the national service list, as written in the note
  String UNID_INV = "UN";
};

// The values of the taxes, ISS apart, that a taker retains.
struct TRetencoesFederais {
  Currency IR;
  Currency INSS;
  Currency PIS;
  Currency COFINS;
  Currency CSLL;
};

class TNFSeBase : public TImpDocEletBase {
 public:
  using TImpDocEletBase::TImpDocEletBase;

  // Both remember the layout for the branch when they placed the note.
  TBuscarID CarregouRegistro0000Emitente(int tipo) override;
  TBuscarID CarregouRegistro0000Destinatario(int tipo) override;

  // What CarregarA17R below asks of a layout that uses it. Nothing is retained by default.
  virtual bool GetDocumentoTemISSRetido() { return false; }
  virtual Currency GetBaseCalculo() { return 0; }
  virtual Currency GetValorISS() { return 0; }
  virtual Currency GetAliquotaISS() { return 0; }
  virtual Currency GetValorIR() { return 0; }
  virtual Currency GetValorINSS() { return 0; }
  virtual Currency GetValorPIS() { return 0; }
  virtual Currency GetValorCOFINS() { return 0; }
  virtual Currency GetValorCSLL() { return 0; }

  // Moves the file to its place in the archive. False when it didn't go; without a stored document it stays where it
  // is.
  bool MoveuArquivo();

  // Lookups
  // ---------------------------------------------------------------------------------------------------------

  // The first municipality of the state (any state when `uf` is blank) whose name contains `nome`, free of case. An
  // acute accent used as an apostrophe (U+00B4) also finds the name with "'" and with "' ". A blank name finds nothing.
  TDadosMunicipio BuscarMunicipio(const String& uf, const String& nome);
  // The federal code of a municipality. A number of up to five digits is completed with the state's; one of six or more
  // stays; without a number the name decides. 0 when nothing is found.
  int BuscarCodigoMunicipio(const String& codigo, const String& uf, const String& municipio);
  // The digits of the federal code of the first municipality with that code of the federal revenue service, as a number
  // or as it stands; empty when none has it.
  String BuscarMunicipioPorSRF(const String& codigo);
  // The same of the first one in whose range of postal codes the one given lies, as text, within the state if one is
  // named.
  String BuscarMunicipioPorCEP(const String& cep, const std::optional<String>& uf = std::nullopt);
  // The activity code with its dot: "105" gives "1.05", "0105" gives "01.05". A text that has a dot, or no digit,
  // stays.
  String FormatarCodigoAtividade(const String& codigo);
  // The CFOP of a service, which no note carries: 1.933 and 2.933 for entries, 5.933 and 6.933 for exits, within the
  // state (also when one of the states is unknown) and between states, and the company's number of zeros.
  String BuscarCFOPIcmsServico();

 protected:
  // The file and the note loop
  // --------------------------------------------------------------------------------------

  const String& GetArquivo() const { return DadosArquivo.Arquivo; }

  // Runs `acao`. Any exception drops the document at hand, sets the error flag (unless told otherwise) and makes the
  // structure error the last error; nothing is added to the list. False when there was one.
  enum class TMarcaDeErro { TextoESinal, SoTexto };
  template <class Acao>
  bool ComErroEstrutura(Acao acao, TMarcaDeErro marca = TMarcaDeErro::TextoESinal);
  // The end of an importer that has tried several forms: it has imported when no error was left over, and an error that
  // was sets the flag.
  void ConcluirPeloErro();

  // Calls `ler` for each line of the file, decoded. Raises EArquivo.
  template <class Acao>
  void PercorrerLinhas(Acao ler);

  // Calls `carregar` for each item in order, without a progress display. Where it returns a bool, false ends the loop.
  template <class Itens, class AcaoDaNota>
  void PercorrerNotas(const Itens& itens, AcaoDaNota carregar);
  // The same with the progress display, if there is one. It shows the standard text, or what `texto` makes of the
  // note, its index and the last index.
  template <class Itens, class AcaoDaNota>
  void PercorrerNotasComProgresso(const Itens& itens, AcaoDaNota carregar);
  template <class Itens, class AcaoDaNota, class TextoDaNota>
  void PercorrerNotasComProgresso(const Itens& itens, AcaoDaNota carregar, TextoDaNota texto);

  // The same for a file of one note.
  template <class Acao>
  void CarregarUmaComProgresso(Acao carregar);

  // The suite's argument of both operations that place a note on a period record.
  static constexpr int kTipoRegistro0000 = 4;

  // Places the note at hand on the company's branches: `carregarA100` runs once for each side that is one, and the
  // document is noted in the summary under `numero`. A note of which no side is one is an error, whose copy in the list
  // begins with `prefixoErro`, or stays out of it without one; the file goes on. Whether some side is.
  bool CarregarDosDoisLados(const String& numero, const std::function<void()>& carregarA100,
                            const std::optional<String>& prefixoErro = "");

  // Where one side stands for many notes: `carregarNotas` runs when that side, as asked, is a branch; otherwise all of
  // them are one error, which stays out of the list.
  void CarregarDeUmLado(const TBuscarID& lado, const std::function<void()>& carregarNotas);

  // The document
  // ----------------------------------------------------------------------------------------------------

  // The document being built; made, under the period in force, when there is none.
  TDadosRegistroA100* GetDadosA100();
  // Drops the document being built, if there is one.
  void DestroyA100() { DadosA100.reset(); }
  TDadosEmpresaImportacao* GetDadosEmpresaImportacao() { return BuscarInstanciaEmpresaImportacao(); }

  // The file's path in the archive, under "NFSe"; kept for MoveuArquivo.
  using TImpDocEletBase::BuscarDiretorioDestinoArquivo;
  const String& BuscarDiretorioDestinoArquivo();

  // The date of a text in the one form or the other, whichever is tried first and reads as one; 0 when neither does.
  TDateTime ConverterDataLocalOuISO(const String& texto);
  TDateTime ConverterDataISOOuLocal(const String& texto);
  // The date of a text that is day first when its third character is "/", else year first; 0 when it is none.
  TDateTime ConverterDataPelaBarra(const String& texto);

  // Begins a document: nothing of an earlier one is left, and no participant is known, also where the side and what
  // belongs to it stay from note to note.
  void IniciarA100();
  // Its id, origin, destination, side and participant. Comes after the participants.
  void CarregarIdentificacaoA100();
  // CarregarIdentificacaoA100, then the number, GetData as date, and the situation: all that a cancelled note has in
  // the layouts that know one.
  void CarregarCabecalhoA100(Int64 numero, bool cancelado = false);
  // What a note in force has besides: cash payment, the date of execution, GetChave.
  void CarregarExecucaoA100(TDateTime execucao);
  // Marks the document when ISS is retained; otherwise the field keeps its initial value.
  void MarcarISSRetido(bool retido);
  // Stores the document with its children, and lets go of it.
  void ConcluirA100();
  // Stores the document; then, when the document itself is to be written, its retained taxes, items and messages, as
  // far as they are.
  void ImportarA100() { ImportarA100(*GetDadosA100()); }
  void ImportarA100(TDadosRegistroA100& documento);

  // The participants
  // ------------------------------------------------------------------------------------------------

  // Whether a party without a number becomes a participant, when none is known.
  enum class TSemNumero { Participa, NaoParticipa };
  // The issuer (taker) as participant of the document, unless its number is the current branch's: the company doesn't
  // become its own participant. `lerParte` is asked only when needed.
  using TLerParte = std::function<TDadosParte()>;
  void CarregarEmitente(const TLerParte& lerParte, TSemNumero semNumero = TSemNumero::Participa);
  void CarregarDestinatario(const TLerParte& lerParte, TRegraDestinatario regra = {});
  // Makes the participant with that number and registration the document's: the one found, or a new one.
  void BuscarOuInserirParticipante(const String& numero, const String& ie, const TDadosParte& parte,
                                   TSemNumero semNumero = TSemNumero::Participa);

  // The participant of the document, 0 when there is none: COD_PART.
  Int64 IDParticipante = 0;

  // The items and the retained taxes
  // --------------------------------------------------------------------------------

  // The id of the company's item with the service's description: found, or stored as a new one.
  Int64 CarregarItem(const TDadosServico& servico);
  // A new document item: one unit of the item, with the CFOP, and ISS due to the branch's municipality.
  std::unique_ptr<TDadosRegistroA170> NovoA170(Int64 idItem, int numero = 1);
  void AdicionarA170(std::unique_ptr<TDadosRegistroA170> item);
  // The digits of the current branch's municipal code.
  String MunicipioDaFilial();
  // The digits of the first of the codes that is a number above 0, else the branch's municipality.
  String MunicipioDevidoISS(std::initializer_list<String> codigos);

  // Adds the message that the note doesn't follow its layout to the document.
  void InserirMensagemDivergencia();

  // Adds a retained tax. A value of 0 is added too: what is written is decided when the document is stored.
  void InserirRetencao(std::string_view codigo, Currency base, Currency valor, Currency aliquota = {});
  // The five federal ones over one base.
  void InserirRetencoesFederais(Currency base, const TRetencoesFederais& valores);
  // The six taxes in the order of their codes above, ISS only when it is retained, from the virtual getters.
  void CarregarA17R();
  void CarregarISSRetido();
  void CarregarIRRetido();
  void CarregarINSSRetido();
  void CarregarPISRetido();
  void CarregarCOFINSRetido();
  void CarregarCSLLRetido();

 private:
  // The digits of the first row's CODIGOFEDERAL; empty without rows.
  String ConsultarCodigoFederal(const String& sql);
  // Remembers the layout for the current branch.
  void GravarCodigoLeiauteNFSe();
  void TratarErroEstrutura(TMarcaDeErro marca);
  // Whether the company has the participant, which is then the document's.
  bool EncontrouParticipante(const String& numero, const String& ie, const TDadosParte& parte);
  void InserirParticipante(const String& numero, const String& ie, const TDadosParte& parte);
  void IniciarProgresso(std::size_t quantidade);
  String TextoProgresso(std::size_t indice, std::size_t ultimo) const;
  void MostrarProgresso(const String& texto);
  void AvancarProgresso();

  std::unique_ptr<TDadosRegistroA100> DadosA100;
  String DiretorioDestino;
  String FLeiauteGravado;  // the statement that remembered the layout last
};

template <class Acao>
bool TNFSeBase::ComErroEstrutura(Acao acao, TMarcaDeErro marca) {
  try {
    acao();
    return true;
  } catch (const std::exception&) {
    TratarErroEstrutura(marca);
    return false;
  }
}

// Whether the loop goes on behind the note.
template <class AcaoDaNota, class Nota>
bool CarregarESeguir(AcaoDaNota& carregar, const Nota& nota) {
  if constexpr (std::is_same_v<decltype(carregar(nota)), bool>) {
    return carregar(nota);
  } else {
    carregar(nota);
    return true;
  }
}

template <class Acao>
void TNFSeBase::PercorrerLinhas(Acao ler) {
  TStringList linhas;
  linhas.LoadFromFile(GetArquivo());
  for (const auto& linha : linhas) ler(linha);
}

template <class Itens, class AcaoDaNota>
void TNFSeBase::PercorrerNotas(const Itens& itens, AcaoDaNota carregar) {
  for (std::size_t i = 0; i < itens.Count(); ++i)
    if (!CarregarESeguir(carregar, itens[i])) return;
}

template <class Itens, class AcaoDaNota>
void TNFSeBase::PercorrerNotasComProgresso(const Itens& itens, AcaoDaNota carregar) {
  PercorrerNotasComProgresso(itens, carregar, [&](const auto& /*nota*/, std::size_t indice, std::size_t ultimo) {
    return TextoProgresso(indice, ultimo);
  });
}

template <class Itens, class AcaoDaNota, class TextoDaNota>
void TNFSeBase::PercorrerNotasComProgresso(const Itens& itens, AcaoDaNota carregar, TextoDaNota texto) {
  IniciarProgresso(itens.Count());
  for (std::size_t i = 0; i < itens.Count(); ++i) {
    const auto& nota = itens[i];
    if (BarraProgresso != nullptr) MostrarProgresso(texto(nota, i, itens.Count() - 1));
    if (!CarregarESeguir(carregar, nota)) return;
    AvancarProgresso();
  }
}

template <class Acao>
void TNFSeBase::CarregarUmaComProgresso(Acao carregar) {
  IniciarProgresso(1);
  MostrarProgresso(TextoProgresso(1, 1));
  carregar();
  AvancarProgresso();
}

}  // namespace impnfse
