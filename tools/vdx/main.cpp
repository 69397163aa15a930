// vdx: builds, dumps and queries bases from the command line.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "exports/table_exports.h"
#include "platform/codepage.h"
#include "store/catalogue.h"
#include "tools/vdx/commandes.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

constexpr char AideGenerale[] =
    "usage: vdx COMMAND [ARG...]\n"
    "\n"
    "commands:\n"
    "  build SOURCES BASE   build a base from a directory of sources\n"
    "  dump BASE [TABLE...] write a base back as sources\n"
    "  import BDPM_DIR THESAURUS_DIR SOURCES\n"
    "                       write sources from the public medicine data\n"
    "  tables               list the catalogue of tables\n"
    "  call --base BASE NAME [ARG...]\n"
    "                       call an export in memory mode and print its rows\n"
    "  check --base BASE CODE... [patient options]\n"
    "                       check a prescription: interactions, contra-indications,\n"
    "                       allergies, duplicates\n"
    "  product --base BASE CODE\n"
    "                       show a product\n"
    "  search --base BASE TEXT [COUNT]\n"
    "                       search products by the beginning of their label\n"
    "  search-set --base BASE FILE... [patient options]\n"
    "                       run criteria searches on one set of products\n"
    "  monograph BASE CODE FILE [--css PATH]\n"
    "                       write the monograph of a product as an HTML page\n"
    "  notice BASE CODE DIR write the notice of a product, its pictures and its linked\n"
    "                       documents\n"
    "  maj BASE DIR [--type N]\n"
    "                       apply the update files of DIR newer than BASE\n"
    "  export-maj SOURCES FILE --date JJ/MM/AAAA\n"
    "                       write base sources as an update file\n"
    "  rebuild-pro DIR      rebuild the product table from its raw records\n"
    "  medecin ACTION DIR [ARG...]\n"
    "                       create, edit and read a doctor's private base\n"
    "  serve --base BASE [--listen HOST:PORT] [--workers N]\n"
    "                       serve the base over HTTP as JSON, with a page to check a\n"
    "                       prescription (Linux)\n"
    "\n"
    "The commands that read a base take it as --base BASE, or from the\n"
    "environment's VDX_BASE. vdx COMMAND --help tells more of each. Exit codes:\n"
    "0 success, 1 a failure of the library, 2 bad usage.\n";

constexpr char AideTables[] =
    "usage: vdx tables\n"
    "\n"
    "Lists every table of the catalogue: name, data and index numbers, further\n"
    "keys, kind, record length and keys.\n";

constexpr char AideCall[] =
    "usage: vdx call [--base BASE] [--medecin DIR] NAME [ARG...]\n"
    "       vdx call --list\n"
    "\n"
    "Connects to BASE (or VDX_BASE) in memory mode, and to the doctor's base DIR\n"
    "when given, calls the export NAME with the arguments\n"
    "given as text (integers and decimals as such, lists as A@B@C), and prints\n"
    "the result code, then the rows, one per line, fields separated by tabs,\n"
    "in UTF-8. --list lists the exports it can call with their arguments.\n";

const char* NomGenre(exports::GenreArgument g) {
    switch (g) {
        case exports::GenreArgument::Texte: return "texte";
        case exports::GenreArgument::Entier: return "entier";
        case exports::GenreArgument::Reel: return "reel";
        case exports::GenreArgument::ChaineSortie: return "chaine";
        case exports::GenreArgument::Tableau: return "tableau";
        case exports::GenreArgument::Liste: return "liste";
        case exports::GenreArgument::ListeTableau: return "liste";
        case exports::GenreArgument::Lignes: return "liste";
        case exports::GenreArgument::Fiche: return "fiche";
        case exports::GenreArgument::Nombre: return "nombre";
        case exports::GenreArgument::Poignee: return "handle";
    }
    return "?";
}

int Tables(const ArgumentsCommande& args) {
    if (!args.Autres().empty()) return Usage(AideTables);
    for (const Table& t : Catalogue()) std::cout << DecritTable(t) << '\n';
    return SortieSucces;
}

// The rows of a flat text as fields in UTF-8.
std::vector<std::vector<std::string>> Lignes(const std::string& plat) {
    std::vector<std::vector<std::string>> lignes;
    size_t debut = 0;
    while (debut < plat.size()) {
        size_t fin = plat.find("\r\n", debut);
        if (fin == std::string::npos) fin = plat.size();
        const std::string ligne = plat.substr(debut, fin - debut);
        std::vector<std::string> champs;
        if (ligne != "#") {
            size_t d = 0;
            for (;;) {
                const size_t a = ligne.find('@', d);
                champs.push_back(codepage::VersUtf8(ligne.substr(d, a == std::string::npos ? a : a - d)));
                if (a == std::string::npos) break;
                d = a + 1;
            }
        } else {
            champs.emplace_back();
        }
        lignes.push_back(std::move(champs));
        debut = fin + 2;
    }
    return lignes;
}

