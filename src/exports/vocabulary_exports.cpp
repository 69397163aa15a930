// The C exports of the reference vocabularies: the step and keyword searches
// of every vocabulary, their label lookups, and Lexico_Vdx.
#include "exports/declaration.h"
#include "vocabulary/ald.h"
#include "vocabulary/lexico.h"
#include "vocabulary/libelles.h"
#include "vocabulary/recherche.h"

using namespace vdx;
using exports::Noms;
namespace voc = vdx::vocabulaires;

// The searches differ only by their vocabulary and the fields of their rows.
#define RECHERCHE_PAR_PAS(Nom, Vocabulaire, champs)                                                            \
    VDX_EXPORT(Nom, Connecte, champs, (Texte, Texte), (Tableau, Tableau), (Texte, Suite), (Entier, Nombre)) { \
        return PasVocabulaire(voc::Vocabulaire, Texte, Tableau, Suite, Nombre);                                \
    }
#define RECHERCHE_LEXICO(Nom, Vocabulaire)                                                                          \
    VDX_EXPORT(Nom, Connecte, Noms("Code", "Libelle"), (Texte, Mot1), (Texte, Mot2), (Entier, Partout),           \
               (Tableau, Tableau)) {                                                                              \
        return MotVocabulaire(voc::Vocabulaire, Mot1, Mot2, Partout, Tableau);                                    \
    }
#define RECHERCHE_FAMILLE(Nom, Vocabulaire)                                                                        \
    VDX_EXPORT(Nom, Connecte, Noms("Code", "Libelle", "Texte"), (Texte, Mot), (Tableau, Tableau), (Texte, Prefixe)) { \
        return MotFamille(voc::Vocabulaire, Mot, Tableau, Prefixe);                                               \
    }
#define LIBELLE(Nom, Vocabulaire)                                                                  \
    VDX_EXPORT(Nom, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {           \
        return LibelleExport(voc::Vocabulaire, Code, Libelle);                                    \
    }

VDX_EXPORT(ListeALD_Vdx, Connecte, Noms("Code", "Libelle"), (Tableau, Tableau)) { return ListeALD(Tableau); }

// Searches of the engines.

RECHERCHE_PAR_PAS(RechercheAMMParPas_Vdx, AMM, Noms("Code", "Libelle"))
RECHERCHE_PAR_PAS(RechercheAllergieAMMParPas_Vdx, AllergieAMM, Noms("Code", "Libelle"))
RECHERCHE_PAR_PAS(RechercheCIM10ParPas_Vdx, CIM10, Noms("Code", "Libelle"))
RECHERCHE_PAR_PAS(RechercheCISPParPas_Vdx, CISP, Noms("Code", "Libelle"))
RECHERCHE_PAR_PAS(RecherchePAParPas_Vdx, PA, Noms("Code", "Libelle"))
RECHERCHE_PAR_PAS(RechercheExcipientParPas_Vdx, ExcipientParPas, Noms("Code", "Libelle"))
RECHERCHE_PAR_PAS(RechercheEENParPas_Vdx, EEN, Noms("Code", "Libelle"))
RECHERCHE_LEXICO(RechercheAMMLexico_Vdx, AMM)
RECHERCHE_LEXICO(RechercheAllergieAMMLexico_Vdx, AllergieAMM)
RECHERCHE_LEXICO(RechercheCIM10Lexico_Vdx, CIM10)
RECHERCHE_LEXICO(RechercheCISPLexico_Vdx, CISP)
RECHERCHE_LEXICO(RecherchePALexico_Vdx, PA)
RECHERCHE_LEXICO(RechercheExcipientLexico_Vdx, Excipient)
RECHERCHE_LEXICO(RechercheEENLexico_Vdx, EEN)

// Searches of the copies, in the shape of RechercheFamilleLexico_Vdx for the keyword ones.

RECHERCHE_PAR_PAS(RechercheClasseParPas_Vdx, Classe, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheClasseATCParPas_Vdx, ClasseATC, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheClasseDCIParPas_Vdx, ClasseDCI, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheFormeParPas_Vdx, Forme, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheExamenParPas_Vdx, Examen, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheItemParPas_Vdx, Item, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheDicoPathoParPas_Vdx, DicoPatho, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheMedDCParPas_Vdx, MedDC, Noms("Code", "Libelle", "Texte"))
RECHERCHE_PAR_PAS(RechercheLaboratoireParPas_Vdx, Laboratoire, Noms("Code", "Libelle"))
RECHERCHE_FAMILLE(RechercheClasseLexico_Vdx, Classe)
RECHERCHE_FAMILLE(RechercheClasseATCLexico_Vdx, ClasseATC)
RECHERCHE_FAMILLE(RechercheClasseDCILexico_Vdx, ClasseDCI)
RECHERCHE_FAMILLE(RechercheFamilleLexico_Vdx, Famille)
RECHERCHE_FAMILLE(RechercheFormeLexico_Vdx, Forme)
RECHERCHE_FAMILLE(RechercheExamenLexico_Vdx, Examen)
RECHERCHE_FAMILLE(RechercheItemLexico_Vdx, Item)
RECHERCHE_FAMILLE(RechercheDicoPathoLexico_Vdx, DicoPatho)
RECHERCHE_FAMILLE(RechercheMedDCLexico_Vdx, MedDC)

// Labels.

VDX_EXPORT(LibelleCIM10_Vdx, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {
    return LibelleCIM10(Code, Libelle);
}
LIBELLE(LibelleCISP_Vdx, CISP)
LIBELLE(LibelleAMM_Vdx, AMM)
LIBELLE(LibelleClasse_Vdx, Classe)
LIBELLE(LibelleClasseATC_Vdx, ClasseATC)
LIBELLE(LibelleForme_Vdx, Forme)
LIBELLE(LibelleLaboratoire_Vdx, Laboratoire)
LIBELLE(LibelleFamille_Vdx, Famille)

VDX_EXPORT(Lexico_Vdx, Connecte, Noms("CodeCIP", "Libelle", "Texte"), (Tableau, Resultat), (Texte, MotsCherches),
           (Texte, MotsExclus), (Entier, Options), (Entier, Debut), (Entier, Nombre)) {
    return Lexico(Resultat, MotsCherches, MotsExclus, Options, Debut, Nombre);
}
