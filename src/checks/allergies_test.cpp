// Allergies: the expansion of allergens through concepts, cross-allergies
// and synonyms; the walk of a product's terms, excipients, lines by common
// name and active components; the classes; the exports by mode and their
// codes.
#include "checks/allergies.h"

#include <gtest/gtest.h>

#include "session/cadre.h"
#include "session/resultat.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// Substances, excipients and concepts.
constexpr int32_t Amoxicilline = 100, AmoxicillineTrihydratee = 101, Cefalexine = 200, Paracetamol = 400,
                  Lactose = 150, Ampicilline = 600;
constexpr int32_t Penicillines = 30001, Cephalosporines = 30002, Aminopenicillines = 30003,
                  Betalactamines = 30010;  // seven cross-allergies, 30011 to 30017, of components 301 to 307
// After every component in the order of index 133 (its low byte is 0xFF):
// no key at or above it.
constexpr int32_t Introuvable = 255;
// Terms.
constexpr char AllergiePenicilline[] = "AL00000001";  // of 3000001, in "2" and "3"
constexpr char Betalactames[] = "AL00000002";         // equivalent of AllergiePenicilline
constexpr char Pollen[] = "AL00000003";               // equivalent too, after Betalactames

void Remplit(BaseDeTest& b) {
    for (auto [cip, libelle] : {std::pair{"3000001", "AMOXICILLINE 500MG GELULE"}, {"3000002", "CEFALEXINE 500MG"},
                                {"3000003", "DOLIPRANE 500MG CPR"}, {"3000004", "AMPICILLINE 1G"}})
        b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", libelle}});
    b.Ajoute("VDXCIP13", {{"CodeCIP", "3000001"}, {"CIP13", "3400930000011"}});
    b.Ajoute("VDXCIP13", {{"CodeCIP", "3000003"}, {"CIP13", "3400930000035"}});
    // Lines by common name: one with its products, one without.
    b.Ajoute("VDXYDCI", {{"Code", "9000001"}, {"Libelle", "Amoxicilline 500 mg gél"}, {"LibelleCle", "AMOXICILLINE"}});
    b.Ajoute("VDXYDCI", {{"Code", "9000002"}, {"Libelle", "Sans produit"}, {"LibelleCle", "SANS PRODUIT"}});
    b.Ajoute("VDXYDCIP", {{"CodeDCI", "9000001"}, {"CodeCIP", "3000001"}});

    const std::pair<int32_t, const char*> noms[] = {
        {Amoxicilline, "AMOXICILLINE"}, {AmoxicillineTrihydratee, "AMOXICILLINE TRIHYDRATÉE"},
        {Cefalexine, "CÉFALEXINE"},     {Paracetamol, "PARACÉTAMOL"},
        {Lactose, "LACTOSE"},           {Ampicilline, "AMPICILLINE"},
        {Penicillines, "PÉNICILLINES"}, {Cephalosporines, "CÉPHALOSPORINES"},
        {Aminopenicillines, "AMINOPÉNICILLINES"}, {Betalactamines, "BÊTALACTAMINES"}};
    for (auto [numero, nom] : noms) b.Ajoute("VDXVEXC", {{"CodeSubstance", numero}, {"Libelle", nom}});
    const auto membre = [&b](int32_t c, int32_t composant) {
        b.Ajoute("VDXWCCCO", {{"CodeConcept", c}, {"CodeComposant", composant}});
    };
    membre(Penicillines, Amoxicilline);
    membre(Penicillines, AmoxicillineTrihydratee);
    membre(Cephalosporines, Cefalexine);
    membre(Aminopenicillines, Amoxicilline);
    membre(Aminopenicillines, Ampicilline);
    const auto croise = [&b](int32_t c, int32_t croisee) {
        b.Ajoute("VDXWALCR", {{"CodeConcept", c}, {"ConceptCroise", croisee}});
    };
    croise(Penicillines, Cephalosporines);
    croise(Cephalosporines, Penicillines);  // a loop: one level only is followed
    for (int32_t i = 1; i <= 7; ++i) {
        croise(Betalactamines, Betalactamines + i);
        membre(Betalactamines + i, 300 + i);
    }
    // A salt and its base, both ways.
    b.Ajoute("VDXWSYNC", {{"CodeSubstance", AmoxicillineTrihydratee}, {"CodeSynonyme", Amoxicilline}});
    b.Ajoute("VDXWSYNC", {{"CodeSubstance", Amoxicilline}, {"CodeSynonyme", AmoxicillineTrihydratee}});

    const auto composant = [&b](const char* table, const char* cip, const char* rang, int32_t substance,
                                const char* texte = "") {
        b.Ajoute(table, {{"CodeCIP", cip}, {"Rang", rang}, {"CodeSubstance", substance}, {"QuantiteTexte", texte}});
    };
    composant("VDXVCOMP", "3000001", "001", AmoxicillineTrihydratee);
    composant("VDXVCOME", "3000001", "001", Lactose, "*");
    composant("VDXVCOMP", "3000002", "001", Cefalexine);
    composant("VDXVCOMP", "3000003", "001", Paracetamol);
    composant("VDXVCOME", "3000003", "001", Paracetamol);
    composant("VDXVCOMP", "3000004", "001", Ampicilline);

    b.Ajoute("VDXVAMM", {{"CodeTerme", AllergiePenicilline}, {"TypeAMM", "2"}, {"Libelle", "Allergie aux pénicillines"}});
    b.Ajoute("VDXVAMM", {{"CodeTerme", Betalactames}, {"TypeAMM", "2"}, {"Libelle", "Allergie aux bêtalactamines"}});
    for (const char* type : {"2", "3"})
        b.Ajoute("VDXVAMPC", {{"CodeCIP", "3000001"}, {"TypeAMM", type}, {"CodeTerme", AllergiePenicilline}});
    for (const char* equivalent : {Betalactames, Pollen})
        b.Ajoute("VDXVAMME", {{"CodeTerme", AllergiePenicilline}, {"CodeEquivalent", equivalent}});

    const auto classe = [&b](const char* code, const char* libelle) {
        b.Ajoute("VDXCLA", {{"CodeClasse", code}, {"Libelle", libelle}, {"LibelleCle", libelle}});
    };
    classe("J01", "ANTIBACTERIENS");
    classe("J01C", "PENICILLINES");
    classe("J01D", "CEPHALOSPORINES");
    for (auto [code, cip] : {std::pair{"J01CA", "3000001"}, {"J01CA", "3000004"}, {"J01D", "3000002"},
                             {"J01CR", "3000001"}, {"", "3000003"}})
        b.Ajoute("VDXCLAP", {{"CodeClasse", code}, {"CodeCIP", cip}});
}

