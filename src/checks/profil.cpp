// The short form of the contra-indication check: products against the
// term that stands for a pathology, one row per product label and term.
#include <algorithm>
#include <utility>

#include "checks/contreindications.h"
#include "checks/tri.h"
#include "products/produits.h"

namespace vdx {

ContreIndicationsCourtes ContreIndicationsDesTermes(const Contexte& contexte, const std::vector<std::string>& produits,
                                                    const std::vector<std::string>& termes, int32_t age) {
    const DansContexte dans(contexte);
    // One entry, deliberately: the term of the last code stands.
    ProfilPatient patient;
    for (const std::string& code : termes) {
        patient.CodesPatient.assign(1, code.empty() ? code : TermeEquivalent(code).value_or(code));
        patient.TypesPatient.assign(1, PathologieTerme);
        patient.ValeursPatient.assign(1, 1);
    }
    patient.Age = age;
    const std::vector<AlerteCI> alertes = ContreIndicationsPatient(contexte, std::move(patient), produits, RegleProfil2);

    ContreIndicationsCourtes courtes;
    courtes.alertes = static_cast<int32_t>(alertes.size());
    std::vector<FicheCI>& fiches = courtes.fiches;
    for (const AlerteCI& a : alertes) {
        std::string libelle = LibelleProduitInterne(a.CodeProduit).value_or(a.CodeProduit);
        const bool present = std::ranges::any_of(fiches, [&](const FicheCI& f) {
            return f.LibelleTerme == a.LibelleTerme && f.LibelleProduit == libelle;
        });
        if (!present) fiches.push_back({a.NiveauAlerte, std::move(libelle), a.LibelleTerme});
    }
    TriEchange(fiches, [](const FicheCI& p, const FicheCI& q) {
        return p.LibelleProduit > q.LibelleProduit ||
               (p.LibelleProduit == q.LibelleProduit && p.NiveauAlerte < q.NiveauAlerte);
    });
    return courtes;
}

}  // namespace vdx
