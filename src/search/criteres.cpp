#include "search/criteres.h"

#include <charconv>
#include <functional>
#include <limits>

#include "checks/interactions.h"
#include "platform/notices.h"
#include "products/fiches.h"
#include "products/produits_lies.h"
#include "products/substances.h"
#include "search/termes.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {

namespace {

VDX_TABLE(TableVoiesProduits, "VDXIDPVO")
VDX_TABLE(TableTermes, "VDXVAMM")
VDX_TABLE(TableSynonymes, "VDXWSYNC")
VDX_TABLE(TableConcepts, "VDXWCCCO")
VDX_TABLE(TableAlias, "VDXWALCR")
VDX_TABLE(TableSubstancesProduits, "VDXVPAP")
VDX_TABLE(TableExcipientsProduits, "VDXVEXCP")

enum class Critere : int32_t {
    Indication = 1,
    Classe = 2,
    Forme = 3,
    Concept = 4,
    Laboratoire = 5,
    ContreIndicationPuisPrecaution = 6,
    PrecautionPuisContreIndication = 7,
    EffetIndesirable = 8,
    Patient = 9,
    DrapeauProduit = 10,
    SansInteraction = 11,
    Voie = 12,
};

void VerifieNonVide(const EnsembleCIP& ensemble) {
    if (ensemble.Codes.empty()) throw Echec{EcritureImpossible};
}

// --- Prefix criteria: classes, forms, laboratories -------------------------

int32_t ParPrefixe(EnsembleCIP& ensemble, const CritereRecherche& c, const LienProduits& lien) {
    TablesOuvertes tables{&lien.table()};
    Candidats candidats;
    if (c.Operation != 0 && ensemble.Codes.empty()) {
        // The complement over the whole index.
        const std::string code = CleDuCode(lien, c.Code);
        Curseur cles(lien.table());
        for (auto pos = cles.Premiere(); pos; pos = cles.Suivante())
            if (cles.Cle().substr(0, code.size()) != code) candidats.push_back(CodeDe(CIPDeCle(cles.Cle(), lien.largeur)));
    } else {
        ParcourtProduitsLies(lien, c.Code, [&](std::string_view cip, std::string_view) { candidats.push_back(CodeDe(cip)); });
    }
    tables.Ferme();
    Trie(candidats);
    return FusionEnsemble(ensemble, candidats, c.Operation != 0);
}

// --- The terms: indications, contra-indications, precautions, effects ----

// The products of the terms the code reaches, in this mode; with Operation
// 1 only those of an exact term: the term itself or one VDXVAMME gives as
// its equivalent; for a CISP or CIM10 code, a term of the code's label
// (none when the code was taken as a term for want of a list).
Candidats ProduitsDesTermes(const CritereRecherche& c, int32_t mode) {
    TablesOuvertes tables{&TableTermes(), &TableTermesProduits(), &TableLiensTermes(), &TableEquivalents(),
                          &TableCISP(), &TableCIM10(), &TableCISPVersCIM10()};
    const MarcheTermes marche({c.Code, c.qualifiant, mode, true});
    const auto exact = [&](std::string_view terme) {
        if (c.qualifiant == ParTerme) return marche.TermeDuCode(terme);
        if (marche.Directe() || !marche.LibelleDuCode()) return false;
        const auto p = Curseur(TableTermes()).Egale(CleTexte(terme, LongueurTerme) + std::to_string(mode));
        return p && Fiche(VueFicheA(TableTermes(), *p)).Texte(VDXVAMM::Libelle) == *marche.LibelleDuCode();
    };
    Candidats candidats;
    marche.Parcourt([&](std::string_view terme) { return c.Operation != 1 || exact(terme); },
                    [&](std::string_view, std::string_view cip) {
                        if (!CodeEcarte(cip)) candidats.push_back(CodeDe(cip));
                    });
    tables.Ferme();
    TrieSansDoublons(candidats);
    return candidats;
}

int32_t ParTermes(EnsembleCIP& ensemble, const CritereRecherche& c, int32_t mode) {
    if (mode > ModeIndication) VerifieNonVide(ensemble);
    const Candidats candidats = ProduitsDesTermes(c, mode);
    return FusionEnsemble(ensemble, candidats, mode > ModeIndication);
}

// --- A concept of the thesaurus and its synonyms ------------------------------

class ExpansionSynonymes {
public:
    explicit ExpansionSynonymes(int32_t operation) : operation_(operation) {}

