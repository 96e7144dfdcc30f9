// The lookups of the importers' base, and the municipalities that they look in.
#include <algorithm>
#include <random>

#include "Apoio.h"
#include "TabelaDeMunicipios.h"
#include "UnVX03704BaseFuncoes.h"

namespace impnfse::testes {
namespace {

// An importer that only lends its lookups. Its side and participant are set by the test.
class TNFSeDeConsulta : public TNFSeBase {
 public:
  TNFSeDeConsulta() : TNFSeBase(false) {}
  TTipoOperacao GetOrigem() override { return Origem; }
  TTipoOperacao Origem = toSaida;
};

class TConsultas : public TTesteComBanco {
 protected:
  TConsultas() { Suite().IniciarExecucao(0); }

  void Carregar(const std::vector<TLinhaMunicipio>& linhas, TCargaMunicipios carga) {
    if (Banco().EmTransacao()) Armazem().Confirmar();
    Banco().Iniciar();
    GravarMunicipios(Banco().Sessao(), linhas, carga);
    Banco().Confirmar();
    Suite().IniciarExecucao(0);
  }
  void Carregar(const String& linhas, TCargaMunicipios carga = TCargaMunicipios::Substituir) {
    Carregar(LerMunicipiosCSV("NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL\n" + linhas), carga);
  }
  String Codigo(const String& uf, const String& nome) { return Nota.BuscarMunicipio(uf, nome).CODIGOFEDERAL; }

