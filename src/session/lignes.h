// Rows of results declared once. A row is a plain struct; its fields, in
// the order of the host's record, are listed once beside it:
//
//   VDX_LIGNE(CodeLibelle, Code, Libelle);
//
// and from that list come the host's shape, the flat text's order, the
// names of the fields (the table of exports, JSON) and the row's values.
// A shorter record of the same row is a view of it, a shape of its own:
//
//   VDX_VUE(VueInteraction, FicheInteraction2, Niveau, LibelleGravite, ...);
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

namespace vdx {

// The shape of a record that crosses the boundary: its fields in order. A
// float takes the first four bytes of its slot.
enum class TypeChamp : uint8_t { Texte, Entier, Reel };
using Gabarit = std::vector<TypeChamp>;

// A field of a row; the first field is the row's key.
using Valeur = std::variant<std::string, int32_t, float>;

// The rows of a result, as typed fields of one shape, whatever the host:
// the host's array, the flat text and JSON are written from them.
class Lignes {
public:
    explicit Lignes(Gabarit gabarit) : gabarit_(std::move(gabarit)) {}

    // Adds a row unless one with an equal key is there: the count.
    int32_t AjouteLigne(std::initializer_list<Valeur> champs) { return Ajoute(std::vector<Valeur>(champs), true); }
    int32_t AjouteLigne(std::vector<Valeur> champs) { return Ajoute(std::move(champs), true); }
    // Adds a row whatever its first field: for the rows of the checks, which
    // the caller has made unique by its own rule.
    int32_t AjouteLigneSansCle(std::vector<Valeur> champs) { return Ajoute(std::move(champs), false); }

    int32_t Nombre() const { return static_cast<int32_t>(lignes_.size()); }
    const Gabarit& Types() const { return gabarit_; }
    const std::vector<std::vector<Valeur>>& Rangs() const { return lignes_; }

    // The flat text: fields each ended by "@", rows by a line end.
    std::string TextePlat() const;
    // A JSON array of objects, one a row, its fields under `noms` (as many
    // as the shape's); texts are code page 1252 bytes, written as UTF-8.
    std::string Json(const std::vector<const char*>& noms) const;

private:
    int32_t Ajoute(std::vector<Valeur> champs, bool cleUnique);

    Gabarit gabarit_;
    std::vector<std::vector<Valeur>> lignes_;
    std::unordered_set<std::string> clesTexte_;
    std::unordered_set<int32_t> clesEntieres_;
};

template <class Ligne, class T>
struct ChampLigne {
    using Type = T;
    const char* nom;
    T Ligne::*membre;
};
template <class Ligne, class T>
ChampLigne(const char*, T Ligne::*) -> ChampLigne<Ligne, T>;

// The fields of a row, specialised by VDX_LIGNE.
template <class Ligne>
struct ChampsDe;

template <class T>
constexpr TypeChamp TypeDe() {
    if constexpr (std::is_same_v<T, std::string>)
        return TypeChamp::Texte;
    else if constexpr (std::is_same_v<T, int32_t>)
        return TypeChamp::Entier;
    else {
        static_assert(std::is_same_v<T, float>, "a row's field is a string, a 32-bit integer or a float");
        return TypeChamp::Reel;
    }
}

// The shape of a row (or of a view), the names of its fields.
template <class Vue>
const Gabarit& GabaritDe() {
    static const Gabarit gabarit = std::apply(
        [](auto... c) { return Gabarit{TypeDe<typename decltype(c)::Type>()...}; }, ChampsDe<Vue>::liste);
    return gabarit;
}

template <class Vue>
const std::vector<const char*>& NomsDesChamps() {
    static const std::vector<const char*> noms =
        std::apply([](auto... c) { return std::vector<const char*>{c.nom...}; }, ChampsDe<Vue>::liste);
    return noms;
}

// The values of a row in a shape (the row's own by default), its texts
// moved out.
template <class Vue, class Ligne>
std::vector<Valeur> ValeursSelon(Ligne&& ligne) {
    // Moved in one by one: a braced list would copy every text.
    std::vector<Valeur> valeurs;
    std::apply(
        [&](auto... c) {
            valeurs.reserve(sizeof...(c));
            (valeurs.emplace_back(std::move(ligne.*c.membre)), ...);
        },
        ChampsDe<Vue>::liste);
    return valeurs;
}
template <class Ligne>
std::vector<Valeur> ValeursDe(Ligne&& ligne) {
    return ValeursSelon<std::remove_cvref_t<Ligne>>(std::forward<Ligne>(ligne));
}

// A row from the values of its own shape, in order; a value of another
// kind than its field's throws std::bad_variant_access.
template <class Ligne>
Ligne LigneDe(std::vector<Valeur>&& valeurs) {
    Ligne ligne{};
    size_t i = 0;
    std::apply([&](auto... c) { ((ligne.*c.membre = std::get<typename decltype(c)::Type>(std::move(valeurs.at(i++)))), ...); },
               ChampsDe<Ligne>::liste);
    return ligne;
}

// Rows in a shape: each one unless its key is there already; or, for the
// checks, which make their rows unique by their own rules, every one.
template <class Vue, class Ligne>
Lignes LignesSelon(std::vector<Ligne>&& lignes) {
    Lignes l(GabaritDe<Vue>());
    for (Ligne& r : lignes) l.AjouteLigne(ValeursSelon<Vue>(std::move(r)));
    return l;
}
template <class Vue, class Ligne>
Lignes LignesSansCleSelon(std::vector<Ligne>&& lignes) {
    Lignes l(GabaritDe<Vue>());
    for (Ligne& r : lignes) l.AjouteLigneSansCle(ValeursSelon<Vue>(std::move(r)));
    return l;
}

}  // namespace vdx

