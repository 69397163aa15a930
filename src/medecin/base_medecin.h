// The doctor's private base: a directory of its own beside the drug base
// holding own products with a comment, own pathologies, own posologies and
// their texts (PRO, PATH, POSO, TEXU). Created, connected (the files of an
// older version brought to the current form), deleted and repaired here;
// edited by medecin/edition.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "store/catalogue.h"

namespace vdx::medecin {

// The tables of the doctor's base, in their order.
inline constexpr const char* TablesMedecin[] = {"PRO", "PATH", "POSO", "TEXU"};
inline const Table& TableMedecin(const char* nom) { return *TableNommee(nom); }

// The name rule of the four calls that take a path: over four characters
// the path holds a separator ("\\", or "/" where it is the system's) and its
// last part has at most four; it does not begin with "VDX".
bool NomValide(std::string_view chemin);

// Each returns 1 or throws Echec with its code: -10 an empty path, -13 a
// name against the rule, -500 a file that can't be written (FichierErreur
// the base's path and the file's name).

// Creates the directory if need be and the eight files; a base with any of
// them there is left as it is.
int32_t Creation(std::string_view chemin);
// -7 when a doctor's base is connected; -6 PRO, PATH or POSO missing, or
// TEXU and TEXT both. Finishes an interrupted edit or migration, brings PRO
// to labels keyed as they fold (PROold keeps the old pair) and TEXT to TEXU.
int32_t Connexion(std::string_view chemin);
// Closes the eight files; 1.
int32_t Deconnexion();
// -5 when it is the connected base; removes the ten files that are there.
int32_t Suppression(std::string_view chemin);
// The index of each table rebuilt from its records.
int32_t Reparation(std::string_view chemin);

}  // namespace vdx::medecin
