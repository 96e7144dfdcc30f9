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
  TSuite::Atual().Banco().Executar(sql);
  return true;
}

void TDmVX03704Base::AbrirDataSetSomenteLeitura(TVXClientDataSet* dataSet) {
  dataSet->Abrir(TSuite::Atual().Banco().Consultar(dataSet->GetCommandText()));
}

void TDmVX03704Base::AbrirDataSetMemorizado(TVXClientDataSet* dataSet) {
  dataSet->Abrir(TSuite::Atual().ConsultarMemorizado(dataSet->GetCommandText()));
}

}  // namespace impnfse
