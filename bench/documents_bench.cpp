// The monograph: MonographieHtml_Vdx of the sample's fullest product (every
// stored chapter) and of 100 products of the open base, each beside a
// baseline that has the same chapter texts already in memory, joins them
// with their title bars, runs the same character table and writes the same
// file. The side documents: the sample's notice with its two pictures; on
// the open base whether a product has links, and its links in memory mode
// beside the same rows read from a std::map. The sample base is VDX_BASE_ECHANTILLON (default build/sample-base),
// the open base VDX_BASE_OUVERTE (default build/open-base, target
// open_base); a benchmark without its base says so and is skipped.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "documents/annexes.h"
#include "documents/chapitre.h"
#include "documents/fiche_produit.h"
#include "documents/html.h"
#include "documents/monographie.h"
#include "documents/textes_amm.h"
#include "products/produits.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

std::string Base(const char* variable, const char* defaut) {
    const char* base = std::getenv(variable);
    return base ? base : defaut;
}

bool Connecte(benchmark::State& state, const std::string& base) {
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    if (Connection2_Vdx(base.c_str(), 0, 0) == 1) return true;
    state.SkipWithError(("no base at " + base).c_str());
    return false;
}

const std::string& Fichier() {
    static const std::string f = (std::filesystem::temp_directory_path() / "vdx-monographie-bench.html").string();
    return f;
}

// The texts of a product's page, read once: the made chapters and every
// stored chapter as text.
std::vector<std::string> Textes(const std::string& cip) {
    const DansContexte dans(session());
    std::vector<std::string> t = {ChapitreFormePresentation(cip), ChapitreComposition(cip),
                                  ChapitreClasses(cip, Classement::Therapeutique), ChapitreClasses(cip, Classement::ATC),
                                  DonneesTechnicoReglementaires(session(), cip)};
    for (TextesAMM textes : {TextesAMM::Principaux, TextesAMM::Complementaires})
        if (const auto fiche = FicheChapitres(textes, cip))
            for (int n = 1; n <= ChapitresDe(textes); ++n) t.push_back(ExtraitChapitre(n, *fiche, false));
    return t;
}

// The baseline's page: each text behind a title bar, the table run over
// the whole, the file written in one block.
void EcritEnMemoire(const std::vector<std::string>& textes) {
    std::string page = "<HTML><HEAD><TITLE>T</TITLE></HEAD><BODY>";
    for (const std::string& t : textes) {
        if (t.empty()) continue;
        page += "<table width=\"100%\" bgcolor=\"#0152A3\"><tr><td><a name=\"x\">Titre</a></td></tr></table><hr>";
        page += EncodeHtml(t, true);
    }
    page += "</BODY></HTML>";
    EcritPage(Fichier().c_str(), EncodeHtml(page, false));
}

// The codes of `nombre` products spread over the open base.
std::vector<std::string> Repartis(int nombre) {
    const DansContexte dans(session());
    const int32_t total = TotalProduit(session());
    std::vector<std::string> codes;
    for (int i = 0; i < nombre; ++i) codes.push_back(ProduitAuRang(session(), i * (total / nombre)).code);
    return codes;
}

constexpr char LePlusComplet[] = "3595583";

void MonographieEchantillon(benchmark::State& state) {
    if (!Connecte(state, Base("VDX_BASE_ECHANTILLON", "build/sample-base"))) return;
    for (auto _ : state) benchmark::DoNotOptimize(MonographieHtml_Vdx(LePlusComplet, Fichier().c_str(), "m.css"));
    DeConnection2_Vdx();
}
BENCHMARK(MonographieEchantillon)->Unit(benchmark::kMicrosecond);

void MonographieEchantillonEnMemoire(benchmark::State& state) {
    if (!Connecte(state, Base("VDX_BASE_ECHANTILLON", "build/sample-base"))) return;
    const std::vector<std::string> textes = Textes(LePlusComplet);
    for (auto _ : state) EcritEnMemoire(textes);
    DeConnection2_Vdx();
}
BENCHMARK(MonographieEchantillonEnMemoire)->Unit(benchmark::kMicrosecond);

