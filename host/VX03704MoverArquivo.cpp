#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "ErrosDoSistema.h"
#include "GravacaoSegura.h"
#include "VX03704ImpBase.h"

namespace impnfse {
namespace {

namespace fs = std::filesystem;

// Gives the file a new name unless that name is taken; false when it is.
bool RenomeouSemSobrepor(const fs::path& de, const fs::path& para) {
  if (::renameat2(AT_FDCWD, de.c_str(), AT_FDCWD, para.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EEXIST) return false;
  if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) FalharNoSistema(errno);
  // A file system without that call: a link is as careful, with a moment in which both names exist.
  if (::link(de.c_str(), para.c_str()) == 0) {
    if (::unlink(de.c_str()) == 0) return true;
    const int erro = errno;
    ::unlink(para.c_str());
    FalharNoSistema(erro);
  }
  if (errno == EEXIST) return false;
  FalharNoSistema(errno);
}

void CopiarConteudo(const TDescritor& de, const TDescritor& para) {
  std::array<char, 65536> bloco{};
  for (;;) {
    const auto lidos = ::read(de, bloco.data(), bloco.size());
    if (lidos < 0) FalharNoSistema(errno);
    if (lidos == 0) break;
    para.Escrever({bloco.data(), static_cast<std::size_t>(lidos)});
  }
  para.Descarregar();
}

// The name at the n-th try: "nota.xml", "nota (2).xml", "nota (3).xml", ...
fs::path Tentativa(const fs::path& destino, int n) {
  if (n == 1) return destino;
  return destino.parent_path() / fmt::format("{} ({}){}", destino.stem().string(), n, destino.extension().string());
}

// The first free name for the file, which has it when the function returns.
fs::path RenomearParaLivre(const fs::path& de, const fs::path& destino) {
  for (int n = 1;; ++n) {
    auto para = Tentativa(destino, n);
    if (RenomeouSemSobrepor(de, para)) return para;
  }
}

// To another file system: a complete copy under a passing name in the same folder, then its name, then the original
// goes. Whenever the process dies, the original or the whole copy is there; when anything fails, the copy goes.
fs::path CopiarERemover(const fs::path& origem, const fs::path& destino) {
  auto parcial = (destino.parent_path() / ".impnfse-XXXXXX").string();
  const TDescritor para(::mkostemp(parcial.data(), O_CLOEXEC));
  fs::path copia = parcial;
  try {
    const TDescritor de(::open(origem.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat dados {};
    if (::fstat(de, &dados) != 0 || ::fchmod(para, dados.st_mode & 07777U) != 0) FalharNoSistema(errno);
    CopiarConteudo(de, para);
    copia = RenomearParaLivre(copia, destino);
    const TDescritor pasta(::open(copia.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (::fsync(pasta) != 0 && errno != EINVAL) FalharNoSistema(errno);
    if (::unlink(origem.c_str()) != 0) FalharNoSistema(errno);
    return copia;
  } catch (...) {
    ::unlink(copia.c_str());
    throw;
  }
}

}  // namespace

bool TMoverArquivoIOP::MoveuArquivo() {
  FArquivoFinal.clear();
  FFalha.clear();
  if (FDestino.empty()) return false;
  const fs::path destino(FDestino);
  try {
    // Behind a link lies the file; it is what goes, and the link with it.
    const fs::path origem = fs::canonical(FOrigem);
    if (fs::exists(destino) && fs::equivalent(origem, destino)) {
      FArquivoFinal = FDestino;
      return true;
    }
    fs::create_directories(destino.parent_path());
    try {
      FArquivoFinal = RenomearParaLivre(origem, destino).string();
    } catch (const std::system_error& erro) {
      if (erro.code().value() != EXDEV) throw;
      FArquivoFinal = CopiarERemover(origem, destino).string();
    }
    std::error_code ignorado;  // a link that stays behind leads nowhere, and harms nobody
    if (fs::is_symlink(FOrigem, ignorado)) fs::remove(FOrigem, ignorado);
    return true;
  } catch (const std::system_error& erro) {
    FFalha = fmt::format("O arquivo ficou onde estava: não foi possível movê-lo para {} ({}).",
                         destino.parent_path().string(), MotivoDoSistema(erro.code().value()));
    return false;
  }
}

}  // namespace impnfse
