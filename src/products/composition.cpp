#include "products/composition.h"

#include <optional>

#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableComposants, "VDXVCOMP")
VDX_TABLE(TableTextes, "VDXVCOMG")
VDX_TABLE(TableSubstances, "VDXVPA")
VDX_TABLE(TableBases, "VDXVPAE")
VDX_TABLE(TableUnites, "VDXVPAU")
VDX_TABLE(TableExcipientsProduit, "VDXVCOME")
VDX_TABLE(TableExcipients, "VDXVEXC")

// The tables of a composition, in the order they are opened.
TablesOuvertes TablesComposition() {
    return TablesOuvertes({&TableComposants(), &TableTextes(), &TableSubstances(), &TableBases(), &TableUnites()});
}

}  // namespace

std::optional<std::string> LibelleParCode(const Table& table, const ChampTexte& libelle, int32_t code) {
    Curseur curseur(table);
    const auto position = curseur.Egale(CleEntiers({code}));
    if (!position) return std::nullopt;
    const std::string fiche = FicheA(table, *position);
    return std::string(Fiche(fiche).Texte(libelle));
}

std::string LibelleOuIntrouvable(const Table& table, const ChampTexte& libelle, int32_t code) {
    std::optional<std::string> texte = LibelleParCode(table, libelle, code);
    return texte ? std::move(*texte) : messages::CodeIntrouvable(std::to_string(code));
}

namespace {

// The walk of a product's components (a CodeCIP of seven characters).
std::optional<magasin::Position> PremierComposant(Curseur& composants, std::string_view codeCIP) {
    const auto p = composants.SuperieureOuEgale(codeCIP);
    return p && composants.Cle().substr(0, LongueurCIP) == codeCIP ? p : std::nullopt;
}
std::optional<magasin::Position> ComposantSuivant(Curseur& composants, std::string_view codeCIP) {
    const auto p = composants.Suivante();
    return p && composants.Cle().substr(0, LongueurCIP) == codeCIP ? p : std::nullopt;
}

}  // namespace

std::vector<int32_t> SubstancesDosees(std::string_view codeCIP) {
    std::vector<int32_t> substances;
    if (codeCIP.size() != LongueurCIP) return substances;
    TablesOuvertes tables{&TableComposants()};
    Curseur composants(TableComposants());
    for (auto p = PremierComposant(composants, codeCIP); p; p = ComposantSuivant(composants, codeCIP)) {
        const Fiche fiche(VueFicheA(TableComposants(), *p));
        if (fiche.Reel(VDXVCOMP::Quantite) != 0) substances.push_back(fiche.Entier(VDXVCOMP::CodeSubstance));
    }
    tables.Ferme();
    return substances;
}

Composition CompositionProduit(std::string_view codeCIP) {
    TablesOuvertes tables = TablesComposition();
    Composition composition;
    // Keys are cut to their length: a longer code would find a product by
    // its first seven characters.
    if (codeCIP.size() != LongueurCIP) {
        tables.Ferme();
        return composition;
    }

    Curseur textes(TableTextes());
    if (const auto position = textes.Egale(codeCIP)) {
        const std::string octets = FicheA(TableTextes(), *position);
        const std::string_view texte = Fiche(octets).Reste(VDXVCOMG::Longueur);
        composition.TexteComposition = texte.substr(0, texte.find('\0'));
        // Only the first byte of CodeExprime is read as the code.
        const int32_t base = octets.empty() ? 0 : static_cast<unsigned char>(octets[0]);
        if (auto libelle = LibelleParCode(TableBases(), VDXVPAE::LibelleExprime, base))
            composition.LibelleExprime = std::move(*libelle);
    }

    Curseur composants(TableComposants());
    for (auto position = PremierComposant(composants, codeCIP); position; position = ComposantSuivant(composants, codeCIP)) {
        const std::string octets = FicheA(TableComposants(), *position);
        const Fiche fiche(octets);
        Composant c;
        c.CodeSubstance = fiche.Entier(VDXVCOMP::CodeSubstance);
        c.Quantite = fiche.Reel(VDXVCOMP::Quantite);
        c.SansQuantite = c.Quantite == 0 ? 1 : 0;
        c.Libelle = LibelleOuIntrouvable(TableSubstances(), VDXVPA::Libelle, c.CodeSubstance);
        c.QuantiteTexte = fiche.Texte(VDXVCOMP::QuantiteTexte);
        c.LibelleUnite =
            LibelleOuIntrouvable(TableUnites(), VDXVPAU::LibelleUnite, fiche.Entier(VDXVCOMP::CodeUnite));
        composition.composants.push_back(std::move(c));
    }
    tables.Ferme();
    return composition;
}

std::vector<ExcipientProduit> ExcipientsDuProduit(std::string_view codeCIP) {
    TablesOuvertes tables{&TableExcipientsProduit(), &TableExcipients()};
    std::vector<ExcipientProduit> excipients;
    Curseur cles(TableExcipientsProduit());
    const std::string debut = CleTexte(codeCIP, LongueurCIP);
    for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut)) {
        const Fiche e(VueFicheA(TableExcipientsProduit(), *p));
        const int32_t code = e.Entier(VDXVCOME::CodeSubstance);
        std::string quantite(e.Texte(VDXVCOME::QuantiteTexte));
        const bool notoire = std::erase(quantite, VDXVCOME::MarqueEffetNotoire) > 0;
        const size_t debutTexte = quantite.find_first_not_of(' '), finTexte = quantite.find_last_not_of(' ');
        quantite = debutTexte == std::string::npos ? std::string() : quantite.substr(debutTexte, finTexte - debutTexte + 1);
        excipients.push_back({std::to_string(code), LibelleOuIntrouvable(TableExcipients(), VDXVEXC::Libelle, code),
                              std::move(quantite), notoire ? "1" : "0"});
    }
    tables.Ferme();
    return excipients;
}

}  // namespace vdx
