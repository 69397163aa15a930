#include "products/fiches.h"

#include "session/codeproduit.h"
#include "session/tables.h"

namespace vdx {

VDX_TABLE(TableProduits, "VDXPRO")

VDX_TABLE(TableComplements, "VDXPROA")

VDX_TABLE(TableSpecialites, "VDXYCSCP")

std::optional<std::string> FicheDuCode(const Table& table, std::string_view code) {
    if (code.size() != LongueurCIP) return std::nullopt;
    Curseur curseur(table);
    const bool exacte = curseur.Cle().size() == LongueurCIP;
    const auto position = exacte ? curseur.Egale(code) : curseur.SuperieureOuEgale(code);
    if (!position || (!exacte && curseur.Cle().substr(0, LongueurCIP) != code)) return std::nullopt;
    return FicheA(table, *position);
}

std::string FicheRequise(const Table& table, std::string_view code) {
    std::optional<std::string> fiche = FicheDuCode(table, code);
    if (!fiche) throw Echec{CodeInconnu};
    return std::move(*fiche);
}

}  // namespace vdx
