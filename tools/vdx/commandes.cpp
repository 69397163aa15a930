#include "tools/vdx/commandes.h"

#include <filesystem>
#include <fstream>
#include <cstdlib>
#include <iostream>
#include <sstream>

#include "platform/codepage.h"
#include "store/layouts.h"
#include "store/magasin.h"
#include "store/sources.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;

constexpr char AideBuild[] =
    "usage: vdx build [--force] SOURCES BASE\n"
    "\n"
    "Builds the base BASE from the directory SOURCES, one TABLE.tsv a table\n"
    "(UTF-8, first line the field names, then one record a line, values\n"
    "separated by tabs; \\t \\n \\r \\\\ escape). Every table of the catalogue\n"
    "is created, empty ones too, and every key derived. The base is built\n"
    "beside BASE and renamed at the end: a refused source leaves nothing.\n"
    "An existing BASE is refused unless --force, which replaces it once the\n"
    "new one is complete.\n";

constexpr char AideDump[] =
    "usage: vdx dump BASE [TABLE...] [-o DIR]\n"
    "\n"
    "Writes the records of BASE back as sources: into DIR, one TABLE.tsv a\n"
    "table that has records, or without -o to standard output, each table\n"
    "behind a line \"==> TABLE.tsv <==\". Without TABLE, every table.\n";

void DemarreMagasin() {
    if (magasin::InitialiseMagasin(867, NombreNumeros, 16) != 0) throw std::runtime_error("the store can't start");
}

std::string NomsChamps(const Cle& cle) {
    std::string noms;
    for (const PartieCle& p : cle.parties) noms += (noms.empty() ? "" : "+") + std::string(p.champ.nom);
    return noms;
}

}  // namespace

bool DemandeAide(const std::vector<std::string>& args) {
    for (const auto& a : args)
        if (a == "--help" || a == "-h") return true;
    return false;
}

int Usage(const char* aide) {
    std::cerr << aide;
    return SortieUsage;
}

std::optional<ArgumentsCommande> ArgumentsCommande::Lit(const std::vector<std::string>& args,
                                                       const std::vector<Option>& options) {
    ArgumentsCommande lus;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const Option* option = nullptr;
        for (const Option& o : options)
            if (a == o.nom) option = &o;
        if (!option) {
            if (a.starts_with("--")) {
                std::cerr << "vdx: unknown option " << a << '\n';
                return std::nullopt;
            }
            lus.autres_.push_back(a);
        } else if (!option->valeur) {
            lus.options_.emplace_back(a, std::string());
        } else if (i + 1 == args.size()) {
            std::cerr << "vdx: " << a << " needs a value\n";
            return std::nullopt;
        } else {
            lus.options_.emplace_back(a, args[++i]);
        }
    }
    return lus;
}

bool ArgumentsCommande::A(std::string_view option) const {
    for (const auto& [nom, valeur] : options_)
        if (nom == option) return true;
    return false;
}

std::optional<std::string> ArgumentsCommande::Valeur(std::string_view option) const {
    std::optional<std::string> derniere;
    for (const auto& [nom, valeur] : options_)
        if (nom == option) derniere = valeur;
    return derniere;
}

std::string ArgumentsCommande::Base() const {
    if (std::optional<std::string> base = Valeur("--base")) return *base;
    const char* environnement = std::getenv("VDX_BASE");
    return environnement ? environnement : "";
}

int EchecLibrairie(const char* appel, int code) {
    std::cerr << "vdx: " << appel << " returned " << code;
    // Only a failure of the store has a sentence of its own.
    if (code == VDX_ECHEC_MAGASIN || code == VDX_MAGASIN_NON_INITIALISE) {
        char phrase[300];
        std::cerr << ": " << codepage::VersUtf8(GetLastError_Vdx(phrase));
    }
    std::cerr << '\n';
    return SortieEchec;
}

