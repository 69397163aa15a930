// Products and what describes them beside their composition: VDXPRO and
// VDXPROA, laboratories, codes, rates, lists, routes and generic groups
// (the identification is import_identification.cpp). VDXVPRO and VDXLABP
// are filed by the build from VDXPRO.
#include <algorithm>
#include <cstdio>

#include "documents/fiche_produit.h"
#include "session/session.h"
#include "store/layouts/produits.h"
#include "store/layouts/reglementaire.h"
#include "tools/vdx/import_base.h"
#include "tools/vdx/import_codes.h"
#include "tools/vdx/import_libelle.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// Category of every product of the medicine database: a human medicine.
constexpr char RubriqueMedicament[] = "10";
// The character before the date of a stopped product.
constexpr char MarqueSuppression[] = "A";
// CodeStatut: a national authorisation, a European one.
constexpr int StatutAMM = 1, StatutAMMEuropeenne = 3;

// A generic group makes the generics and the reference product.
int DrapeauxDuGroupe(int type) {
    constexpr int Generique = 2, Referent = 4;
    switch (type) {
        case 0: return Referent;
        case 1: case 2: case 4: return Generique;
        default: return 0;
    }
}
constexpr int DrapeauHospitalier = 8;

bool Arretee(const Presentation& p) {
    const std::string etat = Plie(p.etat), statut = Plie(p.statut);
    return Contient(etat, "ARRET") || Contient(statut, "ABROGEE");
}

// The chapter of the further texts on the conditions of dispensing, and
// the chapter code of the authorisation's date.
constexpr int ChapitreDelivrance = 11;
constexpr char CodeChapitreAMM[] = "00";
std::string ChampChapitre(const char* nature, int chapitre) { return nature + std::to_string(chapitre); }

struct Contexte {
    std::map<std::string, const Specialite*> specialites;
    std::map<std::string, std::vector<std::string>> conditions;
    std::map<std::string, int> drapeaux;
    std::map<std::string, std::string> laboratoires;  // holder to code
};

Contexte Prepare(const Bdpm& bdpm) {
    Contexte c;
    std::set<std::string> titulaires;
    for (const Specialite& s : bdpm.specialites) {
        c.specialites.emplace(s.cis, &s);
        if (!s.titulaires.empty()) titulaires.insert(s.titulaires.front());
    }
    c.laboratoires = CodesLaboratoires(titulaires);
    for (const Condition& cond : bdpm.conditions) c.conditions[cond.cis].push_back(cond.texte);
    // In one order whatever the order of the file's lines.
    for (auto& [cis, textes] : c.conditions) std::ranges::sort(textes);
    for (const MembreGroupe& m : bdpm.groupes) c.drapeaux[m.cis] |= DrapeauxDuGroupe(m.type);
    return c;
}

