// What the tests share: temporary folders and databases, the run of one file, and what is stored as text.
#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "Suite.h"
#include "UnVX03704ImpNFSe.h"

namespace impnfse::testes {

namespace fs = std::filesystem;

// A table of cases from one text: "input => expected | input => expected".
std::vector<std::pair<String, String>> Casos(std::string_view texto);
// The text with those replacements made, "text => other | text => other", wherever the text stands.
String Trocar(String texto, std::string_view trocas);
::testing::AssertionResult Contem(const String& texto, std::string_view parte);
String Repetir(std::string_view texto, int vezes);
// The text with each "tag=text;" in it as an element (or what `fim` is in place of ";"). Attributes stay.
String Elementos(std::string_view texto, char fim = ';');
// The text of the exception that the action raises; empty when it raises none.
String Levantado(const std::function<void()>& acao);

// A folder of its own, which goes with its content.
class TPastaTemporaria {
 public:
  explicit TPastaTemporaria(const fs::path& onde = fs::temp_directory_path());
  ~TPastaTemporaria();
  TPastaTemporaria(const TPastaTemporaria&) = delete;
  TPastaTemporaria& operator=(const TPastaTemporaria&) = delete;

  String operator/(std::string_view nome) const { return (FPasta / nome).string(); }
  // Writes the file, making its folders, and gives its path.
  String Gravar(std::string_view nome, std::string_view bytes) const;
  bool Tem(std::string_view nome) const { return fs::exists(fs::symlink_status(FPasta / nome)); }

 private:
  fs::path FPasta;
};

// A new database with the shipped tables.
void NovoBanco(const String& caminho);
// The rows of a query: cells separated by "|" (NULL is "-", and values without decimals have none), each row behind the
// first after a line break.
String Tabela(TBancoFirebird& banco, const String& sql);

// The branch of most tests: Florianópolis, SC.
inline constexpr const char* kCNPJFilial = "11222333000181";
inline constexpr const char* kOutraFilial = "11222333000262";
TFilialRegistrada Filial(const String& cnpj = kCNPJFilial, const String& uf = "SC", Int64 empresa = 1);

// An open suite over a new database with one branch, whose archive is the folder "morto".
class TTesteComBanco : public ::testing::Test {
 protected:
  TTesteComBanco();

  // Registers a branch, which the suite then knows.
  void Registrar(const TFilialRegistrada& filial);
  // Closes the suite and opens it again over the same database.
  void Reabrir();

  TBancoFirebird& Banco() { return FSuite->Banco(); }
  TArmazemRegistros& Armazem() { return FSuite->Armazem(); }
  TSuite& Suite() { return *FSuite; }

  // Imports the file, and gives the front end after its run.
  std::unique_ptr<TImpNFSe> Importar(const String& arquivo, const String& leiaute = "43");
  // Imports notes, each told by what it replaces in the model, in a file whose root has them in place of "{}";
  // "tag=text;" stands for an element. Gives what the run tells.
  String ImportarNotas(const String& leiaute, std::string_view modelo, const std::vector<String>& trocas,
                       std::string_view raiz = "{}");

  String Tabela(const String& sql) { return testes::Tabela(Banco(), sql); }
  // The same of the stored documents (A) with their periods (P), participants (Q), items (I), the descriptions of these
  // (D) and, where the columns name them, retained taxes (R), in order of insertion.
  String Documentos(const String& colunas);
  Int64 Contar(const String& tabela) { return Banco().ConsultarInteiro("SELECT COUNT(*) FROM " + tabela); }

  TPastaTemporaria Pasta;

 private:
  std::optional<TSuite> FSuite;
};

// What a run tells: imported and with errors or not, "[side number]" of each document in the summary, "!" and the
// worker's last error, the error list in one line. A note that is nobody's is "alheia", the structure error
// "estrutura".
String Resultado(TImpNFSe& importacao);

// The error list as one text, a line each.
inline String Erros(TArquivoImpBase& importacao) { return importacao.GetListaErros().Text(); }

}  // namespace impnfse::testes
