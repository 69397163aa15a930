// Lexico_Vdx: the keyword search of product labels that reads VDXVPRO as
// the bytes of a raw file rather than through an index.
//
// The base keeps VDXVPRO in the record store, so the scan reads a stream
// with the same effect as the raw file: a header of NULs, then the records
// one behind the other (in the order of the category key), every NUL read as
// "@". The rules on offsets (a match below position 31 or from 99900 on ends
// a block, blocks of 100000 bytes overlapping by 10000) then behave as they
// do on the raw file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "session/lignes.h"

namespace vdx {

namespace lexico {
inline constexpr size_t Entete = 128;        // bytes before the first record
inline constexpr size_t TailleBloc = 100000;  // bytes read at once
inline constexpr size_t Avance = 90000;       // from one block to the next
}  // namespace lexico

// The products whose label holds the words of `motsCherches` (up to three
// used, separated by "@"), none of those of `motsExclus`, under the category
// letter that the low byte of `options` selects; `options` 256 or more hides
// deleted products, which are otherwise marked "[SUP]". Rows of CodeCIP,
// label and an empty text; only the rows of ordinal `debut` (from 1) to
// index `debut` + `nombre` (from 0) are given. Throws Echec: -3 a first
// word of three characters or fewer, -1998 VDXVPRO can't be read, -1999 a
// block can't be scanned.
Lignes Lexico(std::string_view motsCherches, std::string_view motsExclus, int32_t options, int32_t debut,
              int32_t nombre);
// Its rows: CodeCIP, label, text.
inline const Gabarit GabaritLexico = {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};
// The shortest first word.
inline constexpr size_t LongueurMinLexico = 4;

// The first word as the scan looks for it: folded by PlieMotCle, then
// replaced by its abbreviation when the table has one.
std::string PremierMotLexico(std::string_view mot);

}  // namespace vdx
