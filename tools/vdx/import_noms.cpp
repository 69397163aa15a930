#include "tools/vdx/import_noms.h"

#include <algorithm>

#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

using Mots = std::vector<std::string>;
using Ensemble = std::set<std::string, std::less<>>;

// Words of a salt that lead its name ("CHLORHYDRATE DE X"), besides every
// word in -ATE, -URE or -ITE.
const Ensemble Anions = {
    "ACETATE",      "ACETONIDE",   "ANHYDRIDE",    "ASPARTATE",   "BENZOATE",    "BESILATE",    "BESYLATE",
    "BITARTRATE",   "BROMHYDRATE", "BROMURE",      "CAPROATE",    "CHLORHYDRATE", "CHLORURE",   "CITRATE",
    "DECANOATE",    "DICHLORHYDRATE", "DIHYDROCHLORURE", "DIHYDROGENOPHOSPHATE", "DIMALEATE", "DINITRATE",
    "DIPHOSPHATE",  "DIPROPIONATE", "EMBONATE",    "ENANTATE",    "FUMARATE",    "FUROATE",     "GLUCONATE",
    "HEMIFUMARATE", "HEMISUCCINATE", "HEMISULFATE", "HEMITARTRATE", "HYCLATE",    "HYDROGENOMALEATE",
    "HYDROGENOSUCCINATE", "HYDROGENOSULFATE", "HYDROGENOTARTRATE", "HYDROXYDE", "IODURE",  "LACTATE",
    "MALATE",       "MALEATE",     "MESILATE",     "MESYLATE",    "MONONITRATE", "NITRATE",     "OXALATE",
    "OXYDE",        "PAMOATE",     "PEROXYDE",     "PHOSPHATE",   "PROPIONATE",  "SUCCINATE",   "SULFATE",
    "TARTRATE",     "TOSILATE",    "TRIOXYDE",     "VALERATE"};
// Words that may follow an anion before the name it is of ("MALEATE ACIDE
// DE LISURIDE", "POTASSIUM (PHOSPHATE MONOACIDE DE)").
const Ensemble AcidesDeSel = {"ACIDE", "MONOACIDE", "DIACIDE"};
// The anions of a mineral salt: with a cation they make a supplement of it.
const Ensemble AnionsMineraux = {
    "ACETATE",    "ASCORBATE",  "ASPARTATE",   "BICARBONATE", "CARBONATE",   "CHLORURE",  "CITRATE",
    "DIHYDROGENOPHOSPHATE",     "FLUORURE",    "FUMARATE",    "GLUCEPTATE",  "GLUCOHEPTONATE", "GLUCONATE",
    "GLUCONOLACTATE", "GLUBIONATE", "LACTOBIONATE", "GLYCEROPHOSPHATE", "HYDROGENOCARBONATE", "HYDROGENOPHOSPHATE", "HYDROXYDE", "IODURE",
    "LACTATE",    "LACTOGLUCONATE", "OROTATE", "OXYDE",       "PHOSPHATE",   "PIDOLATE",  "SILICATE",
    "SUCCINATE",  "SULFATE",    "TARTRATE",   "TRISILICATE", "BROMURE",    "GLYCINATE"};
// Cations by the word and by the adjectives that name them.
const std::map<std::string, std::string, std::less<>> Cations = {
    {"ALUMINIUM", "ALUMINIUM"},  {"CALCIUM", "CALCIUM"},     {"FER", "FER"},           {"LITHIUM", "LITHIUM"},
    {"MAGNESIUM", "MAGNESIUM"},  {"POTASSIUM", "POTASSIUM"}, {"SODIUM", "SODIUM"},     {"STRONTIUM", "STRONTIUM"},
    {"ZINC", "ZINC"},            {"CALCIQUE", "CALCIUM"},    {"DICALCIQUE", "CALCIUM"}, {"TRICALCIQUE", "CALCIUM"},
    {"FERREUX", "FER"},          {"FERRIQUE", "FER"},        {"LITHIQUE", "LITHIUM"},  {"MAGNESIQUE", "MAGNESIUM"},
    {"POTASSIQUE", "POTASSIUM"}, {"DIPOTASSIQUE", "POTASSIUM"}, {"MONOPOTASSIQUE", "POTASSIUM"},
    {"SODIQUE", "SODIUM"},       {"DISODIQUE", "SODIUM"},    {"MONOSODIQUE", "SODIUM"}, {"TRISODIQUE", "SODIUM"},
    {"ZINCIQUE", "ZINC"}};