    Candidats Produits(int32_t code) {
        TablesOuvertes tables{&TableSynonymes(), &TableConcepts(), &TableAlias(), &TableSubstancesProduits(),
                              &TableExcipientsProduits()};
        Curseur synonymes(TableSynonymes());
        auto position = synonymes.SuperieureOuEgale(CleEntiers({code, 0}));
        for (int32_t c = code;;) {
            if (c > DerniereSubstance) {
                ParCles(TableConcepts(), 0, c, [&](int32_t x) {
                    DuComposant(x);
                    if (operation_ == 1) Profonde(x);
                });
            } else if (operation_ == 1) {
                DuConcept(c);
                Profonde(c);
            } else if (operation_ == 0) {
                DuComposant(c);
            }
            if (!position || LitMot(synonymes.Cle(), 0) != code) break;
            c = LitMot(synonymes.Cle(), 4);
            position = synonymes.Suivante();
        }
        tables.Ferme();
        TrieSansDoublons(candidats_);
        return std::move(candidats_);
    }

private:
    // Each y of the keys (x, y) of a table of two integers.
    static void ParCles(const Table& table, int cle, int32_t x, const std::function<void(int32_t)>& chacun) {
        const std::string debut = CleEntiers({x});
        Curseur cles(table, cle);
        for (auto p = cles.PremiereAvec(debut); p; p = cles.SuivanteAvec(debut)) chacun(LitMot(cles.Cle(), 4));
    }

    // The products of a substance or an excipient, but those whose code
    // begins with "8" or "1".
    void DuComposant(int32_t x) {
        ParcourtProduitsDuComposant(x, [&](std::string_view cip, const char*) {
            if (!CodeEcarte(cip)) candidats_.push_back(CodeDe(cip));
        });
    }
    void DuConcept(int32_t x) {
        ParCles(TableConcepts(), 0, x, [&](int32_t y) { DuComposant(y); });
    }
    // The walks below the top level drop their failures.
    void Alias(int32_t x) {
        ParCles(TableAlias(), 0, x, [&](int32_t y) { Silencieux([&] { DuConcept(y); }); });
    }
    void Profonde(int32_t x) {
        Silencieux([&] {
            ParCles(TableConcepts(), 1, x, [&](int32_t y) {
                Silencieux([&] { DuConcept(y); });
                Silencieux([&] { Alias(y); });
            });
        });
    }
    template <class F>
    static void Silencieux(F&& marche) {
        try {
            marche();
        } catch (const Echec&) {
            // A failure inside a deeper walk leaves what it found.
        }
    }

