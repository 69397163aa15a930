// The search of products by indication (RechercheIndicationProduits_Vdx) in
// memory mode: on the sample base, its term of hypercholesterolaemia; on
// the open base with a generated vocabulary of indications (3,000 terms,
// 20 linked to each of 150 CIM10 codes, 15 products a term, one term in
// ten with an equivalent), a CIM10 code reaching 300 products, beside the
// same walks and merges over sorted copies of the keys in memory. The
// open base's sources are the directory named by VDX_SOURCES_OUVERTES
// (default build/open-sources, made by the target open_base), the sample
// base VDX_BASE_EXEMPLE (default build/sample-base); without them the
// benchmarks say so and are skipped.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "store/sources.h"
#include "vdx32/vdx32.h"

namespace {

namespace fs = std::filesystem;

std::string Chemin(const char* variable, const char* defaut) {
    const char* valeur = std::getenv(variable);
    return valeur ? valeur : defaut;
}

constexpr int Termes = 3000, TermesParCode = 20, ProduitsParTerme = 15;

std::string Terme(int i) {
    char texte[16];
    std::snprintf(texte, sizeof texte, "%010d", 9000000 + i);
    return texte;
}
std::string CodeCIM10(int c) {
    char texte[8];
    std::snprintf(texte, sizeof texte, "Q%03d", c);
    return texte;
}
std::string LibelleTerme(int i) { return "Indication generee " + std::to_string(i); }
// The equivalent of term i, for one term in ten: the term before it, of the
// same CIM10 code.
bool AUnEquivalent(int i) { return i % 10 == 1; }

struct Produit {
    std::string code, libelle;
    bool hospitalier = false;
};

// The products of the open base's sources: code, label, hospital flag.
std::vector<Produit> ProduitsDesSources(const fs::path& sources) {
    std::ifstream f(sources / "VDXPRO.tsv");
    std::vector<Produit> produits;
    std::string ligne;
    std::getline(f, ligne);
    while (std::getline(f, ligne)) {
        std::vector<std::string> champs;
        std::stringstream s(ligne);
        for (std::string c; std::getline(s, c, '\t');) champs.push_back(c);
        if (champs.size() > 25) produits.push_back({champs[0], champs[1], (std::atoi(champs[25].c_str()) & 8) != 0});
    }
    return produits;
}

// The open base with the generated vocabulary, built once in a temporary
// directory; its products kept for the baseline.
struct BaseGeneree {
    fs::path dossier;
    std::vector<Produit> produits;
    bool prete = false;

    std::string ProduitDuTerme(int terme, int j) const {
        return produits[static_cast<size_t>(terme * ProduitsParTerme + j) % produits.size()].code;
    }

