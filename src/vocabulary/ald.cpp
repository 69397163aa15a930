#include "vocabulary/ald.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "session/cadre.h"
#include "session/resultat.h"
#include "session/tables.h"

namespace vdx {
namespace {

// A text field of a record: from its offset to its NUL or the record's end.
std::string_view TexteA(const std::string& fiche, size_t decalage, size_t largeur) {
    if (decalage >= fiche.size()) return {};
    const char* debut = fiche.data() + decalage;
    return {debut, strnlen(debut, std::min(largeur, fiche.size() - decalage))};
}

}  // namespace

int32_t ListeALD(SAFEARRAY** tableau) {
    return CadreConnecte("ListeALD_Vdx", [&]() -> int32_t {
        const Table& ald = *TableNommee("VDXYALD");
        Resultat resultat(tableau, {TypeChamp::Entier, TypeChamp::Texte}, Argument2);
        TablesOuvertes tables{&ald};
        Curseur curseur(ald);
        auto position = curseur.Premiere();
        if (!position) throw Echec{CodeInconnu};
        for (; position; position = curseur.Suivante()) {
            const std::string fiche = FicheA(ald, *position);
            const int32_t code = std::atoi(std::string(TexteA(fiche, 0, 3)).c_str());
            resultat.AjouteLigne({code, std::string(TexteA(fiche, 3, fiche.size()))});
        }
        const int32_t nombre = resultat.Livre();
        tables.Ferme();
        return nombre;
    });
}

}  // namespace vdx
