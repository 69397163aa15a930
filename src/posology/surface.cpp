#include "posology/surface.h"

#include <cmath>

namespace vdx {

float SurfaceCorporelle(double poids, double taille) {
    if (!(poids > 0 && taille > 0)) return 0;
    return static_cast<float>(std::pow(poids, 0.425) * std::pow(taille, 0.725) * 71.84 / 10000);
}

}  // namespace vdx
