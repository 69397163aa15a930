#include "tools/vdx/import_libelle.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Units as a label writes them.
const std::map<std::string, std::string, std::less<>> Unites = {
    {"MILLIGRAMMES", "MG"}, {"MILLIGRAMME", "MG"},  {"MICROGRAMMES", "MCG"}, {"MICROGRAMME", "MCG"},
    {"GRAMMES", "G"},       {"GRAMME", "G"},        {"UNITES", "U"},         {"UNITE", "U"},
    {"MILLILITRES", "ML"},  {"MILLILITRE", "ML"},   {"LITRE", "L"},          {"LITRES", "L"},
    {"MG", "MG"},           {"G", "G"},             {"ML", "ML"},            {"UI", "UI"},
    {"U.I.", "UI"},         {"MUI", "MUI"},         {"M.U.I.", "MUI"},       {"%", "%"},
    {"MCG", "MCG"},         {"\xB5G", "MCG"},       {"U", "U"},              {"L", "L"},
    {"MMOL", "MMOL"},       {"KBQ", "KBQ"},         {"MBQ", "MBQ"},          {"GBQ", "GBQ"},
    {"HEURES", "H"},        {"HEURE", "H"},         {"H", "H"},
    {"DOSE", "DOSE"},       {"DOSES", "DOSES"},     {"CH", "CH"},            {"DH", "DH"}};

// Words of a form and their abbreviations; phrases first, then words. A
// word absent from both is kept as it is; an empty abbreviation drops it.
const std::vector<std::pair<std::string, std::string>> Locutions = {
    {"A LIBERATION PROLONGEE", "LP"}, {"A LIBERATION MODIFIEE", "LM"}, {"GASTRO-RESISTANT(E)", "GASTRORES"},
    {"EFFERVESCENT(E)", "EFF"},       {"A DILUER", "A DIL"},           {"A CROQUER", "A CROQ"},
    {"A SUCER", "A SUC"},             {"EN GOUTTES", "GTT"},           {"POUR USAGE DENTAIRE", "DENT"}};
const std::map<std::string, std::string, std::less<>> Abreviations = {
    {"COMPRIME", "CPR"},        {"PELLICULE", "PELL"},        {"SECABLE", "SEC"},       {"QUADRISECABLE", "QUADRISEC"},
    {"ENROBE", "ENR"},          {"ORODISPERSIBLE", "ORODISP"}, {"DISPERSIBLE", "DISP"},  {"EFFERVESCENT", "EFF"},
    {"GASTRO-RESISTANT", "GASTRORES"}, {"SOLUTION", "SOL"},   {"SUSPENSION", "SUSP"},   {"INJECTABLE", "INJ"},
    {"BUVABLE", "BUV"},         {"POUDRE", "PDR"},            {"PERFUSION", "PERF"},    {"SOLVANT", "SOLV"},
    {"CAPSULE", "CAPS"},        {"SUPPOSITOIRE", "SUPPO"},    {"POMMADE", "POMM"},      {"PULVERISATION", "PULV"},
    {"INHALATION", "INHAL"},    {"DISPOSITIF", "DISPO"},      {"TRANSDERMIQUE", "TRANSDERM"},
    {"APPLICATION", "APPLIC"},  {"CUTANEE", "CUT"},           {"NASALE", "NAS"},        {"EMULSION", "EMUL"},
    {"LYOPHILISAT", "LYOPH"},   {"GRANULES", "GRANULES"},     {"SOLUTION(S)", "SOL"},   {"NEBULISEUR", "NEBUL"},
    {"OPHTALMIQUE", "OPH"},     {"AURICULAIRE", "AURIC"},     {"BUCCALE", "BUC"},       {"VAGINAL", "VAG"},
    {"VAGINALE", "VAG"},        {"RECTALE", "RECT"},          {"SACHET", "SACH"},       {"SACHET-DOSE", "SACH"},
    {"POUR", ""},               {"EN", ""},                   {"ET", ""},               {"DE", ""},
    {"DU", ""},                 {"LA", ""},                   {"LE", ""},               {"A", ""},
    {"OU", ""},                 {"L'", ""},                   {"D'", ""}};

bool Numerique(std::string_view mot) {
    bool chiffre = false;
    for (char c : mot) {
        if (c >= '0' && c <= '9')
            chiffre = true;
        else if (c != ',' && c != '.')
            return false;
    }
    return chiffre;
}

