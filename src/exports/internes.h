// Functions with the arguments of an export that no host calls by name:
// the library's own exports and reports call them.
#pragma once

#include <cstdint>

#include "vdx32/oleauto.h"

namespace vdx {

// ControleGrossesseAFSSAPS: the pregnancy alerts of a product at a term,
// delivered by mode (0 or 1); -2; -10 and -13 for the code; -20 a negative
// term; -30 no array of the record's shape in array mode; -500.
int32_t ControleGrossesseAFSSAPS(const char* code, int32_t grossesse, SAFEARRAY** tableau);

}  // namespace vdx
