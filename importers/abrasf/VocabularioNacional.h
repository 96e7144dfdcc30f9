// Words of the national schema (ABRASF) that its versions and the vendors who built on it write alike.
#pragma once

#include "UnVX03704ImpNFSeBase.h"

namespace impnfse {

// Street, number, complement, district and state of an `Endereco`. The municipality and the country are read by each
// layout in its own way.
template <class Endereco>
TDadosParte LerEnderecoNacional(const Endereco& endereco) {
  return {.ENDERECO = endereco.Texto("Endereco"),
          .NUM = endereco.Texto("Numero"),
          .COMPL = endereco.Texto("Complemento"),
          .BAIRRO = endereco.Texto("Bairro"),
          .UF = endereco.Texto("Uf")};
}

}  // namespace impnfse
