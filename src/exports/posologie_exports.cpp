// The C exports of the posology: the posologies of a product ranked
// against a patient, one loaded into the host's form, a posology told in
// sentences with its packages, checked against the limits of its product;
// and the vocabularies a host builds a posology from, with the label of a
// code of each.
#include <charconv>

#include "exports/arguments.h"
#include "exports/declaration.h"
#include "medecin/edition.h"
#include "posology/arrondi.h"
#include "posology/catalogue.h"
#include "posology/controle.h"
#include "posology/phrase.h"
#include "posology/vocabulaire.h"
#include "session/codeproduit.h"
#include "session/connexion.h"
#include "session/entrees.h"
#include "session/messages.h"
#include "session/resultat.h"
#include "session/texte.h"

using namespace vdx;
using exports::Noms;

namespace {

namespace voc = vocabulaires_posologie;

// A vocabulary's records sorted by label into the host's array (-20 when
// absent in mode 0) or the flat text: 1.
int32_t Liste(const VocabulairePosologie& vocabulaire, bool avecCycle, SAFEARRAY** tableau) {
    Resultat resultat(tableau, GabaritDe<MotPosologie>(), Argument2);
    resultat.Prend(LignesSansCleSelon<MotPosologie>(MotsPosologie(vocabulaire, avecCycle)));
    resultat.Livre();
    return Succes;
}

// The label of a code into the host string: 1, or -90 for an unknown code.
int32_t Libelle(const VocabulairePosologie& vocabulaire, int32_t code, BSTR* libelle) {
    const std::optional<std::string> texte = LibellePosologie(vocabulaire, code);
    if (!texte) throw Echec{CodeInconnu};
    LivreValeur(libelle, *texte, Argument2);
    return Succes;
}

// The ages in months a child's and an infant's terrain take.
constexpr int32_t AgeEnfantMin = 31;
constexpr int32_t AgeEnfantMax = 216;
constexpr int32_t AgeNourrissonMax = 30;

char Initiale(const char* texte) { return texte ? texte[0] : '\0'; }

// The patient of a list, checked in order: the age (-50), the weight
// (-60), the height (-70), then the age the terrain allows (-50).
PatientPosologie Patient(const char* terrain, int32_t age, int32_t poids, int32_t taille, const char* sexe) {
    if (age < 0) throw Echec{Argument5};
    if (poids < 0) throw Echec{Argument6};
    if (taille < 0) throw Echec{Argument7};
    PatientPosologie p{Initiale(terrain), Initiale(sexe), age, PoidsEnKilos(poids)};
    if (p.Terrain == 'E' && age != 0 && (age < AgeEnfantMin || age > AgeEnfantMax)) throw Echec{Argument5};
    if (p.Terrain == 'N' && age > AgeNourrissonMax) throw Echec{Argument5};
    return p;
}

// The profile filters of the second list: the host's array of records (a
// null one holds none) in mode 0, else the input text's rows "type@value".
std::vector<FiltreProfil> Filtres(SAFEARRAY** filtres) {
    std::vector<FiltreProfil> liste;
    if (session().ModeSortie == ModeTableau) {
        if (!filtres || !*filtres) return liste;
        for (Analyse& a : AnalysesDuTableau(filtres, {OperationTableau, OperationTableau}))
            liste.push_back({a.TypeAnalyse, std::move(a.ValeurAnalyse)});
        return liste;
    }
    for (const std::vector<std::string>& rangee : RangeesDuTexte(LitTexte(), 2))
        liste.push_back({EntiersDeTextes({rangee[0]}).front(), rangee[1]});
    return liste;
}

// The longest free text a host's posology gives the sentence.
constexpr size_t TexteLibreMax = 8191;

std::optional<Valeur> ValeurLue(TypeChamp type, std::optional<std::string> champ) {
    if (type == TypeChamp::Texte) return champ.value_or("");
    if (!champ || champ->empty()) return std::nullopt;
    const char* fin = champ->data() + champ->size();
    if (type == TypeChamp::Reel) {
        float x = 0;
        std::from_chars(champ->data(), fin, x);
        return x;
    }
    int32_t n = 0;
    std::from_chars(champ->data(), fin, n);
    return n;
}

// The posology of the flat modes: a row of its 25 fields, every number
// given (-14), the free text last, which may be left out.
PosologieHote PosologieDuTexte(const std::string& texte) {
    if (texte.empty()) throw Echec{PosologieIncomplete};
    const Gabarit& gabarit = GabaritDe<PosologieHote>();
    std::vector<Valeur> valeurs;
    size_t position = 0;
    for (size_t c = 0; c < gabarit.size(); ++c) {
        std::optional<std::string> champ = ExtraitChamp(texte, position, 0);
        if (!champ && c + 1 < gabarit.size()) throw Echec{PosologieIncomplete};
        std::optional<Valeur> valeur = ValeurLue(gabarit[c], std::move(champ));
        if (!valeur) throw Echec{PosologieIncomplete};
        valeurs.push_back(std::move(*valeur));
    }
    PosologieHote p = LigneDe<PosologieHote>(std::move(valeurs));
    // A dose by weight unless the row says otherwise.
    if (p.TypeRef.size() != 1) p.TypeRef.assign(1, 'P');
    return p;
}

// The posology a host gives: its record in mode 0 (-10 when absent), its
// type of dose by the first byte, a free text too long taken as none; the
// input row otherwise.
PosologieHote PosologieDonnee(VdxPosologieHote* posologie) {
    if (session().ModeSortie != ModeTableau) return PosologieDuTexte(LitTexte());
    PosologieHote p = LigneDe<PosologieHote>(LitFiche(Requis(posologie, Argument1), GabaritDe<PosologieHote>()));
    p.TypeRef = p.TypeRef.substr(0, 1);
    if (p.Texte.size() > TexteLibreMax) p.Texte.clear();
    return p;
}

// The three ways of telling a posology, checked in order: weight -20,
// height -30, result -50 (its strings emptied), posology -10, CodeCIP -16.
int32_t Decode(VdxPosologieHote* posologie, int32_t poids, int32_t taille, VdxResultatPosologie* resultat) {
    if (poids < 0) throw Echec{Argument2};
    if (taille < 0) throw Echec{Argument3};
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(resultat, Argument5), GabaritDe<ResultatPosologie>(), false);
    PosologieHote p = PosologieDonnee(posologie);
    if (p.CodeCIP.size() != LongueurCIP) throw Echec{ProduitPosologie};
    LivreFiche(resultat, GabaritDe<ResultatPosologie>(), ValeursDe(DecodePosologie(session(), std::move(p), PoidsEnKilos(poids), taille)));
    return Succes;
}

}  // namespace

