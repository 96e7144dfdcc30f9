#include "GeradorDeArquivos.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <cstdint>

namespace impnfse::bench {
namespace {

constexpr std::array<std::array<std::string_view, 3>, 6> kCidades = {{{"3550308", "São Paulo", "SP"},
                                                                      {"3518800", "Guarulhos", "SP"},
                                                                      {"3547809", "Santo André", "SP"},
                                                                      {"3304557", "Rio de Janeiro", "RJ"},
                                                                      {"3106200", "Belo Horizonte", "MG"},
                                                                      {"4106902", "Curitiba", "PR"}}};
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
  const auto [municipio, cidade, uf] = kCidades[(sorte >> 8U) % kCidades.size()];
  const bool pessoa = i % 5 == 4;
  return {.Documento = pessoa ? fmt::format("{:011}", 10'000'000'000U + i * 97)
                              : fmt::format("{:08}0001{:02}", 20'000'000U + i * 37, i % 100),
          .Nome = pessoa ? fmt::format("Maria {} da Silva", nome) : fmt::format("Comercial {} {} Ltda.", nome, i),
          .Logradouro = fmt::format("Rua {}", kNomes[(sorte >> 16U) % kNomes.size()]),
          .Numero = static_cast<int>((sorte >> 24U) % 4000),
          .Municipio = municipio,
          .Cidade = cidade,
          .UF = uf};
}

std::string EmReais(long long centavos) { return fmt::format("{},{:02}", centavos / 100, centavos % 100); }

// The description of a note with items. Every second item has a quantity and a unit price instead of a total; the last
// one, which has a total, takes what the others have left.
std::string ItensEntreColchetes(const TNotaFicticia& nota) {
  std::string texto = "{";
  auto resto = std::llround(nota.Valor * 100);
  for (std::size_t item = 0; item < kItensPorNota; ++item) {
    const auto sorte = Espalhar(nota.Numero * kItensPorNota + item);
    const auto servico = kServicos[sorte % kServicos.size()];
    const auto quantos = static_cast<long long>(kItensPorNota - item);
    const auto media = resto / quantos;
    const auto parte =
        quantos == 1 ? resto : media / 2 + static_cast<long long>((sorte >> 8U) % static_cast<std::uint64_t>(media));
    const auto descricao = (item / 2) % 2 == 0
                               ? fmt::format("Serviço de {}, plano {}", servico, 1 + (sorte >> 40U) % 12)
                               : fmt::format("Serviço de {}, ordem {}/{}", servico, 500'000 + nota.Numero, item + 1);
    texto += item == 0 ? "" : " ";
    if (item % 2 == 0) {
      const auto quantidade = 1 + static_cast<long long>((sorte >> 32U) % 4);
      const auto unitario = parte / quantidade;
      texto +=
          fmt::format("[[Descricao={}][Quantidade={},00][ValorUnitario={}]]", descricao, quantidade, EmReais(unitario));
      resto -= unitario * quantidade;
    } else {
      texto += fmt::format("[[Descricao={}][Valor={}]]", descricao, EmReais(parte));
      resto -= parte;
    }
  }
  return texto + "}";
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

void EscreverConsultaABRASF(std::ostream& saida, std::size_t notas, std::string (*descricao)(const TNotaFicticia&)) {
  saida << R"(<?xml version="1.0" encoding="UTF-8"?>
<ConsultarNfseResposta xmlns="http://www.abrasf.org.br/nfse.xsd">
  <ListaNfse>)";
  const auto prestador = fmt::format(
      "<PrestadorServico><IdentificacaoPrestador><Cnpj>{0}</Cnpj><InscricaoMunicipal>102030</InscricaoMunicipal>"
      "</IdentificacaoPrestador><RazaoSocial>Serviços Sabiá Ltda.</RazaoSocial><Endereco>"
      "<Endereco>Avenida das Acácias</Endereco><Numero>1500</Numero><Bairro>Centro</Bairro>"
      "<CodigoMunicipio>{1}</CodigoMunicipio><Uf>{2}</Uf></Endereco></PrestadorServico>",
      kCNPJPrestador, kMunicipioPrestador, kUFPrestador);
  const auto orgao = fmt::format(
      "<OrgaoGerador><CodigoMunicipio>{}</CodigoMunicipio><Uf>{}</Uf></OrgaoGerador></InfNfse></Nfse></CompNfse>",
      kMunicipioPrestador, kUFPrestador);
  for (std::size_t i = 0; i < notas; ++i) {
    const auto nota = NotaFicticia(i, notas);
    const auto retido = nota.ISSRetido ? nota.ISS : 0;
    auto xml = fmt::format(
        "<CompNfse><Nfse><InfNfse><Numero>{}</Numero><CodigoVerificacao>{}</CodigoVerificacao>"
        "<DataEmissao>{}</DataEmissao><NaturezaOperacao>1</NaturezaOperacao>"
        "<OptanteSimplesNacional>2</OptanteSimplesNacional><Competencia>2026-10-01</Competencia>",
        nota.Numero, nota.CodigoVerificacao, nota.Emissao);
    xml += fmt::format(
        "<Servico><Valores><ValorServicos>{0:.2f}</ValorServicos><IssRetido>{1}</IssRetido>"
        "<ValorIss>{2:.2f}</ValorIss><ValorIssRetido>{3:.2f}</ValorIssRetido><BaseCalculo>{0:.2f}</BaseCalculo>"
        "<Aliquota>0.0500</Aliquota><ValorLiquidoNfse>{4:.2f}</ValorLiquidoNfse></Valores>"
        "<ItemListaServico>14.01</ItemListaServico><CodigoTributacaoMunicipio>140101</CodigoTributacaoMunicipio>"
        "<Discriminacao>{5}</Discriminacao><CodigoMunicipio>{6}</CodigoMunicipio></Servico>",
        nota.Valor, nota.ISSRetido ? 1 : 2, nota.ISS, retido, nota.Valor - retido, descricao(nota),
        kMunicipioPrestador);
    xml += prestador;
    xml += fmt::format(
        "<TomadorServico><IdentificacaoTomador><CpfCnpj><{0}>{1}</{0}></CpfCnpj></IdentificacaoTomador>"
        "<RazaoSocial>{2}</RazaoSocial><Endereco><Endereco>{3}</Endereco><Numero>{4}</Numero><Bairro>Centro</Bairro>"
        "<CodigoMunicipio>{5}</CodigoMunicipio><Uf>{6}</Uf></Endereco></TomadorServico>",
        nota.Tomador.Documento.size() == 11 ? "Cpf" : "Cnpj", nota.Tomador.Documento, nota.Tomador.Nome,
        nota.Tomador.Logradouro, nota.Tomador.Numero, nota.Tomador.Municipio, nota.Tomador.UF);
    xml += orgao;
    EscreverIndentado(saida, xml, 2);
  }
  saida << "\n  </ListaNfse>\n</ConsultarNfseResposta>\n";
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

void EscreverABRASF(std::ostream& saida, std::size_t notas) {
  EscreverConsultaABRASF(saida, notas, [](const TNotaFicticia& nota) { return nota.Descricao; });
}

void EscreverABRASFItens(std::ostream& saida, std::size_t notas) {
  EscreverConsultaABRASF(saida, notas, ItensEntreColchetes);
}

void EscreverBlumenau(std::ostream& saida, std::size_t notas) {
  saida << "10010000000001020302026100120261031\r\n";
  const auto emitente =
      fmt::format("{:29}{:015}2{:14}{:115}Av {:100}{:10}{:60}{:72}{:50}{:2}{:88}", "1", 102'030, kCNPJPrestador,
                  "Serviços Sabiá Ltda.", "das Acácias", "1500", "", "Centro", "Guarulhos", kUFPrestador, "");
  const auto centavos = [](double valor) { return std::llround(valor * 100); };
  for (std::size_t i = 0; i < notas; ++i) {
    const auto nota = NotaFicticia(i, notas);
    auto emissao = nota.Emissao;
    std::erase_if(emissao, [](char c) { return c < '0' || c > '9'; });
    saida << fmt::format("2{:015}{}{:8}", nota.Numero, emissao, nota.CodigoVerificacao) << emitente;
    saida << fmt::format("0N{:31}{:015}{:015}0000140100500{:015}{:015}{}", "", centavos(nota.Valor), 0,
                         centavos(nota.ISS), 0, nota.ISSRetido ? 1 : 0);
    saida << fmt::format("{}{:0>14}{:30}{:115}Rua{:100}{:<10}{:60}{:72}{:50}{:2}{:88}{:075}{}\r\n",
                         nota.Tomador.Documento.size() == 11 ? 1 : 2, nota.Tomador.Documento, "", nota.Tomador.Nome,
                         nota.Tomador.Logradouro, nota.Tomador.Numero, "", "Centro", nota.Tomador.Cidade,
                         nota.Tomador.UF, "", 0, nota.Descricao);
  }
  saida << fmt::format("9{:07}\r\n", notas);
}

}  // namespace impnfse::bench
