#include "vocabulary/libelles.h"

#include "session/cadre.h"
#include "session/session.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

// Codes of CIM10 under this length are chapters.
constexpr size_t LongueurChapitreCIM10 = 3;

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

}  // namespace vdx
