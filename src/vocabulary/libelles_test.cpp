// The label lookups of the vocabularies, through their exports.
#include "vocabulary/libelles.h"

#include <gtest/gtest.h>

#include "platform/hote.h"
#include "tests/support/essai_vocabulaire.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

class Libelles : public essai::SurUneBase<Libelles> {
public:
    static void Remplit(BaseDeTest& b) {
        b.Ajoute("VDXVCIM", {{"Code", "O24"}, {"Libelle", "Diabète sucré au cours de la grossesse"}});
        b.Ajoute("VDXVCIM", {{"Code", "J45.9"}, {"Libelle", "Asthme, sans précision"}});
        // Chapters, of codes under three characters, are in a table of their own.
        b.Ajoute("VDXVCIMA", {{"Code", "X"}, {"Libelle", "Maladies de l'appareil respiratoire"}});
        b.Ajoute("VDXVCIMA", {{"Code", "XV"}, {"Libelle", "Grossesse, accouchement et puerpéralité"}});
        b.Ajoute("VDXVCISP", {{"Code", "R96"}, {"Libelle", "Asthme"}});
        // A term is filed under its code and its type.
        b.Ajoute("VDXVAMM", {{"CodeTerme", "0000000123"}, {"TypeAMM", "2"}, {"Libelle", "Insuffisance hépatique"}});
        b.Ajoute("VDXCLA", {{"CodeClasse", "A01"}, {"Libelle", "Antalgiques"}});
        b.Ajoute("VDXYATC", {{"CodeClasse", "N02BE01"}, {"Libelle", "Paracétamol"}});
        b.Ajoute("VDXIDFOR", {{"CodeForme", "CP"}, {"Libelle", "comprimé"}});
        b.Ajoute("VDXLAB", {{"CodeLaboratoire", "SANO"}, {"Libelle", "Sanofi"}});
        b.Ajoute("VDXFAM", {{"CodeFamille", "A1"}, {"Libelle", "Antiacides"}});
    }

    // The label in a host string, in mode 0.
    static std::string Chaine(int32_t (*libelle)(const char*, BSTR*), const char* code, int32_t attendu = 1) {
        session().ModeSortie = ModeTableau;
        BSTR chaine = nullptr;
        hote::RangeOctets(&chaine, "avant");
        EXPECT_EQ(libelle(code, &chaine), attendu) << (code ? code : "(null)");
        std::string texte(hote::Octets(chaine));
        hote::Libere(&chaine);
        return texte;
    }
};

TEST_F(Libelles, CIM10CodesAndTheirChapters) {
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, "O24"), "Diab\xE8te sucr\xE9 au cours de la grossesse");
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, "J45.9"), "Asthme, sans pr\xE9" "cision");
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, "X"), "Maladies de l'appareil respiratoire");
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, "XV"), "Grossesse, accouchement et puerp\xE9ralit\xE9");
    // A code of three characters or more is not a chapter, nor a prefix of a code.
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, "J45", VDX_CODE_INCONNU), "");
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, "XVI", VDX_CODE_INCONNU), "");
}

TEST_F(Libelles, EveryVocabularyFindsItsCodes) {
    EXPECT_EQ(Chaine(LibelleCISP_Vdx, "R96"), "Asthme");
    EXPECT_EQ(Chaine(LibelleAMM_Vdx, "0000000123"), "Insuffisance h\xE9patique");
    EXPECT_EQ(Chaine(LibelleClasse_Vdx, "A01"), "Antalgiques");
    EXPECT_EQ(Chaine(LibelleClasseATC_Vdx, "N02BE01"), "Parac\xE9tamol");
    // The form's key pads its code with blanks.
    EXPECT_EQ(Chaine(LibelleForme_Vdx, "CP"), "comprim\xE9");
    EXPECT_EQ(Chaine(LibelleLaboratoire_Vdx, "SANO"), "Sanofi");
    EXPECT_EQ(Chaine(LibelleFamille_Vdx, "A1"), "Antiacides");
    EXPECT_EQ(Chaine(LibelleFamille_Vdx, "A", VDX_CODE_INCONNU), "");
    // A code longer than its key can't be there, and is not cut to fit.
    EXPECT_EQ(Chaine(LibelleLaboratoire_Vdx, "SANOF", VDX_CODE_INCONNU), "");
    EXPECT_EQ(Chaine(LibelleAMM_Vdx, "00000001232", VDX_ARGUMENT1), "");
}

TEST_F(Libelles, BadCodesAreRefusedBeforeAnyLookup) {
    for (const char* code : {static_cast<const char*>(nullptr), "", "ABCDEFGHIJK", "ABCDEFGHIJKLMNOPQRSTUVWXYZ"})
        EXPECT_EQ(Chaine(LibelleCISP_Vdx, code, VDX_ARGUMENT1), "");
    EXPECT_EQ(Chaine(LibelleCIM10_Vdx, nullptr, VDX_ARGUMENT1), "");
    EXPECT_EQ(Chaine(LibelleCISP_Vdx, "\xC9\xFF", VDX_CODE_INCONNU), "");
    // The host string is emptied even before the connection is tested.
    DeConnection2_Vdx();
    EXPECT_EQ(Chaine(LibelleCISP_Vdx, "R96", VDX_NON_CONNECTE), "");
}

TEST_F(Libelles, FlatModesAndWideSessions) {
    EXPECT_EQ(LibelleCISP_Vdx("R96", nullptr), 1);
    EXPECT_EQ(Memoire(), "Asthme");
    SetString_Vdx("avant");
    EXPECT_EQ(LibelleCISP_Vdx("R00", nullptr), VDX_CODE_INCONNU);
    EXPECT_EQ(Memoire(), "avant");
    // A label stays 8-bit in a wide session.
    session().ChainesUnicode = 1;
    EXPECT_EQ(Chaine(LibelleAMM_Vdx, "0000000123"), "Insuffisance h\xE9patique");
}

TEST_F(Libelles, InternalLookupsGiveNothingForAnUnknownCode) {
    EXPECT_EQ(LibelleVocabulaire(VocabulaireCIM10("X"), "X"), "Maladies de l'appareil respiratoire");
    EXPECT_EQ(LibelleVocabulaire(vocabulaires::CISP(), "R97"), std::nullopt);
}

}  // namespace
}  // namespace vdx