// A unit, and each side of a unit per unit ("UNITES/ML"), abbreviated.
std::optional<std::string> Unite(std::string_view mot) {
    std::string sortie;
    for (const std::string& morceau : Decoupe(mot, '/')) {
        const auto u = Unites.find(morceau);
        if (u == Unites.end() && !Numerique(morceau)) return std::nullopt;
        sortie += (sortie.empty() ? "" : "/") + (u == Unites.end() ? morceau : u->second);
    }
    if (sortie.empty()) return std::nullopt;
    return sortie;
}

std::vector<std::string> Mots(std::string_view texte) { return Decoupe(Plie(texte), ' '); }

std::string Joint(const std::vector<std::string>& mots) {
    std::string texte;
    for (const std::string& m : mots)
        if (!m.empty()) texte += (texte.empty() ? "" : " ") + m;
    return texte;
}

// --- Packages ------------------------------------------------------------------

// The units of a package that measure rather than count, by their
// abbreviation (Unite), and how they are written.
const std::map<std::string, std::string, std::less<>> Mesures = {
    {"ML", "ml"}, {"L", "l"},   {"G", "g"},       {"MG", "mg"},   {"MCG", "\xB5g"}, {"UI", "UI"},
    {"MUI", "MUI"}, {"U", "U"}, {"MMOL", "mmol"}, {"KBQ", "kBq"}, {"MBQ", "MBq"},   {"GBQ", "GBq"}};

// Words that make one container with the word before them: "récipient(s)
// unidose(s)", "seringue(s) préremplie(s)", "stylo prérempli".
const std::set<std::string, std::less<>> Qualificatifs = {"UNIDOSE", "PREREMPLI", "PREREMPLIE", "PRE-REMPLI", "PRE-REMPLIE"};

// Lower case, as Capitale makes the letters after the first.
std::string Minuscules(std::string_view mot) { return Capitale(" " + std::string(mot)).substr(1); }

// A word without the punctuation a label sticks to it: "ml," "l-" "ml)".
std::string_view SansPonctuation(std::string_view mot) {
    while (!mot.empty() && Contient(",.;:-", mot.substr(mot.size() - 1))) mot.remove_suffix(1);
    if (mot.ends_with(')') && !Contient(mot, "(")) mot.remove_suffix(1);
    return mot;
}

// A word of a label as singular and plural: "comprimé(s)" gives "comprimé"
// and "comprimés", "sachet(s)-dose(s)" "sachet-dose" and "sachets-doses";
// another bracket ends the word ("comprimé(s)(distributeur"). A word without
// marks is a plural when there are `plusieurs` and it ends in "s" or "x"
// ("2 stylos"), and takes an "s" for its plural otherwise, but for an
// abbreviation ("kg", "cm2").
MotPluriel Accorde(std::string_view mot, bool plusieurs) {
    MotPluriel m;
    bool marque = false;
    for (size_t i = 0; i < mot.size() && mot[i] != '('; ++i) {
        m.singulier += mot[i];
        m.pluriel += mot[i];
        if (const std::string_view suite = mot.substr(i + 1); suite.starts_with("(s)") || suite.starts_with("(x)")) {
            m.pluriel += suite[1];
            marque = true;
            i += 3;
        }
    }
    if (!marque && !m.singulier.empty()) {
        const char derniere = m.singulier.back();
        const bool abreviation = m.singulier.size() <= 2 || m.singulier.find_first_of("0123456789") != std::string::npos;
        if (plusieurs && (derniere == 's' || derniere == 'x'))
            m.singulier.pop_back();
        else if (derniere != 's' && derniere != 'x' && derniere != 'z' && !abreviation)
            m.pluriel += 's';
    }
    return {Minuscules(m.singulier), Minuscules(m.pluriel)};
}

// The symbol of a unit that measures: "ml" for "ml", "mL" or "millilitres",
// "U" for "unité(s)".
std::optional<std::string> Mesure(std::string_view mot) {
    const auto u = Unite(Plie(Accorde(mot, false).singulier));
    const auto m = u ? Mesures.find(*u) : Mesures.end();
    if (m == Mesures.end()) return std::nullopt;
    return m->second;
}

