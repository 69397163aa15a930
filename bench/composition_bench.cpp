// The composition of one product and the products of a substance held by
// 500 of 2,000 products, each beside the same work done in memory: the
// components and their labels from hash maps, the products of the
// substance from a vector of codes, each looked up, filtered, made unique
// and sorted by label.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/hote.h"
#include "products/composition.h"
#include "session/resultat.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombreProduits = 2000;
constexpr int Partage = 4;            // one product in so many holds the substance
constexpr int ComposantsParProduit = 3;
constexpr int32_t Substance = 2202;   // held by NombreProduits / Partage products
constexpr int NombreSubstances = 200;

std::string Code(int i) {
    char code[8];
    std::snprintf(code, sizeof code, "3%06d", i);
    return code;
}
std::string Libelle(int i) {
    char texte[40];
    std::snprintf(texte, sizeof texte, "PRODUIT %05d CPR", (i * 7919) % NombreProduits);  // not in code order
    return texte;
}
std::string LibelleSubstance(int32_t s) { return "SUBSTANCE " + std::to_string(s); }
// The components of product i: the shared substance for one product in
// Partage, then others.
int32_t Composant(int i, int rang) {
    if (rang == 0 && i % Partage == 0) return Substance;
    return 1000 + (i * ComposantsParProduit + rang) % NombreSubstances;
}

struct Base {
    essai::BaseDeTest base;
    Base() {
        essai::AjouteIdentite(base);
        for (int32_t s = 1000; s < 1000 + NombreSubstances; ++s)
            base.Ajoute("VDXVPA", {{"CodeSubstance", s}, {"Libelle", LibelleSubstance(s)}});
        base.Ajoute("VDXVPA", {{"CodeSubstance", Substance}, {"Libelle", LibelleSubstance(Substance)}});
        base.Ajoute("VDXVPAU", {{"Code", 1}, {"LibelleUnite", "mg"}});
        base.Ajoute("VDXVPAE", {{"Code", 1}, {"LibelleExprime", "un comprimé"}});
        base.Ajoute("VDXYDCI", {{"Code", "9000001"}, {"Libelle", "Ligne en DC"}});
        for (int i = 0; i < NombreProduits; ++i) {
            const std::string code = Code(i);
            base.Ajoute("VDXPRO", {{"CodeCIP", code}, {"Libelle", Libelle(i)}, {"CodeRubrique", "10"}});
            base.Ajoute("VDXVCOMG", {{"CodeCIP", code}, {"CodeExprime", 1}, {"TexteComposition", "Composition d'essai"}});
            for (int r = 0; r < ComposantsParProduit; ++r) {
                const int32_t s = Composant(i, r);
                char rang[4];
                std::snprintf(rang, sizeof rang, "%03d", r);
                base.Ajoute("VDXVCOMP", {{"CodeCIP", code}, {"Rang", rang}, {"CodeSubstance", s},
                                         {"QuantiteTexte", "500 mg"}, {"Quantite", 500.0}, {"CodeUnite", 1}});
                char cle[6];
                std::snprintf(cle, sizeof cle, "%05d", s);
                base.Ajoute("VDXVPAP", {{"CodeSubstance", cle}, {"CodeCIP", code}});
            }
        }
        base.Repertoire();
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

// A session in array mode on the base, and a host array of the shape.
class Session {
public:
    explicit Session(Gabarit forme) : forme_(std::move(forme)) {
        InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
        Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0);
        tableau = hote::CreeTableau(hote::TailleFiche(static_cast<uint32_t>(forme_.size())));
    }
    ~Session() {
        VideTableau(tableau, forme_);
        hote::Detruit(tableau);
        SysFreeString(exprime);
        SysFreeString(composition);
        DeConnection2_Vdx();
    }
    SAFEARRAY* tableau;
    BSTR exprime = nullptr, composition = nullptr;

private:
    Gabarit forme_;
};

const Gabarit TroisChaines{TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};

void ProduitPA(benchmark::State& state) {
    Session s(GabaritDe<vdx::Composant>());
    const std::string code = Code(NombreProduits / 2);
    int32_t n = 0;
    for (auto _ : state) n = ProduitPA_Vdx(code.c_str(), &s.tableau, &s.exprime, &s.composition);
    if (n != ComposantsParProduit) state.SkipWithError("components missing");
}
BENCHMARK(ProduitPA);

// The same composition from hash maps: the product's components, each with
// its substance's and unit's labels, the strings copied out.
void Reference_ProduitPA(benchmark::State& state) {
    struct Ligne {
        int32_t substance;
        float quantite;
        std::string texte;
        int32_t unite;
    };
    std::unordered_map<std::string, std::vector<Ligne>> composants;
    std::unordered_map<int32_t, std::string> substances, unites{{1, "mg"}};
    for (int i = 0; i < NombreProduits; ++i)
        for (int r = 0; r < ComposantsParProduit; ++r) composants[Code(i)].push_back({Composant(i, r), 500, "500 mg", 1});
    for (int32_t s = 1000; s < 1000 + NombreSubstances; ++s) substances[s] = LibelleSubstance(s);
    substances[Substance] = LibelleSubstance(Substance);
    const std::string code = Code(NombreProduits / 2);
    std::vector<std::string> sortie;
    for (auto _ : state) {
        sortie.clear();
        for (const Ligne& l : composants.at(code)) {
            sortie.push_back(substances.at(l.substance));
            sortie.push_back(l.texte);
            sortie.push_back(unites.at(l.unite));
        }
        benchmark::DoNotOptimize(sortie.data());
    }
}
BENCHMARK(Reference_ProduitPA);

void PAProduits(benchmark::State& state) {
    Session s(TroisChaines);
    int32_t n = 0;
    for (auto _ : state) n = PAProduits_Vdx(Substance, &s.tableau);
    if (n != NombreProduits / Partage) state.SkipWithError("products missing");
}
BENCHMARK(PAProduits)->Unit(benchmark::kMicrosecond);

// The same list from memory: the codes of the substance, each product
// looked up and tested, unique by code, sorted by label.
void Reference_PAProduits(benchmark::State& state) {
    struct Produit {
        std::string libelle;
        int32_t drapeaux;
        std::string suppression;
    };
    std::unordered_map<int32_t, std::vector<std::string>> inverse;
    std::unordered_map<std::string, Produit> produits;
    std::unordered_set<std::string> lignesDC{"9000001"};
    for (int i = 0; i < NombreProduits; ++i) {
        produits[Code(i)] = {Libelle(i), 0, ""};
        for (int r = 0; r < ComposantsParProduit; ++r) inverse[Composant(i, r)].push_back(Code(i));
    }
    struct Ligne {
        std::string code, libelle, nature;
    };
    std::vector<Ligne> lignes;
    for (auto _ : state) {
        lignes.clear();
        std::unordered_set<std::string> vus;
        for (const std::string& code : inverse.at(Substance)) {
            if (!vus.insert(code).second) continue;
            const Produit& p = produits.at(code);
            if ((p.drapeaux & 8) || !p.suppression.empty() || lignesDC.count(code)) continue;
            lignes.push_back({code, p.libelle, "PA"});
        }
        std::stable_sort(lignes.begin(), lignes.end(), [](const Ligne& a, const Ligne& b) { return a.libelle < b.libelle; });
        benchmark::DoNotOptimize(lignes.data());
    }
}
BENCHMARK(Reference_PAProduits)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
