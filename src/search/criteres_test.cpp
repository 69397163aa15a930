// The criteria search: the merge of candidates into a set, each criterion's
// walk and its edge cases (complements, refills, terms by code, CISP and
// CIM10, concepts, the patient's conditions, flags, interactions, routes),
// and the handles of the exports in both kinds of mode.
#include "search/criteres.h"

#include <gtest/gtest.h>

#include "session/cadre.h"
#include "session/codes.h"
#include "session/messages.h"
#include "tests/support/essai_interactions.h"
#include "tests/support/essai_produits.h"
#include "session/valeurs_hote.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// On the six products of the interactions (3000001 to 3000006, 3000003 and
// 3000004 interacting): three more, 3000007 and 3000008 doping; classes C1
// (1, 2, 3), C10 (4), D1 (5, 6, and 3000010 which VDXPRO lacks), D2 (5);
// laboratories LABA (7, 8), LABB (9), none for the others; forms CP01 (1, 2), CP02 (3), GE01
// (4). Indication terms IN1 "Fièvre" (1, and 8000001 never taken), IN2
// "Hyperthermie", its equivalent (2), IN3 "Fièvre" (3), all linked to R50
// (IN1 as "R50.9"), itself the CISP A03; contra-indication CI3 from 65
// years (4, 5), CI4 for women (5); precaution PR1 under 50 kg (6).
// Substances 100 (1) and its synonym 109 (7), 101 (2) under the concept
// 35000, 50 excipient of 8; 200 excipient of 9 but above every key of
// VDXVPAP.
struct Remplissage {
    static void Remplit(BaseDeTest& b) {
        essai::interactions::RemplitInteractions(b, true);
        // Each product of VDXPRO files its laboratory's key in VDXLABP.
        for (auto [cip, drapeaux, labo] : {std::tuple{"3000007", VDXPRO::Dopant, "LABA"},
                                           {"3000008", VDXPRO::Dopant, "LABA"}, {"3000009", 0, "LABB"}})
            b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", std::string("PRODUIT ") + cip}, {"Drapeaux", drapeaux},
                                {"CodeLaboratoire", labo}});
        for (auto [classe, cip] : {std::pair{"C1", "3000001"}, {"C1", "3000002"}, {"C1", "3000003"}, {"C10", "3000004"},
                                   {"D1", "3000005"}, {"D1", "3000006"}, {"D1", "3000010"}, {"D2", "3000005"}})
            b.Ajoute("VDXCLAP", {{"CodeClasse", classe}, {"CodeCIP", cip}});
        for (auto [forme, cip] : {std::pair{"CP01", "3000001"}, {"CP01", "3000002"}, {"CP02", "3000003"},
                                  {"GE01", "3000004"}})
            b.Ajoute("VDXIDFOP", {{"CodeForme", forme}, {"CodeCIP", cip}});
        for (const char* cip : {"8000001", "3100001"}) b.Ajoute("VDXIDPVO", {{"CodeCIP", cip}, {"CodeVoie", "A01"}});

        struct Terme {
            const char* code;
            const char* type;
            const char* libelle;
            const char* sexe = "";
            int32_t ageMin = 0, ageMax = 0, poidsMin = 0, poidsMax = 0;
        };
        for (const Terme& t : {Terme{"IN00000001", "1", "Fièvre"}, Terme{"IN00000002", "1", "Hyperthermie"},
                               Terme{"IN00000003", "1", "Fièvre"}, Terme{"CI00000003", "2", "Sujet âgé", "", 780, 2000},
                               Terme{"CI00000004", "2", "Femme", "F"},
                               Terme{"PR00000001", "3", "Petit poids", "", 0, 0, 0, 50}})
            b.Ajoute("VDXVAMM", {{"CodeTerme", t.code}, {"TypeAMM", t.type}, {"Libelle", t.libelle},
                                 {"SexeTerme", t.sexe}, {"AgeMin", t.ageMin}, {"AgeMax", t.ageMax},
                                 {"PoidsMin", t.poidsMin}, {"PoidsMax", t.poidsMax}});
        for (auto [cip, type, terme] :
             {std::tuple{"3000001", "1", "IN00000001"}, {"8000001", "1", "IN00000001"}, {"3000002", "1", "IN00000002"},
              {"3000003", "1", "IN00000003"}, {"3000004", "2", "CI00000003"}, {"3000005", "2", "CI00000003"},
              {"3000005", "2", "CI00000004"}, {"3000006", "3", "PR00000001"}})
            b.Ajoute("VDXVAMPC", {{"CodeCIP", cip}, {"TypeAMM", type}, {"CodeTerme", terme}});
        for (auto [terme, lie] : {std::pair{"IN00000001", "R50.9"}, {"IN00000002", "R50"}, {"IN00000003", "R50"}})
            b.Ajoute("VDXVAMMC", {{"CodeTerme", terme}, {"TypeLien", "01"}, {"CodeLie", lie}});
        b.Ajoute("VDXVAMME", {{"CodeTerme", "IN00000001"}, {"CodeEquivalent", "IN00000002"}});
        b.Ajoute("VDXVCIM", {{"Code", "R50"}, {"Libelle", "Fièvre"}, {"LibelleCle", "FIEVRE"}});
        b.Ajoute("VDXVCISP", {{"Code", "A03"}, {"Libelle", "Fièvre"}, {"LibelleCle", "FIEVRE"}});
        b.Ajoute("VDXVCICI", {{"CodeCISP", "A03"}, {"CodeCIM10", "R50"}});

        for (auto [substance, cip] : {std::pair{"00100", "3000001"}, {"00109", "3000007"}, {"00101", "3000002"},
                                      {"00101", "1000001"}})
            b.Ajoute("VDXVPAP", {{"CodeSubstance", substance}, {"CodeCIP", cip}});
        for (auto [substance, cip] : {std::pair{"00050", "3000008"}, {"00200", "3000009"}})
            b.Ajoute("VDXVEXCP", {{"CodeSubstance", substance}, {"CodeCIP", cip}});
        b.Ajoute("VDXWCCCO", {{"CodeConcept", 35000}, {"CodeComposant", 101}});
    }
};

