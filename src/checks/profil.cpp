// The exports of the contra-indication check: their inputs by mode, their
// rows, and the short form that checks products against pathology terms.
#include <algorithm>
#include <tuple>
#include <utility>

#include "checks/contreindications.h"
#include "checks/tri.h"
#include "products/fiches.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/texte.h"
#include "store/layouts/composition.h"

namespace vdx {
namespace {

// The inputs and their codes: null, then unreadable.
constexpr CodesEntree EntreeCodes{Argument1, OperationTableau};
constexpr CodesEntree EntreeTypes{Argument2, Argument2};
constexpr CodesEntree EntreeValeurs{Argument3, Argument3};
constexpr CodesEntree EntreeProduits{Argument5, Argument5};
constexpr CodesEntree EntreeAnalyses{Argument6, Argument6};

const FormeHote FormeAlerteCI = {TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Texte,
                                 TypeChamp::Texte,  TypeChamp::Texte,  TypeChamp::Texte};
const FormeHote FormeFicheCI = {TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Texte};

// A product code of the text input is cut to the length of a CodeCIP.
std::vector<std::string> CodesCIPDuTexte(std::vector<std::string> codes) {
    for (std::string& c : codes)
        if (c.size() > LongueurCIP) c.resize(LongueurCIP);
    return codes;
}

struct Entrees {
    ProfilPatient patient;
    std::vector<std::string> produits;
};

// The lists of the check: from the arrays in mode 0 (`analyses` null when
// the export has none), from the text input otherwise.
Entrees LitEntrees(SAFEARRAY** codes, SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits,
                   SAFEARRAY** analyses, bool avecAnalyses) {
    Entrees e;
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
            // Value and kind, alternately.
            const std::vector<std::string> paires = listes.Suivante();
            for (size_t i = 0; i + 1 < paires.size(); i += 2)
                p.Analyses.push_back({paires[i], EntiersDeTextes({paires[i + 1]}).front()});
        }
    }
    if (p.TypesPatient.size() != p.CodesPatient.size() || p.ValeursPatient.size() != p.CodesPatient.size())
        throw Echec{Argument1};
    return e;
}

struct Patient {
    int32_t age, poids, grossesse, allaitement;
    const char* sexe;
};

int32_t Profil(const char* nomExport, const RegleProfil& regle, int32_t tableauAbsent, SAFEARRAY** codes,
               SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits, SAFEARRAY** analyses,
               bool avecAnalyses, SAFEARRAY** tableau, Patient patient) {
    return CadreConnecte(nomExport, [&]() -> int32_t {
        Entrees e = LitEntrees(codes, types, valeurs, produits, analyses, avecAnalyses);
        e.patient.Age = patient.age;
        e.patient.Poids = patient.poids;
        e.patient.Grossesse = patient.grossesse;
        e.patient.Allaitement = patient.allaitement;
        e.patient.Sexe = SexeNormalise(patient.sexe);
        Resultat resultat(tableau, FormeAlerteCI, tableauAbsent);
        for (AlerteCI& a : ContreIndicationsPatient(std::move(e.patient), e.produits, regle))
            resultat.AjouteLigneSansCle({a.NiveauAlerte, a.ValeurPatient, std::move(a.CodeProduit),
                                         std::move(a.LibelleProduit), std::move(a.CodeTerme),
                                         std::move(a.LibelleTerme), std::move(a.CodePatient)});
        return resultat.Livre();
    });
}

// The entries of a part of the short form's text input: separated by "@"
// or by line ends, the empty ones kept (an empty product stops the check).
std::vector<std::string> Entrees(std::string_view partie) {
    while (partie.ends_with(FinDeLigne)) partie.remove_suffix(2);
    std::vector<std::string> entrees;
    if (partie.empty()) return entrees;
    size_t debut = 0;
    for (size_t i = 0; i <= partie.size(); ++i) {
        const bool finDeLigne = partie.substr(i).starts_with(FinDeLigne);
        if (i < partie.size() && partie[i] != '@' && !finDeLigne) continue;
        entrees.emplace_back(partie.substr(debut, i - debut));
        if (finDeLigne) ++i;
        debut = i + 1;
    }
    return entrees;
}

// The text input of the short form: the product codes, then behind the
// last line end the terms.
std::pair<std::vector<std::string>, std::vector<std::string>> ProduitsEtTermesDuTexte(std::string_view texte) {
    while (texte.ends_with(FinDeLigne)) texte.remove_suffix(2);
    const size_t fin = texte.rfind(FinDeLigne);
    if (fin == std::string_view::npos) return {Entrees(texte), {}};
    return {Entrees(texte.substr(0, fin)), Entrees(texte.substr(fin + 2))};
}

