// The dose check: limits by terrain or for all, the daily factor, a
// posology's own ceiling, limits per kilo and per square metre with their
// texts, the second unit, the durations; the limits themselves; the
// creatinine clearance.
#include "posology/controle.h"

#include <gtest/gtest.h>

#include "posology/surface.h"
#include "session/texte.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3000001: tablets (halves) and mg; plain limits under "A" for both units,
// per kilo and per square metre in mg under "E"; 3000005 limits under "T"
// only; 3000002 no limits. The loaded posologies of 3000001: 01 plain, 02
// a ceiling of its own per hour, 03 a ceiling per kilo computed for the
// patient, 04 per kilo, 05 per square metre by 2, 06 per 5 kilos.
class Controles : public essai::SurUneBaseEnContexte<Controles> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        for (auto [code, un, plusieurs] : {std::tuple{14, "comprimé", "comprimés"}, {30, "mg", "mg"}})
            b.Ajoute("VDXPUPRI", {{"Code", code}, {"Libelle", un}, {"LibellePluriel", plusieurs}});
        for (auto [code, libelle] : {std::pair{10, "minute"}, {20, "heure"}, {40, "jour"}, {50, "semaine"}})
            b.Ajoute("VDXPDUR", {{"Code", code}, {"Libelle", libelle}});
        for (auto [cle, facteur] : {std::pair{"020040", 24.0}, {"010040", 1440.0}, {"040050", 7.0}})
            b.Ajoute("VDXPDURC", {{"Cle", cle}, {"Facteur", facteur}});
        b.Ajoute("VDXPMOM", {{"Code", 5}, {"Libelle", "matin et soir"}, {"Multiplicateur", 2.0}});
        b.Ajoute("VDXPMOM", {{"Code", 6}, {"Libelle", "un jour sur deux"}, {"Multiplicateur", 0.5}});
        for (const char* cip : {"3000001", "3000002", "3000005"})
            b.Ajoute("VDXIDPRO", {{"CodeCIP", cip}, {"CodeUnitePrise", 14}, {"AvecContenance", 1}, {"Rapport", 1},
                                  {"Secabilite", 2}, {"CodeUnitePrise2", 30}, {"Rapport2", 0.002}});
        b.Ajoute("VDXPMAX", {{"Cle", "3000001A"}, {"RecoMin", 2}, {"RecoMax", 6}, {"MaxJour", 8}, {"RecoMinUnite2", 1000},
                             {"RecoMaxUnite2", 3000}, {"MaxJourUnite2", 4000}, {"DureeRecoMin", 2}, {"DureeRecoMax", 5},
                             {"DureeMaximum", 10}});
        b.Ajoute("VDXPMAX", {{"Cle", "3000001E"}, {"RecoMinKgUnite2", 30}, {"RecoMaxKgUnite2", 50}, {"BaseKgUnite2", 1},
                             {"MaxKgUnite2", 60}, {"RecoMinM2Unite2", 1000}, {"RecoMaxM2Unite2", 2000},
                             {"MaxM2Unite2", 3000}});
        b.Ajoute("VDXPMAX", {{"Cle", "3000005T"}, {"MaxJour", 4}});
        struct P {
            const char* rang;
            double maximum;
            int rapporte, periodeMaximum;
            double quantiteRef;
            const char* typeRef;
        };
        for (const P& p : {P{"01", 0, 0, 0, 0, ""}, P{"02", 1, 0, 20, 0, ""}, P{"03", 0.1, -1, 40, 1, "P"},
                           P{"04", 0, 0, 0, 1, "P"}, P{"05", 0, 0, 0, 2, "S"}, P{"06", 0, 0, 0, 5, "P"}})
            b.Ajoute("VDXPPROD", {{"CodeCIP", "3000001"}, {"Rang", p.rang}, {"CodeTerrain", 1}, {"DoseMin", 1},
                                  {"CodeUnite", 14}, {"PrisesMin", 1}, {"CodePeriode", 40}, {"DoseMaximum", p.maximum},
                                  {"MaximumRapporte", p.rapporte}, {"CodePeriodeMaximum", p.periodeMaximum},
                                  {"QuantiteRef", p.quantiteRef}, {"TypeRef", p.typeRef}});
    }
};

