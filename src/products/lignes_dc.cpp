#include "products/lignes_dc.h"

#include <algorithm>

#include "products/codes.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/codes.h"
#include "session/codeproduit.h"
#include "session/tables.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableProduitsDesLignes, "VDXYDCIP")

// The second key of VDXYDCIP: the product's code, then the line's.
constexpr int CleParProduit = 1;

}  // namespace

std::optional<LigneDC> LigneDuProduit(std::string_view code) {
    if (EstMedDC(code)) return LigneDC{std::string(code), LibelleMedDC(code).value_or("")};
    TablesOuvertes tables{&TableProduitsDesLignes(), &TableProduits()};
    Curseur curseur(TableProduitsDesLignes(), CleParProduit);
    std::optional<std::string> ligne;
    const std::string tete(code);
    if (curseur.SuperieureOuEgale(tete) && curseur.Cle().substr(0, LongueurCIP) == tete)
        ligne = std::string(curseur.Cle().substr(VDXYDCIP::CodeCIP.capacite(), LongueurCIP));
    const bool produit = ligne || VueDuCode(TableProduits(), code);
    tables.Ferme();
    if (!produit) throw Echec{CodeInconnu};
    if (!ligne) return std::nullopt;
    return LigneDC{*ligne, LibelleMedDC(*ligne).value_or("")};
}

std::vector<ProduitDeSubstance> ProduitsDeLigne(const Contexte& contexte, std::string_view ligne) {
    if (!EstMedDC(ligne)) throw Echec{CodeInconnu};
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableProduitsDesLignes(), &TableProduits()};
    std::vector<ProduitDeSubstance> produits;
    Curseur curseur(TableProduitsDesLignes());
    const std::string tete(ligne);
    for (auto p = curseur.SuperieureOuEgale(tete); p && curseur.Cle().substr(0, LongueurCIP) == tete; p = curseur.Suivante()) {
        std::string cip(curseur.Cle().substr(VDXYDCIP::CodeDCI.capacite(), LongueurCIP));
        if (std::optional<std::string> libelle = LibelleDeProduitMontre(contexte, cip))
            produits.push_back({std::move(cip), std::move(*libelle), tete});
    }
    tables.Ferme();
    std::ranges::stable_sort(produits, [](const ProduitDeSubstance& a, const ProduitDeSubstance& b) { return a.Libelle < b.Libelle; });
    return produits;
}

}  // namespace vdx
