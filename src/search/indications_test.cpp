// The search of products by indication: the vocabulary list by term, CISP
// and CIM10 code, the direct search, the rows left out, the merge of the
// wordings of equivalent terms, the sort by label as bytes, the host's
// array, and the names of the files a failure gives.
#include "search/indications.h"

#include <gtest/gtest.h>

#include "session/valeurs_hote.h"
#include "session/tables.h"
#include "tests/support/essai_produits.h"
#include "tests/support/essai_vocabulaire.h"
#include "tests/support/sans_fichier.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// Indication terms IN1 "Pyrexie" (BETA; ZETA, a hospital product; 3000005,
// which VDXPRO lacks; 8000001 and 1000001, never taken), IN2 "Fièvre"
// (ÉCLAT), IN3 "Hyperthermie" (ALPHA), and IN4, which the vocabulary lacks
// (BETA again, GAMMA). IN1
// is linked as an indication to R50.9 and R50, IN2 and IN3 to R50, IN4 to
// R50 by a link of type "02". IN1 has IN3 as an equivalent, IN2 and IN3
// each other. R50 is "Fièvre" in CIM10, and the CISP code A03 leads to it.
void Remplit(BaseDeTest& b) {
    for (auto [cip, libelle, drapeaux] :
         {std::tuple{"3000001", "BETA", 0}, {"3000002", "ALPHA", 0}, {"3000003", "ÉCLAT", 0}, {"3000004", "ZETA", 8},
          {"3000006", "GAMMA", 0}, {"8000001", "HUIT", 0}, {"1000001", "UN", 0}})
        b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", libelle}, {"Drapeaux", drapeaux}});
    for (auto [terme, libelle] : {std::pair{"IN00000001", "Pyrexie"}, {"IN00000002", "Fièvre"}, {"IN00000003", "Hyperthermie"}})
        b.Ajoute("VDXVAMM", {{"CodeTerme", terme}, {"TypeAMM", "1"}, {"Libelle", libelle}});
    for (auto [cip, terme] : {std::pair{"3000001", "IN00000001"}, {"3000004", "IN00000001"}, {"3000005", "IN00000001"},
                              {"8000001", "IN00000001"}, {"1000001", "IN00000001"}, {"3000003", "IN00000002"},
                              {"3000002", "IN00000003"}, {"3000001", "IN00000004"}, {"3000006", "IN00000004"}})
        b.Ajoute("VDXVAMPC", {{"CodeCIP", cip}, {"TypeAMM", "1"}, {"CodeTerme", terme}});
    for (auto [terme, type, lie] : {std::tuple{"IN00000001", "01", "R50.9"}, {"IN00000001", "01", "R50"},
                                    {"IN00000002", "01", "R50"}, {"IN00000003", "01", "R50"}, {"IN00000004", "02", "R50"}})
        b.Ajoute("VDXVAMMC", {{"CodeTerme", terme}, {"TypeLien", type}, {"CodeLie", lie}});
    for (auto [terme, equivalent] :
         {std::pair{"IN00000001", "IN00000003"}, {"IN00000002", "IN00000003"}, {"IN00000003", "IN00000002"}})
        b.Ajoute("VDXVAMME", {{"CodeTerme", terme}, {"CodeEquivalent", equivalent}});
    b.Ajoute("VDXVCIM", {{"Code", "R50"}, {"Libelle", "Fièvre"}, {"LibelleCle", "FIEVRE"}});
    b.Ajoute("VDXVCISP", {{"Code", "A03"}, {"Libelle", "Fièvre"}, {"LibelleCle", "FIEVRE"}});
    b.Ajoute("VDXVCICI", {{"CodeCISP", "A03"}, {"CodeCIM10", "R50"}});
}

class Indications : public essai::SurUneBase<Indications> {
public:
    static void Remplit(BaseDeTest& b) { vdx::Remplit(b); }

    // The count and the flat rows, or the failure's code.
    static std::string Cherche(const char* code, int32_t type) {
        const int32_t n = RechercheIndicationProduits_Vdx(code, type, nullptr);
        return n < 0 ? std::to_string(n) : std::to_string(n) + "|" + Memoire();
    }
};

