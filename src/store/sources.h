// Base sources: a directory of UTF-8 text files, one a table (VDXPRO.tsv).
// The first line names the columns of the table's layout (Colonnes), in any
// order, and may leave some out (they stay zero); then one record a line,
// values separated by tabs. In a value "\t", "\n", "\r", "\0" and "\\" stand
// for a tab, a line feed, a carriage return, a NUL and a backslash. Texts
// are converted to code page 1252 and must fit their field; integers and
// floats are written in decimal, raw bytes (pictures, documents) in
// hexadecimal. A variable record is given by its parts: a chapter record by
// its sections, a text by its text.
//
// ConstruitBase writes a base from sources through the record store and the
// layouts: every table of the catalogue is created, empty ones too, and
// each record gets its keys by the builders of its layout. VDXVPRO and
// VDXLABP are filed from VDXPRO as the update files them (two records of
// VDXVPRO and one of VDXLABP a product); their sources hold only records of
// their own beside those. VideBase writes a base back as sources.
//
// Both use the record store, which must be started (InitialiseMagasin), on
// the file numbers of the catalogue.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/catalogue.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {

// A source refused, or a base that can't be built: the message names the
// file, the line and the field ("VDXPRO.tsv:3: Libelle: ...").
class ErreurSource : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Enregistrement {
    std::string fiche;  // the record's bytes
    // The first key of a table that keeps it outside its records.
    std::string cle;
    // Keys given as they stand in place of the built ones, by key number
    // from 0, for a test that needs an unusual key.
    std::vector<std::optional<std::string>> clesImposees;
    std::string origine;  // "VDXPRO.tsv:3", for the messages
};

struct Source {
    const Disposition* disposition = nullptr;
    std::vector<Enregistrement> fiches;
};

// A record built from values given by column name: UTF-8 for a text,
// decimal for a number, hexadecimal for bytes. Columns not given are zero.
class Redaction {
public:
    Redaction(const Disposition& disposition, std::string origine);

    void Pose(std::string_view colonne, std::string_view valeur);
    void Pose(const Colonne& colonne, std::string_view valeur);
    void ImposeCle(size_t numero, std::string cle);
    Enregistrement Termine() &&;

private:
    [[noreturn]] void Refuse(std::string_view colonne, std::string_view defaut) const;
    std::string Cp1252(std::string_view colonne, std::string_view utf8) const;
    // A text of a record, which holds no NUL: its writing back stops at one.
    std::string TexteSansNul(std::string_view colonne, std::string_view utf8) const;

    const Disposition& disposition_;
    std::string origine_;
    std::vector<Colonne> colonnes_;  // for the values given by name
    FicheEcrite fixe_;
    FicheEcrite cle_;
    std::vector<std::string> parties_;
    std::vector<std::optional<std::string>> clesImposees_;
};

// Bytes as a source column gives them: two lower-case hexadecimal digits a
// byte.
std::string VersHexa(std::string_view octets);
// The values of a record in the order of Colonnes, as Redaction takes them.
std::vector<std::string> Valeurs(const Disposition& disposition, const Enregistrement& enregistrement);

// One source file, read from its text; `fichier` names it in the messages.
Source LitSource(const Disposition& disposition, std::string_view contenu, const std::string& fichier);
void EcritSource(std::ostream& sortie, const Disposition& disposition, const std::vector<Enregistrement>& fiches);
// Every "*.tsv" of a directory, each named after a table of the place;
// other files are passed over.
std::vector<Source> LitSources(const std::filesystem::path& dossier, Emplacement emplacement = Emplacement::Base);

struct OptionsConstruction {
    // Replace an existing base: a directory that holds table files only.
    bool remplace = false;
    Emplacement emplacement = Emplacement::Base;
    // A base built by this program whose files are copied for the tables
    // without records, rather than created: creating a file syncs it, and a
    // test base is mostly empty tables.
    std::filesystem::path modele;
};

struct RapportConstruction {
    size_t fiches = 0;
    // Records left out of a further key that already held their key, as
    // the update leaves them.
    std::vector<std::string> avertissements;
    // The tables of the catalogue that no source filled: built empty.
    std::vector<std::string> sansSource;
};

// Builds in a temporary directory beside `base` and renames it at the end,
// so that a failure leaves `base` as it was.
RapportConstruction ConstruitBase(const std::filesystem::path& sources, const std::filesystem::path& base,
                                  const OptionsConstruction& options = {});
RapportConstruction ConstruitBase(const std::vector<Source>& sources, const std::filesystem::path& base,
                                  const OptionsConstruction& options = {});

// The two files of a table created by its layout on the numbers from
// `donnees` (the data file, its index, the index's members), left open in
// `modeDonnees` and `modeIndex`. `etape`, when given, hears each step by its
// name ("CreateDataFile", "CreateIndexFile", "CreateIndexMember 1"...) and
// result. The store's error of the first step that failed, or 0.
int CreeFichiersTable(const Disposition& disposition, int donnees, const std::string& cheminDonnees,
                      const std::string& cheminIndex, int modeDonnees, int modeIndex,
                      const std::function<void(const std::string& etape, int resultat)>& etape = {});

// Every key of key number `numero` (from 0) of a table, in its order, each
// with the record it leads to.
std::vector<std::pair<std::string, std::string>> LitIndex(const std::filesystem::path& base,
                                                          const Disposition& disposition, size_t numero);
// The records of a table in the order of its first key.
std::vector<Enregistrement> LitTable(const std::filesystem::path& base, const Disposition& disposition);
// Whether a table of a base holds no record; throws ErreurSource when its
// files can't be read.
bool TableVide(const std::filesystem::path& base, const Table& table);
// The records of a table without those that the builder files from
// VDXPRO, nor those of VDXDAT that name the tables from sources.
std::vector<Enregistrement> FichesPropres(const std::filesystem::path& base, const Disposition& disposition);
// The tables that came from sources when the base was built, as VDXDAT
// names them (none for a base built before they were named).
std::vector<std::string> TablesSourcees(const std::filesystem::path& base);
// Writes one source a table that has records, and removes the source of a
// table that has none; tables whose files are missing are passed over.
void VideBase(const std::filesystem::path& base, const std::filesystem::path& sources,
              Emplacement emplacement = Emplacement::Base);

}  // namespace vdx
