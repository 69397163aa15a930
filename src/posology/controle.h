// A posology as prescribed checked against the limits the base holds for
// the product and the patient's terrain: the daily ceiling, the
// recommended daily range, the recommended and maximum durations. And the
// creatinine clearance of a patient.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "posology/catalogue.h"
#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// The limits of a product for a terrain (VDXPMAX): eleven for its first
// unit, the same eleven for its second, three durations in days.
struct BornesPosologie {
    float RecoMin = 0, RecoMax = 0, RecoMinKg = 0, RecoMaxKg = 0, BaseKg = 0, RecoMinM2 = 0, RecoMaxM2 = 0, BaseM2 = 0,
          MaxJour = 0, MaxKg = 0, MaxM2 = 0;
    float RecoMinUnite2 = 0, RecoMaxUnite2 = 0, RecoMinKgUnite2 = 0, RecoMaxKgUnite2 = 0, BaseKgUnite2 = 0,
          RecoMinM2Unite2 = 0, RecoMaxM2Unite2 = 0, BaseM2Unite2 = 0, MaxJourUnite2 = 0, MaxKgUnite2 = 0,
          MaxM2Unite2 = 0;
    int32_t DureeRecoMin = 0, DureeRecoMax = 0, DureeMaximum = 0;
};
VDX_LIGNE(BornesPosologie, RecoMin, RecoMax, RecoMinKg, RecoMaxKg, BaseKg, RecoMinM2, RecoMaxM2, BaseM2, MaxJour, MaxKg,
          MaxM2, RecoMinUnite2, RecoMaxUnite2, RecoMinKgUnite2, RecoMaxKgUnite2, BaseKgUnite2, RecoMinM2Unite2,
          RecoMaxM2Unite2, BaseM2Unite2, MaxJourUnite2, MaxKgUnite2, MaxM2Unite2, DureeRecoMin, DureeRecoMax,
          DureeMaximum);

// The key of the limits: the seven digits and the terrain's letter.
inline constexpr size_t LongueurCleBornes = 8;
// The limits of a key; none for one the table lacks. Throws Echec(-500).
std::optional<BornesPosologie> BornesDe(std::string_view cle);

// The bits of the result of a check, beside 1: something was checked.
namespace alertes_posologie {
inline constexpr int32_t Verifiee = 1;
inline constexpr int32_t AuDessusMaximum = 4;
inline constexpr int32_t AuDessusRecommandee = 8;
inline constexpr int32_t AuDessousRecommandee = 16;
inline constexpr int32_t DureeAuDessusMaximum = 32;
inline constexpr int32_t DureeAuDessusRecommandee = 64;
inline constexpr int32_t DureeAuDessousRecommandee = 128;
}  // namespace alertes_posologie

struct ControleDePosologie {
    int32_t Masque = 0;  // 0: nothing could be checked
    std::string AlerteDuree;
    std::string AlerteDose;
};
// Checks a posology as given (its doses, its TypeRef) for a patient of
// `poids` kilograms and `taille` centimetres. A posology of models, a
// product without its VDXIDPRO record or without limits under the first
// letter of the posology's Libelle nor under "T" give 0. Throws
// Echec(-500).
ControleDePosologie ControlePosologie(const Contexte& contexte, const PosologieHote& donnee, int32_t poids,
                                      int32_t taille);

// Cockcroft and Gault: creatinine in µmol/l (kind 1) or mg/l (kind 2);
// rounded, or -1 for another kind, a creatinine of 0 or below, or an age
// above 140.
int32_t CalculClairance(float creatinine, int32_t poids, int32_t age, char sexe, int32_t genre);

}  // namespace vdx
