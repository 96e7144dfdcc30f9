// registros: what the database holds, as a readable table or as JSON.
#include <fmt/format.h>

#include <iostream>
#include <map>

#include "Comandos.h"
#include "EscritorJSON.h"
#include "LeitorRegistros.h"
#include "UnVX03704ImpNFSeBase.h"
#include "VX03704Filiais.h"

namespace impnfse::app {
namespace {

// JSON ----------------------------------------------------------------------------------------------------------------

void Escrever(TEscritorJSON& json, const String& valor) { json.Valor(valor); }
void Escrever(TEscritorJSON& json, const TTextoLivre& valor) { json.Valor(valor.Valor); }
void Escrever(TEscritorJSON& json, Currency valor) { json.Decimal(valor); }
void Escrever(TEscritorJSON& json, TDateTime valor) {
  json.Valor(valor == 0 ? nlohmann::ordered_json() : nlohmann::ordered_json(DataISO(valor)));
}
template <class T>
requires std::is_integral_v<T> || std::is_enum_v<T>
void Escrever(TEscritorJSON& json, T valor) { json.Valor(static_cast<Int64>(valor)); }

template <class Registro>
void EscreverCampos(TEscritorJSON& json, const Registro& registro) {
  std::apply([&](auto... campo) { ((json.Chave(campo.Nome), Escrever(json, registro.*campo.Membro)), ...); },
             Registro::Campos());
}

template <class Registro>
void EscreverRegistro(TEscritorJSON& json, const Registro& registro) {
  json.Abrir('{');
  EscreverCampos(json, registro);
  json.Fechar();
}

template <class Filho>
void EscreverFilhos(TEscritorJSON& json, std::string_view nome, const TDicionario<Filho>& filhos) {
  json.Chave(nome);
  json.Abrir('[');
  for (const auto& filho : filhos.Values()) EscreverRegistro(json, *filho);
  json.Fechar();
}

void EscreverDocumento(TEscritorJSON& json, TDadosRegistroA100& documento) {
  json.Abrir('{');
  EscreverCampos(json, documento);
  EscreverFilhos(json, "A170", documento.GetListaDadosA170());
  EscreverFilhos(json, "A17R", documento.GetListaDadosA17R());
  EscreverFilhos(json, "MSG", documento.GetListaMSG());
  json.Fechar();
}

void EscreverJSON(TLeitorRegistros& leitor, std::ostream& saida) {
  TEscritorJSON json(saida);
  const auto secao = [&](std::string_view nome, auto receber) {
    json.Chave(nome);
    json.Abrir('[');
    leitor.Ler(receber);
    json.Fechar();
  };
  using std::function;
  const auto escrever = [&](const auto& registro) { EscreverRegistro(json, registro); };
  json.Abrir('{');
  secao("0000", function<void(const TDadosRegistro0000&)>(escrever));
  secao("0150", function<void(const TDadosRegistro0150&)>(escrever));
  secao("0200", function<void(const TDadosRegistro0200&)>(escrever));
  secao("A100", function<void(TDadosRegistroA100&)>([&](auto& d) { EscreverDocumento(json, d); }));
  secao("AUXMANUTENCAO", function<void(const TRegistroAuxManutencao&)>(escrever));
  secao("IMPORTACFG", function<void(const TLinhaImportaCfg&)>(escrever));
  json.Fechar();
}

// The readable table --------------------------------------------------------------------------------------------------

// 1.234.567,89, with more decimals only where the value has them.
String Dinheiro(Currency valor) {
  auto texto = valor.TextoCurto();
  const auto ponto = texto.find('.');
  texto[ponto] = ',';
  const std::size_t inicio = texto.front() == '-' ? 1 : 0;
  for (auto i = ponto; i > inicio + 3;) texto.insert(i -= 3, ".");
  return texto;
}

String DataBrasileira(TDateTime data) {
  if (data == 0) return "--/--/----";
  const auto d = DecodificarData(data);
  return fmt::format("{:02}/{:02}/{:04}", d.Dia, d.Mes, d.Ano);
}

// The text in exactly so many columns; a longer one ends in "…". Line breaks become blanks.
String EmColunas(const String& texto, std::size_t colunas) {
  String linha = Substituir(Substituir(texto, "\n", " "), "\r", "");
  if (Comprimento(linha) > colunas) linha = String(Primeiros(linha, colunas - 1)) + "…";
  return linha + String(colunas - Comprimento(linha), ' ');
}

String NumeroDoParticipante(const TDadosRegistro0150& p) {
  const auto& cpf = p.GetCPF();
  if (p.GetCNPJ().empty() && cpf.size() == 11)
    return fmt::format("{}.{}.{}-{}", cpf.substr(0, 3), cpf.substr(3, 3), cpf.substr(6, 3), cpf.substr(9));
  return FormatarCNPJ(p.GetDocumento());
}

String NomeDaReceita(const String& codigo) {
  static const std::map<std::string_view, std::string_view> kNomes = {
      {receita::kISS, "ISS"}, {receita::kIR, "IR"},         {receita::kINSS, "INSS"},
      {receita::kPIS, "PIS"}, {receita::kCOFINS, "COFINS"}, {receita::kCSLL, "CSLL"}};
  const auto nome = kNomes.find(codigo);
  return nome == kNomes.end() ? codigo : String(nome->second);
}

void EscreverTabela(TLeitorRegistros& leitor, TBancoFirebird& banco) {
  std::map<Int64, String> filiais;
  for (const auto& filial : ListarFiliais(banco))
    filiais[filial.Dados.IDFILIAL] = FormatarCNPJ(filial.Dados.CNPJ) + (filial.NOME.empty() ? "" : " " + filial.NOME);
  std::map<Int64, String> periodos;
  std::map<String, String> participantes = {{"0", "(não identificado)"}};
  std::map<Int64, String> itens;

  fmt::print("PERÍODOS (0000)\n");
  leitor.Ler(std::function<void(const TDadosRegistro0000&)>([&](const auto& p) {
    const auto inicio = DecodificarData(p.GetDT_INI());
    periodos[p.GetIDREG0000()] = fmt::format("{:02}/{}", inicio.Mes, inicio.Ano);
    fmt::print("  {}  {}\n", periodos[p.GetIDREG0000()], filiais[p.GetIDFILIAL()]);
  }));

  fmt::print("\nPARTICIPANTES (0150)\n");
  leitor.Ler(std::function<void(const TDadosRegistro0150&)>([&](const auto& p) {
    participantes[p.GetCOD_PART()] = p.GetNOME();
    fmt::print("  {:>5}  {}  {}  {}\n", p.GetCOD_PART(), EmColunas(p.GetNOME(), 40),
               EmColunas(NumeroDoParticipante(p), 18), p.GetUF());
  }));

  fmt::print("\nITENS (0200)\n");
  leitor.Ler(std::function<void(const TDadosRegistro0200&)>([&](const auto& i) {
    itens[i.GetIDREG0200()] = i.GetDESCR_ITEM().Valor;
    fmt::print("  {:>5}  {}  {}\n", i.GetIDREG0200(), EmColunas(i.GetDESCR_ITEM().Valor, 62),
               i.GetCOD_LST().empty() ? "" : "lista " + i.GetCOD_LST());
  }));

  fmt::print("\nDOCUMENTOS (A100, com A170 e A17R)\n");
  Currency total;
  std::size_t quantidade = 0;
  leitor.Ler(std::function<void(TDadosRegistroA100&)>([&](auto& d) {
    total += d.GetVL_DOC();
    ++quantidade;
    fmt::print("  {}  nº {:<11} {}  {}  R$ {:>14}  ISS {:>10}{}{}\n", DataBrasileira(d.GetDT_DOC()), d.GetNUM_DOC(),
               d.GetIND_OPER() == toEntrada ? "entrada" : "saída  ", EmColunas(participantes[d.GetCOD_PART()], 30),
               Dinheiro(d.GetVL_DOC()), Dinheiro(d.GetVL_ISS()), d.GetTEMISSRETIDO() == 1 ? "  ISS retido" : "",
               d.GetCOD_SIT() == 2 ? "  CANCELADO" : "");
    for (const auto& item : d.GetListaDadosA170().Values())
      fmt::print("      {:>3}  {}  {}  atividade {}  R$ {:>14}  {:>6} %\n", item->GetNUM_ITEM(),
                 EmColunas(itens[item->GetIDREG0200()], 34), item->GetCFOPICMS(), EmColunas(item->GetATIVIDADE(), 6),
                 Dinheiro(item->GetVL_ITEM()), Dinheiro(item->GetALIQ_ISS()));
    for (const auto& retencao : d.GetListaDadosA17R().Values())
      fmt::print("           retenção de {:<6} base R$ {:>14}  retido R$ {:>12}\n",
                 NomeDaReceita(retencao->GetCOD_RECEITA()), Dinheiro(retencao->GetVL_BC()),
                 Dinheiro(retencao->GetVL_IMPOSTO()));
    for (const auto& mensagem : d.GetListaMSG().Values())
      fmt::print("           {}\n", mensagem->GetINFORMACAO4().Valor);
  }));
  fmt::print("\n{} {}, R$ {} no total\n", quantidade, quantidade == 1 ? "documento" : "documentos", Dinheiro(total));
}

TDateTime LerData(const String& texto, std::string_view opcao) {
  if (texto.empty()) return 0;
  const auto data = ConverteData(texto, fdAnoMesDia);
  const auto valida = data > 0 ? data : StrToDateDef(texto, 0);
  if (valida <= 0) throw EUso(fmt::format("{} \"{}\" não é uma data (AAAA-MM-DD)", opcao, texto));
  return valida;
}

}  // namespace

int Registros(const String& caminho, const TOpcoesRegistros& opcoes) {
  TFiltroRegistros filtro{.De = LerData(opcoes.De, "--de"), .Ate = LerData(opcoes.Ate, "--ate")};
  if (filtro.De != 0 && filtro.Ate != 0 && filtro.De > filtro.Ate) throw EUso("--de vem depois de --ate");
  TBancoFirebird banco(caminho);
  if (!opcoes.Filial.empty()) {
    const auto filial = BuscarFilial(banco, NormalizarCNPJ(opcoes.Filial));
    if (!filial) throw EUso(fmt::format("a filial {} não está registrada", opcoes.Filial));
    filtro.IdFilial = filial->Dados.IDFILIAL;
    filtro.IdEmpresa = filial->Dados.IDEMPRESA;
  }
  banco.Iniciar();
  TLeitorRegistros leitor(banco, filtro);
  if (opcoes.JSON)
    EscreverJSON(leitor, std::cout);
  else
    EscreverTabela(leitor, banco);
  banco.Confirmar();
  return std::cout.flush() ? 0 : 1;
}

}  // namespace impnfse::app
