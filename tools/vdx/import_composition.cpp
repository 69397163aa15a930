// Substances and the composition of the products: VDXVPA, VDXVCOMP,
// VDXVCOMG, VDXVPAE, VDXVPAU, VDXVPAP, and the links of a salt to its base
// (VDXWSYNC, VDXWPEFI).
#include <algorithm>
#include <optional>
#include <tuple>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Codes of VDXVCOMG are read from one byte: the most frequent quantity bases
// get them, the others none.
constexpr int DernierExprime = 255;

struct Dosage {
    double quantite = 0;
    std::string unite;
};

// "1,00 mg" gives 1 and "mg"; none when no unit follows the number.
std::optional<Dosage> LitDosage(std::string_view texte) {
    size_t fin = 0;
    while (fin < texte.size() && (std::isdigit(static_cast<unsigned char>(texte[fin])) || texte[fin] == ',' ||
                                  texte[fin] == '.' || texte[fin] == ' '))
        ++fin;
    const auto quantite = Nombre(texte.substr(0, fin));
    const std::string unite = Nettoie(texte.substr(fin));
    if (!quantite || unite.empty() || unite.find_first_of("0123456789") != std::string::npos) return std::nullopt;
    return Dosage{*quantite, unite};
}

// The components of each speciality in an order that the order of the
// file's lines doesn't change: by element and link, an active substance
// before the fraction it is expressed as.
std::map<std::string, std::vector<const Composant*>> ParSpecialite(const std::vector<Composant>& composants) {
    std::map<std::string, std::vector<const Composant*>> par;
    for (const Composant& c : composants) par[c.cis].push_back(&c);
    const auto rang = [](const Composant* c) {
        return std::tuple(c->element, c->lien.size(), c->lien, c->nature != "SA", c->code, c->nom, c->dosage, c->reference);
    };
    for (auto& [cis, liste] : par) std::ranges::sort(liste, [&](const Composant* a, const Composant* b) { return rang(a) < rang(b); });
    return par;
}

// Codes for the texts of a column, in the order of the texts.
std::map<std::string, int> Numerote(const std::set<std::string>& textes) {
    std::map<std::string, int> codes;
    for (const std::string& t : textes) codes.emplace(t, static_cast<int>(codes.size()) + 1);
    return codes;
}

std::map<std::string, int> CodesExprimes(const std::vector<Composant>& composants) {
    std::map<std::string, int> frequences;
    for (const Composant& c : composants)
        if (!c.reference.empty()) ++frequences[c.reference];
    std::vector<std::pair<int, std::string>> ordre;
    for (const auto& [texte, n] : frequences) ordre.emplace_back(-n, texte);
    std::sort(ordre.begin(), ordre.end());
    std::map<std::string, int> codes;
    for (const auto& [n, texte] : ordre) {
        if (static_cast<int>(codes.size()) == DernierExprime) break;
        codes.emplace(texte, static_cast<int>(codes.size()) + 1);
    }
    return codes;
}

std::string TexteComposition(const std::vector<const Composant*>& exprimes) {
    std::string texte;
    for (const Composant* c : exprimes)
        texte += (texte.empty() ? "" : ", ") + Nettoie(Capitale(c->nom) + " " + c->dosage);
    if (!exprimes.empty() && !exprimes.front()->reference.empty()) texte += " pour " + exprimes.front()->reference;
    return texte.empty() ? texte : texte + ".";
}

// The first number from `libre` on that `pris` doesn't hold.
template <class Pris>
int Libre(int libre, const Pris& pris) {
    while (pris.count(libre)) ++libre;
    if (libre > DerniereSubstance) throw ErreurImport("more substances than numbers below 30001");
    return libre;
}


// The name shown of a substance: its most frequent spelling, the first in
// byte order among as frequent ones, whatever the order of the lines.
std::string NomAffiche(const std::map<std::string, size_t>& orthographes) {
    const auto plusFrequente = std::ranges::max_element(
        orthographes, [](const auto& p, const auto& q) { return p.second < q.second || (p.second == q.second && p.first > q.first); });
    return plusFrequente == orthographes.end() ? std::string() : plusFrequente->first;
}

}  // namespace

std::vector<const Composant*> ComposantsExprimes(const std::vector<const Composant*>& composants) {
    std::vector<const Composant*> exprimes;
    for (const Composant* c : composants) {
        const auto fraction = std::find_if(composants.begin(), composants.end(), [c](const Composant* f) {
            return f->nature == "FT" && f->element == c->element && f->lien == c->lien && !c->lien.empty();
        });
        if (c->nature == "SA" && fraction != composants.end()) continue;
        exprimes.push_back(c);
    }
    return exprimes;
}

