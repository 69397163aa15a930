#include "checks/interactions.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <unordered_set>
#include <memory>
#include <optional>
#include <span>

#include "checks/contreindications.h"
#include "checks/tri.h"
#include "products/composition.h"
#include "products/fiches.h"
#include "products/lignes_dc.h"
#include "products/produits.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

VDX_TABLE(TableComposants, "VDXVCOMP")
VDX_TABLE(TableComposantsBis, "VDXVCOME")
VDX_TABLE(TableSubstances, "VDXVPA")
VDX_TABLE(TableSynonymes, "VDXWSYNC")
VDX_TABLE(TableClassesSubstance, "VDXZICLC")
VDX_TABLE(TableClasses, "VDXZICLA")
VDX_TABLE(TablePeres, "VDXZICLP")
VDX_TABLE(TableCouples, "VDXZICOU")
VDX_TABLE(TableTypes, "VDXZITYP")
VDX_TABLE(TableGravites, "VDXZIGRA")
VDX_TABLE(TableVoiesProduit, "VDXIDPVO")
VDX_TABLE(TableVoies, "VDXIDVOI")
VDX_TABLE(TableParents, "VDXWPEFI")
VDX_TABLE(TableLignesDCI, "VDXYDCI")
VDX_TABLE(TableProduitsDesLignesDCI, "VDXYDCIP")

// The file a failed first lookup of the couples is recorded under.
constexpr char FichierCouples[] = "VDXZICLC.NDX";
// The code of the second product of a row that has none.
// The longest label of a line.
constexpr size_t LibelleLigneMax = 127;
// The severities ProduitInteractions_Vdx leaves out.
constexpr int32_t GravitesExclues[] = {5, 6};

// The tables a line is built from.
std::span<const Table* const> TablesLigne() {
    static const Table* const tables[] = {&TableProduits(),   &TableComposants(),       &TableComposantsBis(),
                                          &TableSubstances(), &TableSynonymes(),        &TableClassesSubstance(),
                                          &TableClasses(),    &TablePeres(),            &TableVoiesProduit(),
                                          &TableVoies()};
    return tables;
}

// The lines the analyses built, kept while every table a line is read from
// reads the same (the base, and the state of both files of each, held open
// by the caller): a prescription checked again as it grows builds only its
// new lines. A table whose state is unknown keeps nothing.
class LignesConstruites {
public:
    static LignesConstruites& Courantes() {
        static LignesConstruites memo;
        std::vector<magasin::EtatLecture> etats;
        for (const Table* t : Lues())
            for (int numero : {t->donnees, t->index()}) etats.push_back(magasin::EtatFichier(numero));
        const std::string& base = ContexteCourant().BaseFichiers;
        const bool connus = std::ranges::none_of(etats, [](const magasin::EtatLecture& e) { return e == magasin::EtatLecture{}; });
        if (!connus || memo.base_ != base || memo.etats_ != etats || memo.lignes_.size() >= LignesGardees) {
            memo.lignes_.clear();
            memo.base_ = connus ? base : std::string();
            memo.etats_ = connus ? std::move(etats) : std::vector<magasin::EtatLecture>();
        }
        memo.garde_ = connus;
        return memo;
    }

    // The tables a line is read from.
    static std::span<const Table* const> Lues() {
        static const std::vector<const Table*> tables = [] {
            std::vector<const Table*> t(TablesLigne().begin(), TablesLigne().end());
            t.push_back(&TableLignesDCI());
            t.push_back(&TableProduitsDesLignesDCI());
            return t;
        }();
        return tables;
    }

    std::shared_ptr<const LignePrescription> Ligne(const std::string& code, std::string_view libelleAbsent) {
        const auto construit = [&] { return std::make_shared<const LignePrescription>(ConstruitLigne(code, libelleAbsent)); };
        if (!garde_) return construit();
        std::shared_ptr<const LignePrescription>& ligne = lignes_[code];
        if (!ligne) ligne = construit();
        return ligne;
    }

private:
    static constexpr size_t LignesGardees = 10000;
    std::string base_;
    std::vector<magasin::EtatLecture> etats_;
    std::unordered_map<std::string, std::shared_ptr<const LignePrescription>> lignes_;
    bool garde_ = false;
};

