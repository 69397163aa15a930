// What a treatment would cost with each product of the prescribed one's
// equivalence classes, in packages of each, against the prescription; and
// the number of packages of one product a quantity takes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "products/equivalents.h"
#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// Rang: how a candidate's treatment compares with the prescription's.
enum RangCout : int32_t {
    MoinsCher = 0,
    MemeCout = 1,
    PlusCher = 2,
    CandidatSansPrix = 3,
    PrescriptionSansPrix = 4,  // every row then
};

struct LigneOptimisation {
    int32_t Rang = 0;
    int32_t NombreBoites = 0;
    float TauxRemboursement = 0;
    std::string CodeClasse;
    std::string LibelleClasse;
    std::string CodeCIP;
    std::string LibelleProduit;
    std::string Prix;
    std::string Conditionnement;
    std::string Laboratoire;
};
VDX_LIGNE(LigneOptimisation, Rang, NombreBoites, TauxRemboursement, CodeClasse, LibelleClasse, CodeCIP,
          LibelleProduit, Prix, Conditionnement, Laboratoire);

// The treatment prescribed: a quantity in a unit of take, or when either
// is 0 a number of packages.
struct Traitement {
    int32_t Boites = 0;
    int32_t Unite = 0;
    float Quantite = 0;
};

// The candidates of the product's equivalence classes, at most `limite` a
// class (-1 no limit), by Rang and, within Rang 0 to 2, by cost; the walk's
// order otherwise. Throws Echec: -20 no packages where they are needed,
// -30 a negative unit, -40 a negative quantity; 0 for a product VDXIDPRO
// or VDXPRO lacks; -90 when no class key lies at or behind the code; -500.
std::vector<LigneOptimisation> Optimisation(const Contexte& contexte, const std::string& cip,
                                            const Traitement& traitement, int32_t limite);

// How many packages of a product a quantity in one of its units takes, and
// the word of its package (its presentation's when it has no package code).
struct Boitage {
    int32_t Nombre = 0;
    std::string Mot;
};
// Throws Echec(-90) for a product VDXIDPRO lacks, -500.
Boitage BoitageDe(std::string_view cip, int32_t unite, float quantite);

}  // namespace vdx
