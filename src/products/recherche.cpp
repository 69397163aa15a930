#include "products/recherche.h"

#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "products/codes.h"
#include "products/fiches.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/layouts.h"
#include "store/pliage.h"

namespace vdx {
namespace {

using magasin::Position;

VDX_TABLE(TableCategories, "VDXVPRO")
VDX_TABLE(TableMedecin, "PRO")

// The category whose products RechercheProduitParPas_Vdx hides on request.
constexpr int RubriqueMasquable = 40;

// A product met by a step search, and what decides whether it is shown.
struct Produit {
    std::string code, libelle, texte;
    bool supprime = false;
    int rubrique = 0;  // the first two digits of CodeRubrique
    int32_t drapeaux = 0;
};

// The first two digits of CodeRubrique, as a number.
int Rubrique(std::string_view codeRubrique) {
    int valeur = 0;
    for (char c : codeRubrique.substr(0, 2)) {
        if (c < '0' || c > '9') break;
        valeur = valeur * 10 + (c - '0');
    }
    return valeur;
}

// What of a product's VDXPRO record decides whether a search shows it.
void Etat(Produit& p, Fiche fiche) {
    p.supprime = !fiche.Texte(VDXPRO::Suppression).empty();
    p.rubrique = Rubrique(fiche.Texte(VDXPRO::CodeRubrique));
    p.drapeaux = fiche.Entier(VDXPRO::Drapeaux);
}

// What a step search walks: a label key, the letter that leads it, and how
// a position becomes a product.
struct Parcours {
    const Table& table;
    int cle;              // key number of the table, from 0
    std::string entete;   // the category letter of VDXVPRO, or nothing
    size_t libelleCle;    // the label's length in the key
    std::function<std::string(std::string_view)> cleLibelle;  // the key of a label
    bool filtresProduit;  // category 40 and hospital products
    std::function<Produit(Position)> lit;
};

// The parts of Texte: the prefix, then up to two words.
struct Demande {
    std::string prefixe;
    std::vector<std::string> mots;
};

Demande Decoupe(std::string_view texte, const Parcours& parcours) {
    std::vector<std::string_view> parts;
    for (size_t debut = 0; parts.size() < 3;) {
        const size_t fin = texte.find('@', debut);
        parts.push_back(texte.substr(debut, fin == std::string_view::npos ? fin : fin - debut));
        if (fin == std::string_view::npos) break;
        debut = fin + 1;
    }
    Demande d;
    d.prefixe = parcours.entete + PlieCleLibelle(parts[0]).substr(0, parcours.libelleCle);
    for (size_t i = 1; i < parts.size(); ++i)
        if (std::string mot = PlieCle(parts[i]); !mot.empty()) d.mots.push_back(std::move(mot));
    return d;
}

// The label key of the row named by Suite: its mark of a deleted product
// taken away with the blank in front of it, folded, points kept.
std::string CleSuite(std::string_view suite, const Parcours& parcours) {
    const std::string_view marque = messages::MarqueSupprime;
    if (suite.ends_with(marque)) suite.remove_suffix(marque.size());
    return parcours.cleLibelle(suite);
}

std::string_view LibelleDeCle(std::string_view cle) { return cle.substr(0, cle.find('\0')); }

bool Cache(const Contexte& contexte, const Produit& p, int32_t options, const Parcours& parcours) {
    bool cache = false;
    if (parcours.filtresProduit) {
        cache = (options & SansRubrique40) && p.rubrique == RubriqueMasquable;
        // With hospital products shown, a product is shown whatever its category.
        if (contexte.HospitaliersActifs)
            cache = false;
        else if (p.drapeaux & VDXPRO::Hospitalier)
            cache = true;
    }
    return cache || ((options & SansSupprimes) && p.supprime);
}


// The walk shared by the step searches, on tables the caller holds open.
Lignes Parcourt(const Contexte& contexte, const Parcours& parcours, std::string_view texte, int32_t options, std::string_view suite,
                 int32_t nombre) {
    Lignes resultat(GabaritProduit);
    const Demande demande = Decoupe(texte, parcours);
    Curseur curseur(parcours.table, parcours.cle);
    std::optional<Position> position;
    if (!suite.empty()) {
        const std::string cle = CleSuite(suite, parcours);
        position = curseur.SuperieureOuEgale(cle);
        // The page begins behind the row named, or at the next one when it has gone.
        if (position && curseur.Cle() == cle) position = curseur.Suivante();
    } else {
        position = curseur.SuperieureOuEgale(demande.prefixe);
    }
    if (!position) throw Echec{Rien};
    for (; nombre > 0 && position; position = curseur.Suivante()) {
        const std::string_view cle = LibelleDeCle(curseur.Cle());
        if (cle.size() < demande.prefixe.size()) continue;
        if (!cle.starts_with(demande.prefixe)) break;
        const std::string_view libelle = cle.substr(parcours.entete.size());
        bool retenu = true;
        for (const std::string& mot : demande.mots) retenu = retenu && libelle.find(mot) != std::string_view::npos;
        if (!retenu) continue;
        Produit p = parcours.lit(*position);
        if (Cache(contexte, p, options, parcours)) continue;
        if (p.supprime) p.libelle += messages::MarqueSupprime;
        const int32_t avant = resultat.Nombre();
        if (resultat.AjouteLigne({CIPSortant(p.code), std::move(p.libelle), std::move(p.texte)}) > avant) --nombre;
    }
    return resultat;
}

Produit ProduitDe(Position position) {
    const Fiche f(VueFicheA(TableProduits(), position));
    Produit p{std::string(f.Texte(VDXPRO::CodeCIP)), std::string(f.Texte(VDXPRO::Libelle)), {}};
    Etat(p, f);
    return p;
}

// A product of the doctor's: code, label and comment of the private record,
// its state from VDXPRO when the product is there.
Produit ProduitMedecin(Position position) {
    const Fiche f(VueFicheA(TableMedecin(), position));
    Produit p{std::string(f.Texte(PRO::CodeCIP)), std::string(f.Texte(PRO::Libelle)),
              std::string(f.Texte(PRO::Commentaire))};
    if (const std::optional<std::string_view> produit = VueDuCode(TableProduits(), p.code)) Etat(p, Fiche(*produit));
    return p;
}

Produit ProduitCategorie(Position position) {
    const std::string octets = FicheA(TableCategories(), position);
    const Fiche f(octets);
    Produit p{std::string(f.Texte(VDXVPRO::CodeCIP)), std::string(f.Texte(VDXVPRO::Libelle)), {}};
    p.supprime = !f.Texte(VDXVPRO::Suppression).empty();
    return p;
}

// The CodeCIP of a Suite given as a code, in the form the session gives
// codes out.
std::string CodeSuite(const Contexte& contexte, std::string_view suite) {
    const std::string code(suite.substr(0, LongueurCodeMax));
    return contexte.CIP13Actif == CIP13Correspondance ? VersCIP7(code) : code;
}

}  // namespace

Lignes RechercheProduitParPas(const Contexte& contexte, std::string_view texte, int32_t options, std::string_view suite,
                              int32_t nombre) {
    const DansContexte dans(contexte);
    if ((options & (SansRubrique40 | BaseMedecin)) == (SansRubrique40 | BaseMedecin)) throw Echec{Argument3};
    const size_t libelleCle = VDXPRO::Libelle.capacite();
    if (!(options & BaseMedecin)) {
        TablesOuvertes tables{&TableProduits()};
        Lignes lignes = Parcourt(contexte, {TableProduits(), 1, "", libelleCle, CleLibelleProduit, true, ProduitDe}, texte,
                                 options, suite, nombre);
        tables.Ferme();
        return lignes;
    }
    if (!contexte.ConnecteMedecin) throw Echec{MedecinNonConnecte};
    TablesOuvertes medecin;
    medecin.OuvreMedecin(TableMedecin());
    TablesOuvertes tables{&TableProduits()};
    Lignes lignes = Parcourt(contexte, {TableMedecin(), 1, "", libelleCle, CleLibelleProduit, true, ProduitMedecin}, texte,
                             options, suite, nombre);
    medecin.Ferme();
    tables.Ferme();
    return lignes;
}

Lignes RechercheProduitParPas2(const Contexte& contexte, std::string_view texte, int32_t options,
                               std::string_view suite, int32_t nombre) {
    const DansContexte dans(contexte);
    const std::optional<char> lettre = CategorieDesOptions(options);
    if (!lettre) throw Echec{Argument3};
    TablesOuvertes tables{&TableCategories()};
    // The letter leads the key, so a walk stays in its category.
    const auto cle = [l = *lettre](std::string_view libelle) { return CleCategorie(l, libelle); };
    Lignes lignes = Parcourt(contexte, {TableCategories(), 0, std::string(1, *lettre), VDXVPRO::Libelle.capacite(), cle, false,
                              ProduitCategorie},
                             texte, options, suite, nombre);
    tables.Ferme();
    return lignes;
}

Lignes RechercheProduitParStatut(const Contexte& contexte, int32_t codeStatut, std::string_view suite, int32_t nombre) {
    const DansContexte dans(contexte);
    Lignes resultat(GabaritProduit);
    TablesOuvertes tables{&TableComplements(), &TableProduits()};
    // Key 2 of VDXPROA: the status's four bytes, then the CodeCIP.
    const std::string statut = CleEntiers({codeStatut});
    const std::string depart = suite.empty() ? statut : statut + CodeSuite(contexte, suite);
    Curseur curseur(TableComplements(), 1);
    std::optional<Position> position = curseur.SuperieureOuEgale(depart);
    if (position && depart.size() > statut.size() && curseur.Cle().substr(0, depart.size()) == depart)
        position = curseur.Suivante();
    for (; position && curseur.Cle().starts_with(statut) && (nombre <= 0 || resultat.Nombre() < nombre);
         position = curseur.Suivante()) {
        const std::string complement = FicheA(TableComplements(), *position);
        const Fiche c(complement);
        const std::string_view code = c.Texte(VDXPROA::CodeCIP);
        std::string libelle = messages::CodeIntrouvable(code);
        if (const std::optional<std::string> produit = FicheDuCode(TableProduits(), code)) {
            const Fiche p(*produit);
            libelle = p.Texte(VDXPRO::Libelle);
            if (EstStupefiant(p.Texte(VDXPRO::CodeTableau), &c)) libelle = LibelleStupefiant(libelle);
        }
        resultat.AjouteLigne({CIPSortant(code), std::move(libelle), std::string()});
    }
    tables.Ferme();
    return resultat;
}

}  // namespace vdx
