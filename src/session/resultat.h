// Results of the exports: rows built once, as typed fields, into an array
// of records (the host's in mode 0, a private one in the other modes), and
// delivered by mode in one place.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/codes.h"
#include "session/lignes.h"
#include "vdx32/oleauto.h"

namespace vdx {

// Delivers a finished flat text by mode: the file "Vdxout.txt" of the base
// (mode 3), ChaineMemoire (mode 2), the shared text slot (any other).
void LivreTexte(std::string_view texte);
// The text input of the modes 1 to 3.
std::string LitTexte();

// Stores a text in a host string: wide in a wide session, else its bytes.
// No text makes it empty.
void RangeChaine(BSTR* destination, std::optional<std::string_view> texte);
// Stores a text's bytes in a host string whatever the session and the mode.
void RangeEnOctets(BSTR* destination, std::string_view texte);
// A wide host string in code page 1252, cut to `taille` - 1 bytes.
std::string ChaineVersTexte(BSTR source, size_t taille = 255);

// A scalar text result: in mode 0 stored 8-bit whatever the session into
// `destination`, the host string of an argument whose code `codeAbsent`
// is given when it is null; in the other modes delivered as a flat text.
void LivreValeur(BSTR* destination, std::string_view texte, int32_t codeAbsent);

// A result of several texts: in mode 0 each into the host string of its
// argument (8-bit whatever the session; the argument's code when null), in
// the other modes one row of them as the flat text.
struct Sortie {
    BSTR* chaine;
    int32_t codeAbsent;
};
void LivreValeurs(std::initializer_list<Sortie> sorties, std::initializer_list<std::string_view> textes);

// A result of one record: in mode 0 into the host's record `fiche`, a slot a
// field as in an array (texts 8-bit whatever the session); in the other
// modes one row as the flat text (`fiche` unread). VideFiche empties such a
// record first: its strings, and its numbers unless `nombres` is false.
void LivreFiche(void* fiche, const Gabarit& gabarit, std::vector<Valeur> champs);
void VideFiche(void* fiche, const Gabarit& gabarit, bool nombres = true);
// The fields of a host's record of a shape, given to the library in mode 0:
// its strings as the session's host strings hold them (wide in a wide
// session, else their bytes), up to their first NUL.
std::vector<Valeur> LitFiche(const void* fiche, const Gabarit& gabarit);

// The array helpers on a host array of records of a shape.
// Frees every string, zeroes every number, and resizes to 0: 1, or -21.
int32_t VideTableau(SAFEARRAY* tableau, const Gabarit& gabarit);
// VideTableau, then in modes other than 0 the array itself is freed.
void DetruitTableau(SAFEARRAY*& tableau, const Gabarit& gabarit);

// The rows of a result, built once as typed fields whatever the mode, then
// delivered in one place: into the host's array, sized once (mode 0), or
// as the flat text of the other modes, written straight from the rows. The
// host's array is checked when the result is made, before the rows.
class Resultat {
public:
    // Mode 0: the host's array variable, which must hold an array of this
    // shape (else `codeAbsent`), is emptied. Throws Echec with the code of
    // the failure.
    Resultat(SAFEARRAY** hote, Gabarit gabarit, int32_t codeAbsent);
    ~Resultat();
    Resultat(const Resultat&) = delete;
    Resultat& operator=(const Resultat&) = delete;

    // The rows, to be filled; or rows made elsewhere, of the same shape.
    Lignes& Rangs() { return lignes_; }
    void Prend(Lignes&& lignes);
    int32_t AjouteLigne(std::initializer_list<Valeur> champs) { return lignes_.AjouteLigne(champs); }
    int32_t AjouteLigne(std::vector<Valeur> champs) { return lignes_.AjouteLigne(std::move(champs)); }
    int32_t Nombre() const { return lignes_.Nombre(); }
    // The code of a host array that can't grow to the rows (-21 unless set).
    void CodeDeCroissance(int32_t code) { codeCroissance_ = code; }

    // Delivers the rows by mode and returns their count. Mode 0: the texts
    // are wide in a wide session; a failure (-21) leaves the host's array
    // empty. Other modes: the flat text is delivered.
    int32_t Livre();

private:
    void LivreAuTableau();

    Lignes lignes_;
    SAFEARRAY* hote_ = nullptr;  // mode 0, until delivered
    int32_t codeCroissance_ = OperationTableau;
};

// Rows made by an engine, delivered into the host's array `tableau` (its
// code `codeAbsent`) or as the flat text: their count.
int32_t Livre(SAFEARRAY** tableau, int32_t codeAbsent, Lignes&& lignes);

}  // namespace vdx
