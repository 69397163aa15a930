#include "products/consultations.h"

#include <charconv>
#include <string>

#include "session/cadre.h"
#include "session/tables.h"

namespace vdx {
namespace {

// A decimal text as a number; 0 for a text that does not begin with one.
int32_t Decimal(std::string_view texte) {
    int32_t valeur = 0;
    std::from_chars(texte.data(), texte.data() + texte.size(), valeur);
    return valeur;
}

// The record of a product in the table of a lookup.
std::string FicheConsultee(const Consultation& c, const std::string& cip) {
    const Table& table = c.table();
    TablesOuvertes tables{&table};
    std::string octets = FicheRequise(table, cip);
    tables.Ferme();
    return octets;
}

}  // namespace

std::string TexteConsulte(const Consultation& c, const std::string& cip) {
    const std::string octets = FicheConsultee(c, cip);
    return std::string(Fiche(octets).Texte(ChampTexte::De(c.champ)));
}

int32_t ValeurConsultee(const Consultation& c, const std::string& cip) {
    const std::string octets = FicheConsultee(c, cip);
    const Fiche fiche(octets);
    switch (c.lecture) {
        case Lecture::Nombre:
            return c.champ.nature == NatureChamp::Texte ? Decimal(fiche.Texte(ChampTexte::De(c.champ)))
                                                         : fiche.Entier(ChampEntier::De(c.champ));
        case Lecture::Bit: return (fiche.Entier(ChampEntier::De(c.champ)) & c.bit) != 0 ? Succes : Rien;
        case Lecture::Oui: return fiche.Entier(ChampEntier::De(c.champ)) != 0 ? Succes : Rien;
        case Lecture::Texte: break;
    }
    throw FauteInterne("consultation d'un texte");
}

}  // namespace vdx
