// The sentences of a posology and the quantities of its treatment: doses,
// takes, cycles, frequencies, durations, ceilings, the other unit, words for
// a narcotic, the packages; the checks of the codes; the three exports in
// their modes.
#include "posology/phrase.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "posology/arrondi.h"
#include "posology/quantite.h"
#include "posology/vocabulaire.h"
#include "session/cadre.h"
#include "posology/surface.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/sans_fichier.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3000001 a scored tablet (halves) in boxes of 30, mg its second unit;
// 3000003 in mg first, tablets of 500 mg second, 16 a box; 3000007 a
// narcotic in capsules of whole takes; 3000010 an oral solution in bottles
// of 90 ml; 3000009 tablets of whole takes without contents; 3000008
// tablets and mg without contents.
class Phrases : public essai::SurUneBaseEnContexte<Phrases> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        for (auto [code, un, plusieurs] : {std::tuple{14, "comprimé", "comprimés"}, {30, "mg", "mg"}, {42, "ml", "ml"},
                                           {29, "gélule", "gélules"}, {61, "sachet", "sachets"}})
            b.Ajoute("VDXPUPRI", {{"Code", code}, {"Libelle", un}, {"LibellePluriel", plusieurs}});
        for (auto [code, libelle] : {std::pair{20, "heure"}, {40, "jour"}, {50, "semaine"}, {60, "mois"}, {70, "an"}})
            b.Ajoute("VDXPDUR", {{"Code", code}, {"Libelle", libelle}});
        for (auto [cle, facteur] : {std::pair{"020040", 24.0}, {"040050", 7.0}, {"040060", 30.0}})
            b.Ajoute("VDXPDURC", {{"Cle", cle}, {"Facteur", facteur}});
        b.Ajoute("VDXPMOM", {{"Code", 5}, {"Libelle", "matin et soir"}, {"Multiplicateur", 2.0}});
        b.Ajoute("VDXPSPE", {{"Code", 1}, {"Libelle", "à jeun"}}).Ajoute("VDXPSPE", {{"Code", 2}, {"Libelle", "Ne pas croquer"}});
        b.Ajoute("VDXIDCON", {{"Code", 1}, {"Libelle", "boîte"}, {"LibellePluriel", "boîtes"}});
        b.Ajoute("VDXIDPRE", {{"Code", 2}, {"Libelle", "flacon"}, {"LibellePluriel", "flacons"}});
        struct P {
            const char* cip;
            double parBoite, parUnite;
            int contenant, presentation;
            int unite, contenance;
            double rapport;
            int arrondi, entieres;
            int unite2, contenance2;
            double rapport2;
            int arrondi2;
        };
        for (const P& p : {P{"3000001", 30, 1, 1, 0, 14, 1, 1, 2, 0, 30, 1, 0.002, 0},
                           P{"3000003", 16, 500, 1, 0, 30, 1, 1, 0, 0, 14, 1, 500, 2},
                           P{"3000007", 14, 1, 1, 0, 29, 1, 1, 1, 1, 0, 0, 0, 0},
                           P{"3000010", 1, 90, 0, 2, 42, 1, 1, 0, 0, 0, 0, 0, 0},
                           P{"3000009", 30, 1, 1, 0, 14, 0, 1, 0, 1, 0, 0, 0, 0},
                           P{"3000008", 30, 1, 1, 0, 14, 0, 1, 0, 0, 30, 0, 0.002, 0}})
            b.Ajoute("VDXIDPRO", {{"CodeCIP", p.cip}, {"QuantitePresentation", p.parBoite},
                                  {"QuantiteUnitePresentation", p.parUnite}, {"CodeContenant", p.contenant},
                                  {"CodePresentation", p.presentation}, {"CodeUnitePrise", p.unite},
                                  {"AvecContenance", p.contenance}, {"Rapport", p.rapport}, {"Secabilite", p.arrondi},
                                  {"PrisesEntieres", p.entieres}, {"CodeUnitePrise2", p.unite2},
                                  {"AvecContenance2", p.contenance2}, {"Rapport2", p.rapport2},
                                  {"Secabilite2", p.arrondi2}});
    }
    static ResultatPosologie Dit(const PosologieHote& p, float poids = 0, int32_t taille = 0) {
        return DecodePosologie(session(), p, poids, taille);
    }
    static std::string Phrase(const PosologieHote& p, float poids = 0) { return Dit(p, poids).Phrase1; }
    static int32_t Code(const PosologieHote& p) {
        try {
            Dit(p);
            return 1;
        } catch (const Echec& e) {
            return e.code;
        }
    }
};

