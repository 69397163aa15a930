#include "products/codes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <unordered_set>

#include "posology/nombres.h"
#include "products/fiches.h"
#include "session/messages.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/cles.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TablePrescriptions, "VDXPRESR")
VDX_TABLE(TableMedDC, "VDXYDCI")

bool Chiffre(char c) { return c >= '0' && c <= '9'; }

// A number of a label as a float: its commas are decimal points, and what
// follows a second one is not read.
float LitNombre(std::string nombre) {
    std::replace(nombre.begin(), nombre.end(), ',', '.');
    double valeur = 0;
    const auto [fin, erreur] = std::from_chars(nombre.data(), nombre.data() + nombre.size(), valeur);
    (void)fin;
    if (erreur == std::errc::result_out_of_range) return HUGE_VALF;  // beyond the words
    return static_cast<float>(valeur);
}

// The two texts of a code of restricted prescription; empty for an unknown
// code.
struct TextesPrescription {
    std::string libelle, detail;
};
TextesPrescription Prescription(int32_t code) {
    Curseur curseur(TablePrescriptions());
    const auto position = curseur.Egale(CleEntiers({code}));
    if (!position) return {};
    const std::string octets = FicheA(TablePrescriptions(), *position);
    const Fiche f(octets);
    return {std::string(f.Texte(VDXPRESR::Libelle)), std::string(f.Texte(VDXPRESR::Detail))};
}

std::optional<std::string> FicheMedDC(std::string_view code) {
    if (code.size() != LongueurCIP) return std::nullopt;
    TablesOuvertes tables{&TableMedDC()};
    Curseur curseur(TableMedDC());
    std::optional<std::string> fiche;
    if (const auto position = curseur.Egale(code)) fiche = FicheA(TableMedDC(), *position);
    tables.Ferme();
    return fiche;
}

}  // namespace

bool EstStupefiant(std::string_view codeTableau, const Fiche* complement) {
    if (codeTableau == "B") return true;
    if (codeTableau != "A" || !complement) return false;
    for (const ChampEntier& c : {VDXPROA::Prescription1, VDXPROA::Prescription2, VDXPROA::Prescription3})
        if (complement->Entier(c) == PrescriptionStupefiant) return true;
    return false;
}

bool StupefiantOuvert(Fiche produit) {
    const std::string_view tableau = produit.Texte(VDXPRO::CodeTableau);
    if (tableau != "A") return EstStupefiant(tableau, nullptr);
    const std::optional<std::string> complement = FicheDuCode(TableComplements(), produit.Texte(VDXPRO::CodeCIP));
    if (!complement) return false;
    const Fiche f(*complement);
    return EstStupefiant(tableau, &f);
}

bool EstStupefiantCode(const std::string& cip) {
    TablesOuvertes tables{&TableProduits(), &TableComplements()};
    const std::optional<std::string> produit = FicheDuCode(TableProduits(), cip);
    const bool stupefiant = produit && StupefiantOuvert(Fiche(*produit));
    tables.Ferme();
    return stupefiant;
}

std::string LibelleStupefiant(std::string_view texte) {
    std::string sortie;
    size_t depuis = 0;  // where the text not yet copied begins
    for (size_t i = 0; i < texte.size();) {
        if (!Chiffre(texte[i])) {
            ++i;
            continue;
        }
        size_t fin = i;
        while (fin < texte.size() && (Chiffre(texte[fin]) || texte[fin] == ',')) ++fin;
        std::string mots = NombreEnLettres(LitNombre(std::string(texte.substr(i, fin - i))));
        if (!mots.empty() && mots[0] == ' ') mots.erase(0, 1);
        sortie.append(texte.substr(depuis, fin - depuis)).append(" (").append(mots).append(") ");
        depuis = i = fin;
    }
    return sortie.append(texte.substr(depuis));
}

std::string_view LibelleStatut(int32_t codeStatut) {
    constexpr auto connus = static_cast<int32_t>(std::size(messages::LibellesStatut));
    return codeStatut >= 0 && codeStatut < connus ? messages::LibellesStatut[codeStatut] : "";
}

FicheStatut StatutDe(const std::string& cip) {
    TablesOuvertes tables{&TableComplements(), &TablePrescriptions()};
    const std::string octets = FicheRequise(TableComplements(), cip);
    const Fiche f(octets);
    FicheStatut s;
    s.Statut1 = f.Entier(VDXPROA::Statut1);
    s.Statut2 = f.Entier(VDXPROA::Statut2);
    s.Statut3 = f.Entier(VDXPROA::Statut3);
    s.CodeStatut = f.Entier(VDXPROA::CodeStatut);
    s.Prescription1 = f.Entier(VDXPROA::Prescription1);
    s.Prescription2 = f.Entier(VDXPROA::Prescription2);
    s.Prescription3 = f.Entier(VDXPROA::Prescription3);
    s.LibelleStatut = LibelleStatut(s.CodeStatut);
    const TextesPrescription p1 = Prescription(s.Prescription1), p2 = Prescription(s.Prescription2),
                             p3 = Prescription(s.Prescription3);
    s.LibellePrescription1 = p1.libelle;
    s.LibellePrescription2 = p2.libelle;
    s.LibellePrescription3 = p3.libelle;
    s.DetailPrescription1 = p1.detail;
    s.DetailPrescription2 = p2.detail;
    s.DetailPrescription3 = p3.detail;
    s.TexteStatut1 = f.Texte(VDXPROA::TexteStatut1);
    s.TexteStatut2 = f.Texte(VDXPROA::TexteStatut2);
    tables.Ferme();
    return s;
}

// The codes of the lines by common name, read once while their table reads
// the same: every label asks for them first.
bool EstMedDC(std::string_view code) {
    struct Codes {
        std::array<magasin::EtatLecture, 2> etats{};
        std::unordered_set<std::string> codes;
    };
    static Codes memo;
    const Table* const lue[] = {&TableMedDC()};
    std::array<magasin::EtatLecture, 2> etats;
    if (!EtatsDesTables(lue, etats) || etats != memo.etats) {
        Codes lus;
        TablesOuvertes tables{&TableMedDC()};
        Curseur curseur(TableMedDC());
        for (auto p = curseur.Premiere(); p; p = curseur.Suivante())
            lus.codes.emplace(curseur.Cle().substr(0, LongueurCIP));
        lus.etats = etats;
        tables.Ferme();
        memo = std::move(lus);
    }
    return code.size() == LongueurCIP && memo.codes.count(std::string(code)) > 0;
}

std::optional<std::string> LibelleMedDC(std::string_view code) {
    const std::optional<std::string> fiche = FicheMedDC(code);
    if (!fiche) return std::nullopt;
    return std::string(Fiche(*fiche).Texte(VDXYDCI::Libelle));
}

}  // namespace vdx
