// The step search, the keyword search and the keyword search of the copies,
// through their exports, on one small base. Results are read as flat texts
// (memory mode) unless the host's array is the point.
#include "vocabulary/recherche.h"

#include <gtest/gtest.h>


#include "platform/hote.h"
#include "session/resultat.h"
#include "tests/support/essai_vocabulaire.h"
#include "tests/support/sans_fichier.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

class Recherche : public essai::SurUneBase<Recherche> {
public:
    static void Remplit(BaseDeTest& b) {
        for (auto [code, libelle, cle] : {
                 std::tuple{"J45", "Asthme", "ASTHME"},
                 {"J45.0", "Asthme à prédominance allergique", "ASTHME A PREDOMINANCE ALLERGIQUE"},
                 {"J45.9", "Asthme, sans précision", "ASTHME, SANS PRECISION"},
                 {"O24", "Diabète sucré au cours de la grossesse", "DIABETE SUCRE AU COURS DE LA GROSSESSE"},
                 {"E11", "Diabète sucré de type 2", "DIABETE SUCRE DE TYPE 2"},
                 {"B02", "Zona", "ZONA"},
                 {"B02.9", "Zona, zona sans complication", "ZONA, ZONA SANS COMPLICATION"},
                 // Œ is outside the accent table: the fold leaves it, and it sorts last.
                 {"J81", "Œdème pulmonaire", "ŒDEME PULMONAIRE"},
             })
            b.Ajoute("VDXVCIM", {{"Code", code}, {"Libelle", libelle}, {"LibelleCle", cle}});
        // One term filed twice, as an indication and as a contra-indication.
        for (auto [code, type, libelle, cle] : {
                 std::tuple{"0000000001", "1", "Hypertension artérielle", "HYPERTENSION ARTERIELLE"},
                 {"0000000001", "2", "Hypertension artérielle", "HYPERTENSION ARTERIELLE"},
                 {"0000000002", "1", "Hypotension orthostatique", "HYPOTENSION ORTHOSTATIQUE"},
                 {"0000000003", "4", "Hyperkaliémie", "HYPERKALIEMIE"},
             })
            b.Ajoute("VDXVAMM",
                     {{"CodeTerme", code}, {"TypeAMM", type}, {"Libelle", libelle}, {"LibelleMajuscules", cle}});
        for (auto [code, libelle] : {std::pair{1, "Paracétamol"}, {2, "Acide acétylsalicylique"}, {3, "Amoxicilline"}})
            b.Ajoute("VDXVPA", {{"CodeSubstance", code}, {"Libelle", libelle}});
        // An excipient is searched by its name, one with known effect also by its second label.
        b.Ajoute("VDXVEXC", {{"CodeSubstance", 11}, {"Libelle", "Aspartam"}, {"LibelleEEN", "Phénylalanine"}});
        b.Ajoute("VDXVEXC", {{"CodeSubstance", 12}, {"Libelle", "Huile d'arachide"}, {"LibelleEEN", "Arachide"}});
        b.Ajoute("VDXVEXC", {{"CodeSubstance", 13}, {"Libelle", "Amidon de maïs"}});
        for (auto [code, libelle, cle] : {
                 std::tuple{"A01", "Antalgiques", "ANTALGIQUES"},
                 {"A0101", "Antalgiques non opioïdes", "ANTALGIQUES NON OPIOIDES"},
                 {"M01", "Anti-inflammatoires non stéroïdiens", "ANTI-INFLAMMATOIRES NON STEROIDIENS"},
                 {"J01", "Antibiotiques", "ANTIBIOTIQUES"},
             })
            b.Ajoute("VDXCLA", {{"CodeClasse", code}, {"Libelle", libelle}, {"LibelleCle", cle}});
        for (auto [code, libelle, cle] : {
                 std::tuple{"A", "Appareil digestif", "APPAREIL DIGESTIF"},
                 {"A1", "Antiacides", "ANTIACIDES"},
                 {"A2", "Antiulcéreux", "ANTIULCEREUX"},
                 {"B", "Sang", "SANG"},
                 {"B1", "Antiagrégants plaquettaires", "ANTIAGREGANTS PLAQUETTAIRES"},
             })
            b.Ajoute("VDXFAM", {{"CodeFamille", code}, {"Libelle", libelle}, {"LibelleCle", cle}});
        for (auto [code, libelle] : {std::pair{"SANO", "Sanofi"}, {"PFIZ", "Pfizer"}, {"SERV", "Servier"}})
            b.Ajoute("VDXLAB", {{"CodeLaboratoire", code}, {"Libelle", libelle}});
        // A folded label given as shown is folded for the key.
        b.Ajoute("VDXVCISP", {{"Code", "R96"}, {"Libelle", "Asthme"}, {"LibelleCle", "Asthme"}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "CP"}, {"Libelle", "comprimé"}, {"LibelleCle", "COMPRIME"}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "GEL"}, {"Libelle", "gélule"}, {"LibelleCle", "GELULE"}});
    }
};

