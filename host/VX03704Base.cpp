#include "VX03704Base.h"

#include "Suite.h"

namespace impnfse {

TThread03704Base::~TThread03704Base() { WaitFor(); }

void TThread03704Base::Start() {
  FThread = std::thread([this] {
    Execute();
    DoTerminate();
  });
}

void TThread03704Base::WaitFor() {
  if (FThread.joinable()) FThread.join();
}

bool TDmVX03704Base::ExecutouSQL(const String& sql) {
  auto& suite = TSuite::Atual();
  suite.Armazem().Proteger([&] { suite.Banco().Executar(sql); });
  return true;
}

void TDmVX03704Base::AbrirDataSetSomenteLeitura(TVXClientDataSet* dataSet) {
  auto& suite = TSuite::Atual();
  dataSet->Abrir(suite.Armazem().Proteger([&] { return suite.Banco().Consultar(dataSet->GetCommandText()); }));
}

void TDmVX03704Base::AbrirDataSetMemorizado(TVXClientDataSet* dataSet) {
  dataSet->Abrir(TSuite::Atual().ConsultarMemorizado(dataSet->GetCommandText()));
}

}  // namespace impnfse
