#include "BancoFirebird.h"

#include <fmt/format.h>
#include <ibase.h>
#include <locale.h>
#include <soci/firebird/soci-firebird.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

#include "DadosEmbutidos.h"
#include "ErrosFirebird.h"
#include "TabelaDeLeiautes.h"
#include "TabelaDeMunicipios.h"

namespace impnfse {
namespace {

constexpr std::size_t kMaximoDePreparados = 32;

// A plain path is a file of the embedded engine; a ":" makes it a server's.
bool EhServidor(const String& conexao) { return conexao.find(':') != conexao.npos; }

String ParametrosSOCI(const String& conexao) {
  if (conexao.find('"') != conexao.npos)
    throw EBanco(fmt::format("O caminho do banco não pode ter aspas: {}", conexao));
  // The embedded engine asks for no password; to a server the client introduces itself.
  return fmt::format("service=\"{}\" charset=UTF8 decimals_as_strings=1{}", conexao,
                     EhServidor(conexao) ? "" : " user=SYSDBA");
}

// The statements of a script: ";" ends one, or what SET TERM says; "--" begins a comment at the start of a line.
std::vector<String> Comandos(std::string_view script) {
  std::vector<String> comandos;
  String fim = ";";
  String comando;
  while (!script.empty()) {
    const auto quebra = script.find('\n');
    const auto linha = Aparar(script.substr(0, quebra));
    script.remove_prefix(quebra == script.npos ? script.size() : quebra + 1);
    if (linha.empty() || linha.starts_with("--")) continue;
    if (linha.starts_with("SET TERM ")) {
      const auto resto = linha.substr(9);
      fim = resto.substr(0, resto.find(' '));
      continue;
    }
    comando.append(linha).append("\n");
    if (!linha.ends_with(fim)) continue;
    comando.resize(comando.size() - fim.size() - 1);
    comandos.push_back(std::move(comando));
    comando.clear();
  }
  return comandos;
}

// One cell of a dynamic row as text.
std::optional<String> Celula(const soci::row& linha, std::size_t i) {
  if (linha.get_indicator(i) == soci::i_null) return std::nullopt;
  switch (linha.get_properties(i).get_data_type()) {
    case soci::dt_integer:
      return std::to_string(linha.get<int>(i));
    case soci::dt_long_long:
      return std::to_string(linha.get<long long>(i));
    case soci::dt_unsigned_long_long:
      return std::to_string(linha.get<unsigned long long>(i));
    case soci::dt_double:
      return fmt::format("{}", linha.get<double>(i));
    case soci::dt_date: {
      const auto data = linha.get<std::tm>(i);
      return fmt::format("{:04}-{:02}-{:02}", data.tm_year + 1900, data.tm_mon + 1, data.tm_mday);
    }
    default:
      return linha.get<std::string>(i);
  }
}

// While it lives, this thread's character set is UTF-8, as our paths are. The Firebird client asks once, at its first
// use, what the system's is, and refuses a path with an accent where the program's locale knows none.
class TCaracteresUTF8 {
 public:
  TCaracteresUTF8() : FLocale(::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
    if (FLocale != nullptr) FAnterior = ::uselocale(FLocale);
  }
  ~TCaracteresUTF8() {
    if (FLocale == nullptr) return;
    ::uselocale(FAnterior);
    ::freelocale(FLocale);
  }
  TCaracteresUTF8(const TCaracteresUTF8&) = delete;
  TCaracteresUTF8& operator=(const TCaracteresUTF8&) = delete;

