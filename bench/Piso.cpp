#include "Piso.h"

#include <fmt/format.h>
#include <libxml/parser.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

#include "BancoFirebird.h"

namespace impnfse::bench {
namespace {

// Every table that an import writes, parents ahead of their children.
constexpr std::array kTabelas = {"CA06_IMPORTACFG",    "ES02_REG0000",   "ES02_REG0150", "ES02_REG0200",
                                 "ES02_REGA100",       "ES02_REGA170",   "ES02_REGA17R", "ES02_REG0000MSG",
                                 "ES02_AUXMANUTENCAO", "ES02_TEXTOLONGO"};

// Types of RDB$FIELDS.
enum TTipo { kData = 12, kCaracteres = 14, kVarchar = 37, kBlob = 261 };

// One column with all its values in memory, and the buffer through which they go.
class TColuna {
 public:
  virtual ~TColuna() = default;
  virtual void Receber(soci::statement& leitura) = 0;
  virtual void Guardar() = 0;
  virtual void Entregar(soci::statement& insercao) = 0;
  virtual void Repor(std::size_t linha) = 0;
};

template <class T>
class TColunaDe final : public TColuna {
 public:
  void Receber(soci::statement& leitura) override { leitura.exchange(soci::into(FValor, FIndicador)); }
  void Guardar() override {
    FValores.push_back(FValor);
    FIndicadores.push_back(FIndicador);
  }
  void Entregar(soci::statement& insercao) override { insercao.exchange(soci::use(FValor, FIndicador)); }
  void Repor(std::size_t linha) override {
    FValor = std::move(FValores[linha]);
    FIndicador = FIndicadores[linha];
  }

 private:
  T FValor{};
  soci::indicator FIndicador = soci::i_ok;
  std::vector<T> FValores;
  std::vector<soci::indicator> FIndicadores;
};

// Exact numbers with decimals go as text, as they do in the module.
std::unique_ptr<TColuna> NovaColuna(int tipo, int escala) {
  if (tipo == kBlob) return std::make_unique<TColunaDe<soci::long_string>>();
  if (tipo == kData) return std::make_unique<TColunaDe<std::tm>>();
  if (tipo == kCaracteres || tipo == kVarchar || escala < 0) return std::make_unique<TColunaDe<std::string>>();
  return std::make_unique<TColunaDe<long long>>();
}

class TTabela {
 public:
  TTabela(soci::session& sessao, const std::string& nome) : FNome(nome) {
    std::string coluna;
    int tipo = 0;
    int escala = 0;
    soci::statement catalogo =
        (sessao.prepare << "SELECT TRIM(R.RDB$FIELD_NAME), F.RDB$FIELD_TYPE, F.RDB$FIELD_SCALE "
                           "FROM RDB$RELATION_FIELDS R JOIN RDB$FIELDS F ON F.RDB$FIELD_NAME = R.RDB$FIELD_SOURCE "
                           "WHERE R.RDB$RELATION_NAME = :tabela ORDER BY R.RDB$FIELD_POSITION",
         soci::into(coluna), soci::into(tipo), soci::into(escala), soci::use(nome));
    for (catalogo.execute(); catalogo.fetch();) {
      FNomes += (FNomes.empty() ? "" : ", ") + coluna;
      FParametros += (FParametros.empty() ? ":" : ", :") + coluna;
      FColunas.push_back(NovaColuna(tipo, escala));
    }
    soci::statement leitura(sessao);
    for (auto& c : FColunas) c->Receber(leitura);
    Preparar(leitura, fmt::format("SELECT {} FROM {}", FNomes, FNome));
    for (leitura.execute(); leitura.fetch(); ++FLinhas)
      for (auto& c : FColunas) c->Guardar();
  }

  std::size_t Linhas() const { return FLinhas; }

  void Inserir(soci::session& sessao) {
    if (FLinhas == 0) return;
    soci::statement insercao(sessao);
    for (auto& c : FColunas) c->Entregar(insercao);
    Preparar(insercao, fmt::format("INSERT INTO {} ({}) VALUES ({})", FNome, FNomes, FParametros));
    for (std::size_t i = 0; i < FLinhas; ++i) {
      for (auto& c : FColunas) c->Repor(i);
      insercao.execute(true);
    }
  }

 private:
  static void Preparar(soci::statement& instrucao, const std::string& sql) {
    instrucao.alloc();
    instrucao.prepare(sql);
    instrucao.define_and_bind();
  }

  std::string FNome;
  std::string FNomes;
  std::string FParametros;
  std::vector<std::unique_ptr<TColuna>> FColunas;
  std::size_t FLinhas = 0;
};

template <class Acao>
double Segundos(Acao acao) {
  const auto inicio = std::chrono::steady_clock::now();
  acao();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
}

// The number of rows of each table, "TABLE: n" one a line.
std::string ContarLinhas(TBancoFirebird& banco) {
  const auto tabelas = banco.Consultar(
      "SELECT TRIM(RDB$RELATION_NAME) FROM RDB$RELATIONS WHERE RDB$SYSTEM_FLAG = 0 AND RDB$VIEW_BLR IS NULL ORDER BY "
      "1");
  std::string contagem;
  for (const auto& linha : tabelas.Linhas)
    contagem += fmt::format("{}: {}\n", *linha[0], banco.ConsultarInteiro("SELECT COUNT(*) FROM " + *linha[0]));
  return contagem;
}

}  // namespace

TPiso MedirPiso(const std::string& arquivo, const std::string& importado, const std::string& vazio) {
  TPiso piso{};
  if (std::filesystem::path(arquivo).extension() == ".xml") {
    // First, while the heap is as fresh as an import finds it.
    const auto bytes = LerArquivo(arquivo);
    xmlInitParser();
    piso.Leitura = Segundos([&] {
      const auto documento = xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                                           XML_PARSE_NONET | XML_PARSE_NOENT);
      if (documento == nullptr) throw std::runtime_error("o arquivo gerado não é XML: " + arquivo);
      xmlFreeDoc(documento);
    });
  }
  std::vector<TTabela> tabelas;
  std::string linhasImportadas;
  {
    TBancoFirebird banco(importado);
    banco.Iniciar();
    for (const auto* const nome : kTabelas) tabelas.emplace_back(banco.Sessao(), nome);
    banco.Confirmar();
    linhasImportadas = ContarLinhas(banco);
  }
  TBancoFirebird banco(vazio);
  piso.Insercao = Segundos([&] {
    banco.Iniciar();
    for (auto& tabela : tabelas) tabela.Inserir(banco.Sessao());
    banco.Confirmar();
  });
  // An import that fills a table unknown here would be measured against less than what it stores.
  if (const auto linhas = ContarLinhas(banco); linhas != linhasImportadas)
    throw std::runtime_error(fmt::format("o piso não tem todas as linhas da importação, que gravou\n{}e o piso\n{}",
                                         linhasImportadas, linhas));
  for (const auto& tabela : tabelas) piso.Linhas += static_cast<double>(tabela.Linhas());
  return piso;
}

}  // namespace impnfse::bench
