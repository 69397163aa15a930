// What only the library's own OLE automation can check (Linux): the block
// behind each array. The system's oleaut32 takes a host's bounds as given.
#include <gtest/gtest.h>

#include "tests/support/livraison_essai.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

using essai::Livraison;

// Bounds a host wrote over, claiming more elements than the array's block
// holds, are refused with the array's code before anything is read or
// written past the block.
TEST_F(Livraison, ADescriptorClaimingMoreThanItsBlockIsRefused) {
    Connecte(0);
    SAFEARRAY* tableau = essai::TableauDeFiches(2);
    ASSERT_EQ(ListeALD_Vdx(&tableau), 3);
    tableau->rgsabound[0].cElements = 100000;
    EXPECT_EQ(ListeALD_Vdx(&tableau), VDX_OPERATION_TABLEAU);
    tableau->rgsabound[0].cElements = 3;
    VideTableau(tableau, {TypeChamp::Entier, TypeChamp::Texte});
    SafeArrayDestroy(tableau);

    SAFEARRAY* produits = SafeArrayCreateVector(VT_BSTR, 0, 2);
    produits->rgsabound[0].cElements = 100000;
    SAFEARRAY* lignes = essai::TableauDeFiches(23);
    EXPECT_EQ(Interactions2_Vdx(&produits, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), VDX_OPERATION_TABLEAU);
    produits->rgsabound[0].cElements = 2;
    SafeArrayDestroy(produits);
    SafeArrayDestroy(lignes);
}

}  // namespace
}  // namespace vdx
