// Lexico_Vdx: its words, its categories, deleted products, its window, and
// the scan of VDXVPRO by blocks as a raw file would be scanned.
#include "vocabulary/lexico.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <sstream>

#include "platform/hote.h"
#include "session/resultat.h"
#include "store/layouts.h"
#include "tests/support/essai_vocabulaire.h"
#include "tests/support/sans_fichier.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// The codes of the rows of a flat text of three fields.
std::vector<std::string> Codes(const std::string& plat) {
    std::vector<std::string> codes;
    std::istringstream lignes(plat);
    for (std::string ligne; std::getline(lignes, ligne);) codes.push_back(ligne.substr(0, ligne.find('@')));
    return codes;
}

class Lexico : public essai::SurUneBase<Lexico> {
public:
    static void Produit(BaseDeTest& b, const char* code, const char* libelle, const char* rubrique,
                        const char* suppression = "") {
        b.Ajoute("VDXPRO", {{"CodeCIP", code},
                            {"Libelle", libelle},
                            {"CodeRubrique", rubrique},
                            {"Suppression", suppression}});
    }
    static void Remplit(BaseDeTest& b) {
        // Rubrique 10: "S"; 80: "A"; 40: "V". Every product is filed under "Z" too.
        Produit(b, "3000001", "ASPIRINE UPSA 500MG CPR", "10");
        Produit(b, "3000002", "ASPIRINE VIT.C 330MG CPR", "10");
        Produit(b, "3000003", "ASPIRINE 1000MG SACHET", "10");
        Produit(b, "3000004", "ASPIRINE OLD  CPR", "10", "A01022020");
        Produit(b, "3000005", "ASPIRINE PARTIE", "10", "S15062019");
        Produit(b, "3000006", "ASPIRINE VETERINAIRE", "40");
        Produit(b, "3000007", "INSULATARD FLEXPEN", "10");
        Produit(b, "3000008", "AIG MICROFINE 8MM", "80");
        Produit(b, "3000009", "BAS VARISMA CL2", "80");
        Produit(b, "3000010", "ANTI-INFLAMMATOIRE GEL", "10");
    }

    static int32_t Cherche(const char* mots, const char* exclus = nullptr, int32_t options = 0, int32_t debut = 1,
                           int32_t nombre = 100) {
        return Lexico_Vdx(nullptr, mots, exclus, options, debut, nombre);
    }
};

TEST(LexicoMots, TheFirstWordIsFoldedThenAbbreviated) {
    EXPECT_EQ(PremierMotLexico("aiguille"), "AIG");
    EXPECT_EQ(PremierMotLexico("Insuline"), "INSUL");
    EXPECT_EQ(PremierMotLexico("chaussures"), "CH");  // nine characters compared: CHAUSSURE
    EXPECT_EQ(PremierMotLexico("aiguilles"), "AIGUILLES");
    EXPECT_EQ(PremierMotLexico("Bassin"), "BASSIN");
    // Rows with blanks never match a folded word.
    EXPECT_EQ(PremierMotLexico("bas de contention"), "BASDECONTENTION");
    EXPECT_EQ(PremierMotLexico("brosses a dents"), "BROSSESADENTS");
    EXPECT_EQ(PremierMotLexico("anti-inflammatoire / 2"), "ANTI-INFLAMMATOIRE2");
    EXPECT_EQ(PremierMotLexico("\xC9ph\xE9" "drine \xE7\xF1"), "EPHEDRINE");
}

TEST_F(Lexico, ShortSearchesAreRefused) {
    EXPECT_EQ(Cherche(nullptr), VDX_RECHERCHE_TROP_COURTE);
    EXPECT_EQ(Cherche("ASP"), VDX_RECHERCHE_TROP_COURTE);
    // AIGUILLE would become AIG, but AIG itself is too short.
    EXPECT_EQ(Cherche("AIG"), VDX_RECHERCHE_TROP_COURTE);
    EXPECT_EQ(Cherche("ASP@CPR"), VDX_RECHERCHE_TROP_COURTE);
    session().ModeSortie = ModeTableau;
    EXPECT_EQ(Cherche("ASPIRINE"), VDX_ARGUMENT2);
}

