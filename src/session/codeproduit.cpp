#include "session/codeproduit.h"

#include <cstring>

#include "session/cadre.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/catalogue.h"

namespace vdx {
namespace {

VDX_TABLE(TableCIP13, "VDXCIP13")

// The code's other form, or the code itself.
std::string Convertit(SensCIP sens, std::string_view code) {
    if (!session().Connecte) return std::string(code);
    try {
        const std::optional<std::string> autre = CorrespondanceCIP(sens, code);
        if (autre && !autre->empty()) return *autre;
    } catch (const Echec&) {
        // A failed mapping passes the code through, as an unknown one.
    }
    return std::string(code);
}

}  // namespace

std::optional<std::string> CorrespondanceCIP(SensCIP sens, std::string_view code) {
    // Key 0: CodeCIP then CIP13; key 1: CIP13 then CodeCIP.
    const bool vers13 = sens == SensCIP::Vers13;
    const size_t tete = vers13 ? LongueurCIP : LongueurCIP13;
    const size_t autre = vers13 ? LongueurCIP13 : LongueurCIP;
    TablesOuvertes tables{&TableCIP13()};
    Curseur curseur(TableCIP13(), vers13 ? 0 : 1);
    std::optional<std::string> resultat;
    if (curseur.SuperieureOuEgale(code)) {
        const std::string_view cle = curseur.Cle();
        resultat.emplace();
        if (code.size() == tete && cle.substr(0, tete) == code) {
            const std::string_view suite = cle.substr(tete, autre);
            resultat->assign(suite.substr(0, suite.find('\0')));
        }
    }
    tables.Ferme();
    return resultat;
}

std::string VersCIP13(std::string_view code) { return Convertit(SensCIP::Vers13, code); }
std::string VersCIP7(std::string_view code) { return Convertit(SensCIP::Vers7, code); }

std::string CIPSortant(std::string_view code) {
    return ContexteCourant().CIP13Actif == CIP13Correspondance ? VersCIP13(code) : std::string(code);
}

namespace {

std::string Strict(SensCIP sens, const std::string& code) {
    const auto autre = CorrespondanceCIP(sens, code);
    if (!autre || autre->empty()) throw Echec{CodeMalForme};
    return *autre;
}

}  // namespace

std::string CIPEntrantStrict(int32_t cip13Actif, const std::string& code) {
    if (cip13Actif != CIP13Correspondance || code.size() != LongueurCIP13) return code;
    return Strict(SensCIP::Vers7, code);
}

std::string CIPSortantStrict(int32_t cip13Actif, const std::string& cip) {
    if (cip13Actif != CIP13Correspondance || cip.size() != LongueurCIP) return cip;
    return Strict(SensCIP::Vers13, cip);
}

std::string CodeProduit(const char* code, int32_t absent) {
    if (!code || !*code) throw Echec{absent};
    const size_t longueur = strnlen(code, LongueurCodeMax + 1);
    if (longueur > LongueurCodeMax) throw Echec{CodeMalForme};
    std::string texte(code, longueur);
    switch (ContexteCourant().CIP13Actif) {
        case 0:
            if (longueur != LongueurCIP) throw Echec{CodeMalForme};
            break;
        case CIP13Correspondance:
            if (longueur == LongueurCIP13) {
                texte = VersCIP7(texte);
                if (texte.size() == LongueurCIP13) throw Echec{CodeMalForme};
            }
            break;
        default:
            break;
    }
    return texte;
}

std::string CodeCIPRequis(const char* code, int32_t absent) {
    std::string cip = CodeProduit(code, absent);
    if (cip.size() != LongueurCIP) throw Echec{CodeMalForme};
    return cip;
}

std::string CodeCIPConnecte(const char* code) {
    if (!code || !*code) throw Echec{Argument1};
    const size_t longueur = strnlen(code, LongueurCodeMax + 1);
    const bool cip13 = ContexteCourant().CIP13Actif == CIP13Correspondance && longueur == LongueurCIP13;
    if (longueur != LongueurCIP && !cip13) throw Echec{CodeMalForme};
    if (!session().Connecte) throw Echec{NonConnecte};
    return CodeCIPRequis(code);
}

}  // namespace vdx
