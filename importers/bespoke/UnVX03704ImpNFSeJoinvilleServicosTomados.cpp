#include "UnVX03704ImpNFSeJoinvilleServicosTomados.h"

namespace impnfse {

String TNFSeJoinvilleServicosTomados::GetCNPJCPFEmitente() { return GetNota().Texto("prestador/documento"); }

String TNFSeJoinvilleServicosTomados::GetCNPJCPFDestinatario() { return GetLote().Texto("tomador/documento"); }

// Only the taker's side: a file of another company isn't read for its providers.
TBuscarID TNFSeJoinvilleServicosTomados::CarregouRegistro0000DaEmpresa(int tipo) {
  return CarregouRegistro0000Destinatario(tipo);
}

// A provider without a number becomes no participant.
void TNFSeJoinvilleServicosTomados::Carregar0150() {
  CarregarEmitente([&] { return LerPrestador(); }, TSemNumero::NaoParticipa);
}

TDadosParte TNFSeJoinvilleServicosTomados::LerPrestador() {
  const auto prestador = GetNota().Filho<"prestador">();
  const auto estado = prestador.Texto("estado");
  const auto cidade = prestador.Texto("cidade");
  return {.COD_MUN = InteiroDosDigitos(BuscarMunicipio(estado, cidade).CODIGOFEDERAL),
          .NOME = prestador.Texto("nome"),
          .ENDERECO = prestador.Texto("endereco"),
          .NUM = prestador.Texto("numero"),
          .COMPL = prestador.Texto("complemento"),
          .BAIRRO = prestador.Texto("bairro"),
          .UF = estado,
          .MUNICIPIO = cidade};
}

// The name of the place, without a state of its own: in the provider's, else in the branch's.
String TNFSeJoinvilleServicosTomados::BuscarMunicipioDevidoISS() {
  const String local(Aparar(GetNota().Texto("local_servico")));
  const String estado(Aparar(GetNota().Texto("prestador/estado")));
  return MunicipioDevidoISS({BuscarMunicipio(estado, local).CODIGOFEDERAL,
                             BuscarMunicipio(GetDadosEmpresaImportacao()->GetDadosFilial().UF, local).CODIGOFEDERAL});
}

Currency TNFSeJoinvilleServicosTomados::GetBaseRetencoes() const { return GetNota().Valor("valor_base_calculo"); }

}  // namespace impnfse
