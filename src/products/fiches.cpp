#include "products/fiches.h"

#include "session/codeproduit.h"
#include "session/tables.h"

namespace vdx {

VDX_TABLE(TableProduits, "VDXPRO")

VDX_TABLE(TableComplements, "VDXPROA")

VDX_TABLE(TableSpecialites, "VDXYCSCP")

VDX_TABLE(TableIdentification, "VDXIDPRO")

std::optional<std::string_view> VueDuCode(const Table& table, std::string_view code) {
    if (code.size() != LongueurCIP) return std::nullopt;
    Curseur curseur(table);
    const bool exacte = curseur.Cle().size() == LongueurCIP;
    const auto position = exacte ? curseur.Egale(code) : curseur.SuperieureOuEgale(code);
    if (!position || (!exacte && curseur.Cle().substr(0, LongueurCIP) != code)) return std::nullopt;
    return VueFicheA(table, *position);
}

std::optional<std::string> FicheDuCode(const Table& table, std::string_view code) {
    const std::optional<std::string_view> vue = VueDuCode(table, code);
    return vue ? std::optional<std::string>(*vue) : std::nullopt;
}

std::string FicheRequise(const Table& table, std::string_view code) {
    std::optional<std::string> fiche = FicheDuCode(table, code);
    if (!fiche) throw Echec{CodeInconnu};
    return std::move(*fiche);
}

}  // namespace vdx
