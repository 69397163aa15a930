// The body surface, for doses given per square metre.
#pragma once

namespace vdx {

// Square metres by the formula of DuBois and DuBois, from the weight in
// kilograms and the height in centimetres. A weight or height of 0, which
// means unknown, gives 0; so does a negative one.
float SurfaceCorporelle(double poids, double taille);

}  // namespace vdx