// 1 to 2 tablets 3 times a day for 5 days.
PosologieHote Simple(const char* cip = "3000001") {
    return {.DoseMin = 1, .DoseMax = 2, .CodeUnite = 14, .PrisesMin = 3, .CodePeriode = 40, .DureeMin = 5,
            .CodeDuree = 40, .CodeCIP = cip};
}

TEST_F(Phrases, TheDoseTheTakesAndTheDuration) {
    EXPECT_EQ(Phrase(Simple()), "1 \xE0 2 comprim\xE9s 3 fois par jour pendant 5 jours.");
    PosologieHote p = Simple();
    p.DoseMin = 0.5f, p.DoseMax = 0, p.PrisesMax = 4, p.DureeMin = 1, p.DureeMax = 0;
    EXPECT_EQ(Phrase(p), "\xBD comprim\xE9 3 \xE0 4 fois par jour pendant 1 jour.");
    p.DoseMin = 2, p.DoseMax = 1;  // swapped
    const ResultatPosologie r = Dit(p);
    EXPECT_EQ(r.Phrase1.substr(0, 15), "1 \xE0 2 comprim\xE9s");
    EXPECT_EQ(r.Dose1Min, 1);
    EXPECT_EQ(r.Dose1Max, 2);
    p = Simple();
    p.DoseMin = 0, p.PrisesMin = 0, p.CodeMoment = 5, p.CodePeriode = 0, p.CodeSpecification = 1, p.DureeMax = 7;
    EXPECT_EQ(Phrase(p), "2 comprim\xE9s matin et soir \xE0 jeun pendant 5 \xE0 7 jours.");
    p.CodeSpecification2 = 2, p.CodeDuree = 99;  // a duration without label is left out
    EXPECT_EQ(Phrase(p), "2 comprim\xE9s matin et soir \xE0 jeun.\r\nNe pas croquer.");
}

TEST_F(Phrases, FrequenciesAndCycles) {
    PosologieHote p = Simple();
    p.DoseMax = 0, p.PrisesMin = 0, p.Intervalle = 2, p.CodePeriode = 20, p.CodeDuree = 40;
    EXPECT_EQ(Phrase(p), "1 comprim\xE9 toutes les 2 heures pendant 5 jours.");
    p.CodePeriode = 40;
    EXPECT_EQ(Phrase(p), "1 comprim\xE9 tous les 2 jours pendant 5 jours.");
    p.Intervalle = 1, p.CodePeriode = 60, p.DureeMin = 0, p.CodeDuree = 0;
    EXPECT_EQ(Phrase(p), "1 comprim\xE9 par mois.");  // its "s" stays
    p.CodePeriode = CodeCycle, p.PrisesMin = 1, p.PrisesMax = 5, p.CodeDuree = 0;
    EXPECT_EQ(Phrase(p), "1 comprim\xE9 du 1er au 5\xE8me jour du cycle.");
    p.PrisesMin = 2, p.PrisesMax = 0;
    EXPECT_EQ(Phrase(p), "1 comprim\xE9 le 2\xE8me jour du cycle.");
}

TEST_F(Phrases, ADoseByWeightIsScaledForAKnownPatientElseSaidSo) {
    PosologieHote p{.DoseMin = 10, .CodeUnite = 30, .QuantiteRef = 1, .PrisesMin = 2, .CodePeriode = 40,
                    .DoseMaximum = 30, .MaximumRapporte = 1, .CodePeriodeMaximum = 40, .CodeCIP = "3000003",
                    .TypeRef = "P"};
    EXPECT_EQ(Phrase(p), "10 mg par Kilo 2 fois par jour. Maximum 30 mg par Kilo par jour.");
    EXPECT_EQ(Phrase(p, 20), "200 mg 2 fois par jour. Maximum 600 mg par jour.");
    p.TypeRef = "S";
    EXPECT_EQ(Dit(p, 60, 170).Dose1Min, 10 * SurfaceCorporelle(60, 170));
    p.QuantiteRef = 5, p.TypeRef = "P";
    EXPECT_EQ(Phrase(p).substr(0, 22), "10 mg pour 5 kilos 2 f");
    // Unknown weight: the rounding of code 100, whatever the product's.
    p = Simple();
    p.DoseMin = 0.3f, p.DoseMax = 0, p.QuantiteRef = 1;
    EXPECT_EQ(Dit(p).Dose1Min, 0.3f);
    EXPECT_EQ(Dit(p, 1).Dose1Min, 0.5f);  // halves, the product's
}