TEST_F(Lexico, FindsTheWordsInTheLabelsOfACategory) {
    EXPECT_EQ(Cherche("aspirine"), 5);
    EXPECT_EQ(Codes(Memoire()), (std::vector<std::string>{"3000003", "3000004", "3000005", "3000001", "3000002"}));
    // Punctuation is blanked in the label delivered and compared.
    EXPECT_EQ(Cherche("ASPIRINE@330MG"), 1);
    EXPECT_EQ(Memoire(), "3000002@ASPIRINE VIT C 330MG CPR@");
    EXPECT_EQ(Cherche("ASPIRINE@VITC"), 0);
    EXPECT_EQ(Cherche("ASPIRINE@CPR@UPSA"), 1);
    EXPECT_EQ(Cherche("ASPIRINE@CPR@ABSENT"), 0);
    // Only three words take part.
    EXPECT_EQ(Cherche("ASPIRINE@CPR@UPSA@ABSENT@ABSENT"), 1);
    EXPECT_EQ(Cherche("ASPIRINE", "CPR@SACHET"), 1);
    EXPECT_EQ(Memoire(), "3000005@ASPIRINE PARTIE[SUP]@");
    EXPECT_EQ(Cherche("ASPIRINE", "ABSENT@ABSENT@ABSENT@CPR"), 5);
}

TEST_F(Lexico, OptionsChooseTheCategory) {
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 16), 1);
    EXPECT_EQ(Memoire(), "3000006@ASPIRINE VETERINAIRE@");
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 1), 0);
    // Every product is under Z.
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 64), 6);
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 3), 6);
}

TEST_F(Lexico, DeletedProductsAreMarkedOrHidden) {
    EXPECT_EQ(Cherche("ASPIRINE@OLD"), 1);
    // At the first double blank, or at the end of the label.
    EXPECT_EQ(Memoire(), "3000004@ASPIRINE OLD[SUP]@");
    EXPECT_EQ(Cherche("ASPIRINE@PARTIE"), 1);
    EXPECT_EQ(Memoire(), "3000005@ASPIRINE PARTIE[SUP]@");
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 256), 3);
    EXPECT_EQ(Codes(Memoire()), (std::vector<std::string>{"3000003", "3000001", "3000002"}));
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 256 + 64), 4);
}

TEST_F(Lexico, TheFirstWordGoesThroughTheAbbreviations) {
    EXPECT_EQ(Cherche("INSULINE"), 1);
    EXPECT_EQ(Memoire(), "3000007@INSULATARD FLEXPEN@");
    EXPECT_EQ(Cherche("aiguille", nullptr, 1), 1);
    EXPECT_EQ(Memoire(), "3000008@AIG MICROFINE 8MM@");
    EXPECT_EQ(Cherche("BAS DE CONTENTION", nullptr, 1), 0);
    // The hyphen stays in the first word only.
    EXPECT_EQ(Cherche("ANTI-INFLAMMATOIRE"), 1);
    EXPECT_EQ(Cherche("FLAMMATOIRE@ANTI-INFLAMMATOIRE"), 0);
}

TEST_F(Lexico, OnlyTheWindowIsDelivered) {
    // Ordinals from Debut, indexes up to Debut + Nombre.
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 0, 2, 1), 3);
    EXPECT_EQ(Codes(Memoire()), (std::vector<std::string>{"3000004", "3000005", "3000001"}));
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 0, 5, 10), 1);
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 0, 0, 0), 1);
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 0, 6, 10), 0);
    EXPECT_EQ(Cherche("ASPIRINE", nullptr, 0, 1, 0x7FFFFFFF), 5);
}

