// The C exports of the safety checks: their inputs read by mode (the host's
// arrays in mode 0, the text input in the others) and their rows delivered.
#include <algorithm>
#include <tuple>
#include <utility>

#include "checks/allergies.h"
#include "checks/contreindications.h"
#include "checks/grossesse.h"
#include "checks/incompatibilites.h"
#include "checks/interactions.h"
#include "checks/surdosage.h"
#include "exports/declaration.h"
#include "exports/entrees_controles.h"
#include "exports/internes.h"
#include "session/codeproduit.h"
#include "session/entrees.h"
#include "session/texte.h"
#include "store/layouts/composition.h"

namespace vdx {
namespace {

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
        codes.push_back(CodeCIPDuTexte(std::string(ligne)));
        debut = fin + 2;
    }
    return CodesPrescription(std::move(codes));
}

int32_t Profil(const RegleProfil& regle, EntreesProfil e, SAFEARRAY** tableau, int32_t tableauAbsent, int32_t age,
               int32_t poids, int32_t grossesse, int32_t allaitement, const char* sexe) {
    e.patient.Age = age;
    e.patient.Poids = poids;
    e.patient.Grossesse = grossesse;
    e.patient.Allaitement = allaitement;
    e.patient.Sexe = SexeNormalise(sexe);
    Resultat resultat(tableau, GabaritDe<AlerteCI>(), tableauAbsent);
    resultat.Prend(LignesSansCleSelon<AlerteCI>(ContreIndicationsPatient(session(), std::move(e.patient), e.produits, regle)));
    return resultat.Livre();
}

// The entries of a part of the short form's text input: separated by "@"
// or by line ends, the empty ones kept (an empty product stops the check).
std::vector<std::string> EntreesCourtes(std::string_view partie) {
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
    if (fin == std::string_view::npos) return {EntreesCourtes(texte), {}};
    return {EntreesCourtes(texte.substr(0, fin)), EntreesCourtes(texte.substr(fin + 2))};
}

// ContreIndicationsProfil_Vdx and its pharmacy twin.
int32_t ProfilCourt(SAFEARRAY** produits, SAFEARRAY** termes, SAFEARRAY** tableau, int32_t age) {
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
    Resultat resultat(tableau, GabaritDe<FicheCI>(), Argument3);
    const bool vide = std::ranges::any_of(codes, [](const std::string& c) { return c.empty(); });
    if (codes.empty() || vide) return resultat.Livre();
    ContreIndicationsCourtes courtes = ContreIndicationsDesTermes(session(), codes, pathologies, age);
    resultat.Prend(LignesSansCleSelon<FicheCI>(std::move(courtes.fiches)));
    resultat.Livre();
    return courtes.alertes;
}

// Delivers the rows of an allergy check (-50 when the host's array can't
// be had or can't grow).
int32_t LivreAllergies(SAFEARRAY** tableau, std::vector<FicheAllergie> fiches) {
    Resultat resultat(tableau, GabaritDe<FicheAllergie>(), Argument5);
    resultat.CodeDeCroissance(Argument5);
    resultat.Prend(LignesSansCleSelon<FicheAllergie>(std::move(fiches)));
    return resultat.Livre();
}

// The lists of Allergies_Vdx from the input text: line by line, a leading
// line feed or "@" taken off, each list ended by an empty line.
std::pair<std::vector<std::string>, std::vector<std::string>> ListesDeLignes(const std::string& texte) {
    std::vector<std::string> listes[2];
    size_t rang = 0;
    for (size_t debut = 0; debut < texte.size() && rang < 2;) {
        size_t fin = texte.find('\r', debut);
        if (fin == std::string::npos) fin = texte.size();
        std::string_view ligne = std::string_view(texte).substr(debut, fin - debut);
        if (ligne.starts_with('\n')) ligne.remove_prefix(1);
        if (ligne.starts_with('@')) ligne.remove_prefix(1);
        if (ligne.empty())
            ++rang;
        else
            listes[rang].emplace_back(ligne);
        debut = fin + 1;
    }
    return {std::move(listes[0]), std::move(listes[1])};
}

}  // namespace

int32_t ControleGrossesseAFSSAPS(const char* code, int32_t grossesse, SAFEARRAY** tableau) {
    return CadreConnecte("ControleGrossesseAFSSAPS", [&]() -> int32_t {
        const std::string cip = CodeProduit(code);
        if (grossesse < 0) throw Echec{Argument2};
        Resultat resultat(tableau, GabaritDe<AlerteGrossesse>(), Argument3);
        for (AlerteGrossesse& alerte : AlertesGrossesse(cip, grossesse))
            resultat.AjouteLigne(ValeursDe(std::move(alerte)));
        return resultat.Livre();
    });
}

}  // namespace vdx