TEST_F(Phrases, TheOtherUnitByTheContentsOrByTheRatios) {
    PosologieHote p{.DoseMin = 500, .CodeUnite = 30, .CodeUnite2 = 14, .Conversion = 1, .PrisesMin = 3,
                    .CodePeriode = 40, .DureeMin = 5, .CodeDuree = 40, .DoseMaximum = 3000, .CodePeriodeMaximum = 40,
                    .CodeCIP = "3000003"};
    ResultatPosologie r = Dit(p);
    EXPECT_EQ(r.Phrase1, "500 mg 3 fois par jour pendant 5 jours. Maximum 3000 mg par jour.");
    EXPECT_EQ(r.Phrase2, "1 comprim\xE9  3 fois par jour pendant 5 jours. Maximum 6 comprim\xE9s par jour.");
    EXPECT_EQ(r.Dose2Min, 1);
    EXPECT_EQ(r.Maximum2, 6);
    EXPECT_EQ(r.Boites1, "1 bo\xEEte");  // 7500 mg of 8000
    EXPECT_EQ(r.Utilisation1, 93.75f);
    EXPECT_EQ(r.Boites2, "1 bo\xEEte");
    // Without contents the doses only move, the upper one twice in the
    // direction of the second unit.
    p = {.DoseMin = 1, .DoseMax = 2, .CodeUnite = 14, .CodeUnite2 = 30, .Conversion = 1, .PrisesMin = 1,
         .CodePeriode = 40, .CodeCIP = "3000008"};
    r = Dit(p);
    EXPECT_TRUE(r.Phrase2.empty());
    EXPECT_FLOAT_EQ(r.Dose2Min, 500);
    EXPECT_FLOAT_EQ(r.Dose2Max, 1000);
    p.CodeUnite = 30, p.CodeUnite2 = 14, p.DoseMin = 500, p.DoseMax = 1000;
    r = Dit(p);
    EXPECT_FLOAT_EQ(r.Dose2Min, 1);
    EXPECT_FLOAT_EQ(r.Dose2Max, 0.002f);
}

TEST_F(Phrases, ANarcoticsNumbersInWords) {
    PosologieHote p{.DoseMin = 1, .CodeUnite = 29, .PrisesMin = 2, .CodePeriode = CodeCycle, .CodeCIP = "3000007"};
    p.PrisesMax = 3;
    EXPECT_EQ(Phrase(p), " un(e) (1) g\xE9lule du  deux (2)\xE8me au  trois (3)\xE8me jour du cycle.");
    p = Simple("3000007");
    p.CodeUnite = 29;
    const ResultatPosologie r = Dit(p);
    EXPECT_EQ(r.Boites1, "3 (trois) bo\xEEtes");  // 30 of 14
}

TEST_F(Phrases, MarkersWithoutRoundingAndModels) {
    PosologieHote p = Simple();
    p.DoseMax = 0;
    {
        const AvecMarqueurs marqueurs;
        EXPECT_EQ(Phrase(p), "1 comprim\xE9##1 3 fois par jour##2 pendant 5 jours.");
    }
    p.DoseMin = 0.3f;
    {
        const SansArrondi sans;
        EXPECT_EQ(Dit(p).Dose1Min, 0.3f);
    }
    EXPECT_EQ(Dit(p).Dose1Min, 0.5f);
    p.NombreModeles = 2, p.Texte = "Voir le sch\xE9ma.";
    ResultatPosologie r = Dit(p);
    EXPECT_EQ(r.Phrase1, "Voir le sch\xE9ma.");
    EXPECT_EQ(r.TexteLibre, "");
    EXPECT_EQ(r.Boites1, "2 bo\xEEtes");
    p.CodeCIP = "3000006";  // not in VDXIDPRO
    EXPECT_EQ(Dit(p).Boites1, "2 Mod\xCBles");
    p.NombreModeles = 0;
    r = Dit(p);
    EXPECT_EQ(r.TexteLibre, "Voir le sch\xE9ma.");
    EXPECT_EQ(r.Boites1, "0 Mod\xCBle");
}