// The sentence of a posology as given, without rounding, and with the
// markers that part it.
#define DECODE_POSOLOGIE(Nom, Etat)                                                                                   \
    VDX_EXPORT(Nom, Connecte, NomsDesChamps<ResultatPosologie>(), (Liste, Posologie), (Entier, Poids),              \
               (Entier, Taille), (Fiche, Resultat)) {                                                                \
        [[maybe_unused]] const Etat etat;                                                                             \
        return Decode(Posologie, Poids, Taille, Resultat);                                                            \
    }
namespace {
struct Tel {};
}  // namespace
DECODE_POSOLOGIE(PosoDec_Vdx, Tel)
DECODE_POSOLOGIE(PosoDec2_Vdx, SansArrondi)
DECODE_POSOLOGIE(PosoDec3_Vdx, AvecMarqueurs)

// The dose check: the mask, the duration and dose alerts into the two host
// strings, or one row of them. A 13-digit code is mapped under CIP13Actif 1.
VDX_EXPORT(CheckPosologie_Vdx, Chaines, Noms("AlerteDuree", "AlerteDose"), (Liste, Posologie), (Entier, Poids),
           (Entier, Taille), (ChaineSortie, AlerteDuree), (ChaineSortie, AlerteDose)) {
    if (Poids < 0) throw Echec{Argument2};
    if (Taille < 0) throw Echec{Argument3};
    PosologieHote p = PosologieDonnee(Posologie);
    p.CodeCIP = CIPEntrantStrict(session().CIP13Actif, p.CodeCIP);
    if (p.CodeCIP.size() != LongueurCIP) throw Echec{ProduitPosologie};
    const ControleDePosologie c = ControlePosologie(session(), p, Poids, Taille);
    LivreValeurs({{AlerteDuree, Argument4}, {AlerteDose, Argument5}}, {c.AlerteDuree, c.AlerteDose});
    return c.Masque;
}

