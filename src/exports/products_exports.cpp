// The C exports of the products: code mapping and regulatory status, the
// simple lookups, labels and flags, and the searches of products.
#include "exports/declaration.h"
#include "products/codes.h"
#include "products/consultations.h"
#include "products/produits.h"
#include "products/recherche.h"

using namespace vdx;
using exports::Noms;
namespace c = vdx::consultations;

// Code mapping and regulatory status.

VDX_EXPORT(CIP_CIP13_Vdx, Chaines, Noms("CIP13"), (Texte, Code), (ChaineSortie, Sortie)) {
    return CorrespondanceExport(SensCIP::Vers13, Code, Sortie);
}

VDX_EXPORT(CIP13_CIP_Vdx, Chaines, Noms("CodeCIP"), (Texte, Code), (ChaineSortie, Sortie)) {
    return CorrespondanceExport(SensCIP::Vers7, Code, Sortie);
}

VDX_EXPORT(IsStupefiant_Vdx, Connecte, {}, (Texte, Code)) { return IsStupefiant(Code); }

VDX_EXPORT(LibelleStupefiant_Vdx, Libre, {}, (Texte, Texte), (ChaineSortie, Sortie)) {
    return LibelleStupefiantExport(Texte, Sortie);
}

VDX_EXPORT(Statut_Vdx, Connecte,
           Noms("Statut1", "Statut2", "Statut3", "CodeStatut", "Prescription1", "Prescription2", "Prescription3",
                "LibelleStatut", "LibellePrescription1", "LibellePrescription2", "LibellePrescription3",
                "DetailPrescription1", "DetailPrescription2", "DetailPrescription3", "TexteStatut1", "TexteStatut2"),
           (Texte, Code), (Fiche, Fiche)) {
    return Statut(Code, Fiche);
}

VDX_EXPORT(IsMedDC_Vdx, Connecte, {}, (Texte, Code)) { return IsMedDC(Code); }

// Simple lookups: a text into a host string, a number or a flag as the
// result. The flags test their code before the connection.
#define CONSULTATION_TEXTE(Nom, consultation, champ)                                            \
    VDX_EXPORT(Nom, Chaines, Noms(#champ), (Texte, Code), (ChaineSortie, champ)) {              \
        return Consulte(c::consultation, Code, champ);                                          \
    }
#define CONSULTATION(Nom, consultation, acces) \
    VDX_EXPORT(Nom, acces, {}, (Texte, Code)) { return Consulte(c::consultation, Code); }

CONSULTATION_TEXTE(UCD_Vdx, UCD, UCD)
CONSULTATION_TEXTE(GenCode_Vdx, GenCode, GenCode)
CONSULTATION_TEXTE(CIP_To_CIS_Vdx, CIS, CIS)
CONSULTATION(CodeRubrique_Vdx, CodeRubrique, Connecte)
CONSULTATION(NombreUCDParCIP_Vdx, NombreUCD, Connecte)
CONSULTATION(GetPictogramme_Vdx, Pictogramme, Connecte)
CONSULTATION(IsT2A_Vdx, T2A, Connecte)
CONSULTATION(ProduitStatut_Vdx, Statut, Connecte)
CONSULTATION(ProduitGenerique_Vdx, Generique, Libre)
CONSULTATION(ProduitDopant_Vdx, Dopant, Libre)
CONSULTATION(ProduitReferent_Vdx, Referent, Libre)
CONSULTATION(ProduitHospitalier_Vdx, Hospitalier, Libre)

// Labels and facts of a product.

VDX_EXPORT(LibelleProduit_Vdx, Chaines, Noms("Libelle"), (Texte, Code), (ChaineSortie, Libelle)) {
    return LibelleProduit(Code, Libelle);
}
VDX_EXPORT(ProduitSupprime_Vdx, Chaines, Noms("Date"), (Texte, Code), (ChaineSortie, Date)) {
    return ProduitSupprime(Code, Date);
}
VDX_EXPORT(Laboratoire_Vdx, Chaines, Noms("CodeLaboratoire", "Libelle"), (Texte, Code),
           (ChaineSortie, CodeLaboratoire), (ChaineSortie, Libelle)) {
    return Laboratoire(Code, CodeLaboratoire, Libelle);
}
VDX_EXPORT(CIP_Remplacant_Vdx, Chaines, Noms("CodeCIP"), (Texte, Code), (ChaineSortie, Remplacant)) {
    return CIPRemplacant(Code, Remplacant);
}
VDX_EXPORT(TotalProduit_Vdx, Connecte, {}) { return TotalProduit(); }
VDX_EXPORT(GetProduit_Vdx, Chaines, Noms("CodeCIP", "Libelle"), (Entier, Rang), (ChaineSortie, Code),
           (ChaineSortie, Libelle)) {
    return GetProduit(Rang, Code, Libelle);
}

// Searches.

VDX_EXPORT(RechercheProduitParPas_Vdx, Connecte, Noms("Code", "Libelle", "Texte"), (Texte, Texte),
           (Tableau, Tableau), (Entier, Options), (Texte, Suite), (Entier, Nombre)) {
    return RechercheProduitParPas(Texte, Tableau, Options, Suite, Nombre);
}
VDX_EXPORT(RechercheProduitParPas2_Vdx, Connecte, Noms("Code", "Libelle", "Texte"), (Texte, Texte),
           (Tableau, Tableau), (Entier, Options), (Texte, Suite), (Entier, Nombre)) {
    return RechercheProduitParPas2(Texte, Tableau, Options, Suite, Nombre);
}
VDX_EXPORT(RechercheProduitParStatut_Vdx, Connecte, Noms("Code", "Libelle", "Texte"), (Entier, CodeStatut),
           (Tableau, Tableau), (Texte, Suite), (Entier, Nombre)) {
    return RechercheProduitParStatut(CodeStatut, Tableau, Suite, Nombre);
}
