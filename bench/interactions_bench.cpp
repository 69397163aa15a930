// The interaction analysis of prescriptions of 2, 5, 10 and 20 lines, on a
// base of 2,000 products of 1 to 3 substances, 600 substances (some with a
// synonym), 300 interaction classes in a hierarchy two or three levels deep
// (a few inactive) and 4,000 couples of classes; beside the same analysis from
// hash maps in memory: components, substances, synonyms, classes and their
// ancestors gathered for each line, the couples of each class walked, routes
// and substance filters tested, rows formed with their strings, made unique
// and sorted by level.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "checks/interactions.h"
#include "platform/hote.h"
#include "session/resultat.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombreProduits = 2000;
constexpr int NombreSubstances = 600;
constexpr int32_t PremiereSubstance = 1000;
constexpr int SubstancesExterieures = 10;  // the last ten: alcohol, grapefruit... no product holds them
constexpr int NombreClasses = 300;         // 1-20 families, 21-80 groups, 81-300 classes of substances
constexpr int CouplesEntreProduits = 1940;  // each held in both orders
constexpr int CouplesExterieurs = 96;
constexpr int CouplesParVoie = 24;
constexpr int32_t PremierSynonyme = 5000;
constexpr int LignesMax = 20;
// The session's NiveauInteraction: every row kept.
constexpr int32_t NiveauSession = 0;

// A reproducible draw.
class Hasard {
public:
    explicit Hasard(uint64_t graine) : etat_(graine) {}
    uint32_t operator()(uint32_t n) {
        etat_ = etat_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<uint32_t>(etat_ >> 33) % n;
    }

private:
    uint64_t etat_;
};

std::string Code(int i) {
    char code[8];
    std::snprintf(code, sizeof code, "3%06d", i);
    return code;
}

struct Route {
    const char* code;
    const char* libelle;
};
constexpr Route Routes[] = {{"A01", "orale"},           {"A02", "buccale"},   {"A03", "sublinguale"},
                            {"A05", "intraveineuse"},   {"A07", "intramusculaire"}, {"B01", "cutanée"},
                            {"B03", "ophtalmique"},     {"C01", "inhalée"}};
struct Gravite {
    int32_t code;
    const char* libelle;
    int32_t niveau;
};
constexpr Gravite Gravites[] = {{1, "Contre-indication", 4},
                                {2, "Association déconseillée", 3},
                                {3, "Précaution d'emploi", 2},
                                {4, "A prendre en compte", 1}};
constexpr const char* Types[] = {
    "Majoration des effets indésirables de $1 par $2",
    "Risque majoré de torsades de pointes : $1 et $2",
    "Augmentation des concentrations de $2 par $1",
    "Diminution de l'efficacité de $1 par $2",
    "Addition des effets dépresseurs centraux de $1 et $2",
    "Risque hémorragique accru : $1 + $2",
    "Hyperkaliémie possible avec $1 et $2",
    "Risque de syndrome sérotoninergique : $2 et $1",
    "Toxicité de $2 majorée par $1",
    "Baisse de l'absorption digestive de $1 par $2",
    "Risque d'hypotension : $1 avec $2",
    "Néphrotoxicité additive de $1 et $2",
};
struct Terme {
    const char* code;
    const char* libelle;
};
constexpr Terme Termes[] = {{"CI00000001", "Grossesse"},
                            {"CI00000002", "Allaitement"},
                            {"CI00000003", "Insuffisance rénale sévère"}};

// The base's content, drawn once: the fixture and the maps of the baseline
// are filled from it.
struct Donnees {
    struct Substance {
        int32_t code;
        std::string libelle;
        int32_t interactions;
    };
    struct Composant {
        int32_t substance;
        int32_t admis;
    };
    struct Produit {
        std::string cip, libelle;
        std::vector<Composant> composants, composantsBis;
        std::vector<std::string> voies;
    };
    struct Classe {
        int32_t code;
        std::string libelle;
        int32_t active;
    };
    struct Couple {
        int32_t a, b, numero, genre, sens, gravite, type;
        std::string voiesA, voiesB, filtreA, substancesA, filtreB, substancesB, termes;
        std::array<std::string, 4> textes;
    };

    std::vector<Substance> substances;
    std::vector<std::pair<int32_t, int32_t>> synonymes;        // substance, synonym
    std::vector<Classe> classes;
    std::vector<std::array<int32_t, 3>> classesSubstance;      // substance, associated one, class
    std::vector<std::pair<int32_t, int32_t>> peres;            // class, parent class
    std::vector<std::pair<int32_t, int32_t>> parents;          // parent substance, child
    std::vector<Couple> couples;
    std::vector<Produit> produits;

