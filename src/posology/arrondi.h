// Doses computed from a patient's weight or surface, rounded to what can be
// taken.
#pragma once

#include <cstdint>

#include "posology/bascule.h"

namespace vdx {

// 1 from load. Cleared only for the length of PosoDec2_Vdx, whose doses stay
// as computed. Process-wide and unprotected, like the session.
inline int32_t ArrondiActif = 1;

// Clears ArrondiActif for its life and sets it to 1 again behind it.
using SansArrondi = Bascule<ArrondiActif, 0, 1>;

// Rounds `valeur` by the product's rounding code: 1, 2, 4, 5, 10, 20 to
// that fraction of a unit (2 to halves, 4 to quarters), 100 to significant
// figures by the size of the value. A half goes up. A non-zero dose never
// rounds down to nothing: it becomes the smallest step. Any other code, or
// ArrondiActif at 0, leaves the value as it is.
float ArrondiDose(float valeur, int32_t code);

}  // namespace vdx