// Doses of tablets a day for an adult, checked by the limits of "A".
PosologieHote Donnee(float doseMin, float doseMax, int32_t prisesMin, const char* code = "300000101") {
    return {.DoseMin = doseMin, .DoseMax = doseMax, .CodeUnite = 14, .PrisesMin = prisesMin, .CodePeriode = 40,
            .DureeMin = 5, .CodeDuree = 40, .CodePosologie = code, .CodeCIP = "3000001", .Libelle = "Adulte"};
}
ControleDePosologie Verifie(const PosologieHote& p, int32_t poids = 0, int32_t taille = 0) {
    return ControlePosologie(session(), p, poids, taille);
}
int32_t Masque(const PosologieHote& p, int32_t poids = 0) { return Verifie(p, poids).Masque; }

const std::string Maximum = "Attention, la posologie journaliere maximum est de : ";
const std::string Basse = "Attention, la posologie journaliere recommand\xE9" "e la plus basse est de : ";
const std::string Haute = "Attention, la posologie journaliere recommand\xE9" "e la plus \xE9lev\xE9" "e est de : ";

TEST_F(Controles, TheDailyDoseAgainstTheCeilingThenTheRecommendedRange) {
    EXPECT_EQ(Verifie(Donnee(1, 0, 3)).Masque, 1);
    ControleDePosologie c = Verifie(Donnee(3, 0, 3));  // above both: the ceiling alone
    EXPECT_EQ(c.Masque, 1 | 4);
    EXPECT_EQ(c.AlerteDose, Maximum + "8 comprim\xE9s");
    c = Verifie(Donnee(0.5f, 0, 2));
    EXPECT_EQ(c.Masque, 1 | 16);
    EXPECT_EQ(c.AlerteDose, Basse + "2 comprim\xE9");  // the singular word
    c = Verifie(Donnee(2, 0, 4));
    EXPECT_EQ(c.Masque, 1 | 8);
    EXPECT_EQ(c.AlerteDose, Haute + "6 comprim\xE9s");
    PosologieHote p = Donnee(0.5f, 2.5f, 2);
    p.PrisesMax = 3;
    c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 8 | 16);
    EXPECT_EQ(c.AlerteDose, Haute + "6 comprim\xE9s");
    EXPECT_EQ(Masque(Donnee(3, 1, 3)), 1 | 4);  // the larger dose
    EXPECT_EQ(Masque(Donnee(3, 1, 3, "")), 1 | 4);  // nothing loaded: the plain limits
    p = Donnee(30, 0, 3);
    p.NombreModeles = 1;
    EXPECT_EQ(Masque(p), 0);
    // Limits under "T" when the terrain has none; none at all: 0.
    p = Donnee(2, 0, 3);
    p.CodeCIP = "3000005";
    c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 4);
    EXPECT_EQ(c.AlerteDose, Maximum + "4 comprim\xE9s");
    p.Libelle.clear();
    EXPECT_EQ(Masque(p), 1 | 4);
    p.CodeCIP = "3000002";
    c = Verifie(p);
    EXPECT_EQ(c.Masque, 0);
    EXPECT_EQ(c.AlerteDose + c.AlerteDuree, "");
    p.CodeCIP = "3000009";  // without identification
    EXPECT_EQ(Masque(p), 0);
}

TEST_F(Controles, TheTakesOfADay) {
    PosologieHote p = Donnee(1, 0, 1);
    p.CodePeriode = 20, p.Intervalle = 6;  // every 6 hours: 4 a day
    EXPECT_EQ(Masque(p), 1);
    p.Intervalle = 1;  // every hour: 24
    EXPECT_EQ(Masque(p), 1 | 4);
    p.CodePeriode = 40, p.Intervalle = 2;  // every other day counts as daily
    EXPECT_EQ(Masque(p), 1 | 16);
    p.CodePeriode = 50, p.Intervalle = 1, p.PrisesMin = 3;
    EXPECT_EQ(Masque(p), 1);
    p.CodePeriode = 0, p.PrisesMin = 0, p.CodeMoment = 5;  // twice by the moment
    EXPECT_EQ(Masque(p), 1);
    p.CodeMoment = 6;  // a multiplier below 1 counts for nothing
    EXPECT_EQ(Masque(p), 1 | 16);
}