// A word that can name a container or a unit: more than one letter ("à" is
// not one), or a measure ("g").
bool Nom(std::string_view mot) {
    const std::string plie = Plie(mot);
    return (plie.size() > 1 && plie[0] >= 'A' && plie[0] <= 'Z') || Mesure(mot);
}

// A number of a label, with a decimal comma.
std::string Decimal(double valeur) {
    std::string texte = TexteNombre(valeur);
    std::replace(texte.begin(), texte.end(), '.', ',');
    return texte;
}

}  // namespace

std::optional<Conditionnement> LitConditionnement(std::string_view presentation) {
    std::vector<std::string> mots = Decoupe(presentation.substr(0, presentation.find(" - ")), ' ');
    for (std::string& mot : mots) mot = SansPonctuation(mot);
    Conditionnement c;
    size_t i = 0;
    const bool compte = !mots.empty() && Numerique(mots[0]);
    if (compte) c.contenants = Nombre(mots[i++]).value_or(0);
    if (i >= mots.size() || !Nom(mots[i]) || Mesure(mots[i]) || c.contenants <= 0) return std::nullopt;
    const bool plusieurs = c.contenants > 1;
    c.contenant = Accorde(mots[i], plusieurs);
    if (i + 1 < mots.size() && Qualificatifs.count(Plie(Accorde(mots[i + 1], plusieurs).singulier))) {
        const MotPluriel qualificatif = Accorde(mots[++i], plusieurs);
        c.contenant.singulier += " " + qualificatif.singulier;
        c.contenant.pluriel += " " + qualificatif.pluriel;
    }
    for (size_t j = i + 1; j + 1 < mots.size(); ++j) {
        if (Plie(mots[j]) != "DE" || !Numerique(mots[j + 1])) continue;
        c.quantite = Nombre(mots[j + 1]).value_or(0);
        const std::string_view unite = j + 2 < mots.size() ? std::string_view(mots[j + 2]) : "";
        // No unit, or a concentration ("de 370 MBq/ml").
        if (!Nom(unite) || Contient(unite, "/") || c.quantite <= 0) return std::nullopt;
        const auto symbole = Mesure(unite);
        c.mesure = symbole.has_value();
        c.unite = symbole ? MotPluriel{*symbole, *symbole} : Accorde(unite, c.quantite > 1);
        return c;
    }
    if (!compte) return std::nullopt;
    c.quantite = 1;
    c.unite = c.contenant;
    return c;
}

std::string NomDosage(std::string_view denomination) {
    // The form follows the first comma and blank; a comma of a dosage has none.
    const std::string_view nom = denomination.substr(0, denomination.find(", "));
    // A unit joins the number it follows: "1000 mg" gives "1000MG", and
    // "500 mg/62,5 mg" "500MG/62,5MG".
    std::vector<std::string> sortie;
    for (const std::string& mot : Mots(nom)) {
        const auto unite = Unite(mot);
        if (unite && !Numerique(mot) && !sortie.empty() && std::isdigit(static_cast<unsigned char>(sortie.back().back())))
            sortie.back() += *unite;
        else
            sortie.push_back(mot);
    }
    return Joint(sortie);
}

std::string AbregeForme(std::string_view forme) {
    std::string texte = Plie(forme);
    for (const auto& [locution, abreviation] : Locutions)
        for (size_t p; (p = texte.find(locution)) != std::string::npos;) texte.replace(p, locution.size(), abreviation);
    std::vector<std::string> mots;
    for (std::string& mot : Decoupe(texte, ' ')) {
        std::string sansPluriel = mot;
        for (const char* marque : {"(S)", "(E)", "(X)", "(SE)"})
            if (sansPluriel.size() > 4 && sansPluriel.ends_with(marque))
                sansPluriel.resize(sansPluriel.size() - std::string_view(marque).size());
        const auto a = Abreviations.find(sansPluriel);
        mots.push_back(a == Abreviations.end() ? sansPluriel : a->second);
    }
    return Joint(mots);
}

std::string Boite(std::string_view presentation) {
    const auto c = LitConditionnement(presentation);
    if (!c) return "";
    if (!c->mesure) return "B/" + Decimal(c->contenants * c->quantite);
    const std::string volume = Decimal(c->quantite) + *Unite(Plie(c->unite.singulier));
    return c->contenants == 1 ? volume : Decimal(c->contenants) + "X" + volume;
}

