#include "platform/horloge.h"

#include <gtest/gtest.h>

namespace vdx {
namespace {

TEST(Horloge, DateFixeeParLesTests) {
    horloge::FixeDate(horloge::Date{31, 1, 2017});
    const horloge::Date d = horloge::Aujourdhui();
    EXPECT_EQ(d.jour, 31);
    EXPECT_EQ(d.mois, 1);
    EXPECT_EQ(d.annee, 2017);
    horloge::FixeDate(std::nullopt);
    const horloge::Date vraie = horloge::Aujourdhui();
    EXPECT_GE(vraie.mois, 1);
    EXPECT_LE(vraie.mois, 12);
    EXPECT_GE(vraie.annee, 2024);
}

}  // namespace
}  // namespace vdx
