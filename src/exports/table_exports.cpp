#include "exports/table_exports.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "exports/appel_texte.h"
#include "exports/declaration.h"
#include "platform/hote.h"
#include "session/session.h"
#include "vdx32/vdx32.h"

namespace vdx::exports {

bool DonneEnTexte(GenreArgument genre) {
    return genre == G::Texte || genre == G::Entier || genre == G::Reel || genre == G::Liste || genre == G::ListeTableau ||
           genre == G::Lignes || genre == G::Poignee;
}

Arguments::~Arguments() {
    for (BSTR& c : chaines_) hote::Libere(&c);
    for (SAFEARRAY*& t : tableaux_) SafeArrayDestroy(t);
}

std::string Arguments::PremiereChaine() const {
    for (BSTR c : chaines_)
        if (c) return std::string(hote::Octets(c));
    return {};
}

const std::string& Arguments::Texte(GenreArgument genre) {
    if (DonneEnTexte(genre)) {
        if (suivant_ >= textes_.size()) throw std::invalid_argument("argument manquant");
        return textes_[suivant_++];
    }
    throw std::invalid_argument("argument sans texte");
}

SAFEARRAY* Arguments::TableauDeChaines(const std::string& texte) {
    std::vector<std::string> entrees;
    for (size_t debut = 0;;) {
        const size_t fin = texte.find('@', debut);
        entrees.push_back(texte.substr(debut, fin == std::string::npos ? std::string::npos : fin - debut));
        if (fin == std::string::npos) return hote::TableauDeChaines(entrees);
        debut = fin + 1;
    }
}

namespace {

template <class N>
N Nombre(const std::string& texte) {
    N n{};
    auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), n);
    if (erreur != std::errc() || fin != texte.data() + texte.size())
        throw std::invalid_argument("nombre attendu : " + texte);
    return n;
}

// The exports as they were filed when the library was loaded.
std::vector<Export>& Inscrits() {
    static std::vector<Export> inscrits;
    return inscrits;
}

// The table, by name.
const std::vector<Export>& Table() {
    static const std::vector<Export> table = [] {
        std::vector<Export> t = Inscrits();
        std::ranges::sort(t, [](const Export& a, const Export& b) { return std::string_view(a.nom) < b.nom; });
        return t;
    }();
    return table;
}

}  // namespace

int32_t Arguments::Entier(const std::string& texte) { return Nombre<int32_t>(texte); }
float Arguments::Reel(const std::string& texte) { return Nombre<float>(texte); }

void Inscription::Inscrit(Export e) { Inscrits().push_back(std::move(e)); }

size_t Export::NombreTextes() const {
    size_t n = 0;
    for (const Argument& a : arguments) n += DonneEnTexte(a.genre);
    return n;
}

std::span<const Export> Exports() { return Table(); }

std::span<const char* const> ExportsDeLaSession() {
    static const char* const noms[] = {"Connection_Vdx",   "Connection2_Vdx", "DeConnection_Vdx",
                                       "DeConnection2_Vdx", "GetLastError_Vdx", "GetLenString_Vdx",
                                       "GetString_Vdx",    "GetString2_Vdx",  "SetString_Vdx",
                                       "SetString2_Vdx",   "InstalleNotifications_Vdx"};
    return noms;
}

const Export* ExportNomme(std::string_view nom) {
    for (const Export& e : Table())
        if (nom == e.nom) return &e;
    return nullptr;
}

Appel AppelleEnMemoire(const Export& e, const std::vector<std::string>& textes) {
    if (textes.size() != e.NombreTextes())
        throw std::invalid_argument(std::string(e.nom) + " attend " + std::to_string(e.NombreTextes()) +
                                    " argument(s)");
    // A host of the flat modes stores its input lists just before the call,
    // one behind the other, each ended by an empty line.
    SetString2_Vdx(nullptr);
    std::string listes;
    for (size_t i = 0, t = 0; i < e.arguments.size(); ++i) {
        if (e.arguments[i].genre == G::Liste) listes += textes[t].empty() ? "\r\n" : textes[t] + "\r\n\r\n";
        if (e.arguments[i].genre == G::Lignes) {
            for (char c : textes[t]) listes += c == '@' ? std::string("\r\n") : std::string(1, c);
            listes += "\r\n@\r\n";
        }
        t += DonneEnTexte(e.arguments[i].genre);
    }
    SetString_Vdx(listes.c_str());
    Appel appel = e.appelle(textes);
    if (appel.code < 0)
        appel.texte.clear();
    else if (session().ChaineMemoire)
        appel.texte = *session().ChaineMemoire;
    return appel;
}

}  // namespace vdx::exports
