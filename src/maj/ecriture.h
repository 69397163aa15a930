// The writing of an update file from base sources: the rows of every
// marker, read back by the same lists (maj/rangees.h), so that a base is
// brought to newer sources by an update: import, write, apply.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "store/sources.h"

namespace vdx::maj {

// Writes "|DEBUT|" with `date`, the rows of the sources' tables in the
// order of the markers, then "|FIN|", CR LF after each line. Returns the
// tables whose records no row carries. Throws ErreurSource for a value the
// format can't carry (a "@", a leading "|" or line end).
std::vector<std::string> EcritMaj(const std::vector<Source>& sources, std::ostream& sortie, std::string_view date);

// A float as a field: the shortest decimals that read back to it.
std::string TexteReel(float valeur);

}  // namespace vdx::maj
