#include "posology/catalogue.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_map>

#include "checks/contreindications.h"
#include "checks/tri.h"
#include "posology/vocabulaire.h"
#include "products/fiches.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/tables.h"
#include "store/cles.h"
#include "store/fiche.h"
#include "store/layouts/composition.h"
#include "store/layouts/identification.h"
#include "store/layouts/medecin.h"
#include "store/layouts/posologie.h"

namespace vdx {

namespace {

VDX_TABLE(TablePosologies, "VDXPPROD")
VDX_TABLE(TableTerrains, "VDXPPTER")
VDX_TABLE(TableTextes, "VDXPTEXT")
VDX_TABLE(TableLiensTermes, "VDXVAMMC")
VDX_TABLE(TablePosologiesMedecin, "POSO")
VDX_TABLE(TableTextesMedecin, "TEXU")

namespace voc = vocabulaires_posologie;

// The status of a link between a code and an indication that asks for it.
constexpr char LienIndication[] = "01";
// The index of VDXVAMMC led by the linked code.
constexpr int CleCodeLie = 1;
// The longest free texts read.
constexpr size_t TexteBaseMax = 32767;
constexpr size_t TexteMedecinMax = 16383;
// Where a text of TEXU begins.
constexpr size_t DebutTexteMedecin = LongueurCodePrive;
// The longest Libelle of a loaded posology.
constexpr size_t LibelleMax = 255;
// The key of a private posology compared by its first bytes: "#" and the
// first six digits, so that the neighbouring codes come along.
constexpr size_t PrefixePrive = 7;
// The age in months above which a bounded terrain is not a child's.
constexpr float AgeEnfantMax = 180;
// The width of the margin around a profile filter's range.
constexpr double MargeBasse = 0.95;
constexpr double MargeHaute = 1.05;

// A record's value truncated to an integer, NaN and beyond-range values
// giving 0 and the bounds.
int64_t Tronque(float valeur) {
    if (std::isnan(valeur)) return 0;
    constexpr double borne = 1e15;
    return static_cast<int64_t>(std::clamp(static_cast<double>(valeur), -borne, borne));
}

char Lettre(std::string_view texte, size_t rang) { return rang < texte.size() ? texte[rang] : '\0'; }

// An age bound in months: years times 12, days by 30 truncated; a bound in
// weeks counts 5 months whatever its number; another unit 0.
float Mois(float valeur, std::string_view unite) {
    switch (Lettre(unite, 0)) {
        case 'A': return valeur * 12;
        case 'M': return valeur;
        case 'J': return std::trunc(valeur / 30);
        case 'S': return 5;
        default: return 0;
    }
}

// A value between two bounds, a bound given as 0 being none on its side:
// equal bounds ask for at least the bound, others for the lower one on and
// below the upper one.
bool DansLesBornes(float valeur, float min, bool avecMin, float max, bool avecMax) {
    if (avecMin && avecMax && min == max) return valeur >= min;
    return (!avecMin || valeur >= min) && (!avecMax || valeur < max);
}

bool AgeDansLesBornes(const TerrainPosologie& t, int32_t age) {
    return DansLesBornes(static_cast<float>(age), Mois(t.AgeMin, t.UniteAgeMin), t.AgeMin != 0,
                         Mois(t.AgeMax, t.UniteAgeMax), t.AgeMax != 0);
}

// An age truncated and the word of its unit.
std::string Age(float valeur, std::string_view unite) {
    const int64_t n = Tronque(valeur);
    std::string texte = std::to_string(n);
    const bool pluriel = n >= 2;
    switch (Lettre(unite, 0)) {
        case 'A': texte += pluriel ? messages::AgeAns : messages::AgeAn; break;
        case 'J': texte += pluriel ? messages::AgeJours : messages::AgeJour; break;
        case 'S': texte += pluriel ? messages::AgeSemaines : messages::AgeSemaine; break;
        case 'M': texte += messages::AgeMois; break;
        default: texte += ' '; break;
    }
    return texte;
}

std::string Poids(float valeur) { return std::to_string(Tronque(valeur)) + messages::Kilos; }

// A range in words, each bound told by `texteMin` and `texteMax`:
// " de moins de MAX", " de plus de MIN" for equal bounds, " de MIN à MAX",
// " de MIN".
template <class Min, class Max>
void AjouteBornes(std::string& phrase, float min, float max, Min texteMin, Max texteMax) {
    if (min == 0 && max != 0) {
        phrase += messages::BorneMoinsDe;
        phrase += texteMax(max);
    } else if (min != 0 && min == max) {
        phrase += messages::BornePlusDe;
        phrase += texteMin(min);
    } else if (min != 0) {
        phrase += messages::BorneDe;
        phrase += texteMin(min);
        if (max != 0) {
            phrase += messages::BorneA;
            phrase += texteMax(max);
        }
    }
}

// A posology's indication key: ten digits with leading zeros; none for 0
// or a code of one digit.
std::optional<std::string> CleIndication(int32_t code) {
    if (code < 10) return std::nullopt;
    std::string cle = std::to_string(code);
    cle.insert(0, 10 - std::min<size_t>(cle.size(), 10), '0');
    return cle;
}

// A text up to its NUL, at most `maximum` bytes.
std::string TexteBorne(std::string_view octets, size_t maximum) {
    octets = octets.substr(0, std::min(maximum, octets.size()));
    return std::string(octets.substr(0, octets.find('\0')));
}

// Both numbers of a range "low-high"; none for a text of another form.
std::optional<std::pair<double, double>> Intervalle(std::string_view texte) {
    const size_t tiret = texte.find('-');
    if (tiret == std::string_view::npos) return std::nullopt;
    const auto nombre = [](std::string_view t) -> std::optional<double> {
        double v = 0;
        const auto [fin, erreur] = std::from_chars(t.data(), t.data() + t.size(), v, std::chars_format::fixed);
        if (t.empty() || erreur != std::errc() || fin != t.data() + t.size() || !std::isfinite(v)) return std::nullopt;
        return v;
    };
    const auto bas = nombre(texte.substr(0, tiret));
    const auto haut = nombre(texte.substr(tiret + 1));
    if (!bas || !haut) return std::nullopt;
    return std::pair{*bas, *haut};
}

// The labels of a vocabulary a call reads, each code looked up once.
class Libelles {
public:
    explicit Libelles(const VocabulairePosologie& v) : vocabulaire_(v), curseur_(v.table()) {}
    // The label, empty when the table lacks the code.
    const std::string& De(int32_t code) {
        auto [it, nouveau] = lus_.try_emplace(code);
        if (nouveau)
            if (const auto p = curseur_.Egale(CleEntiers({code})))
                it->second = Fiche(VueFicheA(vocabulaire_.table(), *p)).Texte(vocabulaire_.libelle);
        return it->second;
    }

private:
    VocabulairePosologie vocabulaire_;
    Curseur curseur_;
    std::unordered_map<int32_t, std::string> lus_;
};

struct Profil {
    std::string Libelle;
    int32_t TypeProfil = 0;
    std::string ValeurProfil;
};

// What the titles and levels of one call read, beside the posologies: the
// tables open for the call's extent.
class Lecture {
public:
    Lecture()
        : tables_{&TablePosologies(),      &TableTerrains(),       &voc::Profils().table(), &voc::Natures().table(),
                  &TableTermes(),          &voc::Voies().table(), &TableIdentification()},
          terrains_(TableTerrains()),
          profils_(voc::Profils().table()),
          natures_(voc::Natures()),
          voies_(voc::Voies()) {}

