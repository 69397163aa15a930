// The rows of an update file: for each marker, its table, the rule by which
// a row goes into it, and its fields in stream order, each read into the
// record at its offset as text, integer or float, as the key a table keeps
// outside its records, as a text of the record's body, kept aside for the
// marker's own handler, or dropped. The same lists read the rows and write
// them (vdx export-maj).
//
// Where a list differs from the row as first laid out, it follows the
// layout that the readers read, and says so beside the row.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "store/champ.h"

namespace vdx::maj {

// A field of a row. In a list: "T<offset>" text, "E<offset>" integer,
// "R<offset>" float, "K" the key outside the record, "C<n>" the n-th text
// of the body, "t" kept aside, "-" dropped.
struct ChampRangee {
    enum Genre : uint8_t { Texte, Entier, Reel, CleExterne, Partie, Aparte, Abandonne } genre;
    uint16_t decalage = 0;  // in the record; for a part, its number
    ChampTexte texte{};     // a text's field in the table's layout, for its width
};

enum class Regle : uint8_t {
    Cle,     // the record replaces the one of its first key
    Parent,  // a parent's first row deletes its old rows, every row adds one
    Aucune,  // rows read and dropped token by token
};

// The rows whose handler does more than its table's rule.
enum class Speciale : uint8_t { Aucune, Produit, Complement, Identification, Posologie, Substances };

struct Rangee {
    std::string_view marqueur;
    const char* table;
    std::string_view champs;  // the fields, blank-separated
    Regle regle = Regle::Cle;
    uint16_t parent = 0;  // Parent: the offset of the parent's field
    Speciale speciale = Speciale::Aucune;
};

inline constexpr Rangee Rangees[] = {
    {"|PRO|", "VDXPRO",
     "T0 T8 T43 T48 T50 T58 T66 T68 T71 T73 T76 T79 T81 T83 T85 T93 T95 T101 T112 T120 T122 T124 E208 T212 T214 "
     "E220 T224 - T234",
     Regle::Cle, 0, Speciale::Produit},
    {"|LABF|", "VDXLAB", "T0 T5 T31"},
    {"|FAM|", "VDXFAM", "T0 T6 T57 T108"},
    // The further product data, its families kept aside for VDXFAMP; the
    // last field carries NombreUCD, which the readers read at 128.
    {"|ADDON|", "VDXPROA", "T0 T8 - - t t t - E24 - - - E28 T32 T58 E72 E76 E80 E84 E88 T92 E100 - E120 E124 E128",
     Regle::Cle, 0, Speciale::Complement},
    {"|IDPRO|", "VDXIDPRO",
     "T0 T8 T39 T65 E72 R76 E80 R84 E88 E92 E96 R100 E104 E108 E112 E116 R120 E124 E128 - - - - - - - E132 - - - - - "
     "- -",
     Regle::Cle, 0, Speciale::Identification},
    {"|IDFOR|", "VDXIDFOR", "T0 T5 - T86 -"},
    {"|IDPRE|", "VDXIDPRE", "E0 T4 T55 -"},
    {"|IDUPR|", "VDXIDUPR", "E0 T4 T55 -"},
    {"|IDCON|", "VDXIDCON", "E0 T4 T55 -"},
    {"|IDUCO|", "VDXIDUCO", "E0 T4 -"},
    {"|CLA|", "VDXCLA", "T0 T8 T89 -"},
    {"|CLAP|", "VDXCLAP", "T0 T8 -", Regle::Parent, 8},
    // The rank, kept aside in the row, is stored at 8 where the key takes
    // it; the long text goes to VDXPTEXT.
    {"|PPROE|", "VDXPPROD",
     "T0 T8 E12 E16 E20 E24 E28 E32 R36 R40 E44 R48 E52 T56 E60 E64 E68 E72 E76 E80 E84 E88 R92 E96 E100 E104 E108 "
     "E112 t -",
     Regle::Parent, 0, Speciale::Posologie},
    {"|PPTER|", "VDXPPTER", "E0 T4 R8 T12 R16 T20 R24 R28 -"},
    {"|PIND|", "VDXPIND", "E0 T4 -"},
    {"|PNAT|", "VDXPNAT", "E0 T4 -"},
    {"|PVOI|", "VDXPVOI", "E0 T4 -"},
    // The kind of profile, kept aside in the row, is the integer at 56.
    {"|PPRO|", "VDXPPRO", "E0 T4 E56 T60 -"},
    {"|PMON|", "VDXPMOM", "E0 T4 R56 -"},
    {"|PUPRI|", "VDXPUPRI", "E0 T4 T55 -"},
    // The rank, kept aside in the row, is stored at 8 where the key takes it.
    {"|VCOMP|", "VDXVCOMP", "T0 T8 E12 T16 R100 E104 E108 -", Regle::Parent, 0},
    // The substance, the row's parent, is stored at 0 where the key takes it.
    {"|VPAP|", "VDXVPAP", "T0 T6 -", Regle::Parent, 0},
    {"|VCOMG|", "VDXVCOMG", "K E0 C0 -"},
    {"|VCOME|", "VDXVCOME", "T0 T8 E12 T16 E100 E104 -", Regle::Parent, 0},
    {"|VEXCP|", "VDXVEXCP", "T0 T6 -", Regle::Parent, 0},
    // Rows the update reads and drops, token by token: their fields as the
    // writer gives them.
    {"|VPA|", "VDXVPA", "E0 T4 E56 -", Regle::Aucune},
    {"|VEXC|", "VDXVEXC", "E0 T4 T34 -", Regle::Aucune},
    {"|VPAE|", "VDXVPAE", "E0 T4 -"},
    {"|VPAU|", "VDXVPAU", "E0 T4 -"},
    // The kind of term, the second field, is stored at 8.
    {"|VAMPC|", "VDXVAMPC", "T0 T8 - - T17 E28 -", Regle::Parent, 0},
    // The fields kept aside carry the analysis (its kind at 308, its text at
    // 312) and the last one the kind of term at 274, which the key takes.
    {"|VAMM|", "VDXVAMM", "T0 E308 T11 T144 T273 E276 E280 E284 E288 E292 E296 E300 E140 E304 T312 T274"},
    // The kind of link, kept aside in the row, is stored at 11.
    {"|VAMMC|", "VDXVAMMC", "T0 T11 T14 -", Regle::Parent, 0},
    {"|VAMPT|", "VDXVAMPT", "K C0 C1 C2 C3 C4 C5 C6 C7 C8 C9 C10 C11 C12 C13 -"},
    {"|VAMST|", "VDXVAMST",
     "K C0 C1 C2 C3 C4 C5 C6 C7 C8 C9 C10 C11 C12 C13 C14 C15 C16 C17 C18 C19 C20 C21 C22 C23 C24 C25 C26 C27 -"},
    // Code, label and interaction mark of VDXVPA, labels of VDXVEXC, four
    // texts not kept.
    {"|VCOMC|", "VDXVPA", "t t t t t t t t t", Regle::Cle, 0, Speciale::Substances},
    {"|ATC|", "VDXYATC", "T0 T8 T89 -"},
    {"|ATCP|", "VDXYATCP", "T0 T8 -", Regle::Parent, 8},
    {"|IDPVO|", "VDXIDPVO", "T0 T8 -"},
    {"|ZICLA|", "VDXZICLA", "E0 T4 - - E84 - T88"},
    {"|ZICLC|", "VDXZICLC", "E0 E4 E8 -"},
    {"|ZICLP|", "VDXZICLP", "E0 E4 -"},
    {"|ZITYP|", "VDXZITYP", "E0 T4 -", Regle::Aucune},
    {"|ZIGRA|", "VDXZIGRA", "E0 T4 E108 -", Regle::Aucune},
    // The four texts of the couple come in the dropped fields before Genre.
    {"|ZICOU|", "VDXZICOU",
     "E0 E4 E8 T12 T76 T140 T396 T398 T654 E656 E660 E664 - - - - T668 T679 T690 T718 T746 C0 C1 C2 C3 E1004 - -"},
};

// The fields of a row, its texts found in its table's layout (a text the
// layout lacks at its offset is a fault of the list).
std::vector<ChampRangee> ChampsDe(const Rangee& rangee);
const Rangee* RangeeDuMarqueur(std::string_view marqueur);

}  // namespace vdx::maj