  TNFSeDeConsulta Nota;
};

TEST_F(TConsultas, MunicipioPeloNomeContido) {
  Carregar(
      "Nova Trento;SC;4211504;;;\nSão João;PR;4124806;;;\nSão João Batista;SC;4216305;;;\nPau D'Arco;PA;1505551;;;\n"
      "Olho D' Água;PB;2510402;;;\nSítio d´Abadia;GO;5220702;;;\n");
  EXPECT_EQ(Codigo("SC", "são joÃO"), "4216305") << "free of case, accents too";
  EXPECT_EQ(Codigo("", "SÃO JOÃO"), "4124806") << "without a state the first row decides";
  EXPECT_EQ(Codigo("  ", "Batista"), "4216305");
  EXPECT_EQ(Codigo("SC", "Sao Joao"), "0") << "an accent counts";
  EXPECT_EQ(Codigo("PA", "pau d'arco"), "1505551");
  EXPECT_EQ(Codigo("PA", "Pau D´Arco"), "1505551") << "the acute accent as an apostrophe";
  EXPECT_EQ(Codigo("", "Olho D´Água"), "2510402") << "and as an apostrophe with a blank";
  EXPECT_EQ(Codigo("", "D´Abadia"), "5220702") << "and as it stands";
  EXPECT_EQ(Codigo("PA", "Pau D' Arco"), "0") << "an apostrophe is only itself";
  EXPECT_EQ(Codigo("", "' OR '1'='1"), "0");
  EXPECT_EQ(Codigo("' OR '1'='1", "Trento"), "0");
  for (const auto* const nome : {"", "  ", "Atlântida"}) {
    const auto municipio = Nota.BuscarMunicipio("XX", nome);
    EXPECT_EQ(municipio.CODIGOFEDERAL, "0");
    EXPECT_EQ(municipio.UF, "XX") << "the state asked for";
    EXPECT_EQ(municipio.IDMUNICIPIO, 0);
  }
  const auto achado = Nota.BuscarMunicipio("", "trento");
  EXPECT_EQ(achado.UF, "SC");
  EXPECT_EQ(achado.IDMUNICIPIO, Banco().ConsultarInteiro("SELECT IDMUNICIPIO FROM CA06_MUNICIPIO WHERE UF = 'SC' AND "
                                                         "CODIGOFEDERAL = '4211504'"));
}

TEST_F(TConsultas, PrimeiroEOPrimeiroDaCarga) {
  const auto todos = [&] { return Banco().Consultar("SELECT CODIGOFEDERAL FROM CA06_MUNICIPIO").Linhas; };
  auto linhas = LerMunicipiosCSV(LerArquivo(IMPNFSE_DADOS "/municipios.csv"));
  ASSERT_EQ(linhas.size(), todos().size()) << "a new database has the whole table";
  ASSERT_GT(linhas.size(), 5500U);
  const auto idAntes = Banco().ConsultarInteiro("SELECT IDMUNICIPIO FROM CA06_MUNICIPIO WHERE CODIGOFEDERAL='4205407'");
  std::mt19937 sorteio(7);
  for (const auto carga : {TCargaMunicipios::Completar, TCargaMunicipios::Substituir, TCargaMunicipios::Completar}) {
    std::shuffle(linhas.begin(), linhas.end(), sorteio);
    Carregar(linhas, carga);
    const auto lidos = todos();
    ASSERT_EQ(lidos.size(), linhas.size());
    for (std::size_t i = 0; i < lidos.size(); ++i) ASSERT_EQ(lidos[i].front(), linhas[i].CODIGOFEDERAL) << i;
    for (const auto* const nome : {"Santa", "São", "Nova"}) {
      const auto primeira = std::find_if(linhas.begin(), linhas.end(), [&](const auto& l) {
        return Maiusculas(l.NOME).find(Maiusculas(nome)) != String::npos;
      });
      EXPECT_EQ(Codigo("", nome), primeira->CODIGOFEDERAL);
    }
  }
  EXPECT_EQ(Banco().ConsultarInteiro("SELECT IDMUNICIPIO FROM CA06_MUNICIPIO WHERE CODIGOFEDERAL='4205407'"), idAntes)
      << "registers refer to it";
}

TEST_F(TConsultas, CargaDeMunicipios) {
  Carregar("A;SC;1;8105;88000000;88099999\nB;sc;2;;;\nA de novo;SC;1;;;\n");
  Carregar("B;SC;2;77;;\nC;SC;3;;;\n", TCargaMunicipios::Completar);
  EXPECT_EQ(Tabela("SELECT NOME, UF, CODIGOFEDERAL, CODSRF, CEPGERAL, CEPFINAL FROM CA06_MUNICIPIO"),
            "A|SC|1|8105|88000000|88099999\nA de novo|SC|1|-|-|-\nB|SC|2|77|-|-\nC|SC|3|-|-|-");
  const auto erro = [](const String& csv) -> String {
    try {
      LerMunicipiosCSV(csv);
    } catch (const EConversao& e) {
      return e.what();
    }
    return "";
  };
  const String cabecalho = "NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL\r\n";
  EXPECT_EQ(erro(""), "A primeira linha deve ser NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL.");
  EXPECT_EQ(erro(cabecalho + "\r\nA;SC;1;;;\r\nA;SC;1"), "Linha 4: 3 colunas, onde devem ser 6.");
  EXPECT_EQ(erro(cabecalho + ";SC;1;;;"), "Linha 2: NOME, UF e CODIGOFEDERAL são obrigatórios.");
  EXPECT_EQ(erro(cabecalho + "A;SC;1x;;;"), "Linha 2: CODIGOFEDERAL \"1x\" não é um número.");
}

TEST_F(TConsultas, CodigoDoMunicipio) {
  const auto codigo = [&](const char* c, const char* uf, const char* nome = "") {
    return Nota.BuscarCodigoMunicipio(c, uf, nome);
  };
  EXPECT_EQ(codigo("2901", "SC"), 4202901);
  EXPECT_EQ(codigo("5", "SC"), 4200005);
  EXPECT_EQ(codigo("12345", "SP"), 3512345);
  EXPECT_EQ(codigo("123456", "SC"), 123456) << "six or more stay";
  EXPECT_EQ(codigo("4205407", "SC"), 4205407);
  EXPECT_EQ(codigo("2901", "XX"), 2901) << "an unknown state is 0";
  for (const auto* const nada : {"", "0", "-3", "abc", "4.205.407"})
    EXPECT_EQ(codigo(nada, "SC", "Florianópolis"), 4205407) << nada;
  EXPECT_EQ(codigo("", "SC", "Atlântida"), 0);
  EXPECT_EQ(BuscarUFMunicipio("4205407"), "SC");
  EXPECT_EQ(BuscarUFMunicipio("0"), "");
  EXPECT_EQ(BuscarUFMunicipio("x'; --"), "");
}

TEST_F(TConsultas, CodigoDeAtividade) {
  for (const auto& [codigo, esperado] : Casos(
           "1.05 => 1.05 | 7 => 7.00 | 14 => 14. | 101 => 1.01 | 700 => 7 | 710 => 7.1 | 005 => 0.05 | 000 => 0 | 0105 "
           "=> 01.05 | 10501 => 10.501 | 1-05 => 1.05 | 01/05 => 01.05 | abc => abc |  =>  | a.b => a.b"))
    EXPECT_EQ(Nota.FormatarCodigoAtividade(codigo), esperado) << codigo;
}

TEST_F(TConsultas, CFOPDoServico) {
  const auto cfop = [&](TTipoOperacao origem, const char* uf) {
    Nota.Origem = origem;
    Nota.GetDados0150()->SetUF(uf);
    return Nota.BuscarCFOPIcmsServico();
  };
  for (const auto* const noEstado : {"SC", " sc ", "", "  "}) {
    EXPECT_EQ(cfop(toSaida, noEstado), "5.933.000") << noEstado;
    EXPECT_EQ(cfop(toEntrada, noEstado), "1.933.000") << noEstado;
  }
  EXPECT_EQ(cfop(toSaida, "PR"), "6.933.000");
  EXPECT_EQ(cfop(toEntrada, "PR"), "2.933.000");
  Armazem().Confirmar();
  auto filial = Filial(kCNPJFilial, "  ");
  filial.CasasPrefixoCFOP = 0;
  Registrar(filial);
  Suite().IniciarExecucao(0);
  EXPECT_EQ(cfop(toSaida, "PR"), "5.933.") << "the branch's state is unknown";
}

}  // namespace
}  // namespace impnfse::testes
