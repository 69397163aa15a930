#include "checks/allergies.h"

#include <algorithm>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>

#include "checks/contreindications.h"
#include "products/codes.h"
#include "products/fiches.h"
#include "products/lignes_dc.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/allergies.h"
#include "store/layouts/composition.h"
#include "store/layouts/produits.h"
#include "store/layouts/reglementaire.h"

namespace vdx {

namespace {

VDX_TABLE(TableConcepts, "VDXWCCCO")
VDX_TABLE(TableCroisees, "VDXWALCR")
VDX_TABLE(TableSynonymes, "VDXWSYNC")
VDX_TABLE(TableNoms, "VDXVEXC")
VDX_TABLE(TableComposants, "VDXVCOMP")
VDX_TABLE(TableExcipients, "VDXVCOME")
VDX_TABLE(TableTermesProduit, "VDXVAMPC")
VDX_TABLE(TableEquivalents, "VDXVAMME")
VDX_TABLE(TableProduitsDCI, "VDXYDCIP")
VDX_TABLE(TableLignesDCI, "VDXYDCI")
VDX_TABLE(TableClassesProduits, "VDXCLAP")
VDX_TABLE(TableClasses, "VDXCLA")

// VDXWCCCO by concept (concept, component) and by component (component,
// concept); VDXCLAP by product.
constexpr int ParConcept = 0;
constexpr int ParComposant = 1;
constexpr int ClassesParProduit = 1;
// A concept's cross-allergies followed, at most.
constexpr int CroisementsMax = 5;
// The kinds of terms of a product compared, in this order.
constexpr const char* TypesTermes[] = {"2", "3"};
// Term codes are compared on their ten characters; VDXVAMME's key is a
// term and its equivalent, ten characters each.
constexpr size_t LongueurTerme = VDXVAMME::CodeTerme.capacite();

// The two integers of a key of two.
int32_t Premier(std::string_view cle) { return Fiche(cle).Entier(VDXWCCCO::CodeConcept); }
int32_t Second(std::string_view cle) { return Fiche(cle).Entier(VDXWCCCO::CodeComposant); }


// The expansion of the host's allergens into the working list.
class Developpement {
public:
    explicit Developpement(bool premierConceptSeul)
        : premierConceptSeul_(premierConceptSeul),
          tables_({&TableConcepts(), &TableCroisees(), &TableSynonymes(), &TableNoms()}) {}

    std::vector<ChaineAllergie> Liste(const std::vector<int32_t>& allergenes) {
        for (int32_t a : allergenes) Allergene(a);
        // The synonyms of every entry present now, from the last.
        for (size_t i = liste_.size(); i-- > 0;) {
            const int32_t x = liste_[i].CodeSubstance, a = liste_[i].CodeAllergene;
            AjouteSynonymes(x, a);
        }
        tables_.Ferme();
        return std::move(liste_);
    }

private:
    void Allergene(int32_t a) {
        if (a > DerniereSubstance) {
            AjouteConcept(a, a);
            AjouteCroises(a, a);
            return;
        }
        // The substance, then each of its synonyms in turn.
        Curseur synonymes(TableSynonymes());
        auto synonyme = synonymes.SuperieureOuEgale(CleEntiers({a, 0}));
        for (int32_t s = a;;) {
            Curseur parComposant(TableConcepts(), ParComposant);
            auto p = parComposant.SuperieureOuEgale(CleEntiers({s, 0}));
            if (p && Premier(parComposant.Cle()) != s) AjouteChaine(s, a, 0);
            while (p && Premier(parComposant.Cle()) == s) {
                const int32_t c = Second(parComposant.Cle());
                AjouteConcept(c, a);
                AjouteCroises(c, a);
                if (premierConceptSeul_) break;
                p = parComposant.Suivante();
            }
            if (!synonyme || Premier(synonymes.Cle()) != a) break;
            s = Second(synonymes.Cle());
            synonyme = synonymes.Suivante();
        }
    }

    void AjouteConcept(int32_t c, int32_t a) {
        Curseur composants(TableConcepts(), ParConcept);
        const std::string debut = CleEntiers({c});
        for (auto p = composants.PremiereAvec(debut); p; p = composants.SuivanteAvec(debut))
            AjouteChaine(Second(composants.Cle()), a, c);
    }

