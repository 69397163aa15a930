#include "tools/vdx/import_dci.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <tuple>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Words of a form that tell nothing a prescriber by common name chooses:
// coated or scored, a tablet is a tablet.
const std::set<std::string, std::less<>> QualitesSansEffet = {"PELLICULE", "PELLICULEE", "ENROBE", "ENROBEE",
                                                                "SECABLE", "QUADRISECABLE"};

// Forms whose word is feminine: "gastro-résistant(e)" agrees with them.
const std::set<std::string, std::less<>> FormesFeminines = {"GELULE",   "CAPSULE", "SOLUTION", "SUSPENSION",
                                                              "POUDRE",   "CREME",   "POMMADE",  "EMULSION",
                                                              "PASTILLE", "GOMME",   "LOTION",   "MOUSSE", "PATE"};

// What a base form's name carries of its water or of its being the base,
// which the common name leaves out: "AMOXICILLINE ANHYDRE" and "AMOXICILLINE
// BASE" are amoxicillin.
const std::set<std::string, std::less<>> SansEffetSurLeNom = {
    "ANHYDRE",     "BASE",         "HYDRATE",    "HYDRATEE",      "MONOHYDRATE", "MONOHYDRATEE",
    "DIHYDRATE",   "DIHYDRATEE",   "TRIHYDRATE", "TRIHYDRATEE",   "SESQUIHYDRATE", "HEMIHYDRATE",
    "HEMIHYDRATEE"};

// Units a dosage is given for when they measure: "2,4 g" for "100 ml".
const std::set<std::string, std::less<>> Mesures = {"ML", "L", "DL", "G", "MG", "KG", "CM2", "CM", "M2"};

// A homeopathic dilution: a number right before "CH", "DH" or "K"
// ("5 CH", "2 CH à 60DH").
bool Dilution(std::string_view dosage) {
    const std::string d = Plie(dosage);
    for (size_t i = 0; i < d.size(); ++i) {
        if (!std::isdigit(static_cast<unsigned char>(d[i]))) continue;
        size_t j = i + 1;
        if (j < d.size() && d[j] == ' ') ++j;
        const std::string_view suite = std::string_view(d).substr(j);
        for (const std::string_view u : {"CH", "DH", "K"})
            if (suite.starts_with(u) && (suite.size() == u.size() || !std::isalpha(static_cast<unsigned char>(suite[u.size()]))))
                return true;
    }
    return false;
}

std::vector<std::string> Mots(std::string_view texte) { return Decoupe(texte, ' '); }

std::string Joint(const std::vector<std::string>& mots) {
    std::string t;
    for (const std::string& m : mots) t += (t.empty() ? "" : " ") + m;
    return t;
}

// The form as a line names it: "comprimé pelliculé sécable" is "comprimé",
// "comprimé effervescent(e) sécable" "comprimé effervescent", "gélule
// gastro-résistant(e)" "gélule gastro-résistante", "solution(s)" "solution".
std::string FormeDeLigne(std::string_view forme) {
    std::vector<std::string> gardes;
    const std::vector<std::string> mots = Mots(forme);
    const bool feminine = !mots.empty() && FormesFeminines.count(Plie(mots.front())) > 0;
    for (std::string mot : mots) {
        for (const auto& [marque, accord] : {std::pair{"(e)", feminine ? "e" : ""}, std::pair{"(s)", ""}}) {
            const size_t p = mot.find(marque);
            if (p != std::string::npos) mot.replace(p, 3, accord);
        }
        if (QualitesSansEffet.count(Plie(mot)) == 0) gardes.push_back(mot);
    }
    return Joint(gardes);
}

