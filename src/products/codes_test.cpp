// Code mapping and regulatory status through their exports, on the small
// product base: the 13-digit codes in and out and the code check that every
// product export shares, the narcotic rule and its wording, the status and
// the simple lookups.
#include "products/codes.h"

#include <gtest/gtest.h>

#include "exports/table_exports.h"
#include "tests/support/essai_produits.h"
#include "products/produits.h"
#include "tests/support/chaines_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using essai::Texte;

class Codes : public essai::SurUneBase<Codes> {
public:
    static void Remplit(BaseDeTest& b) { essai::RemplitProduits(b); }

};

// ---- 13-digit codes ----

struct CasCorrespondance {
    const char* code;
    int32_t resultat;
    const char* sortie;
};

TEST_F(Codes, MapsCodesToTheirOtherFormThroughTheHeadOfTheNextKey) {
    for (auto [code, resultat, sortie] : {
             CasCorrespondance{"3000001", 1, "3400930000011"},
             {"3000009", 0, ""},  // a higher key is there, of another code
             {"3999999", -90, "<rien>"},
             {"ABCDEFG", -90, "<rien>"},  // above every code
         }) {
        SCOPED_TRACE(code);
        SetString2_Vdx(nullptr);
        EXPECT_EQ(CIP_CIP13_Vdx(code, nullptr), resultat);
        EXPECT_EQ(Memoire(), sortie);
    }
    for (auto [code, resultat, sortie] : {
             CasCorrespondance{"3400930000073", 1, "3000007"},
             {"3400930000012", 0, ""},
             {"3499999999999", -90, "<rien>"},
         }) {
        SCOPED_TRACE(code);
        SetString2_Vdx(nullptr);
        EXPECT_EQ(CIP13_CIP_Vdx(code, nullptr), resultat);
        EXPECT_EQ(Memoire(), sortie);
    }
}

