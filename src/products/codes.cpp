#include "products/codes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <unordered_set>

#include "platform/hote.h"
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

int32_t CorrespondanceExport(SensCIP sens, const char* code, BSTR* sortie) {
    if (!code || !*code) throw Echec{Argument1};
    const size_t attendue = sens == SensCIP::Vers13 ? LongueurCIP : LongueurCIP13;
    if (strnlen(code, attendue + 1) != attendue) throw Echec{CodeMalForme};
    const std::optional<std::string> autre = CorrespondanceCIP(sens, std::string_view(code, attendue));
    if (!autre) throw Echec{CodeInconnu};
    LivreValeur(sortie, *autre, Argument2);
    return autre->empty() ? Rien : Succes;
}

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

int32_t IsStupefiant(const char* code) {
    const std::string cip = CodeProduit(code);
    TablesOuvertes tables{&TableProduits(), &TableComplements()};
    const std::optional<std::string> produit = FicheDuCode(TableProduits(), cip);
    const bool stupefiant = produit && StupefiantOuvert(Fiche(*produit));
    tables.Ferme();
    return stupefiant ? Succes : Rien;
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

int32_t LibelleStupefiantExport(const char* texte, BSTR* sortie) {
    const std::string libelle = LibelleStupefiant(Requis(texte, Argument1));
    if (!hote::RangeOctets(Requis(sortie, Argument2), libelle)) throw std::bad_alloc();
    return Succes;
}

std::string_view LibelleStatut(int32_t codeStatut) {
    constexpr auto connus = static_cast<int32_t>(std::size(messages::LibellesStatut));
    return codeStatut >= 0 && codeStatut < connus ? messages::LibellesStatut[codeStatut] : "";
}

int32_t Statut(const char* code, void* fiche) {
    const std::string cip = CodeProduit(code);
    const bool tableau = session().ModeSortie == ModeTableau;
    TablesOuvertes tables{&TableComplements(), &TablePrescriptions()};
    if (tableau) {
        Requis(fiche);
        for (uint32_t i = 0; i < EntiersStatut; ++i) hote::PoseEntier(fiche, i, 0);
        for (uint32_t i = 0; i < ChainesStatut; ++i) LivreValeur(hote::Chaine(fiche, EntiersStatut + i), "", Argument2);
    }
    const std::string octets = FicheRequise(TableComplements(), cip);
    const Fiche f(octets);
    const int32_t entiers[EntiersStatut] = {
        f.Entier(VDXPROA::Statut1),       f.Entier(VDXPROA::Statut2),       f.Entier(VDXPROA::Statut3),
        f.Entier(VDXPROA::CodeStatut),    f.Entier(VDXPROA::Prescription1), f.Entier(VDXPROA::Prescription2),
        f.Entier(VDXPROA::Prescription3),
    };
    const TextesPrescription p[3] = {Prescription(entiers[4]), Prescription(entiers[5]), Prescription(entiers[6])};
    const std::string_view textes[ChainesStatut] = {
        LibelleStatut(entiers[3]),         p[0].libelle, p[1].libelle, p[2].libelle, p[0].detail, p[1].detail,
        p[2].detail, f.Texte(VDXPROA::TexteStatut1), f.Texte(VDXPROA::TexteStatut2),
    };
    if (tableau) {
        for (uint32_t i = 0; i < EntiersStatut; ++i) hote::PoseEntier(fiche, i, entiers[i]);
        for (uint32_t i = 0; i < ChainesStatut; ++i) LivreValeur(hote::Chaine(fiche, EntiersStatut + i), textes[i], Argument2);
    } else {
        std::string plat;
        for (int32_t e : entiers) AjouteChamp(std::to_string(e), plat);
        for (std::string_view t : textes) AjouteChamp(t, plat);
        LivreTexte(plat);
    }
    tables.Ferme();
    return Succes;
}

// The codes of the lines by common name, read once per generation of the
// tables: every label asks for them first.
bool EstMedDC(std::string_view code) {
    struct Codes {
        uint64_t generation = 0;
        std::string base;
        std::unordered_set<std::string> codes;
    };
    static Codes memo;
    const Session& s = session();
    if (memo.generation != s.GenerationTables || memo.base != s.BaseFichiers) {
        Codes lus{s.GenerationTables, s.BaseFichiers, {}};
        TablesOuvertes tables{&TableMedDC()};
        Curseur curseur(TableMedDC());
        for (auto p = curseur.Premiere(); p; p = curseur.Suivante())
            lus.codes.emplace(curseur.Cle().substr(0, LongueurCIP));
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

int32_t IsMedDC(const char* code) {
    // Seven characters, whatever CIP13Actif says: a 13-digit code is no
    // line by common name.
    if (!code || !*code) throw Echec{Argument1};
    if (strnlen(code, LongueurCIP + 1) != LongueurCIP) throw Echec{CodeMalForme};
    return EstMedDC(code) ? Succes : Rien;
}

}  // namespace vdx
