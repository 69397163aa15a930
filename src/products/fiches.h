// What every product lookup shares: the records of a product in the tables
// keyed first by its CodeCIP.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "session/cadre.h"
#include "store/catalogue.h"

namespace vdx {

const Table& TableProduits();     // VDXPRO
const Table& TableComplements();  // VDXPROA
const Table& TableSpecialites();  // VDXYCSCP, the speciality (CIS) of a product
const Table& TableIdentification();  // VDXIDPRO

// The record of `code` in a table whose first key begins with the CodeCIP
// (exactly, or followed by a further code), which the caller holds open;
// nullopt when there is none. A code that is not seven long is never
// found. Throws Echec(-500) on a failure of the store.
std::optional<std::string> FicheDuCode(const Table& table, std::string_view code);
// The same without a copy: the bytes stay good while the caller holds the
// table open.
std::optional<std::string_view> VueDuCode(const Table& table, std::string_view code);
// The same, leaving with Echec(-90) when there is none.
std::string FicheRequise(const Table& table, std::string_view code);

}  // namespace vdx
