#include "products/composition_liens.h"

#include <optional>

#include "checks/voies.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableClassesProduits, "VDXCLAP")
VDX_TABLE(TableClasses, "VDXCLA")

// VDXCLAP by product: CodeCIP, then the class code padded with blanks.
constexpr int CleParProduit = 1;

const Gabarit TroisChaines{TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};
const Gabarit DeuxChaines{TypeChamp::Texte, TypeChamp::Texte};

std::string LibelleClasse(std::string_view code) {
    Curseur classes(TableClasses());
    const auto position = classes.Egale(code);
    if (!position) return messages::LibelleInconnu;
    const std::string octets = FicheA(TableClasses(), *position);
    return std::string(Fiche(octets).Texte(VDXCLA::Libelle));
}

}  // namespace

std::vector<std::string> CodesClasses(const Table& liens, std::string_view codeCIP) {
    TablesOuvertes tables({&liens});
    std::vector<std::string> codes;
    if (codeCIP.size() == LongueurCIP) {
        Curseur cles(liens, CleParProduit);
        for (auto p = cles.SuperieureOuEgale(codeCIP); p && cles.Cle().substr(0, LongueurCIP) == codeCIP;
             p = cles.Suivante()) {
            codes.emplace_back(SansBourrage(cles.Cle().substr(LongueurCIP, ModeleClasseProduit::CodeClasse.capacite())));
        }
    }
    tables.Ferme();
    return codes;
}

std::vector<std::string> CodesClassesProduit(std::string_view codeCIP) {
    return CodesClasses(TableClassesProduits(), codeCIP);
}

std::vector<ClasseDuProduit> ClassesProduit(std::string_view codeCIP) {
    TablesOuvertes tables({&TableClasses()});
    std::vector<ClasseDuProduit> classes;
    for (std::string& code : CodesClassesProduit(codeCIP)) {
        std::string libelle = LibelleClasse(code);
        classes.push_back({std::move(code), std::move(libelle)});
    }
    tables.Ferme();
    return classes;
}

}  // namespace vdx