TEST_F(Controles, APosologysOwnCeilingAloneIsChecked) {
    PosologieHote p = Donnee(2, 0, 1, "300000102");  // 1 an hour: 24 a day
    p.CodePeriode = 20;
    ControleDePosologie c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 4);
    EXPECT_EQ(c.AlerteDose, Maximum + "24 comprim\xE9s");
    p.DoseMin = 0.5f, p.CodePeriode = 40;
    EXPECT_EQ(Masque(p), 1);  // below the recommended range, which isn't looked at
    // Per kilo, computed by the sentence for the patient: 2 tablets at 20 kg.
    p = Donnee(1, 0, 3, "300000103");
    c = Verifie(p, 20);
    EXPECT_EQ(c.Masque, 1 | 4);
    EXPECT_EQ(c.AlerteDose, Maximum + "2 comprim\xE9s pour ce patient de 20 Kg(s) ");
}

TEST_F(Controles, LimitsPerKiloAndPerSquareMetreWithTheirTails) {
    // In mg, the second unit: the limits of the second group, no rounding.
    PosologieHote p = Donnee(500, 0, 3, "300000104");
    p.CodeUnite = 30, p.Libelle = "Enfant";
    ControleDePosologie c = Verifie(p, 20);  // the dose as given, the limits times the weight
    EXPECT_EQ(c.Masque, 1 | 4);
    EXPECT_EQ(c.AlerteDose, Maximum + "60 mg par Kg, soit 1200 mg pour 20 Kg(s) ");
    p.TypeRef = "P", p.DoseMin = 20;  // per kilo as given
    c = Verifie(p, 20);
    EXPECT_EQ(c.Masque, 1 | 8);
    EXPECT_EQ(c.AlerteDose, Haute + "50 mg par Kg soit 50 mg pour 20 Kg(s) pour ce patient");
    p.DoseMin = 5;
    c = Verifie(p, 20);
    EXPECT_EQ(c.Masque, 1 | 16);
    EXPECT_EQ(c.AlerteDose, Basse + "30 mg par Kg soit 50 mg pour 20 Kg(s) pour ce patient");
    p.CodePosologie = "300000106", p.DoseMin = 100;  // for 5 kilos
    c = Verifie(p, 20);
    EXPECT_EQ(c.AlerteDose, Haute + "50 mg pour 5 Kg(s) soit 250 mg pour 20 Kg(s) pour ce patient");
    // Per square metre, by 2, a basis of 0 counting as 1.
    p.CodePosologie = "300000105", p.TypeRef = "S", p.DoseMin = 1000;
    EXPECT_EQ(Masque(p, 20), 1);
    p.DoseMin = 1400;
    c = Verifie(p, 20, 120);
    EXPECT_EQ(c.AlerteDose, Haute + "2000 mg pour 2 M2 soit 4000 mg pour 0.825 M2(s) pour ce patient ");
    p.TypeRef.clear(), p.DoseMin = 2000;
    c = Verifie(p, 20, 120);
    std::string surface;
    TexteNombre(SurfaceCorporelle(20, 120), surface, false);
    std::string limite;
    TexteNombre(3000 * 2 * SurfaceCorporelle(20, 120), limite, false);
    EXPECT_EQ(c.AlerteDose, Maximum + "3000 mg pour 2 M2 soit " + limite + " mg pour " + surface + " M2(s) pour ce patient ");
}

TEST_F(Controles, TheSecondUnitsLimits) {
    PosologieHote p = Donnee(1000, 0, 5);
    p.CodeUnite = 30;
    const ControleDePosologie c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 4);
    EXPECT_EQ(c.AlerteDose, Maximum + "4000 mg");
    p.DoseMin = 0.3f, p.PrisesMin = 4000;  // 1200 mg: within the range of mg
    EXPECT_EQ(Masque(p), 1);
}

TEST_F(Controles, DurationsInDays) {
    PosologieHote p = Donnee(1, 0, 3);
    p.DureeMin = 2, p.CodeDuree = 50;  // two weeks
    ControleDePosologie c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 32);
    EXPECT_EQ(c.AlerteDuree, "Attention, la dur\xE9" "e de traitement maximum est de : 10 jour(s)");
    p.DureeMin = 0;
    c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 128);
    EXPECT_EQ(c.AlerteDuree, "Attention, la dur\xE9" "e de traitement recommand\xE9" "e la plus courte est de : 2 jour(s)");
    p.DureeMin = 1, p.DureeMax = 7, p.CodeDuree = 40;
    c = Verifie(p);
    EXPECT_EQ(c.Masque, 1 | 64 | 128);
    EXPECT_EQ(c.AlerteDuree, "Attention, la dur\xE9" "e de traitement recommand\xE9" "e la plus longue est de : 5 jour(s)");
}

