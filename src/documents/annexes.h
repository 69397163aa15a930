// The side documents of a product: its patient notice and the notice's
// pictures, its links to documents (transparency sheets among them) and the
// documents' bytes, the texts of pharmacy products, the history of its
// important changes and its page, and the identity sheet as a page. Texts
// are code page 1252; each function throws Echec(-500) when the store fails.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// --- The notice -------------------------------------------------------------

// The HTML of the product's notice (its third section, as it stands), or
// "Information provisoirement indisponible." for an empty one; none for a
// product without notice.
std::optional<std::string> NoticeHtml(const std::string& cip);

// Each picture of the notice: the rest of its key after the code (a file
// name), and its bytes.
struct ImageNotice {
    std::string nom;
    std::string octets;
};
std::vector<ImageNotice> ImagesNotice(const std::string& cip);

// A plain file name: not empty, no byte under 0x20, no "/", "\" or "..".
bool NomDeFichierSimple(std::string_view nom);
// The directory of a file's path, with its last separator ("/" or "\");
// empty for a name alone, which stands in the working directory.
std::string_view DossierDe(std::string_view fichier);

// The notice as ProduitNotice_Vdx gives it: its text, its RTF, and the
// product's label as the title; "Information provisoirement indisponible"
// as the text when the product has no notice or an empty one.
struct TexteNotice {
    std::string Texte;
    std::string Rtf;
    std::string Titre;
};
VDX_LIGNE(TexteNotice, Texte, Rtf, Titre);
inline constexpr int32_t TypeNotice = 1;  // the one kind of text ProduitNotice_Vdx gives
TexteNotice ProduitNotice(const std::string& cip);

// --- Links to documents -----------------------------------------------------

// A link of a product: its number, title, document and kind (VDXYLCIP:
// 1 a document, 2 a transparency sheet, 3 the product's own monograph).
struct LigneLien {
    std::string NumeroLien;
    std::string Libelle;
    std::string NomDocument;
    int32_t TypeLien = 0;
};
VDX_LIGNE(LigneLien, NumeroLien, Libelle, NomDocument, TypeLien);

// A transparency sheet: the link and the label of the long-term illness
// the product is listed under (VDXYALDC), empty for none.
struct LigneTransparence {
    std::string NumeroLien;
    std::string Libelle;
    std::string NomDocument;
    int32_t TypeLien = 0;
    std::string LibelleALD;
};
VDX_LIGNE(LigneTransparence, NumeroLien, Libelle, NomDocument, TypeLien, LibelleALD);

// Whether the product has a link at all.
bool ExisteLien(const std::string& cip);
// Its links in the order of their numbers, one a document: a second link
// to a document already given is left out. A link VDXYLIEN lacks has its
// number and kind only.
std::vector<LigneLien> ListeLiens(const std::string& cip);
bool ExisteTransparence(const std::string& cip);
std::vector<LigneTransparence> Transparences(const std::string& cip);

// The bytes of a document of VDXYLBIN by its exact name; none when unknown.
std::optional<std::string> DocumentLie(std::string_view nom);
// The bytes of the product's own monograph, when a link of that kind leads
// to a document that is there.
std::optional<std::string> MonographiePropre(const std::string& cip);

// --- Texts of pharmacy products ----------------------------------------------

// A text of a pharmacy product under its title.
struct TextePharmacie {
    std::string Titre;
    std::string Texte;
};
VDX_LIGNE(TextePharmacie, Titre, Texte);

// The texts of the product's VDXZAPPC links in key order, a row for each
// non-empty field, titled by the product's kind (by its category:
// accessories, veterinary products, the others); none for a product whose
// code begins with "2", "3" or "5".
std::vector<TextePharmacie> TextesPharmacie(const std::string& cip);

// --- History of important changes -------------------------------------------

// A change: its date as JJ/MM/AAAA, its text.
struct LigneHistorique {
    std::string Date;
    std::string Texte;
};
VDX_LIGNE(LigneHistorique, Date, Texte);
// In date order.
std::vector<LigneHistorique> Historique(const std::string& cip);
// The page "Historique" of these changes, a row each (also for none).
std::string PageHistorique(const std::string& cip, const std::vector<LigneHistorique>& changements,
                           std::string_view feuilleStyle);

// --- The identity sheet --------------------------------------------------------

// The identity sheet as a page of its own, with the rows it can fill.
// Throws Echec(-90) for a product VDXPRO lacks.
std::string PageInteroperabilite(const std::string& cip, std::string_view feuilleStyle);

}  // namespace vdx