class Criteres : public essai::SurUneBaseEnContexte<Criteres>, public Remplissage {
public:
    // The set made of `codes` after one criterion: "count: codes", or the
    // code of its failure.
    static std::string Applique(std::vector<const char*> codes, int32_t champ, int32_t operation, const char* code,
                                int32_t qualifiant = 0, ProfilArguments patient = {}) {
        EnsembleCIP e;
        for (const char* c : codes) e.Codes.push_back(CodeDe(c));
        try {
            const int32_t n = AppliqueCritere(session(), e, {champ, operation, code, qualifiant}, patient);
            std::string texte = std::to_string(n) + ":";
            for (const CodeEnsemble& c : e.Codes) texte += " " + TexteDe(c);
            return texte;
        } catch (const Echec& x) {
            return "E" + std::to_string(x.code);
        }
    }
};

TEST(FusionEnsemble, AnEmptySetTakesEveryCandidateAndOthersKeepTheirOrder) {
    const Candidats candidats = {CodeDe("3000002"), CodeDe("3000004"), CodeDe("3000004")};
    EnsembleCIP e;
    EXPECT_EQ(FusionEnsemble(e, candidats, true), 3);  // duplicates and all, whatever the exclusion
    e.Codes = {CodeDe("3000004"), CodeDe("3000001"), CodeDe("3000002"), CodeDe("3000003")};
    EnsembleCIP difference = e;
    EXPECT_EQ(FusionEnsemble(e, candidats, false), 2);
    EXPECT_EQ(TexteDe(e.Codes[0]), "3000004");
    EXPECT_EQ(TexteDe(e.Codes[1]), "3000002");
    EXPECT_EQ(FusionEnsemble(difference, candidats, true), 2);
    EXPECT_EQ(TexteDe(difference.Codes[0]), "3000001");
}

