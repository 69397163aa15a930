// Calls an export from text arguments: the C arguments of one call, by
// their declared kinds, from the texts given on a command line.
#pragma once

#include <deque>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "exports/table_exports.h"
#include "platform/convention.h"
#include "vdx32/vdx32.h"

namespace vdx::exports {

using G = GenreArgument;

// Kinds of argument given as text in a call from the command line.
bool DonneEnTexte(GenreArgument genre);

// Hands out the C arguments of one call, by their declared kinds, from the
// texts given; owns the host strings it lends.
class Arguments {
public:
    explicit Arguments(const std::vector<std::string>& textes) : textes_(textes) {}
    ~Arguments();

    // The first host string the call filled, for exports that store their
    // text there in every mode.
    std::string PremiereChaine() const;
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    template <class T>
    T Prend(GenreArgument genre) {
        if constexpr (std::is_same_v<T, const char*>) {
            return Texte(genre).c_str();
        } else if constexpr (std::is_same_v<T, int32_t>) {
            return Entier(Texte(genre));
        } else if constexpr (std::is_same_v<T, float>) {
            return Reel(Texte(genre));
        } else if constexpr (std::is_same_v<T, int32_t*>) {
            // A handle given as text; a number of mode 0 is no argument.
            if (genre != G::Poignee) return nullptr;
            poignees_.push_back(Entier(Texte(genre)));
            return &poignees_.back();
        } else if constexpr (std::is_same_v<T, BSTR*>) {
            chaines_.push_back(nullptr);
            return &chaines_.back();
        } else if constexpr (std::is_same_v<T, SAFEARRAY**>) {
            if (genre == G::ListeTableau) {
                tableaux_.push_back(TableauDeChaines(Texte(genre)));
                return &tableaux_.back();
            }
            // The result array of mode 0; an input list's text was stored
            // as the text input before the call.
            if (genre == G::Liste || genre == G::Lignes) Texte(genre);
            return nullptr;
        } else {
            static_assert(std::is_pointer_v<T>, "kind of argument not handled");
            // A record or a number of mode 0; a record given as an input
            // row in the flat modes was stored as the text input.
            if (genre == G::Liste) Texte(genre);
            return nullptr;
        }
    }

private:
    const std::string& Texte(GenreArgument genre);

    // A host array of the strings of "a@b@c".
    static SAFEARRAY* TableauDeChaines(const std::string& texte);
    static int32_t Entier(const std::string& texte);
    static float Reel(const std::string& texte);

    const std::vector<std::string>& textes_;
    size_t suivant_ = 0;
    std::deque<BSTR> chaines_;
    std::deque<SAFEARRAY*> tableaux_;
    std::deque<int32_t> poignees_;
};

// The result and parameter types of a pointer to an export, whatever its
// calling convention.
template <class F>
struct Signature;
template <class R, class... A>
struct Signature<R (*)(A...)> {
    using Retour = R;
    using Parametres = std::tuple<A...>;
};
#if VDX_CONVENTION_A_PART
template <class R, class... A>
struct Signature<R(VDX_CALL*)(A...)> {
    using Retour = R;
    using Parametres = std::tuple<A...>;
};
#endif
// The type of parameter I of the header's prototype.
template <class F, size_t I>
using Parametre = std::tuple_element_t<I, typename Signature<F>::Parametres>;

template <class F, size_t... I>
Appel Invoque(F f, const std::vector<Argument>& declares, const std::vector<std::string>& textes,
              std::index_sequence<I...>) {
    Arguments arguments(textes);
    using Valeurs = typename Signature<F>::Parametres;
    // A braced list takes its arguments from left to right.
    Valeurs valeurs{arguments.template Prend<std::tuple_element_t<I, Valeurs>>(declares[I].genre)...};
    int32_t code = 1;
    if constexpr (std::is_void_v<typename Signature<F>::Retour>)
        std::apply(f, valeurs);
    else
        code = std::apply(f, valeurs);
    return {code, arguments.PremiereChaine()};
}

// The entry of an export in the table.
template <class F>
Export Decrit(const char* nom, F f, std::vector<Argument> arguments, std::vector<const char*> champs,
              bool connexionRequise) {
    auto appelle = [f, arguments](const std::vector<std::string>& textes) {
        constexpr size_t n = std::tuple_size_v<typename Signature<F>::Parametres>;
        return Invoque(f, arguments, textes, std::make_index_sequence<n>{});
    };
    return Export{nom, std::move(arguments), std::move(champs), connexionRequise, std::move(appelle)};
}

}  // namespace vdx::exports
