#include "maj/marqueurs.h"

namespace vdx::maj {

std::optional<int32_t> IndexDuMarqueur(std::string_view jeton) {
    for (size_t i = 0; i < Marqueurs.size(); ++i)
        if (Marqueurs[i].texte == jeton) return static_cast<int32_t>(i);
    return std::nullopt;
}

}  // namespace vdx::maj