TEST_F(Codes, MappingExportsRefuseCodesOfAnotherLength) {
    const std::string long_(300, '3');
    for (const char* code : {"300000", "30000011", "3400930000011", long_.c_str()})
        EXPECT_EQ(CIP_CIP13_Vdx(code, nullptr), VDX_CODE_MAL_FORME) << code;
    for (const char* code : {"340093000001", "34009300000111", "3000001"})
        EXPECT_EQ(CIP13_CIP_Vdx(code, nullptr), VDX_CODE_MAL_FORME) << code;
    EXPECT_EQ(CIP_CIP13_Vdx(nullptr, nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(CIP13_CIP_Vdx("", nullptr), VDX_ARGUMENT1);
}

TEST_F(Codes, MappingEmptiesTheHostStringFirstInArrayMode) {
    ReconnecteEnTableau();
    BSTR sortie = essai::ChaineLarge(u"ancien");
    EXPECT_EQ(CIP_CIP13_Vdx("30000", &sortie), VDX_CODE_MAL_FORME);
    EXPECT_EQ(SysStringLen(sortie), 0u);
    EXPECT_EQ(CIP_CIP13_Vdx("3000007", &sortie), 1);
    EXPECT_EQ(Texte(sortie), "3400930000073");
    SysFreeString(sortie);
}

TEST_F(Codes, InnerFormsPassAnUnmappedCodeThrough) {
    EXPECT_EQ(VersCIP7("3400930000011"), "3000001");
    EXPECT_EQ(VersCIP7("3400930000012"), "3400930000012");
    EXPECT_EQ(VersCIP7("3499999999999"), "3499999999999");
    EXPECT_EQ(VersCIP13("3000010"), "3400930000103");
    EXPECT_EQ(VersCIP13("3000009"), "3000009");
    DeConnection2_Vdx();
    EXPECT_EQ(VersCIP7("3400930000011"), "3400930000011");
}

// Every product export that takes a code alone, called through the table of
// exports in memory mode: the code check is the same for all.
const char* const ExportsDeCode[] = {
    "IsStupefiant_Vdx",     "Statut_Vdx",          "IsMedDC_Vdx",         "UCD_Vdx",
    "GenCode_Vdx",          "CIP_To_CIS_Vdx",      "CodeRubrique_Vdx",    "NombreUCDParCIP_Vdx",
    "GetPictogramme_Vdx",   "ProduitStatut_Vdx",   "IsT2A_Vdx",           "ProduitGenerique_Vdx",
    "ProduitDopant_Vdx",    "ProduitReferent_Vdx", "ProduitHospitalier_Vdx", "LibelleProduit_Vdx",
    "ProduitSupprime_Vdx",  "Laboratoire_Vdx",     "CIP_Remplacant_Vdx",
};

int32_t Appelle(const char* nom, const std::string& code) {
    const exports::Export* e = exports::ExportNomme(nom);
    if (!e) throw std::logic_error(nom);
    return exports::AppelleEnMemoire(*e, {code}).code;
}

struct CasCode {
    int32_t cip13Actif;
    std::string code;
    bool trouve;       // the product 3000001 is found
    int32_t resultat;  // otherwise
};

TEST_F(Codes, EveryProductExportChecksAndMapsItsCodeTheSameWay) {
    const std::string long_(64, '3');
    const CasCode cas[] = {
        {0, "3000001", true, 0},
        {0, "3400930000011", false, VDX_CODE_MAL_FORME},
        {0, "300000", false, VDX_CODE_MAL_FORME},
        {0, "30000011", false, VDX_CODE_MAL_FORME},
        {0, "", false, VDX_ARGUMENT1},
        {1, "3400930000011", true, 0},
        {1, "3000001", true, 0},
        {1, "3400930000012", false, VDX_CODE_MAL_FORME},  // no mapping: still 13 long
        {1, "300000", false, VDX_CODE_INCONNU},
        {1, "30000011", false, VDX_CODE_INCONNU},  // never found by its first seven digits
        {1, "34009300000111", false, VDX_CODE_INCONNU},
        {1, long_, false, VDX_CODE_MAL_FORME},
        {2, "3400930000011", false, VDX_CODE_INCONNU},  // taken as it stands
    };
    for (const char* nom : ExportsDeCode) {
        for (const CasCode& c : cas) {
            SCOPED_TRACE(std::string(nom) + " " + std::to_string(c.cip13Actif) + " " + c.code);
            ActiveCIP13_Vdx(c.cip13Actif);
            const int32_t resultat = Appelle(nom, c.code);
            // IsStupefiant_Vdx and IsMedDC_Vdx give 0 for a code of no product.
            const bool zero = std::string(nom) == "IsStupefiant_Vdx" || std::string(nom) == "IsMedDC_Vdx";
            // A line by common name has seven characters, whatever CIP13Actif.
            if (std::string(nom) == "IsMedDC_Vdx" && c.code.size() != 7)
                EXPECT_EQ(resultat, c.code.empty() ? VDX_ARGUMENT1 : VDX_CODE_MAL_FORME);
            else if (c.trouve)
                EXPECT_GE(resultat, 0);
            else
                EXPECT_EQ(resultat, zero && c.resultat == VDX_CODE_INCONNU ? 0 : c.resultat);
        }
    }
    const exports::Export* generique = exports::ExportNomme("ProduitGenerique_Vdx");
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(exports::AppelleEnMemoire(*generique, {"3400930000011"}).code, 0);
    EXPECT_EQ(CodeRubrique_Vdx("3400930000011"), 10);
}

// ---- Narcotics ----

TEST_F(Codes, NarcoticsAreListBOrListAWithPrescription18) {
    EXPECT_EQ(IsStupefiant_Vdx("3000007"), 1);  // "B"
    EXPECT_EQ(IsStupefiant_Vdx("3000008"), 1);  // "A", 18 in the third code
    EXPECT_EQ(IsStupefiant_Vdx("3000009"), 0);  // "A" without 18
    EXPECT_EQ(IsStupefiant_Vdx("3000001"), 0);
    EXPECT_EQ(IsStupefiant_Vdx("3111111"), 0);  // in neither table
    EXPECT_EQ(IsStupefiant_Vdx(nullptr), VDX_ARGUMENT1);
    DeConnection2_Vdx();
    EXPECT_EQ(IsStupefiant_Vdx("3000007"), VDX_NON_CONNECTE);
}

TEST(Stupefiant, Prescription18CountsInAnyOfTheThreeCodesOfListA) {
    for (const ChampEntier& c : {VDXPROA::Prescription1, VDXPROA::Prescription2, VDXPROA::Prescription3}) {
        SCOPED_TRACE(c.nom);
        FicheEcrite complement(VDXPROA::Longueur);
        complement.Entier(c, PrescriptionStupefiant);
        const Fiche f = complement.Vue();
        EXPECT_TRUE(EstStupefiant("A", &f));
        EXPECT_TRUE(EstStupefiant("B", &f));
        EXPECT_FALSE(EstStupefiant("C", &f));
        EXPECT_FALSE(EstStupefiant("", &f));
    }
    FicheEcrite sans(VDXPROA::Longueur);
    sans.Entier(VDXPROA::Prescription1, 17);
    const Fiche f = sans.Vue();
    EXPECT_FALSE(EstStupefiant("A", &f));
    EXPECT_FALSE(EstStupefiant("A", nullptr));
    EXPECT_TRUE(EstStupefiant("B", nullptr));
}

TEST(Stupefiant, NumbersOfALabelAreSpelledOutBehindThemselves) {
    EXPECT_EQ(LibelleStupefiant("GELULE"), "GELULE");
    EXPECT_EQ(LibelleStupefiant(""), "");
    EXPECT_EQ(LibelleStupefiant("SKENAN LP 10MG GELULE"), "SKENAN LP 10 (dix) MG GELULE");
    // A comma is the decimal point and belongs to the number; each number is told.
    EXPECT_EQ(LibelleStupefiant("MORPHINE 0,5MG/1ML"), "MORPHINE 0,5 (z\xE9ro virgule cinq) MG/1 (un(e)) ML");
    EXPECT_EQ(LibelleStupefiant("1,5,3 X"), "1,5,3 (un(e) virgule cinq)  X");
    EXPECT_EQ(LibelleStupefiant("DOSE 20,"), "DOSE 20, (vingt) ");
    EXPECT_EQ(LibelleStupefiant("0 MG"), "0 (z\xE9ro)  MG");
    EXPECT_EQ(LibelleStupefiant("2500MG"), "2500 (deux mille cinq cents) MG");
    // Beyond the words the figures stand in.
    EXPECT_EQ(LibelleStupefiant("12345678 U"), "12345678 (12345678)  U");
    EXPECT_NO_THROW(LibelleStupefiant(std::string(400, '9')));
}

TEST_F(Codes, LibelleStupefiantFillsTheHostStringWithoutConnection) {
    DeConnection2_Vdx();
    BSTR sortie = nullptr;
    EXPECT_EQ(LibelleStupefiant_Vdx("MORPHINE 10MG", &sortie), 1);
    EXPECT_EQ(Texte(sortie), "MORPHINE 10 (dix) MG");
    SysFreeString(sortie);
    // Absent arguments by their positions, without the internal-error box.
    EXPECT_EQ(LibelleStupefiant_Vdx(nullptr, &sortie), VDX_ARGUMENT1);
    EXPECT_EQ(LibelleStupefiant_Vdx("A", nullptr), VDX_ARGUMENT2);
    EXPECT_TRUE(notices.boites.empty());
}

// ---- Status ----

TEST(LibelleStatut, NamesTheFirstFiveCodesOnly) {
    EXPECT_EQ(LibelleStatut(0), "Aucun");
    EXPECT_EQ(LibelleStatut(1), "AMM");
    EXPECT_EQ(LibelleStatut(2), "ATU de cohorte");
    EXPECT_EQ(LibelleStatut(3), "AMM Europ\xE9" "enne");
    EXPECT_EQ(LibelleStatut(4), "ATU nominative");
    EXPECT_EQ(LibelleStatut(5), "");
    EXPECT_EQ(LibelleStatut(7), "");
    EXPECT_EQ(LibelleStatut(-1), "");
}

TEST_F(Codes, StatusIsOneRowOfSixteenFields) {
    EXPECT_EQ(Statut_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(),
              "5@6@7@1@3@99@0@AMM@Prescription hospitali\xE8re@@@R\xE9serv\xE9" "e \xE0 l'h\xF4pital@@@Liste I@Ville");
    EXPECT_EQ(Statut_Vdx("3000009", nullptr), 1);
    EXPECT_EQ(Memoire(), "0@0@0@7@1@17@0@@@@@@@@@");  // status 7 has no label; 1 and 17 no texts
    EXPECT_EQ(Statut_Vdx("3000005", nullptr), VDX_CODE_INCONNU);
}

TEST_F(Codes, StatusFillsTheHostRecordAfterClearingIt) {
    ReconnecteEnTableau(1);
    VdxStatut fiche{};
    fiche.Statut1 = 42;
    fiche.TexteStatut2 = essai::ChaineLarge(u"ancien");
    EXPECT_EQ(Statut_Vdx("3000005", &fiche), VDX_CODE_INCONNU);
    EXPECT_EQ(fiche.Statut1, 0);
    EXPECT_EQ(SysStringLen(fiche.TexteStatut2), 0u);
    ASSERT_EQ(Statut_Vdx("3000008", &fiche), 1);
    EXPECT_EQ(fiche.CodeStatut, 3);
    EXPECT_EQ(fiche.Prescription3, 18);
    EXPECT_EQ(Texte(fiche.LibelleStatut), "AMM Europ\xE9" "enne");  // 8-bit in a wide session
    EXPECT_EQ(Texte(fiche.LibellePrescription3), "Stup\xE9" "fiant");
    EXPECT_EQ(Texte(fiche.DetailPrescription3), "Ordonnance s\xE9" "curis\xE9" "e");
    for (BSTR* b : {&fiche.LibelleStatut, &fiche.LibellePrescription1, &fiche.LibellePrescription2,
                    &fiche.LibellePrescription3, &fiche.DetailPrescription1, &fiche.DetailPrescription2,
                    &fiche.DetailPrescription3, &fiche.TexteStatut1, &fiche.TexteStatut2})
        SysFreeString(*b);
    EXPECT_EQ(Statut_Vdx("3000001", nullptr), VDX_ERREUR_INTERNE);
}

// ---- Lines by common name and simple lookups ----

TEST_F(Codes, ALineByCommonNameIsNoProduct) {
    EXPECT_EQ(IsMedDC_Vdx("9000001"), 1);
    EXPECT_EQ(IsMedDC_Vdx("3000001"), 0);
    EXPECT_EQ(LibelleProduit_Vdx("9000001", nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(LibelleProduitInterne("9000001"), "Parac\xE9tamol 500 mg cp");
    EXPECT_EQ(LibelleProduitInterne("3000007"), "SKENAN LP 10MG GELULE");  // no narcotic wording
    EXPECT_EQ(LibelleProduitInterne("3111111"), std::nullopt);
}

TEST_F(Codes, SimpleLookupsGiveOneFieldOfTheProduct) {
    EXPECT_EQ(UCD_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "9000011");
    EXPECT_EQ(GenCode_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "3400930000011");
    EXPECT_EQ(CIP_To_CIS_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "60234100");
    EXPECT_EQ(CIP_To_CIS_Vdx("3000002", nullptr), VDX_CODE_INCONNU);
    EXPECT_EQ(UCD_Vdx("3000005", nullptr), VDX_CODE_INCONNU);  // not in VDXPROA
    EXPECT_EQ(CodeRubrique_Vdx("3000006"), 40);
    EXPECT_EQ(CodeRubrique_Vdx("3000003"), 11);
    EXPECT_EQ(NombreUCDParCIP_Vdx("3000001"), 16);
    EXPECT_EQ(GetPictogramme_Vdx("3000001"), 2);
    EXPECT_EQ(IsT2A_Vdx("3000001"), 1);
    EXPECT_EQ(IsT2A_Vdx("3000002"), 0);
    EXPECT_EQ(ProduitStatut_Vdx("3000008"), 3);
    EXPECT_EQ(ProduitStatut_Vdx("3000006"), VDX_CODE_INCONNU);
}

}  // namespace
}  // namespace vdx