    Donnees() {
        Hasard h(20261122);
        static constexpr const char* Debuts[] = {"AMLO", "ATOR",  "BISO", "CARBA", "CLARI", "DILTIA", "ESCI",
                                                 "FLUCO", "HALO", "IRBE", "KETO",  "LEVO",  "METO",   "NIFE",
                                                 "OMEPRA", "PARO", "QUETIA", "RISPE", "SIMVA", "TRAMA"};
        static constexpr const char* Fins[] = {
            "DIPINE", "VASTATINE", "PROLOL", "MAZEPINE", "THROMYCINE", "ZEM",     "TALOPRAM", "NAZOLE",
            "PERIDOL", "SARTAN",   "PROFENE", "THYROXINE", "CLOPRAMIDE", "XETINE", "PINE",     "DONE",
            "ZOLE",    "DOL",      "XACINE", "CILLINE",   "MYCINE",     "FLOXACINE", "PRIL",   "TIDINE",
            "SETRON",  "LUKAST",   "GLIPTINE", "FORMINE", "PAMIDE",     "TRIPTAN"};
        static constexpr const char* Exterieures[] = {"ALCOOL", "JUS DE PAMPLEMOUSSE", "MILLEPERTUIS", "TABAC",
                                                      "LAIT ET PRODUITS LAITIERS", "CAFEINE", "REGLISSE",
                                                      "POTASSIUM ALIMENTAIRE", "VITAMINE K ALIMENTAIRE", "SOJA"};
        for (int k = 0; k < NombreSubstances; ++k) {
            const int32_t code = PremiereSubstance + k;
            const bool exterieure = k >= NombreSubstances - SubstancesExterieures;
            std::string libelle = exterieure ? Exterieures[k - (NombreSubstances - SubstancesExterieures)]
                                             : std::string(Debuts[k % 20]) + Fins[k / 20];
            if (k % 3 == 1 && !exterieure) libelle += " CHLORHYDRATE";
            substances.push_back({code, libelle, k % 53 == 52 ? 0 : 1});
            // One substance in ten has a synonym (its base form) with its own class.
            if (k % 10 == 0 && !exterieure) synonymes.push_back({code, PremierSynonyme + k});
        }
        // Three salts of one base in every fortieth substance: one parent.
        for (int k = 0; k + 2 < NombreSubstances - SubstancesExterieures; k += 40)
            for (int e = 1; e <= 2; ++e) parents.push_back({PremiereSubstance + k, PremiereSubstance + k + e});

        for (int32_t c = 1; c <= NombreClasses; ++c) {
            char libelle[81];
            if (c <= 20)
                std::snprintf(libelle, sizeof libelle, "FAMILLE D'INTERACTIONS %02d", c);
            else if (c <= 80)
                std::snprintf(libelle, sizeof libelle, "MEDICAMENTS A RISQUE, GROUPE %02d", c - 20);
            else
                std::snprintf(libelle, sizeof libelle, "%s (INHIBITEURS ET INDUCTEURS) %03d", Fins[c % 30], c);
            classes.push_back({c, libelle, c % 41 == 0 ? 0 : 1});
            if (c > 20 && c <= 50) peres.push_back({c, 1 + (c - 21) % 20});  // groups 51-80 stand alone
            if (c > 80) {
                const int32_t pere = 21 + (c - 81) % 60;
                peres.push_back({c, pere});
                const int32_t autre = 21 + (c * 7) % 60;
                if (c % 7 == 0 && autre != pere) peres.push_back({c, autre});
            }
        }
        std::map<int32_t, std::vector<int32_t>> membres;
        const auto range = [&](int32_t substance, int32_t associee, int32_t classe) {
            classesSubstance.push_back({substance, associee, classe});
            if (associee == 0) membres[classe].push_back(substance);
        };
        for (int k = 0; k < NombreSubstances; ++k) {
            const int32_t s = PremiereSubstance + k;
            const int32_t feuille = 81 + (k * 7) % 220;
            range(s, 0, feuille);
            if (k % 4 == 0) range(s, 0, 21 + k % 60);
            else if (k % 4 == 2 && 81 + (k * 13 + 5) % 220 != feuille) range(s, 0, 81 + (k * 13 + 5) % 220);
            // In association with the next substance only.
            if (k % 25 == 3) range(s, s + 1, 81 + (k * 11) % 220);
        }
        for (const auto& [substance, synonyme] : synonymes) range(synonyme, 0, 81 + (synonyme * 3) % 220);

        // Couples between products, held in both orders.
        std::map<std::pair<int32_t, int32_t>, int32_t> numeros;
        const auto voies = [&h]() -> std::string {
            const uint32_t r = h(100);
            if (r < 60) return "A";
            if (r < 75) return "A|-A05";
            if (r < 85) return "A01|A02|A03";
            if (r < 95) return "A|B|C";
            return "A05|A07";
        };
        const auto filtre = [&](int32_t classe, std::string& liste) -> std::string {
            const uint32_t r = h(100);
            const auto& m = membres[classe];
            if (r >= 10 || m.empty()) return "T";
            liste = std::to_string(m[h(static_cast<uint32_t>(m.size()))]);
            if (m.size() > 1) liste += "|" + std::to_string(m[h(static_cast<uint32_t>(m.size()))]);
            return r < 5 ? "E" : "S";
        };
        const auto gravite = [&h]() -> int32_t {
            const uint32_t r = h(100);
            return r < 5 ? 1 : r < 25 ? 2 : r < 65 ? 3 : 4;
        };
        const auto textes = [](int n, int32_t a, int32_t b) {
            std::array<std::string, 4> t;
            t[0] = "Inhibition du métabolisme hépatique (CYP3A4 et glycoprotéine P) des substances de la classe " +
                   std::to_string(b) + " par celles de la classe " + std::to_string(a) + ".";
            t[1] = "Augmentation des concentrations plasmatiques et majoration du risque d'effets indésirables "
                   "dose-dépendants, notamment troubles du rythme ventriculaire, rhabdomyolyse ou atteinte "
                   "rénale, en particulier chez le sujet âgé (couple " + std::to_string(n) + ").";
            if (n % 5 == 0) t[2] = "Voir aussi les interactions propres à chaque substance de la classe.";
            t[3] = "Surveillance clinique et biologique étroite, notamment en début d'association ; adaptation "
                   "éventuelle de la posologie pendant l'association et après son arrêt.";
            return t;
        };
        // Most couples join classes of substances, fewer groups, few families.
        const auto classe = [&h](bool familles) -> int32_t {
            const uint32_t r = h(100);
            if (r < 85) return 81 + static_cast<int32_t>(h(220));
            if (r < 97 || !familles) return 21 + static_cast<int32_t>(h(60));
            return 1 + static_cast<int32_t>(h(20));
        };
        for (int n = 0; n < CouplesEntreProduits; ++n) {
            int32_t a = 0, b = 0;
            while (a == b) a = classe(true), b = classe(true);
            Couple c{a, b, ++numeros[{std::min(a, b), std::max(a, b)}], EntreProduits, 1, gravite(),
                     1 + static_cast<int32_t>(h(std::size(Types))), voies(), voies(), "T", "", "T", "", "", {}};
            c.filtreA = filtre(a, c.substancesA);
            c.filtreB = filtre(b, c.substancesB);
            if (h(100) < 2) c.termes = h(2) ? "CI00000001|CI00000002" : "CI00000003";
            c.textes = textes(n, a, b);
            Couple miroir = c;
            std::swap(miroir.a, miroir.b);
            std::swap(miroir.voiesA, miroir.voiesB);
            std::swap(miroir.filtreA, miroir.filtreB);
            std::swap(miroir.substancesA, miroir.substancesB);
            miroir.sens = 2;
            couples.push_back(std::move(c));
            couples.push_back(std::move(miroir));
        }
        // Against an outside substance, and against any other product given
        // by a route.
        for (int n = 0; n < CouplesExterieurs + CouplesParVoie; ++n) {
            const int32_t a = classe(false);
            Couple c{a, 0, ++numeros[{0, a}], SubstanceExterieure, 1, gravite(),
                     1 + static_cast<int32_t>(h(std::size(Types))), voies(), "A01", "T", "", "T", "", "", {}};
            c.filtreA = filtre(a, c.substancesA);
            c.substancesB = std::to_string(PremiereSubstance + NombreSubstances - SubstancesExterieures +
                                           static_cast<int32_t>(h(SubstancesExterieures)));
            if (n >= CouplesExterieurs) {
                c.genre = ToutProduitParVoie;
                c.voiesA = h(2) ? "A01" : "A";
                c.voiesB = h(2) ? "A05" : "A05|A07";
                c.substancesB.clear();
            }
            c.textes = textes(n, a, 0);
            couples.push_back(std::move(c));
        }

        const auto auHasard = [&h]() {
            return PremiereSubstance + static_cast<int32_t>(h(NombreSubstances - SubstancesExterieures));
        };
        for (int i = 0; i < NombreProduits; ++i) {
            Produit p{Code(i), {}, {}, {}, {}};
            const uint32_t r = h(100);
            const int nombre = r < 40 ? 1 : r < 75 ? 2 : 3;
            const int32_t premiere = auHasard();
            const auto nom = [this](int32_t s) {
                const std::string& l = substances[s - PremiereSubstance].libelle;
                return l.substr(0, l.find(' '));
            };
            p.libelle = nom(premiere);
            std::set<int32_t> pris;
            for (int k = 0; k < nombre; ++k) {
                int32_t s = premiere;
                if (k == 1 && (premiere - PremiereSubstance) % 25 == 3) s = premiere + 1;  // its associate
                else if (k > 0) s = auHasard();
                if (!pris.insert(s).second) continue;
                p.composants.push_back({s, i % 61 == 0 && k == 1 ? 0 : 1});
                if (k > 0) p.libelle += "/" + nom(s).substr(0, 4);
            }
            if (i % 50 == 0) p.composantsBis.push_back({auHasard(), 1});
            const uint32_t v = h(100);
            if (v < 65) p.voies = {"A01"};
            else if (v < 75) p.voies = {"A05"};
            else if (v < 80) p.voies = {"A01", "A05"};
            else if (v < 84) p.voies = {"A05", "A07"};
            else if (v < 88) p.voies = {"A02"};
            else if (v < 92) p.voies = {"B01"};
            else if (v < 96) p.voies = {"C01"};
            p.libelle += i % 2 ? " 20MG CPR" : " 10MG/ML BUV";
            p.libelle.resize(std::min<size_t>(p.libelle.size(), 34));  // the width of the label
            produits.push_back(std::move(p));
        }
    }
};

