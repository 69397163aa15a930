// The update files a directory holds that are newer than the base: titles
// "RE" and the date of issue as AAMMJJ, extension ".VDX" in any case.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::maj {

// At most this many files a run.
inline constexpr size_t FichiersMaxMaj = 45;
// The title of an update file, and the template its date fills.
inline constexpr size_t LongueurTitreMaj = 8;
inline constexpr char ModeleTitreMaj[] = "RE010101";

// The title of a base date "JJ/MM/AAAA": "RE" + AAMMJJ, a character that is
// no digit leaving the template's.
std::string TitreDeLaDate(std::string_view date);

struct ListeMaj {
    std::vector<std::string> fichiers;  // full paths, sorted by the whole path
    int64_t tailleTotale = 0;           // the sum of their sizes
};

// The files of `repertoire` (with or without a final separator) in the
// ascending order of their names compared without case: a title not of 8
// characters ends the listing, and so does the 46th kept; a file is kept
// when the six characters of its date compare above those of `titreBase`.
// A directory that does not exist holds none.
ListeMaj ListeFichiersMaj(const std::string& repertoire, std::string_view titreBase);

}  // namespace vdx::maj