TEST_F(Criteres, PrefixesComplementsAndRefills) {
    EXPECT_EQ(Applique({}, 2, 0, "C1"), "4: 3000001 3000002 3000003 3000004");  // C10 too
    // Operation 1 on an empty set: every key of another class, duplicates kept.
    EXPECT_EQ(Applique({}, 2, 1, "C1"), "4: 3000005 3000005 3000006 3000010");
    EXPECT_EQ(Applique({"3000001", "3000005"}, 2, 1, "C1"), "1: 3000005");
    // An emptied set is no set: the next class fills it again.
    EXPECT_EQ(Applique({"3000001", "3000002"}, 2, 0, "ZZ"), "0:");
    EXPECT_EQ(Applique({}, 2, 0, "D1"), "3: 3000005 3000006 3000010");
    EXPECT_EQ(Applique({}, 3, 0, "CP"), "3: 3000001 3000002 3000003");
    const std::string autres = "3000001 3000002 3000003 3000004 3000005 3000006";
    EXPECT_EQ(Applique({}, 5, 1, "LABA"), "7: " + autres + " 3000009");
    EXPECT_EQ(Applique({"3000007", "3000009", "3000001"}, 5, 1, "LABA"), "2: 3000009 3000001");
    EXPECT_EQ(Applique({"3000009", "3000007"}, 5, 0, "LABA"), "1: 3000007");
    // A laboratory of fewer than four characters matches nothing.
    EXPECT_EQ(Applique({"3000007", "3000009"}, 5, 0, "LAB"), "0:");
    EXPECT_EQ(Applique({}, 5, 1, "LAB"), "9: " + autres + " 3000007 3000008 3000009");
}

TEST_F(Criteres, TermsByCodeByCISPAndByCIM10) {
    // IN1 reaches R50 (its ".9" cut), and R50 every term linked to it; 8000001
    // is never taken.
    EXPECT_EQ(Applique({}, 1, 0, "IN00000001", 1), "3: 3000001 3000002 3000003");
    // Exact terms: the term itself and its equivalent.
    EXPECT_EQ(Applique({}, 1, 1, "IN00000001", 1), "2: 3000001 3000002");
    // By CIM10 or CISP code: the terms of the code's label, "Fièvre".
    EXPECT_EQ(Applique({}, 1, 0, "R50", 3), "3: 3000001 3000002 3000003");
    EXPECT_EQ(Applique({}, 1, 1, "R50", 3), "2: 3000001 3000003");
    EXPECT_EQ(Applique({}, 1, 1, "A03", 2), "2: 3000001 3000003");
    // Another qualifiant: the code taken as a term, none of them exact.
    EXPECT_EQ(Applique({}, 1, 0, "IN00000002", 9), "1: 3000002");
    EXPECT_EQ(Applique({}, 1, 1, "IN00000002", 9), "0:");
    // Out by contra-indication then precaution; on an empty set -300.
    EXPECT_EQ(Applique({"3000001", "3000004", "3000005", "3000006"}, 6, 0, "CI00000003", 1), "2: 3000001 3000006");
    EXPECT_EQ(Applique({"3000001", "3000006"}, 7, 0, "PR00000001", 1), "1: 3000001");
    EXPECT_EQ(Applique({}, 6, 0, "CI00000003", 1), "E-300");
    // The first mode emptied the set: the second has none.
    EXPECT_EQ(Applique({"3000004"}, 6, 0, "CI00000003", 1), "E-300");
}

TEST_F(Criteres, ConceptsSynonymsAndComponents) {
    EXPECT_EQ(Applique({}, 4, 0, "100"), "2: 3000001 3000007");  // with its synonym 109
    EXPECT_EQ(Applique({}, 4, 0, "35000"), "1: 3000002");       // its component 101; 1000001 never taken
    EXPECT_EQ(Applique({}, 4, 0, "50"), "1: 3000008");          // an excipient
    EXPECT_EQ(Applique({}, 4, 0, "200"), "0:");                 // nothing at or above it in VDXVPAP
    EXPECT_EQ(Applique({}, 4, 1, "100"), "E-300");
    EXPECT_EQ(Applique({"3000001", "3000002", "3000008"}, 4, 1, "35000"), "2: 3000001 3000008");
}

