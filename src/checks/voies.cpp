#include "checks/voies.h"

#include <charconv>

#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableVoiesProduit, "VDXIDPVO")
VDX_TABLE(TableVoies, "VDXIDVOI")
VDX_TABLE(TableParents, "VDXWPEFI")

// Substance numbers in the keys of the parents: five digits.
constexpr size_t ChiffresSubstance = 5;
// Index of the parents by child, then parent.
constexpr int CleParEnfant = 1;

}  // namespace

std::string LibelleVoie(std::string_view code) {
    Curseur voies(TableVoies());
    const auto position = voies.Egale(code);
    if (!position) return messages::CodeIntrouvable(code);
    const std::string fiche = FicheA(TableVoies(), *position);
    return std::string(Fiche(fiche).Texte(VDXIDVOI::Libelle));
}

namespace {

void LitVoies(std::string_view codeCIP, std::vector<Voie>& voies) {
    const size_t longueurCode = VDXIDPVO::CodeCIP.capacite();
    if (codeCIP.size() > longueurCode) return;
    TablesOuvertes tables({&TableVoiesProduit(), &TableVoies()});
    Curseur routes(TableVoiesProduit());
    for (auto p = routes.SuperieureOuEgale(codeCIP); p && routes.Cle().substr(0, longueurCode) == codeCIP;
         p = routes.Suivante()) {
        const std::string_view reste = routes.Cle().substr(longueurCode);
        const std::string code(reste.substr(0, reste.find('\0')));
        voies.push_back({code, LibelleVoie(code)});
    }
    tables.Ferme();
}

}  // namespace

std::vector<Voie> VoiesProduit(std::string_view codeCIP) {
    std::vector<Voie> voies;
    try {
        LitVoies(codeCIP, voies);
    } catch (const Echec&) {
        // Fewer routes, not a failure of the caller.
    }
    return voies;
}

std::vector<Voie> VoiesDuProduit(std::string_view codeCIP) {
    std::vector<Voie> voies;
    LitVoies(codeCIP, voies);
    return voies;
}

int32_t SubstancePere(int32_t substance) {
    TablesOuvertes tables({&TableParents()});
    Curseur parents(TableParents(), CleParEnfant);
    const auto position = parents.SuperieureOuEgale(CleDecimale(substance, ChiffresSubstance) + "00000");
    int32_t pere = 0;
    if (position) {
        const std::string_view cle = parents.Cle();
        int32_t enfant = -1;
        std::from_chars(cle.data(), cle.data() + ChiffresSubstance, enfant);
        pere = substance;
        if (enfant == substance)
            std::from_chars(cle.data() + ChiffresSubstance, cle.data() + 2 * ChiffresSubstance, pere);
    }
    tables.Ferme();
    return pere;
}

}  // namespace vdx
