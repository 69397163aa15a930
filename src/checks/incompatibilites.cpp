#include "checks/incompatibilites.h"

#include <algorithm>
#include <set>

#include "checks/voies.h"
#include "products/composition.h"
#include "products/fiches.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableIncompatibilites, "VDXIPC")
VDX_TABLE(TableSubstances, "VDXVPA")

// The routes of the injectable group.
constexpr std::string_view VoieInjectable = "A2";
constexpr size_t ChiffresSubstance = 5;

// A side of a pair as a product meets it: its code in VDXIPC and label.
struct Cote {
    std::string code, libelle;
};

// The sides a product reaches: each of its components, itself, any product.
std::vector<Cote> Cotes(const std::string& cip) {
    std::vector<Cote> cotes;
    for (const Composant& c : CompositionProduit(cip).composants) {
        std::string code = CleDecimale(c.CodeSubstance, ChiffresSubstance);
        if (std::ranges::none_of(cotes, [&](const Cote& x) { return x.code == code; }))
            cotes.push_back({std::move(code), LibelleOuIntrouvable(TableSubstances(), VDXVPA::Libelle, c.CodeSubstance)});
    }
    cotes.push_back({cip, messages::ToutComposant});
    cotes.push_back({VDXIPC::TouteSubstance, messages::ToutProduit});
    return cotes;
}

std::string LibelleNiveau(int32_t niveau) {
    return niveau == 1 ? "Incompatible" : niveau == 2 ? "A \xE9viter" : messages::LibelleInconnu;
}

std::string LibelleCondition(std::string_view condition) {
    if (condition == "L") return "M\xEAme ligne de perfusion";
    if (condition == "S") return "M\xEAme seringue";
    if (condition == "Y") return "Site en Y";
    return messages::LibelleInconnu;
}

struct Produit {
    std::string cip, libelle;
    std::string voies;  // its injectable routes, empty when it has none
    std::vector<Cote> cotes;
};

Produit Lit(const std::string& cip) {
    Produit p{cip, LibelleProduitInterne(cip).value_or(messages::CIPInexistant(cip)), {}, Cotes(cip)};
    for (const Voie& v : VoiesDuProduit(cip))
        if (v.CodeVoie.starts_with(VoieInjectable)) p.voies += (p.voies.empty() ? "" : ", ") + v.Libelle;
    return p;
}

const std::string& VoiesOuInconnue(const Produit& p) {
    static const std::string inconnue = messages::VoieInconnue;
    return p.voies.empty() ? inconnue : p.voies;
}

// The rows of a pair, those filed in the prescription's order first.
void AjoutePaire(const Produit& p, const Produit& q, std::vector<LigneIPC>& lignes) {
    Curseur cles(TableIncompatibilites());
    std::set<std::string> vues;  // keys met, a row once a pair
    for (int sens = 0; sens < 2; ++sens)
        for (const Cote& a : p.cotes)
            for (const Cote& b : q.cotes) {
                if (a.code == VDXIPC::TouteSubstance && b.code == VDXIPC::TouteSubstance) continue;
                const Cote& premier = sens == 0 ? a : b;
                const Cote& second = sens == 0 ? b : a;
                const std::string tete = CleTexte(premier.code, LongueurCIP) + CleTexte(second.code, LongueurCIP);
                for (auto pos = cles.PremiereAvec(tete); pos; pos = cles.SuivanteAvec(tete)) {
                    if (!vues.insert(std::string(cles.Cle())).second) continue;
                    const Fiche f(VueFicheA(TableIncompatibilites(), *pos));
                    LigneIPC l;
                    l.CodeCIP1 = CIPSortant(p.cip);
                    l.Libelle1 = p.libelle;
                    l.CodeCIP2 = CIPSortant(q.cip);
                    l.Libelle2 = q.libelle;
                    l.CodeComposant1 = a.code;
                    l.LibelleComposant1 = a.libelle;
                    l.CodeComposant2 = b.code;
                    l.LibelleComposant2 = b.libelle;
                    l.Niveau = f.Entier(VDXIPC::Niveau);
                    l.LibelleNiveau = LibelleNiveau(l.Niveau);
                    l.Condition = f.Texte(VDXIPC::Condition);
                    l.LibelleCondition = LibelleCondition(l.Condition);
                    l.Texte = f.Texte(VDXIPC::Texte);
                    l.Source = f.Texte(VDXIPC::Source);
                    l.Voie1 = VoiesOuInconnue(p);
                    l.Voie2 = VoiesOuInconnue(q);
                    l.Sens = sens;
                    l.Rang = static_cast<int32_t>(lignes.size()) + 1;
                    lignes.push_back(std::move(l));
                }
            }
}

std::vector<LigneIPC> Paires(const Contexte& contexte, const std::vector<std::string>& produits, bool injectablesSeuls) {
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableIncompatibilites(), &TableSubstances()};
    std::vector<Produit> lus;
    for (const std::string& cip : produits) {
        if (std::ranges::any_of(lus, [&](const Produit& p) { return p.cip == cip; })) continue;
        Produit p = Lit(cip);
        if (!injectablesSeuls || !p.voies.empty()) lus.push_back(std::move(p));
    }
    std::vector<LigneIPC> lignes;
    for (size_t i = 0; i < lus.size(); ++i)
        for (size_t j = i + 1; j < lus.size(); ++j) AjoutePaire(lus[i], lus[j], lignes);
    tables.Ferme();
    return lignes;
}

}  // namespace

std::vector<LigneIPC> Incompatibilites(const Contexte& contexte, const std::vector<std::string>& produits) {
    return Paires(contexte, produits, true);
}

std::vector<LigneIPC> IncompatibilitesDeLaPaire(const Contexte& contexte, const std::string& code1,
                                                const std::string& code2) {
    if (code1 == code2) return {};
    return Paires(contexte, {code1, code2}, false);
}

}  // namespace vdx