// The entries of a "|"-separated list, up to its first empty one.
std::vector<std::string_view> Entrees(std::string_view liste) {
    std::vector<std::string_view> entrees;
    while (!liste.empty()) {
        const size_t barre = liste.find('|');
        const std::string_view entree = liste.substr(0, barre);
        if (entree.empty()) break;
        entrees.push_back(entree);
        if (barre == std::string_view::npos) break;
        liste.remove_prefix(barre + 1);
    }
    return entrees;
}

int32_t Entier(std::string_view texte) {
    int32_t n = 0;
    std::from_chars(texte.data(), texte.data() + texte.size(), n);
    return n;
}

void Remplace(std::string& texte, std::string_view marque, std::string_view par) {
    for (size_t p = texte.find(marque); p != std::string::npos; p = texte.find(marque, p + par.size()))
        texte.replace(p, marque.size(), par);
}

// The substances of a line: the components of both lists admitted to the
// analysis, each followed by its synonyms.
void AjouteSubstances(LignePrescription& ligne) {
    struct Liste {
        const Table& table;
        ChampEntier substance;
        ChampEntier admis;
    };
    const Liste listes[] = {{TableComposants(), VDXVCOMP::CodeSubstance, VDXVCOMP::Interactions},
                            {TableComposantsBis(), VDXVCOME::CodeSubstance, VDXVCOME::Interactions}};
    const std::string debut = CleTexte(ligne.CodeCIP, VDXVCOMP::CodeCIP.capacite());
    const auto tient = [&ligne](int32_t code) {
        for (const SubstanceLigne& s : ligne.Substances)
            if (s.CodeSubstance == code) return true;
        return false;
    };
    for (const Liste& l : listes) {
        Curseur composants(l.table);
        for (auto p = composants.PremiereAvec(debut); p; p = composants.SuivanteAvec(debut)) {
            const std::string octets = FicheA(l.table, *p);
            const Fiche composant(octets);
            const int32_t code = composant.Entier(l.substance);
            Curseur substances(TableSubstances());
            const auto ps = substances.Egale(CleEntiers({code}));
            std::string fiche = ps ? FicheA(TableSubstances(), *ps) : std::string();
            const Fiche substance(fiche);
            const std::string libelle =
                ps ? std::string(substance.Texte(VDXVPA::Libelle)) : messages::CodeIntrouvable(std::to_string(code));
            if (composant.Entier(l.admis) == 0 || (ps && substance.Entier(VDXVPA::Interactions) == 0) || tient(code))
                continue;
            ligne.Substances.push_back({code, code, libelle});
            Curseur synonymes(TableSynonymes());
            const std::string cle = CleEntiers({code});
            for (auto q = synonymes.PremiereAvec(cle); q; q = synonymes.SuivanteAvec(cle)) {
                const int32_t synonyme = LitMot(synonymes.Cle(), 4);
                // Against CodeSubstance, not CodeSynonyme, as the base expects.
                if (!tient(synonyme)) ligne.Substances.push_back({code, synonyme, libelle});
            }
        }
    }
}