using namespace vdx;

VDX_EXPORT(Interactions2_Vdx, Connecte, NomsDesChamps<FicheInteraction2>(), (Liste, Produits),
           (Liste, CodesPatient), (Liste, TypesPatient), (Tableau, Tableau), (Entier, Age), (Entier, Poids),
           (Entier, Grossesse), (Entier, Allaitement), (Texte, Sexe)) {
    const std::vector<std::string> codes =
        session().ModeSortie == ModeTableau ? CodesDuTableau(Produits) : CodesDuTexte();
    Resultat resultat(Tableau, GabaritDe<FicheInteraction2>(), Argument4);
    resultat.Prend(LignesSansCleSelon<FicheInteraction2>(AnalyseInteractions(session(), codes)));
    return resultat.Livre();
}

// The count of rows of the analysis; the arrays are read in every mode.
VDX_EXPORT(Interactions2Test_Vdx, Connecte, {}, (ListeTableau, Produits), (ListeTableau, CodesPatient),
           (ListeTableau, TypesPatient), (Entier, Age), (Entier, Poids), (Entier, Grossesse), (Entier, Allaitement),
           (Texte, Sexe)) {
    return static_cast<int32_t>(AnalyseInteractions(session(), CodesDuTableau(Produits)).size());
}

VDX_EXPORT(Interactions_Vdx, Connecte, NomsDesChamps<VueInteraction>(), (Lignes, Produits), (Tableau, Tableau)) {
    const std::vector<std::string> codes =
        session().ModeSortie == ModeTableau ? CodesDuTableau(Produits) : LignesDuTexte();
    Resultat resultat(Tableau, GabaritDe<VueInteraction>(), Argument2);
    resultat.Prend(LignesSansCleSelon<VueInteraction>(AnalyseInteractions(session(), codes)));
    return resultat.Livre();
}

VDX_EXPORT(ProduitInteractions_Vdx, Connecte, NomsDesChamps<VueProduitInteraction>(), (Texte, Code),
           (Tableau, Tableau)) {
    const std::string cip = CodeProduit(Code);
    Resultat resultat(Tableau, GabaritDe<VueProduitInteraction>(), Argument2);
    resultat.Prend(LignesSansCleSelon<VueProduitInteraction>(InteractionsDuProduitParType(session(), cip)));
    return resultat.Livre();
}

VDX_EXPORT(ContreIndicationsProfil2_Vdx, Connecte, NomsDesChamps<AlerteCI>(), (Liste, CodesPatient),
           (Liste, TypesPatient), (Liste, ValeursPatient), (Liste, Produits), (Tableau, Tableau), (Entier, Age),
           (Entier, Poids), (Entier, Grossesse), (Entier, Allaitement), (Texte, Sexe)) {
    return Profil(RegleProfil2, LitEntrees(CodesPatient, TypesPatient, ValeursPatient, Produits, nullptr, false),
                  Tableau, Argument6, Age, Poids, Grossesse, Allaitement, Sexe);
}

VDX_EXPORT(ContreIndicationsProfil3_Vdx, Connecte, NomsDesChamps<AlerteCI>(), (Liste, CodesPatient),
           (Liste, TypesPatient), (Liste, ValeursPatient), (Liste, Produits), (Liste, Analyses), (Tableau, Tableau),
           (Entier, Age), (Entier, Poids), (Entier, Grossesse), (Entier, Allaitement), (Texte, Sexe)) {
    return Profil(RegleProfil3, LitEntrees(CodesPatient, TypesPatient, ValeursPatient, Produits, Analyses, true),
                  Tableau, Argument7, Age, Poids, Grossesse, Allaitement, Sexe);
}

VDX_EXPORT(ContreIndicationsProfil_Vdx, Connecte, NomsDesChamps<FicheCI>(), (Liste, Produits), (Liste, Termes),
           (Tableau, Tableau), (Entier, Age)) {
    return ProfilCourt(Produits, Termes, Tableau, Age);
}

VDX_EXPORT(ContreIndicationsProfilPharm_Vdx, Connecte, NomsDesChamps<FicheCI>(), (Liste, Produits),
           (Liste, Termes), (Tableau, Tableau), (Entier, Age), (Entier, Mode)) {
    return ProfilCourt(Produits, Termes, Tableau, Age);
}

VDX_EXPORT(EquivalentPathologie_Vdx, Chaines, exports::Noms("CodeTerme"), (Texte, Code), (ChaineSortie, Terme)) {
    const std::string_view texte = Code ? std::string_view(Code) : std::string_view();
    if (texte.empty() || texte.size() > VDXVAMM::CodeTerme.capacite()) return SortieErreur(Argument1);
    const std::optional<std::string> equivalent = TermeEquivalent(texte);
    if (!equivalent) return Rien;
    LivreValeur(Terme, *equivalent, Argument2);
    return Succes;
}

