// The search of products by indication: the products whose indication terms
// a term code, a CISP code or a CIM10 code reaches through the vocabulary,
// one row for each product of each term met, with the term's wording.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// Exact: 1 when the term is the searched term code or one of its
// equivalents (a term code only). Libelle: the product's label; Indication:
// the term's wording, empty when the vocabulary lacks the term, or the
// wordings of equivalent terms joined by ",".
struct LigneIndication {
    int32_t Exact = 0;
    std::string CodeCIP;
    std::string Libelle;
    std::string Indication;
};
VDX_LIGNE(LigneIndication, Exact, CodeCIP, Libelle, Indication);

// `type` 1 a term code, 2 a CISP code, 3 a CIM10 code; another type takes
// the code as a term, none of them exact. Products VDXPRO lacks, hospital
// products (unless they are switched on) and codes beginning with "8" or
// "1" are passed over; a product reached twice gives two rows. Sorted by
// Libelle as unsigned bytes. Throws Echec(-500), naming "VDXPRO.NDX" for a
// failure of VDXVAMME, "VDXVCIM10.NDX" and "VDXVCIM10.DAT" for VDXVCIM.
std::vector<LigneIndication> RechercheIndicationProduits(const Contexte& contexte, std::string_view code, int32_t type);

}  // namespace vdx
