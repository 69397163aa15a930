// The exports on the open base built from the public data (20,080 real
// presentations): a product's label beside a hash lookup of the same label
// in memory, a page of the step search, the interactions of a real
// prescription of ten products, and its allergies beside the same expansion
// and comparisons over the tables loaded in memory. The base is the directory named by
// VDX_BASE_OUVERTE (default build/open-base, made by the target open_base);
// without it every benchmark says so and is skipped.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <tuple>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "checks/allergies.h"
#include "documents/rapports.h"
#include "checks/surdosage.h"
#include "checks/voies.h"
#include "products/composition.h"
#include "products/composition_liens.h"
#include "posology/quantite.h"
#include "products/equivalents.h"
#include "products/optimisation.h"
#include "products/produits.h"
#include "search/criteres.h"
#include "search/ensemble.h"
#include "store/layouts.h"
#include "products/substances.h"
#include "checks/interactions.h"
#include "platform/hote.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/resultat.h"
#include "session/tables.h"
#include "session/valeurs_hote.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/allergies.h"
#include "store/layouts/composition.h"
#include "tests/support/tableau_hote.h"
#include "vdx32/vdx32.h"

namespace {

using namespace vdx;

std::string Base() {
    const char* base = std::getenv("VDX_BASE_OUVERTE");
    return base ? base : "build/open-base";
}

const Gabarit TroisChaines{TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte};

// A connection in array mode to the open base; false when it isn't there.
bool Connecte(benchmark::State& state) {
    InstalleNotifications_Vdx([](void*, const char*, const char*, int32_t) { return 1; }, nullptr, nullptr);
    if (Connection2_Vdx(Base().c_str(), 0, 0) == 1) return true;
    state.SkipWithError("no open base: build the target open_base, or set VDX_BASE_OUVERTE");
    return false;
}

// The first product whose label begins with a text.
std::string Premier(const char* debut) {
    SAFEARRAY* t = hote::CreeTableau(hote::TailleFiche(3));
    std::string code;
    if (RechercheProduitParPas_Vdx(debut, &t, 0, "", 1) == 1)
        code = std::string(hote::Octets(*hote::Chaine(hote::Fiche(t->pvData, t->cbElements, 0), 0)));
    VideTableau(t, TroisChaines);
    hote::Detruit(t);
    return code;
}

void LibelleProduit(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier("DOLIPRANE 1000");
    BSTR libelle = nullptr;
    for (auto _ : state) benchmark::DoNotOptimize(LibelleProduit_Vdx(code.c_str(), &libelle));
    SysFreeString(libelle);
    DeConnection2_Vdx();
}
BENCHMARK(LibelleProduit);

// The same label from a hash map of every product's label.
void Reference_LibelleProduit(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::unordered_map<std::string, std::string> libelles;
    const int32_t total = TotalProduit_Vdx();
    for (int32_t i = 0; i < total; ++i) {
        BSTR code = nullptr, libelle = nullptr;
        if (GetProduit_Vdx(i, &code, &libelle) == 1)
            libelles.emplace(std::string(hote::Octets(code)), std::string(hote::Octets(libelle)));
        SysFreeString(code);
        SysFreeString(libelle);
    }
    const std::string code = Premier("DOLIPRANE 1000");
    std::string copie;
    for (auto _ : state) {
        copie = libelles.at(code);
        benchmark::DoNotOptimize(copie.data());
    }
    state.counters["produits"] = total;
    DeConnection2_Vdx();
}
BENCHMARK(Reference_LibelleProduit);

void RechercheProduitParPas(benchmark::State& state) {
    if (!Connecte(state)) return;
    SAFEARRAY* t = hote::CreeTableau(hote::TailleFiche(3));
    int32_t n = 0;
    for (auto _ : state) n = RechercheProduitParPas_Vdx("DOLI", &t, 0, "", 20);
    state.counters["lignes"] = n;
    VideTableau(t, TroisChaines);
    hote::Detruit(t);
    DeConnection2_Vdx();
}
BENCHMARK(RechercheProduitParPas)->Unit(benchmark::kMicrosecond);

// A product's prescription line by common name.
void TraductionDC(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier("DOLIPRANE 1000");
    BSTR ligne = nullptr, libelle = nullptr;
    for (auto _ : state) benchmark::DoNotOptimize(TraductionDC_Vdx(code.c_str(), &ligne, &libelle));
    SysFreeString(ligne);
    SysFreeString(libelle);
    DeConnection2_Vdx();
}
BENCHMARK(TraductionDC);

// Every line's label and products read into memory, each line in label
// order (the step search of lines from "A" on, page after page).
struct LignesEnMemoire {
    std::vector<std::tuple<std::string, std::string>> parLibelle;  // label, code
    std::unordered_map<std::string, std::pair<std::string, std::string>> parProduit;  // code, label
};
LignesEnMemoire LitLignes() {
    LignesEnMemoire m;
    SAFEARRAY* page = hote::CreeTableau(hote::TailleFiche(3));
    SAFEARRAY* produits = hote::CreeTableau(hote::TailleFiche(3));
    std::string suite;
    for (int32_t n; (n = RechercheMedDCParPas_Vdx("", &page, suite.c_str(), 200)) > 0;) {
        for (int32_t i = 0; i < n; ++i) {
            void* fiche = hote::Fiche(page->pvData, page->cbElements, static_cast<uint32_t>(i));
            std::string code(hote::Octets(*hote::Chaine(fiche, 0))), libelle(hote::Octets(*hote::Chaine(fiche, 1)));
            if (ProduitsMedDC_Vdx(code.c_str(), &produits) > 0)
                for (uint32_t j = 0; j < produits->rgsabound[0].cElements; ++j)
                    m.parProduit.emplace(hote::Octets(*hote::Chaine(hote::Fiche(produits->pvData, produits->cbElements, j), 0)),
                                         std::pair{code, libelle});
            suite = libelle;
            m.parLibelle.emplace_back(std::move(libelle), std::move(code));
        }
        if (n < 200) break;
    }
    VideTableau(page, TroisChaines);
    VideTableau(produits, TroisChaines);
    hote::Detruit(page);
    hote::Detruit(produits);
    std::ranges::sort(m.parLibelle);
    return m;
}

void Reference_TraductionDC(benchmark::State& state) {
    if (!Connecte(state)) return;
    const LignesEnMemoire m = LitLignes();
    const std::string code = Premier("DOLIPRANE 1000");
    std::pair<std::string, std::string> copie;
    for (auto _ : state) {
        copie = m.parProduit.at(code);
        benchmark::DoNotOptimize(copie.first.data());
    }
    state.counters["produits"] = static_cast<double>(m.parProduit.size());
    DeConnection2_Vdx();
}
BENCHMARK(Reference_TraductionDC);

void RechercheMedDCParPas(benchmark::State& state) {
    if (!Connecte(state)) return;
    SAFEARRAY* t = hote::CreeTableau(hote::TailleFiche(3));
    int32_t n = 0;
    for (auto _ : state) n = RechercheMedDCParPas_Vdx("PARA", &t, "", 20);
    state.counters["lignes"] = n;
    VideTableau(t, TroisChaines);
    hote::Detruit(t);
    DeConnection2_Vdx();
}
BENCHMARK(RechercheMedDCParPas)->Unit(benchmark::kMicrosecond);

// The same page from the labels sorted in memory, copied.
void Reference_RechercheMedDCParPas(benchmark::State& state) {
    if (!Connecte(state)) return;
    const LignesEnMemoire m = LitLignes();
    std::vector<std::tuple<std::string, std::string>> page;
    for (auto _ : state) {
        page.clear();
        for (auto it = std::lower_bound(m.parLibelle.begin(), m.parLibelle.end(), std::tuple<std::string, std::string>{"PARA", ""});
             it != m.parLibelle.end() && page.size() < 20 && std::get<0>(*it).starts_with("PARA"); ++it)
            page.push_back(*it);
        benchmark::DoNotOptimize(page.data());
    }
    state.counters["lignes"] = static_cast<double>(m.parLibelle.size());
    DeConnection2_Vdx();
}
BENCHMARK(Reference_RechercheMedDCParPas)->Unit(benchmark::kMicrosecond);

// A prescription of ten common products: an anticoagulant, NSAIDs, an
// antidepressant, an opioid, antiplatelet drugs, a statin, an antibiotic,
// an antidiabetic, a thyroid hormone.
std::vector<std::string> DixProduits() {
    std::vector<std::string> codes;
    for (const char* debut : {"COUMADINE", "ADVIL 200", "DEROXAT", "CONTRAMAL 50", "KARDEGIC", "PLAVIX", "TAHOR",
                              "CLAMOXYL", "GLUCOPHAGE", "LEVOTHYROX"})
        if (std::string code = Premier(debut); !code.empty()) codes.push_back(code);
    return codes;
}

void Interactions2(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::vector<std::string> codes = DixProduits();
    SAFEARRAY* produits = essai::TableauDeChaines(codes);
    SAFEARRAY* lignes = hote::CreeTableau(hote::TailleFiche(23));
    int32_t n = 0;
    for (auto _ : state) n = Interactions2_Vdx(&produits, nullptr, nullptr, &lignes, 0, 0, 0, 0, "");
    state.counters["produits"] = static_cast<double>(codes.size());
    state.counters["lignes"] = n;
    VideTableau(lignes, GabaritDe<FicheInteraction2>());
    hote::Detruit(lignes);
    SafeArrayDestroy(produits);
    DeConnection2_Vdx();
}
BENCHMARK(Interactions2)->Unit(benchmark::kMicrosecond);

// The report of the same prescription written to a file: what it adds to
// the check is the rendering, the chapters of the pairs and the file.
void Interactions2Html(benchmark::State& state) {
    if (!Connecte(state)) return;
    SAFEARRAY* produits = essai::TableauDeChaines(DixProduits());
    const std::string fichier = (std::filesystem::temp_directory_path() / "vdx-rapport-bench.html").string();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            Interactions2Html_Vdx(&produits, nullptr, nullptr, fichier.c_str(), "", 0, 0, 0, 0, ""));
    SafeArrayDestroy(produits);
    DeConnection2_Vdx();
}
BENCHMARK(Interactions2Html)->Unit(benchmark::kMicrosecond);