// Cations that are the medicine whatever their anion (lithium carbonate or
// gluconate, strontium ranelate).
const Ensemble CationsActifs = {"LITHIUM", "STRONTIUM"};
// Words that leave the substance as it is, besides the hydrates.
const Ensemble Qualites = {"BASE",        "ANHYDRE",      "ELEMENT",       "RECOMBINANTE", "RECOMBINANT",
                           "BIOSYNTHETIQUE", "DESSECHE",  "DESSECHEE",     "CRISTALLISE",  "CRISTALLISEE",
                           "NEUTRE",      "MICRONISE",    "MICRONISEE",    "SOLUBLE",      "TROMETAMOL",
                           "MEGLUMINE",   "ARGININE",     "LYSINE",        "TERT-BUTYLAMINE", "ERBUMINE",
                           "AMMONIQUE"};
// The words of a plant's part and of its extract.
const Ensemble MotsDePlante = {
    "EXTRAIT", "EXTRAITS", "SEC", "SECHE", "FLUIDE", "MOU", "AQUEUX", "HYDROALCOOLIQUE", "ETHANOLIQUE",
    "ALCOOLIQUE", "HUILEUX", "TEINTURE", "POUDRE", "HUILE", "ESSENTIELLE", "ESSENCE", "FEUILLE", "FEUILLES",
    "ECORCE", "RACINE", "RACINES", "SOMMITE", "SOMMITES", "FLEURIE", "FLEURIES", "FLEUR", "FLEURS", "FRUIT",
    "FRUITS", "GRAINE", "GRAINES", "SEMENCE", "SEMENCES", "RHIZOME", "PARTIES", "AERIENNES", "PLANTE", "ENTIERE",
    "BOURGEON", "BOURGEONS", "TIGE", "TIGES", "BULBE", "RESINE", "GOMME", "SUC", "TITRE", "TITREE", "CONCENTRAT"};
const Ensemble Liaisons = {"DE", "D'", "DU", "DES"};
// Words of a salt without its substance: a name made of them alone stands
// for nothing.
const Ensemble MotsDeSel = {"SEL", "SELS", "SELS DE", "SEL DE"};
constexpr std::string_view Homeopathique = " POUR PREPARATIONS HOMEOPATHIQUES";

// Names of the thesaurus that the medicine database writes otherwise.
const std::map<std::string, std::string, std::less<>> Synonymes = {
    {"CATIORESINE SULFO CALCIQUE", "POLYSTYRENE SULFONATE DE CALCIUM"},
    {"CATIORESINE SULFO SODIQUE", "POLYSTYRENE SULFONATE DE SODIUM"},
    {"COLISTINE", "COLISTIMETHATE"},
    {"ESTROGENES SULFOCONJUGUES EQUINS", "ESTROGENES CONJUGUES"},
    {"NOREPINEPHRINE", "NORADRENALINE"},
    {"PIROXICAM-BETADEX", "PIROXICAM-BETACYCLODEXTRINE"},
    {"TERPINEOL", "ALPHA-TERPINEOL"},
    {"THYROXINES", "LEVOTHYROXINE"},
};

bool Dans(const Ensemble& e, std::string_view mot) { return e.find(mot) != e.end(); }

// A word that leaves the substance as it is: a quality, or any hydrate
// ("HYDRATE", "TETRAHYDRATEE", not "CHLORHYDRATE").
bool Qualite(std::string_view mot) {
    if (Dans(Qualites, mot)) return true;
    const bool hydrate = mot.ends_with("HYDRATE") || mot.ends_with("HYDRATEE");
    return hydrate && !Dans(Anions, mot) && mot.find("CHLOR") == std::string_view::npos && mot.find("BROM") == std::string_view::npos;
}

