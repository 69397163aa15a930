// Code mapping and regulatory status: the 13-digit form of a code and back,
// the narcotic rule and the wording of narcotic labels, the status of a
// product, and the test of a prescription line by common name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/codeproduit.h"
#include "session/lignes.h"
#include "store/fiche.h"

namespace vdx {

// The code of restricted prescription that makes a product of list "A" a
// narcotic.
inline constexpr int32_t PrescriptionStupefiant = 18;

// The narcotic rule on a product's records: CodeTableau "B"; or "A" with
// PrescriptionStupefiant among the three codes of its VDXPROA record, when
// it has one.
bool EstStupefiant(std::string_view codeTableau, const Fiche* complement);
// The rule for the product of `fiche` (its VDXPRO record), VDXPROA being
// open: that table is read only for a product of list "A".
bool StupefiantOuvert(Fiche produit);
// IsStupefiant_Vdx: the rule for a CodeCIP (a code in neither table is
// none). Throws Echec(-500).
bool EstStupefiantCode(const std::string& cip);

// The numbers of a text spelled out, as narcotic prescriptions require: each
// run of digits and commas is followed by " (", its words, ") ".
std::string LibelleStupefiant(std::string_view texte);

// Statut_Vdx: the status of a CodeCIP, from its VDXPROA record (Echec(-90)
// without one) and the wording of its codes.
struct FicheStatut {
    int32_t Statut1 = 0, Statut2 = 0, Statut3 = 0, CodeStatut = 0;
    int32_t Prescription1 = 0, Prescription2 = 0, Prescription3 = 0;
    std::string LibelleStatut, LibellePrescription1, LibellePrescription2, LibellePrescription3;
    std::string DetailPrescription1, DetailPrescription2, DetailPrescription3, TexteStatut1, TexteStatut2;
};
VDX_LIGNE(FicheStatut, Statut1, Statut2, Statut3, CodeStatut, Prescription1, Prescription2, Prescription3,
          LibelleStatut, LibellePrescription1, LibellePrescription2, LibellePrescription3, DetailPrescription1,
          DetailPrescription2, DetailPrescription3, TexteStatut1, TexteStatut2);
FicheStatut StatutDe(const std::string& cip);
// The label of a CodeStatut; empty beyond the known ones.
std::string_view LibelleStatut(int32_t codeStatut);

// Whether a code is a prescription line by common name (VDXYDCI, opened
// and closed here).
bool EstMedDC(std::string_view code);
// The label of such a line, or nullopt.
std::optional<std::string> LibelleMedDC(std::string_view code);

}  // namespace vdx
