// Values drawn from the records of some tables, kept per code while those
// tables read the same (the states of their files, read without opening
// them): a host asks about the same products again and again.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>

#include "session/tables.h"
#include "store/catalogue.h"

namespace vdx {

template <class Valeur, size_t NombreTables>
class Retenues {
public:
    using Valeurs = std::unordered_map<std::string, Valeur>;

    // The values still good for `tables` as they read now, emptied past
    // `limite` (against a host asking for ever new codes); nullptr when
    // their states can't be read, the values then read without them.
    Valeurs* Courantes(const std::array<const Table*, NombreTables>& tables, size_t limite) {
        std::array<magasin::EtatLecture, 2 * NombreTables> etats;
        if (!EtatsDesTables(tables, etats)) return nullptr;
        if (etats != etats_ || valeurs_.size() >= limite) {
            valeurs_.clear();
            etats_ = etats;
        }
        return &valeurs_;
    }

    // The value of `code`: kept in `retenues` and read by `lit` the first
    // time; read into `lue` when there is nothing to keep it in.
    template <class Lit>
    static const Valeur& De(Valeurs* retenues, const std::string& code, std::optional<Valeur>& lue, Lit&& lit) {
        if (!retenues) return lue.emplace(lit());
        auto it = retenues->find(code);
        if (it == retenues->end()) it = retenues->emplace(code, lit()).first;
        return it->second;
    }

private:
    std::array<magasin::EtatLecture, 2 * NombreTables> etats_{};
    Valeurs valeurs_;
};

}  // namespace vdx