// The baseline of the rendering: the same rows and chapters already in
// memory, formatted by the same fragments into one string.
void Reference_Interactions2Html(benchmark::State& state) {
    if (!Connecte(state)) return;
    Controle<FicheInteraction2> controle;
    std::map<std::string, std::string> chapitres;
    {
        const DansContexte dans(session());
        controle.lignes = AnalyseInteractions(session(), DixProduits());
        for (const FicheInteraction2& r : controle.lignes)
            for (const std::string& cip : {r.CIP1, r.CIP2}) chapitres.emplace(cip, ChapitreIAM(cip));
    }
    controle.code = static_cast<int32_t>(controle.lignes.size());
    const ChapitreProduit enMemoire = [&](const std::string& cip) { return chapitres.at(cip); };
    for (auto _ : state) benchmark::DoNotOptimize(RapportInteractions(controle, "", enMemoire));
    DeConnection2_Vdx();
}
BENCHMARK(Reference_Interactions2Html)->Unit(benchmark::kMicrosecond);

// A long list of real lines: every tenth product of the base in code order,
// as many as asked.
void Interactions2_Liste(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::vector<std::string> codes;
    const int32_t total = TotalProduit_Vdx();
    for (int32_t i = 0; i < total && static_cast<int64_t>(codes.size()) < state.range(0); i += 10) {
        ChaineHote code, libelle;
        if (GetProduit_Vdx(i, code.Adresse(), libelle.Adresse()) == 1) codes.emplace_back(code.Octets());
    }
    EntreeHote produits = EntreeHote::Chaines(codes);
    TableauHote<VdxInteraction2> lignes(GabaritDe<FicheInteraction2>());
    int32_t n = 0;
    for (auto _ : state) n = Interactions2_Vdx(produits.Adresse(), nullptr, nullptr, lignes.Adresse(), 0, 0, 0, 0, "");
    state.counters["produits"] = static_cast<double>(codes.size());
    state.counters["lignes"] = n;
    DeConnection2_Vdx();
}
BENCHMARK(Interactions2_Liste)->Arg(100)->Arg(400)->Arg(1600)->Unit(benchmark::kMillisecond);