    void AjouteCroises(int32_t c, int32_t a) {
        Curseur croisees(TableCroisees());
        const std::string debut = CleEntiers({c});
        int n = 0;
        for (auto p = croisees.PremiereAvec(debut); p && n < CroisementsMax; p = croisees.SuivanteAvec(debut), ++n)
            AjouteConcept(Second(croisees.Cle()), a);
    }

    void AjouteSynonymes(int32_t x, int32_t a) {
        Curseur synonymes(TableSynonymes());
        const std::string debut = CleEntiers({x});
        for (auto p = synonymes.PremiereAvec(debut); p; p = synonymes.SuivanteAvec(debut))
            AjouteChaine(Second(synonymes.Cle()), a, 0);
    }

    void AjouteChaine(int32_t x, int32_t a, int32_t c) {
        std::string texte;
        if (x == a) {
            texte = Nom(x);
        } else {
            if (a != 0) texte = Nom(a);
            if (c != 0) texte.append(" -> ").append(Nom(c)).append(" : ");
            if (x != 0) {
                if (c == 0) texte.append(" -> ");
                texte.append(Nom(x));
            }
        }
        if (texte.size() > LongueurChaine) texte.resize(LongueurChaine);
        liste_.push_back({x, a, std::move(texte)});
    }

    // The label of a substance, excipient or concept; empty without record.
    const std::string& Nom(int32_t numero) {
        auto [it, nouveau] = noms_.try_emplace(numero);
        if (nouveau) {
            Curseur noms(TableNoms());
            if (const auto p = noms.Egale(CleEntiers({numero})))
                it->second = Fiche(VueFicheA(TableNoms(), *p)).Texte(VDXVEXC::Libelle);
        }
        return it->second;
    }

    bool premierConceptSeul_;
    TablesOuvertes tables_;
    std::vector<ChaineAllergie> liste_;
    std::unordered_map<int32_t, std::string> noms_;
};

// A product code of the host, mapped from 13 digits, which must then have
// seven characters (-30).
std::string CodeAControler(const Contexte& contexte, const std::string& code) {
    std::string cip = CIPEntrantStrict(contexte.CIP13Actif, code);
    if (cip.size() != LongueurCIP) throw Echec{Argument3};
    return cip;
}

// The label of VDXPRO, or "Code X inexistant.".
std::string LibelleVDXPRO(const std::string& cip) {
    if (const auto fiche = FicheDuCode(TableProduits(), cip)) return std::string(Fiche(*fiche).Texte(VDXPRO::Libelle));
    return messages::CodeInexistant(cip);
}

// The label of a class whose key is the code itself, or "Libellé inconnu".
std::string LibelleClasse(const std::string& code) {
    Curseur classes(TableClasses());
    const auto p = code.size() <= VDXCLA::CodeClasse.capacite() ? classes.Egale(code) : std::nullopt;
    return p ? std::string(Fiche(VueFicheA(TableClasses(), *p)).Texte(VDXCLA::Libelle)) : messages::LibelleInconnu;
}

// The check of the products against the working list and the host's terms.
class Controle {
public:
    Controle(const Contexte& contexte, const std::vector<ChaineAllergie>& liste, const std::vector<std::string>& termes)
        : contexte_(contexte),
          liste_(liste),
          termes_(termes),
          tables_({&TableTermes(), &TableTermesProduit(), &TableEquivalents(), &TableProduits(), &TableExcipients(),
                   &TableComposants(), &TableProduitsDCI(), &TableLignesDCI(), &TableNoms()}) {}

    void Termes(const std::string& cip) {
        for (const char* type : TypesTermes) {
            Curseur termes(TableTermesProduit());
            const std::string debut =
                CleTexte(cip, VDXVAMPC::CodeCIP.capacite()) + CleTexte(type, VDXVAMPC::TypeAMM.capacite());
            for (auto p = termes.PremiereAvec(debut); p; p = termes.SuivanteAvec(debut)) {
                const std::string terme(Fiche(VueFicheA(TableTermesProduit(), *p)).Texte(VDXVAMPC::CodeTerme));
                if (CompareTerme(cip, terme)) continue;
                // Nothing added: the equivalent terms, to the first that adds a row.
                Curseur equivalents(TableEquivalents());
                const std::string cle = CleTexte(terme, LongueurTerme);
                for (auto e = equivalents.PremiereAvec(cle); e; e = equivalents.SuivanteAvec(cle))
                    if (CompareTerme(cip, std::string(TexteDeCle(equivalents.Cle(), cle.size())))) break;
            }
        }
    }

