#include "store/cles.h"

#include <gtest/gtest.h>

#include <string>

#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

using namespace std::string_literals;

const Disposition& Dispo(const char* table) { return *DispositionNommee(table); }

std::string Produit(std::string_view libelle) {
    FicheEcrite f(VDXPRO::Longueur);
    EXPECT_TRUE(f.Texte(VDXPRO::CodeCIP, "3000001"));
    EXPECT_TRUE(f.Texte(VDXPRO::Libelle, libelle));
    return f.Octets();
}

TEST(Cles, TextAndIntegerKeysHaveTheirFixedLength) {
    EXPECT_EQ(CleTexte("A01", 7, ' '), "A01    ");
    EXPECT_EQ(CleTexte("3000001X", 7), "3000001");
    EXPECT_EQ(CleEntiers({1, 258, -1}), "\x01\0\0\0\x02\x01\0\0\xFF\xFF\xFF\xFF"s);
    EXPECT_EQ(CleDecimale(42, 5), "00042");
}

TEST(Cles, KeysAreBuiltFromTheRecordByTheLayout) {
    FicheEcrite classe(ModeleClasseProduit::Longueur);
    ASSERT_TRUE(classe.Texte(ModeleClasseProduit::CodeClasse, "A01"));
    ASSERT_TRUE(classe.Texte(ModeleClasseProduit::CodeCIP, "3000001"));
    EXPECT_EQ(CleDe(Dispo("VDXCLAP"), 0, classe.Octets()), "A01    3000001");
    EXPECT_EQ(CleDe(Dispo("VDXCLAP"), 1, classe.Octets()), "3000001A01    ");

    FicheEcrite parent(VDXWPEFI::Longueur);
    parent.Entier(VDXWPEFI::CodeParent, 42);
    parent.Entier(VDXWPEFI::CodeEnfant, 7);
    EXPECT_EQ(CleDe(Dispo("VDXWPEFI"), 0, parent.Octets()), "0004200007");
    EXPECT_EQ(CleDe(Dispo("VDXWPEFI"), 1, parent.Octets()), "0000700042");

    FicheEcrite substance(VDXVPAP::Longueur);
    ASSERT_TRUE(substance.Texte(VDXVPAP::CodeSubstance, "00042"));
    ASSERT_TRUE(substance.Texte(VDXVPAP::CodeCIP, "3000001"));
    EXPECT_EQ(CleDe(Dispo("VDXVPAP"), 0, substance.Octets()), "000423000001\0\0\0\0"s);

    // The key of a chapter record is kept outside the record.
    EXPECT_EQ(CleDe(Dispo("VDXVAMPT"), 0, std::string(128, '\0'), "3000001"), "3000001");
}

TEST(Cles, AnOptionalKeyIsLeftOutForAnEmptyText) {
    FicheEcrite excipient(VDXVEXC::Longueur);
    excipient.Entier(VDXVEXC::CodeSubstance, 12);
    ASSERT_TRUE(excipient.Texte(VDXVEXC::Libelle, "Lactose"));
    const Disposition& d = Dispo("VDXVEXC");
    EXPECT_EQ(CleDe(d, 1, excipient.Octets()), CleTexte("LACTOSE", 30) + CleEntiers({12}));
    EXPECT_FALSE(CleDe(d, 2, excipient.Octets()));
    ASSERT_TRUE(excipient.Texte(VDXVEXC::LibelleEEN, "lactose"));
    EXPECT_EQ(CleDe(d, 2, excipient.Octets()), CleDe(d, 1, excipient.Octets()));
}

TEST(Cles, ProductLabelKeyIsFoldedAndKeepsTheFinalPoints) {
    EXPECT_EQ(CleLibelleProduit("Doliprane 500 mg"), CleTexte("DOLIPRANE 500 MG", 34));
    // The fold would drop a point among the first five bytes.
    EXPECT_EQ(CleLibelleProduit("A-B.."), CleTexte("AB..", 34));
    EXPECT_EQ(CleDe(Dispo("VDXPRO"), 1, Produit("A-B..")), CleLibelleProduit("A-B.."));
    EXPECT_EQ(CleLibelleProduit(std::string(40, 'X')), std::string(34, 'X'));
}

