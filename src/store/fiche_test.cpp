#include "store/fiche.h"

#include <gtest/gtest.h>

#include <string>

#include "store/layouts.h"

namespace vdx {
namespace {

using namespace std::string_literals;

TEST(Fiche, ReadsWhatTheWriterPutByTheSameHandles) {
    FicheEcrite f(VDXZICLA::Longueur);
    ASSERT_TRUE(f.Texte(VDXZICLA::Libelle, "Anti-vitamines K"));
    f.Entier(VDXZICLA::CodeClasse, -7);
    f.Entier(VDXZICLA::ClasseActive, 1);
    EXPECT_EQ(f.Octets().substr(0, 4), "\xF9\xFF\xFF\xFF"s);  // little-endian

    const Fiche v = f.Vue();
    EXPECT_EQ(v.Texte(VDXZICLA::Libelle), "Anti-vitamines K");
    EXPECT_EQ(v.Entier(VDXZICLA::CodeClasse), -7);
    EXPECT_EQ(v.Entier(VDXZICLA::ClasseActive), 1);
    EXPECT_EQ(v.Texte(VDXZICLA::Zone88), "");

    FicheEcrite m(VDXPMOM::Longueur);
    m.Reel(VDXPMOM::Multiplicateur, -0.25f);
    EXPECT_EQ(m.Vue().Reel(VDXPMOM::Multiplicateur), -0.25f);
}

TEST(Fiche, ATextEndsAtItsNulOrAtTheEndOfItsField) {
    // A full field runs up to its neighbour without reading it.
    FicheEcrite voie(VDXIDVOI::Longueur);
    ASSERT_TRUE(voie.Texte(VDXIDVOI::CodeVoie, "ABCD"));
    ASSERT_TRUE(voie.Texte(VDXIDVOI::Libelle, "Orale"));
    EXPECT_EQ(voie.Vue().Texte(VDXIDVOI::CodeVoie), "ABCD");

    // A short record, as a variable one may be: a text is cut at its end,
    // and what lies beyond reads as empty.
    const std::string court = "3000001\0DOLI"s;
    const Fiche f(court);
    EXPECT_EQ(f.Texte(VDXPRO::CodeCIP), "3000001");
    EXPECT_EQ(f.Texte(VDXPRO::Libelle), "DOLI");
    EXPECT_EQ(f.Texte(VDXPRO::CodeLaboratoire), "");
    EXPECT_EQ(f.Entier(VDXPRO::Drapeaux), 0);
}

TEST(FicheEcrite, NeverCutsAText) {
    FicheEcrite f(VDXPRO::Longueur);
    ASSERT_TRUE(f.Texte(VDXPRO::Libelle, std::string(34, 'L')));
    EXPECT_FALSE(f.Texte(VDXPRO::Libelle, std::string(35, 'X')));
    EXPECT_FALSE(f.Texte(VDXPRO::Libelle, "A\0B"s));
    EXPECT_EQ(f.Vue().Texte(VDXPRO::Libelle), std::string(34, 'L'));
    // A shorter text leaves nothing of the longer one behind it.
    ASSERT_TRUE(f.Texte(VDXPRO::Libelle, "ABC"));
    EXPECT_EQ(f.Octets().substr(8, 35), "ABC" + std::string(32, '\0'));
    EXPECT_EQ(f.Vue().Texte(VDXPRO::CodeLaboratoire), "");
}

TEST(Fiche, ChapterRecordsAreReadBySection) {
    const Disposition& d = *DispositionNommee("VDXVAMPT");
    const std::string fiche = ComposeFiche(d, std::string(d.longueur, '\0'), {"Indications", "", "{\\rtf1 x}"});
    const Fiche f(fiche);
    EXPECT_EQ(f.Longueur(), 128u + 11 + 9);
    EXPECT_EQ(f.Section(1), "Indications");
    EXPECT_EQ(f.Section(2), "");
    EXPECT_EQ(f.Section(3), "{\\rtf1 x}");
    EXPECT_EQ(f.Section(4), "");
    EXPECT_EQ(f.Section(0), "");

    // A length that runs past the record gives what it holds, never a read
    // beyond; a negative one gives nothing.
    std::string abime = fiche;
    EcritMot(abime, 8, 1000);
    EXPECT_EQ(Fiche(abime).Section(3), "{\\rtf1 x}");
    EcritMot(abime, 0, -5);
    EXPECT_EQ(Fiche(abime).Section(3), "");
}

TEST(Fiche, CoupleTextsAreCutByTheLengthsOfTheFixedPart) {
    const Disposition& d = *DispositionNommee("VDXZICOU");
    FicheEcrite fixe(d.longueur);
    fixe.Entier(VDXZICOU::ClasseA, 3);
    const std::string fiche = ComposeFiche(d, fixe.Octets(), {"un", "", "trois", "quatre"});
    const Fiche f(fiche);
    EXPECT_EQ(f.Entier(VDXZICOU::LongueurTexte3), 5);
    EXPECT_EQ(f.Reste(d.longueur), "untroisquatre");
    const auto parties = PartiesDe(d, fiche);
    ASSERT_EQ(parties.size(), 4u);
    EXPECT_EQ(parties[2], "trois");
    EXPECT_EQ(parties[3], "quatre");
}

}  // namespace
}  // namespace vdx
