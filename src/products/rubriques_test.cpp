// The sheets of a product held under it: rows in the order of their ranks,
// only the product's own, the excipients' known-effect mark, and the recommendations of the
// product's classes and of the classes above them, each class once.
#include "products/rubriques.h"

#include <gtest/gtest.h>

#include "session/resultat.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

class Rubriques : public essai::SurUneBase<Rubriques> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXVEXC", {{"CodeSubstance", 7101}, {"Libelle", "ASPARTAM"}});
        b.Ajoute("VDXVCOME", {{"CodeCIP", "3000001"}, {"Rang", "002"}, {"CodeSubstance", 7101}, {"QuantiteTexte", " 25 mg *"}});
        b.Ajoute("VDXVCOME", {{"CodeCIP", "3000001"}, {"Rang", "001"}, {"CodeSubstance", 7999}, {"QuantiteTexte", ""}});
        b.Ajoute("VDXZMOVI", {{"CodeCIP", "3000001"}, {"Rang", "002"}, {"Libelle", "cuillère-mesure"}, {"Relation", "avec"}});
        b.Ajoute("VDXZMOVI", {{"CodeCIP", "3000001"}, {"Rang", "001"}, {"CodeAccessoire", "3000010"}, {"Libelle", "pipette"},
                              {"Relation", "pour"}, {"Remarque", "vendue à part"}});
        b.Ajoute("VDXZMOVI", {{"CodeCIP", "3000002"}, {"Rang", "001"}, {"Libelle", "d'un autre"}});
        b.Ajoute("VDXZASPT", {{"CodeCIP", "3000001"}, {"Rang", "001"}, {"Forme", "comprimé rond"}, {"Couleur", "blanc"},
                              {"Marquage", "D 500"}, {"Secabilite", "sécable"}});
        b.Ajoute("VDXYAMED", {{"CodeCIP", "3000001"}, {"Rang", "001"}, {"ClasseOrgane", "Affections hépatobiliaires"},
                              {"Frequence", "très rare"}, {"Libelle", "hépatite"}});
        b.Ajoute("VDXZONCO", {{"CodeCIP", "3000005"}, {"Rang", "001"}, {"Etape", "reconstitution"}, {"Solvant", "eau"},
                              {"Concentration", "10 mg/ml"}, {"Stabilite", "24 h entre 2 et 8 °C"}});
        for (auto [classe, cip] : {std::pair{"M01AE01", "3000001"}, {"M01AB", "3000001"}, {"N02", "3000002"}})
            b.Ajoute("VDXCLAP", {{"CodeClasse", classe}, {"CodeCIP", cip}});
        struct R {
            const char* code;
            const char* rang;
            const char* titre;
        };
        for (const R& r : {R{"3000001", "001", "du produit"}, R{"M01", "001", "des AINS"}, R{"M01AE", "001", "des propioniques"},
                           R{"M01AE", "002", "des propioniques, suite"}, R{"N02", "001", "des analgésiques"},
                           R{"M01AB01", "001", "d'une classe sœur"}})
            b.Ajoute("VDXYMEDR", {{"Code", r.code}, {"Rang", r.rang}, {"Source", "HAS"}, {"Date", "01/02/2016"}, {"Titre", r.titre}});
        b.Ajoute("VDXRMOC", {{"Code", "M01"}, {"Rang", "001"}, {"Source", "CNAM"}, {"Titre", "deux AINS"},
                             {"Texte", "Il n'y a pas lieu d'associer deux AINS."}});
    }
};

