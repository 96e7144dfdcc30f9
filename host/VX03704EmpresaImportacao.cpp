#include "VX03704EmpresaImportacao.h"

#include <algorithm>

#include "Suite.h"

namespace impnfse {

TDadosEmpresaImportacao::TDadosEmpresaImportacao(std::vector<TFilialRegistrada> filiais)
    : FFiliais(std::move(filiais)) {}

void TDadosEmpresaImportacao::SelecionarFilialDoPedido(Int64 idFilial) {
  const auto achada = std::find_if(FFiliais.begin(), FFiliais.end(), [&](const TFilialRegistrada& f) {
    return idFilial == 0 || f.Dados.IDFILIAL == idFilial;
  });
  if (achada == FFiliais.end())
    throw EBanco("A filial que importa não está registrada. Registre-a com: impnfse filial BANCO --cnpj ...");
  FPedido = static_cast<std::size_t>(achada - FFiliais.begin());
  DataInicial = 0;
  DataFinal = 0;
  RetornarAFilialDoPedido();
}

Int64 TDadosEmpresaImportacao::GetIDFilialPrincipal() const {
  const auto empresa = GetDadosFilial().IDEMPRESA;
  return std::find_if(FFiliais.begin(), FFiliais.end(),
                      [&](const TFilialRegistrada& f) { return f.Dados.IDEMPRESA == empresa; })
      ->Dados.IDFILIAL;
}

bool TDadosEmpresaImportacao::SelecionouFilialDaEmpresa(const String& cnpj) {
  const auto empresa = GetDadosFilial().IDEMPRESA;
  const auto achada = std::find_if(FFiliais.begin(), FFiliais.end(), [&](const TFilialRegistrada& f) {
    return f.Dados.IDEMPRESA == empresa && f.Dados.CNPJ == cnpj;
  });
  if (achada == FFiliais.end()) return false;
  Selecionar(static_cast<std::size_t>(achada - FFiliais.begin()));
  return true;
}

void TDadosEmpresaImportacao::Selecionar(std::size_t indice) {
  FAtual = indice;
  FConfiguracao = TConfiguracao({.REMOVERCARACTERES = Filial().RemoverCaracteres});
}

TDadosEmpresaImportacao* BuscarInstanciaEmpresaImportacao() { return &TSuite::Atual().EmpresaImportacao(); }

}  // namespace impnfse