// The classes of the line's substances, then their ancestors.
void AjouteClasses(LignePrescription& ligne) {
    std::vector<ClasseLigne>& classes = ligne.Classes;
    const auto classe = [](int32_t code) {
        Curseur c(TableClasses());
        const auto p = c.Egale(CleEntiers({code}));
        if (!p) return std::pair{messages::CodeIntrouvable(std::to_string(code)), int32_t{0}};
        const std::string fiche = FicheA(TableClasses(), *p);
        const Fiche f(fiche);
        return std::pair{std::string(f.Texte(VDXZICLA::Libelle)), f.Entier(VDXZICLA::ClasseActive)};
    };
    const auto tientRacine = [&](int32_t code) {
        for (const ClasseLigne& c : classes)
            if (c.CodeClasseRacine == code) return true;
        return false;
    };
    const auto tient = [&](int32_t code) {
        for (const ClasseLigne& c : classes)
            if (c.CodeClasse == code) return true;
        return false;
    };

    Curseur cles(TableClassesSubstance());
    for (size_t s = 0; s < ligne.Substances.size(); ++s) {
        const std::string debut = CleEntiers({ligne.Substances[s].CodeSynonyme});
        for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut)) {
            const int32_t associee = LitMot(cles.Cle(), 4);
            const int32_t code = LitMot(cles.Cle(), 8);
            if (tientRacine(code)) continue;
            auto [libelle, active] = classe(code);
            int32_t indexAssociee = -1;
            if (associee != 0) {
                for (size_t a = 0; a < ligne.Substances.size() && indexAssociee < 0; ++a)
                    if (ligne.Substances[a].CodeSynonyme == associee) indexAssociee = static_cast<int32_t>(a);
                if (indexAssociee < 0) continue;
            }
            classes.push_back({static_cast<int32_t>(s), indexAssociee, code, code, std::move(libelle), active});
        }
    }

    // Ancestors: the parents of each class found so far, then the parents
    // of every parent met, climbed once each (a class is added only once,
    // so a cycle ends).
    Curseur peres(TablePeres());
    std::vector<int32_t> enAttente;
    const size_t limite = classes.size();
    for (size_t c = 0; c < limite; ++c) {
        const ClasseLigne source = classes[c];
        const auto ajoute = [&](int32_t pere, int32_t indexAssociee) {
            if (tient(pere)) return false;
            auto [libelle, active] = classe(pere);
            classes.push_back({source.IndexSubstance, indexAssociee, source.CodeClasseRacine, pere,
                               std::move(libelle), active});
            return true;
        };
        const std::string debut = CleEntiers({source.CodeClasseRacine});
        for (auto p = peres.PremiereAvec(debut); p; p = peres.SuivanteAvec(debut)) {
            const int32_t pere = LitMot(peres.Cle(), 4);
            if (ajoute(pere, -1)) enAttente.push_back(pere);
        }
        std::vector<int32_t> aGravir(enAttente.begin(), enAttente.end());
        while (!aGravir.empty()) {
            const int32_t classeGravie = aGravir.back();
            aGravir.pop_back();
            const std::string cle = CleEntiers({classeGravie});
            for (auto p = peres.PremiereAvec(cle); p; p = peres.SuivanteAvec(cle)) {
                const int32_t pere = LitMot(peres.Cle(), 4);
                if (pere != 0 && ajoute(pere, source.IndexAssociee)) aGravir.push_back(pere);
            }
        }
    }
}

// A couple as the index holds it: its second class, its kind and its
// position, in key order under its first class.
struct EntreeCouple {
    int32_t classeB;
    int32_t genre;
    magasin::Position position;
};

// The couples of every class, from VDXZICOU held open by the caller: built
// once and kept while the base and both files of the table read the same
// (so, for a connection, until the tables are replaced). A call then reads
// only the records of the couples that can give a row.
class IndexCouples {
public:
    static const IndexCouples& Courant() {
        static IndexCouples memo;
        const Table& t = TableCouples();
        const magasin::EtatLecture donnees = magasin::EtatFichier(t.donnees),
                                   index = magasin::EtatFichier(t.index());
        const std::string& base = ContexteCourant().BaseFichiers;
        const bool connu = donnees != magasin::EtatLecture{} && index != magasin::EtatLecture{};
        if (!connu || memo.base_ != base || memo.donnees_ != donnees || memo.index_ != index) {
            memo = IndexCouples();
            memo.Lit();
            if (connu) memo.base_ = base, memo.donnees_ = donnees, memo.index_ = index;
        }
        return memo;
    }

    const std::vector<EntreeCouple>& De(int32_t classe) const {
        static const std::vector<EntreeCouple> aucun;
        const auto it = parClasse_.find(classe);
        return it == parClasse_.end() ? aucun : it->second;
    }

private:
    void Lit() {
        Curseur cles(TableCouples());
        // A failed walk of the keys is recorded under the file of the classes.
        const auto marche = [](auto&& pas) {
            try {
                return pas();
            } catch (Echec& e) {
                e.fichier = FichierCouples;
                throw;
            }
        };
        for (auto p = marche([&] { return cles.Premiere(); }); p; p = marche([&] { return cles.Suivante(); })) {
            const int32_t genre = Fiche(FicheA(TableCouples(), *p)).Entier(VDXZICOU::Genre);
            parClasse_[LitMot(cles.Cle(), 0)].push_back({LitMot(cles.Cle(), 4), genre, *p});
        }
    }

