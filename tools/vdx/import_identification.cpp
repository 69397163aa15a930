// Identification of the presentations: VDXIDPRO (name, dosage, form and
// package), the forms (VDXIDFOR, VDXIDFOP) and the words of the packages,
// forms of presentation (VDXIDPRE), units of presentation (VDXIDUPR),
// containers (VDXIDCON) and units of take (VDXPUPRI).
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_codes.h"
#include "tools/vdx/import_libelle.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// --- Forms -------------------------------------------------------------------

// Form codes: the family, then the rank of the form within it in the order
// of the folded forms.
std::map<std::string, std::string> CodesFormes(const Bdpm& bdpm) {
    static constexpr char Rangs[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    std::set<std::string> formes;
    for (const Specialite& s : bdpm.specialites) formes.insert(Plie(s.forme));
    std::map<std::string, int> parFamille;
    std::map<std::string, std::string> codes;
    for (const std::string& f : formes) {
        const int rang = parFamille[FamilleForme(f)]++;
        codes[f] = FamilleForme(f) + Rangs[rang / 36 % 36] + Rangs[rang % 36];
    }
    return codes;
}

// The name and the dosage of a denomination: the dosage begins at the first
// word that begins with a digit.
std::pair<std::string, std::string> NomEtDosage(std::string_view denomination) {
    const std::string nom = Nettoie(denomination.substr(0, denomination.find(", ")));
    size_t debut = 0;
    for (size_t i = 0; i < nom.size(); ++i)
        if (std::isdigit(static_cast<unsigned char>(nom[i])) && (i == 0 || nom[i - 1] == ' ')) {
            debut = i;
            break;
        }
    if (debut == 0) return {nom, ""};
    return {Nettoie(nom.substr(0, debut)), nom.substr(debut)};
}

// --- Packages ----------------------------------------------------------------

// The fold under which spellings of a word are one word: "seringue
// pré-remplie" and "seringue préremplie", "boîte" and "boite".
std::string Pli(const MotPluriel& mot) {
    std::string pli = Plie(mot.singulier);
    std::erase(pli, '-');
    return pli;
}

// Containers a dose is taken by when they hold a measure, by their fold,
// beside those said "unidose": a prescriber writes "1 ampoule" rather than
// "10 ml", so "20 ampoule(s) de 10 ml" holds 20 ampoules, while
// "1 flacon(s) de 100 ml" holds 100 ml.
const std::set<std::string, std::less<>> ContenantsUnidoses = {"AMPOULE", "SACHET", "SACHETDOSE", "SERINGUE PREREMPLIE",
                                                               "STYLO PREREMPLI"};
bool Unidose(const MotPluriel& contenant) {
    const std::string pli = Pli(contenant);
    return ContenantsUnidoses.count(pli) > 0 || pli.ends_with(" UNIDOSE");
}

// Rounding codes of a take, as ArrondiDose reads them.
constexpr int ArrondiUnite = 1, ArrondiMoitie = 2, ArrondiQuart = 4;

// The rounding code of a take when the form names the unit taken: halves of
// a scored tablet ("comprimé sécable"), quarters of one scored in four,
// whole tablets and capsules otherwise; none for other forms and units.
int Secabilite(std::string_view forme, const MotPluriel& prise) {
    const std::string f = Plie(forme);
    if (!Commence(f + " ", Plie(prise.singulier) + " ")) return 0;
    if (Contient(f, "QUADRISECABLE")) return ArrondiQuart;
    if (Contient(f, "SECABLE")) return ArrondiMoitie;
    return Commence(f, "COMPRIME") || Commence(f, "GELULE") || Commence(f, "CAPSULE") ? ArrondiUnite : 0;
}

// A package as VDXIDPRO tells it, its words not yet coded. Its unit of
// take is its unit of presentation, in a ratio of 1: the posology reads its
// contents as nombre × quantite units of take. The flag of whole takes
// (PrisesEntieres) stays 0: the rounding code says it.
struct Contenu {
    MotPluriel presentation;  // what the package counts: "comprimé", "flacon"
    double nombre = 0;        // how many of them
    MotPluriel unite;         // of presentation and of take: "comprimé", "ml"
    double quantite = 0;      // of that unit in each one
    MotPluriel contenant;
    int secabilite = 0;
};

// The tables of the words of a package.
const std::pair<const char*, MotPluriel Contenu::*> TablesDesMots[] = {{"VDXIDPRE", &Contenu::presentation},
                                                                      {"VDXIDUPR", &Contenu::unite},
                                                                      {"VDXIDCON", &Contenu::contenant},
                                                                      {"VDXPUPRI", &Contenu::unite}};

Contenu Decrit(Conditionnement c, std::string_view forme) {
    // A single-dose container is counted as a tablet is, one unit of its own,
    // so that the contents stay a whole number; its measure stays in the
    // label of the product.
    if (c.mesure && Unidose(c.contenant)) {
        c.unite = c.contenant;
        c.quantite = 1;
        c.mesure = false;
    }
    Contenu u;
    u.contenant = c.contenant;
    u.unite = c.unite;
    if (c.mesure) {
        // Containers of a measure, taken by the measure: "1 flacon(s) de
        // 100 ml" is one flacon of 100 ml, 100 ml.
        u.presentation = c.contenant;
        u.nombre = c.contenants;
        u.quantite = c.quantite;
        return u;
    }
    // Units counted one by one: "2 plaquette(s) de 20 comprimé(s)" is 40 comprimés.
    u.presentation = c.unite;
    u.nombre = c.contenants * c.quantite;
    u.quantite = 1;
    u.secabilite = Secabilite(forme, c.unite);
    return u;
}

// The words of the packages, one code a fold, numbered in the order of the
// folds over every presentation so that a word keeps its code whatever the
// filter. A fold written several ways is written the most frequent way, the
// first in byte order between equals.
class Vocabulaire {
public:
    void Ajoute(const MotPluriel& mot) { ++mots_[Pli(mot)].graphies[mot]; }
    void Numerote() {
        int code = 0;
        for (auto& m : mots_) {
            m.second.code = ++code;
            m.second.mot = std::max_element(m.second.graphies.begin(), m.second.graphies.end(),
                                            [](const auto& a, const auto& b) { return a.second < b.second; })->first;
        }
    }
    int Code(const MotPluriel& mot) const { return mots_.at(Pli(mot)).code; }
    void Ecrit(const char* table, const MotPluriel& mot, Sortie& sortie) const {
        const Entree& e = mots_.at(Pli(mot));
        sortie.Ajoute(table, {{"Code", std::to_string(e.code)}, {"Libelle", e.mot.singulier}, {"LibellePluriel", e.mot.pluriel}});
    }

private:
    struct Entree {
        std::map<MotPluriel, int> graphies;  // how often each spelling
        int code = 0;
        MotPluriel mot;
    };
    std::map<std::string, Entree> mots_;
};

// The dosage of the one active substance of a speciality and what it is
// given for, folded ("UN COMPRIME"); its fraction of the base when it has one.
struct DosageUnique {
    double valeur = 0;
    MotPluriel unite;
    std::string reference;
};
std::map<std::string, DosageUnique> DosagesUniques(const Bdpm& bdpm) {
    std::map<std::string, std::map<std::string, const Composant*>> substances;  // by CIS, by link
    for (const Composant& c : bdpm.composants) {
        const Composant*& retenu = substances[c.cis][c.lien];
        if (!retenu || c.nature == "FT") retenu = &c;
    }
    std::map<std::string, DosageUnique> dosages;
    for (const auto& [cis, parLien] : substances) {
        if (parLien.size() != 1) continue;
        const Composant& c = *parLien.begin()->second;
        const std::string dosage = Nettoie(c.dosage);
        const size_t blanc = dosage.rfind(' ');
        if (blanc == std::string::npos) continue;
        const auto valeur = Nombre(dosage.substr(0, blanc));
        const auto unite = UniteDeDosage(Plie(dosage.substr(blanc + 1)));
        if (!valeur || *valeur <= 0 || !unite) continue;
        dosages[cis] = {*valeur, {unite->singulier, unite->pluriel}, Plie(c.reference)};
    }
    return dosages;
}

// The dosage's unit as a second unit of take, when the dosage is given for
// one unit of take ("500 mg" for "un comprimé"): a package holds its count of
// units times the dosage.
std::optional<DosageUnique> SecondeUnite(const std::map<std::string, DosageUnique>& dosages, const std::string& cis,
                                         const std::optional<Contenu>& contenu) {
    const auto d = dosages.find(cis);
    if (!contenu || contenu->quantite != 1 || d == dosages.end()) return std::nullopt;
    const std::string prise = Plie(contenu->unite.singulier);
    if (d->second.reference != "UN " + prise && d->second.reference != "UNE " + prise) return std::nullopt;
    return d->second;
}

// A ratio as a 32-bit float reads it back.
std::string TexteRapport(double rapport) {
    char tampon[32];
    std::snprintf(tampon, sizeof tampon, "%.9g", static_cast<float>(rapport));
    return tampon;
}

// The columns of VDXIDPRO that describe the package, zeros without one.
Valeurs ColonnesContenu(const std::optional<Contenu>& contenu, const Vocabulaire& mots) {
    const auto code = [&](MotPluriel Contenu::*mot) { return std::to_string(contenu ? mots.Code((*contenu).*mot) : 0); };
    const Contenu c = contenu.value_or(Contenu{});
    return {{"CodePresentation", code(&Contenu::presentation)},
            {"QuantitePresentation", TexteNombre(c.nombre)},
            {"CodeUnitePresentation", code(&Contenu::unite)},
            {"QuantiteUnitePresentation", TexteNombre(c.quantite)},
            {"CodeContenant", code(&Contenu::contenant)},
            {"CodeUnitePrise", code(&Contenu::unite)},
            {"AvecContenance", contenu ? "1" : "0"},
            {"Rapport", contenu ? "1" : "0"},
            {"Secabilite", std::to_string(c.secabilite)}};
}

// The columns of the second unit of take, zeros without one.
Valeurs ColonnesSecondeUnite(const std::optional<DosageUnique>& seconde, const Vocabulaire& mots) {
    return {{"CodeUnitePrise2", seconde ? std::to_string(mots.Code(seconde->unite)) : "0"},
            {"AvecContenance2", seconde ? "1" : "0"},
            {"Rapport2", seconde ? TexteRapport(1 / seconde->valeur) : "0"}};
}

}  // namespace