class Allergies : public essai::SurUneBase<Allergies> {
public:
    static void Remplit(BaseDeTest& b) { vdx::Remplit(b); }

protected:
    // The list of an expansion as "substance<allergen:chain" lines.
    static std::string Liste(std::vector<int32_t> allergenes, bool premierConceptSeul = false) {
        const DansContexte dans(session());
        std::string texte;
        for (const ChaineAllergie& c : DeveloppeAllergenes(allergenes, premierConceptSeul))
            texte += std::to_string(c.CodeSubstance) + "<" + std::to_string(c.CodeAllergene) + ":" + c.TexteChaine + "\n";
        return texte;
    }
    static std::string Substances(std::vector<int32_t> allergenes, bool premierConceptSeul = false) {
        const DansContexte dans(session());
        std::string texte;
        for (const ChaineAllergie& c : DeveloppeAllergenes(allergenes, premierConceptSeul))
            texte += std::to_string(c.CodeSubstance) + " ";
        return texte;
    }
};

TEST_F(Allergies, ASubstanceGoesAloneWhenNoConceptHoldsItAndNothingIsAddedPastTheLastKey) {
    EXPECT_EQ(Liste({Paracetamol}), "400<400:PARAC\xC9TAMOL\n");
    EXPECT_EQ(Liste({Introuvable}), "");
    EXPECT_EQ(Liste({0, -5}), "0<0:\n");  // zero is a substance found nowhere, with no label
}

