#include "ArmazemRegistros.h"

#include <fmt/format.h>
#include <soci/firebird/soci-firebird.h>

#include <algorithm>

#include "ErrosFirebird.h"
#include "SqlRegistro.h"
#include "UnVX03704BaseFuncoes.h"

namespace impnfse {
namespace {

constexpr std::array<std::string_view, 9> kGeradores = {
    "GN_ES02_REG0000", "GN_ES02_REG0150",    "GN_ES02_REG0200",       "GN_ES02_REGA100",      "GN_ES02_REGA170",
    "GN_ES02_REGA17R", "GN_ES02_REG0000MSG", "GN_ES02_AUXMANUTENCAO", "GN_CODIGOPARTICIPANTE"};

// Blocks grow with the run: a file of one note leaves small gaps, a large one asks seldom.
constexpr Int64 kPrimeiroBloco = 32;
constexpr Int64 kMaiorBloco = 4096;

// Key of participants: the number and the registration, which have no line feed between them in any layout.
String ChaveDoParticipante(const String& documento, const String& ie) { return documento + '\n' + ie; }

}  // namespace

// The prepared statements of the store, made together at the first use.
struct TArmazemRegistros::TInstrucoes {
  TInsercao<TDadosRegistro0150> Reg0150;
  TInsercao<TDadosRegistro0200> Reg0200;
  TInsercao<TDadosRegistroA100> RegA100;
  TInsercao<TDadosRegistroA170> RegA170;
  TInsercao<TDadosRegistroA17R> RegA17R;
  std::unique_ptr<TInsercao<TDadosRegistroA100>> RegA100Completada;
  std::unique_ptr<TInsercao<TDadosRegistro0000MSG>> Msg;
  std::unique_ptr<TInsercao<TRegistroAuxManutencao>> AuxManutencao;
  TLeitura<TDadosRegistro0150> ParticipantesPorChave;

  long long Empresa = 0;
  String Hash;
  long long IdItem = 0;
  soci::statement ItemPorHash;

  long long IdPeriodo = 0;
  long long Numero = 0;
  std::tm Data{};
  soci::indicator IndicadorData = soci::i_ok;
  int Operacao = 0;
  int Emissao = 0;
  String Participante;
  String Serie;
  std::unique_ptr<soci::statement> RemocaoDeDocumento;
  std::unordered_map<std::string_view, std::unique_ptr<soci::statement>> Remocoes;  // by table, of what a document has

