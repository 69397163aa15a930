// The posologies of a product ranked against a patient: a product of 24
// posologies over 6 terrains, each with a nature, a route, an indication
// and for some a profile, listed into a host array; beside it the same
// records held in memory, ranked, titled, sorted and delivered the same
// way. Then the loading of one posology into the host's form, and the
// sentences of three posologies (plain, in two units with a ceiling, a
// narcotic's in words) beside the same sentences built from records in
// memory. Then the dose check of a posology per kilo with limits, beside
// the load and the sentence it runs alone, and the creatinine clearance.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "checks/tri.h"
#include "platform/hote.h"
#include "posology/arrondi.h"
#include "posology/catalogue.h"
#include "posology/controle.h"
#include "posology/phrase.h"
#include "posology/quantite.h"
#include "posology/vocabulaire.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/texte.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "tests/support/tableau_hote.h"
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
        // For the sentences: tablets in boxes of 16, in mg (500 a tablet)
        // then tablets, a narcotic's capsules.
        for (auto [code, un, plusieurs] : {std::tuple{14, "comprimé", "comprimés"}, {30, "mg", "mg"},
                                           {29, "gélule", "gélules"}})
            base.Ajoute("VDXPUPRI", {{"Code", code}, {"Libelle", un}, {"LibellePluriel", plusieurs}});
        for (auto [code, libelle] : {std::pair{20, "heure"}, {40, "jour"}, {50, "semaine"}})
            base.Ajoute("VDXPDUR", {{"Code", code}, {"Libelle", libelle}});
        base.Ajoute("VDXPDURC", {{"Cle", "040050"}, {"Facteur", 7.0}});
        base.Ajoute("VDXIDCON", {{"Code", 1}, {"Libelle", "boîte"}, {"LibellePluriel", "boîtes"}});
        base.Ajoute("VDXIDPRO", {{"CodeCIP", "3000011"}, {"QuantitePresentation", 16}, {"QuantiteUnitePresentation", 1},
                                 {"CodeContenant", 1}, {"CodeUnitePrise", 14}, {"AvecContenance", 1}, {"Rapport", 1},
                                 {"Secabilite", 2}});
        base.Ajoute("VDXIDPRO", {{"CodeCIP", "3000012"}, {"QuantitePresentation", 16}, {"QuantiteUnitePresentation", 500},
                                 {"CodeContenant", 1}, {"CodeUnitePrise", 30}, {"AvecContenance", 1}, {"Rapport", 1},
                                 {"CodeUnitePrise2", 14}, {"AvecContenance2", 1}, {"Rapport2", 500},
                                 {"Secabilite2", 2}});
        base.Ajoute("VDXIDPRO", {{"CodeCIP", "3000013"}, {"QuantitePresentation", 14}, {"QuantiteUnitePresentation", 1},
                                 {"CodeContenant", 1}, {"CodeUnitePrise", 29}, {"AvecContenance", 1}, {"Rapport", 1},
                                 {"Secabilite", 1}, {"PrisesEntieres", 1}});
        base.Ajoute("VDXPRO", {{"CodeCIP", "3000013"}, {"Libelle", "SKENAN LP 10MG GELULE"}, {"CodeTableau", "B"}});
        // For the check: a posology per kilo of mg and the limits of children.
        base.Ajoute("VDXPPROD", {{"CodeCIP", "3000012"}, {"Rang", "01"}, {"CodeTerrain", 2}, {"DoseMin", 15},
                                 {"CodeUnite", 30}, {"QuantiteRef", 1}, {"TypeRef", "P"}, {"PrisesMin", 4},
                                 {"CodePeriode", 40}, {"DureeMin", 5}, {"CodeDuree", 40}});
        base.Ajoute("VDXPMAX", {{"Cle", "3000012E"}, {"RecoMinKg", 30}, {"RecoMaxKg", 60}, {"BaseKg", 1}, {"MaxKg", 80},
                                {"DureeRecoMin", 3}, {"DureeRecoMax", 7}, {"DureeMaximum", 10}});
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
    essai::LibereFiche(&h, GabaritDe<PosologieHote>());
    DeConnection2_Vdx();
}
BENCHMARK(PosoLoad)->Unit(benchmark::kMicrosecond);

std::string Nombre(float valeur) {
    std::string texte;
    TexteNombre(valeur, texte, false);
    return texte;
}

