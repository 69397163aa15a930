// The C exports of the reference vocabularies: the step and keyword searches
// of every vocabulary, their label lookups, and Lexico_Vdx.
#include "vdx32/vdx32.h"
#include "vocabulary/ald.h"
#include "vocabulary/lexico.h"
#include "vocabulary/libelles.h"
#include "vocabulary/recherche.h"

namespace voc = vdx::vocabulaires;

extern "C" {

VDX_API int32_t VDX_CALL ListeALD_Vdx(SAFEARRAY** Tableau) { return vdx::ListeALD(Tableau); }

// Searches of the engines.

VDX_API int32_t VDX_CALL RechercheAMMParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                int32_t Nombre) {
    return vdx::PasVocabulaire(voc::AMM, "RechercheAMMParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheAMMLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::AMM, "RechercheAMMLexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

VDX_API int32_t VDX_CALL RechercheAllergieAMMParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                        int32_t Nombre) {
    return vdx::PasVocabulaire(voc::AllergieAMM, "RechercheAllergieAMMParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheAllergieAMMLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                        SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::AllergieAMM, "RechercheAllergieAMMLexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

VDX_API int32_t VDX_CALL RechercheCIM10ParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                  int32_t Nombre) {
    return vdx::PasVocabulaire(voc::CIM10, "RechercheCIM10ParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheCIM10Lexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                  SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::CIM10, "RechercheCIM10Lexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

VDX_API int32_t VDX_CALL RechercheCISPParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                 int32_t Nombre) {
    return vdx::PasVocabulaire(voc::CISP, "RechercheCISPParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheCISPLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                 SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::CISP, "RechercheCISPLexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

VDX_API int32_t VDX_CALL RecherchePAParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                               int32_t Nombre) {
    return vdx::PasVocabulaire(voc::PA, "RecherchePAParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RecherchePALexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                               SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::PA, "RecherchePALexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

VDX_API int32_t VDX_CALL RechercheExcipientParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre) {
    return vdx::PasVocabulaire(voc::ExcipientParPas, "RechercheExcipientParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheExcipientLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                      SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::Excipient, "RechercheExcipientLexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

VDX_API int32_t VDX_CALL RechercheEENParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                int32_t Nombre) {
    return vdx::PasVocabulaire(voc::EEN, "RechercheEENParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheEENLexico_Vdx(const char* Mot1, const char* Mot2, int32_t Partout,
                                                SAFEARRAY** Tableau) {
    return vdx::MotVocabulaire(voc::EEN, "RechercheEENLexico_Vdx", Mot1, Mot2, Partout, Tableau);
}

// Searches of the copies, in the shape of RechercheFamilleLexico_Vdx for the keyword ones.

VDX_API int32_t VDX_CALL RechercheClasseParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                   int32_t Nombre) {
    return vdx::PasVocabulaire(voc::Classe, "RechercheClasseParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheClasseATCParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre) {
    return vdx::PasVocabulaire(voc::ClasseATC, "RechercheClasseATCParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheClasseDCIParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre) {
    return vdx::PasVocabulaire(voc::ClasseDCI, "RechercheClasseDCIParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheFormeParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                  int32_t Nombre) {
    return vdx::PasVocabulaire(voc::Forme, "RechercheFormeParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheLaboratoireParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                        int32_t Nombre) {
    return vdx::PasVocabulaire(voc::Laboratoire, "RechercheLaboratoireParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheExamenParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                   int32_t Nombre) {
    return vdx::PasVocabulaire(voc::Examen, "RechercheExamenParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheItemParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                 int32_t Nombre) {
    return vdx::PasVocabulaire(voc::Item, "RechercheItemParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheDicoPathoParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                      int32_t Nombre) {
    return vdx::PasVocabulaire(voc::DicoPatho, "RechercheDicoPathoParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

VDX_API int32_t VDX_CALL RechercheMedDCParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, const char* Suite,
                                                  int32_t Nombre) {
    return vdx::PasVocabulaire(voc::MedDC, "RechercheMedDCParPas_Vdx", Texte, Tableau, Suite, Nombre);
}

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
