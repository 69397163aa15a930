#include "tools/vdx/import_noms.h"

#include <algorithm>

#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Words of a salt that lead its name ("CHLORHYDRATE DE X").
const std::set<std::string, std::less<>> Anions = {
    "ACETATE",      "ASPARTATE",   "BENZOATE",     "BESILATE",    "BITARTRATE",  "BROMHYDRATE", "BROMURE",
    "CHLORHYDRATE", "CITRATE",     "DICHLORHYDRATE", "DIPHOSPHATE", "DIPROPIONATE", "EMBONATE",  "FUMARATE",
    "GLUCONATE",    "HEMIFUMARATE", "HEMISULFATE", "HEMITARTRATE", "HYCLATE",    "HYDROGENOMALEATE",
    "HYDROGENOTARTRATE", "IODURE", "LACTATE",      "MALATE",      "MALEATE",     "MESILATE",    "NITRATE",
    "OXALATE",      "PAMOATE",     "PHOSPHATE",    "PROPIONATE",  "SUCCINATE",   "SULFATE",     "TARTRATE",
    "TOSILATE",     "VALERATE",    "CHLORURE",     "DIHYDROGENOPHOSPHATE", "HYDROGENOSULFATE", "MESYLATE",
    "BESYLATE",     "DIHYDROCHLORURE", "ACETONIDE", "HEMISUCCINATE", "DIMALEATE", "DISODIQUE",
    "HYDROGENOSUCCINATE", "FUROATE", "DINITRATE", "MONONITRATE", "DECANOATE", "CAPROATE", "ENANTATE"};
// Words of a salt, a hydrate or a form that follow the molecule.
const std::set<std::string, std::less<>> Qualites = {
    "SODIQUE",     "DISODIQUE",   "POTASSIQUE",  "CALCIQUE",     "MAGNESIQUE",  "BASE",        "ANHYDRE",
    "MONOHYDRATE", "MONOHYDRATEE", "HEMIHYDRATE", "HEMIHYDRATEE", "DIHYDRATE",  "DIHYDRATEE",  "TRIHYDRATE",
    "SESQUIHYDRATE", "PENTAHYDRATE", "HEXAHYDRATE", "HEPTAHYDRATE", "HYDRATE", "HYDRATEE",     "TROMETAMOL",
    "MEGLUMINE",   "ARGININE",    "LYSINE",      "TERT-BUTYLAMINE", "ERBUMINE", "ZINCIQUE",    "AMMONIQUE"};
const std::set<std::string, std::less<>> Liaisons = {"DE", "D'", "DU", "ACIDE"};

std::vector<std::string> Mots(std::string_view nom) {
    std::string espace;
    for (char c : nom) espace += c == '(' || c == ')' || c == ',' ? ' ' : c;
    // "D'X" is two words.
    std::vector<std::string> mots;
    for (std::string& mot : Decoupe(espace, ' ')) {
        if (Commence(mot, "D'") && mot.size() > 2) {
            mots.push_back("D'");
            mots.push_back(mot.substr(2));
        } else {
            mots.push_back(std::move(mot));
        }
    }
    return mots;
}

std::string AvantParenthese(std::string_view nom) { return Nettoie(nom.substr(0, nom.find('('))); }

// Without the final E of its words: "BUPROPIONE" and "BUPROPION" meet.
std::string SansE(std::string_view nom) {
    std::string sortie;
    for (std::string mot : Decoupe(nom, ' ')) {
        if (mot.size() > 3 && mot.back() == 'E') mot.pop_back();
        sortie += (sortie.empty() ? "" : " ") + mot;
    }
    return sortie;
}

// "SODIUM (OXYBATE DE)" written the other way round, "OXYBATE DE SODIUM";
// empty for a name of another shape.
std::string Retourne(std::string_view nom) {
    const size_t ouvre = nom.find(" (");
    if (ouvre == std::string_view::npos || !nom.ends_with(")")) return "";
    const std::string dedans(nom.substr(ouvre + 2, nom.size() - ouvre - 3)), devant(nom.substr(0, ouvre));
    if (dedans.ends_with(" DE")) return dedans + " " + devant;
    if (dedans.ends_with(" D'")) return dedans + devant;
    return "";
}

// The first word inside the bracket of a name, empty without one.
std::string PremierMotEntreParentheses(const std::string& nom) {
    const size_t ouvre = nom.find('(');
    if (ouvre == std::string::npos) return "";
    const std::vector<std::string> mots = Mots(nom.substr(ouvre));
    return mots.empty() ? "" : mots.front();
}

// The forms under which a folded name is filed and looked for. A bracket
// that names a salt ("RANITIDINE (CHLORHYDRATE DE)") follows its molecule;
// one that names another word ("SODIUM (OXYBATE DE)") is read the other way
// round, and the word before it is no form of the name.
std::vector<std::string> Formes(const std::string& plie) {
    const std::string sansSel = NomSansSel(plie), retourne = Retourne(plie);
    const bool selEntreParentheses = Anions.count(PremierMotEntreParentheses(plie)) > 0;
    if (!retourne.empty() && !selEntreParentheses) return {plie, sansSel, retourne, NomSansSel(retourne)};
    const std::string avant = AvantParenthese(plie);
    return {plie, sansSel, SansE(sansSel), avant, NomSansSel(avant), SansE(NomSansSel(avant))};
}

}  // namespace

std::string NomSansSel(std::string_view nomPlie) {
    std::string reste;
    for (const std::string& mot : Mots(nomPlie)) {
        if (Anions.count(mot) || Qualites.count(mot) || Liaisons.count(mot)) continue;
        reste += (reste.empty() ? "" : " ") + mot;
    }
    return reste.empty() ? Nettoie(nomPlie) : reste;
}

void IndexNoms::Ajoute(int code, std::string_view nom) {
    const std::string plie = Plie(nom);
    if (plie.empty()) return;
    for (const std::string& forme : Formes(plie))
        if (!forme.empty()) parNom_[forme].insert(code);
    parNomPublie_[plie].insert(code);
}

std::set<int> IndexNoms::Cherche(std::string_view nom) const {
    const std::vector<std::string> formes = Formes(Plie(nom));
    std::set<int> codes;
    for (const std::string& forme : formes) {
        if (forme.empty()) continue;
        const auto n = parNom_.find(forme);
        if (n != parNom_.end()) codes.insert(n->second.begin(), n->second.end());
    }
    if (!codes.empty() || formes[1].empty()) return codes;
    // Else the names that begin with the molecule as whole words
    // ("INSULINE" for "INSULINE GLULISINE").
    const std::string debut = formes[1] + " ";
    for (auto n = parNomPublie_.lower_bound(debut); n != parNomPublie_.end() && Commence(n->first, debut); ++n)
        if (n->first[debut.size()] != '(') codes.insert(n->second.begin(), n->second.end());
    return codes;
}

}  // namespace vdx::import
