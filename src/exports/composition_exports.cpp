// The C exports of the composition: the components of a product, the
// products of a substance, the labels of substances, and what the checks
// ask of a product beside it (synonyms, classes, routes).
#include "checks/voies.h"
#include "exports/declaration.h"
#include "session/codeproduit.h"
#include "session/texte.h"
#include "products/composition.h"
#include "products/composition_liens.h"
#include "products/substances.h"

using namespace vdx;
using exports::Noms;

// The rows, 0 for a product without component (the host strings then stay
// empty and nothing is delivered). Mode 0: the components into the array,
// the basis and the text into their strings; other modes: a row of the
// basis and the text, then a row per component.
VDX_EXPORT(ProduitPA_Vdx, Connecte, NomsDesChamps<ComposantPlat>(), (Texte, Code), (Tableau, Tableau),
           (ChaineSortie, Exprime), (ChaineSortie, Composition)) {
    const std::string cip = CodeProduit(Code);
    std::optional<Resultat> hote;
    if (session().ModeSortie == ModeTableau) {
        hote.emplace(Tableau, GabaritDe<Composant>(), Argument2);
        RangeChaine(Exprime, std::nullopt);
        RangeChaine(Composition, std::nullopt);
    }
    vdx::Composition resultat = CompositionProduit(cip);
    const auto n = static_cast<int32_t>(resultat.composants.size());
    if (n == 0) throw Echec{Rien};
    if (!hote) {
        Lignes entete({TypeChamp::Texte, TypeChamp::Texte});
        entete.AjouteLigne({resultat.LibelleExprime, resultat.TexteComposition});
        LivreTexte(entete.TextePlat() + FinDeLigne +
                   LignesSansCleSelon<ComposantPlat>(std::move(resultat.composants)).TextePlat());
        return n;
    }
    hote->Prend(LignesSansCleSelon<Composant>(std::move(resultat.composants)));
    hote->Livre();
    LivreValeur(Exprime, resultat.LibelleExprime, Argument3);
    LivreValeur(Composition, resultat.TexteComposition, Argument4);
    return n;
}

namespace {

// PAProduits_Vdx and ExcipientProduits_Vdx: the same walk under two names.
int32_t ProduitsSubstance(int32_t code, SAFEARRAY** tableau) {
    if (!CodeSubstanceValide(code)) throw Echec{Argument1};
    Resultat resultat(tableau, GabaritDe<ProduitDeSubstance>(), Argument2);
    resultat.Prend(LignesSelon<ProduitDeSubstance>(ProduitsDeSubstance(session(), code)));
    return resultat.Livre();
}

}  // namespace

VDX_EXPORT(PAProduits_Vdx, Connecte, NomsDesChamps<ProduitDeSubstance>(), (Entier, Code), (Tableau, Tableau)) {
    return ProduitsSubstance(Code, Tableau);
}

VDX_EXPORT(ExcipientProduits_Vdx, Connecte, NomsDesChamps<ProduitDeSubstance>(), (Entier, Code),
           (Tableau, Tableau)) {
    return ProduitsSubstance(Code, Tableau);
}

VDX_EXPORT(LibellePA_Vdx, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibellePA(Code), Argument2);
    return Succes;
}

VDX_EXPORT(LibelleExcipient_Vdx, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibelleExcipient(Code), Argument2);
    return Succes;
}

VDX_EXPORT(SynonymeComposant_Vdx, Connecte, NomsDesChamps<Synonyme>(), (Entier, Code), (Tableau, Tableau)) {
    if (!CodeSubstanceValide(Code)) throw Echec{Argument1};
    Resultat resultat(Tableau, GabaritDe<Synonyme>(), Argument2);
    resultat.Prend(LignesSelon<Synonyme>(SynonymesComposant(Code)));
    return resultat.Livre();
}

// The classes of a product: the rows, 0 for a product without class.
VDX_EXPORT(ProduitClasse_Vdx, Connecte, NomsDesChamps<LigneClasse>(), (Texte, Code), (Tableau, Tableau)) {
    const std::string cip = CodeProduit(Code);
    Resultat resultat(Tableau, GabaritDe<LigneClasse>(), Argument2);
    std::vector<LigneClasse> lignes;
    for (ClasseDuProduit& c : ClassesProduit(cip)) lignes.push_back({std::move(c.CodeClasse), cip, std::move(c.Libelle)});
    resultat.Prend(LignesSelon<LigneClasse>(std::move(lignes)));
    return resultat.Livre();
}

// The routes of a product as VoiesProduit gives them, in the host's record
// of a code and a label.
VDX_EXPORT(ListeVoie_Vdx, Connecte, Noms("Code", "Libelle"), (Texte, Code), (Tableau, Tableau)) {
    const std::string cip = CodeProduit(Code);
    Resultat resultat(Tableau, GabaritDe<Voie>(), Argument2);
    resultat.Prend(LignesSelon<Voie>(VoiesProduit(cip)));
    return resultat.Livre();
}