  explicit TInstrucoes(soci::session& s)
      : Reg0150(s, {"IDEMPRESA"}, {"DOCUMENTO"}),
        Reg0200(s, {"IDEMPRESA"}, {"HASHDESCRICAO"}),
        RegA100(s, {"IDREG0150"}, {}),
        RegA170(s, {}, {}),
        RegA17R(s, {}, {}),
        ParticipantesPorChave(s, "WHERE R.IDEMPRESA = :p0 AND R.DOCUMENTO = :p1 AND R.IE = :p2", 3),
        ItemPorHash((s.prepare << "SELECT FIRST 1 IDREG0200 FROM ES02_REG0200 WHERE IDEMPRESA = :empresa AND "
                                  "HASHDESCRICAO = :hash",
                     soci::into(IdItem), soci::use(Empresa), soci::use(Hash))) {}
};

TArmazemRegistros::TArmazemRegistros(TBancoFirebird& banco) : FBanco(banco) {}
TArmazemRegistros::~TArmazemRegistros() { EsquecerInstrucoes(); }

void TArmazemRegistros::EsquecerInstrucoes() {
  if (FBanco.Perdida()) static_cast<void>(FInstrucoes.release());
  FInstrucoes.reset();
}

void TArmazemRegistros::IniciarExecucao(Int64 idEmpresa) {
  EsquecerExecucao();
  for (;;) {
    FEmpresa = idEmpresa;
    FBanco.Iniciar();
    try {
      FBanco.Sessao() << "UPDATE CA01_EMPRESA SET EXECUCOES = EXECUCOES + 1 WHERE IDEMPRESA = " << idEmpresa;
      return;
    } catch (const soci::soci_error& erro) {
      Desfazer();
      // Another run for the company ended while this one waited for it: what it stored is seen from a new transaction.
      if (!EhConflitoDeAtualizacao(erro)) FBanco.Relancar(erro);
    }
  }
}

void TArmazemRegistros::Encerrar(bool manter) {
  try {
    if (FFalha) throw EBanco(*FFalha);
    if (!manter) return Desfazer();
    // A prepared insertion of a BLOB doesn't outlive its transaction.
    FInstrucoes.reset();
    FBanco.Confirmar();
  } catch (const EBanco&) {
    Desfazer();
    throw;
  }
}

void TArmazemRegistros::Desfazer() {
  EsquecerExecucao();
  EsquecerInstrucoes();
  try {
    FBanco.Desfazer();
  } catch (const EBanco&) {
    // The connection is gone: the engine rolls back by itself.
  }
}

void TArmazemRegistros::EsquecerExecucao() {
  FFalha.reset();
  FDocumentosGravados = 0;
  FParticipantes.clear();
  FIdsDeParticipantes.clear();
  FItens.clear();
  FPeriodos.clear();
  FPeriodosJaExistentes.clear();
  FDocumentosVistos.clear();
  FDocumentosCompletados.clear();
  FFilhosSubstituidos.clear();
}

TArmazemRegistros::TInstrucoes& TArmazemRegistros::Instrucoes() {
  if (FInstrucoes == nullptr) Proteger([&] { FInstrucoes = std::make_unique<TInstrucoes>(FBanco.Sessao()); });
  return *FInstrucoes;
}

Int64 TArmazemRegistros::ProximoId(TGerador gerador) {
  const auto indice = static_cast<std::size_t>(gerador);
  auto& bloco = FBlocos.at(indice);
  if (bloco.Proximo == bloco.Fim) {
    bloco.Tamanho = std::clamp(bloco.Tamanho * 4, kPrimeiroBloco, kMaiorBloco);
    const auto ultimo = Proteger([&] {
      return FBanco.ConsultarInteiro(
          fmt::format("SELECT GEN_ID({}, {}) FROM RDB$DATABASE", kGeradores.at(indice), bloco.Tamanho));
    });
    bloco.Proximo = ultimo - bloco.Tamanho + 1;
    bloco.Fim = ultimo + 1;
  }
  return bloco.Proximo++;
}

void TArmazemRegistros::Inserir(const TDadosRegistroSped& registro) {
  Proteger([&] { registro.EntregarA(*this); });
}

void TArmazemRegistros::Inserir(const TRegistroAuxManutencao& registro) {
  Proteger([&] {
    auto& insercao = Instrucoes().AuxManutencao;
    if (!insercao)
      insercao = std::make_unique<TInsercao<TRegistroAuxManutencao>>(
          FBanco.Sessao(), std::vector<std::string_view>{TRegistroAuxManutencao::kColunaId},
          std::vector<std::string_view>{});
    const auto id = ProximoId(TGerador::AuxManutencao);
    insercao->Gravar(registro, {id});
    GuardarTextosLongos(*insercao, TRegistroAuxManutencao::kTabela, id);
  });
}

void TArmazemRegistros::Gravar(const TDadosRegistro0150& registro) {
  // Read before the insertion, so that the list is what stood before plus this one.
  auto& mesmos = Participantes(registro.GetDocumento(), registro.GetIE());
  auto& insercao = Instrucoes().Reg0150;
  insercao.Gravar(registro, {FEmpresa}, {registro.GetDocumento()});
  GuardarTextosLongos(insercao, registro.kTabela, registro.GetIDREG0150());
  mesmos.push_back(registro);
  FIdsDeParticipantes[registro.GetCOD_PART()] = registro.GetIDREG0150();
}

void TArmazemRegistros::Gravar(const TDadosRegistro0200& registro) {
  TDadosRegistro0200 armazenado = registro;
  armazenado.SetDESCR_ITEM(registro.GetDescricaoArmazenada());
  const auto hash = BuscarInstanciaFuncoes()->GerarHash(armazenado.GetDESCR_ITEM().Valor);
  auto& insercao = Instrucoes().Reg0200;
  insercao.Gravar(armazenado, {FEmpresa}, {hash});
  GuardarTextosLongos(insercao, registro.kTabela, registro.GetIDREG0200());
  FItens[hash] = registro.GetIDREG0200();
}

void TArmazemRegistros::Gravar(const TDadosRegistroA100& registro) {
  auto& instrucoes = Instrucoes();
  const auto id = registro.GetIDREGA100();
  const auto idParticipante = IdDoParticipante(registro);
  auto* insercao = &instrucoes.RegA100;
  if (registro.GetUtilizarUpdateORInsert()) {
    if (!instrucoes.RegA100Completada)
      instrucoes.RegA100Completada = std::make_unique<TInsercao<TDadosRegistroA100>>(
          FBanco.Sessao(), std::vector<std::string_view>{"IDREG0150"}, std::vector<std::string_view>{}, "IDREGA100");
    insercao = instrucoes.RegA100Completada.get();
    FDocumentosCompletados.insert(id);
    Remover("ES02_TEXTOLONGO", "TABELA = 'ES02_REGA100' AND IDREGISTRO", id);
  } else {
    SubstituirDocumentoAnterior(registro);
  }
  insercao->Gravar(registro, {idParticipante});
  GuardarTextosLongos(*insercao, registro.kTabela, id);
  ++FDocumentosGravados;
}

void TArmazemRegistros::Gravar(const TDadosRegistroA170& registro) {
  SubstituirFilhos(registro.kTabela, "IDREGA100", registro.GetIDREGA100());
  auto& insercao = Instrucoes().RegA170;
  insercao.Gravar(registro);
  GuardarTextosLongos(insercao, registro.kTabela, registro.GetIDREGA170());
}

void TArmazemRegistros::Gravar(const TDadosRegistroA17R& registro) {
  SubstituirFilhos(registro.kTabela, "IDREGA100", registro.GetIDREGA100());
  auto& insercao = Instrucoes().RegA17R;
  insercao.Gravar(registro);
  GuardarTextosLongos(insercao, registro.kTabela, registro.GetIDREGA17R());
}

void TArmazemRegistros::Gravar(const TDadosRegistro0000MSG& registro) {
  SubstituirFilhos(registro.kTabela, "IDREG", registro.GetIDREG());
  auto& insercao = Instrucoes().Msg;
  if (!insercao)
    insercao = std::make_unique<TInsercao<TDadosRegistro0000MSG>>(
        FBanco.Sessao(), std::vector<std::string_view>{TDadosRegistro0000MSG::kColunaId},
        std::vector<std::string_view>{});
  const auto id = ProximoId(TGerador::Msg);
  insercao->Gravar(registro, {id});
  GuardarTextosLongos(*insercao, registro.kTabela, id);
}

template <class Insercao>
void TArmazemRegistros::GuardarTextosLongos(const Insercao& insercao, std::string_view tabela, Int64 id) {
  for (const auto& texto : insercao.TextosLongos()) {
    soci::long_string inteiro{*texto.Texto};
    FBanco.Sessao() << "INSERT INTO ES02_TEXTOLONGO (TABELA, IDREGISTRO, COLUNA, TEXTO) VALUES ('" << tabela << "', "
                    << id << ", '" << texto.Coluna << "', :texto)",
        soci::use(inteiro);
  }
}

void TArmazemRegistros::SubstituirDocumentoAnterior(const TDadosRegistroA100& registro) {
  if (registro.GetNUM_DOC() == 0 || !FPeriodosJaExistentes.contains(registro.GetIDREG0000())) return;
  // Only at the first document of a key: from the second on, what stands there may be this run's own.
  const auto chave =
      fmt::format("{}\n{}\n{}\n{}\n{}\n{}\n{}", registro.GetIDREG0000(), registro.GetNUM_DOC(), registro.GetDT_DOC(),
                  static_cast<int>(registro.GetIND_OPER()), static_cast<int>(registro.GetIND_EMIT()),
                  Primeiros(registro.GetCOD_PART(), kLarguraTexto), Primeiros(registro.GetSER(), kLarguraTexto));
  if (!FDocumentosVistos.insert(chave).second) return;
  auto& i = Instrucoes();
  if (!i.RemocaoDeDocumento)
    i.RemocaoDeDocumento = std::make_unique<soci::statement>(
        (FBanco.Sessao().prepare
             << "DELETE FROM ES02_REGA100 WHERE IDREG0000 = :periodo AND NUM_DOC = :numero AND DT_DOC IS NOT "
                "DISTINCT FROM :data AND "
                "IND_OPER = :oper AND IND_EMIT = :emit AND COD_PART = :part AND SER || '.' = :serie",
         soci::use(i.IdPeriodo), soci::use(i.Numero), soci::use(i.Data, i.IndicadorData), soci::use(i.Operacao),
         soci::use(i.Emissao), soci::use(i.Participante), soci::use(i.Serie)));
  TVinculo<TDateTime>::Ir(i.Data, i.IndicadorData, registro.GetDT_DOC());
  i.IdPeriodo = registro.GetIDREG0000();
  i.Numero = registro.GetNUM_DOC();
  i.Operacao = registro.GetIND_OPER();
  i.Emissao = registro.GetIND_EMIT();
  i.Participante = Primeiros(registro.GetCOD_PART(), kLarguraTexto);
  // The engine takes no heed of blanks at the end of a text; the series' own count.
  i.Serie = String(Primeiros(registro.GetSER(), kLarguraTexto)) + ".";
  i.RemocaoDeDocumento->execute(true);
}

void TArmazemRegistros::SubstituirFilhos(std::string_view tabela, std::string_view coluna, Int64 idA100) {
  if (!FDocumentosCompletados.contains(idA100)) return;
  if (!FFilhosSubstituidos.insert(fmt::format("{} {}", tabela, idA100)).second) return;
  Remover(tabela, coluna, idA100);
}

void TArmazemRegistros::Remover(std::string_view tabela, std::string_view coluna, Int64 id) {
  auto& instrucoes = Instrucoes();
  auto& remocao = instrucoes.Remocoes[tabela];
  if (!remocao)
    remocao = std::make_unique<soci::statement>(
        (FBanco.Sessao().prepare << "DELETE FROM " << tabela << " WHERE " << coluna << " = :id",
         soci::use(instrucoes.Numero)));
  instrucoes.Numero = id;
  remocao->execute(true);
}

std::vector<TDadosRegistro0150>& TArmazemRegistros::Participantes(const String& documento, const String& ie) {
  const auto [posicao, novo] = FParticipantes.try_emplace(ChaveDoParticipante(documento, ie));
  auto& lista = posicao->second;
  if (!novo) return lista;
  auto& leitura = Instrucoes().ParticipantesPorChave;
  leitura.Abrir({std::to_string(FEmpresa), Primeiros(documento, kLarguraTexto), Primeiros(ie, kLarguraTexto)});
  TDadosRegistro0150 participante;
  while (leitura.Proximo(participante)) {
    // The columns hold the beginning of a long text; the register has the whole of it.
    if (participante.GetDocumento() == documento && participante.GetIE() == ie) lista.push_back(participante);
  }
  // The oldest first. The query has no ORDER BY: for it the engine would walk the whole table by the primary key.
  std::sort(lista.begin(), lista.end(),
            [](const auto& a, const auto& b) { return a.GetIDREG0150() < b.GetIDREG0150(); });
  return lista;
}

const TDadosRegistro0150* TArmazemRegistros::BuscarParticipante(const TDadosPesquisaRegistro0150IOP& chave) {
  return Proteger([&]() -> const TDadosRegistro0150* {
    const auto& lista = Participantes(chave.CNPJCPF, chave.IE);
    const auto achado = std::find_if(lista.begin(), lista.end(), [&](const TDadosRegistro0150& p) {
      // Without a number and without a city a note names nobody: it mustn't go to whoever has no number either.
      return (chave.COD_MUN == 0 && !chave.CNPJCPF.empty()) || p.GetCOD_MUN() == chave.COD_MUN;
    });
    if (achado == lista.end()) return nullptr;
    FIdsDeParticipantes[achado->GetCOD_PART()] = achado->GetIDREG0150();
    return &*achado;
  });
}

// The participants of a run's documents were found or stored in it. A document that is completed may carry the one it
// was stored with. "0" and other codes have none.
Int64 TArmazemRegistros::IdDoParticipante(const TDadosRegistroA100& documento) const {
  const auto achado = FIdsDeParticipantes.find(documento.GetCOD_PART());
  return achado == FIdsDeParticipantes.end() ? documento.GetDados0150().GetIDREG0150() : achado->second;
}

Int64 TArmazemRegistros::BuscarItem(const String& descricaoArmazenada) {
  const auto [posicao, novo] = FItens.try_emplace(BuscarInstanciaFuncoes()->GerarHash(descricaoArmazenada), 0);
  auto& [hash, id] = *posicao;
  if (!novo) return id;
  auto& item = Instrucoes();
  item.Empresa = FEmpresa;
  item.Hash = hash;
  if (Proteger([&] { return item.ItemPorHash.execute(true); })) id = item.IdItem;
  return id;
}

Int64 TArmazemRegistros::BuscarPeriodo(const TDadosFilial& filial, TDateTime data) {
  const auto inicio = PrimeiroDiaDoMes(data);
  const auto [posicao, novo] = FPeriodos.try_emplace(fmt::format("{} {}", filial.IDFILIAL, inicio));
  auto& periodo = posicao->second;
  if (!novo) return periodo;
  return Proteger([&] {
    const auto de = FormatarDataConsultaSQL(inicio);
    const auto ate = FormatarDataConsultaSQL(UltimoDiaDoMes(data));
    periodo = FBanco.ConsultarInteiro(
        fmt::format("SELECT IDREG0000 FROM ES02_REG0000 WHERE IDFILIAL = {} AND DT_INI = {} AND DT_FIN = {}",
                    filial.IDFILIAL, de, ate));
    if (periodo != 0) {
      FPeriodosJaExistentes.insert(periodo);
      return periodo;
    }
    periodo = ProximoId(TGerador::Reg0000);
    FBanco.Executar(
        fmt::format("INSERT INTO ES02_REG0000 (IDREG0000, IDEMPRESA, IDFILIAL, DT_INI, DT_FIN) VALUES "
                    "({}, {}, {}, {}, {})",
                    periodo, filial.IDEMPRESA, filial.IDFILIAL, de, ate));
    return periodo;
  });
}

}  // namespace impnfse
