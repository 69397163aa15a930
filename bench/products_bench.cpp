// LibelleProduit_Vdx per call in array mode and in memory mode, beside an
// in-memory hash lookup of the same label and one lookup of LMDB alone in
// its own read transaction; and a page of 20 products of the step search.
// A base of 20,000 products, looked up in a shuffled order.
#include <benchmark/benchmark.h>
#include <lmdb.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/hote.h"
#include "session/resultat.h"
#include "store/fixture.h"
#include "store/layouts.h"
#include "store/magasin.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombreProduits = 20000;

std::string Code(int i) {
    char code[8];
    std::snprintf(code, sizeof code, "3%06d", i);
    return code;
}

// Labels of a real shape: a name, a dosage, a form; one in ten of the same
// name, so that a prefix has long runs.
std::string Libelle(int i) {
    static const char* const noms[] = {"DOLIPRANE", "AMOXICILLINE", "PARACETAMOL", "IBUPROFENE", "OMEPRAZOLE",
                                       "METFORMINE", "ATORVASTATINE", "AMLODIPINE", "LEVOTHYROX", "RAMIPRIL"};
    return std::string(noms[i % 10]) + " " + std::to_string(i / 10 % 1000 * 5 + 5) + "MG CPR B/" +
           std::to_string(i / 10000 * 10 + 8 + i / 10 % 7);
}

struct Base {
    essai::BaseDeTest base;
    std::vector<std::string> codes;  // in the order of the lookups
    std::unordered_map<std::string, std::string> libelles;
    Base() {
        essai::AjouteIdentite(base);
        for (int i = 0; i < NombreProduits; ++i) {
            base.Ajoute("VDXPRO", {{"CodeCIP", Code(i)}, {"Libelle", Libelle(i)}, {"CodeRubrique", "10"}});
            codes.push_back(Code(i));
            libelles.emplace(Code(i), Libelle(i));
        }
        base.Repertoire();
        std::shuffle(codes.begin(), codes.end(), std::mt19937(42));
        InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

void LibelleProduit_Tableau(benchmark::State& state) {
    Base& b = LaBase();
    Connection2_Vdx(b.base.Repertoire().c_str(), 0, 0);
    BSTR libelle = nullptr;
    size_t i = 0;
    for (auto _ : state) {
        if (LibelleProduit_Vdx(b.codes[i].c_str(), &libelle) != 1) state.SkipWithError("LibelleProduit_Vdx");
        i = (i + 1) % b.codes.size();
    }
    hote::Libere(&libelle);
    DeConnection2_Vdx();
}
BENCHMARK(LibelleProduit_Tableau);

void LibelleProduit_Memoire(benchmark::State& state) {
    Base& b = LaBase();
    Connection2_Vdx(b.base.Repertoire().c_str(), 2, 0);
    size_t i = 0;
    for (auto _ : state) {
        if (LibelleProduit_Vdx(b.codes[i].c_str(), nullptr) != 1) state.SkipWithError("LibelleProduit_Vdx");
        i = (i + 1) % b.codes.size();
    }
    DeConnection2_Vdx();
}
BENCHMARK(LibelleProduit_Memoire);

// The same label from a hash table, copied out as a text.
void Reference_Hachage(benchmark::State& state) {
    Base& b = LaBase();
    size_t i = 0;
    for (auto _ : state) {
        std::string libelle = b.libelles.find(b.codes[i])->second;
        benchmark::DoNotOptimize(libelle.data());
        i = (i + 1) % b.codes.size();
    }
}
BENCHMARK(Reference_Hachage);

// LMDB alone: the code looked up in the label's index file, one read
// transaction a lookup, the environment kept open.
void Reference_LMDB(benchmark::State& state) {
    Base& b = LaBase();
    const std::string chemin = b.base.Repertoire() + "/VDXPRO.NDX";
    MDB_env* env = nullptr;
    MDB_dbi dbi = 0;
    MDB_txn* txn = nullptr;
    if (mdb_env_create(&env) || mdb_env_set_maxdbs(env, 8) ||
        mdb_env_open(env, chemin.c_str(), MDB_NOSUBDIR | MDB_RDONLY | MDB_NOLOCK, 0) ||
        mdb_txn_begin(env, nullptr, MDB_RDONLY, &txn) || mdb_dbi_open(txn, "cle1", 0, &dbi)) {
        state.SkipWithError("LMDB");
        return;
    }
    mdb_txn_commit(txn);  // keeps the database handle
    size_t i = 0;
    for (auto _ : state) {
        mdb_txn_begin(env, nullptr, MDB_RDONLY, &txn);
        MDB_val cle{b.codes[i].size(), b.codes[i].data()}, valeur{};
        if (mdb_get(txn, dbi, &cle, &valeur) != 0) state.SkipWithError("mdb_get");
        benchmark::DoNotOptimize(valeur.mv_data);
        mdb_txn_abort(txn);
        i = (i + 1) % b.codes.size();
    }
    mdb_env_close(env);
}
BENCHMARK(Reference_LMDB);

// The store alone on the path of LibelleProduit_Vdx: the two files of
// VDXPRO opened, the code looked up, the record read, both closed.
void Reference_Magasin(benchmark::State& state) {
    using namespace vdx::magasin;
    Base& b = LaBase();
    const std::string donnees = b.base.Repertoire() + "/VDXPRO.DAT", index = b.base.Repertoire() + "/VDXPRO.NDX";
    char fiche[VDXPRO::Longueur];
    size_t i = 0;
    for (auto _ : state) {
        OpenCtFile(0, donnees.c_str(), LectureSeule);
        OpenCtFile(1, index.c_str(), LectureSeule);
        const Position p = CleEgale(1, b.codes[i].data());
        if (p == 0 || LitFiche(0, p, fiche) != 0) state.SkipWithError("magasin");
        CloseCtFile(0, LectureSeule);
        CloseCtFile(1, LectureSeule);
        i = (i + 1) % b.codes.size();
    }
}
BENCHMARK(Reference_Magasin);

// A page of 20 products from a prefix that holds 2,000 of them.
void RechercheProduitParPas_Page20(benchmark::State& state) {
    Base& b = LaBase();
    Connection2_Vdx(b.base.Repertoire().c_str(), 0, 0);
    SAFEARRAY* tableau = hote::CreeTableau(hote::TailleFiche(3));
    const char* debuts[] = {"AMOX", "DOLIPRANE 1", "PARACETAMOL 2", "OMEPRAZOLE 4"};
    size_t i = 0;
    for (auto _ : state) {
        if (RechercheProduitParPas_Vdx(debuts[i], &tableau, 0, nullptr, 20) != 20)
            state.SkipWithError("RechercheProduitParPas_Vdx");
        i = (i + 1) % std::size(debuts);
    }
    VideTableau(tableau, {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    hote::Detruit(tableau);
    DeConnection2_Vdx();
}
BENCHMARK(RechercheProduitParPas_Page20);

}  // namespace

BENCHMARK_MAIN();
