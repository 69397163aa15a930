// The composition of a product through ProduitPA_Vdx, in the flat modes and
// in the host's array; the classes and routes of a product beside it.
#include "products/composition.h"

#include <gtest/gtest.h>

#include "tests/support/composition_essai.h"
#include "products/composition_liens.h"
#include "session/resultat.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using essai::Texte;

class ComposantsProduit : public essai::SurUneBase<ComposantsProduit> {
public:
    static void Remplit(BaseDeTest& b) { essai::RemplitComposition(b); }

protected:
    // The flat text of a call in memory mode, or its code.
    static std::string Plat(const char* code) {
        const int32_t n = ProduitPA_Vdx(code, nullptr, nullptr, nullptr);
        return n > 0 ? Memoire() : std::to_string(n);
    }
    static std::string Liste(int32_t (*f)(const char*, SAFEARRAY**), const char* code) {
        const int32_t n = f(code, nullptr);
        return n > 0 ? Memoire() : std::to_string(n);
    }
};

// The host's array of components and its two strings, freed at the end.
struct Sortie {
    SAFEARRAY* tableau = essai::TableauDeFiches(6);
    BSTR exprime = nullptr, composition = nullptr;
    ~Sortie() {
        if (tableau) {
            VideTableau(tableau, {TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte,
                                  TypeChamp::Texte, TypeChamp::Texte});
            SafeArrayDestroy(tableau);
        }
        SysFreeString(exprime);
        SysFreeString(composition);
    }
    int32_t Appelle(const char* code) { return ProduitPA_Vdx(code, &tableau, &exprime, &composition); }
    const VdxComposant& Ligne(unsigned i) const { return static_cast<const VdxComposant*>(tableau->pvData)[i]; }
    unsigned Nombre() const { return tableau->rgsabound[0].cElements; }
};

TEST_F(ComposantsProduit, FlatTextLeadsWithTheBasisAndTheTextThenOneRowPerComponent) {
    EXPECT_EQ(Plat("3000001"),
              "un comprim\xE9@Parac\xE9tamol 500 mg pour un comprim\xE9\r\n"
              "2202@0@500@PARAC\xC9TAMOL@500 mg@mg\r\n"
              "4242@1@0@Code 4242 introuvable@@Code 9 introuvable");
    // A record of four bytes has no text; a quantity is written as numbers are.
    EXPECT_EQ(Plat("3000003"), "une g\xE9lule@\r\n1099@0@0.5@SULFATE DE MORPHINE@0,5 mg@mg");
}

TEST_F(ComposantsProduit, AProductWithoutComponentGivesZeroAndDeliversNothing) {
    for (const char* code : {"3000002",    // a text, and the next key is another product's
                             "3900000",    // a text, and no key at or above the code
                             "3000010"}) { // nothing at all
        ASSERT_EQ(SetString_Vdx("avant"), 1);
        EXPECT_EQ(ProduitPA_Vdx(code, nullptr, nullptr, nullptr), 0) << code;
        EXPECT_EQ(Memoire(), "avant") << code;
    }
}

TEST_F(ComposantsProduit, ProductCodesAreCheckedAndMapped) {
    EXPECT_EQ(Plat(nullptr), "-10");
    EXPECT_EQ(Plat("300000"), "-13");
    EXPECT_EQ(Plat("30000011"), "-13");
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(ProduitPA_Vdx("3400930000011", nullptr, nullptr, nullptr), 2);
    // Any other length is looked up as it stands, not by its first seven.
    EXPECT_EQ(Plat("3000001123"), "0");
    EXPECT_TRUE(CompositionProduit("3000001123").composants.empty());
    DeConnection2_Vdx();
    EXPECT_EQ(Plat("3000001"), "-2");
}

