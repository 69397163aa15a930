// The label of a code of a vocabulary (LibelleVocabulaire), for the label
// exports and for the subsystems that show labels of codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vocabulary/vocabulaires.h"

namespace vdx {

// A code of 11 characters or more is refused without a lookup.
inline constexpr size_t LongueurCodeVocabulaire = 10;

// The label of `code` on the tables of the vocabulary, which the caller
// holds open; nullopt when there is no such code. A code is the first part
// of the code key, padded as the key is (the type digit of a term
// follows it there). Throws Echec(-500) on a failure of the store.
std::optional<std::string> LibelleOuvert(const Vocabulaire& vocabulaire, std::string_view code);

// The same, opening and closing the tables.
std::optional<std::string> LibelleVocabulaire(const Vocabulaire& vocabulaire, std::string_view code);
// A CIM10 code under three characters is a chapter, held in VDXVCIMA.
const Vocabulaire& VocabulaireCIM10(std::string_view code);


}  // namespace vdx
