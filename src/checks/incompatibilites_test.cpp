// The incompatibilities of injectables: a pair filed once is found in
// either order of the prescription, through a substance, the product as a
// whole or any product; products without an injectable route are left
// out of the check but not of the sheet of a pair; the report shows the
// rows.
#include "checks/incompatibilites.h"

#include <gtest/gtest.h>

#include "tests/support/dossier_essai.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/quatre_modes.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3000005 (hospital, injectable: substance 45) and 3000008 (injectable:
// substance 432) meet in one line; 3000008 and 3000007 (oral: substance
// 432 too) would meet at a Y-site; any product is to be avoided in the
// syringe of 3000010 (injectable, no component).
class Incompatibilites : public essai::SurUneBase<Incompatibilites> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXVPA", {{"CodeSubstance", 45}, {"Libelle", "CEFTRIAXONE SODIQUE"}});
        b.Ajoute("VDXVPA", {{"CodeSubstance", 432}, {"Libelle", "GLUCONATE DE CALCIUM"}});
        for (auto [cip, substance] : {std::pair{"3000005", 45}, {"3000008", 432}, {"3000007", 432}})
            b.Ajoute("VDXVCOMP", {{"CodeCIP", cip}, {"Rang", "001"}, {"CodeSubstance", substance}, {"Quantite", 1.f}});
        for (auto [cip, voie] : {std::pair{"3000005", "A21"}, {"3000008", "A21"}, {"3000008", "A22"}, {"3000010", "A23"},
                                 {"3000007", "A11"}})
            b.Ajoute("VDXIDPVO", {{"CodeCIP", cip}, {"CodeVoie", voie}});
        for (auto [voie, libelle] : {std::pair{"A21", "intraveineuse"}, {"A22", "intramusculaire"}, {"A23", "sous-cutanée"},
                                     {"A11", "orale"}})
            b.Ajoute("VDXIDVOI", {{"CodeVoie", voie}, {"Libelle", libelle}});
        b.Ajoute("VDXIPC", {{"CodeA", "00045"}, {"CodeB", "00432"}, {"Condition", "L"}, {"Niveau", 1},
                            {"Texte", "Précipité"}, {"Source", "RCP"}});
        b.Ajoute("VDXIPC", {{"CodeA", "00432"}, {"CodeB", "00432"}, {"Condition", "Y"}, {"Niveau", 2}, {"Texte", "Trouble"},
                            {"Source", "RCP"}});
        b.Ajoute("VDXIPC", {{"CodeA", "*"}, {"CodeB", "3000010"}, {"Condition", "S"}, {"Niveau", 2}, {"Texte", "Seul"},
                            {"Source", "Fabricant"}});
    }
    static int32_t Controle(const char* liste) {
        session().ChaineMemoire = liste;
        return IPCControle_Vdx(nullptr, nullptr);
    }
};

