#include "ArquivoAberto.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "ErrosDoSistema.h"
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
  throw EArquivo(fmt::format("O arquivo {} não pode ser lido: {}.", FCaminho, MotivoDoSistema(erroDoSistema)));
}

}  // namespace impnfse
