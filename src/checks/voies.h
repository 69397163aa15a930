// The routes of administration of a product, and the parent of a
// substance: two lookups the safety checks share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/lignes.h"

namespace vdx {

struct Voie {
    std::string CodeVoie;
    std::string Libelle;
};
VDX_LIGNE(Voie, CodeVoie, Libelle);

// The routes of a product, with their labels ("Code X introuvable" for a
// route the vocabulary lacks). A failure of the store is not reported: the
// product just has fewer routes.
std::vector<Voie> VoiesProduit(std::string_view codeCIP);
// The same where a failure of the store matters: throws Echec(-500).
std::vector<Voie> VoiesDuProduit(std::string_view codeCIP);

// The label of a route, or "Code X introuvable"; the caller holds VDXIDVOI
// open. Throws Echec(-500).
std::string LibelleVoie(std::string_view code);

// The parent of a substance, the substance itself when it has none, and 0
// when no key stands at or above it. Throws Echec(-500) when the store
// fails.
int32_t SubstancePere(int32_t substance);

}  // namespace vdx
