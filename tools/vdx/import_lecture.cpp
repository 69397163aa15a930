#include "tools/vdx/import_lecture.h"

#include <fstream>
#include <optional>
#include <sstream>

#include "platform/codepage.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// The code points of a UTF-8 text, or none when it isn't UTF-8.
std::optional<std::u16string> DecodeUtf8(std::string_view texte) {
    std::u16string sortie;
    for (size_t i = 0; i < texte.size();) {
        const unsigned char o = static_cast<unsigned char>(texte[i]);
        const size_t n = o < 0x80 ? 1 : (o >> 5) == 6 ? 2 : (o >> 4) == 14 ? 3 : (o >> 3) == 30 ? 4 : 0;
        if (n == 0 || i + n > texte.size()) return std::nullopt;
        char32_t c = n == 1 ? o : o & (0x7F >> n);
        for (size_t k = 1; k < n; ++k) {
            const unsigned char suite = static_cast<unsigned char>(texte[i + k]);
            if ((suite >> 6) != 2) return std::nullopt;
            c = c << 6 | (suite & 0x3F);
        }
        // Outside the basic plane nothing is in code page 1252 anyway.
        sortie += c > 0xFFFF ? u'?' : static_cast<char16_t>(c);
        i += n;
    }
    return sortie;
}

std::string Lit(const std::filesystem::path& chemin) {
    std::ifstream fichier(chemin, std::ios::binary);
    if (!fichier) throw ErreurImport(chemin.string() + ": missing file (or not readable)");
    std::ostringstream contenu;
    contenu << fichier.rdbuf();
    return contenu.str();
}

std::vector<std::string> Champs(std::string_view ligne) {
    std::vector<std::string> champs;
    for (size_t debut = 0;;) {
        const size_t fin = ligne.find('\t', debut);
        champs.emplace_back(ligne.substr(debut, fin - debut));
        if (fin == std::string_view::npos) return champs;
        debut = fin + 1;
    }
}

}  // namespace

void Journal::Rejette(const std::string& fichier, size_t ligne, const std::string& raison) {
    Motif& m = motifs_[{fichier, raison}];
    if (m.nombre++ == 0) m.premiereLigne = ligne;
    ++total_;
}

std::vector<std::string> Journal::Resume() const {
    std::vector<std::string> lignes;
    for (const auto& [cle, m] : motifs_)
        lignes.push_back(cle.first + ": " + std::to_string(m.nombre) + (m.nombre > 1 ? " lines, " : " line, ") +
                         cle.second + " (first line " + std::to_string(m.premiereLigne) + ")");
    return lignes;
}

std::string VersCp1252(std::string_view octets) {
    bool ascii = true;
    for (char c : octets) ascii = ascii && static_cast<unsigned char>(c) < 0x80;
    if (ascii) return std::string(octets);
    if (auto texte = DecodeUtf8(octets)) return codepage::DepuisUtf16(*texte);
    return std::string(octets);
}

std::vector<Ligne> LitTableau(const std::filesystem::path& chemin, size_t colonnes, std::string_view entete,
                              Journal& journal, size_t facultatives) {
    const std::string texte = VersCp1252(Lit(chemin));
    const std::string nom = chemin.filename().string();
    std::vector<Ligne> lignes;
    size_t numero = 0, rejetees = 0;
    const auto rejette = [&](const std::string& raison) {
        journal.Rejette(nom, numero, raison);
        ++rejetees;
    };
    for (size_t debut = 0; debut < texte.size();) {
        size_t fin = texte.find('\n', debut);
        const bool coupee = fin == std::string::npos;
        if (coupee) fin = texte.size();
        std::string_view ligne(texte.data() + debut, fin - debut);
        debut = fin + 1;
        if (!ligne.empty() && ligne.back() == '\r') ligne.remove_suffix(1);
        if (++numero == 1 && !entete.empty()) {
            if (Nettoie(Champs(ligne).front()) != entete)
                throw ErreurImport(nom + ": line 1 is not the header line (\"" + std::string(entete) + "...\")");
            continue;
        }
        if (ligne.find_first_not_of(" \t") == std::string_view::npos) continue;
        // No text of a base holds a NUL: such a line is no published line.
        if (ligne.find('\0') != std::string_view::npos) {
            rejette("a NUL byte in the line");
            continue;
        }
        std::vector<std::string> champs = Champs(ligne);
        // The file of a writer that stopped: its last line is no whole line.
        if (coupee && numero > 1) {
            rejette("last line without its line end, cut short");
            continue;
        }
        if (champs.size() < colonnes) {
            rejette(std::to_string(champs.size()) + " columns where " + std::to_string(colonnes) + " are expected");
            continue;
        }
        champs.resize(colonnes + facultatives);
        lignes.push_back({numero, std::move(champs)});
    }
    if (lignes.empty() && rejetees == 0) throw ErreurImport(nom + ": no line of data");
    return lignes;
}

}  // namespace vdx::import
