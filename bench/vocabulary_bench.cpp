// The searches of a vocabulary of 20,000 keys and Lexico_Vdx over 20,000
// products, each beside the same work done in memory: a page of 20 from a
// std::map, a scan of 20,000 folded labels held in a vector, a scan of the
// bytes of the products held in one string.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "platform/hote.h"
#include "session/resultat.h"
#include "store/fixture.h"
#include "store/pliage.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombreTermes = 20000;
constexpr int NombreProduits = 20000;
constexpr int Rarete = 1000;  // one label in so many holds the rare word

// Labels in code page 1252 as the base holds them; the fixture takes UTF-8.
std::string Terme(int i) {
    char texte[96];
    std::snprintf(texte, sizeof texte, "Libell\xE9 num\xE9ro %05d d'un terme d'essai%s", i, i % Rarete ? "" : " rare");
    return texte;
}
std::string TermeUtf8(int i) {
    char texte[96];
    std::snprintf(texte, sizeof texte, "Libellé numéro %05d d'un terme d'essai%s", i, i % Rarete ? "" : " rare");
    return texte;
}
std::string Produit(int i) {
    char texte[40];
    std::snprintf(texte, sizeof texte, "PRODUIT %05d%s CPR", i, i % Rarete ? "" : " RARE");
    return texte;
}

struct Base {
    essai::BaseDeTest base;
    Base() {
        essai::AjouteIdentite(base);
        for (int i = 0; i < NombreTermes; ++i) {
            const std::string code = "T" + std::to_string(i);
            base.Ajoute("VDXVCIM",
                        {{"Code", code}, {"Libelle", TermeUtf8(i)}, {"LibelleCle", MajusculeSansAccent(TermeUtf8(i))}});
        }
        for (int i = 0; i < NombreProduits; ++i) {
            char code[8];
            std::snprintf(code, sizeof code, "3%06d", i);
            base.Ajoute("VDXPRO", {{"CodeCIP", code}, {"Libelle", Produit(i)}, {"CodeRubrique", "10"}});
        }
        base.Repertoire();
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

// A session in array mode on the base, and a host array of `champs` strings.
class Session {
public:
    explicit Session(unsigned champs) : forme_(champs, TypeChamp::Texte) {
        InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
        Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0);
        tableau = hote::CreeTableau(hote::TailleFiche(champs));
    }
    ~Session() {
        VideTableau(tableau, forme_);
        hote::Detruit(tableau);
        DeConnection2_Vdx();
    }
    SAFEARRAY* tableau;

private:
    Gabarit forme_;
};

void RechercheParPas_Page20(benchmark::State& state) {
    Session s(2);
    int32_t n = 0;
    for (auto _ : state) n = RechercheCIM10ParPas_Vdx("libell\xE9 num\xE9ro 123", &s.tableau, nullptr, 20);
    if (n != 20) state.SkipWithError("page incomplete");
}
BENCHMARK(RechercheParPas_Page20);

// The same page from the folded labels in a std::map, strings copied out.
void Reference_Page20(benchmark::State& state) {
    std::map<std::string, std::pair<std::string, std::string>> cles;
    for (int i = 0; i < NombreTermes; ++i) cles[MajusculeSansAccent(Terme(i))] = {"T" + std::to_string(i), Terme(i)};
    const std::string prefixe = MajusculeSansAccent("libell\xE9 num\xE9ro 123");
    std::vector<std::pair<std::string, std::string>> page;
    for (auto _ : state) {
        page.clear();
        for (auto it = cles.lower_bound(prefixe); it != cles.end() && page.size() < 20 && it->first.starts_with(prefixe);
             ++it)
            page.push_back(it->second);
        benchmark::DoNotOptimize(page.data());
    }
}
BENCHMARK(Reference_Page20);

void RechercheLexico_Partout(benchmark::State& state) {
    Session s(2);
    int32_t n = 0;
    for (auto _ : state) n = RechercheCIM10Lexico_Vdx("rare", nullptr, 1, &s.tableau);
    if (n != NombreTermes / Rarete) state.SkipWithError("rows missing");
}
BENCHMARK(RechercheLexico_Partout);

// The same search over the folded labels in a vector.
void Reference_Partout(benchmark::State& state) {
    std::vector<std::pair<std::string, std::string>> cles;
    for (int i = 0; i < NombreTermes; ++i) cles.emplace_back(MajusculeSansAccent(Terme(i)), "T" + std::to_string(i));
    std::vector<std::string> trouves;
    for (auto _ : state) {
        trouves.clear();
        for (const auto& [cle, code] : cles)
            if (cle.find("RARE") != std::string::npos) trouves.push_back(code);
        benchmark::DoNotOptimize(trouves.data());
    }
}
BENCHMARK(Reference_Partout);

void Lexico_20000Produits(benchmark::State& state) {
    Session s(3);
    int32_t n = 0;
    for (auto _ : state) n = Lexico_Vdx(&s.tableau, "RARE", nullptr, 0, 1, 100);
    if (n != NombreProduits / Rarete) state.SkipWithError("rows missing");
}
BENCHMARK(Lexico_20000Produits)->Unit(benchmark::kMillisecond);

// The bytes of the two records a product laid in one string, scanned for
// the word with the code read behind each match.
void Reference_Lexico(benchmark::State& state) {
    std::string octets;
    for (int i = 0; i < NombreProduits; ++i)
        for (char lettre : {'S', 'Z'}) {
            std::string fiche(101, '@');
            fiche[0] = lettre;
            const std::string libelle = Produit(i);
            fiche.replace(2, libelle.size(), libelle);
            fiche.replace(81, 7, "3" + std::to_string(1000000 + i).substr(1));
            octets += fiche;
        }
    std::vector<std::string> codes;
    for (auto _ : state) {
        codes.clear();
        for (size_t p = octets.find("RARE"); p != std::string::npos; p = octets.find("RARE", p + 1)) {
            const size_t marque = octets.rfind('@', p);
            if (octets[marque - 1] == 'S') codes.push_back(octets.substr(marque + 80, 7));
        }
        benchmark::DoNotOptimize(codes.data());
    }
}
BENCHMARK(Reference_Lexico)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
