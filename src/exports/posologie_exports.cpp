// The C exports of the posology's vocabularies: the lists a host builds a
// posology from, and the label of a code of each.
#include "exports/declaration.h"
#include "posology/vocabulaire.h"
#include "session/resultat.h"

using namespace vdx;
using exports::Noms;

namespace {

namespace voc = vocabulaires_posologie;

// A vocabulary's records sorted by label into the host's array (-20 when
// absent in mode 0) or the flat text: 1.
int32_t Liste(const VocabulairePosologie& vocabulaire, bool avecCycle, SAFEARRAY** tableau) {
    Resultat resultat(tableau, GabaritDe<MotPosologie>(), Argument2);
    resultat.Prend(LignesSansCleSelon<MotPosologie>(MotsPosologie(vocabulaire, avecCycle)));
    resultat.Livre();
    return Succes;
}

// The label of a code into the host string: 1, or -90 for an unknown code.
int32_t Libelle(const VocabulairePosologie& vocabulaire, int32_t code, BSTR* libelle) {
    const std::optional<std::string> texte = LibellePosologie(vocabulaire, code);
    if (!texte) throw Echec{CodeInconnu};
    LivreValeur(libelle, *texte, Argument2);
    return Succes;
}

}  // namespace

#define LISTE_POSOLOGIE(Nom, V, avecCycle)                                                  \
    VDX_EXPORT(Nom, Connecte, NomsDesChamps<MotPosologie>(), (Tableau, Tableau)) {            \
        return Liste(voc::V(), avecCycle, Tableau);                                           \
    }
LISTE_POSOLOGIE(PosoMoments_Vdx, Moments, false)
LISTE_POSOLOGIE(PosoSpecificationsPrise_Vdx, Specifications, false)
LISTE_POSOLOGIE(PosoUnitesPrise_Vdx, UnitesPrise, false)
LISTE_POSOLOGIE(PosoDurees_Vdx, Durees, true)

#define LIBELLE_POSOLOGIE(Nom, V)                                                           \
    VDX_EXPORT(Nom, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {     \
        return ::Libelle(voc::V(), Code, Libelle);                                            \
    }
LIBELLE_POSOLOGIE(LibelleMoment_Vdx, Moments)
LIBELLE_POSOLOGIE(LibelleDurees_Vdx, Durees)
LIBELLE_POSOLOGIE(LibelleSpecification_Vdx, Specifications)
LIBELLE_POSOLOGIE(LibelleNature_Vdx, Natures)
LIBELLE_POSOLOGIE(LibelleVoie_Vdx, Voies)
LIBELLE_POSOLOGIE(LibelleProfil_Vdx, Profils)

VDX_EXPORT(LibelleUnitePrise_Vdx, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {
    if (Code < 1) throw Echec{Argument1};
    return ::Libelle(voc::UnitesPrise(), Code, Libelle);
}

// Read from no table: the label of a terrain's letters, empty for others.
VDX_EXPORT(LibelleTerrain_Vdx, Chaines, Noms("Libelle"), (Texte, Terrain), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibelleTerrain(Terrain ? std::string_view(Terrain) : std::string_view()), Argument2);
    return Succes;
}
