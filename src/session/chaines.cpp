#include "session/chaines.h"

#include <algorithm>
#include <cstring>

#include "session/cadre.h"

namespace vdx {

int32_t SetString(const char* texte) {
    return Cadre("SetString_Vdx", [&]() -> int32_t {
        if (*Requis(texte, Argument1) == '\0') return Succes;
        session().ChaineMemoire.emplace(texte);
        return Succes;
    });
}

int32_t SetString2(const char* texte) {
    return Cadre("SetString2_Vdx", [&]() -> int32_t {
        auto& memoire = session().ChaineMemoire;
        if (!texte) {
            memoire.reset();
        } else if (*texte) {
            // Appended in place, in linear time: a failed allocation leaves
            // the old text as it was.
            if (!memoire) memoire.emplace();
            memoire->append(texte);
        }
        return Succes;
    });
}

int32_t GetString(char* tampon) {
    return Cadre("GetString_Vdx", [&]() -> int32_t {
        if (!tampon) return Rien;
        const std::string& texte = session().ChaineMemoire ? *session().ChaineMemoire : std::string();
        std::memcpy(tampon, texte.c_str(), texte.size() + 1);
        return Succes;
    });
}

int32_t GetString2(char* tampon, int32_t page, int32_t taille) {
    return Cadre("GetString_Vdx", [&]() -> int32_t {
        auto vide = [&] {
            if (tampon) *tampon = '\0';
            return Rien;
        };
        if (page < 1 || taille < 2) return vide();
        if (!session().ChaineMemoire) throw FauteInterne("pas de texte");
        const std::string& texte = *session().ChaineMemoire;
        const size_t pas = static_cast<size_t>(taille) - 1;
        const size_t debut = static_cast<size_t>(page - 1) * pas;
        if (debut >= texte.size()) return vide();
        if (!tampon) return Rien;
        const size_t longueur = std::min(pas, texte.size() - debut);
        std::memcpy(tampon, texte.data() + debut, longueur);
        tampon[longueur] = '\0';
        return Succes;
    });
}

int32_t GetLenString() {
    const auto& memoire = session().ChaineMemoire;
    return memoire ? static_cast<int32_t>(memoire->size() + 1) : 0;
}

}  // namespace vdx