TEST_F(Allergies, ASaltReachesItsConceptTheCrossedConceptAndTheSynonymsLast) {
    const std::string sel = "AMOXICILLINE TRIHYDRAT\xC9" "E";
    EXPECT_EQ(Liste({AmoxicillineTrihydratee}),
              // Its concept's components, then the crossed concept's.
              "100<101:" + sel + " -> P\xC9NICILLINES : AMOXICILLINE\n"
              "101<101:" + sel + "\n"
              "200<101:" + sel + " -> C\xC9PHALOSPORINES : C\xC9" "FALEXINE\n"
              // Its synonym, the base, and the base's two concepts, the
              // components in the order of the index.
              "100<101:" + sel + " -> P\xC9NICILLINES : AMOXICILLINE\n"
              "101<101:" + sel + "\n"
              "200<101:" + sel + " -> C\xC9PHALOSPORINES : C\xC9" "FALEXINE\n"
              "600<101:" + sel + " -> AMINOP\xC9NICILLINES : AMPICILLINE\n"
              "100<101:" + sel + " -> AMINOP\xC9NICILLINES : AMOXICILLINE\n"
              // The synonyms of those eight, from the last to the first.
              "101<101:" + sel + "\n"
              "100<101:" + sel + " -> AMOXICILLINE\n"
              "101<101:" + sel + "\n"
              "100<101:" + sel + " -> AMOXICILLINE\n"
              "101<101:" + sel + "\n");
}

TEST_F(Allergies, AConceptFollowsFiveCrossAllergiesAndOneLevelOfALoop) {
    EXPECT_EQ(Substances({Betalactamines}), "301 302 303 304 305 ");
    // Penicillins cross cephalosporins, which cross penicillins: not followed.
    EXPECT_EQ(Liste({Penicillines}),
              "100<30001:P\xC9NICILLINES -> P\xC9NICILLINES : AMOXICILLINE\n"
              "101<30001:P\xC9NICILLINES -> P\xC9NICILLINES : AMOXICILLINE TRIHYDRAT\xC9" "E\n"
              "200<30001:P\xC9NICILLINES -> C\xC9PHALOSPORINES : C\xC9" "FALEXINE\n"
              "100<30001:P\xC9NICILLINES -> AMOXICILLINE\n"
              "101<30001:P\xC9NICILLINES -> AMOXICILLINE TRIHYDRAT\xC9" "E\n");
}

TEST_F(Allergies, TheExcipientsCheckFollowsOnlyTheFirstConceptOfASubstance) {
    // The base's two concepts, then its salt's; the synonyms of the eight.
    EXPECT_EQ(Substances({Amoxicilline}), "100 101 200 600 100 100 101 200 100 101 101 100 101 ");
    EXPECT_EQ(Substances({Amoxicilline}, true), "100 101 200 100 101 200 100 101 100 101 ");
}

// The check of products, in memory mode: rows as "type|product|label|cause|text".
class ControleProduits : public Allergies {
protected:
    static std::string Controle(const std::string& termes, const std::string& allergenes, const std::string& produits,
                                int32_t attendu) {
        // An empty list is its empty line alone.
        const auto liste = [](const std::string& l) { return l.empty() ? std::string("\r\n") : l + "\r\n\r\n"; };
        SetString_Vdx((liste(termes) + liste(allergenes) + liste(produits)).c_str());
        EXPECT_EQ(ControleAllergies_Vdx(nullptr, nullptr, nullptr, nullptr), attendu) << produits;
        return attendu > 0 ? Memoire() : "";
    }
};

TEST_F(ControleProduits, TermsThenExcipientsThenActivesInProductOrderOneRowPerCause) {
    EXPECT_EQ(Controle(AllergiePenicilline, "101@400", "3000003@3000001", 3),
              // Paracetamol as an excipient, not again as an active component.
              "2@3000003@DOLIPRANE 500MG CPR@400@PARAC\xC9TAMOL\r\n"
              // The term found in "2" and "3": one row.
              "1@3000001@AMOXICILLINE 500MG GELULE@AL00000001@Allergie aux p\xE9nicillines\r\n"
              // The first chain of the allergen to the component.
              "2@3000001@AMOXICILLINE 500MG GELULE@101@AMOXICILLINE TRIHYDRAT\xC9" "E");
}

