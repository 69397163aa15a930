// The two searches that every vocabulary shares, as engines that take the
// vocabulary (vocabulaires.h) and the export's name for its frame. Both walk
// a label key in key order; neither has a word index: the keyword searches
// compare inside each key, or inside each record for the copies.
#pragma once

#include <cstdint>

#include "vdx32/oleauto.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {

// The step search: one page of at most `nombre` rows whose key begins with
// the folded `texte`, behind the row whose label is `suite` when one is
// given. A `texte` beginning with a blank gives 0 before anything else, the
// host's array untouched. `nombre` counts the rows truly added: a row
// refused as a duplicate does not shorten the page. The rows delivered, or
// -20 (no array in mode 0), -500.
int32_t PasVocabulaire(VocabulaireDe vocabulaire, const char* texte, SAFEARRAY** tableau,
                       const char* suite, int32_t nombre);

// The keyword search: every row whose key holds `mot1` (at its start with
// `partout` 0, anywhere otherwise) and, when given, `mot2` in a place that
// does not overlap it. With `mot1` empty `mot2` is searched alone. The rows,
// or -10 (no word), -50 (no array in mode 0), -500.
int32_t MotVocabulaire(VocabulaireDe vocabulaire, const char* mot1, const char* mot2,
                       int32_t partout, SAFEARRAY** tableau);

// The keyword search of the copies (RechercheFamilleLexico_Vdx and its
// siblings): every row whose folded label, read from the record, holds
// `mot`, among the keys that begin with `prefixe` when one is given. The
// rows, or -10 (no word), -20 (no array in mode 0), -500.
int32_t MotFamille(VocabulaireDe vocabulaire, const char* mot, SAFEARRAY** tableau,
                   const char* prefixe);

}  // namespace vdx
