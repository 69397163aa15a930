// The exports on the open base built from the public data (20,080 real
// presentations): a product's label beside a hash lookup of the same label
// in memory, a page of the step search, and the interactions of a real
// prescription of ten products. The base is the directory named by
// VDX_BASE_OUVERTE (default build/open-base, made by the target open_base);
// without it every benchmark says so and is skipped.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <unordered_map>
#include <vector>

#include "checks/interactions.h"
#include "platform/hote.h"
#include "session/resultat.h"
#include "session/valeurs_hote.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

std::string Base() {
    const char* base = std::getenv("VDX_BASE_OUVERTE");
    return base ? base : "build/open-base";
}

const Gabarit TroisChaines{TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};

// A connection in array mode to the open base; false when it isn't there.
bool Connecte(benchmark::State& state) {
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    if (Connection2_Vdx(Base().c_str(), 0, 0) == 1) return true;
    state.SkipWithError("no open base: build the target open_base, or set VDX_BASE_OUVERTE");
    return false;
}

// The first product whose label begins with a text.
std::string Premier(const char* debut) {
    SAFEARRAY* t = hote::CreeTableau(hote::TailleFiche(3));
    std::string code;
    if (RechercheProduitParPas_Vdx(debut, &t, 0, "", 1) == 1)
        code = std::string(hote::Octets(*hote::Chaine(hote::Fiche(t->pvData, t->cbElements, 0), 0)));
    VideTableau(t, TroisChaines);
    hote::Detruit(t);
    return code;
}

void LibelleProduit(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier("DOLIPRANE 1000");
    BSTR libelle = nullptr;
    for (auto _ : state) benchmark::DoNotOptimize(LibelleProduit_Vdx(code.c_str(), &libelle));
    SysFreeString(libelle);
    DeConnection2_Vdx();
}
BENCHMARK(LibelleProduit);

// The same label from a hash map of every product's label.
void Reference_LibelleProduit(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::unordered_map<std::string, std::string> libelles;
    const int32_t total = TotalProduit_Vdx();
    for (int32_t i = 0; i < total; ++i) {
        BSTR code = nullptr, libelle = nullptr;
        if (GetProduit_Vdx(i, &code, &libelle) == 1)
            libelles.emplace(std::string(hote::Octets(code)), std::string(hote::Octets(libelle)));
        SysFreeString(code);
        SysFreeString(libelle);
    }
    const std::string code = Premier("DOLIPRANE 1000");
    std::string copie;
    for (auto _ : state) {
        copie = libelles.at(code);
        benchmark::DoNotOptimize(copie.data());
    }
    state.counters["produits"] = total;
    DeConnection2_Vdx();
}
BENCHMARK(Reference_LibelleProduit);

void RechercheProduitParPas(benchmark::State& state) {
    if (!Connecte(state)) return;
    SAFEARRAY* t = hote::CreeTableau(hote::TailleFiche(3));
    int32_t n = 0;
    for (auto _ : state) n = RechercheProduitParPas_Vdx("DOLI", &t, 0, "", 20);
    state.counters["lignes"] = n;
    VideTableau(t, TroisChaines);
    hote::Detruit(t);
    DeConnection2_Vdx();
}
BENCHMARK(RechercheProduitParPas)->Unit(benchmark::kMicrosecond);

// A prescription of ten common products: an anticoagulant, NSAIDs, an
// antidepressant, an opioid, antiplatelet drugs, a statin, an antibiotic,
// an antidiabetic, a thyroid hormone.
void Interactions2(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::vector<std::string> codes;
    for (const char* debut : {"COUMADINE", "ADVIL 200", "DEROXAT", "CONTRAMAL 50", "KARDEGIC", "PLAVIX", "TAHOR",
                              "CLAMOXYL", "GLUCOPHAGE", "LEVOTHYROX"})
        if (std::string code = Premier(debut); !code.empty()) codes.push_back(code);
    SAFEARRAY* produits = essai::TableauDeChaines(codes);
    SAFEARRAY* lignes = hote::CreeTableau(hote::TailleFiche(23));
    int32_t n = 0;
    for (auto _ : state) n = Interactions2_Vdx(&produits, nullptr, nullptr, &lignes, 0, 0, 0, 0, "");
    state.counters["produits"] = static_cast<double>(codes.size());
    state.counters["lignes"] = n;
    VideTableau(lignes, GabaritDe<FicheInteraction2>());
    hote::Detruit(lignes);
    SafeArrayDestroy(produits);
    DeConnection2_Vdx();
}
BENCHMARK(Interactions2)->Unit(benchmark::kMicrosecond);

// A long list of real lines: every tenth product of the base in code order,
// as many as asked.
void Interactions2_Liste(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::vector<std::string> codes;
    const int32_t total = TotalProduit_Vdx();
    for (int32_t i = 0; i < total && static_cast<int64_t>(codes.size()) < state.range(0); i += 10) {
        ChaineHote code, libelle;
        if (GetProduit_Vdx(i, code.Adresse(), libelle.Adresse()) == 1) codes.emplace_back(code.Octets());
    }
    EntreeHote produits = EntreeHote::Chaines(codes);
    TableauHote<VdxInteraction2> lignes(GabaritDe<FicheInteraction2>());
    int32_t n = 0;
    for (auto _ : state) n = Interactions2_Vdx(produits.Adresse(), nullptr, nullptr, lignes.Adresse(), 0, 0, 0, 0, "");
    state.counters["produits"] = static_cast<double>(codes.size());
    state.counters["lignes"] = n;
    DeConnection2_Vdx();
}
BENCHMARK(Interactions2_Liste)->Arg(100)->Arg(400)->Arg(1600)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