TEST_F(ComposantsProduit, TheHostArrayHoldsTheRowsAndTheStringsTheTwoTexts) {
    ReconnecteEnTableau();
    Sortie s;
    ASSERT_EQ(s.Appelle("3000001"), 2);
    ASSERT_EQ(s.Nombre(), 2u);
    EXPECT_EQ(s.Ligne(0).SansQuantite, 0);
    EXPECT_EQ(s.Ligne(0).CodeSubstance, 2202);
    EXPECT_EQ(s.Ligne(0).Quantite, 500.0f);
    EXPECT_EQ(Texte(s.Ligne(0).Libelle), "PARAC\xC9TAMOL");
    EXPECT_EQ(Texte(s.Ligne(0).QuantiteTexte), "500 mg");
    EXPECT_EQ(Texte(s.Ligne(0).LibelleUnite), "mg");
    EXPECT_EQ(s.Ligne(1).SansQuantite, 1);
    EXPECT_EQ(s.Ligne(1).CodeSubstance, 4242);
    EXPECT_EQ(Texte(s.exprime), "un comprim\xE9");
    EXPECT_EQ(Texte(s.composition), "Parac\xE9tamol 500 mg pour un comprim\xE9");

    // A product without component empties the array and both strings.
    EXPECT_EQ(s.Appelle("3000002"), 0);
    EXPECT_EQ(s.Nombre(), 0u);
    EXPECT_EQ(SysStringByteLen(s.exprime), 0u);
    EXPECT_EQ(SysStringByteLen(s.composition), 0u);
}

TEST_F(ComposantsProduit, InAWideSessionRowsAreWideAndTheTwoTextsEightBit) {
    ReconnecteEnTableau(1);
    Sortie s;
    ASSERT_EQ(s.Appelle("3000001"), 2);
    EXPECT_EQ(SysStringLen(s.Ligne(0).Libelle), 11u);
    EXPECT_EQ(s.Ligne(0).Libelle[5], u'\u00C9');
    EXPECT_EQ(Texte(s.exprime), "un comprim\xE9");
}

TEST_F(ComposantsProduit, BadArraysAndStringsOfTheHost) {
    ReconnecteEnTableau();
    Sortie s;
    EXPECT_EQ(ProduitPA_Vdx("3000001", nullptr, &s.exprime, &s.composition), VDX_ARGUMENT2);
    SAFEARRAY* petit = essai::TableauDeFiches(3);
    EXPECT_EQ(ProduitPA_Vdx("3000001", &petit, &s.exprime, &s.composition), VDX_ARGUMENT2);
    SafeArrayDestroy(petit);
    ASSERT_EQ(s.Appelle("3000001"), 2);
    EXPECT_EQ(ProduitPA_Vdx("3000001", &s.tableau, nullptr, &s.composition), VDX_ERREUR_INTERNE);
    EXPECT_EQ(s.Nombre(), 0u);  // emptied, not half-filled
    ASSERT_EQ(notices.boites.size(), 1u);
    EXPECT_EQ(notices.boites[0].texte, "Une erreur interne est survenue lors de l'appel de la fonction ProduitPA_Vdx !");
}

TEST_F(ComposantsProduit, ClassesOfAProductInCodeOrderWithTheirLabels) {
    EXPECT_EQ(Liste(ProduitClasse_Vdx, "3000001"),
              "A01B@3000001@Antalgiques non opiac\xE9s\r\nZ99@3000001@Libell\xE9 inconnu");
    EXPECT_EQ(Liste(ProduitClasse_Vdx, "3000007"), "A01@3000007@Antalgiques");
    EXPECT_EQ(Liste(ProduitClasse_Vdx, "3000002"), "0");
    EXPECT_EQ(Liste(ProduitClasse_Vdx, "300000"), "-13");
    EXPECT_EQ(Liste(ProduitClasse_Vdx, nullptr), "-10");
}

TEST_F(ComposantsProduit, RoutesOfAProductWithTheMissingRouteSaidSo) {
    EXPECT_EQ(Liste(ListeVoie_Vdx, "3000001"), "ORAL@Voie orale\r\nRECT@Code RECT introuvable");
    EXPECT_EQ(Liste(ListeVoie_Vdx, "3000002"), "0");
    EXPECT_EQ(Liste(ListeVoie_Vdx, ""), "-10");
}

}  // namespace
}  // namespace vdx
