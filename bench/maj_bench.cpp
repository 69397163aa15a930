// The update: rows applied by ExecuteMaj_Vdx into a table of 20,000
// records (the key rule over unchanged labels, the key rule moving each
// label key, the parent rule), beside the same rows parsed and upserted into
// std::maps; and the whole open base written as one update file and applied
// to a base without its rows, beside vdx build of the same sources. The open
// sources are the directory named by VDX_SOURCES_OUVERTES (default
// build/open-sources, made by the target open_base); without them those two
// benchmarks say so and are skipped.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "maj/ecriture.h"
#include "maj/rangees.h"
#include "session/session.h"
#include "store/fixture.h"
#include "store/magasin.h"
#include "store/sources.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

namespace fs = std::filesystem;
using namespace vdx;

constexpr int NombreFiches = 20000, NombreLignes = 10000;

std::string Code(int i) {
    char code[16];
    std::snprintf(code, sizeof code, "C%06d", i);
    return code;
}

// A base of 20,000 classes and 20,000 class links of 10,000 products, and
// the three update files.
struct Donnees {
    essai::BaseDeTest base;
    fs::path dossier;
    Donnees() {
        essai::AjouteIdentite(base);
        for (int i = 0; i < NombreFiches; ++i) {
            const std::string libelle = "CLASSE " + std::to_string(i);
            base.Ajoute("VDXCLA", {{"CodeClasse", Code(i)}, {"Libelle", libelle}, {"LibelleCle", libelle}});
            base.Ajoute("VDXCLAP", {{"CodeClasse", Code(i)}, {"CodeCIP", std::to_string(3000000 + i / 2)}});
        }
        base.Repertoire();
        char modele[] = "/tmp/vdx32-maj-bench-XXXXXX";
        dossier = mkdtemp(modele);
        Fichier("cle", [](std::ostream& f, int i) {
            f << "|CLA|" << Code(2 * i) << "@Classe@CLASSE " << 2 * i << "@@\r\n";
        });
        Fichier("libelle", [](std::ostream& f, int i) {
            f << "|CLA|" << Code(2 * i) << "@Classe@NOUVELLE CLASSE " << 2 * i << "@@\r\n";
        });
        Fichier("parent", [](std::ostream& f, int i) {
            f << "|CLAP|" << Code(i + 1) << "@" << 3000000 + i / 2 << "@@\r\n";
        });
    }
    ~Donnees() { fs::remove_all(dossier); }

    template <typename Ligne>
    void Fichier(const char* nom, Ligne ligne) {
        fs::create_directories(dossier / nom);
        std::ofstream f(dossier / nom / "RE260602.VDX", std::ios::binary);
        f << "|DEBUT|02/06/2026@bench@\r\n";
        for (int i = 0; i < NombreLignes; ++i) ligne(f, i);
        f << "|FIN|\r\n";
    }
};

Donnees& LesDonnees() {
    static Donnees d;
    return d;
}

// Each iteration applies the files of `maj` to a fresh copy of `base`.
void Applique(benchmark::State& state, const fs::path& base, const fs::path& maj, int64_t lignes) {
    const fs::path copie = maj.parent_path() / (maj.filename().string() + "-base");
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove_all(copie);
        fs::copy(base, copie, fs::copy_options::recursive);
        if (Connection_Vdx(copie.string().c_str(), ModeMemoire, 0) != 1) {
            state.SkipWithError("connection");
            return;
        }
        state.ResumeTiming();
        if (ExecuteMaj_Vdx(maj.string().c_str()) != 1) state.SkipWithError("update");
        state.PauseTiming();
        DeConnection2_Vdx();
        state.ResumeTiming();
    }
    fs::remove_all(copie);
    state.SetItemsProcessed(state.iterations() * lignes);
}

void MajCle(benchmark::State& state) {
    Applique(state, LesDonnees().base.Repertoire(), LesDonnees().dossier / "cle", NombreLignes);
}
void MajLibelleDeplace(benchmark::State& state) {
    Applique(state, LesDonnees().base.Repertoire(), LesDonnees().dossier / "libelle", NombreLignes);
}
void MajParent(benchmark::State& state) {
    Applique(state, LesDonnees().base.Repertoire(), LesDonnees().dossier / "parent", NombreLignes);
}
BENCHMARK(MajCle)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(MajLibelleDeplace)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(MajParent)->Unit(benchmark::kMillisecond)->UseRealTime();

