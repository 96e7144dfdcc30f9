// Builds GINFES files: a valid note of the test branch to a taker in Curitiba, of which a test overrides what it needs.
#pragma once

#include "Apoio.h"

namespace impnfse::testes {

// A party: its document element as written, and its address.
struct TParteGINFES {
  String Documento;
  String Nome = "Padaria Exemplo Ltda";
  String Cidade = "4106902";
  String Estado = "PR";
};

inline String CNPJ(std::string_view numero) { return fmt::format("<Cnpj>{}</Cnpj>", numero); }

struct TNotaGINFES {
  String Numero = "1";
  String DataEmissao = "2026-03-15T10:20:30";
  String ValorServicos = "1000.00";
  String IssRetido = "2";
  String ValorIss = "50.00";
  String ValorIssRetido = "0.00";
  String BaseCalculo = "900.00";
  String Aliquota = "5.00";
  String Discriminacao = "Consultoria fiscal";
  TParteGINFES Prestador = {
      .Documento = CNPJ(kCNPJFilial), .Nome = "Oficina d'Água Ltda", .Cidade = "4205407", .Estado = "SC"};
  TParteGINFES Tomador = {.Documento = CNPJ("99888777000166")};

  String Xml() const {
    const auto endereco = [](const TParteGINFES& p) {
      return fmt::format(
          "<RazaoSocial>{}</RazaoSocial><Endereco><Endereco>Rua A</Endereco><Numero>10</Numero><Bairro>Centro</Bairro>"
          "<Cidade>{}</Cidade><Estado>{}</Estado><Complemento>Sala 2</Complemento></Endereco>",
          p.Nome, p.Cidade, p.Estado);
    };
    return fmt::format(
        "<Nfse><IdentificacaoNfse><Numero>{}</Numero><CodigoVerificacao>ABC-1</CodigoVerificacao></IdentificacaoNfse>"
        "<DataEmissao>{}</DataEmissao><NaturezaOperacao>N1</NaturezaOperacao><Servico><Valores><ValorServicos>{}"
        "</ValorServicos><IssRetido>{}</IssRetido><ValorIss>{}</ValorIss><BaseCalculo>{}</BaseCalculo>"
        "<Aliquota>{}</Aliquota><ValorIssRetido>{}</ValorIssRetido></Valores><ItemListaServico>17.01</ItemListaServico>"
        "<CodigoTributacaoMunicipio>0105</CodigoTributacaoMunicipio><Discriminacao>{}</Discriminacao></Servico>"
        "<PrestadorServico><IdentificacaoPrestador>{}</IdentificacaoPrestador>{}</PrestadorServico>"
        "<TomadorServico><IdentificacaoTomador><CpfCnpj>{}</CpfCnpj></IdentificacaoTomador>{}</TomadorServico></Nfse>",
        Numero, DataEmissao, ValorServicos, IssRetido, ValorIss, BaseCalculo, Aliquota, ValorIssRetido, Discriminacao,
        Prestador.Documento, endereco(Prestador), Tomador.Documento, endereco(Tomador));
  }
};

inline String ArquivoGINFES(const std::vector<TNotaGINFES>& notas) {
  String xml = R"(<?xml version="1.0" encoding="UTF-8"?><NFSE xmlns="http://exemplo.invalid/nfse">)";
  for (const auto& nota : notas) xml += nota.Xml();
  return xml + "</NFSE>";
}

}  // namespace impnfse::testes
