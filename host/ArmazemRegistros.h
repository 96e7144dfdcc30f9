// Where the registers go: one run's output, in one transaction of the database. Everything that a run stores is kept by
// Confirmar, or nothing is.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "BancoFirebird.h"
#include "VX03704Registro.h"

namespace impnfse {

// Ids come from one generator per register, taken in blocks; gaps are fine.
enum class TGerador { Reg0000, Reg0150, Reg0200, RegA100, RegA170, RegA17R, Msg, AuxManutencao, CodigoParticipante };

class TArmazemRegistros final : private IGravadorRegistros {
 public:
  explicit TArmazemRegistros(TBancoFirebird& banco);
  ~TArmazemRegistros();

  // Begins a run for a company. Waits while another process imports for the same company.
  void IniciarExecucao(Int64 idEmpresa);
  // Keeps what the run stored. When the database refused anything on the way, or refuses now, nothing is kept and
  // EBanco is raised with the first refusal.
  void Confirmar() { Encerrar(true); }
  // Ends the run: Confirmar when it is to be kept, else Desfazer. Raises EBanco when the database refused anything.
  void Encerrar(bool manter);
  // Drops what the run stored.
  void Desfazer();

  Int64 ProximoId(TGerador gerador);

  // Stores a register. A document (A100) that an earlier run stored with the same period, operation, issuer,
  // participant, series, number (not 0) and date is replaced, with its children; documents of one run never replace
  // each other. With UtilizarUpdateORInsert the stored row is updated in place, and each kind of child that this run
  // brings for it replaces the stored children of that kind.
  void Inserir(const TDadosRegistroSped& registro);
  void Inserir(const TRegistroAuxManutencao& registro);

  // The company's participant with that number, registration and municipality (0 matches any, the oldest first, when
  // there is a number); null when there is none. Those stored earlier in the run count.
  const TDadosRegistro0150* BuscarParticipante(const TDadosPesquisaRegistro0150IOP& chave);
  // The company's item with that stored description; 0 when there is none.
  Int64 BuscarItem(const String& descricaoArmazenada);
  // The period record of the date's month; made when there is none.
  Int64 BuscarPeriodo(const TDadosFilial& filial, TDateTime data);

  // Runs `acao` over the database; a refusal makes the whole run fail, whatever becomes of the exception. For what an
  // importer reads on its way.
  template <class Acao>
  auto Proteger(Acao&& acao) -> decltype(acao());

  // Documents stored in this run.
  std::size_t DocumentosGravados() const { return FDocumentosGravados; }

 private:
  struct TInstrucoes;
  struct TBlocoDeIds {
    Int64 Proximo = 0;
    Int64 Fim = 0;
    Int64 Tamanho = 0;
  };
  void Gravar(const TDadosRegistro0150& registro) override;
  void Gravar(const TDadosRegistro0200& registro) override;
  void Gravar(const TDadosRegistroA100& registro) override;
  void Gravar(const TDadosRegistroA170& registro) override;
  void Gravar(const TDadosRegistroA17R& registro) override;
  void Gravar(const TDadosRegistro0000MSG& registro) override;

  TInstrucoes& Instrucoes();
  template <class Insercao>
  void GuardarTextosLongos(const Insercao& insercao, std::string_view tabela, Int64 id);
  void SubstituirDocumentoAnterior(const TDadosRegistroA100& registro);
  void SubstituirFilhos(std::string_view tabela, std::string_view coluna, Int64 idA100);
  void Remover(std::string_view tabela, std::string_view coluna, Int64 id);
  std::vector<TDadosRegistro0150>& Participantes(const String& documento, const String& ie);
  Int64 IdDoParticipante(const TDadosRegistroA100& documento) const;
  void EsquecerExecucao();
  void EsquecerInstrucoes();

  TBancoFirebird& FBanco;
  std::unique_ptr<TInstrucoes> FInstrucoes;
  std::array<TBlocoDeIds, 9> FBlocos;

  // What the run knows, so that nothing is asked of the database twice.
  Int64 FEmpresa = 0;
  std::optional<String> FFalha;
  std::size_t FDocumentosGravados = 0;
  std::unordered_map<String, std::vector<TDadosRegistro0150>> FParticipantes;  // by number and registration
  std::unordered_map<String, Int64> FIdsDeParticipantes;                       // by COD_PART
  std::unordered_map<String, Int64> FItens;                                    // by hash of the description
  std::unordered_map<String, Int64> FPeriodos;                                 // by branch and first day
  std::unordered_set<Int64> FPeriodosJaExistentes;
  std::unordered_set<String> FDocumentosVistos;      // keys of documents, in periods that existed before
  std::unordered_set<Int64> FDocumentosCompletados;  // stored with UtilizarUpdateORInsert
  std::unordered_set<String> FFilhosSubstituidos;    // table and document
};

template <class Acao>
auto TArmazemRegistros::Proteger(Acao&& acao) -> decltype(acao()) {
  try {
    return FBanco.Proteger(acao);
  } catch (const EBanco& erro) {
    if (!FFalha) FFalha = erro.what();
    throw;
  }
}

}  // namespace impnfse
