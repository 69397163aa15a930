#include "store/catalogue.h"

#include <array>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vdx {
namespace {

constexpr Table kTables[] = {
    {"VDXPRO", "VDXPRO.DAT", "VDXPRO.NDX", 0, 1, Genre::Fixe, Emplacement::Base},
    {"VDXCLA", "VDXCLA.DAT", "VDXCLA.NDX", 3, 1, Genre::Fixe, Emplacement::Base},
    {"VDXCISP", "VDXCISP.DAT", "VDXCISP.NDX", 6, 0, Genre::Fixe, Emplacement::Base},
    {"VDXCLAP", "VDXCLAP.DAT", "VDXCLAP.NDX", 8, 1, Genre::Fixe, Emplacement::Base},
    {"VDXFAM", "VDXFAM.DAT", "VDXFAM.NDX", 11, 0, Genre::Fixe, Emplacement::Base},
    {"VDXFAMP", "VDXFAMP.DAT", "VDXFAMP.NDX", 13, 1, Genre::Fixe, Emplacement::Base},
    {"VDXLAB", "VDXLAB.DAT", "VDXLAB.NDX", 16, 1, Genre::Fixe, Emplacement::Base},
    {"VDXLABP", "VDXLABP.DAT", "VDXLABP.NDX", 19, 0, Genre::Fixe, Emplacement::Base},
    {"VDXTVA", "VDXTVA.DAT", "VDXTVA.NDX", 21, 0, Genre::Fixe, Emplacement::Base},
    {"VDXTSS", "VDXTSS.DAT", "VDXTSS.NDX", 23, 0, Genre::Fixe, Emplacement::Base},
    {"VDXTAB", "VDXTAB.DAT", "VDXTAB.NDX", 25, 0, Genre::Fixe, Emplacement::Base},
    {"VDXACT", "VDXACT.DAT", "VDXACT.NDX", 27, 0, Genre::Fixe, Emplacement::Base},
    {"VDXTIPS", "VDXTIPS.DAT", "VDXTIPS.NDX", 29, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDPRO", "VDXIDPRO.DAT", "VDXIDPRO.NDX", 31, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDFOR", "VDXIDFOR.DAT", "VDXIDFOR.NDX", 33, 1, Genre::Fixe, Emplacement::Base},
    {"VDXIDFOP", "VDXIDFOP.DAT", "VDXIDFOP.NDX", 36, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDPRE", "VDXIDPRE.DAT", "VDXIDPRE.NDX", 38, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDUPR", "VDXIDUPR.DAT", "VDXIDUPR.NDX", 40, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDUCO", "VDXIDUCO.DAT", "VDXIDUCO.NDX", 42, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDCON", "VDXIDCON.DAT", "VDXIDCON.NDX", 44, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPUPRI", "VDXPUPRI.DAT", "VDXPUPRI.NDX", 46, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPPROD", "VDXPPROD.DAT", "VDXPPROD.NDX", 48, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPTEXT", "VDXPTEXT.DAT", "VDXPTEXT.NDX", 50, 0, Genre::Variable, Emplacement::Base},
    {"VDXPPTER", "VDXPPTER.DAT", "VDXPPTER.NDX", 52, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPIND", "VDXPIND.DAT", "VDXPIND.NDX", 54, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPNAT", "VDXPNAT.DAT", "VDXPNAT.NDX", 56, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPVOI", "VDXPVOI.DAT", "VDXPVOI.NDX", 58, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPPRO", "VDXPPRO.DAT", "VDXPPRO.NDX", 60, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPSPE", "VDXPSPE.DAT", "VDXPSPE.NDX", 62, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPDUR", "VDXPDUR.DAT", "VDXPDUR.NDX", 64, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPMOM", "VDXPMOM.DAT", "VDXPMOM.NDX", 66, 0, Genre::Fixe, Emplacement::Base},
    {"VDXCLAR", "VDXCLAR.DAT", "VDXCLAR.NDX", 68, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPMAX", "VDXPMAX.DAT", "VDXPMAX.NDX", 70, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPDURC", "VDXPDURC.DAT", "VDXPDURC.NDX", 72, 0, Genre::Fixe, Emplacement::Base},
    {"VDXRMOC", "VDXRMOC.DAT", "VDXRMOC.NDX", 74, 0, Genre::Fixe, Emplacement::Base},
    {"VDXRMOT", "VDXRMOT.DAT", "VDXRMOT.NDX", 76, 0, Genre::Fixe, Emplacement::Base},
    {"VDXDAT", "VDXDAT.DAT", "VDXDAT.NDX", 78, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVAMM", "VDXVAMM.DAT", "VDXVAMM.NDX", 80, 2, Genre::Fixe, Emplacement::Base},
    {"VDXVAMPC", "VDXVAMPC.DAT", "VDXVAMPC.NDX", 84, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVAMPT", "VDXVAMPT.DAT", "VDXVAMPT.NDX", 87, 0, Genre::Variable, Emplacement::Base},
    {"VDXVAMMC", "VDXVAMMC.DAT", "VDXVAMMC.NDX", 89, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVCISP", "VDXVCISP.DAT", "VDXVCISP.NDX", 92, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVCIM", "VDXVCIM.DAT", "VDXVCIM.NDX", 95, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVCICI", "VDXVCICI.DAT", "VDXVCICI.NDX", 98, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVCIMA", "VDXVCIMA.DAT", "VDXVCIMA.NDX", 100, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVPA", "VDXVPA.DAT", "VDXVPA.NDX", 102, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVEXC", "VDXVEXC.DAT", "VDXVEXC.NDX", 106, 2, Genre::Fixe, Emplacement::Base},
    {"VDXVPAE", "VDXVPAE.DAT", "VDXVPAE.NDX", 110, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVPAU", "VDXVPAU.DAT", "VDXVPAU.NDX", 112, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVCOMG", "VDXVCOMG.DAT", "VDXVCOMG.NDX", 114, 0, Genre::Variable, Emplacement::Base},
    {"VDXVCOMP", "VDXVCOMP.DAT", "VDXVCOMP.NDX", 116, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVCOME", "VDXVCOME.DAT", "VDXVCOME.NDX", 118, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVPRO", "VDXVPRO.DAT", "VDXVPRO.NDX", 120, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVPAP", "VDXVPAP.DAT", "VDXVPAP.NDX", 122, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVEXCP", "VDXVEXCP.DAT", "VDXVEXCP.NDX", 124, 0, Genre::Fixe, Emplacement::Base},
    {"VDXVAMME", "VDXVAMME.DAT", "VDXVAMME.NDX", 126, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVPAAM", "VDXVPAAM.DAT", "VDXVPAAM.NDX", 129, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWCCCO", "VDXWCCCO.DAT", "VDXWCCCO.NDX", 131, 1, Genre::Fixe, Emplacement::Base},
    {"VDXWALCR", "VDXWALCR.DAT", "VDXWALCR.NDX", 134, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWSYNC", "VDXWSYNC.DAT", "VDXWSYNC.NDX", 136, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWPACO", "VDXWPACO.DAT", "VDXWPACO.NDX", 138, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWAMCO", "VDXWAMCO.DAT", "VDXWAMCO.NDX", 140, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWCTCO", "VDXWCTCO.DAT", "VDXWCTCO.NDX", 142, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYATC", "VDXYATC.DAT", "VDXYATC.NDX", 144, 1, Genre::Fixe, Emplacement::Base},
    {"VDXYATCP", "VDXYATCP.DAT", "VDXYATCP.NDX", 147, 1, Genre::Fixe, Emplacement::Base},
    {"VDXWDICO", "VDXWDICO.DAT", "VDXWDICO.NDX", 150, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVAMST", "VDXVAMST.DAT", "VDXVAMST.NDX", 156, 0, Genre::Variable, Emplacement::Base},
    {"VDXZBEXA", "VDXZBEXA.DAT", "VDXZBEXA.NDX", 158, 1, Genre::Fixe, Emplacement::Base},
    {"VDXZBEXI", "VDXZBEXI.DAT", "VDXZBEXI.NDX", 161, 1, Genre::Fixe, Emplacement::Base},
    {"VDXZBTEM", "VDXZBTEM.DAT", "VDXZBTEM.NDX", 164, 1, Genre::Fixe, Emplacement::Base},
    {"VDXZBITU", "VDXZBITU.DAT", "VDXZBITU.NDX", 167, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZBUNI", "VDXZBUNI.DAT", "VDXZBUNI.NDX", 169, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWCLAD", "VDXWCLAD.DAT", "VDXWCLAD.NDX", 171, 1, Genre::Fixe, Emplacement::Base},
    {"VDXZICLA", "VDXZICLA.DAT", "VDXZICLA.NDX", 174, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZICLC", "VDXZICLC.DAT", "VDXZICLC.NDX", 176, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZICLP", "VDXZICLP.DAT", "VDXZICLP.NDX", 178, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZIGRA", "VDXZIGRA.DAT", "VDXZIGRA.NDX", 180, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZITYP", "VDXZITYP.DAT", "VDXZITYP.NDX", 182, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZICOU", "VDXZICOU.DAT", "VDXZICOU.NDX", 184, 0, Genre::Variable, Emplacement::Base},
    {"VDXIDPVO", "VDXIDPVO.DAT", "VDXIDPVO.NDX", 186, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIDVOI", "VDXIDVOI.DAT", "VDXIDVOI.NDX", 188, 0, Genre::Fixe, Emplacement::Base},
    {"VDXPROA", "VDXPROA.DAT", "VDXPROA.NDX", 190, 1, Genre::Fixe, Emplacement::Base},
    {"VDXPRESR", "VDXPRESR.DAT", "VDXPRESR.NDX", 193, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYTRF", "VDXYTRF.DAT", "VDXYTRF.NDX", 195, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYTRFT", "VDXYTRFT.DAT", "VDXYTRFT.NDX", 197, 0, Genre::Variable, Emplacement::Base},
    {"VDXYTRPF", "VDXYTRPF.DAT", "VDXYTRPF.NDX", 199, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZNOT", "VDXZNOT.DAT", "VDXZNOT.NDX", 201, 0, Genre::Variable, Emplacement::Base},
    {"VDXZMOVI", "VDXZMOVI.DAT", "VDXZMOVI.NDX", 203, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZASPT", "VDXZASPT.DAT", "VDXZASPT.NDX", 205, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZASPI", "VDXZASPI.DAT", "VDXZASPI.NDX", 207, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZAPPC", "VDXZAPPC.DAT", "VDXZAPPC.NDX", 209, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZAPTX", "VDXZAPTX.DAT", "VDXZAPTX.NDX", 211, 0, Genre::Variable, Emplacement::Base},
    {"VDXZNOTG", "VDXZNOTG.DAT", "VDXZNOTG.NDX", 213, 0, Genre::Variable, Emplacement::Base},
    {"VDXIPC", "VDXIPC.DAT", "VDXIPC.NDX", 215, 0, Genre::Fixe, Emplacement::Base},
    {"VDXIPCTA", "VDXIPCTA.DAT", "VDXIPCTA.NDX", 218, 0, Genre::Variable, Emplacement::Base},
    {"VDXIPCTB", "VDXIPCTB.DAT", "VDXIPCTB.NDX", 220, 0, Genre::Variable, Emplacement::Base},
    {"VDXIPCCC", "VDXIPCCC.DAT", "VDXIPCCC.NDX", 222, 0, Genre::Variable, Emplacement::Base},
    {"VDXYGRSS", "VDXYGRSS.DAT", "VDXYGRSS.NDX", 226, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYALD", "VDXYALD.DAT", "VDXYALD.NDX", 228, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYALDC", "VDXYALDC.DAT", "VDXYALDC.NDX", 230, 1, Genre::Fixe, Emplacement::Base},
    {"VDXYLIEN", "VDXYLIEN.DAT", "VDXYLIEN.NDX", 233, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYLCIP", "VDXYLCIP.DAT", "VDXYLCIP.NDX", 235, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYLBIN", "VDXYLBIN.DAT", "VDXYLBIN.NDX", 237, 0, Genre::Variable, Emplacement::Base},
    {"VDXVAMDT", "VDXVAMDT.DAT", "VDXVAMDT.NDX", 239, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYCACO", "VDXYCACO.DAT", "VDXYCACO.NDX", 241, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYCAAR", "VDXYCAAR.DAT", "VDXYCAAR.NDX", 243, 0, Genre::Fixe, Emplacement::Base},
    {"VDXWPEFI", "VDXWPEFI.DAT", "VDXWPEFI.NDX", 245, 1, Genre::Fixe, Emplacement::Base},
    {"VDXYCIS", "VDXYCIS.DAT", "VDXYCIS.NDX", 248, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYCSCP", "VDXYCSCP.DAT", "VDXYCSCP.NDX", 250, 1, Genre::Fixe, Emplacement::Base},
    {"VDXYPGEN", "VDXYPGEN.DAT", "VDXYPGEN.NDX", 253, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYPGEC", "VDXYPGEC.DAT", "VDXYPGEC.NDX", 255, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYMEDR", "VDXYMEDR.DAT", "VDXYMEDR.NDX", 259, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYDCI", "VDXYDCI.DAT", "VDXYDCI.NDX", 262, 1, Genre::Fixe, Emplacement::Base},
    {"VDXYDCIP", "VDXYDCIP.DAT", "VDXYDCIP.NDX", 265, 1, Genre::Fixe, Emplacement::Base},
    {"VDXVPREI", "VDXVPREI.DAT", "VDXVPREI.NDX", 268, 0, Genre::Fixe, Emplacement::Base},
    {"VDXYAMED", "VDXYAMED.DAT", "VDXYAMED.NDX", 270, 0, Genre::Fixe, Emplacement::Base},
    {"VDXCIP13", "VDXCIP13.DAT", "VDXCIP13.NDX", 272, 1, Genre::Fixe, Emplacement::Base},
    {"VDXPHIMP", "VDXPHIMP.DAT", "VDXPHIMP.NDX", 275, 0, Genre::Fixe, Emplacement::Base},
    {"VDXZONCO", "VDXZONCO.DAT", "VDXZONCO.NDX", 277, 0, Genre::Fixe, Emplacement::Base},
    {"PRO", "PRO.DAT", "PRO.NDX", 279, 1, Genre::Fixe, Emplacement::Medecin},
    {"PATH", "PATH.DAT", "PATH.NDX", 282, 1, Genre::Fixe, Emplacement::Medecin},
    {"POSO", "POSO.DAT", "POSO.NDX", 285, 0, Genre::Fixe, Emplacement::Medecin},
    {"TEXU", "TEXU.DAT", "TEXU.NDX", 287, 0, Genre::Variable, Emplacement::Medecin},
};

// The update names numbers up to this one.
constexpr int DernierNumeroMaj = 214;

struct Index {
    std::array<const Table*, NombreNumeros> parNumero{};
    std::array<std::string, DernierNumeroMaj + 1> nomsMaj{};
    std::unordered_map<std::string_view, const Table*> parNom;

    Index() {
        for (const Table& t : kTables) {
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

std::span<const Table> Catalogue() { return kTables; }

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
