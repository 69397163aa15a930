// Product lookup and labels: the label of a product, its deletion, its
// laboratory, its replacement, and the list of all products by rank.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vdx32/oleauto.h"

namespace vdx {

// The label of a product as the other subsystems take it (the inner form
// of LibelleProduit_Vdx): `Libelle` of VDXPRO; a prescription line by
// common name gives its own label; no narcotic wording. nullopt for an
// unknown code. Throws Echec(-500).
std::optional<std::string> LibelleProduitInterne(std::string_view code);

// LibelleProduit_Vdx: -10 also for a line by common name that no product
// has (looked at only then); a narcotic's label has its numbers spelled out.
int32_t LibelleProduit(const char* code, BSTR* libelle);
// ProduitSupprime_Vdx: 1 and the date "JJ/MM/AAAA", or 0 and nothing.
int32_t ProduitSupprime(const char* code, BSTR* date);
// Laboratoire_Vdx: the laboratory's code and its label.
int32_t Laboratoire(const char* code, BSTR* codeLaboratoire, BSTR* libelle);
// CIP_Remplacant_Vdx.
int32_t CIPRemplacant(const char* code, BSTR* remplacant);

// TotalProduit_Vdx and GetProduit_Vdx: the positions of all products in
// code order, kept for the base they were counted in.
int32_t TotalProduit();
int32_t GetProduit(int32_t rang, BSTR* code, BSTR* libelle);

}  // namespace vdx