    std::string base_;
    magasin::EtatLecture donnees_, index_;
    std::unordered_map<int32_t, std::vector<EntreeCouple>> parClasse_;
};

// A couple of VDXZICOU, read once.
// A couple's record, whose bytes the caller keeps.
struct Couple {
    std::string_view octets;
    Fiche f;
    int32_t genre;
    explicit Couple(std::string_view o) : octets(o), f(octets), genre(f.Entier(VDXZICOU::Genre)) {}

    std::string Texte(int n) const { return TexteDuCouple(octets, n); }
};

// A side of a row: a line and one of its classes.
struct Cote {
    const LignePrescription* ligne;
    const ClasseLigne* classe;
};

// The couples that begin with a class, in key order.
// The records of the couples that begin with a class, in key order.
template <class Fait>
void ParcourtCouples(int32_t classe, Fait&& fait) {
    Curseur couples(TableCouples());
    const std::string debut = CleEntiers({classe});
    std::optional<magasin::Position> p;
    try {
        p = couples.PremiereAvec(debut);
    } catch (Echec& e) {
        e.fichier = FichierCouples;
        throw;
    }
    for (; p; p = couples.SuivanteAvec(debut)) fait(FicheA(TableCouples(), *p));
}

// The route of a line against a couple's list: the label of the first of
// its routes that passes; an empty label when the line has no route;
// nullopt when none passes.
std::optional<std::string> VoieDe(const LignePrescription& ligne, std::string_view liste) {
    if (ligne.Voies.empty()) return std::string();
    for (const Voie& v : ligne.Voies)
        if (VoieAdmise(v.CodeVoie, liste)) return v.Libelle;
    return std::nullopt;
}

bool Filtre(const LignePrescription& ligne, std::string_view filtre, std::string_view liste) {
    bool present = false;
    for (std::string_view entree : Entrees(liste))
        for (const SubstanceLigne& s : ligne.Substances) present |= Entier(entree) == s.CodeSynonyme;
    if (filtre == "E") return present;
    if (filtre == "S") return !present;
    return filtre == "T";
}

std::string TexteDuCote(const Cote& cote) {
    const auto& s = cote.ligne->Substances;
    std::string texte = s[cote.classe->IndexSubstance].Libelle;
    if (cote.classe->IndexAssociee >= 0) texte += " + " + s[cote.classe->IndexAssociee].Libelle;
    return texte;
}

// A label by integer code, or the code followed by " : Type Inconnu".
std::string LibelleOuInconnu(const Table& table, const ChampTexte& champ, int32_t code) {
    return LibelleParCode(table, champ, code).value_or(std::to_string(code) + messages::TypeInconnu);
}

// A severity: its label (or "N : Type Inconnu") and its level (0 then).
struct Gravite {
    std::string libelle;
    int32_t niveau = 0;
};
Gravite LitGravite(int32_t code) {
    Curseur c(TableGravites());
    const auto p = c.Egale(CleEntiers({code}));
    if (!p) return {std::to_string(code) + messages::TypeInconnu, 0};
    const std::string fiche = FicheA(TableGravites(), *p);
    const Fiche f(fiche);
    return {std::string(f.Texte(VDXZIGRA::LibelleGravite)), f.Entier(VDXZIGRA::Niveau)};
}

std::string Reference(const Fiche& couple) {
    return std::string(couple.Texte(VDXZICOU::Reference1)) + " " + std::string(couple.Texte(VDXZICOU::Reference2));
}

class Appariement {
public:
    // Rows below `niveauMin` are left out.
    Appariement(std::vector<std::shared_ptr<const LignePrescription>> lignes, int32_t niveauMin)
        : lignes_(std::move(lignes)), niveauMin_(niveauMin) {}

