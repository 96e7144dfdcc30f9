#include "ErrosFirebird.h"

#include <fmt/format.h>
#include <soci/firebird/soci-firebird.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace impnfse {
namespace {

// The engine's own codes and the operating system's error, out of its status vector: pairs of a kind and a value, but
// for counted texts, which have one value more.
struct TStatus {
  std::vector<ISC_STATUS> Codigos;
  int ErroDoSistema = 0;

  explicit TStatus(const soci::soci_error& erro) {
    const auto* firebird = dynamic_cast<const soci::firebird_soci_error*>(&erro);
    if (firebird == nullptr) return;
    const auto& vetor = firebird->status_;
    for (std::size_t i = 0; i + 1 < vetor.size() && vetor[i] != isc_arg_end; i += vetor[i] == isc_arg_cstring ? 3 : 2) {
      if (vetor[i] == isc_arg_gds) Codigos.push_back(vetor[i + 1]);
      if (vetor[i] == isc_arg_unix) ErroDoSistema = static_cast<int>(vetor[i + 1]);
    }
  }

  bool Tem(std::initializer_list<ISC_STATUS> procurados) const {
    return std::any_of(procurados.begin(), procurados.end(),
                       [&](ISC_STATUS c) { return std::find(Codigos.begin(), Codigos.end(), c) != Codigos.end(); });
  }
};

}  // namespace

String TextoDoErro(const soci::soci_error& erro, const String& conexao) {
  const TStatus status(erro);
  if (status.Tem({isc_already_opened, isc_instance_conflict, isc_lock_timeout}))
    return fmt::format(
        "O banco {} está em uso por outro processo. Espere que ele termine, ou use um servidor Firebird "
        "(servidor:caminho) para vários processos ao mesmo tempo.",
        conexao);
  if (EhConexaoPerdida(erro))
    return fmt::format("O servidor do banco {} não responde. Confira se ele está no ar e tente de novo.", conexao);
  if (status.Tem({isc_login}))
    return fmt::format("O servidor recusou o acesso ao banco {}. Informe usuário e senha em ISC_USER e ISC_PASSWORD.",
                       conexao);
  if (status.ErroDoSistema == ENOSPC)
    return fmt::format("Não há espaço em disco para o banco {}. Libere espaço e tente de novo.", conexao);
  if (status.ErroDoSistema == ENOENT)
    return fmt::format("O banco {0} não existe. Crie-o com: impnfse criar {0}", conexao);
  if (status.ErroDoSistema == EACCES || status.ErroDoSistema == EROFS ||
      status.Tem({isc_no_priv, isc_read_only_database}))
    return fmt::format(
        "Sem permissão de leitura e gravação no banco {}, na sua pasta ou na pasta de bloqueios do Firebird "
        "(FIREBIRD_LOCK). Acerte as permissões.",
        conexao);
  // A file that ends too soon has no error of the system's.
  if (status.Tem({isc_bad_db_format, isc_wrong_ods, isc_badodsver}) ||
      (status.Tem({isc_io_error}) && status.ErroDoSistema == 0))
    return fmt::format(
        "{0} não é um banco Firebird que se possa abrir. Confira o nome, ou crie um banco com: "
        "impnfse criar {0}",
        conexao);
  if (EhConflitoDeAtualizacao(erro))
    return fmt::format("Outro processo alterou os mesmos registros do banco {}. Importe de novo.", conexao);

  // The engine's first line, without the statement that SOCI adds.
  String texto = erro.what();
  texto = texto.substr(0, std::min(texto.find('\n'), texto.find(" while ")));
  return fmt::format("Falha no banco {}: {}", conexao, texto);
}

bool EhConexaoPerdida(const soci::soci_error& erro) {
  return TStatus(erro).Tem({isc_network_error, isc_net_connect_err, isc_net_connect_listen_err, isc_net_read_err,
                            isc_net_write_err, isc_lost_db_connection, isc_att_shutdown, isc_shutdown});
}

bool EhConflitoDeAtualizacao(const soci::soci_error& erro) {
  return TStatus(erro).Tem({isc_deadlock, isc_update_conflict, isc_lock_conflict});
}

}  // namespace impnfse
