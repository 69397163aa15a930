// The rows of the tables whose update replaces a record by its first key:
// for each marker, its table and its fields in stream order, each read
// into the record at its offset as text, integer or float, or dropped.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "store/champ.h"

namespace vdx::maj {

// A field of a row: "T" text, "E" integer, "R" float and its offset in
// the record, "-" a field read and dropped. A text carries its field of the
// table's layout, for its width.
struct ChampRangee {
    enum Genre : uint8_t { Texte, Entier, Reel, Abandonne } genre;
    uint16_t decalage = 0;
    ChampTexte texte{};
};

struct RangeeParCle {
    std::string_view marqueur;
    const char* table;
    std::string_view champs;  // the fields, blank-separated
};

inline constexpr RangeeParCle RangeesParCle[] = {
    {"|LABF|", "VDXLAB", "T0 T5 T31"},
    {"|FAM|", "VDXFAM", "T0 T6 T57 T108"},
    {"|IDFOR|", "VDXIDFOR", "T0 T5 - T86 -"},
    {"|IDPRE|", "VDXIDPRE", "E0 T4 T55 -"},
    {"|IDUPR|", "VDXIDUPR", "E0 T4 T55 -"},
    {"|IDCON|", "VDXIDCON", "E0 T4 T55 -"},
    {"|IDUCO|", "VDXIDUCO", "E0 T4 -"},
    {"|CLA|", "VDXCLA", "T0 T8 T89 -"},
    {"|PPTER|", "VDXPPTER", "E0 T4 R8 T12 R16 T20 R24 R28 -"},
    {"|PIND|", "VDXPIND", "E0 T4 -"},
    {"|PNAT|", "VDXPNAT", "E0 T4 -"},
    {"|PVOI|", "VDXPVOI", "E0 T4 -"},
    {"|PMON|", "VDXPMOM", "E0 T4 R56 -"},
    {"|PUPRI|", "VDXPUPRI", "E0 T4 T55 -"},
    {"|VPAE|", "VDXVPAE", "E0 T4 -"},
    {"|VPAU|", "VDXVPAU", "E0 T4 -"},
    {"|ATC|", "VDXYATC", "T0 T8 T89 -"},
    {"|IDPVO|", "VDXIDPVO", "T0 T8 -"},
    {"|ZICLA|", "VDXZICLA", "E0 T4 - - E84 - T88"},
    {"|ZICLC|", "VDXZICLC", "E0 E4 E8 -"},
    {"|ZICLP|", "VDXZICLP", "E0 E4 -"},
};

// The fields of a row, its texts found in its table's layout (a text the
// layout lacks at its offset is a fault of the list).
std::vector<ChampRangee> ChampsDe(const RangeeParCle& rangee);
const RangeeParCle* RangeeDuMarqueur(std::string_view marqueur);
const RangeeParCle* RangeeDeLaTable(std::string_view table);

}  // namespace vdx::maj
