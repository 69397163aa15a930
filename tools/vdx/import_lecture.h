// Reading the published files of an import: tab-separated text in code page
// 1252 or UTF-8, with CR LF or LF line ends. Text is handed on in code page
// 1252, the library's own, so that folding and cutting work on single bytes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::import {

// A file that can't be read at all: the message names it.
class ErreurImport : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The lines an import left out, counted by file and reason.
class Journal {
public:
    void Rejette(const std::string& fichier, size_t ligne, const std::string& raison);
    size_t Rejets() const { return total_; }
    // "CIS_CIP_bdpm.txt: 3 lines, 2 columns where 13 are expected (first line 12)".
    std::vector<std::string> Resume() const;

private:
    struct Motif {
        size_t nombre = 0;
        size_t premiereLigne = 0;
    };
    std::map<std::pair<std::string, std::string>, Motif> motifs_;
    size_t total_ = 0;
};

// The text of a file in code page 1252: UTF-8 is recognised (and its
// characters that code page 1252 lacks become "?"); anything else is taken
// as code page 1252 already.
std::string VersCp1252(std::string_view octets);

struct Ligne {
    size_t numero = 0;  // from 1, for the messages
    std::vector<std::string> champs;
};

// The lines of a tab-separated file, each with `colonnes` fields and then
// `facultatives` fields that may be left out (they are then empty): further
// fields are dropped, a line with fewer is told to the journal and left
// out, blank lines are passed over; a last line without its line end, when
// the others have one, is cut short and left out. A file with a header
// line names its first field in `entete` (empty: no header). A missing
// file, a file without a line of data, or a first line that is not the
// header, is an ErreurImport naming the file.
std::vector<Ligne> LitTableau(const std::filesystem::path& chemin, size_t colonnes, std::string_view entete,
                              Journal& journal, size_t facultatives = 0);

}  // namespace vdx::import