    // The rows; the caller holds the tables of the analysis open. A couple
    // is tried alone unless it is between products, then against each later
    // line that holds its second class, whatever its kind; it is read only
    // when it is tried, so the work grows with the couples that can give a
    // row.
    std::vector<FicheInteraction2> Lignes() {
        // The active classes of the lines, by code, in the order of the lines.
        std::unordered_map<int32_t, std::vector<std::pair<size_t, const ClasseLigne*>>> porteurs;
        for (size_t j = 0; j < lignes_.size(); ++j)
            for (const ClasseLigne& cj : lignes_[j]->Classes)
                if (cj.ClasseActive) porteurs[cj.CodeClasse].emplace_back(j, &cj);
        const IndexCouples& index = IndexCouples::Courant();
        for (size_t i = 0; i < lignes_.size(); ++i)
            for (const ClasseLigne& ci : lignes_[i]->Classes) {
                if (!ci.ClasseActive) continue;
                for (const EntreeCouple& e : index.De(ci.CodeClasse)) {
                    if (e.genre != EntreProduits) Teste(CoupleA(e.position), i, ci, nullptr);
                    const auto p = porteurs.find(e.classeB);
                    if (p == porteurs.end()) continue;
                    for (const auto& [j, cj] : p->second)
                        if (j > i) Teste(CoupleA(e.position), i, ci, cj, j);
                }
            }
        TriParNiveau(lignes);
        return std::move(lignes);
    }

private:
    // A couple's record, read in place (the caller holds its table open)
    // once per call: the lines share their classes.
    const Couple& CoupleA(magasin::Position position) {
        auto it = couples_.find(position);
        if (it == couples_.end()) it = couples_.emplace(position, Couple(VueFicheA(TableCouples(), position))).first;
        return it->second;
    }

    // A label of the outside side of a row, read once per call.
    template <class Code, class Lecture>
    static const std::string& Lu(std::unordered_map<Code, std::string>& lus, const Code& code, Lecture&& lecture) {
        auto [it, nouveau] = lus.try_emplace(code);
        if (nouveau) it->second = lecture(code);
        return it->second;
    }

    // The kind and the severity of a couple, read once per call.
    const std::string& Type(int32_t code) {
        auto [it, nouveau] = types_.try_emplace(code);
        if (nouveau) it->second = LibelleOuInconnu(TableTypes(), VDXZITYP::TexteType, code);
        return it->second;
    }
    const Gravite& GraviteDe(int32_t code) {
        auto [it, nouveau] = gravites_.try_emplace(code);
        if (nouveau) it->second = LitGravite(code);
        return it->second;
    }

    // One couple for line i and class ci, against line j and class cj, or
    // alone (cj null).
    void Teste(const Couple& c, size_t i, const ClasseLigne& ci, const ClasseLigne* cj, size_t j = 0) {
        const Fiche& f = c.f;
        const std::optional<std::string> voie1 = VoieDe(*lignes_[i], f.Texte(VDXZICOU::VoiesA));
        if (!voie1) return;
        std::string voie2;
        if (c.genre == EntreProduits) {
            const std::optional<std::string> v = VoieDe(*lignes_[j], f.Texte(VDXZICOU::VoiesB));
            if (!v) return;
            voie2 = *v;
        }
        if (c.genre == ToutProduitParVoie) {
            // Every route of every other line is tried; each that passes
            // forms a row at once; the last one tried decides what follows.
            if (cj) return;
            bool derniere = false;
            for (size_t k = 0; k < lignes_.size(); ++k) {
                if (k == i) continue;
                for (const Voie& v : lignes_[k]->Voies) {
                    derniere = VoieAdmise(v.CodeVoie, f.Texte(VDXZICOU::VoiesB));
                    if (!derniere) continue;
                    j = k;
                    cj = lignes_[k]->Classes.empty() ? nullptr : &lignes_[k]->Classes[0];
                    Compose(c, {lignes_[i].get(), &ci}, {lignes_[k].get(), cj}, *voie1, voie2, {}, {});
                }
            }
            if (!derniere) return;
        }
        if (!Filtre(*lignes_[i], f.Texte(VDXZICOU::FiltreA), f.Texte(VDXZICOU::SubstancesA))) return;
        if (c.genre == EntreProduits &&
            !Filtre(*lignes_[j], f.Texte(VDXZICOU::FiltreB), f.Texte(VDXZICOU::SubstancesB)))
            return;
        const Cote second{c.genre == SubstanceExterieure ? nullptr : lignes_[j].get(), cj};
        const std::vector<std::string_view> termes = Entrees(f.Texte(VDXZICOU::TermesCondition));
        if (termes.empty()) {
            Compose(c, {lignes_[i].get(), &ci}, second, *voie1, voie2, {}, {});
            return;
        }
        // A condition holds for any patient: a row per term.
        for (std::string_view terme : termes) {
            const std::optional<std::string> fiche = FicheTerme(terme);
            const Fiche t(fiche ? std::string_view(*fiche) : std::string_view());
            Compose(c, {lignes_[i].get(), &ci}, second, *voie1, voie2, fiche ? t.Texte(VDXVAMM::CodeTerme) : terme,
                  t.Texte(VDXVAMM::Libelle));
        }
    }

