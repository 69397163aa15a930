#include "checks/surdosage.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "checks/voies.h"
#include "products/composition.h"
#include "products/lignes_dc.h"
#include "products/composition_liens.h"
#include "products/produits.h"
#include "products/substances.h"
#include "session/cadre.h"
#include "session/retenues.h"
#include "session/tables.h"
#include "store/layouts/produits.h"
#include "vocabulary/libelles.h"
#include "vocabulary/vocabulaires.h"

namespace vdx {

namespace {

VDX_TABLE(TableClassesARisque, "VDXCLAR")

// Only the components of a route of the whole body are compared.
constexpr char VoieGenerale = 'A';
// The natures of a substance row: a component, or one of its synonyms.
constexpr char Composant = '0';
constexpr char SynonymeDe = '1';
// Class codes are compared on this many characters at most.
constexpr size_t LongueurClasseComparee = VDXCLAR::CodeClasse.capacite();

// A row of the working list of substances: its product by rank.
struct Substance {
    size_t produit;
    char nature;
    int32_t code;
    int32_t origine;  // the component a synonym is of; 0 for a component
};
// A row of the working list of classes.
struct Classe {
    size_t produit;
    std::string code;
};

// A substance number as a row gives it: empty for none.
std::string Numero(int32_t code) { return code ? std::to_string(code) : std::string(); }

// A number of a row's field: an empty text is 0.
int64_t Nombre(std::string_view texte) {
    int64_t n = 0;
    std::from_chars(texte.data(), texte.data() + texte.size(), n);
    return n;
}

// The label of a substance, empty for none or an unknown one.
std::string LibelleSubstance(const std::string& code) {
    if (code.empty()) return {};
    try {
        return LibellePA(static_cast<int32_t>(Nombre(code)));
    } catch (const Echec& e) {
        if (e.code != CodeInconnu) throw;
        return {};
    }
}

// The listed class a common beginning of two codes falls under: the text
// shortened until a key at or above it begins it; `sansCle` when a lookup
// found nothing at or above (the search stops there). The caller holds
// VDXCLAR.
struct ClasseListee {
    std::string classe;
    bool sansCle = false;
};
ClasseListee ChercheClasse(std::string texte) {
    Curseur classes(TableClassesARisque());
    for (; !texte.empty(); texte.pop_back()) {
        if (!classes.SuperieureOuEgale(texte)) return {{}, true};
        const std::string_view cle = classes.Cle().substr(0, classes.Cle().find('\0'));
        if (std::string_view(texte).starts_with(cle)) return {texte, false};
    }
    return {};
}

// Kept by beginning while VDXCLAR reads the same.
using ClassesListees = Retenues<ClasseListee, 1>;
ClassesListees::Valeurs* ClassesListeesRetenues() {
    static ClassesListees memo;
    return memo.Courantes({&TableClassesARisque()}, 10000);
}

// The longest common beginning of two codes, at most ten characters.
std::string DebutCommun(std::string_view a, std::string_view b) {
    const size_t borne = std::min({a.size(), b.size(), LongueurClasseComparee});
    size_t n = 0;
    while (n < borne && a[n] == b[n]) ++n;
    return std::string(a.substr(0, n));
}

// The listed class of a common beginning, from `retenues` when the states
// of VDXCLAR could be read; a lookup that found nothing at or above leaves
// -90 for GetLastError_Vdx. The caller holds VDXCLAR.
std::string ClasseDuDebut(const std::string& debut, ClassesListees::Valeurs* retenues) {
    if (debut.empty()) return {};
    std::optional<ClasseListee> lue;
    const ClasseListee& trouvee = ClassesListees::De(retenues, debut, lue, [&] { return ChercheClasse(debut); });
    if (trouvee.sansCle) SortieErreur(CodeInconnu);
    return trouvee.classe;
}

// What a product brings to the comparison: its class codes and, when it is
// given by a route "A" (every such route gives the same rows), its dosed
// substances, each with its synonyms.
struct Apport {
    std::vector<std::string> classes;
    std::vector<std::pair<int32_t, std::vector<int32_t>>> substances;
};

Apport LitApport(const std::string& cip) {
    // A line by common name brings its products' substances, read on its first.
    const std::string lu = ProduitRepresentant(cip).value_or(cip);
    Apport a;
    a.classes = CodesClassesProduit(lu);
    const std::vector<Voie> voies = VoiesProduit(lu);
    if (std::any_of(voies.begin(), voies.end(), [](const Voie& v) { return v.CodeVoie.starts_with(VoieGenerale); }))
        for (int32_t substance : SubstancesDosees(lu)) a.substances.emplace_back(substance, CodesSynonymes(substance));
    return a;
}

// Kept while the tables they are read from read the same.
using Apports = Retenues<Apport, 5>;
Apports::Valeurs* ApportsRetenus() {
    static Apports memo;
    return memo.Courantes({&TableDuCatalogue("VDXCLAP"), &TableDuCatalogue("VDXIDPVO"), &TableDuCatalogue("VDXVCOMP"),
                           &TableDuCatalogue("VDXWSYNC"), &TableDuCatalogue("VDXYDCIP")},
                          10000);
}

class Comparaison {
public:
    void Collecte(const std::string& cip) {
        const size_t produit = produits_.size();
        produits_.push_back(cip);
        std::optional<Apport> lu;
        const Apport& apport = Apports::De(ApportsRetenus(), cip, lu, [&] { return LitApport(cip); });
        for (const std::string& code : apport.classes)
            if (std::none_of(classes_.begin(), classes_.end(),
                             [&](const Classe& k) { return k.produit == produit && k.code == code; }))
                classes_.push_back({produit, code});
        for (const auto& [substance, synonymes] : apport.substances) {
            AjouteSubstance({produit, Composant, substance, 0});
            for (int32_t y : synonymes) AjouteSubstance({produit, SynonymeDe, y, substance});
        }
    }

