#include "products/lignes_dc.h"

#include <algorithm>
#include <functional>

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
    std::optional<LigneDC> ligne = LigneInscrite(code);
    if (!ligne) {
        TablesOuvertes tables{&TableProduits()};
        const bool produit = VueDuCode(TableProduits(), code).has_value();
        tables.Ferme();
        if (!produit) throw Echec{CodeInconnu};
    }
    return ligne;
}

std::optional<LigneDC> LigneInscrite(std::string_view cip) {
    TablesOuvertes tables{&TableProduitsDesLignes()};
    Curseur curseur(TableProduitsDesLignes(), CleParProduit);
    std::optional<std::string> ligne;
    const std::string tete(cip);
    if (curseur.SuperieureOuEgale(tete) && curseur.Cle().substr(0, LongueurCIP) == tete)
        ligne = std::string(curseur.Cle().substr(VDXYDCIP::CodeCIP.capacite(), LongueurCIP));
    tables.Ferme();
    if (!ligne) return std::nullopt;
    return LigneDC{*ligne, LibelleMedDC(*ligne).value_or("")};
}

void ParcourtProduitsDeLigne(std::string_view ligne, const std::function<bool(std::string cip)>& chacun) {
    TablesOuvertes tables{&TableProduitsDesLignes()};
    Curseur curseur(TableProduitsDesLignes());
    const std::string tete(ligne);
    for (auto p = curseur.SuperieureOuEgale(tete); p && curseur.Cle().substr(0, LongueurCIP) == tete; p = curseur.Suivante())
        if (!chacun(std::string(curseur.Cle().substr(VDXYDCIP::CodeDCI.capacite(), LongueurCIP)))) break;
    tables.Ferme();
}

std::optional<std::string> ProduitRepresentant(std::string_view ligne) {
    if (!EstMedDC(ligne)) return std::nullopt;
    std::optional<std::string> produit;
    ParcourtProduitsDeLigne(ligne, [&](std::string cip) {
        produit = std::move(cip);
        return false;
    });
    return produit;
}

std::vector<std::string> ProduitsPourLeCode(std::string_view code) {
    if (!EstMedDC(code)) return {std::string(code)};
    std::vector<std::string> produits;
    ParcourtProduitsDeLigne(code, [&](std::string cip) {
        produits.push_back(std::move(cip));
        return true;
    });
    return produits;
}

std::vector<ProduitDeSubstance> ProduitsDeLigne(const Contexte& contexte, std::string_view ligne) {
    if (!EstMedDC(ligne)) throw Echec{CodeInconnu};
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableProduits()};
    std::vector<ProduitDeSubstance> produits;
    ParcourtProduitsDeLigne(ligne, [&](std::string cip) {
        if (std::optional<std::string> libelle = LibelleDeProduitMontre(contexte, cip))
            produits.push_back({std::move(cip), std::move(*libelle), std::string(ligne)});
        return true;
    });
    tables.Ferme();
    TrieParLibelle(produits);
    return produits;
}

}  // namespace vdx
