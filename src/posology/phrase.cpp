#include "posology/phrase.h"

#include <optional>
#include <utility>

#include "posology/arrondi.h"
#include "posology/nombres.h"
#include "posology/quantite.h"
#include "posology/surface.h"
#include "posology/vocabulaire.h"
#include "products/codes.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/fiche.h"
#include "store/layouts/produits.h"
#include "store/pliage.h"

namespace vdx {

namespace {

VDX_TABLE(TableUnitesPrise, "VDXPUPRI")
VDX_TABLE(TableContenants, "VDXIDCON")
VDX_TABLE(TablePresentations, "VDXIDPRE")
VDX_TABLE(TableFacteurs, "VDXPDURC")
VDX_TABLE(TableProduits, "VDXPRO")
VDX_TABLE(TableComplements, "VDXPROA")

namespace voc = vocabulaires_posologie;

// The rounding code under which a dose given per kilo for an unknown weight
// is rounded.
constexpr int32_t ArrondiSansPoids = 100;
// Codes of VDXPDUR the checks of the codes compare with.
constexpr int32_t Jour = 40;
constexpr int32_t An = 70;
// The name the missing index of the units of take has always been reported under.
constexpr char IndexUnitesPrise[] = "VDXPUPRI.NDX";
constexpr char IndexUnitesPriseSignale[] = "VDXPURPI.NDX";

void VerifieCodes(const PosologieHote& p) {
    if (p.CodeMoment != 0 && p.CodePeriode == 0 && p.CodeDuree != 0 && p.CodeDuree < Jour) throw Echec{MomentSansJour};
    if (p.CodePeriode == CodeCycle && p.CodeDuree < An && p.CodeDuree != 0 && p.CodeDuree != CodeCycle)
        throw Echec{CycleTropCourt};
    if (p.CodePeriode != 0 && p.CodeDuree != 0 && p.CodeDuree < p.CodePeriode) throw Echec{DureeTropCourte};
}

// The tables a sentence reads, VDXPUPRI's index reported under its old name.
class Tables {
public:
    Tables() {
        try {
            tables_.Ouvre(TableUnitesPrise());
        } catch (Echec& e) {
            if (e.fichier == IndexUnitesPrise) session().FichierErreur = e.fichier = IndexUnitesPriseSignale;
            throw;
        }
        for (const Table* t : {&TableIdentification(), &voc::Durees().table(), &voc::Moments().table(),
                               &voc::Specifications().table(), &TableContenants(), &TablePresentations(),
                               &TableFacteurs(), &TableProduits(), &TableComplements()})
            tables_.Ouvre(*t);
    }
    void Ferme() { tables_.Ferme(); }

private:
    TablesOuvertes tables_;
};

// Numbers in words for the products marked: "B" as CodeTableau, or the
// narcotic's prescription code in one of the three of VDXPROA.
bool EnToutesLettres(std::string_view cip) {
    if (const auto p = Curseur(TableProduits()).Egale(cip))
        if (Fiche(VueFicheA(TableProduits(), *p)).Texte(VDXPRO::CodeTableau).starts_with('B')) return true;
    if (const auto p = Curseur(TableComplements()).Egale(cip)) {
        const Fiche f(VueFicheA(TableComplements(), *p));
        for (const ChampEntier& c : {VDXPROA::Prescription1, VDXPROA::Prescription2, VDXPROA::Prescription3})
            if (f.Entier(c) == PrescriptionStupefiant) return true;
    }
    return false;
}

std::string Libelle(const VocabulairePosologie& v, int32_t code) { return LibellePosologie(v, code).value_or(""); }

bool FinitParS(const std::string& s) { return !s.empty() && MajusculeSansAccent(s.back()) == 'S'; }

// A word in the singular at the end of a sentence: its "s" goes, but
// "mois" stays.
void AuSingulier(std::string& s) {
    if (s.size() >= 4 && MajusculeSansAccent(std::string_view(s).substr(s.size() - 4, 3)) == "MOI") return;
    if (FinitParS(s)) s.pop_back();
}

// " Maximum 4 comprimés par jour.", the suffix of a dose by weight when
// the ceiling refers to it.
void AjouteMaximum(std::string& s, const std::string& chiffres, const Mot& unite, bool pluriel,
                   const std::string& suffixe, const std::string& periode) {
    s += messages::Maximum + chiffres + " " + unite.Selon(pluriel) + suffixe + messages::Par + periode;
    AuSingulier(s);
    s += '.';
}

// The rounding codes of the posology's unit and of the other one, and how
// the posology's unit stands to the product's: 1 its first, 2 its second,
// 0 a product of one unit or unknown.
struct Arrondis {
    int32_t r1 = 0, r2 = 0, relation = 0;
};
Arrondis ArrondisDe(const std::optional<ConditionnementProduit>& produit, int32_t unite) {
    if (!produit) return {};
    if (produit->Seconde.Code == 0) return {produit->Premiere.Arrondi, 0, 0};
    if (unite == produit->Premiere.Code) return {produit->Premiere.Arrondi, produit->Seconde.Arrondi, 1};
    return {produit->Seconde.Arrondi, produit->Premiere.Arrondi, 2};
}

}  // namespace

ResultatPosologie DecodePosologie(const Contexte& contexte, PosologieHote p, float poids, int32_t taille) {
    const DansContexte dans(contexte);
    VerifieCodes(p);
    Tables tables;
    ResultatPosologie r;
    r.Unite1 = p.CodeUnite;
    r.Unite2 = p.CodeUnite2;
    const Chiffres fig(EnToutesLettres(p.CodeCIP));
    const Mot unite1 = UnitePrise(p.CodeUnite), unite2 = UnitePrise(p.CodeUnite2);
    if (unite1.Singulier.empty() && unite2.Singulier.empty() && p.NombreModeles == 0) throw Echec{RienADire};
    const std::optional<ConditionnementProduit> produit = ConditionnementDe(p.CodeCIP);
    Arrondis arrondis = ArrondisDe(produit, p.CodeUnite);
    const float surface = SurfaceCorporelle(poids, taille);
    const char typeRef = p.TypeRef.empty() ? '\0' : p.TypeRef.front();
    const bool parSurface = typeRef == 'S';

    // A dose by weight or surface: scaled for a known patient, else said so.
    std::string u;
    if (p.QuantiteRef != 0) {
        if (poids == 0) arrondis.r1 = arrondis.r2 = ArrondiSansPoids;
        if (p.QuantiteRef == 1)
            u = parSurface ? messages::ParMetreCarre : messages::ParKilo;
        else
            u = messages::Pour + fig(p.QuantiteRef) + (parSurface ? messages::PourMetresCarres : messages::PourKilos);
        if (const float valeur = parSurface ? surface : poids; valeur != 0) {
            p.DoseMin = p.DoseMin * valeur / p.QuantiteRef;
            p.DoseMax = p.DoseMax * valeur / p.QuantiteRef;
            u.clear();
        }
    }

    // The dose.
    p.DoseMin = ArrondiDose(p.DoseMin, arrondis.r1);
    p.DoseMax = ArrondiDose(p.DoseMax, arrondis.r1);
    if (p.DoseMax != 0 && p.DoseMax < p.DoseMin) std::swap(p.DoseMin, p.DoseMax);
    std::string s;
    if (p.DoseMin == p.DoseMax && p.DoseMin != 0)
        s = fig(p.DoseMin) + " ";
    else if (p.DoseMax != 0 && p.DoseMin != 0)
        s = fig(p.DoseMin) + messages::BorneA + fig(p.DoseMax) + " ";
    else if (p.DoseMax != 0)
        s = fig(p.DoseMax) + " ";
    else if (p.DoseMin != 0)
        s = fig(p.DoseMin) + " ";
    else if (p.NombreModeles == 0)
        throw Echec{RienADire};
    r.Dose1Min = p.DoseMin;
    r.Dose1Max = p.DoseMax;
    s += unite1.Selon(p.DoseMin > 1 || p.DoseMax > 1);
    // What follows the dose, said again in the other unit.
    const size_t apresDose = s.size();
    s += u;
    if (MarqueursActifs) s += messages::MarqueDose;

    // The takes and their frequency; a cycle's days.
    if (p.CodePeriode == CodeCycle) {
        if (p.PrisesMin != 0 && p.PrisesMax != 0)
            s += messages::CycleDu + fig.Entier(p.PrisesMin) +
                 (p.PrisesMin == 1 ? messages::CyclePremierAu : messages::CycleEmeAu) + fig.Entier(p.PrisesMax) +
                 messages::CycleEmeJour;
        else if (p.PrisesMin != 0)
            s += messages::CycleLe + fig.Entier(p.PrisesMin) +
                 (p.PrisesMin == 1 ? messages::CyclePremierJour : messages::CycleEmeJour);
    } else {
        if (p.PrisesMin != 0 && p.PrisesMax != 0 && p.PrisesMin != p.PrisesMax)
            s += " " + fig.Entier(p.PrisesMin) + messages::BorneA + fig.Entier(p.PrisesMax) + messages::Fois;
        else if (p.PrisesMin != 0)
            s += " " + fig.Entier(p.PrisesMin) + messages::Fois;
        const int32_t intervalle = p.Intervalle == 0 ? 1 : p.Intervalle;
        if (const std::string periode = Libelle(voc::Durees(), p.CodePeriode); !periode.empty()) {
            if (intervalle == 1) {
                s += messages::Par + periode;
                AuSingulier(s);
            } else {
                s += MajusculeSansAccent(periode.back()) == 'E' ? messages::ToutesLes : messages::TousLes;
                s += fig.Entier(intervalle) + " " + periode;
                if (!FinitParS(s)) s += 's';
            }
        }
    }

    // The moment of the take and how to take it.
    if (const std::string moment = Libelle(voc::Moments(), p.CodeMoment); !moment.empty()) s += " " + moment;
    if (const std::string consigne = Libelle(voc::Specifications(), p.CodeSpecification); !consigne.empty())
        s += " " + consigne;
    if (MarqueursActifs) s += messages::MarqueDuree;

    // The duration.
    if (const std::string duree = Libelle(voc::Durees(), p.CodeDuree); !duree.empty() && p.DureeMin != 0) {
        s += messages::Pendant + fig.Entier(p.DureeMin) + " ";
        if (p.DureeMax != 0) s += messages::DureeA + fig.Entier(p.DureeMax) + " ";
        s += duree;
        if (!FinitParS(s) && (p.DureeMin > 1 || p.DureeMax > 1)) s += 's';
    }
    if (!s.empty()) s += '.';
    const size_t finPhrase = s.size();

    // The ceiling over its period.
    const std::string periodeMaximum = Libelle(voc::Durees(), p.CodePeriodeMaximum);
    const std::string suffixeMaximum = p.MaximumRapporte != 0 ? u : std::string();
    if (!periodeMaximum.empty() && p.DoseMaximum != 0) {
        if (p.MaximumRapporte != 0 && p.QuantiteRef != 0) {
            if (parSurface && surface != 0)
                p.DoseMaximum = p.DoseMaximum * surface / p.QuantiteRef;
            else if (typeRef == 'P' && poids != 0)
                p.DoseMaximum = p.DoseMaximum * poids / p.QuantiteRef;
        }
        r.Maximum1 = ArrondiDose(p.DoseMaximum, arrondis.r1);
        AjouteMaximum(s, fig(r.Maximum1), unite1, r.Maximum1 > 1, suffixeMaximum, periodeMaximum);
    }

    // The same in the product's other unit: by the contents of both when
    // the product has them, else the doses only move by the ratios.
    std::string t;
    if (p.Conversion != 0 && p.CodeUnite2 != 0) {
        const float a = produit ? ContenanceDe(*produit, produit->Premiere).Valeur : 0;
        if (a == 0) {
            const float r1 = produit ? produit->Premiere.Rapport : 0, r2 = produit ? produit->Seconde.Rapport : 0;
            const bool versPremiere = arrondis.relation == 1 && r2 != 0;
            if (versPremiere || r1 != 0) {
                const float k = versPremiere ? r1 / r2 : r2 / r1;
                p.DoseMin *= k;
                p.DoseMax *= k;
                p.DoseMaximum *= k;
                r.Dose2Min = r.Dose1Min * k;
                // The upper dose moves twice the other way, as it always has.
                r.Dose2Max = (versPremiere ? r.Dose1Max : r.Dose2Min) * k;
            }
        } else if (const float b = ContenanceDe(*produit, produit->Seconde).Valeur; b != 0) {
            const float k = arrondis.relation == 1 ? b / a : a / b;
            p.DoseMin *= k;
            p.DoseMax *= k;
            p.DoseMaximum *= k;
            r.Dose2Min = ArrondiDose(p.DoseMin, arrondis.r2);
            r.Dose2Max = ArrondiDose(p.DoseMax, arrondis.r2);
            r.Maximum2 = ArrondiDose(p.DoseMaximum, arrondis.r2);
            if (r.Dose2Min == r.Dose2Max)
                t = fig(r.Dose2Min);
            else if (r.Dose2Max != 0)
                t = fig(r.Dose2Min) + messages::BorneA + fig(r.Dose2Max);
            else if (r.Dose2Min != 0)
                t = fig(r.Dose2Min);
            t += " " + unite2.Selon(r.Dose2Min > 1 || r.Dose2Max > 1) + " ";
            std::string_view suite = std::string_view(s).substr(apresDose, finPhrase - apresDose);
            if (suite.ends_with('.')) suite.remove_suffix(1);
            t += std::string(suite) + '.';
            if (!periodeMaximum.empty() && r.Maximum2 != 0)
                AjouteMaximum(t, fig(r.Maximum2), unite2, r.Maximum2 > 1, suffixeMaximum, periodeMaximum);
        }
    }

    // A second way of taking it, on a line of its own.
    if (const std::string consigne = Libelle(voc::Specifications(), p.CodeSpecification2); !consigne.empty()) {
        const std::string ligne = FinDeLigne + consigne + '.';
        s += ligne;
        if (p.CodeUnite2 != 0 && !t.empty()) t += ligne;
    }

    // A model says it all.
    if (p.NombreModeles != 0) {
        s = p.Texte;
    } else {
        r.TexteLibre = p.Texte;
    }
    r.Phrase1 = std::move(s);
    r.Phrase2 = std::move(t);

    // The quantities, from the doses in each unit.
    if (produit) {
        QuantiteTraitement q = CalculeQuantite(p, p.CodeUnite, r.Dose1Min, r.Dose1Max, *produit, fig);
        r.Boites1 = std::move(q.Boites);
        r.Utilisation1 = q.Utilisation;
        r.Quantite1 = q.Quantite;
        if (p.CodeUnite2 != 0) {
            q = CalculeQuantite(p, p.CodeUnite2, r.Dose2Min, r.Dose2Max, *produit, fig);
            r.Boites2 = std::move(q.Boites);
            r.Utilisation2 = q.Utilisation;
            r.Quantite2 = q.Quantite;
        }
    } else {
        const std::string nombre = std::to_string(p.NombreModeles);
        // In words, the number of takes stands for the models', as it always has.
        r.Boites1 = (fig.EnToutesLettres() ? MotsPuisChiffres(static_cast<float>(p.PrisesMin), nombre) : nombre) +
                    (p.NombreModeles > 1 ? messages::Modeles : messages::Modele);
    }
    tables.Ferme();
    return r;
}

}  // namespace vdx