TEST_F(ControleProduits, TermsOfTenCharactersAndTheirEquivalentsWhenTheTermAddsNothing) {
    // Nine characters: ignored.
    EXPECT_EQ(Controle("AL0000000", "", "3000001", 0), "");
    // Under "2" the first equivalent adds a row and the walk stops; under
    // "3" it is a duplicate, adds nothing, and the next one is tried.
    EXPECT_EQ(Controle(std::string(Betalactames) + "@" + Pollen, "", "3000001", 2),
              "1@3000001@AMOXICILLINE 500MG GELULE@AL00000002@Allergie aux b\xEAtalactamines\r\n"
              "1@3000001@AMOXICILLINE 500MG GELULE@AL00000003@Code AL00000003 inexistant.");
}

TEST_F(ControleProduits, TwoAllergensReachingOneComponentGiveTwoRows) {
    EXPECT_EQ(Controle("", "30001@101", "3000002", 2),
              "2@3000002@CEFALEXINE 500MG@30001@P\xC9NICILLINES -> C\xC9PHALOSPORINES : C\xC9" "FALEXINE\r\n"
              "2@3000002@CEFALEXINE 500MG@101@AMOXICILLINE TRIHYDRAT\xC9" "E -> C\xC9PHALOSPORINES : C\xC9" "FALEXINE");
}

TEST_F(ControleProduits, ALineByCommonNameGivesItsProductsExcipientsWithKnownEffect) {
    EXPECT_EQ(Controle("", "150", "9000001", 1), "2@9000001@Amoxicilline 500 mg g\xE9l@150@LACTOSE");
    EXPECT_EQ(Controle("", "150", "9000002", -90), "");
}

TEST_F(ControleProduits, CodesOfThirteenDigitsInAndOutAndCodesOfAnotherLength) {
    session().CIP13Actif = 1;
    EXPECT_EQ(Controle("", "400", "3400930000035", 1), "2@3400930000035@DOLIPRANE 500MG CPR@400@PARAC\xC9TAMOL");
    EXPECT_EQ(Controle("", "400", "3400930999999", -13), "");
    EXPECT_EQ(Controle("", "400", "300000", -30), "");
    // A row whose product has no 13-digit code.
    EXPECT_EQ(Controle("", "200", "3000002", -13), "");
    session().CIP13Actif = 0;
    EXPECT_EQ(Controle("", "400", "3400930000035", -30), "");
}

TEST_F(ControleProduits, TheExcipientsOnlyCheck) {
    SetString_Vdx("100\r\n\r\n3000001@3000003\r\n\r\n");
    EXPECT_EQ(RechercheEEN_Vdx(nullptr, nullptr, nullptr), 0);
    SetString_Vdx("150@400\r\n\r\n3000001@3000003\r\n\r\n");
    ASSERT_EQ(RechercheEEN_Vdx(nullptr, nullptr, nullptr), 2);
    EXPECT_EQ(Memoire(), "2@3000001@AMOXICILLINE 500MG GELULE@150@LACTOSE\r\n2@3000003@DOLIPRANE 500MG CPR@400@PARAC\xC9TAMOL");
    SetString2_Vdx(nullptr);
    EXPECT_EQ(RechercheEEN_Vdx(nullptr, nullptr, nullptr), -12);
}