// The walk of R50 meets IN1 (BETA), IN2 (ÉCLAT), IN3 (ALPHA: its equivalent
// IN2's label is ÉCLAT's wording, which ÉCLAT and ALPHA then replace by
// the first row's wording, a comma and ALPHA's), IN4 (BETA and GAMMA, no
// wording, reached by its link of another type), and IN1 again by R50.9:
// BETA three times, by two terms.
TEST_F(Indications, AWalkOfTheLinksWithTheMergeOfEquivalentWordingsSortedAsBytes) {
    const std::string lignes = "1@3000002@ALPHA@Pyrexie,Hyperthermie\r\n"
                               "1@3000001@BETA@Pyrexie\r\n"
                               "0@3000001@BETA@\r\n"
                               "1@3000001@BETA@Pyrexie\r\n"
                               "0@3000006@GAMMA@\r\n"
                               "0@3000003@\xC9" "CLAT@Pyrexie,Hyperthermie";
    EXPECT_EQ(Cherche("IN00000001", 1), "6|" + lignes);
    // A code cut to ten characters in every probe.
    EXPECT_EQ(Cherche("IN00000001XYZ", 1), "6|" + lignes);
    // By CIM10 or CISP code: the same rows, none exact.
    std::string inexactes = lignes;
    for (size_t p = 0; (p = inexactes.find("1@3", p)) != std::string::npos;) inexactes.replace(p, 1, "0");
    EXPECT_EQ(Cherche("R50", 3), "6|" + inexactes);
    EXPECT_EQ(Cherche("A03", 2), "6|" + inexactes);
}

TEST_F(Indications, TheDirectSearchAndTheProductsLeftOut) {
    // A term without links of an indication, or another type: the code as a
    // term.
    EXPECT_EQ(Cherche("IN00000004", 1), "2|1@3000001@BETA@\r\n1@3000006@GAMMA@");
    EXPECT_EQ(Cherche("IN00000003", 7), "1|0@3000002@ALPHA@Hyperthermie");
    EXPECT_EQ(Cherche("IN00000009", 1), "0|");
    EXPECT_EQ(Cherche("R99", 3), "0|");
    // Hospital products once switched on; a product VDXPRO lacks and a code
    // beginning with "8" never.
    ASSERT_EQ(ActiveHospitaliers_Vdx(1), 1);
    const std::string n = Cherche("IN00000001", 1);
    EXPECT_EQ(n.substr(0, 2), "8|");
    EXPECT_NE(n.find("1@3000004@ZETA@Pyrexie"), std::string::npos);
    EXPECT_EQ(n.find("8000001"), std::string::npos);
    EXPECT_EQ(n.find("1000001"), std::string::npos);
    EXPECT_EQ(n.find("3000005"), std::string::npos);
}

TEST_F(Indications, TheHostsArrayAndBadArguments) {
    EXPECT_EQ(RechercheIndicationProduits_Vdx(nullptr, 1, nullptr), VDX_ARGUMENT1);
    EXPECT_EQ(RechercheIndicationProduits_Vdx("", 1, nullptr), VDX_ARGUMENT1);
    ReconnecteEnTableau();
    EXPECT_EQ(RechercheIndicationProduits_Vdx("IN00000001", 1, nullptr), VDX_ARGUMENT2);
    SAFEARRAY* lignes = essai::TableauDeFiches(4);
    ASSERT_EQ(RechercheIndicationProduits_Vdx("IN00000001", 1, &lignes), 6);
    ASSERT_EQ(lignes->rgsabound[0].cElements, 6u);
    const auto* l = static_cast<VdxIndicationProduit*>(lignes->pvData);
    EXPECT_EQ(l[0].Exact, 1);
    EXPECT_EQ(essai::Texte(l[0].CodeCIP), "3000002");
    EXPECT_EQ(essai::Texte(l[0].Libelle), "ALPHA");
    EXPECT_EQ(essai::Texte(l[0].Indication), "Pyrexie,Hyperthermie");
    EXPECT_EQ(l[2].Exact, 0);
    // The array emptied first: an unknown code leaves it empty.
    EXPECT_EQ(RechercheIndicationProduits_Vdx("ZZ", 1, &lignes), 0);
    EXPECT_EQ(lignes->rgsabound[0].cElements, 0u);
    SafeArrayDestroy(lignes);
    DeConnection2_Vdx();
    EXPECT_EQ(RechercheIndicationProduits_Vdx("IN00000001", 1, nullptr), VDX_NON_CONNECTE);
}

TEST(IndicationsSansTable, FailuresNameTheFilesTheirOwnWay) {
    for (auto [fichier, type, nom] : {std::tuple{"VDXVAMME.NDX", 1, "VDXPRO.NDX"}, {"VDXVCIM.DAT", 3, "VDXVCIM10.DAT"},
                                      {"VDXVCIM.NDX", 3, "VDXVCIM10.NDX"}, {"VDXVAMPC.NDX", 1, "VDXVAMPC.NDX"}}) {
        essai::ConnexionSansFichier base(fichier, Remplit);
        ASSERT_TRUE(base.Connecte());
        EXPECT_EQ(RechercheIndicationProduits_Vdx("R50", type, nullptr), VDX_ECHEC_MAGASIN) << fichier;
        EXPECT_EQ(session().FichierErreur, nom);
        EXPECT_FALSE(TablesOuvertes::Tenues());
    }
}

}  // namespace
}  // namespace vdx
