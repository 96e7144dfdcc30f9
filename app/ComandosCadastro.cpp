// criar, filial, municipios, leiautes: what an office sets up once.
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>

#include "BancoFirebird.h"
#include "Comandos.h"
#include "EscritorJSON.h"
#include "TabelaDeMunicipios.h"
#include "UnVX03704BaseFuncoes.h"
#include "UnVX03704ImpNFSe.h"
#include "VX03704Filiais.h"

namespace impnfse::app {
namespace {

constexpr int kMaximoDeCasas = 20;

bool TemPeriodos(TBancoFirebird& banco, const TFilialRegistrada& filial) {
  return banco.ConsultarInteiro(
             fmt::format("SELECT COUNT(*) FROM ES02_REG0000 WHERE IDFILIAL = {}", filial.Dados.IDFILIAL)) > 0;
}

void Caber(std::string_view opcao, const String& valor, std::size_t maximo) {
  if (Comprimento(valor) > maximo) throw EUso(fmt::format("{} é longo demais: cabem {} caracteres", opcao, maximo));
}

}  // namespace

String NormalizarCNPJ(const String& texto) {
  String cnpj;
  for (const char c : Maiusculas(texto))
    if (c != '.' && c != '/' && c != '-' && c != ' ') cnpj += c;
  const bool valido = cnpj.size() == kTamanhoCNPJ && std::all_of(cnpj.begin(), cnpj.end(), [](char c) {
                        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
                      });
  if (!valido) throw EUso(fmt::format("\"{}\" não é um CNPJ: são 14 posições, com ou sem pontuação", texto));
  return cnpj;
}

String FormatarCNPJ(const String& cnpj) {
  if (cnpj.size() != kTamanhoCNPJ) return cnpj;
  return fmt::format("{}.{}.{}/{}-{}", cnpj.substr(0, 2), cnpj.substr(2, 3), cnpj.substr(5, 3), cnpj.substr(8, 4),
                     cnpj.substr(12));
}

int Criar(const String& caminho) {
  TBancoFirebird::Criar(caminho);
  TBancoFirebird banco(caminho);
  fmt::print("Banco {} criado, com {} municípios e {} leiautes.\n", caminho,
             banco.ConsultarInteiro("SELECT COUNT(*) FROM CA06_MUNICIPIO"),
             banco.ConsultarInteiro("SELECT COUNT(*) FROM ES02_SERVICOLEIAUTE"));
  return 0;
}

int Filial(const String& caminho, const TOpcoesFilial& opcoes) {
  const auto cnpj = NormalizarCNPJ(opcoes.CNPJ);
  const auto uf = Maiusculas(Aparar(opcoes.UF));
  if (BuscarCodigoIBGEUF(uf) == 0) throw EUso(fmt::format("\"{}\" não é a sigla de um estado", opcoes.UF));
  const auto municipio = BuscarSomenteNumeros(opcoes.Municipio);
  if (municipio.empty()) throw EUso(fmt::format("\"{}\" não é um código de município", opcoes.Municipio));

  const auto casas = opcoes.CasasCFOP.value_or(0);
  if (casas < 0 || casas > kMaximoDeCasas) throw EUso(fmt::format("--casas-cfop vai de 0 a {}", kMaximoDeCasas));
  Caber("--municipio", opcoes.Municipio, 20);
  Caber("--ie", opcoes.IE.value_or(""), 30);
  Caber("--arquivo-morto", opcoes.ArquivoMorto.value_or(""), 4000);

  if (opcoes.Empresa.value_or(1) <= 0) throw EUso("--empresa é um número a partir de 1");
  if (opcoes.RemoverCaracteres.value_or(0) < 0) throw EUso("--remover-caracteres é um número a partir de 0");

  TBancoFirebird banco(caminho);
  const auto existente = BuscarFilial(banco, cnpj);
  auto filial = existente.value_or(TFilialRegistrada{.Dados = {.IDEMPRESA = 1}});
  filial.Dados.CNPJ = cnpj;
  filial.Dados.UF = uf;
  filial.Dados.CODIGOMUNICIPIO = opcoes.Municipio;
  filial.Dados.IE = opcoes.IE.value_or(filial.Dados.IE);
  if (opcoes.Nome) filial.NOME = DecodificarTexto(*opcoes.Nome);
  if (existente && opcoes.Empresa && *opcoes.Empresa != existente->Dados.IDEMPRESA && TemPeriodos(banco, *existente))
    throw EUso(fmt::format("a filial já tem documentos na empresa {}, e não pode passar para outra",
                           existente->Dados.IDEMPRESA));
  filial.Dados.IDEMPRESA = opcoes.Empresa.value_or(static_cast<int>(filial.Dados.IDEMPRESA));
  filial.CasasPrefixoCFOP = opcoes.CasasCFOP.value_or(filial.CasasPrefixoCFOP);
  filial.RemoverCaracteres = opcoes.RemoverCaracteres.value_or(filial.RemoverCaracteres);
  if (opcoes.ArquivoMorto)
    filial.ArquivoMorto =
        opcoes.ArquivoMorto->empty()
            ? String()
            : std::filesystem::weakly_canonical(std::filesystem::absolute(*opcoes.ArquivoMorto)).string();
  GravarFilial(banco, filial);

  const auto nomes =
      banco.Consultar("SELECT FIRST 1 NOME FROM CA06_MUNICIPIO WHERE CODIGOFEDERAL = " + CitarSQL(municipio));
  const auto onde = nomes.Linhas.empty() ? fmt::format("{} (o município {} não está na tabela)", uf, municipio)
                                         : fmt::format("{}/{}", nomes.Linhas.front().front().value_or(""), uf);
  fmt::print("Filial {}{} {}: empresa {}, {}.\n", FormatarCNPJ(cnpj),
             filial.NOME.empty() ? "" : " (" + filial.NOME + ")", existente ? "atualizada" : "registrada",
             filial.Dados.IDEMPRESA, onde);
  fmt::print("{}\n", filial.ArquivoMorto.empty()
                         ? "Sem arquivo morto: os arquivos importados ficam onde estão."
                         : fmt::format("Os arquivos importados vão para {}.", filial.ArquivoMorto + "/NFSe"));
  return 0;
}

int Municipios(const String& caminho, const String& arquivo, bool substituir) {
  TBancoFirebird banco(caminho);
  std::vector<TLinhaMunicipio> municipios;
  try {
    municipios = LerMunicipiosCSV(DecodificarTexto(LerArquivo(arquivo)));
  } catch (const EArquivo& erro) {
    fmt::print(stderr, "impnfse: {}\n", erro.what());
    return 1;
  } catch (const EConversao& erro) {
    fmt::print(stderr, "impnfse: {}: {} Nada foi alterado.\n", arquivo, erro.what());
    return 1;
  }
  banco.Iniciar();
  banco.Proteger([&] {
    GravarMunicipios(banco.Sessao(), municipios,
                     substituir ? TCargaMunicipios::Substituir : TCargaMunicipios::Completar);
  });
  banco.Confirmar();
  fmt::print(
      "{}; a tabela tem {}.\n",
      municipios.size() == 1 ? "1 município carregado" : fmt::format("{} municípios carregados", municipios.size()),
      banco.ConsultarInteiro("SELECT COUNT(*) FROM CA06_MUNICIPIO"));
  return 0;
}

int Leiautes(const String& caminho, bool json) {
  TBancoFirebird banco(caminho);
  TVXClientDataSet linhas;
  linhas.Abrir(
      banco.Consultar("SELECT CODIGO, DESCRICAO FROM ES02_SERVICOLEIAUTE WHERE BIN_AND(TP, 4) = 4 ORDER BY CODIGO"));
  auto lista = nlohmann::ordered_json::array();
  for (; !linhas.IsEmpty(); linhas.Next()) {
    const auto codigo = linhas.FieldByName("CODIGO").GetAsString();
    auto importadores = nlohmann::ordered_json::array();
    for (const auto* importador : ImportadoresDoLeiaute(codigo)) importadores.push_back(importador->Classe);
    lista.push_back({{"codigo", codigo},
                     {"descricao", linhas.FieldByName("DESCRICAO").GetAsString()},
                     {"importadores", std::move(importadores)},
                     {"proposto", AnalisePropoeLeiaute(codigo)}});
  }
  if (json) {
    fmt::print("{}\n", TextoJSON(lista, 2));
    return 0;
  }
  fmt::print("Código  Leiaute\n");
  for (const auto& leiaute : lista) {
    String importadores;
    for (const auto& classe : leiaute["importadores"])
      importadores += (importadores.empty() ? "" : ", ") + classe.get<String>();
    const auto codigo = leiaute["codigo"].get<String>();
    fmt::print("{:>6}  {}\n        {}\n", codigo, leiaute["descricao"].get<String>(),
               importadores.empty() ? "sem importador" : importadores);
    if (!leiaute["proposto"].get<bool>())
      fmt::print("        a análise nunca o propõe: importe com --leiaute {}\n", codigo);
  }
  return 0;
}

}  // namespace impnfse::app
