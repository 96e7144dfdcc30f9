#include "UnVX03704ImpNFSe.h"

#include <algorithm>
#include <exception>

#include "VXUtilsLista.h"

namespace impnfse {
namespace {

constexpr std::size_t kCabeca = 350;
constexpr std::size_t kCabecaAgili = 50;

bool TemAlgum(const String& texto, std::initializer_list<std::string_view> agulhas) {
  return std::any_of(agulhas.begin(), agulhas.end(),
                     [&](std::string_view agulha) { return texto.find(agulha) != texto.npos; });
}

}  // namespace

void TImpNFSe::Execute() { TArquivoImpBase::Execute(); }

void TImpNFSe::Carregar() {
  TArquivoImpBase::Carregar();
  const auto id = BuscarIdentificacaoNFSe(DadosArquivo.CodigoLeiaute);
  for (const auto& importador : ImportadoresNFSe())
    if (importador.Id == id && (importador.Teste == nullptr || (this->*importador.Teste)()))
      return CarregarNFSe(importador);
  GetListaErros().Add(BuscarErroEstruturaArquivo());
  SetTemErros(true);
}

int TImpNFSe::BuscarIdentificacaoNFSe(const String& codigo) const {
  for (const auto& regra : RegrasDeLeiaute())
    if (regra.Codigo == codigo) return regra.Teste != nullptr && (this->*regra.Teste)() ? regra.IdSeVale : regra.Id;
  return 0;
}

void TImpNFSe::CarregarNFSe(const TImportadorNFSe& importador) {
  const bool comRetorno = importador.Variacao == TVariacaoNFSe::ComRetorno;
  const auto trabalhador = importador.Criar();

  // Whatever is raised on the way, the outcome is collected and the file goes where it belongs; then the first
  // exception goes on.
  std::exception_ptr falha;
  const auto tentar = [&](auto passo) {
    try {
      passo();
    } catch (...) {
      if (!falha) falha = std::current_exception();
    }
  };
  tentar([&] {
    trabalhador->InicializarDados(String(importador.Classe));
    trabalhador->SetPriority(tpNormal);
    trabalhador->DadosArquivo = DadosArquivo;
    trabalhador->BarraProgresso = BarraProgresso;
    if (comRetorno) trabalhador->OnArquivoCarregado = OnArquivoCarregado;
    trabalhador->Start();
    trabalhador->WaitFor();
  });
  if (comRetorno) tentar([&] { trabalhador->OnArquivoCarregado(trabalhador.get()); });
  AtribuirRetornoArquivo(trabalhador.get());
  if (importador.Variacao == TVariacaoNFSe::Nenhuma && !trabalhador->GetImportou())
    GetListaErros().Add(trabalhador->GetErro());
  tentar([&] { trabalhador->MoveuArquivo(); });
  if (falha) std::rethrow_exception(falha);
}

bool TImpNFSe::EhLeiauteABRASFVersao203() const {
  return TemAlgum(InicioDoArquivo(DadosArquivo.Arquivo, kCabeca),
                  {"versao=\"2.01\"", "versao=\"2.02\"", "versao=\"2.03\""});
}

bool TImpNFSe::EhLeiauteAgiliVersao100() const {
  const auto cabeca = InicioDoArquivo(DadosArquivo.Arquivo, kCabecaAgili);
  return TemAlgum(cabeca, {"Nfse"}) && TemAlgum(cabeca, {"agili"});
}

bool TImpNFSe::EhLeiauteBethaVersao202() const {
  return TemAlgum(InicioDoArquivo(DadosArquivo.Arquivo, kCabeca), {"versao=\"2.02\""});
}

bool TImpNFSe::EhLeiauteIPM() const { return Maiusculas(Ultimos(DadosArquivo.Arquivo, 4)) == ".XML"; }

bool TImpNFSe::EhLeiautePronimVersao202() const {
  return TemAlgum(InicioDoArquivo(DadosArquivo.Arquivo, kCabeca), {"versao=\"2.02\""});
}

bool TImpNFSe::EhLeiauteSoftplanVersao022018() const {
  return TemAlgum(InicioDoArquivo(DadosArquivo.Arquivo, kCabeca), {"<xmlNfpse", "<numeroAEDF>"});
}

bool TImpNFSe::EhLeiauteTecnosistemasCFSe() const {
  return TemAlgum(InicioDoArquivo(DadosArquivo.Arquivo, kCabeca), {"<ListaCupomFiscal", "<CupomFiscal>"});
}

bool TImpNFSe::NotaJoinvilleEhServicoPrestado() const {
  return !TemAlgum(InicioDoArquivo(DadosArquivo.Arquivo, kCabeca), {"<nota_recebida>"});
}

}  // namespace impnfse
