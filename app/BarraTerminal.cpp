#include "BarraTerminal.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace impnfse::app {
namespace {

constexpr int kLarguraDaBarra = 24;
constexpr std::chrono::milliseconds kIntervalo{80};

std::size_t LarguraDoTerminal() {
  winsize tamanho{};
  return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &tamanho) == 0 && tamanho.ws_col > 0 ? tamanho.ws_col : 80U;
}

}  // namespace

TBarraTerminal::TBarraTerminal() : FLigada(::isatty(STDERR_FILENO) == 1) {}

void TBarraTerminal::IniciarArquivo(const String& arquivo, std::size_t indice, std::size_t quantidade) {
  if (!FLigada) return;
  auto* const barra = FDisplay.BuscarBarraProgresso(1);
  barra->SetPosicao(0);
  barra->SetValorMaximo(0);
  const auto nome = std::filesystem::path(arquivo).filename().string();
  barra->SetTexto(quantidade > 1 ? fmt::format("Arquivo {} de {}: {}", indice + 1, quantidade, nome)
                                 : fmt::format("Arquivo {}", nome));
  Desenhar();
}

void TBarraTerminal::Atualizar() {
  if (!FLigada || std::chrono::steady_clock::now() - FUltimoDesenho < kIntervalo) return;
  Desenhar();
}

void TBarraTerminal::Desenhar() {
  FUltimoDesenho = std::chrono::steady_clock::now();
  const auto& barra = *FDisplay.BuscarBarraProgresso(1);
  String inicio;
  if (barra.GetValorMaximo() > 0) {
    const auto parte = std::clamp(barra.GetPosicao(), 0, barra.GetValorMaximo());
    const auto cheios = static_cast<int>(std::int64_t{parte} * kLarguraDaBarra / barra.GetValorMaximo());
    for (int i = 0; i < kLarguraDaBarra; ++i) inicio += i < cheios ? "█" : "░";
    inicio += fmt::format(" {:3}% ", std::int64_t{parte} * 100 / barra.GetValorMaximo());
  }
  fmt::print(stderr, "\r\x1b[K{}", Primeiros(inicio + barra.GetTexto(), LarguraDoTerminal() - 1));
  std::fflush(stderr);
}

void TBarraTerminal::Apagar() {
  if (FLigada) fmt::print(stderr, "\r\x1b[K");
}

}  // namespace impnfse::app
