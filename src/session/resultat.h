// Results of the exports: rows built once, as typed fields, into an array
// of records (the host's in mode 0, a private one in the other modes), and
// delivered by mode in one place.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <variant>
#include <vector>

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
// A wide host string in code page 1252, cut to `taille` - 1 bytes.
std::string ChaineVersTexte(BSTR source, size_t taille = 255);

// A scalar text result: in mode 0 stored 8-bit whatever the session into
// `destination`, the host string of an argument whose code `codeAbsent`
// is given when it is null; in the other modes delivered as a flat text.
void LivreValeur(BSTR* destination, std::string_view texte, int32_t codeAbsent);

// The shape of a record that crosses the boundary: its fields in order. A
// float takes the first four bytes of its slot.
enum class TypeChamp : uint8_t { Texte, Entier, Reel };
using FormeHote = std::vector<TypeChamp>;

// A field of a row; the first field is the row's key.
using Valeur = std::variant<std::string, int32_t, float>;

// The array helpers on a host array of records of a shape.
// Frees every string, zeroes every number, and resizes to 0: 1, or -21.
int32_t VideTableau(SAFEARRAY* tableau, const FormeHote& forme);
// VideTableau, then in modes other than 0 the array itself is freed.
void DetruitTableau(SAFEARRAY*& tableau, const FormeHote& forme);

// The rows of a result, built once as typed fields whatever the mode, then
// delivered in one place: into the host's array, sized once (mode 0), or
// as the flat text of the other modes, written straight from the rows.
class Resultat {
public:
    // Mode 0: the host's array variable, which must hold an array of this
    // shape (else `codeAbsent`), is emptied. Throws Echec with the code of
    // the failure.
    Resultat(SAFEARRAY** hote, FormeHote forme, int32_t codeAbsent);
    ~Resultat();
    Resultat(const Resultat&) = delete;
    Resultat& operator=(const Resultat&) = delete;

    // Adds a row unless one with an equal key is there: the count.
    int32_t AjouteLigne(std::initializer_list<Valeur> champs);
    int32_t AjouteLigne(const std::vector<Valeur>& champs);
    // Adds a row whatever its first field: for the rows of the checks, which
    // the caller has made unique by its own rule.
    int32_t AjouteLigneSansCle(const std::vector<Valeur>& champs);
    int32_t Nombre() const { return static_cast<int32_t>(lignes_.size()); }

    // Delivers the rows by mode and returns their count. Mode 0: the texts
    // are wide in a wide session; a failure (-21) leaves the host's array
    // empty. Other modes: the flat text is delivered.
    int32_t Livre();

private:
    void Ajoute(std::vector<Valeur> champs, bool cleUnique);
    void LivreAuTableau();
    std::string TextePlat() const;

    FormeHote forme_;
    SAFEARRAY* hote_ = nullptr;  // mode 0, until delivered
    std::vector<std::vector<Valeur>> lignes_;
    std::unordered_set<std::string> clesTexte_;
    std::unordered_set<int32_t> clesEntieres_;
};

}  // namespace vdx
