#include "EscolhaDeLeiaute.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <optional>

#include "UnVX03704ImpNFSe.h"

namespace impnfse::app {
namespace {

String LeiauteLembrado(TBancoFirebird& banco, const TDadosFilial& filial) {
  const auto dados = banco.Consultar(
      fmt::format("SELECT INFORMACAO3 FROM CA06_IMPORTACFG WHERE IDEMPRESA = {} AND IDFILIAL = {} AND ORIGEM = 1000 "
                  "AND TP = 3",
                  filial.IDEMPRESA, filial.IDFILIAL));
  return dados.Linhas.empty() ? String() : dados.Linhas.front().front().value_or("");
}

// The position of the operator's choice; nothing when the file is to stay.
std::optional<std::size_t> Perguntar(const String& arquivo, const std::vector<TCandidato>& candidatos) {
  fmt::print(stderr, "{} serve a mais de um leiaute:\n", arquivo);
  for (std::size_t i = 0; i < candidatos.size(); ++i)
    fmt::print(stderr, "{:>4}) {} (leiaute {})\n", i + 1, candidatos[i].Descricao, candidatos[i].Codigo);
  for (;;) {
    fmt::print(stderr, "Qual? [Enter = 1, 0 = nenhum] ");
    std::fflush(stderr);
    String resposta;
    if (!std::getline(std::cin, resposta)) {
      fmt::print(stderr, "\n");
      return std::nullopt;
    }
    const auto aparada = Aparar(resposta);
    const auto numero = aparada.empty() ? 1 : StrToIntDef(aparada, -1);
    if (numero == 0) return std::nullopt;
    if (numero > 0 && static_cast<std::size_t>(numero) <= candidatos.size())
      return static_cast<std::size_t>(numero) - 1;
    fmt::print(stderr, "Responda com um número de 0 a {}.\n", candidatos.size());
  }
}

}  // namespace

std::vector<TCandidato> AnalisarArquivo(TSuite& suite, const String& arquivo) {
  std::vector<TCandidato> candidatos;
  // One transaction: the rows read are those written, also while other processes analyse their files.
  suite.Banco().EmTransacao([&] {
    candidatos.clear();
    TImpNFSe().AnalisouLeiauteArquivo(arquivo);
    TVXClientDataSet linhas;
    linhas.Abrir(suite.Banco().Consultar(
        fmt::format("SELECT ID2, INF1, TP1 FROM TMP_GENERICA WHERE TP12 = {} AND ID12 = {} ORDER BY ID2",
                    TImpNFSe::GetTMP_GENERICA_TP12(), TImpNFSe::GetTMP_GENERICA_ID12())));
    for (; !linhas.IsEmpty(); linhas.Next())
      candidatos.push_back({.Codigo = linhas.FieldByName("ID2").GetAsString(),
                            .Descricao = linhas.FieldByName("INF1").GetAsString(),
                            .TP = linhas.GetInt64FieldValue("TP1")});
  });
  return candidatos;
}

TEscolha EscolherLeiaute(TSuite& suite, const TDadosFilial& filial, const String& arquivo) {
  TEscolha escolha{.Candidatos = AnalisarArquivo(suite, arquivo)};
  const auto& candidatos = escolha.Candidatos;
  const auto lembrado = LeiauteLembrado(suite.Banco(), filial);
  if (std::any_of(candidatos.begin(), candidatos.end(), [&](const auto& c) { return c.Codigo == lembrado; })) {
    escolha.Leiaute = lembrado;
    escolha.Porque = "o último que a filial usou";
  } else if (candidatos.size() == 1) {
    escolha.Leiaute = candidatos.front().Codigo;
    escolha.Porque = "o único que serve ao arquivo";
  } else if (!candidatos.empty() && ::isatty(STDIN_FILENO) == 1 && ::isatty(STDERR_FILENO) == 1) {
    if (const auto resposta = Perguntar(arquivo, candidatos)) {
      escolha.Leiaute = candidatos[*resposta].Codigo;
      escolha.Porque = "o escolhido";
    }
  }
  return escolha;
}

String ListarCandidatos(const std::vector<TCandidato>& candidatos) {
  String texto;
  for (const auto& candidato : candidatos) texto += fmt::format("{:>6}  {}\n", candidato.Codigo, candidato.Descricao);
  return texto;
}

}  // namespace impnfse::app
