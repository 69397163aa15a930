#include "platform/chemin.h"

#include <sys/stat.h>

namespace vdx::chemin {

std::string Repertoire(std::string nom) {
    if (!nom.empty() && (nom.back() == '\\' || nom.back() == '/')) nom.pop_back();
    nom += Separateur;
    return nom;
}

bool FichierExiste(const std::string& chemin) {
    struct stat etat;
    return ::stat(chemin.c_str(), &etat) == 0 && !S_ISDIR(etat.st_mode);
}

}  // namespace vdx::chemin
