#include "VX03704ImpDocEletBase.h"

#include <filesystem>

#include "Suite.h"

namespace impnfse {

void TImpDocEletBase::Execute() {
  try {
    TSuite::Atual().IniciarExecucao(DadosArquivo.IDFILIAL);
    TArquivoImpBase::Execute();
    EncerrarExecucao();
  } catch (const std::exception& erro) {
    Importou = false;
    Erro = erro.what();
    GetListaErros().Add(Erro);
    SetTemErros(true);
    Resumo().Documentos.clear();
  }
  Resumo().Importou = Importou;
  Resumo().Erro = Erro;
}

void TImpDocEletBase::EncerrarExecucao() {
  auto& armazem = TSuite::Atual().Armazem();
  const bool armazenou = armazem.DocumentosGravados() > 0;
  // A refusal of the database is told also when there is nothing to keep. Without a document nothing is: what a note
  // that raised has left behind belongs to nobody.
  armazem.Encerrar(armazenou);
  FArmazenouDocumento = armazenou;
}

TDateTime TImpDocEletBase::ConverteData(const String& texto, TFormatoData formato) {
  return impnfse::ConverteData(texto, formato);
}

TBuscarID TImpDocEletBase::CarregouRegistro0000Emitente(int /*tipo*/) {
  return CarregarPeriodo(GetCNPJCPFEmitente(), false);
}

TBuscarID TImpDocEletBase::CarregouRegistro0000Destinatario(int /*tipo*/) {
  return CarregarPeriodo(GetCNPJCPFDestinatario(), true);
}

TBuscarID TImpDocEletBase::CarregarPeriodo(const String& cnpj, bool ladoDestinatario) {
  const auto data = GetData();
  auto& empresa = *BuscarInstanciaEmpresaImportacao();
  if (data <= 0 || !empresa.SelecionouFilialDaEmpresa(cnpj)) return {};
  FLadoDestinatario = ladoDestinatario;
  SetIDREG0000(TSuite::Atual().Armazem().BuscarPeriodo(empresa.GetDadosFilial(), data));
  empresa.DataInicial = PrimeiroDiaDoMes(data);
  empresa.DataFinal = UltimoDiaDoMes(data);
  return {.ID = GetIDREG0000(), .Texto = cnpj, .Carregou = true};
}

String TImpDocEletBase::BuscarDiretorioDestinoArquivo(const String& subpasta) {
  const auto& arquivoMorto = BuscarInstanciaEmpresaImportacao()->GetArquivoMorto();
  if (arquivoMorto.empty()) return {};
  namespace fs = std::filesystem;
  return (fs::path(arquivoMorto) / subpasta / fs::path(DadosArquivo.Arquivo).filename()).string();
}

int TImpDocEletBase::BuscarIdParticipante(const TDadosPesquisaRegistro0150IOP* chave) {
  const auto* participante = TSuite::Atual().Armazem().BuscarParticipante(*chave);
  if (participante == nullptr) return 0;
  FDados0150 = *participante;
  return StrToIntDef(participante->GetCOD_PART(), 0);
}

void TImpDocEletBase::BuscarDadosRegistro0200Descricao(TDadosRegistro0200* item) {
  const auto id = TSuite::Atual().Armazem().BuscarItem(item->GetDescricaoArmazenada());
  if (id != 0) item->SetIDREG0200(id);
}

void TImpDocEletBase::LimparDadosEmitenteDestinatario() {
  FLadoDestinatario = false;
  FDados0150 = {};
  BuscarInstanciaEmpresaImportacao()->RetornarAFilialDoPedido();
}

bool TImpDocEletBase::ArmazenouDocumento() const { return FArmazenouDocumento; }

}  // namespace impnfse
