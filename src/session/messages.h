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
inline constexpr const char* LibellesStatut[] = {"Aucun", "AMM", "ATU de cohorte", "AMM Europ\xE9" "enne",
                                                 "ATU nominative"};

// A label that can't be found doesn't fail a check: the row says so.
inline std::string CodeIntrouvable(std::string_view code) {
    return "Code " + std::string(code) + " introuvable";
}
// A product of a reverse index of the composition that VDXPRO lacks.
inline std::string CIPInexistant(std::string_view code) { return "CIP : " + std::string(code) + " inexistant"; }
// A class of a product that VDXCLA lacks.
inline constexpr char LibelleInconnu[] = "Libell\xE9 inconnu";

}  // namespace vdx::messages
