// Key builders. Every key of a table is built from its record by its layout
// (CleDe); the rules that some keys carry sit here too, and the functions
// below give subsystems the same keys to look up.
//
// A key has a fixed length: a text key is padded with NUL (or blanks where
// the layout says so), integers are laid as their four little-endian bytes.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "store/layouts.h"

namespace vdx {

// The text, cut to `longueur` and padded with `bourrage`.
std::string CleTexte(std::string_view texte, size_t longueur, char bourrage = '\0');
// Integers laid end to end: keys of two or three 32-bit integers.
std::string CleEntiers(std::initializer_list<int32_t> entiers);
// An integer in decimal with leading zeros ("00042").
std::string CleDecimale(int32_t valeur, size_t chiffres);
// The text of a key from `debut` to its first NUL.
std::string_view TexteDeCle(std::string_view cle, size_t debut);
// A code as a key holds it, without the blanks or NULs that pad it.
std::string_view SansBourrage(std::string_view code);

// A label folded for a label key (PlieCleLibelle), the points it ends with
// kept: they made it unique when it was filed, and the fold would drop them
// from a short label.
std::string CleLibelle(std::string_view libelle);
// Key 2 of VDXPRO.
std::string CleLibelleProduit(std::string_view libelle);

// The category letter of a product in VDXVPRO, from CodeRubrique in
// decimal: 10, 11, 30, 90 "A" for a code beginning with "2", else "S";
// 40 "V"; 50, 59 "D"; 60 "C"; 80 "A"; 81 "T"; any other "X".
char CategorieProduit(std::string_view codeRubrique, std::string_view codeCIP);
// The category letter that the low byte of a search's Options selects: 0
// "S", 1 "A", 2 "T", 4 "C", 8 "D", 16 "V", 32 "X", 64 every product ("Z");
// none for any other byte.
std::optional<char> CategorieDesOptions(int32_t options);
// The key of VDXVPRO: the letter, then the folded label.
std::string CleCategorie(char categorie, std::string_view libelle);

// Key number `numero` (from 0) of a record; none for an optional key of an
// empty text. `cleExterne` is the first key of a table that keeps it
// outside its records.
std::optional<std::string> CleDe(const Disposition& disposition, size_t numero, std::string_view fiche,
                                 std::string_view cleExterne = {});

// One step of the rule of a unique label key, after the key was refused as
// present: raise the byte at the key's last place in the key and in the
// label when the key is that long, else append a point to both. False when
// the label has no room left for a point.
bool RendCleUnique(const RegleUnicite& regle, std::string& cle, std::string& fiche);

// Adds key `numero` (from 0) of the record at `position` of an open table;
// under a rule of uniqueness, makes the key unique and writes the changed
// record again. Returns the store's error (CleExistante for a present key
// without rule); `cle` and `fiche` are left as filed.
// `donnees`: the number the table's data file is opened on, when not its own
// (its keys on the numbers behind it).
int AjouteCle(const Disposition& disposition, size_t numero, std::string& cle, std::string& fiche,
              uint32_t position, std::optional<int> donnees = std::nullopt);

}  // namespace vdx
