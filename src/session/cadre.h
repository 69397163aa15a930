// The frame of an export: the connection test, the way out of a failure and
// the catch-all at the edge, so that no exception ever crosses the boundary.
#pragma once

#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "session/codes.h"
#include "session/session.h"

namespace vdx {

// Leaves the export through SortieErreur: thrown by the helpers that meet a
// failure deep in a walk (a store error, a bad array). A failure of the
// store carries its error words and its file as they stood where it was
// met: the closes that run while the call unwinds change the store's words.
struct Echec {
    explicit Echec(int32_t code_, int16_t erreur = 0, int16_t etat = 0, std::string nomFichier = {})
        : code(code_), erreurMagasin(erreur), etatIO(etat), fichier(std::move(nomFichier)) {}
    int32_t code;
    int16_t erreurMagasin;
    int16_t etatIO;
    std::string fichier;
};

// The failure of the store just met on `fichier` (-500).
Echec EchecMagasinSur(std::string fichier);

// What `lecture` gives, or none when it leaves with Echec(-90): a fact of
// a record that a product may lack.
template <class Lecture>
auto SiConnu(Lecture lecture) -> std::optional<decltype(lecture())> {
    try {
        return lecture();
    } catch (const Echec& e) {
        if (e.code != CodeInconnu) throw;
        return std::nullopt;
    }
}

// A fault that reaches the catch-all: the export returns -2000 with its
// message box. Thrown where a host pointer the logic must use is null.
struct FauteInterne : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The pointer a host gave, which the logic uses as it stands.
template <class T>
T* Requis(T* pointeur) {
    if (!pointeur) throw FauteInterne("pointeur nul");
    return pointeur;
}

// A pointer the host gives at an argument's position, which it may not
// leave null: the position's code (-10 for the first...) when it does.
template <class T>
T* Requis(T* pointeur, int32_t codeAbsent) {
    if (!pointeur) throw Echec{codeAbsent};
    return pointeur;
}

// Shows "Une erreur interne est survenue lors de l'appel de la fonction X !".
void SignaleErreurInterne(const char* nomExport);

// Runs the body of an export named `nomExport`: an Echec leaves through
// SortieErreur with its code, a failed allocation with -200, anything else
// with the message box and -2000.
template <class Corps>
int32_t Cadre(const char* nomExport, Corps&& corps) noexcept {
    try {
        try {
            return corps();
        } catch (const Echec& e) {
            return SortieErreur(e);
        } catch (const std::bad_alloc&) {
            return SortieErreur(Memoire);
        }
    } catch (...) {
        try {
            SignaleErreurInterne(nomExport);
            return SortieErreur(ErreurInterne);
        } catch (...) {
            return ErreurInterne;
        }
    }
}

// The frame of a data export: -2 at once when not connected.
template <class Corps>
int32_t CadreConnecte(const char* nomExport, Corps&& corps) noexcept {
    if (!session().Connecte) return NonConnecte;
    return Cadre(nomExport, static_cast<Corps&&>(corps));
}

}  // namespace vdx
