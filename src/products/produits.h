// Product lookup and labels: the label of a product, its deletion, its
// laboratory, its replacement, and the list of all products by rank.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <span>

#include "session/contexte.h"
#include "session/lignes.h"
#include "store/catalogue.h"


namespace vdx {

// The label of a product as the other subsystems take it (the inner form
// of LibelleProduit_Vdx): `Libelle` of VDXPRO; a prescription line by
// common name gives its own label; no narcotic wording. nullopt for an
// unknown code. Throws Echec(-500).
std::optional<std::string> LibelleProduitInterne(std::string_view code);

// The label of a speciality (CIS code, 8 digits) in VDXYCIS; none for a
// code it lacks. Throws Echec(-500).
inline constexpr size_t LongueurCIS = 8;
std::optional<std::string> LibelleCIS(std::string_view cis);

// The facts below are those of a CodeCIP already checked; each throws
// Echec(-90) for a product VDXPRO lacks, Echec(-500).

// LibelleProduit_Vdx: Echec(-10) for a line by common name (looked at only
// then); a narcotic's label has its numbers spelled out.
std::string LibelleProduit(const std::string& cip);
// The title of a prescription line by common name: its label in VDXPRO
// (-90 when it has none).
std::string LibelleMedDC2(const std::string& cip);
// An accessory: a product of CodeRubrique 60; a code VDXPRO lacks is none.
// A veterinary product is of CodeRubrique 40.
inline constexpr int32_t RubriqueAccessoire = 60, RubriqueVeterinaire = 40;
bool EstAccessoire(const std::string& cip);
// ProduitSupprime_Vdx: the date "JJ/MM/AAAA", or empty when not deleted.
std::string DateSuppression(const std::string& cip);
// Laboratoire_Vdx: the laboratory's code and its label.
struct CodeEtLibelle {
    std::string code;
    std::string libelle;
};
CodeEtLibelle LaboratoireDe(const std::string& cip);
// CIP_Remplacant_Vdx: the code that replaces it, or empty.
std::string CIPRemplacant(const std::string& cip);

// Economique_Vdx: what a product costs and how it is paid for, each code's
// table read with its fallback ("Laboratoire inconnu", "Acte inconnu" and
// "?????", zero rates, an empty list label). Valeur85 is the price when it
// reads "0000000". The tables it reads, which the caller may hold first.
struct FicheEconomique {
    float TauxTVA = 0;
    float TauxRemboursement = 0;
    std::string Laboratoire;
    std::string Prix;
    std::string Valeur50;
    std::string Valeur85;
    std::string LibelleTableau;
    std::string Valeur124;
    std::string Acte;
    std::string ActeTexte1;
    std::string ActeTexte2;
};
VDX_LIGNE(FicheEconomique, TauxTVA, TauxRemboursement, Laboratoire, Prix, Valeur50, Valeur85, LibelleTableau,
          Valeur124, Acte, ActeTexte1, ActeTexte2);
std::span<const Table* const> TablesEconomiques();
FicheEconomique EconomieDe(const std::string& cip);

// TotalProduit_Vdx and GetProduit_Vdx: the positions of all products in
// code order, kept for the base they were counted in; a rank out of them,
// or counted in another base, gives Echec(-10).
int32_t TotalProduit(const Contexte& contexte);
CodeEtLibelle ProduitAuRang(const Contexte& contexte, int32_t rang);

}  // namespace vdx
