#include "UnVX03704ImpNFSeJoinville.h"

namespace impnfse {

String TNFSeJoinville::GetCNPJCPFEmitente() { return GetLote().Texto("prestador/documento"); }

String TNFSeJoinville::GetCNPJCPFDestinatario() { return GetNota().Texto("tomador/documento"); }

// Only the issuer's side: a file of another company isn't read for its takers.
TBuscarID TNFSeJoinville::CarregouRegistro0000DaEmpresa(int tipo) { return CarregouRegistro0000Emitente(tipo); }

void TNFSeJoinville::Carregar0150() {
  CarregarDestinatario([&]() -> TDadosParte {
    const auto tomador = GetNota().Filho<"tomador">();
    return {.COD_MUN = BuscarCodigoMunicipioTomador(),
            .NOME = tomador.Texto("nome"),
            .ENDERECO = tomador.Texto("endereco"),
            .NUM = tomador.Texto("numero"),
            .COMPL = tomador.Texto("complemento"),
            .BAIRRO = tomador.Texto("bairro"),
            .UF = String(Aparar(tomador.Texto("estado"))),
            .MUNICIPIO = tomador.Texto("cidade")};
  });
}

// By name; by postal code where the name isn't known.
int TNFSeJoinville::BuscarCodigoMunicipioTomador() {
  const auto tomador = GetNota().Filho<"tomador">();
  const auto estado = tomador.Texto("estado");
  const auto municipio = BuscarMunicipio(estado, String(Aparar(tomador.Texto("cidade"))));
  const auto codigo = InteiroDosDigitos(municipio.CODIGOFEDERAL);
  const auto cep = tomador.Texto("cep");
  if (codigo > 0 || Aparar(cep).empty()) return codigo;
  return StrToIntDef(BuscarMunicipioPorCEP(cep, estado), 0);
}

// The taker's city, wherever the service was rendered.
String TNFSeJoinville::BuscarMunicipioDevidoISS() {
  return MunicipioDevidoISS({std::to_string(GetDados0150()->GetCOD_MUN())});
}

Currency TNFSeJoinville::GetBaseRetencoes() const { return GetNota().Valor("valor_total"); }

}  // namespace impnfse
