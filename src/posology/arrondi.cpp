#include "posology/arrondi.h"

#include <cmath>

namespace vdx {

namespace {

// Truncate, then one more from a half.
double Arrondi(double x) {
    const double entier = std::trunc(x);
    return x - entier >= 0.5 ? entier + 1 : entier;
}

// Code 100: the factor by the size of the value. Below 1 it keeps five
// decimals, from 1 on about three figures.
double FacteurSignificatif(double valeur) {
    static constexpr struct {
        double borne, facteur;
    } tranches[] = {{1, 100000}, {10, 100},     {100, 10},     {1000, 1},
                    {10000, 0.1}, {100000, 0.01}, {1000000, 0.001}};
    for (const auto& t : tranches)
        if (valeur < t.borne) return t.facteur;
    return 0.0001;
}

}  // namespace

float ArrondiDose(float valeur, int32_t code) {
    if (ArrondiActif == 0 || valeur == 0) return valeur;
    double facteur;
    switch (code) {
        case 1: case 2: case 4: case 5: case 10: case 20:
            facteur = code;
            break;
        case 100:
            facteur = FacteurSignificatif(valeur);
            break;
        default:
            return valeur;
    }
    double r = Arrondi(valeur * facteur) / facteur;
    if (r == 0) r = 1 / facteur;
    return static_cast<float>(r);
}

}  // namespace vdx
