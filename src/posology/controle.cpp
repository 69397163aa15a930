#include "posology/controle.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "posology/arrondi.h"
#include "posology/phrase.h"
#include "posology/quantite.h"
#include "posology/surface.h"
#include "posology/vocabulaire.h"
#include "session/cadre.h"
#include "session/codeproduit.h"
#include "session/messages.h"
#include "session/tables.h"
#include "session/texte.h"
#include "store/fiche.h"
#include "store/layouts/posologie.h"

namespace vdx {

namespace {

VDX_TABLE(TableBornes, "VDXPMAX")
VDX_TABLE(TableFacteurs, "VDXPDURC")

namespace A = alertes_posologie;

// The terrain whose limits hold for every patient.
constexpr char TousTerrains = 'T';
// The ceiling of the posology computed for this patient by its sentence.
constexpr int32_t MaximumDuPatient = -1;
// Periods by their codes: from a day on, a posology counts as daily.
constexpr int32_t Minute = 10, Heure = 20, DemiJournee = 30, Jour = 40;
constexpr int32_t HeuresParJour = 24, MinutesParJour = 1440, DemiJourneesParJour = 2;

std::string T(float valeur) {
    std::string texte;
    TexteNombre(valeur, texte, false);
    return texte;
}

// The eleven limits of one unit.
struct Limites {
    float RecoMin, RecoMax, RecoMinKg, RecoMaxKg, BaseKg, RecoMinM2, RecoMaxM2, BaseM2, MaxJour, MaxKg, MaxM2;
};
Limites LimitesDe(const BornesPosologie& b, bool seconde) {
    if (seconde)
        return {b.RecoMinUnite2,   b.RecoMaxUnite2, b.RecoMinKgUnite2, b.RecoMaxKgUnite2,
                b.BaseKgUnite2,    b.RecoMinM2Unite2, b.RecoMaxM2Unite2, b.BaseM2Unite2,
                b.MaxJourUnite2,   b.MaxKgUnite2,   b.MaxM2Unite2};
    return {b.RecoMin, b.RecoMax, b.RecoMinKg, b.RecoMaxKg, b.BaseKg, b.RecoMinM2,
            b.RecoMaxM2, b.BaseM2, b.MaxJour, b.MaxKg, b.MaxM2};
}

// How many periods of the posology a day holds: one for a day and longer;
// for hours and minutes the periods of a day, a take every N of them
// below a day counted as a day's share.
float FacteurJournalier(const PosologieHote& p) {
    if (p.CodePeriode >= Jour) return 1;
    const float conversion = ConversionDuree(p.CodePeriode, Jour);
    float f = 1;
    if (p.Intervalle > 1) {
        if ((p.CodePeriode == Heure && p.Intervalle < HeuresParJour) ||
            (p.CodePeriode == Minute && p.Intervalle < MinutesParJour))
            f = 1 / static_cast<float>(p.Intervalle) * conversion;
    } else {
        f = f * conversion;
    }
    return f == 0 ? 1 : f;
}

// What the check compares and says.
struct Controle {
    float a = 0;  // the highest daily dose
    float z = 0;  // the lowest
    int32_t arrondi = 0;
    Mot unite;
    int32_t masque = 0;
    std::string alerte;

