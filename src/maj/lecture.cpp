#include "maj/lecture.h"

#include <cstdlib>
#include <limits>

namespace vdx::maj {

int LecteurMaj::Octet() {
    int c;
    if (rendu_ != EOF) {
        c = rendu_;
        rendu_ = EOF;
    } else {
        c = std::fgetc(fichier_);
    }
    if (c != EOF) ++lus_;
    return c;
}

void LecteurMaj::Rend(int octet) {
    if (octet == EOF) return;
    rendu_ = octet;
    --lus_;
}

Jeton LecteurMaj::LireChamp(std::string& jeton) {
    jeton.clear();
    int c = Octet();
    while (c == '\r' || c == '\n') {
        if (c == '\r') {
            const int suivant = Octet();
            if (suivant != '\n') Rend(suivant);
        }
        c = Octet();
    }
    if (c == EOF) return Jeton::Fin;
    const auto ajoute = [&](int octet) {
        if (jeton.size() + 1 >= tampon_) throw JetonTropLong();
        jeton += static_cast<char>(octet);
    };
    if (c == '|') {
        ajoute(c);
        while ((c = Octet()) != EOF) {
            ajoute(c);
            if (c == '|') break;
        }
        return Jeton::Marqueur;
    }
    for (; c != EOF && c != '@'; c = Octet()) ajoute(c);
    return Jeton::Champ;
}

void LecteurMaj::SauteLigne() {
    for (int c = Octet(); c != EOF; c = Octet()) {
        if (c == '\n') return;
        if (c == '\r') {
            Octet();
            return;
        }
    }
}

float LireReel(std::string_view texte) {
    size_t i = 0;
    const bool negatif = !texte.empty() && texte[0] == '-';
    if (negatif) i = 1;
    double valeur = 0, poids = 0;
    bool vu = false, decimal = false;
    for (; i < texte.size(); ++i) {
        const char c = texte[i];
        if (c == '\t' || c == '\n' || c == ' ') {
            if (vu) valeur = 0, poids = 0, vu = false, decimal = false;
        } else if (c == ',' || c == '.') {
            decimal = true;
            vu = true;
            poids = 0.1;
        } else if (c >= '0' && c <= '9') {
            vu = true;
            if (decimal) {
                valeur += (c - '0') * poids;
                poids /= 10;
            } else {
                valeur = valeur * 10 + (c - '0');
            }
        }
    }
    return static_cast<float>(negatif ? -valeur : valeur);
}

int32_t LireEntier(std::string_view texte) {
    size_t i = 0;
    while (i < texte.size() && (texte[i] == ' ' || texte[i] == '\t')) ++i;
    bool negatif = false;
    if (i < texte.size() && (texte[i] == '-' || texte[i] == '+')) negatif = texte[i++] == '-';
    int64_t valeur = 0;
    for (; i < texte.size() && texte[i] >= '0' && texte[i] <= '9'; ++i) {
        valeur = valeur * 10 + (texte[i] - '0');
        if (valeur > std::numeric_limits<int32_t>::max()) valeur = int64_t{std::numeric_limits<int32_t>::max()} + 1;
    }
    if (negatif) valeur = -valeur;
    if (valeur > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
    if (valeur < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(valeur);
}

}  // namespace vdx::maj
