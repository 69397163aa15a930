// The interaction analysis of prescriptions of 2, 5, 10 and 20 lines, on a
// base of 2,000 products of 1 to 3 substances, 600 substances (some with a
// synonym), 300 interaction classes in a hierarchy two or three levels deep
// (a few inactive) and 4,000 couples of classes; beside the walks of the
// store that the analysis makes, with nothing made of what they read.
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
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "checks/interactions.h"
#include "session/session.h"
#include "session/tables.h"
#include "session/valeurs_hote.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/fixture.h"
#include "store/layouts.h"
#include "tests/support/identite.h"
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

// The CodeCIP of product i, of seven digits below a million products.
std::string Code(int i) {
    char code[16];
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

// The base's content, drawn once.
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

// The base connected in array mode, once for the program.
void Connecte() {
    static const bool fait = [] {
        InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
        return Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0) == 1;
    }();
    if (!fait) throw std::runtime_error("no connection to the fixture");
}

// The prescription of 20 lines whose first n lines are measured: products
// taken in a spread order, each kept when it adds a row to those before it,
// so that every prefix interacts.
const std::vector<std::string>& Ordonnance() {
    static const std::vector<std::string> codes = [] {
        Connecte();
        std::vector<std::string> retenus;
        size_t rangees = 0;
        for (int t = 0; retenus.size() < LignesMax && t < NombreProduits; ++t) {
            std::vector<std::string> essai = retenus;
            essai.push_back(Code((17 + t * 389) % NombreProduits));
            const size_t n = AnalyseInteractions(session(), essai).size();
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

// The export in array mode on the lines of `codes`, again and again.
void Mesure(benchmark::State& state, const std::vector<std::string>& codes) {
    EntreeHote produits = EntreeHote::Chaines(codes);
    TableauHote<VdxInteraction2> tableau(GabaritDe<FicheInteraction2>());
    int32_t n = 0;
    for (auto _ : state)
        n = Interactions2_Vdx(produits.Adresse(), nullptr, nullptr, tableau.Adresse(), 0, 0, 0, 0, "");
    state.counters["lignes"] = static_cast<double>(codes.size());
    state.counters["rangees"] = n;
    if (n <= 0) state.SkipWithError("no row");
}

void Interactions2(benchmark::State& state) { Mesure(state, Prescription(state.range(0))); }
BENCHMARK(Interactions2)->Arg(2)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMicrosecond);

// A long list: the first n products of the base, one line each. The work
// must grow with the couples the lines meet, not with the square of the
// lines.
void Interactions2_Liste(benchmark::State& state) {
    Connecte();
    std::vector<std::string> codes;
    for (int i = 0; i < state.range(0); ++i) codes.push_back(Code(i));
    Mesure(state, codes);
}
BENCHMARK(Interactions2_Liste)->Arg(100)->Arg(400)->Arg(1600)->Unit(benchmark::kMillisecond);

// The baseline: the walks of the store that the analysis of these lines
// makes, with nothing made of what they read: each line's components, the
// classes of its substances and their ancestors, and the couples each class
// begins, every record read once.
size_t Lectures(const std::vector<std::string>& codes) {
    const Table& composants = TableDuCatalogue("VDXVCOMP");
    const Table& classes = TableDuCatalogue("VDXZICLC");
    const Table& peres = TableDuCatalogue("VDXZICLP");
    const Table& couples = TableDuCatalogue("VDXZICOU");
    TablesOuvertes tables{&composants, &classes, &peres, &couples};
    std::unordered_set<int32_t> lues;
    size_t octets = 0;
    for (const std::string& code : codes) {
        std::vector<int32_t> aLire;
        Curseur c(composants);
        for (auto p = c.PremiereAvec(code); p; p = c.SuivanteAvec(code)) {
            const std::string composant = FicheA(composants, *p);
            const std::string substance = CleEntiers({Fiche(composant).Entier(VDXVCOMP::CodeSubstance)});
            Curseur k(classes);
            for (auto q = k.PremiereAvec(substance); q; q = k.SuivanteAvec(substance))
                aLire.push_back(Fiche(FicheA(classes, *q)).Entier(VDXZICLC::CodeClasse));
            octets += composant.size();
        }
        while (!aLire.empty()) {
            const int32_t classe = aLire.back();
            aLire.pop_back();
            if (!lues.insert(classe).second) continue;
            const std::string cle = CleEntiers({classe});
            Curseur h(peres);
            for (auto q = h.PremiereAvec(cle); q; q = h.SuivanteAvec(cle)) aLire.push_back(LitMot(h.Cle(), 4));
            Curseur u(couples);
            for (auto q = u.PremiereAvec(cle); q; q = u.SuivanteAvec(cle)) octets += FicheA(couples, *q).size();
        }
    }
    tables.Ferme();
    return octets;
}

void Reference_Interactions2(benchmark::State& state) {
    const std::vector<std::string> codes = Prescription(state.range(0));
    size_t octets = 0;
    for (auto _ : state) benchmark::DoNotOptimize(octets = Lectures(codes));
    state.counters["lignes"] = static_cast<double>(codes.size());
    state.counters["octets"] = static_cast<double>(octets);
}
BENCHMARK(Reference_Interactions2)->Arg(2)->Arg(5)->Arg(10)->Arg(20)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
