// What the tests share: temporary folders and databases, the run of one file, and the stored registers as text.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "SqlRegistro.h"
#include "Suite.h"
#include "UnVX03704ImpNFSe.h"

namespace impnfse::testes {

namespace fs = std::filesystem;

// A table of cases from one text: "input => expected | input => expected".
std::vector<std::pair<String, String>> Casos(std::string_view texto);

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

 private:
  fs::path FPasta;
};

// The branch of most tests: Florianópolis, SC, with an archive folder when one is given.
inline constexpr const char* kCNPJFilial = "11222333000181";
TFilialRegistrada Filial(const String& cnpj = kCNPJFilial, const String& uf = "SC", Int64 empresa = 1);

// An open suite over a new database with one branch, whose archive is the folder "morto".
class TTesteComBanco : public ::testing::Test {
 protected:
  TTesteComBanco();

  // Registers branches, which the suite then knows.
  void Registrar(const TFilialRegistrada& filial);
  // Closes the suite and opens it again over the same database.
  void Reabrir();

  TBancoFirebird& Banco() { return FSuite->Banco(); }
  TArmazemRegistros& Armazem() { return FSuite->Armazem(); }
  TSuite& Suite() { return *FSuite; }

  // Imports the file under the code, and gives the front end after its run.
  std::unique_ptr<TImpNFSe> Importar(const String& arquivo, const String& leiaute = "43", Int64 filial = 0);
  // The same for a file with that content.
  std::unique_ptr<TImpNFSe> ImportarTexto(std::string_view conteudo, const String& leiaute = "43");

  // The rows of a query: cells separated by "|" (NULL is "-"), each row behind the first after a line break.
  String Tabela(const String& sql);
  Int64 Contar(const String& tabela) { return Banco().ConsultarInteiro("SELECT COUNT(*) FROM " + tabela); }
  // The stored registers of a class, read as the program reads them.
  template <class Registro>
  std::vector<Registro> Ler();

  TPastaTemporaria Pasta;

 private:
  int FArquivos = 0;
  std::optional<TSuite> FSuite;
};

// The error list as one text, a line each.
String Erros(TArquivoImpBase& importacao);

template <class Registro>
std::vector<Registro> TTesteComBanco::Ler() {
  const bool transacaoPropria = !Banco().EmTransacao();
  if (transacaoPropria) Banco().Iniciar();
  std::vector<Registro> registros;
  {
    TLeitura<Registro> leitura(Banco().Sessao(), "ORDER BY 1", 0);
    leitura.Abrir();
    for (Registro registro; leitura.Proximo(registro);) registros.push_back(registro);
  }
  if (transacaoPropria) Banco().Confirmar();
  return registros;
}

}  // namespace impnfse::testes
