#include "TabelaDeServicos.h"

#include <fmt/ranges.h>

#include "Apoio.h"

namespace impnfse::testes::servicos {

TEST(TabelaDeServicos, ListaDaLeiComplementar116) {
  std::vector<int> itensPorGrupo(100);
  int anterior = 0;
  for (const auto& [codigo, descricao] : ServicosDaLista()) {
    EXPECT_TRUE(codigo > anterior && descricao.ends_with('.') && descricao.find('"') == descricao.npos) << codigo;
    ++itensPorGrupo[static_cast<std::size_t>(codigo / 100)];
    anterior = codigo;
  }
  EXPECT_EQ(fmt::format("{}", fmt::join(itensPorGrupo.begin() + 1, itensPorGrupo.begin() + 41, " ")),
            "9 1 4 23 9 6 20 2 3 10 5 17 4 14 18 2 24 1 1 3 1 1 1 1 5 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1");
  for (const auto& [codigo, texto] : Casos(
           "101 => Análise e desenvolvimento de sistemas. | 103 => Processamento de dados e congêneres. | 1711 => "
           "Organização de festas e recepções; bufê (exceto o fornecimento de alimentação e bebidas, que fica sujeito "
           "ao ICMS). | 4001 => Obras de arte sob encomenda. | 9999 => Item da Lista referente a Produtos em Notas "
           "Fiscais Conjugadas. | 301 =>  | 0 =>  | 10000 => "))
    EXPECT_EQ(DescricaoDoServico(StrToIntDef(codigo, 0)), texto) << codigo;
}

}  // namespace impnfse::testes::servicos