// A substance's name as a line shows it, and as lines sort it: the
// database's own ("CLAVULANIQUE (ACIDE)", "CÉLIPROLOL (CHLORHYDRATE DE)"),
// its water left out, folded for the order; read in the French order for
// the label ("ACIDE CLAVULANIQUE", "CHLORHYDRATE DE CÉLIPROLOL",
// "VALÉRATE D'ESTRADIOL", "TRIMÉTHYL ÉTHER DU PHLOROGLUCINOL").
struct NomLigne {
    std::string affiche, tri;
};
NomLigne NomDeSubstance(std::string_view nom) {
    std::vector<std::string> mots = Mots(nom);
    while (mots.size() > 1 && SansEffetSurLeNom.count(Plie(mots.back())) > 0) mots.pop_back();
    const std::string donne = Joint(mots);
    NomLigne n{donne, Plie(donne)};
    // An acid sorts by its own name, as the database writes it: "ACIDE
    // CLAVULANIQUE" by "CLAVULANIQUE (ACIDE)".
    if (n.tri.starts_with("ACIDE ")) n.tri = n.tri.substr(6) + " (ACIDE)";
    const size_t ouvre = donne.rfind(" (");
    if (ouvre == std::string::npos || donne.back() != ')') return n;
    const std::string avant = donne.substr(0, ouvre), dedans = donne.substr(ouvre + 2, donne.size() - ouvre - 3);
    const std::string pli = Plie(dedans);
    if (pli == "ACIDE" || pli.ends_with(" DE") || pli.ends_with(" DU") || pli.ends_with(" DES"))
        n.affiche = dedans + " " + avant;
    else if (pli.ends_with(" D'")) n.affiche = dedans + avant;
    return n;
}

// A number with a decimal comma, no trailing zero, as precise as given (a
// dosage of 0,0625 mg is not one of 0,063 mg).
std::string NombreFrancais(double valeur) {
    std::string t = TexteNombre(valeur);
    std::replace(t.begin(), t.end(), '.', ',');
    return t;
}

bool Entier(double v) { return std::fabs(v - std::round(v)) < 1e-9; }

// What a dosage is given for when that measures: "100 ml" for "100 ml de
// solution", "ml" for "1 ml"; empty for a unit ("un comprimé", "1
// sachet-dose", "une ampoule de 2 ml").
std::string ReferenceMesuree(std::string_view reference) {
    const std::vector<std::string> mots = Mots(reference);
    if (mots.size() < 2 || (mots.size() > 2 && Plie(mots[2]) != "DE" && !Commence(Plie(mots[2]), "D'")) ||
        !Nombre(mots[0]) || Mesures.count(Plie(mots[1])) == 0)
        return "";
    const double quantite = *Nombre(mots[0]);
    return quantite == 1 ? mots[1] : NombreFrancais(quantite) + " " + mots[1];
}

}  // namespace

std::optional<std::string> DosageDeLigne(std::string_view dosage) {
    // The number and its unit; what follows says it again another way: "1,5
    // g (soit 0,75 %)", "35 mg équivalent à 32,5 mg d'acide", "500 mg dont
    // 450 mg de diosmine". The groups of a thousand are apart: "1 000 mg".
    const std::vector<std::string> mots = Mots(dosage);
    size_t n = 1;
    while (n < mots.size() && mots[n].size() == 3 && std::ranges::all_of(mots[n], [](char c) { return std::isdigit(static_cast<unsigned char>(c)); }))
        ++n;
    if (mots.empty() || n >= mots.size() || !std::isdigit(static_cast<unsigned char>(mots[0][0]))) return std::nullopt;
    const std::optional<double> valeur = Nombre(Joint({mots.begin(), mots.begin() + static_cast<std::ptrdiff_t>(n)}));
    if (!valeur || *valeur <= 0) return std::nullopt;
    std::string unite = mots[n];
    if (unite.starts_with("(")) return std::nullopt;
    double v = *valeur;
    const std::string u = Plie(unite);
    // The unit a prescriber writes: grams from a thousand milligrams, and milligrams below a gram.
    if (u == "MG" && v >= 1000 && Entier(v / 10)) {
        v /= 1000;
        unite = "g";
    } else if (u == "G" && v < 1) {
        v *= 1000;
        unite = "mg";
    } else if ((u == "MICROGRAMMES" || u == "MICROGRAMME") && v >= 1000 && Entier(v / 10)) {
        v /= 1000;
        unite = "mg";
    }
    return NombreFrancais(v) + " " + unite;
}

