#include "products/fiches.h"

#include "session/codeproduit.h"
#include "session/tables.h"
#include "session/texte.h"

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

void LivrePaire(BSTR* premiere, BSTR* seconde, std::string_view a, std::string_view b,
                std::pair<int32_t, int32_t> codes) {
    if (session().ModeSortie == ModeTableau) {
        LivreValeur(premiere, a, codes.first);
        LivreValeur(seconde, b, codes.second);
        return;
    }
    std::string plat;
    AjouteChamp(a, plat);
    AjouteChamp(b, plat);
    LivreTexte(plat);
}

}  // namespace vdx
