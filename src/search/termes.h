// The walk of the vocabulary of terms, shared by the criteria search (a set
// of products) and the search by indication (rows with their terms): the
// vocabulary codes the searched code reaches (the CIM10 codes of a term or
// of a CISP code, or a CIM10 code itself), the terms linked to each of
// them, and the products of each term.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/lignes.h"
#include "store/catalogue.h"
#include "store/layouts.h"

namespace vdx {

const Table& TableTermesProduits();  // VDXVAMPC
const Table& TableLiensTermes();     // VDXVAMMC
const Table& TableEquivalents();     // VDXVAMME
const Table& TableCISP();            // VDXVCISP
const Table& TableCIM10();           // VDXVCIM
const Table& TableCISPVersCIM10();   // VDXVCICI

// The modes of the walk: the TypeAMM digit of the terms it reads.
enum ModeTermes : int32_t { ModeIndication = 1, ModeContreIndication = 2, ModePrecaution = 3, ModeEffet = 4 };
// What the searched code is.
enum Qualifiant : int32_t { ParTerme = 1, ParCISP = 2, ParCIM10 = 3 };

// The file named when the lookup of an equivalent term fails.
inline constexpr char FichierEquivalents[] = "VDXPRO.NDX";

inline constexpr size_t LongueurTerme = VDXVAMM::CodeTerme.capacite();

// The codes the walks never take: products of these first characters are
// no presentations of the market.
bool CodeEcarte(std::string_view cip);

// The searched code as every probe takes it: cut to a term's length.
std::string_view CodeSonde(std::string_view code);

struct DemandeTermes {
    std::string_view code;
    int32_t qualifiant = ParTerme;
    int32_t mode = ModeIndication;  // 0: the links of every type, no products
    // The links met under a vocabulary code: only those of the mode's type,
    // or every one whose code begins with it.
    bool liensDuMode = true;
};

// One walk, on the tables the caller holds open (VDXVAMMC, VDXVCICI,
// VDXVAMPC, VDXVCISP, VDXVCIM). A failure of the store throws Echec(-500)
// naming the file.
class MarcheTermes {
public:
    // Builds the list of vocabulary codes: by term (its links of type "01"
    // for an indication, of any type otherwise; a final ".9" cut), by CISP
    // code (its CIM10 codes), by CIM10 code (the code); none for another
    // qualifiant.
    explicit MarcheTermes(const DemandeTermes& demande);

    // The label of the CISP or CIM10 code searched, when its vocabulary has
    // the code.
    const std::optional<std::string>& LibelleDuCode() const { return libelle_; }
    // Without vocabulary codes, the searched code is taken as a term.
    bool Directe() const { return liste_.empty(); }
    // The vocabulary codes the searched code reaches, in the order met.
    const std::vector<std::string>& CodesAtteints() const { return liste_; }
    // Whether a term is the searched term code or one VDXVAMME gives as its
    // equivalent; a failure of VDXVAMME names "VDXPRO.NDX".
    bool TermeDuCode(std::string_view terme) const;

    // For each term reached, in the order of the walk (a term reached twice
    // comes twice): `retient(terme)` tells whether its products are walked,
    // then `produit(terme, cip)` for each product of the term of this mode.
    // Terms and codes as the keys hold them, without their NULs.
    void Parcourt(const std::function<bool(std::string_view terme)>& retient,
                  const std::function<void(std::string_view terme, std::string_view cip)>& produit) const;

private:
    void ListeParTerme();
    void ListeParCISP();
    std::optional<std::string> LibelleDans(const Table& table) const;
    void Produits(std::string_view terme, const std::function<bool(std::string_view)>& retient,
                  const std::function<void(std::string_view, std::string_view)>& produit) const;

    const std::string code_;  // the searched code as the probes take it
    const int32_t mode_;
    const bool liensDuMode_;
    std::vector<std::string> liste_;  // vocabulary codes, without their NULs
    std::optional<std::string> libelle_;
};

// The CISP codes linked (VDXVCICI) to a CIM10 code or to a code beneath it
// (qualifiant ParCIM10), or to the CIM10 codes a term is linked to by any
// type of link (ParTerme), with their labels (VDXVCISP; "Code X
// introuvable" for one it lacks), each once, in the order of their codes.
// Throws Echec(-500).
struct CISPLie {
    std::string Code;
    std::string Libelle;
};
VDX_LIGNE(CISPLie, Code, Libelle);
std::vector<CISPLie> CISPLies(std::string_view code, int32_t qualifiant);

}  // namespace vdx