TEST_F(Criteres, ThePatientsConditions) {
    // A woman of 70, 45 kg. 3000004's term for the elderly takes it out;
    // 3000005's takes it out, then its second term, for women, takes out
    // the product before it, 3000001; 3000006's precaution under 50 kg
    // takes it out; the last code stays.
    const ProfilArguments femme{840, 45, 'F', 0, 0};
    const std::vector<const char*> ensemble = {"3000001", "3000004", "3000005", "3000006", "3000009"};
    EXPECT_EQ(Applique(ensemble, 9, 0, "x", 0, femme), "1: 3000009");
    EXPECT_EQ(Applique({"3000009", "3000004"}, 9, 0, "x", 0, femme), "2: 3000009 3000004");
    // Age unknown, weight 0, a man: no condition holds.
    EXPECT_EQ(Applique({"3000004", "3000005", "3000006", "3000009"}, 9, 0, "x", 0, {0, 0, 'M', 0, 0}),
              "4: 3000004 3000005 3000006 3000009");
    EXPECT_EQ(Applique({}, 9, 0, "x", 0, femme), "E-300");
}

TEST_F(Criteres, FlagsKeepTheFirstAndTheLastCode) {
    EXPECT_EQ(Applique({"3000001", "3000007", "3000008", "3000009", "3000002"}, 10, 1, "x"),
              "3: 3000001 3000009 3000002");
    EXPECT_EQ(Applique({"3000007", "3000001", "3000008"}, 10, 1, "x"), "3: 3000007 3000001 3000008");
    EXPECT_EQ(Applique({"3000001", "3000002", "3000007", "3000009"}, 10, 0, "x"), "3: 3000001 3000007 3000009");
    EXPECT_EQ(Applique({}, 10, 0, "x"), "E-300");
}

TEST_F(Criteres, NoNewInteractionWithThePrescription) {
    // Zeclar adds its interaction with Colchimax, Actiskenan its own with
    // alcohol; Perfalgan adds none. A piece under seven characters is none.
    EXPECT_EQ(Applique({"3000001", "3000003", "3000006"}, 11, 0, "30|3000004"), "1: 3000006");
    EXPECT_TRUE(notices.boites.empty());
    // A prescription that already holds an interaction says so.
    Applique({"3000006"}, 11, 0, "3000003|3000004");
    ASSERT_EQ(notices.boites.size(), 1u);
    EXPECT_EQ(notices.boites[0].texte, messages::InteractionsEnCours);
    EXPECT_EQ(notices.boites[0].titre, "Attention !");
}

TEST_F(Criteres, RoutesAsSubstrings) {
    EXPECT_EQ(Applique({}, 12, 0, "A0"), "E-2");
    // 8000001 and 3100001 are left out, by their first and second character.
    EXPECT_EQ(Applique({}, 12, 1, "A01"), "2: 3000001 3000003");
    EXPECT_EQ(Applique({"3000001", "3000003", "3000004"}, 12, 1, "A01"), "1: 3000004");
    // Kept when the route is theirs; the last code stays.
    EXPECT_EQ(Applique({"3000001", "3000004", "3000006"}, 12, 0, "A01"), "2: 3000001 3000006");
}

class Poignees : public essai::SurUneBase<Poignees>, public Remplissage {
public:
    using Remplissage::Remplit;
    // Recherche_Vdx of flat criteria in memory mode.
    static int32_t Cherche(const char* criteres, int32_t& handle) {
        SetString2_Vdx(nullptr);
        SetString_Vdx(criteres);
        return Recherche_Vdx(nullptr, &handle, 0, 0, "F", 0, 0);
    }
};