const char* const AsthmeA = "Asthme \xE0 pr\xE9" "dominance allergique";
const char* const Oedeme = "\x8C" "d\xE8me pulmonaire";

// ---- Step search ----

TEST_F(Recherche, StepSearchGivesAPageOfThePrefixInKeyOrder) {
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("asth", nullptr, nullptr, 20), 3);
    EXPECT_EQ(Memoire(), std::string("J45@Asthme\r\nJ45.0@") + AsthmeA + "\r\nJ45.9@Asthme, sans pr\xE9" "cision");
    // An empty prefix pages through the whole vocabulary.
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("", nullptr, nullptr, 100), 8);
    EXPECT_EQ(RechercheCIM10ParPas_Vdx(nullptr, nullptr, nullptr, 2), 2);
    EXPECT_EQ(Memoire(), std::string("J45@Asthme\r\nJ45.0@") + AsthmeA);
}

TEST_F(Recherche, SuiteGoesOnBehindTheLastRowOfThePage) {
    ASSERT_EQ(RechercheCIM10ParPas_Vdx("asth", nullptr, nullptr, 2), 2);
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("asth", nullptr, AsthmeA, 2), 1);
    EXPECT_EQ(Memoire(), "J45.9@Asthme, sans pr\xE9" "cision");
    // Behind the last key of the table there is nothing.
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("", nullptr, Oedeme, 10), 0);
    // The prefix still bounds a page that goes on.
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("diab", nullptr, "Diab\xE8te sucr\xE9 au cours de la grossesse", 10), 1);
    EXPECT_EQ(Memoire(), "E11@Diab\xE8te sucr\xE9 de type 2");
}

TEST_F(Recherche, ABlankFirstCharacterReturnsAtOnceAndLeavesTheArrayAlone) {
    session().ModeSortie = ModeTableau;
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    ASSERT_EQ(RechercheCIM10ParPas_Vdx("asth", &tableau, nullptr, 20), 3);
    EXPECT_EQ(RechercheCIM10ParPas_Vdx(" asth", &tableau, nullptr, 20), 0);
    ASSERT_EQ(tableau->rgsabound[0].cElements, 3u);
    EXPECT_EQ(hote::Octets(static_cast<VdxDeuxChaines*>(tableau->pvData)[0].Libelle), "Asthme");
    // Even without an array at all.
    EXPECT_EQ(RechercheCIM10ParPas_Vdx(" ", nullptr, nullptr, 20), 0);
    VideTableau(tableau, {TypeChamp::Texte, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

TEST_F(Recherche, ANumberOfZeroOrLessGivesAnEmptyPage) {
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("asth", nullptr, nullptr, 0), 0);
    EXPECT_EQ(Memoire(), "");
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("asth", nullptr, nullptr, -5), 0);
}

TEST_F(Recherche, ARowRefusedAsADuplicateDoesNotShortenThePage) {
    // HYPERKALIEMIE, HYPERTENSION twice (one term), HYPOTENSION.
    EXPECT_EQ(RechercheAMMParPas_Vdx("hyp", nullptr, nullptr, 3), 3);
    EXPECT_EQ(Memoire(), "0000000003@Hyperkali\xE9mie\r\n0000000001@Hypertension art\xE9rielle\r\n"
                         "0000000002@Hypotension orthostatique");
    EXPECT_EQ(RechercheAllergieAMMParPas_Vdx("hyp", nullptr, nullptr, 2), 2);
    EXPECT_EQ(Memoire(), "0000000003@Hyperkali\xE9mie\r\n0000000001@Hypertension art\xE9rielle");
}

TEST_F(Recherche, BadPrefixesFindNothingAndOverflowNothing) {
    EXPECT_EQ(RechercheCIM10ParPas_Vdx(std::string(300, 'A').c_str(), nullptr, nullptr, 10), 0);
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("", nullptr, std::string(300, 'z').c_str(), 10), 0);
    // Bytes outside the accent table are compared as they are: œ is not Œ.
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("\x9C", nullptr, nullptr, 10), 0);
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("\x8C", nullptr, nullptr, 10), 1);
    EXPECT_EQ(Memoire(), std::string("J81@") + Oedeme);
    EXPECT_EQ(RechercheCIM10ParPas_Vdx("\xFF\x80", nullptr, nullptr, 10), 0);
}

