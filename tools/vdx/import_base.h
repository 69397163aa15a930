// The steps of an import and what they hand on to one another.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "products/substances.h"
#include "tools/vdx/import.h"
#include "tools/vdx/import_bdpm.h"
#include "tools/vdx/import_noms.h"
#include "tools/vdx/import_sortie.h"
#include "tools/vdx/import_thesaurus.h"

namespace vdx::import {

// The substances of the medicine database under the numbers of the base:
// those above the last substance number, DerniereSubstance (a higher number
// is a concept of the allergy thesaurus), take the free numbers below it,
// in order. The concepts the import makes are numbered from just above it.
// The key of VDXWPEFI above every substance: without it the last one has no
// parent at all.
inline constexpr int CleFinale = 99999;

struct Substances {
    std::map<int, int> numeros;         // published code to base number
    std::map<int, std::string> noms;    // by base number
    std::map<int, int> parents;         // a salt to its base, by base numbers
    IndexNoms index;                    // base numbers by name
    // `n` numbers below the last substance number that no substance has,
    // the lowest first.
    std::vector<int> Libres(size_t n) const;
};
Substances NumeroteSubstances(const std::vector<Composant>& composants);

// What the filter keeps: specialities (CIS) and base substances.
struct Selection {
    std::set<std::string> specialites;
    std::set<int> substances;
};
Selection Selectionne(const Bdpm& bdpm, const Substances& substances, const Filtre& filtre,
                      std::vector<std::string>& sansSubstance);

void EcritProduits(const Bdpm& bdpm, const Selection& selection, Sortie& sortie, Journal& journal);
// VDXIDPRO, the forms and the words of the packages; `specialites` by CIS.
void EcritIdentification(const Bdpm& bdpm, const Selection& selection,
                         const std::map<std::string, const Specialite*>& specialites, Sortie& sortie);
void EcritComposition(const Bdpm& bdpm, const Substances& substances, const Selection& selection, Sortie& sortie);
// The components of a speciality as the product shows them: an active
// substance linked to a therapeutic fraction is shown as that fraction.
std::vector<const Composant*> ComposantsExprimes(const std::vector<const Composant*>& composants);
// The prescription lines by common name of the selected specialities
// (VDXYDCI) and their presentations (VDXYDCIP); the specialities left
// without a line counted by reason in `rapport`.
void EcritLignesDC(const Bdpm& bdpm, const Selection& selection, Sortie& sortie, RapportImport& rapport);
// The names of the substances (VDXVEXC) and the thesaurus's chemical
// families as allergy concepts (VDXWCCCO, their names in VDXVEXC).
void EcritAllergies(const Thesaurus& thesaurus, const Substances& substances, const Selection& selection,
                    Sortie& sortie);
// The thesaurus classes at risk when doubled, as classes of the products
// listed in VDXCLAR, and the heat-wave categories of their members
// (VDXYCACO, VDXYCAAR).
void EcritVigilance(const Bdpm& bdpm, const Thesaurus& thesaurus, const Substances& substances,
                    const Selection& selection, Sortie& sortie);
// The vocabularies of the posology (VDXPDUR, VDXPDURC, VDXPMOM, VDXPSPE,
// VDXPNAT, VDXPPRO) and the routes of the database numbered (VDXPVOI).
void EcritPosologie(const Bdpm& bdpm, Sortie& sortie);
// The latest date of the presentations, AAAAMMJJ, as the date of the
// extract; empty when none has one.
std::string DateExtrait(const Bdpm& bdpm);
// The transparency sheets of the HAS opinions (VDXYLBIN, VDXYLIEN,
// VDXYLCIP) and the history of the presentations (VDXPHIMP).
void EcritDocuments(const Bdpm& bdpm, const Selection& selection, Sortie& sortie);
// The members of a thesaurus class among the selected substances.
std::set<int> MembresClasse(const Thesaurus& thesaurus, const Substances& substances, const Selection& selection,
                            const std::string& classe);
void EcritInteractions(const Thesaurus& thesaurus, const Substances& substances, const Selection& selection,
                       const std::string& edition, Sortie& sortie, Journal& journal, RapportImport& rapport);

}  // namespace vdx::import
