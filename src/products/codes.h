// Code mapping and regulatory status: the 13-digit form of a code and back,
// the narcotic rule and the wording of narcotic labels, the status of a
// product, and the test of a prescription line by common name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/codeproduit.h"
#include "store/fiche.h"
#include "vdx32/oleauto.h"

namespace vdx {

// The other form of a code through VDXCIP13, into a host string (emptied
// first in mode 0): 1; 0 when the next key belongs to another code, the
// string empty; -10 no code; -13 a code not of its form's length; -90 no key
// at or above the code; -500.
int32_t CorrespondanceExport(SensCIP sens, const char* code, BSTR* sortie);

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
// IsStupefiant_Vdx: 1 or 0 (a code in neither table gives 0); -10, -13, -500.
int32_t IsStupefiant(const char* code);

// The numbers of a text spelled out, as narcotic prescriptions require: each
// run of digits and commas is followed by " (", its words, ") ".
std::string LibelleStupefiant(std::string_view texte);
// LibelleStupefiant_Vdx: into *Sortie as 8-bit bytes in every mode, 1.
int32_t LibelleStupefiantExport(const char* texte, BSTR* sortie);

// Statut_Vdx. The host record: seven integers (Statut1, Statut2, Statut3,
// CodeStatut, Prescription1 to 3), then nine strings (LibelleStatut,
// LibellePrescription1 to 3, DetailPrescription1 to 3, TexteStatut1 and 2).
inline constexpr uint32_t EntiersStatut = 7;
inline constexpr uint32_t ChainesStatut = 9;
int32_t Statut(const char* code, void* fiche);
// The label of a CodeStatut; empty beyond the known ones.
std::string_view LibelleStatut(int32_t codeStatut);

// Whether a code is a prescription line by common name (VDXYDCI, opened
// and closed here).
bool EstMedDC(std::string_view code);
// IsMedDC_Vdx: 1 or 0; -10, -13, -500.
int32_t IsMedDC(const char* code);
// The label of such a line, or nullopt.
std::optional<std::string> LibelleMedDC(std::string_view code);

}  // namespace vdx
