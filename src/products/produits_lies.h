// The products filed under a vocabulary code (a class, a form, a family, a
// laboratory) in a link table keyed by the code, then the CodeCIP: one walk
// for the criteria search and for the lists of products of a code.
#pragma once

#include <cstddef>
#include <functional>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"
#include "store/catalogue.h"

namespace vdx {

struct LienProduits {
    const Table& (*table)();
    size_t largeur;     // of the code in the key, the CodeCIP behind it
    bool longueurFixe;  // the code's whole width is compared; otherwise a prefix, so its sub-codes too
};

namespace liens {
extern const LienProduits Classes;       // VDXCLAP: a class and its sub-classes
extern const LienProduits Formes;        // VDXIDFOP: a form and the forms its code begins
extern const LienProduits Familles;      // VDXFAMP: one family
extern const LienProduits Laboratoires;  // VDXLABP: one laboratory
}  // namespace liens

// The key searched for `code`: the code padded to its width when the width
// is fixed, else the code itself (cut to the key's length).
std::string CleDuCode(const LienProduits& lien, std::string_view code);

// The CodeCIP a key holds at `debut`, up to its first NUL.
std::string_view CIPDeCle(std::string_view cle, size_t debut);

// Hands each key under `code` to `chacun`, in key order: the CodeCIP and the
// vocabulary code the key files it under. The caller holds the table open.
// Throws Echec(-500).
void ParcourtProduitsLies(const LienProduits& lien, std::string_view code,
                          const std::function<void(std::string_view cip, std::string_view codeLie)>& chacun);

// A product of a code: its CodeCIP, its label, the code it is filed under.
struct ProduitLie {
    std::string CodeCIP;
    std::string Libelle;
    std::string Code;
};
VDX_LIGNE(ProduitLie, CodeCIP, Libelle, Code);

// The products of a code, as the lists of products show them
// (LibelleDeProduitMontre: hospital ones unless shown, deleted ones left
// out), each once under the first code met, sorted by label. Throws Echec:
// -13 a code longer than the table's, -500.
std::vector<ProduitLie> ProduitsLies(const Contexte& contexte, const LienProduits& lien, std::string_view code);

// A product of a therapeutic class with its detail, a row of
// ClasseProduits95_Vdx: the class it is filed under and its label, its
// laboratory, price (seven digits, "0000000" when unknown) and rate, its
// generic flag, form, dosage and line by common name.
struct ProduitDeClasse {
    std::string CodeCIP;
    std::string Libelle;
    std::string CodeClasse;
    std::string LibelleClasse;
    std::string Laboratoire;
    std::string Prix;
    float TauxRemboursement = 0;
    int32_t Generique = 0;
    std::string Forme;
    std::string Dosage;
    std::string CodeDC;
};
VDX_LIGNE(ProduitDeClasse, CodeCIP, Libelle, CodeClasse, LibelleClasse, Laboratoire, Prix, TauxRemboursement,
          Generique, Forme, Dosage, CodeDC);

// The products of a class and its sub-classes as ProduitsLies gives them,
// each with its detail. Throws Echec: -13 a code longer than a class's,
// -500.
std::vector<ProduitDeClasse> ProduitsDeClasse(const Contexte& contexte, std::string_view classe);

}  // namespace vdx