// Allergies of that prescription: the penicillins (the import's first
// concept), amoxicillin trihydrate (a salt, its base a synonym) and
// ibuprofen by their published numbers. The open base has no excipients.
const std::vector<int32_t> Allergenes = {30001, 28165, 2092};

void ControleAllergies(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::vector<std::string> codes = DixProduits();
    EntreeHote termes = EntreeHote::Chaines({});
    EntreeHote allergenes = EntreeHote::Entiers(Allergenes);
    EntreeHote produits = EntreeHote::Chaines(codes);
    TableauHote<VdxFicheAllergie> lignes(GabaritDe<FicheAllergie>());
    int32_t n = 0;
    for (auto _ : state)
        n = ControleAllergies_Vdx(termes.Adresse(), allergenes.Adresse(), produits.Adresse(), lignes.Adresse());
    state.counters["produits"] = static_cast<double>(codes.size());
    state.counters["lignes"] = n;
    DeConnection2_Vdx();
}
BENCHMARK(ControleAllergies)->Unit(benchmark::kMicrosecond);

// The baseline: the tables the check reads, loaded once into ordered maps
// of their keys (in the store's order) and records, and the same expansion
// and comparisons made over them.
class AllergiesEnMemoire {
public:
    AllergiesEnMemoire() {
        Charge(TableDuCatalogue("VDXWCCCO"), 0, parConcept_);
        Charge(TableDuCatalogue("VDXWCCCO"), 1, parComposant_);
        Charge(TableDuCatalogue("VDXWALCR"), 0, croisees_);
        Charge(TableDuCatalogue("VDXWSYNC"), 0, synonymes_);
        const Table& noms = TableDuCatalogue("VDXVEXC");
        TablesOuvertes tables{&noms};
        Curseur c(noms);
        for (auto p = c.Premiere(); p; p = c.Suivante()) {
            const Fiche f(VueFicheA(noms, *p));
            noms_[f.Entier(VDXVEXC::CodeSubstance)] = f.Texte(VDXVEXC::Libelle);
        }
        tables.Ferme();
    }
    // The excipients, then the active components, of each product.
    void ChargeProduits(const std::vector<std::string>& codes) {
        for (const Table* t : {&TableDuCatalogue("VDXVCOME"), &TableDuCatalogue("VDXVCOMP")}) {
            TablesOuvertes tables{t};
            for (const std::string& code : codes) {
                Curseur c(*t);
                std::vector<int32_t>& substances = composition_[code];
                for (auto p = c.PremiereAvec(code); p; p = c.SuivanteAvec(code))
                    substances.push_back(Fiche(VueFicheA(*t, *p)).Entier(VDXVCOMP::CodeSubstance));
            }
            tables.Ferme();
        }
    }

    size_t Controle(const std::vector<int32_t>& allergenes, const std::vector<std::string>& codes) {
        liste_.clear();
        for (int32_t a : allergenes) Allergene(a);
        for (size_t i = liste_.size(); i-- > 0;) {
            const int32_t x = liste_[i].CodeSubstance, a = liste_[i].CodeAllergene;
            Parcourt(synonymes_, x, [&](int32_t y) { Ajoute(y, a, 0); });
        }
        std::set<std::pair<std::string, std::string>> vues;
        size_t lignes = 0;
        for (const std::string& code : codes)
            for (int32_t s : composition_[code])
                for (const ChaineAllergie& e : liste_)
                    if (e.CodeSubstance == s && vues.emplace(code, std::to_string(e.CodeAllergene)).second) ++lignes;
        return lignes;
    }

private:
    using Cles = std::set<std::string>;
    static void Charge(const Table& t, int cle, Cles& cles) {
        TablesOuvertes tables{&t};
        Curseur c(t, cle);
        for (auto p = c.Premiere(); p; p = c.Suivante()) cles.emplace(c.Cle());
        tables.Ferme();
    }
    static int32_t Mot(const std::string& cle, size_t rang) { return Fiche(cle).Entier(rang ? VDXWSYNC::CodeSynonyme : VDXWSYNC::CodeSubstance); }
    template <class Action>
    static void Parcourt(const Cles& cles, int32_t premier, Action&& action, int maximum = -1) {
        const std::string debut = CleEntiers({premier});
        for (auto it = cles.lower_bound(debut); it != cles.end() && it->starts_with(debut) && maximum != 0; ++it, --maximum)
            action(Mot(*it, 1));
    }
    void Allergene(int32_t a) {
        if (a > DerniereSubstance) {
            Concept(a, a);
            Parcourt(croisees_, a, [&](int32_t c) { Concept(c, a); }, 5);
            return;
        }
        auto synonyme = synonymes_.lower_bound(CleEntiers({a, 0}));
        for (int32_t s = a;;) {
            auto k = parComposant_.lower_bound(CleEntiers({s, 0}));
            if (k != parComposant_.end() && Mot(*k, 0) != s) Ajoute(s, a, 0);
            for (; k != parComposant_.end() && Mot(*k, 0) == s; ++k) {
                const int32_t c = Mot(*k, 1);
                Concept(c, a);
                Parcourt(croisees_, c, [&](int32_t x) { Concept(x, a); }, 5);
            }
            if (synonyme == synonymes_.end() || Mot(*synonyme, 0) != a) break;
            s = Mot(*synonyme++, 1);
        }
    }
    void Concept(int32_t c, int32_t a) {
        Parcourt(parConcept_, c, [&](int32_t x) { Ajoute(x, a, c); });
    }
    void Ajoute(int32_t x, int32_t a, int32_t c) {
        std::string texte = x == a ? noms_[x] : noms_[a];
        if (x != a) {
            if (c) texte.append(" -> ").append(noms_[c]).append(" : ");
            if (x) texte.append(c ? "" : " -> ").append(noms_[x]);
        }
        liste_.push_back({x, a, std::move(texte)});
    }

    Cles parConcept_, parComposant_, croisees_, synonymes_;
    std::unordered_map<int32_t, std::string> noms_;
    std::unordered_map<std::string, std::vector<int32_t>> composition_;
    std::vector<ChaineAllergie> liste_;
};

