// The contra-indication check of a prescription of 5 products for a patient
// with 5 pathologies (two CIM10 codes, a CISP code, two terms) and a full
// profile, on a base of 1,000 products of 8 terms each; beside the same
// work done from hash maps in memory: the terms and codes of the products
// gathered, the pathologies matched, the profile tested, the alerts made
// unique, labelled and sorted.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/hote.h"
#include "checks/contreindications.h"
#include "session/resultat.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombreProduits = 1000;
constexpr int NombreTermes = 400;
constexpr int TermesParProduit = 8;
constexpr int CodesParTerme = 2;

std::string Produit(int i) {
    char code[8];
    std::snprintf(code, sizeof code, "3%06d", i);
    return code;
}
std::string Terme(int t) {
    char code[11];
    std::snprintf(code, sizeof code, "%010d", 1000 + t);
    return code;
}
// The CIM10 codes of term t: letters and numbers spread over the terms.
std::string CodeCIM10(int t, int k) {
    char code[8];
    std::snprintf(code, sizeof code, "%c%02d.%d", 'A' + (t % 20), (t * 7 + k) % 100, k);
    return code;
}
int TermeDe(int produit, int rang) { return (produit * 13 + rang * 37) % NombreTermes; }
// Every fifth term carries a condition of the profile.
struct Condition {
    int32_t ageMin = 0, ageMax = 0, poidsMin = 0, poidsMax = 0, grossesseMin = 0, grossesseMax = 0;
};
Condition ConditionDe(int t) {
    Condition c;
    if (t % 5 == 0) c = {0, 180};
    if (t % 5 == 1) c.poidsMin = 1, c.poidsMax = 50;
    if (t % 5 == 2) c.grossesseMin = 1, c.grossesseMax = 40;
    return c;
}

