// The input lists of the checks: read from the host's arrays in mode 0, and
// from the text input (a list per block, each ended by an empty line) in
// the other modes.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "vdx32/oleauto.h"

namespace vdx {

// The codes of failure of one input array: absent (null), or present but
// unreadable (access refused, more than one dimension, elements of another
// size).
struct CodesEntree {
    int32_t absent;
    int32_t illisible;
};

// The text of a host string of an input: wide in a wide session, 8-bit
// bytes otherwise; cut at its first NUL and to `longueurMax` bytes.
inline constexpr size_t LongueurTexteHote = 254;
std::string TexteHote(BSTR chaine, size_t longueurMax = LongueurTexteHote);

// An array of strings (elements of a pointer's size). Throws Echec.
std::vector<std::string> ChainesDuTableau(SAFEARRAY* const* tableau, CodesEntree codes);
// An array of records of `champs` slots, each handed to `lit`. Throws Echec.
void FichesDuTableau(SAFEARRAY* const* tableau, CodesEntree codes, uint32_t champs,
                     const std::function<void(void* fiche)>& lit);
// An array of 32-bit integers: elements of 4 bytes, or of a record slot
// whose first 4 bytes hold the value. Throws Echec.
std::vector<int32_t> EntiersDuTableau(SAFEARRAY* const* tableau, CodesEntree codes);

// A biological result of a patient: a value or a range, and its kind.
struct Analyse {
    std::string ValeurAnalyse;
    int32_t TypeAnalyse = 0;
};
// An array of records of two fields, a string and an integer. A null
// string gives an empty value. Throws Echec.
std::vector<Analyse> AnalysesDuTableau(SAFEARRAY* const* tableau, CodesEntree codes);

// The lists of the text input, one after the other: each one's entries end
// at "@" or at a line end, and the list at an empty entry or at the end of
// the text. Lists the text lacks are empty.
class ListesDuTexte {
public:
    explicit ListesDuTexte(std::string texte) : texte_(std::move(texte)) {}
    bool Vide() const { return texte_.empty(); }
    std::vector<std::string> Suivante();

private:
    std::string texte_;
    size_t position_ = 0;
};

// The rows of an input text, one a line (CR LF), each cut into its fields
// at "@" and padded with empty ones to `champs`; empty lines are none.
std::vector<std::vector<std::string>> RangeesDuTexte(std::string_view texte, size_t champs);

// Integers of a list of texts; a text that is not a number gives 0.
std::vector<int32_t> EntiersDeTextes(const std::vector<std::string>& textes);

}  // namespace vdx
