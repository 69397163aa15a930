// A coded posology told as a prescription prints it: «1 à 2 comprimés 3 fois
// par jour pendant 5 jours.», the same in the product's other unit, and the
// packages the treatment takes.
#pragma once

#include <cstdint>
#include <string>

#include "posology/bascule.h"
#include "posology/catalogue.h"
#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// Process-wide, like the session: set, the sentence holds "##1" behind the
// dose and "##2" in front of the duration. 0 from load; set only for the
// length of PosoDec3_Vdx.
inline int32_t MarqueursActifs = 0;
using AvecMarqueurs = Bascule<MarqueursActifs, 1, 0>;

struct ResultatPosologie {
    float Dose1Min = 0;
    float Dose1Max = 0;
    float Maximum1 = 0;
    float Dose2Min = 0;
    float Dose2Max = 0;
    float Maximum2 = 0;
    float Utilisation1 = 0;
    float Utilisation2 = 0;
    float Quantite1 = 0;
    float Quantite2 = 0;
    int32_t Unite1 = 0;
    int32_t Unite2 = 0;
    std::string Phrase1;
    std::string Phrase2;
    std::string TexteLibre;
    std::string Boites1;
    std::string Boites2;
};
VDX_LIGNE(ResultatPosologie, Dose1Min, Dose1Max, Maximum1, Dose2Min, Dose2Max, Maximum2, Utilisation1, Utilisation2,
          Quantite1, Quantite2, Unite1, Unite2, Phrase1, Phrase2, TexteLibre, Boites1, Boites2);

// The sentences and quantities of a posology for a patient of `poids`
// kilograms (0 unknown) and `taille` centimetres (0 unknown). The codes are
// first checked together: Echec -110 a moment without period over a
// duration shorter than a day, -111 a cycle over a duration shorter than a
// year, -112 a duration shorter than the period, -113 nothing to say (no
// unit label, or no dose, and no model); -500.
ResultatPosologie DecodePosologie(const Contexte& contexte, PosologieHote posologie, float poids, int32_t taille);

}  // namespace vdx
