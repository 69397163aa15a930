// The C exports of the products: code mapping and regulatory status, the
// simple lookups, labels and flags, and the searches of products.
#include "products/codes.h"
#include "products/consultations.h"
#include "products/produits.h"
#include "products/recherche.h"
#include "vdx32/vdx32.h"

namespace c = vdx::consultations;

extern "C" {

// Code mapping and regulatory status.

VDX_API int32_t VDX_CALL CIP_CIP13_Vdx(const char* Code, BSTR* Sortie) {
    return vdx::CorrespondanceExport(vdx::SensCIP::Vers13, "CIP_CIP13_Vdx", Code, Sortie);
}

VDX_API int32_t VDX_CALL CIP13_CIP_Vdx(const char* Code, BSTR* Sortie) {
    return vdx::CorrespondanceExport(vdx::SensCIP::Vers7, "CIP13_CIP_Vdx", Code, Sortie);
}

VDX_API int32_t VDX_CALL IsStupefiant_Vdx(const char* Code) { return vdx::IsStupefiant(Code); }

VDX_API int32_t VDX_CALL LibelleStupefiant_Vdx(const char* Texte, BSTR* Sortie) {
    return vdx::LibelleStupefiantExport(Texte, Sortie);
}

VDX_API int32_t VDX_CALL Statut_Vdx(const char* Code, VdxStatut* Fiche) { return vdx::Statut(Code, Fiche); }

VDX_API int32_t VDX_CALL IsMedDC_Vdx(const char* Code) { return vdx::IsMedDC(Code); }

// Simple lookups.

VDX_API int32_t VDX_CALL UCD_Vdx(const char* Code, BSTR* UCD) { return vdx::Consulte(c::UCD, Code, UCD); }
VDX_API int32_t VDX_CALL GenCode_Vdx(const char* Code, BSTR* GenCode) {
    return vdx::Consulte(c::GenCode, Code, GenCode);
}
VDX_API int32_t VDX_CALL CIP_To_CIS_Vdx(const char* Code, BSTR* CIS) { return vdx::Consulte(c::CIS, Code, CIS); }
VDX_API int32_t VDX_CALL CodeRubrique_Vdx(const char* Code) { return vdx::Consulte(c::CodeRubrique, Code); }
VDX_API int32_t VDX_CALL NombreUCDParCIP_Vdx(const char* Code) { return vdx::Consulte(c::NombreUCD, Code); }
VDX_API int32_t VDX_CALL GetPictogramme_Vdx(const char* Code) { return vdx::Consulte(c::Pictogramme, Code); }
VDX_API int32_t VDX_CALL IsT2A_Vdx(const char* Code) { return vdx::Consulte(c::T2A, Code); }
VDX_API int32_t VDX_CALL ProduitStatut_Vdx(const char* Code) { return vdx::Consulte(c::Statut, Code); }
VDX_API int32_t VDX_CALL ProduitGenerique_Vdx(const char* Code) { return vdx::Consulte(c::Generique, Code); }
VDX_API int32_t VDX_CALL ProduitDopant_Vdx(const char* Code) { return vdx::Consulte(c::Dopant, Code); }
VDX_API int32_t VDX_CALL ProduitReferent_Vdx(const char* Code) { return vdx::Consulte(c::Referent, Code); }
VDX_API int32_t VDX_CALL ProduitHospitalier_Vdx(const char* Code) { return vdx::Consulte(c::Hospitalier, Code); }

// Labels and facts of a product.

VDX_API int32_t VDX_CALL LibelleProduit_Vdx(const char* Code, BSTR* Libelle) {
    return vdx::LibelleProduit(Code, Libelle);
}
VDX_API int32_t VDX_CALL ProduitSupprime_Vdx(const char* Code, BSTR* Date) { return vdx::ProduitSupprime(Code, Date); }
VDX_API int32_t VDX_CALL Laboratoire_Vdx(const char* Code, BSTR* CodeLaboratoire, BSTR* Libelle) {
    return vdx::Laboratoire(Code, CodeLaboratoire, Libelle);
}
VDX_API int32_t VDX_CALL CIP_Remplacant_Vdx(const char* Code, BSTR* Remplacant) {
    return vdx::CIPRemplacant(Code, Remplacant);
}
VDX_API int32_t VDX_CALL TotalProduit_Vdx(void) { return vdx::TotalProduit(); }
VDX_API int32_t VDX_CALL GetProduit_Vdx(int32_t Rang, BSTR* Code, BSTR* Libelle) {
    return vdx::GetProduit(Rang, Code, Libelle);
}

// Searches.

VDX_API int32_t VDX_CALL RechercheProduitParPas_Vdx(const char* Texte, SAFEARRAY** Tableau, int32_t Options,
                                                    const char* Suite, int32_t Nombre) {
    return vdx::RechercheProduitParPas(Texte, Tableau, Options, Suite, Nombre);
}
VDX_API int32_t VDX_CALL RechercheProduitParPas2_Vdx(const char* Texte, SAFEARRAY** Tableau, int32_t Options,
                                                     const char* Suite, int32_t Nombre) {
    return vdx::RechercheProduitParPas2(Texte, Tableau, Options, Suite, Nombre);
}
VDX_API int32_t VDX_CALL RechercheProduitParStatut_Vdx(int32_t CodeStatut, SAFEARRAY** Tableau, const char* Suite,
                                                       int32_t Nombre) {
    return vdx::RechercheProduitParStatut(CodeStatut, Tableau, Suite, Nombre);
}

}  // extern "C"
