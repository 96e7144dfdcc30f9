#include "Programa.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>

namespace impnfse::testes {
namespace {

constexpr id_t kNobody = 65534;

String LerEFechar(int descritor) {
  const auto tamanho = std::max<off_t>(::lseek(descritor, 0, SEEK_END), 0);
  String texto(static_cast<std::size_t>(tamanho), '\0');
  EXPECT_EQ(::pread(descritor, texto.data(), texto.size(), 0), tamanho);
  ::close(descritor);
  return texto;
}

// What was written to a terminal whose other end is closed.
String LerTerminal(int descritor) {
  String texto;
  std::array<char, 4096> bloco{};
  for (ssize_t lidos = 0; (lidos = ::read(descritor, bloco.data(), bloco.size())) > 0;)
    texto.append(bloco.data(), static_cast<std::size_t>(lidos));
  ::close(descritor);
  return texto;
}

bool MorrerAoChamar(int chamada) {
  sock_filter regras[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                          BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(chamada), 0, 1),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
                          BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
  const sock_fprog programa{.len = std::size(regras), .filter = regras};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &programa) == 0;
}

}  // namespace

TProcesso::TProcesso(const String& linha, const TOpcoesExecucao& opcoes)
    : FSaida(opcoes.Saida.empty() ? ::memfd_create("saida", 0) : ::open(opcoes.Saida.c_str(), O_RDWR)),
      FErros(::memfd_create("erros", 0)) {
  if (!opcoes.Teclado.empty()) {
    ::close(FErros);
    termios modos{};
    EXPECT_EQ(::openpty(&FErros, &FTerminal, nullptr, nullptr, nullptr), 0);
    ::tcgetattr(FTerminal, &modos);
    modos.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    modos.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    ::tcsetattr(FTerminal, TCSANOW, &modos);
    EXPECT_GT(::write(FErros, opcoes.Teclado.data(), opcoes.Teclado.size()), 0);
  }
  const bool semPrivilegios = opcoes.SemPrivilegios && ::geteuid() == 0;
  std::vector<String> argumentos = {"impnfse"};
  std::istringstream texto(linha);
  for (String argumento; texto >> std::quoted(argumento, '\'');) argumentos.push_back(argumento);
  std::vector<char*> argv;
  for (auto& argumento : argumentos) argv.push_back(argumento.data());
  argv.push_back(nullptr);
  // By its descriptor the program also runs where its folder is shut to the one who runs it.
  const int programa = ::open(IMPNFSE_PROGRAMA, O_RDONLY | O_CLOEXEC);

  // The engine's lock files of one user are shut to another.
  if (semPrivilegios) ::setenv("FIREBIRD_LOCK", opcoes.Pasta.c_str(), 1);
  FPid = ::fork();
  if (FPid == 0) {
    ::dup2(FSaida, STDOUT_FILENO);
    ::dup2(FTerminal >= 0 ? FTerminal : FErros, STDERR_FILENO);
    if (FTerminal >= 0) ::dup2(FTerminal, STDIN_FILENO);
    ::alarm(60);
    if (::chdir(opcoes.Pasta.c_str()) == 0 &&
        (!semPrivilegios || (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0)) &&
        (opcoes.MorreAoChamar < 0 || MorrerAoChamar(opcoes.MorreAoChamar)))
      ::fexecve(programa, argv.data(), environ);
    ::_exit(127);
  }
  if (FTerminal >= 0) ::close(FTerminal);
  if (semPrivilegios) ::unsetenv("FIREBIRD_LOCK");
  ::close(programa);
}

void TProcesso::Sinalizar(int sinal) const { ::kill(FPid, sinal); }

const TExecucao& TProcesso::Esperar() {
  if (FPid <= 0) return FExecucao;
  int estado = 0;
  ::waitpid(FPid, &estado, 0);
  FPid = -1;
  FExecucao = {.Status = WIFSIGNALED(estado) ? -WTERMSIG(estado) : WEXITSTATUS(estado),
               .Saida = LerEFechar(FSaida),
               .Erros = FTerminal >= 0 ? LerTerminal(FErros) : LerEFechar(FErros)};
  return FExecucao;
}

TTestePrograma::TTestePrograma() {
  NovoBanco(Pasta / "banco.fdb");
  fs::create_directory(Pasta / "entrada");
  RegistrarFilial("--nome 'Oficina d\\'Água; matriz' --arquivo-morto morto");
}

TExecucao TTestePrograma::Rodar(const String& linha, TOpcoesExecucao opcoes) const {
  if (opcoes.Pasta.empty()) opcoes.Pasta = Pasta / "";
  return TProcesso(linha, opcoes).Esperar();
}

String TTestePrograma::Exigir(const String& linha) const {
  const auto execucao = Rodar(linha);
  EXPECT_EQ(execucao.Status, 0) << execucao.Saida << execucao.Erros;
  return execucao.Saida;
}

void TTestePrograma::ImportarNotas(const std::vector<TNotaGINFES>& notas) const {
  Exigir("importar banco.fdb --leiaute 43 " + Pasta.Gravar("entrada/x.xml", ArquivoGINFES(notas)));
}

String TTestePrograma::RegistrarFilial(const String& resto, const String& cnpj) const {
  return Exigir(fmt::format("filial banco.fdb --uf SC --municipio 4205407 --cnpj {} {}", cnpj, resto));
}

String TTestePrograma::Tabela(const String& sql) const {
  TBancoFirebird banco(Pasta / "banco.fdb");
  return testes::Tabela(banco, sql);
}

::testing::AssertionResult FalhouComUmaLinha(const TExecucao& execucao, int status, std::string_view parte) {
  const auto& linha = execucao.Erros;
  bool certa = execucao.Status == status && execucao.Saida.empty() && linha.starts_with("impnfse: ") &&
               linha.find('\n') + 1 == linha.size() && linha.find(parte) != linha.npos;
  for (const auto* ingles : {"rror", "Value", "xception", "Invalid", "DATABASE", "denied", "directory", "operation"})
    certa = certa && linha.find(ingles) == linha.npos;
  if (certa) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << fmt::format("status {}, esperado: {} e uma linha com \"{}\":\n{}{}",
                                                      execucao.Status, status, parte, linha, execucao.Saida);
}

}  // namespace impnfse::testes
