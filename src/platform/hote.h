// The thin layer through which the library reaches the host's strings and
// arrays (BSTR, SAFEARRAY), the code page conversions and the shared text
// slot. On Linux it is backed by include/vdx32/oleauto.h; a Windows build
// backs it with the system's own functions.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vdx32/oleauto.h"

namespace vdx::hote {

// Records: every field takes one slot of the pointer's size (4 bytes on a
// 32-bit build, as on Windows; 8 on a 64-bit one), whatever it holds. A
// string field is a BSTR; an integer field is an int32_t in the first 4
// bytes of its slot, written sign-extended over the whole slot (the rule
// stated in oleauto.h, which hosts follow).
inline constexpr uint32_t TailleChamp = sizeof(void*);
constexpr uint32_t TailleFiche(uint32_t champs) { return champs * TailleChamp; }

// The string field `champ` (from 0) of a record.
inline BSTR* Chaine(void* fiche, uint32_t champ) {
    return reinterpret_cast<BSTR*>(static_cast<unsigned char*>(fiche) + champ * TailleChamp);
}
inline int32_t Entier(const void* fiche, uint32_t champ) {
    int32_t valeur;
    std::memcpy(&valeur, static_cast<const unsigned char*>(fiche) + champ * TailleChamp, sizeof valeur);
    return valeur;
}
inline void PoseEntier(void* fiche, uint32_t champ, int32_t valeur) {
    intptr_t etendu = valeur;  // sign-extended: a host may read the slot as intptr_t
    std::memcpy(static_cast<unsigned char*>(fiche) + champ * TailleChamp, &etendu, sizeof etendu);
}
// The record of index `i` in data given by Accede.
inline void* Fiche(void* donnees, uint32_t tailleElement, uint32_t i) {
    return static_cast<unsigned char*>(donnees) + size_t{i} * tailleElement;
}

// Arrays of records: one dimension, lower bound 0, elements of `tailleElement` bytes.
SAFEARRAY* CreeTableau(uint32_t tailleElement);  // features word 512, no element; null if memory fails
// Sets the element count (lower bound 0); kept elements stay, new ones are
// zeroed. False if the platform refuses (array locked, fixed size, memory).
bool Redimensionne(SAFEARRAY* tableau, uint32_t elements);
// Element count forced to 0, data allocated again. The old data is freed
// unless the array is locked, in which case it is left (leaked) rather than
// pulled from under whoever holds the access. Elements are not released.
bool ForceVide(SAFEARRAY* tableau);
// Whether a host holds the array locked: it can't be resized, and what it
// holds is not to be touched.
inline bool Verrouille(const SAFEARRAY* tableau) { return tableau && tableau->cLocks != 0; }
// Null on failure, and for a descriptor of this platform's own making whose
// bounds claim more than its data block holds. Never null on success, also
// for an array without element.
void* Accede(SAFEARRAY* tableau);
// The bytes of the data block of an array made by this platform's own
// functions (SafeArrayCreate, SafeArrayAllocData, SafeArrayRedim), or -1
// for a descriptor it did not make (its bounds are then taken as given).
int64_t OctetsAlloues(const SAFEARRAY* tableau);
// An array of strings as a host makes it, each of the bytes given; null if
// memory fails.
SAFEARRAY* TableauDeChaines(const std::vector<std::string>& textes);
void LibereAcces(SAFEARRAY* tableau);
uint32_t NombreElements(const SAFEARRAY* tableau);  // 0 for null
// Access to the data of an array, held while the object lives and released
// on every path; false when the platform refuses it.
class Acces {
public:
    explicit Acces(SAFEARRAY* tableau) : tableau_(tableau), donnees_(tableau ? Accede(tableau) : nullptr) {}
    ~Acces() {
        if (donnees_) LibereAcces(tableau_);
    }
    Acces(const Acces&) = delete;
    Acces& operator=(const Acces&) = delete;
    explicit operator bool() const { return donnees_ != nullptr; }
    void* Element(uint32_t tailleElement, uint32_t i) const { return Fiche(donnees_, tailleElement, i); }

private:
    SAFEARRAY* tableau_;
    void* donnees_;
};

uint32_t TailleElement(const SAFEARRAY* tableau);   // 0 for null
// Data then descriptor. Elements are not released (features word 512):
// the caller frees the string fields first.
void Detruit(SAFEARRAY* tableau);

// Host strings.
// Replaces *destination by a string holding these bytes (byte length = size).
// On failure (memory) *destination is left as it was and false returned.
bool RangeOctets(BSTR* destination, std::string_view octets);
// Replaces *destination by the wide form of a text in code page 1252.
bool RangeLarge(BSTR* destination, std::string_view texte);
void Libere(BSTR* chaine);  // frees and sets to null
// The bytes of a string stored by RangeOctets (empty for null).
std::string_view Octets(BSTR chaine);
// A wide string converted to code page 1252 ("?" for what it lacks), up to
// its length or its first NUL, as the conversion of a terminated string.
std::string VersTexte(BSTR chaine);

// The text slot shared by the processes of the user (output mode 1, and the
// input of modes 1 and 3). On Linux it is the file CheminTextePartage(),
// replaced atomically (written beside, then renamed over), so a reader sees
// the old text or the new one, never a part. Texts are bytes, code page 1252.
// A host in mode 1 reads its results from that file and writes its input
// lists to it the same way. On Windows it is the clipboard, as CF_TEXT (a
// text up to its first NUL), tried again for up to a second while another
// program holds it.
void PoseTextePartage(std::string_view texte);  // throws std::system_error if it can't be written
// The text in the slot; empty if there is none. Throws std::system_error if
// the slot exists but can't be read, or belongs to another user.
std::string PrendTextePartage();
// "$XDG_RUNTIME_DIR/vdx32-presse-papiers.txt"; without XDG_RUNTIME_DIR,
// "<temporary directory>/vdx32-presse-papiers-<uid>.txt". "CF_TEXT" on
// Windows.
std::string CheminTextePartage();

// The user's runtime directory: $XDG_RUNTIME_DIR, else $TMPDIR, else /tmp;
// read at each call. Home of the shared slot and of the agent's socket.
std::string RepertoireExecution();

}  // namespace vdx::hote
