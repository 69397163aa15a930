// The catalogue of every table of a base and of the doctor's private base:
// names, file numbers, kinds. File numbers are fixed: a table's data file has
// number n, its index n + 1, and the further keys of that index n + 2, n + 3.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace vdx {

enum class Genre : uint8_t { Fixe, Variable };
enum class Emplacement : uint8_t { Base, Medecin };

struct Table {
    const char* nom;          // "VDXPRO"
    const char* fichierDonnees;  // "VDXPRO.DAT"
    const char* fichierIndex;    // "VDXPRO.NDX"
    uint16_t donnees;         // data file number
    uint8_t clesSupplementaires;  // keys behind the first one, on index + 1, index + 2
    Genre genre;
    Emplacement emplacement;

    constexpr uint16_t index() const { return static_cast<uint16_t>(donnees + 1); }
    constexpr uint16_t nombreCles() const { return static_cast<uint16_t>(1 + clesSupplementaires); }
    // Key number of the n-th key, from 0.
    constexpr uint16_t cle(int n) const { return static_cast<uint16_t>(index() + n); }
};

// Highest file number + 1: numbers go from 0 to 288.
inline constexpr int NombreNumeros = 289;
// The first of three numbers no table takes (a data file, its index, the
// index's member), free while a base is connected: for the tables a tool
// builds beside one of the catalogue.
inline constexpr int NumeroTravail = 153;

// Every table, by file number.
inline constexpr Table CatalogueTables[] = {
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

namespace catalogue {

constexpr bool FichiersDuNom(const Table& t) {
    const std::string_view nom = t.nom, donnees = t.fichierDonnees, index = t.fichierIndex;
    return donnees.size() == nom.size() + 4 && donnees.starts_with(nom) && donnees.ends_with(".DAT") &&
           index.size() == nom.size() + 4 && index.starts_with(nom) && index.ends_with(".NDX");
}
constexpr bool FichiersNommes() {
    for (const Table& t : CatalogueTables)
        if (!FichiersDuNom(t)) return false;
    return true;
}
static_assert(FichiersNommes(), "a table's files are its name with .DAT and .NDX");

}  // namespace catalogue

// The table of a name known when the library is built: a name the
// catalogue lacks does not compile.
consteval const Table& TableDuCatalogue(std::string_view nom) {
    for (const Table& t : CatalogueTables)
        if (nom == t.nom) return t;
    throw "no table of that name in the catalogue";
}

std::span<const Table> Catalogue();
// The table of a name read at run time (a source file, an argument), or null.
const Table* TableNommee(std::string_view nom);

// Declares an accessor `fonction()` of a table of the catalogue.
#define VDX_TABLE(fonction, nom) \
    const ::vdx::Table& fonction() { return ::vdx::TableDuCatalogue(nom); }
// The table a file or key number belongs to, or null.
const Table* TableDuNumero(int numero);

// The name the update gives a file or key number in its messages
// ("VDXPRO_DAT", "VDXPRO_NDX", "VDXPRO_NDX1"); empty for numbers it does not name.
std::string_view NomMaj(int numero);

}  // namespace vdx