TEST_F(Phrases, QuantitiesAndPackages) {
    const auto quantite = [](PosologieHote p) {
        const ResultatPosologie r = Dit(p);
        return std::tuple{r.Quantite1, r.Boites1, r.Utilisation1};
    };
    PosologieHote p = Simple();
    p.DoseMax = 0, p.DureeMin = 10;
    EXPECT_EQ(quantite(p), std::tuple(30.f, std::string("1 bo\xEEte"), 100.f));
    p.PrisesMin = 1, p.DureeMin = 31;
    EXPECT_EQ(quantite(p), std::tuple(31.f, std::string("2 bo\xEEtes"), 3.33f));
    // Every other day: 5, and the first take counted in full; in single
    // precision 6 of 30 leave 19.99 %.
    p.Intervalle = 2, p.DureeMin = 10;
    EXPECT_EQ(quantite(p), std::tuple(5.f, std::string("1 bo\xEEte"), 19.99f));
    // Whole takes, no contents: one package whole.
    p = Simple("3000009");
    p.DoseMin = 0.5f, p.DoseMax = 0, p.PrisesMin = 1;
    EXPECT_EQ(quantite(p), std::tuple(5.f, std::string("1 bo\xEEte"), 100.f));
    // A moment's multiplier without period; weeks over a daily period.
    p = Simple();
    p.DoseMax = 0, p.PrisesMin = 0, p.CodePeriode = 0, p.CodeMoment = 5;
    EXPECT_EQ(std::get<0>(quantite(p)), 10.f);
    p = Simple();
    p.DoseMax = 0, p.PrisesMin = 2, p.DureeMin = 2, p.CodeDuree = 50;
    EXPECT_EQ(std::get<0>(quantite(p)), 28.f);
    // A cycle of five days for 3 months, no factor between them.
    p.CodePeriode = CodeCycle, p.PrisesMin = 1, p.PrisesMax = 5, p.DureeMin = 3, p.CodeDuree = 70;
    EXPECT_EQ(std::get<0>(quantite(p)), 15.f);
    // A bottle read from its presentation word; a unit of neither kind.
    p = Simple("3000010");
    p.CodeUnite = 42, p.DoseMin = 5, p.DoseMax = 0, p.DureeMin = 7;
    EXPECT_EQ(quantite(p), std::tuple(105.f, std::string("2 flacons"), 16.66f));
    p.CodeUnite = 61;
    EXPECT_EQ(std::get<1>(quantite(p)), "105 ?.");
    // Contents of a fraction, of digits only.
    float pourcentage = 0;
    const Chiffres chiffres(false);
    EXPECT_EQ(Boites(1, "\xBD comprim\xE9", {"bo\xEEte", "bo\xEEtes"}, {}, pourcentage, chiffres), "2 bo\xEEtes");
    EXPECT_EQ(pourcentage, 100);
    pourcentage = 0;
    EXPECT_EQ(Boites(7.5f, "30", {}, {}, pourcentage, chiffres), "7\xBD ?.");
    EXPECT_EQ(pourcentage, 0);
}

TEST_F(Phrases, CodesThatCantGoTogetherAndNothingToSay) {
    PosologieHote p = Simple();
    p.CodeMoment = 5, p.CodePeriode = 0, p.CodeDuree = 20;
    EXPECT_EQ(Code(p), -110);
    p = Simple();
    p.CodePeriode = CodeCycle, p.CodeDuree = 60;
    EXPECT_EQ(Code(p), -111);
    p.CodeDuree = 70;
    EXPECT_EQ(Code(p), 1);
    p = Simple();
    p.CodePeriode = 50;
    EXPECT_EQ(Code(p), -112);
    p = Simple();
    p.DoseMin = p.DoseMax = 0;
    EXPECT_EQ(Code(p), -113);
    p = Simple();
    p.CodeUnite = 99;
    EXPECT_EQ(Code(p), -113);
    p.NombreModeles = 1;
    EXPECT_EQ(Code(p), 1);
}

