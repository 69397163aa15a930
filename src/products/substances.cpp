#include "products/substances.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "products/codes.h"
#include "products/composition.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableSynonymes, "VDXWSYNC")
VDX_TABLE(TableConcepts, "VDXWCCCO")
VDX_TABLE(TableSubstances, "VDXVPA")
VDX_TABLE(TableExcipients, "VDXVEXC")

// The reverse indexes, in the order they are looked at, and the word of
// their rows.
struct Inverse {
    const Table& table;
    const char* nature;
};
const std::array<Inverse, 2>& Inverses() {
    static const std::array<Inverse, 2> inverses{{{TableDuCatalogue("VDXVPAP"), "PA"}, {TableDuCatalogue("VDXVEXCP"), "EXC"}}};
    return inverses;
}

// The key of a reverse index: the substance on five digits, then the
// CodeCIP.
constexpr size_t ChiffresSubstance = 5;

// The walk of PAProduits_Vdx over the open tables.
class Parcours {
public:
    explicit Parcours(const Contexte& contexte) : contexte_(contexte) {}

    // The products of the substance `code` and of its synonyms.
    void Substance(int32_t code) {
        Curseur synonymes(TableSynonymes());
        auto position = synonymes.SuperieureOuEgale(CleEntiers({code, 0}));
        for (int32_t courant = code;;) {
            if (courant <= DerniereSubstance)
                Produits(courant);
            else
                Composants(courant);
            if (!position || LitMot(synonymes.Cle(), 0) != code) break;
            courant = LitMot(synonymes.Cle(), 4);
            position = synonymes.Suivante();
        }
    }

    std::vector<ProduitDeSubstance> Lignes() && {
        TrieParLibelle(lignes_);
        return std::move(lignes_);
    }

private:
    // A concept stands for its components.
    void Composants(int32_t codeConcept) {
        Curseur composants(TableConcepts());
        for (auto p = composants.SuperieureOuEgale(CleEntiers({codeConcept, 0}));
             p && LitMot(composants.Cle(), 0) == codeConcept; p = composants.Suivante())
            Produits(LitMot(composants.Cle(), 4));
    }

    void Produits(int32_t substance) {
        ParcourtProduitsDuComposant(substance, [&](std::string_view cip, const char* nature) {
            Produit(std::string(cip), nature);
        });
    }

    void Produit(std::string code, const char* nature) {
        // A product is shown or hidden alike whichever index names it: its
        // first meeting decides.
        if (!vus_.insert(code).second) return;
        std::optional<std::string> libelle = LibelleDeProduitMontre(contexte_, code);
        if (!libelle || (!contexte_.MedDCMasque && EstMedDC(code))) return;
        lignes_.push_back({std::move(code), std::move(*libelle), nature});
    }

    const Contexte& contexte_;
    std::unordered_set<std::string> vus_;
    std::vector<ProduitDeSubstance> lignes_;
};

}  // namespace

std::optional<std::string> LibelleDeProduitMontre(const Contexte& contexte, const std::string& code) {
    const std::optional<std::string> octets = FicheDuCode(TableProduits(), code);
    if (!octets) return messages::CIPInexistant(code);
    const Fiche fiche(*octets);
    if (!contexte.HospitaliersActifs && (fiche.Entier(VDXPRO::Drapeaux) & VDXPRO::Hospitalier)) return std::nullopt;
    if (!fiche.Texte(VDXPRO::Suppression).empty()) return std::nullopt;
    return std::string(fiche.Texte(VDXPRO::Libelle));
}

void ParcourtProduitsDuComposant(int32_t code, const std::function<void(std::string_view cip, const char* nature)>& chacun) {
    if (!CodeSubstanceValide(code)) return;  // no key holds it
    const std::string tete = CleDecimale(code, ChiffresSubstance);
    for (const Inverse& inverse : Inverses()) {
        Curseur cles(inverse.table);
        auto position = cles.SuperieureOuEgale(tete);
        // Nothing at or above the substance: the next index is not looked
        // at either.
        if (!position) return;
        for (; position && cles.Cle().substr(0, ChiffresSubstance) == tete; position = cles.Suivante()) {
            const std::string_view reste = cles.Cle().substr(ChiffresSubstance, LongueurCIP);
            chacun(reste.substr(0, reste.find('\0')), inverse.nature);
        }
    }
}

std::vector<ProduitDeSubstance> ProduitsDeSubstance(const Contexte& contexte, int32_t code) {
    const DansContexte dans(contexte);
    TablesOuvertes tables({&TableSynonymes(), &TableConcepts(), &Inverses()[0].table, &Inverses()[1].table,
                           &TableProduits()});
    Parcours parcours(contexte);
    parcours.Substance(code);
    std::vector<ProduitDeSubstance> lignes = std::move(parcours).Lignes();
    tables.Ferme();
    return lignes;
}

namespace {

// The label of a substance number in a table keyed by it.
std::string LibelleDeSubstance(const Table& table, const ChampTexte& champ, int32_t code) {
    if (!CodeSubstanceValide(code)) throw Echec{Argument1};
    TablesOuvertes tables{&table};
    std::optional<std::string> texte = LibelleParCode(table, champ, code);
    if (!texte) throw Echec{CodeInconnu};
    tables.Ferme();
    return std::move(*texte);
}

}  // namespace

std::string LibellePA(int32_t code) { return LibelleDeSubstance(TableSubstances(), VDXVPA::Libelle, code); }

std::string LibelleExcipient(int32_t code) { return LibelleDeSubstance(TableExcipients(), VDXVEXC::Libelle, code); }

std::vector<int32_t> CodesSynonymes(int32_t code) {
    TablesOuvertes tables({&TableSynonymes()});
    std::vector<int32_t> codes;
    Curseur cles(TableSynonymes());
    for (auto p = cles.SuperieureOuEgale(CleEntiers({code, 0})); p && LitMot(cles.Cle(), 0) == code;
         p = cles.Suivante())
        codes.push_back(LitMot(cles.Cle(), 4));
    tables.Ferme();
    return codes;
}

std::vector<Synonyme> SynonymesComposant(int32_t code) {
    TablesOuvertes tables({&TableSubstances()});
    std::vector<Synonyme> synonymes;
    for (int32_t synonyme : CodesSynonymes(code))
        synonymes.push_back({synonyme, LibelleOuIntrouvable(TableSubstances(), VDXVPA::Libelle, synonyme)});
    tables.Ferme();
    return synonymes;
}

}  // namespace vdx