// The three posologies of the sentences.
const PosologieHote Simple{.DoseMin = 1, .DoseMax = 2, .CodeUnite = 14, .PrisesMin = 3, .CodePeriode = 40,
                           .DureeMin = 5, .CodeDuree = 40, .CodeCIP = "3000011"};
const PosologieHote DeuxUnites{.DoseMin = 500, .CodeUnite = 30, .CodeUnite2 = 14, .Conversion = 1, .PrisesMin = 3,
                               .CodePeriode = 40, .DureeMin = 2, .CodeDuree = 50, .DoseMaximum = 3000,
                               .CodePeriodeMaximum = 40, .CodeCIP = "3000012"};
const PosologieHote Stupefiant{.DoseMin = 1, .CodeUnite = 29, .PrisesMin = 1, .Intervalle = 12, .CodePeriode = 20,
                               .DureeMin = 7, .CodeDuree = 40, .CodeCIP = "3000013"};
const PosologieHote* const Posologies[] = {&Simple, &DeuxUnites, &Stupefiant};

void PosoDec(benchmark::State& state) {
    Connecte();
    VdxPosologieHote h{};
    LivreFiche(&h, GabaritDe<PosologieHote>(), ValeursDe(PosologieHote(*Posologies[state.range(0)])));
    VdxResultatPosologie r{};
    int32_t n = 0;
    for (auto _ : state) n = PosoDec_Vdx(&h, 0, 0, &r);
    if (n != 1) state.SkipWithError("no sentence");
    state.SetLabel(std::string(hote::Octets(r.Phrase1)));
    essai::LibereFiche(&h, GabaritDe<PosologieHote>());
    essai::LibereFiche(&r, GabaritDe<ResultatPosologie>());
    DeConnection2_Vdx();
}
BENCHMARK(PosoDec)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

// The same sentences and packages from records held in memory: the words,
// labels and packages in maps, the same figures, clauses and arithmetic,
// delivered the same way.
void Reference_PosoDec(benchmark::State& state) {
    Connecte();
    const PosologieHote& p = *Posologies[state.range(0)];
    const std::map<int, Mot> unites = {{14, {"comprim\xE9", "comprim\xE9s"}}, {30, {"mg", "mg"}},
                                       {29, {"g\xE9lule", "g\xE9lules"}}};
    const std::map<int, std::string> periodes = {{20, "heure"}, {40, "jour"}, {50, "semaine"}};
    const std::map<std::string, float> facteurs = {{"040050", 7}};
    struct Boite {
        float contenu1, contenu2;
        bool lettres;
    };
    const std::map<std::string, Boite> boites = {
        {"3000011", {16, 0, false}}, {"3000012", {8000, 16, false}}, {"3000013", {14, 0, true}}};
    const Mot boite{"bo\xEEte", "bo\xEEtes"};
    VdxResultatPosologie resultat{};
    for (auto _ : state) {
        const Boite& b = boites.at(p.CodeCIP);
        const Chiffres fig(b.lettres);
        ResultatPosologie r;
        const float min = ArrondiDose(p.DoseMin, 2), max = ArrondiDose(p.DoseMax, 2);
        std::string s = max != 0 ? fig(min) + messages::BorneA + fig(max) + " " : fig(min) + " ";
        s += unites.at(p.CodeUnite).Selon(min > 1 || max > 1);
        const size_t apresDose = s.size();
        s += " " + fig.Entier(p.PrisesMin) + messages::Fois;
        const std::string& periode = periodes.at(p.CodePeriode);
        if (p.Intervalle > 1)
            s += (periode.back() == 'e' ? messages::ToutesLes : messages::TousLes) + fig.Entier(p.Intervalle) + " " +
                 periode + "s";
        else
            s += messages::Par + periode;
        s += messages::Pendant + fig.Entier(p.DureeMin) + " " + periodes.at(p.CodeDuree) + "s.";
        const size_t fin = s.size();
        if (p.DoseMaximum != 0)
            s += messages::Maximum + fig(p.DoseMaximum) + " " + unites.at(p.CodeUnite).Pluriel + messages::Par +
                 periodes.at(p.CodePeriodeMaximum) + ".";
        std::string t;
        if (p.CodeUnite2 != 0) {
            const float k = b.contenu2 / b.contenu1;
            r.Dose2Min = ArrondiDose(p.DoseMin * k, 2);
            r.Maximum2 = ArrondiDose(p.DoseMaximum * k, 2);
            t = fig(r.Dose2Min) + " " + unites.at(p.CodeUnite2).Selon(r.Dose2Min > 1) + " " +
                s.substr(apresDose, fin - apresDose) + messages::Maximum + fig(r.Maximum2) + " " +
                unites.at(p.CodeUnite2).Pluriel + messages::Par + periodes.at(p.CodePeriodeMaximum) + ".";
        }
        const auto quantite = [&](float dose, float contenu) {
            float q = dose * static_cast<float>(p.PrisesMin);
            const float q0 = q;
            if (p.Intervalle != 0) q /= static_cast<float>(p.Intervalle);
            q *= static_cast<float>(p.DureeMin);
            if (p.CodePeriode != p.CodeDuree)
                if (const auto f = facteurs.find(CodeDureeSurTrois(p.CodePeriode) + CodeDureeSurTrois(p.CodeDuree));
                    f != facteurs.end())
                    q *= f->second;
            const float quantiteTotale = q;
            if (p.Intervalle > 1) q += q0;
            float pourcentage = 0;
            return std::tuple{quantiteTotale,
                              Boites(q, Nombre(contenu) + " " + unites.at(p.CodeUnite).Pluriel, boite, {}, pourcentage, fig),
                              pourcentage};
        };
        std::tie(r.Quantite1, r.Boites1, r.Utilisation1) = quantite(max != 0 ? max : min, b.contenu1);
        if (p.CodeUnite2 != 0) std::tie(r.Quantite2, r.Boites2, r.Utilisation2) = quantite(r.Dose2Min, b.contenu2);
        r.Dose1Min = min;
        r.Dose1Max = max;
        r.Phrase1 = std::move(s);
        r.Phrase2 = std::move(t);
        VideFiche(&resultat, GabaritDe<ResultatPosologie>(), false);
        LivreFiche(&resultat, GabaritDe<ResultatPosologie>(), ValeursDe(std::move(r)));
    }
    state.SetLabel(std::string(hote::Octets(resultat.Phrase1)));
    essai::LibereFiche(&resultat, GabaritDe<ResultatPosologie>());
    DeConnection2_Vdx();
}
BENCHMARK(Reference_PosoDec)->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

