// The lookups of the importers' base, and the municipalities that they look in.
#include <algorithm>
#include <random>

#include "Apoio.h"
#include "TabelaDeMunicipios.h"
#include "UnVX03704BaseFuncoes.h"
#include "XMLFormato.h"

namespace impnfse::testes::consultas {

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
    Armazem().Confirmar();
    Banco().Iniciar();
    GravarMunicipios(Banco().Sessao(), linhas, carga);
    Banco().Confirmar();
    Suite().IniciarExecucao(0);
  }

  TNFSeDeConsulta Nota;
};

TEST_F(TConsultas, MunicipioPeloNomeContido) {
  Carregar(LerMunicipiosCSV("NOME;UF;CODIGOFEDERAL;CODSRF;CEPGERAL;CEPFINAL\nNova Trento;SC;4211504;;;\nSão "
                            "João;PR;4124806;;;\nSão João Batista;SC;4216305;;;\nPau D'Arco;PA;1505551;;;\nOlho D' "
                            "Água;PB;2510402;;;\nSítio d´Abadia;GO;5220702;;;\n"),
           TCargaMunicipios::Substituir);
  // Free of case, of accents too; an accent counts. Without a state the first row decides. The acute accent stands as
  // itself, as an apostrophe, and as an apostrophe with a blank; an apostrophe only as itself. Not found: the state
  // asked for.
  for (const auto& [chave, esperado] : Casos(
           "SC;são joÃO => 4216305 SC | ;SÃO JOÃO => 4124806 PR |   ;Batista => 4216305 SC | SC;Sao Joao => 0 SC | "
           "PA;pau d'arco => 1505551 PA | PA;Pau D´Arco => 1505551 PA | ;Olho D´Água => 2510402 PB | ;D´Abadia => "
           "5220702 GO | PA;Pau D' Arco => 0 PA | ;' OR '1'='1 => 0  | ' OR '1'='1;Trento => 0 ' OR '1'='1 | XX; => 0 "
           "XX | XX;   => 0 XX | ;trento => 4211504 SC")) {
    std::string_view nome = chave;
    const String uf(formato::CortarAte(nome, ";"));
    const auto m = Nota.BuscarMunicipio(uf, String(nome));
    EXPECT_EQ(m.CODIGOFEDERAL + " " + m.UF, esperado) << chave;
    EXPECT_EQ(m.IDMUNICIPIO == 0, m.CODIGOFEDERAL == "0") << chave;
  }
}

TEST_F(TConsultas, PrimeiroEOPrimeiroDaCarga) {
  auto linhas = LerMunicipiosCSV(LerArquivo(IMPNFSE_DADOS "/municipios.csv"));
  ASSERT_GT(linhas.size(), 5500U);
  const auto id = [&] { return Tabela("SELECT IDMUNICIPIO FROM CA06_MUNICIPIO WHERE CODIGOFEDERAL = '4205407'"); };
  const auto idAntes = id();
  std::mt19937 sorteio(7);
  for (const auto carga : {TCargaMunicipios::Completar, TCargaMunicipios::Substituir, TCargaMunicipios::Completar}) {
    std::shuffle(linhas.begin(), linhas.end(), sorteio);
    Carregar(linhas, carga);
    String codigos;
    for (const auto& linha : linhas) codigos += (codigos.empty() ? "" : "\n") + linha.CODIGOFEDERAL;
    EXPECT_TRUE(Tabela("SELECT CODIGOFEDERAL FROM CA06_MUNICIPIO") == codigos);
    const auto contem = [](const auto& linha) { return Maiusculas(linha.NOME).find("SÃO") != String::npos; };
    const auto primeira = std::find_if(linhas.begin(), linhas.end(), contem);
    EXPECT_EQ(Nota.BuscarMunicipio("", "são").CODIGOFEDERAL, primeira->CODIGOFEDERAL);
  }
  EXPECT_EQ(id(), idAntes) << "registers refer to it";
}

TEST_F(TConsultas, CodigoDoMunicipio) {
  // A short number is completed, by 0 for an unknown state; six or more stay; no number at all: the name decides.
  for (const auto& [chave, esperado] :
       Casos("SC2901 => 4202901 | SC5 => 4200005 | SP12345 => 3512345 | SC123456 => 123456 | SC4205407 => 4205407 | "
             "XX2901 => 2901 | SC => 4205407 | SC0 => 4205407 | SC-3 => 4205407 | SCabc => 4205407 | SC4.205.407 => "
             "4205407 | SP => 0")) {
    const auto codigo = Nota.BuscarCodigoMunicipio(chave.substr(2), chave.substr(0, 2), "Florianópolis");
    EXPECT_EQ(std::to_string(codigo), esperado) << chave;
  }
  EXPECT_EQ(BuscarUFMunicipio("4205407") + BuscarUFMunicipio("0") + BuscarUFMunicipio("x'; --"), "SC");
}

TEST_F(TConsultas, CodigoDeAtividade) {
  for (const auto& [codigo, esperado] : Casos(
           "1.05 => 1.05 | 7 => 7.00 | 14 => 14. | 101 => 1.01 | 700 => 7 | 710 => 7.1 | 005 => 0.05 | 000 => 0 | 0105 "
           "=> 01.05 | 10501 => 10.501 | 1-05 => 1.05 | 01/05 => 01.05 | abc => abc |  =>  | a.b => a.b"))
    EXPECT_EQ(Nota.FormatarCodigoAtividade(codigo), esperado) << codigo;
}

TEST_F(TConsultas, CFOPDoServico) {
  const auto cfop = [&](const char* uf) {
    Nota.GetDados0150()->SetUF(uf);
    Nota.Origem = toSaida;
    const auto saida = Nota.BuscarCFOPIcmsServico();
    Nota.Origem = toEntrada;
    return saida + " " + Nota.BuscarCFOPIcmsServico();
  };
  for (const auto* const noEstado : {"SC", " sc ", "", "  "}) EXPECT_EQ(cfop(noEstado), "5.933.000 1.933.000");
  EXPECT_EQ(cfop("PR"), "6.933.000 2.933.000");
}

}  // namespace impnfse::testes::consultas