TEST_F(Incompatibilites, APairFiledOnceIsFoundInEitherOrder) {
    ASSERT_EQ(Controle("3000005@3000008"), 1);
    EXPECT_EQ(Memoire(), "1@3000005@DOLIHOSP 1G INJ@3000008@MORPHINE 0,5MG/1ML@1@Incompatible@M\xEAme ligne de perfusion@"
                         "Pr\xE9" "cipit\xE9@RCP");
    ASSERT_EQ(Controle("3000008@3000005"), 1);
    session().ChaineMemoire = "3000008@3000005";
    ASSERT_EQ(IPCControleTest_Vdx(nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "1@3000008@MORPHINE 0,5MG/1ML@3000005@DOLIHOSP 1G INJ@00432@GLUCONATE DE CALCIUM@00045@"
                         "CEFTRIAXONE SODIQUE@1@Incompatible@L@M\xEAme ligne de perfusion@Pr\xE9" "cipit\xE9@RCP@"
                         "intraveineuse, intramusculaire@intraveineuse@1");
}

TEST_F(Incompatibilites, SidesOfAnyProductAndOfTheWholeProductRanksAndRepeats) {
    // Any product beside 3000010, in its syringe: with each other injectable.
    ASSERT_EQ(Controle("3000005@3000008@3000010@3000005"), 3);
    const std::string m = Memoire();
    EXPECT_NE(m.find("1@3000005@DOLIHOSP 1G INJ@3000008@"), std::string::npos);
    EXPECT_NE(m.find("\r\n2@3000005@DOLIHOSP 1G INJ@3000010@PARACETAMOL GNR 500MG@2@A \xE9viter@M\xEAme seringue@Seul@"
                     "Fabricant\r\n"), std::string::npos);
    EXPECT_NE(m.find("\r\n3@3000008@MORPHINE 0,5MG/1ML@3000010@"), std::string::npos);
    EXPECT_EQ(Controle("3000010@3000010"), 0);
}

TEST_F(Incompatibilites, TheCheckTakesInjectablesTheSheetAnyPair) {
    // 3000007 is taken by mouth: not in the check, but its pair has a sheet.
    EXPECT_EQ(Controle("3000008@3000007"), 0);
    ASSERT_EQ(IPC_Info_Vdx("3000008", "3000007", nullptr), 1);
    EXPECT_NE(Memoire().find("@Y@Site en Y@Trouble@RCP@intraveineuse, intramusculaire@Voie inconnue@0"), std::string::npos);
    EXPECT_EQ(IPC_Info_Vdx("3000008", "3000008", nullptr), 0);
    EXPECT_EQ(IPC_Info_Vdx("3000008", "", nullptr), VDX_ARGUMENT2);
    EXPECT_EQ(IPC_Info_Vdx("300000", "3000008", nullptr), VDX_CODE_MAL_FORME);
    session().ChaineMemoire = "";
    EXPECT_EQ(IPCControle_Vdx(nullptr, nullptr), VDX_LISTE_VIDE);
}

// The rows of the check and of the sheets are the same in every mode; in
// the host's array, the same count.
TEST_F(Incompatibilites, TheModesGiveTheSameRows) {
    const std::string texte = essai::MemeTexteDansLesModes(
        base_->Repertoire(), [] { return IPCControle_Vdx(nullptr, nullptr); }, 3, "3000005@3000008@3000010\r\n\r\n");
    EXPECT_NE(texte.find("3@3000008@"), std::string::npos);
    essai::MemeTexteDansLesModes(base_->Repertoire(), [] { return IPC_Info_Vdx("3000005", "3000008", nullptr); }, 1);
    essai::MemeTexteDansLesModes(base_->Repertoire(), [] { return ProduitExcipient_Vdx("3000008", nullptr); }, 0);
    ReconnecteEnTableau();
    SAFEARRAY* produits = essai::TableauDeChaines({"3000005", "3000008", "3000010"});
    SAFEARRAY* lignes = essai::TableauDeFiches(18);
    EXPECT_EQ(IPCControleTest_Vdx(&produits, &lignes), 3);
    EXPECT_EQ(lignes->rgsabound[0].cElements, 3u);
    EXPECT_EQ(essai::Texte(static_cast<VdxIPCDetail*>(lignes->pvData)[2].LibelleComposant1), "Tout Produit");
    hote::Detruit(produits);
    VideTableau(lignes, GabaritDe<LigneIPC>());
    SafeArrayDestroy(lignes);
}

TEST_F(Incompatibilites, TheReportsShowTheRows) {
    const essai::DossierEssai dossier;
    const std::string page = dossier.Chemin("ipc.html"), fiche = dossier.Chemin("fiche.html");
    session().ChaineMemoire = "3000005@3000008@3000010";
    ASSERT_EQ(IPCControleHtml_Vdx(nullptr, page.c_str(), ""), 3);
    const std::string texte = essai::LitFichier(page);
    EXPECT_NE(texte.find("3 Incompatibilit&eacute;s  physico-chimique"), std::string::npos);
    EXPECT_NE(texte.find("<a name=\"IPC3\">"), std::string::npos);
    EXPECT_NE(texte.find("(Tout Produit)"), std::string::npos);
    session().ChaineMemoire = "3000005@3000008";
    ASSERT_EQ(IPC_InfoHtml_Vdx(nullptr, fiche.c_str(), ""), 1);
    EXPECT_NE(essai::LitFichier(fiche).find("CEFTRIAXONE SODIQUE / GLUCONATE DE CALCIUM"), std::string::npos);
}

}  // namespace
}  // namespace vdx