namespace {

// A name without its words between brackets: "MORPHINE (CHLORHYDRATE DE)
// LAVOISIER 10MG/ML" gives "MORPHINE LAVOISIER 10MG/ML". An unclosed
// bracket stays.
std::string SansParentheses(std::string_view nom) {
    std::string sortie;
    for (size_t i = 0; i < nom.size();) {
        const size_t fin = nom[i] == '(' ? nom.find(')', i) : std::string_view::npos;
        if (fin == std::string_view::npos) {
            sortie += nom[i++];
            continue;
        }
        i = fin + 1;
    }
    return Joint(Mots(sortie));
}

}  // namespace

std::string LibelleProduit(std::string_view denomination, std::string_view forme, std::string_view presentation) {
    const std::string boite = Boite(presentation);
    const std::string formeAbregee = AbregeForme(forme);
    std::string nomDosage = NomDosage(denomination);
    // What brackets say goes first when the label lacks room.
    if (Joint({nomDosage, formeAbregee, boite}).size() > LongueurLibelle)
        if (std::string court = SansParentheses(nomDosage); !court.empty()) nomDosage = std::move(court);
    std::vector<std::string> abrege = Decoupe(formeAbregee, ' ');
    // The form loses its later words before the name is cut, down to one.
    while (abrege.size() > 1 && nomDosage.size() + Joint(abrege).size() + boite.size() + 2 > LongueurLibelle)
        abrege.pop_back();
    const std::string suffixe = Joint({Joint(abrege), boite});
    if (suffixe.size() + 1 >= LongueurLibelle / 2 && Joint({nomDosage, suffixe}).size() > LongueurLibelle)
        return Coupe(Joint({Coupe(nomDosage, LongueurLibelle / 2), suffixe}), LongueurLibelle);
    const size_t placeNom = LongueurLibelle - (suffixe.empty() ? 0 : suffixe.size() + 1);
    if (nomDosage.size() <= placeNom) return Joint({nomDosage, suffixe});
    // The name is cut before its dosage: the dosage stays whole when it can.
    const size_t chiffre = nomDosage.find_first_of("0123456789");
    const size_t debutDosage = chiffre == std::string::npos ? std::string::npos : nomDosage.rfind(' ', chiffre);
    if (debutDosage != std::string::npos && nomDosage.size() - debutDosage + 8 <= placeNom) {
        const std::string dosage = nomDosage.substr(debutDosage + 1);
        return Joint({Coupe(nomDosage.substr(0, debutDosage), placeNom - dosage.size() - 1), dosage, suffixe});
    }
    return Joint({Coupe(nomDosage, placeNom), suffixe});
}

std::string FamilleForme(std::string_view forme) {
    const std::string f = Plie(forme);
    const bool prolonge = Contient(f, "LIBERATION PROLONGEE") || Contient(f, "LIBERATION MODIFIEE");
    const bool gastro = Contient(f, "GASTRO-RESISTANT");
    if (Commence(f, "COMPRIME")) {
        if (prolonge) return "CL";
        if (gastro) return "CG";
        if (Contient(f, "EFFERVESCENT")) return "CE";
        if (Contient(f, "ORODISPERSIBLE")) return "CO";
        if (Contient(f, "A CROQUER") || Contient(f, "A SUCER")) return "CS";
        if (Contient(f, "DISPERSIBLE")) return "CD";
        return "CP";
    }
    if (Commence(f, "GELULE")) return prolonge ? "GL" : gastro ? "GG" : "GE";
    if (Commence(f, "CAPSULE")) return "KA";
    if (prolonge) return "LP";
    if (Contient(f, "INJECTABLE") || Contient(f, "PERFUSION")) return "IN";
    if (Contient(f, "BUVABLE") || Commence(f, "SIROP")) return "SB";
    if (Contient(f, "COLLYRE") || Contient(f, "OPHTALMIQUE")) return "OP";
    if (Commence(f, "SUPPOSITOIRE")) return "SU";
    if (Contient(f, "INHALATION")) return "IH";
    if (Contient(f, "TRANSDERMIQUE")) return "PT";
    if (Commence(f, "CREME") || Commence(f, "POMMADE") || Commence(f, "GEL") || Contient(f, "APPLICATION"))
        return "PC";
    if (Commence(f, "GRANUL")) return "GR";
    if (Commence(f, "POUDRE")) return "PO";
    return "XX";
}

}  // namespace vdx::import
