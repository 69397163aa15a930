// The state of the update that lasts between calls, process-wide: the
// coverage level and the result of the last run.
#pragma once

#include <cstdint>

namespace vdx::maj {

struct EtatMaj {
    int32_t TypeMaj = 4;         // the coverage level (see Marqueur::niveau)
    bool TypeAuDelaDe256 = false;  // raised by a value above 256, read by nothing
    int32_t ResultatMaj = 1;     // what the last run gave, kept when a run finds no file
};

EtatMaj& etatMaj();

// SetTypeMaj_Vdx: a value above 256 has 256 taken off and raises the flag.
inline constexpr int32_t DrapeauTypeMaj = 256;
void ChoisitTypeMaj(int32_t type);

}  // namespace vdx::maj
