// Any bytes as the published files of an import: the input is cut at its
// bytes 0x1E into the couples of the thesaurus, the composition, the
// presentations and the SMR opinions (a line of its own when left out),
// beside a small extract of the other files. The import
// gives its sources or an ErreurImport naming a file; nothing else.
#include <stdlib.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/vdx/import.h"
#include "tools/vdx/import_lecture.h"

namespace {

namespace fs = std::filesystem;

// The directory of the files, made once for the run.
const fs::path& Dossier() {
    static const fs::path dossier = [] {
        std::string modele = (fs::temp_directory_path() / "vdx32-import-fuzz-XXXXXX").string();
        if (mkdtemp(modele.data()) == nullptr) abort();
        fs::create_directories(fs::path(modele) / "bdpm");
        fs::create_directories(fs::path(modele) / "interactions-2016-08");
        return fs::path(modele);
    }();
    return dossier;
}

void Ecrit(const fs::path& chemin, std::string_view octets) {
    std::ofstream(chemin, std::ios::binary).write(octets.data(), static_cast<std::streamsize>(octets.size()));
}

constexpr char Specialites[] =
    "60000001\tDOLIPRANE 1000 mg, comprim\xE9\tcomprim\xE9\torale\tAutorisation active\tProc\xE9" "dure nationale\t"
    "Commercialis\xE9" "e\t01/01/2000\t\t\t SANOFI\tNon\n"
    "60000004\tWARFARINE 5 mg, comprim\xE9\tcomprim\xE9\torale\tAutorisation active\tProc\xE9" "dure nationale\t"
    "Commercialis\xE9" "e\t01/01/2003\t\t\t SANOFI\tNon\n";
constexpr char Groupes[] = "9\tPARACETAMOL 1000 mg - DOLIPRANE 1000 mg, comprim\xE9\t60000001\t0\t1\t\n";
constexpr char Conditions[] = "60000004\tliste I\n";
constexpr char AvisSMR[] = "60000001\tCT-1\tInscription (CT)\t20100115\tImportant\tSMR important.\n";
constexpr char AvisASMR[] = "60000001\tCT-1\tInscription (CT)\t20100115\tV\tASMR V.\n";
constexpr char Substances[] = "PARACETAMOL\nWARFARINE\n";
constexpr char Classes[] = "molecule\tfamille\nWARFARINE\tANTIVITAMINES K\n";

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
    using namespace vdx::import;
    const std::string_view octets(reinterpret_cast<const char*>(donnees), taille);
    std::vector<std::string_view> parties;
    for (size_t debut = 0;;) {
        const size_t fin = octets.find('\x1E', debut);
        parties.push_back(octets.substr(debut, fin == std::string_view::npos ? std::string_view::npos : fin - debut));
        if (fin == std::string_view::npos || parties.size() == 4) break;
        debut = fin + 1;
    }
    parties.resize(4);
    const fs::path& d = Dossier();
    Ecrit(d / "bdpm" / "CIS_bdpm.txt", Specialites);
    Ecrit(d / "bdpm" / "CIS_GENER_bdpm.txt", Groupes);
    Ecrit(d / "bdpm" / "CIS_CPD_bdpm.txt", Conditions);
    Ecrit(d / "interactions-2016-08" / "substances.txt", Substances);
    Ecrit(d / "interactions-2016-08" / "substance-classes.tsv", Classes);
    Ecrit(d / "interactions-2016-08" / "couples.tsv", parties[0]);
    Ecrit(d / "bdpm" / "CIS_COMPO_bdpm.txt", parties[1]);
    Ecrit(d / "bdpm" / "CIS_CIP_bdpm.txt", parties[2]);
    Ecrit(d / "bdpm" / "CIS_HAS_SMR_bdpm.txt", parties[3].empty() ? std::string_view(AvisSMR) : parties[3]);
    Ecrit(d / "bdpm" / "CIS_HAS_ASMR_bdpm.txt", AvisASMR);
    OptionsImport options{d / "bdpm", d / "interactions-2016-08", d / "sources", {}};
    options.continuer = true;
    try {
        Importe(options);
    } catch (const ErreurImport&) {
    }
    return 0;
}
