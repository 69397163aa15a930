// What the checks ask of a product beside its composition: its therapeutic
// classes (ProduitClasse_Vdx) and its routes (ListeVoie_Vdx).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vdx32/oleauto.h"

namespace vdx {

// A therapeutic class of a product, its label from VDXCLA, or "Libellé
// inconnu".
struct ClasseDuProduit {
    std::string CodeClasse;
    std::string Libelle;
};

// The classes of `codeCIP` in the order of their codes (VDXCLAP by product).
// Throws Echec(-500).
std::vector<ClasseDuProduit> ClassesProduit(std::string_view codeCIP);

// ProduitClasse_Vdx: rows of three strings, the class code, the product's
// CodeCIP and the class label. The rows, 0 for a product without class;
// -10, -13, -20, -500.
int32_t ProduitClasse(const char* code, SAFEARRAY** tableau);

// ListeVoie_Vdx: rows of two strings, the route code and its label, as
// VoiesProduit gives them. The rows, 0 none; -10, -13, -20.
int32_t ListeVoie(const char* code, SAFEARRAY** tableau);

}  // namespace vdx
