// Arrays of records as a host makes them.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "platform/hote.h"
#include "session/lignes.h"
#include "vdx32/oleauto.h"

namespace vdx::essai {

// An empty one-dimensional array of records of `champs` fields.
inline SAFEARRAY* TableauDeFiches(unsigned champs) {
    SAFEARRAY* tableau = nullptr;
    if (SafeArrayAllocDescriptor(1, &tableau) != S_OK) return nullptr;
    tableau->cbElements = static_cast<ULONG>(champs * sizeof(void*));
    tableau->rgsabound[0].cElements = 0;
    tableau->rgsabound[0].lLbound = 0;
    if (SafeArrayAllocData(tableau) != S_OK) {
        SafeArrayDestroyDescriptor(tableau);
        return nullptr;
    }
    return tableau;
}

// Input arrays as a host makes them: strings of 8-bit bytes, and 32-bit
// integers.
inline SAFEARRAY* TableauDeChaines(const std::vector<std::string>& textes) { return hote::TableauDeChaines(textes); }
inline SAFEARRAY* TableauDEntiers(const std::vector<int32_t>& valeurs) {
    SAFEARRAY* t = SafeArrayCreateVector(VT_I4, 0, static_cast<ULONG>(valeurs.size()));
    for (LONG i = 0; i < static_cast<LONG>(valeurs.size()); ++i) {
        int32_t v = valeurs[i];
        SafeArrayPutElement(t, &i, &v);
    }
    return t;
}

// Frees the strings of a host's record of a shape.
inline void LibereFiche(void* fiche, const Gabarit& gabarit) {
    for (uint32_t c = 0; c < gabarit.size(); ++c)
        if (gabarit[c] == TypeChamp::Texte) hote::Libere(hote::Chaine(fiche, c));
}

}  // namespace vdx::essai
