// The build of a base from sources, as `vdx build` does it, on a generated
// source of 100,000 products, beside the same records parsed and keyed into
// std::maps in memory.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "store/catalogue.h"
#include "store/magasin.h"
#include "store/sources.h"

namespace {

namespace fs = std::filesystem;
using namespace vdx;

constexpr int NombreProduits = 100000;

struct Sources {
    fs::path dossier;
    Sources() {
        char modele[] = "/tmp/vdx32-bench-XXXXXX";
        dossier = mkdtemp(modele);
        fs::create_directories(dossier / "sources");
        std::ofstream f(dossier / "sources" / "VDXPRO.tsv", std::ios::binary);
        f << "CodeCIP\tLibelle\tCodeLaboratoire\tCodeRubrique\n";
        for (int i = 0; i < NombreProduits; ++i)
            f << 3000000 + i << "\tPRODUIT " << (i * 7919) % NombreProduits << " COMPRIM\xC3\x89 " << i % 1000
              << " mg\tL" << i % 97 << '\t' << (i % 3 ? "10" : "40") << '\n';
    }
    ~Sources() { fs::remove_all(dossier); }
};

const Sources& LesSources() {
    static const Sources s;
    return s;
}

void VdxBuild(benchmark::State& state) {
    magasin::InitialiseMagasin(867, NombreNumeros, 16);
    const fs::path base = LesSources().dossier / "base";
    OptionsConstruction options;
    options.remplace = true;
    for (auto _ : state) benchmark::DoNotOptimize(ConstruitBase(LesSources().dossier / "sources", base, options));
    state.SetItemsProcessed(state.iterations() * NombreProduits);
}
BENCHMARK(VdxBuild)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

// The same source read and converted, its records keyed by code and by
// label into ordered maps.
void Reference_EnMemoire(benchmark::State& state) {
    for (auto _ : state) {
        const std::vector<Source> sources = LitSources(LesSources().dossier / "sources");
        std::map<std::string, size_t> parCode, parLibelle;
        for (const Source& s : sources)
            for (size_t i = 0; i < s.fiches.size(); ++i) {
                const std::string& f = s.fiches[i].fiche;
                parCode.emplace(f.substr(0, 8), i);
                parLibelle.emplace(f.substr(8, 35) + std::to_string(i), i);
            }
        benchmark::DoNotOptimize(parCode.size() + parLibelle.size());
    }
    state.SetItemsProcessed(state.iterations() * NombreProduits);
}
BENCHMARK(Reference_EnMemoire)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
