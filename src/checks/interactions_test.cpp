// Drug interactions: lines built from components, synonyms, classes and
// their ancestors; couples of each kind between lines; the route test and
// its vetoes; conditions; the parent-substance rule; levels; the exports'
// inputs by mode and their codes.
#include "checks/interactions.h"

#include <gtest/gtest.h>

#include <cstring>

#include "platform/chemin.h"
#include "platform/hote.h"
#include "tests/support/essai_interactions.h"
#include "tests/support/essai_produits.h"
#include "session/resultat.h"
#include "store/fiche.h"
#include "store/layouts.h"

namespace vdx {
namespace {

using essai::BaseDeTest;
using namespace essai::interactions;


class Interactions : public essai::SurUneBase<Interactions> {
public:
    static void Remplit(BaseDeTest& b) { RemplitInteractions(b, true); }

protected:
    // The rows as "CIP1>CIP2 level TexteType [condition]".
    static std::string Resume(const std::vector<FicheInteraction2>& lignes) {
        std::string texte;
        for (const FicheInteraction2& r : lignes) {
            if (!texte.empty()) texte += " | ";
            texte += r.CIP1 + ">" + r.CIP2 + " " + std::to_string(r.Niveau) + " " + r.TexteType;
            if (!r.CodeCondition.empty()) texte += " [" + r.CodeCondition + "]";
        }
        return texte;
    }
    static std::string Analyse(std::vector<std::string> codes) { return Resume(AnalyseInteractions(session(), codes)); }
};

// A second base of the same data, with or without parents, and a context
// that reads it.
struct AutreBase {
    explicit AutreBase(bool avecParents) {
        essai::AjouteIdentite(base);
        RemplitInteractions(base, avecParents);
        contexte.BaseFichiers = chemin::Repertoire(base.Repertoire());
    }
    BaseDeTest base;
    Contexte contexte;
};

TEST_F(Interactions, ALineHoldsSubstancesSynonymsClassesAndAncestors) {
    const LignePrescription morphine = ConstruitLigne(Actiskenan, "?");
    ASSERT_EQ(morphine.Substances.size(), 2u);
    EXPECT_EQ(morphine.Substances[1].CodeSubstance, 100);
    EXPECT_EQ(morphine.Substances[1].CodeSynonyme, 109);
    EXPECT_EQ(morphine.Substances[1].Libelle, "MORPHINE");
    std::string classes;
    for (const ClasseLigne& c : morphine.Classes)
        classes += std::to_string(c.CodeClasse) + "<" + std::to_string(c.CodeClasseRacine) + " ";
    // The ancestors of 10 climbed once each, though 11 and 15 make a cycle.
    EXPECT_EQ(classes, "10<10 16<16 11<10 15<10 ");

    const LignePrescription zeclar = ConstruitLigne(Zeclar, "?");
    ASSERT_EQ(zeclar.Substances.size(), 2u);  // the second list too
    ASSERT_EQ(zeclar.Classes.size(), 2u);
    EXPECT_EQ(zeclar.Classes[1].CodeClasse, 17);  // with its associated substance on the line
    EXPECT_EQ(zeclar.Classes[1].IndexAssociee, 1);

    const LignePrescription muet = ConstruitLigne(Muet, "?");
    EXPECT_TRUE(muet.Substances.empty());
    EXPECT_EQ(ConstruitLigne("3999999", "Libelle inconnu").Libelle, "Libelle inconnu");
}

TEST_F(Interactions, CouplesBetweenProductsFollowTheOrderOfTheLinesAndTheirSens) {
    auto lignes = AnalyseInteractions(session(), {Zeclar, Colchimax});
    ASSERT_EQ(lignes.size(), 1u);
    const FicheInteraction2& r = lignes[0];
    EXPECT_EQ(r.CIP1, Zeclar);
    EXPECT_EQ(r.CIP2, Colchimax);
    EXPECT_EQ(r.Libelle2, "COLCHIMAX CPR");
    EXPECT_EQ(r.TexteType, "Toxicit\xE9 de COLCHICINE major\xE9" "e par CLARITHROMYCINE");
    EXPECT_EQ(r.LibelleGravite, "Contre-indication");
    EXPECT_EQ(r.Niveau, 4);
    EXPECT_EQ(r.Niveau2, 4);
    EXPECT_EQ(r.Reference, "RCP 2024");
    EXPECT_EQ(r.Texte2, "Risque");
    EXPECT_EQ(r.Texte4, "Conduite");
    EXPECT_EQ(r.Classe1, "MACROLIDES");
    EXPECT_EQ(r.Classe2, "COLCHICINE");
    EXPECT_EQ(r.Voie1 + "/" + r.Voie2, "orale/buccale");
    EXPECT_EQ(r.Substance2, 106);

    // The other order walks the mirror couple: its Sens puts the sides the
    // other way, the routes stay those of the lines. The conditional couple
    // gives a row per term (its kind is not in the base).
    lignes = AnalyseInteractions(session(), {Colchimax, Zeclar});
    EXPECT_EQ(Resume(lignes),
              "3000003>3000004 4 Toxicit\xE9 de COLCHICINE major\xE9" "e par CLARITHROMYCINE | "
              "3000004>3000003 1 3 : Type Inconnu [CI00000001] | 3000004>3000003 1 3 : Type Inconnu [CI00000002]");
    EXPECT_EQ(lignes[0].Voie1 + "/" + lignes[0].Voie2, "buccale/orale");
    EXPECT_EQ(lignes[1].LibelleCondition, "Grossesse");
}

TEST_F(Interactions, OutsideSubstancesRoutesAndAncestorsAcrossLines) {
    // Morphine and codeine meet through their class (a line without route
    // passes); each meets alcohol through an ancestor class; the couple of
    // severity 5 finds no macrolide.
    EXPECT_EQ(Analyse({Actiskenan, Codoliprane}),
              "3000001>3000002 3 D\xE9pression respiratoire : MORPHINE et CODEINE | "
              "3000001>0000000 2 MORPHINE et ALCOOL | 3000002>0000000 2 CODEINE et ALCOOL");
    const auto alcool = AnalyseInteractions(session(), {Actiskenan});
    ASSERT_EQ(alcool.size(), 1u);
    EXPECT_EQ(alcool[0].Libelle2, "ALCOOL");
    EXPECT_EQ(alcool[0].Classe2, "Code 0 introuvable");
    EXPECT_EQ(alcool[0].Voie2, "orale");
    EXPECT_EQ(alcool[0].Substance2, 0);

    // Two lines of one product: one parent, no row between them; the
    // outside substance is met once per line.
    EXPECT_EQ(Analyse({Actiskenan, Actiskenan}), "3000001>0000000 2 MORPHINE et ALCOOL | 3000001>0000000 2 MORPHINE et ALCOOL");

    // Any other product given by a route: a row for the intravenous one,
    // though the substance filter of the couple rejects the macrolide.
    EXPECT_EQ(Analyse({Zeclar, Perfalgan}), "3000003>3000006 1 CLARITHROMYCINE et PERFALGAN INJ");
    EXPECT_EQ(Analyse({Zeclar, Actiskenan}), "3000001>0000000 2 MORPHINE et ALCOOL");
    // The other way the severity of level 0 meets the macrolide: a kind
    // without placeholder, and the rows ordered by level.
    EXPECT_EQ(Analyse({Actiskenan, Zeclar}), "3000001>0000000 2 MORPHINE et ALCOOL | 3000001>3000003 0 Sans marque");
    EXPECT_EQ(Analyse({Muet, Perfalgan}), "");
}

TEST_F(Interactions, TheRouteTestAndItsVetoes) {
    EXPECT_TRUE(VoieAdmise("A01", "A"));
    EXPECT_TRUE(VoieAdmise("A01", "B|A0"));
    EXPECT_FALSE(VoieAdmise("A05", "A|-A05"));
    EXPECT_FALSE(VoieAdmise("A05", "-A05|A"));
    EXPECT_TRUE(VoieAdmise("A01", "A|-A05"));
    EXPECT_FALSE(VoieAdmise("A01", ""));
    EXPECT_FALSE(VoieAdmise("", "A"));
    EXPECT_FALSE(VoieAdmise("A01", "B||A"));  // the list ends at its empty entry
}

TEST_F(Interactions, TheLevelOfTheSessionLeavesRowsOutButNotFromOneProductsList) {
    EXPECT_EQ(NiveauInteraction_Vdx(3), 3);
    EXPECT_EQ(Analyse({Actiskenan, Codoliprane}), "3000001>3000002 3 D\xE9pression respiratoire : MORPHINE et CODEINE");
    EXPECT_EQ(InteractionsDuProduit(session(), Actiskenan).size(), 2u);
    EXPECT_EQ(NiveauInteraction_Vdx(-1), 3);
    EXPECT_EQ(NiveauInteraction_Vdx(0), 0);
}

TEST_F(Interactions, OneProductAloneAgainstTheOtherClasses) {
    ASSERT_EQ(ProduitInteractions_Vdx(Actiskenan, nullptr), 2);
    EXPECT_EQ(Memoire(),
              "3@Association d\xE9" "conseill\xE9" "e@D\xE9pression respiratoire : MORPHINE et MORPHINIQUES (orale)@RCP 2024"
              "\r\n2@Pr\xE9" "caution d'emploi@Code 0 introuvable et MORPHINE (orale)@RCP 2024");
    EXPECT_EQ(ProduitInteractions_Vdx(Muet, nullptr), 0);
    EXPECT_EQ(ProduitInteractions_Vdx("3999999", nullptr), 0);
    EXPECT_EQ(ProduitInteractions_Vdx(nullptr, nullptr), -10);
    EXPECT_EQ(ProduitInteractions_Vdx("123", nullptr), -13);
}

TEST_F(Interactions, TheTextsOfACoupleNeverReadPastItsRecord) {
    std::string couple(VDXZICOU::Longueur, '\0');
    EcritMot(couple, VDXZICOU::LongueurTexte1.decalage, 2);
    EcritMot(couple, VDXZICOU::LongueurTexte2.decalage, 1000);
    EcritMot(couple, VDXZICOU::LongueurTexte3.decalage, 5);
    couple += "ab" + std::string("risque");
    EXPECT_EQ(TexteDuCouple(couple, 0), "ab");
    EXPECT_EQ(TexteDuCouple(couple, 1), "risque");
    EXPECT_EQ(TexteDuCouple(couple, 2), "");
    EXPECT_EQ(TexteDuCouple(std::string(100, 'x'), 0), "");  // shorter than its fixed part
    EcritMot(couple, VDXZICOU::LongueurTexte1.decalage, -7);
    EXPECT_EQ(TexteDuCouple(couple, 0), "");
}

class InteractionsExports : public Interactions {
protected:
};

TEST_F(InteractionsExports, ArraysInAndOutAndTheCodesOfTheList) {
    ReconnecteEnTableau();
    SAFEARRAY* produits = essai::TableauDeChaines({Zeclar, Colchimax});
    SAFEARRAY* lignes = essai::TableauDeFiches(23);
    SAFEARRAY* courtes = essai::TableauDeFiches(8);
    SAFEARRAY* nul = nullptr;
    ASSERT_EQ(Interactions2_Vdx(&produits, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), 1);
    void* e = lignes->pvData;
    EXPECT_EQ(essai::Texte(*hote::Chaine(e, 0)), Zeclar);
    EXPECT_EQ(hote::Entier(e, 7), 4);
    EXPECT_EQ(essai::Texte(*hote::Chaine(e, 13)), "COLCHICINE");
    EXPECT_EQ(hote::Entier(e, 18), 106);
    ASSERT_EQ(Interactions_Vdx(&produits, &courtes), 1);
    e = courtes->pvData;
    EXPECT_EQ(hote::Entier(e, 0), 4);
    EXPECT_EQ(essai::Texte(*hote::Chaine(e, 2)), "ZECLAR 500MG CPR");
    EXPECT_EQ(essai::Texte(*hote::Chaine(e, 7)), Colchimax);
    EXPECT_EQ(Interactions2Test_Vdx(&produits, nullptr, nullptr, 0, 0, 0, 0, ""), 1);

    EXPECT_EQ(Interactions2_Vdx(&produits, nullptr, nullptr, &nul, 0, 0, 0, 0, ""), -40);
    EXPECT_EQ(Interactions_Vdx(&produits, &nul), -20);
    EXPECT_EQ(Interactions2_Vdx(nullptr, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), -10);
    SAFEARRAY* vide = essai::TableauDeChaines({});
    SAFEARRAY* blanc = essai::TableauDeChaines({""});
    SAFEARRAY* trou = essai::TableauDeChaines({Zeclar, "", Colchimax});
    SAFEARRAY* queue = essai::TableauDeChaines({Zeclar, Colchimax, "", ""});
    SAFEARRAY* treize = essai::TableauDeChaines({"3400930999999"});
    EXPECT_EQ(Interactions2_Vdx(&vide, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), -10);
    EXPECT_EQ(Interactions2_Vdx(&blanc, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), 0);
    EXPECT_EQ(Interactions2_Vdx(&trou, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), -12);
    EXPECT_EQ(Interactions2_Vdx(&queue, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), 1);
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(Interactions2_Vdx(&treize, nullptr, nullptr, &lignes, 0, 0, 0, 0, ""), -13);
    ActiveCIP13_Vdx(0);

    VideTableau(courtes, {TypeChamp::Entier, TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte,
                          TypeChamp::Texte, TypeChamp::Texte, TypeChamp::Texte});
    Gabarit longue(23, TypeChamp::Texte);
    for (size_t c : {7, 16, 17, 18, 19, 20}) longue[c] = TypeChamp::Entier;
    VideTableau(lignes, longue);
    for (SAFEARRAY* t : {produits, lignes, courtes, vide, blanc, trou, queue, treize}) SafeArrayDestroy(t);
}

TEST_F(InteractionsExports, FlatModesReadTheirLists) {
    SetString_Vdx("3000001\r\n3000002\r\n\r\nCI00000001\r\n\r\n1\r\n\r\n");
    ASSERT_EQ(Interactions2_Vdx(nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, ""), 3);
    EXPECT_EQ(Memoire().substr(0, 41), "3000001@3000002@ACTISKENAN 10MG GELULE@CO");
    // Lines up to one beginning with "@", a code in the first seven bytes.
    SetString_Vdx("3000003 ZECLAR\r\n3000004\r\n@\r\n3000001");
    ASSERT_EQ(Interactions_Vdx(nullptr, nullptr), 1);
    EXPECT_EQ(Memoire(), "4@Contre-indication@ZECLAR 500MG CPR@COLCHIMAX CPR@Toxicit\xE9 de COLCHICINE major\xE9"
                         "e par CLARITHROMYCINE@RCP 2024@3000003@3000004");
    SetString_Vdx("3000003\r\n3000004\r\n\r\n");  // no patient lists
    EXPECT_EQ(Interactions2_Vdx(nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, ""), 1);
    SetString2_Vdx(nullptr);
    EXPECT_EQ(Interactions_Vdx(nullptr, nullptr), -12);
    EXPECT_EQ(Interactions2_Vdx(nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, ""), -12);
}

// A context is what a core reads: its base and its switches. Two of them
// side by side in one process, interleaved with the session's own.
TEST_F(Interactions, TwoContextsSideBySideLeaveTheSessionAlone) {
    AutreBase autre(false);
    const Contexte& sansParents = autre.contexte;
    Contexte graves = session();
    graves.NiveauInteraction = 4;

    const std::string tous = Analyse({Colchimax, Zeclar});
    EXPECT_TRUE(AnalyseInteractions(sansParents, {Colchimax, Zeclar}).empty());
    EXPECT_EQ(Resume(AnalyseInteractions(graves, {Colchimax, Zeclar})),
              "3000003>3000004 4 Toxicit\xE9 de COLCHICINE major\xE9" "e par CLARITHROMYCINE");
    EXPECT_EQ(Analyse({Colchimax, Zeclar}), tous);
    EXPECT_EQ(session().NiveauInteraction, 0);
    EXPECT_EQ(&ContexteCourant(), &static_cast<const Contexte&>(session()));
}

// The couples are indexed once per state of their table: a couple added to
// a base is met at the next analysis once the table is built again.
TEST_F(Interactions, ACoupleAddedToTheBaseIsMetOnceItsTableIsBuiltAgain) {
    AutreBase autre(true);
    const Contexte& contexte = autre.contexte;
    const std::string nouvelle = "3000003>3000001 4 MORPHINE et CLARITHROMYCINE + RITONAVIR";
    const std::string avant = Resume(AnalyseInteractions(contexte, {Zeclar, Actiskenan}));
    EXPECT_EQ(avant.find(nouvelle), std::string::npos) << avant;

    autre.base.Ajoute("VDXZICOU", {{"ClasseA", 17}, {"ClasseB", 10}, {"Numero", 9}, {"Genre", EntreProduits},
                              {"Sens", 1}, {"CodeGravite", 1}, {"CodeType", 4}, {"VoiesA", "A"}, {"VoiesB", "A"},
                              {"FiltreA", "T"}, {"FiltreB", "T"}});
    autre.base.Repertoire();
    const std::string apres = Resume(AnalyseInteractions(contexte, {Zeclar, Actiskenan}));
    EXPECT_EQ(apres.rfind(nouvelle, 0), 0u) << apres;
    EXPECT_EQ(apres.substr(nouvelle.size() + 3), avant);
}

// The lines are kept between analyses while their tables read the same: a
// component and a route added to a product are met once the base is built
// again.
TEST_F(Interactions, ALineIsBuiltAgainOnceItsTablesAreBuiltAgain) {
    AutreBase autre(true);
    const Contexte& contexte = autre.contexte;
    const std::string nouvelle = "3000003>3000001 4 Toxicit\xE9 de COLCHICINE major\xE9" "e par CLARITHROMYCINE";
    const std::string avant = Resume(AnalyseInteractions(contexte, {Zeclar, Actiskenan}));
    EXPECT_EQ(Resume(AnalyseInteractions(contexte, {Zeclar, Actiskenan})), avant);
    EXPECT_EQ(avant.find(nouvelle), std::string::npos) << avant;

    autre.base.Ajoute("VDXVCOMP", {{"CodeCIP", Actiskenan}, {"Rang", "002"}, {"CodeSubstance", 106}, {"Interactions", 1}})
        .Ajoute("VDXIDPVO", {{"CodeCIP", Actiskenan}, {"CodeVoie", "A02"}});
    autre.base.Repertoire();
    const std::string apres = Resume(AnalyseInteractions(contexte, {Zeclar, Actiskenan}));
    EXPECT_NE(apres.find(nouvelle), std::string::npos) << apres;
}

// Without VDXWPEFI every substance has the parent 0: no row is ever formed.
class InteractionsSansParents : public essai::SurUneBase<InteractionsSansParents> {
public:
    static void Remplit(BaseDeTest& b) { RemplitInteractions(b, false); }
};

TEST_F(InteractionsSansParents, EverySubstanceHasTheSameParentAndNoRowForms) {
    EXPECT_TRUE(AnalyseInteractions(session(), {Zeclar, Colchimax}).empty());
    EXPECT_TRUE(AnalyseInteractions(session(), {Actiskenan}).empty());
}

}  // namespace
}  // namespace vdx
