#include "products/equivalents.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "posology/quantite.h"
#include "products/codes.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"
#include "vocabulary/libelles.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {

namespace {

VDX_TABLE(TableClassesProduits, "VDXCLAP")
VDX_TABLE(TableClasses, "VDXCLA")
VDX_TABLE(TableIdentification, "VDXIDPRO")
VDX_TABLE(TableFormes, "VDXIDFOR")
VDX_TABLE(TableUnitesPresentation, "VDXIDUPR")
VDX_TABLE(TableRemboursements, "VDXTSS")
VDX_TABLE(TableLaboratoires, "VDXLAB")
VDX_TABLE(TableEquivalents, "VDXVAMME")

// VDXCLAP by class (the class code padded with blanks, then the CodeCIP),
// and by product.
constexpr int CleParClasse = 0, CleParProduit = 1;
constexpr size_t LongueurClasse = 7;
// A class that is no equivalence class ends its second text with it.
constexpr char MarqueNonEquivalence = '*';
// Classes of products of the same name only.
constexpr char ClasseDeNom = 'Z';
constexpr char PrixNul[] = "0000000";

// Amounts told in two units that are the same dosage (µ is 0xB5).
const std::vector<std::vector<std::string_view>> DosagesEquivalents = {
    {"1 g", "1000 mg"}, {"1 mg", "1000 \xB5g"}, {"1 \xB5g", "1 mcg"}, {"1 mole", "1000 mmol"},
    {"1 L", "1000 ml"}, {"1 cg", "0,01 g", "10 mg"}};

std::string ClassePadee(std::string_view classe) {
    std::string cle(classe.substr(0, LongueurClasse));
    cle.resize(LongueurClasse, ' ');
    return cle;
}

std::string Nombre(float valeur) {
    std::string texte;
    TexteNombre(valeur, texte, false);
    return texte;
}

std::string SansBlancsFinaux(std::string_view code) {
    return std::string(code.substr(0, code.find_last_not_of(std::string_view(" \0", 2)) + 1));
}

// What a product is and shows, from its VDXIDPRO record.
struct Identite {
    std::string Denomination;
    std::string Dosage;
    std::string CodeForme;
};
Identite IdentiteDe(const Fiche& f) {
    return {std::string(f.Texte(VDXIDPRO::Denomination)), std::string(f.Texte(VDXIDPRO::Dosage)),
            std::string(f.Texte(VDXIDPRO::CodeForme))};
}

std::string LibelleForme(std::string_view code) {
    std::string cle(code);
    cle.resize(VDXIDFOR::CodeForme.capacite(), ' ');
    const auto p = Curseur(TableFormes()).Egale(cle);
    return p ? std::string(Fiche(VueFicheA(TableFormes(), *p)).Texte(VDXIDFOR::Libelle)) : std::string();
}

// One row of a candidate, its level left to the caller; none for a
// product VDXIDPRO lacks or the filters leave out.
std::optional<LigneEquivalent> Candidat(const Contexte& contexte, std::string_view cip, const std::string& identification,
                                        Identite& identite) {
    const Fiche id(identification);
    identite = IdentiteDe(id);
    LigneEquivalent l;
    l.CodeCIP = CIPSortant(cip);
    l.LibelleProduit = identite.Dosage.empty() ? identite.Denomination : identite.Denomination + " " + identite.Dosage + " ";
    l.LibelleForme = LibelleForme(identite.CodeForme);
    l.LibelleContenance = TexteContenance(identification);
    const Mot contenant = Contenant(id.Entier(VDXIDPRO::CodeContenant));
    l.Conditionnement = !contenant.Singulier.empty() ? contenant.Singulier
                                                      : Presentation(id.Entier(VDXIDPRO::CodePresentation)).Singulier;
    l.Prix = PrixNul;
    if (const auto produit = FicheDuCode(TableProduits(), cip)) {
        const Fiche f(*produit);
        if ((f.Entier(VDXPRO::Drapeaux) & VDXPRO::Hospitalier) && !contexte.HospitaliersActifs) return std::nullopt;
        if (!f.Texte(VDXPRO::Suppression).empty()) return std::nullopt;
        const std::string_view prix = f.Texte(VDXPRO::DonneeEco2);
        if (prix.size() == LongueurCIP && prix.find_first_not_of("0123456789") == std::string_view::npos) l.Prix = prix;
        if (const auto p = Curseur(TableRemboursements()).Egale(f.Texte(VDXPRO::CodeTSS)); p && !f.Texte(VDXPRO::CodeTSS).empty())
            l.TauxRemboursement = Fiche(VueFicheA(TableRemboursements(), *p)).Reel(VDXTSS::Taux);
        if (const std::string_view labo = f.Texte(VDXPRO::CodeLaboratoire); !labo.empty())
            if (const auto p = Curseur(TableLaboratoires()).Egale(labo))
                l.Laboratoire = Fiche(VueFicheA(TableLaboratoires(), *p)).Texte(VDXLAB::Libelle);
    }
    if (EstMedDC(cip)) return std::nullopt;
    return l;
}

// Within each run of one class: by level, then within a level by price
// ("0000000" behind the others), then by label; each an exchange sort.
void TrieParClasse(std::vector<LigneEquivalent>& lignes, size_t debut, size_t fin) {
    const auto passe = [&](auto meme, auto dessus) {
        for (size_t i = debut; i < fin; ++i)
            for (size_t j = i + 1; j < fin && meme(lignes[i], lignes[j]); ++j)
                if (dessus(lignes[i], lignes[j])) std::swap(lignes[i], lignes[j]);
    };
    const auto prixApres = [](const std::string& a, const std::string& b) {
        if (a == b) return false;
        if (a == PrixNul) return true;
        if (b == PrixNul) return false;
        return a > b;
    };
    passe([](const auto&, const auto&) { return true; },
          [](const LigneEquivalent& a, const LigneEquivalent& b) { return a.Niveau > b.Niveau; });
    passe([](const LigneEquivalent& a, const LigneEquivalent& b) { return a.Niveau == b.Niveau; },
          [&](const LigneEquivalent& a, const LigneEquivalent& b) { return prixApres(a.Prix, b.Prix); });
    passe([](const LigneEquivalent& a, const LigneEquivalent& b) { return a.Niveau == b.Niveau && a.Prix == b.Prix; },
          [](const LigneEquivalent& a, const LigneEquivalent& b) { return a.LibelleProduit > b.LibelleProduit; });
}

}  // namespace

