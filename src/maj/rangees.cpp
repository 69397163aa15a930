#include "maj/rangees.h"

#include <charconv>
#include <stdexcept>

namespace vdx::maj {

std::vector<ChampRangee> ChampsDe(const RangeeParCle& rangee) {
    std::vector<ChampRangee> champs;
    std::string_view reste = rangee.champs;
    while (!reste.empty()) {
        const size_t blanc = reste.find(' ');
        const std::string_view mot = reste.substr(0, blanc);
        reste = blanc == std::string_view::npos ? std::string_view() : reste.substr(blanc + 1);
        if (mot == "-") {
            champs.push_back({ChampRangee::Abandonne});
            continue;
        }
        ChampRangee c{mot[0] == 'T' ? ChampRangee::Texte : mot[0] == 'E' ? ChampRangee::Entier : ChampRangee::Reel};
        std::from_chars(mot.data() + 1, mot.data() + mot.size(), c.decalage);
        champs.push_back(c);
    }
    return champs;
}

const RangeeParCle* RangeeDuMarqueur(std::string_view marqueur) {
    for (const RangeeParCle& r : RangeesParCle)
        if (r.marqueur == marqueur) return &r;
    return nullptr;
}

const RangeeParCle* RangeeDeLaTable(std::string_view table) {
    for (const RangeeParCle& r : RangeesParCle)
        if (r.table == table) return &r;
    return nullptr;
}

}  // namespace vdx::maj