void Reference_ControleAllergies(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::vector<std::string> codes = DixProduits();
    AllergiesEnMemoire memoire;
    memoire.ChargeProduits(codes);
    size_t n = 0;
    for (auto _ : state) benchmark::DoNotOptimize(n = memoire.Controle(Allergenes, codes));
    state.counters["lignes"] = static_cast<double>(n);
    DeConnection2_Vdx();
}
BENCHMARK(Reference_ControleAllergies)->Unit(benchmark::kMicrosecond);

// The products of that prescription under three classes of the base: the
// first three characters of the classes of its first three products.
void Allergies(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::vector<std::string> codes = DixProduits();
    std::vector<std::string> classes;
    const Table& t = TableDuCatalogue("VDXCLAP");
    {
        TablesOuvertes tables{&t};
        for (const std::string& code : codes) {
            Curseur c(t, 1);
            if (c.PremiereAvec(code) && classes.size() < 3) classes.emplace_back(c.Cle().substr(LongueurCIP, 3));
        }
        tables.Ferme();
    }
    EntreeHote produits = EntreeHote::Chaines(codes);
    EntreeHote hotes = EntreeHote::Chaines(classes);
    TableauHote<VdxFicheClasseAllergie> lignes(GabaritDe<FicheClasseAllergie>());
    int32_t n = 0;
    for (auto _ : state) n = Allergies_Vdx(produits.Adresse(), hotes.Adresse(), lignes.Adresse());
    state.counters["classes"] = static_cast<double>(classes.size());
    state.counters["lignes"] = n;
    DeConnection2_Vdx();
}
BENCHMARK(Allergies)->Unit(benchmark::kMicrosecond);

// Redundancy in ten products: four NSAIDs (one class), two paracetamols
// (one substance), two morphine salts (one base), an anticoagulant, an
// antiplatelet drug.
std::vector<std::string> DixProduitsRedondants() {
    std::vector<std::string> codes;
    for (const char* debut : {"ADVIL 200", "PROFENID 100", "APRANAX", "VOLTARENE 50", "DOLIPRANE 1000", "EFFERALGAN 1G",
                              "SKENAN", "MORPHINE AGUETT 10MG/ML SOL 10X1ML", "COUMADINE", "KARDEGIC"})
        if (std::string code = Premier(debut); !code.empty()) codes.push_back(code);
    return codes;
}

void Surdosage(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::vector<std::string> codes = DixProduitsRedondants();
    EntreeHote produits = EntreeHote::Chaines(codes);
    TableauHote<VdxFicheSurdosage> lignes(GabaritDe<FicheSurdosage>());
    int32_t n = 0;
    for (auto _ : state) n = Surdosage_Vdx(produits.Adresse(), lignes.Adresse());
    state.counters["produits"] = static_cast<double>(codes.size());
    state.counters["lignes"] = n;
    DeConnection2_Vdx();
}
BENCHMARK(Surdosage)->Unit(benchmark::kMicrosecond);

// The baseline: the products' substances (with their synonyms, for a route
// "A") and classes gathered once, the listed classes and the labels in
// memory; the same three comparisons, the same rule of repeats and the same
// search of the common class made over them.
class RedondancesEnMemoire {
public:
    explicit RedondancesEnMemoire(const std::vector<std::string>& codes) {
        for (const std::string& cip : codes) {
            libelles_[cip] = LibelleProduitInterne(cip).value_or("");
            for (ClasseDuProduit& c : ClassesProduit(cip)) classes_.push_back({cip, std::move(c.CodeClasse), {}});
            bool generale = false;
            for (const Voie& v : VoiesProduit(cip)) generale |= v.CodeVoie.starts_with('A');
            if (!generale) continue;
            for (const Composant& c : CompositionProduit(cip).composants) {
                if (c.SansQuantite) continue;
                Ajoute(substances_, {cip, std::to_string(c.CodeSubstance), {}});
                for (const Synonyme& y : SynonymesComposant(c.CodeSubstance))
                    Ajoute(synonymes_, {cip, std::to_string(y.Code), std::to_string(c.CodeSubstance)});
            }
        }
        for (const auto* liste : {&substances_, &synonymes_})
            for (const Rang& r : *liste) noms_[r.code] = Nom(r.code);
        const Table& t = TableDuCatalogue("VDXCLAR");
        TablesOuvertes tables{&t};
        Curseur c(t);
        for (auto p = c.Premiere(); p; p = c.Suivante()) listees_.emplace(c.Cle().substr(0, c.Cle().find('\0')));
        tables.Ferme();
    }

    size_t Compare() {
        fiches_.clear();
        for (const Rang& p : substances_)
            for (const Rang& q : substances_)
                if (&p != &q && p.code == q.code) Fiche(p.cip, q.cip, "", "", p.code, "", 3);
        for (const Rang& p : synonymes_) {
            for (const Rang& q : substances_)
                if (p.cip != q.cip && p.code == q.code) Fiche(p.cip, q.cip, p.origine, "", p.code, "", 2);
            for (const Rang& q : synonymes_)
                if (&p != &q && p.code == q.code) Fiche(p.cip, q.cip, p.origine, q.origine, p.code, "", 2);
        }
        for (const Rang& p : classes_)
            for (const Rang& q : classes_)
                if (p.cip != q.cip)
                    if (std::string k = Commune(p.code, q.code); !k.empty()) Fiche(p.cip, q.cip, "", "", "", k, 4);
        return fiches_.size();
    }

private:
    struct Rang {
        std::string cip, code, origine;
    };
    static void Ajoute(std::vector<Rang>& liste, Rang r) {
        for (const Rang& s : liste)
            if (s.cip == r.cip && s.code == r.code) return;
        liste.push_back(std::move(r));
    }
    static std::string Nom(const std::string& code) {
        try {
            return LibellePA(std::stoi(code));
        } catch (const Echec&) {
            return {};
        }
    }
    std::string Commune(const std::string& a, const std::string& b) const {
        size_t n = 0;
        while (n < std::min({a.size(), b.size(), size_t{10}}) && a[n] == b[n]) ++n;
        for (std::string texte = a.substr(0, n); !texte.empty(); texte.pop_back()) {
            const auto k = listees_.lower_bound(texte);
            if (k == listees_.end()) return {};
            if (texte.starts_with(*k)) return texte;
        }
        return {};
    }
    void Fiche(const std::string& cip1, const std::string& cip2, const std::string& s1, const std::string& s2,
               const std::string& commune, const std::string& classe, int32_t type) {
        const auto nombre = [](const std::string& t) { return t.empty() ? 0 : std::stoll(t); };
        for (const FicheSurdosage& a : fiches_) {
            if (!((a.CIP1 == cip1 && a.CIP2 == cip2) || (a.CIP1 == cip2 && a.CIP2 == cip1))) continue;
            const long long c = nombre(commune), ac = nombre(a.SubstanceCommune);
            if (ac == c || ac == nombre(s1) || nombre(a.Substance1) == c || ac == nombre(s2) || nombre(a.Substance2) == c)
                return;
        }
        fiches_.push_back({cip1, cip2, libelles_[cip1], libelles_[cip2], s1, s2, noms_[s1], noms_[s2], commune,
                           noms_[commune], classe, classe, type});
    }