std::vector<int> Substances::Libres(size_t n) const {
    std::vector<int> libres;
    for (int libre = 0; libres.size() < n;) libres.push_back(libre = Libre(libre + 1, noms));
    return libres;
}

Substances NumeroteSubstances(const std::vector<Composant>& composants) {
    Substances s;
    std::map<int, std::map<std::string, size_t>> publies;  // spellings of each code, with their counts
    for (const Composant& c : composants)
        if (!c.nom.empty()) ++publies[c.code][c.nom];
    int libre = 1;
    for (const auto& [code, orthographes] : publies) {
        if (code <= DerniereSubstance) {
            s.numeros[code] = code;
            continue;
        }
        libre = Libre(libre, publies);
        s.numeros[code] = libre++;
    }
    for (const auto& [code, orthographes] : publies) {
        s.noms[s.numeros[code]] = NomAffiche(orthographes);
        for (const auto& [nom, n] : orthographes) s.index.Ajoute(s.numeros[code], nom);
    }
    // A salt's base: the fraction it is expressed as when that names its
    // molecule (not the iodine of a contrast medium), else the substance
    // named as the salt without its salt words.
    for (const auto& [cis, liste] : ParSpecialite(composants))
        for (const Composant* c : liste)
            for (const Composant* f : liste)
                if (c->nature == "SA" && f->nature == "FT" && f->element == c->element && f->lien == c->lien &&
                    !c->lien.empty() && f->code != c->code && EstSaBase(c->nom, f->nom)) {
                    const int sel = s.numeros[c->code], base = s.numeros[f->code];
                    const auto p = s.parents.find(sel);
                    if (p == s.parents.end() || base < p->second) s.parents[sel] = base;
                }
    std::map<std::string, int> parNom;
    for (const auto& [numero, nom] : s.noms) parNom.emplace(Plie(nom), numero);
    for (const auto& [numero, nom] : s.noms) {
        if (s.parents.count(numero)) continue;
        const auto base = parNom.find(NomSansSel(Plie(nom)));
        if (base != parNom.end() && base->second != numero) s.parents[numero] = base->second;
    }
    return s;
}

namespace {

// The order in which the limit of a filter keeps the specialities of a
// substance: those with a reimbursed presentation first, then those of
// fewer active substances, then by CIS.
std::vector<std::string> SpecialitesParInteret(const std::set<std::string>& specialites,
                                               const std::set<std::string>& remboursees,
                                               const std::map<std::string, std::vector<const Composant*>>& compositions) {
    std::vector<std::tuple<bool, size_t, std::string>> rangs;
    for (const std::string& cis : specialites) {
        const auto c = compositions.find(cis);
        rangs.emplace_back(!remboursees.count(cis), c == compositions.end() ? 0 : ComposantsExprimes(c->second).size(), cis);
    }
    std::sort(rangs.begin(), rangs.end());
    std::vector<std::string> ordre;
    for (const auto& rang : rangs) ordre.push_back(std::get<2>(rang));
    return ordre;
}

}  // namespace

Selection Selectionne(const Bdpm& bdpm, const Substances& substances, const Filtre& filtre,
                      std::vector<std::string>& sansSubstance) {
    Selection selection;
    const auto compositions = ParSpecialite(bdpm.composants);
    std::set<std::string> remboursees;
    for (const Presentation& p : bdpm.presentations)
        if (!p.taux.empty()) remboursees.insert(p.cis);
    if (filtre.substances.empty())
        for (const Specialite& s : bdpm.specialites) selection.specialites.insert(s.cis);
    std::set<std::string, std::less<>> codesCIS;
    for (const Specialite& s : bdpm.specialites) codesCIS.insert(s.cis);
    for (const std::string& nom : filtre.substances) {
        // A speciality named by its CIS code is kept whatever the limit.
        if (codesCIS.count(nom)) {
            selection.specialites.insert(nom);
            continue;
        }
        const std::set<int> codes = substances.index.Cherche(nom);
        if (codes.empty()) sansSubstance.push_back(nom);
        std::set<std::string> contenant;
        for (const auto& [cis, liste] : compositions)
            for (const Composant* c : liste)
                if (codes.count(substances.numeros.at(c->code))) contenant.insert(cis);
        std::vector<std::string> gardees = SpecialitesParInteret(contenant, remboursees, compositions);
        if (filtre.parSubstance && gardees.size() > filtre.parSubstance) gardees.resize(filtre.parSubstance);
        selection.specialites.insert(gardees.begin(), gardees.end());
    }
    for (const Composant& c : bdpm.composants)
        if (selection.specialites.count(c.cis)) selection.substances.insert(substances.numeros.at(c.code));
    return selection;
}