    const std::string& MotDe(float valeur) const { return unite.Selon(valeur > 1); }
};

// The limits per kilo (by `patient` the weight) or per square metre (the
// surface), k the share of the limits' basis the posology's dose is for.
void ControleRapporte(bool parKilo, const Limites& l, float k, float patient, float quantiteRef, Controle& c) {
    const float max = parKilo ? l.MaxKg : l.MaxM2, bas = parKilo ? l.RecoMinKg : l.RecoMinM2,
                haut = parKilo ? l.RecoMaxKg : l.RecoMaxM2;
    const float dMax = ArrondiDose(max * k, c.arrondi), dBas = ArrondiDose(bas * k, c.arrondi),
                dHaut = ArrondiDose(haut * k, c.arrondi);
    // " soit 600 mg pour 20 Kg(s) pour ce patient": what a limit is for the patient.
    const auto pourLePatient = [&](float limite, const std::string& mot) {
        return messages::AlerteSoit + T(limite * k) + " " + mot + messages::Pour + T(patient) +
               (parKilo ? messages::AlerteKgsPatient : messages::AlerteM2Patient);
    };
    std::string suite;
    if (max != 0 && c.a > dMax) {
        c.masque |= A::AuDessusMaximum;
        c.alerte = messages::AlerteMaximum + T(max) + " " + c.unite.Pluriel;
        suite = parKilo ? messages::AlerteVirguleSoit + T(max * k) + " " + c.MotDe(max * k) + messages::Pour + T(patient) +
                              messages::AlerteKgs
                        : pourLePatient(max, c.MotDe(max * k));
    } else {
        if (c.z < dBas) {
            c.masque |= A::AuDessousRecommandee;
            c.alerte = messages::AlerteBasse + T(bas) + " " + c.unite.Singulier;
            // Per kilo the tail shows the high bound, in the singular, as it always has.
            suite = parKilo ? pourLePatient(haut, c.unite.Singulier) : pourLePatient(bas, c.MotDe(bas * k));
        }
        if (haut != 0 && c.a > dHaut) {
            c.masque |= A::AuDessusRecommandee;
            c.alerte = messages::AlerteHaute + T(haut) + " " + c.MotDe(haut);
            suite = pourLePatient(haut, c.MotDe(haut * k));
        }
    }
    if (c.alerte.empty()) return;
    if (quantiteRef == 1)
        c.alerte += parKilo ? messages::AlerteParKg : messages::AlerteParM2;
    else
        c.alerte += messages::Pour + std::to_string(static_cast<int64_t>(std::trunc(std::isfinite(quantiteRef) ? quantiteRef : 0))) +
                    (parKilo ? messages::AlertePourKgs : messages::AlertePourM2);
    c.alerte += suite;
}

void ControleSimple(const Limites& l, Controle& c) {
    const float dMax = ArrondiDose(l.MaxJour, c.arrondi), dBas = ArrondiDose(l.RecoMin, c.arrondi),
                dHaut = ArrondiDose(l.RecoMax, c.arrondi);
    if (l.MaxJour > 0 && c.a > dMax) {
        c.masque |= A::AuDessusMaximum;
        c.alerte = messages::AlerteMaximum + T(l.MaxJour) + " " + c.MotDe(l.MaxJour);
        return;
    }
    if (c.z < dBas) {
        c.masque |= A::AuDessousRecommandee;
        c.alerte = messages::AlerteBasse + T(l.RecoMin) + " " + c.unite.Singulier;
    }
    if (c.a > dHaut && dHaut > 0) {
        c.masque |= A::AuDessusRecommandee;
        c.alerte = messages::AlerteHaute + T(l.RecoMax) + " " + c.MotDe(l.RecoMax);
    }
}

// The durations of the posology in days against those of the limits.
int32_t ControleDurees(const PosologieHote& p, const BornesPosologie& b, std::string& alerte) {
    float j = p.CodeDuree == Jour ? 1 : ConversionDuree(Jour, p.CodeDuree);
    if (j == 0) j = 1;
    const float dureeMin = static_cast<float>(p.DureeMin) * j, dureeMax = static_cast<float>(p.DureeMax) * j;
    const float haute = dureeMax != 0 ? dureeMax : dureeMin;
    if (b.DureeMaximum != 0 && haute > static_cast<float>(b.DureeMaximum)) {
        alerte = messages::AlerteDureeMaximum + T(static_cast<float>(b.DureeMaximum)) + messages::AlerteJours;
        return A::DureeAuDessusMaximum;
    }
    int32_t masque = 0;
    if (dureeMin < static_cast<float>(b.DureeRecoMin)) {
        masque |= A::DureeAuDessousRecommandee;
        alerte = messages::AlerteDureeCourte + T(static_cast<float>(b.DureeRecoMin)) + messages::AlerteJours;
    }
    if (b.DureeRecoMax != 0 && haute > static_cast<float>(b.DureeRecoMax)) {
        masque |= A::DureeAuDessusRecommandee;
        alerte = messages::AlerteDureeLongue + T(static_cast<float>(b.DureeRecoMax)) + messages::AlerteJours;
    }
    return masque;
}

// The posology as loaded by its code and its sentence for the patient; all
// zeros for what fails, which the check goes on without.
struct Reference {
    PosologieHote chargee;
    ResultatPosologie dite;
};
Reference ReferenceDe(const Contexte& contexte, const PosologieHote& donnee, int32_t poids, int32_t taille) {
    Reference r;
    try {
        r.chargee = ChargePosologie(contexte, donnee.CodePosologie);
    } catch (const Echec&) {
        r.chargee = {};
    }
    if (r.chargee.CodeCIP.size() == LongueurCIP) try {
            r.dite = DecodePosologie(contexte, r.chargee, PoidsEnKilos(poids), taille);
        } catch (const Echec&) {
            r.dite = {};
        }
    return r;
}

}  // namespace

std::optional<BornesPosologie> BornesDe(std::string_view cle) {
    TablesOuvertes tables{&TableBornes()};
    std::optional<BornesPosologie> bornes;
    if (const auto p = Curseur(TableBornes()).Egale(cle)) {
        using namespace VDXPMAX;
        const Fiche f(VueFicheA(TableBornes(), *p));
        bornes = BornesPosologie{f.Reel(RecoMin),         f.Reel(RecoMax),         f.Reel(RecoMinKg),
                                 f.Reel(RecoMaxKg),       f.Reel(BaseKg),          f.Reel(RecoMinM2),
                                 f.Reel(RecoMaxM2),       f.Reel(BaseM2),          f.Reel(MaxJour),
                                 f.Reel(MaxKg),           f.Reel(MaxM2),           f.Reel(RecoMinUnite2),
                                 f.Reel(RecoMaxUnite2),   f.Reel(RecoMinKgUnite2), f.Reel(RecoMaxKgUnite2),
                                 f.Reel(BaseKgUnite2),    f.Reel(RecoMinM2Unite2), f.Reel(RecoMaxM2Unite2),
                                 f.Reel(BaseM2Unite2),    f.Reel(MaxJourUnite2),   f.Reel(MaxKgUnite2),
                                 f.Reel(MaxM2Unite2),     f.Entier(DureeRecoMin),  f.Entier(DureeRecoMax),
                                 f.Entier(DureeMaximum)};
    }
    tables.Ferme();
    return bornes;
}

ControleDePosologie ControlePosologie(const Contexte& contexte, const PosologieHote& p, int32_t poids, int32_t taille) {
    const DansContexte dans(contexte);
    ControleDePosologie resultat;
    if (p.NombreModeles > 0) return resultat;
    const std::optional<ConditionnementProduit> produit = ConditionnementDe(p.CodeCIP);
    if (!produit) return resultat;
    const Reference ref = ReferenceDe(contexte, p, poids, taille);
    std::optional<BornesPosologie> bornes;
    if (!p.Libelle.empty()) bornes = BornesDe(p.CodeCIP + p.Libelle.front());
    if (!bornes) bornes = BornesDe(p.CodeCIP + TousTerrains);
    if (!bornes) return resultat;

    TablesOuvertes tables{&TableFacteurs(), &vocabulaires_posologie::Moments().table()};
    const float surface = SurfaceCorporelle(poids, taille);
    const bool seconde = produit->Premiere.Code != p.CodeUnite;
    const Limites l = LimitesDe(*bornes, seconde);
    Controle c;
    c.arrondi = seconde ? produit->Seconde.Arrondi : produit->Premiere.Arrondi;
    c.unite = UnitePrise(p.CodeUnite);
    const float plafondDit = seconde ? ref.dite.Maximum2 : ref.dite.Maximum1;

    // The daily doses, highest and lowest.
    float f = FacteurJournalier(p);
    const int32_t h = std::max({p.PrisesMin, p.PrisesMax, 1});
    const int32_t b = p.PrisesMin != 0 ? p.PrisesMin : (p.PrisesMax != 0 ? p.PrisesMax : 1);
    if (const auto moment = MomentDePrise(p.CodeMoment); moment && moment->Multiplicateur >= 1)
        f = f * moment->Multiplicateur;
    c.a = std::max(p.DoseMin, p.DoseMax) * f * static_cast<float>(h);
    c.z = p.DoseMin * f * static_cast<float>(b);

    const PosologieHote& L = ref.chargee;
    if (L.DoseMaximum > 0) {
        // The posology's own ceiling, over its period.
        const float y = L.CodePeriodeMaximum == DemiJournee ? DemiJourneesParJour
                        : L.CodePeriodeMaximum == Heure      ? HeuresParJour
                        : L.CodePeriodeMaximum == Minute     ? MinutesParJour
                                                             : 1;
        const float plafond = L.MaximumRapporte == MaximumDuPatient ? plafondDit : L.DoseMaximum * y;
        if (c.a > plafond) {
            c.masque |= A::AuDessusMaximum;
            const float montre = plafond > 0 ? plafond : L.DoseMaximum;
            c.alerte = messages::AlerteMaximum + T(montre) + " " + c.MotDe(montre);
            if (L.MaximumRapporte == MaximumDuPatient)
                c.alerte += messages::AlertePatient + T(static_cast<float>(poids)) + messages::AlerteKgs;
        }
    } else if (L.QuantiteRef != 0 && (L.TypeRef == "P" || L.TypeRef == "S")) {
        const bool parKilo = L.TypeRef == "P";
        const float base = parKilo ? l.BaseKg : l.BaseM2;
        const float patient = parKilo ? static_cast<float>(poids) : surface;
        float k = L.QuantiteRef / (base == 0 ? 1 : base);
        if (p.TypeRef.empty()) k = k * patient;
        ControleRapporte(parKilo, l, k, patient, L.QuantiteRef, c);
    } else {
        ControleSimple(l, c);
    }
    resultat.Masque = A::Verifiee | c.masque | ControleDurees(p, *bornes, resultat.AlerteDuree);
    resultat.AlerteDose = std::move(c.alerte);
    tables.Ferme();
    return resultat;
}

int32_t CalculClairance(float creatinine, int32_t poids, int32_t age, char sexe, int32_t genre) {
    constexpr int32_t AgeLimite = 140;
    constexpr double Micromoles = 0.814, MilligrammesParLitre = 7.2, Femme = 0.85;
    if ((genre != 1 && genre != 2) || !(creatinine > 0) || age > AgeLimite || poids < 0) return -1;
    const int64_t n = (AgeLimite - int64_t{age}) * poids;
    double c = static_cast<double>(n) / (static_cast<double>(creatinine) * (genre == 1 ? Micromoles : MilligrammesParLitre));
    if (sexe == 'F') c = std::trunc(Femme * c);
    const double entier = std::trunc(c);
    const double arrondi = c - entier >= 0.5 ? entier + 1 : entier;
    return static_cast<int32_t>(std::min(arrondi, static_cast<double>(std::numeric_limits<int32_t>::max())));
}

}  // namespace vdx
