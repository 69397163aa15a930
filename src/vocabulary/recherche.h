// The two searches that every vocabulary shares, as engines that take the
// vocabulary (vocabulaires.h). Both walk a label key in key order; neither
// has a word index: the keyword searches compare inside each key, or inside
// each record for the copies.
#pragma once

#include <cstdint>
#include <string_view>

#include "session/lignes.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {

// The step search: one page of at most `nombre` rows whose key begins with
// the folded `texte`, behind the row whose label is `suite` when one is
// given. `nombre` counts the rows truly added: a row refused as a
// duplicate does not shorten the page. No start gives Echec(0). Throws
// Echec(-500).
Lignes PasVocabulaire(const Vocabulaire& v, std::string_view texte, std::string_view suite, int32_t nombre);

// The keyword search: every row whose key holds `mot1` (at its start, or
// anywhere when `partout`) and, when given, `mot2` in a place that does not
// overlap it. With `mot1` empty `mot2` is searched alone; no word at all
// gives Echec(-10).
Lignes MotVocabulaire(const Vocabulaire& v, std::string_view mot1, std::string_view mot2, bool partout);

// The keyword search of the copies (RechercheFamilleLexico_Vdx and its
// siblings): every row whose folded label, read from the record, holds
// `mot`, among the keys that begin with `prefixe` when one is given.
Lignes MotFamille(const Vocabulaire& v, std::string_view mot, std::string_view prefixe);

}  // namespace vdx