    const int32_t operation_;
    Candidats candidats_;
};

int32_t ParConcept(EnsembleCIP& ensemble, const CritereRecherche& c) {
    if (c.Operation == 1) VerifieNonVide(ensemble);
    int32_t code = 0;
    std::from_chars(c.Code.data(), c.Code.data() + c.Code.size(), code);
    const Candidats candidats = ExpansionSynonymes(c.Operation).Produits(code);
    return FusionEnsemble(ensemble, candidats, c.Operation != 0);
}

// --- The patient's conditions ---------------------------------------------

// A term of a product stands for this patient: it applies, and one of its
// conditions at least is set.
bool TermeDuPatient(const Fiche& terme, const ProfilArguments& patient) {
    bool applique = true, defini = false;
    const auto dans = [](int32_t valeur, int32_t min, int32_t max) { return valeur >= min && valeur < max; };
    if (terme.Entier(VDXVAMM::AgeMax) != 0 && patient.Age >= 1) {
        defini = true;
        applique &= dans(patient.Age, terme.Entier(VDXVAMM::AgeMin), terme.Entier(VDXVAMM::AgeMax));
    }
    for (auto [valeur, min, max] : {std::tuple{patient.Poids, VDXVAMM::PoidsMin, VDXVAMM::PoidsMax},
                                    {patient.Grossesse, VDXVAMM::GrossesseMin, VDXVAMM::GrossesseMax}})
        if (terme.Entier(max) != 0) {
            defini = true;
            applique &= valeur != 0 && dans(valeur, terme.Entier(min), terme.Entier(max));
        }
    if (const std::string_view sexe = terme.Texte(VDXVAMM::SexeTerme); !sexe.empty()) {
        defini = true;
        applique &= sexe[0] == patient.Sexe;
    }
    if (terme.Entier(VDXVAMM::AllaitementTerme) != 0 && patient.Allaitement != 0) defini = true;
    return applique && defini;
}

// Each code, its contra-indications then its precautions; a term that
// stands for the patient takes out the code at the walk's position, then
// the walk goes on one position lower, so that a further term of the same
// product takes out the one before it. The last code stays.
int32_t ParPatient(EnsembleCIP& ensemble, const ProfilArguments& patient) {
    VerifieNonVide(ensemble);
    TablesOuvertes tables{&TableTermesProduits(), &TableTermes()};
    std::vector<CodeEnsemble>& codes = ensemble.Codes;
    for (const char type : {'2', '3'}) {
        Curseur termes(TableTermesProduits());
        for (int32_t i = 0; i < static_cast<int32_t>(codes.size()); ++i) {
            const std::string sonde = CleTexte(TexteDe(codes[static_cast<size_t>(i)]), LongueurCIP) + type;
            for (auto p = termes.PremiereAvec(sonde); p; p = termes.SuivanteAvec(sonde)) {
                const std::string_view terme = Fiche(VueFicheA(TableTermesProduits(), *p)).Texte(VDXVAMPC::CodeTerme);
                const auto t = Curseur(TableTermes()).Egale(CleTexte(terme, LongueurTerme) + type);
                if (!t || !TermeDuPatient(Fiche(VueFicheA(TableTermes(), *t)), patient)) continue;
                if (i >= 0 && i != static_cast<int32_t>(codes.size()) - 1) {
                    codes.erase(codes.begin() + i);
                    --i;
                }
            }
        }
    }
    tables.Ferme();
    return ensemble.Nombre();
}

// --- Walks that take codes out where they stand -------------------------------

// Takes out, position by position, the codes `sort` says must go; after a
// removal the position stays. With `garderDernier` the code at the last
// position at the time stays, and with `garderPremier` the first.
void Retire(EnsembleCIP& ensemble, const std::function<bool(const std::string& cip)>& sort, bool garderPremier,
            bool garderDernier) {
    std::vector<CodeEnsemble>& codes = ensemble.Codes;
    for (size_t i = 0; i < codes.size();) {
        const bool garde = (garderPremier && i == 0) || (garderDernier && i + 1 == codes.size());
        if (!garde && sort(TexteDe(codes[i])))
            codes.erase(codes.begin() + static_cast<std::ptrdiff_t>(i));
        else
            ++i;
    }
}

int32_t ParDrapeau(EnsembleCIP& ensemble, int32_t operation) {
    VerifieNonVide(ensemble);
    TablesOuvertes tables{&TableProduits()};
    Retire(
        ensemble,
        [&](const std::string& cip) {
            const auto fiche = FicheDuCode(TableProduits(), cip);
            if (!fiche) return false;
            const bool leve = (Fiche(*fiche).Entier(VDXPRO::Drapeaux) & VDXPRO::Dopant) != 0;
            return operation == 1 ? leve : !leve;
        },
        true, true);
    tables.Ferme();
    return ensemble.Nombre();
}

// The codes of a prescription: pieces of fewer than seven characters are
// dropped; the others go as they stand, a 13-digit one mapped.
std::vector<std::string> CodesDeLaPrescription(const Contexte& contexte, std::string_view liste) {
    std::vector<std::string> codes;
    for (size_t debut = 0; debut <= liste.size();) {
        const size_t fin = std::min(liste.find('|', debut), liste.size());
        const std::string_view piece = liste.substr(debut, fin - debut);
        if (piece.size() >= LongueurCIP) codes.push_back(CIPEntrantStrict(contexte.CIP13Actif, std::string(piece)));
        debut = fin + 1;
    }
    return codes;
}

// The interactions of a list, as Interactions_Vdx counts them; its failure
// as its code.
int32_t NombreInteractions(const Contexte& contexte, const std::vector<std::string>& codes) {
    if (codes.empty()) return 0;
    try {
        return static_cast<int32_t>(AnalyseInteractions(contexte, codes).size());
    } catch (const Echec& e) {
        return e.code;
    }
}

// The interactions the prescription holds tell it, with a message; a code
// of the set that adds any goes. A code of the list that can't be mapped
// makes every count a failure, none above the first: nothing goes.
int32_t SansNouvelleInteraction(const Contexte& contexte, EnsembleCIP& ensemble, const CritereRecherche& c) {
    std::vector<std::string> codes;
    try {
        codes = CodesDeLaPrescription(contexte, c.Code);
    } catch (const Echec&) {
        return ensemble.Nombre();
    }
    const int32_t base = NombreInteractions(contexte, codes);
    if (base > 0) notices().BoiteMessage(messages::InteractionsEnCours, messages::TitreAttention, StyleExclamation);
    Retire(
        ensemble,
        [&](const std::string& cip) {
            codes.push_back(cip);
            const int32_t n = NombreInteractions(contexte, codes);
            codes.pop_back();
            return n > base;
        },
        false, false);
    return ensemble.Nombre();
}

// A route given as a substring of the keys (CodeCIP then route code).
constexpr size_t LongueurSondeVoie = 12;
constexpr size_t LongueurRefusee = 2;

int32_t ParVoie(EnsembleCIP& ensemble, const CritereRecherche& c) {
    if (c.Code.size() == LongueurRefusee) throw Echec{NonConnecte};
    TablesOuvertes tables{&TableVoiesProduits()};
    Curseur cles(TableVoiesProduits());
    const auto texte = [&] { return TexteDeCle(cles.Cle(), 0); };
    if (ensemble.Codes.empty()) {
        Candidats candidats;
        for (auto p = cles.Premiere(); p; p = cles.Suivante()) {
            const std::string_view cle = texte();
            const std::string_view cip = CIPDeCle(cle, 0);
            // The first character against "8", the second against "1".
            if (cle.find(c.Code) == std::string_view::npos || cip.starts_with('8') || cip.substr(1, 1) == "1") continue;
            candidats.push_back(CodeDe(cip));
        }
        Trie(candidats);
        FusionEnsemble(ensemble, candidats, false);
    } else {
        const bool exclure = c.Operation != 0;
        Retire(
            ensemble,
            [&](const std::string& cip) {
                const std::string sonde = (CleTexte(cip, LongueurCIP) + c.Code).substr(0, LongueurSondeVoie);
                const std::string_view attendu = TexteDeCle(sonde, 0);
                if (!cles.SuperieureOuEgale(CleTexte(sonde, LongueurSondeVoie))) return false;
                const bool tient = texte().find(attendu) != std::string_view::npos;
                return exclure ? tient : !tient;
            },
            false, !exclure);
    }
    tables.Ferme();
    return ensemble.Nombre();
}

}  // namespace

