// The physico-chemical incompatibilities between the injectable products
// of a prescription: the pairs of VDXIPC that their sides (the product, each
// of its components, any product) reach, in either order, under a condition
// (same line, same syringe, Y-site).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// One incompatibility of a pair of products, numbered by Rang from 1. A
// component is the side of the pair that met the product: a substance
// (its number and label), the product as a whole (its CodeCIP, "Tout
// composant confondu") or any product ("*", "Tout Produit"). Voie: the
// product's injectable routes, or "Voie inconnue". Sens 1 when the pair is
// filed in the other order.
struct LigneIPC {
    int32_t Rang = 0;
    std::string CodeCIP1, Libelle1, CodeCIP2, Libelle2;
    std::string CodeComposant1, LibelleComposant1, CodeComposant2, LibelleComposant2;
    int32_t Niveau = 0;
    std::string LibelleNiveau, Condition, LibelleCondition, Texte, Source, Voie1, Voie2;
    int32_t Sens = 0;
};
VDX_LIGNE(LigneIPC, Rang, CodeCIP1, Libelle1, CodeCIP2, Libelle2, CodeComposant1, LibelleComposant1, CodeComposant2,
          LibelleComposant2, Niveau, LibelleNiveau, Condition, LibelleCondition, Texte, Source, Voie1, Voie2, Sens);
VDX_VUE(VueIPC, LigneIPC, Rang, CodeCIP1, Libelle1, CodeCIP2, Libelle2, Niveau, LibelleNiveau, LibelleCondition,
        Texte, Source);

// The incompatibilities of each pair of the prescription's injectable
// products (a route of the injectable group, "A2..."), in the order of the
// prescription, a code given twice taken once. Throws Echec(-500).
std::vector<LigneIPC> Incompatibilites(const Contexte& contexte, const std::vector<std::string>& produits);

// The incompatibilities of one pair of products, whatever their routes.
// Throws Echec(-500).
std::vector<LigneIPC> IncompatibilitesDeLaPaire(const Contexte& contexte, const std::string& code1,
                                                const std::string& code2);

}  // namespace vdx
