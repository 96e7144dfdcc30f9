// The service list of Lei Complementar 116 of 2003 with its amendments, as the module carries it. A code is the item's
// number without its point: 1.01 is 101, 40.01 is 4001.
#pragma once

#include <span>

#include "VXUtilsTexto.h"

namespace impnfse {

struct TLinhaServico {
  int CODIGO = 0;
  String DESCRICAO;
};

// All items in order of their codes; the last one, 9999, isn't the law's but the system's own.
std::span<const TLinhaServico> ServicosDaLista();

// The item's text; empty when the code is unknown.
String DescricaoDoServico(int codigo);

}  // namespace impnfse
