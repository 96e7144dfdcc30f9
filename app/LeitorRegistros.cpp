#include "LeitorRegistros.h"

#include <fmt/format.h>

#include "SqlRegistro.h"

namespace impnfse::app {
namespace {

template <class Registro, class Receber>
void LerTodos(TBancoFirebird& banco, const String& resto, const Receber& receber) {
  banco.Proteger([&] {
    TLeitura<Registro> leitura(banco.Sessao(), resto, 0);
    leitura.Abrir();
    Registro registro;
    while (leitura.Proximo(registro)) receber(registro);
  });
}

// The children of one kind, by document: both are walked side by side.
template <class Filho>
class TFilhos {
 public:
  TFilhos(soci::session& sessao, std::string_view colunaDoPai, Int64 (*pai)(const Filho&))
      : FLeitura(sessao, fmt::format("ORDER BY R.{}, R.{}", colunaDoPai, Filho::kColunaId), 0), FPai(pai) {
    FLeitura.Abrir();
    Avancar();
  }

  void Entregar(Int64 idA100, TDicionario<Filho>& lista) {
    while (FTem && FPai(FAtual) < idA100) Avancar();
    for (; FTem && FPai(FAtual) == idA100; Avancar())
      lista.Add(std::to_string(lista.Count()), std::make_unique<Filho>(FAtual));
  }

 private:
  void Avancar() { FTem = FLeitura.Proximo(FAtual); }

  TLeitura<Filho> FLeitura;
  Int64 (*FPai)(const Filho&);
  Filho FAtual;
  bool FTem = false;
};

}  // namespace

String TLeitorRegistros::CondicaoDosDocumentos() const {
  String condicao = "1 = 1";
  if (FFiltro.IdFilial != 0) condicao += fmt::format(" AND P.IDFILIAL = {}", FFiltro.IdFilial);
  if (FFiltro.De != 0) condicao += " AND A.DT_DOC >= " + FormatarDataConsultaSQL(FFiltro.De);
  if (FFiltro.Ate != 0) condicao += " AND A.DT_DOC <= " + FormatarDataConsultaSQL(FFiltro.Ate);
  return condicao;
}

void TLeitorRegistros::Ler(const std::function<void(const TDadosRegistro0000&)>& receber) {
  String condicao = "1 = 1";
  if (FFiltro.IdFilial != 0) condicao += fmt::format(" AND R.IDFILIAL = {}", FFiltro.IdFilial);
  if (FFiltro.De != 0) condicao += " AND R.DT_FIN >= " + FormatarDataConsultaSQL(FFiltro.De);
  if (FFiltro.Ate != 0) condicao += " AND R.DT_INI <= " + FormatarDataConsultaSQL(FFiltro.Ate);
  LerTodos<TDadosRegistro0000>(FBanco, fmt::format("WHERE {} ORDER BY R.IDREG0000", condicao), receber);
}

String TLeitorRegistros::DaEmpresa(std::string_view coluna, std::string_view origem) const {
  String consulta;
  if (TemDatas())
    consulta = fmt::format(
        "JOIN (SELECT DISTINCT {0} FROM {1} JOIN ES02_REG0000 P ON P.IDREG0000 = A.IDREG0000 WHERE {2}) D ON D.{0} = "
        "R.{0} ",
        coluna, origem, CondicaoDosDocumentos());
  if (FFiltro.IdFilial != 0) consulta += fmt::format("WHERE R.IDEMPRESA = {} ", FFiltro.IdEmpresa);
  return consulta + fmt::format("ORDER BY R.{}", coluna);
}

void TLeitorRegistros::Ler(const std::function<void(const TDadosRegistro0150&)>& receber) {
  LerTodos<TDadosRegistro0150>(FBanco, DaEmpresa("IDREG0150", "ES02_REGA100 A"), receber);
}

void TLeitorRegistros::Ler(const std::function<void(const TDadosRegistro0200&)>& receber) {
  LerTodos<TDadosRegistro0200>(
      FBanco, DaEmpresa("IDREG0200", "ES02_REGA170 I JOIN ES02_REGA100 A ON A.IDREGA100 = I.IDREGA100"), receber);
}

void TLeitorRegistros::Ler(const std::function<void(TDadosRegistroA100&)>& receber) {
  FBanco.Proteger([&] {
    auto& sessao = FBanco.Sessao();
    TFilhos<TDadosRegistroA170> itens(sessao, "IDREGA100", [](const auto& i) { return i.GetIDREGA100(); });
    TFilhos<TDadosRegistroA17R> retencoes(sessao, "IDREGA100", [](const auto& r) { return r.GetIDREGA100(); });
    TFilhos<TDadosRegistro0000MSG> mensagens(sessao, "IDREG", [](const auto& m) { return m.GetIDREG(); });
    const auto consulta = fmt::format("JOIN ES02_REG0000 P ON P.IDREG0000 = R.IDREG0000 WHERE {} ORDER BY R.IDREGA100",
                                      Substituir(CondicaoDosDocumentos(), " A.", " R."));
    LerTodos<TDadosRegistroA100>(FBanco, consulta, [&](TDadosRegistroA100& documento) {
      documento.GetListaDadosA170().Clear();
      documento.GetListaDadosA17R().Clear();
      documento.GetListaMSG().Clear();
      itens.Entregar(documento.GetIDREGA100(), documento.GetListaDadosA170());
      retencoes.Entregar(documento.GetIDREGA100(), documento.GetListaDadosA17R());
      mensagens.Entregar(documento.GetIDREGA100(), documento.GetListaMSG());
      receber(documento);
    });
  });
}

void TLeitorRegistros::Ler(const std::function<void(const TRegistroAuxManutencao&)>& receber) {
  String juncao;
  if (TemDatas() || FFiltro.IdFilial != 0)
    juncao = fmt::format(
        "JOIN ES02_REGA100 A ON A.IDREGA100 = R.IDREG JOIN ES02_REG0000 P ON P.IDREG0000 = A.IDREG0000 WHERE {} ",
        CondicaoDosDocumentos());
  LerTodos<TRegistroAuxManutencao>(FBanco, juncao + "ORDER BY R.IDAUXMANUTENCAO", receber);
}

void TLeitorRegistros::Ler(const std::function<void(const TLinhaImportaCfg&)>& receber) {
  const auto condicao = FFiltro.IdFilial != 0 ? fmt::format("WHERE R.IDFILIAL = {} ", FFiltro.IdFilial) : String();
  LerTodos<TLinhaImportaCfg>(FBanco, condicao + "ORDER BY R.SEQUENCIA", receber);
}

}  // namespace impnfse::app