VDX_EXPORT(ControleAllergies_Vdx, Connecte, NomsDesChamps<FicheAllergie>(), (Liste, Termes), (Liste, Allergenes),
           (Liste, Produits), (Tableau, Tableau)) {
    const EntreesAllergies e = LitAllergies(Termes, Allergenes, Produits, true);
    return LivreAllergies(Tableau, ControleAllergies(session(), e.termes, e.allergenes, e.produits));
}

VDX_EXPORT(RechercheEEN_Vdx, Connecte, NomsDesChamps<FicheAllergie>(), (Liste, Allergenes), (Liste, Produits),
           (Tableau, Tableau)) {
    const EntreesAllergies e = LitAllergies(nullptr, Allergenes, Produits, false);
    return LivreAllergies(Tableau, RechercheExcipients(session(), e.allergenes, e.produits));
}

// Its lists are lines: a line "@" ends one as an empty line does.
VDX_EXPORT(Allergies_Vdx, Connecte, NomsDesChamps<FicheClasseAllergie>(), (Lignes, Produits), (Lignes, Classes),
           (Tableau, Tableau)) {
    std::vector<std::string> produits, classes;
    if (session().ModeSortie == ModeTableau) {
        produits = ChainesDuTableau(Produits, {Argument1, OperationTableau});
        classes = ChainesDuTableau(Classes, {Argument2, OperationTableau});
    } else {
        const std::string texte = LitTexte();
        if (texte.empty()) throw Echec{ListeVide};
        std::tie(produits, classes) = ListesDeLignes(texte);
    }
    Resultat resultat(Tableau, GabaritDe<FicheClasseAllergie>(), Argument3);
    if (!produits.empty() && !classes.empty())
        resultat.Prend(LignesSansCleSelon<FicheClasseAllergie>(ProduitsDesClasses(session(), produits, classes)));
    return resultat.Livre();
}

namespace {

// The redundancies of the codes of the host's array (null -10) or of the
// text input's list; an empty list gives none.
std::vector<FicheSurdosage> RedondancesLues(SAFEARRAY** produits) {
    return Redondances(session(), CodesSurdosage(produits));
}

}  // namespace

VDX_EXPORT(Surdosage_Vdx, Connecte, NomsDesChamps<FicheSurdosage>(), (Liste, Produits), (Tableau, Tableau)) {
    std::vector<FicheSurdosage> fiches = RedondancesLues(Produits);
    Resultat resultat(Tableau, GabaritDe<FicheSurdosage>(), Argument2);
    resultat.Prend(LignesSansCleSelon<FicheSurdosage>(std::move(fiches)));
    return resultat.Livre();
}

// The physico-chemical incompatibilities of the prescription's injectables,
// in the record `Vue`: the short rows, and the whole ones.
namespace {
template <class Vue>
int32_t IncompatibilitesLues(SAFEARRAY** produits, SAFEARRAY** tableau) {
    std::vector<LigneIPC> lignes = Incompatibilites(session(), CodesSurdosage(produits));
    Resultat resultat(tableau, GabaritDe<Vue>(), Argument2);
    resultat.Prend(LignesSansCleSelon<Vue>(std::move(lignes)));
    return resultat.Livre();
}
}  // namespace
VDX_EXPORT(IPCControle_Vdx, Connecte, NomsDesChamps<VueIPC>(), (Liste, Produits), (Tableau, Tableau)) {
    return IncompatibilitesLues<VueIPC>(Produits, Tableau);
}
VDX_EXPORT(IPCControleTest_Vdx, Connecte, NomsDesChamps<LigneIPC>(), (Liste, Produits), (Tableau, Tableau)) {
    return IncompatibilitesLues<LigneIPC>(Produits, Tableau);
}
// The incompatibilities of one pair, whatever the routes.
VDX_EXPORT(IPC_Info_Vdx, Connecte, NomsDesChamps<LigneIPC>(), (Texte, Code1), (Texte, Code2), (Tableau, Tableau)) {
    const std::string premier = CodeProduit(Code1), second = CodeProduit(Code2, Argument2);
    Resultat resultat(Tableau, GabaritDe<LigneIPC>(), Argument3);
    resultat.Prend(LignesSansCleSelon<LigneIPC>(IncompatibilitesDeLaPaire(session(), premier, second)));
    return resultat.Livre();
}

// The count of Surdosage_Vdx's rows, which are dropped.
VDX_EXPORT(SurdosageTest_Vdx, Connecte, {}, (Liste, Produits)) {
    return static_cast<int32_t>(RedondancesLues(Produits).size());
}
