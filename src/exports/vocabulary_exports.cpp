// The C exports of the reference vocabularies: the step and keyword searches
// of every vocabulary, their label lookups, and Lexico_Vdx.
#include "vdx32/vdx32.h"
#include "vocabulary/ald.h"
#include "vocabulary/lexico.h"
#include "vocabulary/libelles.h"
#include "vocabulary/recherche.h"

namespace voc = vdx::vocabulaires;

// The searches differ only by their vocabulary: each export is named once,
// and its name in the frame's messages is that same name.
#define RECHERCHE_PAR_PAS(Nom, Vocabulaire)                                                                  \
    VDX_API int32_t VDX_CALL Nom(const char* Texte, SAFEARRAY** Tableau, const char* Suite, int32_t Nombre) { \
        return vdx::PasVocabulaire(voc::Vocabulaire, #Nom, Texte, Tableau, Suite, Nombre);                  \
    }
#define RECHERCHE_LEXICO(Nom, Vocabulaire)                                                                    \
    VDX_API int32_t VDX_CALL Nom(const char* Mot1, const char* Mot2, int32_t Partout, SAFEARRAY** Tableau) { \
        return vdx::MotVocabulaire(voc::Vocabulaire, #Nom, Mot1, Mot2, Partout, Tableau);                    \
    }

extern "C" {

VDX_API int32_t VDX_CALL ListeALD_Vdx(SAFEARRAY** Tableau) { return vdx::ListeALD(Tableau); }

// Searches of the engines.

RECHERCHE_PAR_PAS(RechercheAMMParPas_Vdx, AMM)

RECHERCHE_LEXICO(RechercheAMMLexico_Vdx, AMM)

RECHERCHE_PAR_PAS(RechercheAllergieAMMParPas_Vdx, AllergieAMM)

RECHERCHE_LEXICO(RechercheAllergieAMMLexico_Vdx, AllergieAMM)

RECHERCHE_PAR_PAS(RechercheCIM10ParPas_Vdx, CIM10)

RECHERCHE_LEXICO(RechercheCIM10Lexico_Vdx, CIM10)

RECHERCHE_PAR_PAS(RechercheCISPParPas_Vdx, CISP)

RECHERCHE_LEXICO(RechercheCISPLexico_Vdx, CISP)

RECHERCHE_PAR_PAS(RecherchePAParPas_Vdx, PA)

RECHERCHE_LEXICO(RecherchePALexico_Vdx, PA)

RECHERCHE_PAR_PAS(RechercheExcipientParPas_Vdx, ExcipientParPas)

RECHERCHE_LEXICO(RechercheExcipientLexico_Vdx, Excipient)

RECHERCHE_PAR_PAS(RechercheEENParPas_Vdx, EEN)

RECHERCHE_LEXICO(RechercheEENLexico_Vdx, EEN)

// Searches of the copies, in the shape of RechercheFamilleLexico_Vdx for the keyword ones.

RECHERCHE_PAR_PAS(RechercheClasseParPas_Vdx, Classe)

RECHERCHE_PAR_PAS(RechercheClasseATCParPas_Vdx, ClasseATC)

RECHERCHE_PAR_PAS(RechercheClasseDCIParPas_Vdx, ClasseDCI)

RECHERCHE_PAR_PAS(RechercheFormeParPas_Vdx, Forme)

RECHERCHE_PAR_PAS(RechercheLaboratoireParPas_Vdx, Laboratoire)

RECHERCHE_PAR_PAS(RechercheExamenParPas_Vdx, Examen)

RECHERCHE_PAR_PAS(RechercheItemParPas_Vdx, Item)

RECHERCHE_PAR_PAS(RechercheDicoPathoParPas_Vdx, DicoPatho)

RECHERCHE_PAR_PAS(RechercheMedDCParPas_Vdx, MedDC)

VDX_API int32_t VDX_CALL RechercheClasseLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::Classe, "RechercheClasseLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheClasseATCLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::ClasseATC, "RechercheClasseATCLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheClasseDCILexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::ClasseDCI, "RechercheClasseDCILexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheFamilleLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::Famille, "RechercheFamilleLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheFormeLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::Forme, "RechercheFormeLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheExamenLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::Examen, "RechercheExamenLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheItemLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::Item, "RechercheItemLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheDicoPathoLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::DicoPatho, "RechercheDicoPathoLexico_Vdx", Mot, Tableau, Prefixe);
}

VDX_API int32_t VDX_CALL RechercheMedDCLexico_Vdx(const char* Mot, SAFEARRAY** Tableau, const char* Prefixe) {
    return vdx::MotFamille(voc::MedDC, "RechercheMedDCLexico_Vdx", Mot, Tableau, Prefixe);
}

// Labels.

VDX_API int32_t VDX_CALL LibelleCIM10_Vdx(const char* Code, BSTR* Libelle) { return vdx::LibelleCIM10(Code, Libelle); }

VDX_API int32_t VDX_CALL LibelleCISP_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::CISP, "LibelleCISP_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL LibelleAMM_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::AMM, "LibelleAMM_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL LibelleClasse_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::Classe, "LibelleClasse_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL LibelleClasseATC_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::ClasseATC, "LibelleClasseATC_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL LibelleForme_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::Forme, "LibelleForme_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL LibelleLaboratoire_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::Laboratoire, "LibelleLaboratoire_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL LibelleFamille_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleExport(voc::Famille, "LibelleFamille_Vdx", Code, Libelle);
}

VDX_API int32_t VDX_CALL Lexico_Vdx(SAFEARRAY** Resultat, const char* MotsCherches, const char* MotsExclus,
                                    int32_t Options, int32_t Debut, int32_t Nombre) {
    return vdx::Lexico(Resultat, MotsCherches, MotsExclus, Options, Debut, Nombre);
}

}  // extern "C"
