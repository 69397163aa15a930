// The RTF reader on a chapter of about 100 KB as the base's editor writes
// it, beside a naive scan that copies the bytes and drops every backslash
// word, in MB/s of RTF read.
#include <benchmark/benchmark.h>

#include <cctype>
#include <string>
#include <string_view>

#include "documents/rtf.h"

namespace {

using namespace vdx;

constexpr size_t TailleChapitre = 100 * 1024;

// Sentences of a monograph as the editor spells them: accents as escapes,
// a word in bold or italics here and there.
constexpr std::string_view Phrases[] = {
    "La posologie usuelle est de \\b deux comprim\\'e9s\\b0  par jour, \\'e0 prendre au cours des repas. ",
    "Chez le sujet \\'e2g\\'e9, la dose initiale sera r\\'e9duite de moiti\\'e9 puis augment\\'e9e "
    "progressivement. ",
    "En cas d'insuffisance h\\'e9patique s\\'e9v\\'e8re, le traitement est \\i contre-indiqu\\'e9\\i0 . ",
    "Ne pas d\\'e9passer 4 g par 24 heures et respecter un intervalle d'au moins 4 heures entre deux prises. ",
    "L'efficacit\\'e9 et la tol\\'e9rance n'ont pas \\'e9t\\'e9 \\'e9tablies chez l'enfant de moins de 6 ans. ",
    "Surveiller la kali\\'e9mie et la cr\\'e9atinin\\'e9mie \\'e0 l'instauration puis tous les 3 \\'e0 6 mois. ",
    "Les comprim\\'e9s sont \\'e0 avaler tels quels avec un verre d'eau, \\b sans les \\'e9craser\\b0 . ",
    "Conserver \\'e0 une temp\\'e9rature ne d\\'e9passant pas 25\\'b0C, \\'e0 l'abri de la lumi\\'e8re. ",
};
constexpr std::string_view Titres[] = {
    "Posologie et mode d'administration", "Contre-indications", "Mises en garde et pr\\'e9cautions d'emploi",
    "Interactions", "Grossesse et allaitement", "Effets ind\\'e9sirables",
};

// A header with its font and colour tables, then headings, paragraphs of
// sentences and tabbed list items, up to TailleChapitre bytes.
std::string Chapitre() {
    std::string rtf =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}"
        "{\\f1\\froman\\fcharset0 Times New Roman;}}\r\n{\\colortbl ;\\red0\\green0\\blue0;\\red128\\green0\\blue0;}"
        "\r\n{\\*\\generator Editeur 4.6;}\\viewkind4\\uc1\\pard\\plain \\f0\\fs20 ";
    for (size_t n = 0; rtf.size() < TailleChapitre; ++n) {
        if (n % 12 == 0) {
            rtf += "{\\b\\fs24 ";
            rtf += Titres[n / 12 % std::size(Titres)];
            rtf += "}\\par \r\n";
        }
        rtf += "\\pard\\plain \\f0\\fs20 ";
        for (size_t k = 0; k < 4; ++k) rtf += Phrases[(n * 3 + k) % std::size(Phrases)];
        rtf += "\\par \r\n";
        if (n % 5 == 0) rtf += "\\tab - une prise le matin\\par \r\n\\tab - une prise le soir\\par \r\n";
    }
    rtf += "\\par }";
    return rtf;
}

const std::string& LeChapitre() {
    static const std::string c = Chapitre();
    return c;
}

void RtfVersTexte_Chapitre(benchmark::State& state) {
    const std::string& rtf = LeChapitre();
    for (auto _ : state) benchmark::DoNotOptimize(RtfVersTexte(rtf));
    state.SetBytesProcessed(state.iterations() * rtf.size());
}
BENCHMARK(RtfVersTexte_Chapitre);

// The bytes copied, each backslash word (the backslash, its letters, digits
// and apostrophes, and one blank behind) dropped.
std::string ScanNaif(std::string_view rtf) {
    std::string texte;
    texte.reserve(rtf.size());
    for (size_t i = 0; i < rtf.size();) {
        if (rtf[i] != '\\') {
            texte.push_back(rtf[i++]);
            continue;
        }
        for (++i; i < rtf.size() && (std::isalnum(static_cast<unsigned char>(rtf[i])) || rtf[i] == '\'');) ++i;
        if (i < rtf.size() && rtf[i] == ' ') ++i;
    }
    return texte;
}

void Reference_ScanNaif(benchmark::State& state) {
    const std::string& rtf = LeChapitre();
    for (auto _ : state) benchmark::DoNotOptimize(ScanNaif(rtf));
    state.SetBytesProcessed(state.iterations() * rtf.size());
}
BENCHMARK(Reference_ScanNaif);

}  // namespace

BENCHMARK_MAIN();
