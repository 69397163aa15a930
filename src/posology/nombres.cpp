#include "posology/nombres.h"

#include <array>
#include <cmath>

#include "session/texte.h"

namespace vdx {

namespace {

// The words of 0 to 99, each with its leading blank; entry 0 is never written.
const std::string& Mot(int32_t n) {
    static const std::array<std::string, 100> mots = [] {
        static constexpr const char* jusquaVingt[20] = {
            "",        " un",       " deux",     " trois",    " quatre",
            " cinq",   " six",      " sept",     " huit",     " neuf",
            " dix",    " onze",     " douze",    " treize",   " quatorze",
            " quinze", " seize",    " dix sept", " dix huit", " dix neuf"};
        static constexpr const char* dizaines[10] = {
            "", "", " vingt", " trente", " quarante", " cinquante",
            " soixante", " soixante", " quatre vingt", " quatre vingt"};
        std::array<std::string, 100> m;
        for (int32_t n = 1; n < 100; ++n) {
            const int32_t dizaine = n / 10, unite = n % 10;
            if (dizaine < 2) {
                m[n] = jusquaVingt[n];
                continue;
            }
            // Seventy and ninety count on from ten: "soixante onze", "quatre vingt dix".
            const int32_t reste = dizaine == 7 || dizaine == 9 ? 10 + unite : unite;
            m[n] = dizaines[dizaine];
            if (unite == 1 && dizaine <= 7) m[n] += " et";
            m[n] += jusquaVingt[reste];
        }
        return m;
    }();
    return mots[n];
}

// Where the table of words ends: the thousands part must stay below 10000
// for its hundreds to be a word.
constexpr double PlafondDesMots = 10000000;

void EcritNombre(float valeur, std::string& sortie, bool marqueGenre) {
    const double v = std::fabs(static_cast<double>(valeur));
    if (v == 0) {
        sortie = "z\xE9ro";
        return;
    }
    sortie.clear();
    if (!(v < PlafondDesMots)) {
        if (std::isfinite(v)) {
            std::string chiffres;
            TexteNombre(static_cast<float>(v), chiffres, false);
            sortie = " " + chiffres;
        }
        return;
    }
    const auto milliers = static_cast<int32_t>(v / 1000);
    CentainesEnLettres(milliers, sortie, true);
    if (milliers > 0) sortie += " mille";
    CentainesEnLettres(static_cast<int32_t>(v - milliers * 1000.0), sortie, false);
    if (marqueGenre && sortie.ends_with("un")) sortie += "(e)";

    // The small addition keeps a decimal that the float holds just below it.
    double entier;
    const double fraction = std::modf(v + 0.0000001, &entier);
    if (static_cast<int32_t>(fraction * 1000) <= 0) return;
    sortie += sortie.empty() ? "z\xE9ro virgule" : " virgule";
    auto f = static_cast<float>(fraction);
    int32_t decimales = 0;
    for (int i = 0; i < 3; ++i) {
        const double x = static_cast<double>(f) * 10;
        const auto d = static_cast<int32_t>(x);
        if (d == 0 && decimales == 0)
            sortie += " z\xE9ro";
        else if (d > 0)
            decimales = decimales * 10 + d;
        f = static_cast<float>(x - d);
    }
    CentainesEnLettres(decimales, sortie, false);
}

}  // namespace

void CentainesEnLettres(int32_t n, std::string& texte, bool avantMille) {
    const int32_t centaines = n / 100, reste = n % 100;
    if (centaines == 1)
        texte += " cent";
    else if (centaines > 1)
        texte += Mot(centaines) + (avantMille || reste > 0 ? " cent" : " cents");
    if (reste > 0 && !(reste == 1 && avantMille && centaines == 0)) texte += Mot(reste);
}

int32_t NombreEnLettres(float valeur, std::string& sortie) {
    EcritNombre(valeur, sortie, true);
    return 1;
}

int32_t NombreEnLettresSansGenre(float valeur, std::string& sortie) {
    EcritNombre(valeur, sortie, false);
    return 1;
}

std::string NombreEnLettres(float valeur) {
    std::string mots;
    NombreEnLettres(valeur, mots);
    return mots;
}

std::string MotsPuisChiffres(float valeur, std::string_view chiffres) {
    return NombreEnLettres(valeur) + " (" + std::string(chiffres) + ")";
}

std::string ChiffresPuisMots(float valeur, std::string_view chiffres) {
    // The first character goes whatever it is: the blank in front of the
    // words, or the "z" of "zéro".
    const std::string mots = NombreEnLettres(valeur);
    return std::string(chiffres) + " (" + (mots.empty() ? mots : mots.substr(1)) + ")";
}

}  // namespace vdx