bool DosagesEgaux(std::string_view a, std::string_view b) {
    if (a == b) return true;
    for (const auto& groupe : DosagesEquivalents)
        if (std::ranges::find(groupe, a) != groupe.end() && std::ranges::find(groupe, b) != groupe.end()) return true;
    return false;
}

bool FormesCompatibles(std::string_view a, std::string_view b) {
    const auto famille = [](std::string_view f) { return !f.empty() && (f[0] == 'B' || f[0] == 'J' || f[0] == 'D'); };
    if (!a.empty() && !b.empty() && a[0] == 'A' && b[0] == 'A') return true;
    if (famille(a) && famille(b)) return true;
    return a.size() >= 2 && b.size() >= 2 && a.substr(0, 2) == b.substr(0, 2);
}

std::string TexteContenance(std::string_view identification) {
    const Fiche f(identification);
    const float nombre = f.Reel(VDXIDPRO::QuantitePresentation);
    std::string texte = Nombre(nombre) + " " + Presentation(f.Entier(VDXIDPRO::CodePresentation)).Selon(nombre > 1);
    const float quantite = f.Reel(VDXIDPRO::QuantiteUnitePresentation);
    if (quantite != 0 && quantite != 1) {
        TablesOuvertes tables{&TableUnitesPresentation()};
        const auto p = Curseur(TableUnitesPresentation()).Egale(CleEntiers({f.Entier(VDXIDPRO::CodeUnitePresentation)}));
        if (p) {
            const Fiche u(VueFicheA(TableUnitesPresentation(), *p));
            const std::string_view mot = quantite > 1 ? u.Texte(VDXIDUPR::LibellePluriel) : u.Texte(VDXIDUPR::Libelle);
            if (!mot.empty()) texte += " de " + Nombre(quantite) + " " + std::string(mot);
        }
        tables.Ferme();
    }
    return texte;
}

