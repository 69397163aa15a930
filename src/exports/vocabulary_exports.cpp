// The C exports of the reference vocabularies: the step and keyword searches
// of every vocabulary, their label lookups, and Lexico_Vdx.
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "vocabulary/ald.h"
#include "vocabulary/lexico.h"
#include "vocabulary/libelles.h"
#include "vocabulary/recherche.h"
#include "search/termes.h"

using namespace vdx;
using exports::Noms;
using exports::TexteDe;
namespace voc = vdx::vocabulaires;

namespace {

// A step search: a text beginning with a blank gives 0 before anything
// else, the host's array untouched.
int32_t Pas(const Vocabulaire& v, const char* texte, SAFEARRAY** tableau, const char* suite, int32_t nombre) {
    if (TexteDe(texte).starts_with(' ')) return Rien;
    Resultat resultat(tableau, v.gabarit, Argument2);
    resultat.Prend(PasVocabulaire(v, TexteDe(texte), TexteDe(suite), nombre));
    return resultat.Livre();
}

int32_t Mot(const Vocabulaire& v, const char* mot1, const char* mot2, int32_t partout, SAFEARRAY** tableau) {
    if (TexteDe(mot1).empty() && TexteDe(mot2).empty()) throw Echec{Argument1};
    Resultat resultat(tableau, v.gabarit, Argument5);
    resultat.Prend(MotVocabulaire(v, TexteDe(mot1), TexteDe(mot2), partout != 0));
    return resultat.Livre();
}

int32_t Famille(const Vocabulaire& v, const char* mot, SAFEARRAY** tableau, const char* prefixe) {
    if (TexteDe(mot).empty()) throw Echec{Argument1};
    Resultat resultat(tableau, v.gabarit, Argument2);
    resultat.Prend(MotFamille(v, TexteDe(mot), TexteDe(prefixe)));
    return resultat.Livre();
}

// A label: -10 for a code absent, empty or of 11 characters or more, -90
// for an unknown code; the label as a single text (8-bit in mode 0).
int32_t LibelleDuCode(const Vocabulaire& (*vocabulaire)(std::string_view), const char* code, BSTR* libelle) {
    const std::string_view texteCode = exports::TexteBorne(code, LongueurCodeVocabulaire);
    if (texteCode.empty() || texteCode.size() > LongueurCodeVocabulaire) throw Echec{Argument1};
    const std::optional<std::string> texte = LibelleVocabulaire(vocabulaire(texteCode), texteCode);
    if (!texte) throw Echec{CodeInconnu};
    LivreValeur(libelle, *texte, Argument2);
    return Succes;
}

}  // namespace

// The searches differ only by their vocabulary and the fields of their rows.
#define RECHERCHE_PAR_PAS(Nom, V, champs)                                                            \
    VDX_EXPORT(Nom, Connecte, champs, (Texte, Texte), (Tableau, Tableau), (Texte, Suite), (Entier, Nombre)) { \
        return Pas(voc::V(), Texte, Tableau, Suite, Nombre);                                        \
    }
#define RECHERCHE_LEXICO(Nom, V)                                                                          \
    VDX_EXPORT(Nom, Connecte, Noms("Code", "Libelle"), (Texte, Mot1), (Texte, Mot2), (Entier, Partout),           \
               (Tableau, Tableau)) {                                                                              \
        return Mot(voc::V(), Mot1, Mot2, Partout, Tableau);                                             \
    }
#define RECHERCHE_FAMILLE(Nom, V)                                                                        \
    VDX_EXPORT(Nom, Connecte, Noms("Code", "Libelle", "Texte"), (Texte, Mot), (Tableau, Tableau), (Texte, Prefixe)) { \
        return Famille(voc::V(), Mot, Tableau, Prefixe);                                                \
    }
#define LIBELLE(Nom, V)                                                                  \
    VDX_EXPORT(Nom, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {           \
        return LibelleDuCode([](std::string_view) -> const Vocabulaire& { return voc::V(); }, Code, Libelle); \
    }

VDX_EXPORT(ListeALD_Vdx, Connecte, NomsDesChamps<LigneALD>(), (Tableau, Tableau)) {
    Resultat resultat(Tableau, GabaritDe<LigneALD>(), Argument2);
    resultat.Prend(LignesSelon<LigneALD>(ListeALD()));
    return resultat.Livre();
}

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

// The CISP codes of a CIM10 code (Type 3) or of a term (Type 1).
VDX_EXPORT(RechercheCISP_Vdx, Connecte, NomsDesChamps<CISPLie>(), (Texte, Code), (Entier, Type), (Tableau, Tableau)) {
    const std::string_view code = TexteDe(Code);
    if (code.empty()) throw Echec{Argument1};
    if (Type != ParTerme && Type != ParCIM10) throw Echec{Argument2};
    Resultat resultat(Tableau, GabaritDe<CISPLie>(), Argument3);
    resultat.Prend(LignesSelon<CISPLie>(CISPLies(code, Type)));
    return resultat.Livre();
}

// Labels.

VDX_EXPORT(LibelleCIM10_Vdx, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {
    return LibelleDuCode(VocabulaireCIM10, Code, Libelle);
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
    if (exports::TexteBorne(MotsCherches, LongueurMinLexico).size() < LongueurMinLexico)
        throw Echec{RechercheTropCourte};
    vdx::Resultat lignes(Resultat, GabaritLexico, Argument2);
    lignes.Prend(Lexico(MotsCherches, TexteDe(MotsExclus), Options, Debut, Nombre));
    return lignes.Livre();
}
