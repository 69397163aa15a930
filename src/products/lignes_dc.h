// Prescription lines by common name beside the products: the line of a
// product, and the products of a line.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "products/substances.h"
#include "session/contexte.h"

namespace vdx {

struct LigneDC {
    std::string Code;
    std::string Libelle;
};

// The line of a product (its first in VDXYDCIP by the product's code); a
// line stands for itself. None for a product without one. Throws Echec:
// -90 for a code that is neither a product nor a line, -500.
std::optional<LigneDC> LigneDuProduit(std::string_view code);
// The line VDXYDCIP gives a product's code, none when it gives none.
// Throws Echec(-500).
std::optional<LigneDC> LigneInscrite(std::string_view cip);

// Hands each product of a line to `chacun`, in VDXYDCIP's order, until it
// answers false. Throws Echec: -500.
void ParcourtProduitsDeLigne(std::string_view ligne, const std::function<bool(std::string cip)>& chacun);

// The first product of a line in VDXYDCIP, which stands for the line's
// substances in the checks (the products of a line share them); none for
// a code that is no line or a line without products. Throws Echec: -500.
std::optional<std::string> ProduitRepresentant(std::string_view ligne);

// The products a code stands for in the checks: a product itself; every
// product of a line (VDXYDCIP's order). Throws Echec: -500.
std::vector<std::string> ProduitsPourLeCode(std::string_view code);

// The products of a line, in the rows of PAProduits_Vdx: CodeCIP, label and
// the line's code in Nature; left out as the lists of products leave them
// (LibelleDeProduitMontre); by label. Throws Echec: -90 for a code that is
// no line, -500.
std::vector<ProduitDeSubstance> ProduitsDeLigne(const Contexte& contexte, std::string_view ligne);

}  // namespace vdx
