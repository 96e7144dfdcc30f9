// The Firebird database, through SOCI. A plain path opens the embedded engine, which lets one process at a time into
// the file; "host:alias" or "host/port:path" reaches a server, with the user and password that the Firebird client
// takes from ISC_USER and ISC_PASSWORD.
#pragma once

#include <soci/soci.h>

#include <functional>
#include <list>
#include <memory>
#include <utility>

#include "VX03704Erros.h"
#include "VXDataAccess.h"
#include "VXUtilsTexto.h"

namespace impnfse {

// The version of the schema that this module reads and writes; a database has it in IMPNFSE_ESQUEMA.
inline constexpr int kVersaoEsquema = 1;

// Every operation raises EBanco, with one Portuguese line that says what to do, when the database refuses.
class TBancoFirebird {
 public:
  // Makes an empty database with the schema and its seed data. Leaves nothing behind when it fails.
  static void Criar(const String& conexao);

  // Opens a database of kVersaoEsquema.
  explicit TBancoFirebird(const String& conexao);
  ~TBancoFirebird();
  TBancoFirebird(const TBancoFirebird&) = delete;
  TBancoFirebird& operator=(const TBancoFirebird&) = delete;

  // One transaction at a time. Statements outside of one have their own.
  void Iniciar();
  void Confirmar();
  void Desfazer();
  // Runs `acao` in a transaction: begun again, with `acao`, for as long as other processes change the same rows first.
  void EmTransacao(const std::function<void()>& acao);
  // Whether the connection is gone (the server, or the network). Prepared statements over it can't be closed any more:
  // SOCI would raise in their destructors. Who has some lets go of them, as this class does of its own.
  bool Perdida() const { return FPerdida; }

  // Runs one statement without result; an empty one succeeds.
  void Executar(const String& sql);
  // Runs one SELECT.
  TLinhasConsulta Consultar(const String& sql);
  // The first cell of the first row as an integer; 0 without rows.
  Int64 ConsultarInteiro(const String& sql);

  // For prepared statements of the host. They must go before the database does.
  soci::session& Sessao() { return *FSessao; }
  // Runs `acao`, turning what SOCI raises into EBanco.
  template <class Acao>
  auto Proteger(Acao&& acao) -> decltype(acao());
  // Raises EBanco for what SOCI has raised.
  [[noreturn]] void Relancar(const soci::soci_error& erro);

 private:
  struct TPreparado;

  void EmTransacaoPropria(const std::function<void()>& acao);
  void EsquecerPreparados();
  void ConferirVersao();

  String FConexao;
  std::unique_ptr<soci::session> FSessao = std::make_unique<soci::session>();
  bool FEmTransacao = false;
  bool FPerdida = false;
  // Statements come as text and repeat within a run: the last ones stay prepared.
  std::list<TPreparado> FPreparados;
};

template <class Acao>
auto TBancoFirebird::Proteger(Acao&& acao) -> decltype(acao()) {
  try {
    return std::forward<Acao>(acao)();
  } catch (const soci::soci_error& erro) {
    Relancar(erro);
  }
}

}  // namespace impnfse
