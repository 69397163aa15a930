#include "products/produits.h"

#include <array>
#include <unordered_map>
#include <vector>

#include "products/codes.h"
#include "products/consultations.h"
#include "products/fiches.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/retenues.h"
#include "session/tables.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableLaboratoires, "VDXLAB")
VDX_TABLE(TableTva, "VDXTVA")
VDX_TABLE(TableRemboursements, "VDXTSS")
VDX_TABLE(TableListes, "VDXTAB")
VDX_TABLE(TableActes, "VDXACT")
VDX_TABLE(TableLibellesCIS, "VDXYCIS")

// A price that says there is none of its own.
constexpr char PrixNul[] = "0000000";

// The record of a code in a small code table, none for an empty or too
// long code or one the table lacks.
std::optional<std::string> FicheDeCode(const Table& table, std::string_view code) {
    Curseur curseur(table);
    if (code.empty() || code.size() > curseur.Cle().size()) return std::nullopt;
    const auto position = curseur.Egale(code);
    if (!position) return std::nullopt;
    return FicheA(table, *position);
}

float Taux(const Table& table, std::string_view code) {
    const auto fiche = FicheDeCode(table, code);
    return fiche ? Fiche(*fiche).Reel(VDXTVA::Taux) : 0;
}

// `longueur` bytes of `texte` from `debut`, fewer or none when it is short.
std::string_view Morceau(std::string_view texte, size_t debut, size_t longueur) {
    return debut < texte.size() ? texte.substr(debut, longueur) : std::string_view();
}

// The label of a laboratory's code, or the text that says it is unknown.
std::string LibelleLaboratoire(std::string_view code) {
    const auto fiche = FicheDeCode(TableLaboratoires(), code);
    return fiche ? std::string(Fiche(*fiche).Texte(VDXLAB::Libelle)) : std::string(messages::LaboratoireInconnu);
}

// The positions that TotalProduit_Vdx counted, and the base they are of.
struct ListeProduits {
    std::string base;
    std::vector<magasin::Position> positions;
};
ListeProduits& Liste() {
    static ListeProduits liste;
    return liste;
}

}  // namespace

std::optional<std::string> LibelleProduitInterne(std::string_view code) {
    TablesOuvertes tables({&TableProduits()});
    std::optional<std::string> libelle;
    if (const std::optional<std::string> fiche = FicheDuCode(TableProduits(), code))
        libelle = Fiche(*fiche).Texte(VDXPRO::Libelle);
    else
        libelle = LibelleMedDC(code);
    tables.Ferme();
    return libelle;
}

namespace {

// The labels given out (nullopt for a code of no product), kept while the
// tables they are read from read the same.
using Libelles = Retenues<std::optional<std::string>, 2>;
Libelles::Valeurs* LibellesRetenus() {
    static Libelles memo;
    return memo.Courantes({&TableProduits(), &TableComplements()}, 100000);
}

// The label of LibelleProduit_Vdx read from the tables.
std::optional<std::string> LitLibelle(const std::string& cip) {
    TablesOuvertes tables{&TableProduits()};
    const std::optional<std::string> octets = FicheDuCode(TableProduits(), cip);
    if (!octets) return std::nullopt;
    const Fiche produit(*octets);
    // The narcotic rule reads VDXPROA for a product of list "A" only.
    if (produit.Texte(VDXPRO::CodeTableau) == "A") tables.Ouvre(TableComplements());
    const std::string_view texte = produit.Texte(VDXPRO::Libelle);
    std::string libelle = StupefiantOuvert(produit) ? LibelleStupefiant(texte) : std::string(texte);
    tables.Ferme();
    return libelle;
}

}  // namespace

std::string LibelleProduit(const std::string& cip) {
    // A prescription line by common name has no label here, even where
    // a product has the same code.
    if (EstMedDC(cip)) throw Echec{Argument1};
    std::optional<std::optional<std::string>> lu;
    const std::optional<std::string>& libelle = Libelles::De(LibellesRetenus(), cip, lu, [&] { return LitLibelle(cip); });
    if (!libelle) throw Echec{CodeInconnu};
    return *libelle;
}

std::optional<std::string> LibelleCIS(std::string_view cis) {
    TablesOuvertes tables{&TableLibellesCIS()};
    std::optional<std::string> libelle;
    if (const auto p = Curseur(TableLibellesCIS()).Egale(cis))
        libelle = Fiche(VueFicheA(TableLibellesCIS(), *p)).Texte(VDXYCIS::Libelle);
    tables.Ferme();
    return libelle;
}

std::string LibelleMedDC2(const std::string& cip) {
    const std::optional<std::string> libelle = LibelleProduitInterne(cip);
    if (!libelle) throw Echec{CodeInconnu};
    return *libelle;
}

