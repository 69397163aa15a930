#include "products/optimisation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "posology/quantite.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/tables.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {

namespace {


// Added to a share of packages before it is truncated: a quantity a ten
// thousandth above a whole number of packages does not take one more.
constexpr double Arrondi = 0.9999;

// The age flags of a name and the bit each sets.
constexpr std::pair<std::string_view, int32_t> Ages[] = {
    {" E", 2}, {" N", 4}, {"B\xE9" "b\xE9", 4}};
constexpr std::string_view Adulte = " Ad";

int32_t BoitesPour(float quantite, float contenu, int32_t sinon) {
    if (contenu == 0) return sinon;
    const double boites = std::trunc(static_cast<double>(quantite) / contenu + Arrondi);
    // A quantity beyond any package count is held at the largest count.
    if (!(boites < std::numeric_limits<int32_t>::max())) return std::numeric_limits<int32_t>::max();
    return boites > 0 ? static_cast<int32_t>(boites) : 0;
}

int32_t AgesPrescription(std::string_view nom) {
    int32_t ages = nom.find(Adulte) != std::string_view::npos ? 1 : 0;
    for (const auto& [texte, bit] : Ages)
        if (nom.find(texte) != std::string_view::npos) ages |= bit;
    return ages;
}

// A candidate's flags start from its " Ad" alone, and each later hit takes
// the prescription's flags with that bit: a candidate named for children
// matches a prescription for adults and children.
int32_t AgesCandidat(std::string_view nom, int32_t prescription) {
    int32_t ages = nom.find(Adulte) != std::string_view::npos ? 1 : 0;
    for (const auto& [texte, bit] : Ages)
        if (nom.find(texte) != std::string_view::npos) ages = prescription | bit;
    return ages;
}

// The quantity to replace, Q in the unit u, and the same in the unit v,
// Q2; N, the prescription's packages.
struct AQuantifier {
    int32_t u = 0;
    float Q = 0;
    int32_t v = 0;
    float Q2 = 0;
    int32_t N = 0;
};

// A product's unit of take of a code, none when it has no such unit.
const UniteProduit* UniteDuCode(const ConditionnementProduit& produit, int32_t code) {
    if (code == produit.Premiere.Code) return &produit.Premiere;
    if (code == produit.Seconde.Code) return &produit.Seconde;
    return nullptr;
}

AQuantifier QuantiteARemplacer(const ConditionnementProduit& produit, const Traitement& t) {
    AQuantifier q;
    if (t.Unite == 0 || t.Quantite == 0) {
        // Packages: compared on the contents of the units of take when the
        // product has them, else on its units per package.
        q.N = t.Boites;
        q.Q = static_cast<float>(t.Boites * static_cast<double>(produit.UnitesParBoite));
        if (const float c = ValeurContenance(produit, produit.Premiere); c != 0) {
            q.u = produit.Premiere.Code;
            q.Q = static_cast<float>(t.Boites * static_cast<double>(c));
        }
        if (const float c2 = ValeurContenance(produit, produit.Seconde); c2 != 0) {
            q.v = produit.Seconde.Code;
            q.Q2 = static_cast<float>(t.Boites * static_cast<double>(c2));
        }
        return q;
    }
    q.u = t.Unite;
    q.Q = t.Quantite;
    const UniteProduit* unite = UniteDuCode(produit, t.Unite);
    const float c = unite ? ValeurContenance(produit, *unite) : 0;
    if (unite) {
        const UniteProduit& autre = unite == &produit.Premiere ? produit.Seconde : produit.Premiere;
        const float c2 = ValeurContenance(produit, autre);
        if (c != 0 && c2 != 0) {
            q.v = autre.Code;
            // Q / (c / c2), worked as Q × c2 / c so that 24 spoons of 5 ml
            // are 120 ml, not 119.99 truncated.
            q.Q2 = static_cast<float>(std::trunc(t.Quantite * static_cast<double>(c2) / c));
        }
    }
    q.N = BoitesPour(q.Q, c, 1);
    return q;
}

// The packages of a candidate for the quantity, once u and v are
// exchanged when only v is one of its units (the exchange stays).
int32_t BoitesDuCandidat(const ConditionnementProduit& candidat, AQuantifier& q) {
    if (q.u != 0 && !UniteDuCode(candidat, q.u) && q.v != 0 && UniteDuCode(candidat, q.v)) {
        std::swap(q.u, q.v);
        std::swap(q.Q, q.Q2);
    }
    const UniteProduit* unite = UniteDuCode(candidat, q.u);
    return unite ? BoitesPour(q.Q, ValeurContenance(candidat, *unite), q.N) : q.N;
}

void VerifieTraitement(const Traitement& t) {
    if (t.Unite < 0) throw Echec{Argument3};
    if (!(t.Quantite >= 0)) throw Echec{Argument4};
    if ((t.Unite == 0 || t.Quantite == 0) && t.Boites < 1) throw Echec{Argument2};
}

int64_t Cout(const std::string& prix, int32_t boites) { return std::stoll(prix) * boites; }

struct Candidat {
    LigneOptimisation ligne;
    int64_t cout = 0;
};

// Rang against the reference, then the stable order by Rang and, for
// Rang 0 to 2, by cost.
std::vector<LigneOptimisation> Classe(std::vector<Candidat> candidats, const std::string& prix, int32_t boites) {
    const bool sansPrix = prix == PrixNul;
    const int64_t reference = sansPrix ? 0 : Cout(prix, boites);
    for (Candidat& c : candidats) {
        LigneOptimisation& l = c.ligne;
        if (sansPrix) {
            l.Rang = PrescriptionSansPrix;
        } else if (l.Prix == PrixNul) {
            l.Rang = CandidatSansPrix;
        } else {
            c.cout = Cout(l.Prix, l.NombreBoites);
            l.Rang = c.cout < reference ? MoinsCher : c.cout == reference ? MemeCout : PlusCher;
        }
    }
    std::ranges::stable_sort(candidats, [](const Candidat& a, const Candidat& b) {
        return std::pair(a.ligne.Rang, a.cout) < std::pair(b.ligne.Rang, b.cout);
    });
    std::vector<LigneOptimisation> lignes;
    lignes.reserve(candidats.size());
    for (Candidat& c : candidats) lignes.push_back(std::move(c.ligne));
    return lignes;
}

}  // namespace

