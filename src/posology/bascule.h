// A process-wide switch of the posology set for the life of a scope, then
// put back to what it is outside any: the rounding of doses, the markers of
// the sentences.
#pragma once

#include <cstdint>

namespace vdx {

template <int32_t& Interrupteur, int32_t Pendant, int32_t Ensuite>
class Bascule {
public:
    Bascule() { Interrupteur = Pendant; }
    ~Bascule() { Interrupteur = Ensuite; }
    Bascule(const Bascule&) = delete;
    Bascule& operator=(const Bascule&) = delete;
};

}  // namespace vdx
