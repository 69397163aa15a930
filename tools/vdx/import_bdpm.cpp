#include "tools/vdx/import_bdpm.h"

#include <charconv>
#include <optional>
#include <set>

#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

namespace fs = std::filesystem;

std::optional<int> Entier(std::string_view texte) {
    const std::string t = Nettoie(texte);
    int valeur = 0;
    const auto [p, erreur] = std::from_chars(t.data(), t.data() + t.size(), valeur);
    if (t.empty() || erreur != std::errc() || p != t.data() + t.size()) return std::nullopt;
    return valeur;
}

bool CodeChiffres(std::string_view code, size_t longueur) {
    if (code.size() != longueur) return false;
    for (char c : code)
        if (c < '0' || c > '9') return false;
    return true;
}

std::vector<Specialite> LitSpecialites(const fs::path& dossier, Journal& journal) {
    std::vector<Specialite> s;
    for (auto& l : LitTableau(dossier / "CIS_bdpm.txt", 12, "", journal)) {
        auto& c = l.champs;
        if (!CodeChiffres(Nettoie(c[0]), 8)) {
            journal.Rejette("CIS_bdpm.txt", l.numero, "CIS not of 8 digits");
            continue;
        }
        s.push_back({Nettoie(c[0]), Nettoie(c[1]), Nettoie(c[2]), Decoupe(c[3], ';'), Nettoie(c[5]), Nettoie(c[6]),
                     Decoupe(c[10], ';'), Nettoie(c[7]), Nettoie(c[4]), Nettoie(c[8])});
    }
    return s;
}

std::vector<Presentation> LitPresentations(const fs::path& dossier, Journal& journal) {
    std::vector<Presentation> p;
    // The last column, the reimbursement indications, is often left out.
    for (auto& l : LitTableau(dossier / "CIS_CIP_bdpm.txt", 12, "", journal, 1)) {
        auto& c = l.champs;
        if (!CodeChiffres(Nettoie(c[1]), 7)) {
            journal.Rejette("CIS_CIP_bdpm.txt", l.numero, "CIP7 not of 7 digits");
            continue;
        }
        p.push_back({l.numero, Nettoie(c[0]), Nettoie(c[1]), Nettoie(c[2]), Nettoie(c[3]), Nettoie(c[4]), Nettoie(c[5]),
                     Nettoie(c[6]), Decoupe(c[8], ';'), Nettoie(c[9]), Nettoie(c[10]), Nettoie(c[11]), c[12]});
    }
    return p;
}

// A substance code without a name on any line has nothing to show nor to
// match: its lines are left out.
std::vector<Composant> LitComposants(const fs::path& dossier, Journal& journal) {
    std::vector<Composant> s;
    std::vector<size_t> lignes;
    std::set<int> nommes;
    for (auto& l : LitTableau(dossier / "CIS_COMPO_bdpm.txt", 8, "", journal)) {
        auto& c = l.champs;
        const auto code = Entier(c[2]);
        const std::string nom = Nettoie(c[3]);
        if (!code || *code <= 0) {
            journal.Rejette("CIS_COMPO_bdpm.txt", l.numero,
                            nom.empty() ? "a substance with neither a name nor a code" : "substance code not a number");
            continue;
        }
        if (!nom.empty()) nommes.insert(*code);
        lignes.push_back(l.numero);
        s.push_back({Nettoie(c[0]), Nettoie(c[1]), *code, nom, Nettoie(c[4]), Nettoie(c[5]), Plie(c[6]), Nettoie(c[7])});
    }
    std::vector<Composant> gardes;
    for (size_t i = 0; i < s.size(); ++i) {
        if (nommes.count(s[i].code))
            gardes.push_back(std::move(s[i]));
        else
            journal.Rejette("CIS_COMPO_bdpm.txt", lignes[i], "a substance code named on no line");
    }
    return gardes;
}

std::vector<MembreGroupe> LitGroupes(const fs::path& dossier, Journal& journal) {
    std::vector<MembreGroupe> g;
    for (auto& l : LitTableau(dossier / "CIS_GENER_bdpm.txt", 4, "", journal)) {
        auto& c = l.champs;
        const auto groupe = Entier(c[0]), type = Entier(c[3]);
        if (!groupe || !type) {
            journal.Rejette("CIS_GENER_bdpm.txt", l.numero, "group or type not a number");
            continue;
        }
        g.push_back({*groupe, Nettoie(c[1]), Nettoie(c[2]), *type});
    }
    return g;
}

std::vector<Condition> LitConditions(const fs::path& dossier, Journal& journal) {
    std::vector<Condition> s;
    for (auto& l : LitTableau(dossier / "CIS_CPD_bdpm.txt", 2, "", journal))
        s.push_back({Nettoie(l.champs[0]), Nettoie(l.champs[1])});
    return s;
}

// The opinions of one of the two files; a date that is not AAAAMMJJ is told
// to the journal.
void LitAvis(const fs::path& dossier, const char* fichier, bool amelioration, std::vector<AvisHAS>& avis,
             Journal& journal) {
    for (auto& l : LitTableau(dossier / fichier, 6, "", journal)) {
        auto& c = l.champs;
        if (!CodeChiffres(Nettoie(c[3]), 8)) {
            journal.Rejette(fichier, l.numero, "date not AAAAMMJJ");
            continue;
        }
        avis.push_back({Nettoie(c[0]), amelioration, Nettoie(c[1]), Nettoie(c[2]), Nettoie(c[3]), Nettoie(c[4]),
                        Nettoie(c[5])});
    }
}

}  // namespace

Bdpm LitBdpm(const fs::path& dossier, Journal& journal) {
    Bdpm b;
    b.specialites = LitSpecialites(dossier, journal);
    b.presentations = LitPresentations(dossier, journal);
    b.composants = LitComposants(dossier, journal);
    b.groupes = LitGroupes(dossier, journal);
    b.conditions = LitConditions(dossier, journal);
    LitAvis(dossier, "CIS_HAS_SMR_bdpm.txt", false, b.avis, journal);
    LitAvis(dossier, "CIS_HAS_ASMR_bdpm.txt", true, b.avis, journal);
    return b;
}

}  // namespace vdx::import
