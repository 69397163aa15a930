// What the public data give the redundancy check and the heat-wave
// advisory: the thesaurus classes at risk when doubled, filed as classes
// "T001"... of the products that hold a member and listed in VDXCLAR; and
// the members of the classes of each heat-wave category, under its letter.
#include <algorithm>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_codes.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

std::string CodeClasseARisque(size_t rang) { return "T" + Chiffres(static_cast<int>(rang) + 1, 3); }

// A class that is no equivalence class ends its label key with "*".
constexpr char MarqueNonEquivalence[] = "*";

}  // namespace

void EcritVigilance(const Bdpm& bdpm, const Thesaurus& thesaurus, const Substances& substances,
                    const Selection& selection, Sortie& sortie) {
    std::map<std::string, std::set<int>> substancesDe;  // of each selected speciality, by base number
    for (const Composant& c : bdpm.composants)
        if (selection.specialites.count(c.cis)) substancesDe[c.cis].insert(substances.numeros.at(c.code));
    const auto& classes = ClassesARisque();
    for (size_t rang = 0; rang < classes.size(); ++rang) {
        const std::string code = CodeClasseARisque(rang);
        const std::set<int> membres = MembresClasse(thesaurus, substances, selection, classes[rang]);
        sortie.Ajoute("VDXCLA",
                      {{"CodeClasse", code}, {"Libelle", classes[rang]}, {"LibelleCle", classes[rang] + MarqueNonEquivalence}});
        sortie.Ajoute("VDXCLAR", {{"CodeClasse", code}});
        for (const Presentation& p : bdpm.presentations) {
            const auto s = substancesDe.find(p.cis);
            if (s == substancesDe.end()) continue;
            if (std::ranges::any_of(s->second, [&](int n) { return membres.count(n) > 0; }))
                sortie.Ajoute("VDXCLAP", {{"CodeClasse", code}, {"CodeCIP", p.cip7}});
        }
    }
    for (const CategorieCanicule& c : CategoriesCanicule()) {
        sortie.Ajoute("VDXYCAAR", {{"LettreCanicule", c.lettre}, {"Libelle", c.libelle}});
        std::set<int> membres;
        for (const std::string& classe : c.classes) membres.merge(MembresClasse(thesaurus, substances, selection, classe));
        // A salt whose base is filed too reaches it as its synonym: filed
        // itself, the advisory would name its product's component twice.
        for (int m : membres) {
            const auto base = substances.parents.find(m);
            if (base != substances.parents.end() && membres.count(base->second)) continue;
            sortie.Ajoute("VDXYCACO", {{"CodeSubstance", std::to_string(m)}, {"LettreCanicule", c.lettre}});
        }
    }
}

}  // namespace vdx::import
