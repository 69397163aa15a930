#include "tools/vdx/import_texte.h"

#include <cctype>
#include <charconv>
#include <cstdio>

#include "store/pliage.h"

namespace vdx::import {
namespace {

bool Blanc(char c) { return c == ' ' || c == '\t' || c == '\xA0'; }

}  // namespace

std::string Nettoie(std::string_view texte) {
    std::string sortie;
    bool blanc = false;
    for (char c : texte) {
        if (Blanc(c)) {
            blanc = !sortie.empty();
            continue;
        }
        if (blanc) sortie += ' ';
        blanc = false;
        sortie += c;
    }
    return sortie;
}

std::string Plie(std::string_view texte) { return Nettoie(MajusculeSansAccent(texte)); }

std::string Capitale(std::string_view texte) {
    std::string sortie(texte);
    for (size_t i = 1; i < sortie.size(); ++i) {
        const unsigned char c = static_cast<unsigned char>(sortie[i]);
        // Capitals of code page 1252: A to Z, and 0xC0 to 0xDE but the sign 0xD7.
        if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) sortie[i] = static_cast<char>(c + 0x20);
    }
    return sortie;
}

std::vector<std::string> Decoupe(std::string_view texte, char separateur) {
    std::vector<std::string> morceaux;
    for (size_t debut = 0; debut <= texte.size();) {
        size_t fin = texte.find(separateur, debut);
        if (fin == std::string_view::npos) fin = texte.size();
        std::string morceau = Nettoie(texte.substr(debut, fin - debut));
        if (!morceau.empty()) morceaux.push_back(std::move(morceau));
        debut = fin + 1;
    }
    return morceaux;
}

std::string Coupe(std::string_view texte, size_t longueur) {
    std::string sortie(texte.substr(0, longueur));
    while (!sortie.empty() && Blanc(sortie.back())) sortie.pop_back();
    return sortie;
}

bool Commence(std::string_view texte, std::string_view debut) { return texte.substr(0, debut.size()) == debut; }
bool Contient(std::string_view texte, std::string_view morceau) { return texte.find(morceau) != std::string_view::npos; }

std::string TexteSansBalises(std::string_view html) {
    static const std::pair<std::string_view, char> Entites[] = {
        {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&#39;", '\''}, {"&apos;", '\''}, {"&nbsp;", ' '}};
    std::string texte;
    for (size_t i = 0; i < html.size(); ++i) {
        if (html[i] == '<') {
            const size_t fin = html.find('>', i);
            if (fin == std::string_view::npos) break;
            texte += ' ';  // a tag parts what it stands between
            i = fin;
            continue;
        }
        bool entite = false;
        if (html[i] == '&')
            for (const auto& [nom, caractere] : Entites)
                if (html.substr(i).starts_with(nom)) {
                    texte += caractere;
                    i += nom.size() - 1;
                    entite = true;
                    break;
                }
        if (!entite) texte += html[i];
    }
    return Nettoie(texte);
}

std::optional<double> Nombre(std::string_view texte) {
    std::string chiffres;
    for (char c : texte) {
        if (Blanc(c)) continue;
        chiffres += c == ',' ? '.' : c;
    }
    double valeur = 0;
    const char* fin = chiffres.data() + chiffres.size();
    const auto [p, erreur] = std::from_chars(chiffres.data(), fin, valeur);
    if (chiffres.empty() || erreur != std::errc() || p != fin) return std::nullopt;
    return valeur;
}

std::optional<int64_t> Centimes(std::string_view texte) {
    const std::string prix = Nettoie(texte);
    if (prix.empty()) return std::nullopt;
    const size_t virgule = prix.rfind(',');
    std::string entiers = prix.substr(0, virgule), decimales;
    if (virgule != std::string::npos) decimales = prix.substr(virgule + 1);
    if (decimales.size() > 2) return std::nullopt;
    decimales.resize(2, '0');
    std::string chiffres;
    for (char c : entiers)
        if (c != ',' && c != '.' && !Blanc(c)) chiffres += c;
    chiffres += decimales;
    int64_t valeur = 0;
    const auto [p, erreur] = std::from_chars(chiffres.data(), chiffres.data() + chiffres.size(), valeur);
    if (erreur != std::errc() || p != chiffres.data() + chiffres.size()) return std::nullopt;
    return valeur;
}

std::string RtfDe(std::string_view texte) {
    static constexpr char Hexa[] = "0123456789abcdef";
    std::string rtf = "{\\rtf1\\ansi ";
    for (const char c : texte) {
        const auto octet = static_cast<unsigned char>(c);
        if (c == '\\' || c == '{' || c == '}') {
            rtf += '\\';
            rtf += c;
        } else if (octet > 127) {
            rtf += "\\'";
            rtf += Hexa[octet >> 4];
            rtf += Hexa[octet & 15];
        } else {
            rtf += c;
        }
    }
    return rtf + "}";
}

std::optional<std::string> DateChiffres(std::string_view texte) {
    const std::string date = Nettoie(texte);
    if (date.size() != 10 || date[2] != '/' || date[5] != '/') return std::nullopt;
    std::string chiffres = date.substr(0, 2) + date.substr(3, 2) + date.substr(6, 4);
    for (char c : chiffres)
        if (!std::isdigit(static_cast<unsigned char>(c))) return std::nullopt;
    return chiffres;
}

std::string TexteNombre(double valeur) {
    char tampon[64];
    std::snprintf(tampon, sizeof tampon, "%.6f", valeur);
    std::string texte = tampon;
    while (texte.back() == '0') texte.pop_back();
    if (texte.back() == '.') texte.pop_back();
    return texte == "-0" ? "0" : texte;
}

std::string Chiffres(int64_t valeur, size_t largeur) {
    std::string texte = std::to_string(valeur);
    if (texte.size() < largeur) texte.insert(0, largeur - texte.size(), '0');
    return texte;
}

}  // namespace vdx::import
