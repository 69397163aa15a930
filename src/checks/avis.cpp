#include "checks/avis.h"

#include <iterator>
#include <optional>

#include "checks/voies.h"
#include "products/composition.h"
#include "products/fiches.h"
#include "products/produits.h"
#include "products/substances.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/produits.h"
#include "store/layouts/reglementaire.h"
#include "store/pliage.h"
#include "session/texte.h"

namespace vdx {

namespace {

VDX_TABLE(TableCanicule, "VDXYCACO")
VDX_TABLE(TableCategoriesCanicule, "VDXYCAAR")
VDX_TABLE(TableCategoriesProduits, "VDXVPRO")

// A route of the whole body begins with it.
constexpr char VoieGenerale = 'A';
// Substance numbers are written on five digits in VDXYCACO's key.
constexpr size_t ChiffresSubstance = 5;
// The letter under which VDXVPRO files the products that have a rating.
constexpr char CategorieMediel[] = "M";

// The label of a category, its first letter in small; none when
// VDXYCAAR lacks the letter.
std::optional<std::string> Categorie(std::string_view lettre) {
    Curseur categories(TableCategoriesCanicule());
    const auto p = categories.Egale(CleTexte(lettre, VDXYCAAR::LettreCanicule.capacite(), ' '));
    if (!p) return std::nullopt;
    std::string libelle(Fiche(VueFicheA(TableCategoriesCanicule(), *p)).Texte(VDXYCAAR::Libelle));
    if (!libelle.empty()) libelle.front() = EnMinuscule(libelle.front());
    return libelle;
}

}  // namespace

AvisCanicule Canicule(const Contexte& contexte, const std::string& cip) {
    const DansContexte dans(contexte);
    AvisCanicule avis;
    for (const Voie& v : VoiesProduit(cip)) avis.voieGenerale |= v.CodeVoie.starts_with(VoieGenerale);
    if (!avis.voieGenerale) return avis;
    TablesOuvertes tables{&TableCanicule(), &TableCategoriesCanicule()};
    std::optional<int32_t> precedent;
    std::string lettrePrecedente;
    for (const Composant& c : CompositionProduit(cip).composants) {
        std::vector<int32_t> numeros{c.CodeSubstance};
        for (const Synonyme& s : SynonymesComposant(c.CodeSubstance)) numeros.push_back(s.Code);
        for (int32_t n : numeros) {
            const std::string debut = CleDecimale(n, ChiffresSubstance);
            Curseur cles(TableCanicule());
            for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut)) {
                const Fiche fiche(VueFicheA(TableCanicule(), *p));
                if (fiche.Entier(VDXYCACO::CodeSubstance) != n) continue;
                const std::string lettre(fiche.Texte(VDXYCACO::LettreCanicule));
                if (avis.phrase.empty())
                    avis.phrase = messages::CaniculeDebut +
                                  LibelleProduitInterne(cip).value_or(messages::CaniculeSansLibelle) +
                                  messages::CaniculeSuite;
                const std::optional<std::string> categorie = Categorie(lettre);
                if (precedent == n) {
                    if (lettre != lettrePrecedente && categorie)
                        avis.phrase.append(messages::CaniculeAutreCategorie).append(*categorie);
                } else if (categorie) {
                    avis.phrase.append(FinDeLigne).append(messages::CaniculeLigne).append(c.Libelle);
                    avis.phrase.append(messages::CaniculeCategorie).append(*categorie);
                }
                avis.concerne = true;
                precedent = n;
                lettrePrecedente = lettre;
            }
        }
    }
    tables.Ferme();
    return avis;
}

std::string_view TexteMediel(int32_t valeur) {
    const auto n = static_cast<int32_t>(std::size(messages::TextesMediel));
    return messages::TextesMediel[valeur >= 1 && valeur < n ? valeur - 1 : n - 1];
}

int32_t MedielDuProduit(const Contexte& contexte, const std::string& cip) {
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableComplements()};
    const std::optional<std::string> fiche = FicheDuCode(TableComplements(), cip);
    if (!fiche) throw Echec{CodeInconnu};
    const int32_t valeur = Fiche(*fiche).Entier(VDXPROA::Mediel);
    tables.Ferme();
    return valeur;
}

std::vector<LigneMediel> ProduitsMediel(const Contexte& contexte) {
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableCategoriesProduits(), &TableComplements()};
    std::vector<LigneMediel> lignes;
    Curseur cles(TableCategoriesProduits());
    for (auto p = cles.PremiereAvec(CategorieMediel); p; p = cles.SuivanteAvec(CategorieMediel)) {
        const Fiche produit(VueFicheA(TableCategoriesProduits(), *p));
        std::string cip(produit.Texte(VDXVPRO::CodeCIP));
        const std::optional<std::string> complement = FicheDuCode(TableComplements(), cip);
        if (!complement) throw Echec{CodeInconnu};
        lignes.push_back({std::move(cip), std::string(produit.Texte(VDXVPRO::Libelle)),
                          std::string(TexteMediel(Fiche(*complement).Entier(VDXPROA::Mediel)))});
    }
    tables.Ferme();
    return lignes;
}

}  // namespace vdx
