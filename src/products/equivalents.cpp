#include "products/equivalents.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <tuple>
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
VDX_TABLE(TableFormes, "VDXIDFOR")
VDX_TABLE(TableUnitesPresentation, "VDXIDUPR")
VDX_TABLE(TableContenants, "VDXIDCON")
VDX_TABLE(TablePresentations, "VDXIDPRE")
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

// Amounts told in two units that are the same dosage (µ is 0xB5).
const std::vector<std::vector<std::string_view>> DosagesEquivalents = {
    {"1 g", "1000 mg"}, {"1 mg", "1000 \xB5g"}, {"1 \xB5g", "1 mcg"}, {"1 mole", "1000 mmol"},
    {"1 L", "1000 ml"}, {"1 cg", "0,01 g", "10 mg"}};

std::string ClassePadee(std::string_view classe) {
    std::string cle(classe.substr(0, LongueurClasse));
    cle.resize(LongueurClasse, ' ');
    return cle;
}

// One row of a candidate, its level left to the caller; none for a
// product the filters leave out: hospital ones unless shown, deleted
// ones, lines by common name.
std::optional<LigneEquivalent> Candidat(const Contexte& contexte, std::string_view cip, const Fiche& id,
                                        LibellesCandidats& libelles) {
    LigneEquivalent l;
    l.Prix = PrixNul;
    if (const auto economie = libelles.Economie(cip)) {
        if ((economie->Hospitalier && !contexte.HospitaliersActifs) || economie->Supprime) return std::nullopt;
        l.Prix = economie->Prix;
        l.TauxRemboursement = economie->TauxRemboursement;
        l.Laboratoire = economie->Laboratoire;
    }
    if (EstMedDC(cip)) return std::nullopt;
    const Identite identite = IdentiteDe(id);
    l.CodeCIP = CIPSortant(cip);
    l.LibelleProduit = identite.Dosage.empty() ? identite.Denomination : identite.Denomination + " " + identite.Dosage + " ";
    l.LibelleForme = libelles.Forme(identite.CodeForme);
    l.LibelleContenance = libelles.Contenance(id);
    l.Conditionnement = libelles.Conditionnement(id).Singulier;
    return l;
}