TEST_F(Rubriques, RowsOfTheProductInTheOrderOfTheirRanks) {
    ASSERT_EQ(ProduitExcipient_Vdx("3000001", nullptr), 2);
    EXPECT_EQ(Memoire(), "7999@Code 7999 introuvable@@0\r\n7101@ASPARTAM@25 mg@1");
    ASSERT_EQ(AccessoireProduits_Vdx("3000001", nullptr), 2);
    EXPECT_EQ(Memoire(), "3000010@pipette@pour@vendue \xE0 part\r\n@cuill\xE8re-mesure@avec@");
    ASSERT_EQ(AspectProduits_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "comprim\xE9 rond@blanc@D 500@s\xE9" "cable");
    ASSERT_EQ(EffetIndesirable_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "Affections h\xE9patobiliaires@tr\xE8s rare@h\xE9patite");
    ASSERT_EQ(OncoReconstitution_Vdx("3000005", nullptr), 1);
    EXPECT_EQ(Memoire(), "reconstitution@eau@10 mg/ml@24 h entre 2 et 8 \xB0" "C");
    for (auto* e : {ProduitExcipient_Vdx, AccessoireProduits_Vdx, AspectProduits_Vdx, EffetIndesirable_Vdx,
                    OncoReconstitution_Vdx, Recommandations_Vdx, RMO_Vdx}) {
        EXPECT_EQ(e("3000007", nullptr), 0);
        EXPECT_EQ(e("300000", nullptr), VDX_CODE_MAL_FORME);
        EXPECT_EQ(e(nullptr, nullptr), VDX_ARGUMENT1);
    }
}

TEST_F(Rubriques, RecommendationsOfTheProductThenOfItsClassesAndThoseAbove) {
    ASSERT_EQ(Recommandations_Vdx("3000001", nullptr), 4);
    EXPECT_EQ(Memoire(), "3000001@HAS@01/02/2016@du produit@\r\nM01@HAS@01/02/2016@des AINS@\r\n"
                         "M01AE@HAS@01/02/2016@des propioniques@\r\nM01AE@HAS@01/02/2016@des propioniques, suite@");
    ASSERT_EQ(Recommandations_Vdx("3000002", nullptr), 1);
    EXPECT_NE(Memoire().find("des analg\xE9siques"), std::string::npos);
    // The opposable references, from their own table in the same walk.
    ASSERT_EQ(RMO_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "M01@CNAM@@deux AINS@Il n'y a pas lieu d'associer deux AINS.");
    EXPECT_EQ(RMO_Vdx("3000002", nullptr), 0);
}

TEST_F(Rubriques, TheRMOReportOfAPrescription) {
    const essai::DossierEssai dossier;
    const std::string page = dossier.Chemin("rmo.html");
    session().ChaineMemoire = "3000001@3000002@3000001";
    ASSERT_EQ(RMOHtml_Vdx(nullptr, nullptr, nullptr, page.c_str(), ""), 1);
    const std::string texte = essai::LitFichier(page);
    EXPECT_NE(texte.find("1 RMO</font>"), std::string::npos);
    EXPECT_NE(texte.find("Avec <STRONG>DOLIPRANE 500MG CPR</STRONG> et <STRONG>M01</STRONG><BR><STRONG>deux AINS</STRONG>"
                         "<BR>Il n'y a pas lieu d'associer deux AINS.<BR>CNAM</p>"),
              std::string::npos);
}

TEST_F(Rubriques, IntoTheHostsArray) {
    ReconnecteEnTableau();
    SAFEARRAY* tableau = essai::TableauDeFiches(4);
    ASSERT_EQ(ProduitExcipient_Vdx("3000001", &tableau), 2);
    const auto* rangs = static_cast<VdxExcipientProduit*>(tableau->pvData);
    EXPECT_EQ(essai::Texte(rangs[1].Libelle), "ASPARTAM");
    EXPECT_EQ(essai::Texte(rangs[1].EffetNotoire), "1");
    EXPECT_EQ(AspectProduits_Vdx("3000001", &tableau), 1);
    EXPECT_EQ(AspectProduits_Vdx("3000001", nullptr), VDX_ARGUMENT2);
    VideTableau(tableau, {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

}  // namespace
}  // namespace vdx
