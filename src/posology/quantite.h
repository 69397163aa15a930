// How much of a product a whole treatment takes and how many packages that
// is, with the share of the last package used; the figures of the
// sentences, which a narcotic's products give in words too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "posology/catalogue.h"
#include "store/fiche.h"

namespace vdx {

// How many periods a fit in one period b (24 hours in a day), from
// VDXPDURC; 0 for a pair it lacks. Throws Echec(-500).
float ConversionDuree(int32_t a, int32_t b);

// A word of the shape of the units of take, singular and plural; empty for
// a code its table lacks.
struct Mot {
    std::string Singulier;
    std::string Pluriel;
    const std::string& Selon(bool pluriel) const { return pluriel ? Pluriel : Singulier; }
};
Mot UnitePrise(int32_t code);    // VDXPUPRI
Mot Contenant(int32_t code);     // VDXIDCON, the package
Mot Presentation(int32_t code);  // VDXIDPRE
Mot UnitePresentation(int32_t code);  // VDXIDUPR

// One unit of take of a product, as VDXIDPRO tells it.
struct UniteProduit {
    int32_t Code = 0;
    int32_t AvecContenance = 0;
    float Rapport = 0;
    int32_t Arrondi = 0;         // the rounding code of its doses
    int32_t PrisesEntieres = 0;  // its takes are whole
    // A package's contents can be told in it.
    bool MesureLeContenu() const { return Code != 0 && AvecContenance != 0 && Rapport != 0; }
};
// A product's packages and units of take.
struct ConditionnementProduit {
    int32_t CodePresentation = 0;
    float UnitesParBoite = 0;
    float QuantiteParUnite = 0;
    int32_t CodeContenant = 0;
    UniteProduit Premiere;
    UniteProduit Seconde;
};
// None for a product VDXIDPRO lacks. Throws Echec(-500).
std::optional<ConditionnementProduit> ConditionnementDe(std::string_view cip);
ConditionnementProduit ConditionnementDe(const Fiche& identification);

// What a package holds in one of its units: units per package × quantity
// per unit / the unit's ratio, with its text ("30 comprimés"); 0 and no
// text for a unit without contents or ratio.
struct Contenance {
    float Valeur = 0;
    std::string Texte;
};
Contenance ContenanceDe(const ConditionnementProduit& produit, const UniteProduit& unite);
// Its value alone, with no word read.
float ValeurContenance(const ConditionnementProduit& produit, const UniteProduit& unite);

// The figures of a sentence: a quantity by TexteNombre with its halves and
// quarters, an integer in decimal; for a product told in words, the words
// first and the figures in brackets.
class Chiffres {
public:
    explicit Chiffres(bool enToutesLettres) : lettres_(enToutesLettres) {}
    bool EnToutesLettres() const { return lettres_; }
    std::string operator()(float valeur) const;
    std::string Entier(int32_t valeur) const;
    // The figures first and the words in brackets, for packages.
    std::string ChiffresPuisMots(float valeur) const;

private:
    bool lettres_;
};

// The number of packages a quantity takes, as text, and the share of the
// last package used (a percentage with two decimals): the contents read
// from the text of a Contenance up to its first blank; the package's word,
// else the presentation's, else " ?.".
std::string Boites(float quantite, std::string_view contenu, const Mot& contenant, const Mot& presentation,
                   float& pourcentage, const Chiffres& chiffres);

// The treatment of a posology in one unit, from its doses in that unit.
struct QuantiteTraitement {
    std::string Boites;
    float Utilisation = 0;
    float Quantite = 0;
};
QuantiteTraitement CalculeQuantite(const PosologieHote& posologie, int32_t unite, float doseMin, float doseMax,
                                   const ConditionnementProduit& produit, const Chiffres& chiffres);

}  // namespace vdx
