// The exports of the interaction analysis: the product codes of a
// prescription by mode, and the three shapes of their rows.
#include <algorithm>

#include "checks/interactions.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/entrees.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/texte.h"

namespace vdx {
namespace {

using T = TypeChamp;
// FicheInteraction2, FicheInteraction, FicheProduitInteraction.
const FormeHote FormeInteraction2 = {T::Texte, T::Texte, T::Texte, T::Texte, T::Texte,  T::Texte,  T::Texte,  T::Entier,
                                     T::Texte, T::Texte, T::Texte, T::Texte, T::Texte,  T::Texte,  T::Texte,  T::Texte,
                                     T::Entier, T::Entier, T::Entier, T::Entier, T::Entier, T::Texte, T::Texte};
const FormeHote FormeInteraction = {T::Entier, T::Texte, T::Texte, T::Texte, T::Texte, T::Texte, T::Texte, T::Texte};
const FormeHote FormeProduitInteraction = {T::Entier, T::Texte, T::Texte, T::Texte};

// The codes of a prescription as given: the list ends at its first empty
// entry, and a code after it gives -12; a 13-digit code is mapped under
// CIP13Actif 1 (-13 without mapping).
std::vector<std::string> CodesPrescription(std::vector<std::string> codes) {
    const auto vide = std::ranges::find_if(codes, [](const std::string& c) { return c.empty(); });
    if (std::any_of(vide, codes.end(), [](const std::string& c) { return !c.empty(); })) throw Echec{ListeVide};
    codes.erase(vide, codes.end());
    for (std::string& code : codes)
        if (session().CIP13Actif == CIP13Correspondance && code.size() == LongueurCIP13) {
            const auto cip = CorrespondanceCIP(SensCIP::Vers7, code);
            if (!cip || cip->empty()) throw Echec{CodeMalForme};
            code = *cip;
        }
    return codes;
}

// The product codes from the host's array (null or without element: -10).
std::vector<std::string> CodesDuTableau(SAFEARRAY** produits) {
    std::vector<std::string> codes = ChainesDuTableau(produits, {Argument1, OperationTableau});
    if (codes.empty()) throw Echec{Argument1};
    return CodesPrescription(std::move(codes));
}

std::string Coupe(std::string code) {
    if (code.size() > LongueurCIP) code.resize(LongueurCIP);
    return code;
}

// The first list of the text input (the product codes, each cut to seven
// characters); the patient's lists behind it are not needed.
std::vector<std::string> CodesDuTexte() {
    ListesDuTexte listes(LitTexte());
    if (listes.Vide()) throw Echec{ListeVide};
    std::vector<std::string> codes = listes.Suivante();
    std::ranges::transform(codes, codes.begin(), Coupe);
    return CodesPrescription(std::move(codes));
}

// The text input of Interactions_Vdx: lines up to one that begins with "@",
// a code in the first seven bytes of each.
std::vector<std::string> LignesDuTexte() {
    const std::string texte = LitTexte();
    if (texte.empty()) throw Echec{ListeVide};
    std::vector<std::string> codes;
    for (size_t debut = 0; debut < texte.size();) {
        size_t fin = texte.find(FinDeLigne, debut);
        if (fin == std::string::npos) fin = texte.size();
        const std::string_view ligne = std::string_view(texte).substr(debut, fin - debut);
        if (ligne.starts_with('@')) break;
        codes.push_back(Coupe(std::string(ligne)));
        debut = fin + 2;
    }
    return CodesPrescription(std::move(codes));
}

std::vector<Valeur> Champs(FicheInteraction2& r) {
    return {std::move(r.CIP1),   std::move(r.CIP2),     std::move(r.Libelle1),       std::move(r.Libelle2),
            std::move(r.LibelleGravite), std::move(r.TexteType), std::move(r.Reference), r.Niveau,
            std::move(r.Texte1), std::move(r.Texte2),   std::move(r.Texte3),         std::move(r.Texte4),
            std::move(r.Classe1), std::move(r.Classe2), std::move(r.Voie1),          std::move(r.Voie2),
            r.CodeType,          r.Niveau2,             r.Substance2,                r.Substance1Associee,
            r.Substance2Associee, std::move(r.CodeCondition), std::move(r.LibelleCondition)};
}

}  // namespace

int32_t Interactions2(SAFEARRAY** produits, SAFEARRAY** /*codesPatient*/, SAFEARRAY** /*typesPatient*/,
                      SAFEARRAY** tableau, int32_t, int32_t, int32_t, int32_t, const char*) {
    return CadreConnecte("Interactions2_Vdx", [&]() -> int32_t {
        const std::vector<std::string> codes =
            session().ModeSortie == ModeTableau ? CodesDuTableau(produits) : CodesDuTexte();
        Resultat resultat(tableau, FormeInteraction2, Argument4);
        for (FicheInteraction2& r : AnalyseInteractions(codes)) resultat.AjouteLigneSansCle(Champs(r));
        return resultat.Livre();
    });
}

int32_t Interactions2Test(SAFEARRAY** produits, SAFEARRAY**, SAFEARRAY**, int32_t, int32_t, int32_t, int32_t,
                          const char*) {
    return CadreConnecte("Interactions2Test_Vdx", [&]() -> int32_t {
        const ModeTableauForce force;
        return static_cast<int32_t>(AnalyseInteractions(CodesDuTableau(produits)).size());
    });
}

int32_t Interactions(SAFEARRAY** produits, SAFEARRAY** tableau) {
    return CadreConnecte("Interactions_Vdx", [&]() -> int32_t {
        const std::vector<std::string> codes =
            session().ModeSortie == ModeTableau ? CodesDuTableau(produits) : LignesDuTexte();
        Resultat resultat(tableau, FormeInteraction, Argument2);
        for (FicheInteraction2& r : AnalyseInteractions(codes))
            resultat.AjouteLigneSansCle({r.Niveau, std::move(r.LibelleGravite), std::move(r.Libelle1),
                                         std::move(r.Libelle2), std::move(r.TexteType), std::move(r.Reference),
                                         std::move(r.CIP1), std::move(r.CIP2)});
        return resultat.Livre();
    });
}

int32_t ProduitInteractions(const char* code, SAFEARRAY** tableau) {
    return CadreConnecte("ProduitInteractions_Vdx", [&]() -> int32_t {
        const std::string cip = CodeProduit(code);
        Resultat resultat(tableau, FormeProduitInteraction, Argument2);
        std::vector<FicheInteraction2> lignes = InteractionsDuProduit(cip);
        // One row per text of the kind.
        std::vector<FicheInteraction2> uniques;
        for (FicheInteraction2& r : lignes)
            if (std::ranges::none_of(uniques, [&](const FicheInteraction2& u) { return u.TexteType == r.TexteType; }))
                uniques.push_back(std::move(r));
        TriParNiveau(uniques);
        for (FicheInteraction2& r : uniques)
            resultat.AjouteLigneSansCle(
                {r.Niveau, std::move(r.LibelleGravite), std::move(r.TexteType), std::move(r.Reference)});
        return resultat.Livre();
    });
}

}  // namespace vdx
