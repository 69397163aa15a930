#include "vocabulary/ald.h"

#include <cstdlib>
#include <string>

#include "session/cadre.h"
#include "session/resultat.h"
#include "session/tables.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
int32_t ListeALD(SAFEARRAY** tableau) {
    const Table& ald = TableDuCatalogue("VDXYALD");
    Resultat resultat(tableau, {TypeChamp::Entier, TypeChamp::Texte}, Argument2);
    TablesOuvertes tables{&ald};
    Curseur curseur(ald);
    auto position = curseur.Premiere();
    if (!position) throw Echec{CodeInconnu};
    for (; position; position = curseur.Suivante()) {
        const std::string octets = FicheA(ald, *position);
        const Fiche fiche(octets);
        const int32_t code = std::atoi(std::string(fiche.Texte(VDXYALD::Code)).c_str());
        resultat.AjouteLigne({code, std::string(fiche.Texte(VDXYALD::Libelle))});
    }
    const int32_t nombre = resultat.Livre();
    tables.Ferme();
    return nombre;
}

}  // namespace vdx
