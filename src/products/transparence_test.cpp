// The latest SMR and ASMR of a product's speciality: the last opinion of
// each kind by date, a kind without opinion left empty, a speciality
// without any, a product without a speciality.
#include "products/transparence.h"

#include <gtest/gtest.h>

#include "tests/support/chaines_hote.h"
#include "tests/support/essai_produits.h"
#include "tests/support/quatre_modes.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3000001 (speciality 60234100): two SMR opinions, the later one filed
// first, an older and a newer ASMR; 3000002 (60000002): one SMR; 3000007
// (60000007): none.
class SmrAsmr : public essai::SurUneBase<SmrAsmr> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXYCSCP", {{"CodeCIS", "60000002"}, {"CodeCIP", "3000002"}});
        b.Ajoute("VDXYCSCP", {{"CodeCIS", "60000007"}, {"CodeCIP", "3000007"}});
        struct A {
            const char* cis;
            const char* avis;
            const char* date;
            const char* dossier;
            const char* niveau;
            const char* motif;
        };
        for (const A& a : {A{"60234100", "S", "20161109", "CT-15416", "Important, Modéré", "Renouvellement d'inscription (CT)"},
                           A{"60234100", "S", "20110706", "CT-9840", "Faible", "Inscription (CT)"},
                           A{"60234100", "A", "20030416", "CT-252", "IV", "Inscription (CT)"},
                           A{"60234100", "A", "20120104", "CT-11906", "V", "Extension d'indication"},
                           A{"60000002", "S", "20120523", "CT-12232", "Important", "Inscription (CT)"},
                           A{"6000000", "S", "20170101", "CT-1", "Faible", "Inscription (CT)"}})
            b.Ajoute("VDXYTRF", {{"CodeCIS", a.cis}, {"Avis", a.avis}, {"Date", a.date}, {"Dossier", a.dossier},
                                 {"Niveau", a.niveau}, {"Motif", a.motif}});
    }
};

TEST_F(SmrAsmr, TheLatestOpinionOfEachKind) {
    ASSERT_EQ(ProduitSmrAsmr_Vdx("3000001", nullptr), 1);
    EXPECT_EQ(Memoire(), "Important, Mod\xE9r\xE9@09/11/2016@Renouvellement d'inscription (CT)@V@04/01/2012@"
                         "Extension d'indication");
    ASSERT_EQ(ProduitSmrAsmr_Vdx("3000002", nullptr), 1);
    EXPECT_EQ(Memoire(), "Important@23/05/2012@Inscription (CT)@@@");
    // A speciality whose code another one's begins gets none of its opinions.
    EXPECT_EQ(ProduitSmrAsmr_Vdx("3000007", nullptr), 0);
    EXPECT_EQ(Memoire(), "@@@@@");
    EXPECT_EQ(ProduitSmrAsmr_Vdx("3000010", nullptr), VDX_CODE_INCONNU);  // no speciality
    EXPECT_EQ(ProduitSmrAsmr_Vdx("30000", nullptr), VDX_CODE_MAL_FORME);
}

TEST_F(SmrAsmr, TheFlatModesGiveTheSameRow) {
    essai::MemeTexteDansLesModes(base_->Repertoire(), [] { return ProduitSmrAsmr_Vdx("3000001", nullptr); }, 1);
}

TEST_F(SmrAsmr, IntoTheHostsRecord) {
    ReconnecteEnTableau(1);
    VdxSmrAsmr fiche{};
    fiche.MotifASMR = essai::ChaineLarge(u"ancien");
    EXPECT_EQ(ProduitSmrAsmr_Vdx("3000002", &fiche), 1);
    EXPECT_EQ(essai::Texte(fiche.NiveauSMR), "Important");  // 8-bit in a wide session
    EXPECT_EQ(SysStringByteLen(fiche.MotifASMR), 0u);
    EXPECT_EQ(ProduitSmrAsmr_Vdx("3000002", nullptr), VDX_ERREUR_INTERNE);
    for (BSTR* b : {&fiche.NiveauSMR, &fiche.DateSMR, &fiche.MotifSMR, &fiche.NiveauASMR, &fiche.DateASMR, &fiche.MotifASMR})
        SysFreeString(*b);
}

}  // namespace
}  // namespace vdx