// The posology of the check as the host gives it: 400 mg 4 times a day for
// a child of 25 kg, by the code of the posology per kilo.
const PosologieHote Controlee{.DoseMin = 400, .CodeUnite = 30, .PrisesMin = 4, .CodePeriode = 40, .DureeMin = 5,
                              .CodeDuree = 40, .CodePosologie = "300001201", .CodeCIP = "3000012",
                              .Libelle = "Enfant de 6 ans"};

void CheckPosologie(benchmark::State& state) {
    Connecte();
    VdxPosologieHote h{};
    LivreFiche(&h, GabaritDe<PosologieHote>(), ValeursDe(PosologieHote(Controlee)));
    BSTR duree = nullptr, dose = nullptr;
    int32_t masque = 0;
    for (auto _ : state) masque = CheckPosologie_Vdx(&h, 25, 125, &duree, &dose);
    state.counters["masque"] = masque;
    if (masque <= 1) state.SkipWithError("no alert");
    essai::LibereFiche(&h, GabaritDe<PosologieHote>());
    hote::Libere(&duree);
    hote::Libere(&dose);
    DeConnection2_Vdx();
}
BENCHMARK(CheckPosologie)->Unit(benchmark::kMicrosecond);

// What the check runs before its own work: the load of the posology by its
// code and its sentence for the patient.
void Reference_CheckPosologie(benchmark::State& state) {
    Connecte();
    VdxPosologieHote chargee{};
    VdxResultatPosologie dite{};
    for (auto _ : state) {
        PosoLoad_Vdx(Controlee.CodePosologie.c_str(), &chargee);
        PosoDec_Vdx(&chargee, 25, 125, &dite);
    }
    essai::LibereFiche(&chargee, GabaritDe<PosologieHote>());
    essai::LibereFiche(&dite, GabaritDe<ResultatPosologie>());
    DeConnection2_Vdx();
}
BENCHMARK(Reference_CheckPosologie)->Unit(benchmark::kMicrosecond);

void CalculClairance(benchmark::State& state) {
    int32_t clairance = 0;
    for (auto _ : state) benchmark::DoNotOptimize(clairance = CalculClairance_Vdx(70, 70, 60, "F", 2));
    if (clairance != 9) state.SkipWithError("not 9");
}
BENCHMARK(CalculClairance);

}  // namespace

BENCHMARK_MAIN();
