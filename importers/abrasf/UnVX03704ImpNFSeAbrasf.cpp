#include "UnVX03704ImpNFSeAbrasf.h"

#include <algorithm>
#include <array>

#include "GravacaoSegura.h"

namespace impnfse {

// A note of a file, with its cancellation where the shape has one.
struct TNFSeAbrasf::TNota {
  IXMLInfNfseAbrasf InfNfse;
  IXMLNfseCancelamentoAbrasf Cancelamento = {};
};

// A shape of the file: its root, the notes below it, and how they are loaded.
struct TNFSeAbrasf::TForma {
  enum TAndamento {
    Unica,          // one note, noted without its number
    Lista,          // all notes
    ListaAteAlheia  // up to the first note that is nobody's; answers true as soon as it has found a note
  };
  using TDocumento = std::shared_ptr<const TDocumentoXML>;
  struct TNotas {
    std::vector<TNota> Notas;
    std::size_t Count() const { return Notas.size(); }
    const TNota& operator[](std::size_t i) const { return Notas[i]; }
  };

  TEstruturaArquivo Estrutura;
  std::string_view Raiz = {};
  std::span<const std::string_view> Prefixos = {};  // taken out of the text first
  TNotas (*Notas)(const TDocumento&) = nullptr;
  TAndamento Andamento = Unica;
  // Null in the shapes that know no cancelled note.
  bool (*Cancelada)(const IXMLNfseCancelamentoAbrasf&) = nullptr;

  template <TTextoFixo Tipo>
  static IXMLAbrasf<Tipo> RaizDe(const TDocumento& documento) {
    return {documento, documento->Raiz()};
  }

  // The notes of each shape.
  static TNotas DeNfse(const TDocumento& documento) { return {{{RaizDe<"Nfse">(documento).Filho<"InfNfse">()}}}; }
  static TNotas DeCompNfse(const TDocumento& documento) { return {{DoComp(RaizDe<"CompNfse">(documento))}}; }
  static TNotas DeRpsResposta(const TDocumento& documento) {
    return {{DoComp(RaizDe<"RpsResposta">(documento).Filho<"CompNfse">())}};
  }
  static TNotas DeListaNfse(const TDocumento& documento) { return SoDeCompNfse(RaizDe<"ListaNfse">(documento)); }
  static TNotas DeResposta(const TDocumento& documento) {
    return SoDeCompNfse(RaizDe<"Resposta">(documento).Filho<"ListaNfse">());
  }
  static TNotas DeRespostaDosDoisTipos(const TDocumento& documento) {
    const auto lista = RaizDe<"Resposta">(documento).Filho<"ListaNfse">();
    auto notas = DosItens(lista.Itens<"CompNfse">());
    return notas.Count() > 0 ? notas : DosItens(lista.Itens<"ComplNfse">());
  }
  static TNotas DeRespostaComplNfse(const TDocumento& documento) {
    return DosItens(RaizDe<"Resposta">(documento).Itens<"ListaNfse/ComplNfse">());
  }
  static TNotas DeCompNfseList(const TDocumento& documento) {
    return DosItens(RaizDe<"CompNfseList">(documento).Itens<"CompNfse">());
  }
  static TNotas DeArrayOfTcCompNfse(const TDocumento& documento) {
    TNotas notas;
    for (const auto& item : RaizDe<"ArrayOfTcCompNfse">(documento).Itens<"tcCompNfse">())
      notas.Notas.push_back({item.Filho<"Nfse/InfNfse">()});
    return notas;
  }

  template <class Comp>
  static TNota DoComp(const Comp& comp) {
    return {comp.template Filho<"Nfse/InfNfse">(), comp.template Filho<"NfseCancelamento">()};
  }
  template <class Itens>
  static TNotas DosItens(const Itens& itens) {
    TNotas notas;
    notas.Notas.reserve(itens.Count());
    for (const auto& item : itens) notas.Notas.push_back(DoComp(item));
    return notas;
  }
  // Raises EXML for a list of the other kind.
  static TNotas SoDeCompNfse(const IXMLAbrasf<"ListaNfse">& lista) {
    auto notas = DosItens(lista.Itens<"CompNfse">());
    if (notas.Count() == 0 && lista.Itens<"ComplNfse">().Count() > 0)
      throw EXML("A lista é de ComplNfse onde se esperam CompNfse.");
    return notas;
  }