TEST_F(Allergies, ClassesCatchTheirSubClassesARowForEachClassOfAProduct) {
    // A leading "@" taken off, as the line feed of each line end.
    SetString_Vdx("@3000001\r\n3000002\r\n@3000003\r\n\r\nJ01\r\nJ01C\r\nX\r\n\r\n");
    ASSERT_EQ(Allergies_Vdx(nullptr, nullptr, nullptr), 5);
    EXPECT_EQ(Memoire(),
              "3000001@AMOXICILLINE 500MG GELULE@J01@ANTIBACTERIENS\r\n"
              "3000001@AMOXICILLINE 500MG GELULE@J01C@PENICILLINES\r\n"
              "3000001@AMOXICILLINE 500MG GELULE@J01@ANTIBACTERIENS\r\n"
              "3000001@AMOXICILLINE 500MG GELULE@J01C@PENICILLINES\r\n"
              "3000002@CEFALEXINE 500MG@J01@ANTIBACTERIENS");
    // A class without label; an unknown product; empty lists.
    SetString_Vdx("3000004\r\n3000009\r\n\r\nJ01CA\r\n\r\n");
    ASSERT_EQ(Allergies_Vdx(nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "3000004@AMPICILLINE 1G@J01CA@Libell\xE9 inconnu");
    SetString_Vdx("3000001\r\n\r\n");
    EXPECT_EQ(Allergies_Vdx(nullptr, nullptr, nullptr), 0);
    SetString2_Vdx(nullptr);
    EXPECT_EQ(Allergies_Vdx(nullptr, nullptr, nullptr), -12);
}

TEST_F(Allergies, ArraysInAndOutAndTheCodeOfEachMissingArray) {
    ReconnecteEnTableau();
    SAFEARRAY* termes = essai::TableauDeChaines({AllergiePenicilline});
    SAFEARRAY* allergenes = essai::TableauDEntiers({30001});
    SAFEARRAY* produits = essai::TableauDeChaines({"3000001"});
    SAFEARRAY* fiches = essai::TableauDeFiches(5);
    ASSERT_EQ(ControleAllergies_Vdx(&termes, &allergenes, &produits, &fiches), 2);
    auto* f = static_cast<VdxFicheAllergie*>(fiches->pvData);
    EXPECT_EQ(f[0].TypeAlerte, 1);
    EXPECT_EQ(f[1].TypeAlerte, 2);
    EXPECT_EQ(essai::Texte(f[1].TexteCause), "P\xC9NICILLINES -> P\xC9NICILLINES : AMOXICILLINE TRIHYDRAT\xC9" "E");
    EXPECT_EQ(essai::Texte(f[1].CodeCause), "30001");

    SAFEARRAY* nul = nullptr;
    EXPECT_EQ(ControleAllergies_Vdx(&nul, &allergenes, &produits, &fiches), -10);
    EXPECT_EQ(ControleAllergies_Vdx(&termes, nullptr, &produits, &fiches), -20);
    EXPECT_EQ(ControleAllergies_Vdx(&termes, &allergenes, &nul, &fiches), -30);
    EXPECT_EQ(ControleAllergies_Vdx(&termes, &allergenes, &produits, &nul), -50);
    EXPECT_EQ(ControleAllergies_Vdx(&allergenes, &allergenes, &produits, &fiches), -21);  // numbers for strings
    EXPECT_EQ(RechercheEEN_Vdx(&nul, &produits, &fiches), -20);
    EXPECT_EQ(RechercheEEN_Vdx(&allergenes, &nul, &fiches), -30);
    EXPECT_EQ(RechercheEEN_Vdx(&allergenes, &produits, &nul), -50);

    SAFEARRAY* classes = essai::TableauDeChaines({"J01"});
    SAFEARRAY* lignes = essai::TableauDeFiches(4);
    ASSERT_EQ(Allergies_Vdx(&produits, &classes, &lignes), 2);
    EXPECT_EQ(essai::Texte(static_cast<VdxFicheClasseAllergie*>(lignes->pvData)[1].LibelleClasse), "ANTIBACTERIENS");
    EXPECT_EQ(Allergies_Vdx(&nul, &classes, &lignes), -10);
    EXPECT_EQ(Allergies_Vdx(&produits, &nul, &lignes), -20);
    EXPECT_EQ(Allergies_Vdx(&produits, &classes, &nul), -30);
    SAFEARRAY* vide = essai::TableauDeChaines({});
    EXPECT_EQ(Allergies_Vdx(&produits, &vide, &lignes), 0);

    VideTableau(fiches, {TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    VideTableau(lignes, {TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    for (SAFEARRAY* t : {termes, allergenes, produits, fiches, classes, lignes, vide}) SafeArrayDestroy(t);
    DeConnection2_Vdx();
    EXPECT_EQ(Allergies_Vdx(nullptr, nullptr, nullptr), -2);
}

}  // namespace
}  // namespace vdx
