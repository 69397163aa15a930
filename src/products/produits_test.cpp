// Product lookup and labels through their exports, on the small product
// base: labels as filed and as narcotics show them, the flags, deletion,
// laboratory, replacement, and the list by rank.
#include "products/produits.h"

#include <gtest/gtest.h>

#include "platform/chemin.h"
#include "session/cadre.h"
#include "session/codes.h"
#include "tests/support/essai_produits.h"
#include "tests/support/identite.h"
#include "tests/support/chaines_hote.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using essai::Texte;

class Produits : public essai::SurUneBase<Produits> {
public:
    static void Remplit(BaseDeTest& b) { essai::RemplitProduits(b); }

protected:
    // The label in memory mode, or the code.
    static std::string Libelle(const char* code) {
        const int32_t resultat = LibelleProduit_Vdx(code, nullptr);
        return resultat == 1 ? Memoire() : std::to_string(resultat);
    }
};

TEST_F(Produits, LabelsAreShownAsFiledWithTheirMarksOfUniqueness) {
    EXPECT_EQ(Libelle("3000001"), "DOLIPRANE 500MG CPR");
    EXPECT_EQ(Libelle("3000003"), "DOLIPRANE 500MG CPR.");
    EXPECT_EQ(Libelle("3000013"), essai::LibellePlein);
    EXPECT_EQ(Libelle("3000014"), essai::LibellePleinRaise);
    EXPECT_EQ(Libelle("3111111"), "-90");
}

// A line by common name is asked for first: its code gives -10 even where a
// product is filed under the same code.
class ProduitsEtLignes : public essai::SurUneBase<ProduitsEtLignes> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXYDCI", {{"Code", "3000009"}, {"Libelle", "Listea 5 mg cp"}, {"LibelleCle", "LISTEA"}});
    }
};