    std::vector<Rang> substances_, synonymes_, classes_;
    std::set<std::string> listees_;
    std::unordered_map<std::string, std::string> libelles_, noms_;
    std::vector<FicheSurdosage> fiches_;
};

void Reference_Surdosage(benchmark::State& state) {
    if (!Connecte(state)) return;
    RedondancesEnMemoire memoire(DixProduitsRedondants());
    size_t n = 0;
    for (auto _ : state) benchmark::DoNotOptimize(n = memoire.Compare());
    state.counters["lignes"] = static_cast<double>(n);
    DeConnection2_Vdx();
}
BENCHMARK(Reference_Surdosage)->Unit(benchmark::kMicrosecond);

// The heat-wave advisory of the first product of three components (each
// with its synonyms looked up) given by a route of the whole body.
void IsCanicule(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::string code;
    const int32_t total = TotalProduit_Vdx();
    for (int32_t i = 0; i < total && code.empty(); ++i) {
        ChaineHote cip, libelle;
        if (GetProduit_Vdx(i, cip.Adresse(), libelle.Adresse()) != 1) continue;
        const std::string c(cip.Octets());
        if (CompositionProduit(c).composants.size() != 3) continue;
        for (const Voie& v : VoiesProduit(c))
            if (v.CodeVoie.starts_with('A')) code = c;
    }
    ChaineHote texte;
    int32_t n = 0;
    for (auto _ : state) n = IsCanicule_Vdx(code.c_str(), texte.Adresse());
    state.counters["concerne"] = n;
    DeConnection2_Vdx();
}
BENCHMARK(IsCanicule)->Unit(benchmark::kMicrosecond);

// The equivalents of a paracetamol 500 mg tablet, whose class of substance
// holds hundreds of presentations, without limit.
void ProduitsEquivalents(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier("DOLIPRANE 500MG CPR");
    SAFEARRAY* lignes = hote::CreeTableau(hote::TailleFiche(11));
    int32_t n = 0;
    for (auto _ : state) n = ProduitsEquivalents_Vdx(code.c_str(), &lignes, -1);
    state.counters["lignes"] = n;
    if (n <= 0) state.SkipWithError("no equivalent");
    VideTableau(lignes, GabaritDe<LigneEquivalent>());
    hote::Detruit(lignes);
    DeConnection2_Vdx();
}
BENCHMARK(ProduitsEquivalents)->Unit(benchmark::kMicrosecond);

// Sorted copies in memory of tables of the open base, and the classes of
// VDXCLAP by class and by product, for the baselines of the walks over
// the equivalents of a product.
struct CopiesDesTables {
    using Table = std::map<std::string, std::string, std::less<>>;
    std::map<std::string, Table> tables;
    std::map<std::string, std::vector<std::string>> parClasse, parProduit;

    explicit CopiesDesTables(std::initializer_list<const char*> noms) {
        const DansContexte dans(session());
        for (const char* nom : noms) {
            const vdx::Table& t = *TableNommee(nom);
            TablesOuvertes ouvertes{&t};
            Curseur c(t);
            for (auto p = c.Premiere(); p; p = c.Suivante()) tables[nom].emplace(std::string(c.Cle()), FicheA(t, *p));
        }
        const vdx::Table& clap = *TableNommee("VDXCLAP");
        TablesOuvertes ouvertes{&clap};
        Curseur c(clap);
        for (auto p = c.Premiere(); p; p = c.Suivante()) {
            const std::string cle(c.Cle());
            const std::string classe = cle.substr(0, cle.find_last_not_of(' ', 6) + 1);
            parClasse[classe].push_back(cle.substr(7, 7));
            parProduit[cle.substr(7, 7)].push_back(classe);
        }
    }
    const std::string* Fiche(const char* table, std::string_view cle) const {
        const Table& t = tables.at(table);
        const auto it = t.lower_bound(cle);
        return it != t.end() && it->first.starts_with(cle) ? &it->second : nullptr;
    }
    std::string Mot(const char* table, int32_t code, bool pluriel = false) const {
        const std::string* f = Fiche(table, CleEntiers({code}));
        return f ? std::string(vdx::Fiche(*f).Texte(pluriel ? ModeleMot::LibellePluriel : ModeleMot::Libelle)) : std::string();
    }
    std::string Forme(std::string_view code) const {
        std::string cle(code);
        cle.resize(4, ' ');
        const std::string* f = Fiche("VDXIDFOR", cle);
        return f ? std::string(vdx::Fiche(*f).Texte(VDXIDFOR::Libelle)) : std::string();
    }
};

