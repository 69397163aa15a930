// The products a prescriber may put in the place of one: the other members
// of its therapeutic equivalence classes, by how close they are, their
// price and laboratory; and the pieces the cost optimisation shares: the
// walk of a class, the equality of dosages, the compatibility of forms,
// the text of a package.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "posology/quantite.h"
#include "session/lignes.h"
#include "store/fiche.h"

namespace vdx {

// Two dosage texts are the same: equal bytes, or both in one of the groups
// of equal amounts told in two units ("1 g" and "1000 mg"), whole texts.
bool DosagesEgaux(std::string_view a, std::string_view b);
// Two form codes of one family: both liquid ("A..."), both of the group of
// "B", "J" and "D", or the same first two characters.
bool FormesCompatibles(std::string_view a, std::string_view b);
// The package of a product as its VDXIDPRO record tells it: "16 comprimés",
// "1 flacon de 150 ml"; it begins with the number of units. With the words
// of its presentation and of its unit, or reading them (Echec(-500)).
std::string TexteContenance(const Fiche& identification, const Mot& presentation, const Mot& unite);
std::string TexteContenance(std::string_view identification);

// The products of a class (VDXCLAP by class), in the order of their codes,
// each handed to `candidat` until it answers false. The class's code is
// compared on its seven characters. Throws Echec(-500).
void ParcourtClasse(std::string_view classe, const std::function<bool(std::string_view cip)>& candidat);

// Niveau: 0 same dosage and form family, 1 same dosage another form, 2
// another dosage or, in a class "Z...", the same name.
struct LigneEquivalent {
    int32_t Niveau = 0;
    float TauxRemboursement = 0;
    std::string CodeClasse;
    std::string LibelleClasse;
    std::string CodeCIP;
    std::string LibelleProduit;
    std::string LibelleForme;
    std::string LibelleContenance;
    std::string Prix;
    std::string Conditionnement;
    std::string Laboratoire;
};
VDX_LIGNE(LigneEquivalent, Niveau, TauxRemboursement, CodeClasse, LibelleClasse, CodeCIP, LibelleProduit,
          LibelleForme, LibelleContenance, Prix, Conditionnement, Laboratoire);

// The equivalents of a seven-digit CodeCIP, at most `limite` kept a class
// (-1 no limit), sorted within each class by level, price ("0000000"
// last) and label. Throws Echec: 0 for a product VDXIDPRO or VDXPRO lacks,
// -90 when no class key lies at or behind the code, -500.
std::vector<LigneEquivalent> ProduitsEquivalents(const Contexte& contexte, const std::string& cip, int32_t limite);

// The indications VDXVAMME lists as equivalent to a code, with their labels
// (empty when unknown), in key order; the code itself is none of them.
struct LigneAMMEquivalent {
    std::string CodeEquivalent;
    std::string Libelle;
};
VDX_LIGNE(LigneAMMEquivalent, CodeEquivalent, Libelle);
std::vector<LigneAMMEquivalent> AMMEquivalents(std::string_view code);

}  // namespace vdx