    void Compose(const Couple& c, Cote premier, Cote second, const std::string& voie1, const std::string& voie2,
               std::string_view codeCondition, std::string_view libelleCondition) {
        const Fiche& f = c.f;
        FicheInteraction2 r;
        r.CodeType = f.Entier(VDXZICOU::CodeType);
        r.TexteType = Type(r.CodeType);
        const Gravite& gravite = GraviteDe(f.Entier(VDXZICOU::CodeGravite));
        if (gravite.niveau < niveauMin_) return;
        r.LibelleGravite = gravite.libelle;
        r.Niveau = gravite.niveau;
        if (c.genre == EntreProduits && f.Entier(VDXZICOU::Sens) != 1) std::swap(premier, second);
        // Two substances of the same parent make no row.
        const SubstanceLigne& substance1 = premier.ligne->Substances[premier.classe->IndexSubstance];
        const SubstanceLigne* substance2 =
            c.genre == EntreProduits ? &second.ligne->Substances[second.classe->IndexSubstance] : nullptr;
        if (Pere(substance1.CodeSubstance) == (substance2 ? Pere(substance2->CodeSubstance) : 0)) return;
        r.Voie1 = voie1;
        r.Voie2 = voie2;
        r.CIP1 = premier.ligne->CodeCIP;
        r.Libelle1 = premier.ligne->Libelle;
        r.Classe1 = premier.classe->Libelle;
        r.CodeCondition = codeCondition;
        r.LibelleCondition = libelleCondition;
        if (c.genre == EntreProduits) {
            r.CIP2 = second.ligne->CodeCIP;
            r.Libelle2 = second.ligne->Libelle;
            r.Classe2 = second.classe->Libelle;
        } else {
            r.CIP2 = SansSecondProduit;
            r.Voie2 = Lu(voies_, std::string(f.Texte(VDXZICOU::VoiesB)), LibelleVoie);
            r.Classe2 = Lu(classes_, f.Entier(VDXZICOU::ClasseB), [](int32_t code) {
                return LibelleOuIntrouvable(TableClasses(), VDXZICLA::Libelle, code);
            });
            if (c.genre == SubstanceExterieure) {
                r.Libelle2 = Lu(substances_, Entier(f.Texte(VDXZICOU::SubstancesB)), [](int32_t code) {
                    return LibelleOuIntrouvable(TableSubstances(), VDXVPA::Libelle, code);
                });
            } else {
                r.CIP2 = second.ligne->CodeCIP;
                r.Libelle2 = second.ligne->Libelle;
                if (second.classe) r.Classe2 = second.classe->Libelle;
            }
        }
        if (c.genre != SubstanceExterieure && Doublon(r)) return;

        const std::string texte1 = TexteDuCote(premier);
        if (c.genre == EntreProduits) {
            Remplace(r.TexteType, "$1", texte1);
            Remplace(r.TexteType, "$2", TexteDuCote(second));
        } else {
            Remplace(r.TexteType, "$2", texte1);
            Remplace(r.TexteType, "$1", r.Libelle2);
        }
        r.Reference = Reference(f);
        r.Texte1 = c.Texte(0);
        r.Texte2 = c.Texte(1);
        r.Texte3 = c.Texte(2);
        r.Texte4 = c.Texte(3);
        r.Niveau2 = r.Niveau;
        r.Substance2 = substance2 ? substance2->CodeSubstance : 0;
        r.Substance1Associee = Associee(premier);
        if (c.genre == EntreProduits) r.Substance2Associee = Associee(second);
        cles_.emplace(CleDoublon(r.CIP1, r.CIP2, r.Classe1, r.Classe2, r.CodeCondition));
        lignes.push_back(std::move(r));
    }