// The same rows from sorted copies of the tables in memory: the same keys
// walked, the same records and words read, the same levels and sort, the
// same delivery.
void Reference_ProduitsEquivalents(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier("DOLIPRANE 500MG CPR");
    const CopiesDesTables copies{"VDXIDPRO", "VDXPRO", "VDXCLA", "VDXIDFOR", "VDXIDPRE", "VDXIDCON", "VDXTSS", "VDXLAB"};
    const auto fiche = [&](const char* table, std::string_view cle) { return copies.Fiche(table, cle); };
    const auto mot = [&](const char* table, int32_t code) { return copies.Mot(table, code); };
    const auto& parClasse = copies.parClasse;
    const auto& parProduit = copies.parProduit;
    SAFEARRAY* tableau = hote::CreeTableau(hote::TailleFiche(11));
    size_t n = 0;
    for (auto _ : state) {
        const Fiche produit(*fiche("VDXIDPRO", code));
        std::vector<LigneEquivalent> lignes;
        for (const std::string& classe : parProduit.at(code)) {
            const std::string* c = fiche("VDXCLA", classe);
            if (c && Fiche(*c).Texte(VDXCLA::LibelleCle).ends_with('*')) continue;
            for (const std::string& cip : parClasse.at(classe)) {
                const std::string* id = cip == code ? nullptr : fiche("VDXIDPRO", cip);
                if (!id) continue;
                const Fiche f(*id);
                LigneEquivalent l;
                l.CodeClasse = classe;
                l.LibelleClasse = c ? Fiche(*c).Texte(VDXCLA::Libelle) : std::string_view();
                l.CodeCIP = cip;
                l.LibelleProduit = std::string(f.Texte(VDXIDPRO::Denomination)) + " " + std::string(f.Texte(VDXIDPRO::Dosage)) + " ";
                l.LibelleForme = copies.Forme(f.Texte(VDXIDPRO::CodeForme));
                l.LibelleContenance = std::to_string(static_cast<int>(f.Reel(VDXIDPRO::QuantitePresentation))) + " " +
                                      mot("VDXIDPRE", f.Entier(VDXIDPRO::CodePresentation));
                l.Conditionnement = mot("VDXIDCON", f.Entier(VDXIDPRO::CodeContenant));
                if (const std::string* p = fiche("VDXPRO", cip)) {
                    const Fiche pr(*p);
                    if (pr.Entier(VDXPRO::Drapeaux) & VDXPRO::Hospitalier || !pr.Texte(VDXPRO::Suppression).empty()) continue;
                    l.Prix = pr.Texte(VDXPRO::DonneeEco2);
                    if (const std::string* t = fiche("VDXTSS", pr.Texte(VDXPRO::CodeTSS))) l.TauxRemboursement = Fiche(*t).Reel(VDXTSS::Taux);
                    if (const std::string* lab = fiche("VDXLAB", pr.Texte(VDXPRO::CodeLaboratoire)))
                        l.Laboratoire = Fiche(*lab).Texte(VDXLAB::Libelle);
                }
                l.Niveau = !DosagesEgaux(produit.Texte(VDXIDPRO::Dosage), f.Texte(VDXIDPRO::Dosage)) ? 2
                           : FormesCompatibles(produit.Texte(VDXIDPRO::CodeForme), f.Texte(VDXIDPRO::CodeForme)) ? 0
                                                                                                              : 1;
                lignes.push_back(std::move(l));
            }
        }
        std::stable_sort(lignes.begin(), lignes.end(), [](const LigneEquivalent& a, const LigneEquivalent& b) {
            return std::tie(a.CodeClasse, a.Niveau, a.Prix, a.LibelleProduit) <
                   std::tie(b.CodeClasse, b.Niveau, b.Prix, b.LibelleProduit);
        });
        n = lignes.size();
        Resultat resultat(&tableau, GabaritDe<LigneEquivalent>(), -20);
        resultat.Prend(LignesSansCleSelon<LigneEquivalent>(std::move(lignes)));
        resultat.Livre();
    }
    state.counters["lignes"] = static_cast<double>(n);
    VideTableau(tableau, GabaritDe<LigneEquivalent>());
    hote::Detruit(tableau);
    DeConnection2_Vdx();
}
BENCHMARK(Reference_ProduitsEquivalents)->Unit(benchmark::kMicrosecond);

// Three boxes of 30 tablets of a generic of atorvastatin 20 mg against the
// products of its generic group and of its substance, without limit.
constexpr char Atorvastatine[] = "ATORVASTATINE ACCORD 20MG CPR B/30";

void Optimisation(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier(Atorvastatine);
    SAFEARRAY* lignes = hote::CreeTableau(hote::TailleFiche(10));
    int32_t n = 0;
    for (auto _ : state) n = Optimisation_Vdx(code.c_str(), 3, 0, 0, &lignes, -1);
    state.counters["lignes"] = n;
    if (n <= 0) state.SkipWithError("no candidate");
    VideTableau(lignes, GabaritDe<LigneOptimisation>());
    hote::Detruit(lignes);
    DeConnection2_Vdx();
}
BENCHMARK(Optimisation)->Unit(benchmark::kMicrosecond);