  // The cancellation tests. A request for cancellation is enough for one of them.
  static String Sucesso(const IXMLNfseCancelamentoAbrasf& cancelamento) {
    return cancelamento.Texto("Confirmacao/InfConfirmacaoCancelamento/Sucesso");
  }
  static bool SucessoUm(const IXMLNfseCancelamentoAbrasf& c) { return Aparar(Sucesso(c)) == "1"; }
  static bool SucessoSimOuPedido(const IXMLNfseCancelamentoAbrasf& c) {
    const auto sucesso = Maiusculas(Aparar(Sucesso(c)));
    return sucesso == "SIM" || sucesso == "TRUE" ||
           !Aparar(c.Texto("Confirmacao/Pedido/InfPedidoCancelamento/CodigoCancelamento")).empty();
  }
  static bool SucessoTrue(const IXMLNfseCancelamentoAbrasf& c) { return Maiusculas(Sucesso(c)) == "TRUE"; }
};

namespace {

constexpr std::array<std::string_view, 1> kTc = {"tc:"};
constexpr std::array<std::string_view, 2> kTcNs2 = {"tc:", "ns2:"};

// How far an XML declaration, comments and style sheets ahead of the root are looked past.
constexpr std::size_t kNosDeTopo = 4;

// The bytes without backspaces, whether a character has one byte or two.
String SemBackspaces(const String& bytes) {
  using namespace std::string_view_literals;
  const std::string_view vista(bytes);
  const bool doisBytes = vista.starts_with("\xFF\xFE"sv) || vista.starts_with("<\0"sv);
  const bool doisBytesInvertidos = vista.starts_with("\xFE\xFF"sv) || vista.starts_with("\0<"sv);
  if (!doisBytes && !doisBytesInvertidos) return Substituir(bytes, "\b", "");
  String limpos;
  for (std::size_t i = 0; i < vista.size(); i += 2)
    if (vista.substr(i, 2) != (doisBytes ? "\b\0"sv : "\0\b"sv)) limpos += vista.substr(i, 2);
  return limpos;
}

}  // namespace

void TNFSeAbrasf::Carregar() {
  TNFSeBase::Carregar();
  FEstruturaArquivo = eaNenhum;
  CarregarNFSe();
}

// The first shape that has loaded the file ends the search; the last resort takes any root.
void TNFSeAbrasf::CarregarNFSe() {
  using F = TForma;
  static constexpr std::array kFormas = {
      F{eaNFSe, "Nfse", kTc, F::DeNfse, F::Unica},
      F{eaNfseU, "NFSE", kTc, F::DeNfse, F::Unica},
      F{eaCompNfse, "CompNfse", kTc, F::DeCompNfse, F::Unica, F::SucessoUm},
      F{eaGerarNfseResposta, "GerarNfseResposta", kTc, F::DeResposta, F::Lista},
      F{eaListaNfse, "ListaNfse", kTc, F::DeListaNfse, F::Lista, F::SucessoSimOuPedido},
      F{eaCompNfseList, "CompNfseList", kTc, F::DeCompNfseList, F::Lista},
      F{eaArrayOfTcCompNfse, "ArrayOfTcCompNfse", kTc, F::DeArrayOfTcCompNfse, F::Lista},
      F{eaConsultarNfseLote, "ConsultarNfseLote", kTc, F::DeResposta, F::Lista},
      F{eaConsultarNfseResposta, "ConsultarNfseResposta", kTc, F::DeRespostaDosDoisTipos, F::Lista,
        F::SucessoSimOuPedido},
      F{eaConsultarNfseServicoPrestadoResposta, "ConsultarNfseServicoPrestadoResposta", kTc, F::DeResposta, F::Lista},
      F{eaConsultarNfseRpsResposta, "ConsultarNfseRpsResposta", kTcNs2, F::DeRpsResposta, F::Unica},
      F{eaConsultarNotaResponse, "consultarNotaResponse", kTc, F::DeRespostaComplNfse, F::ListaAteAlheia,
        F::SucessoTrue},
      F{eaConsultarNfseFaixaResposta,
        "ConsultarNfseFaixaResposta",
        {},
        F::DeResposta,
        F::ListaAteAlheia,
        F::SucessoTrue},
  };
  RemoverCaracteresInvalidos();
  if (std::none_of(kFormas.begin(), kFormas.end(), [&](const F& forma) { return CarregouForma(forma); }))
    CarregouAbrasf();
  ConcluirPeloErro();
}

// Some vendors leave backspaces in the descriptions, which no XML may have. Whatever it is that the parser refuses, the
// file loses them, for good.
void TNFSeAbrasf::RemoverCaracteresInvalidos() {
  FArquivo = TArquivoXML(GetArquivo());
  try {
    FArquivo.Documento();
  } catch (const std::exception&) {
    try {
      const auto bytes = LerArquivo(GetArquivo());
      const auto limpos = SemBackspaces(bytes);
      if (limpos == bytes) return;
      RegravarArquivo(GetArquivo(), limpos);
      FArquivo = TArquivoXML(GetArquivo());
    } catch (const std::exception&) {
      // It stays as it was, and the shapes tell what is wrong with it.
    }
  }
}

bool TNFSeAbrasf::CarregouForma(const TForma& forma) {
  SetTemErros(false);
  bool achou = false;
  const bool completou = ComErroEstrutura([&] {
    const auto& documento = FArquivo.Documento(forma.Prefixos);
    if (documento->Nome(documento->Raiz()) != forma.Raiz) return;
    const auto carregar = [&](const TNota& nota) { return CarregarNota(forma, nota, achou); };
    if (forma.Andamento == TForma::Unica)
      PercorrerNotas(forma.Notas(documento), carregar);
    else
      PercorrerNotasComProgresso(forma.Notas(documento), carregar);
  });
  return Importou || (completou && achou && forma.Andamento == TForma::ListaAteAlheia);
}

bool TNFSeAbrasf::CarregarNota(const TForma& forma, const TNota& nota, bool& achou) {
  if (nota.InfNfse.Vazio()) return true;
  achou = true;
  FNota = nota.InfNfse;
  FEstruturaArquivo = forma.Estrutura;
  if (forma.Cancelada != nullptr) FNotaCancelada = forma.Cancelada(nota.Cancelamento);
  const bool unica = forma.Andamento == TForma::Unica;
  const auto numero = unica ? String() : GetNota().Texto("Numero");
  const bool carregou = CarregarDosDoisLados(
      numero, [&] { CarregarA100(); }, unica ? String() : "Documento: " + numero + " - ");
  return carregou || forma.Andamento != TForma::ListaAteAlheia;
}

// The last resort: whatever has a number is read as a note. Unlike the shapes it has no guard: what is wrong with the
// document is raised.
bool TNFSeAbrasf::CarregouAbrasf() {
  SetTemErros(false);
  const auto& documento = FArquivo.Documento();
  const auto raiz = documento->Raiz();
  if (documento->NosAntesDaRaiz() >= kNosDeTopo) return false;
  if (documento->TemConteudo(raiz)) return CarregarArquivoAbrasf(raiz);
  if (documento->NosAntesDaRaiz() + 1 + documento->NosDepoisDaRaiz() < kNosDeTopo)
    throw EXML("O documento não tem nenhum conteúdo.");
  return false;
}

// A child with a number ends the walk; what deeper levels have found doesn't stop their siblings.
bool TNFSeAbrasf::CarregarArquivoAbrasf(TNoXML no) {
  const auto& documento = *FArquivo.Documento();
  const auto temNumero = [&](TNoXML elemento) { return documento.Filho(elemento, "Numero") != TNoXML::Nenhum; };
  if (temNumero(no)) return ConverterAbrasf(no);
  bool carregou = false;
  for (auto filho = documento.PrimeiroFilho(no); filho != TNoXML::Nenhum; filho = documento.ProximoIrmao(filho)) {
    if (temNumero(filho)) return ConverterAbrasf(filho) || carregou;
    carregou = CarregarArquivoAbrasf(filho);
  }
  return carregou;
}

// Whatever its name, the element is read as a note.
bool TNFSeAbrasf::ConverterAbrasf(TNoXML no) {
  static constexpr TForma kForma{eaAbrasf};
  SetTemErros(false);
  bool achou = false;
  CarregarNota(kForma, {IXMLInfNfseAbrasf(FArquivo.Documento(), no)}, achou);
  return Importou;
}

}  // namespace impnfse
