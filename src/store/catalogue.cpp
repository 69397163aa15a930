#include "store/catalogue.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vdx {
namespace {


// The update names numbers up to this one.
constexpr int DernierNumeroMaj = 214;

struct Index {
    std::array<const Table*, NombreNumeros> parNumero{};
    std::array<std::string, DernierNumeroMaj + 1> nomsMaj{};
    std::unordered_map<std::string_view, const Table*> parNom;

    Index() {
        for (const Table& t : CatalogueTables) {
            parNom.emplace(t.nom, &t);
            for (int n = t.donnees; n <= t.index() + t.clesSupplementaires; ++n) parNumero[n] = &t;
            if (t.emplacement != Emplacement::Base) continue;
            const std::string nom = t.nom;
            auto pose = [&](int numero, std::string texte) {
                if (numero <= DernierNumeroMaj) nomsMaj[numero] = std::move(texte);
            };
            pose(t.donnees, nom + "_DAT");
            pose(t.index(), nom + "_NDX");
            for (int k = 1; k <= t.clesSupplementaires; ++k) pose(t.index() + k, nom + "_NDX" + std::to_string(k));
        }
        // Names the update has always used, kept as they stand.
        nomsMaj[5] = "VDXCLA_NDX";
        nomsMaj[11] = "VDXFAM_DAT:";
        nomsMaj[35] = "VDXIDFOR_NDX";
        nomsMaj[152] = "VDXWDICO1_NDX";
    }
};

const Index& index() {
    static const Index i;
    return i;
}

}  // namespace

std::span<const Table> Catalogue() { return CatalogueTables; }

const Table* TableNommee(std::string_view nom) {
    const auto& parNom = index().parNom;
    const auto it = parNom.find(nom);
    return it == parNom.end() ? nullptr : it->second;
}

const Table* TableDuNumero(int numero) {
    if (numero < 0 || numero >= NombreNumeros) return nullptr;
    return index().parNumero[numero];
}

std::string_view NomMaj(int numero) {
    if (numero < 0 || numero > DernierNumeroMaj) return {};
    return index().nomsMaj[numero];
}

}  // namespace vdx
