#include "Suite.h"

#include <stdexcept>

namespace impnfse {
namespace {

TSuite* suiteAtual = nullptr;

}  // namespace

TSuite::TSuite(const String& conexao, TOpcoesSuite opcoes)
    : FBanco(conexao),
      FArmazem(FBanco),
      FConnection(FBanco),
      FEmpresaImportacao(ListarFiliais(FBanco)),
      FCarregamento(FArmazem),
      FDialogs(std::move(opcoes.Mostrar)) {
  if (suiteAtual != nullptr) throw std::logic_error("já há uma suíte aberta neste processo");
  suiteAtual = this;
  VXConnection = &FConnection;
  GVXUtilsDialogs = &FDialogs;
  Application = &FApplication;
}

TSuite::~TSuite() {
  VXConnection = nullptr;
  GVXUtilsDialogs = nullptr;
  Application = nullptr;
  suiteAtual = nullptr;
}

TSuite& TSuite::Atual() {
  if (suiteAtual == nullptr) throw std::logic_error("nenhuma suíte aberta neste processo");
  return *suiteAtual;
}

void TSuite::IniciarExecucao(Int64 idFilial) {
  FConsultas.clear();
  FCarregamento.LimpouInformacoes();
  FEmpresaImportacao.SelecionarFilialDoPedido(idFilial);
  FArmazem.IniciarExecucao(FEmpresaImportacao.GetDadosFilial().IDEMPRESA);
}

void TSuite::LerFiliais() { FEmpresaImportacao = TDadosEmpresaImportacao(ListarFiliais(FBanco)); }

const TLinhasConsulta& TSuite::ConsultarMemorizado(const String& sql) {
  const auto achada = FConsultas.find(sql);
  if (achada != FConsultas.end()) return achada->second;
  return FConsultas.emplace(sql, FArmazem.Proteger([&] { return FBanco.Consultar(sql); })).first->second;
}

}  // namespace impnfse