// The same rows from sorted copies of the tables in memory: the same walk
// and filters, the same labels and words, the same packages, costs, Rang
// and order, the same delivery.
void Reference_Optimisation(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier(Atorvastatine);
    const CopiesDesTables copies{"VDXIDPRO", "VDXPRO", "VDXCLA", "VDXIDFOR", "VDXIDPRE",
                                 "VDXIDUPR", "VDXIDCON", "VDXTSS", "VDXLAB"};
    const auto ages = [](std::string_view nom, int32_t prescription) {
        int32_t a = nom.find(" Ad") != std::string_view::npos ? 1 : 0;
        for (auto [texte, bit] : {std::pair{" E", 2}, {" N", 4}, {"B\xE9" "b\xE9", 4}})
            if (nom.find(texte) != std::string_view::npos) a = (prescription < 0 ? a : prescription) | bit;
        return a;
    };
    const auto contenance = [](const Fiche& f) {
        const float rapport = f.Reel(VDXIDPRO::Rapport);
        return f.Entier(VDXIDPRO::CodeUnitePrise) && f.Entier(VDXIDPRO::AvecContenance) && rapport
                   ? f.Reel(VDXIDPRO::QuantitePresentation) * f.Reel(VDXIDPRO::QuantiteUnitePresentation) / rapport
                   : 0.f;
    };
    struct Rangee {
        LigneOptimisation l;
        int64_t cout;
    };
    SAFEARRAY* tableau = hote::CreeTableau(hote::TailleFiche(10));
    size_t n = 0;
    for (auto _ : state) {
        const Fiche produit(*copies.Fiche("VDXIDPRO", code));
        const std::string_view nom = produit.Texte(VDXIDPRO::Denomination);
        const int32_t agesProduit = ages(nom, -1);
        const int32_t unite = produit.Entier(VDXIDPRO::CodeUnitePrise);
        const double quantite = 3.0 * contenance(produit);
        const int64_t reference = std::stoll(std::string(Fiche(*copies.Fiche("VDXPRO", code)).Texte(VDXPRO::DonneeEco2))) * 3;
        std::vector<Rangee> rangees;
        for (const std::string& classe : copies.parProduit.at(code)) {
            const std::string* fc = copies.Fiche("VDXCLA", classe);
            if (fc && Fiche(*fc).Texte(VDXCLA::LibelleCle).ends_with('*')) continue;
            const std::string libelleClasse(fc ? Fiche(*fc).Texte(VDXCLA::Libelle) : "Libell\xE9 inconnu");
            for (const std::string& cip : copies.parClasse.at(classe)) {
                const std::string* id = cip == code ? nullptr : copies.Fiche("VDXIDPRO", cip);
                if (!id) continue;
                const Fiche f(*id);
                if (!DosagesEgaux(produit.Texte(VDXIDPRO::Dosage), f.Texte(VDXIDPRO::Dosage)) ||
                    !FormesCompatibles(produit.Texte(VDXIDPRO::CodeForme), f.Texte(VDXIDPRO::CodeForme)) ||
                    (classe.starts_with('Z') && f.Texte(VDXIDPRO::Denomination) != nom) ||
                    ages(f.Texte(VDXIDPRO::Denomination), agesProduit) != agesProduit)
                    continue;
                Rangee r{{}, 0};
                LigneOptimisation& l = r.l;
                l.Prix = "0000000";
                if (const std::string* p = copies.Fiche("VDXPRO", cip)) {
                    const Fiche pr(*p);
                    if (pr.Entier(VDXPRO::Drapeaux) & VDXPRO::Hospitalier || !pr.Texte(VDXPRO::Suppression).empty()) continue;
                    l.Prix = pr.Texte(VDXPRO::DonneeEco2);
                    if (const std::string* t = copies.Fiche("VDXTSS", pr.Texte(VDXPRO::CodeTSS)))
                        l.TauxRemboursement = Fiche(*t).Reel(VDXTSS::Taux);
                    if (const std::string* lab = copies.Fiche("VDXLAB", pr.Texte(VDXPRO::CodeLaboratoire)))
                        l.Laboratoire = Fiche(*lab).Texte(VDXLAB::Libelle);
                }
                const float nombre = f.Reel(VDXIDPRO::QuantitePresentation);
                l.LibelleProduit = std::string(f.Texte(VDXIDPRO::Denomination)) + " " +
                                   std::string(f.Texte(VDXIDPRO::Dosage)) + ", " + copies.Forme(f.Texte(VDXIDPRO::CodeForme)) +
                                   ", " + std::to_string(static_cast<int>(nombre)) + " " +
                                   copies.Mot("VDXIDPRE", f.Entier(VDXIDPRO::CodePresentation), nombre > 1);
                const float contenu = f.Entier(VDXIDPRO::CodeUnitePrise) == unite ? contenance(f) : 0.f;
                l.NombreBoites = contenu ? static_cast<int32_t>(quantite / contenu + 0.9999) : 3;
                l.Conditionnement = copies.Mot("VDXIDCON", f.Entier(VDXIDPRO::CodeContenant), l.NombreBoites > 1);
                l.CodeClasse = classe;
                l.LibelleClasse = libelleClasse;
                l.CodeCIP = cip;
                if (l.Prix == "0000000") {
                    l.Rang = 3;
                } else {
                    r.cout = std::stoll(l.Prix) * l.NombreBoites;
                    l.Rang = r.cout < reference ? 0 : r.cout == reference ? 1 : 2;
                }
                rangees.push_back(std::move(r));
            }
        }
        std::stable_sort(rangees.begin(), rangees.end(), [](const Rangee& a, const Rangee& b) {
            return std::pair(a.l.Rang, a.cout) < std::pair(b.l.Rang, b.cout);
        });
        std::vector<LigneOptimisation> lignes;
        for (Rangee& r : rangees) lignes.push_back(std::move(r.l));
        n = lignes.size();
        Resultat resultat(&tableau, GabaritDe<LigneOptimisation>(), -60);
        resultat.Prend(LignesSansCleSelon<LigneOptimisation>(std::move(lignes)));
        resultat.Livre();
    }
    state.counters["lignes"] = static_cast<double>(n);
    VideTableau(tableau, GabaritDe<LigneOptimisation>());
    hote::Detruit(tableau);
    DeConnection2_Vdx();
}
BENCHMARK(Reference_Optimisation)->Unit(benchmark::kMicrosecond);

// The packages of 95 tablets of it: 4 boxes.
void Boitage(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier(Atorvastatine);
    const std::optional<ConditionnementProduit> produit = [&] {
        const DansContexte dans(session());
        return ConditionnementDe(code);
    }();
    BSTR mot = nullptr;
    int32_t n = 0;
    for (auto _ : state) n = Boitage_Vdx(code.c_str(), produit ? produit->Premiere.Code : 0, 95, &mot);
    state.counters["boites"] = n;
    if (n <= 0) state.SkipWithError("no package");
    SysFreeString(mot);
    DeConnection2_Vdx();
}
BENCHMARK(Boitage);

// A host's array of criteria "champ@Operation@Code@qualifiant", in mode 0.
SAFEARRAY* TableauDeCriteres(const std::vector<CritereRecherche>& criteres) {
    SAFEARRAY* t = hote::CreeTableau(hote::TailleFiche(4));
    hote::Redimensionne(t, static_cast<uint32_t>(criteres.size()));
    auto* e = static_cast<VdxCritereRecherche*>(t->pvData);
    for (size_t i = 0; i < criteres.size(); ++i) {
        e[i].champ = criteres[i].champ;
        e[i].Operation = criteres[i].Operation;
        hote::RangeOctets(&e[i].Code, criteres[i].Code);
        e[i].qualifiant = criteres[i].qualifiant;
    }
    return t;
}
const Gabarit GabaritCritere{TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Entier};

