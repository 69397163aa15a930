#include "products/composition.h"

#include <bit>
#include <optional>

#include "platform/hote.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/tables.h"
#include "session/texte.h"
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

// The tables of a composition, in the order they are opened.
TablesOuvertes TablesComposition() {
    return TablesOuvertes({&TableComposants(), &TableTextes(), &TableSubstances(), &TableBases(), &TableUnites()});
}

// The host record of a component: SansQuantite, CodeSubstance, Quantite (a
// float in the first four bytes of its slot), then three strings.
const FormeHote FormeComposant{TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Entier,
                               TypeChamp::Texte,  TypeChamp::Texte,  TypeChamp::Texte};

// The host's array of components in mode 0. Its rows have no key to be
// unique by and one field is a float, so it is filled here rather than by
// Resultat: checked and emptied at once, grown in one step at delivery, and
// left empty on any other way out.
class TableauComposants {
public:
    explicit TableauComposants(SAFEARRAY** hote) {
        if (!hote || !*hote) throw Echec{Argument2};
        SAFEARRAY* t = *hote;
        if (t->cDims != 1 || hote::TailleElement(t) != hote::TailleFiche(static_cast<uint32_t>(FormeComposant.size())))
            throw Echec{Argument2};
        const int32_t vide = VideTableau(t, FormeComposant);
        if (vide < 0) throw Echec{vide};
        tableau_ = t;
    }
    ~TableauComposants() {
        if (tableau_) VideTableau(tableau_, FormeComposant);
    }
    TableauComposants(const TableauComposants&) = delete;
    TableauComposants& operator=(const TableauComposants&) = delete;

    // The rows, their strings in the session's form (wide in a wide session).
    void Livre(const std::vector<Composant>& composants) {
        if (!hote::Redimensionne(tableau_, static_cast<uint32_t>(composants.size()))) throw Echec{OperationTableau};
        const hote::Acces acces(tableau_);
        if (!acces) throw Echec{OperationTableau};
        const uint32_t taille = hote::TailleElement(tableau_);
        for (uint32_t i = 0; i < composants.size(); ++i) {
            const Composant& c = composants[i];
            void* e = acces.Element(taille, i);
            hote::PoseEntier(e, 0, c.SansQuantite);
            hote::PoseEntier(e, 1, c.CodeSubstance);
            hote::PoseEntier(e, 2, std::bit_cast<int32_t>(c.Quantite));
            RangeChaine(hote::Chaine(e, 3), c.Libelle);
            RangeChaine(hote::Chaine(e, 4), c.QuantiteTexte);
            RangeChaine(hote::Chaine(e, 5), c.LibelleUnite);
        }
        tableau_ = nullptr;  // delivered: the host's from now on
    }

private:
    SAFEARRAY* tableau_ = nullptr;
};

// The flat text: a row of the basis and the text, then a row per component
// (CodeSubstance, SansQuantite, Quantite as the library writes numbers, the
// three strings).
std::string TextePlat(const Composition& composition) {
    std::string plat;
    AjouteChamp(composition.LibelleExprime, plat);
    AjouteChamp(composition.TexteComposition, plat);
    for (const Composant& c : composition.composants) {
        AjouteTexte(FinDeLigne, plat);
        AjouteChamp(std::to_string(c.CodeSubstance), plat);
        AjouteChamp(std::to_string(c.SansQuantite), plat);
        std::string quantite;
        TexteNombre(c.Quantite, quantite, false);
        AjouteChamp(quantite, plat);
        AjouteChamp(c.Libelle, plat);
        AjouteChamp(c.QuantiteTexte, plat);
        AjouteChamp(c.LibelleUnite, plat);
    }
    return plat;
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
    for (auto position = composants.SuperieureOuEgale(codeCIP);
         position && composants.Cle().substr(0, LongueurCIP) == codeCIP; position = composants.Suivante()) {
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

int32_t ProduitPA(const char* code, SAFEARRAY** tableau, BSTR* exprime, BSTR* composition) {
    const std::string cip = CodeProduit(code);
    TablesOuvertes tables = TablesComposition();
    std::optional<TableauComposants> hote;
    if (session().ModeSortie == ModeTableau) {
        hote.emplace(tableau);
        RangeChaine(exprime, std::nullopt);
        RangeChaine(composition, std::nullopt);
    }
    const Composition resultat = CompositionProduit(cip);
    // Nothing is delivered for a product without component: the host
    // strings stay empty.
    if (resultat.composants.empty()) throw Echec{Rien};
    if (hote) {
        hote->Livre(resultat.composants);
        LivreValeur(exprime, resultat.LibelleExprime, Argument3);
        LivreValeur(composition, resultat.TexteComposition, Argument4);
    } else {
        LivreTexte(TextePlat(resultat));
    }
    tables.Ferme();
    return static_cast<int32_t>(resultat.composants.size());
}

}  // namespace vdx
