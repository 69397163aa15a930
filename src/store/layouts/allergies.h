// The allergy thesaurus: concepts, components, synonyms, parents (the VDXW
// tables). Most are read by their keys alone; their records hold the
// integers of the key.
#pragma once

#include <cstdint>

#include "store/champ.h"
#include "store/layouts/modeles.h"

namespace vdx {

// Keys: CodeConcept + CodeComposant; CodeComposant + CodeConcept.
namespace VDXWCCCO {
inline constexpr uint32_t Longueur = 8;
VDX_ENTIER(CodeConcept, 0);
VDX_ENTIER(CodeComposant, 4);
}  // namespace VDXWCCCO

// Cross-allergies. Key: CodeConcept + ConceptCroise.
namespace VDXWALCR {
inline constexpr uint32_t Longueur = 8;
VDX_ENTIER(CodeConcept, 0);
VDX_ENTIER(ConceptCroise, 4);
}  // namespace VDXWALCR

// Synonyms. Key: CodeSubstance + CodeSynonyme.
namespace VDXWSYNC {
inline constexpr uint32_t Longueur = 8;
VDX_ENTIER(CodeSubstance, 0);
VDX_ENTIER(CodeSynonyme, 4);
}  // namespace VDXWSYNC

namespace VDXWPACO = ModeleConcept;
namespace VDXWAMCO = ModeleConcept;
namespace VDXWCTCO = ModeleConcept;
namespace VDXWDICO = ModeleVocabulaire;  // dictionary of pathologies

// Parent and child substances. Keys (10), the two numbers in decimal on five
// digits: CodeParent + CodeEnfant; CodeEnfant + CodeParent.
namespace VDXWPEFI {
inline constexpr uint32_t Longueur = 8;
VDX_ENTIER(CodeParent, 0);
VDX_ENTIER(CodeEnfant, 4);
}  // namespace VDXWPEFI

}  // namespace vdx