// Tablets (forms "CP..."), Teva's left out, by the oral route, from a new
// set; then the first 100 products of the set read back.
const std::vector<CritereRecherche> CriteresComprimes = {{3, 0, "CP", 0}, {5, 1, "TEV3", 0}, {12, 0, "A11", 0}};
constexpr int32_t ProduitsLus = 100;

void RechercheCriteres(benchmark::State& state) {
    if (!Connecte(state)) return;
    SAFEARRAY* criteres = TableauDeCriteres(CriteresComprimes);
    int32_t n = 0;
    for (auto _ : state) {
        int32_t handle = 0;
        n = Recherche_Vdx(&criteres, &handle, 0, 0, "F", 0, 0);
        for (int32_t rang = 1; rang <= std::min(n, ProduitsLus); ++rang) {
            ChaineHote code, libelle;
            GetRecherche_Vdx(rang, code.Adresse(), libelle.Adresse(), &handle);
        }
        FreeRecherche_Vdx(&handle);
    }
    state.counters["produits"] = n;
    if (n <= ProduitsLus) state.SkipWithError("too few products");
    VideTableau(criteres, GabaritCritere);
    hote::Detruit(criteres);
    DeConnection2_Vdx();
}
BENCHMARK(RechercheCriteres)->Unit(benchmark::kMicrosecond);

// The same walks over sorted copies of the keys in memory: the forms by
// prefix, the laboratory's products, a probe of the routes for each code,
// the merges by binary search, and the 100 labels read and delivered.
void Reference_RechercheCriteres(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::map<std::string, std::vector<std::string>> cles;
    std::map<std::string, std::string, std::less<>> produits;
    {
        const DansContexte dans(session());
        for (const char* nom : {"VDXIDFOP", "VDXLABP", "VDXIDPVO", "VDXPRO"}) {
            const vdx::Table& t = *TableNommee(nom);
            TablesOuvertes ouvertes{&t};
            Curseur c(t);
            for (auto p = c.Premiere(); p; p = c.Suivante()) {
                if (std::string_view(nom) == "VDXPRO")
                    produits.emplace(std::string(c.Cle()), FicheA(t, *p));
                else
                    cles[nom].emplace_back(c.Cle());
            }
        }
    }
    const auto prefixe = [&](const char* table, std::string_view debut, size_t largeur) {
        const std::vector<std::string>& k = cles.at(table);
        Candidats candidats;
        for (auto it = std::lower_bound(k.begin(), k.end(), debut); it != k.end() && it->starts_with(debut); ++it)
            candidats.push_back(CodeDe(std::string_view(*it).substr(largeur, 7)));
        std::ranges::sort(candidats);
        return candidats;
    };
    const std::vector<std::string>& voies = cles.at("VDXIDPVO");
    size_t n = 0;
    for (auto _ : state) {
        EnsembleCIP e;
        FusionEnsemble(e, prefixe("VDXIDFOP", "CP", 4), false);
        FusionEnsemble(e, prefixe("VDXLABP", "TEV3", 4), true);
        for (size_t i = 0; i < e.Codes.size();) {
            const std::string sonde = TexteDe(e.Codes[i]) + "A11";
            const auto it = std::lower_bound(voies.begin(), voies.end(), sonde);
            if (it != voies.end() && it->find(sonde) == std::string::npos && i + 1 != e.Codes.size())
                e.Codes.erase(e.Codes.begin() + static_cast<std::ptrdiff_t>(i));
            else
                ++i;
        }
        n = e.Codes.size();
        for (size_t rang = 0; rang < std::min<size_t>(n, ProduitsLus); ++rang) {
            const std::string cip = TexteDe(e.Codes[rang]);
            const auto p = produits.lower_bound(cip);
            ChaineHote code, libelle;
            hote::RangeOctets(code.Adresse(), cip);
            hote::RangeOctets(libelle.Adresse(), Fiche(p->second).Texte(VDXPRO::Libelle));
        }
    }
    state.counters["produits"] = static_cast<double>(n);
    DeConnection2_Vdx();
}
BENCHMARK(Reference_RechercheCriteres)->Unit(benchmark::kMicrosecond);

// The 200 products of one laboratory that add no interaction to a
// prescription of five products.
void RechercheInteractions(benchmark::State& state) {
    if (!Connecte(state)) return;
    std::string prescription;
    for (const char* debut : {"COUMADINE 2MG", "CORDARONE 200MG", "ZOCOR 20MG", "ZECLAR 500MG", "DOLIPRANE 1000MG CPR"})
        prescription += (prescription.empty() ? "" : "|") + Premier(debut);
    SAFEARRAY* laboratoire = TableauDeCriteres({{5, 0, "GLA0", 0}});
    SAFEARRAY* interactions = TableauDeCriteres({{11, 0, prescription, 0}});
    int32_t base = 0;
    const int32_t taille = Recherche_Vdx(&laboratoire, &base, 0, 0, "F", 0, 0);
    int32_t n = 0;
    for (auto _ : state) {
        int32_t copie = 0;
        CopyRecherche_Vdx(&base, &copie);
        n = Recherche_Vdx(&interactions, &copie, 0, 0, "F", 0, 0);
        FreeRecherche_Vdx(&copie);
    }
    state.counters["ensemble"] = taille;
    state.counters["restent"] = n;
    if (n < 0) state.SkipWithError("the search failed");
    FreeRecherche_Vdx(&base);
    for (SAFEARRAY* t : {laboratoire, interactions}) {
        VideTableau(t, GabaritCritere);
        hote::Detruit(t);
    }
    DeConnection2_Vdx();
}
BENCHMARK(RechercheInteractions)->Unit(benchmark::kMillisecond);

void Economique(benchmark::State& state) {
    if (!Connecte(state)) return;
    const std::string code = Premier("DOLIPRANE 1000MG CPR B/8");
    VdxEconomique e{};
    int32_t n = 0;
    for (auto _ : state) n = Economique_Vdx(code.c_str(), &e);
    if (n != 1) state.SkipWithError("no economic data");
    essai::LibereFiche(&e, GabaritDe<FicheEconomique>());
    DeConnection2_Vdx();
}
BENCHMARK(Economique)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
