// ListeALD_Vdx in array mode and in memory mode, beside the same work done
// on records held in a std::map: reading 30 records in key order and
// delivering them as host strings or as a flat text.
#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "platform/hote.h"
#include "session/resultat.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombreAld = 30;

std::string Libelle(int i) { return "Affection de longue dur\xE9" "e num\xE9ro " + std::to_string(i); }

std::string Code(int i) { return (i < 10 ? "0" : "") + std::to_string(i); }

struct Base {
    essai::BaseDeTest base;
    Base() {
        essai::AjouteIdentite(base);
        for (int i = 1; i <= NombreAld; ++i)
            base.Ajoute("VDXYALD", {{"Code", Code(i)}, {"Libelle", "Affection de longue durée numéro " + std::to_string(i)}});
        base.Repertoire();
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

void ListeALD_Tableau(benchmark::State& state) {
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0);
    SAFEARRAY* tableau = hote::CreeTableau(hote::TailleFiche(2));
    for (auto _ : state) benchmark::DoNotOptimize(ListeALD_Vdx(&tableau));
    VideTableau(tableau, {TypeChamp::Entier, TypeChamp::Texte});
    hote::Detruit(tableau);
    DeConnection2_Vdx();
}
BENCHMARK(ListeALD_Tableau);

void ListeALD_Memoire(benchmark::State& state) {
    Connection2_Vdx(LaBase().base.Repertoire().c_str(), 2, 0);
    for (auto _ : state) benchmark::DoNotOptimize(ListeALD_Vdx(nullptr));
    DeConnection2_Vdx();
}
BENCHMARK(ListeALD_Memoire);

std::map<std::string, std::string> Fiches() {
    std::map<std::string, std::string> fiches;
    for (int i = 1; i <= NombreAld; ++i) fiches[Code(i)] = Libelle(i);
    return fiches;
}

void Reference_Tableau(benchmark::State& state) {
    const auto fiches = Fiches();
    std::vector<std::pair<int32_t, BSTR>> lignes;
    for (auto _ : state) {
        for (auto& l : lignes) hote::Libere(&l.second);
        lignes.clear();
        for (const auto& [cle, libelle] : fiches) {
            BSTR b = nullptr;
            hote::RangeOctets(&b, libelle);
            lignes.emplace_back(std::stoi(cle), b);
        }
        benchmark::DoNotOptimize(lignes.data());
    }
    for (auto& l : lignes) hote::Libere(&l.second);
}
BENCHMARK(Reference_Tableau);

void Reference_Memoire(benchmark::State& state) {
    const auto fiches = Fiches();
    for (auto _ : state) {
        std::string plat;
        for (const auto& [cle, libelle] : fiches) {
            if (!plat.empty()) plat += "\r\n";
            plat += std::to_string(std::stoi(cle)) + "@" + libelle;
        }
        benchmark::DoNotOptimize(plat.data());
    }
}
BENCHMARK(Reference_Memoire);

// A host builds a long input text by appends: 500 pieces of 10 KB through
// SetString2_Vdx, beside the same appends to a std::string.
constexpr int NombreMorceaux = 500;
const std::string Morceau(10 * 1024, 'x');

void SetString2_Ajouts(benchmark::State& state) {
    for (auto _ : state) {
        SetString2_Vdx(nullptr);
        for (int i = 0; i < NombreMorceaux; ++i) SetString2_Vdx(Morceau.c_str());
    }
    SetString2_Vdx(nullptr);
}
BENCHMARK(SetString2_Ajouts)->Unit(benchmark::kMillisecond);

void Reference_Ajouts(benchmark::State& state) {
    for (auto _ : state) {
        std::string texte;
        for (int i = 0; i < NombreMorceaux; ++i) texte += Morceau;
        benchmark::DoNotOptimize(texte.data());
    }
}
BENCHMARK(Reference_Ajouts)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