 private:
  locale_t FLocale;
  locale_t FAnterior = nullptr;
};

// Through the engine's own call: SOCI only opens, and the SQL command doesn't take every path.
void CriarVazio(const String& conexao) {
  constexpr int kPagina = 16384;
  std::vector<char> opcoes{isc_dpb_version1};
  const auto acrescentar = [&](char opcao, std::string_view valor) {
    opcoes.push_back(opcao);
    opcoes.push_back(static_cast<char>(valor.size()));
    opcoes.insert(opcoes.end(), valor.begin(), valor.end());
  };
  acrescentar(isc_dpb_page_size, {reinterpret_cast<const char*>(&kPagina), sizeof kPagina});
  acrescentar(isc_dpb_sql_dialect, {"\x03", 1});
  acrescentar(isc_dpb_set_db_charset, "UTF8");
  if (!EhServidor(conexao)) acrescentar(isc_dpb_user_name, "SYSDBA");

  const TCaracteresUTF8 utf8;
  isc_db_handle banco = 0;
  std::array<ISC_STATUS, soci::stat_size> status{};
  if (isc_create_database(status.data(), static_cast<short>(conexao.size()), conexao.c_str(), &banco,
                          static_cast<short>(opcoes.size()), opcoes.data(), 0) != 0)
    throw EBanco(TextoDoErro(soci::firebird_soci_error("CREATE DATABASE", status.data()), conexao));
  isc_detach_database(status.data(), &banco);
}

}  // namespace

struct TBancoFirebird::TPreparado {
  String Comando;
  std::unique_ptr<soci::statement> Instrucao;
};

void TBancoFirebird::Criar(const String& conexao) {
  namespace fs = std::filesystem;
  if (!EhServidor(conexao) && fs::exists(conexao))
    throw EBanco(fmt::format("{} já existe. Escolha outro nome, ou apague o arquivo antes.", conexao));
  const auto pasta = fs::absolute(conexao).parent_path();
  if (!EhServidor(conexao) && !fs::is_directory(pasta))
    throw EBanco(fmt::format("A pasta {} não existe. Crie-a antes do banco.", pasta.string()));
  const auto parametros = ParametrosSOCI(conexao);
  try {
    CriarVazio(conexao);
    soci::session sessao(soci::firebird, parametros);
    {
      soci::transaction definicoes(sessao);
      for (const auto& comando : Comandos(embutidos::kEsquemaSQL)) sessao << comando;
      definicoes.commit();
    }
    soci::transaction sementes(sessao);
    GravarMunicipios(sessao, LerMunicipiosCSV(embutidos::kMunicipiosCSV), TCargaMunicipios::Substituir);
    GravarLeiautes(sessao, LerLeiautesCSV(embutidos::kLeiautesCSV));
    sessao << "INSERT INTO IMPNFSE_ESQUEMA (VERSAO) VALUES (" << kVersaoEsquema << ")";
    sementes.commit();
  } catch (const std::exception& erro) {
    std::error_code ignorado;
    if (!EhServidor(conexao)) fs::remove(conexao, ignorado);
    const auto* doBanco = dynamic_cast<const soci::soci_error*>(&erro);
    if (doBanco == nullptr) throw;
    throw EBanco(TextoDoErro(*doBanco, conexao));
  }
}

TBancoFirebird::TBancoFirebird(const String& conexao) : FConexao(conexao) {
  const TCaracteresUTF8 utf8;
  Proteger([&] { FSessao->open(soci::firebird, ParametrosSOCI(conexao)); });
  ConferirVersao();
}

TBancoFirebird::~TBancoFirebird() {
  EsquecerPreparados();
  try {
    if (FEmTransacao) FSessao->rollback();
  } catch (const soci::soci_error&) {
    FPerdida = true;
  }
  if (FPerdida) static_cast<void>(FSessao.release());
}

void TBancoFirebird::EsquecerPreparados() {
  for (auto& preparado : FPreparados)
    if (FPerdida) static_cast<void>(preparado.Instrucao.release());
  FPreparados.clear();
}

void TBancoFirebird::Iniciar() {
  Proteger([&] { FSessao->begin(); });
  FEmTransacao = true;
}

void TBancoFirebird::Confirmar() {
  Proteger([&] { FSessao->commit(); });
  FEmTransacao = false;
}

void TBancoFirebird::Desfazer() {
  EsquecerPreparados();
  FEmTransacao = false;
  Proteger([&] { FSessao->rollback(); });
}

void TBancoFirebird::EmTransacao(const std::function<void()>& acao) {
  for (;;) {
    Iniciar();
    try {
      acao();
      return Confirmar();
    } catch (const EConflito&) {
      Desfazer();
    } catch (...) {
      Desfazer();
      throw;
    }
  }
}

void TBancoFirebird::EmTransacaoPropria(const std::function<void()>& acao) {
  Proteger([&] {
    if (FEmTransacao) return acao();
    soci::transaction transacao(*FSessao);
    acao();
    transacao.commit();
  });
}

void TBancoFirebird::Executar(const String& sql) {
  if (sql.empty()) return;
  EmTransacaoPropria([&] {
    auto achado =
        std::find_if(FPreparados.begin(), FPreparados.end(), [&](const TPreparado& p) { return p.Comando == sql; });
    if (achado == FPreparados.end()) {
      auto instrucao = std::make_unique<soci::statement>(*FSessao);
      instrucao->alloc();
      instrucao->prepare(sql);
      instrucao->define_and_bind();
      FPreparados.push_front({sql, std::move(instrucao)});
      if (FPreparados.size() > kMaximoDePreparados) FPreparados.pop_back();
    } else {
      FPreparados.splice(FPreparados.begin(), FPreparados, achado);
    }
    FPreparados.front().Instrucao->execute(true);
  });
}

TLinhasConsulta TBancoFirebird::Consultar(const String& sql) {
  TLinhasConsulta dados;
  EmTransacaoPropria([&] {
    soci::rowset<soci::row> linhas = (FSessao->prepare << sql);
    for (const auto& linha : linhas) {
      std::vector<std::optional<String>> celulas;
      celulas.reserve(linha.size());
      for (std::size_t i = 0; i < linha.size(); ++i) celulas.push_back(Celula(linha, i));
      if (dados.Colunas.empty())
        for (std::size_t i = 0; i < linha.size(); ++i)
          dados.Colunas.push_back(Maiusculas(linha.get_properties(i).get_name()));
      dados.Linhas.push_back(std::move(celulas));
    }
  });
  return dados;
}

Int64 TBancoFirebird::ConsultarInteiro(const String& sql) {
  const auto dados = Consultar(sql);
  if (dados.Linhas.empty() || dados.Linhas.front().empty()) return 0;
  return StrToInt64Def(dados.Linhas.front().front().value_or(""), 0);
}

void TBancoFirebird::Relancar(const soci::soci_error& erro) {
  FPerdida = FPerdida || EhConexaoPerdida(erro);
  if (EhConflitoDeAtualizacao(erro)) throw EConflito(TextoDoErro(erro, FConexao));
  throw EBanco(TextoDoErro(erro, FConexao));
}

void TBancoFirebird::ConferirVersao() {
  const auto temTabela =
      ConsultarInteiro("SELECT COUNT(*) FROM RDB$RELATIONS WHERE RDB$RELATION_NAME = 'IMPNFSE_ESQUEMA'");
  const auto versao = temTabela == 0 ? 0 : ConsultarInteiro("SELECT MAX(VERSAO) FROM IMPNFSE_ESQUEMA");
  if (versao == kVersaoEsquema) return;
  if (versao == 0)
    throw EBanco(fmt::format("{0} não tem o esquema do impnfse. Crie outro banco com: impnfse criar NOME", FConexao));
  throw EBanco(
      fmt::format("O banco {} tem o esquema da versão {}, e este programa usa a versão {}. Use o programa "
                  "da mesma versão do banco.",
                  FConexao, versao, kVersaoEsquema));
}

}  // namespace impnfse