int ListeExports() {
    for (const exports::Export& e : exports::Exports()) {
        std::cout << e.nom;
        for (const auto& a : e.arguments) std::cout << ' ' << a.nom << ':' << NomGenre(a.genre);
        std::cout << '\n';
    }
    return SortieSucces;
}

}  // namespace

int vdx::AppelleEnMemoire(const std::string& base, const std::vector<std::string>& args, const std::string& medecin) {
    const exports::Export* e = exports::ExportNomme(args.at(0));
    if (!e) {
        std::cerr << "vdx: unknown export " << args[0] << " (vdx call --list)\n";
        return SortieUsage;
    }
    std::vector<std::string> textes;
    for (size_t i = 1; i < args.size(); ++i) {
        auto texte = codepage::DepuisUtf8(args[i]);
        if (!texte) {
            std::cerr << "vdx: argument " << i << " is not UTF-8 text of code page 1252\n";
            return SortieUsage;
        }
        textes.push_back(std::move(*texte));
    }
    if (textes.size() != e->NombreTextes()) {
        std::cerr << "vdx: " << e->nom << " takes " << e->NombreTextes() << " argument(s)\n";
        return SortieUsage;
    }
    InstalleNotifications_Vdx(nullptr, nullptr, nullptr);
    const int32_t connexion = Connection2_Vdx(base.c_str(), 2, 0);
    if (connexion != 1) return EchecLibrairie("Connection2_Vdx", connexion);
    if (!medecin.empty())
        if (const int32_t code = ConnectionMedecin_Vdx(medecin.c_str()); code != 1)
            return EchecLibrairie("ConnectionMedecin_Vdx", code);
    exports::Appel appel;
    try {
        appel = exports::AppelleEnMemoire(*e, textes);
    } catch (const std::invalid_argument& x) {
        std::cerr << "vdx: " << x.what() << '\n';
        return SortieUsage;
    }
    std::cout << appel.code << '\n';
    if (appel.code < 0) return EchecLibrairie(e->nom, appel.code);
    for (const auto& ligne : Lignes(appel.texte)) {
        for (size_t i = 0; i < ligne.size(); ++i) std::cout << (i ? "\t" : "") << ligne[i];
        std::cout << '\n';
    }
    DeConnectionMedecin_Vdx();
    DeConnection2_Vdx();
    return SortieSucces;
}

namespace {

int Call(const ArgumentsCommande& a) {
    const std::vector<std::string>& args = a.Autres();
    if (a.A("--list") && args.empty()) return ListeExports();
    const std::string base = a.Base();
    if (base.empty() || args.empty()) return Usage(AideCall);
    return AppelleEnMemoire(base, args, a.Valeur("--medecin").value_or(""));
}

const Commande CommandeTables{"tables", AideTables, {}, Tables};
const Commande CommandeCall{"call", AideCall, {{"--base", true}, {"--medecin", true}, {"--list", false}}, Call};

// The commands by name; each is defined in its own file.
const Commande* const Commandes[] = {&CommandeTables,  &CommandeCall,  &CommandeBuild,   &CommandeDump,
                                     &CommandeImport,  &CommandeCheck, &CommandeProduct, &CommandeSearch,
                                     &CommandeSearchSet, &CommandeMonograph, &CommandeNotice, &CommandeMaj,
                                     &CommandeExportMaj, &CommandeRebuildPro, &CommandeMedecin,
#ifdef VDX_SERVICE
                                     &CommandeServe,
#endif
};

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return Usage(AideGenerale);
    const std::string nom = args.front();
    args.erase(args.begin());
    if (nom == "--help" || nom == "-h" || nom == "help") return std::fputs(AideGenerale, stdout), SortieSucces;
    for (const Commande* commande : Commandes) {
        const Commande& c = *commande;
        if (nom != c.nom) continue;
        if (DemandeAide(args)) return std::fputs(c.aide, stdout), SortieSucces;
        const std::optional<ArgumentsCommande> lus = ArgumentsCommande::Lit(args, c.options);
        if (!lus) return Usage(c.aide);
        try {
            return c.lance(*lus);
        } catch (const std::exception& x) {
            std::cerr << "vdx: " << x.what() << '\n';
            return SortieEchec;
        }
    }
    std::cerr << "vdx: unknown command " << nom << '\n';
    return Usage(AideGenerale);
}
