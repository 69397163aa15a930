// A run of the update: the files newer than the base applied in order,
// each as one unit (maj/unite.h), its rows dispatched by their markers to
// the handlers of their tables, the base's date moved to the file's after
// each whole file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "session/contexte.h"

namespace vdx::maj {

// ExecuteMaj_Vdx with a token buffer of `tampon` bytes: the result of the
// run (1, 0 a row failed, -10 a file unreadable, -500 the date or a table
// could not be written), kept for the next run that finds no file. Throws
// Echec for the listing's failures (-500, -200).
int32_t ExecuteMaj(const Contexte& contexte, const std::string& repertoire, size_t tampon);

}  // namespace vdx::maj