namespace {

// The VDXPRO record of a product, which it must have.
std::string FicheProduit(const std::string& cip) {
    TablesOuvertes tables{&TableProduits()};
    std::string octets = FicheRequise(TableProduits(), cip);
    tables.Ferme();
    return octets;
}

}  // namespace

bool EstAccessoire(const std::string& cip) {
    return SiConnu([&] { return ValeurConsultee(consultations::CodeRubrique, cip); }) == RubriqueAccessoire;
}

std::string DateSuppression(const std::string& cip) {
    const std::string octets = FicheProduit(cip);
    // A letter, then the day, the month and the year.
    const std::string_view s = Fiche(octets).Texte(VDXPRO::Suppression);
    if (s.empty()) return {};
    std::string texte(Morceau(s, 1, 2));
    texte.append("/").append(Morceau(s, 3, 2)).append("/").append(Morceau(s, 5, 4));
    return texte;
}

CodeEtLibelle LaboratoireDe(const std::string& cip) {
    TablesOuvertes tables{&TableProduits(), &TableLaboratoires()};
    const std::string octets = FicheRequise(TableProduits(), cip);
    const std::string_view laboratoire = Fiche(octets).Texte(VDXPRO::Laboratoire);
    CodeEtLibelle resultat{std::string(laboratoire), LibelleLaboratoire(laboratoire)};
    tables.Ferme();
    return resultat;
}

std::span<const Table* const> TablesEconomiques() {
    static const std::array<const Table*, 6> tables = {&TableProduits(), &TableTva(),    &TableRemboursements(),
                                                       &TableLaboratoires(), &TableListes(), &TableActes()};
    return tables;
}

FicheEconomique EconomieDe(const std::string& cip) {
    TablesOuvertes tables(TablesEconomiques());
    const std::string octets = FicheRequise(TableProduits(), cip);
    const Fiche produit(octets);
    FicheEconomique e;
    e.TauxTVA = Taux(TableTva(), produit.Texte(VDXPRO::CodeTVA));
    e.TauxRemboursement = Taux(TableRemboursements(), produit.Texte(VDXPRO::CodeTSS));
    e.Laboratoire = LibelleLaboratoire(produit.Texte(VDXPRO::CodeLaboratoire));
    e.Prix = produit.Texte(VDXPRO::DonneeEco2);
    e.Valeur50 = produit.Texte(VDXPRO::DonneeEco1);
    e.Valeur85 = produit.Texte(VDXPRO::DonneeEco3);
    if (e.Valeur85 == PrixNul) e.Valeur85 = e.Prix;
    if (const auto liste = FicheDeCode(TableListes(), produit.Texte(VDXPRO::CodeTableau)))
        e.LibelleTableau = Fiche(*liste).Texte(VDXTAB::Libelle);
    e.Valeur124 = produit.Texte(VDXPRO::LibelleEco);
    // The act by its number in decimal, without padding.
    if (const auto acte = FicheDeCode(TableActes(), std::to_string(produit.Entier(VDXPRO::CodeActe)))) {
        const Fiche f(*acte);
        e.Acte = f.Texte(VDXACT::Libelle);
        e.ActeTexte1 = f.Texte(VDXACT::Texte1);
        e.ActeTexte2 = f.Texte(VDXACT::Texte2);
    } else {
        e.Acte = messages::ActeInconnu;
        e.ActeTexte1 = e.ActeTexte2 = messages::ActeTexteInconnu;
    }
    tables.Ferme();
    return e;
}

std::string CIPRemplacant(const std::string& cip) {
    const std::string octets = FicheProduit(cip);
    const std::string_view autre = Fiche(octets).Texte(VDXPRO::CIPRemplacant);
    return autre.size() == LongueurCIP ? CIPSortant(autre) : std::string(autre);
}

int32_t TotalProduit(const Contexte& contexte) {
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableProduits()};
    Curseur curseur(TableProduits());
    std::vector<magasin::Position> positions;
    for (auto position = curseur.Premiere(); position; position = curseur.Suivante())
        positions.push_back(*position);
    tables.Ferme();
    Liste() = {contexte.BaseFichiers, std::move(positions)};
    return static_cast<int32_t>(Liste().positions.size());
}

CodeEtLibelle ProduitAuRang(const Contexte& contexte, int32_t rang) {
    const DansContexte dans(contexte);
    const ListeProduits& liste = Liste();
    if (liste.base != contexte.BaseFichiers || rang < 0 || static_cast<size_t>(rang) >= liste.positions.size())
        throw Echec{Argument1};
    TablesOuvertes tables{&TableProduits()};
    const std::string octets = FicheA(TableProduits(), liste.positions[static_cast<size_t>(rang)]);
    tables.Ferme();
    const Fiche produit(octets);
    return {std::string(produit.Texte(VDXPRO::CodeCIP)), std::string(produit.Texte(VDXPRO::Libelle))};
}

}  // namespace vdx