void EcritProduit(const Presentation& p, const Specialite& s, const Contexte& c, Sortie& sortie) {
    const auto conditions = c.conditions.find(p.cis);
    const Reglementation r = Reglemente(conditions == c.conditions.end() ? std::vector<std::string>{} : conditions->second);
    const auto drapeaux = c.drapeaux.find(p.cis);
    const int bits = (drapeaux == c.drapeaux.end() ? 0 : drapeaux->second) | (r.hospitalier ? DrapeauHospitalier : 0);
    const std::string labo = s.titulaires.empty() ? "" : c.laboratoires.at(s.titulaires.front());
    const auto taux = TauxRemboursement(p.taux);
    // Prices in cents on seven digits, zeros when none.
    const auto centimes = [](const std::string& prix) { return Chiffres(Centimes(prix).value_or(0), 7); };
    const auto date = DateChiffres(p.date);
    sortie.Ajoute("VDXPRO", {{"CodeCIP", p.cip7},
                             {"Libelle", LibelleProduit(s.denomination, s.forme, p.libelle)},
                             {"CodeLaboratoire", labo},
                             {"CodeTVA", TvaDe(taux.has_value()).code},
                             {"DonneeEco1", centimes(p.honoraire)},
                             {"DonneeEco2", centimes(p.prix)},
                             {"CodeTableau", r.codeTableau},
                             {"CodeRubrique", RubriqueMedicament},
                             {"CodeTSS", taux ? taux->code : ""},
                             {"DonneeEco3", centimes(p.prixHonoraire)},
                             {"LibelleEco", Coupe(TexteSansBalises(p.indications), VDXPRO::LibelleEco.capacite())},
                             {"Laboratoire", labo},
                             {"Drapeaux", std::to_string(bits)},
                             {"Suppression", Arretee(p) ? MarqueSuppression + date.value_or("") : ""}});
    std::vector<int> prescriptions(r.prescriptions.begin(), r.prescriptions.end());
    prescriptions.resize(3, 0);
    sortie.Ajoute("VDXPROA", {{"CodeCIP", p.cip7},
                              {"GenCode", p.cip13},
                              {"CodeStatut", std::to_string(Contient(Plie(s.procedure), "CENTRALISEE") ? StatutAMMEuropeenne
                                                                                                      : StatutAMM)},
                              {"TexteStatut1", Coupe(s.statut, VDXPROA::TexteStatut1.capacite())},
                              {"Prescription1", std::to_string(prescriptions[0])},
                              {"Prescription2", std::to_string(prescriptions[1])},
                              {"Prescription3", std::to_string(prescriptions[2])}});
    if (p.cip13.size() == 13) sortie.Ajoute("VDXCIP13", {{"CodeCIP", p.cip7}, {"CIP13", p.cip13}});
    sortie.Ajoute("VDXYCSCP", {{"CodeCIS", p.cis}, {"CodeCIP", p.cip7}});
    // The date of the authorisation, chapter "00", year first.
    if (const auto amm = DateChiffres(s.dateAMM))
        sortie.Ajoute("VDXVAMDT", {{"CodeCIP", p.cip7},
                                   {"CodeChapitre", CodeChapitreAMM},
                                   {"DateChapitre", amm->substr(4, 4) + "/" + amm->substr(2, 2) + "/" + amm->substr(0, 2)}});
    // The conditions of prescription and dispensing, as the chapter of the
    // further texts that tells them.
    if (conditions != c.conditions.end() && !conditions->second.empty()) {
        std::string texte;
        for (const std::string& condition : conditions->second) texte += (texte.empty() ? "" : " - ") + condition;
        sortie.Ajoute("VDXVAMST", {{"CodeCIP", p.cip7}, {ChampChapitre("Texte", ChapitreDelivrance), texte},
                                   {ChampChapitre("Rtf", ChapitreDelivrance), RtfDe(texte)}});
    }
    if (!labo.empty()) sortie.Ajoute("VDXLAB", {{"CodeLaboratoire", labo}, {"Libelle", s.titulaires.front()}});
}

void EcritCodes(Sortie& sortie) {
    for (const Taux& t : TousLesTaux()) sortie.Ajoute("VDXTSS", {{"Code", t.code}, {"Taux", TexteNombre(t.taux)}});
    for (const Taux& t : ToutesLesTva()) sortie.Ajoute("VDXTVA", {{"Code", t.code}, {"Taux", TexteNombre(t.taux)}});
    for (const auto& [code, libelle] : Listes()) sortie.Ajoute("VDXTAB", {{"Code", code}, {"Libelle", libelle}});
    for (const PrescriptionRestreinte& p : PrescriptionsRestreintes())
        sortie.Ajoute("VDXPRESR", {{"Code", std::to_string(p.code)}, {"Libelle", p.libelle}, {"Detail", p.detail}});
}

}  // namespace

// --- The base's identity ---------------------------------------------------

std::string DateExtrait(const Bdpm& bdpm) {
    std::string plusTard;
    for (const Presentation& p : bdpm.presentations)
        if (const auto d = DateChiffres(p.date)) plusTard = std::max(plusTard, d->substr(4, 4) + d->substr(2, 2) + d->substr(0, 2));
    return plusTard;
}

