// The commands of the vdx program and what they share.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/catalogue.h"

namespace vdx {

// Exit codes of the program.
inline constexpr int SortieSucces = 0;
inline constexpr int SortieEchec = 1;
inline constexpr int SortieUsage = 2;

// An option a command takes: "--name", or "--name VALUE".
struct Option {
    const char* nom;
    bool valeur;
};

// The arguments of a command as one parser reads them: its declared
// options in any place, in their order, and the other arguments in theirs.
// An argument that begins with "-" and is no declared option is an
// argument like another (a negative number), unless it begins with "--".
class ArgumentsCommande {
public:
    // Nullopt after telling on standard error an unknown option or a
    // missing value.
    static std::optional<ArgumentsCommande> Lit(const std::vector<std::string>& args, const std::vector<Option>& options);

    bool A(std::string_view option) const;
    // The option's last value.
    std::optional<std::string> Valeur(std::string_view option) const;
    // The options given, in their order, with their values.
    const std::vector<std::pair<std::string, std::string>>& Options() const { return options_; }
    const std::vector<std::string>& Autres() const { return autres_; }
    // The base a command reads: --base, or else the environment's VDX_BASE;
    // empty when neither gives one.
    std::string Base() const;

private:
    std::vector<std::pair<std::string, std::string>> options_;
    std::vector<std::string> autres_;
};

// A command of the program: its name, help, options and body.
struct Commande {
    const char* nom;
    const char* aide;
    std::vector<Option> options;
    int (*lance)(const ArgumentsCommande& args);
};

// True when the arguments ask for help ("--help" or "-h").
bool DemandeAide(const std::vector<std::string>& args);
// Writes a command's help to standard error: the exit code of bad usage.
int Usage(const char* aide);

// Tells a failure of the library, with its code and the error sentence.
int EchecLibrairie(const char* appel, int code);

// One line of the catalogue: numbers, kind, record length and keys.
std::string DecritTable(const Table& table);

// The commands, each in its file.
extern const Commande CommandeBuild;
extern const Commande CommandeDump;
// Sources of a base from the public medicine database and interaction thesaurus.
extern const Commande CommandeImport;
// The prescriber's commands.
extern const Commande CommandeCheck;
extern const Commande CommandeProduct;
extern const Commande CommandeSearch;
extern const Commande CommandeSearchSet;
// The documents.
extern const Commande CommandeMonograph;
extern const Commande CommandeNotice;
// The update.
extern const Commande CommandeMaj;
extern const Commande CommandeExportMaj;
extern const Commande CommandeRebuildPro;
extern const Commande CommandeMedecin;
// The HTTP service (Linux).
extern const Commande CommandeServe;

// vdx call's work: connects to `base` in memory mode (and to the doctor's
// base `medecin` when not empty), calls the export args[0] with the other
// arguments as text, prints the code and the rows.
int AppelleEnMemoire(const std::string& base, const std::vector<std::string>& args, const std::string& medecin);

}  // namespace vdx