    BaseGeneree() {
        const fs::path ouvertes = Chemin("VDX_SOURCES_OUVERTES", "build/open-sources");
        if (!fs::exists(ouvertes / "VDXPRO.tsv")) return;
        produits = ProduitsDesSources(ouvertes);
        dossier = fs::temp_directory_path() / ("vdx-indications-" + std::to_string(getpid()));
        fs::remove_all(dossier);
        const fs::path sources = dossier / "sources";
        fs::create_directories(dossier);
        fs::copy(ouvertes, sources);
        std::ofstream termes(sources / "VDXVAMM.tsv"), liens(sources / "VDXVAMMC.tsv"),
            produitsTermes(sources / "VDXVAMPC.tsv"), equivalents(sources / "VDXVAMME.tsv"), cim10(sources / "VDXVCIM.tsv");
        termes << "CodeTerme\tTypeAMM\tLibelle\tLibelleMajuscules\tSexeTerme\tAllaitementTerme\tAgeMin\tAgeMax\tPoidsMin"
                  "\tPoidsMax\tGrossesseMin\tGrossesseMax\tTypeAnalyse\tTexteAnalyse\n";
        liens << "CodeTerme\tTypeLien\tCodeLie\n";
        produitsTermes << "CodeCIP\tTypeAMM\tCodeTerme\tNiveauLien\n";
        equivalents << "CodeTerme\tCodeEquivalent\n";
        cim10 << "Code\tLibelle\tLibelleCle\n";
        for (int c = 0; c < Termes / TermesParCode; ++c) cim10 << CodeCIM10(c) << "\tCode " << c << "\tCODE " << c << "\n";
        for (int i = 0; i < Termes; ++i) {
            termes << Terme(i) << "\t1\t" << LibelleTerme(i) << "\t\t\t0\t0\t0\t0\t0\t0\t0\t0\t\n";
            liens << Terme(i) << "\t01\t" << CodeCIM10(i / TermesParCode) << "\n";
            for (int j = 0; j < ProduitsParTerme; ++j) produitsTermes << ProduitDuTerme(i, j) << "\t1\t" << Terme(i) << "\t0\n";
            if (AUnEquivalent(i))
                equivalents << Terme(i) << "\t" << Terme(i - 1) << "\n" << Terme(i - 1) << "\t" << Terme(i) << "\n";
        }
        for (std::ofstream* f : {&termes, &liens, &produitsTermes, &equivalents, &cim10}) f->close();
        vdx::ConstruitBase(sources, dossier / "base");
        prete = true;
    }
    ~BaseGeneree() {
        if (!dossier.empty()) fs::remove_all(dossier);
    }
};

const BaseGeneree& Generee() {
    static const BaseGeneree base;
    return base;
}

// The CIM10 code searched: the 43rd, its 20 terms reaching 300 products.
const std::string CodeCherche = CodeCIM10(42);

bool Connecte(benchmark::State& state, const std::string& base) {
    if (Connection_Vdx(base.c_str(), 2, 0) == 1) return true;
    state.SkipWithError(("no base at " + base + ": build the sample, the target open_base, or set the variables").c_str());
    return false;
}

void Chercher(benchmark::State& state, const char* code, int32_t type) {
    int32_t n = 0;
    for (auto _ : state) n = RechercheIndicationProduits_Vdx(code, type, nullptr);
    state.counters["lignes"] = n;
    DeConnection2_Vdx();
}

void IndicationExemple(benchmark::State& state) {
    if (Connecte(state, Chemin("VDX_BASE_EXEMPLE", "build/sample-base"))) Chercher(state, "0000000107", 1);
}
BENCHMARK(IndicationExemple)->Unit(benchmark::kMicrosecond);

void IndicationGeneree(benchmark::State& state) {
    if (!Generee().prete) {
        state.SkipWithError("no open sources: build the target open_base, or set VDX_SOURCES_OUVERTES");
        return;
    }
    if (Connecte(state, (Generee().dossier / "base").string())) Chercher(state, CodeCherche.c_str(), 3);
}
BENCHMARK(IndicationGeneree)->Unit(benchmark::kMicrosecond);

// The baseline: the keys of the same tables as sorted vectors in memory,
// the same walk (the links under the code, the products of each term, the
// term's wording, the product, the equivalents and their labels), the same
// merge, the same sort, the rows formatted.
void Reference_IndicationGeneree(benchmark::State& state) {
    const BaseGeneree& b = Generee();
    if (!b.prete) {
        state.SkipWithError("no open sources: build the target open_base, or set VDX_SOURCES_OUVERTES");
        return;
    }
    using Paire = std::pair<std::string, std::string>;
    std::vector<Paire> liens, produitsTermes, equivalents, libelles;  // (key, value), sorted by key
    std::vector<std::pair<std::string, const Produit*>> produits;
    for (int i = 0; i < Termes; ++i) {
        liens.emplace_back(CodeCIM10(i / TermesParCode) + "      01" + Terme(i), Terme(i));
        for (int j = 0; j < ProduitsParTerme; ++j) produitsTermes.emplace_back(Terme(i) + "1" + b.ProduitDuTerme(i, j), b.ProduitDuTerme(i, j));
        libelles.emplace_back(Terme(i), LibelleTerme(i));
        if (AUnEquivalent(i)) {
            equivalents.emplace_back(Terme(i) + Terme(i - 1), Terme(i - 1));
            equivalents.emplace_back(Terme(i - 1) + Terme(i), Terme(i));
        }
    }
    for (const Produit& p : b.produits) produits.emplace_back(p.code, &p);
    for (auto* v : {&liens, &produitsTermes, &equivalents, &libelles}) std::sort(v->begin(), v->end());
    std::sort(produits.begin(), produits.end());
    const auto apres = [](auto& v, const std::string& cle) {
        return std::lower_bound(v.begin(), v.end(), cle, [](const auto& e, const std::string& c) { return e.first < c; });
    };
    const auto libelle = [&](const std::string& terme) {
        const auto l = apres(libelles, terme);
        return l != libelles.end() && l->first == terme ? l->second : std::string();
    };
    struct Ligne {
        int exact;
        std::string code, libelle, indication;
    };
    size_t n = 0;
    for (auto _ : state) {
        std::vector<Ligne> lignes;
        const std::string sonde = CodeCherche + "      01";
        for (auto l = apres(liens, sonde); l != liens.end() && l->first.starts_with(CodeCherche); ++l) {
            const std::string& terme = l->second;
            const std::string debut = terme + "1";
            // The term's wording and its equivalents' labels, once a term.
            const std::string indication = libelle(terme);
            std::vector<std::string> libellesEquivalents;
            for (auto e = apres(equivalents, terme); e != equivalents.end() && e->first.starts_with(terme); ++e)
                libellesEquivalents.push_back(libelle(e->second));
            for (auto p = apres(produitsTermes, debut); p != produitsTermes.end() && p->first.starts_with(debut); ++p) {
                const auto produit = apres(produits, p->second);
                if (produit == produits.end() || produit->first != p->second || produit->second->hospitalier) continue;
                if (p->second.starts_with('8') || p->second.starts_with('1')) continue;
                Ligne nouvelle{0, p->second, produit->second->libelle, indication};
                for (Ligne& ligne : lignes)
                    for (const std::string& equivalent : libellesEquivalents)
                        if (equivalent == ligne.indication) {
                            std::string jointe = lignes.front().indication + "," + nouvelle.indication;
                            ligne.indication = jointe;
                            nouvelle.indication = std::move(jointe);
                        }
                lignes.push_back(std::move(nouvelle));
            }
        }
        std::stable_sort(lignes.begin(), lignes.end(), [](const Ligne& a, const Ligne& c) { return a.libelle < c.libelle; });
        std::string plat;
        for (const Ligne& l : lignes)
            plat += std::to_string(l.exact) + "@" + l.code + "@" + l.libelle + "@" + l.indication + "\r\n";
        benchmark::DoNotOptimize(plat);
        n = lignes.size();
    }
    state.counters["lignes"] = static_cast<double>(n);
}
BENCHMARK(Reference_IndicationGeneree)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
