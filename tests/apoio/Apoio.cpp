#include "Apoio.h"

#include <ibase.h>
#include <unistd.h>

#include <cctype>
#include <cstdlib>
#include <fstream>

#include "XMLFormato.h"

namespace impnfse::testes {
namespace {

// Ends the engine's threads before the process does: the leak checker doesn't survive one that goes while it looks.
class TEncerramentoDoMotor : public ::testing::Environment {
  void TearDown() override {
    constexpr unsigned kMilissegundos = 10'000;
    fb_shutdown(kMilissegundos, fb_shutrsn_app_stopped);
  }
};
[[maybe_unused]] const auto* const kEncerramento = ::testing::AddGlobalTestEnvironment(new TEncerramentoDoMotor);

}  // namespace

std::vector<std::pair<String, String>> Casos(std::string_view texto) {
  std::vector<std::pair<String, String>> casos;
  while (!texto.empty()) {
    auto caso = formato::CortarAte(texto, " | ");
    const auto entrada = formato::CortarAte(caso, " => ");
    casos.emplace_back(entrada, caso);
  }
  return casos;
}

String Trocar(String texto, std::string_view trocas) {
  for (const auto& [de, para] : Casos(trocas)) texto = Substituir(texto, de, para);
  return texto;
}

String Resultado(TImpNFSe& importacao) {
  const auto& resumo = importacao.GetResumo();
  auto texto = fmt::format("{:d}{:d} ", resumo.Importou, importacao.GetTemErros());
  for (const auto& [lado, numero] : resumo.Documentos) texto += fmt::format("[{:d} {}]", lado, numero);
  if (!resumo.Erro.empty()) texto += "!" + resumo.Erro + " ";
  texto = Substituir(texto + Erros(importacao), "\n", ";");
  texto = Substituir(texto, importacao.BuscarErroNaoGerouBloco0(), "alheia");
  return Substituir(texto, importacao.BuscarErroEstruturaArquivo(), "estrutura");
}

String Elementos(std::string_view texto, char fim) {
  const auto ehDoNome = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_' || c == '-'; };
  String xml;
  for (auto igual = texto.find('='); igual != texto.npos; igual = texto.find('=')) {
    auto tag = igual;
    while (tag > 0 && ehDoNome(static_cast<unsigned char>(texto[tag - 1]))) --tag;
    const auto valor = texto.substr(igual + 1, texto.find_first_of(String("<>'\"") + fim, igual) - igual - 1);
    const auto depois = igual + 1 + valor.size();
    const bool ehElemento = tag < igual && depois < texto.size() && texto[depois] == fim;
    const auto nome = texto.substr(tag, igual - tag);
    xml += ehElemento ? fmt::format("{}<{}>{}</{}>", texto.substr(0, tag), nome, valor, nome)
                      : String(texto.substr(0, igual + 1));
    texto.remove_prefix(ehElemento ? depois + 1 : igual + 1);
  }
  return xml + String(texto);
}

::testing::AssertionResult Contem(const String& texto, std::string_view parte) {
  if (texto.find(parte) != texto.npos) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "sem \"" << parte << "\":\n" << texto;
}

String Repetir(std::string_view texto, int vezes) {
  String repetido;
  for (int i = 0; i < vezes; ++i) repetido += texto;
  return repetido;
}

String Levantado(const std::function<void()>& acao) {
  try {
    acao();
  } catch (const std::exception& erro) {
    return erro.what();
  }
  return {};
}

TPastaTemporaria::TPastaTemporaria(const fs::path& onde) {
  auto modelo = (onde / "impnfse.XXXXXX").string();
  if (::mkdtemp(modelo.data()) == nullptr) throw std::runtime_error("sem pasta temporária em " + onde.string());
  FPasta = modelo;
}

TPastaTemporaria::~TPastaTemporaria() {
  std::error_code ignorado;
  fs::remove_all(FPasta, ignorado);
}

String TPastaTemporaria::Gravar(std::string_view nome, std::string_view bytes) const {
  const auto caminho = FPasta / nome;
  fs::create_directories(caminho.parent_path());
  std::ofstream(caminho, std::ios::binary) << bytes;
  return caminho.string();
}

// Making a database takes longer than most tests do: they copy one. A run of ctest names the file that all of its
// processes share, and the first one makes; without that name each process makes its own.
void NovoBanco(const String& caminho) {
  static const TPastaTemporaria pasta;
  const auto* const daExecucao = std::getenv("IMPNFSE_BANCO_MODELO");
  const String modelo = daExecucao != nullptr ? daExecucao : pasta / "modelo.fdb";
  if (!fs::exists(modelo)) {
    const auto novo = fmt::format("{}.{}", modelo, ::getpid());
    TBancoFirebird::Criar(novo);
    fs::rename(novo, modelo);
  }
  fs::copy_file(modelo, caminho);
}

String Tabela(TBancoFirebird& banco, const String& sql) {
  String texto;
  for (const auto& linha : banco.Consultar(sql).Linhas) {
    if (!texto.empty()) texto += '\n';
    for (std::size_t i = 0; i < linha.size(); ++i) texto += (i == 0 ? "" : "|") + linha[i].value_or("-");
  }
  return Substituir(texto, ".0000", "");
}

TFilialRegistrada Filial(const String& cnpj, const String& uf, Int64 empresa) {
  return {
      .Dados = {.IDFILIAL = 0, .IDEMPRESA = empresa, .CODIGOMUNICIPIO = "42.05407", .UF = uf, .CNPJ = cnpj, .IE = ""}};
}

TTesteComBanco::TTesteComBanco() {
  NovoBanco(Pasta / "banco.fdb");
  Reabrir();
  auto filial = Filial();
  filial.ArquivoMorto = Pasta / "morto";
  Registrar(filial);
}

void TTesteComBanco::Registrar(const TFilialRegistrada& filial) {
  GravarFilial(Banco(), filial);
  Suite().LerFiliais();
}

void TTesteComBanco::Reabrir() {
  FSuite.reset();
  FSuite.emplace(Pasta / "banco.fdb");
}

std::unique_ptr<TImpNFSe> TTesteComBanco::Importar(const String& arquivo, const String& leiaute) {
  auto importacao = std::make_unique<TImpNFSe>();
  importacao->DadosArquivo = {.Arquivo = arquivo, .CodigoLeiaute = leiaute, .TipoImportacao = "NFSE", .IDFILIAL = 0};
  importacao->Start();
  importacao->WaitFor();
  return importacao;
}

String TTesteComBanco::ImportarNotas(const String& leiaute, std::string_view modelo, const std::vector<String>& trocas,
                                     std::string_view raiz) {
  String notas;
  for (const auto& troca : trocas) notas += Elementos(Trocar(String(modelo), troca));
  return Resultado(*Importar(Pasta.Gravar("notas.xml", Substituir(raiz, "{}", notas)), leiaute));
}

String TTesteComBanco::Documentos(const String& colunas) {
  const bool comRetidos = colunas.find("R.") != colunas.npos;
  return Tabela(fmt::format(
      "SELECT {} FROM ES02_REGA100 A JOIN ES02_REG0000 P ON P.IDREG0000 = A.IDREG0000 LEFT JOIN ES02_REG0150 Q ON "
      "Q.COD_PART = A.COD_PART LEFT JOIN ES02_REGA170 I ON I.IDREGA100 = A.IDREGA100 LEFT JOIN ES02_REG0200 D ON "
      "D.IDREG0200 = I.IDREG0200 {} ORDER BY A.IDREGA100, I.IDREGA170{}",
      colunas, comRetidos ? "LEFT JOIN ES02_REGA17R R ON R.IDREGA100 = A.IDREGA100" : "",
      comRetidos ? ", R.IDREGA17R" : ""));
}

}  // namespace impnfse::testes
