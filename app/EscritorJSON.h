// Writes JSON as it goes, so that a large dump needs no memory, with decimal numbers exactly as their text: no binary
// fraction stands between a register's value and its digits.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>
#include <vector>

#include "VX03704Currency.h"

namespace impnfse::app {

// A text as a JSON string; bytes that aren't UTF-8 become U+FFFD.
inline std::string TextoJSON(const nlohmann::ordered_json& valor, int recuo = -1) {
  return valor.dump(recuo, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

class TEscritorJSON {
 public:
  explicit TEscritorJSON(std::ostream& saida) : FSaida(saida) {}

  // Opens an object ('{') or an array ('['), alone or as the value of a key.
  void Abrir(char marca) {
    Separar();
    FSaida << marca;
    FAbertos.push_back(marca == '{' ? '}' : ']');
    FVazio = true;
  }
  void Fechar() {
    FSaida << FAbertos.back();
    FAbertos.pop_back();
    FVazio = false;
    if (FAbertos.empty()) FSaida << '\n';
  }
  void Chave(std::string_view nome) {
    Separar();
    FSaida << TextoJSON(nome) << ':';
    FVazio = true;  // the value follows without a comma
  }
  void Valor(const nlohmann::ordered_json& valor) { Cru(TextoJSON(valor)); }
  // A decimal number with all its digits.
  void Decimal(Currency valor) { Cru(valor.TextoCurto()); }

 private:
  void Cru(std::string_view texto) {
    Separar();
    FSaida << texto;
  }
  void Separar() {
    if (!FVazio) FSaida << ',';
    if (FAbertos.size() == 2 && FAbertos.back() == ']') FSaida << '\n';
    FVazio = false;
  }

  std::ostream& FSaida;
  std::vector<char> FAbertos;
  bool FVazio = true;
};

}  // namespace impnfse::app
