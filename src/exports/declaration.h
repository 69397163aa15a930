// An export declared once. VDX_EXPORT gives, from one declaration, the C
// function with the parameter types of the header's prototype, its frame
// named after it, and its entry in the table of exports:
//
//   VDX_EXPORT(ListeVoie_Vdx, Connecte, Noms("Code", "Libelle"),
//              (Texte, Code), (Tableau, Tableau)) {
//       ... the body, which sees Code and Tableau ...
//   }
//
// The access is one of Acces; each argument is (kind, name), its kind one
// of GenreArgument. The body runs inside the frame: an Echec it throws
// leaves through the error exit.
#pragma once

#include <cstdint>
#include <optional>
#include <tuple>
#include <type_traits>
#include <vector>

#include "exports/appel_texte.h"
#include "exports/table_exports.h"
#include "session/cadre.h"
#include "session/resultat.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace vdx::exports {

// What the frame does before the body.
enum class Acces : uint8_t {
    Libre,     // nothing: the export works without a connection
    Connecte,  // -2 at once when not connected
    Chaines,   // in mode 0 every host string of a result is emptied first, then -2 when not connected
    Differe,   // in mode 0 the host strings emptied as by Chaines; the body checks the connection once
               // what must come first is done: an agent told of the call, the form of a code checked
};

template <class T>
void VideSiSortie(T argument) {
    if constexpr (std::is_same_v<T, BSTR*>)
        if (argument) RangeChaine(argument, std::nullopt);
}

// Runs the body of an export in its frame.
template <Acces acces, class... A>
int32_t Encadre(const char* nom, int32_t (*corps)(A...), std::type_identity_t<A>... arguments) noexcept {
    return Cadre(nom, [&]() -> int32_t {
        if constexpr (acces == Acces::Chaines || acces == Acces::Differe)
            if (session().ModeSortie == ModeTableau) (VideSiSortie(arguments), ...);
        if (acces != Acces::Libre && acces != Acces::Differe && !session().Connecte) return NonConnecte;
        return corps(arguments...);
    });
}

// The names of the fields of a result that is no row of its own.
template <class... N>
std::vector<const char*> Noms(N... noms) {
    return {noms...};
}

// Files an export in the table when the library is loaded.
struct Inscription {
    template <class F>
    Inscription(const char* nom, F f, std::vector<Argument> arguments, std::vector<const char*> champs,
                Acces acces) {
        Inscrit(Decrit(nom, f, std::move(arguments), std::move(champs), acces != Acces::Libre));
    }
    static void Inscrit(Export e);
};

}  // namespace vdx::exports

// The preprocessor's walk over the (kind, name) pairs, with their rank.
#define VDX_CAT_(a, b) a##b
#define VDX_CAT(a, b) VDX_CAT_(a, b)
#define VDX_COMPTE_(_1, _2, _3, _4, _5, _6, _7, _8, _9, _10, _11, _12, _13, _14, n, ...) n
#define VDX_COMPTE(...) VDX_COMPTE_(__VA_ARGS__ __VA_OPT__(, ) 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0)
#define VDX_APPLIQUE(F, ...) F(__VA_ARGS__)
#define VDX_ETALE(genre, nom) genre, nom
#define VDX_UN(F, N, i, a) VDX_APPLIQUE(F, N, i, VDX_ETALE a)
#define VDX_M0(F, N)
#define VDX_M1(F, N, a) VDX_UN(F, N, 0, a)
#define VDX_M2(F, N, a, b) VDX_M1(F, N, a), VDX_UN(F, N, 1, b)
#define VDX_M3(F, N, a, b, c) VDX_M2(F, N, a, b), VDX_UN(F, N, 2, c)
#define VDX_M4(F, N, a, b, c, d) VDX_M3(F, N, a, b, c), VDX_UN(F, N, 3, d)
#define VDX_M5(F, N, a, b, c, d, e) VDX_M4(F, N, a, b, c, d), VDX_UN(F, N, 4, e)
#define VDX_M6(F, N, a, b, c, d, e, f) VDX_M5(F, N, a, b, c, d, e), VDX_UN(F, N, 5, f)
#define VDX_M7(F, N, a, b, c, d, e, f, g) VDX_M6(F, N, a, b, c, d, e, f), VDX_UN(F, N, 6, g)
#define VDX_M8(F, N, a, b, c, d, e, f, g, h) VDX_M7(F, N, a, b, c, d, e, f, g), VDX_UN(F, N, 7, h)
#define VDX_M9(F, N, a, b, c, d, e, f, g, h, i) VDX_M8(F, N, a, b, c, d, e, f, g, h), VDX_UN(F, N, 8, i)
#define VDX_M10(F, N, a, b, c, d, e, f, g, h, i, j) VDX_M9(F, N, a, b, c, d, e, f, g, h, i), VDX_UN(F, N, 9, j)
#define VDX_M11(F, N, a, b, c, d, e, f, g, h, i, j, k) \
    VDX_M10(F, N, a, b, c, d, e, f, g, h, i, j), VDX_UN(F, N, 10, k)
#define VDX_M12(F, N, a, b, c, d, e, f, g, h, i, j, k, l) \
    VDX_M11(F, N, a, b, c, d, e, f, g, h, i, j, k), VDX_UN(F, N, 11, l)
#define VDX_M13(F, N, a, b, c, d, e, f, g, h, i, j, k, l, m) \
    VDX_M12(F, N, a, b, c, d, e, f, g, h, i, j, k, l), VDX_UN(F, N, 12, m)
#define VDX_M14(F, N, a, b, c, d, e, f, g, h, i, j, k, l, m, n) \
    VDX_M13(F, N, a, b, c, d, e, f, g, h, i, j, k, l, m), VDX_UN(F, N, 13, n)
#define VDX_MAP(F, N, ...) VDX_CAT(VDX_M, VDX_COMPTE(__VA_ARGS__))(F, N __VA_OPT__(, ) __VA_ARGS__)

#define VDX_PARAMETRE(N, i, genre, nom) ::vdx::exports::Parametre<decltype(&N), i> nom
#define VDX_PARAMETRE_CORPS(N, i, genre, nom) [[maybe_unused]] ::vdx::exports::Parametre<decltype(&N), i> nom
#define VDX_NOM(N, i, genre, nom) nom
#define VDX_ARGUMENT(N, i, genre, nom) ::vdx::exports::Argument{::vdx::exports::GenreArgument::genre, #nom}

#define VDX_EXPORT(Nom, acces, champs, ...)                                                                      \
    static int32_t Corps_##Nom(VDX_MAP(VDX_PARAMETRE_CORPS, Nom, __VA_ARGS__));                                       \
    extern "C" VDX_API int32_t VDX_CALL Nom(VDX_MAP(VDX_PARAMETRE, Nom, __VA_ARGS__)) {                            \
        return ::vdx::exports::Encadre<::vdx::exports::Acces::acces>(                                              \
            #Nom, &Corps_##Nom __VA_OPT__(, ) VDX_MAP(VDX_NOM, Nom, __VA_ARGS__));                                 \
    }                                                                                                               \
    static const ::vdx::exports::Inscription Inscription_##Nom(                                                    \
        #Nom, &Nom, {VDX_MAP(VDX_ARGUMENT, Nom, __VA_ARGS__)}, champs, ::vdx::exports::Acces::acces);             \
    static int32_t Corps_##Nom(VDX_MAP(VDX_PARAMETRE_CORPS, Nom, __VA_ARGS__))