    std::vector<FicheSurdosage> Compare() {
        for (const Substance& p : substances_)
            for (const Substance& q : substances_)
                if (&p != &q && p.nature == Composant && q.nature == Composant && p.code == q.code) {
                    FicheSurdosage f = Paire(p.produit, q.produit, RedondanceSubstance);
                    f.SubstanceCommune = Numero(p.code);
                    Ajoute(std::move(f));
                }
        for (const Substance& p : substances_)
            for (const Substance& q : substances_)
                if (&p != &q && p.nature == SynonymeDe && p.code == q.code) {
                    FicheSurdosage f = Paire(p.produit, q.produit, RedondanceSynonyme);
                    f.Substance1 = Numero(p.origine);
                    f.Substance2 = Numero(q.origine);
                    f.SubstanceCommune = Numero(p.code);
                    Ajoute(std::move(f));
                }
        ClassesListees::Valeurs* listees = ClassesListeesRetenues();
        for (const Classe& p : classes_)
            for (const Classe& q : classes_) {
                if (p.produit == q.produit) continue;
                std::string commune = ClasseDuDebut(DebutCommun(p.code, q.code), listees);
                if (commune.empty()) continue;
                FicheSurdosage f = Paire(p.produit, q.produit, RedondanceClasse);
                f.ClasseCommune = std::move(commune);
                Ajoute(std::move(f));
            }
        return std::move(fiches_);
    }

private:
    // Kept once per product and code, whatever its nature.
    void AjouteSubstance(Substance s) {
        if (std::none_of(substances_.begin(), substances_.end(),
                         [&](const Substance& t) { return t.produit == s.produit && t.code == s.code; }))
            substances_.push_back(s);
    }

    FicheSurdosage Paire(size_t p, size_t q, int32_t type) const {
        FicheSurdosage f;
        f.CIP1 = produits_[p];
        f.CIP2 = produits_[q];
        f.TypeRedondance = type;
        return f;
    }

    // A row of a pair is a repeat of an earlier one of the same pair, in
    // either order, that shares a substance by one of five comparisons of
    // numbers (an empty field being 0): two rows with an empty field repeat
    // each other, so a shared class adds nothing beside a shared substance.
    static bool Repete(const FicheSurdosage& a, const FicheSurdosage& n) {
        const bool paire = (a.CIP1 == n.CIP1 && a.CIP2 == n.CIP2) || (a.CIP1 == n.CIP2 && a.CIP2 == n.CIP1);
        if (!paire) return false;
        const int64_t commune = Nombre(n.SubstanceCommune), ancienne = Nombre(a.SubstanceCommune);
        return ancienne == commune || ancienne == Nombre(n.Substance1) || Nombre(a.Substance1) == commune ||
               ancienne == Nombre(n.Substance2) || Nombre(a.Substance2) == commune;
    }

    void Ajoute(FicheSurdosage f) {
        if (std::any_of(fiches_.begin(), fiches_.end(), [&](const FicheSurdosage& a) { return Repete(a, f); }))
            return;
        f.Libelle1 = LibelleProduitInterne(f.CIP1).value_or("");
        f.Libelle2 = LibelleProduitInterne(f.CIP2).value_or("");
        f.LibelleSubstance1 = LibelleSubstance(f.Substance1);
        f.LibelleSubstance2 = LibelleSubstance(f.Substance2);
        f.LibelleCommune = LibelleSubstance(f.SubstanceCommune);
        if (!f.ClasseCommune.empty())
            f.LibelleClasseCommune = LibelleVocabulaire(vocabulaires::Classe(), f.ClasseCommune).value_or("");
        fiches_.push_back(std::move(f));
    }

    std::vector<std::string> produits_;
    std::vector<Substance> substances_;
    std::vector<Classe> classes_;
    std::vector<FicheSurdosage> fiches_;
};

}  // namespace

std::string ClasseCommune(std::string_view a, std::string_view b) {
    TablesOuvertes tables{&TableClassesARisque()};
    std::string classe = ClasseDuDebut(DebutCommun(a, b), ClassesListeesRetenues());
    tables.Ferme();
    return classe;
}

std::vector<FicheSurdosage> Redondances(const Contexte& contexte, const std::vector<std::string>& produits) {
    const DansContexte dans(contexte);
    // Held for the call: the lookups of each product take them again for
    // nothing, where they would open and close them.
    TablesOuvertes tables{&TableDuCatalogue("VDXVCOMP"), &TableDuCatalogue("VDXVPA"),   &TableDuCatalogue("VDXCLAP"),
                          &TableDuCatalogue("VDXCLA"),   &TableDuCatalogue("VDXIDPVO"), &TableDuCatalogue("VDXIDVOI"),
                          &TableDuCatalogue("VDXWSYNC"), &TableClassesARisque()};
    Comparaison comparaison;
    for (const std::string& cip : produits) comparaison.Collecte(cip);
    std::vector<FicheSurdosage> fiches = comparaison.Compare();
    tables.Ferme();
    return fiches;
}

}  // namespace vdx
