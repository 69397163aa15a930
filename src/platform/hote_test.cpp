#include "platform/hote.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/chaines_hote.h"

namespace vdx::hote {
namespace {

TEST(Hote, TableauPriveDeFiches) {
    const uint32_t taille = TailleFiche(2);  // integer code + label
    EXPECT_EQ(taille, 2 * sizeof(void*));
    SAFEARRAY* t = CreeTableau(taille);
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->fFeatures, 512);
    EXPECT_EQ(SafeArrayGetDim(t), 1u);
    EXPECT_EQ(TailleElement(t), taille);
    EXPECT_EQ(NombreElements(t), 0u);
    EXPECT_EQ(t->rgsabound[0].lLbound, 0);

    // Access to an empty array is no failure.
    void* donnees = Accede(t);
    ASSERT_NE(donnees, nullptr);
    LibereAcces(t);

    for (uint32_t n = 1; n <= 3; ++n) {
        ASSERT_TRUE(Redimensionne(t, n));
        void* d = Accede(t);
        ASSERT_NE(d, nullptr);
        void* fiche = Fiche(d, taille, n - 1);
        EXPECT_EQ(*Chaine(fiche, 1), nullptr);  // new elements are zero
        PoseEntier(fiche, 0, -static_cast<int32_t>(n));
        ASSERT_TRUE(RangeOctets(Chaine(fiche, 1), "libell\xE9 " + std::to_string(n)));
        LibereAcces(t);
    }
    EXPECT_EQ(NombreElements(t), 3u);
    EXPECT_EQ(t->cLocks, 0u);

    void* d = Accede(t);
    for (uint32_t i = 0; i < 3; ++i) {
        void* fiche = Fiche(d, taille, i);
        EXPECT_EQ(Entier(fiche, 0), -static_cast<int32_t>(i + 1));
        // The whole slot holds the value, for hosts that declare intptr_t.
        intptr_t slot;
        std::memcpy(&slot, fiche, sizeof slot);
        EXPECT_EQ(slot, -static_cast<intptr_t>(i + 1));
        EXPECT_EQ(Octets(*Chaine(fiche, 1)), "libell\xE9 " + std::to_string(i + 1));
        Libere(Chaine(fiche, 1));
        EXPECT_EQ(*Chaine(fiche, 1), nullptr);
    }
    LibereAcces(t);
    Detruit(t);
}

TEST(Hote, TableauVerrouilleOuFixe) {
    SAFEARRAY* t = CreeTableau(TailleFiche(1));
    ASSERT_TRUE(Redimensionne(t, 2));
    void* tenu = Accede(t);
    ASSERT_NE(tenu, nullptr);
    EXPECT_FALSE(Redimensionne(t, 3));
    EXPECT_EQ(NombreElements(t), 2u);

    // Forced empty under an access: the block held stays readable.
    static_cast<char*>(tenu)[0] = 'x';
    ASSERT_TRUE(ForceVide(t));
    EXPECT_EQ(NombreElements(t), 0u);
    EXPECT_NE(t->pvData, tenu);
    EXPECT_EQ(static_cast<char*>(tenu)[0], 'x');
    std::free(tenu);  // what the layer leaves behind in that case
    LibereAcces(t);

    // A host's fixed-size array can't be resized, only forced empty.
    ASSERT_TRUE(Redimensionne(t, 2));
    t->fFeatures |= FADF_FIXEDSIZE;
    EXPECT_FALSE(Redimensionne(t, 0));
    ASSERT_TRUE(ForceVide(t));
    EXPECT_EQ(NombreElements(t), 0u);
    ASSERT_NE(Accede(t), nullptr);
    LibereAcces(t);
    t->fFeatures &= ~FADF_FIXEDSIZE;
    Detruit(t);

    EXPECT_EQ(Accede(nullptr), nullptr);
    EXPECT_FALSE(Redimensionne(nullptr, 1));
    EXPECT_EQ(NombreElements(nullptr), 0u);
}

TEST(Hote, ChainesOctetsEtLarges) {
    BSTR b = nullptr;
    const std::string octets("a\0\xE9\x80z", 5);
    ASSERT_TRUE(RangeOctets(&b, octets));
    EXPECT_EQ(SysStringByteLen(b), 5u);
    EXPECT_EQ(Octets(b), octets);

    // Stored back from its own bytes.
    ASSERT_TRUE(RangeOctets(&b, Octets(b).substr(2)));
    EXPECT_EQ(Octets(b), "\xE9\x80z");

    ASSERT_TRUE(RangeLarge(&b, "\xE9\x80\x9F"));
    EXPECT_EQ(essai::Large(b), u"\u00E9\u20AC\u0178");
    EXPECT_EQ(VersTexte(b), "\xE9\x80\x9F");

    ASSERT_TRUE(RangeOctets(&b, ""));
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(SysStringByteLen(b), 0u);
    Libere(&b);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(Octets(nullptr), "");
    EXPECT_EQ(VersTexte(nullptr), "");

    // What code page 1252 lacks; a NUL ends the text.
    BSTR large = essai::ChaineLarge(std::u16string_view(u"a\u0100b\0c", 5));
    EXPECT_EQ(VersTexte(large), "a?b");
    SysFreeString(large);
}

}  // namespace
}  // namespace vdx::hote
