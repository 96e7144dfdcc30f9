#include "VXUtilsLista.h"

namespace impnfse {

void TStringList::LoadFromFile(const String& caminho) { SetText(DecodificarTexto(LerArquivo(caminho))); }

void TStringList::SetText(std::string_view texto) {
  FLinhas.clear();
  while (!texto.empty()) {
    const auto fim = texto.find_first_of("\r\n");
    FLinhas.emplace_back(texto.substr(0, fim));
    if (fim == texto.npos) return;
    texto.remove_prefix(texto.substr(fim).starts_with("\r\n") ? fim + 2 : fim + 1);
  }
}

String TStringList::Text() const {
  String texto;
  for (const auto& linha : FLinhas) texto.append(linha).push_back('\n');
  return texto;
}

void TStringList::Delete(std::size_t i) {
  FLinhas.at(i);  // an index out of range raises, as every other access does
  FLinhas.erase(FLinhas.begin() + static_cast<std::ptrdiff_t>(i));
}

String InicioDoArquivo(const String& caminho, std::size_t caracteres) {
  // No character, and no line break, takes more than four bytes.
  constexpr std::size_t kMaiorCaractere = 4;
  TStringList linhas;
  linhas.SetText(DecodificarTexto(LerArquivo(caminho), kMaiorCaractere * (caracteres + 1)));
  return String(Primeiros(linhas.Text(), caracteres));
}

}  // namespace impnfse
