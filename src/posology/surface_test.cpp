#include "posology/surface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace vdx {
namespace {

TEST(SurfaceCorporelle, DuBoisFormula) {
    // An adult, a newborn, a tall heavy adult, in square metres.
    EXPECT_NEAR(SurfaceCorporelle(70, 170), 1.8097, 0.0005);
    EXPECT_NEAR(SurfaceCorporelle(3.5, 50), 0.2086, 0.0005);
    EXPECT_NEAR(SurfaceCorporelle(100, 190), 2.2828, 0.0005);
}

TEST(SurfaceCorporelle, UnknownOrWrongInputsGiveZero) {
    EXPECT_EQ(SurfaceCorporelle(0, 170), 0);
    EXPECT_EQ(SurfaceCorporelle(70, 0), 0);
    EXPECT_EQ(SurfaceCorporelle(0, 0), 0);
    EXPECT_EQ(SurfaceCorporelle(-70, 170), 0);
    EXPECT_EQ(SurfaceCorporelle(70, -170), 0);
    EXPECT_EQ(SurfaceCorporelle(std::nan(""), 170), 0);
}

TEST(SurfaceCorporelle, ExtremeInputsStayFinite) {
    const double plusGrand = std::numeric_limits<int32_t>::max();
    EXPECT_TRUE(std::isfinite(SurfaceCorporelle(plusGrand, plusGrand)));
    EXPECT_GT(SurfaceCorporelle(0.001, 1), 0);
}

}  // namespace
}  // namespace vdx
