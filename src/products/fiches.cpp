#include "products/fiches.h"

#include "session/codeproduit.h"
#include "session/tables.h"
#include "session/texte.h"

namespace vdx {

const Table& TableProduits() {
    static const Table& t = *TableNommee("VDXPRO");
    return t;
}

const Table& TableComplements() {
    static const Table& t = *TableNommee("VDXPROA");
    return t;
}

const Table& TableSpecialites() {
    static const Table& t = *TableNommee("VDXYCSCP");
    return t;
}

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

void LivrePaire(BSTR* premiere, BSTR* seconde, std::string_view a, std::string_view b) {
    if (session().ModeSortie == ModeTableau) {
        LivreValeur(premiere, a);
        LivreValeur(seconde, b);
        return;
    }
    std::string plat;
    AjouteChamp(a, plat);
    AjouteChamp(b, plat);
    LivreTexte(plat);
}

}  // namespace vdx