TEST_F(ProduitsEtLignes, ALineByCommonNameWinsOverAProductOfItsCode) {
    EXPECT_EQ(IsMedDC_Vdx("3000009"), 1);
    EXPECT_EQ(LibelleProduit_Vdx("3000009", nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(LibelleProduit_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "DOLIPRANE 500MG CPR");
}

// Labels are kept between calls while the product tables read the same: a
// code unknown before, and a list "A" product made a narcotic by its status,
// are seen as they are once the base is built again.
TEST(ProduitsRetenus, ALabelFollowsItsTablesOnceTheBaseIsBuiltAgain) {
    BaseDeTest base;
    essai::AjouteIdentite(base);
    essai::RemplitProduits(base);
    base.Ajoute("VDXPRO", {{"CodeCIP", "3000016"}, {"Libelle", "LISTEB 2MG"}, {"CodeTableau", "A"}});
    Contexte contexte;
    contexte.BaseFichiers = chemin::Repertoire(base.Repertoire());
    const DansContexte dans(contexte);
    auto libelle = [](const char* code) {
        try {
            return LibelleProduit(code);
        } catch (const Echec& e) {
            return std::to_string(e.code);
        }
    };
    for (int fois = 0; fois < 2; ++fois) {
        EXPECT_EQ(libelle("3000016"), "LISTEB 2MG");
        EXPECT_EQ(libelle("3000099"), std::to_string(CodeInconnu));
    }
    base.Ajoute("VDXPRO", {{"CodeCIP", "3000099"}, {"Libelle", "NOUVEAU 1MG"}})
        .Ajoute("VDXPROA", {{"CodeCIP", "3000016"}, {"Prescription1", 18}});
    base.Repertoire();
    EXPECT_EQ(libelle("3000016"), "LISTEB 2 (deux) MG");
    EXPECT_EQ(libelle("3000099"), "NOUVEAU 1MG");
}

TEST_F(Produits, NarcoticLabelsHaveTheirNumbersSpelledOut) {
    EXPECT_EQ(Libelle("3000007"), "SKENAN LP 10 (dix) MG GELULE");
    EXPECT_EQ(Libelle("3000008"), "MORPHINE 0,5 (z\xE9ro virgule cinq) MG/1 (un(e)) ML");
    EXPECT_EQ(Libelle("3000009"), "LISTEA 5MG");  // list "A" without prescription 18
}

TEST_F(Produits, LabelIsEightBitInAWideSessionAndEmptiedOnFailure) {
    ReconnecteEnTableau(1);
    BSTR libelle = nullptr;
    ASSERT_EQ(LibelleProduit_Vdx("3000001", &libelle), 1);
    EXPECT_EQ(Texte(libelle), "DOLIPRANE 500MG CPR");
    EXPECT_EQ(LibelleProduit_Vdx("300000", &libelle), VDX_CODE_MAL_FORME);
    EXPECT_EQ(SysStringLen(libelle), 0u);
    SysFreeString(libelle);
    EXPECT_EQ(LibelleProduit_Vdx("3000001", nullptr), VDX_ARGUMENT2);
}

TEST_F(Produits, FlagsTestOneBitEach) {
    EXPECT_EQ(ProduitGenerique_Vdx("3000003"), 1);
    EXPECT_EQ(ProduitGenerique_Vdx("3000001"), 0);
    EXPECT_EQ(ProduitReferent_Vdx("3000001"), 1);
    EXPECT_EQ(ProduitHospitalier_Vdx("3000005"), 1);
    EXPECT_EQ(ProduitHospitalier_Vdx("3000001"), 0);
    // Drapeaux 3: a doping generic.
    EXPECT_EQ(ProduitDopant_Vdx("3000010"), 1);
    EXPECT_EQ(ProduitGenerique_Vdx("3000010"), 1);
    EXPECT_EQ(ProduitReferent_Vdx("3000010"), 0);
    EXPECT_EQ(ProduitDopant_Vdx("3111111"), VDX_CODE_INCONNU);
}

TEST_F(Produits, FlagsTestTheCodeBeforeTheConnection) {
    DeConnection2_Vdx();
    EXPECT_EQ(ProduitGenerique_Vdx(nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(ProduitHospitalier_Vdx(""), VDX_ARGUMENT1);
    EXPECT_EQ(ProduitGenerique_Vdx("3000003"), VDX_NON_CONNECTE);
    EXPECT_EQ(IsT2A_Vdx(nullptr), VDX_NON_CONNECTE);
}

TEST_F(Produits, ADeletedProductGivesItsDate) {
    EXPECT_EQ(ProduitSupprime_Vdx("3000004", nullptr), 1);
    EXPECT_EQ(Memoire(), "15/03/2017");
    SetString2_Vdx(nullptr);
    EXPECT_EQ(ProduitSupprime_Vdx("3000001", nullptr), 0);
    EXPECT_EQ(Memoire(), "<rien>");
}

TEST_F(Produits, LaboratoryGivesItsCodeAndLabel) {
    EXPECT_EQ(Laboratoire_Vdx("3000001", nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "SANO@Sanofi Aventis France");
    EXPECT_EQ(Laboratoire_Vdx("3000002", nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "XXXX@Laboratoire inconnu");
    ReconnecteEnTableau();
    BSTR code = essai::ChaineLarge(u"ancien"), libelle = nullptr;
    EXPECT_EQ(Laboratoire_Vdx("3111111", &code, &libelle), VDX_CODE_INCONNU);
    EXPECT_EQ(SysStringLen(code), 0u);
    ASSERT_EQ(Laboratoire_Vdx("3000001", &code, &libelle), 1);
    EXPECT_EQ(Texte(code), "SANO");
    EXPECT_EQ(Texte(libelle), "Sanofi Aventis France");
    SysFreeString(code);
    SysFreeString(libelle);
}

TEST_F(Produits, ReplacementIsGivenInTheSessionsForm) {
    EXPECT_EQ(CIP_Remplacant_Vdx("3000004", nullptr), 1);
    EXPECT_EQ(Memoire(), "3000001");
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(CIP_Remplacant_Vdx("3000004", nullptr), 1);
    EXPECT_EQ(Memoire(), "3400930000011");
    EXPECT_EQ(CIP_Remplacant_Vdx("3000002", nullptr), 1);
    EXPECT_EQ(Memoire(), "3000003");  // no 13-digit form
    EXPECT_EQ(CIP_Remplacant_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "");
}

TEST_F(Produits, ProductsByRankAfterTheirCount) {
    ASSERT_EQ(TotalProduit_Vdx(), 14);
    EXPECT_EQ(GetProduit_Vdx(0, nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "2000012@ALCOOL 70");
    EXPECT_EQ(GetProduit_Vdx(12, nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "3000014@" + essai::LibellePleinRaise);
    EXPECT_EQ(GetProduit_Vdx(13, nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "3000015@DOLIKO 100MG BUV");
    for (int32_t rang : {14, -1, 1 << 30}) EXPECT_EQ(GetProduit_Vdx(rang, nullptr, nullptr), VDX_ARGUMENT1) << rang;

    // The count belongs to its base: another base has none yet.
    BaseDeTest autre;
    essai::AjouteIdentite(autre);
    autre.Ajoute("VDXPRO", {{"CodeCIP", "3000001"}, {"Libelle", "AUTRE"}});
    DeConnection2_Vdx();
    ASSERT_EQ(Connection_Vdx(autre.Repertoire().c_str(), 0, 0), 1);
    BSTR code = essai::ChaineLarge(u"ancien"), libelle = nullptr;
    EXPECT_EQ(GetProduit_Vdx(0, &code, &libelle), VDX_ARGUMENT1);
    EXPECT_EQ(SysStringLen(code), 0u);
    ASSERT_EQ(TotalProduit_Vdx(), 1);
    ASSERT_EQ(GetProduit_Vdx(0, &code, &libelle), 1);
    EXPECT_EQ(Texte(libelle), "AUTRE");
    SysFreeString(code);
    SysFreeString(libelle);
}

// ---- Economic data ----

// 3100001 every code known, its price with fee at zeros, its laboratory
// at 43 other than the one at 214; 3100002 no code known; 3100003 an act
// of five digits; 3100004 an act without texts.
class Economie : public essai::SurUneBase<Economie> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXPRO", {{"CodeCIP", "3100001"}, {"Libelle", "ECO 1"}, {"CodeTVA", "1"}, {"CodeTSS", "2"},
                            {"CodeLaboratoire", "SANO"}, {"Laboratoire", "XXXX"}, {"DonneeEco1", "0000102"},
                            {"DonneeEco2", "0000196"}, {"DonneeEco3", "0000000"}, {"CodeTableau", "A"},
                            {"LibelleEco", "Indications"}, {"CodeActe", 1}});
        b.Ajoute("VDXPRO", {{"CodeCIP", "3100002"}, {"Libelle", "ECO 2"}, {"CodeTVA", "9"}, {"CodeTableau", "Z"},
                            {"DonneeEco2", "0000196"}, {"DonneeEco3", "0000298"}});
        b.Ajoute("VDXPRO", {{"CodeCIP", "3100003"}, {"Libelle", "ECO 3"}, {"CodeActe", 12345}});
        b.Ajoute("VDXPRO", {{"CodeCIP", "3100004"}, {"Libelle", "ECO 4"}, {"CodeActe", 2}});
        b.Ajoute("VDXTVA", {{"Code", "1"}, {"Taux", 2.1}}).Ajoute("VDXTSS", {{"Code", "2"}, {"Taux", 65.0}});
        b.Ajoute("VDXTAB", {{"Code", "A"}, {"Libelle", "Liste I"}});
        b.Ajoute("VDXACT", {{"Code", "1"}, {"Libelle", "Injection"}, {"Texte1", "AMI"}, {"Texte2", "1"}});
        b.Ajoute("VDXACT", {{"Code", "2"}, {"Libelle", "Sans textes"}});
    }
};

TEST_F(Economie, EachCodeByItsTableOrItsFallback) {
    ASSERT_EQ(Economique_Vdx("3100001", nullptr), 1);
    EXPECT_EQ(Memoire(), "2.1@65@Sanofi Aventis France@0000196@0000102@0000196@Liste I@Indications@Injection@AMI@1");
    ASSERT_EQ(Economique_Vdx("3100002", nullptr), 1);
    EXPECT_EQ(Memoire(), "0@0@Laboratoire inconnu@0000196@@0000298@@@Acte inconnu@?????@?????");
    ASSERT_EQ(Economique_Vdx("3100003", nullptr), 1);
    EXPECT_TRUE(Memoire().ends_with("@Acte inconnu@?????@?????")) << Memoire();
    ASSERT_EQ(Economique_Vdx("3100004", nullptr), 1);
    EXPECT_TRUE(Memoire().ends_with("@Sans textes@@")) << Memoire();
    EXPECT_EQ(Economique_Vdx(nullptr, nullptr), -10);
    EXPECT_EQ(Economique_Vdx("310000", nullptr), -13);
    EXPECT_EQ(Economique_Vdx("3400930000011", nullptr), -13);
    EXPECT_EQ(Economique_Vdx("3199999", nullptr), -90);
    ActiveCIP13_Vdx(1);
    ASSERT_EQ(Economique_Vdx("3400930000011", nullptr), 1);
    EXPECT_TRUE(Memoire().starts_with("0@0@Sanofi Aventis France@")) << Memoire();
}

TEST_F(Economie, TheHostsRecordResetOnlyOnceTheCodeIsGood) {
    ReconnecteEnTableau(1);
    VdxEconomique e{};
    e.TauxTVA.Valeur = 9;
    hote::RangeOctets(&e.Acte, "ancien");
    EXPECT_EQ(Economique_Vdx("310000", &e), -13);
    EXPECT_EQ(Texte(e.Acte), "ancien");
    EXPECT_EQ(Economique_Vdx("3199999", &e), -90);
    EXPECT_EQ(Texte(e.Acte), "");
    EXPECT_EQ(e.TauxTVA.Valeur, 0);
    ASSERT_EQ(Economique_Vdx("3100001", &e), 1);
    EXPECT_EQ(e.TauxTVA.Valeur, 2.1f);
    EXPECT_EQ(e.TauxRemboursement.Valeur, 65);
    EXPECT_EQ(Texte(e.Acte), "Injection");  // 8-bit in a wide session
    EXPECT_EQ(Economique_Vdx("3100001", nullptr), VDX_ERREUR_INTERNE);
    essai::LibereFiche(&e, GabaritDe<FicheEconomique>());
}

}  // namespace
}  // namespace vdx
