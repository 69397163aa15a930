#include "maj/etat.h"

namespace vdx::maj {

EtatMaj& etatMaj() {
    static EtatMaj etat;
    return etat;
}

void ChoisitTypeMaj(int32_t type) {
    EtatMaj& e = etatMaj();
    if (type > DrapeauTypeMaj) {
        type -= DrapeauTypeMaj;
        e.TypeAuDelaDe256 = true;
    }
    e.TypeMaj = type;
}

}  // namespace vdx::maj
