// vdx maj: the update files of a directory applied to a base, with their
// progress on a terminal; vdx export-maj: base sources written as an update
// file.
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

#include "maj/ecriture.h"
#include "platform/codepage.h"
#include "store/fiche.h"
#include "store/sources.h"
#include "tools/vdx/commandes.h"
#include "vdx32/vdx32.h"

namespace vdx {

namespace {

constexpr char AideMaj[] =
    "usage: vdx maj BASE DIR [--type N]\n"
    "\n"
    "Applies to BASE the update files of DIR that are newer than it (RE + AAMMJJ\n"
    ".VDX), oldest first, each whole or not at all. --type sets the coverage: 1\n"
    "the products, 2 and 3 the identification and posology tables too, 4 every\n"
    "table (the default). On a terminal it shows a bar, the share done, the file\n"
    "and the table, the speed and the time left; otherwise one line a file and a\n"
    "table. Exit codes: 0 the run applied every file, 1 otherwise, 2 bad usage.\n";

constexpr std::string_view DebutFichier = "Mise \xE0 jour du ";
constexpr int LargeurBarre = 30;
constexpr auto Rafraichissement = std::chrono::milliseconds(100);
constexpr double OctetsParBloc = 512;

using Horloge = std::chrono::steady_clock;

// What the run shows: on a terminal one line redrawn at most ten times a
// second, elsewhere a line a file and a table.
struct Affichage {
    bool terminal = isatty(STDERR_FILENO) != 0;
    Horloge::time_point debut = Horloge::now(), dessine{};
    std::string fichier, table;
    bool ligneOuverte = false;

    void Recoit(int32_t fait, int32_t total, std::string_view libelle) {
        if (!libelle.empty()) {
            std::string& cible = libelle.starts_with(DebutFichier) ? fichier : table;
            std::string texte = codepage::VersUtf8(libelle);
            if (texte != cible && !terminal) std::cerr << texte << '\n';
            cible = std::move(texte);
        }
        if (!terminal) return;
        const Horloge::time_point maintenant = Horloge::now();
        if (fait < total && maintenant - dessine < Rafraichissement) return;
        dessine = maintenant;
        const double part = total > 0 ? static_cast<double>(fait) / total : 1;
        const double secondes = std::chrono::duration<double>(maintenant - debut).count();
        const double vitesse = secondes > 0 ? fait * OctetsParBloc / 1024 / secondes : 0;
        const double reste = part > 0 ? secondes * (1 - part) / part : 0;
        const int plein = static_cast<int>(part * LargeurBarre);
        std::fprintf(stderr, "\r[%s%s] %3.0f%%  %s  %s  %.0f Ko/s  reste %.0f s\033[K",
                     std::string(static_cast<size_t>(plein), '#').c_str(),
                     std::string(static_cast<size_t>(LargeurBarre - plein), '.').c_str(), part * 100, fichier.c_str(),
                     table.c_str(), vitesse, reste);
        ligneOuverte = true;
    }
    void Termine() {
        if (ligneOuverte) std::fputc('\n', stderr);
    }
};

void VDX_CALL Progression(void* contexte, int32_t fait, int32_t total, const char* libelle) {
    static_cast<Affichage*>(contexte)->Recoit(fait, total, libelle ? libelle : "");
}

int Maj(const ArgumentsCommande& args) {
    if (args.Autres().size() != 2) return Usage(AideMaj);
    std::optional<int32_t> type;
    if (const auto texte = args.Valeur("--type")) {
        try {
            type = std::stoi(*texte);
        } catch (const std::exception&) {
            std::cerr << "vdx: --type takes a number, not " << *texte << '\n';
            return Usage(AideMaj);
        }
    }
    Affichage affichage;
    InstalleNotifications_Vdx(nullptr, Progression, &affichage);
    const int32_t connexion = Connection2_Vdx(args.Autres()[0].c_str(), 0, 0);
    if (connexion != 1) return EchecLibrairie("Connection2_Vdx", connexion);
    if (type) SetTypeMaj_Vdx(*type);
    const int32_t resultat = ExecuteMaj_Vdx(args.Autres()[1].c_str());
    affichage.Termine();
    DeConnection2_Vdx();
    InstalleNotifications_Vdx(nullptr, nullptr, nullptr);
    if (resultat < 0) return EchecLibrairie("ExecuteMaj_Vdx", resultat);
    if (resultat != 1) std::cerr << "vdx: the update stopped on a row: the base stays at its last whole file\n";
    return resultat == 1 ? SortieSucces : SortieEchec;
}

constexpr char AideExportMaj[] =
    "usage: vdx export-maj SOURCES FILE --date JJ/MM/AAAA\n"
    "\n"
    "Writes the base sources of SOURCES as one update file FILE of that date (code\n"
    "page 1252, CR LF, \"@\" after every field, \"|DEBUT|\" and \"|FIN|\"), for vdx maj.\n"
    "Only the tables whose rows the update applies are written; the others are\n"
    "named on standard error.\n";

int ExportMaj(const ArgumentsCommande& args) {
    const std::optional<std::string> date = args.Valeur("--date");
    if (args.Autres().size() != 2 || !date) return Usage(AideExportMaj);
    std::vector<Source> sources;
    try {
        sources = LitSources(args.Autres()[0]);
    } catch (const ErreurSource& e) {
        std::cerr << "vdx: " << e.what() << '\n';
        return SortieEchec;
    }
    std::ofstream sortie(args.Autres()[1], std::ios::binary);
    std::vector<std::string> absentes;
    try {
        absentes = maj::EcritMaj(sources, sortie, *date);
    } catch (const ErreurSource& e) {
        std::cerr << "vdx: " << e.what() << '\n';
        return SortieEchec;
    }
    if (!sortie.flush()) {
        std::cerr << "vdx: cannot write " << args.Autres()[1] << '\n';
        return SortieEchec;
    }
    if (!absentes.empty()) {
        std::cerr << "vdx: tables the update does not write, left out:";
        for (const std::string& t : absentes) std::cerr << ' ' << t;
        std::cerr << '\n';
    }
    return SortieSucces;
}

constexpr char AideRebuildPro[] =
    "usage: vdx rebuild-pro DIR\n"
    "\n"
    "Rebuilds the product table of DIR from its raw file VDXPRO.DAT (records of\n"
    "236 bytes behind a header of any size) and puts it in place of the file,\n"
    "showing each step of the creation. Exit codes: 0 rebuilt, 1 otherwise.\n";

void VDX_CALL EtapeReconstruction(void*, int32_t, int32_t, const char* libelle) {
    if (libelle && *libelle) std::cerr << codepage::VersUtf8(libelle) << '\n';
}

int RebuildPro(const ArgumentsCommande& args) {
    if (args.Autres().size() != 1) return Usage(AideRebuildPro);
    InstalleNotifications_Vdx(nullptr, EtapeReconstruction, nullptr);
    const int32_t resultat = RebuildVDXPRO_Vdx(args.Autres()[0].c_str());
    InstalleNotifications_Vdx(nullptr, nullptr, nullptr);
    if (resultat < 0) return EchecLibrairie("RebuildVDXPRO_Vdx", resultat);
    return resultat == 1 ? SortieSucces : SortieEchec;
}

}  // namespace

const Commande CommandeMaj{"maj", AideMaj, {{"--type", true}}, Maj};
const Commande CommandeExportMaj{"export-maj", AideExportMaj, {{"--date", true}}, ExportMaj};

const Commande CommandeRebuildPro{"rebuild-pro", AideRebuildPro, {}, RebuildPro};

}  // namespace vdx