TEST_F(Lexico, ArrayModeAndBadWords) {
    session().ModeSortie = ModeTableau;
    SAFEARRAY* tableau = essai::TableauDeFiches(3);
    ASSERT_EQ(Lexico_Vdx(&tableau, "INSULINE", nullptr, 0, 1, 10), 1);
    const auto* fiche = static_cast<VdxTroisChaines*>(tableau->pvData);
    EXPECT_EQ(hote::Octets(fiche->Code), "3000007");
    EXPECT_EQ(hote::Octets(fiche->Libelle), "INSULATARD FLEXPEN");
    EXPECT_EQ(hote::Octets(fiche->Texte), "");
    const std::string long_(400, 'A');
    EXPECT_EQ(Lexico_Vdx(&tableau, long_.c_str(), long_.c_str(), 0, 1, 10), 0);
    EXPECT_EQ(Lexico_Vdx(&tableau, "\xE7\xF1\xFF\x80\x81", "\x90", 0, 1, 10), 0);
    // A first word that folds to nothing ends every block at once.
    EXPECT_EQ(Lexico_Vdx(&tableau, "....", nullptr, 0, 1, 10), 0);
    VideTableau(tableau, {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    SafeArrayDestroy(tableau);
}

// Records laid across the blocks: 2000 of them, "P0000" to "P1999", in the
// order of their key; a few hold a word to look for.
class LexicoBlocs : public essai::SurUneBase<LexicoBlocs> {
public:
    static constexpr int Nombre = 2000;
    static constexpr size_t Longueur = VDXVPRO::Longueur;
    static constexpr size_t DecalageMot = 8;  // "P0000 " after the letter and its NUL

    // The record whose bytes hold the stream's offset.
    static int Recouvrant(size_t offset) { return static_cast<int>((offset - lexico::Entete) / Longueur); }
    static size_t DebutMot(int i) { return lexico::Entete + Longueur * i + DecalageMot; }

    static std::string Code(int i) {
        char code[8];
        std::snprintf(code, sizeof code, "34%05d", i);
        return code;
    }
    static std::map<int, std::string> Mots() {
        std::map<int, std::string> mots;
        mots[Recouvrant(lexico::TailleBloc)] = "CIBLE";           // across the end of the first block
        mots[Recouvrant(lexico::Avance + 5000)] = "CIBLE";       // in the overlap of two blocks
        mots[Recouvrant(lexico::Avance + 50000)] = "CIBLE";      // in the second block only
        mots[Recouvrant(2 * lexico::Avance + 100)] = "CIBLE";    // at the head of the third one
        mots[PiegeEnTete()] = "PIEGE";
        mots[Recouvrant(lexico::Avance + 60000)] = "PIEGE";
        return mots;
    }
    // A record whose word begins within the first 30 bytes of the second block.
    static int PiegeEnTete() {
        for (int i = 0; i < Nombre; ++i)
            if (DebutMot(i) >= lexico::Avance && DebutMot(i) < lexico::Avance + 30) return i;
        return -1;
    }

    static int32_t Cherche(const char* mot) { return Lexico_Vdx(nullptr, mot, nullptr, 0, 1, 100); }

    static void Remplit(BaseDeTest& b) {
        const std::map<int, std::string> mots = Mots();
        for (int i = 0; i < Nombre; ++i) {
            char libelle[32];
            std::snprintf(libelle, sizeof libelle, "P%04d", i);
            std::string texte = libelle;
            if (auto m = mots.find(i); m != mots.end()) texte += " " + m->second;
            b.Ajoute("VDXVPRO", {{"Categorie", "S"}, {"Libelle", texte}, {"CodeCIP", Code(i)}});
        }
    }
};

TEST_F(LexicoBlocs, ARecordAcrossABlockEndIsFoundOnce) {
    ASSERT_EQ(Mots().size(), 6u);
    ASSERT_EQ(Cherche("CIBLE"), 4);
    std::vector<std::string> attendus;
    for (const auto& [i, mot] : Mots())
        if (mot == "CIBLE") attendus.push_back(Code(i));
    EXPECT_EQ(Codes(Memoire()), attendus);
    // Met again in the overlap, a code is not taken again: it takes no place
    // in the window either.
    ASSERT_EQ(Lexico_Vdx(nullptr, "CIBLE", nullptr, 0, 3, 0), 2);
    EXPECT_EQ(Codes(Memoire()), std::vector<std::string>(attendus.begin() + 2, attendus.end()));
}

TEST_F(LexicoBlocs, AMatchAtTheHeadOfABlockEndsThatBlock) {
    // The first match of the second block lies below position 31: the rest
    // of that block is not looked at, as on the raw file.
    ASSERT_GE(PiegeEnTete(), 0);
    EXPECT_EQ(Cherche("PIEGE"), 1);
    EXPECT_EQ(Memoire(), Code(PiegeEnTete()) + "@P" + Code(PiegeEnTete()).substr(3) + " PIEGE@");
}

TEST(LexicoSansTable, ProductsThatCantBeReadGiveTheirCode) {
    essai::ConnexionSansFichier base("VDXVPRO.NDX");
    ASSERT_TRUE(base.Connecte());
    EXPECT_EQ(Lexico_Vdx(nullptr, "ASPIRINE", nullptr, 0, 1, 10), VDX_LISTE_MOTS_ILLISIBLE);
    EXPECT_EQ(session().FichierErreur, "VDXVPRO.NDX");
}

}  // namespace
}  // namespace vdx