// The baseline: the same rows read field by field and upserted into a map
// of records by code, their label keys moved in a map of labels.
void Reference_MapsEnMemoire(benchmark::State& state) {
    std::map<std::string, std::string> fiches, libelles;
    for (int i = 0; i < NombreFiches; ++i) {
        fiches[Code(i)] = "CLASSE " + std::to_string(i);
        libelles["CLASSE " + std::to_string(i)] = Code(i);
    }
    std::ifstream f(LesDonnees().dossier / "libelle" / "RE260602.VDX", std::ios::binary);
    const std::string texte((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    for (auto _ : state) {
        std::map<std::string, std::string> parCode = fiches, parLibelle = libelles;
        std::istringstream lignes(texte);
        std::string ligne;
        while (std::getline(lignes, ligne)) {
            if (!ligne.starts_with("|CLA|")) continue;
            std::vector<std::string> champs;
            std::istringstream flux(ligne.substr(5));
            for (std::string c; std::getline(flux, c, '@');) champs.push_back(c);
            std::string& ancien = parCode[champs.at(0)];
            parLibelle.erase(ancien);
            ancien = champs.at(2);
            parLibelle[ancien] = champs[0];
        }
        benchmark::DoNotOptimize(parCode.size() + parLibelle.size());
    }
    state.SetItemsProcessed(state.iterations() * NombreLignes);
}
BENCHMARK(Reference_MapsEnMemoire)->Unit(benchmark::kMillisecond)->UseRealTime();

// The open sources: written as one update file, and built without the rows
// the update writes.
struct BaseOuverte {
    fs::path sources, dossier;
    int64_t lignes = 0;
    bool presente = false;
    BaseOuverte() {
        const char* s = std::getenv("VDX_SOURCES_OUVERTES");
        sources = s ? s : "build/open-sources";
        if (!fs::exists(sources / "VDXPRO.tsv")) return;
        magasin::InitialiseMagasin(867, NombreNumeros, 16);
        char modele[] = "/tmp/vdx32-maj-ouverte-XXXXXX";
        dossier = mkdtemp(modele);
        std::vector<Source> tout = LitSources(sources), sans = tout;
        fs::create_directories(dossier / "maj");
        std::ofstream f(dossier / "maj" / "RE991231.VDX", std::ios::binary);
        maj::EcritMaj(tout, f, "31/12/2099");
        f.close();
        std::ifstream lu(dossier / "maj" / "RE991231.VDX", std::ios::binary);
        for (std::string l; std::getline(lu, l);) ++lignes;
        for (Source& source : sans)
            for (const maj::Rangee& r : maj::Rangees)
                if (r.regle != maj::Regle::Aucune && std::string_view(r.table) == source.disposition->table->nom)
                    source.fiches.clear();
        ConstruitBase(sans, dossier / "sans");
        presente = true;
    }
    ~BaseOuverte() {
        if (presente) fs::remove_all(dossier);
    }
};

const BaseOuverte& LaBaseOuverte() {
    static const BaseOuverte b;
    return b;
}

void MajBaseOuverte(benchmark::State& state) {
    const BaseOuverte& b = LaBaseOuverte();
    if (!b.presente) {
        state.SkipWithError("no open sources: build the target open_base");
        return;
    }
    Applique(state, b.dossier / "sans", b.dossier / "maj", b.lignes);
}
BENCHMARK(MajBaseOuverte)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

void ConstructionBaseOuverte(benchmark::State& state) {
    const BaseOuverte& b = LaBaseOuverte();
    if (!b.presente) {
        state.SkipWithError("no open sources: build the target open_base");
        return;
    }
    magasin::InitialiseMagasin(867, NombreNumeros, 16);
    OptionsConstruction options;
    options.remplace = true;
    for (auto _ : state) benchmark::DoNotOptimize(ConstruitBase(b.sources, b.dossier / "construite", options));
    state.SetItemsProcessed(state.iterations() * b.lignes);
}
BENCHMARK(ConstructionBaseOuverte)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
