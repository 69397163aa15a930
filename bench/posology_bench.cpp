// The posologies of a product ranked against a patient: a product of 24
// posologies over 6 terrains, each with a nature, a route, an indication
// and for some a profile, listed into a host array; beside it the same
// records held in memory, ranked, titled, sorted and delivered the same
// way. Then the loading of one posology into the host's form.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "checks/tri.h"
#include "platform/hote.h"
#include "posology/catalogue.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr int NombrePosologies = 24;
constexpr int NombreTerrains = 6;
constexpr char Produit[] = "3000001";

const TerrainPosologie Terrains[NombreTerrains] = {
    {"A", 0, "", 0, "", 0, 0},     {"E", 6, "A", 12, "A", 20, 40}, {"N", 0, "", 30, "M", 0, 0},
    {"S", 65, "A", 0, "", 0, 0},   {"AE", 0, "", 0, "", 15, 0},   {"E", 2, "A", 6, "A", 0, 0}};

struct Posologie {
    std::string rang;
    int terrain, amm, nature, voie, profil, implicite;
};
Posologie PosologieDe(int i) {
    const std::string rang = (i < 10 ? "0" : "") + std::to_string(i);
    return {rang, i % NombreTerrains + 1, 100 + i % 4, 1 + i % 3, 1 + i % 2, i % 5 == 0 ? 1 + i % 3 : 0, i == 7};
}

const std::map<int, std::string> Natures = {{1, "d'attaque"}, {2, "d'entretien"}, {3, "curatif"}};
const std::map<int, std::string> Voies = {{1, "orale"}, {2, "rectale"}};
const std::map<int, std::string> Profils = {{1, "Clairance 30 a 60"}, {2, "Clairance 10 a 30"}, {3, "Hepatique"}};
std::string Indication(int amm) { return "Indication " + std::to_string(amm); }

struct Base {
    essai::BaseDeTest base;
    Base() {
        essai::AjouteIdentite(base);
        for (int t = 0; t < NombreTerrains; ++t) {
            const TerrainPosologie& x = Terrains[t];
            base.Ajoute("VDXPPTER", {{"CodeTerrain", t + 1}, {"Terrain", x.Terrain}, {"AgeMin", x.AgeMin},
                                     {"UniteAgeMin", x.UniteAgeMin}, {"AgeMax", x.AgeMax}, {"UniteAgeMax", x.UniteAgeMax},
                                     {"PoidsMin", x.PoidsMin}, {"PoidsMax", x.PoidsMax}});
        }
        for (int i = 0; i < NombrePosologies; ++i) {
            const Posologie p = PosologieDe(i);
            base.Ajoute("VDXPPROD", {{"CodeCIP", Produit}, {"Rang", p.rang}, {"CodeTerrain", p.terrain},
                                     {"Implicite", p.implicite}, {"CodeAMM", p.amm}, {"CodeNature", p.nature},
                                     {"CodeVoie", p.voie}, {"CodeProfil", p.profil}, {"DoseMin", 1}, {"CodeUnite", 14},
                                     {"PrisesMin", 1}, {"PrisesMax", 3}, {"CodePeriode", 40}});
        }
        // Neighbours on both sides.
        for (const char* cip : {"3000000", "3000002"})
            base.Ajoute("VDXPPROD", {{"CodeCIP", cip}, {"Rang", "01"}, {"CodeTerrain", 1}});
        base.AjouteAvecCles("VDXPTEXT", {{"CodePosologie", "300000105"}, {"Texte", std::string(200, 'x')}}, {});
        for (const auto& [code, libelle] : Natures) base.Ajoute("VDXPNAT", {{"Code", code}, {"Libelle", libelle}});
        for (const auto& [code, libelle] : Voies) base.Ajoute("VDXPVOI", {{"Code", code}, {"Libelle", libelle}});
        for (const auto& [code, libelle] : Profils)
            base.Ajoute("VDXPPRO", {{"Code", code}, {"Libelle", libelle}, {"TypeProfil", 1}, {"ValeurProfil", "10-30"}});
        for (int amm = 100; amm < 104; ++amm)
            base.Ajoute("VDXVAMM", {{"CodeTerme", "0000000" + std::to_string(amm)}, {"TypeAMM", "1"},
                                    {"Libelle", Indication(amm)}});
        base.Ajoute("VDXIDPRO", {{"CodeCIP", Produit}, {"CodeUnitePrise", 14}, {"CodeUnitePrise2", 42}});
        base.Repertoire();
    }
};