VDX_EXPORT(PosoBornes_Vdx, Connecte, NomsDesChamps<BornesPosologie>(), (Texte, Code), (Fiche, Bornes)) {
    const std::string_view cle = exports::TexteBorne(Code, LongueurCleBornes);
    if (cle.empty()) throw Echec{Argument1};
    if (cle.size() != LongueurCleBornes) throw Echec{CodeMalForme};
    const std::optional<BornesPosologie> bornes = BornesDe(cle);
    if (!bornes) throw Echec{CodeInconnu};
    if (session().ModeSortie == ModeTableau) Requis(Bornes, Argument2);
    LivreFiche(Bornes, GabaritDe<BornesPosologie>(), ValeursDe(*bornes));
    return Succes;
}

VDX_EXPORT(CalculClairance_Vdx, Libre, {}, (Reel, Creatinine), (Entier, Poids), (Entier, Age), (Texte, Sexe),
           (Entier, Genre)) {
    return CalculClairance(Creatinine, Poids, Age, Initiale(Sexe), Genre);
}

// The lists tell an agent of the call before anything else, connected or not.
VDX_EXPORT(PosoListe_Vdx, Differe, NomsDesChamps<LignePosologieCourte>(), (Texte, Code), (Tableau, Tableau),
           (Texte, Terrain), (Entier, Age), (Entier, Poids), (Entier, Taille), (Texte, Sexe)) {
    NotifieAgent(messages::NoticePosoliste, Code);
    if (!session().Connecte) return NonConnecte;
    const std::string cip = CodeCIPRequis(Code);
    const PatientPosologie patient = Patient(Terrain, Age, Poids, Taille, Sexe);
    Resultat resultat(Tableau, GabaritDe<LignePosologieCourte>(), Argument2);
    resultat.Prend(LignesSansCleSelon<LignePosologieCourte>(ListePosologies(session(), cip, patient, nullptr)));
    resultat.Livre();
    return Succes;
}

VDX_EXPORT(PosoListe2_Vdx, Differe, NomsDesChamps<LignePosologiePlate>(), (Texte, Code), (Tableau, Tableau),
           (Texte, Terrain), (Entier, Age), (Entier, Poids), (Entier, Taille), (Texte, Sexe), (Texte, Indication),
           (Entier, ModeIndication), (Liste, Filtres)) {
    NotifieAgent(messages::NoticePosoliste2, Code);
    if (!session().Connecte) return NonConnecte;
    const std::string cip = CodeCIPRequis(Code);
    const PatientPosologie patient = Patient(Terrain, Age, Poids, Taille, Sexe);
    const bool tableau = session().ModeSortie == ModeTableau;
    Resultat resultat(Tableau, tableau ? GabaritDe<LignePosologie>() : GabaritDe<LignePosologiePlate>(), Argument2);
    const DemandePosologie demande{IndicationsDemandees(exports::TexteDe(Indication), ModeIndication),
                                   ::Filtres(Filtres)};
    std::vector<LignePosologie> lignes = ListePosologies(session(), cip, patient, &demande);
    resultat.Prend(tableau ? LignesSansCleSelon<LignePosologie>(std::move(lignes))
                           : LignesSansCleSelon<LignePosologiePlate>(std::move(lignes)));
    resultat.Livre();
    return Succes;
}

VDX_EXPORT(PosoLoad_Vdx, Connecte, NomsDesChamps<PosologieHote>(), (Texte, Code), (Fiche, Posologie)) {
    const std::string_view code = exports::TexteBorne(Code, LongueurCodePrive);
    if (code.empty()) throw Echec{Argument1};
    VerifieCodePosologie(session(), code);
    // The host's strings are emptied once the code is good; its numbers
    // stay as they were when the code is unknown.
    if (session().ModeSortie == ModeTableau) VideFiche(Requis(Posologie, Argument2), GabaritDe<PosologieHote>(), false);
    LivreFiche(Posologie, GabaritDe<PosologieHote>(), ValeursDe(ChargePosologie(session(), code)));
    return Succes;
}

VDX_EXPORT(PosoExiste_Vdx, Connecte, {}, (Texte, Code)) { return PosologiesExistent(session(), CodeCIPRequis(Code)); }

