// The list of the long-term illnesses.
#pragma once

#include <cstdint>

#include "session/lignes.h"

namespace vdx {

struct LigneALD {
    int32_t Code = 0;
    std::string Libelle;
};
VDX_LIGNE(LigneALD, Code, Libelle);

// Each, in code order; none gives Echec(-90).
std::vector<LigneALD> ListeALD();

}  // namespace vdx
