// Any bytes as an update file, applied by ExecuteMaj_Vdx to a small base
// of its own: the run gives one of its results, never leaves a copy or a
// journal behind, and the base stays readable; the same bytes through the
// reader with a small buffer end or refuse a long token.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "maj/lecture.h"
#include "maj/unite.h"
#include "store/fixture.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;
namespace fs = std::filesystem;

void Exige(bool condition) {
    if (!condition) std::abort();
}

struct Terrain {
    essai::BaseDeTest base;
    std::string dossier = essai::DossierTemporaire("maj-fuzz-XXXXXX");
    Terrain() {
        essai::AjouteIdentite(base);
        base.Ajoute("VDXLAB", {{"CodeLaboratoire", "SANO"}, {"Libelle", "Sanofi"}});
        InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
        Exige(Connection2_Vdx(base.Repertoire().c_str(), 0, 0) == 1);
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
    static Terrain terrain;
    const std::string chemin = terrain.dossier + "/RE999999.VDX";
    std::ofstream(chemin, std::ios::binary).write(reinterpret_cast<const char*>(donnees), static_cast<std::streamsize>(taille));
    const int32_t resultat = ExecuteMaj_Vdx(terrain.dossier.c_str());
    Exige(resultat == 1 || resultat == 0 || resultat == -10 || resultat == -500);
    for (const auto& e : fs::directory_iterator(terrain.base.Repertoire()))
        Exige(!e.path().string().ends_with(maj::SuffixeCopie) && e.path().filename() != maj::NomJournal);
    BSTR libelle = nullptr;
    Exige(LibelleLaboratoire_Vdx("SANO", &libelle) == 1 || LibelleLaboratoire_Vdx("SANO", &libelle) == -90);
    SysFreeString(libelle);

    std::unique_ptr<FILE, int (*)(FILE*)> f(std::fopen(chemin.c_str(), "rb"), &std::fclose);
    maj::LecteurMaj lecteur(f.get(), 64);
    std::string jeton;
    try {
        while (lecteur.LireChamp(jeton) != maj::Jeton::Fin) Exige(jeton.size() < 64);
    } catch (const maj::JetonTropLong&) {
    }
    Exige(lecteur.OctetsLus() <= taille);
    return 0;
}