TEST(Cles, EqualLabelsAreMadeUniqueWithPoints) {
    const RegleUnicite& regle = *Dispo("VDXPRO").cles[1].unicite;
    std::string fiche = Produit("A B C");
    std::string cle = *CleDe(Dispo("VDXPRO"), 1, fiche);
    ASSERT_TRUE(RendCleUnique(regle, cle, fiche));
    ASSERT_TRUE(RendCleUnique(regle, cle, fiche));
    EXPECT_EQ(cle, CleTexte("ABC..", 34));
    EXPECT_EQ(Fiche(fiche).Texte(VDXPRO::Libelle), "A B C..");
    // The label now gives the key it was filed under.
    EXPECT_EQ(CleDe(Dispo("VDXPRO"), 1, fiche), cle);
}

TEST(Cles, AFullLengthKeyHasItsLastByteRaised) {
    const RegleUnicite& regle = *Dispo("VDXPRO").cles[1].unicite;
    const std::string libelle = "ABCDEFGHIJKLMNOPQRSTUVWXYZ 1234567";  // 34 bytes, the whole field
    std::string fiche = Produit(libelle);
    std::string cle = *CleDe(Dispo("VDXPRO"), 1, fiche);
    ASSERT_TRUE(RendCleUnique(regle, cle, fiche));
    EXPECT_EQ(cle, "ABCDEFGHIJKLMNOPQRSTUVWXYZ 1234568");
    EXPECT_EQ(Fiche(fiche).Texte(VDXPRO::Libelle), "ABCDEFGHIJKLMNOPQRSTUVWXYZ 1234568");

    // VDXVPRO raises the byte at 78 of its key, at 80 of its record.
    const RegleUnicite& categorie = *Dispo("VDXVPRO").cles[0].unicite;
    FicheEcrite parCategorie(VDXVPRO::Longueur);
    ASSERT_TRUE(parCategorie.Texte(VDXVPRO::Categorie, "S"));
    ASSERT_TRUE(parCategorie.Texte(VDXVPRO::Libelle, std::string(78, 'M')));
    std::string f = parCategorie.Octets();
    std::string k = *CleDe(Dispo("VDXVPRO"), 0, f);
    ASSERT_TRUE(RendCleUnique(categorie, k, f));
    EXPECT_EQ(k, "S" + std::string(77, 'M') + "N");
    // Offset 80 is the label's own NUL when it has 78 bytes.
    EXPECT_EQ(f[80], '\x01');
}

TEST(Cles, ALabelWithoutRoomForAPointCannotBeMadeUnique) {
    // 34 bytes whose head loses two blanks to the fold: a key of 32.
    std::string fiche = Produit("A B CDEFGHIJKLMNOPQRSTUVWXYZ123456");
    std::string cle = *CleDe(Dispo("VDXPRO"), 1, fiche);
    const std::string avant = fiche;
    EXPECT_FALSE(RendCleUnique(*Dispo("VDXPRO").cles[1].unicite, cle, fiche));
    EXPECT_EQ(fiche, avant);
}

TEST(Cles, CategoryLetterFollowsCodeRubrique) {
    EXPECT_EQ(CategorieProduit("10", "2000001"), 'A');
    EXPECT_EQ(CategorieProduit("90", "3000001"), 'S');
    EXPECT_EQ(CategorieProduit("40", "3000001"), 'V');
    EXPECT_EQ(CategorieProduit("59", "3000001"), 'D');
    EXPECT_EQ(CategorieProduit("81", "2000001"), 'T');
    EXPECT_EQ(CategorieProduit("", "3000001"), 'X');
    EXPECT_EQ(CleCategorie('Z', "Doliprane."), CleTexte("ZDOLIPRANE.", 79));
}

}  // namespace
}  // namespace vdx