struct FicheCI {
    int32_t NiveauAlerte;
    std::string LibelleProduit;
    std::string LibelleTerme;
};

}  // namespace

int32_t ContreIndicationsProfil2(SAFEARRAY** codes, SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits,
                                 SAFEARRAY** tableau, int32_t age, int32_t poids, int32_t grossesse,
                                 int32_t allaitement, const char* sexe) {
    return Profil("ContreIndicationsProfil2_Vdx", RegleProfil2, Argument6, codes, types, valeurs, produits, nullptr,
                  false, tableau, {age, poids, grossesse, allaitement, sexe});
}

int32_t ContreIndicationsProfil3(SAFEARRAY** codes, SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits,
                                 SAFEARRAY** analyses, SAFEARRAY** tableau, int32_t age, int32_t poids,
                                 int32_t grossesse, int32_t allaitement, const char* sexe) {
    return Profil("ContreIndicationsProfil3_Vdx", RegleProfil3, Argument7, codes, types, valeurs, produits, analyses,
                  true, tableau, {age, poids, grossesse, allaitement, sexe});
}

int32_t ContreIndicationsRapport(SAFEARRAY** codes, SAFEARRAY** types, SAFEARRAY** valeurs, SAFEARRAY** produits,
                                 SAFEARRAY** analyses, SAFEARRAY** tableau, int32_t age, int32_t poids,
                                 int32_t grossesse, int32_t allaitement, const char* sexe) {
    return Profil("ContreIndicationsProfil3Html_Vdx", RegleRapport, Argument7, codes, types, valeurs, produits,
                  analyses, true, tableau, {age, poids, grossesse, allaitement, sexe});
}

int32_t ContreIndicationsProfil(const char* nomExport, SAFEARRAY** produits, SAFEARRAY** termes,
                                SAFEARRAY** tableau, int32_t age) {
    return CadreConnecte(nomExport, [&]() -> int32_t {
        std::vector<std::string> codes;
        std::vector<std::string> pathologies;
        if (session().ModeSortie == ModeTableau) {
            codes = ChainesDuTableau(produits, {Argument1, Argument1});
            pathologies = ChainesDuTableau(termes, {Argument2, Argument2});
        } else {
            const std::string texte = LitTexte();
            if (texte.empty()) throw Echec{ListeVide};
            std::tie(codes, pathologies) = ProduitsEtTermesDuTexte(texte);
            codes = CodesCIPDuTexte(std::move(codes));
        }
        Resultat resultat(tableau, FormeFicheCI, Argument3);
        const bool vide = std::ranges::any_of(codes, [](const std::string& c) { return c.empty(); });
        if (codes.empty() || vide) return resultat.Livre();

        // One entry, deliberately: the term of the last code stands.
        ProfilPatient patient;
        for (const std::string& code : pathologies) {
            patient.CodesPatient.assign(1, code.empty() ? code : TermeEquivalent(code).value_or(code));
            patient.TypesPatient.assign(1, PathologieTerme);
            patient.ValeursPatient.assign(1, 1);
        }
        patient.Age = age;
        const std::vector<AlerteCI> alertes = ContreIndicationsPatient(std::move(patient), codes, RegleProfil2);

        std::vector<FicheCI> fiches;
        for (const AlerteCI& a : alertes) {
            std::string libelle = LibelleProduitInterne(a.CodeProduit).value_or(a.CodeProduit);
            const bool present = std::ranges::any_of(fiches, [&](const FicheCI& f) {
                return f.LibelleTerme == a.LibelleTerme && f.LibelleProduit == libelle;
            });
            if (!present) fiches.push_back({a.NiveauAlerte, std::move(libelle), a.LibelleTerme});
        }
        TriEchange(fiches, [](const FicheCI& p, const FicheCI& q) {
            return p.LibelleProduit > q.LibelleProduit ||
                   (p.LibelleProduit == q.LibelleProduit && p.NiveauAlerte < q.NiveauAlerte);
        });
        for (FicheCI& f : fiches)
            resultat.AjouteLigneSansCle({f.NiveauAlerte, std::move(f.LibelleProduit), std::move(f.LibelleTerme)});
        resultat.Livre();
        return static_cast<int32_t>(alertes.size());
    });
}

int32_t EquivalentPathologie(const char* code, BSTR* terme) {
    return CadreChaine("EquivalentPathologie_Vdx", terme, [&]() -> int32_t {
        const std::string_view texte = code ? std::string_view(code) : std::string_view();
        if (texte.empty() || texte.size() > VDXVAMM::CodeTerme.capacite()) return SortieErreur(Argument1);
        const std::optional<std::string> equivalent = TermeEquivalent(texte);
        if (!equivalent) return Rien;
        LivreValeur(terme, *equivalent, Argument2);
        return Succes;
    });
}

}  // namespace vdx