TEST_F(Recherche, CopiesCutThePrefixToTheirKey) {
    // The class key holds 26 bytes of the folded label.
    EXPECT_EQ(RechercheClasseParPas_Vdx("Anti-inflammatoires non st\xE9ro\xEF" "diens de synth\xE8se", nullptr, nullptr, 5),
              1);
    EXPECT_EQ(Memoire(), "M01@Anti-inflammatoires non st\xE9ro\xEF" "diens@");
    EXPECT_EQ(RechercheClasseParPas_Vdx("antal", nullptr, nullptr, 1), 1);
    EXPECT_EQ(RechercheClasseParPas_Vdx("antal", nullptr, "Antalgiques", 5), 1);
    EXPECT_EQ(Memoire(), "A0101@Antalgiques non opio\xEF" "des@");
    EXPECT_EQ(RechercheLaboratoireParPas_Vdx("s", nullptr, nullptr, 5), 2);
    EXPECT_EQ(Memoire(), "SANO@Sanofi\r\nSERV@Servier");
    EXPECT_EQ(RechercheFormeParPas_Vdx("c", nullptr, nullptr, 5), 1);
    EXPECT_EQ(Memoire(), "CP@comprim\xE9@");
}

TEST_F(Recherche, RowsHaveTheShapeOfTheirVocabulary) {
    session().ModeSortie = ModeTableau;
    SAFEARRAY* deux = essai::TableauDeFiches(2);
    ASSERT_EQ(RecherchePAParPas_Vdx("a", &deux, nullptr, 5), 2);
    const auto* substances = static_cast<VdxCodeLibelle*>(deux->pvData);
    EXPECT_EQ(substances[0].Code, 2);
    EXPECT_EQ(hote::Octets(substances[1].Libelle), "Amoxicilline");
    // A class is three strings: an array of two is refused.
    EXPECT_EQ(RechercheClasseParPas_Vdx("a", &deux, nullptr, 5), VDX_ARGUMENT2);
    EXPECT_EQ(RechercheClasseParPas_Vdx("a", nullptr, nullptr, 5), VDX_ARGUMENT2);
    VideTableau(deux, {TypeChamp::Entier, TypeChamp::Texte});
    SafeArrayDestroy(deux);
}

// ---- Keyword search ----

TEST_F(Recherche, KeywordAtTheStartOrAnywhere) {
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("diab", nullptr, 0, nullptr), 2);
    EXPECT_EQ(Memoire(), "O24@Diab\xE8te sucr\xE9 au cours de la grossesse\r\nE11@Diab\xE8te sucr\xE9 de type 2");
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("sucr\xE9", nullptr, 0, nullptr), 0);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("sucr\xE9", nullptr, 1, nullptr), 2);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("\x8C" "DEME", nullptr, 1, nullptr), 1);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx(std::string(300, 'A').c_str(), nullptr, 1, nullptr), 0);
}

TEST_F(Recherche, TheSecondWordMayNotOverlapTheFirst) {
    // Before the first word, or behind it.
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("type", "diabete", 1, nullptr), 1);
    EXPECT_EQ(Memoire(), "E11@Diab\xE8te sucr\xE9 de type 2");
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("diabete", "grossesse", 0, nullptr), 1);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("diabete", "absent", 0, nullptr), 0);
    // The same word twice needs two places.
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("asthme", "asthme", 1, nullptr), 0);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("zona", "zona", 1, nullptr), 1);
    EXPECT_EQ(Memoire(), "B02.9@Zona, zona sans complication");
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("zona", "ona", 0, nullptr), 1);
}

TEST_F(Recherche, ASecondWordAloneIsSearchedAsTheFirst) {
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("", "diab", 0, nullptr), 2);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx(nullptr, "diab", 0, nullptr), 2);
    EXPECT_EQ(Memoire(), "O24@Diab\xE8te sucr\xE9 au cours de la grossesse\r\nE11@Diab\xE8te sucr\xE9 de type 2");
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("", "", 0, nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(RechercheCIM10Lexico_Vdx(nullptr, nullptr, 1, nullptr), VDX_ARGUMENT1);
    session().ModeSortie = ModeTableau;
    EXPECT_EQ(RechercheCIM10Lexico_Vdx("diab", nullptr, 0, nullptr), VDX_ARGUMENT5);
}

TEST_F(Recherche, KeywordSearchKeepsOneRowACode) {
    EXPECT_EQ(RechercheAMMLexico_Vdx("tension", nullptr, 1, nullptr), 2);
    EXPECT_EQ(Memoire(), "0000000001@Hypertension art\xE9rielle\r\n0000000002@Hypotension orthostatique");
}

// ---- The substance form ----

