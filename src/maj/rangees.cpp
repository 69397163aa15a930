#include "maj/rangees.h"

#include <charconv>
#include <stdexcept>

#include "store/catalogue.h"
#include "store/layouts.h"

namespace vdx::maj {

namespace {

ChampTexte TexteA(const Disposition& d, uint16_t decalage) {
    for (const Champ& c : d.champs)
        if (c.decalage == decalage && c.nature == NatureChamp::Texte) return ChampTexte::De(c);
    throw std::logic_error("pas de texte a ce decalage");
}

}  // namespace

std::vector<ChampRangee> ChampsDe(const RangeeParCle& rangee) {
    const Disposition& d = DispositionDe(*TableNommee(rangee.table));
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
        if (c.genre == ChampRangee::Texte) c.texte = TexteA(d, c.decalage);
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
