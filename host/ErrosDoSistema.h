// The operating system's errors in Portuguese.
#pragma once

#include "VXUtilsTexto.h"

namespace impnfse {

// Why a call on a file failed, by errno: "não existe", "sem permissão", ... An error that is none of the usual ones has
// the system's own text.
String MotivoDoSistema(int erro);

}  // namespace impnfse
