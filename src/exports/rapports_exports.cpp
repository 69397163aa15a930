// The C exports of the HTML reports of the checks: each reads the inputs of
// its check as the check does (a bad list gives the check's code and no
// file), runs it with the output modes forced to 0, writes the page even
// when the check failed inside, and returns what the check returned.
#include "checks/allergies.h"
#include "checks/contreindications.h"
#include "checks/interactions.h"
#include "checks/surdosage.h"
#include "documents/monographie.h"
#include "documents/rapports.h"
#include "exports/arguments.h"
#include "exports/declaration.h"
#include "exports/entrees_controles.h"
#include "products/codes.h"

using namespace vdx;

namespace {

// ModeSortie and ChainesUnicode at 0 for an inner check, restored on every
// way out, before the page is written.
class ModesDeControle {
public:
    ModesDeControle() : mode_(session().ModeSortie), unicode_(session().ChainesUnicode) {
        session().ModeSortie = ModeTableau;
        session().ChainesUnicode = 0;
    }
    ~ModesDeControle() {
        session().ModeSortie = mode_;
        session().ChainesUnicode = unicode_;
    }
    ModesDeControle(const ModesDeControle&) = delete;
    ModesDeControle& operator=(const ModesDeControle&) = delete;

private:
    int32_t mode_, unicode_;
};

// The rows of a check, or its negative code, recorded as the frame records
// a failure.
template <class Ligne, class Verification>
Controle<Ligne> Controlee(Verification verification) {
    Controle<Ligne> c;
    try {
        const ModesDeControle modes;
        c.lignes = verification();
        c.code = static_cast<int32_t>(c.lignes.size());
    } catch (const Echec& e) {
        if (e.code >= 0) throw;
        c.code = SortieErreur(e);
    }
    return c;
}

// The file and the stylesheet, which a host must give (-20), the
// stylesheet possibly empty.
struct Destination {
    const char* fichier;
    std::string_view feuilleStyle;
};
Destination DestinationRequise(const char* fichier, const char* feuilleStyle) {
    if (!fichier || !*fichier || !feuilleStyle) throw Echec{Argument2};
    return {fichier, feuilleStyle};
}

// The codes of a prescription of a report: none gives -10.
std::vector<std::string> CodesRapport(SAFEARRAY** produits) {
    std::vector<std::string> codes = session().ModeSortie == ModeTableau ? CodesDuTableau(produits) : CodesDuTexte();
    if (codes.empty()) throw Echec{Argument1};
    return codes;
}

int32_t Ecrit(const Destination& sortie, const std::string& page, int32_t code) {
    EcritPage(sortie.fichier, page);
    return code;
}

int32_t Interactions(SAFEARRAY** produits, const char* fichier, const char* feuilleStyle) {
    const std::vector<std::string> codes = CodesRapport(produits);
    const Destination sortie = DestinationRequise(fichier, feuilleStyle);
    const auto c = Controlee<FicheInteraction2>([&] { return AnalyseInteractions(session(), codes); });
    return Ecrit(sortie, RapportInteractions(c, sortie.feuilleStyle, ChapitreIAM), c.code);
}

int32_t ContreIndications(int membre, EntreesProfil e, const char* fichier, const char* feuilleStyle, int32_t age,
                          int32_t poids, int32_t grossesse, int32_t allaitement, const char* sexe, const char* titre) {
    if (e.produits.empty()) throw Echec{Argument1};
    const Destination sortie = DestinationRequise(fichier, feuilleStyle);
    ProfilPatient& p = e.patient;
    p.Age = age;
    p.Poids = poids;
    p.Grossesse = grossesse;
    p.Allaitement = allaitement;
    p.Sexe = SexeNormalise(sexe);
    const auto c = Controlee<AlerteCI>(
        [&] { return ContreIndicationsPatient(session(), std::move(e.patient), e.produits, RegleRapport); });
    return Ecrit(sortie,
                 RapportContreIndications(c, membre, {grossesse, allaitement}, exports::TexteDe(titre),
                                          sortie.feuilleStyle),
                 c.code);
}

}  // namespace

VDX_EXPORT(InteractionsHtml_Vdx, Connecte, {}, (Liste, Produits), (Texte, Fichier), (Texte, FeuilleStyle)) {
    return Interactions(Produits, Fichier, FeuilleStyle);
}

VDX_EXPORT(Interactions2Html_Vdx, Connecte, {}, (Liste, Produits), (Liste, CodesPatient), (Liste, TypesPatient),
           (Texte, Fichier), (Texte, FeuilleStyle), (Entier, Age), (Entier, Poids), (Entier, Grossesse),
           (Entier, Allaitement), (Texte, Sexe)) {
    return Interactions(Produits, Fichier, FeuilleStyle);
}

VDX_EXPORT(RMOHtml_Vdx, Connecte, {}, (Liste, Produits), (Liste, CodesPatient), (Liste, TypesPatient),
           (Texte, Fichier), (Texte, FeuilleStyle)) {
    const std::vector<std::string> codes = CodesRapport(Produits);
    const Destination sortie = DestinationRequise(Fichier, FeuilleStyle);
    const auto c = Controlee<RMOProduit>([&] { return RMODesProduits(codes); });
    return Ecrit(sortie, RapportRMO(c, sortie.feuilleStyle), c.code);
}

