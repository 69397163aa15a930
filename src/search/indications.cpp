#include "search/indications.h"

#include <algorithm>

#include "checks/contreindications.h"
#include "products/equivalents.h"
#include "products/fiches.h"
#include "search/termes.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

// The names a failure of VDXVCIM gives its files.
constexpr char IndexCIM10[] = "VDXVCIM10.NDX";
constexpr char DonneesCIM10[] = "VDXVCIM10.DAT";

void NommeFichier(Echec& e) {
    const Table& equivalents = TableEquivalents();
    const Table& cim10 = TableCIM10();
    if (e.fichier == equivalents.fichierIndex || e.fichier == equivalents.fichierDonnees)
        e.fichier = FichierEquivalents;
    else if (e.fichier == cim10.fichierIndex)
        e.fichier = IndexCIM10;
    else if (e.fichier == cim10.fichierDonnees)
        e.fichier = DonneesCIM10;
}

// The wording of an indication term, empty when the vocabulary lacks it.
std::string Libelle(std::string_view terme) {
    Curseur termes(TableTermes());
    const auto p = termes.Egale(CleTexte(terme, LongueurTerme) + std::to_string(ModeIndication));
    return p ? std::string(Fiche(VueFicheA(TableTermes(), *p)).Texte(VDXVAMM::Libelle)) : std::string();
}

// What the rows of one term share, read once for all its products: its
// wording, whether it is exact, the labels of its equivalents.
struct Terme {
    std::string indication;
    bool exact = false;
    std::vector<LigneAMMEquivalent> equivalents;
};

// A new row: each row before it whose wording is the label of an equivalent
// of its term takes, as the new row does, the first row's wording, a comma
// and the new row's.
void Ajoute(std::vector<LigneIndication>& lignes, LigneIndication nouvelle, const Terme& terme) {
    for (LigneIndication& ligne : lignes)
        for (const LigneAMMEquivalent& equivalent : terme.equivalents)
            if (equivalent.Libelle == ligne.Indication) {
                std::string jointe = lignes.front().Indication + "," + nouvelle.Indication;
                ligne.Indication = jointe;
                nouvelle.Indication = std::move(jointe);
            }
    lignes.push_back(std::move(nouvelle));
}

}  // namespace

std::vector<LigneIndication> RechercheIndicationProduits(const Contexte& contexte, std::string_view code, int32_t type) {
    const DansContexte dans(contexte);
    std::vector<LigneIndication> lignes;
    try {
        TablesOuvertes tables{&TableProduits(),      &TableLiensTermes(), &TableCISPVersCIM10(), &TableTermesProduits(),
                              &TableTermes(),        &TableEquivalents(), &TableCISP(),          &TableCIM10()};
        const MarcheTermes marche({code, type, ModeIndication, false});
        Terme courant;
        // Each term's facts once, as its walk begins.
        const auto retient = [&](std::string_view terme) {
            courant = {Libelle(terme), type == ParTerme && marche.TermeDuCode(terme),
                       AMMEquivalents(terme)};
            return true;
        };
        marche.Parcourt(retient, [&](std::string_view, std::string_view cip) {
            const std::optional<std::string_view> produit = VueDuCode(TableProduits(), cip);
            if (!produit) return;
            const Fiche f(*produit);
            if (!contexte.HospitaliersActifs && (f.Entier(VDXPRO::Drapeaux) & VDXPRO::Hospitalier)) return;
            if (CodeEcarte(cip)) return;
            Ajoute(lignes, {courant.exact ? 1 : 0, CIPSortant(cip), std::string(f.Texte(VDXPRO::Libelle)), courant.indication},
                   courant);
        });
        tables.Ferme();
    } catch (Echec& e) {
        NommeFichier(e);
        throw;
    }
    // Strings compare as unsigned bytes.
    std::stable_sort(lignes.begin(), lignes.end(),
                     [](const LigneIndication& a, const LigneIndication& b) { return a.Libelle < b.Libelle; });
    return lignes;
}

}  // namespace vdx
