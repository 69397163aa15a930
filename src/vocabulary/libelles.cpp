#include "vocabulary/libelles.h"

#include <cstring>

#include "session/cadre.h"
#include "session/resultat.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

// Codes of CIM10 under this length are chapters.
constexpr size_t LongueurChapitreCIM10 = 3;

// The length of a host's code, looked at no further than the longest code
// plus one.
size_t LongueurCode(const char* code) { return code ? strnlen(code, LongueurCodeVocabulaire + 1) : 0; }

}  // namespace

std::optional<std::string> LibelleOuvert(const Vocabulaire& v, std::string_view code) {
    const PartieCle& partie = DispositionDe(*v.table).cles.at(0).parties.at(0);
    if (code.size() > partie.longueur) return std::nullopt;
    const std::string cle = CleTexte(code, partie.longueur, partie.bourrage);
    Curseur curseur(*v.table, v.MembreCode());
    const auto position = curseur.SuperieureOuEgale(cle);
    if (!position || curseur.Cle().substr(0, cle.size()) != cle) return std::nullopt;
    const std::string octets = FicheA(*v.table, *position);
    return std::string(Fiche(octets).Texte(v.libelle));
}

std::optional<std::string> LibelleVocabulaire(const Vocabulaire& v, std::string_view code) {
    TablesOuvertes tables{v.table};
    std::optional<std::string> libelle = LibelleOuvert(v, code);
    tables.Ferme();
    return libelle;
}

const Vocabulaire& VocabulaireCIM10(std::string_view code) {
    return code.size() < LongueurChapitreCIM10 ? vocabulaires::ChapitresCIM10() : vocabulaires::CIM10();
}

namespace {

// The frame of the label exports; `choix` gives the vocabulary of a code.
template <class Choix>
int32_t Libelle(Choix choix, const char* code, BSTR* libelle) {
    const size_t longueur = LongueurCode(code);
    if (longueur == 0 || longueur > LongueurCodeVocabulaire) throw Echec{Argument1};
    const std::string_view texteCode(code, longueur);
    const std::optional<std::string> texte = LibelleVocabulaire(choix(texteCode), texteCode);
    if (!texte) throw Echec{CodeInconnu};
    LivreValeur(libelle, *texte, Argument2);
    return Succes;
}

}  // namespace

int32_t LibelleExport(VocabulaireDe vocabulaire, const char* code, BSTR* libelle) {
    return Libelle([vocabulaire](std::string_view) -> const Vocabulaire& { return vocabulaire(); }, code,
                   libelle);
}

int32_t LibelleCIM10(const char* code, BSTR* libelle) {
    return Libelle(VocabulaireCIM10, code, libelle);
}

}  // namespace vdx