struct Base {
    essai::BaseDeTest base;
    Base() {
        essai::AjouteIdentite(base);
        for (int t = 0; t < NombreTermes; ++t) {
            const Condition c = ConditionDe(t);
            const std::string libelle = "TERME " + std::to_string(t);
            base.Ajoute("VDXVAMM", {{"CodeTerme", Terme(t)}, {"TypeAMM", t % 4 == 3 ? "3" : "2"},
                                    {"Libelle", libelle}, {"LibelleMajuscules", libelle},
                                    {"AgeMin", c.ageMin}, {"AgeMax", c.ageMax}, {"PoidsMin", c.poidsMin},
                                    {"PoidsMax", c.poidsMax}, {"GrossesseMin", c.grossesseMin},
                                    {"GrossesseMax", c.grossesseMax}});
            for (int k = 0; k < CodesParTerme; ++k)
                base.Ajoute("VDXVAMMC", {{"CodeTerme", Terme(t)}, {"TypeLien", "02"}, {"CodeLie", CodeCIM10(t, k)}});
        }
        for (int i = 0; i < NombreProduits; ++i) {
            base.Ajoute("VDXPRO", {{"CodeCIP", Produit(i)}, {"Libelle", "PRODUIT " + std::to_string(i)}});
            std::unordered_set<int> vus;
            for (int r = 0; r < TermesParProduit; ++r) {
                const int t = TermeDe(i, r);
                if (!vus.insert(t).second) continue;
                base.Ajoute("VDXVAMPC", {{"CodeCIP", Produit(i)}, {"TypeAMM", t % 4 == 3 ? "3" : "2"},
                                         {"CodeTerme", Terme(t)}, {"NiveauLien", r % 3}});
            }
        }
        base.Ajoute("VDXVCIM", {{"Code", "B07.0"}, {"Libelle", "Verrue"}, {"LibelleCle", "VERRUE"}});
        base.Ajoute("VDXVCISP", {{"Code", "K86"}, {"Libelle", "Hypertension"}, {"LibelleCle", "HYPERTENSION"}});
        base.Ajoute("VDXVCICI", {{"CodeCISP", "K86"}, {"CodeCIM10", CodeCIM10(TermeDe(20, 1), 0)}});
        base.Repertoire();
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

const std::vector<std::string> Produits = {Produit(10), Produit(20), Produit(30), Produit(40), Produit(50)};
// Two CIM10 codes of the products' terms, a CISP code, two terms.
const std::vector<std::pair<std::string, int32_t>> Pathologies = {{CodeCIM10(TermeDe(10, 0), 0), 3},
                                                                  {CodeCIM10(TermeDe(30, 2), 1), 3},
                                                                  {"K86", 2},
                                                                  {Terme(TermeDe(40, 3)), 1},
                                                                  {Terme(7), 1}};
constexpr int32_t Age = 120, Poids = 30, Grossesse = 0;



void ContreIndicationsProfil2(benchmark::State& state) {
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0);
    std::vector<std::string> codes;
    std::vector<int32_t> types, valeurs;
    for (const auto& [code, type] : Pathologies) {
        codes.push_back(code);
        types.push_back(type);
        valeurs.push_back(static_cast<int32_t>(valeurs.size()));
    }
    SAFEARRAY* c = essai::TableauDeChaines(codes);
    SAFEARRAY* t = essai::TableauDEntiers(types);
    SAFEARRAY* v = essai::TableauDEntiers(valeurs);
    SAFEARRAY* p = essai::TableauDeChaines(Produits);
    SAFEARRAY* alertes = hote::CreeTableau(hote::TailleFiche(7));
    int32_t n = 0;
    for (auto _ : state) n = ContreIndicationsProfil2_Vdx(&c, &t, &v, &p, &alertes, Age, Poids, Grossesse, 0, "F");
    state.counters["alertes"] = n;
    if (n <= 0) state.SkipWithError("no alert");
    VideTableau(alertes, GabaritDe<AlerteCI>());
    hote::Detruit(alertes);
    for (SAFEARRAY* a : {c, t, v, p}) SafeArrayDestroy(a);
    DeConnection2_Vdx();
}
BENCHMARK(ContreIndicationsProfil2)->Unit(benchmark::kMicrosecond);

// The same check from hash maps.
void Reference_ContreIndicationsProfil2(benchmark::State& state) {
    struct Lien {
        std::string produit, terme;
        int32_t chiffre;
        std::string code;
    };
    struct Alerte {
        int32_t niveau;
        std::string produit, libelleProduit, terme, libelleTerme, patient;
    };
    std::unordered_map<std::string, std::vector<std::pair<std::string, int32_t>>> termesProduit;
    std::unordered_map<std::string, std::vector<std::string>> codesTerme, cisp{{"K86", {CodeCIM10(TermeDe(20, 1), 0)}}};
    std::unordered_map<std::string, Condition> conditions;
    std::unordered_map<std::string, std::string> libellesTermes, libellesProduits;
    for (int x = 0; x < NombreTermes; ++x) {
        for (int k = 0; k < CodesParTerme; ++k) codesTerme[Terme(x)].push_back(CodeCIM10(x, k));
        conditions[Terme(x)] = ConditionDe(x);
        libellesTermes[Terme(x)] = "TERME " + std::to_string(x);
    }
    for (int i = 0; i < NombreProduits; ++i) {
        libellesProduits[Produit(i)] = "PRODUIT " + std::to_string(i);
        std::unordered_set<int> vus;
        for (int r = 0; r < TermesParProduit; ++r) {
            const int x = TermeDe(i, r);
            if (vus.insert(x).second) termesProduit[Produit(i)].push_back({Terme(x), x % 4 == 3 ? 3 : r % 3});
        }
    }
    const auto commence = [](const std::string& a, const std::string& b) {
        return a.size() <= b.size() ? b.compare(0, a.size(), a) == 0 : a.compare(0, b.size(), b) == 0;
    };
    std::vector<Alerte> alertes;
    for (auto _ : state) {
        std::vector<Lien> termes, codes;
        for (const std::string& produit : Produits)
            for (const auto& [terme, chiffre] : termesProduit.at(produit)) {
                termes.push_back({produit, terme, chiffre, {}});
                for (const std::string& code : codesTerme.at(terme)) codes.push_back({produit, terme, chiffre, code});
            }
        alertes.clear();
        std::unordered_set<std::string> vues;
        const auto ajoute = [&](int32_t niveau, const Lien& l, const std::string& patient) {
            if (!vues.insert(l.produit + l.terme).second) return;
            alertes.push_back({niveau, l.produit, libellesProduits.at(l.produit), l.terme, libellesTermes.at(l.terme), patient});
        };
        for (const auto& [code, type] : Pathologies) {
            if (type == 1) {
                for (const Lien& l : termes)
                    if (l.terme == code) ajoute(l.chiffre, l, code);
            } else {
                const std::vector<std::string> cim = type == 2 ? cisp.at(code) : std::vector<std::string>{code};
                for (const std::string& c : cim)
                    for (const Lien& l : codes)
                        if (commence(l.code, c)) ajoute(l.chiffre, l, c);
            }
        }
        for (const Lien& l : termes) {
            const Condition& c = conditions.at(l.terme);
            bool applicable = true, defini = false;
            if (c.ageMax) defini = true, applicable &= !(Age < c.ageMin || Age >= c.ageMax);
            if (c.poidsMax) defini = true, applicable &= !(Poids < c.poidsMin || Poids >= c.poidsMax);
            if (c.grossesseMax) defini = true, applicable &= !(Grossesse == 0 || Grossesse < c.grossesseMin);
            if (applicable && defini) ajoute(0, l, "");
        }
        std::stable_sort(alertes.begin(), alertes.end(),
                         [](const Alerte& a, const Alerte& b) { return a.libelleProduit < b.libelleProduit; });
        benchmark::DoNotOptimize(alertes.data());
    }
    state.counters["alertes"] = static_cast<double>(alertes.size());
}
BENCHMARK(Reference_ContreIndicationsProfil2)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
