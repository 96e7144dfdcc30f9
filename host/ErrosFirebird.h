// What the Firebird engine says, in words that help an operator.
#pragma once

#include <soci/soci.h>

#include "VXUtilsTexto.h"

namespace impnfse {

// One Portuguese line that names the database and says what to do.
String TextoDoErro(const soci::soci_error& erro, const String& conexao);

// Whether the connection itself is gone.
bool EhConexaoPerdida(const soci::soci_error& erro);

// Whether another transaction changed the same row first, so that trying again may succeed.
bool EhConflitoDeAtualizacao(const soci::soci_error& erro);

}  // namespace impnfse
