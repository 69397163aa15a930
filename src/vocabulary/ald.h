// The list of the long-term illnesses.
#pragma once

#include <cstdint>

#include "vdx32/oleauto.h"

namespace vdx {

int32_t ListeALD(SAFEARRAY** tableau);

}  // namespace vdx