Base& LaBase() {
    static Base b;
    return b;
}

// A child of 8 years and 25 kg.
constexpr int32_t Age = 96, Poids = 25;

void Connecte() {
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    Connection2_Vdx(LaBase().base.Repertoire().c_str(), 0, 0);
}

void PosoListe(benchmark::State& state) {
    Connecte();
    SAFEARRAY* lignes = hote::CreeTableau(hote::TailleFiche(3));
    int32_t n = 0;
    for (auto _ : state) n = PosoListe_Vdx(Produit, &lignes, "E", Age, Poids, 0, "F");
    state.counters["lignes"] = hote::NombreElements(lignes);
    if (n != 1 || hote::NombreElements(lignes) != NombrePosologies) state.SkipWithError("not the rows");
    VideTableau(lignes, GabaritDe<LignePosologieCourte>());
    hote::Detruit(lignes);
    DeConnection2_Vdx();
}
BENCHMARK(PosoListe)->Unit(benchmark::kMicrosecond);

// The same records in memory: each one's terrain, labels, level and
// title, the sort, the delivery.
void Reference_PosoListe(benchmark::State& state) {
    Connecte();
    std::vector<Posologie> posologies;
    for (int i = 0; i < NombrePosologies; ++i) posologies.push_back(PosologieDe(i));
    const PatientPosologie patient{'E', 'F', Age, Poids};
    SAFEARRAY* tableau = hote::CreeTableau(hote::TailleFiche(3));
    const auto libelle = [](const std::map<int, std::string>& m, int code) {
        const auto it = m.find(code);
        return it == m.end() ? std::string() : it->second;
    };
    for (auto _ : state) {
        std::vector<LignePosologie> lignes;
        for (const Posologie& p : posologies) {
            const TerrainPosologie& terrain = Terrains[p.terrain - 1];
            LignePosologie l;
            l.CodePosologie = Produit + p.rang;
            l.Niveau = NiveauPosologie(terrain, p.implicite != 0, patient);
            l.Titre = PhraseTerrain(terrain);
            for (const std::string& partie :
                 {libelle(Profils, p.profil), messages::TitreTraitement + libelle(Natures, p.nature), Indication(p.amm),
                  messages::TitreVoie + libelle(Voies, p.voie)})
                l.Titre += messages::TitreSeparateur + partie;
            if (p.implicite) l.Titre += messages::TitreImplicite;
            lignes.push_back(std::move(l));
        }
        TriEchange(lignes, [](const LignePosologie& a, const LignePosologie& b) { return a.Niveau > b.Niveau; });
        for (size_t i = 0; i < lignes.size(); ++i)
            for (size_t j = i + 1; j < lignes.size() && lignes[j].Niveau == lignes[i].Niveau; ++j)
                if (lignes[i].Titre > lignes[j].Titre) std::swap(lignes[i], lignes[j]);
        Resultat resultat(&tableau, GabaritDe<LignePosologieCourte>(), -20);
        resultat.Prend(LignesSansCleSelon<LignePosologieCourte>(std::move(lignes)));
        resultat.Livre();
    }
    state.counters["lignes"] = hote::NombreElements(tableau);
    VideTableau(tableau, GabaritDe<LignePosologieCourte>());
    hote::Detruit(tableau);
    DeConnection2_Vdx();
}
BENCHMARK(Reference_PosoListe)->Unit(benchmark::kMicrosecond);

void PosoLoad(benchmark::State& state) {
    Connecte();
    VdxPosologieHote h{};
    int32_t n = 0;
    for (auto _ : state) n = PosoLoad_Vdx("300000105", &h);
    if (n != 1 || hote::Octets(h.Texte).size() != 200) state.SkipWithError("not loaded");
    VideFiche(&h, GabaritDe<PosologieHote>());
    DeConnection2_Vdx();
}
BENCHMARK(PosoLoad)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
