// The C exports of the composition: the components of a product, the
// products of a substance, the labels of substances, and what the checks
// ask of a product beside it (synonyms, classes, routes).
#include "exports/declaration.h"
#include "products/composition.h"
#include "products/composition_liens.h"
#include "products/substances.h"

using namespace vdx;
using exports::Noms;

VDX_EXPORT(ProduitPA_Vdx, Connecte,
           Noms("CodeSubstance", "SansQuantite", "Quantite", "Libelle", "QuantiteTexte", "LibelleUnite"),
           (Texte, Code), (Tableau, Tableau), (ChaineSortie, Exprime), (ChaineSortie, Composition)) {
    return ProduitPA(Code, Tableau, Exprime, Composition);
}

VDX_EXPORT(PAProduits_Vdx, Connecte, Noms("CodeCIP", "Libelle", "Nature"), (Entier, Code), (Tableau, Tableau)) {
    return ProduitsSubstanceExport(Code, Tableau);
}

VDX_EXPORT(ExcipientProduits_Vdx, Connecte, Noms("CodeCIP", "Libelle", "Nature"), (Entier, Code),
           (Tableau, Tableau)) {
    return ProduitsSubstanceExport(Code, Tableau);
}

VDX_EXPORT(LibellePA_Vdx, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {
    return LibellePA(Code, Libelle);
}

VDX_EXPORT(LibelleExcipient_Vdx, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {
    return LibelleExcipient(Code, Libelle);
}

VDX_EXPORT(SynonymeComposant_Vdx, Connecte, Noms("Code", "Libelle"), (Entier, Code), (Tableau, Tableau)) {
    return SynonymeComposant(Code, Tableau);
}

VDX_EXPORT(ProduitClasse_Vdx, Connecte, Noms("CodeClasse", "CodeCIP", "Libelle"), (Texte, Code),
           (Tableau, Tableau)) {
    return ProduitClasse(Code, Tableau);
}

VDX_EXPORT(ListeVoie_Vdx, Connecte, Noms("Code", "Libelle"), (Texte, Code), (Tableau, Tableau)) {
    return ListeVoie(Code, Tableau);
}