TEST_F(Controles, TheExportsAndTheLimits) {
    session().ChaineMemoire = "3@0@14@0@0@0@3@0@1@40@0@12@0@40@0@0@0@0@0@0@300000101@3400930000011@Adulte@@";
    EXPECT_EQ(CheckPosologie_Vdx(nullptr, 0, 0, nullptr, nullptr), -16);  // not mapped under CIP13Actif 0
    ActiveCIP13_Vdx(1);
    ASSERT_EQ(CheckPosologie_Vdx(nullptr, 0, 0, nullptr, nullptr), 1 | 4 | 32);
    EXPECT_EQ(Memoire(), "Attention, la dur\xE9" "e de traitement maximum est de : 10 jour(s)@" + Maximum + "8 comprim\xE9s");
    EXPECT_EQ(CheckPosologie_Vdx(nullptr, -1, -1, nullptr, nullptr), -20);
    EXPECT_EQ(CheckPosologie_Vdx(nullptr, 0, -1, nullptr, nullptr), -30);
    session().ChaineMemoire = "";
    EXPECT_EQ(CheckPosologie_Vdx(nullptr, 0, 0, nullptr, nullptr), -14);

    ASSERT_EQ(PosoBornes_Vdx("3000001A", nullptr), 1);
    EXPECT_EQ(Memoire(), "2@6@0@0@0@0@0@0@8@0@0@1000@3000@0@0@0@0@0@0@4000@0@0@2@5@10");
    EXPECT_EQ(PosoBornes_Vdx(nullptr, nullptr), -10);
    EXPECT_EQ(PosoBornes_Vdx("3000001", nullptr), -13);
    EXPECT_EQ(PosoBornes_Vdx("3000001AB", nullptr), -13);
    EXPECT_EQ(PosoBornes_Vdx("3000001S", nullptr), -90);

    ReconnecteEnTableau();
    VdxPosologieHote h{};
    h.DoseMin.Valeur = 3;
    h.CodeUnite = 14;
    h.PrisesMin = 3;
    h.CodePeriode = 40;
    h.DureeMin = 5;
    h.CodeDuree = 40;
    hote::RangeOctets(&h.CodeCIP, "3000001");
    hote::RangeOctets(&h.Libelle, "Adulte");
    BSTR duree = nullptr, dose = nullptr;
    hote::RangeOctets(&duree, "ancienne");
    EXPECT_EQ(CheckPosologie_Vdx(nullptr, 0, 0, &duree, &dose), -10);
    EXPECT_EQ(essai::Texte(duree), "");
    ASSERT_EQ(CheckPosologie_Vdx(&h, 0, 0, &duree, &dose), 1 | 4);
    EXPECT_EQ(essai::Texte(dose), Maximum + "8 comprim\xE9s");
    VdxBornesPosologie bornes{};
    ASSERT_EQ(PosoBornes_Vdx("3000001A", &bornes), 1);
    EXPECT_EQ(bornes.MaxJourUnite2.Valeur, 4000);
    EXPECT_EQ(bornes.DureeMaximum, 10);
    essai::LibereFiche(&h, GabaritDe<PosologieHote>());
    hote::Libere(&duree);
    hote::Libere(&dose);
}

TEST(CalculClairance, CockcroftAndGaultTheWomansFactorTruncatedFirst) {
    EXPECT_EQ(CalculClairance_Vdx(70, 70, 60, "F", 2), 9);   // 11.11 × 0.85 = 9.44
    EXPECT_EQ(CalculClairance_Vdx(100, 70, 60, "H", 1), 69);  // 68.80 rounded
    EXPECT_EQ(CalculClairance_Vdx(100, 75, 60, "F", 1), 62);  // 62.65 truncated
    EXPECT_EQ(CalculClairance_Vdx(100, 75, 60, "H", 1), 74);  // 73.71
    for (auto [creatinine, age, genre] : {std::tuple{100.f, 60, 3}, {0.f, 60, 1}, {-5.f, 60, 1}, {100.f, 141, 1}})
        EXPECT_EQ(CalculClairance_Vdx(creatinine, 70, age, "H", genre), -1);
    EXPECT_EQ(CalculClairance_Vdx(100, 70, 60, nullptr, 1), 69);
}

}  // namespace
}  // namespace vdx
