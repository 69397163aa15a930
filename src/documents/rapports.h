// The HTML reports of the checks: one skeleton for the family (the head,
// the title line, a list part and a detail part joined at the end, the
// character table run over the finished page) and one renderer a member
// for what differs. A renderer takes the rows of its check already
// computed, or the check's negative code, and gives the page in code page
// 1252; what it reads of the base it reads through the callbacks it is
// given, so that it can be tried on rows alone.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "checks/allergies.h"
#include "checks/contreindications.h"
#include "checks/incompatibilites.h"
#include "checks/interactions.h"
#include "checks/surdosage.h"
#include "products/rubriques.h"

namespace vdx {

// What a report was given: its check's rows, or the check's negative code
// (the page then has its head and an empty body).
template <class Ligne>
struct Controle {
    std::vector<Ligne> lignes;
    int32_t code = 0;  // negative on a failure of the check
    bool Echoue() const { return code < 0; }
};

// The text a report shows beside a product of a pair: chapter 1 of the
// further texts, lines as "<BR>".
using ChapitreProduit = std::function<std::string(const std::string& cip)>;

// The text of ChapitreIAM: chapter 1 of VDXVAMST turned into text, or
// "Information indisponible". Throws Echec(-500).
std::string ChapitreIAM(const std::string& cip);

// The severity colour of a level, an empty text for a level outside 1 to 4.
std::string_view CouleurGravite(int32_t niveau);

// The interactions, of InteractionsHtml_Vdx and Interactions2Html_Vdx:
// rows grouped under their severity, a row of a substance taken outside
// without the table of its pair, a conditional row with its condition, the
// messages of one product apart under "Messages Produits".
std::string RapportInteractions(const Controle<FicheInteraction2>& controle, std::string_view feuilleStyle,
                                const ChapitreProduit& chapitre);

// The contra-indications and precautions against a patient, members 1 to 3
// (`membre`), with the patient's pregnancy and breast-feeding to name the
// cause of a row, and member 2's title.
struct PatientRapport {
    int32_t Grossesse = 0;
    int32_t Allaitement = 0;
};
std::string RapportContreIndications(const Controle<AlerteCI>& controle, int membre, const PatientRapport& patient,
                                     std::string_view titre, std::string_view feuilleStyle);

// The allergies, then when asked the excipients with known effect;
// `ligneDC` tells a line by common name, whose rows say that any of its
// products may hold the cause.
std::string RapportAllergies(const Controle<FicheAllergie>& allergies, const Controle<FicheAllergie>* notoires,
                             const std::function<bool(const std::string&)>& ligneDC, std::string_view feuilleStyle);

// The redundancies of a prescription.
std::string RapportSurdosage(const Controle<FicheSurdosage>& controle, std::string_view feuilleStyle);

// The opposable medical references of the products of a prescription.
std::string RapportRMO(const Controle<RMOProduit>& controle, std::string_view feuilleStyle);

// The physico-chemical incompatibilities of a prescription, and the sheet
// of one pair (its texts "Information provisoirement indisponible" when
// the base holds none).
std::string RapportIPC(const Controle<LigneIPC>& controle, std::string_view feuilleStyle);
std::string FicheIPC(const std::vector<LigneIPC>& lignes, std::string_view feuilleStyle);

}  // namespace vdx