Mots Decompose(std::string_view nom) {
    std::string espace;
    for (char c : nom) espace += c == '(' || c == ')' || c == ',' ? ' ' : c;
    Mots mots;
    for (std::string& mot : Decoupe(espace, ' ')) {
        // "D'X" is two words.
        if (Commence(mot, "D'") && mot.size() > 2) {
            mots.push_back("D'");
            mots.push_back(mot.substr(2));
        } else if (!mot.empty()) {
            mots.push_back(std::move(mot));
        }
    }
    return mots;
}

std::string Joint(const Mots& mots, size_t debut = 0, size_t fin = std::string::npos) {
    std::string texte;
    for (size_t i = debut; i < std::min(fin, mots.size()); ++i) {
        if (!texte.empty() && !texte.ends_with("D'")) texte += ' ';
        texte += mots[i];
    }
    return texte;
}

// The spelling a key is filed under: no hyphen inside a word, nor a final S
// or E of a word of more than three letters.
std::string Lache(std::string_view cle) {
    std::string sortie;
    for (std::string mot : Decoupe(cle, ' ')) {
        if (mot.empty()) continue;
        std::erase(mot, '-');
        if (mot.size() > 4 && mot.back() == 'S') mot.pop_back();
        if (mot.size() > 3 && mot.back() == 'E') mot.pop_back();
        sortie += (sortie.empty() ? "" : " ") + mot;
    }
    return sortie;
}

bool Anion(std::string_view mot) {
    return Dans(Anions, mot) || (mot.size() > 5 && (mot.ends_with("ATE") || mot.ends_with("URE") || mot.ends_with("ITE")));
}

// "VALPROATE" gives "ACIDE VALPROIQUE"; empty for another word.
std::string Acide(std::string_view anion) {
    if (anion.find(' ') != std::string_view::npos || !anion.ends_with("ATE") || anion.size() < 6) return "";
    return "ACIDE " + std::string(anion.substr(0, anion.size() - 3)) + "IQUE";
}

// The bracket of a name turned round: "SODIUM (VALPROATE DE)" reads
// "VALPROATE DE SODIUM", "VALPROIQUE (ACIDE)" "ACIDE VALPROIQUE",
// "FERREUX (SULFATE) DESSECHE" "SULFATE FERREUX DESSECHE"; brackets of
// another kind are left out ("PIROXICAM-BETACYCLODEXTRINE (COMPLEXE)").
// The last bracket is read first.
std::string Redresse(std::string nom) {
    for (size_t ouvre; (ouvre = nom.rfind('(')) != std::string::npos;) {
        const size_t ferme = nom.find(')', ouvre);
        const std::string devant = Nettoie(nom.substr(0, ouvre));
        const std::string dedans = Nettoie(nom.substr(ouvre + 1, ferme == std::string::npos ? std::string::npos : ferme - ouvre - 1));
        const std::string apres = ferme == std::string::npos ? "" : Nettoie(nom.substr(ferme + 1));
        const Mots mots = Decompose(dedans);
        std::string tourne;
        if (dedans.ends_with(" DE") || dedans.ends_with(" D'") || dedans == "DE" || dedans == "D'")
            tourne = dedans.ends_with("'") ? dedans + devant : dedans + " " + devant;
        else if (mots.size() == 1 && (mots[0] == "ACIDE" || Anion(mots[0]) || Dans(MotsDePlante, mots[0]) || mots[0] == "SELS"))
            tourne = dedans + " " + devant;
        else if (!mots.empty() && std::ranges::all_of(mots, [](const std::string& m) { return Dans(MotsDePlante, m); }))
            tourne = dedans + " DE " + devant;
        else
            tourne = devant;
        nom = Nettoie(tourne + " " + apres);
    }
    // "ETODOLIQUE ACIDE" is "ACIDE ETODOLIQUE".
    if (nom.ends_with(" ACIDE")) nom = "ACIDE " + nom.substr(0, nom.size() - 6);
    return nom;
}

