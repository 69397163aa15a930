#include "posology/quantite.h"

#include <charconv>
#include <cmath>

#include "posology/nombres.h"
#include "posology/vocabulaire.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/identification.h"
#include "store/layouts/posologie.h"

namespace vdx {

namespace {

VDX_TABLE(TableFacteurs, "VDXPDURC")
VDX_TABLE(TableUnitesPrise, "VDXPUPRI")
VDX_TABLE(TableContenants, "VDXIDCON")
VDX_TABLE(TablePresentations, "VDXIDPRE")
VDX_TABLE(TableUnitesPresentation, "VDXIDUPR")

// The period of one day, which a posology without period or duration takes.
constexpr int32_t Jour = 40;
// Periods from this one on are counted as durations of their own.
constexpr int32_t Semaine = 50;

// The bytes of ¼, ½ and ¾ in code page 1252, and what they stand for.
constexpr std::pair<char, float> Fractions[] = {{'\xBC', 0.25f}, {'\xBD', 0.5f}, {'\xBE', 0.75f}};

Mot MotDe(const Table& table, int32_t code) {
    TablesOuvertes tables{&table};
    Mot mot;
    if (const auto p = Curseur(table).Egale(CleEntiers({code}))) {
        const Fiche f(VueFicheA(table, *p));
        mot = {std::string(f.Texte(ModeleMot::Libelle)), std::string(f.Texte(ModeleMot::LibellePluriel))};
    }
    tables.Ferme();
    return mot;
}

std::string Nombre(float valeur, bool fractions) {
    std::string texte;
    TexteNombre(valeur, texte, fractions);
    return texte;
}

// The contents of a package from the text of its Contenance, up to its
// first blank: a quarter, half or three quarters by the byte before it,
// otherwise the number written.
float ContenuLu(std::string_view avantBlanc) {
    if (!avantBlanc.empty())
        for (const auto& [octet, valeur] : Fractions)
            if (avantBlanc.back() == octet) return valeur;
    float c = 0;
    std::from_chars(avantBlanc.data(), avantBlanc.data() + avantBlanc.size(), c);
    return std::isfinite(c) ? c : 0;
}

// The count of packages, its word, else the presentation's, else " ?.".
std::string AvecMot(std::string texte, float nombre, const Mot& contenant, const Mot& presentation) {
    const Mot* mot = !contenant.Singulier.empty() ? &contenant : !presentation.Singulier.empty() ? &presentation : nullptr;
    if (!mot) return texte + messages::SansContenant;
    return texte + " " + mot->Selon(nombre > 1);
}

}  // namespace

float ConversionDuree(int32_t a, int32_t b) {
    TablesOuvertes tables{&TableFacteurs()};
    float facteur = 0;
    if (const auto p = Curseur(TableFacteurs()).Egale(CodeDureeSurTrois(a) + CodeDureeSurTrois(b)))
        facteur = Fiche(VueFicheA(TableFacteurs(), *p)).Reel(VDXPDURC::Facteur);
    tables.Ferme();
    return facteur;
}

Mot UnitePrise(int32_t code) { return MotDe(TableUnitesPrise(), code); }
Mot Contenant(int32_t code) { return MotDe(TableContenants(), code); }
Mot Presentation(int32_t code) { return MotDe(TablePresentations(), code); }
Mot UnitePresentation(int32_t code) { return MotDe(TableUnitesPresentation(), code); }

ConditionnementProduit ConditionnementDe(const Fiche& f) {
    using namespace VDXIDPRO;
    return {f.Entier(CodePresentation),
            f.Reel(QuantitePresentation),
            f.Reel(QuantiteUnitePresentation),
            f.Entier(CodeContenant),
            {f.Entier(CodeUnitePrise), f.Entier(AvecContenance), f.Reel(Rapport), f.Entier(Secabilite),
             f.Entier(PrisesEntieres)},
            {f.Entier(CodeUnitePrise2), f.Entier(AvecContenance2), f.Reel(Rapport2), f.Entier(Secabilite2),
             f.Entier(PrisesEntieres2)}};
}

std::optional<ConditionnementProduit> ConditionnementDe(std::string_view cip) {
    TablesOuvertes tables{&TableIdentification()};
    std::optional<ConditionnementProduit> produit;
    if (const auto p = Curseur(TableIdentification()).Egale(cip))
        produit = ConditionnementDe(Fiche(VueFicheA(TableIdentification(), *p)));
    tables.Ferme();
    return produit;
}

float ValeurContenance(const ConditionnementProduit& produit, const UniteProduit& unite) {
    return unite.MesureLeContenu() ? produit.UnitesParBoite * produit.QuantiteParUnite / unite.Rapport : 0;
}

Contenance ContenanceDe(const ConditionnementProduit& produit, const UniteProduit& unite) {
    if (!unite.MesureLeContenu()) return {};
    const float valeur = ValeurContenance(produit, unite);
    return {valeur, Nombre(valeur, false) + " " + UnitePrise(unite.Code).Selon(valeur > 1)};
}

std::string Chiffres::operator()(float valeur) const {
    const std::string chiffres = Nombre(valeur, true);
    return lettres_ ? MotsPuisChiffres(valeur, chiffres) : chiffres;
}

std::string Chiffres::Entier(int32_t valeur) const {
    const std::string chiffres = std::to_string(valeur);
    return lettres_ ? MotsPuisChiffres(static_cast<float>(valeur), chiffres) : chiffres;
}

std::string Chiffres::ChiffresPuisMots(float valeur) const {
    const std::string chiffres = Nombre(valeur, true);
    return lettres_ ? vdx::ChiffresPuisMots(valeur, chiffres) : chiffres;
}

std::string Boites(float q, std::string_view contenu, const Mot& contenant, const Mot& presentation,
                   float& pourcentage, const Chiffres& chiffres) {
    float nombre = q;
    if (contenu.empty()) {
        nombre = 1;
        pourcentage = 100;
    } else if (const size_t blanc = contenu.find(' '); blanc != std::string_view::npos) {
        const float c = ContenuLu(contenu.substr(0, blanc));
        q = std::trunc(q * 1000) / 1000;
        if (c != 0) {
            const float x = q / c;
            float p = std::trunc(x);
            // A thousandth of a package more takes one more.
            if (std::trunc(p * 1000) < std::trunc(x * 1000)) p += 1;
            pourcentage = std::trunc((1 - (p - x)) * 10000) / 100;
            nombre = p;
        }
    }
    return AvecMot(chiffres.ChiffresPuisMots(nombre), nombre, contenant, presentation);
}

QuantiteTraitement CalculeQuantite(const PosologieHote& p, int32_t unite, float doseMin, float doseMax,
                                   const ConditionnementProduit& produit, const Chiffres& chiffres) {
    const Mot contenant = Contenant(produit.CodeContenant);
    const Mot presentation = Presentation(produit.CodePresentation);
    const int32_t duree = p.DureeMax != 0 ? p.DureeMax : p.DureeMin;
    float q = doseMin == 0 ? doseMax : (doseMax != 0 ? doseMax : doseMin);
    const bool premiere = unite == produit.Premiere.Code;
    if ((premiere ? produit.Premiere : produit.Seconde).PrisesEntieres != 0) q = std::ceil(q);
    if (p.CodePeriode == CodeCycle && p.PrisesMin != 0 && p.PrisesMax != 0)
        q = static_cast<float>(int64_t{p.PrisesMax} - p.PrisesMin + 1) * q;
    else if (p.CodePeriode != 0 && p.PrisesMin != 0)
        q = q * static_cast<float>(p.PrisesMax != 0 ? p.PrisesMax : p.PrisesMin);
    const float q0 = q;
    if (p.Intervalle != 0) q = q / static_cast<float>(p.Intervalle);
    int32_t periode = p.CodePeriode;
    if (periode == 0) {
        if (p.CodeMoment != 0)
            if (const auto moment = MomentDePrise(p.CodeMoment); moment && moment->Multiplicateur != 0)
                q = q * moment->Multiplicateur;
        periode = Jour;
    }
    int32_t codeDuree = p.CodeDuree;
    if (duree != 0)
        q = static_cast<float>(duree) * q;
    else if (codeDuree == 0)
        codeDuree = periode >= Semaine ? periode : Jour;
    if (periode != codeDuree)
        if (const float f = ConversionDuree(periode, codeDuree); f != 0) q = q * f;
    QuantiteTraitement t;
    t.Quantite = q;
    // The first take counts in full.
    if (p.Intervalle > 1) q = q + q0;
    if (p.NombreModeles != 0) {
        t.Boites = AvecMot(chiffres.Entier(p.NombreModeles), static_cast<float>(p.NombreModeles), contenant, presentation);
    } else if (premiere || unite == produit.Seconde.Code) {
        const Contenance c = ContenanceDe(produit, premiere ? produit.Premiere : produit.Seconde);
        t.Boites = Boites(q, c.Texte, contenant, presentation, t.Utilisation, chiffres);
    } else {
        // A unit of neither kind: the quantity, and in words the ceiling
        // dose's, as it has always been told.
        const std::string figures = Nombre(q, true);
        t.Boites = (chiffres.EnToutesLettres() ? vdx::ChiffresPuisMots(p.DoseMaximum, figures) : figures) +
                   messages::SansContenant;
    }
    return t;
}

}  // namespace vdx
