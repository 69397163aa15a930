// Prescription lines by common name: one set of active substances, each
// with its dosage, in one form and one group of routes ("PARACÉTAMOL 1 g,
// comprimé"). Their codes, their labels, the presentations of each.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vdx/import_bdpm.h"

namespace vdx::import {

// The first digit of a line's code: no presentation code begins with it,
// and the walks of products pass such codes over.
inline constexpr char ChiffreLigneDC = '8';

// A line as a speciality gives it: its canonical key (the routes, the form
// and each substance with its dosage, folded and sorted), which decides
// its code, and its label in the French common-name wording.
struct LigneDC {
    std::string cle;
    std::string libelle;
};

// Why a speciality has no line.
enum class SansLigne { Homeopathie, SansDosage, PlusieursElements, SansSubstance };

// The line of a speciality from its active components (as ComposantsExprimes
// gives them: a salt shown as its therapeutic fraction), or why none.
struct LigneOuMotif {
    std::optional<LigneDC> ligne;
    SansLigne motif = SansLigne::SansSubstance;
};
LigneOuMotif LigneDeSpecialite(const Specialite& specialite, const std::vector<const Composant*>& exprimes);

// The codes of the lines by key: ChiffreLigneDC and six digits, from the
// key's FNV-1a hash modulo a million, so that a line keeps its code from
// one extract to the next. Keys whose hashes meet take the codes that
// follow in the order (hash, key): the first keeps its code, the next the
// next free one.
std::map<std::string, std::string> CodesLignesDC(const std::set<std::string>& cles);

// A dosage in the wording of a line: "1000 mg" and "1 g" give "1 g", "0,5 g"
// gives "500 mg", "125,00 mg" gives "125 mg"; none without a number and a
// unit.
std::optional<std::string> DosageDeLigne(std::string_view dosage);

}  // namespace vdx::import
