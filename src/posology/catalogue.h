// The posologies of a product: ranked against one patient, each with its
// readable title; loaded one by one into the form the host keeps. They come
// from the base (VDXPPROD, its terrains and free texts) and, when the
// doctor's base is connected, from the doctor's own (POSO, TEXU).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// The levels of a posology against a patient.
namespace niveaux_posologie {
inline constexpr int32_t Privee = 0;      // the doctor's own
inline constexpr int32_t Seule = 1;       // implied, or the only one that applies
inline constexpr int32_t Applicable = 2;
inline constexpr int32_t Exclue = 3;      // not for this patient
inline constexpr int32_t Adaptee = 4;     // applies and fits the indication and profile asked
}  // namespace niveaux_posologie

// A weight as a host gives it: above 600, in grams.
inline float PoidsEnKilos(int32_t poids) {
    constexpr int32_t PoidsEnGrammes = 600;
    return poids > PoidsEnGrammes ? static_cast<float>(poids) / 1000 : static_cast<float>(poids);
}

// The patient a list is ranked against, as the checks of the lists leave it.
struct PatientPosologie {
    char Terrain = '\0';  // the first letter of the patient's terrain
    char Sexe = '\0';
    int32_t Age = 0;      // months, 0 unknown
    float Poids = 0;      // kilograms, 0 unknown
};

// The patient a posology is for, as VDXPPTER holds it.
struct TerrainPosologie {
    std::string Terrain;
    float AgeMin = 0;
    std::string UniteAgeMin;
    float AgeMax = 0;
    std::string UniteAgeMax;
    float PoidsMin = 0;
    float PoidsMax = 0;
};

// The level of a posology of `terrain` for the patient: Seule (implied) or
// Applicable when it applies, else Exclue.
int32_t NiveauPosologie(const TerrainPosologie& terrain, bool implicite, const PatientPosologie& patient);
// The terrain's label, then its ages and weights in words.
std::string PhraseTerrain(const TerrainPosologie& terrain);

// A row of the lists. PosoListe_Vdx gives the first three fields; the title
// of each list puts the labels in its own order.
struct LignePosologie {
    int32_t Niveau = 0;
    std::string CodePosologie;
    std::string Titre;
    std::string PhraseTerrain;
    int32_t CodeTerrain = 0;
    std::string LibelleProfil;
    int32_t CodeProfil = 0;
    std::string LibelleIndication;
    int32_t CodeIndication = 0;
    std::string TexteNature;  // "Traitement " and the label, or empty
    int32_t CodeNature = 0;
    std::string TexteVoie;    // "Voie " and the label, or empty
    int32_t CodeVoie = 0;
    int32_t Implicite = 0;    // 0, or -1 (the host's true)
};
VDX_LIGNE(LignePosologie, Niveau, CodePosologie, Titre, PhraseTerrain, CodeTerrain, LibelleProfil, CodeProfil,
          LibelleIndication, CodeIndication, TexteNature, CodeNature, TexteVoie, CodeVoie, Implicite);
VDX_VUE(LignePosologieCourte, LignePosologie, Niveau, CodePosologie, Titre);
// The flat row of the second list: no Implicite, the fields in another order.
VDX_VUE(LignePosologiePlate, LignePosologie, Niveau, CodePosologie, Titre, LibelleIndication, TexteNature,
        LibelleProfil, PhraseTerrain, TexteVoie, CodeIndication, CodeNature, CodeProfil, CodeTerrain, CodeVoie);

// A profile filter of the second list: its type (1 a range "low-high", 2 a
// text) and value.
struct FiltreProfil {
    int32_t TypeProfil = 0;
    std::string ValeurProfil;
};

// What the second list looks for: indication keys of ten digits, profiles.
struct DemandePosologie {
    std::vector<std::string> Indications;
    std::vector<FiltreProfil> Filtres;
};

// The indications asked by a text of at least two characters: with mode 0
// the text is one key; with mode 1 a prefix of the codes linked with
// indications (VDXVAMMC, links of status "01"). None otherwise. Throws
// Echec(-500).
std::vector<std::string> IndicationsDemandees(std::string_view texte, int32_t mode);

// Whether the ranges "low-high" of a filter and a profile overlap, the
// filter widened by 5 % on each side. A text of another form never does.
bool ProfilsSeRecouvrent(std::string_view filtre, std::string_view profil);

// The posologies of a seven-digit CodeCIP, ranked and sorted: the base's,
// then when the doctor's base is connected the doctor's of the same six
// first digits whose units fit the product. With `demande` (the second
// list) a posology that applies and fits it is Adaptee, and the titles put
// the nature first. Throws Echec(-500).
std::vector<LignePosologie> ListePosologies(const Contexte& contexte, std::string_view cip,
                                            const PatientPosologie& patient, const DemandePosologie* demande);

// The form of a posology the host keeps: 20 numbers, then 5 strings.
struct PosologieHote {
    float DoseMin = 0;
    float DoseMax = 0;
    int32_t CodeUnite = 0;
    int32_t CodeUnite2 = 0;
    float QuantiteRef = 0;
    int32_t Conversion = 0;
    int32_t PrisesMin = 0;
    int32_t PrisesMax = 0;
    int32_t Intervalle = 0;
    int32_t CodePeriode = 0;
    int32_t CodeMoment = 0;
    int32_t DureeMin = 0;
    int32_t DureeMax = 0;
    int32_t CodeDuree = 0;
    float DoseMaximum = 0;
    int32_t MaximumRapporte = 0;
    int32_t CodePeriodeMaximum = 0;
    int32_t CodeSpecification = 0;
    int32_t CodeSpecification2 = 0;
    int32_t NombreModeles = 0;
    std::string CodePosologie{};
    std::string CodeCIP{};
    std::string Libelle{};
    std::string TypeRef{};
    std::string Texte{};
};
VDX_LIGNE(PosologieHote, DoseMin, DoseMax, CodeUnite, CodeUnite2, QuantiteRef, Conversion, PrisesMin, PrisesMax,
          Intervalle, CodePeriode, CodeMoment, DureeMin, DureeMax, CodeDuree, DoseMaximum, MaximumRapporte,
          CodePeriodeMaximum, CodeSpecification, CodeSpecification2, NombreModeles, CodePosologie, CodeCIP, Libelle,
          TypeRef, Texte);

// A private CodePosologie: "#", the seven digits and three characters.
inline constexpr char MarquePrivee = '#';
inline constexpr size_t LongueurCodePosologie = 9;
inline constexpr size_t LongueurCodePrive = 11;

// A posology's code, of the base (nine characters) or of the doctor's
// (eleven, "#" first). Throws Echec: -4 a private code without the doctor's
// base, -13 a code of another length.
void VerifieCodePosologie(const Contexte& contexte, std::string_view code);
// One posology by its code, checked as above. Throws Echec: -4, -13, -90 an
// unknown code, -500.
PosologieHote ChargePosologie(const Contexte& contexte, std::string_view code);

// Where a product has posologies: 1 in the base, plus 2 among the doctor's
// (by the first six digits). Throws Echec(-500).
int32_t PosologiesExistent(const Contexte& contexte, std::string_view cip);

// The units of take of a product, from VDXIDPRO. Throws Echec: -90 an
// unknown product, -500.
struct UnitesPrise {
    int32_t Premiere = 0;
    int32_t Seconde = 0;
};
UnitesPrise UnitesPriseProduit(std::string_view cip);

}  // namespace vdx
