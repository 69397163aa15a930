#include "exports/table_exports.h"

#include <charconv>
#include <deque>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "platform/hote.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace vdx::exports {
namespace {

using G = GenreArgument;

// Kinds of argument given as text in a call from the command line.
bool DonneEnTexte(GenreArgument genre) {
    return genre == G::Texte || genre == G::Entier || genre == G::Reel || genre == G::Liste;
}

// Hands out the C arguments of one call, by their declared kinds, from the
// texts given; owns the host strings it lends.
class Arguments {
public:
    explicit Arguments(const std::vector<std::string>& textes) : textes_(textes) {}
    ~Arguments() {
        for (BSTR& c : chaines_) hote::Libere(&c);
    }

    // The first host string the call filled, for exports that store their
    // text there in every mode.
    std::string PremiereChaine() const {
        for (BSTR c : chaines_)
            if (c) return std::string(hote::Octets(c));
        return {};
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    template <class T>
    T Prend(GenreArgument genre) {
        if constexpr (std::is_same_v<T, const char*>) {
            return Texte(genre).c_str();
        } else if constexpr (std::is_same_v<T, int32_t>) {
            return Nombre<int32_t>(Texte(genre));
        } else if constexpr (std::is_same_v<T, float>) {
            return Nombre<float>(Texte(genre));
        } else if constexpr (std::is_same_v<T, BSTR*>) {
            chaines_.push_back(nullptr);
            return &chaines_.back();
        } else {
            static_assert(std::is_pointer_v<T>, "kind of argument not handled");
            return nullptr;  // arrays and records of mode 0
        }
    }

private:
    const std::string& Texte(GenreArgument genre) {
        if (DonneEnTexte(genre)) {
            if (suivant_ >= textes_.size()) throw std::invalid_argument("argument manquant");
            return textes_[suivant_++];
        }
        throw std::invalid_argument("argument sans texte");
    }

    template <class N>
    static N Nombre(const std::string& texte) {
        N n{};
        auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), n);
        if (erreur != std::errc() || fin != texte.data() + texte.size())
            throw std::invalid_argument("nombre attendu : " + texte);
        return n;
    }

    const std::vector<std::string>& textes_;
    size_t suivant_ = 0;
    std::deque<BSTR> chaines_;
};

template <class R, class... A, size_t... I>
Appel Invoque(R (*f)(A...), const std::vector<Argument>& declares, const std::vector<std::string>& textes,
              std::index_sequence<I...>) {
    Arguments arguments(textes);
    // A braced list takes its arguments from left to right.
    std::tuple<A...> valeurs{arguments.template Prend<A>(declares[I].genre)...};
    int32_t code = 1;
    if constexpr (std::is_void_v<R>)
        std::apply(f, valeurs);
    else
        code = std::apply(f, valeurs);
    return {code, arguments.PremiereChaine()};
}

template <class R, class... A>
Export Decrit(const char* nom, R (*f)(A...), std::vector<Argument> arguments, std::vector<const char*> champs = {},
              bool connexionRequise = true) {
    if (arguments.size() != sizeof...(A)) throw std::logic_error(nom);
    auto appelle = [f, arguments](const std::vector<std::string>& textes) {
        return Invoque(f, arguments, textes, std::index_sequence_for<A...>{});
    };
    return Export{nom, std::move(arguments), std::move(champs), connexionRequise, std::move(appelle)};
}

const std::vector<Export>& Table() {
    static const std::vector<Export> table = {
        Decrit("Version_Vdx", &Version_Vdx, {{G::Fiche, "Fiche"}}, {"Version", "DateVersion"}),
        Decrit("VersionFichier_Vdx", &VersionFichier_Vdx, {{G::ChaineSortie, "Texte"}}, {"Version"}),
        Decrit("Monnaie_Vdx", &Monnaie_Vdx, {{G::ChaineSortie, "Texte"}}, {"Monnaie"}),
        Decrit("ActiveCIP13_Vdx", &ActiveCIP13_Vdx, {{G::Entier, "Valeur"}}, {}, false),
        Decrit("ActiveHospitaliers_Vdx", &ActiveHospitaliers_Vdx, {{G::Entier, "Valeur"}}, {}, false),
        Decrit("NiveauCI_Vdx", &NiveauCI_Vdx, {{G::Entier, "Niveau"}}, {}, false),
        Decrit("NiveauInteraction_Vdx", &NiveauInteraction_Vdx, {{G::Entier, "Niveau"}}, {}, false),
        Decrit("ListeALD_Vdx", &ListeALD_Vdx, {{G::Tableau, "Tableau"}}, {"Code", "Libelle"}),
        Decrit("Rtf_To_Texte", &Rtf_To_Texte, {{G::Texte, "Texte"}, {G::ChaineSortie, "Sortie"}}, {}, false),
    };
    return table;
}

}  // namespace

size_t Export::NombreTextes() const {
    size_t n = 0;
    for (const Argument& a : arguments) n += DonneEnTexte(a.genre);
    return n;
}

std::span<const Export> Exports() { return Table(); }

const Export* ExportNomme(std::string_view nom) {
    for (const Export& e : Table())
        if (nom == e.nom) return &e;
    return nullptr;
}

Appel AppelleEnMemoire(const Export& e, const std::vector<std::string>& textes) {
    if (textes.size() != e.NombreTextes())
        throw std::invalid_argument(std::string(e.nom) + " attend " + std::to_string(e.NombreTextes()) +
                                    " argument(s)");
    // A host of the flat modes stores its input list just before the call.
    SetString2_Vdx(nullptr);
    for (size_t i = 0, t = 0; i < e.arguments.size(); ++i) {
        if (e.arguments[i].genre == G::Liste) SetString_Vdx(textes[t].c_str());
        t += DonneEnTexte(e.arguments[i].genre);
    }
    Appel appel = e.appelle(textes);
    if (appel.code < 0)
        appel.texte.clear();
    else if (session().ChaineMemoire)
        appel.texte = *session().ChaineMemoire;
    return appel;
}

}  // namespace vdx::exports