std::string DecritTable(const Table& t) {
    const Disposition& d = DispositionDe(t);
    std::ostringstream ligne;
    ligne << t.nom << '\t' << t.donnees << '\t' << t.index() << '\t'
          << (t.genre == Genre::Variable ? "variable" : "fixed") << '\t' << d.longueur;
    for (size_t k = 0; k < d.cles.size(); ++k)
        ligne << '\t' << t.cle(static_cast<int>(k)) << ':' << d.cles[k].longueur << ':' << NomsChamps(d.cles[k]);
    return ligne.str();
}

namespace {

int Build(const ArgumentsCommande& args) {
    OptionsConstruction options;
    options.remplace = args.A("--force");
    const std::vector<std::string>& chemins = args.Autres();
    if (chemins.size() != 2) return Usage(AideBuild);
    if (!fs::is_directory(chemins[0])) {
        std::cerr << "vdx: " << chemins[0] << ": no such directory of sources\n";
        return SortieUsage;
    }
    if (fs::exists(chemins[1]) && !options.remplace) {
        std::cerr << "vdx: " << chemins[1] << " exists already (--force replaces it)\n";
        return SortieUsage;
    }
    DemarreMagasin();
    try {
        const RapportConstruction rapport = ConstruitBase(chemins[0], chemins[1], options);
        for (const auto& a : rapport.avertissements) std::cerr << "vdx: " << a << '\n';
        if (!rapport.sansSource.empty()) {
            std::cerr << "vdx: " << rapport.sansSource.size() << " tables without a source, built empty:";
            for (const auto& t : rapport.sansSource) std::cerr << ' ' << t;
            std::cerr << '\n';
        }
        std::cerr << "vdx: " << rapport.fiches << " records in " << chemins[1] << '\n';
    } catch (const ErreurSource& e) {
        std::cerr << "vdx: " << e.what() << '\n';
        return SortieEchec;
    }
    return SortieSucces;
}

int Dump(const ArgumentsCommande& args) {
    const std::string dossier = args.Valeur("-o").value_or("");
    if (args.Autres().empty()) return Usage(AideDump);
    const std::string& base = args.Autres().front();
    std::vector<const Disposition*> tables;
    for (size_t i = 1; i < args.Autres().size(); ++i) {
        const Disposition* d = DispositionNommee(args.Autres()[i]);
        if (!d) {
            std::cerr << "vdx: unknown table " << args.Autres()[i] << '\n';
            return SortieUsage;
        }
        tables.push_back(d);
    }
    if (!fs::exists(fs::path(base) / "VDXPRO.DAT")) {
        std::cerr << "vdx: " << base << ": no base there\n";
        return SortieUsage;
    }
    DemarreMagasin();
    try {
        if (tables.empty() && !dossier.empty()) {
            VideBase(base, dossier);
            return SortieSucces;
        }
        if (tables.empty())
            for (const Disposition& d : Dispositions())
                if (d.table->emplacement == Emplacement::Base) tables.push_back(&d);
        if (!dossier.empty()) fs::create_directories(dossier);
        for (const Disposition* d : tables) {
            const auto fiches = FichesPropres(base, *d);
            const std::string nom = std::string(d->table->nom) + ".tsv";
            if (dossier.empty()) {
                if (fiches.empty()) continue;
                std::cout << "==> " << nom << " <==\n";
                EcritSource(std::cout, *d, fiches);
            } else {
                std::ofstream sortie(fs::path(dossier) / nom, std::ios::binary | std::ios::trunc);
                EcritSource(sortie, *d, fiches);
            }
        }
    } catch (const ErreurSource& e) {
        std::cerr << "vdx: " << e.what() << '\n';
        return SortieEchec;
    }
    return SortieSucces;
}

}  // namespace

const Commande CommandeBuild{"build", AideBuild, {{"--force", false}}, Build};
const Commande CommandeDump{"dump", AideDump, {{"-o", true}}, Dump};

}  // namespace vdx
