// The edits of the doctor's private base: own products with a comment,
// own pathologies, own posologies and their texts. Each edit is one unit:
// the tables it touches are copied aside, changed, and put in place through
// a journal (maj/unite.h), so that a process killed in the middle leaves
// the base before or after the edit, never between.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "posology/catalogue.h"

namespace vdx::medecin {

enum Operation : int32_t { Ajout = 0, Modification = 1, Retrait = 2 };

// Each throws Echec: -4 without the doctor's base, -10 an empty code, -13 a
// code of another length, -500 (FichierErreur the base's path and the
// file's name).

// A product of the drug base with the doctor's comment (cut to 511
// characters): its label from the drug base. -20 an empty comment to
// modify; -90 no record to modify or delete; -91 one to add.
int32_t Produit(std::string_view code, std::string_view commentaire, int32_t operation);
// The doctor's comment of a product; none when it has no record.
std::optional<std::string> Commentaire(std::string_view code);
// A pathology: on adding with an empty code the next free one, given back
// in `code`; its label cut to its field. -20 an empty label; -90 no record
// to modify or delete, or a CISP code the drug base lacks; -91 the label
// already there; -92 the label under another code.
int32_t Pathologie(std::string& code, std::string_view libelle, std::string_view cisp, int32_t operation);
// A posology of a product: added under the first free number of its
// product ("000" on, given back in CodePosologie), its text into TEXU;
// modified or deleted by its code. -16 no product's code; -90 no record.
int32_t Posologie(PosologieHote& posologie, int32_t operation);

}  // namespace vdx::medecin