void ParcourtClasse(std::string_view classe, const std::function<bool(std::string_view cip)>& candidat) {
    TablesOuvertes tables{&TableClassesProduits()};
    const std::string prefixe = ClassePadee(classe);
    Curseur cles(TableClassesProduits(), CleParClasse);
    for (auto p = cles.PremiereAvec(prefixe); p; p = cles.SuivanteAvec(prefixe))
        if (!candidat(cles.Cle().substr(LongueurClasse, LongueurCIP))) break;
    tables.Ferme();
}

std::vector<LigneEquivalent> ProduitsEquivalents(const Contexte& contexte, const std::string& cip, int32_t limite) {
    const DansContexte dans(contexte);
    TablesOuvertes tables{&TableClassesProduits(), &TableClasses(),        &TableIdentification(),
                          &TableProduits(),        &TableRemboursements(), &TableLaboratoires(),
                          &TableFormes()};
    const auto identification = FicheDuCode(TableIdentification(), cip);
    if (!identification || !FicheDuCode(TableProduits(), cip)) throw Echec{Rien};
    const Identite produit = IdentiteDe(Fiche(*identification));

    // The classes of the product, from the first key at or behind its code.
    Curseur parProduit(TableClassesProduits(), CleParProduit);
    auto p = parProduit.SuperieureOuEgale(cip);
    if (!p) throw Echec{CodeInconnu};
    std::vector<std::string> classes;
    for (; p && parProduit.Cle().starts_with(cip); p = parProduit.Suivante())
        classes.push_back(SansBlancsFinaux(parProduit.Cle().substr(LongueurCIP, LongueurClasse)));

    std::vector<LigneEquivalent> lignes;
    for (const std::string& classe : classes) {
        std::string libelleClasse = messages::LibelleInconnu;
        if (const auto c = Curseur(TableClasses()).Egale(classe)) {
            const Fiche f(VueFicheA(TableClasses(), *c));
            if (f.Texte(VDXCLA::LibelleCle).ends_with(MarqueNonEquivalence)) continue;
            libelleClasse = f.Texte(VDXCLA::Libelle);
        }
        const size_t debut = lignes.size();
        const bool parNom = classe.starts_with(ClasseDeNom);
        int32_t gardes = 0;
        ParcourtClasse(classe, [&](std::string_view autre) {
            if (limite != -1 && gardes >= limite) return false;
            if (autre == cip) return true;
            const auto fiche = FicheDuCode(TableIdentification(), autre);
            if (!fiche) return true;
            Identite identite;
            std::optional<LigneEquivalent> l = Candidat(contexte, autre, *fiche, identite);
            if (!l) return true;
            if (parNom && identite.Denomination != produit.Denomination) return true;
            l->Niveau = parNom ? 2 : !DosagesEgaux(produit.Dosage, identite.Dosage)  ? 2
                                   : FormesCompatibles(produit.CodeForme, identite.CodeForme) ? 0
                                                                                              : 1;
            l->CodeClasse = classe;
            l->LibelleClasse = libelleClasse;
            lignes.push_back(std::move(*l));
            ++gardes;
            return true;
        });
        TrieParClasse(lignes, debut, lignes.size());
    }
    tables.Ferme();
    return lignes;
}

std::vector<LigneAMMEquivalent> AMMEquivalents(std::string_view code) {
    TablesOuvertes tables{&TableEquivalents()};
    std::vector<LigneAMMEquivalent> lignes;
    Curseur cles(TableEquivalents());
    const std::string prefixe = CleTexte(code, VDXVAMME::CodeTerme.capacite());
    for (auto p = cles.PremiereAvec(prefixe); p; p = cles.SuivanteAvec(prefixe)) {
        const Fiche f(VueFicheA(TableEquivalents(), *p));
        std::string equivalent(f.Texte(VDXVAMME::CodeEquivalent));
        if (equivalent == code) continue;
        std::string libelle = LibelleVocabulaire(vocabulaires::AMM(), equivalent).value_or("");
        lignes.push_back({std::move(equivalent), std::move(libelle)});
    }
    tables.Ferme();
    return lignes;
}

}  // namespace vdx
