// The parts of a product's monograph made from the product tables rather
// than stored as texts: its form and package, its composition, the paths of
// its classes, the interoperable identity sheet, the technical and
// regulatory data, the affections of its long-term illness lists, the
// pregnancy advice. Each is an HTML fragment in code page 1252, before the
// character table; an empty text when the product gives it nothing. A
// product missing from a table only loses what that table tells. Each
// throws Echec(-500) when the store fails.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"

namespace vdx {

// "Forme", "Dosage", "Contenance": the form's label, the dosage, and what
// the package holds in the product's first unit of take " ou " in its
// second (the package as its presentation tells it when neither measures
// it). A row without value is left out; none at all gives no chapter.
std::string ChapitreFormePresentation(const std::string& cip);

// "Exprimé par : " and the basis, the active components with their
// quantities, then the excipients, one with a known effect marked.
std::string ChapitreComposition(const std::string& cip);

// The excipients with known effect of some products, each once, in the
// order met.
std::vector<std::string> ExcipientsNotoires(const std::vector<std::string>& produits);

// The path of each class of the product, a level a row: every code of the
// class table that begins the class's code, from the shortest, then the
// class itself.
enum class Classement { Therapeutique, ATC };
std::string ChapitreClasses(const std::string& cip, Classement classement);

// The rows of the identity sheet: "Libellé spécialité*", "Code
// Identifiant Spécialité*", "Libellé présentation*", "Code CIP* ", "Code
// UCD" (names as entities), with the product's values, empty where it has
// none.
struct RangeeIdentite {
    const char* nom;
    std::string valeur;
};
inline constexpr size_t RangCIS = 1, RangUCD = 4;
std::vector<RangeeIdentite> IdentiteInteroperable(const std::string& cip);
// The sheet as a chapter of the monograph: empty unless the product has
// both a UCD code and a speciality.
std::string FicheInteroperable(const std::string& cip);

// The rows of "Données technico-réglementaires", in their order.
std::string DonneesTechnicoReglementaires(const Contexte& contexte, const std::string& cip);

// The prescription of a product of a long-term illness on the bizone form:
// the affections its lists link it to, and the source line. Empty for a
// product without one.
std::string DonneesParticulieres(const std::string& cip);

// Before the chapter on pregnancy: the date line and the coloured box of the
// level of the pregnancy table, with its advice. Empty when the table has no
// row for the product.
std::string SourceAFSSAPS(const std::string& cip);

// The page's amounts: integer cents with two decimals and a decimal comma.
std::string Montant(int64_t centimes);
// The price of one UCD in cents, to the nearest cent, halves up.
int64_t PrixParUCD(int64_t prixCentimes, int32_t nombreUCD);
// A date kept year first ("2017/03/15") turned round with its own
// separators ("15/03/2017"); a text of another shape as it stands.
std::string DateJourMoisAn(std::string_view date);
// A date of eight digits year first ("20170315") as "15/03/2017"; a text of
// another length as it stands.
std::string DateChiffresJourMoisAn(std::string_view date);
// The kosher rating as the monograph writes it: values 1 to 10 with
// " (source MEDIEL)", any other "Aucune information MEDIEL disponible ".
std::string TexteMedielMonographie(int32_t valeur);

}  // namespace vdx