std::vector<LigneOptimisation> Optimisation(const Contexte& contexte, const std::string& cip,
                                            const Traitement& traitement, int32_t limite) {
    VerifieTraitement(traitement);
    const DansContexte dans(contexte);
    TablesOuvertes tables(TablesCandidats());
    const auto identification = FicheDuCode(TableIdentification(), cip);
    const auto produit = FicheDuCode(TableProduits(), cip);
    if (!identification || !produit) throw Echec{Rien};
    const Fiche prescrit(*identification);
    const Identite identite = IdentiteDe(prescrit);
    const int32_t ages = AgesPrescription(identite.Denomination);
    const std::string prix = PrixLu(Fiche(*produit).Texte(VDXPRO::DonneeEco2));
    AQuantifier quantite = QuantiteARemplacer(ConditionnementDe(prescrit), traitement);

    std::vector<Candidat> candidats;
    LibellesCandidats libelles;
    for (const ClasseEquivalence& classe : ClassesEquivalence(cip)) {
        ParcourtCandidats(classe.Code, cip, limite, [&](std::string_view autre, const Fiche& id) {
            const Identite sienne = IdentiteDe(id);
            if (!DosagesEgaux(identite.Dosage, sienne.Dosage) || !FormesCompatibles(identite.CodeForme, sienne.CodeForme))
                return false;
            if (classe.ParNom() && sienne.Denomination != identite.Denomination) return false;
            if (AgesCandidat(sienne.Denomination, ages) != ages) return false;

            LigneOptimisation l;
            l.Prix = PrixNul;
            if (const auto economie = libelles.Economie(autre)) {
                if (economie->Hospitalier || economie->Supprime) return false;
                l.Prix = economie->Prix;
                l.TauxRemboursement = economie->TauxRemboursement;
                l.Laboratoire = economie->Laboratoire;
            }
            l.LibelleProduit = libelles.Libelle(id);
            l.NombreBoites = BoitesDuCandidat(ConditionnementDe(id), quantite);
            l.Conditionnement = libelles.Conditionnement(id).Selon(l.NombreBoites > 1);
            l.CodeClasse = classe.Code;
            l.LibelleClasse = classe.Libelle;
            l.CodeCIP = CIPSortant(autre);
            candidats.push_back({std::move(l)});
            return true;
        });
    }
    tables.Ferme();
    return Classe(std::move(candidats), prix, quantite.N);
}

Boitage BoitageDe(std::string_view cip, int32_t unite, float quantite) {
    const std::optional<ConditionnementProduit> produit = ConditionnementDe(cip);
    if (!produit) throw Echec{CodeInconnu};
    const UniteProduit* sienne = UniteDuCode(*produit, unite);
    const int32_t nombre = BoitesPour(quantite, sienne ? ValeurContenance(*produit, *sienne) : 0, 1);
    const Mot mot =
        produit->CodeContenant != 0 ? Contenant(produit->CodeContenant) : Presentation(produit->CodePresentation);
    return {nombre, mot.Selon(nombre > 1)};
}

}  // namespace vdx
