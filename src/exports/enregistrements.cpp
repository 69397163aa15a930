// Every public record of the header, field by field: each field has the
// slot of a pointer's size its rank gives it, as hosts and the library's
// delivery count them; a record is its slots and nothing more.
#include <cstddef>
#include <cstdint>
#include <tuple>

#include "checks/allergies.h"
#include "checks/avis.h"
#include "checks/contreindications.h"
#include "checks/grossesse.h"
#include "checks/interactions.h"
#include "checks/surdosage.h"
#include "documents/annexes.h"
#include "posology/catalogue.h"
#include "posology/controle.h"
#include "posology/phrase.h"
#include "documents/textes_amm.h"
#include "products/codes.h"
#include "products/composition.h"
#include "products/equivalents.h"
#include "products/optimisation.h"
#include "products/produits.h"
#include "search/indications.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

template <class Fiche>
constexpr bool Cases(size_t n) {
    return sizeof(Fiche) == n * sizeof(intptr_t);
}

}  // namespace

#define VDX_CASE(Fiche, Champ, rang) \
    static_assert(offsetof(Fiche, Champ) == (rang) * sizeof(intptr_t), #Fiche "." #Champ " is not in its slot")


static_assert(Cases<VdxVersion>(2), "VdxVersion is not 2 slots");
VDX_CASE(VdxVersion, Version, 0);
VDX_CASE(VdxVersion, DateVersion, 1);

static_assert(Cases<VdxCodeLibelle>(2), "VdxCodeLibelle is not 2 slots");
VDX_CASE(VdxCodeLibelle, Code, 0);
VDX_CASE(VdxCodeLibelle, Libelle, 1);

static_assert(Cases<VdxDeuxChaines>(2), "VdxDeuxChaines is not 2 slots");
VDX_CASE(VdxDeuxChaines, Code, 0);
VDX_CASE(VdxDeuxChaines, Libelle, 1);

static_assert(Cases<VdxTroisChaines>(3), "VdxTroisChaines is not 3 slots");
VDX_CASE(VdxTroisChaines, Code, 0);
VDX_CASE(VdxTroisChaines, Libelle, 1);
VDX_CASE(VdxTroisChaines, Texte, 2);

static_assert(Cases<VdxStatut>(16), "VdxStatut is not 16 slots");
VDX_CASE(VdxStatut, Statut1, 0);
VDX_CASE(VdxStatut, Statut2, 1);
VDX_CASE(VdxStatut, Statut3, 2);
VDX_CASE(VdxStatut, CodeStatut, 3);
VDX_CASE(VdxStatut, Prescription1, 4);
VDX_CASE(VdxStatut, Prescription2, 5);
VDX_CASE(VdxStatut, Prescription3, 6);
VDX_CASE(VdxStatut, LibelleStatut, 7);
VDX_CASE(VdxStatut, LibellePrescription1, 8);
VDX_CASE(VdxStatut, LibellePrescription2, 9);
VDX_CASE(VdxStatut, LibellePrescription3, 10);
VDX_CASE(VdxStatut, DetailPrescription1, 11);
VDX_CASE(VdxStatut, DetailPrescription2, 12);
VDX_CASE(VdxStatut, DetailPrescription3, 13);
VDX_CASE(VdxStatut, TexteStatut1, 14);
VDX_CASE(VdxStatut, TexteStatut2, 15);

static_assert(Cases<VdxComposant>(6), "VdxComposant is not 6 slots");
VDX_CASE(VdxComposant, SansQuantite, 0);
VDX_CASE(VdxComposant, CodeSubstance, 1);
VDX_CASE(VdxComposant, Quantite, 2);
VDX_CASE(VdxComposant, Libelle, 3);
VDX_CASE(VdxComposant, QuantiteTexte, 4);
VDX_CASE(VdxComposant, LibelleUnite, 5);

static_assert(Cases<VdxAlerteCI>(7), "VdxAlerteCI is not 7 slots");
VDX_CASE(VdxAlerteCI, NiveauAlerte, 0);
VDX_CASE(VdxAlerteCI, ValeurPatient, 1);
VDX_CASE(VdxAlerteCI, CodeProduit, 2);
VDX_CASE(VdxAlerteCI, LibelleProduit, 3);
VDX_CASE(VdxAlerteCI, CodeTerme, 4);
VDX_CASE(VdxAlerteCI, LibelleTerme, 5);
VDX_CASE(VdxAlerteCI, CodePatient, 6);

static_assert(Cases<VdxFicheAllergie>(5), "VdxFicheAllergie is not 5 slots");
VDX_CASE(VdxFicheAllergie, TypeAlerte, 0);
VDX_CASE(VdxFicheAllergie, CodeProduit, 1);
VDX_CASE(VdxFicheAllergie, LibelleProduit, 2);
VDX_CASE(VdxFicheAllergie, CodeCause, 3);
VDX_CASE(VdxFicheAllergie, TexteCause, 4);

static_assert(Cases<VdxFicheClasseAllergie>(4), "VdxFicheClasseAllergie is not 4 slots");
VDX_CASE(VdxFicheClasseAllergie, CodeProduit, 0);
VDX_CASE(VdxFicheClasseAllergie, LibelleProduit, 1);
VDX_CASE(VdxFicheClasseAllergie, CodeClasse, 2);
VDX_CASE(VdxFicheClasseAllergie, LibelleClasse, 3);

static_assert(Cases<VdxFicheSurdosage>(13), "VdxFicheSurdosage is not 13 slots");
VDX_CASE(VdxFicheSurdosage, CIP1, 0);
VDX_CASE(VdxFicheSurdosage, SubstanceCommune, 8);
VDX_CASE(VdxFicheSurdosage, LibelleClasseCommune, 11);
VDX_CASE(VdxFicheSurdosage, TypeRedondance, 12);

static_assert(Cases<VdxLigneMediel>(3), "VdxLigneMediel is not 3 slots");
VDX_CASE(VdxLigneMediel, Texte, 2);

static_assert(Cases<VdxAnalyse>(2), "VdxAnalyse is not 2 slots");
VDX_CASE(VdxAnalyse, ValeurAnalyse, 0);
VDX_CASE(VdxAnalyse, TypeAnalyse, 1);

static_assert(Cases<VdxFicheCI>(3), "VdxFicheCI is not 3 slots");
VDX_CASE(VdxFicheCI, NiveauAlerte, 0);
VDX_CASE(VdxFicheCI, LibelleProduit, 1);
VDX_CASE(VdxFicheCI, LibelleTerme, 2);

static_assert(Cases<VdxInteraction2>(23), "VdxInteraction2 is not 23 slots");
VDX_CASE(VdxInteraction2, CIP1, 0);
VDX_CASE(VdxInteraction2, CIP2, 1);
VDX_CASE(VdxInteraction2, Libelle1, 2);
VDX_CASE(VdxInteraction2, Libelle2, 3);
VDX_CASE(VdxInteraction2, LibelleGravite, 4);
VDX_CASE(VdxInteraction2, TexteType, 5);
VDX_CASE(VdxInteraction2, Reference, 6);
VDX_CASE(VdxInteraction2, Niveau, 7);
VDX_CASE(VdxInteraction2, Texte1, 8);
VDX_CASE(VdxInteraction2, Texte2, 9);
VDX_CASE(VdxInteraction2, Texte3, 10);
VDX_CASE(VdxInteraction2, Texte4, 11);
VDX_CASE(VdxInteraction2, Classe1, 12);
VDX_CASE(VdxInteraction2, Classe2, 13);
VDX_CASE(VdxInteraction2, Voie1, 14);
VDX_CASE(VdxInteraction2, Voie2, 15);
VDX_CASE(VdxInteraction2, CodeType, 16);
VDX_CASE(VdxInteraction2, Niveau2, 17);
VDX_CASE(VdxInteraction2, Substance2, 18);
VDX_CASE(VdxInteraction2, Substance1Associee, 19);
VDX_CASE(VdxInteraction2, Substance2Associee, 20);
VDX_CASE(VdxInteraction2, CodeCondition, 21);
VDX_CASE(VdxInteraction2, LibelleCondition, 22);

static_assert(Cases<VdxInteraction>(8), "VdxInteraction is not 8 slots");
VDX_CASE(VdxInteraction, Niveau, 0);
VDX_CASE(VdxInteraction, LibelleGravite, 1);
VDX_CASE(VdxInteraction, Libelle1, 2);
VDX_CASE(VdxInteraction, Libelle2, 3);
VDX_CASE(VdxInteraction, TexteType, 4);
VDX_CASE(VdxInteraction, Reference, 5);
VDX_CASE(VdxInteraction, CIP1, 6);
VDX_CASE(VdxInteraction, CIP2, 7);

static_assert(Cases<VdxProduitInteraction>(4), "VdxProduitInteraction is not 4 slots");
VDX_CASE(VdxProduitInteraction, Niveau, 0);
VDX_CASE(VdxProduitInteraction, LibelleGravite, 1);
VDX_CASE(VdxProduitInteraction, TexteType, 2);
VDX_CASE(VdxProduitInteraction, Reference, 3);

static_assert(Cases<VdxLignePosologie>(3), "VdxLignePosologie is not 3 slots");
VDX_CASE(VdxLignePosologie, Titre, 2);

static_assert(Cases<VdxLignePosologie2>(14), "VdxLignePosologie2 is not 14 slots");
VDX_CASE(VdxLignePosologie2, PhraseTerrain, 3);
VDX_CASE(VdxLignePosologie2, CodeTerrain, 4);
VDX_CASE(VdxLignePosologie2, CodeIndication, 8);
VDX_CASE(VdxLignePosologie2, TexteVoie, 11);
VDX_CASE(VdxLignePosologie2, Implicite, 13);

static_assert(Cases<VdxFiltreProfil>(2), "VdxFiltreProfil is not 2 slots");
VDX_CASE(VdxFiltreProfil, TypeProfil, 1);

static_assert(Cases<VdxPosologieHote>(25), "VdxPosologieHote is not 25 slots");
VDX_CASE(VdxPosologieHote, DoseMax, 1);
VDX_CASE(VdxPosologieHote, QuantiteRef, 4);
VDX_CASE(VdxPosologieHote, DoseMaximum, 14);
VDX_CASE(VdxPosologieHote, NombreModeles, 19);
VDX_CASE(VdxPosologieHote, CodePosologie, 20);
VDX_CASE(VdxPosologieHote, Texte, 24);

static_assert(Cases<VdxResultatPosologie>(17), "VdxResultatPosologie is not 17 slots");
VDX_CASE(VdxResultatPosologie, Quantite2, 9);
VDX_CASE(VdxResultatPosologie, Unite2, 11);
VDX_CASE(VdxResultatPosologie, Boites2, 16);

static_assert(Cases<VdxEconomique>(11), "VdxEconomique is not 11 slots");
VDX_CASE(VdxEconomique, TauxRemboursement, 1);
VDX_CASE(VdxEconomique, ActeTexte2, 10);

static_assert(Cases<VdxEquivalent>(11), "VdxEquivalent is not 11 slots");
VDX_CASE(VdxEquivalent, TauxRemboursement, 1);
VDX_CASE(VdxEquivalent, Laboratoire, 10);
static_assert(Cases<VdxTermeProduit>(3), "VdxTermeProduit is not 3 slots");
VDX_CASE(VdxTermeProduit, Libelle, 2);
static_assert(Cases<VdxCritereRecherche>(4), "VdxCritereRecherche is not 4 slots");
VDX_CASE(VdxCritereRecherche, Code, 2);
static_assert(Cases<VdxOptimisation>(10), "VdxOptimisation is not 10 slots");
VDX_CASE(VdxOptimisation, TauxRemboursement, 2);
VDX_CASE(VdxOptimisation, Laboratoire, 9);

static_assert(Cases<VdxBornesPosologie>(25), "VdxBornesPosologie is not 25 slots");
VDX_CASE(VdxBornesPosologie, MaxM2, 10);
VDX_CASE(VdxBornesPosologie, RecoMinUnite2, 11);
VDX_CASE(VdxBornesPosologie, DureeMaximum, 24);

#undef VDX_CASE

// Each row declared in the library fills its public record, slot for slot.
template <class Vue>
constexpr size_t ChampsDeclares = std::tuple_size_v<decltype(ChampsDe<Vue>::liste)>;
#define VDX_REMPLIT(Vue, Fiche) \
    static_assert(Cases<Fiche>(ChampsDeclares<Vue>), #Vue " does not fill " #Fiche)
VDX_REMPLIT(FicheInteraction2, VdxInteraction2);
VDX_REMPLIT(VueInteraction, VdxInteraction);
VDX_REMPLIT(VueProduitInteraction, VdxProduitInteraction);
VDX_REMPLIT(AlerteCI, VdxAlerteCI);
VDX_REMPLIT(FicheCI, VdxFicheCI);
VDX_REMPLIT(FicheAllergie, VdxFicheAllergie);
VDX_REMPLIT(FicheClasseAllergie, VdxFicheClasseAllergie);
VDX_REMPLIT(FicheSurdosage, VdxFicheSurdosage);
VDX_REMPLIT(LigneMediel, VdxLigneMediel);
VDX_REMPLIT(Composant, VdxComposant);
VDX_REMPLIT(FicheStatut, VdxStatut);
VDX_REMPLIT(LignePosologieCourte, VdxLignePosologie);
VDX_REMPLIT(LignePosologie, VdxLignePosologie2);
VDX_REMPLIT(PosologieHote, VdxPosologieHote);
VDX_REMPLIT(ResultatPosologie, VdxResultatPosologie);
VDX_REMPLIT(BornesPosologie, VdxBornesPosologie);
VDX_REMPLIT(FicheEconomique, VdxEconomique);
VDX_REMPLIT(LigneEquivalent, VdxEquivalent);
VDX_REMPLIT(LigneOptimisation, VdxOptimisation);
VDX_REMPLIT(TermeProduit, VdxTermeProduit);
VDX_REMPLIT(ChapitreAMM, VdxDeuxChaines);
VDX_REMPLIT(LigneAMMEquivalent, VdxDeuxChaines);
VDX_REMPLIT(LigneIndication, VdxIndicationProduit);
VDX_REMPLIT(TexteNotice, VdxTexteNotice);
VDX_REMPLIT(LigneLien, VdxLien);
VDX_REMPLIT(LigneTransparence, VdxFicheTransparence);
VDX_REMPLIT(TextePharmacie, VdxTextePharm);
VDX_REMPLIT(LigneHistorique, VdxHistorique);
#undef VDX_REMPLIT

}  // namespace vdx
