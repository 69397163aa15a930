#include "session/texte.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace vdx {
namespace {

constexpr char Separateur = '@';
constexpr char ChampVideSeul = '#';

void AjouteSeparateur(std::string& plat) {
    if (!plat.empty() && plat.back() == ChampVideSeul)
        plat.back() = Separateur;
    else
        plat += Separateur;
}

// Eight significant digits of a positive value and the position of the
// decimal point behind the first `point` of them, the last digit rounded.
struct Chiffres {
    char c[8];
    int point;
};

Chiffres HuitChiffres(double valeur) {
    char texte[32];
    std::snprintf(texte, sizeof texte, "%.7e", valeur);  // d.ddddddde+XX
    Chiffres r{};
    r.c[0] = texte[0];
    for (int i = 1; i < 8; ++i) r.c[i] = texte[i + 1];
    r.point = std::atoi(texte + 10) + 1;
    return r;
}

// The halves and quarters written as their signs (code page 1252).
void EcritFractions(std::string& texte) {
    static const struct {
        const char* decimales;
        const char* signe;
    } fractions[] = {{".25", "\xBC"}, {".5", "\xBD"}, {".75", "\xBE"}};
    for (const auto& f : fractions)
        if (texte == std::string("0") + f.decimales) {
            texte = f.signe;
            return;
        }
    for (const auto& f : fractions) {
        const std::string_view d = f.decimales;
        if (texte.size() > d.size() && std::string_view(texte).substr(texte.size() - d.size()) == d) {
            texte.replace(texte.size() - d.size(), d.size(), f.signe);
            return;
        }
    }
}

}  // namespace

void AjouteChamp(std::optional<std::string_view> champ, std::string& plat, bool nouvelleLigne) {
    const bool vide = !champ || champ->empty();
    if (plat.empty()) {
        if (vide)
            plat = ChampVideSeul;
        else
            plat.assign(*champ);
        return;
    }
    if (plat.back() == '\n' && nouvelleLigne) {
        if (vide)
            plat += ChampVideSeul;
        else
            plat += *champ;
        return;
    }
    AjouteSeparateur(plat);
    if (champ) plat += *champ;
}

void AjouteTexte(std::string_view texte, std::string& plat) { plat += texte; }

std::optional<std::string> ExtraitChamp(std::string_view texte, size_t& position, int genre) {
    if (position >= texte.size()) return std::nullopt;
    size_t fin = position;
    auto arrete = [&](char c) { return c == Separateur || (genre == 0 && c == '\r'); };
    if (genre == 0 || genre == 1)
        while (fin < texte.size() && !arrete(texte[fin])) ++fin;
    std::string champ(texte.substr(position, fin - position));
    position = fin + 1;
    if (position < texte.size() && texte[position] == '\n') ++position;
    return champ;
}

ResultatChamp ChampSuivant(std::string_view texte, size_t& position, std::string& tampon) {
    tampon.clear();
    if (position >= texte.size()) {
        if (position == texte.size()) ++position;
        return TexteFini;
    }
    auto finDeLigne = [&](size_t i) { return texte[i] == '\r' && i + 1 < texte.size() && texte[i + 1] == '\n'; };
    if (finDeLigne(position)) {
        position += 2;
        return LigneFinie;
    }
    if (texte[position] == Separateur) {
        ++position;
        return ChampVide;
    }
    size_t fin = position;
    while (fin < texte.size() && texte[fin] != Separateur && !finDeLigne(fin)) ++fin;
    tampon.assign(texte.substr(position, fin - position));
    position = (fin < texte.size() && texte[fin] == Separateur) ? fin + 1 : fin;
    return ChampLu;
}

void TexteNombre(float valeur, std::string& tampon, bool fractions) {
    if (valeur == 0) {
        tampon = "0";
        return;
    }
    if (!std::isfinite(valeur)) return;
    double v = std::fabs(static_cast<double>(valeur));
    v += v <= 1 ? 0.0000001 : 0.001;
    const Chiffres ch = HuitChiffres(v);
    auto chiffre = [&](int i) { return i >= 0 && i < 8 ? ch.c[i] : '0'; };
    std::string texte;
    if (ch.point >= 1) {
        for (int i = 0; i < ch.point; ++i) texte += chiffre(i);
        if (chiffre(ch.point + 1) != '0')
            texte += {'.', chiffre(ch.point), chiffre(ch.point + 1)};
        else if (chiffre(ch.point) != '0')
            texte += {'.', chiffre(ch.point)};
    } else if (ch.point == 0) {
        texte = "0.";
        texte += chiffre(0);
        if (chiffre(2) != '0')
            texte += {chiffre(1), chiffre(2)};
        else if (chiffre(1) != '0')
            texte += chiffre(1);
    } else if (ch.point == -1) {
        texte = "0.0";
        texte += chiffre(0);
        if (chiffre(1) != '0') texte += chiffre(1);
    } else if (ch.point >= -5) {
        texte = "0." + std::string(static_cast<size_t>(-ch.point), '0') + chiffre(0);
    } else {
        return;
    }
    if (fractions) EcritFractions(texte);
    tampon = std::move(texte);
}

std::string ChaineJson(std::string_view utf8) {
    std::string j = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            j += '\\';
            j += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char echappe[8];
            std::snprintf(echappe, sizeof echappe, "\\u%04x", c);
            j += echappe;
        } else {
            j += c;
        }
    }
    return j + "\"";
}

}  // namespace vdx
