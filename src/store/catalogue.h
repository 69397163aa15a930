// The catalogue of every table of a base and of the doctor's private base:
// names, file numbers, kinds. File numbers are fixed: a table's data file has
// number n, its index n + 1, and the further keys of that index n + 2, n + 3.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vdx {

enum class Genre : uint8_t { Fixe, Variable };
enum class Emplacement : uint8_t { Base, Medecin };

struct Table {
    const char* nom;          // "VDXPRO"
    const char* fichierDonnees;  // "VDXPRO.DAT"
    const char* fichierIndex;    // "VDXPRO.NDX"
    uint16_t donnees;         // data file number
    uint8_t clesSupplementaires;  // keys behind the first one, on index + 1, index + 2
    Genre genre;
    Emplacement emplacement;

    constexpr uint16_t index() const { return static_cast<uint16_t>(donnees + 1); }
    constexpr uint16_t nombreCles() const { return static_cast<uint16_t>(1 + clesSupplementaires); }
    // Key number of the n-th key, from 0.
    constexpr uint16_t cle(int n) const { return static_cast<uint16_t>(index() + n); }
};

// Highest file number + 1: numbers go from 0 to 288.
inline constexpr int NombreNumeros = 289;

std::span<const Table> Catalogue();
const Table* TableNommee(std::string_view nom);

// Declares an accessor `fonction()` of a table of the catalogue, looked up
// once.
#define VDX_TABLE(fonction, nom)                                \
    const ::vdx::Table& fonction() {                            \
        static const ::vdx::Table& table = *::vdx::TableNommee(nom); \
        return table;                                           \
    }
// The table a file or key number belongs to, or null.
const Table* TableDuNumero(int numero);

// The name the update gives a file or key number in its messages
// ("VDXPRO_DAT", "VDXPRO_NDX", "VDXPRO_NDX1"); empty for numbers it does not name.
std::string_view NomMaj(int numero);

}  // namespace vdx
