// The exchange sort by an integer key leaves rows in the order of the
// exchange sort itself, ties included.
#include "checks/tri.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>
#include <vector>

namespace vdx {
namespace {

TEST(TriEchangeParCle, LeavesEqualKeysWhereTheExchangeSortLeavesThem) {
    std::mt19937 hasard(20261125);
    for (const int cles : {1, 2, 5, 40}) {
        for (const size_t taille : {0u, 1u, 2u, 7u, 60u, 500u}) {
            // A row is its key and its rank before the sort.
            std::vector<std::pair<int, size_t>> lignes;
            for (size_t i = 0; i < taille; ++i) lignes.emplace_back(static_cast<int>(hasard() % cles) - 2, i);
            auto attendu = lignes;
            TriEchange(attendu, [](const auto& a, const auto& b) { return a.first < b.first; });
            TriEchangeParCle(lignes, [](const auto& r) { return r.first; });
            EXPECT_EQ(lignes, attendu) << cles << " keys, " << taille << " rows";
        }
    }
}

}  // namespace
}  // namespace vdx
