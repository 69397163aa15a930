// The routes of administration of a product, and the parent of a
// substance: two lookups the safety checks share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vdx {

struct Voie {
    std::string CodeVoie;
    std::string Libelle;
};

// The routes of a product, with their labels ("Code X introuvable" for a
// route the vocabulary lacks). A failure of the store is not reported: the
// product just has fewer routes. With `tablesOuvertes` the caller holds
// VDXIDPVO and VDXIDVOI open.
std::vector<Voie> VoiesProduit(std::string_view codeCIP, bool tablesOuvertes = false);

// The label of a route, or "Code X introuvable"; the caller holds VDXIDVOI
// open. Throws Echec(-500).
std::string LibelleVoie(std::string_view code);

// The parent of a substance, the substance itself when it has none, and 0
// when no key stands at or above it. With `tablesOuvertes` the caller holds
// VDXWPEFI open. Throws Echec(-500) when the store fails.
int32_t SubstancePere(int32_t substance, bool tablesOuvertes = false);

}  // namespace vdx
