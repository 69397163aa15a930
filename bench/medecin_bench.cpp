// The doctor's private base of 2,000 products: an add through
// ProduitsMedecin_Vdx (a whole unit: the tables copied, written, synced and
// put in place), and a page of 20 of the search of the doctor's products
// (RechercheProduitParPas_Vdx, bit 2), beside the same page from std::maps
// in memory.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <string>

#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

namespace fs = std::filesystem;
using namespace vdx;

constexpr int NombreProduits = 2000, Reserve = 1000;

std::string Code(int i) { return std::to_string(3000000 + i); }
std::string Libelle(int i) { return "PRODUIT " + std::to_string((i * 7919) % (NombreProduits + Reserve)) + " CPR"; }

// A drug base of 3,000 products, a doctor's base holding the first 2,000
// with a comment, both connected in memory mode.
struct Bases {
    essai::BaseDeTest base, medecin{Emplacement::Medecin};
    std::string dossier;
    int32_t connexion = 0;
    Bases() {
        essai::AjouteIdentite(base);
        for (int i = 0; i < NombreProduits + Reserve; ++i) {
            base.Ajoute("VDXPRO", {{"CodeCIP", Code(i)}, {"Libelle", Libelle(i)}});
            if (i < NombreProduits)
                medecin.Ajoute("PRO", {{"CodeCIP", Code(i)}, {"Libelle", Libelle(i)}, {"Commentaire", "mon choix"}});
        }
        // The connection's rule wants a short last part.
        dossier = base.Repertoire() + "-medecin/MED";
        fs::create_directories(dossier);
        for (const auto& e : fs::directory_iterator(medecin.Repertoire())) fs::copy_file(e.path(), dossier + "/" + e.path().filename().string());
        connexion = Connection_Vdx(base.Repertoire().c_str(), ModeMemoire, 0);
        if (connexion == 1) connexion = ConnectionMedecin_Vdx(dossier.c_str());
    }
};

Bases& LesBases() {
    static Bases b;
    return b;
}

// Whether the bases are connected; the benchmark fails otherwise.
bool Pretes(benchmark::State& state) {
    if (LesBases().connexion == 1) return true;
    state.SkipWithError(("connection: " + std::to_string(LesBases().connexion)).c_str());
    return false;
}

void AjoutProduitMedecin(benchmark::State& state) {
    if (!Pretes(state)) return;
    static int suivant = NombreProduits;  // across repetitions: each add a new product
    for (auto _ : state)
        if (ProduitsMedecin_Vdx(Code(suivant++).c_str(), "ajout", 0) != 1) state.SkipWithError("ProduitsMedecin_Vdx");
}
BENCHMARK(AjoutProduitMedecin)->Unit(benchmark::kMillisecond)->Iterations(100)->UseRealTime();

void PageMedecin(benchmark::State& state) {
    if (!Pretes(state)) return;
    for (auto _ : state)
        if (const int32_t n = RechercheProduitParPas_Vdx("PRODUIT 1", nullptr, 2, nullptr, 20); n != 20)
            state.SkipWithError(("search: " + std::to_string(n)).c_str());
}
BENCHMARK(PageMedecin)->Unit(benchmark::kMicrosecond);

// The baseline: the same page from memory. The doctor's labels in a map, a
// page of 20 from the first at or after the text; each row's product looked
// up in a map of the drug base's products for what decides whether it is
// shown (deleted, hospital) and its mark of a deleted product, as the export
// reads VDXPRO; the rows formatted as the export's.
void Reference_PageEnMemoire(benchmark::State& state) {
    struct EtatProduit {
        bool supprime = false, hospitalier = false;
    };
    std::map<std::string, std::pair<std::string, std::string>> parLibelle;
    std::map<std::string, EtatProduit> produits;
    for (int i = 0; i < NombreProduits + Reserve; ++i) {
        produits[Code(i)] = {};
        if (i < NombreProduits) parLibelle[Libelle(i)] = {Code(i), "mon choix"};
    }
    for (auto _ : state) {
        std::string page;
        int n = 0;
        for (auto it = parLibelle.lower_bound("PRODUIT 1"); it != parLibelle.end() && n < 20; ++it) {
            const auto produit = produits.find(it->second.first);
            if (produit != produits.end() && produit->second.hospitalier) continue;
            const bool supprime = produit != produits.end() && produit->second.supprime;
            page += it->second.first + "@" + it->first + (supprime ? " (supprime)" : "") + "@" + it->second.second + "\r\n";
            ++n;
        }
        benchmark::DoNotOptimize(page);
    }
}
BENCHMARK(Reference_PageEnMemoire)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
