#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "ErrosDoSistema.h"
#include "VX03704ImpBase.h"

namespace impnfse {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Falhar(int erro) { throw std::system_error(erro, std::generic_category()); }

// A file descriptor that closes itself.
class TDescritor {
 public:
  TDescritor(const fs::path& caminho, int modo, mode_t permissoes = 0)
      : FDescritor(::open(caminho.c_str(), modo | O_CLOEXEC, permissoes)) {
    if (FDescritor < 0) Falhar(errno);
  }
  ~TDescritor() { ::close(FDescritor); }
  TDescritor(const TDescritor&) = delete;
  TDescritor& operator=(const TDescritor&) = delete;
  operator int() const { return FDescritor; }

 private:
  int FDescritor;
};

void Descarregar(const fs::path& pasta) {
  const TDescritor descritor(pasta, O_RDONLY | O_DIRECTORY);
  if (::fsync(descritor) != 0 && errno != EINVAL) Falhar(errno);
}

// Gives the file a new name unless that name is taken; false when it is.
bool RenomeouSemSobrepor(const fs::path& de, const fs::path& para) {
  if (::renameat2(AT_FDCWD, de.c_str(), AT_FDCWD, para.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EEXIST) return false;
  if (errno != EINVAL) Falhar(errno);
  // A file system without that call: a link is as careful, with a moment in which both names exist.
  if (::link(de.c_str(), para.c_str()) == 0) {
    if (::unlink(de.c_str()) != 0) Falhar(errno);
    return true;
  }
  if (errno == EEXIST) return false;
  Falhar(errno);
}

void CopiarConteudo(int de, int para) {
  std::array<char, 65536> bloco{};
  for (;;) {
    const auto lidos = ::read(de, bloco.data(), bloco.size());
    if (lidos < 0) Falhar(errno);
    if (lidos == 0) break;
    for (ssize_t escritos = 0; escritos < lidos;) {
      const auto n = ::write(para, bloco.data() + escritos, static_cast<std::size_t>(lidos - escritos));
      if (n < 0) Falhar(errno);
      escritos += n;
    }
  }
  if (::fsync(para) != 0) Falhar(errno);
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
// goes. Whenever the process dies, the original or the whole copy is there.
fs::path CopiarERemover(const fs::path& origem, const fs::path& destino) {
  const auto parcial = destino.parent_path() / fmt::format(".impnfse-{}.parcial", ::getpid());
  try {
    {
      const TDescritor de(origem, O_RDONLY);
      struct stat dados {};
      if (::fstat(de, &dados) != 0) Falhar(errno);
      const TDescritor para(parcial, O_WRONLY | O_CREAT | O_TRUNC, dados.st_mode & 07777U);
      CopiarConteudo(de, para);
    }
    auto final = RenomearParaLivre(parcial, destino);
    Descarregar(final.parent_path());
    if (::unlink(origem.c_str()) != 0) {
      const int erro = errno;
      ::unlink(final.c_str());
      Falhar(erro);
    }
    return final;
  } catch (...) {
    ::unlink(parcial.c_str());
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
    if (fs::is_symlink(FOrigem)) fs::remove(FOrigem);
    return true;
  } catch (const std::system_error& erro) {
    FFalha = fmt::format("O arquivo ficou onde estava: não foi possível movê-lo para {} ({}).",
                         destino.parent_path().string(), MotivoDoSistema(erro.code().value()));
    return false;
  }
}

}  // namespace impnfse
