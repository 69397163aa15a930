// The products a prescriber may put in the place of one: the other members
// of its therapeutic equivalence classes, by how close they are, their
// price and laboratory; and the pieces the cost optimisation shares: the
// walk of a class, the equality of dosages, the compatibility of forms.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "session/contexte.h"
#include "products/identification.h"
#include "session/lignes.h"
#include "store/catalogue.h"
#include "store/fiche.h"

namespace vdx {

// Two dosage texts are the same: equal bytes, or both in one of the groups
// of equal amounts told in two units ("1 g" and "1000 mg"), whole texts.
bool DosagesEgaux(std::string_view a, std::string_view b);
// Two form codes of one family: both liquid ("A..."), both of the group of
// "B", "J" and "D", or the same first two characters.
bool FormesCompatibles(std::string_view a, std::string_view b);

// The products of a class (VDXCLAP by class), in the order of their codes,
// each handed to `candidat` until it answers false. The class's code is
// compared on its seven characters. Throws Echec(-500).
void ParcourtClasse(std::string_view classe, const std::function<bool(std::string_view cip)>& candidat);

// The candidates of one class of a product `cip`: each other product of
// the class that VDXIDPRO holds, with its record, handed to `garde`, which
// answers whether it kept a row; the walk ends once `limite` rows are kept
// (-1 no limit). Throws Echec(-500).
void ParcourtCandidats(std::string_view classe, std::string_view cip, int32_t limite,
                      const std::function<bool(std::string_view autre, const Fiche& identification)>& garde);

// The equivalence classes of a product (VDXCLAP by product, VDXCLA open),
// with their labels ("Libellé inconnu" for a class VDXCLA lacks); a
// class whose second text ends in "*" is none. Throws Echec(-90) when no
// key lies at or behind the code, -500.
struct ClasseEquivalence {
    std::string Code;
    std::string Libelle;
    bool ParNom() const;  // a class "Z...": products of the same name only
};
std::vector<ClasseEquivalence> ClassesEquivalence(std::string_view cip);

// A price as VDXPRO holds it, seven digits; any other text is no price.
inline constexpr char PrixNul[] = "0000000";
std::string PrixLu(std::string_view texte);

// What VDXPRO tells of a candidate.
struct EconomieCandidat {
    std::string Prix = PrixNul;
    float TauxRemboursement = 0;
    std::string Laboratoire;
    bool Hospitalier = false;
    bool Generique = false;
    bool Supprime = false;  // the byte at offset 224 is not 0
};

// The tables a walk over the candidates of a product's classes reads.
std::span<const Table* const> TablesCandidats();

// The words, labels and economics the candidates of one call share, each
// read once from tables the caller keeps open (TablesCandidats).
class LibellesCandidats : public MotsIdentification {
public:
    const std::string& Laboratoire(std::string_view code);
    float Taux(std::string_view code);
    // None for a product VDXPRO lacks.
    std::optional<EconomieCandidat> Economie(std::string_view cip);

private:
    std::unordered_map<std::string, std::string> laboratoires_;
    std::unordered_map<std::string, float> taux_;
};

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
