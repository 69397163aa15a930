// Product master tables and the small code tables that VDXPRO points to.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "store/champ.h"
#include "store/fiche.h"
#include "store/layouts/modeles.h"

namespace vdx {

// The product master. Keys: CodeCIP (7); the folded label (34), made unique
// with points (RegleUnicite).
namespace VDXPRO {
inline constexpr uint32_t Longueur = 236;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(Libelle, 8, 35);
VDX_TEXTE(CodeLaboratoire, 43, 5);  // key of VDXLAB; the update copies Laboratoire here
VDX_TEXTE(CodeTVA, 48, 2);
VDX_TEXTE(DonneeEco1, 50, 8);
VDX_TEXTE(DonneeEco2, 58, 8);       // the price, seven digits
VDX_TEXTE(CodeTableau, 66, 2);
VDX_TEXTE(CodeRubrique, 68, 3);     // decides the category letter of VDXVPRO
VDX_TEXTE(CodeTSS, 81, 2);
VDX_TEXTE(DonneeEco3, 85, 8);
VDX_TEXTE(CIPRemplacant, 112, 8);
VDX_TEXTE(LibelleEco, 124, 84);
VDX_ENTIER(CodeActe, 208);
VDX_TEXTE(Laboratoire, 214, 6);
VDX_ENTIER(Drapeaux, 220);
VDX_TEXTE(Suppression, 224, 10);    // a character, then the date of deletion JJMMAAAA
VDX_TEXTE(Mouvement, 234, 2);
// Fields that the update stores and no logic reads, named by their offset.
VDX_TEXTE(Zone71, 71, 2);
VDX_TEXTE(Zone73, 73, 3);
VDX_TEXTE(Zone76, 76, 3);
VDX_TEXTE(Zone79, 79, 2);
VDX_TEXTE(Zone83, 83, 2);
VDX_TEXTE(Zone93, 93, 2);
VDX_TEXTE(Zone95, 95, 6);
VDX_TEXTE(Zone101, 101, 11);
VDX_TEXTE(Zone120, 120, 2);
VDX_TEXTE(Zone122, 122, 2);
VDX_TEXTE(Zone212, 212, 2);

// Bits of Drapeaux.
inline constexpr int32_t Dopant = 1;
inline constexpr int32_t Generique = 2;
inline constexpr int32_t Referent = 4;
inline constexpr int32_t Hospitalier = 8;
}  // namespace VDXPRO

// Products by category, two records a product (see FichesParCategorie).
// Key: Categorie + the folded label (79), made unique as in VDXPRO.
namespace VDXVPRO {
inline constexpr uint32_t Longueur = 101;
VDX_TEXTE(Categorie, 0, 2);
VDX_TEXTE(Libelle, 2, 79);
VDX_TEXTE(CodeCIP, 81, 8);
VDX_TEXTE(Suppression, 89, 10);
VDX_TEXTE(Marque, 99, 2);  // "C"

// The letter under which every product is filed a second time.
inline constexpr char TousProduits = 'Z';
}  // namespace VDXVPRO

// Products of a laboratory, one record a product (see FicheLaboratoire).
// Key (11): the four characters of CodeLaboratoire + CodeCIP.
namespace VDXLABP {
inline constexpr uint32_t Longueur = 15;
VDX_TEXTE(CodeLaboratoire, 0, 5);
VDX_TEXTE(CodeCIP, 5, 8);
VDX_TEXTE(Marque, 13, 2);  // "C"
}  // namespace VDXLABP

// Further product data. The record ends with the last field its readers
// name; 104 to 119 are reserved.
// Keys: CodeCIP; CodeStatut (its four bytes) + CodeCIP, the products by status.
// Written by the update's "|ADDON|" rows: NombreUCD, which the row's
// fields leave out, comes in its last field.
namespace VDXPROA {
inline constexpr uint32_t Longueur = 132;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(GenCode, 8, 16);
VDX_ENTIER(Statut1, 24);
VDX_ENTIER(CodeStatut, 28);
VDX_TEXTE(TexteStatut1, 32, 26);
VDX_TEXTE(TexteStatut2, 58, 14);
VDX_ENTIER(Prescription1, 72);  // codes of restricted prescription, keys of VDXPRESR
VDX_ENTIER(Prescription2, 76);
VDX_ENTIER(Prescription3, 80);
VDX_ENTIER(Statut2, 84);
VDX_ENTIER(Statut3, 88);
VDX_TEXTE(CodeUCD, 92, 8);
VDX_ENTIER(Mediel, 100);
VDX_ENTIER(Pictogramme, 120);
VDX_ENTIER(T2A, 124);
VDX_ENTIER(NombreUCD, 128);
}  // namespace VDXPROA

// The base's identity: one record by Numero (Version, Date, Monnaie,
// VersionFichiers). Key: Numero.
namespace VDXDAT {
inline constexpr uint32_t Longueur = 84;
VDX_ENTIER(Numero, 0);
VDX_TEXTE(Texte, 4, 80);

inline constexpr int32_t Version = 0;
inline constexpr int32_t Date = 1;  // JJ/MM/AAAA
inline constexpr int32_t Monnaie = 2;
inline constexpr int32_t VersionFichiers = 3;
// From this key on, one record a table that came from a source when the
// base was built, its name as text, in the order of the catalogue.
inline constexpr int32_t PremiereTableSourcee = 100;
}  // namespace VDXDAT

// Laboratories, row "|LABF|". Keys: the four characters of the code; the
// label folded by MajusculeSansAccent, then the code, for the step search.
namespace VDXLAB {
inline constexpr uint32_t Longueur = 33;
VDX_TEXTE(CodeLaboratoire, 0, 5);
VDX_TEXTE(Libelle, 5, 26);
VDX_TEXTE(Zone31, 31, 2);
}  // namespace VDXLAB

// VAT and reimbursement rates, by the one-character codes of VDXPRO.
// Key: Code (1).
namespace VDXTVA {
inline constexpr uint32_t Longueur = 8;
VDX_TEXTE(Code, 0, 2);
VDX_REEL(Taux, 4);
}  // namespace VDXTVA
namespace VDXTSS = VDXTVA;

// Regulatory lists, by CodeTableau. Key: Code (1).
namespace VDXTAB {
inline constexpr uint32_t Longueur = 64;
VDX_TEXTE(Code, 0, 2);
VDX_TEXTE(Libelle, 2, 62);
}  // namespace VDXTAB

// Acts, by CodeActe of VDXPRO written in decimal. Key: Code (4).
namespace VDXACT {
inline constexpr uint32_t Longueur = 68;
VDX_TEXTE_PLEIN(Code, 0, 4);
VDX_TEXTE(Libelle, 4, 51);
VDX_TEXTE(Texte1, 55, 6);
VDX_TEXTE(Texte2, 61, 7);
}  // namespace VDXACT

// Restricted prescription. Key: Code.
namespace VDXPRESR {
inline constexpr uint32_t Longueur = 256;
VDX_ENTIER(Code, 0);
VDX_TEXTE(Libelle, 4, 64);
VDX_TEXTE(Detail, 68, 188);
}  // namespace VDXPRESR

// The 13-digit codes. Keys: CodeCIP + CIP13; CIP13 + CodeCIP.
namespace VDXCIP13 {
inline constexpr uint32_t Longueur = 22;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(CIP13, 8, 14);
}  // namespace VDXCIP13

namespace VDXCLA = ModeleClasse;
namespace VDXCLAP = ModeleClasseProduit;
// Classes of the update's row "|CLA|" beside VDXCLA, of the same shape.
namespace VDXWCLAD = ModeleClasse;

// Classes at risk of redundancy: only the key is read. Key: CodeClasse (10).
namespace VDXCLAR {
inline constexpr uint32_t Longueur = 12;
VDX_TEXTE(CodeClasse, 0, 11);
}  // namespace VDXCLAR

// Families, row "|FAM|". Key: CodeFamille.
namespace VDXFAM {
inline constexpr uint32_t Longueur = 110;
VDX_TEXTE(CodeFamille, 0, 6);
VDX_TEXTE(Libelle, 6, 51);
VDX_TEXTE(LibelleCle, 57, 51);
VDX_TEXTE(Zone108, 108, 2);
}  // namespace VDXFAM

// Families of a product, rows of "|ADDON|". The row keeps the family aside;
// the record holds it at 0 so that the keys can be read from the record.
// Keys: CodeFamille (padded with blanks to 5) + CodeCIP; CodeCIP + CodeFamille.
// The family code is padded with blanks in the keys only: the readers look
// it up in VDXFAM as it stands.
namespace VDXFAMP {
inline constexpr uint32_t Longueur = 16;
VDX_TEXTE(CodeFamille, 0, 6);
VDX_TEXTE(CodeCIP, 6, 8);
}  // namespace VDXFAMP

// History of important changes. Key: CodeCIP + DateModification.
namespace VDXPHIMP {
inline constexpr uint32_t Longueur = 512;
VDX_TEXTE(CodeCIP, 0, 8);
VDX_TEXTE(DateModification, 8, 11);
VDX_TEXTE(Texte, 19, 493);
}  // namespace VDXPHIMP

namespace VDXCISP = ModeleVocabulaire;
namespace VDXTIPS = ModeleVocabulaire;

// What the update files beside a product of VDXPRO, from its record: its two
// records of VDXVPRO, under the category letter of CodeRubrique and under
// "Z", and its record of VDXLABP.
std::array<std::string, 2> FichesParCategorie(Fiche produit);
std::string FicheLaboratoire(Fiche produit);

}  // namespace vdx
