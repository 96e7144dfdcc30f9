#include "ErrosDoSistema.h"

#include <cerrno>
#include <system_error>

namespace impnfse {

String MotivoDoSistema(int erro) {
  switch (erro) {
    case ENOENT:
      return "não existe";
    case EACCES:
    case EPERM:
      return "sem permissão";
    case EROFS:
      return "só se pode ler";
    case EISDIR:
      return "é uma pasta";
    case ENOTDIR:
      return "no caminho há um arquivo onde devia haver uma pasta";
    case EEXIST:
      return "já existe um arquivo com esse nome";
    case EINVAL:
      return "não é um arquivo comum";
    case EFBIG:
      return "é grande demais";
    case ENAMETOOLONG:
      return "o nome é longo demais";
    case ELOOP:
      return "é um atalho que não leva a nada";
    case ENOSPC:
    case EDQUOT:
      return "não há espaço em disco";
    case EIO:
      return "o disco falhou";
    default:
      return std::generic_category().message(erro);
  }
}

}  // namespace impnfse
