// The table of exports: each export described once, by name, arguments and
// record shape, with a way to call it from text arguments in memory mode.
// The vdx program's "call", and later the service and the reference
// documentation, are driven by it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::exports {

enum class GenreArgument : uint8_t {
    Texte,         // const char*
    Entier,        // int32_t
    Reel,          // float
    ChaineSortie,  // BSTR*, a result of mode 0
    Tableau,       // SAFEARRAY**, the result array of mode 0
    Liste,         // an input list: in the flat modes read from the text input
    ListeTableau,  // an input list read from a host array in every mode
    Lignes,        // an input list, in the flat modes one entry a line up to a line "@"
    Fiche,         // a pointer to a host record
    Nombre,        // a pointer to a number (int32_t*, float*) the call fills in mode 0
    Poignee,       // a pointer to a handle (int32_t*) the call reads and may write, in every mode
};

struct Argument {
    GenreArgument genre;
    const char* nom;
};


// What a call from text gives: the code and, in memory mode, the flat text
// (or the text of a host string for the exports that fill one in every mode).
struct Appel {
    int32_t code;
    std::string texte;
};

struct Export {
    const char* nom;
    std::vector<Argument> arguments;
    // Names of the fields of the rows it delivers.
    std::vector<const char*> champs;
    bool connexionRequise;
    // Calls it with one text per argument of kinds Texte, Entier, Reel,
    // Liste, ListeTableau and Lignes (a list as "a@b@c"); the others are
    // given by the caller's mode.
    std::function<Appel(const std::vector<std::string>&)> appelle;

    size_t NombreTextes() const;
};

std::span<const Export> Exports();
const Export* ExportNomme(std::string_view nom);
// The exports that open, close and feed the session a call from text runs
// in (connection, error sentence, string exchange, notices): with the
// table, every export the header declares.
std::span<const char* const> ExportsDeLaSession();

// Calls an export in memory mode and takes its flat text. Throws
// std::invalid_argument for an unknown name or a wrong count or kind of
// argument.
Appel AppelleEnMemoire(const Export& e, const std::vector<std::string>& arguments);

}  // namespace vdx::exports
