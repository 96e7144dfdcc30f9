#include "Programa.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pty.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <fstream>
#include <iterator>

namespace impnfse::testes {
namespace {

constexpr unsigned kLimiteSegundos = 60;
constexpr id_t kNobody = 65534;

std::vector<char*> Ponteiros(TArgumentos& textos) {
  std::vector<char*> ponteiros;
  for (auto& texto : textos) ponteiros.push_back(texto.data());
  ponteiros.push_back(nullptr);
  return ponteiros;
}

// What stands in the file, or waits in the terminal.
String LerDescritor(int descritor) {
  String texto;
  ::lseek(descritor, 0, SEEK_SET);
  std::array<char, 65536> bloco{};
  for (ssize_t n = 0; (n = ::read(descritor, bloco.data(), bloco.size())) > 0;)
    texto.append(bloco.data(), static_cast<std::size_t>(n));
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

TProcesso::TProcesso(TArgumentos argumentos, const TOpcoesExecucao& opcoes)
    : FSaida(opcoes.Saida.empty() ? ::memfd_create("saida", 0) : ::open(opcoes.Saida.c_str(), O_WRONLY)) {
  int erros = FErros = ::memfd_create("erros", 0);
  if (opcoes.Terminal && ::openpty(&FErros, &erros, nullptr, nullptr, nullptr) != 0)
    throw std::runtime_error("sem pseudoterminal");

  const bool semPrivilegios = opcoes.SemPrivilegios && ::geteuid() == 0;
  argumentos.insert(argumentos.begin(), "impnfse");
  TArgumentos ambiente;
  for (char** variavel = environ; *variavel != nullptr; ++variavel) ambiente.emplace_back(*variavel);
  // The engine's lock files of one user are shut to another.
  if (semPrivilegios) ambiente.push_back("FIREBIRD_LOCK=" + opcoes.Pasta);
  const auto argv = Ponteiros(argumentos);
  const auto envp = Ponteiros(ambiente);
  // By its descriptor the program also runs where its folder is shut to the one who runs it.
  const int programa = ::open(IMPNFSE_PROGRAMA, O_RDONLY | O_CLOEXEC);

  FPid = ::fork();
  if (FPid == 0) {
    ::dup2(FSaida, STDOUT_FILENO);
    ::dup2(erros, STDERR_FILENO);
    ::alarm(kLimiteSegundos);
    const bool pronto =
        ::chdir(opcoes.Pasta.c_str()) == 0 &&
        (!semPrivilegios || (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0)) &&
        (opcoes.MorreAoChamar < 0 || MorrerAoChamar(opcoes.MorreAoChamar));
    if (pronto) ::fexecve(programa, argv.data(), envp.data());
    ::_exit(127);
  }
  ::close(programa);
  if (opcoes.Terminal) ::close(erros);
}

void TProcesso::Sinalizar(int sinal) const { ::kill(FPid, sinal); }

const TExecucao& TProcesso::Esperar() {
  if (FPid <= 0) return FExecucao;
  int estado = 0;
  ::waitpid(FPid, &estado, 0);
  FPid = -1;
  FExecucao = {.Status = WIFSIGNALED(estado) ? -WTERMSIG(estado) : WEXITSTATUS(estado),
               .Saida = LerDescritor(FSaida),
               .Erros = LerDescritor(FErros)};
  return FExecucao;
}

TTestePrograma::TTestePrograma() {
  static const TPastaTemporaria modelo;
  static const auto criou = TProcesso({"criar", "modelo.fdb"}, {.Pasta = modelo / ""}).Esperar();
  if (criou.Status != 0) throw std::runtime_error(criou.Erros);
  fs::copy_file(modelo / "modelo.fdb", Pasta / "banco.fdb");
  fs::create_directory(Pasta / "entrada");
  RegistrarFilial({"--nome", "Oficina d'Água; matriz", "--arquivo-morto", "morto"});
}

TExecucao TTestePrograma::Rodar(const TArgumentos& argumentos, TOpcoesExecucao opcoes) const {
  if (opcoes.Pasta.empty()) opcoes.Pasta = Pasta / "";
  return TProcesso(argumentos, opcoes).Esperar();
}

TExecucao TTestePrograma::Importar(const TArgumentos& resto, const TOpcoesExecucao& opcoes) const {
  return Rodar(Juntar({"importar", "banco.fdb", "--leiaute", "43"}, resto), opcoes);
}

TExecucao TTestePrograma::RegistrarFilial(const TArgumentos& resto, const String& cnpj) const {
  auto execucao = Rodar(Juntar({"filial", "banco.fdb", "--cnpj", cnpj, "--uf", "SC", "--municipio", "4205407"}, resto));
  EXPECT_EQ(execucao.Status, 0) << execucao.Erros;
  return execucao;
}

Json TTestePrograma::Registros(const TArgumentos& filtros) const {
  const auto execucao = Rodar(Juntar({"registros", "banco.fdb", "--json"}, filtros));
  EXPECT_EQ(execucao.Status, 0) << execucao.Erros;
  return Json::parse(execucao.Saida);
}

TArgumentos Juntar(TArgumentos inicio, const TArgumentos& resto) {
  inicio.insert(inicio.end(), resto.begin(), resto.end());
  return inicio;
}

::testing::AssertionResult Contem(const String& texto, std::string_view parte) {
  if (texto.find(parte) != texto.npos) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "sem \"" << parte << "\":\n" << texto;
}

::testing::AssertionResult FalhouComUmaLinha(const TExecucao& execucao, int status, std::string_view parte) {
  const auto& linha = execucao.Erros;
  bool certa = execucao.Status == status && execucao.Saida.empty() && linha.starts_with("impnfse: ") &&
               linha.find('\n') + 1 == linha.size() && linha.find(parte) != linha.npos;
  for (const auto* ingles : {"rror", "Value", "xception", "Invalid", "DATABASE", "denied", "directory", "operation"})
    certa = certa && linha.find(ingles) == linha.npos;
  if (certa) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "status " << execucao.Status << ", esperado: " << status
                                       << " e uma linha com \"" << parte << "\":\n"
                                       << linha << execucao.Saida;
}

String Forma(const Json& objeto) {
  String forma;
  for (const auto& [chave, valor] : objeto.items()) {
    const char tipo = valor.is_number_float()     ? 'n'
                      : valor.is_number_integer() ? 'i'
                      : valor.is_string()         ? 's'
                      : valor.is_boolean()        ? 'b'
                      : valor.is_array()          ? 'a'
                      : valor.is_null()           ? 'z'
                                                  : '?';
    forma += fmt::format("{}{}:{}", forma.empty() ? "" : " ", chave, tipo);
  }
  return forma;
}

String LerTudo(const String& caminho) {
  std::ifstream arquivo(caminho, std::ios::binary);
  return {std::istreambuf_iterator<char>(arquivo), {}};
}

}  // namespace impnfse::testes
