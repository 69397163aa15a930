// The record store against std::map on the same keys: a table of 100,000
// records with 12-byte keys, looked up, walked, and opened and closed.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "store/magasin.h"

namespace {

using namespace vdx::magasin;

constexpr int Donnees = 0, Index = 1;
constexpr int NombreFiches = 100000;
constexpr int LongueurCle = 12;
constexpr uint32_t LongueurFiche = 64;

struct Table {
    std::string dossier, donnees, index;
    std::vector<std::string> cles;        // in the order of the lookups
    std::map<std::string, uint32_t> carte;  // the same keys and positions

    Table() {
        std::string modele = (std::filesystem::temp_directory_path() / "vdx32-bench-XXXXXX").string();
        if (!::mkdtemp(modele.data())) std::abort();
        dossier = modele;
        donnees = dossier + "/T.DAT";
        index = dossier + "/T.NDX";
        InitialiseMagasin(867, 289, 16);
        if (CreateDataFile(Donnees, donnees.c_str(), LongueurFiche, 4096, Exclusif) != 0 ||
            CreateIndexFile(Index, index.c_str(), LongueurCle, 0, 0, 0, 4096, Exclusif) != 0)
            std::abort();
        std::string fiche(LongueurFiche, '\0');
        for (int i = 0; i < NombreFiches; ++i) {
            // Keys like a product label: letters then digits, NUL padded.
            std::string cle(LongueurCle, '\0');
            std::snprintf(cle.data(), cle.size() + 1, "PRODUIT%05d", i * 7 % 100000);
            cle.resize(LongueurCle);
            const Position p = NewRecord(Donnees);
            fiche.replace(0, LongueurCle, cle);
            WriteRecordData(Donnees, p, fiche.data());
            if (AddRecordKey(Index, cle.data(), p, 0) != 0) std::abort();
            carte.emplace(cle, p);
            cles.push_back(cle);
        }
        CloseCtFile(Index, Exclusif);
        CloseCtFile(Donnees, Exclusif);
        std::shuffle(cles.begin(), cles.end(), std::mt19937(42));
    }
    ~Table() {
        TermineMagasin();
        std::filesystem::remove_all(dossier);
    }
    void Ouvre() const {
        if (OpenCtFile(Donnees, donnees.c_str(), LectureSeule) || OpenCtFile(Index, index.c_str(), LectureSeule))
            std::abort();
    }
    void Ferme() const {
        CloseCtFile(Index, LectureSeule);
        CloseCtFile(Donnees, LectureSeule);
    }
};

const Table& LaTable() {
    static const Table t;
    return t;
}

void CleEgaleMagasin(benchmark::State& state) {
    const Table& t = LaTable();
    t.Ouvre();
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CleEgale(Index, t.cles[i].data()));
        if (++i == t.cles.size()) i = 0;
    }
    t.Ferme();
}
BENCHMARK(CleEgaleMagasin);

void CleEgaleCarte(benchmark::State& state) {
    const Table& t = LaTable();
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(t.carte.find(t.cles[i])->second);
        if (++i == t.cles.size()) i = 0;
    }
}
BENCHMARK(CleEgaleCarte);

// A walk of 1000 keys from a key looked up at or above.
void Parcours1000Magasin(benchmark::State& state) {
    const Table& t = LaTable();
    t.Ouvre();
    std::string k(LongueurCle, '\0');
    size_t i = 0;
    for (auto _ : state) {
        Position p = CleSuperieureOuEgale(Index, t.cles[i].data(), k.data());
        for (int n = 1; n < 1000 && p; ++n) p = CleSuivante(Index, k.data());
        benchmark::DoNotOptimize(p);
        if (++i == t.cles.size()) i = 0;
    }
    t.Ferme();
}
BENCHMARK(Parcours1000Magasin);

void Parcours1000Carte(benchmark::State& state) {
    const Table& t = LaTable();
    std::string k(LongueurCle, '\0');
    size_t i = 0;
    for (auto _ : state) {
        auto it = t.carte.lower_bound(t.cles[i]);
        uint32_t p = 0;
        for (int n = 0; n < 1000 && it != t.carte.end(); ++n, ++it) {
            k.assign(it->first);  // as the store copies the key out
            p = it->second;
        }
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(k.data());
        if (++i == t.cles.size()) i = 0;
    }
}
BENCHMARK(Parcours1000Carte);

// The pair every export does for every table, on a file already seen.
void OuvreFermeDonnees(benchmark::State& state) {
    const Table& t = LaTable();
    t.Ouvre();
    t.Ferme();
    for (auto _ : state) {
        if (OpenCtFile(Donnees, t.donnees.c_str(), LectureSeule) != 0) std::abort();
        CloseCtFile(Donnees, LectureSeule);
    }
}
BENCHMARK(OuvreFermeDonnees);

void OuvreFermeIndex(benchmark::State& state) {
    const Table& t = LaTable();
    t.Ouvre();
    t.Ferme();
    for (auto _ : state) {
        if (OpenCtFile(Index, t.index.c_str(), LectureSeule) != 0) std::abort();
        CloseCtFile(Index, LectureSeule);
    }
}
BENCHMARK(OuvreFermeIndex);

}  // namespace

BENCHMARK_MAIN();