void MonographiesOuvertes(benchmark::State& state) {
    if (!Connecte(state, Base("VDX_BASE_OUVERTE", "build/open-base"))) return;
    const std::vector<std::string> codes = Repartis(100);
    for (auto _ : state)
        for (const std::string& code : codes) benchmark::DoNotOptimize(MonographieHtml_Vdx(code.c_str(), Fichier().c_str(), ""));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(codes.size()));
    DeConnection2_Vdx();
}
BENCHMARK(MonographiesOuvertes)->Unit(benchmark::kMillisecond);

void MonographiesOuvertesEnMemoire(benchmark::State& state) {
    if (!Connecte(state, Base("VDX_BASE_OUVERTE", "build/open-base"))) return;
    std::vector<std::vector<std::string>> pages;
    for (const std::string& code : Repartis(100)) pages.push_back(Textes(code));
    for (auto _ : state)
        for (const auto& textes : pages) EcritEnMemoire(textes);
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(pages.size()));
    DeConnection2_Vdx();
}
BENCHMARK(MonographiesOuvertesEnMemoire)->Unit(benchmark::kMillisecond);

void NoticeEchantillon(benchmark::State& state) {
    if (!Connecte(state, Base("VDX_BASE_ECHANTILLON", "build/sample-base"))) return;
    const std::filesystem::path dossier = std::filesystem::temp_directory_path() / "vdx-notice-bench";
    std::filesystem::create_directories(dossier);
    const std::string notice = (dossier / "notice.html").string();
    for (auto _ : state) benchmark::DoNotOptimize(NoticeHtml_Vdx(LePlusComplet, notice.c_str()));
    std::filesystem::remove_all(dossier);
    DeConnection2_Vdx();
}
BENCHMARK(NoticeEchantillon)->Unit(benchmark::kMicrosecond);

// 1,000 products spread over the open base, and the first of them with a
// link, in memory mode.
struct Liens {
    std::vector<std::string> codes;
    std::string lie;
};
bool ConnecteEnMemoire(benchmark::State& state, Liens& l) {
    if (Connection_Vdx(Base("VDX_BASE_OUVERTE", "build/open-base").c_str(), 2, 0) != 1) {
        state.SkipWithError("no open base");
        return false;
    }
    l.codes = Repartis(1000);
    for (const std::string& c : l.codes)
        if (ExisteLien_Vdx(c.c_str()) == 1) {
            l.lie = c;
            break;
        }
    return true;
}

void ExisteLienOuvert(benchmark::State& state) {
    Liens l;
    if (!ConnecteEnMemoire(state, l)) return;
    for (auto _ : state) benchmark::DoNotOptimize(ExisteLien_Vdx(l.lie.c_str()));
    DeConnection2_Vdx();
}
BENCHMARK(ExisteLienOuvert);

void ListeLienOuvert(benchmark::State& state) {
    Liens l;
    if (!ConnecteEnMemoire(state, l)) return;
    for (auto _ : state) benchmark::DoNotOptimize(ListeLien_Vdx(l.lie.c_str(), nullptr));
    DeConnection2_Vdx();
}
BENCHMARK(ListeLienOuvert);

// The baseline: the links of the 1,000 products in a std::map by code; the
// product's rows found, one a document, and made the same flat rows by the
// library's rows (Lignes), as the export delivers them.
void Reference_ListeLienOuvert(benchmark::State& state) {
    Liens l;
    if (!ConnecteEnMemoire(state, l)) return;
    std::map<std::string, std::vector<LigneLien>> parCode;
    {
        const DansContexte dans(session());
        for (const std::string& c : l.codes) parCode[c] = ListeLiens(c);
    }
    for (auto _ : state) {
        std::vector<const LigneLien*> lignes;
        for (const LigneLien& r : parCode.at(l.lie)) {
            bool deja = false;
            for (const LigneLien* d : lignes) deja = deja || d->NomDocument == r.NomDocument;
            if (!deja) lignes.push_back(&r);
        }
        std::vector<LigneLien> copies;
        for (const LigneLien* r : lignes) copies.push_back(*r);
        benchmark::DoNotOptimize(LignesSansCleSelon<LigneLien>(std::move(copies)).TextePlat());
    }
    DeConnection2_Vdx();
}
BENCHMARK(Reference_ListeLienOuvert);

}  // namespace

BENCHMARK_MAIN();
