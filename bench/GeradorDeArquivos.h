// Files of invented notes, as large as asked for. The notes are the same in every layout; one function per file format
// writes them. The same call always writes the same bytes.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

namespace impnfse::bench {

// The branch that issues all notes.
inline constexpr std::string_view kCNPJPrestador = "11222333000181";
inline constexpr std::string_view kMunicipioPrestador = "3518800";
inline constexpr std::string_view kUFPrestador = "SP";

struct TNotaFicticia {
  std::size_t Numero;
  std::string Emissao;  // date and time within one month
  std::string CodigoVerificacao;
  struct TTomador {
    std::string Documento;  // CNPJ, or the CPF of one in five
    std::string Nome;
    std::string Logradouro;
    int Numero;
    std::string_view Municipio;  // its code
    std::string_view Cidade;     // and its name
    std::string_view UF;
  } Tomador;              // from as many as a fourth of the notes
  std::string Descricao;  // one in ten repeats a fixed text; the others are all different
  double Valor;           // in reais, with its cents
  double ISS;
  bool ISSRetido;  // one in five
};

// The note at position `i` of a file of `notas`.
TNotaFicticia NotaFicticia(std::size_t i, std::size_t notas);

// Layout code 43.
void EscreverGINFES(std::ostream& saida, std::size_t notas);

// Layout code 47: the national schema 1.0, as the answer to a consultation.
void EscreverABRASF(std::ostream& saida, std::size_t notas);

// The same with a list of items in brackets for a description, whose values add up to the note's. Half of the items'
// descriptions come from a price list, the others are all different.
inline constexpr std::size_t kItensPorNota = 20;
void EscreverABRASFItens(std::ostream& saida, std::size_t notas);

// Layout code 42, a text file: fields of fixed width.
void EscreverBlumenau(std::ostream& saida, std::size_t notas);

}  // namespace impnfse::bench
