// The C exports of the advisories on one product: the heat wave and the
// kosher rating.
#include <cstring>

#include "checks/avis.h"
#include "exports/declaration.h"
#include "session/codeproduit.h"
#include "session/resultat.h"
#include "session/texte.h"

using namespace vdx;
using exports::Noms;

// The code is checked before the connection: absent -10, of a length other
// than 7 -13 (a 13-digit code is mapped under CIP13Actif 1). 1 concerned, 0
// not; without a route of the whole body nothing is delivered.
VDX_EXPORT(IsCanicule_Vdx, Libre, Noms("Texte"), (Texte, Code), (ChaineSortie, Texte)) {
    if (!Code || !*Code) throw Echec{Argument1};
    const size_t longueur = strnlen(Code, LongueurCodeMax + 1);
    if (longueur != LongueurCIP && !(session().CIP13Actif == CIP13Correspondance && longueur == LongueurCIP13))
        throw Echec{CodeMalForme};
    if (!session().Connecte) return NonConnecte;
    const std::string cip = CodeProduit(Code);
    if (session().ModeSortie == ModeTableau) RangeChaine(Texte, std::nullopt);
    const AvisCanicule avis = Canicule(session(), cip);
    if (!avis.voieGenerale) return Rien;
    LivreValeur(Texte, avis.phrase, Argument2);
    return avis.concerne ? Succes : Rien;
}

VDX_EXPORT(IsMediel_Vdx, Chaines, Noms("Mediel"), (Texte, Code), (ChaineSortie, Sortie)) {
    if (!Code || !*Code) throw Echec{Argument1};
    if (strnlen(Code, LongueurCIP + 1) != LongueurCIP) throw Echec{CodeMalForme};
    LivreValeur(Sortie, std::to_string(MedielDuProduit(session(), Code)), Argument2);
    return Succes;
}

VDX_EXPORT(ProduitMediel_Vdx, Connecte, NomsDesChamps<LigneMediel>(), (Tableau, Tableau)) {
    Resultat resultat(Tableau, GabaritDe<LigneMediel>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LigneMediel>(ProduitsMediel(session())));
    return resultat.Livre();
}