    // The excipients (VDXVCOME) or the active components of a product
    // against the list; the product's label, read at its first row. Both
    // tables have the substance at the same place. The components of `cip`,
    // or those of `lus` told as `cip`'s.
    template <typename Libelle>
    void Composants(const Table& table, const std::string& cip, Libelle&& libelle) {
        Composants(table, cip, cip, std::forward<Libelle>(libelle));
    }
    template <typename Libelle>
    void Composants(const Table& table, const std::string& lus, const std::string& cip, Libelle&& libelle) {
        Curseur composants(table);
        std::optional<std::string> lu;
        for (auto p = composants.PremiereAvec(lus); p; p = composants.SuivanteAvec(lus)) {
            const int32_t substance = Fiche(VueFicheA(table, *p)).Entier(VDXVCOMP::CodeSubstance);
            for (const ChaineAllergie& e : liste_)
                if (e.CodeSubstance == substance) {
                    if (!lu) lu = libelle();
                    Ajoute({AlerteAllergene, cip, *lu, std::to_string(e.CodeAllergene), e.TexteChaine});
                }
        }
    }

    // A line by common name: the excipients with known effect of its
    // products, told by the component's label.
    void LigneDCI(const std::string& ligne) {
        Curseur produits(TableProduitsDCI());
        if (!produits.PremiereAvec(ligne)) throw Echec{CodeInconnu};
        for (auto p = produits.PremiereAvec(ligne); p; p = produits.SuivanteAvec(ligne)) {
            const std::string cip(Fiche(VueFicheA(TableProduitsDCI(), *p)).Texte(VDXYDCIP::CodeCIP));
            Curseur excipients(TableExcipients());
            for (auto e = excipients.PremiereAvec(cip); e; e = excipients.SuivanteAvec(cip)) {
                const std::string octets(VueFicheA(TableExcipients(), *e));
                const Fiche excipient(octets);
                const int32_t substance = excipient.Entier(VDXVCOME::CodeSubstance);
                const std::optional<std::string> nom = NomExistant(substance);
                if (!nom || excipient.Texte(VDXVCOME::QuantiteTexte).find(VDXVCOME::MarqueEffetNotoire) == std::string_view::npos)
                    continue;
                const std::string libelle = LibelleLigne(ligne);
                for (const ChaineAllergie& entree : liste_)
                    if (entree.CodeSubstance == substance)
                        Ajoute({AlerteAllergene, ligne, libelle, std::to_string(entree.CodeAllergene), *nom});
            }
        }
    }

    std::vector<FicheAllergie> Fiches() {
        tables_.Ferme();
        return std::move(fiches_);
    }

    // A common-name line's own label (-90 without record).
    static std::string LibelleLigne(const std::string& ligne) {
        const auto fiche = FicheDuCode(TableLignesDCI(), ligne);
        if (!fiche) throw Echec{CodeInconnu};
        return std::string(Fiche(*fiche).Texte(VDXYDCI::Libelle));
    }

private:
    // The term of a product against the host's terms of ten characters:
    // whether a row was added.
    bool CompareTerme(const std::string& cip, const std::string& terme) {
        const size_t avant = fiches_.size();
        for (const std::string& t : termes_)
            if (t.size() == LongueurTerme && t == terme) Ajoute({AlerteTerme, cip, LibelleVDXPRO(cip), t, LibelleTerme(t)});
        return fiches_.size() > avant;
    }

    static std::string LibelleTerme(const std::string& code) {
        const std::optional<std::string> fiche = FicheTerme(code);
        return fiche ? std::string(Fiche(*fiche).Texte(VDXVAMM::Libelle)) : messages::CodeInexistant(code);
    }

    static std::optional<std::string> NomExistant(int32_t numero) {
        Curseur noms(TableNoms());
        const auto p = noms.Egale(CleEntiers({numero}));
        if (!p) return std::nullopt;
        return std::string(Fiche(VueFicheA(TableNoms(), *p)).Texte(VDXVEXC::Libelle));
    }

