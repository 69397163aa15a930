// What every product export shares: the records of a product in the tables
// keyed first by its CodeCIP, and the frame of an export whose result is a
// host string.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "session/cadre.h"
#include "session/resultat.h"
#include "session/session.h"
#include "store/catalogue.h"
#include "vdx32/oleauto.h"

namespace vdx {

const Table& TableProduits();     // VDXPRO
const Table& TableComplements();  // VDXPROA
const Table& TableSpecialites();  // VDXYCSCP, the speciality (CIS) of a product

// The record of `code` in a table whose first key begins with the CodeCIP
// (exactly, or followed by a further code), which the caller holds open;
// nullopt when there is none. A code that is not seven long is never
// found. Throws Echec(-500) on a failure of the store.
std::optional<std::string> FicheDuCode(const Table& table, std::string_view code);
// The same, leaving with Echec(-90) when there is none.
std::string FicheRequise(const Table& table, std::string_view code);

// The frame of an export whose results are host strings: in mode 0 they
// are emptied first, whatever follows; then -2 when not connected.
template <class Corps>
int32_t CadreChaines(const char* nomExport, std::initializer_list<BSTR*> sorties, Corps&& corps) noexcept {
    return Cadre(nomExport, [&]() -> int32_t {
        if (session().ModeSortie == ModeTableau)
            for (BSTR* s : sorties)
                if (s) RangeChaine(s, std::nullopt);
        if (!session().Connecte) return NonConnecte;
        return corps();
    });
}
template <class Corps>
int32_t CadreChaine(const char* nomExport, BSTR* sortie, Corps&& corps) noexcept {
    return CadreChaines(nomExport, {sortie}, static_cast<Corps&&>(corps));
}

// Two texts delivered as one result: into two host strings in mode 0 (8-bit
// bytes), the arguments of codes `codes` (absent), as one row of two fields
// otherwise.
void LivrePaire(BSTR* premiere, BSTR* seconde, std::string_view a, std::string_view b,
                std::pair<int32_t, int32_t> codes);

}  // namespace vdx
