#include "vocabulary/ald.h"

#include <cstdlib>
#include <string>

#include "session/cadre.h"
#include "session/tables.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
std::vector<LigneALD> ListeALD() {
    const Table& ald = TableDuCatalogue("VDXYALD");
    std::vector<LigneALD> resultat;
    TablesOuvertes tables{&ald};
    Curseur curseur(ald);
    auto position = curseur.Premiere();
    if (!position) throw Echec{CodeInconnu};
    for (; position; position = curseur.Suivante()) {
        const std::string octets = FicheA(ald, *position);
        const Fiche fiche(octets);
        const int32_t code = std::atoi(std::string(fiche.Texte(VDXYALD::Code)).c_str());
        resultat.push_back({code, std::string(fiche.Texte(VDXYALD::Libelle))});
    }
    tables.Ferme();
    return resultat;
}

}  // namespace vdx
