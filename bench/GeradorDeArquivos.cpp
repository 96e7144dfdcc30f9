#include "GeradorDeArquivos.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <cstdint>

namespace impnfse::bench {
namespace {

constexpr std::array<std::array<std::string_view, 2>, 6> kCidades = {
    {{"3550308", "SP"}, {"3518800", "SP"}, {"3547809", "SP"}, {"3304557", "RJ"}, {"3106200", "MG"}, {"4106902", "PR"}}};
constexpr std::array<std::string_view, 7> kNomes = {"Aroeira",   "Ipê Amarelo", "Jatobá",   "Cedro",
                                                    "Jequitibá", "Paineira",    "Araucária"};
constexpr std::array<std::string_view, 5> kServicos = {"manutenção de equipamentos", "suporte técnico em informática",
                                                       "consultoria contábil", "limpeza e conservação",
                                                       "desenvolvimento de programas sob encomenda"};

// Scatters the numbers of notes, so that neighbours share nothing.
std::uint64_t Espalhar(std::uint64_t x) {
  x = (x + 1) * 0x9E3779B97F4A7C15U;
  x = (x ^ (x >> 30U)) * 0xBF58476D1CE4E5B9U;
  return x ^ (x >> 31U);
}

TNotaFicticia::TTomador TomadorFicticio(std::size_t i) {
  const auto sorte = Espalhar(~i);
  const auto nome = kNomes[sorte % kNomes.size()];
  const auto [municipio, uf] = kCidades[(sorte >> 8U) % kCidades.size()];
  const bool pessoa = i % 5 == 4;
  return {.Documento = pessoa ? fmt::format("{:011}", 10'000'000'000U + i * 97)
                              : fmt::format("{:08}0001{:02}", 20'000'000U + i * 37, i % 100),
          .Nome = pessoa ? fmt::format("Maria {} da Silva", nome) : fmt::format("Comercial {} {} Ltda.", nome, i),
          .Logradouro = fmt::format("Rua {}", kNomes[(sorte >> 16U) % kNomes.size()]),
          .Numero = static_cast<int>((sorte >> 24U) % 4000),
          .Municipio = municipio,
          .UF = uf};
}

// Writes XML as most issuers do: each element on a line of its own, indented.
void EscreverIndentado(std::ostream& saida, std::string_view xml, std::size_t nivel) {
  bool abriu = false;
  while (!xml.empty()) {
    const auto marca = xml.substr(0, xml.find('>') + 1);
    const bool fecha = marca[marca.find('<') + 1] == '/';
    if (fecha) --nivel;
    if (!(fecha && abriu)) saida << '\n' << std::string(2 * nivel, ' ');
    saida << marca;
    if (!fecha) ++nivel;
    abriu = !fecha;
    xml.remove_prefix(marca.size());
  }
}

}  // namespace

TNotaFicticia NotaFicticia(std::size_t i, std::size_t notas) {
  const auto sorte = Espalhar(i);
  const auto tomador = (sorte >> 24U) % std::max<std::size_t>(notas / 4, 1);
  const auto valor = static_cast<double>(5'000 + sorte % 2'000'000) / 100;
  const auto servico = kServicos[(sorte >> 16U) % kServicos.size()];
  return {.Numero = i + 1,
          .Emissao = fmt::format("2026-10-{:02}T{:02}:{:02}:00", 1 + i * 31 / notas, 8 + sorte % 10, sorte % 60),
          .CodigoVerificacao = fmt::format("{:08X}", sorte >> 32U),
          .Tomador = TomadorFicticio(tomador),
          .Descricao =
              i % 10 == 9
                  ? fmt::format("Mensalidade de {}, conforme contrato.", servico)
                  : fmt::format("Prestação de serviços de {} no mês de outubro de 2026, conforme contrato nº {}/2025 "
                                "e ordem de serviço {}. Horas técnicas: {}. Vencimento em 10/11/2026. Valor aproximado "
                                "dos tributos: 16,33%. Dados para depósito: agência 0{}, conta {}-{}.",
                                servico, 1000 + tomador, 500'000 + i, 1 + sorte % 160, 100 + sorte % 900,
                                10'000 + sorte % 90'000, sorte % 10),
          .Valor = valor,
          .ISS = std::round(valor * 5) / 100,
          .ISSRetido = i % 5 == 0};
}

void EscreverGINFES(std::ostream& saida, std::size_t notas) {
  saida << R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<ns2:NFSE xmlns:ns2="urn:exemplo:ginfes:consultar-nfse-resposta" xmlns:ns3="urn:exemplo:ginfes:tipos">)";
  const auto prestador = fmt::format(
      "<ns3:PrestadorServico><ns3:IdentificacaoPrestador><ns3:Cnpj>{0}</ns3:Cnpj>"
      "<ns3:InscricaoMunicipal>102030</ns3:InscricaoMunicipal></ns3:IdentificacaoPrestador>"
      "<ns3:RazaoSocial>Serviços Sabiá Ltda.</ns3:RazaoSocial><ns3:Endereco>"
      "<ns3:Endereco>Avenida das Acácias</ns3:Endereco><ns3:Numero>1500</ns3:Numero><ns3:Bairro>Centro</ns3:Bairro>"
      "<ns3:Cidade>{1}</ns3:Cidade><ns3:Estado>{2}</ns3:Estado></ns3:Endereco></ns3:PrestadorServico>"
      "<ns3:OrgaoGerador><ns3:CodigoMunicipio>{1}</ns3:CodigoMunicipio><ns3:Uf>{2}</ns3:Uf></ns3:OrgaoGerador>",
      kCNPJPrestador, kMunicipioPrestador, kUFPrestador);
  for (std::size_t i = 0; i < notas; ++i) {
    const auto nota = NotaFicticia(i, notas);
    const auto retido = nota.ISSRetido ? nota.ISS : 0;
    auto xml = fmt::format(
        "<ns2:Nfse><ns3:IdentificacaoNfse><ns3:Numero>{}</ns3:Numero>"
        "<ns3:CodigoVerificacao>{}</ns3:CodigoVerificacao></ns3:IdentificacaoNfse>"
        "<ns3:DataEmissao>{}</ns3:DataEmissao><ns3:NaturezaOperacao>1</ns3:NaturezaOperacao>"
        "<ns3:OptanteSimplesNacional>2</ns3:OptanteSimplesNacional>"
        "<ns3:IncetivadorCultural>2</ns3:IncetivadorCultural><ns3:Competencia>2026-10-01T00:00:00</ns3:Competencia>",
        nota.Numero, nota.CodigoVerificacao, nota.Emissao);
    xml += fmt::format(
        "<ns3:Servico><ns3:Valores><ns3:ValorServicos>{0:.2f}</ns3:ValorServicos><ns3:IssRetido>{1}</ns3:IssRetido>"
        "<ns3:ValorIss>{2:.2f}</ns3:ValorIss><ns3:BaseCalculo>{0:.2f}</ns3:BaseCalculo><ns3:Aliquota>5</ns3:Aliquota>"
        "<ns3:ValorLiquidoNfse>{3:.2f}</ns3:ValorLiquidoNfse><ns3:ValorIssRetido>{4:.2f}</ns3:ValorIssRetido>"
        "</ns3:Valores><ns3:ItemListaServico>14.01</ns3:ItemListaServico>"
        "<ns3:CodigoTributacaoMunicipio>140101</ns3:CodigoTributacaoMunicipio>"
        "<ns3:Discriminacao>{5}</ns3:Discriminacao>"
        "<ns3:MunicipioPrestacaoServico>{6}</ns3:MunicipioPrestacaoServico></ns3:Servico>",
        nota.Valor, nota.ISSRetido ? 1 : 2, nota.ISS, nota.Valor - retido, retido, nota.Descricao, kMunicipioPrestador);
    xml += prestador;
    xml += fmt::format(
        "<ns3:TomadorServico><ns3:IdentificacaoTomador><ns3:CpfCnpj><ns3:{0}>{1}</ns3:{0}></ns3:CpfCnpj>"
        "</ns3:IdentificacaoTomador><ns3:RazaoSocial>{2}</ns3:RazaoSocial><ns3:Endereco>"
        "<ns3:Endereco>{3}</ns3:Endereco><ns3:Numero>{4}</ns3:Numero><ns3:Bairro>Centro</ns3:Bairro>"
        "<ns3:Cidade>{5}</ns3:Cidade><ns3:Estado>{6}</ns3:Estado></ns3:Endereco></ns3:TomadorServico></ns2:Nfse>",
        nota.Tomador.Documento.size() == 11 ? "Cpf" : "Cnpj", nota.Tomador.Documento, nota.Tomador.Nome,
        nota.Tomador.Logradouro, nota.Tomador.Numero, nota.Tomador.Municipio, nota.Tomador.UF);
    EscreverIndentado(saida, xml, 1);
  }
  saida << "\n</ns2:NFSE>\n";
}

}  // namespace impnfse::bench