VDX_EXPORT(UnitesPrisesProduit_Vdx, Connecte, Noms("Unite1", "Unite2"), (Texte, Code), (Nombre, Unite1),
           (Nombre, Unite2)) {
    const UnitesPrise unites = UnitesPriseProduit(CodeCIPRequis(Code));
    if (session().ModeSortie != ModeTableau) {
        LivreFiche(nullptr, {TypeChamp::Entier, TypeChamp::Entier}, {unites.Premiere, unites.Seconde});
    } else {
        *Requis(Unite1, Argument2) = unites.Premiere;
        *Requis(Unite2, Argument3) = unites.Seconde;
    }
    return Succes;
}

#define LISTE_POSOLOGIE(Nom, V, avecCycle)                                                  \
    VDX_EXPORT(Nom, Connecte, NomsDesChamps<MotPosologie>(), (Tableau, Tableau)) {            \
        return Liste(voc::V(), avecCycle, Tableau);                                           \
    }
LISTE_POSOLOGIE(PosoMoments_Vdx, Moments, false)
LISTE_POSOLOGIE(PosoSpecificationsPrise_Vdx, Specifications, false)
LISTE_POSOLOGIE(PosoUnitesPrise_Vdx, UnitesPrise, false)
LISTE_POSOLOGIE(PosoDurees_Vdx, Durees, true)

#define LIBELLE_POSOLOGIE(Nom, V)                                                           \
    VDX_EXPORT(Nom, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {     \
        return ::Libelle(voc::V(), Code, Libelle);                                            \
    }
LIBELLE_POSOLOGIE(LibelleMoment_Vdx, Moments)
LIBELLE_POSOLOGIE(LibelleDurees_Vdx, Durees)
LIBELLE_POSOLOGIE(LibelleSpecification_Vdx, Specifications)
LIBELLE_POSOLOGIE(LibelleNature_Vdx, Natures)
LIBELLE_POSOLOGIE(LibelleVoie_Vdx, Voies)
LIBELLE_POSOLOGIE(LibelleProfil_Vdx, Profils)

VDX_EXPORT(LibelleUnitePrise_Vdx, Chaines, Noms("Libelle"), (Entier, Code), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibelleUnitePrise(Code, false), Argument2);
    return Succes;
}

VDX_EXPORT(LibelleMoment2_Vdx, Chaines, Noms("Libelle", "Multiplicateur"), (Entier, Code), (ChaineSortie, Libelle),
           (Nombre, Multiplicateur)) {
    const std::optional<MomentPrise> moment = MomentDePrise(Code);
    if (!moment) throw Echec{CodeInconnu};
    if (session().ModeSortie != ModeTableau) {
        LivreFiche(nullptr, {TypeChamp::Texte, TypeChamp::Reel}, {moment->Libelle, moment->Multiplicateur});
    } else {
        RangeEnOctets(Requis(Libelle, Argument2), moment->Libelle);
        *Requis(Multiplicateur, Argument3) = moment->Multiplicateur;
    }
    return Succes;
}

// Read from no table: the label of a terrain's letters, empty for others.
VDX_EXPORT(LibelleTerrain_Vdx, Chaines, Noms("Libelle"), (Texte, Terrain), (ChaineSortie, Libelle)) {
    LivreValeur(Libelle, LibelleTerrain(Terrain ? std::string_view(Terrain) : std::string_view()), Argument2);
    return Succes;
}

// A posology of the doctor's base added, modified or deleted; an added one's
// code (its product's first free number) given back in the host's record.
VDX_EXPORT(PosologiesMedecin_Vdx, Connecte, NomsDesChamps<PosologieHote>(), (Liste, Posologie), (Entier, Operation)) {
    // A host's record without its strings.
    if (session().ModeSortie == ModeTableau && Posologie && !Posologie->CodeCIP) throw Echec{Argument2};
    PosologieHote p = PosologieDonnee(Posologie);
    const int32_t resultat = medecin::Posologie(p, Operation);
    if (Operation == medecin::Ajout && session().ModeSortie == ModeTableau)
        LivreFiche(Posologie, GabaritDe<PosologieHote>(), ValeursDe(p));
    return resultat;
}
