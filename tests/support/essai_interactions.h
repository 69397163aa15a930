// For the tests of the interactions and of what calls them: six products
// with their components, synonyms, interaction classes and their parents,
// routes, severities, kinds and couples of each kind. Texts are given in
// UTF-8.
#pragma once

#include "checks/interactions.h"
#include "store/fixture.h"

namespace vdx::essai::interactions {

inline constexpr char Actiskenan[] = "3000001";   // morphine (and its synonym), oral
inline constexpr char Codoliprane[] = "3000002";  // codeine, paracetamol; no route
inline constexpr char Zeclar[] = "3000003";       // clarithromycin, ritonavir in the second list; oral
inline constexpr char Colchimax[] = "3000004";    // colchicine; buccal
inline constexpr char Muet[] = "3000005";         // nothing admitted to the analysis
inline constexpr char Perfalgan[] = "3000006";    // paracetamol (an inactive class); intravenous

struct Couple {
    int32_t a, b, numero, genre, sens, gravite, type;
    const char* voiesA;
    const char* voiesB;
    const char* filtreA = "T";
    const char* substancesA = "";
    const char* substancesB = "";
    const char* termes = "";
};

inline void RemplitInteractions(BaseDeTest& b, bool avecParents) {
    for (auto [cip, libelle] : {std::pair{Actiskenan, "ACTISKENAN 10MG GELULE"}, {Codoliprane, "CODOLIPRANE CPR"},
                                {Zeclar, "ZECLAR 500MG CPR"}, {Colchimax, "COLCHIMAX CPR"}, {Muet, "PRODUIT MUET"},
                                {Perfalgan, "PERFALGAN INJ"}})
        b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", libelle}});
    b.Ajoute("VDXCIP13", {{"CodeCIP", Actiskenan}, {"CIP13", "3400930000011"}});
    for (auto [code, libelle, actif] :
         {std::tuple{100, "MORPHINE", 1}, {101, "CODEINE", 1}, {102, "PARACETAMOL", 1}, {103, "ALCOOL", 1},
          {104, "SUBSTANCE MUETTE", 0}, {105, "CLARITHROMYCINE", 1}, {106, "COLCHICINE", 1}, {108, "RITONAVIR", 1},
          {109, "MORPHINE BASE", 1}})
        b.Ajoute("VDXVPA", {{"CodeSubstance", code}, {"Libelle", libelle}, {"Interactions", actif}});
    const auto composant = [&b](const char* table, const char* cip, const char* rang, int32_t substance, int32_t admis) {
        b.Ajoute(table, {{"CodeCIP", cip}, {"Rang", rang}, {"CodeSubstance", substance}, {"Interactions", admis}});
    };
    composant("VDXVCOMP", Actiskenan, "001", 100, 1);
    composant("VDXVCOMP", Codoliprane, "001", 101, 1);
    composant("VDXVCOMP", Codoliprane, "002", 102, 1);
    composant("VDXVCOMP", Zeclar, "001", 105, 1);
    composant("VDXVCOME", Zeclar, "001", 108, 1);
    composant("VDXVCOMP", Colchimax, "001", 106, 1);
    composant("VDXVCOMP", Muet, "001", 104, 1);  // the substance takes no part
    composant("VDXVCOMP", Muet, "002", 102, 0);  // the row takes no part
    composant("VDXVCOMP", Perfalgan, "001", 102, 1);
    b.Ajoute("VDXWSYNC", {{"CodeSubstance", 100}, {"CodeSynonyme", 109}});

    for (auto [code, libelle, active] :
         {std::tuple{10, "MORPHINIQUES", 1}, {11, "DEPRESSEURS DU SNC", 1}, {12, "MACROLIDES", 1},
          {13, "COLCHICINE", 1}, {14, "PARACETAMOL", 0}, {15, "ANTALGIQUES", 1}, {16, "OPIACES FORTS", 1},
          {17, "MACROLIDES ET RITONAVIR", 1}})
        b.Ajoute("VDXZICLA", {{"CodeClasse", code}, {"Libelle", libelle}, {"ClasseActive", active}});
    for (auto [substance, associee, classe] : {std::tuple{100, 0, 10}, {101, 0, 10}, {109, 0, 16}, {105, 0, 12},
                                               {105, 108, 17}, {106, 0, 13}, {102, 0, 14}})
        b.Ajoute("VDXZICLC", {{"CodeSubstance", substance}, {"CodeSubstanceAssociee", associee}, {"CodeClasse", classe}});
    // A hierarchy with a cycle: 10 under 11, 11 under 15, 15 under 11.
    for (auto [classe, pere] : {std::pair{10, 11}, {11, 15}, {15, 11}})
        b.Ajoute("VDXZICLP", {{"CodeClasse", classe}, {"CodeClassePere", pere}});

    b.Ajoute("VDXIDVOI", {{"CodeVoie", "A01"}, {"Libelle", "orale"}})
        .Ajoute("VDXIDVOI", {{"CodeVoie", "A02"}, {"Libelle", "buccale"}})
        .Ajoute("VDXIDVOI", {{"CodeVoie", "A05"}, {"Libelle", "intraveineuse"}});
    for (auto [cip, voie] : {std::pair{Actiskenan, "A01"}, {Zeclar, "A01"}, {Colchimax, "A02"}, {Perfalgan, "A05"}})
        b.Ajoute("VDXIDPVO", {{"CodeCIP", cip}, {"CodeVoie", voie}});

    for (auto [code, libelle, niveau] : {std::tuple{1, "Contre-indication", 4}, {2, "Association déconseillée", 3},
                                         {3, "Précaution d'emploi", 2}, {4, "A prendre en compte", 1},
                                         {5, "Information", 0}})
        b.Ajoute("VDXZIGRA", {{"Code", code}, {"LibelleGravite", libelle}, {"Niveau", niveau}});
    for (auto [code, texte] : {std::pair{1, "Toxicité de $2 majorée par $1"}, {2, "Dépression respiratoire : $1 et $2"},
                               {4, "$2 et $1"}, {5, "Sans marque"}})
        b.Ajoute("VDXZITYP", {{"Code", code}, {"TexteType", texte}});
    b.Ajoute("VDXVAMM", {{"CodeTerme", "CI00000001"}, {"TypeAMM", "2"}, {"Libelle", "Grossesse"}})
        .Ajoute("VDXVAMM", {{"CodeTerme", "CI00000002"}, {"TypeAMM", "2"}, {"Libelle", "Allaitement"}});

    const Couple couples[] = {
        {12, 13, 1, EntreProduits, 1, 1, 1, "A01", "A02"},
        {13, 12, 1, EntreProduits, 2, 1, 1, "A02", "A01"},  // the mirror, reported the other way
        {13, 12, 2, EntreProduits, 1, 4, 3, "A02", "A01", "T", "", "", "CI00000001|CI00000002"},
        {10, 10, 1, EntreProduits, 1, 2, 2, "A|-A05", "A01|A02"},
        {10, 12, 1, EntreProduits, 1, 5, 5, "A", "A"},  // a severity one product's list leaves out
        {11, 0, 1, SubstanceExterieure, 1, 3, 4, "A", "A01", "T", "", "103"},
        {12, 0, 2, ToutProduitParVoie, 1, 4, 4, "A01", "A05", "S", "105"},
    };
    for (const Couple& c : couples)
        b.Ajoute("VDXZICOU", {{"ClasseA", c.a},           {"ClasseB", c.b},
                              {"Numero", c.numero},       {"Genre", c.genre},
                              {"Sens", c.sens},           {"CodeGravite", c.gravite},
                              {"CodeType", c.type},       {"VoiesA", c.voiesA},
                              {"VoiesB", c.voiesB},       {"FiltreA", c.filtreA},
                              {"FiltreB", "T"},           {"SubstancesA", c.substancesA},
                              {"SubstancesB", c.substancesB}, {"TermesCondition", c.termes},
                              {"Reference1", "RCP"},      {"Reference2", "2024"},
                              {"Texte2", "Risque"},       {"Texte4", "Conduite"}});
    // Every substance has its own parent below this closing key.
    if (avecParents) b.Ajoute("VDXWPEFI", {{"CodeParent", 99999}, {"CodeEnfant", 99999}});
}

}  // namespace vdx::essai::interactions
