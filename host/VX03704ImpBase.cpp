#include "VX03704ImpBase.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "Suite.h"

namespace impnfse {

void TArquivoImpBase::Execute() {
  try {
    Carregar();
  } catch (const std::exception& erro) {
    GetListaErros().Add(erro.what());
    SetTemErros(true);
  }
}

void TArquivoImpBase::InicializarDados(const String& classe) { FResumo->Classe = classe; }

void TArquivoImpBase::Carregar() {
  GetListaErros().Clear();
  SetTemErros(false);
}

TBuscarID TArquivoImpBase::BuscarID(const String& registro, bool /*proximo*/) {
  constexpr std::array<std::pair<std::string_view, TGerador>, 5> kRegistros = {{{"0150", TGerador::Reg0150},
                                                                                {"0200", TGerador::Reg0200},
                                                                                {"A100", TGerador::RegA100},
                                                                                {"A170", TGerador::RegA170},
                                                                                {"A17R", TGerador::RegA17R}}};
  for (const auto& [nome, gerador] : kRegistros)
    if (nome == registro) return {.ID = TSuite::Atual().Armazem().ProximoId(gerador), .Texto = {}, .Carregou = true};
  throw std::invalid_argument("registro sem gerador: " + registro);
}

Int64 TArquivoImpBase::BuscarProximoCodigoParticipante() {
  return TSuite::Atual().Armazem().ProximoId(TGerador::CodigoParticipante);
}

void TArquivoImpBase::InserirRegistro(const TDadosRegistroSped* registro, bool /*documento*/) {
  TSuite::Atual().Armazem().Inserir(*registro);
}

void TArquivoImpBase::IncluirFilialDocumento(TTPEmpresaArquivo tipo, const String& numero) {
  FResumo->Documentos.push_back({tipo, numero});
}

void TArquivoImpBase::AtribuirRetornoArquivo(TArquivoImpBase* trabalhador) {
  for (const auto& erro : trabalhador->GetListaErros()) GetListaErros().Add(erro);
  if (trabalhador->GetTemErros()) SetTemErros(true);
  FResumo = trabalhador->FResumo;
}

String TArquivoImpBase::BuscarErroEstruturaArquivo() const {
  return "A estrutura do arquivo não corresponde a um leiaute de NFS-e conhecido.";
}

String TArquivoImpBase::BuscarErroNaoGerouBloco0() const {
  return "Não foi possível gerar o período do documento: nem o emitente nem o destinatário é uma filial da "
         "empresa.";
}

}  // namespace impnfse
