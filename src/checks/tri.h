// The exchange sort of the checks' rows: each position is compared with
// every later one and the two swapped when the first stands above. Kept
// as it is, rather than a library sort, for the order it leaves equal rows in.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace vdx {

template <class T, class Dessus>
void TriEchange(std::vector<T>& lignes, Dessus dessus) {
    for (size_t p = 0; p < lignes.size(); ++p)
        for (size_t q = p + 1; q < lignes.size(); ++q)
            if (dessus(lignes[p], lignes[q])) std::swap(lignes[p], lignes[q]);
}

// The same exchange sort when a row stands above another whose integer key
// is greater, leaving the rows in the very same order, in O(n k log n) for
// k distinct keys rather than O(n^2): a pass over position p swaps only
// with the next later row whose key is greater than the one p holds, and
// the positions of each key are kept in order to find it.
template <class T, class Cle>
void TriEchangeParCle(std::vector<T>& lignes, Cle cle) {
    // A short list is quicker sorted by the exchange sort itself.
    constexpr size_t Court = 64;
    if (lignes.size() <= Court) return TriEchange(lignes, [&](const T& a, const T& b) { return cle(a) < cle(b); });
    std::map<decltype(cle(lignes.front())), std::set<size_t>> positions;
    for (size_t i = 0; i < lignes.size(); ++i) positions[cle(lignes[i])].insert(i);
    for (size_t p = 0; p < lignes.size(); ++p) {
        size_t depuis = p;
        for (auto valeur = cle(lignes[p]);;) {
            size_t q = lignes.size();
            for (auto it = positions.upper_bound(valeur); it != positions.end(); ++it)
                if (auto suivante = it->second.upper_bound(depuis); suivante != it->second.end() && *suivante < q)
                    q = *suivante;
            if (q == lignes.size()) break;
            const auto autre = cle(lignes[q]);
            positions[valeur].erase(p);
            positions[autre].erase(q);
            std::swap(lignes[p], lignes[q]);
            positions[valeur].insert(q);
            positions[autre].insert(p);
            valeur = autre;
            depuis = q;
        }
        positions[cle(lignes[p])].erase(p);
    }
}

}  // namespace vdx
