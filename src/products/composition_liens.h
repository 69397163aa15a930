// What the checks ask of a product beside its composition: its therapeutic
// classes (ProduitClasse_Vdx) and its routes (ListeVoie_Vdx).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/lignes.h"
#include "store/catalogue.h"

namespace vdx {

// A therapeutic class of a product, its label from VDXCLA, or "Libellé
// inconnu".
struct ClasseDuProduit {
    std::string CodeClasse;
    std::string Libelle;
};

// The classes of `codeCIP` in the order of their codes (VDXCLAP by product).
// Throws Echec(-500).
std::vector<ClasseDuProduit> ClassesProduit(std::string_view codeCIP);
// Their codes alone.
std::vector<std::string> CodesClassesProduit(std::string_view codeCIP);
// The codes of the classes of `codeCIP` in a table of the products of
// classes (VDXCLAP, VDXYATCP), in the order of the codes.
std::vector<std::string> CodesClasses(const Table& liens, std::string_view codeCIP);

// A row of ProduitClasse_Vdx.
struct LigneClasse {
    std::string CodeClasse;
    std::string CodeCIP;
    std::string Libelle;
};
VDX_LIGNE(LigneClasse, CodeClasse, CodeCIP, Libelle);

}  // namespace vdx