TEST_F(Phrases, BadValuesGiveASentenceAndNoFault) {
    PosologieHote p = Simple();
    p.DoseMin = NAN, p.DoseMax = INFINITY, p.Intervalle = -2, p.DureeMin = INT32_MIN;
    EXPECT_EQ(Code(p), 1);
    p = Simple();
    p.CodePeriode = CodeCycle, p.CodeDuree = 0, p.PrisesMin = INT32_MAX, p.PrisesMax = INT32_MIN;
    EXPECT_EQ(Code(p), 1);
    p = Simple("3000008");  // no contents, a ceiling below 0
    p.CodeUnite2 = 30, p.Conversion = 1, p.DoseMaximum = -5, p.CodePeriodeMaximum = 40;
    EXPECT_EQ(Code(p), 1);
}

TEST_F(Phrases, TheExportsInTheirModes) {
    dans_.reset();
    session().ChaineMemoire = "1@2@14@0@0@0@3@0@1@40@0@5@0@40@0@0@0@0@0@0@@3000001@@@";
    ASSERT_EQ(PosoDec_Vdx(nullptr, 0, 0, nullptr), 1);
    EXPECT_EQ(Memoire(), "1@2@0@0@0@0@100@0@30@0@14@0@1 \xE0 2 comprim\xE9s 3 fois par jour pendant 5 jours.@@@1 bo\xEEte@");
    for (const char* mal : {"", "1@2@14", "1@@14@0@0@0@3@0@1@40@0@5@0@40@0@0@0@0@0@0@@3000001@@@"}) {
        session().ChaineMemoire = mal;
        EXPECT_EQ(PosoDec_Vdx(nullptr, 0, 0, nullptr), -14) << mal;
    }
    session().ChaineMemoire = "1@2@14@0@0@0@3@0@1@40@0@5@0@40@0@0@0@0@0@0@@300000@@@";
    EXPECT_EQ(PosoDec_Vdx(nullptr, 0, 0, nullptr), -16);
    EXPECT_EQ(PosoDec_Vdx(nullptr, -1, -1, nullptr), -20);
    EXPECT_EQ(PosoDec_Vdx(nullptr, 0, -1, nullptr), -30);

    ReconnecteEnTableau();
    VdxPosologieHote h{};
    h.DoseMin.Valeur = 0.3f;
    h.CodeUnite = 14;
    h.PrisesMin = 1;
    h.CodePeriode = 40;
    hote::RangeOctets(&h.CodeCIP, "3000001");
    hote::RangeOctets(&h.Texte, std::string(8192, 'x'));
    VdxResultatPosologie r{};
    EXPECT_EQ(PosoDec_Vdx(&h, 0, 0, nullptr), -50);
    EXPECT_EQ(PosoDec_Vdx(nullptr, 0, 0, &r), -10);
    ASSERT_EQ(PosoDec2_Vdx(&h, 0, 0, &r), 1);
    EXPECT_EQ(essai::Texte(r.Phrase1), "0.3 comprim\xE9 1 fois par jour.");
    EXPECT_EQ(essai::Texte(r.TexteLibre), "");  // too long a text is none
    ASSERT_EQ(PosoDec_Vdx(&h, 0, 0, &r), 1);  // rounding is back
    EXPECT_EQ(r.Dose1Min.Valeur, 0.5f);
    ASSERT_EQ(PosoDec3_Vdx(&h, 0, 0, &r), 1);
    EXPECT_EQ(essai::Texte(r.Phrase1), "\xBD comprim\xE9##1 1 fois par jour##2.");
    EXPECT_EQ(MarqueursActifs, 0);
    hote::RangeOctets(&h.CodeCIP, "30000011");
    EXPECT_EQ(PosoDec_Vdx(&h, 0, 0, &r), -16);
    EXPECT_EQ(essai::Texte(r.Phrase1), "");
    essai::LibereFiche(&h, GabaritDe<PosologieHote>());
    essai::LibereFiche(&r, GabaritDe<ResultatPosologie>());
}

TEST(PhrasesSansTable, TheMissingIndexOfTheUnitsIsReportedUnderItsOldName) {
    essai::ConnexionSansFichier base("VDXPUPRI.NDX");
    ASSERT_TRUE(base.Connecte());
    session().ChaineMemoire = "1@2@14@0@0@0@3@0@1@40@0@5@0@40@0@0@0@0@0@0@@3000001@@@";
    EXPECT_EQ(PosoDec_Vdx(nullptr, 0, 0, nullptr), -500);
    EXPECT_EQ(session().FichierErreur, "VDXPURPI.NDX");
}

}  // namespace
}  // namespace vdx