    void Ferme() { tables_.Ferme(); }

    // The terrain of a code into `terrain`; when the table lacks it, the
    // record stays as it stood and its letters become "??".
    void Terrain(int32_t code, TerrainPosologie& terrain) {
        const auto p = terrains_.Egale(CleEntiers({code}));
        if (!p) {
            terrain.Terrain = messages::TerrainInconnu;
            return;
        }
        const Fiche f(VueFicheA(TableTerrains(), *p));
        terrain = {std::string(f.Texte(VDXPPTER::Terrain)),    f.Reel(VDXPPTER::AgeMin),
                   std::string(f.Texte(VDXPPTER::UniteAgeMin)), f.Reel(VDXPPTER::AgeMax),
                   std::string(f.Texte(VDXPPTER::UniteAgeMax)), f.Reel(VDXPPTER::PoidsMin),
                   f.Reel(VDXPPTER::PoidsMax)};
    }

    const std::optional<Profil>& ProfilDe(int32_t code) {
        auto [it, nouveau] = profils_lus_.try_emplace(code);
        if (nouveau)
            if (const auto p = profils_.Egale(CleEntiers({code}))) {
                const Fiche f(VueFicheA(voc::Profils().table(), *p));
                it->second = Profil{std::string(f.Texte(VDXPPRO::Libelle)), f.Entier(VDXPPRO::TypeProfil),
                                    std::string(f.Texte(VDXPPRO::ValeurProfil))};
            }
        return it->second;
    }

