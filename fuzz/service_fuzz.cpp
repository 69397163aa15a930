// Any bytes as a request of the service: the body of a check (first byte
// even) or the parameters of a search ("q=..&after=..&limit=.."). What is
// accepted keeps every rule a request must keep; what is refused names a
// field in an error that is itself valid JSON.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "tools/vdx/requetes.h"

namespace {

using namespace vdx;

void Exige(bool condition) {
    if (!condition) std::abort();
}

void ErreurLisible(const ErreurRequete& e) {
    const auto j = nlohmann::json::parse(ErreurJson(e), nullptr, false);
    Exige(!j.is_discarded() && j["field"].is_string() && !j["field"].get<std::string>().empty());
}

void Verification(std::string_view corps) {
    const auto lue = LitVerification(corps);
    if (const auto* e = std::get_if<ErreurRequete>(&lue)) return ErreurLisible(*e);
    const Ordonnance& o = std::get<Ordonnance>(lue);
    Exige(!o.produits.empty() && o.produits.size() <= ProduitsMax);
    for (const std::string& p : o.produits) Exige(CodeProduitValide(p));
    Exige(o.pathologies.size() <= CodesPatientMax && o.termesAllergie.size() + o.allergenes.size() <= CodesPatientMax);
    for (const CodePatient& p : o.pathologies) Exige(p.type >= 1 && p.type <= 3 && !p.code.empty() && p.code.size() <= CodeMax);
    for (const std::string& t : o.termesAllergie) Exige(!t.empty() && t.size() <= CodeMax);
    for (const int32_t a : o.allergenes) Exige(a > 0);
    Exige(o.sexe.empty() || o.sexe == "M" || o.sexe == "F");
    Exige(o.age >= 0 && o.poids >= 0 && o.grossesse >= 0 && (o.allaitement == 0 || o.allaitement == 1));
    Exige(!o.niveau || (*o.niveau >= 1 && *o.niveau <= 4));
}

void Recherche(std::string_view requete) {
    std::multimap<std::string, std::string> parametres;
    for (size_t debut = 0; debut <= requete.size();) {
        size_t fin = requete.find('&', debut);
        if (fin == std::string_view::npos) fin = requete.size();
        const std::string_view paire = requete.substr(debut, fin - debut);
        const size_t egal = paire.find('=');
        parametres.emplace(std::string(paire.substr(0, egal)),
                           egal == std::string_view::npos ? std::string() : std::string(paire.substr(egal + 1)));
        debut = fin + 1;
    }
    const auto lue = LitRecherche(parametres);
    if (const auto* e = std::get_if<ErreurRequete>(&lue)) return ErreurLisible(*e);
    const PageRecherche& page = std::get<PageRecherche>(lue);
    Exige(!page.texte.empty() && page.texte.size() <= TexteMax && page.apres.size() <= TexteMax);
    Exige(page.nombre >= 1 && page.nombre <= PageMax);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
    if (taille == 0) return 0;
    const std::string_view reste(reinterpret_cast<const char*>(donnees) + 1, taille - 1);
    if (donnees[0] % 2 == 0)
        Verification(reste);
    else
        Recherche(reste);
    return 0;
}