    static int32_t Associee(const Cote& cote) {
        const int32_t index = cote.classe->IndexAssociee;
        return index >= 0 ? cote.ligne->Substances[index].CodeSubstance : 0;
    }

    // A row already formed for the same two sides, in either order, under
    // the same condition.
    // The key is made in one buffer of the call, copied only when kept.
    std::string_view CleDoublon(std::string_view cip1, std::string_view cip2, std::string_view classe1,
                                std::string_view classe2, std::string_view condition) {
        cle_.clear();
        for (std::string_view partie : {condition, cip1, cip2, classe1, classe2}) cle_.append(partie).push_back('\0');
        return cle_;
    }
    bool Doublon(const FicheInteraction2& r) {
        return cles_.contains(CleDoublon(r.CIP1, r.CIP2, r.Classe1, r.Classe2, r.CodeCondition)) ||
               cles_.contains(CleDoublon(r.CIP2, r.CIP1, r.Classe2, r.Classe1, r.CodeCondition));
    }

    int32_t Pere(int32_t substance) {
        auto [it, nouveau] = peres_.try_emplace(substance, 0);
        if (nouveau) it->second = SubstancePere(substance);
        return it->second;
    }

    std::vector<std::shared_ptr<const LignePrescription>> lignes_;
    int32_t niveauMin_;
    std::unordered_map<int32_t, int32_t> peres_;
    std::unordered_map<magasin::Position, Couple> couples_;
    struct Hachage {
        using is_transparent = void;
        size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
    };
    std::unordered_set<std::string, Hachage, std::equal_to<>> cles_;  // of the rows formed, for Doublon
    std::string cle_;
    std::unordered_map<int32_t, std::string> types_;
    std::unordered_map<int32_t, Gravite> gravites_;
    std::unordered_map<std::string, std::string> voies_;
    std::unordered_map<int32_t, std::string> classes_, substances_;

public:
    std::vector<FicheInteraction2> lignes;
};

}  // namespace

std::string TexteDuCouple(std::string_view couple, int n) {
    static constexpr ChampEntier longueurs[] = {VDXZICOU::LongueurTexte1, VDXZICOU::LongueurTexte2,
                                                VDXZICOU::LongueurTexte3, VDXZICOU::LongueurTexte4};
    const Fiche f(couple);
    const auto longueur = [&f](int i) { return static_cast<size_t>(std::max(0, f.Entier(longueurs[i]))); };
    size_t debut = VDXZICOU::Longueur;
    for (int i = 0; i < n; ++i) debut += longueur(i);
    if (debut >= couple.size()) return {};
    const std::string_view texte = couple.substr(debut, longueur(n));
    return std::string(texte.substr(0, texte.find('\0')));
}

void TriParNiveau(std::vector<FicheInteraction2>& lignes) {
    TriEchangeParCle(lignes, [](const FicheInteraction2& r) { return r.Niveau; });
}

bool VoieAdmise(std::string_view code, std::string_view liste) {
    if (code.empty()) return false;
    const std::vector<std::string_view> entrees = Entrees(liste);
    for (std::string_view e : entrees)
        if (e.starts_with('-') && code.starts_with(e.substr(1))) return false;
    for (std::string_view e : entrees)
        if (!e.starts_with('-') && code.starts_with(e)) return true;
    return false;
}

