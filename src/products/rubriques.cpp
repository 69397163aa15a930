#include "products/rubriques.h"

#include <algorithm>
#include <functional>
#include <initializer_list>

#include "products/composition_liens.h"
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

VDX_TABLE(TableAccessoires, "VDXZMOVI")
VDX_TABLE(TableAspects, "VDXZASPT")
VDX_TABLE(TableEffets, "VDXYAMED")
VDX_TABLE(TableReconstitutions, "VDXZONCO")
VDX_TABLE(TableRecommandations, "VDXYMEDR")
VDX_TABLE(TableRMO, "VDXRMOC")

// The rows filed under `code` (padded to `largeur` in the key, the rank
// behind it), each the texts of `champs` as a row of `Ligne`, handed to
// `chacune`.
template <class Ligne>
void ParcourtRangees(const Table& table, std::string_view code, size_t largeur,
                     std::initializer_list<ChampTexte> champs, const std::function<void(Ligne)>& chacune) {
    const std::string tete = CleTexte(code, largeur);
    Curseur cles(table);
    for (auto p = cles.PremiereAvec(tete); p; p = cles.SuivanteAvec(tete)) {
        const Fiche f(VueFicheA(table, *p));
        std::vector<Valeur> valeurs;
        for (const ChampTexte& c : champs) valeurs.emplace_back(std::string(f.Texte(c)));
        chacune(LigneDe<Ligne>(std::move(valeurs)));
    }
}

template <class Ligne>
std::vector<Ligne> RangeesDuProduit(const Table& table, std::string_view cip, std::initializer_list<ChampTexte> champs) {
    TablesOuvertes tables{&table};
    std::vector<Ligne> lignes;
    ParcourtRangees<Ligne>(table, cip, LongueurCIP, champs, [&](Ligne l) { lignes.push_back(std::move(l)); });
    tables.Ferme();
    return lignes;
}

}  // namespace

std::vector<AccessoireProduit> AccessoiresDuProduit(std::string_view cip) {
    using namespace VDXZMOVI;
    return RangeesDuProduit<AccessoireProduit>(TableAccessoires(), cip, {CodeAccessoire, Libelle, Relation, Remarque});
}

std::vector<AspectProduit> AspectDuProduit(std::string_view cip) {
    using namespace VDXZASPT;
    return RangeesDuProduit<AspectProduit>(TableAspects(), cip, {Forme, Couleur, Marquage, Secabilite});
}

std::vector<EffetIndesirable> EffetsDuProduit(std::string_view cip) {
    using namespace VDXYAMED;
    return RangeesDuProduit<EffetIndesirable>(TableEffets(), cip, {ClasseOrgane, Frequence, Libelle});
}

std::vector<EtapeReconstitution> ReconstitutionDuProduit(std::string_view cip) {
    using namespace VDXZONCO;
    return RangeesDuProduit<EtapeReconstitution>(TableReconstitutions(), cip, {Etape, Solvant, Concentration, Stabilite});
}

namespace {

// The rows of a table of recommendations under the product, then its
// classes and the classes above each, each once.
std::vector<Recommandation> RecommandationsDe(const Table& table, std::string_view cip) {
    // The product, then its classes and the classes above each, each once.
    std::vector<std::string> codes{std::string(cip)};
    for (const std::string& classe : CodesClassesProduit(cip))
        for (size_t n = classe.size(); n > 0; --n)
            if (std::ranges::find(codes, classe.substr(0, n)) == codes.end()) codes.push_back(classe.substr(0, n));
    TablesOuvertes tables{&table};
    std::vector<Recommandation> lignes;
    for (const std::string& code : codes) {
        namespace r = ModeleRecommandation;
        ParcourtRangees<Recommandation>(table, code, r::Code.capacite(),
                                        {r::Code, r::Source, r::Date, r::Titre, r::Texte},
                                        [&](Recommandation l) { lignes.push_back(std::move(l)); });
    }
    tables.Ferme();
    return lignes;
}

}  // namespace

std::vector<Recommandation> RecommandationsDuProduit(std::string_view cip) {
    return RecommandationsDe(TableRecommandations(), cip);
}

std::vector<Recommandation> RMODuProduit(std::string_view cip) { return RecommandationsDe(TableRMO(), cip); }

std::vector<RMOProduit> RMODesProduits(const std::vector<std::string>& codes) {
    std::vector<RMOProduit> lignes;
    std::vector<std::string> vus;
    for (const std::string& cip : codes) {
        if (std::ranges::find(vus, cip) != vus.end()) continue;
        vus.push_back(cip);
        std::vector<Recommandation> rmo = RMODuProduit(cip);
        if (rmo.empty()) continue;
        const std::string libelle = LibelleProduitInterne(cip).value_or(messages::CIPInexistant(cip));
        for (Recommandation& r : rmo) lignes.push_back({cip, libelle, std::move(r)});
    }
    return lignes;
}

}  // namespace vdx
