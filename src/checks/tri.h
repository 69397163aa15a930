// The exchange sort of the checks' rows: each position is compared with
// every later one and the two swapped when the first stands above. Kept
// as it is, rather than a library sort, for the order it leaves equal rows in.
#pragma once

#include <utility>
#include <vector>

namespace vdx {

template <class T, class Dessus>
void TriEchange(std::vector<T>& lignes, Dessus dessus) {
    for (size_t p = 0; p < lignes.size(); ++p)
        for (size_t q = p + 1; q < lignes.size(); ++q)
            if (dessus(lignes[p], lignes[q])) std::swap(lignes[p], lignes[q]);
}

}  // namespace vdx
