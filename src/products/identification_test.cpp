// The identity of a product in its parts: the label assembled from them
// with an empty part left out, the package with its unit, the routes and
// the line by common name; the same answer in the four modes, beside the
// line's own exports; the file of every identity, whole or as it was.
#include "products/identification.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "platform/hote.h"
#include "session/resultat.h"
#include "tests/support/chaines_hote.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/essai_produits.h"
#include "tests/support/quatre_modes.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using essai::Texte;

constexpr int Comprime = 14, Flacon = 2, Ml = 43, Mg = 40;

// 3000007 SKENAN LP: tablets in a box of 16, two routes, two units of take,
// a line by common name. 3000010: a bottle of 150 ml whose form the forms
// lack and without dosage. 3000002: nothing but its name.
class Identification : public essai::SurUneBase<Identification> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000007"}, {"Denomination", "SKENAN LP"}, {"Dosage", "10 mg"},
                              {"CodeForme", "GL01"}, {"CodePresentation", Comprime}, {"QuantitePresentation", 16},
                              {"CodeUnitePresentation", Comprime}, {"QuantiteUnitePresentation", 1},
                              {"CodeUnitePrise", Comprime}, {"Secabilite", 4}, {"CodeUnitePrise2", Mg}});
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000010"}, {"Denomination", "PARACETAMOL GNR"}, {"CodeForme", "XX99"},
                              {"CodePresentation", Flacon}, {"QuantitePresentation", 1}, {"CodeUnitePresentation", Ml},
                              {"QuantiteUnitePresentation", 150}, {"CodeUnitePrise", Ml}});
        b.Ajoute("VDXIDPRO", {{"CodeCIP", "3000002"}, {"Denomination", "DOLIPRANE\tBIS"}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "GL01"}, {"Libelle", "gélule à libération prolongée"}});
        for (auto [code, un, plusieurs] : {std::tuple{Comprime, "comprimé", "comprimés"}, {Flacon, "flacon", "flacons"},
                                           {Ml, "ml", "ml"}, {Mg, "mg", "mg"}}) {
            b.Ajoute("VDXIDPRE", {{"Code", code}, {"Libelle", un}, {"LibellePluriel", plusieurs}});
            b.Ajoute("VDXIDUPR", {{"Code", code}, {"Libelle", un}, {"LibellePluriel", plusieurs}});
            b.Ajoute("VDXPUPRI", {{"Code", code}, {"Libelle", un}, {"LibellePluriel", plusieurs}});
        }
        for (const char* voie : {"A11", "B2"}) b.Ajoute("VDXIDPVO", {{"CodeCIP", "3000007"}, {"CodeVoie", voie}});
        b.Ajoute("VDXIDVOI", {{"CodeVoie", "A11"}, {"Libelle", "orale"}});
        b.Ajoute("VDXIDVOI", {{"CodeVoie", "B2"}, {"Libelle", "rectale"}});
        b.Ajoute("VDXYDCIP", {{"CodeDCI", "9000001"}, {"CodeCIP", "3000007"}});
        b.Ajoute("VDXYDCIP", {{"CodeDCI", "9000001"}, {"CodeCIP", "3000010"}});
    }
};

const std::string Skenan =
    "3000007@SKENAN LP@10 mg@g\xE9lule \xE0 lib\xE9ration prolong\xE9" "e@orale, rectale@16 comprim\xE9s@14@comprim\xE9@40@mg@"
    "SKENAN LP 10 mg, g\xE9lule \xE0 lib\xE9ration prolong\xE9" "e, 16 comprim\xE9s@9000001@Parac\xE9tamol 500 mg cp";

TEST_F(Identification, TheLabelIsAssembledFromThePartsThereAre) {
    ASSERT_EQ(IdentifiantProduit_Vdx("3000007", nullptr), 1);
    EXPECT_EQ(Memoire(), Skenan);
    // No dosage, a form the forms lack: their places go with their separators.
    ASSERT_EQ(IdentifiantProduit_Vdx("3000010", nullptr), 1);
    EXPECT_EQ(Memoire(), "3000010@PARACETAMOL GNR@@@@1 flacon de 150 ml@43@ml@0@@"
                         "PARACETAMOL GNR, 1 flacon de 150 ml@9000001@Parac\xE9tamol 500 mg cp");
    ASSERT_EQ(IdentifiantProduit_Vdx("3000002", nullptr), 1);
    EXPECT_EQ(Memoire(), "3000002@DOLIPRANE\tBIS@@@@0 @0@@0@@DOLIPRANE\tBIS, 0 @@");
}

TEST_F(Identification, CodesAProductWithoutIdentificationAndALine) {
    EXPECT_EQ(ProduitSecable_Vdx("3000007"), 4);
    EXPECT_EQ(ProduitSecable_Vdx("3000010"), 0);
    EXPECT_EQ(ProduitSecable_Vdx("3000001"), VDX_CODE_INCONNU);
    EXPECT_EQ(IdentifiantProduit_Vdx("3000001", nullptr), VDX_CODE_INCONNU);  // a product VDXIDPRO lacks
    EXPECT_EQ(IdentifiantProduit_Vdx("9000001", nullptr), VDX_CODE_INCONNU);  // a line by common name
    EXPECT_EQ(IdentifiantProduit_Vdx("300000", nullptr), VDX_CODE_MAL_FORME);
    EXPECT_EQ(IdentifiantProduit_Vdx(nullptr, nullptr), VDX_ARGUMENT1);
    ActiveCIP13_Vdx(1);
    ASSERT_EQ(IdentifiantProduit_Vdx("3400930000073", nullptr), 1);
    EXPECT_EQ(Memoire(), "3400930000073" + Skenan.substr(7));
}

