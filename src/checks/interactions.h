// Drug interactions: each product of a prescription broken down into its
// substances, their interaction classes and the ancestors of these, and the
// couples of classes of VDXZICOU tried between the lines in their order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "checks/voies.h"
#include "session/contexte.h"
#include "session/lignes.h"

namespace vdx {

// A substance of a line: the substance itself (both codes equal) or one of
// its synonyms.
struct SubstanceLigne {
    int32_t CodeSubstance;
    int32_t CodeSynonyme;
    std::string Libelle;
};

// A class of a line: the class a substance belongs to (its root), or an
// ancestor of it.
struct ClasseLigne {
    int32_t IndexSubstance;
    int32_t IndexAssociee;  // the substance it needs beside it, or -1
    int32_t CodeClasseRacine;
    int32_t CodeClasse;
    std::string Libelle;
    int32_t ClasseActive;
};

struct LignePrescription {
    std::string CodeCIP;
    std::string Libelle;
    std::vector<SubstanceLigne> Substances;
    std::vector<ClasseLigne> Classes;
    std::vector<Voie> Voies;
};

// A row of the analysis, the 23 fields of Interactions2_Vdx.
struct FicheInteraction2 {
    std::string CIP1, CIP2, Libelle1, Libelle2, LibelleGravite, TexteType, Reference;
    int32_t Niveau = 0;
    std::string Texte1, Texte2, Texte3, Texte4, Classe1, Classe2, Voie1, Voie2;
    int32_t CodeType = 0, Niveau2 = 0, Substance2 = 0, Substance1Associee = 0, Substance2Associee = 0;
    std::string CodeCondition, LibelleCondition;
};

// The kinds of couple.
enum GenreCouple : int32_t { EntreProduits = 0, SubstanceExterieure = 1, ToutProduitParVoie = 2 };
// The second code of a row of a substance taken outside the prescription.
inline constexpr char SansSecondProduit[] = "0000000";

// The route test: an entry of `liste` ("|"-separated, cut at its first
// empty entry) beginning with "-" vetoes a code that begins with the rest;
// otherwise an entry the code begins with accepts it. An empty code fails.
bool VoieAdmise(std::string_view code, std::string_view liste);

// Text n (0 to 3) of a couple's record, cut by the lengths of its fixed
// part and at a NUL; never read past the record.
std::string TexteDuCouple(std::string_view couple, int n);

// The line of a product (a CodeCIP already mapped), `libelleAbsent` being
// the label of a product VDXPRO lacks. Throws Echec(-500).
LignePrescription ConstruitLigne(const std::string& codeCIP, std::string_view libelleAbsent);

// The rows of a prescription, sorted by level from the highest, those below
// the context's NiveauInteraction left out. Throws Echec.
std::vector<FicheInteraction2> AnalyseInteractions(const Contexte& contexte, const std::vector<std::string>& codesCIP);

// What one product can interact with, alone: every row, as the analysis
// would give them beside any other product.
std::vector<FicheInteraction2> InteractionsDuProduit(const Contexte& contexte, const std::string& codeCIP);
// The same, one row per text of the kind, by level from the highest.
std::vector<FicheInteraction2> InteractionsDuProduitParType(const Contexte& contexte, const std::string& codeCIP);

// Rows by level from the highest, by the exchange sort.
void TriParNiveau(std::vector<FicheInteraction2>& lignes);

VDX_LIGNE(FicheInteraction2, CIP1, CIP2, Libelle1, Libelle2, LibelleGravite, TexteType, Reference, Niveau, Texte1,
          Texte2, Texte3, Texte4, Classe1, Classe2, Voie1, Voie2, CodeType, Niveau2, Substance2, Substance1Associee,
          Substance2Associee, CodeCondition, LibelleCondition);
// The shorter records of Interactions_Vdx and ProduitInteractions_Vdx.
VDX_VUE(VueInteraction, FicheInteraction2, Niveau, LibelleGravite, Libelle1, Libelle2, TexteType, Reference, CIP1,
        CIP2);
VDX_VUE(VueProduitInteraction, FicheInteraction2, Niveau, LibelleGravite, TexteType, Reference);
}  // namespace vdx
