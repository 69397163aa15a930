// What the public data give the allergy check: the names of the substances
// (VDXVEXC) and the thesaurus's chemical families as concepts (VDXWCCCO).
// Cross-allergies, excipients and allergy terms are in neither.
#include "store/layouts/composition.h"
#include "tools/vdx/import_base.h"
#include "tools/vdx/import_codes.h"

namespace vdx::import {
namespace {

// A name cut to the room VDXVEXC has for it.
std::string NomCourt(const std::string& nom) { return nom.substr(0, VDXVEXC::Libelle.capacite()); }

void AjouteNom(Sortie& sortie, int numero, const std::string& nom) {
    sortie.Ajoute("VDXVEXC", {{"CodeSubstance", std::to_string(numero)}, {"Libelle", NomCourt(nom)}, {"LibelleEEN", ""}});
}

}  // namespace

std::set<int> MembresClasse(const Thesaurus& thesaurus, const Substances& substances, const Selection& selection,
                            const std::string& classe) {
    std::set<int> membres;
    for (const Appartenance& a : thesaurus.appartenances)
        if (a.classe == classe)
            for (int m : substances.index.Cherche(a.substance))
                if (selection.substances.count(m)) membres.insert(m);
    return membres;
}

void EcritAllergies(const Thesaurus& thesaurus, const Substances& substances, const Selection& selection,
                    Sortie& sortie) {
    for (int numero : selection.substances) AjouteNom(sortie, numero, substances.noms.at(numero));
    int code = DerniereSubstance;
    for (const std::string& famille : FamillesChimiques()) {
        ++code;
        AjouteNom(sortie, code, famille);
        for (int m : MembresClasse(thesaurus, substances, selection, famille))
            sortie.Ajoute("VDXWCCCO", {{"CodeConcept", std::to_string(code)}, {"CodeComposant", std::to_string(m)}});
    }
}

}  // namespace vdx::import
