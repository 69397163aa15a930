// The fixed texts the library shows or gives, byte for byte in code page 1252.
#pragma once

#include <string>
#include <string_view>

namespace vdx::messages {

inline constexpr char ErreurInterneDebut[] = "Une erreur interne est survenue lors de l'appel de la fonction ";
inline constexpr char ErreurInterneFin[] = " !";
inline constexpr char TitreErreurDll[] = "Erreur DLL";

inline constexpr char BaseAgee[] =
    "La Base de donn\xE9"
    "es VDX date de plus de cinq mois, pensez \xE0 faire la mise \xE0 jour !";
inline constexpr char TitreBaseAgee[] = "Information importante";

inline constexpr char HorsPhase[] =
    "Attention: la collection de fichiers VDX n'est pas en phase avec le composant VDX32.dll.\n"
    "KORVA ne pourra \xEAtre tenu pour responsable des anomalies qui pourraient survenir.\n\n"
    "Nous vous invitons \xE0 prendre contact avec votre maintenance logicielle ou avec notre service Hotline.";
inline constexpr char TitreHorsPhase[] = "     Information importante";

// A criteria search against a prescription that already holds interactions.
inline constexpr char InteractionsEnCours[] = "Il y a des interactions dans la prescription en cours";
inline constexpr char TitreAttention[] = "Attention !";

inline constexpr char EchecAgent[] = "probleme lors de sendmessage";
inline constexpr char TitreEchecAgent[] = "info";

inline constexpr char AnomalieNumero[] = "Anomalie num\xE9ro : ";
inline constexpr char SurLeFichier[] = " sur le fichier : ";

// FichierErreur when the store can't start.
inline constexpr char MagasinIndisponible[] = "CTree";

// The title of the window of the watching agent.
inline constexpr char FenetreAgent[] = "AgentVDX";

// Products: the mark of a deleted product behind its label in a search,
// the label of a laboratory missing from VDXLAB, the labels of CodeStatut.
inline constexpr char MarqueSupprime[] = " [SUP]";
inline constexpr char LaboratoireInconnu[] = "Laboratoire inconnu";
inline constexpr char ActeInconnu[] = "Acte inconnu";
inline constexpr char ActeTexteInconnu[] = "?????";
inline constexpr const char* LibellesStatut[] = {"Aucun", "AMM", "ATU de cohorte", "AMM Europ\xE9\x65nne",
                                                 "ATU nominative"};

// A label that can't be found doesn't fail a check: the row says so.
inline std::string CodeIntrouvable(std::string_view code) {
    return "Code " + std::string(code) + " introuvable";
}
// A product of a reverse index of the composition that VDXPRO lacks.
inline std::string CIPInexistant(std::string_view code) { return "CIP : " + std::string(code) + " inexistant"; }
// A class of a product that VDXCLA lacks.
inline constexpr char LibelleInconnu[] = "Libell\xE9 inconnu";

// Contra-indications: a term or a product the base lacks, a line by common
// name without label, and the word of the labels that tell a pregnancy.
// A term of a product that the vocabulary of terms lacks.
inline std::string MotCleInexistant(std::string_view code) { return "Mot Cl\xE9 " + std::string(code) + " inexistant."; }
inline std::string CodeInexistant(std::string_view code) { return "Code " + std::string(code) + " inexistant."; }
inline constexpr char LibelleSansAccentInconnu[] = "Libelle inconnu";
inline constexpr char MotGrossesse[] = "GROSSESSE";

// Interactions: a kind or a severity the base lacks (behind its code), and
// a product of ProduitInteractions_Vdx that VDXPRO lacks.
inline constexpr char TypeInconnu[] = " : Type Inconnu";
inline std::string CIPIntrouvable(std::string_view code) { return "CIP " + std::string(code) + " Introuvable"; }

// The pregnancy control. The periods of PeriodeGrossesse, 0 to 4.
inline constexpr char GrossesseEntiere[] = "Toute la grossesse";
inline constexpr char PremierTrimestre[] = "1er trimestre";
inline constexpr char DeuxiemeTrimestre[] = "2eme trimestre";
inline constexpr char TroisiemeTrimestre[] = "3e trimestre";
inline constexpr char DepuisDeuxiemeTrimestre[] = "A partir du 2eme trimestre";
// The levels of NiveauGrossesse, 0 to 4: name, colour and sentence.
inline constexpr char NiveauPossible[] = "Possible";
inline constexpr char NiveauEnvisageable[] = "Envisageable";
inline constexpr char NiveauAEviter[] = "A \xE9viter par prudence";
inline constexpr char NiveauDeconseille[] = "D\xE9" "conseill\xE9";
inline constexpr char NiveauContreIndique[] = "Contre-indiqu\xE9";
inline constexpr char CouleurVert[] = "Vert";
inline constexpr char CouleurVertClair[] = "Vert clair";
inline constexpr char CouleurJaune[] = "Jaune";
inline constexpr char CouleurOrange[] = "Orange";
inline constexpr char CouleurRouge[] = "Rouge";
inline constexpr char PhrasePossible[] =
    "L'utilisation du m\xE9" "dicament est possible pendant la grossesse car les donn\xE9" "es disponibles sont "
    "rassurantes";
inline constexpr char PhraseEnvisageable[] =
    "L'utilisation du m\xE9" "dicament est envisageable pendant la grossesse car les donn\xE9" "es disponibles sont "
    "globalement rassurantes et doivent etre enrichies";
inline constexpr char PhraseAEviter[] =
    "L'utilisation du m\xE9" "dicament est \xE0 \xE9viter par prudence pendant la grossesse car les donn\xE9" "es "
    "disponibles sont rassurantes mais encore parcellaires";
inline constexpr char PhraseDeconseille[] =
    "L'utilisation du m\xE9" "dicament est d\xE9" "conseill\xE9" "e pendant la grossesse en raison d'une suspicion "
    "d'effet malformatif ou foetotoxique, mais elle n'est pas formellement proscrite si le b\xE9n\xE9" "fice "
    "th\xE9rapeutique le justifie";
inline constexpr char PhraseContreIndique[] =
    "L'utilisation du m\xE9" "dicament est formellement proscrite ( contre-indiqu\xE9" "e) pendant la grossesse en "
    "raison d'un risque malformatif ou foetotoxique prouv\xE9 dans l'esp\xE8" "ce humaine. Une contraception "
    "efficace est obligatoire pour prescrire ce m\xE9" "dicament";
// The second field of every row of the pregnancy control.
inline constexpr char GrossesseInconnu[] = "inconnu !";

// The heat-wave sentence: its head around the product's label, then a
// line a component, and the further categories of one number.
inline constexpr char CaniculeDebut[] = "Le produit ";
inline constexpr char CaniculeSansLibelle[] = " [ Libelle Inconnu ]";
inline constexpr char CaniculeSuite[] =
    " est \xE0 prendre en consid\xE9ration en cas de vague de chaleur car comportant dans sa composition : ";
inline constexpr char CaniculeLigne[] = " - ";
inline constexpr char CaniculeCategorie[] = ", appartenant \xE0 la cat\xE9gorie des ";
inline constexpr char CaniculeAutreCategorie[] = " et des ";

// The texts of the kosher rating of a product, by its value 1 to 9; any
// other value has the last.
inline constexpr const char* TextesMediel[] = {
    "Casher pour P\xE2que",
    "Casher pour P\xE2que kitniot",
    "Casher hors P\xE2que",
    "Tol\xE9r\xE9",
    "Tol\xE9r\xE9 pour P\xE2que kitniot",
    "Tol\xE9r\xE9 hors P\xE2que",
    "R\351f\351renc\351 pour information",
    "Casher pour P\xE2que - lait non surveill\xE9",
    "Casher hors P\xE2que - lait non surveill\xE9",
    "Aucune information MEDIEL disponible ",
};
// The tenth text of the monograph's list, and what each of its texts ends
// with.
inline constexpr char MedielDixieme[] = "Casher pour P\xE2que kitniot - lait non surveill\xE9";
inline constexpr char SourceMediel[] = " (source MEDIEL)";

// The period of a cycle, which no vocabulary table holds.
inline constexpr char Cycle[] = "cycle";
// The labels of the terrains of a posology, by their one or two letters.
inline constexpr char TerrainAdulte[] = "Adulte";
inline constexpr char TerrainAdolescent[] = "Adolescent";
inline constexpr char TerrainAdulteEnfant[] = "Adulte - Enfant";
inline constexpr char TerrainAdulteFemme[] = "Adulte Femme";
inline constexpr char TerrainAdulteHomme[] = "Adulte Homme";
inline constexpr char TerrainEnfant[] = "Enfant";
inline constexpr char TerrainEnfantNourrisson[] = "Enfant - Nourrisson";
inline constexpr char TerrainNourrisson[] = "Nourrisson";
inline constexpr char TerrainSujetAge[] = "Sujet \xE2g\xE9";
inline constexpr char TerrainToutAge[] = "Tout \xE2ge";
// The letters of a terrain a posology's table lacks, which match no patient.
inline constexpr char TerrainInconnu[] = "??";
// The ages and weights of a terrain's phrase.
inline constexpr char BorneMoinsDe[] = " de moins de ";
inline constexpr char BornePlusDe[] = " de plus de ";
inline constexpr char BorneDe[] = " de ";
inline constexpr char BorneA[] = " \xE0 ";
inline constexpr char AgeAn[] = " an";
inline constexpr char AgeAns[] = " ans";
inline constexpr char AgeJour[] = " jour";
inline constexpr char AgeJours[] = " jours";
inline constexpr char AgeSemaine[] = " semaine";
inline constexpr char AgeSemaines[] = " semaines";
inline constexpr char AgeMois[] = " mois";
inline constexpr char Kilos[] = " Kg";
// The parts of a posology's title.
inline constexpr char TitreSeparateur[] = ". ";
inline constexpr char TitreTraitement[] = "Traitement ";
inline constexpr char TitreVoie[] = "Voie ";
inline constexpr char TitreImplicite[] = ". (Implicite)";
// The words of a posology's sentence.
inline constexpr char ParKilo[] = " par Kilo";
inline constexpr char ParMetreCarre[] = " par m\xE8tre carr\xE9";
inline constexpr char Pour[] = " pour ";
inline constexpr char PourKilos[] = " kilos";
inline constexpr char PourMetresCarres[] = " m\xE8tres carr\xE9";
inline constexpr char MarqueDose[] = "##1";
inline constexpr char MarqueDuree[] = "##2";
inline constexpr char CycleDu[] = " du ";
inline constexpr char CyclePremierAu[] = "er au ";
inline constexpr char CycleEmeAu[] = "\xE8me au ";
inline constexpr char CycleEmeJour[] = "\xE8me jour du cycle";
inline constexpr char CycleLe[] = " le ";
inline constexpr char CyclePremierJour[] = "er jour du cycle";
inline constexpr char Fois[] = " fois";
inline constexpr char Par[] = " par ";
inline constexpr char ToutesLes[] = " toutes les ";
inline constexpr char TousLes[] = " tous les ";
inline constexpr char Pendant[] = " pendant ";
inline constexpr char DureeA[] = "\xE0 ";
inline constexpr char Maximum[] = " Maximum ";
// The packages of a unit the product has no word for.
inline constexpr char SansContenant[] = " ?.";
// The packages of an unknown product: its models, spelled as they always were.
inline constexpr char Modeles[] = " Mod\xCBles";
inline constexpr char Modele[] = " Mod\xCBle";
// The alerts of a dose check.
inline constexpr char AlerteMaximum[] = "Attention, la posologie journaliere maximum est de : ";
inline constexpr char AlerteBasse[] = "Attention, la posologie journaliere recommand\xE9" "e la plus basse est de : ";
inline constexpr char AlerteHaute[] = "Attention, la posologie journaliere recommand\xE9" "e la plus \xE9lev\xE9" "e est de : ";
inline constexpr char AlertePatient[] = " pour ce patient de ";
inline constexpr char AlerteKgs[] = " Kg(s) ";
inline constexpr char AlerteVirguleSoit[] = ", soit ";
inline constexpr char AlerteSoit[] = " soit ";
inline constexpr char AlerteKgsPatient[] = " Kg(s) pour ce patient";
inline constexpr char AlerteM2Patient[] = " M2(s) pour ce patient ";
inline constexpr char AlerteParKg[] = " par Kg";
inline constexpr char AlertePourKgs[] = " Kg(s)";
inline constexpr char AlerteParM2[] = " par M2";
inline constexpr char AlertePourM2[] = " M2";
inline constexpr char AlerteDureeMaximum[] = "Attention, la dur\xE9" "e de traitement maximum est de : ";
inline constexpr char AlerteDureeCourte[] =
    "Attention, la dur\xE9" "e de traitement recommand\xE9" "e la plus courte est de : ";
inline constexpr char AlerteDureeLongue[] =
    "Attention, la dur\xE9" "e de traitement recommand\xE9" "e la plus longue est de : ";
inline constexpr char AlerteJours[] = " jour(s)";
// What the lists of posologies tell the agent, the code behind.
inline constexpr char NoticePosoliste[] = "Posoliste@CodeCIP=";
inline constexpr char NoticePosoliste2[] = "Posoliste2@CodeCIP=";
inline constexpr char NoticeMonographie[] = "MonographieHtml@CodeCIP=";

// The physico-chemical incompatibilities: a route not known, the sides
// that stand for a whole product or for any.
inline constexpr char VoieInconnue[] = "Voie inconnue";
inline constexpr char ToutComposant[] = "Tout composant confondu";
inline constexpr char ToutProduit[] = "Tout Produit";
inline constexpr char TousComposants[] = "Tous Composants Confondus";

}  // namespace vdx::messages