// Mode 0 fills the host's record and array; modes 1 and 3 deliver the
// memory mode's text through the shared slot and the file.
TEST_F(Identification, TheFourModesGiveTheSameRows) {
    struct Appel {
        const char* nom;
        std::function<int32_t()> appelle;
        int32_t attendu;
    };
    const Appel appels[] = {
        {"IdentifiantProduit_Vdx", [] { return IdentifiantProduit_Vdx("3000007", nullptr); }, 1},
        {"TraductionDC_Vdx", [] { return TraductionDC_Vdx("3000010", nullptr, nullptr); }, 1},
        {"ProduitsMedDC_Vdx", [] { return ProduitsMedDC_Vdx("9000001", nullptr); }, 2},
    };
    for (const Appel& a : appels) {
        SCOPED_TRACE(a.nom);
        essai::MemeTexteDansLesModes(base_->Repertoire(), a.appelle, a.attendu);
    }
    EXPECT_EQ(Memoire(), "3000010@PARACETAMOL GNR 500MG@9000001\r\n3000007@SKENAN LP 10MG GELULE@9000001");  // by label

    ReconnecteEnTableau(1);
    VdxIdentifiant fiche{};
    fiche.Dosage = essai::ChaineLarge(u"ancien");
    EXPECT_EQ(IdentifiantProduit_Vdx("3000001", &fiche), VDX_CODE_INCONNU);
    EXPECT_EQ(SysStringLen(fiche.Dosage), 0u);  // cleared once the code is checked
    EXPECT_EQ(IdentifiantProduit_Vdx("3000007", nullptr), VDX_ERREUR_INTERNE);
    ASSERT_EQ(IdentifiantProduit_Vdx("3000007", &fiche), 1);
    EXPECT_EQ(Texte(fiche.Voie), "orale, rectale");  // 8-bit in a wide session
    EXPECT_EQ(Texte(fiche.Contenance), "16 comprim\xE9s");
    EXPECT_EQ(fiche.CodeUnitePrise2, Mg);
    EXPECT_EQ(Texte(fiche.LibelleDC), "Parac\xE9tamol 500 mg cp");
    for (BSTR* b : {&fiche.CodeCIP, &fiche.Denomination, &fiche.Dosage, &fiche.Forme, &fiche.Voie, &fiche.Contenance,
                    &fiche.UnitePrise1, &fiche.UnitePrise2, &fiche.Libelle, &fiche.CodeDC, &fiche.LibelleDC})
        SysFreeString(*b);

    BSTR code = nullptr, libelle = nullptr;
    ASSERT_EQ(TraductionDC_Vdx("3000007", &code, &libelle), 1);
    EXPECT_EQ(Texte(code), "9000001");
    EXPECT_EQ(Texte(libelle), "Parac\xE9tamol 500 mg cp");
    hote::Libere(&code);
    hote::Libere(&libelle);
    SAFEARRAY* tableau = essai::TableauDeFiches(3);
    ASSERT_EQ(ProduitsMedDC_Vdx("9000001", &tableau), 2);
    auto* rangs = static_cast<VdxTroisChaines*>(tableau->pvData);
    EXPECT_EQ(hote::VersTexte(rangs[1].Code), "3000007");
    EXPECT_EQ(hote::VersTexte(rangs[1].Texte), "9000001");
    VideTableau(tableau, {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

TEST_F(Identification, TheFileHoldsEveryIdentityOrStaysAsItWas) {
    const essai::DossierEssai dossier;
    const std::string chemin = dossier.Chemin("identites.txt");
    std::ofstream(chemin) << "ancien";
    ASSERT_EQ(ExportIdentifiant_Vdx(chemin.c_str()), 3);
    const std::string texte = essai::LitFichier(chemin);
    std::string attendu = Skenan;
    std::ranges::replace(attendu, '@', '\t');
    EXPECT_EQ(texte.substr(0, texte.find("\r\n")),
              "CodeCIP\tDenomination\tDosage\tForme\tVoie\tContenance\tCodeUnitePrise1\tUnitePrise1\t"
              "CodeUnitePrise2\tUnitePrise2\tLibelle\tCodeDC\tLibelleDC");
    // In the order of the codes; the tab of a name is a blank.
    EXPECT_NE(texte.find("\r\n3000002\tDOLIPRANE BIS\t\t\t\t0 \t0\t\t0\t\tDOLIPRANE BIS, 0 \t\t\r\n3000007\t"),
              std::string::npos);
    EXPECT_NE(texte.find("\r\n" + attendu + "\r\n3000010\tPARACETAMOL GNR\t"), std::string::npos);
    EXPECT_TRUE(texte.ends_with("\t9000001\tParac\xE9tamol 500 mg cp\r\n"));

    // A file that cannot be written: -300, the place as it was, nothing beside.
    const std::string occupe = dossier.Chemin("occupe");
    std::filesystem::create_directory(occupe);
    EXPECT_EQ(ExportIdentifiant_Vdx(occupe.c_str()), VDX_ECRITURE_IMPOSSIBLE);
    EXPECT_TRUE(std::filesystem::is_directory(occupe));
    EXPECT_EQ(ExportIdentifiant_Vdx(dossier.Chemin("absent/identites.txt").c_str()), VDX_ECRITURE_IMPOSSIBLE);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dossier.Chemin("")), {}), 2);
    EXPECT_EQ(essai::LitFichier(chemin), texte);
    EXPECT_EQ(ExportIdentifiant_Vdx(""), VDX_ARGUMENT1);
    EXPECT_EQ(ExportIdentifiant_Vdx(nullptr), VDX_ARGUMENT1);
    DeConnection2_Vdx();
    EXPECT_EQ(ExportIdentifiant_Vdx(chemin.c_str()), VDX_NON_CONNECTE);
}

}  // namespace
}  // namespace vdx