const Donnees& LesDonnees() {
    static const Donnees d;
    return d;
}

// The rank of a component, from "001".
std::string Rang(size_t r) {
    std::string rang = std::to_string(r + 1);
    return std::string(3 - std::min<size_t>(3, rang.size()), '0') + rang;
}

struct Base {
    essai::BaseDeTest base;
    Base() {
        const Donnees& d = LesDonnees();
        essai::AjouteIdentite(base);
        for (const Donnees::Substance& s : d.substances)
            base.Ajoute("VDXVPA",
                        {{"CodeSubstance", s.code}, {"Libelle", s.libelle}, {"Interactions", s.interactions}});
        for (const auto& [substance, synonyme] : d.synonymes)
            base.Ajoute("VDXWSYNC", {{"CodeSubstance", substance}, {"CodeSynonyme", synonyme}});
        for (const auto& [parent, enfant] : d.parents)
            base.Ajoute("VDXWPEFI", {{"CodeParent", parent}, {"CodeEnfant", enfant}});
        // The closing key: every substance without a row is its own parent.
        base.Ajoute("VDXWPEFI", {{"CodeParent", 99999}, {"CodeEnfant", 99999}});
        for (const Donnees::Classe& c : d.classes)
            base.Ajoute("VDXZICLA", {{"CodeClasse", c.code}, {"Libelle", c.libelle}, {"ClasseActive", c.active}});
        for (const auto& [substance, associee, classe] : d.classesSubstance)
            base.Ajoute("VDXZICLC",
                        {{"CodeSubstance", substance}, {"CodeSubstanceAssociee", associee}, {"CodeClasse", classe}});
        for (const auto& [classe, pere] : d.peres)
            base.Ajoute("VDXZICLP", {{"CodeClasse", classe}, {"CodeClassePere", pere}});
        for (const Gravite& g : Gravites)
            base.Ajoute("VDXZIGRA", {{"Code", g.code}, {"LibelleGravite", g.libelle}, {"Niveau", g.niveau}});
        for (int32_t t = 0; t < static_cast<int32_t>(std::size(Types)); ++t)
            base.Ajoute("VDXZITYP", {{"Code", t + 1}, {"TexteType", Types[t]}});
        for (const Terme& t : Termes)
            base.Ajoute("VDXVAMM", {{"CodeTerme", t.code}, {"TypeAMM", "2"}, {"Libelle", t.libelle}});
        for (const Route& r : Routes) base.Ajoute("VDXIDVOI", {{"CodeVoie", r.code}, {"Libelle", r.libelle}});
        for (const Donnees::Couple& c : d.couples)
            base.Ajoute("VDXZICOU", {{"ClasseA", c.a},
                                     {"ClasseB", c.b},
                                     {"Numero", c.numero},
                                     {"Genre", c.genre},
                                     {"Sens", c.sens},
                                     {"CodeGravite", c.gravite},
                                     {"CodeType", c.type},
                                     {"VoiesA", c.voiesA},
                                     {"VoiesB", c.voiesB},
                                     {"FiltreA", c.filtreA},
                                     {"FiltreB", c.filtreB},
                                     {"SubstancesA", c.substancesA},
                                     {"SubstancesB", c.substancesB},
                                     {"TermesCondition", c.termes},
                                     {"Reference1", "Référentiel d'essai"},
                                     {"Reference2", "septembre 2026"},
                                     {"Texte1", c.textes[0]},
                                     {"Texte2", c.textes[1]},
                                     {"Texte3", c.textes[2]},
                                     {"Texte4", c.textes[3]}});
        for (const Donnees::Produit& p : d.produits) {
            base.Ajoute("VDXPRO", {{"CodeCIP", p.cip}, {"Libelle", p.libelle}, {"CodeRubrique", "10"}});
            for (size_t r = 0; r < p.composants.size(); ++r) {
                base.Ajoute("VDXVCOMP", {{"CodeCIP", p.cip},
                                         {"Rang", Rang(r)},
                                         {"CodeSubstance", p.composants[r].substance},
                                         {"QuantiteTexte", "20 mg"},
                                         {"Quantite", 20.0},
                                         {"CodeUnite", 1},
                                         {"Interactions", p.composants[r].admis}});
            }
            for (size_t r = 0; r < p.composantsBis.size(); ++r) {
                base.Ajoute("VDXVCOME", {{"CodeCIP", p.cip}, {"Rang", Rang(r)},
                                         {"CodeSubstance", p.composantsBis[r].substance},
                                         {"Interactions", p.composantsBis[r].admis}});
            }
            for (const std::string& v : p.voies) base.Ajoute("VDXIDPVO", {{"CodeCIP", p.cip}, {"CodeVoie", v}});
        }
        base.Repertoire();
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

// ---------------------------------------------------------------------------
// The baseline: the same analysis from hash maps in memory.

// Integers stand in the keys of the store little-endian, so that a walk
// meets them in the order of their bytes: the order the baseline's lists
// are sorted in.
uint32_t OrdreCle(int32_t n) {
    const auto u = static_cast<uint32_t>(n);
    return (u >> 24) | ((u >> 8) & 0xFF00u) | ((u << 8) & 0xFF0000u) | (u << 24);
}

struct Memoire {
    struct Couple {
        int32_t classeB, genre, sens, gravite, type;
        std::string voiesA, voiesB, filtreA, substancesA, filtreB, substancesB, termes, reference;
        std::array<std::string, 4> textes;
    };
    std::unordered_map<std::string, std::string> libellesProduits;
    std::unordered_map<std::string, std::vector<Donnees::Composant>> composants, composantsBis;
    std::unordered_map<int32_t, std::pair<std::string, int32_t>> substances;
    std::unordered_map<int32_t, std::vector<int32_t>> synonymes;
    std::unordered_map<int32_t, std::vector<std::pair<int32_t, int32_t>>> classesSubstance;  // associated, class
    std::unordered_map<int32_t, std::pair<std::string, int32_t>> classes;
    std::unordered_map<int32_t, std::vector<int32_t>> peres;
    std::unordered_map<int32_t, std::vector<Couple>> couples;  // by ClasseA, in key order
    std::unordered_map<int32_t, std::string> types;
    std::unordered_map<int32_t, std::pair<std::string, int32_t>> gravites;
    std::unordered_map<std::string, std::vector<std::string>> voiesProduit;
    std::unordered_map<std::string, std::string> voies, termes;
    std::unordered_map<int32_t, int32_t> parents;  // child to parent

    Memoire() {
        const Donnees& d = LesDonnees();
        for (const Donnees::Produit& p : d.produits) {
            libellesProduits[p.cip] = p.libelle;
            composants[p.cip] = p.composants;
            composantsBis[p.cip] = p.composantsBis;
            std::vector<std::string> v = p.voies;
            std::ranges::sort(v);
            voiesProduit[p.cip] = v;
        }
        for (const Donnees::Substance& s : d.substances) substances[s.code] = {s.libelle, s.interactions};
        for (const auto& [s, y] : d.synonymes) synonymes[s].push_back(y);
        for (auto& [s, liste] : synonymes) std::ranges::sort(liste, {}, OrdreCle);
        for (const auto& [s, a, c] : d.classesSubstance) classesSubstance[s].push_back({a, c});
        for (auto& [s, liste] : classesSubstance)
            std::ranges::sort(liste, {}, [](const std::pair<int32_t, int32_t>& c) {
                return std::pair{OrdreCle(c.first), OrdreCle(c.second)};
            });
        for (const Donnees::Classe& c : d.classes) classes[c.code] = {c.libelle, c.active};
        for (const auto& [c, p] : d.peres) peres[c].push_back(p);
        for (auto& [c, liste] : peres) std::ranges::sort(liste, {}, OrdreCle);
        // The couples of a class in the order of their keys' bytes.
        std::vector<const Donnees::Couple*> tries;
        for (const Donnees::Couple& c : d.couples) tries.push_back(&c);
        std::ranges::sort(tries, [](const Donnees::Couple* p, const Donnees::Couple* q) {
            return std::tuple{OrdreCle(p->b), OrdreCle(p->numero)} < std::tuple{OrdreCle(q->b), OrdreCle(q->numero)};
        });
        for (const Donnees::Couple* c : tries)
            couples[c->a].push_back({c->b, c->genre, c->sens, c->gravite, c->type, c->voiesA, c->voiesB, c->filtreA,
                                     c->substancesA, c->filtreB, c->substancesB, c->termes,
                                     "Référentiel d'essai septembre 2026", c->textes});
        for (int32_t t = 0; t < static_cast<int32_t>(std::size(Types)); ++t) types[t + 1] = Types[t];
        for (const Gravite& g : Gravites) gravites[g.code] = {g.libelle, g.niveau};
        for (const Route& r : Routes) voies[r.code] = r.libelle;
        for (const Terme& t : Termes) termes[t.code] = t.libelle;
        for (const auto& [parent, enfant] : d.parents) parents[enfant] = parent;
    }
};

const Memoire& LaMemoire() {
    static const Memoire m;
    return m;
}

template <class Fait>
void ParEntree(std::string_view liste, Fait&& fait) {
    while (!liste.empty()) {
        const size_t barre = liste.find('|');
        const std::string_view entree = liste.substr(0, barre);
        if (entree.empty()) return;
        fait(entree);
        if (barre == std::string_view::npos) return;
        liste.remove_prefix(barre + 1);
    }
}

bool Admise(std::string_view code, std::string_view liste) {
    if (code.empty()) return false;
    bool veto = false, admise = false;
    ParEntree(liste, [&](std::string_view e) {
        if (e.starts_with('-') && code.starts_with(e.substr(1))) veto = true;
    });
    if (veto) return false;
    ParEntree(liste, [&](std::string_view e) {
        if (!e.starts_with('-') && code.starts_with(e)) admise = true;
    });
    return admise;
}

int32_t EntierDe(std::string_view texte) {
    int32_t n = 0;
    std::from_chars(texte.data(), texte.data() + texte.size(), n);
    return n;
}

std::string Introuvable(const std::string& code) { return "Code " + code + " introuvable"; }

class AnalyseEnMemoire {
public:
    explicit AnalyseEnMemoire(const Memoire& m) : m_(m) {}

    std::vector<FicheInteraction2> operator()(const std::vector<std::string>& codes) {
        lignes_.clear();
        rangees_.clear();
        peresSubstances_.clear();
        for (const std::string& code : codes) lignes_.push_back(Ligne(code));
        for (size_t i = 0; i < lignes_.size(); ++i)
            for (const ClasseLigne& ci : lignes_[i].Classes) {
                if (!ci.ClasseActive) continue;
                const auto couples = m_.couples.find(ci.CodeClasse);
                if (couples == m_.couples.end()) continue;
                for (const Memoire::Couple& c : couples->second) {
                    if (c.genre != EntreProduits) Teste(c, i, ci, nullptr);
                    for (size_t j = i + 1; j < lignes_.size(); ++j)
                        for (const ClasseLigne& cj : lignes_[j].Classes)
                            if (cj.ClasseActive && cj.CodeClasse == c.classeB) Teste(c, i, ci, &cj, j);
                }
            }
        std::stable_sort(rangees_.begin(), rangees_.end(),
                         [](const FicheInteraction2& p, const FicheInteraction2& q) { return p.Niveau > q.Niveau; });
        return std::move(rangees_);
    }

private:
    LignePrescription Ligne(const std::string& cip) const {
        LignePrescription ligne;
        ligne.CodeCIP = cip;
        const auto libelle = m_.libellesProduits.find(cip);
        ligne.Libelle = libelle != m_.libellesProduits.end() ? libelle->second : "Libelle inconnu";
        if (ligne.Libelle.size() > 127) ligne.Libelle.resize(127);
        const auto tient = [&ligne](int32_t code) {
            return std::ranges::any_of(ligne.Substances,
                                       [code](const SubstanceLigne& s) { return s.CodeSubstance == code; });
        };
        for (const auto* liste : {&m_.composants, &m_.composantsBis}) {
            const auto composants = liste->find(cip);
            if (composants == liste->end()) continue;
            for (const Donnees::Composant& c : composants->second) {
                const auto s = m_.substances.find(c.substance);
                const std::string libelleS =
                    s != m_.substances.end() ? s->second.first : Introuvable(std::to_string(c.substance));
                if (c.admis == 0 || (s != m_.substances.end() && s->second.second == 0) || tient(c.substance)) continue;
                ligne.Substances.push_back({c.substance, c.substance, libelleS});
                if (const auto y = m_.synonymes.find(c.substance); y != m_.synonymes.end())
                    for (int32_t synonyme : y->second)
                        if (!tient(synonyme)) ligne.Substances.push_back({c.substance, synonyme, libelleS});
            }
        }
        std::vector<ClasseLigne>& classes = ligne.Classes;
        const auto classe = [this](int32_t code) {
            const auto c = m_.classes.find(code);
            return c != m_.classes.end() ? c->second : std::pair{Introuvable(std::to_string(code)), int32_t{0}};
        };
        for (size_t s = 0; s < ligne.Substances.size(); ++s) {
            const auto liste = m_.classesSubstance.find(ligne.Substances[s].CodeSynonyme);
            if (liste == m_.classesSubstance.end()) continue;
            for (const auto& [associee, code] : liste->second) {
                auto [libelleC, active] = classe(code);
                if (std::ranges::any_of(classes, [code](const ClasseLigne& c) { return c.CodeClasseRacine == code; }))
                    continue;
                int32_t indexAssociee = -1;
                if (associee != 0) {
                    for (size_t a = 0; a < ligne.Substances.size() && indexAssociee < 0; ++a)
                        if (ligne.Substances[a].CodeSynonyme == associee) indexAssociee = static_cast<int32_t>(a);
                    if (indexAssociee < 0) continue;
                }
                classes.push_back({static_cast<int32_t>(s), indexAssociee, code, code, std::move(libelleC), active});
            }
        }
        std::vector<int32_t> enAttente;
        const size_t limite = classes.size();
        const std::vector<int32_t> aucun;
        const auto peresDe = [&](int32_t c) -> const std::vector<int32_t>& {
            const auto p = m_.peres.find(c);
            return p != m_.peres.end() ? p->second : aucun;
        };
        for (size_t c = 0; c < limite; ++c) {
            const ClasseLigne source = classes[c];
            const auto ajoute = [&](int32_t pere, int32_t indexAssociee) {
                if (std::ranges::any_of(classes, [pere](const ClasseLigne& x) { return x.CodeClasse == pere; }))
                    return false;
                auto [libelleC, active] = classe(pere);
                classes.push_back({source.IndexSubstance, indexAssociee, source.CodeClasseRacine, pere,
                                   std::move(libelleC), active});
                return true;
            };
            for (int32_t pere : peresDe(source.CodeClasseRacine))
                if (ajoute(pere, -1)) enAttente.push_back(pere);
            std::vector<int32_t> aGravir(enAttente);
            while (!aGravir.empty()) {
                const int32_t gravie = aGravir.back();
                aGravir.pop_back();
                for (int32_t pere : peresDe(gravie))
                    if (pere != 0 && ajoute(pere, source.IndexAssociee)) aGravir.push_back(pere);
            }
        }
        if (const auto v = m_.voiesProduit.find(cip); v != m_.voiesProduit.end())
            for (const std::string& code : v->second) {
                const auto l = m_.voies.find(code);
                ligne.Voies.push_back({code, l != m_.voies.end() ? l->second : Introuvable(code)});
            }
        return ligne;
    }

    static std::optional<std::string> VoieDe(const LignePrescription& ligne, std::string_view liste) {
        if (ligne.Voies.empty()) return std::string();
        for (const Voie& v : ligne.Voies)
            if (Admise(v.CodeVoie, liste)) return v.Libelle;
        return std::nullopt;
    }

    static bool Filtre(const LignePrescription& ligne, std::string_view filtre, std::string_view liste) {
        bool present = false;
        ParEntree(liste, [&](std::string_view e) {
            for (const SubstanceLigne& s : ligne.Substances) present |= EntierDe(e) == s.CodeSynonyme;
        });
        if (filtre == "E") return present;
        if (filtre == "S") return !present;
        return filtre == "T";
    }

    struct Cote {
        const LignePrescription* ligne;
        const ClasseLigne* classe;
    };

    void Teste(const Memoire::Couple& c, size_t i, const ClasseLigne& ci, const ClasseLigne* cj, size_t j = 0) {
        const std::optional<std::string> voie1 = VoieDe(lignes_[i], c.voiesA);
        if (!voie1) return;
        std::string voie2;
        if (c.genre == EntreProduits) {
            const std::optional<std::string> v = VoieDe(lignes_[j], c.voiesB);
            if (!v) return;
            voie2 = *v;
        }
        if (c.genre == ToutProduitParVoie) {
            if (cj) return;
            bool derniere = false;
            for (size_t k = 0; k < lignes_.size(); ++k) {
                if (k == i) continue;
                for (const Voie& v : lignes_[k].Voies) {
                    derniere = Admise(v.CodeVoie, c.voiesB);
                    if (!derniere) continue;
                    j = k;
                    cj = lignes_[k].Classes.empty() ? nullptr : &lignes_[k].Classes[0];
                    Forme(c, {&lignes_[i], &ci}, {&lignes_[k], cj}, *voie1, voie2, {}, {});
                }
            }
            if (!derniere) return;
        }
        if (!Filtre(lignes_[i], c.filtreA, c.substancesA)) return;
        if (c.genre == EntreProduits && !Filtre(lignes_[j], c.filtreB, c.substancesB)) return;
        const Cote second{c.genre == SubstanceExterieure ? nullptr : &lignes_[j], cj};
        if (c.termes.empty()) {
            Forme(c, {&lignes_[i], &ci}, second, *voie1, voie2, {}, {});
            return;
        }
        ParEntree(c.termes, [&](std::string_view terme) {
            const auto t = m_.termes.find(std::string(terme));
            Forme(c, {&lignes_[i], &ci}, second, *voie1, voie2, terme,
                  t != m_.termes.end() ? std::string_view(t->second) : std::string_view());
        });
    }

    static std::string TexteDuCote(const Cote& cote) {
        const auto& s = cote.ligne->Substances;
        std::string texte = s[cote.classe->IndexSubstance].Libelle;
        if (cote.classe->IndexAssociee >= 0) texte += " + " + s[cote.classe->IndexAssociee].Libelle;
        return texte;
    }

    static void Remplace(std::string& texte, std::string_view marque, std::string_view par) {
        for (size_t p = texte.find(marque); p != std::string::npos; p = texte.find(marque, p + par.size()))
            texte.replace(p, marque.size(), par);
    }

    int32_t Pere(int32_t substance) {
        auto [it, nouveau] = peresSubstances_.try_emplace(substance, substance);
        if (nouveau)
            if (const auto p = m_.parents.find(substance); p != m_.parents.end()) it->second = p->second;
        return it->second;
    }

    void Forme(const Memoire::Couple& c, Cote premier, Cote second, const std::string& voie1, const std::string& voie2,
               std::string_view codeCondition, std::string_view libelleCondition) {
        FicheInteraction2 r;
        r.CodeType = c.type;
        const auto type = m_.types.find(c.type);
        r.TexteType = type != m_.types.end() ? type->second : std::to_string(c.type) + " : Type Inconnu";
        const auto gravite = m_.gravites.find(c.gravite);
        r.LibelleGravite =
            gravite != m_.gravites.end() ? gravite->second.first : std::to_string(c.gravite) + " : Type Inconnu";
        r.Niveau = gravite != m_.gravites.end() ? gravite->second.second : 0;
        if (c.genre == EntreProduits && c.sens != 1) std::swap(premier, second);
        r.Voie1 = voie1;
        r.Voie2 = voie2;
        r.CIP1 = premier.ligne->CodeCIP;
        r.Libelle1 = premier.ligne->Libelle;
        r.Classe1 = premier.classe->Libelle;
        r.CodeCondition = codeCondition;
        r.LibelleCondition = libelleCondition;
        if (c.genre == EntreProduits) {
            r.CIP2 = second.ligne->CodeCIP;
            r.Libelle2 = second.ligne->Libelle;
            r.Classe2 = second.classe->Libelle;
        } else {
            r.CIP2 = "0000000";
            const auto v = m_.voies.find(c.voiesB);
            r.Voie2 = v != m_.voies.end() ? v->second : Introuvable(c.voiesB);
            const auto classeB = m_.classes.find(c.classeB);
            r.Classe2 = classeB != m_.classes.end() ? classeB->second.first : Introuvable(std::to_string(c.classeB));
            if (c.genre == SubstanceExterieure) {
                const int32_t code = EntierDe(c.substancesB);
                const auto s = m_.substances.find(code);
                r.Libelle2 = s != m_.substances.end() ? s->second.first : Introuvable(std::to_string(code));
            } else {
                r.CIP2 = second.ligne->CodeCIP;
                r.Libelle2 = second.ligne->Libelle;
                if (second.classe) r.Classe2 = second.classe->Libelle;
            }
        }
        const bool doublon = c.genre != SubstanceExterieure && Doublon(r);
        if (r.Niveau < NiveauSession) return;
        const std::string texte1 = TexteDuCote(premier);
        if (c.genre == EntreProduits) {
            Remplace(r.TexteType, "$1", texte1);
            Remplace(r.TexteType, "$2", TexteDuCote(second));
        } else {
            Remplace(r.TexteType, "$2", texte1);
            Remplace(r.TexteType, "$1", r.Libelle2);
        }
        const SubstanceLigne& substance1 = premier.ligne->Substances[premier.classe->IndexSubstance];
        const SubstanceLigne* substance2 =
            c.genre == EntreProduits ? &second.ligne->Substances[second.classe->IndexSubstance] : nullptr;
        if (Pere(substance1.CodeSubstance) == (substance2 ? Pere(substance2->CodeSubstance) : 0)) return;
        if (doublon) return;
        r.Reference = c.reference;
        r.Texte1 = c.textes[0];
        r.Texte2 = c.textes[1];
        r.Texte3 = c.textes[2];
        r.Texte4 = c.textes[3];
        r.Niveau2 = r.Niveau;
        r.Substance2 = substance2 ? substance2->CodeSubstance : 0;
        const auto associee = [](const Cote& cote) {
            const int32_t index = cote.classe->IndexAssociee;
            return index >= 0 ? cote.ligne->Substances[index].CodeSubstance : 0;
        };
        r.Substance1Associee = associee(premier);
        if (c.genre == EntreProduits) r.Substance2Associee = associee(second);
        rangees_.push_back(std::move(r));
    }

    bool Doublon(const FicheInteraction2& r) const {
        for (const FicheInteraction2& l : rangees_) {
            if (l.CodeCondition != r.CodeCondition) continue;
            if ((l.CIP1 == r.CIP1 && l.CIP2 == r.CIP2 && l.Classe1 == r.Classe1 && l.Classe2 == r.Classe2) ||
                (l.CIP1 == r.CIP2 && l.CIP2 == r.CIP1 && l.Classe1 == r.Classe2 && l.Classe2 == r.Classe1))
                return true;
        }
        return false;
    }

    const Memoire& m_;
    std::vector<LignePrescription> lignes_;
    std::vector<FicheInteraction2> rangees_;
    std::unordered_map<int32_t, int32_t> peresSubstances_;
};

// The prescription of 20 lines whose first n lines are measured: products
// taken in a spread order, each kept when it adds a row to those before it,
// so that every prefix interacts.
const std::vector<std::string>& Ordonnance() {
    static const std::vector<std::string> codes = [] {
        std::vector<std::string> retenus;
        AnalyseEnMemoire analyse(LaMemoire());
        size_t rangees = 0;
        for (int t = 0; retenus.size() < LignesMax && t < NombreProduits; ++t) {
            const std::string code = Code((17 + t * 389) % NombreProduits);
            std::vector<std::string> essai = retenus;
            essai.push_back(code);
            const size_t n = analyse(essai).size();
            if (n > rangees) retenus = std::move(essai), rangees = n;
        }
        return retenus;
    }();
    return codes;
}

std::vector<std::string> Prescription(int64_t lignes) {
    const auto& toutes = Ordonnance();
    return {toutes.begin(), toutes.begin() + std::min<int64_t>(lignes, static_cast<int64_t>(toutes.size()))};
}

const FormeHote FormeInteraction2 = [] {
    FormeHote forme(23, TypeChamp::Texte);
    for (size_t c : {7, 16, 17, 18, 19, 20}) forme[c] = TypeChamp::Entier;
    return forme;
}();

void Interactions2(benchmark::State& state) {
    const std::vector<std::string> codes = Prescription(state.range(0));
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0);
    SAFEARRAY* produits = essai::TableauDeChaines(codes);
    SAFEARRAY* tableau = hote::CreeTableau(hote::TailleFiche(static_cast<uint32_t>(FormeInteraction2.size())));
    int32_t n = 0;
    for (auto _ : state) n = Interactions2_Vdx(&produits, nullptr, nullptr, &tableau, 0, 0, 0, 0, "");
    const size_t attendu = AnalyseEnMemoire(LaMemoire())(codes).size();
    state.counters["lignes"] = static_cast<double>(codes.size());
    state.counters["rangees"] = n;
    if (n <= 0) state.SkipWithError("no row");
    else if (static_cast<size_t>(n) != attendu)
        state.SkipWithError(("rows: " + std::to_string(n) + ", the baseline gives " + std::to_string(attendu)).c_str());
    VideTableau(tableau, FormeInteraction2);
    hote::Detruit(tableau);
    SafeArrayDestroy(produits);
    DeConnection2_Vdx();
}
BENCHMARK(Interactions2)->Arg(2)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMicrosecond);

// The same analysis from hash maps, rows built with their strings.
void Reference_Interactions2(benchmark::State& state) {
    const std::vector<std::string> codes = Prescription(state.range(0));
    AnalyseEnMemoire analyse(LaMemoire());
    size_t n = 0;
    for (auto _ : state) {
        std::vector<FicheInteraction2> rangees = analyse(codes);
        n = rangees.size();
        benchmark::DoNotOptimize(rangees.data());
    }
    state.counters["lignes"] = static_cast<double>(codes.size());
    state.counters["rangees"] = static_cast<double>(n);
}
BENCHMARK(Reference_Interactions2)->Arg(2)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
