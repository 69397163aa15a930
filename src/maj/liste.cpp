#include "maj/liste.h"

#include <algorithm>
#include <filesystem>

namespace vdx::maj {

namespace {

namespace fs = std::filesystem;

constexpr size_t DebutDate = 2, LongueurDate = 6;

char Minuscule(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool EgauxSansCasse(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::ranges::equal(a, b, [](char x, char y) { return Minuscule(x) == Minuscule(y); });
}

bool AvantSansCasse(const std::string& a, const std::string& b) {
    return std::ranges::lexicographical_compare(a, b, [](char x, char y) {
        return static_cast<unsigned char>(Minuscule(x)) < static_cast<unsigned char>(Minuscule(y));
    });
}

}  // namespace

std::string TitreDeLaDate(std::string_view date) {
    std::string titre = ModeleTitreMaj;
    // JJ/MM/AAAA: the year's last two digits, the month, the day.
    constexpr size_t Sources[] = {8, 9, 3, 4, 0, 1};
    for (size_t i = 0; i < LongueurDate; ++i) {
        const size_t s = Sources[i];
        if (s < date.size() && date[s] >= '0' && date[s] <= '9') titre[DebutDate + i] = date[s];
    }
    return titre;
}

ListeMaj ListeFichiersMaj(const std::string& repertoire, std::string_view titreBase) {
    struct Entree {
        std::string nom;
        fs::path chemin;
    };
    std::vector<Entree> entrees;
    std::error_code erreur;
    for (const auto& e : fs::directory_iterator(fs::path(repertoire), erreur)) {
        const std::string nom = e.path().filename().string();
        if (nom.size() >= 4 && EgauxSansCasse(std::string_view(nom).substr(nom.size() - 4), ".vdx") &&
            e.is_regular_file(erreur))
            entrees.push_back({nom, e.path()});
    }
    std::ranges::sort(entrees, [](const Entree& a, const Entree& b) { return AvantSansCasse(a.nom, b.nom); });
    ListeMaj liste;
    const std::string_view dateBase = titreBase.substr(DebutDate, LongueurDate);
    for (const Entree& e : entrees) {
        const std::string titre = e.nom.substr(0, e.nom.size() - 4);
        if (titre.size() != LongueurTitreMaj || liste.fichiers.size() == FichiersMaxMaj) break;
        if (std::string_view(titre).substr(DebutDate, LongueurDate) <= dateBase) continue;
        liste.fichiers.push_back(e.chemin.string());
        const std::uintmax_t taille = fs::file_size(e.chemin, erreur);
        if (!erreur) liste.tailleTotale += static_cast<int64_t>(taille);
    }
    std::ranges::sort(liste.fichiers);
    return liste;
}

}  // namespace vdx::maj