LigneOuMotif LigneDeSpecialite(const Specialite& specialite, const std::vector<const Composant*>& exprimes) {
    if (Contient(Plie(specialite.procedure), "HOMEO")) return {std::nullopt, SansLigne::Homeopathie};
    if (exprimes.empty()) return {std::nullopt, SansLigne::SansSubstance};
    std::set<std::string> elements;
    for (const Composant* c : exprimes) elements.insert(c->element);
    if (elements.size() > 1) return {std::nullopt, SansLigne::PlusieursElements};
    // Each substance once, in the order of its folded name: its name as
    // shown, its dosage (and what that measures).
    std::map<std::string, std::pair<std::string, std::string>> substances;
    for (const Composant* c : exprimes) {
        if (Dilution(c->dosage)) return {std::nullopt, SansLigne::Homeopathie};
        std::optional<std::string> dosage = DosageDeLigne(c->dosage);
        if (!dosage) return {std::nullopt, SansLigne::SansDosage};
        if (const std::string mesure = ReferenceMesuree(c->reference); !mesure.empty()) *dosage += "/" + mesure;
        const NomLigne nom = NomDeSubstance(c->nom);
        if (!substances.emplace(nom.tri, std::pair{nom.affiche, *dosage}).second)
            return {std::nullopt, SansLigne::PlusieursElements};
    }
    const std::string forme = FormeDeLigne(specialite.forme);
    std::vector<std::string> voies;
    for (const std::string& v : specialite.voies) voies.push_back(Plie(v));
    std::ranges::sort(voies);
    LigneDC ligne;
    for (const std::string& v : voies) ligne.cle += v + ";";
    ligne.cle += "|" + Plie(forme) + "|";
    for (const auto& [pli, nomDosage] : substances) {
        ligne.cle += pli + "=" + Plie(nomDosage.second) + "|";
        ligne.libelle += (ligne.libelle.empty() ? "" : " + ") + nomDosage.first + " " + nomDosage.second;
    }
    ligne.libelle += ", " + forme;
    return {ligne, SansLigne::SansSubstance};
}

std::map<std::string, std::string> CodesLignesDC(const std::set<std::string>& cles) {
    constexpr uint64_t Codes = 1'000'000;
    const auto hache = [](const std::string& cle) {
        uint64_t h = 14695981039346656037ull;
        for (const char c : cle) {
            h ^= static_cast<unsigned char>(c);
            h *= 1099511628211ull;
        }
        return h % Codes;
    };
    std::vector<std::pair<uint64_t, const std::string*>> ordre;
    for (const std::string& cle : cles) ordre.emplace_back(hache(cle), &cle);
    std::ranges::sort(ordre, [](const auto& a, const auto& b) { return std::tie(a.first, *a.second) < std::tie(b.first, *b.second); });
    std::set<uint64_t> pris;
    std::map<std::string, std::string> codes;
    for (auto [h, cle] : ordre) {
        while (!pris.insert(h).second) h = (h + 1) % Codes;
        codes[*cle] = ChiffreLigneDC + Chiffres(static_cast<int64_t>(h), 6);
    }
    return codes;
}

void EcritLignesDC(const Bdpm& bdpm, const Selection& selection, Sortie& sortie, RapportImport& rapport) {
    std::map<std::string, std::vector<const Composant*>> composants;
    for (const Composant& c : bdpm.composants) composants[c.cis].push_back(&c);
    // Every speciality's line, so that the codes are those of the whole
    // database whatever the import selects.
    std::map<std::string, LigneDC> lignes;  // by CIS
    std::set<std::string> cles;
    for (const Specialite& s : bdpm.specialites) {
        const auto c = composants.find(s.cis);
        const LigneOuMotif l =
            LigneDeSpecialite(s, c == composants.end() ? std::vector<const Composant*>{} : ComposantsExprimes(c->second));
        const bool retenue = selection.specialites.count(s.cis) > 0;
        if (!l.ligne) {
            if (retenue) ++rapport.specialitesSansLigne[l.motif == SansLigne::Homeopathie       ? "homeopathic"
                                                        : l.motif == SansLigne::SansDosage        ? "no dosage"
                                                        : l.motif == SansLigne::PlusieursElements ? "several elements"
                                                                                                  : "no active substance"];
            continue;
        }
        cles.insert(l.ligne->cle);
        if (retenue) lignes.emplace(s.cis, *l.ligne);
    }
    const std::map<std::string, std::string> codes = CodesLignesDC(cles);
    std::set<std::string> ecrites;
    for (const auto& [cis, ligne] : lignes) {
        const std::string& code = codes.at(ligne.cle);
        if (ecrites.insert(code).second)
            sortie.Ajoute("VDXYDCI", {{"Code", code}, {"Libelle", ligne.libelle}, {"LibelleCle", Plie(ligne.libelle)}});
    }
    for (const Presentation& p : bdpm.presentations) {
        const auto l = lignes.find(p.cis);
        if (l != lignes.end()) sortie.Ajoute("VDXYDCIP", {{"CodeDCI", codes.at(l->second.cle)}, {"CodeCIP", p.cip7}});
    }
}

}  // namespace vdx::import
