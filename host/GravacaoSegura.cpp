#include "GravacaoSegura.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace impnfse {

namespace fs = std::filesystem;

void FalharNoSistema(int erro) { throw std::system_error(erro, std::generic_category()); }

TDescritor::TDescritor(int descritor) : FDescritor(descritor) {
  if (FDescritor < 0) FalharNoSistema(errno);
}

TDescritor::~TDescritor() { ::close(FDescritor); }

void TDescritor::Escrever(std::string_view bytes) const {
  while (!bytes.empty()) {
    const auto escritos = ::write(FDescritor, bytes.data(), bytes.size());
    if (escritos < 0) FalharNoSistema(errno);
    bytes.remove_prefix(static_cast<std::size_t>(escritos));
  }
}

void TDescritor::Descarregar() const {
  if (::fsync(FDescritor) != 0) FalharNoSistema(errno);
}

void RegravarArquivo(const String& caminho, std::string_view bytes) {
  const auto destino = fs::canonical(caminho);
  if (::access(destino.c_str(), W_OK) != 0) FalharNoSistema(errno);
  struct stat dados {};
  if (::stat(destino.c_str(), &dados) != 0) FalharNoSistema(errno);

  auto parcial = (destino.parent_path() / ".impnfse-XXXXXX").string();
  const TDescritor para(::mkostemp(parcial.data(), O_CLOEXEC));
  try {
    // The owner of another's file can't always be kept; the permissions can.
    static_cast<void>(::fchown(para, dados.st_uid, dados.st_gid));
    if (::fchmod(para, dados.st_mode & 07777U) != 0) FalharNoSistema(errno);
    para.Escrever(bytes);
    para.Descarregar();
    fs::rename(parcial, destino);
  } catch (...) {
    ::unlink(parcial.c_str());
    throw;
  }
}

}  // namespace impnfse