// Within each run of one class: by level, then within a level by price
// ("0000000" behind the others), then by label. The three exchange sorts
// this has always been come to this one order; rows equal in all three
// keep no order of their own.
void TrieParClasse(std::vector<LigneEquivalent>& lignes, size_t debut, size_t fin) {
    const auto cle = [](const LigneEquivalent& l) {
        return std::tuple(l.Niveau, l.Prix == PrixNul, std::string_view(l.Prix), std::string_view(l.LibelleProduit));
    };
    std::stable_sort(lignes.begin() + static_cast<std::ptrdiff_t>(debut), lignes.begin() + static_cast<std::ptrdiff_t>(fin),
                     [&](const LigneEquivalent& a, const LigneEquivalent& b) { return cle(a) < cle(b); });
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

bool ClasseEquivalence::ParNom() const { return Code.starts_with(ClasseDeNom); }

std::vector<ClasseEquivalence> ClassesEquivalence(std::string_view cip) {
    TablesOuvertes tables{&TableClassesProduits(), &TableClasses()};
    Curseur parProduit(TableClassesProduits(), CleParProduit);
    auto p = parProduit.SuperieureOuEgale(cip);
    if (!p) throw Echec{CodeInconnu};
    std::vector<std::string> codes;
    for (; p && parProduit.Cle().starts_with(cip); p = parProduit.Suivante())
        codes.emplace_back(SansBourrage(parProduit.Cle().substr(LongueurCIP, LongueurClasse)));
    std::vector<ClasseEquivalence> classes;
    for (std::string& code : codes) {
        std::string libelle = messages::LibelleInconnu;
        if (const auto c = Curseur(TableClasses()).Egale(code)) {
            const Fiche f(VueFicheA(TableClasses(), *c));
            if (f.Texte(VDXCLA::LibelleCle).ends_with(MarqueNonEquivalence)) continue;
            libelle = f.Texte(VDXCLA::Libelle);
        }
        classes.push_back({std::move(code), std::move(libelle)});
    }
    tables.Ferme();
    return classes;
}

std::string PrixLu(std::string_view texte) {
    const bool chiffres = texte.size() == LongueurCIP && texte.find_first_not_of("0123456789") == std::string_view::npos;
    return chiffres ? std::string(texte) : std::string(PrixNul);
}

std::span<const Table* const> TablesCandidats() {
    static const std::array<const Table*, 10> tables = {
        &TableClassesProduits(), &TableClasses(),    &TableIdentification(), &TableProduits(),
        &TableRemboursements(),  &TableLaboratoires(), &TableFormes(),       &TableUnitesPresentation(),
        &TableContenants(),      &TablePresentations()};
    return tables;
}

const std::string& LibellesCandidats::Laboratoire(std::string_view code) {
    return LuUneFois(laboratoires_, std::string(code), [](const std::string& c) {
        const auto p = c.empty() ? std::nullopt : Curseur(TableLaboratoires()).Egale(c);
        return p ? std::string(Fiche(VueFicheA(TableLaboratoires(), *p)).Texte(VDXLAB::Libelle)) : std::string();
    });
}

float LibellesCandidats::Taux(std::string_view code) {
    return LuUneFois(taux_, std::string(code), [](const std::string& c) {
        const auto p = c.empty() ? std::nullopt : Curseur(TableRemboursements()).Egale(c);
        return p ? Fiche(VueFicheA(TableRemboursements(), *p)).Reel(VDXTSS::Taux) : 0.f;
    });
}

std::optional<EconomieCandidat> LibellesCandidats::Economie(std::string_view cip) {
    const auto produit = FicheDuCode(TableProduits(), cip);
    if (!produit) return std::nullopt;
    const Fiche f(*produit);
    return EconomieCandidat{PrixLu(f.Texte(VDXPRO::DonneeEco2)), Taux(f.Texte(VDXPRO::CodeTSS)),
                            Laboratoire(f.Texte(VDXPRO::CodeLaboratoire)),
                            (f.Entier(VDXPRO::Drapeaux) & VDXPRO::Hospitalier) != 0,
                            (f.Entier(VDXPRO::Drapeaux) & VDXPRO::Generique) != 0,
                            !f.Texte(VDXPRO::Suppression).empty()};
}

void ParcourtClasse(std::string_view classe, const std::function<bool(std::string_view cip)>& candidat) {
    TablesOuvertes tables{&TableClassesProduits()};
    const std::string prefixe = ClassePadee(classe);
    Curseur cles(TableClassesProduits(), CleParClasse);
    for (auto p = cles.PremiereAvec(prefixe); p; p = cles.SuivanteAvec(prefixe))
        if (!candidat(cles.Cle().substr(LongueurClasse, LongueurCIP))) break;
    tables.Ferme();
}

void ParcourtCandidats(std::string_view classe, std::string_view cip, int32_t limite,
                      const std::function<bool(std::string_view autre, const Fiche& identification)>& garde) {
    int32_t gardes = 0;
    ParcourtClasse(classe, [&](std::string_view autre) {
        if (limite != -1 && gardes >= limite) return false;
        if (autre == cip) return true;
        const auto fiche = FicheDuCode(TableIdentification(), autre);
        if (fiche && garde(autre, Fiche(*fiche))) ++gardes;
        return true;
    });
}

std::vector<LigneEquivalent> ProduitsEquivalents(const Contexte& contexte, const std::string& cip, int32_t limite) {
    const DansContexte dans(contexte);
    TablesOuvertes tables(TablesCandidats());
    const auto identification = FicheDuCode(TableIdentification(), cip);
    if (!identification || !FicheDuCode(TableProduits(), cip)) throw Echec{Rien};
    const Identite produit = IdentiteDe(Fiche(*identification));

    std::vector<LigneEquivalent> lignes;
    LibellesCandidats libelles;
    for (const ClasseEquivalence& classe : ClassesEquivalence(cip)) {
        const size_t debut = lignes.size();
        ParcourtCandidats(classe.Code, cip, limite, [&](std::string_view autre, const Fiche& id) {
            const Identite identite = IdentiteDe(id);
            if (classe.ParNom() && identite.Denomination != produit.Denomination) return false;
            std::optional<LigneEquivalent> l = Candidat(contexte, autre, id, libelles);
            if (!l) return false;
            l->Niveau = classe.ParNom() ? 2 : !DosagesEgaux(produit.Dosage, identite.Dosage)  ? 2
                                   : FormesCompatibles(produit.CodeForme, identite.CodeForme) ? 0
                                                                                              : 1;
            l->CodeClasse = classe.Code;
            l->LibelleClasse = classe.Libelle;
            lignes.push_back(std::move(*l));
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
