// The store operations of the update handlers. Each failure shows its
// message box (the operation, the table's update name, the store's error)
// and gives 0, which ends the file; success gives 1.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "store/catalogue.h"
#include "store/magasin.h"

namespace vdx::maj {

inline constexpr char TitreErreurMaj[] = "Erreur";

int32_t EchecOperation(const char* operation, int numero, int erreur);
// A row that can't be applied (`raison` tells why): its message box, and 0.
int32_t RangeeRefusee(std::string_view marqueur, std::string_view raison);

// The exact lookup of a key: its position, 0 when absent, or none after
// the message box of a lookup that failed.
std::optional<magasin::Position> ChercheEnregistrement(int numeroCle, const std::string& cle);

// A fixed record in place of the one of its first key (a new one when
// there is none); its further keys moved with it.
int32_t RemplaceParCle(const Table& table, std::string fiche);
// A variable record in place of the one of its first key: the old one and
// its keys removed, then the new one added, unless `sautSiVide` and the
// record's body holds nothing.
int32_t RemplaceVariable(const Table& table, std::string fiche, std::string_view cleExterne, bool sautSiVide);
// A new record and all its keys. A first key already there leaves the
// record out.
int32_t AjouteFiche(const Table& table, std::string fiche, std::string_view cleExterne = {});
// Every record whose key `numeroCle` (from 0) begins with `parent` removed
// with all its keys.
int32_t SupprimeParent(const Table& table, size_t numeroCle, std::string_view parent);
// The record at `position` removed with all its keys; `cleExterne` for a
// table that keeps its first key outside its records.
int32_t SupprimeFiche(const Table& table, magasin::Position position, std::string_view cleExterne = {});

// The first key of index `numeroCle` that holds `sousCle` at `decalage`,
// walked from the index's start, into `cle`: its position, or 0.
magasin::Position ChercheSousCle(int numeroCle, std::string_view sousCle, size_t decalage, std::string& cle);

}  // namespace vdx::maj
