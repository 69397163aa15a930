#include "products/produits_lies.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "products/equivalents.h"
#include "products/fiches.h"
#include "products/identification.h"
#include "products/lignes_dc.h"
#include "products/substances.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/codes.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"
#include "vocabulary/libelles.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {
namespace {

VDX_TABLE(TableClassesProduits, "VDXCLAP")
VDX_TABLE(TableFormesProduits, "VDXIDFOP")
VDX_TABLE(TableFamillesProduits, "VDXFAMP")
VDX_TABLE(TableLaboratoiresProduits, "VDXLABP")

}  // namespace

namespace liens {
const LienProduits Classes{TableClassesProduits, VDXCLAP::CodeClasse.capacite(), false};
const LienProduits Formes{TableFormesProduits, VDXIDFOP::CodeForme.capacite(), false};
const LienProduits Familles{TableFamillesProduits, VDXFAMP::CodeFamille.capacite(), true};
const LienProduits Laboratoires{TableLaboratoiresProduits, VDXLABP::CodeLaboratoire.capacite(), true};
}  // namespace liens

std::string CleDuCode(const LienProduits& lien, std::string_view code) {
    return CleTexte(code, lien.longueurFixe ? lien.largeur : std::min(code.size(), lien.largeur + LongueurCIP));
}

std::string_view CIPDeCle(std::string_view cle, size_t debut) {
    const std::string_view cip = cle.substr(debut, LongueurCIP);
    return cip.substr(0, cip.find('\0'));
}

void ParcourtProduitsLies(const LienProduits& lien, std::string_view code,
                          const std::function<void(std::string_view cip, std::string_view codeLie)>& chacun) {
    const std::string cle = CleDuCode(lien, code);
    Curseur cles(lien.table());
    for (auto p = cles.SuperieureOuEgale(cle); p && cles.Cle().substr(0, cle.size()) == cle; p = cles.Suivante())
        chacun(CIPDeCle(cles.Cle(), lien.largeur), SansBourrage(cles.Cle().substr(0, lien.largeur)));
}

std::vector<ProduitLie> ProduitsLies(const Contexte& contexte, const LienProduits& lien, std::string_view code) {
    if (code.size() > lien.largeur) throw Echec{CodeMalForme};
    const DansContexte dans(contexte);
    TablesOuvertes tables{&lien.table(), &TableProduits()};
    std::vector<ProduitLie> produits;
    std::unordered_set<std::string> vus;
    ParcourtProduitsLies(lien, code, [&](std::string_view cip, std::string_view codeLie) {
        std::string c(cip);
        if (!vus.insert(c).second) return;
        if (std::optional<std::string> libelle = LibelleDeProduitMontre(contexte, c))
            produits.push_back({std::move(c), std::move(*libelle), std::string(codeLie)});
    });
    tables.Ferme();
    TrieParLibelle(produits);
    return produits;
}

std::vector<ProduitDeClasse> ProduitsDeClasse(const Contexte& contexte, std::string_view classe) {
    std::vector<ProduitLie> produits = ProduitsLies(contexte, liens::Classes, classe);
    const DansContexte dans(contexte);
    TablesOuvertes tables(TablesCandidats());
    LibellesCandidats libelles;
    std::unordered_map<std::string, std::string> classes;
    std::vector<ProduitDeClasse> lignes;
    for (ProduitLie& p : produits) {
        ProduitDeClasse l;
        l.CodeCIP = p.CodeCIP;
        l.Libelle = std::move(p.Libelle);
        l.CodeClasse = p.Code;
        l.Prix = PrixNul;
        l.LibelleClasse = LuUneFois(classes, p.Code, [](const std::string& c) {
            return LibelleVocabulaire(vocabulaires::Classe(), c).value_or(messages::LibelleInconnu);
        });
        if (const auto economie = libelles.Economie(p.CodeCIP)) {
            l.Laboratoire = economie->Laboratoire;
            l.Prix = economie->Prix;
            l.TauxRemboursement = economie->TauxRemboursement;
            l.Generique = economie->Generique;
        }
        if (const auto id = FicheDuCode(TableIdentification(), p.CodeCIP)) {
            const Identite identite = IdentiteDe(Fiche(*id));
            l.Forme = libelles.Forme(identite.CodeForme);
            l.Dosage = identite.Dosage;
        }
        if (std::optional<LigneDC> ligne = LigneInscrite(p.CodeCIP)) l.CodeDC = std::move(ligne->Code);
        lignes.push_back(std::move(l));
    }
    tables.Ferme();
    return lignes;
}

}  // namespace vdx
