// The latest opinions of the transparency commission on a product's
// speciality: the medical service rendered (SMR) and its improvement
// (ASMR), each with its level, date and reason.
#pragma once

#include <string>

#include "session/lignes.h"

namespace vdx {

// Dates JJ/MM/AAAA; a kind without opinion has its three fields empty.
struct FicheSmrAsmr {
    std::string NiveauSMR, DateSMR, MotifSMR;
    std::string NiveauASMR, DateASMR, MotifASMR;
    bool Vide() const { return NiveauSMR.empty() && DateSMR.empty() && NiveauASMR.empty() && DateASMR.empty(); }
};
VDX_LIGNE(FicheSmrAsmr, NiveauSMR, DateSMR, MotifSMR, NiveauASMR, DateASMR, MotifASMR);

// The opinions of a seven-digit CodeCIP's speciality (VDXYCSCP, then the
// last key of each kind in VDXYTRF). Throws Echec: -90 a product without a
// speciality, -500.
FicheSmrAsmr SmrAsmrDe(const std::string& cip);

}  // namespace vdx