TEST_F(Recherche, ExcipientsWalkTheirFirstLabelKeyUnderBothNumbers) {
    // The step search opens the index on 108, the keyword search on 107.
    EXPECT_EQ(RechercheExcipientParPas_Vdx("a", nullptr, nullptr, 5), 2);
    EXPECT_EQ(Memoire(), "13@Amidon de ma\xEFs\r\n11@Aspartam");
    EXPECT_EQ(RechercheExcipientLexico_Vdx("arachide", nullptr, 1, nullptr), 1);
    EXPECT_EQ(Memoire(), "12@Huile d'arachide");
    EXPECT_EQ(RecherchePALexico_Vdx("ceta", nullptr, 1, nullptr), 1);
    EXPECT_EQ(Memoire(), "1@Parac\xE9tamol");
}

TEST_F(Recherche, ExcipientsWithKnownEffectWalkTheSecondLabelKey) {
    EXPECT_EQ(RechercheEENParPas_Vdx("a", nullptr, nullptr, 5), 1);
    EXPECT_EQ(Memoire(), "12@Arachide");
    EXPECT_EQ(RechercheEENParPas_Vdx("", nullptr, "Arachide", 5), 1);
    EXPECT_EQ(Memoire(), "11@Ph\xE9nylalanine");
    EXPECT_EQ(RechercheEENLexico_Vdx("phenyl", nullptr, 0, nullptr), 1);
    EXPECT_EQ(RechercheEENLexico_Vdx("aspartam", nullptr, 1, nullptr), 0);
}

// ---- The keyword search of the copies ----

TEST_F(Recherche, FamiliesAreSearchedByLabelWithinACodePrefix) {
    EXPECT_EQ(RechercheFamilleLexico_Vdx("anti", nullptr, nullptr), 3);
    EXPECT_EQ(Memoire(), "A1@Antiacides@\r\nA2@Antiulc\xE9reux@\r\nB1@Antiagr\xE9gants plaquettaires@");
    EXPECT_EQ(RechercheFamilleLexico_Vdx("anti", nullptr, "a"), 2);
    EXPECT_EQ(Memoire(), "A1@Antiacides@\r\nA2@Antiulc\xE9reux@");
    EXPECT_EQ(RechercheFamilleLexico_Vdx("anti", nullptr, "B1"), 1);
    EXPECT_EQ(RechercheFamilleLexico_Vdx("anti", nullptr, "C"), 0);
    EXPECT_EQ(RechercheFamilleLexico_Vdx("", nullptr, nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(RechercheFamilleLexico_Vdx(nullptr, nullptr, "A"), VDX_ARGUMENT1);
}

TEST_F(Recherche, OtherCopiesTakeALabelPrefix) {
    EXPECT_EQ(RechercheClasseLexico_Vdx("opio\xEF" "de", nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "A0101@Antalgiques non opio\xEF" "des@");
    EXPECT_EQ(RechercheClasseLexico_Vdx("opio", nullptr, "antal"), 1);
    EXPECT_EQ(RechercheClasseLexico_Vdx("opio", nullptr, "antib"), 0);
    EXPECT_EQ(RechercheFormeLexico_Vdx("ULE", nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "GEL@g\xE9lule@");
}

TEST_F(Recherche, AFoldedLabelGivenAsShownIsFiledFolded) {
    EXPECT_EQ(RechercheCISPParPas_Vdx("asth", nullptr, nullptr, 5), 1);
    EXPECT_EQ(Memoire(), "R96@Asthme");
    EXPECT_EQ(RechercheCISPLexico_Vdx("thm", nullptr, 1, nullptr), 1);
}

// ---- Empty and missing vocabularies ----

TEST_F(Recherche, AnEmptyVocabularyFindsNothing) {
    SetString_Vdx("avant");
    EXPECT_EQ(RechercheDicoPathoParPas_Vdx("", nullptr, nullptr, 10), 0);
    EXPECT_EQ(RechercheDicoPathoLexico_Vdx("x", nullptr, nullptr), 0);
    EXPECT_EQ(RechercheItemLexico_Vdx("x", nullptr, nullptr), 0);
    EXPECT_EQ(Memoire(), "avant");
}

TEST(RechercheSansTable, AMissingTableIsNamed) {
    essai::ConnexionSansFichier base("VDXVCISP.DAT");
    ASSERT_TRUE(base.Connecte());
    EXPECT_EQ(RechercheCISPParPas_Vdx("a", nullptr, nullptr, 10), VDX_ECHEC_MAGASIN);
    EXPECT_EQ(session().FichierErreur, "VDXVCISP.DAT");
    EXPECT_EQ(RechercheCISPLexico_Vdx("a", nullptr, 0, nullptr), VDX_ECHEC_MAGASIN);
}

}  // namespace
}  // namespace vdx
