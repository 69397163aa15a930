// A directory for a test's throwaway files, removed when the test ends, and
// the bytes of a file a test reads back.
#pragma once

#include <fstream>
#include <sstream>
#include <string>

#include "store/fixture.h"

namespace vdx::essai {

class DossierEssai {
public:
    DossierEssai() : dossier_(DossierTemporaire("essai-XXXXXX")) {}
    ~DossierEssai() { SupprimeDossier(dossier_); }
    DossierEssai(const DossierEssai&) = delete;
    DossierEssai& operator=(const DossierEssai&) = delete;

    std::string Chemin(const char* nom) const { return dossier_ + "/" + nom; }

private:
    std::string dossier_;
};

inline std::string LitFichier(const std::string& chemin) {
    std::ifstream f(chemin, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

}  // namespace vdx::essai
