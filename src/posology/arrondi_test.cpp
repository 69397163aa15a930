#include "posology/arrondi.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace vdx {
namespace {

using Cas = std::vector<std::pair<float, float>>;

void Verifie(int32_t code, const Cas& cas) {
    for (const auto& [valeur, attendu] : cas)
        EXPECT_FLOAT_EQ(ArrondiDose(valeur, code), attendu) << "code " << code << ", " << valeur;
}

TEST(ArrondiDose, FractionsOfAUnit) {
    Verifie(1, {{2.4f, 2}, {2.5f, 3}, {7.7f, 8}});
    Verifie(2, {{1.2f, 1}, {1.3f, 1.5f}, {1.75f, 2}});
    Verifie(4, {{1.3f, 1.25f}, {1.4f, 1.5f}, {0.9f, 1}});
    Verifie(5, {{1.13f, 1.2f}, {1.09f, 1}});
    Verifie(10, {{1.26f, 1.3f}, {1.24f, 1.2f}});
    Verifie(20, {{1.26f, 1.25f}, {1.28f, 1.3f}});
}

TEST(ArrondiDose, AHalfGoesUpAndADoseNeverRoundsToNothing) {
    Verifie(1, {{0.5f, 1}, {3.5f, 4}, {0.3f, 1}});
    Verifie(2, {{1.25f, 1.5f}, {0.1f, 0.5f}});
    Verifie(4, {{1.125f, 1.25f}, {0.1f, 0.25f}});
    Verifie(20, {{0.01f, 0.05f}});
    Verifie(100, {{0.000001f, 0.00001f}});
}

TEST(ArrondiDose, SignificantFiguresBySize) {
    // Each value sits where the neighbouring band's factor would give another result.
    Verifie(100, {{0.123456f, 0.12346f}, {1.23456f, 1.23f}, {10.55f, 10.6f}, {100.5f, 101}, {1234, 1230},
                  {1000.5f, 1000}, {12345, 12300}, {123456, 123000}, {1234567, 1230000}, {98765432, 98770000}});
    // Around the bounds: just below stays in the band below, the bound starts the band above.
    Verifie(100, {{0.99999f, 0.99999f}, {9.99f, 9.99f}, {10.05f, 10.1f}, {999.4f, 999}, {10000, 10000}});
}

TEST(ArrondiDose, OtherCodesAndZeroLeaveTheValue) {
    for (int32_t code : {-1, 0, 3, 50, 99, 101, 1000}) Verifie(code, {{7.7f, 7.7f}});
    for (int32_t code : {0, 1, 2, 4, 5, 10, 20, 100}) Verifie(code, {{0, 0}});
}

TEST(ArrondiDose, SwitchedOffForTheLengthOfAGuard) {
    ASSERT_EQ(ArrondiActif, 1);
    {
        SansArrondi sans;
        EXPECT_EQ(ArrondiActif, 0);
        Verifie(4, {{1.3f, 1.3f}, {0.1f, 0.1f}});
    }
    EXPECT_EQ(ArrondiActif, 1);
    Verifie(4, {{1.3f, 1.25f}});
}

}  // namespace
}  // namespace vdx