// The element of a mineral salt, or the molecule of a drug's salt.
void Sel(const Mots& mots, ClesNom& cles) {
    // "P DE R": P's last word an anion.
    for (size_t i = 1; i + 1 < mots.size(); ++i) {
        if (!Dans(Liaisons, mots[i]) || !Anion(mots[i - 1])) continue;
        const std::string avant = Joint(mots, 0, i), reste = Joint(mots, i + 1);
        const auto cation = Cations.find(reste);
        if (cation == Cations.end()) {
            cles.contenus.insert(reste);
            return;
        }
        if ((i == 1 && Dans(AnionsMineraux, avant)) || Dans(CationsActifs, cation->second)) {
            cles.contenus.insert(cation->second);
        } else {
            cles.contenus.insert(avant);
            if (const std::string acide = Acide(avant); !acide.empty()) cles.contenus.insert(acide);
        }
        return;
    }
    // "P ADJECTIF": a cation named by its adjective; inside a name, after
    // a mineral anion ("COMPLEXE D'HYDROXYDE FERRIQUE - SACCHAROSE").
    for (size_t i = 1; i + 1 < mots.size(); ++i)
        if (const auto c = Cations.find(mots[i]); c != Cations.end() && Dans(AnionsMineraux, mots[i - 1])) {
            cles.contenus.insert(c->second);
            return;
        }
    if (mots.size() < 2) return;
    const auto cation = Cations.find(mots.back());
    if (cation == Cations.end() || cation->first == cation->second) return;
    const std::string avant = Joint(mots, 0, mots.size() - 1);
    if (Dans(AnionsMineraux, avant) || Dans(CationsActifs, cation->second)) {
        cles.contenus.insert(cation->second);
        return;
    }
    cles.contenus.insert(avant);
    if (const std::string acide = Acide(avant); !acide.empty()) {
        cles.propres.insert(avant + " DE " + cation->second);
        cles.contenus.insert(acide);
    }
}

// The plant of an extract or of a part of it: the words left when those of
// the part, the extract and the links are taken away.
void Plante(const Mots& mots, ClesNom& cles) {
    if (std::ranges::none_of(mots, [](const std::string& m) { return Dans(MotsDePlante, m); })) return;
    Mots plante;
    for (const std::string& m : mots)
        if (!Dans(MotsDePlante, m) && !Dans(Liaisons, m)) plante.push_back(m);
    if (!plante.empty()) cles.contenus.insert(Joint(plante));
}

}  // namespace

std::string NomSansSel(std::string_view nomPlie) {
    std::string reste;
    for (const std::string& mot : Decompose(nomPlie)) {
        if (Dans(Anions, mot) || Dans(AnionsMineraux, mot) || Qualite(mot) || Dans(Liaisons, mot) ||
            Dans(AcidesDeSel, mot) || (Cations.count(mot) && Cations.at(mot) != mot))
            continue;
        reste += (reste.empty() ? "" : " ") + mot;
    }
    return reste.empty() ? Nettoie(nomPlie) : reste;
}

namespace {

// The keys of a name as written, before their loose spelling.
ClesNom ClesEcrites(const std::string& nom) {
    ClesNom cles;
    if (nom.empty()) return cles;
    cles.propres.insert(nom);
    if (nom.ends_with(Homeopathique)) return cles;
    const std::string redresse = Redresse(nom);
    Mots mots;
    for (const std::string& m : Decompose(redresse))
        if (!Qualite(m) && !(Dans(AcidesDeSel, m) && !mots.empty() && Anion(mots.back()))) mots.push_back(m);
    cles.propres.insert(redresse);
    cles.propres.insert(Joint(mots));
    if (Dans(MotsDeSel, Joint(mots))) return {};
    // Salt words around a name: "SELS DE FER", "ALUMINIUM (SELS)".
    if (mots.size() > 1 && (mots[0] == "SELS" || mots[0] == "SEL"))
        cles.propres.insert(Joint(mots, Dans(Liaisons, mots[1]) && mots.size() > 2 ? 2 : 1));
    Sel(mots, cles);
    Plante(mots, cles);
    // The name before a bracket or a comma that only tells more of it
    // ("VIRUS RUBEOLEUX (SOUCHE WISTAR RA 27/3) ATTENUE", "VIRUS DE LA
    // FIEVRE JAUNE, SOUCHE 17D-204", "CONCENTRAT DE CHOLECALCIFEROL, FORME
    // PULVERULENTE").
    if (const size_t virgule = nom.find(", "); virgule != std::string::npos) {
        const ClesNom avant = ClesEcrites(nom.substr(0, virgule));
        for (const auto* e : {&avant.propres, &avant.contenus}) cles.contenus.insert(e->begin(), e->end());
    }
    if (const size_t ouvre = nom.find(" ("); ouvre != std::string::npos && Redresse(nom.substr(0, nom.find(')', ouvre) + 1)) == nom.substr(0, ouvre))
        cles.contenus.insert(nom.substr(0, ouvre));
    const std::string sansSel = NomSansSel(Joint(mots));
    if (sansSel != Joint(mots)) cles.contenus.insert(sansSel);
    return cles;
}

}  // namespace