#define VDX_CHAMP_(Ligne, membre) ::vdx::ChampLigne{#membre, &Ligne::membre}
#define VDX_CHAMPS_1(L, a) VDX_CHAMP_(L, a)
#define VDX_CHAMPS_2(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_1(L, __VA_ARGS__)
#define VDX_CHAMPS_3(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_2(L, __VA_ARGS__)
#define VDX_CHAMPS_4(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_3(L, __VA_ARGS__)
#define VDX_CHAMPS_5(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_4(L, __VA_ARGS__)
#define VDX_CHAMPS_6(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_5(L, __VA_ARGS__)
#define VDX_CHAMPS_7(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_6(L, __VA_ARGS__)
#define VDX_CHAMPS_8(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_7(L, __VA_ARGS__)
#define VDX_CHAMPS_9(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_8(L, __VA_ARGS__)
#define VDX_CHAMPS_10(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_9(L, __VA_ARGS__)
#define VDX_CHAMPS_11(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_10(L, __VA_ARGS__)
#define VDX_CHAMPS_12(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_11(L, __VA_ARGS__)
#define VDX_CHAMPS_13(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_12(L, __VA_ARGS__)
#define VDX_CHAMPS_14(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_13(L, __VA_ARGS__)
#define VDX_CHAMPS_15(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_14(L, __VA_ARGS__)
#define VDX_CHAMPS_16(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_15(L, __VA_ARGS__)
#define VDX_CHAMPS_17(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_16(L, __VA_ARGS__)
#define VDX_CHAMPS_18(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_17(L, __VA_ARGS__)
#define VDX_CHAMPS_19(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_18(L, __VA_ARGS__)
#define VDX_CHAMPS_20(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_19(L, __VA_ARGS__)
#define VDX_CHAMPS_21(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_20(L, __VA_ARGS__)
#define VDX_CHAMPS_22(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_21(L, __VA_ARGS__)
#define VDX_CHAMPS_23(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_22(L, __VA_ARGS__)
#define VDX_CHAMPS_24(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_23(L, __VA_ARGS__)
#define VDX_CHAMPS_25(L, a, ...) VDX_CHAMP_(L, a), VDX_CHAMPS_24(L, __VA_ARGS__)
#define VDX_COMPTE_CHAMPS_(_1, _2, _3, _4, _5, _6, _7, _8, _9, _10, _11, _12, _13, _14, _15, _16, _17, _18, _19, _20, \
                           _21, _22, _23, _24, _25, n, ...)                                                           \
    n
#define VDX_COMPTE_CHAMPS(...) \
    VDX_COMPTE_CHAMPS_(__VA_ARGS__, 25, 24, 23, 22, 21, 20, 19, 18, 17, 16, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1)
#define VDX_JOINT_(a, b) a##b
#define VDX_JOINT(a, b) VDX_JOINT_(a, b)

// The fields of the row struct Ligne, in the order of the host's record;
// written in the namespace vdx, as the rows are.
#define VDX_LIGNE(Ligne, ...) VDX_VUE_DE(Ligne, Ligne, __VA_ARGS__)
// A shape Vue made of fields of the row struct Ligne.
#define VDX_VUE(Vue, Ligne, ...) \
    struct Vue;                  \
    VDX_VUE_DE(Vue, Ligne, __VA_ARGS__)
#define VDX_VUE_DE(Vue, Ligne, ...)                                                               \
    template <>                                                                                     \
    struct ChampsDe<Vue> {                                                                   \
        static constexpr auto liste =                                                               \
            std::tuple{VDX_JOINT(VDX_CHAMPS_, VDX_COMPTE_CHAMPS(__VA_ARGS__))(Ligne, __VA_ARGS__)}; \
    }