namespace {

void EcritIdentite(const Bdpm& bdpm, Sortie& sortie) {
    const std::string date = DateExtrait(bdpm);
    std::string libelle = Texte("Source : Base de données publique des médicaments");
    std::string jour;
    if (date.size() == 8) {
        if (const std::string mois = MoisEnLettres(std::stoi(date.substr(4, 2)), date.substr(0, 4)); !mois.empty())
            libelle += ", " + mois;
        jour = DateChiffresJourMoisAn(date);
    }
    const auto identite = [&sortie](int32_t numero, const std::string& texte) {
        sortie.Ajoute("VDXDAT", {{"Numero", std::to_string(numero)}, {"Texte", texte}});
    };
    identite(VDXDAT::Version, libelle);
    identite(VDXDAT::Date, jour);
    identite(VDXDAT::Monnaie, "EUR");
    // The sources are laid out for this library's version of the files.
    identite(VDXDAT::VersionFichiers, VersionLibrairie);
}

// --- Routes ----------------------------------------------------------------

// Route codes by folded name, those the table lacks numbered after it.
std::map<std::string, std::string> CodesVoies(const Bdpm& bdpm) {
    std::set<std::string> inconnues;
    std::map<std::string, std::string> codes;
    for (const Specialite& s : bdpm.specialites)
        for (const std::string& v : s.voies) {
            const std::string plie = Plie(v);
            if (auto code = CodeVoie(plie))
                codes[plie] = *code;
            else
                inconnues.insert(plie);
        }
    int rang = 0;
    for (const std::string& v : inconnues) codes[v] = "C" + Chiffres(++rang, 2);
    return codes;
}

void EcritVoies(const Bdpm& bdpm, const Selection& selection, Sortie& sortie) {
    const std::map<std::string, std::string> codes = CodesVoies(bdpm);
    std::map<std::string, std::string> libelles;  // by code, the first spelling in name order
    std::map<std::string, std::vector<std::string>> parSpecialite;
    for (const Specialite& s : bdpm.specialites) {
        if (!selection.specialites.count(s.cis)) continue;
        for (const std::string& v : s.voies) {
            const std::string& code = codes.at(Plie(v));
            parSpecialite[s.cis].push_back(code);
            auto& l = libelles[code];
            if (l.empty() || v < l) l = v;
        }
    }
    for (const auto& [code, libelle] : GroupesVoies()) libelles[code] = libelle;
    for (const auto& [code, libelle] : libelles) sortie.Ajoute("VDXIDVOI", {{"CodeVoie", code}, {"Libelle", libelle}});
    for (const Presentation& p : bdpm.presentations) {
        const auto voies = parSpecialite.find(p.cis);
        if (voies == parSpecialite.end()) continue;
        for (const std::string& code : voies->second) sortie.Ajoute("VDXIDPVO", {{"CodeCIP", p.cip7}, {"CodeVoie", code}});
    }
}

// --- Generic groups ---------------------------------------------------------

// Class codes of one width, so that no class code begins another and the
// path of a class (its codes' prefixes) never takes a sibling for a parent.
std::string CodeNumerote(char lettre, int numero) {
    char code[8];
    std::snprintf(code, sizeof code, "%c%05d", lettre, numero);
    return code;
}

std::string CodeGroupe(int groupe) { return CodeNumerote('G', groupe); }

// The label key of a class keeps LongueurCleLibelle folded characters and
// has no duplicates: a key already taken gets its last character raised,
// or a point behind a shorter one, as product labels are made unique.
std::string CleClasseUnique(std::string cle, std::set<std::string>& prises) {
    for (;;) {
        const std::string prise = cle.substr(0, VDXCLA::LongueurCleLibelle);
        if (prises.insert(prise).second) return cle;
        if (prise.size() == VDXCLA::LongueurCleLibelle)
            cle[VDXCLA::LongueurCleLibelle - 1] = static_cast<char>(cle[VDXCLA::LongueurCleLibelle - 1] + 1);
        else
            cle.insert(prise.size(), ".");
    }
}

// The names of the active substances of each speciality, the fraction
// that expresses a salt in its place, sorted: what makes its substance
// class.
std::map<std::string, std::set<std::string>> SubstancesActives(const Bdpm& bdpm) {
    std::map<std::string, std::map<std::string, const Composant*>> parLien;
    for (const Composant& c : bdpm.composants) {
        if (c.nature != "SA" && c.nature != "FT") continue;
        const Composant*& retenu = parLien[c.cis][c.lien];
        if (!retenu || c.nature == "FT") retenu = &c;
    }
    std::map<std::string, std::set<std::string>> substances;
    for (const auto& [cis, liens] : parLien)
        for (const auto& lien : liens) substances[cis].insert(Nettoie(lien.second->nom));
    return substances;
}

std::string CodeClasseSubstances(int rang) { return CodeNumerote('S', rang); }
std::string LibelleSubstances(const std::set<std::string>& noms) {
    std::string libelle;
    for (const std::string& nom : noms) libelle += (libelle.empty() ? "" : " + ") + nom;
    return libelle;
}

void EcritGroupes(const Bdpm& bdpm, const Selection& selection, Sortie& sortie) {
    std::map<std::string, std::vector<std::string>> presentations;
    for (const Presentation& p : bdpm.presentations) presentations[p.cis].push_back(p.cip7);
    std::map<int, std::string> libelles;
    for (const MembreGroupe& m : bdpm.groupes) {
        if (!selection.specialites.count(m.cis)) continue;
        libelles.emplace(m.groupe, m.libelle);
        for (const std::string& cip : presentations[m.cis])
            sortie.Ajoute("VDXCLAP", {{"CodeClasse", CodeGroupe(m.groupe)}, {"CodeCIP", cip}});
    }
    std::set<std::string> cles;
    for (const auto& [groupe, libelle] : libelles)
        sortie.Ajoute("VDXCLA", {{"CodeClasse", CodeGroupe(groupe)},
                                 {"Libelle", libelle},
                                 {"LibelleCle", CleClasseUnique(Plie(libelle), cles)}});

    // A class for each set of active substances, numbered over the whole
    // database in the order of the folded labels, so that a code stays
    // whatever an import selects; filed with the selected products.
    std::map<std::string, std::set<std::string>> substances = SubstancesActives(bdpm);
    std::map<std::string, std::string> libellesSubstances;  // by fold
    for (const auto& [cis, noms] : substances) {
        const std::string libelle = LibelleSubstances(noms);
        libellesSubstances.emplace(Plie(libelle), libelle);
    }
    std::map<std::string, int> rangs;
    for (const auto& [pli, libelle] : libellesSubstances) rangs.emplace(pli, static_cast<int>(rangs.size()) + 1);
    std::set<std::string> ecrites;
    for (const auto& [cis, noms] : substances) {
        if (!selection.specialites.count(cis)) continue;
        const std::string libelle = LibelleSubstances(noms);
        const std::string code = CodeClasseSubstances(rangs.at(Plie(libelle)));
        for (const std::string& cip : presentations[cis]) sortie.Ajoute("VDXCLAP", {{"CodeClasse", code}, {"CodeCIP", cip}});
        if (ecrites.insert(code).second)
            sortie.Ajoute("VDXCLA", {{"CodeClasse", code},
                                     {"Libelle", Coupe(libelle, VDXCLA::Libelle.capacite())},
                                     {"LibelleCle", CleClasseUnique(Coupe(Plie(libelle), VDXCLA::LibelleCle.capacite()), cles)}});
    }
}

}  // namespace

void EcritProduits(const Bdpm& bdpm, const Selection& selection, Sortie& sortie, Journal& journal) {
    const Contexte c = Prepare(bdpm);
    for (const Presentation& p : bdpm.presentations) {
        const auto s = c.specialites.find(p.cis);
        if (s == c.specialites.end()) {
            journal.Rejette("CIS_CIP_bdpm.txt", p.ligne, "presentation of a CIS that CIS_bdpm.txt lacks");
            continue;
        }
        if (selection.specialites.count(p.cis)) EcritProduit(p, *s->second, c, sortie);
    }
    for (const Specialite& s : bdpm.specialites)
        if (selection.specialites.count(s.cis))
            sortie.Ajoute("VDXYCIS", {{"CodeCIS", s.cis}, {"Libelle", Coupe(s.denomination, VDXYCIS::Libelle.capacite())}});
    EcritCodes(sortie);
    EcritIdentite(bdpm, sortie);
    EcritVoies(bdpm, selection, sortie);
    EcritGroupes(bdpm, selection, sortie);
    EcritIdentification(bdpm, selection, c.specialites, sortie);
}

}  // namespace vdx::import
