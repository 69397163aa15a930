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

uint16_t Nombre(std::string_view mot) {
    uint16_t n = 0;
    std::from_chars(mot.data() + 1, mot.data() + mot.size(), n);
    return n;
}

}  // namespace

std::vector<ChampRangee> ChampsDe(const Rangee& rangee) {
    const Disposition& d = DispositionDe(*TableNommee(rangee.table));
    std::vector<ChampRangee> champs;
    std::string_view reste = rangee.champs;
    while (!reste.empty()) {
        const size_t blanc = reste.find(' ');
        const std::string_view mot = reste.substr(0, blanc);
        reste = blanc == std::string_view::npos ? std::string_view() : reste.substr(blanc + 1);
        switch (mot[0]) {
            case 'T': champs.push_back({ChampRangee::Texte, Nombre(mot), TexteA(d, Nombre(mot))}); break;
            case 'E': champs.push_back({ChampRangee::Entier, Nombre(mot)}); break;
            case 'R': champs.push_back({ChampRangee::Reel, Nombre(mot)}); break;
            case 'K': champs.push_back({ChampRangee::CleExterne, 0, ChampTexte::De(d.champsCle.at(0))}); break;
            case 'C': champs.push_back({ChampRangee::Partie, Nombre(mot)}); break;
            case 't': champs.push_back({ChampRangee::Aparte}); break;
            default: champs.push_back({ChampRangee::Abandonne}); break;
        }
    }
    return champs;
}

const Rangee* RangeeDuMarqueur(std::string_view marqueur) {
    for (const Rangee& r : Rangees)
        if (r.marqueur == marqueur) return &r;
    return nullptr;
}

}  // namespace vdx::maj
