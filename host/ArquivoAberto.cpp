#include "ArquivoAberto.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "VX03704Erros.h"

namespace impnfse {

TArquivoAberto::TArquivoAberto(String caminho)
    : FCaminho(std::move(caminho)), FDescritor(::open(FCaminho.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
  if (FDescritor < 0) Falhar(errno);
  struct stat dados {};
  const int erro = ::fstat(FDescritor, &dados) != 0 ? errno
                   : S_ISDIR(dados.st_mode)         ? EISDIR
                   : !S_ISREG(dados.st_mode)        ? EINVAL
                                                    : 0;
  if (erro != 0) {
    ::close(FDescritor);
    Falhar(erro);
  }
  FTamanho = dados.st_size;
}

TArquivoAberto::~TArquivoAberto() { ::close(FDescritor); }

std::size_t TArquivoAberto::Ler(char* destino, std::size_t maximo) {
  for (;;) {
    const auto lidos = ::read(FDescritor, destino, maximo);
    if (lidos >= 0) return static_cast<std::size_t>(lidos);
    if (errno != EINTR) Falhar(errno);
  }
}

void TArquivoAberto::Falhar(int erroDoSistema) const {
  const auto motivo = [&]() -> String {
    switch (erroDoSistema) {
      case ENOENT:
        return "não existe";
      case EACCES:
        return "sem permissão de leitura";
      case EISDIR:
        return "é uma pasta";
      case EINVAL:
        return "não é um arquivo comum";
      case EFBIG:
        return "é grande demais";
      default:
        return std::generic_category().message(erroDoSistema);
    }
  }();
  throw EArquivo(fmt::format("O arquivo {} não pode ser lido: {}.", FCaminho, motivo));
}

}  // namespace impnfse