ClesNom Cles(std::string_view nomPlie) {
    ClesNom cles = ClesEcrites(Nettoie(nomPlie));
    for (std::set<std::string>* e : {&cles.propres, &cles.contenus}) {
        std::set<std::string> laches;
        for (const std::string& c : *e)
            if (const std::string l = Lache(c); !l.empty() && !Dans(MotsDeSel, c)) laches.insert(l);
        *e = std::move(laches);
    }
    for (const std::string& p : cles.propres) cles.contenus.erase(p);
    return cles;
}

bool EstSaBase(std::string_view sel, std::string_view base) {
    const ClesNom s = Cles(Plie(sel)), b = Cles(Plie(base));
    return std::ranges::any_of(b.propres, [&s](const std::string& c) { return s.propres.count(c) || s.contenus.count(c); });
}

void IndexNoms::Ajoute(int code, std::string_view nom) {
    const std::string plie = Plie(nom);
    if (plie.empty()) return;
    const ClesNom cles = Cles(plie);
    for (const auto* e : {&cles.propres, &cles.contenus})
        for (const std::string& cle : *e) parCle_[cle].insert(code);
    parNomPublie_[plie].insert(code);
}

std::set<int> IndexNoms::Cherche(std::string_view nom) const {
    std::string plie = Plie(nom);
    std::set<std::string> cles = Cles(plie).propres;
    if (const auto s = Synonymes.find(plie); s != Synonymes.end()) {
        const ClesNom synonyme = Cles(s->second);
        cles.insert(synonyme.propres.begin(), synonyme.propres.end());
    }
    std::set<int> codes;
    for (const std::string& cle : cles)
        if (const auto n = parCle_.find(cle); n != parCle_.end()) codes.insert(n->second.begin(), n->second.end());
    if (!codes.empty() || cles.empty()) return codes;
    // Else the names that begin with it as whole words, a bracket excepted.
    const std::string debut = Redresse(plie);
    for (auto n = parNomPublie_.lower_bound(debut); n != parNomPublie_.end() && Commence(n->first, debut); ++n) {
        const std::string_view suite = std::string_view(n->first).substr(debut.size());
        if (suite.size() > 1 && (suite[0] == ' ' || suite[0] == '-') && suite[1] != '(')
            codes.insert(n->second.begin(), n->second.end());
    }
    return codes;
}

std::vector<std::string> IndexNoms::Proches(std::string_view nom, size_t n) const {
    const std::string plie = Plie(nom);
    std::vector<std::pair<size_t, std::string>> proches;
    for (const auto& [publie, codes] : parNomPublie_) {
        size_t meilleur = 0;
        for (const std::string& mot : Decompose(plie)) {
            if (mot.size() < 5 || Dans(Liaisons, mot) || mot == "ACIDE") continue;
            const std::string debut = mot.substr(0, std::max<size_t>(5, mot.size() - 3));
            for (const std::string& autre : Decompose(publie)) {
                if (!Commence(autre, debut) && !Contient(autre, debut)) continue;
                size_t commun = 0;
                while (commun < std::min(mot.size(), autre.size()) && mot[commun] == autre[commun]) ++commun;
                meilleur = std::max(meilleur, std::max(commun, debut.size()));
            }
        }
        if (meilleur) proches.emplace_back(meilleur, publie);
    }
    std::ranges::sort(proches, [](const auto& p, const auto& q) { return p.first != q.first ? p.first > q.first : p.second < q.second; });
    std::vector<std::string> noms;
    for (size_t i = 0; i < std::min(n, proches.size()); ++i) noms.push_back(proches[i].second);
    return noms;
}

}  // namespace vdx::import
