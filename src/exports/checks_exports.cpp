// The C exports of the safety checks.
#include "checks/contreindications.h"
#include "checks/interactions.h"
#include "vdx32/vdx32.h"

extern "C" {

VDX_API int32_t VDX_CALL ContreIndicationsProfil2_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                      SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                      SAFEARRAY** Tableau, int32_t Age, int32_t Poids,
                                                      int32_t Grossesse, int32_t Allaitement, const char* Sexe) {
    return vdx::ContreIndicationsProfil2(CodesPatient, TypesPatient, ValeursPatient, Produits, Tableau, Age, Poids,
                                         Grossesse, Allaitement, Sexe);
}

VDX_API int32_t VDX_CALL ContreIndicationsProfil3_Vdx(SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                                      SAFEARRAY** ValeursPatient, SAFEARRAY** Produits,
                                                      SAFEARRAY** Analyses, SAFEARRAY** Tableau, int32_t Age,
                                                      int32_t Poids, int32_t Grossesse, int32_t Allaitement,
                                                      const char* Sexe) {
    return vdx::ContreIndicationsProfil3(CodesPatient, TypesPatient, ValeursPatient, Produits, Analyses, Tableau,
                                         Age, Poids, Grossesse, Allaitement, Sexe);
}

VDX_API int32_t VDX_CALL ContreIndicationsProfil_Vdx(SAFEARRAY** Produits, SAFEARRAY** Termes, SAFEARRAY** Tableau,
                                                     int32_t Age) {
    return vdx::ContreIndicationsProfil("ContreIndicationsProfil_Vdx", Produits, Termes, Tableau, Age);
}

VDX_API int32_t VDX_CALL ContreIndicationsProfilPharm_Vdx(SAFEARRAY** Produits, SAFEARRAY** Termes,
                                                          SAFEARRAY** Tableau, int32_t Age, int32_t /*Mode*/) {
    return vdx::ContreIndicationsProfil("ContreIndicationsProfilPharm_Vdx", Produits, Termes, Tableau, Age);
}

VDX_API int32_t VDX_CALL EquivalentPathologie_Vdx(const char* Code, BSTR* Terme) {
    return vdx::EquivalentPathologie(Code, Terme);
}

VDX_API int32_t VDX_CALL Interactions2_Vdx(SAFEARRAY** Produits, SAFEARRAY** CodesPatient, SAFEARRAY** TypesPatient,
                                           SAFEARRAY** Tableau, int32_t Age, int32_t Poids, int32_t Grossesse,
                                           int32_t Allaitement, const char* Sexe) {
    return vdx::Interactions2(Produits, CodesPatient, TypesPatient, Tableau, Age, Poids, Grossesse, Allaitement, Sexe);
}

VDX_API int32_t VDX_CALL Interactions2Test_Vdx(SAFEARRAY** Produits, SAFEARRAY** CodesPatient,
                                               SAFEARRAY** TypesPatient, int32_t Age, int32_t Poids,
                                               int32_t Grossesse, int32_t Allaitement, const char* Sexe) {
    return vdx::Interactions2Test(Produits, CodesPatient, TypesPatient, Age, Poids, Grossesse, Allaitement, Sexe);
}

VDX_API int32_t VDX_CALL Interactions_Vdx(SAFEARRAY** Produits, SAFEARRAY** Tableau) {
    return vdx::Interactions(Produits, Tableau);
}

VDX_API int32_t VDX_CALL ProduitInteractions_Vdx(const char* Code, SAFEARRAY** Tableau) {
    return vdx::ProduitInteractions(Code, Tableau);
}

}  // extern "C"