    std::string Indication(int32_t code) {
        const auto cle = CleIndication(code);
        if (!cle) return {};
        const auto fiche = FicheTerme(*cle);
        return fiche ? std::string(Fiche(*fiche).Texte(VDXVAMM::Libelle)) : std::string();
    }

    // The row of a posology of the base, its level and title left to make.
    LignePosologie Ligne(const Fiche& f, const TerrainPosologie& terrain) {
        LignePosologie l;
        l.CodePosologie = std::string(f.Texte(VDXPPROD::CodeCIP)) + std::string(f.Texte(VDXPPROD::Rang));
        l.PhraseTerrain = PhraseTerrain(terrain);
        l.CodeTerrain = f.Entier(VDXPPROD::CodeTerrain);
        l.CodeProfil = f.Entier(VDXPPROD::CodeProfil);
        if (const auto& profil = ProfilDe(l.CodeProfil)) l.LibelleProfil = profil->Libelle;
        l.CodeIndication = f.Entier(VDXPPROD::CodeAMM);
        l.LibelleIndication = Indication(l.CodeIndication);
        l.CodeNature = f.Entier(VDXPPROD::CodeNature);
        if (const std::string& nature = natures_.De(l.CodeNature); !nature.empty())
            l.TexteNature = messages::TitreTraitement + nature;
        l.CodeVoie = f.Entier(VDXPPROD::CodeVoie);
        if (const std::string& voie = voies_.De(l.CodeVoie); !voie.empty()) l.TexteVoie = messages::TitreVoie + voie;
        l.Implicite = f.Entier(VDXPPROD::Implicite) != 0 ? -1 : 0;
        return l;
    }

private:
    TablesOuvertes tables_;
    Curseur terrains_;
    Curseur profils_;
    Libelles natures_;
    Libelles voies_;
    std::unordered_map<int32_t, std::optional<Profil>> profils_lus_;
};

// The title: the terrain's phrase, then each part there is behind ". ".
// The first list puts the profile before the nature, the second the
// nature first.
std::string Titre(const LignePosologie& l, bool natureDabord) {
    std::string titre = l.PhraseTerrain;
    const auto ajoute = [&](const std::string& partie) {
        if (partie.empty()) return;
        titre += messages::TitreSeparateur;
        titre += partie;
    };
    if (natureDabord) ajoute(l.TexteNature);
    ajoute(l.LibelleProfil);
    if (!natureDabord) ajoute(l.TexteNature);
    ajoute(l.LibelleIndication);
    ajoute(l.TexteVoie);
    if (l.Implicite) titre += messages::TitreImplicite;
    return titre;
}

// Whether a posology fits what the second list asks: its indication among
// those asked (or none asked and it has none), and its profile matching a
// filter (or no filter and it has no profile).
bool Convient(const LignePosologie& l, const DemandePosologie& d, Lecture& lecture) {
    const auto& indications = d.Indications;
    if (indications.empty() && d.Filtres.empty()) return false;
    const auto cle = CleIndication(l.CodeIndication);
    if (cle.has_value() == indications.empty()) return false;
    if (cle && std::ranges::find(indications, *cle) == indications.end()) return false;
    const std::optional<Profil>& profil = lecture.ProfilDe(l.CodeProfil);
    if (d.Filtres.empty()) return !profil;
    if (!profil) return false;
    return std::ranges::any_of(d.Filtres, [&](const FiltreProfil& f) {
        if (f.TypeProfil != profil->TypeProfil) return false;
        if (f.TypeProfil == 1) return ProfilsSeRecouvrent(f.ValeurProfil, profil->ValeurProfil);
        return f.TypeProfil == 2 && indications.empty() && profil->ValeurProfil.find(f.ValeurProfil) != std::string::npos;
    });
}

// The product's two units of take; none for an unknown product.
std::optional<UnitesPrise> UnitesLues(std::string_view cip) {
    Curseur curseur(TableIdentification());
    const auto p = curseur.Egale(cip);
    if (!p) return std::nullopt;
    const Fiche f(VueFicheA(TableIdentification(), *p));
    return UnitesPrise{f.Entier(VDXIDPRO::CodeUnitePrise), f.Entier(VDXIDPRO::CodeUnitePrise2)};
}

// The doctor's posologies of the product's first six digits whose units
// are the product's (or 0, not all with NombreModeles), any of them for an
// unknown product.
void AjoutePrivees(std::string_view cip, std::vector<LignePosologie>& lignes) {
    const std::optional<UnitesPrise> unites = UnitesLues(cip);
    const auto unite = [&](int32_t u) { return u == 0 || u == unites->Premiere || u == unites->Seconde; };
    TablesOuvertes medecin;
    medecin.OuvreMedecin(TablePosologiesMedecin());
    const std::string depart = MarquePrivee + std::string(cip);
    const std::string_view prefixe = std::string_view(depart).substr(0, PrefixePrive);
    Curseur curseur(TablePosologiesMedecin());
    auto p = curseur.SuperieureOuEgale(depart);
    if (p && !curseur.Cle().starts_with(prefixe)) p.reset();
    for (; p; p = curseur.SuivanteAvec(prefixe)) {
        const Fiche f(VueFicheA(TablePosologiesMedecin(), *p));
        const int32_t u1 = f.Entier(POSO::CodeUnite);
        const int32_t u2 = f.Entier(POSO::CodeUnite2);
        if (unites && (!unite(u1) || !unite(u2) || (u1 == 0 && u2 == 0 && f.Entier(POSO::NombreModeles) == 0)))
            continue;
        LignePosologie l;
        l.Niveau = niveaux_posologie::Privee;
        l.CodePosologie = f.Texte(POSO::CodePosologie);
        l.Titre = f.Texte(POSO::Libelle);
        lignes.push_back(std::move(l));
    }
    medecin.Ferme();
}

// The single posology that applies, when none is implied, is raised to
// Seule; then the rows by level, and within a level by title in byte
// order, each by an exchange sort.
void Trie(std::vector<LignePosologie>& lignes) {
    using namespace niveaux_posologie;
    const auto niveau = [](int32_t n) { return [n](const LignePosologie& l) { return l.Niveau == n; }; };
    if (std::ranges::none_of(lignes, niveau(Seule)) && std::ranges::count_if(lignes, niveau(Applicable)) == 1)
        std::ranges::find_if(lignes, niveau(Applicable))->Niveau = Seule;
    TriEchange(lignes, [](const LignePosologie& a, const LignePosologie& b) { return a.Niveau > b.Niveau; });
    for (size_t i = 0; i < lignes.size(); ++i)
        for (size_t j = i + 1; j < lignes.size() && lignes[j].Niveau == lignes[i].Niveau; ++j)
            if (lignes[i].Titre > lignes[j].Titre) std::swap(lignes[i], lignes[j]);
}

// The twenty numbers of a posology from a record of the base or of the
// doctor's, whose layouts name them alike, the other unit given apart.
#define NOMBRES_POSOLOGIE(L, f, unite2)                                                                        \
    f.Reel(L::DoseMin), f.Reel(L::DoseMax), f.Entier(L::CodeUnite), unite2, f.Reel(L::QuantiteRef),           \
        f.Entier(L::Conversion), f.Entier(L::PrisesMin), f.Entier(L::PrisesMax), f.Entier(L::Intervalle),     \
        f.Entier(L::CodePeriode), f.Entier(L::CodeMoment), f.Entier(L::DureeMin), f.Entier(L::DureeMax),      \
        f.Entier(L::CodeDuree), f.Reel(L::DoseMaximum), f.Entier(L::MaximumRapporte),                        \
        f.Entier(L::CodePeriodeMaximum), f.Entier(L::CodeSpecification), f.Entier(L::CodeSpecification2),     \
        f.Entier(L::NombreModeles)

// A posology of the doctor's, every field from its record, its text from
// TEXU.
PosologieHote ChargePrivee(std::string_view code) {
    TablesOuvertes medecin;
    medecin.OuvreMedecin(TablePosologiesMedecin());
    medecin.OuvreMedecin(TableTextesMedecin());
    const auto p = Curseur(TablePosologiesMedecin()).Egale(code);
    if (!p) throw Echec{CodeInconnu};
    const Fiche f(VueFicheA(TablePosologiesMedecin(), *p));
    std::string texte;
    if (const auto t = Curseur(TableTextesMedecin()).Egale(code))
        texte = TexteBorne(Fiche(VueFicheA(TableTextesMedecin(), *t)).Reste(DebutTexteMedecin), TexteMedecinMax);
    PosologieHote h{NOMBRES_POSOLOGIE(POSO, f, f.Entier(POSO::CodeUnite2)),
                    std::string(code),
                    std::string(f.Texte(POSO::CodeCIP)),
                    std::string(f.Texte(POSO::Libelle)),
                    std::string(f.Texte(POSO::TypeRef)),
                    std::move(texte)};
    medecin.Ferme();
    return h;
}

// A posology of the base: its title as the first list gives it, cut to
// Libelle's length, its text from VDXPTEXT, and as the other unit the
// product's one that isn't the posology's when it is to be converted.
PosologieHote ChargeDeLaBase(std::string_view code) {
    Lecture lecture;
    TablesOuvertes textes{&TableTextes()};
    const auto p = Curseur(TablePosologies()).Egale(code);
    if (!p) throw Echec{CodeInconnu};
    const Fiche f(VueFicheA(TablePosologies(), *p));
    TerrainPosologie terrain;
    lecture.Terrain(f.Entier(VDXPPROD::CodeTerrain), terrain);
    std::string texte;
    if (const auto t = Curseur(TableTextes()).Egale(code)) texte = TexteBorne(VueFicheA(TableTextes(), *t), TexteBaseMax);
    const std::string cip(f.Texte(VDXPPROD::CodeCIP));
    const int32_t unite = f.Entier(VDXPPROD::CodeUnite);
    int32_t autreUnite = 0;
    if (const auto unites = UnitesLues(cip); unites && f.Entier(VDXPPROD::Conversion) != 0)
        autreUnite = unites->Premiere == unite ? unites->Seconde : unites->Premiere;
    PosologieHote h{NOMBRES_POSOLOGIE(VDXPPROD, f, autreUnite),
                    std::string(code),
                    cip,
                    Titre(lecture.Ligne(f, terrain), false).substr(0, LibelleMax),
                    std::string(f.Texte(VDXPPROD::TypeRef)),
                    std::move(texte)};
    textes.Ferme();
    lecture.Ferme();
    return h;
}

#undef NOMBRES_POSOLOGIE

}  // namespace

int32_t NiveauPosologie(const TerrainPosologie& t, bool implicite, const PatientPosologie& patient) {
    using namespace niveaux_posologie;
    const char a = Lettre(t.Terrain, 0);
    const char b = Lettre(t.Terrain, 1);
    const bool borne = t.AgeMin != 0 || t.AgeMax != 0;
    bool applique = false;
    switch (patient.Terrain) {
        case 'A':
            applique = (a == 'A' && (b == 'E' || b == 'H' || b == 'F' || b == '\0')) || a == 'T';
            if (applique && a == 'A')
                applique = !(patient.Sexe == 'F' && b == 'H') && !((patient.Sexe == 'H' || patient.Sexe == 'M') && b == 'F');
            break;
        case 'E':
            applique = (a == 'A' && (b == 'E' || b == 'D')) || a == 'E' || a == 'T';
            if (applique && borne)
                applique = patient.Age != 0 ? AgeDansLesBornes(t, patient.Age) : Mois(t.AgeMax, t.UniteAgeMax) <= AgeEnfantMax;
            break;
        case 'N':
            applique = a == 'N' || a == 'T' || (a == 'E' && b == 'N');
            if (applique && borne) {
                const bool egales = t.AgeMin != 0 && t.AgeMax != 0 && Mois(t.AgeMin, t.UniteAgeMin) == Mois(t.AgeMax, t.UniteAgeMax);
                if (egales || patient.Age != 0) applique = AgeDansLesBornes(t, patient.Age);
            }
            break;
        case 'S': applique = a == 'S' || a == 'T'; break;
        default: break;
    }
    if (applique && patient.Poids > 0)
        applique = DansLesBornes(patient.Poids, t.PoidsMin, t.PoidsMin != 0, t.PoidsMax, t.PoidsMax != 0);
    if (!applique) return Exclue;
    return implicite ? Seule : Applicable;
}

std::string PhraseTerrain(const TerrainPosologie& t) {
    std::string phrase(LibelleTerrain(t.Terrain));
    AjouteBornes(
        phrase, t.AgeMin, t.AgeMax, [&](float v) { return Age(v, t.UniteAgeMin); },
        [&](float v) { return Age(v, t.UniteAgeMax); });
    AjouteBornes(phrase, t.PoidsMin, t.PoidsMax, Poids, Poids);
    return phrase;
}

std::vector<std::string> IndicationsDemandees(std::string_view texte, int32_t mode) {
    if (texte.size() < 2) return {};
    if (mode == 0) return {std::string(texte)};
    if (mode != 1) return {};
    TablesOuvertes tables{&TableLiensTermes()};
    std::vector<std::string> cles;
    Curseur curseur(TableLiensTermes(), CleCodeLie);
    for (auto p = curseur.PremiereAvec(texte); p; p = curseur.SuivanteAvec(texte)) {
        const Fiche f(VueFicheA(TableLiensTermes(), *p));
        if (f.Texte(VDXVAMMC::TypeLien) == LienIndication) cles.emplace_back(f.Texte(VDXVAMMC::CodeTerme).substr(0, 10));
    }
    tables.Ferme();
    return cles;
}

bool ProfilsSeRecouvrent(std::string_view filtre, std::string_view profil) {
    const auto f = Intervalle(filtre);
    const auto p = Intervalle(profil);
    if (!f || !p) return false;
    return std::max(f->first * MargeBasse, p->first) <= std::min(f->second * MargeHaute, p->second);
}

std::vector<LignePosologie> ListePosologies(const Contexte& contexte, std::string_view cip,
                                            const PatientPosologie& patient, const DemandePosologie* demande) {
    const DansContexte dans(contexte);
    std::vector<LignePosologie> lignes;
    Lecture lecture;
    Curseur posologies(TablePosologies());
    // A terrain the table lacks leaves the one before as it stood.
    TerrainPosologie terrain;
    for (auto p = posologies.PremiereAvec(cip); p; p = posologies.SuivanteAvec(cip)) {
        const Fiche f(VueFicheA(TablePosologies(), *p));
        lecture.Terrain(f.Entier(VDXPPROD::CodeTerrain), terrain);
        LignePosologie l = lecture.Ligne(f, terrain);
        l.Niveau = NiveauPosologie(terrain, l.Implicite != 0, patient);
        if (demande && l.Niveau != niveaux_posologie::Exclue && Convient(l, *demande, lecture))
            l.Niveau = niveaux_posologie::Adaptee;
        l.Titre = Titre(l, demande != nullptr);
        lignes.push_back(std::move(l));
    }
    if (contexte.ConnecteMedecin) AjoutePrivees(cip, lignes);
    lecture.Ferme();
    Trie(lignes);
    return lignes;
}

void VerifieCodePosologie(const Contexte& contexte, std::string_view code) {
    const bool privee = code.starts_with(MarquePrivee);
    if (privee && !contexte.ConnecteMedecin) throw Echec{MedecinNonConnecte};
    if (code.size() != (privee ? LongueurCodePrive : LongueurCodePosologie)) throw Echec{CodeMalForme};
}

PosologieHote ChargePosologie(const Contexte& contexte, std::string_view code) {
    VerifieCodePosologie(contexte, code);
    const DansContexte dans(contexte);
    return code.starts_with(MarquePrivee) ? ChargePrivee(code) : ChargeDeLaBase(code);
}

int32_t PosologiesExistent(const Contexte& contexte, std::string_view cip) {
    const DansContexte dans(contexte);
    int32_t ou = 0;
    TablesOuvertes tables{&TablePosologies()};
    if (Curseur(TablePosologies()).PremiereAvec(cip)) ou += 1;
    tables.Ferme();
    if (contexte.ConnecteMedecin) {
        TablesOuvertes medecin;
        medecin.OuvreMedecin(TablePosologiesMedecin());
        const std::string prefixe = (MarquePrivee + std::string(cip)).substr(0, PrefixePrive);
        if (Curseur(TablePosologiesMedecin()).PremiereAvec(prefixe)) ou += 2;
        medecin.Ferme();
    }
    return ou;
}

UnitesPrise UnitesPriseProduit(std::string_view cip) {
    TablesOuvertes tables{&TableIdentification()};
    const std::optional<UnitesPrise> unites = UnitesLues(cip);
    tables.Ferme();
    if (!unites) throw Echec{CodeInconnu};
    return *unites;
}

}  // namespace vdx