    // One row per product and cause: the first chain met stays.
    void Ajoute(FicheAllergie fiche) {
        fiche.CodeProduit = CIPSortantStrict(contexte_.CIP13Actif, fiche.CodeProduit);
        if (!dejaVues_.emplace(fiche.CodeProduit, fiche.CodeCause).second) return;
        fiches_.push_back(std::move(fiche));
    }

    const Contexte& contexte_;
    const std::vector<ChaineAllergie>& liste_;
    const std::vector<std::string>& termes_;
    TablesOuvertes tables_;
    std::vector<FicheAllergie> fiches_;
    std::set<std::pair<std::string, std::string>> dejaVues_;
};

}  // namespace

std::vector<ChaineAllergie> DeveloppeAllergenes(const std::vector<int32_t>& allergenes, bool premierConceptSeul) {
    return Developpement(premierConceptSeul).Liste(allergenes);
}

std::vector<FicheAllergie> ControleAllergies(const Contexte& contexte, const std::vector<std::string>& termes,
                                             const std::vector<int32_t>& allergenes,
                                             const std::vector<std::string>& produits) {
    const DansContexte dans(contexte);
    const std::vector<ChaineAllergie> liste = DeveloppeAllergenes(allergenes, false);
    Controle controle(contexte, liste, termes);
    for (const std::string& code : produits) {
        const std::string cip = CodeAControler(contexte, code);
        controle.Termes(cip);
        controle.Composants(TableExcipients(), cip, [&cip] {
            return LibelleProduitInterne(cip).value_or(messages::LibelleSansAccentInconnu);
        });
        const bool ligneDCI = EstMedDC(cip);
        if (ligneDCI) controle.LigneDCI(cip);
        const auto libelle = [&cip, ligneDCI] { return ligneDCI ? Controle::LibelleLigne(cip) : LibelleVDXPRO(cip); };
        controle.Composants(TableComposants(), cip, libelle);
        // A line also has the active components of its products, those of its first.
        if (const std::optional<std::string> produit = ligneDCI ? ProduitRepresentant(cip) : std::nullopt)
            controle.Composants(TableComposants(), *produit, cip, libelle);
    }
    return controle.Fiches();
}

std::vector<FicheAllergie> RechercheExcipients(const Contexte& contexte, const std::vector<int32_t>& allergenes,
                                               const std::vector<std::string>& produits) {
    const DansContexte dans(contexte);
    const std::vector<ChaineAllergie> liste = DeveloppeAllergenes(allergenes, true);
    const std::vector<std::string> sansTermes;
    Controle controle(contexte, liste, sansTermes);
    for (const std::string& code : produits) {
        const std::string cip = CodeAControler(contexte, code);
        controle.Composants(TableExcipients(), cip, [&cip] { return LibelleVDXPRO(cip); });
    }
    return controle.Fiches();
}

std::vector<FicheClasseAllergie> ProduitsDesClasses(const Contexte& contexte, const std::vector<std::string>& produits,
                                                    const std::vector<std::string>& classes) {
    const DansContexte dans(contexte);
    TablesOuvertes tables({&TableClassesProduits(), &TableClasses(), &TableProduits()});
    std::vector<FicheClasseAllergie> fiches;
    for (const std::string& code : produits) {
        const std::string cip = CIPEntrantStrict(contexte.CIP13Actif, code);
        const std::string debut = CleTexte(cip, LongueurCIP);
        Curseur cles(TableClassesProduits(), ClassesParProduit);
        for (auto p = cles.SuperieureOuEgale(CleTexte(cip, 2 * LongueurCIP)); p && cles.Cle().starts_with(debut);
             p = cles.Suivante()) {
            // The product's class ends at its first blank or NUL.
            std::string_view classe = cles.Cle().substr(LongueurCIP, LongueurCIP);
            classe = classe.substr(0, std::min(classe.find(' '), classe.find('\0')));
            for (const std::string& h : classes) {
                if (h.empty() || !classe.starts_with(h)) continue;
                const auto produit = FicheDuCode(TableProduits(), cip);
                fiches.push_back({CIPSortantStrict(contexte.CIP13Actif, cip),
                                  produit ? std::string(Fiche(*produit).Texte(VDXPRO::Libelle)) : messages::LibelleInconnu,
                                  h, LibelleClasse(h)});
            }
        }
    }
    tables.Ferme();
    return fiches;
}

}  // namespace vdx
