#include "session/lignes.h"

#include <charconv>

#include "platform/codepage.h"
#include "session/cadre.h"
#include "session/texte.h"

namespace vdx {
namespace {

std::string Decimal(int32_t n) {
    char texte[16];
    auto [fin, erreur] = std::to_chars(texte, texte + sizeof texte, n);
    return std::string(texte, fin);
}

// A field as the flat text and JSON write a number.
std::string NombreEnTexte(const Valeur& v) {
    if (const int32_t* n = std::get_if<int32_t>(&v)) return Decimal(*n);
    std::string nombre;
    TexteNombre(std::get<float>(v), nombre, false);
    return nombre;
}

}  // namespace

int32_t Lignes::Ajoute(std::vector<Valeur> champs, bool cleUnique) {
    if (champs.size() != gabarit_.size()) throw FauteInterne("ligne hors gabarit");
    for (size_t c = 0; c < champs.size(); ++c)
        if (champs[c].index() != static_cast<size_t>(gabarit_[c])) throw FauteInterne("champ hors gabarit");
    if (cleUnique) {
        const Valeur& cle = champs.front();
        const bool nouvelle = std::holds_alternative<int32_t>(cle) ? clesEntieres_.insert(std::get<int32_t>(cle)).second
                                                                   : clesTexte_.insert(std::get<std::string>(cle)).second;
        if (!nouvelle) return Nombre();
    }
    lignes_.push_back(std::move(champs));
    return Nombre();
}

std::string Lignes::TextePlat() const {
    std::string plat;
    for (const std::vector<Valeur>& ligne : lignes_) {
        if (!plat.empty()) AjouteTexte(FinDeLigne, plat);
        for (const Valeur& v : ligne) {
            if (const std::string* texte = std::get_if<std::string>(&v))
                AjouteChamp(*texte, plat);
            else
                AjouteChamp(NombreEnTexte(v), plat);
        }
    }
    return plat;
}

std::string Lignes::Json(const std::vector<const char*>& noms) const {
    if (noms.size() != gabarit_.size()) throw FauteInterne("noms hors gabarit");
    std::string json = "[";
    for (size_t i = 0; i < lignes_.size(); ++i) {
        json += i ? ",{" : "{";
        for (size_t c = 0; c < noms.size(); ++c) {
            json += (c ? "," : "") + ChaineJson(noms[c]) + ":";
            const Valeur& v = lignes_[i][c];
            const std::string* texte = std::get_if<std::string>(&v);
            json += texte ? ChaineJson(codepage::VersUtf8(*texte)) : NombreEnTexte(v);
        }
        json += "}";
    }
    return json + "]";
}

}  // namespace vdx