void EcritIdentification(const Bdpm& bdpm, const Selection& selection,
                         const std::map<std::string, const Specialite*>& specialites, Sortie& sortie) {
    const std::map<std::string, std::string> formes = CodesFormes(bdpm);
    // The packages of every presentation, by rank, and their words.
    std::vector<std::optional<Contenu>> contenus;
    std::vector<std::optional<DosageUnique>> secondes;
    const std::map<std::string, DosageUnique> dosages = DosagesUniques(bdpm);
    Vocabulaire mots;
    for (const Presentation& p : bdpm.presentations) {
        const auto s = specialites.find(p.cis);
        const auto c = s == specialites.end() ? std::nullopt : LitConditionnement(p.libelle);
        contenus.push_back(c ? std::optional(Decrit(*c, s->second->forme)) : std::nullopt);
        secondes.push_back(SecondeUnite(dosages, p.cis, contenus.back()));
        if (contenus.back())
            for (const auto& tableMot : TablesDesMots) mots.Ajoute((*contenus.back()).*tableMot.second);
        if (secondes.back()) mots.Ajoute(secondes.back()->unite);
    }
    mots.Numerote();

    std::set<std::string> formesEcrites;
    for (size_t i = 0; i < bdpm.presentations.size(); ++i) {
        const Presentation& p = bdpm.presentations[i];
        const auto s = specialites.find(p.cis);
        if (!selection.specialites.count(p.cis) || s == specialites.end()) continue;
        const auto [nom, dosage] = NomEtDosage(s->second->denomination);
        const std::string& forme = formes.at(Plie(s->second->forme));
        Valeurs produit = {{"CodeCIP", p.cip7}, {"Denomination", nom}, {"Dosage", dosage}, {"CodeForme", forme}};
        for (const Valeurs& colonnes : {ColonnesContenu(contenus[i], mots), ColonnesSecondeUnite(secondes[i], mots)})
            produit.insert(produit.end(), colonnes.begin(), colonnes.end());
        sortie.Ajoute("VDXIDPRO", produit);
        if (contenus[i])
            for (const auto& [table, mot] : TablesDesMots) mots.Ecrit(table, (*contenus[i]).*mot, sortie);
        if (secondes[i]) mots.Ecrit("VDXPUPRI", secondes[i]->unite, sortie);
        sortie.Ajoute("VDXIDFOP", {{"CodeForme", forme}, {"CodeCIP", p.cip7}});
        if (formesEcrites.insert(forme).second)
            sortie.Ajoute("VDXIDFOR", {{"CodeForme", forme}, {"Libelle", s->second->forme}, {"LibelleCle", Plie(s->second->forme)}});
    }
}

}  // namespace vdx::import
