// The identity of a product told in its parts, from its VDXIDPRO record and
// the words its codes name: name, dosage, form, routes, package, units of
// take, the label assembled from them and its line by common name. The
// equivalents, the cost optimisation and the product sheets take their
// labels and package texts from here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "posology/quantite.h"
#include "session/lignes.h"
#include "store/fiche.h"

namespace vdx {

// What a product is named and shows, from its VDXIDPRO record.
struct Identite {
    std::string Denomination;
    std::string Dosage;
    std::string CodeForme;
};
Identite IdentiteDe(const Fiche& identification);

// The label of a form code (VDXIDFOR), empty for a code it lacks.
std::string LibelleForme(std::string_view code);

// The package of a product as its VDXIDPRO record tells it: "16 comprimés",
// "1 flacon de 150 ml"; it begins with the number of units. With the words
// of its presentation and of its unit, or reading them (Echec(-500)).
std::string TexteContenance(const Fiche& identification, const Mot& presentation, const Mot& unite);
std::string TexteContenance(std::string_view identification);

// A product's label by its parts: "PARACETAMOL EG 500 mg, comprimé, 16
// comprimés"; an empty part is left out with its separator.
std::string LibelleStructure(const Identite& identite, std::string_view forme, std::string_view contenance);

// The value of a key in `lus`, read by `lit` the first time it is asked.
template <class Cle, class Valeur, class Lecteur>
const Valeur& LuUneFois(std::unordered_map<Cle, Valeur>& lus, const Cle& cle, Lecteur lit) {
    auto it = lus.find(cle);
    if (it == lus.end()) it = lus.emplace(cle, lit(cle)).first;
    return it->second;
}

// The words of the identification's codes, each read once for the calls
// that share them (VDXIDCON, VDXIDPRE, VDXIDUPR, VDXPUPRI, VDXIDFOR).
class MotsIdentification {
public:
    const Mot& ContenantDe(int32_t code);
    const Mot& PresentationDe(int32_t code);
    const Mot& UniteDe(int32_t code);
    const Mot& UnitePriseDe(int32_t code);
    const std::string& Forme(std::string_view code);
    // The package's word, or the presentation's when the package has none.
    const Mot& Conditionnement(const Fiche& identification);
    // TexteContenance and LibelleStructure of a VDXIDPRO record.
    std::string Contenance(const Fiche& identification);
    std::string Libelle(const Fiche& identification);

private:
    std::unordered_map<int32_t, Mot> contenants_, presentations_, unites_, unitesPrise_;
    std::unordered_map<std::string, std::string> formes_;
};

// The identity of a product as IdentifiantProduit_Vdx gives it. Voie: the
// labels of its routes joined by ", "; the units of take by their code and
// singular word (0 and empty when none); CodeDC and LibelleDC its line by
// common name, empty when it has none.
struct IdentifiantProduit {
    std::string CodeCIP;
    std::string Denomination;
    std::string Dosage;
    std::string Forme;
    std::string Voie;
    std::string Contenance;
    int32_t CodeUnitePrise1 = 0;
    std::string UnitePrise1;
    int32_t CodeUnitePrise2 = 0;
    std::string UnitePrise2;
    std::string Libelle;
    std::string CodeDC;
    std::string LibelleDC;
};
VDX_LIGNE(IdentifiantProduit, CodeCIP, Denomination, Dosage, Forme, Voie, Contenance, CodeUnitePrise1, UnitePrise1,
          CodeUnitePrise2, UnitePrise2, Libelle, CodeDC, LibelleDC);

// The identity of a seven-digit CodeCIP, its code as the session shows
// codes (CIPSortant). Throws Echec: -90 for a code VDXIDPRO lacks (a line by
// common name among them), -500.
IdentifiantProduit IdentifiantDe(std::string_view cip);

// Writes the identity of every product of VDXIDPRO, in the order of their
// codes, into the file `chemin`: a first line of the field names, then a
// line a product, fields separated by tabs, lines ended by CR LF, code page
// 1252; a tab or line end inside a text becomes a blank. The file is
// written beside and renamed into place: it is whole or as it was. The
// number of products. Throws Echec: -300 when the file cannot be written,
// -500.
int32_t ExporteIdentifiants(const std::string& chemin);

}  // namespace vdx
