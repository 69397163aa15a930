// The import of the public data into base sources: the medicine database
// (products, composition, routes, generic groups, identification) and the
// interaction thesaurus, written as one TABLE.tsv a table for `vdx build`.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vdx::import {

// What a subset keeps: the presentations whose composition holds one of
// `substances` (by name, salts and accents aside), and the interaction data
// that touch them; everything when empty. With `parSubstance`, only that
// many specialities of each substance: those reimbursed first, then those
// of fewer active substances, then by CIS. A name that is the CIS code of
// a speciality keeps that speciality besides.
struct Filtre {
    std::vector<std::string> substances;
    size_t parSubstance = 0;
};

struct OptionsImport {
    std::filesystem::path bdpm;
    std::filesystem::path thesaurus;
    std::filesystem::path sources;
    Filtre filtre;
    // Writes the sources although lines were left out; else such an import
    // writes nothing and fails.
    bool continuer = false;
};

struct RapportImport {
    std::map<std::string, size_t> comptes;  // records by table
    std::vector<std::string> rejets;        // lines left out, by file and reason
    size_t lignesRejetees = 0;
    size_t substancesThesaurus = 0;  // medicines named by substances.txt
    size_t substancesTrouvees = 0;   // of those, the ones matched to a base substance
    // A thesaurus name matching nothing, with the nearest names of the
    // medicine database (none: no product of the extract comes near it).
    struct NomSansSubstance {
        std::string nom;
        std::vector<std::string> proches;
    };
    std::vector<NomSansSubstance> nomsSansSubstance;
    size_t presentationsProches = 0;  // presentations holding one of those nearest names
    size_t couplesMedicaments = 0;    // thesaurus couples of two medicines
    size_t couplesAvecProduits = 0;   // of those, the ones with products on both sides
    std::vector<std::string> filtreSansSubstance;  // names of the filter matching nothing
    // Selected specialities without a prescription line by common name, by reason.
    std::map<std::string, size_t> specialitesSansLigne;
};

// Reads, converts and writes; throws ErreurImport for a file that is
// missing or unusable, and for lines left out unless `continuer`.
RapportImport Importe(const OptionsImport& options);

}  // namespace vdx::import
