// Every export of the table answers, on a copy of the sample base and on an
// empty base, with plausible arguments of its kinds: a code of its own
// documented set, never the internal error, never a fault (the sanitized
// build watches the memory). Files and directories it is given lie in a
// directory of the test.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "exports/table_exports.h"
#include "maj/etat.h"
#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;
using exports::GenreArgument;

// A text for each argument given as text: a path in `dossier` for one that
// names a file or a directory, a product of the sample, a small number.
std::vector<std::string> Arguments(const exports::Export& e, const std::string& dossier) {
    std::vector<std::string> textes;
    for (const exports::Argument& a : e.arguments) {
        const std::string nom = a.nom;
        switch (a.genre) {
            case GenreArgument::Texte:
                if (nom.find("Fichier") != std::string::npos || nom.find("Chemin") != std::string::npos ||
                    nom.find("Repertoire") != std::string::npos || nom.find("Dossier") != std::string::npos)
                    textes.push_back(dossier + "/" + nom);
                else
                    textes.push_back("3026454");
                break;
            case GenreArgument::Entier:
            case GenreArgument::Reel: textes.push_back("1"); break;
            case GenreArgument::Poignee: textes.push_back("0"); break;
            case GenreArgument::Liste:
            case GenreArgument::ListeTableau:
            case GenreArgument::Lignes: textes.push_back("3026454@3368195"); break;
            default: break;
        }
    }
    return textes;
}

// What the calls change for the whole process is put back when they end:
// the session, the doctor's base, the coverage of the updates.
struct EtatRemis {
    ~EtatRemis() {
        DeConnectionMedecin_Vdx();
        DeConnection2_Vdx();
        maj::etatMaj() = maj::EtatMaj{};
        RemetSession();
    }
};

void AppelleChacune(const std::string& base) {
    const EtatRemis remis;
    const essai::DossierEssai dossier;
    ASSERT_EQ(Connection_Vdx(base.c_str(), 2, 0), 1);
    size_t appelees = 0;
    for (const exports::Export& e : exports::Exports()) {
        SCOPED_TRACE(e.nom);
        const exports::Appel appel = exports::AppelleEnMemoire(e, Arguments(e, dossier.Chemin("")));
        EXPECT_NE(appel.code, VDX_ERREUR_INTERNE);
        EXPECT_GE(appel.code, -500);  // the documented codes of a call
        ++appelees;
        if (!session().Connecte) {
            ASSERT_EQ(Connection_Vdx(base.c_str(), 2, 0), 1);
        }
    }
    EXPECT_GT(appelees, 200u);
}

TEST(ExportsPartout, EachAnswersOnAnEmptyBase) {
    essai::BaseDeTest vide;
    essai::AjouteIdentite(vide);
    AppelleChacune(vide.Repertoire());
}

#ifdef VDX_BASE_ECHANTILLON
TEST(ExportsPartout, EachAnswersOnTheSampleBase) {
    const essai::DossierEssai copie;
    const std::string base = copie.Chemin("base");
    fs::copy(VDX_BASE_ECHANTILLON, base, fs::copy_options::recursive);
    AppelleChacune(base);
}
#endif

}  // namespace
}  // namespace vdx
