// The small vocabularies from which a host builds a posology of its own:
// moments, periods and durations, ways of taking, units of take, natures,
// routes and profiles, each keyed by an integer code; and the labels of
// the terrains, which no table holds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/lignes.h"
#include "store/catalogue.h"
#include "store/champ.h"

namespace vdx {

// The period of a cycle: no table holds it.
inline constexpr int32_t CodeCycle = -1;

struct MotPosologie {
    int32_t Code = 0;
    std::string Libelle;
};
VDX_LIGNE(MotPosologie, Code, Libelle);

// A vocabulary: its table and the field of the label given.
struct VocabulairePosologie {
    const Table& (*table)();
    ChampTexte libelle;
};
namespace vocabulaires_posologie {
VocabulairePosologie Moments();         // VDXPMOM
VocabulairePosologie Durees();          // VDXPDUR
VocabulairePosologie Specifications();  // VDXPSPE
VocabulairePosologie Natures();         // VDXPNAT
VocabulairePosologie Voies();           // VDXPVOI
VocabulairePosologie Profils();         // VDXPPRO
VocabulairePosologie UnitesPrise();     // VDXPUPRI, the singular
VocabulairePosologie UnitesPrisePluriel();
}  // namespace vocabulaires_posologie

// Every record of a vocabulary (with the cycle first when `avecCycle`),
// sorted by label in byte order by an exchange sort. Throws Echec: -100 for
// a table without a record, -500.
std::vector<MotPosologie> MotsPosologie(const VocabulairePosologie& vocabulaire, bool avecCycle);
// The label of a code; none for an unknown one. Throws Echec(-500).
std::optional<std::string> LibellePosologie(const VocabulairePosologie& vocabulaire, int32_t code);

// A duration code as the keys of VDXPDURC write it, on three characters:
// "000", "-01", one or two digits padded with zeros in front, the first
// three digits of a longer code.
std::string CodeDureeSurTrois(int32_t code);

// The label of a unit of take, singular or plural. Throws Echec: -10 for a
// code below 1, -90 an unknown one, -500.
std::string LibelleUnitePrise(int32_t code, bool pluriel);

// A moment of the take and the multiplier of its quantity, 0 for none.
struct MomentPrise {
    std::string Libelle;
    float Multiplicateur = 0;
};
// None for an unknown code. Throws Echec(-500).
std::optional<MomentPrise> MomentDePrise(int32_t code);

// The label of a terrain's one or two letters; empty for any other.
std::string_view LibelleTerrain(std::string_view terrain);

}  // namespace vdx
