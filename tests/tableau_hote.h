// Arrays of records as a host makes them.
#pragma once

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

}  // namespace vdx::essai