LignePrescription ConstruitLigne(const std::string& codeCIP, std::string_view libelleAbsent) {
    TablesOuvertes tables(TablesLigne());
    LignePrescription ligne;
    // A line by common name stands for its substances and routes, those of
    // its products: read on the first, the line keeping its code and label.
    const std::string lu = ProduitRepresentant(codeCIP).value_or(codeCIP);
    ligne.CodeCIP = lu;
    AjouteSubstances(ligne);
    AjouteClasses(ligne);
    ligne.Voies = VoiesProduit(lu);
    ligne.CodeCIP = codeCIP;
    ligne.Libelle = LibelleProduitInterne(codeCIP).value_or(std::string(libelleAbsent));
    if (ligne.Libelle.size() > LibelleLigneMax) ligne.Libelle.resize(LibelleLigneMax);
    tables.Ferme();
    return ligne;
}

std::vector<FicheInteraction2> AnalyseInteractions(const Contexte& contexte, const std::vector<std::string>& codesCIP) {
    const DansContexte dans(contexte);
    TablesOuvertes tables(LignesConstruites::Lues());
    for (const Table* t : {&TableCouples(), &TableTypes(), &TableGravites(), &TableParents(), &TableTermes()})
        tables.Ouvre(*t);
    LignesConstruites& construites = LignesConstruites::Courantes();
    std::vector<std::shared_ptr<const LignePrescription>> lignes;
    for (const std::string& code : codesCIP)
        lignes.push_back(construites.Ligne(code, messages::LibelleSansAccentInconnu));
    std::vector<FicheInteraction2> resultat = Appariement(std::move(lignes), contexte.NiveauInteraction).Lignes();
    tables.Ferme();
    return resultat;
}

std::vector<FicheInteraction2> InteractionsDuProduit(const Contexte& contexte, const std::string& codeCIP) {
    const DansContexte dans(contexte);
    const LignePrescription ligne = ConstruitLigne(codeCIP, messages::CIPIntrouvable(codeCIP));
    std::vector<FicheInteraction2> lignes;
    TablesOuvertes tables{&TableCouples(), &TableTypes(), &TableGravites(), &TableClasses(), &TableVoies()};
    for (const ClasseLigne& ci : ligne.Classes) {
        if (!ci.ClasseActive) continue;
        ParcourtCouples(ci.CodeClasse, [&](std::string octets) {
            const Couple c(octets);
            const Fiche& f = c.f;
            const int32_t gravite = f.Entier(VDXZICOU::CodeGravite);
            if (!VoieDe(ligne, f.Texte(VDXZICOU::VoiesA)) ||
                !Filtre(ligne, f.Texte(VDXZICOU::FiltreA), f.Texte(VDXZICOU::SubstancesA)) ||
                std::ranges::find(GravitesExclues, gravite) != std::end(GravitesExclues))
                return;
            FicheInteraction2 r;
            r.CodeType = f.Entier(VDXZICOU::CodeType);
            r.TexteType = LibelleOuInconnu(TableTypes(), VDXZITYP::TexteType, r.CodeType);
            Remplace(r.TexteType, "$1", TexteDuCote({&ligne, &ci}));
            Remplace(r.TexteType, "$2", LibelleOuIntrouvable(TableClasses(), VDXZICLA::Libelle, f.Entier(VDXZICOU::ClasseB)));
            const std::vector<std::string_view> voies = Entrees(f.Texte(VDXZICOU::VoiesB));
            if (!voies.empty()) r.TexteType += " (" + LibelleVoie(voies.front()) + ")";
            Gravite g = LitGravite(gravite);
            r.LibelleGravite = std::move(g.libelle);
            r.Niveau = g.niveau;
            r.Reference = Reference(f);
            r.Niveau2 = ligne.Substances[ci.IndexSubstance].CodeSubstance;
            lignes.push_back(std::move(r));
        });
    }
    tables.Ferme();
    TriParNiveau(lignes);
    return lignes;
}

std::vector<FicheInteraction2> InteractionsDuProduitParType(const Contexte& contexte, const std::string& codeCIP) {
    std::vector<FicheInteraction2> uniques;
    for (FicheInteraction2& r : InteractionsDuProduit(contexte, codeCIP))
        if (std::ranges::none_of(uniques, [&](const FicheInteraction2& u) { return u.TexteType == r.TexteType; }))
            uniques.push_back(std::move(r));
    TriParNiveau(uniques);
    return uniques;
}

}  // namespace vdx
