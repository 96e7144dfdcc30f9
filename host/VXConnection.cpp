#include "VXConnection.h"

namespace impnfse {

bool TVXConnection::ExecutouSQL(const String& sql, int /*opcao*/, bool /*mostraErro*/, TResultStatus& status) {
  try {
    FBanco.Executar(sql);
    status = {};
  } catch (const EBanco& erro) {
    status = {.Sucesso = false, .Mensagem = erro.what()};
  }
  return status.Sucesso;
}

}  // namespace impnfse