VDX_EXPORT(ContreIndicationsProfilHtml_Vdx, Connecte, {}, (Liste, CodesPatient), (Liste, TypesPatient),
           (Liste, ValeursPatient), (Liste, Produits), (Entier, Age), (Entier, Poids), (Entier, Grossesse),
           (Entier, Allaitement), (Texte, Sexe), (Texte, Fichier), (Texte, FeuilleStyle)) {
    return ContreIndications(1, LitEntrees(CodesPatient, TypesPatient, ValeursPatient, Produits, nullptr, false),
                             Fichier, FeuilleStyle, Age, Poids, Grossesse, Allaitement, Sexe, nullptr);
}

VDX_EXPORT(ContreIndicationsProfil2Html_Vdx, Connecte, {}, (Liste, CodesPatient), (Liste, TypesPatient),
           (Liste, ValeursPatient), (Liste, Produits), (Entier, Age), (Entier, Poids), (Entier, Grossesse),
           (Entier, Allaitement), (Texte, Sexe), (Texte, Fichier), (Texte, FeuilleStyle), (Texte, Titre)) {
    return ContreIndications(2, LitEntrees(CodesPatient, TypesPatient, ValeursPatient, Produits, nullptr, false),
                             Fichier, FeuilleStyle, Age, Poids, Grossesse, Allaitement, Sexe, Titre);
}

VDX_EXPORT(ContreIndicationsProfil3Html_Vdx, Connecte, {}, (Liste, CodesPatient), (Liste, TypesPatient),
           (Liste, ValeursPatient), (Liste, Produits), (Liste, Analyses), (Entier, Age), (Entier, Poids),
           (Entier, Grossesse), (Entier, Allaitement), (Texte, Sexe), (Texte, Fichier), (Texte, FeuilleStyle),
           (Texte, Titre)) {
    return ContreIndications(3, LitEntrees(CodesPatient, TypesPatient, ValeursPatient, Produits, Analyses, true),
                             Fichier, FeuilleStyle, Age, Poids, Grossesse, Allaitement, Sexe, Titre);
}

VDX_EXPORT(ControleAllergiesHtml_Vdx, Connecte, {}, (Liste, Termes), (Liste, Allergenes), (Liste, Produits),
           (Texte, Fichier), (Texte, FeuilleStyle), (Entier, Notoires)) {
    const EntreesAllergies e = LitAllergies(Termes, Allergenes, Produits, true);
    if (e.produits.empty()) throw Echec{Argument1};
    const Destination sortie = DestinationRequise(Fichier, FeuilleStyle);
    const auto allergies = Controlee<FicheAllergie>(
        [&] { return ControleAllergies(session(), e.termes, e.allergenes, e.produits); });
    std::optional<Controle<FicheAllergie>> notoires;
    if (Notoires)
        notoires = Controlee<FicheAllergie>([&] { return RechercheExcipients(session(), e.allergenes, e.produits); });
    const auto ligneDC = [](const std::string& code) { return EstMedDC(code); };
    return Ecrit(sortie, RapportAllergies(allergies, notoires ? &*notoires : nullptr, ligneDC, sortie.feuilleStyle),
                 allergies.code);
}

VDX_EXPORT(SurdosageHtml_Vdx, Connecte, {}, (Liste, Produits), (Texte, Fichier), (Texte, FeuilleStyle)) {
    const std::vector<std::string> codes = CodesSurdosage(Produits);
    if (codes.empty()) throw Echec{Argument1};
    const Destination sortie = DestinationRequise(Fichier, FeuilleStyle);
    const auto c = Controlee<FicheSurdosage>([&] { return Redondances(session(), codes); });
    return Ecrit(sortie, RapportSurdosage(c, sortie.feuilleStyle), c.code);
}

VDX_EXPORT(IPCControleHtml_Vdx, Connecte, {}, (Liste, Produits), (Texte, Fichier), (Texte, FeuilleStyle)) {
    const std::vector<std::string> codes = CodesRapport(Produits);
    const Destination sortie = DestinationRequise(Fichier, FeuilleStyle);
    const auto c = Controlee<LigneIPC>([&] { return Incompatibilites(session(), codes); });
    return Ecrit(sortie, RapportIPC(c, sortie.feuilleStyle), c.code);
}

// The sheet of the first two products of the list; a list of one gives
// the sheet without rows.
VDX_EXPORT(IPC_InfoHtml_Vdx, Connecte, {}, (Liste, Produits), (Texte, Fichier), (Texte, FeuilleStyle)) {
    const std::vector<std::string> codes = CodesRapport(Produits);
    const Destination sortie = DestinationRequise(Fichier, FeuilleStyle);
    const std::vector<LigneIPC> lignes =
        codes.size() < 2 ? std::vector<LigneIPC>() : IncompatibilitesDeLaPaire(session(), codes[0], codes[1]);
    return Ecrit(sortie, FicheIPC(lignes, sortie.feuilleStyle), static_cast<int32_t>(lignes.size()));
}
