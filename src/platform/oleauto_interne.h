// What the platform's own automation functions know of the arrays they
// made, for the checks of the host layer.
#pragma once

#include <cstdint>

#include "vdx32/oleauto.h"

namespace vdx::oleauto {

// The bytes of the data block the platform allocated for `tableau`, or -1
// for a descriptor it did not make or whose memory the host owns.
int64_t OctetsDuBloc(const SAFEARRAY* tableau);

}  // namespace vdx::oleauto