void EcritComposition(const Bdpm& bdpm, const Substances& substances, const Selection& selection, Sortie& sortie) {
    std::set<std::string> unites;
    for (const Composant& c : bdpm.composants)
        if (auto d = LitDosage(c.dosage)) unites.insert(d->unite);
    const std::map<std::string, int> codesUnites = Numerote(unites);
    const std::map<std::string, int> codesExprimes = CodesExprimes(bdpm.composants);
    const auto parSpecialite = ParSpecialite(bdpm.composants);

    std::set<std::string> unitesEcrites;
    std::set<std::string> exprimesEcrits;
    for (const Presentation& p : bdpm.presentations) {
        const auto composants = parSpecialite.find(p.cis);
        if (!selection.specialites.count(p.cis) || composants == parSpecialite.end()) continue;
        const std::vector<const Composant*> exprimes = ComposantsExprimes(composants->second);
        // Every component, the salt beside the fraction it is expressed as:
        // a thesaurus name may stand for either.
        int rang = 0;
        for (const Composant* c : composants->second) {
            const auto dosage = LitDosage(c->dosage);
            sortie.Ajoute("VDXVCOMP", {{"CodeCIP", p.cip7},
                                       {"Rang", Chiffres(++rang, 3)},
                                       {"CodeSubstance", std::to_string(substances.numeros.at(c->code))},
                                       {"QuantiteTexte", c->dosage},
                                       {"Quantite", dosage ? TexteNombre(dosage->quantite) : "0"},
                                       {"CodeUnite", dosage ? std::to_string(codesUnites.at(dosage->unite)) : "0"},
                                       {"Interactions", "1"}});
            if (dosage) unitesEcrites.insert(dosage->unite);
        }
        // The reverse index names the salts beside the fractions shown.
        for (const Composant* c : composants->second)
            sortie.Ajoute("VDXVPAP", {{"CodeSubstance", Chiffres(substances.numeros.at(c->code), 5)}, {"CodeCIP", p.cip7}});
        const std::string reference = exprimes.empty() ? "" : exprimes.front()->reference;
        const auto exprime = codesExprimes.find(reference);
        sortie.Ajoute("VDXVCOMG", {{"CodeCIP", p.cip7},
                                   {"CodeExprime", exprime == codesExprimes.end() ? "0" : std::to_string(exprime->second)},
                                   {"TexteComposition", TexteComposition(exprimes)}});
        if (exprime != codesExprimes.end()) exprimesEcrits.insert(reference);
    }
    for (const std::string& u : unitesEcrites)
        sortie.Ajoute("VDXVPAU", {{"Code", std::to_string(codesUnites.at(u))}, {"LibelleUnite", u}});
    for (const std::string& e : exprimesEcrits)
        sortie.Ajoute("VDXVPAE", {{"Code", std::to_string(codesExprimes.at(e))}, {"LibelleExprime", e}});

    for (int numero : selection.substances) {
        sortie.Ajoute("VDXVPA", {{"CodeSubstance", std::to_string(numero)},
                                 {"Libelle", substances.noms.at(numero)},
                                 {"Interactions", "1"}});
        const auto parent = substances.parents.find(numero);
        const int pere = parent == substances.parents.end() ? numero : parent->second;
        sortie.Ajoute("VDXWPEFI", {{"CodeParent", std::to_string(pere)}, {"CodeEnfant", std::to_string(numero)}});
        // A salt and its base are synonyms both ways: an allergy to the
        // base reaches its salts.
        if (pere != numero) {
            sortie.Ajoute("VDXWSYNC", {{"CodeSubstance", std::to_string(numero)}, {"CodeSynonyme", std::to_string(pere)}});
            sortie.Ajoute("VDXWSYNC", {{"CodeSubstance", std::to_string(pere)}, {"CodeSynonyme", std::to_string(numero)}});
        }
    }
    sortie.Ajoute("VDXWPEFI", {{"CodeParent", std::to_string(CleFinale)}, {"CodeEnfant", std::to_string(CleFinale)}});
}

}  // namespace vdx::import