TEST_F(Poignees, FlatCriteriaAHandleReadBackCopiedAndFreed) {
    int32_t h = 0;
    ASSERT_EQ(Cherche("2@0@C1@0\r\n3@0@CP\r\n99@0@X@0\r\n2@0@@0", h), 3);  // a missing number reads 0
    ASSERT_GT(h, 0);
    ASSERT_EQ(GetRecherche_Vdx(3, nullptr, nullptr, &h), 1);
    EXPECT_EQ(Memoire(), "3000003@ZECLAR 500MG CPR");
    EXPECT_EQ(GetRecherche_Vdx(0, nullptr, nullptr, &h), -10);
    EXPECT_EQ(GetRecherche_Vdx(4, nullptr, nullptr, &h), -13);
    int32_t copie = 0;
    ASSERT_EQ(CopyRecherche_Vdx(&h, &copie), 1);
    EXPECT_GT(copie, h);
    // The next call refines the same set: each product adds an interaction
    // to Colchimax's prescription. The copy is its own, and the mode stays
    // as it was.
    ASSERT_EQ(Cherche("11@0@3000004@0", h), 0);
    ASSERT_EQ(GetRecherche_Vdx(3, nullptr, nullptr, &copie), 1);
    EXPECT_EQ(Memoire(), "3000003@ZECLAR 500MG CPR");
    // A failure stops the list: a fresh set is dropped, an existing one
    // keeps what ran before it.
    int32_t neuf = 0;
    EXPECT_EQ(Cherche("2@0@C1@0\r\n6@0@CI00000003@1\r\n12@0@A0@0", neuf), -2);
    EXPECT_EQ(neuf, 0);
    EXPECT_EQ(Cherche("2@0@D1@0\r\n12@0@A0@0", h), -2);
    EXPECT_EQ(GetRecherche_Vdx(3, nullptr, nullptr, &h), -90);  // 3000010, not in VDXPRO
    // Only skipped criteria: a new empty set all the same.
    int32_t vide = 0;
    EXPECT_EQ(Cherche("2@0@@0\r\n0@0@C1@0", vide), 0);
    EXPECT_GT(vide, copie);
    EXPECT_EQ(GetRecherche_Vdx(1, nullptr, nullptr, &vide), -13);
    EXPECT_EQ(Cherche("", vide), -12);

    // Sets outlive a connection; freed, a handle is none.
    DeConnection2_Vdx();
    EXPECT_EQ(GetRecherche_Vdx(1, nullptr, nullptr, &h), -2);
    EXPECT_EQ(FreeRecherche_Vdx(&copie), 1);
    EXPECT_EQ(copie, 0);
    ReconnecteEnTableau();
    ChaineHote code, libelle;
    ASSERT_EQ(GetRecherche_Vdx(1, code.Adresse(), libelle.Adresse(), &h), 1);
    EXPECT_EQ(code.Octets(), "3000005");
    int32_t libere = h;
    EXPECT_EQ(FreeRecherche_Vdx(&h), 1);
    for (int32_t* handle : {&libere, &copie, static_cast<int32_t*>(nullptr)})
        EXPECT_EQ(GetRecherche_Vdx(1, code.Adresse(), libelle.Adresse(), handle), -40);
    EXPECT_EQ(CopyRecherche_Vdx(&libere, &h), -10);
    EXPECT_EQ(CopyRecherche_Vdx(&vide, nullptr), -20);
    EXPECT_EQ(FreeRecherche_Vdx(nullptr), 0);
    EXPECT_EQ(FreeRecherche_Vdx(&libere), 1);
    FreeRecherche_Vdx(&vide);
}

TEST_F(Poignees, CriteriaFromTheHostsArray) {
    ReconnecteEnTableau();
    int32_t h = 0;
    EXPECT_EQ(Recherche_Vdx(nullptr, &h, 0, 0, nullptr, 0, 0), -10);
    SAFEARRAY* criteres = essai::TableauDeFiches(4);
    EXPECT_EQ(Recherche_Vdx(&criteres, nullptr, 0, 0, nullptr, 0, 0), -20);
    int32_t inconnu = 999999;
    EXPECT_EQ(Recherche_Vdx(&criteres, &inconnu, 0, 0, nullptr, 0, 0), -20);
    ASSERT_TRUE(hote::Redimensionne(criteres, 2));
    auto* c = static_cast<VdxCritereRecherche*>(criteres->pvData);
    // The integers from the low 32 bits of their slots.
    c[0] = {static_cast<intptr_t>(0x500000002LL & INTPTR_MAX), 0, nullptr, 0};
    ASSERT_TRUE(hote::RangeOctets(&c[0].Code, "C1"));
    c[1] = {3, 1, nullptr, 0};
    ASSERT_TRUE(hote::RangeOctets(&c[1].Code, "CP"));
    ASSERT_EQ(Recherche_Vdx(&criteres, &h, 0, 0, nullptr, 0, 0), 1);
    ChaineHote code, libelle;
    ASSERT_EQ(GetRecherche_Vdx(1, code.Adresse(), libelle.Adresse(), &h), 1);
    EXPECT_EQ(code.Octets(), "3000004");
    EXPECT_EQ(libelle.Octets(), "COLCHIMAX CPR");
    VideTableau(criteres, {TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Entier});
    SafeArrayDestroy(criteres);
    FreeRecherche_Vdx(&h);
}

}  // namespace
}  // namespace vdx
