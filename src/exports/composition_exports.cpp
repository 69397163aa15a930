// The C exports of the composition: the components of a product, the
// products of a substance, the labels of substances, and what the checks
// ask of a product beside it (synonyms, classes, routes).
#include "products/composition.h"
#include "products/composition_liens.h"
#include "products/substances.h"
#include "vdx32/vdx32.h"

extern "C" {

VDX_API int32_t VDX_CALL ProduitPA_Vdx(const char* Code, SAFEARRAY** Tableau, BSTR* Exprime, BSTR* Composition) {
    return vdx::ProduitPA(Code, Tableau, Exprime, Composition);
}

VDX_API int32_t VDX_CALL PAProduits_Vdx(int32_t Code, SAFEARRAY** Tableau) {
    return vdx::ProduitsSubstanceExport("PAProduits_Vdx", Code, Tableau);
}

VDX_API int32_t VDX_CALL ExcipientProduits_Vdx(int32_t Code, SAFEARRAY** Tableau) {
    return vdx::ProduitsSubstanceExport("ExcipientProduits_Vdx", Code, Tableau);
}

VDX_API int32_t VDX_CALL LibellePA_Vdx(int32_t Code, BSTR* Libelle) { return vdx::LibellePA(Code, Libelle); }

VDX_API int32_t VDX_CALL LibelleExcipient_Vdx(int32_t Code, BSTR* Libelle) {
    return vdx::LibelleExcipient(Code, Libelle);
}

VDX_API int32_t VDX_CALL SynonymeComposant_Vdx(int32_t Code, SAFEARRAY** Tableau) {
    return vdx::SynonymeComposant(Code, Tableau);
}

VDX_API int32_t VDX_CALL ProduitClasse_Vdx(const char* Code, SAFEARRAY** Tableau) {
    return vdx::ProduitClasse(Code, Tableau);
}

VDX_API int32_t VDX_CALL ListeVoie_Vdx(const char* Code, SAFEARRAY** Tableau) { return vdx::ListeVoie(Code, Tableau); }

}  // extern "C"
