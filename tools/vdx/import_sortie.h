// The base sources an import writes: records gathered by table, then each
// table written sorted and without duplicates, through the layouts, so that
// a value that doesn't fit its field is caught here and not by the build.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vdx::import {

// Values by column name, texts in code page 1252, numbers in decimal.
using Valeurs = std::vector<std::pair<std::string, std::string>>;

class Sortie {
public:
    // A record of `table`. Every record of a table names the same columns in
    // the same order; records are sorted on those values in that order. A
    // text longer than its field is cut to it.
    void Ajoute(const std::string& table, const Valeurs& valeurs);
    size_t Nombre(const std::string& table) const;
    std::map<std::string, size_t> Comptes() const;
    // One TABLE.tsv a table, in UTF-8; the directory is created.
    void Ecrit(const std::filesystem::path& dossier) const;

private:
    struct Table {
        std::vector<std::string> colonnes;
        std::set<std::vector<std::string>> lignes;
    };
    std::map<std::string, Table> tables_;
};

}  // namespace vdx::import
