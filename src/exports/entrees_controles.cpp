#include "exports/entrees_controles.h"

#include <algorithm>

#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/entrees.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/texte.h"

namespace vdx {

namespace {

// The inputs of the contra-indication checks and their codes: null, then
// unreadable.
constexpr CodesEntree EntreeCodes{Argument1, OperationTableau};
constexpr CodesEntree EntreeTypes{Argument2, Argument2};
constexpr CodesEntree EntreeValeurs{Argument3, Argument3};
constexpr CodesEntree EntreeProduits{Argument5, Argument5};
constexpr CodesEntree EntreeAnalyses{Argument6, Argument6};

}  // namespace

std::vector<std::string> CodesPrescription(std::vector<std::string> codes) {
    const auto vide = std::ranges::find_if(codes, [](const std::string& c) { return c.empty(); });
    if (std::any_of(vide, codes.end(), [](const std::string& c) { return !c.empty(); })) throw Echec{ListeVide};
    codes.erase(vide, codes.end());
    for (std::string& code : codes) code = CIPEntrantStrict(session().CIP13Actif, code);
    return codes;
}

std::vector<std::string> CodesDuTableau(SAFEARRAY** produits) {
    std::vector<std::string> codes = ChainesDuTableau(produits, {Argument1, OperationTableau});
    if (codes.empty()) throw Echec{Argument1};
    return CodesPrescription(std::move(codes));
}

std::string CodeCIPDuTexte(std::string code) {
    if (code.size() > LongueurCIP) code.resize(LongueurCIP);
    return code;
}
std::vector<std::string> CodesCIPDuTexte(std::vector<std::string> codes) {
    std::ranges::transform(codes, codes.begin(), CodeCIPDuTexte);
    return codes;
}

std::vector<std::string> CodesDuTexte() {
    ListesDuTexte listes(LitTexte());
    if (listes.Vide()) throw Echec{ListeVide};
    return CodesPrescription(CodesCIPDuTexte(listes.Suivante()));
}

std::vector<std::string> CodesSurdosage(SAFEARRAY** produits) {
    if (session().ModeSortie == ModeTableau)
        return CodesPrescription(ChainesDuTableau(produits, {Argument1, OperationTableau}));
    ListesDuTexte listes(LitTexte());
    if (listes.Vide()) throw Echec{ListeVide};
    return CodesPrescription(CodesCIPDuTexte(listes.Suivante()));
}

EntreesProfil LitEntrees(SAFEARRAY** codes, SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits,
                         SAFEARRAY** analyses, bool avecAnalyses) {
    EntreesProfil e;
    ProfilPatient& p = e.patient;
    if (session().ModeSortie == ModeTableau) {
        p.CodesPatient = ChainesDuTableau(codes, EntreeCodes);
        p.TypesPatient = EntiersDuTableau(types, EntreeTypes);
        p.ValeursPatient = EntiersDuTableau(valeurs, EntreeValeurs);
        e.produits = ChainesDuTableau(produits, EntreeProduits);
        if (avecAnalyses) p.Analyses = AnalysesDuTableau(analyses, EntreeAnalyses);
    } else {
        ListesDuTexte listes(LitTexte());
        if (listes.Vide()) throw Echec{ListeVide};
        p.CodesPatient = listes.Suivante();
        p.TypesPatient = EntiersDeTextes(listes.Suivante());
        p.ValeursPatient = EntiersDeTextes(listes.Suivante());
        e.produits = CodesCIPDuTexte(listes.Suivante());
        if (avecAnalyses) {
            const std::vector<std::string> paires = listes.Suivante();
            for (size_t i = 0; i + 1 < paires.size(); i += 2)
                p.Analyses.push_back({paires[i], EntiersDeTextes({paires[i + 1]}).front()});
        }
    }
    if (p.TypesPatient.size() != p.CodesPatient.size() || p.ValeursPatient.size() != p.CodesPatient.size())
        throw Echec{Argument1};
    return e;
}

EntreesAllergies LitAllergies(SAFEARRAY** termes, SAFEARRAY** allergenes, SAFEARRAY** produits, bool avecTermes) {
    EntreesAllergies e;
    if (session().ModeSortie == ModeTableau) {
        if (avecTermes) e.termes = ChainesDuTableau(termes, {Argument1, OperationTableau});
        e.allergenes = EntiersDuTableau(allergenes, {Argument2, OperationTableau});
        e.produits = ChainesDuTableau(produits, {Argument3, OperationTableau});
    } else {
        ListesDuTexte listes(LitTexte());
        if (listes.Vide()) throw Echec{ListeVide};
        if (avecTermes) e.termes = listes.Suivante();
        e.allergenes = EntiersDeTextes(listes.Suivante());
        e.produits = listes.Suivante();
    }
    return e;
}

}  // namespace vdx