bool CritereActif(const CritereRecherche& critere) {
    return critere.champ >= ChampMin && critere.champ <= ChampMax && !critere.Code.empty();
}

int32_t AppliqueCritere(const Contexte& contexte, EnsembleCIP& ensemble, const CritereRecherche& c,
                        const ProfilArguments& patient) {
    switch (static_cast<Critere>(c.champ)) {
        case Critere::Indication:
            return ParTermes(ensemble, c, ModeIndication);
        case Critere::Classe:
            return ParPrefixe(ensemble, c, liens::Classes);
        case Critere::Forme:
            return ParPrefixe(ensemble, c, liens::Formes);
        case Critere::Concept:
            return ParConcept(ensemble, c);
        case Critere::Laboratoire:
            return ParPrefixe(ensemble, c, liens::Laboratoires);
        case Critere::ContreIndicationPuisPrecaution:
            ParTermes(ensemble, c, ModeContreIndication);
            return ParTermes(ensemble, c, ModePrecaution);
        case Critere::PrecautionPuisContreIndication:
            ParTermes(ensemble, c, ModePrecaution);
            return ParTermes(ensemble, c, ModeContreIndication);
        case Critere::EffetIndesirable:
            return ParTermes(ensemble, c, ModeEffet);
        case Critere::Patient:
            return ParPatient(ensemble, patient);
        case Critere::DrapeauProduit:
            return ParDrapeau(ensemble, c.Operation);
        case Critere::SansInteraction:
            return SansNouvelleInteraction(contexte, ensemble, c);
        case Critere::Voie:
            return ParVoie(ensemble, c);
        default:
            return ensemble.Nombre();
    }
}

int32_t Recherche(const Contexte& contexte, const std::vector<CritereRecherche>& criteres, int32_t& handle,
                  const ProfilArguments& patient) {
    std::shared_ptr<EnsembleCIP> ensemble = handle == 0 ? std::make_shared<EnsembleCIP>() : ensembles::Trouve(handle);
    if (!ensemble) throw Echec{Argument2};
    const DansContexte dans(contexte);
    int32_t resultat = 0;
    for (const CritereRecherche& critere : criteres)
        if (CritereActif(critere)) resultat = AppliqueCritere(contexte, *ensemble, critere, patient);
    if (handle == 0) handle = ensembles::Depose(std::move(ensemble));
    return resultat;
}

}  // namespace vdx
