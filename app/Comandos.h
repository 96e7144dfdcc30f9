// The commands of the program. Each answers the exit status: 0 done, 1 some file was not loaded or has errors. What
// keeps a command from beginning (wrong usage, a database that can't be opened) is raised, and ends in exit status 2.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "VXUtilsTexto.h"

namespace impnfse::app {

// Wrong usage, in one Portuguese line that says what to do.
class EUso : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TOpcoesFilial {
  String CNPJ;
  String UF;
  String Municipio;
  // Absent options leave what the branch has; a new one takes the defaults of TFilialRegistrada.
  std::optional<String> IE;
  std::optional<String> Nome;
  std::optional<int> Empresa;
  std::optional<int> CasasCFOP;
  std::optional<int> RemoverCaracteres;
  std::optional<String> ArquivoMorto;
};

struct TOpcoesImportar {
  std::vector<String> Arquivos;
  String Leiaute;  // empty: chosen per file
  String Filial;
  bool JSON = false;
};

struct TOpcoesAnalisar {
  String Arquivo;
  bool JSON = false;
};

struct TOpcoesRegistros {
  String Filial;
  String De;
  String Ate;
  bool JSON = false;
};

int Criar(const String& banco);
int Filial(const String& banco, const TOpcoesFilial& opcoes);
int Municipios(const String& banco, const String& arquivo, bool substituir);
int Leiautes(const String& banco, bool json);
int Analisar(const String& banco, const TOpcoesAnalisar& opcoes);
int Importar(const String& banco, const TOpcoesImportar& opcoes);
int Registros(const String& banco, const TOpcoesRegistros& opcoes);

// The 14 characters of a CNPJ, without its punctuation. Raises EUso for anything else.
String NormalizarCNPJ(const String& texto);
// 11.222.333/0001-81; other texts as they are.
String FormatarCNPJ(const String& cnpj);

}  // namespace impnfse::app
