// vdx import: the command line of the import of the public data.
#include <algorithm>
#include <charconv>
#include <fstream>
#include <iostream>

#include "platform/codepage.h"
#include "store/sources.h"
#include "tools/vdx/commandes.h"
#include "tools/vdx/import.h"
#include "tools/vdx/import_lecture.h"
#include "tools/vdx/import_texte.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;

constexpr char AideImport[] =
    "usage: vdx import [--only NAME,NAME... | --filter FILE] [--per-substance N]\n"
    "                  [--unmatched] [--keep-going] BDPM_DIR THESAURUS_DIR SOURCES\n"
    "\n"
    "Writes into SOURCES the sources of a base (for vdx build) from the public\n"
    "medicine database in BDPM_DIR (CIS_bdpm.txt, CIS_CIP_bdpm.txt,\n"
    "CIS_COMPO_bdpm.txt, CIS_GENER_bdpm.txt, CIS_CPD_bdpm.txt, as published)\n"
    "and the interaction thesaurus in THESAURUS_DIR (substances.txt,\n"
    "substance-classes.tsv, couples.tsv). Lines that can't be used are counted\n"
    "and told with their reason. --only keeps the presentations whose\n"
    "composition holds one of the substances named, and the interaction data\n"
    "that touch them; --filter reads those names from FILE, one a line.\n"
    "--per-substance keeps at most N specialities of each substance named:\n"
    "the reimbursed first, then those of fewer substances, then by CIS code.\n"
    "A name that is the CIS code of a speciality keeps that speciality.\n"
    "An empty file, a thesaurus file without its header line, and lines left\n"
    "out (a ragged line, a last line cut short) fail the import, naming the\n"
    "file and the line, and nothing is written; --keep-going writes the\n"
    "sources without those lines all the same.\n"
    "Prints the records written by table, the lines left out and the share of\n"
    "the thesaurus substances found in the medicine database; --unmatched\n"
    "lists the thesaurus substances that match none.\n";


std::vector<std::string> NomsDuFichier(const std::string& chemin) {
    std::ifstream fichier(chemin, std::ios::binary);
    if (!fichier) throw import::ErreurImport(chemin + ": missing file (or not readable)");
    std::vector<std::string> noms;
    for (std::string ligne; std::getline(fichier, ligne);) {
        const std::string nom = import::Nettoie(import::VersCp1252(ligne.substr(0, ligne.find('\r'))));
        if (!nom.empty() && nom[0] != '#') noms.push_back(nom);
    }
    return noms;
}

std::string Part(size_t n, size_t sur) {
    const double part = sur ? 100.0 * static_cast<double>(n) / static_cast<double>(sur) : 0;
    return std::to_string(n) + " of " + std::to_string(sur) + " (" + import::TexteNombre(static_cast<int>(part * 10) / 10.0) + "%)";
}

void Resume(const import::RapportImport& r, bool sansSubstance) {
    std::cout << "records by table:\n";
    for (const auto& [table, nombre] : r.comptes) std::cout << "  " << table << '\t' << nombre << '\n';
    std::cout << "lines left out: " << r.lignesRejetees << '\n';
    for (const auto& rejet : r.rejets) std::cout << "  " << codepage::VersUtf8(rejet) << '\n';
    // A name that no name of the database comes near is taken for a
    // substance the extract's market lacks.
    const size_t absents = static_cast<size_t>(std::ranges::count_if(r.nomsSansSubstance, [](const auto& n) { return n.proches.empty(); }));
    std::cout << "thesaurus substances found in the medicine database: " << Part(r.substancesTrouvees, r.substancesThesaurus)
              << ", " << r.nomsSansSubstance.size() << " matching nothing, " << absents
              << " of them near no name of the database\n";
    std::cout << "  of those the database comes near: " << Part(r.substancesTrouvees, r.substancesThesaurus - absents) << '\n';
    std::cout << "thesaurus couples of two medicines with products on both sides: "
              << Part(r.couplesAvecProduits, r.couplesMedicaments) << '\n';
    std::cout << "presentations holding a name near an unmatched one: " << r.presentationsProches << '\n';
    std::cout << "specialities without a prescription line by common name:";
    for (const auto& [motif, nombre] : r.specialitesSansLigne) std::cout << ' ' << nombre << ' ' << motif << ';';
    std::cout << '\n';
    if (sansSubstance)
        for (const auto& n : r.nomsSansSubstance) {
            std::cout << "  " << codepage::VersUtf8(n.nom) << ": ";
            if (n.proches.empty()) std::cout << "no product of the extract";
            for (size_t i = 0; i < n.proches.size(); ++i) std::cout << (i ? ", " : "nearest ") << codepage::VersUtf8(n.proches[i]);
            std::cout << '\n';
        }
    for (const auto& nom : r.filtreSansSubstance)
        std::cout << "filter: no substance named " << codepage::VersUtf8(nom) << '\n';
}

int Import(const ArgumentsCommande& args) {
    import::OptionsImport options;
    const std::vector<std::string>& chemins = args.Autres();
    try {
        for (const auto& [option, valeur] : args.Options()) {
            if (option == "--only" || option == "--filter") {
                const std::vector<std::string> noms =
                    option == "--only" ? import::Decoupe(import::VersCp1252(valeur), ',') : NomsDuFichier(valeur);
                options.filtre.substances.insert(options.filtre.substances.end(), noms.begin(), noms.end());
            } else if (option == "--per-substance") {
                const auto [fin, erreur] =
                    std::from_chars(valeur.data(), valeur.data() + valeur.size(), options.filtre.parSubstance);
                if (erreur != std::errc() || fin != valeur.data() + valeur.size() || options.filtre.parSubstance == 0)
                    return Usage(AideImport);
            }
        }
        options.continuer = args.A("--keep-going");
        if (chemins.size() != 3) return Usage(AideImport);
        for (size_t i = 0; i < 2; ++i)
            if (!fs::is_directory(chemins[i])) {
                std::cerr << "vdx: " << chemins[i] << ": no such directory\n";
                return SortieEchec;
            }
        options.bdpm = chemins[0];
        options.thesaurus = chemins[1];
        options.sources = chemins[2];
        Resume(import::Importe(options), args.A("--unmatched"));
    } catch (const import::ErreurImport& e) {
        std::cerr << "vdx: " << e.what() << '\n';
        return SortieEchec;
    } catch (const ErreurSource& e) {
        std::cerr << "vdx: " << e.what() << '\n';
        return SortieEchec;
    }
    return SortieSucces;
}

}  // namespace

const Commande CommandeImport{"import",
                              AideImport,
                              {{"--only", true}, {"--filter", true}, {"--per-substance", true}, {"--unmatched", false},
                               {"--keep-going", false}},
                              Import};

}  // namespace vdx
