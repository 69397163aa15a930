// The interaction thesaurus as imported, beside medicines: a drink, a plant,
// a device, every medicine of a route, each one couple from the medicine's
// side; a family named with its route; the couples of two medicines kept in
// both orders; then these couples as the library reads them from a base
// built of the sources.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "checks/interactions.h"
#include "session/session.h"
#include "store/magasin.h"
#include "store/sources.h"
#include "tests/support/extrait_import.h"
#include "vdx32/vdx32.h"

namespace vdx::import::essai {
namespace {

constexpr char Warfarine[] = "4444444", Morphine[] = "3333333";
constexpr char Antiacide[] = "1100011", Spermicide[] = "1100012", Ovule[] = "1100013", Vaseline[] = "1100014",
               HuileDeParaffine[] = "1100015", FerInjectable[] = "1100016", Millepertuis[] = "1100017";

// The products of what the thesaurus names beside medicines: an antacid
// published under substance number 3, a spermicide and another vaginal
// product, mineral oil on the skin and by mouth, iron by injection published
// above the last substance number, an extract of St John's wort. Couples
// with drinks, a plant, a device, the oral and vaginal routes, and iron.
void AjouteHorsMedicaments(Extrait& e) {
    const auto specialite = [&e](const std::string& cis, const std::string& cip, const std::string& nom,
                                 const std::string& forme, const std::string& voie, const std::string& composant) {
        e.Ajoute("bdpm/CIS_bdpm.txt", cis + "\t" + nom + ", " + forme + "\t" + forme + "\t" + voie +
                                          "\tAutorisation active\tProcédure nationale\tCommercialisée\t01/01/2010\t\t\t"
                                          " LABO\tNon\r\n");
        e.Ajoute("bdpm/CIS_CIP_bdpm.txt", cis + "\t" + cip + "\t1 boîte\tPrésentation active\tDéclaration de "
                                          "commercialisation\t01/02/2012\t340090" + cip +
                                          "\toui\t30%\t3,00\t4,02\t1,02\t\r\n");
        e.Ajoute("bdpm/CIS_COMPO_bdpm.txt", cis + "\t" + forme + "\t" + composant + "\t1 dose\tSA\t1\t\r\n");
    };
    specialite("60000011", Antiacide, "ANTIACIDE LAB", "suspension buvable", "orale", "3\tHYDROTALCITE\t1 g");
    specialite("60000012", Spermicide, "SPERMICIDE LAB 18,9 mg", "ovule", "vaginale",
               "1102\tCHLORURE DE BENZALKONIUM\t18,9 mg");
    specialite("60000013", Ovule, "ECONAZOLE LAB 150 mg", "ovule", "vaginale", "1103\tNITRATE D'ÉCONAZOLE\t150 mg");
    specialite("60000014", Vaseline, "VASELINE LAB", "pommade", "cutanée", "1104\tPARAFFINE SOLIDE\t1 g");
    specialite("60000015", HuileDeParaffine, "PARAFFINE LAB", "solution buvable", "orale",
               "1105\tPARAFFINE LIQUIDE\t10 ml");
    specialite("60000016", FerInjectable, "FER LAB 50 mg/ml", "solution injectable", "intraveineuse",
               "34855\tFER\t50 mg");
    specialite("60000017", Millepertuis, "MILLEPERTUIS LAB 300 mg", "comprimé", "orale",
               "1106\tMILLEPERTUIS (SOMMITÉ FLEURIE) (EXTRAIT SEC DE)\t300 mg");
    e.Ajoute("interactions-2016-08/substances.txt", "MILLEPERTUIS\r\nFER\r\n");
    e.Ajoute("interactions-2016-08/substance-classes.tsv",
             "HYDROTALCITE\tTOPIQUES GASTRO-INTESTINAUX, ANTIACIDES ET ADSORBANTS\r\n"
             "BENZALKONIUM\tSPERMICIDES\r\n"
             "PARAFFINE\tHUILES MINERALES\r\n");
    const auto couple = [&e](const std::string& a, const std::string& b, const std::string& description) {
        e.Ajoute("interactions-2016-08/couples.tsv", a + "\t" + b + "\t" + description + "\t\tRisque.\t\t\t\t\r\n");
    };
    couple("WARFARINE", "ALCOOL (BOISSON OU EXCIPIENT)", "A prendre en compte Variations de l'effet.");
    couple("MILLEPERTUIS", "WARFARINE", "CONTRE-INDICATION Diminution des concentrations.");
    couple("ALCOOL (BOISSON OU EXCIPIENT)", "SELS DE FER PAR VOIE INJECTABLE", "Precaution d'emploi Surveiller.");
    couple("THEINE", "FLUINDIONE", "A prendre en compte Variations.");  // no fluindione product
    couple("HUILES MINERALES", "PRESERVATIFS EN LATEX", "CONTRE-INDICATION Utiliser un lubrifiant hydrosoluble.");
    couple("TOPIQUES GASTRO-INTESTINAUX, ANTIACIDES ET ADSORBANTS", "MEDICAMENTS ADMINISTRES PAR VOIE ORALE",
           "Precaution d'emploi Prendre les topiques a distance.");
    couple("SPERMICIDES", "MEDICAMENTS UTILISES PAR VOIE VAGINALE", "Association DECONSEILLEE Inactivation.");
    couple("PRESERVATIFS EN LATEX", "MEDICAMENTS UTILISES PAR VOIE VAGINALE", "A prendre en compte Rien.");
    couple("FER", "SELS DE FER PAR VOIE INJECTABLE", "A prendre en compte Surdosage.");
}

// Interaction classes by label.
std::map<std::string, std::string> Classes(const Extrait& e) {
    std::map<std::string, std::string> classes;
    for (const Ligne& c : e.Table("VDXZICLA")) classes[c.at("Libelle")] = c.at("CodeClasse");
    return classes;
}

// The couples from class `a` to class `b`.
std::vector<Ligne> Couples(const Extrait& e, const std::string& a, const std::string& b) {
    return Selon(Selon(e.Table("VDXZICOU"), "ClasseA", a), "ClasseB", b);
}

TEST(ImportInteractions, WhatNoMedicineHoldsIsMetByTheRoutesOfTheMedicineSideAndTakesAFreeNumber) {
    Extrait e;
    AjouteHorsMedicaments(e);
    const RapportImport r = e.ImporteMalgreRejets();
    auto classes = Classes(e);
    const auto voie = [&e](const char* cip) { return e.Fiche("VDXIDPVO", "CodeCIP", cip).at("CodeVoie"); };
    struct Cas {
        const char* medicament;
        const char* autre;
        const char* genre;
        std::string voiesA, voiesB;  // those the medicine names, else those of what it meets
    };
    for (const Cas& cas : {Cas{"WARFARINE", "ALCOOL (BOISSON OU EXCIPIENT)", "1", "A", "A"},
                           Cas{"SELS DE FER PAR VOIE INJECTABLE", "ALCOOL (BOISSON OU EXCIPIENT)", "1", "A2", "A"},
                           // On the skin or a mucosa, in the vagina or the rectum.
                           Cas{"HUILES MINERALES", "PRESERVATIFS EN LATEX", "1", "B|A51|A17", "B|A51|A17"},
                           Cas{"WARFARINE", "MILLEPERTUIS (HORS PRESCRIPTION)", "1", "A", "A"},
                           Cas{"TOPIQUES GASTRO-INTESTINAUX, ANTIACIDES ET ADSORBANTS",
                               "MEDICAMENTS ADMINISTRES PAR VOIE ORALE", "2", "A1", voie(Warfarine).substr(0, 2)},
                           Cas{"SPERMICIDES", "MEDICAMENTS UTILISES PAR VOIE VAGINALE", "2", voie(Ovule), voie(Ovule)}}) {
        const auto c = Couples(e, classes[cas.medicament], classes[cas.autre]);
        ASSERT_EQ(c.size(), 1u) << cas.medicament;
        EXPECT_EQ(c[0].at("Genre") + "/" + c[0].at("VoiesA") + "/" + c[0].at("VoiesB"),
                  std::string(cas.genre) + "/" + cas.voiesA + "/" + cas.voiesB) << cas.medicament;
        EXPECT_EQ(c[0].at("SubstancesB").empty(), c[0].at("Genre") == "2") << cas.medicament;
    }
    // The lowest numbers no substance holds, in the order of the names: 1
    // and 2 went to the substances published above the last number, 3 is
    // the antacid's. Only what a couple was written for is a substance.
    std::map<std::string, std::string> exterieures;
    for (const Ligne& s : e.Table("VDXVPA"))
        if (std::stoi(s.at("CodeSubstance")) > 3 && std::stoi(s.at("CodeSubstance")) < 10)
            exterieures[s.at("CodeSubstance")] = s.at("Libelle");
    EXPECT_EQ(exterieures, (std::map<std::string, std::string>{
                               {"4", "Alcool (boisson ou excipient)"}, {"5", "Millepertuis"}, {"7", "Préservatifs en latex"}}));
    EXPECT_FALSE(classes.count("THEINE"));  // no fluindione product
    // Nor is what no medicine holds looked for among the medicines, nor a
    // couple of two such written.
    EXPECT_EQ(r.substancesThesaurus, 7u);  // St John's wort is also a medicine
    EXPECT_EQ(NomsSansSubstance(r), std::vector<std::string>{"FLUINDIONE"});
    ASSERT_EQ(r.rejets.size(), 1u);
    EXPECT_TRUE(r.rejets[0].starts_with("couples.tsv: 1 line, no medicine on either side")) << r.rejets[0];
}

TEST(ImportInteractions, AFamilyNamedWithItsRouteHasItsMembersAndItsCouplesStayInBothOrders) {
    Extrait e;
    AjouteHorsMedicaments(e);
    e.ImporteMalgreRejets();
    auto classes = Classes(e);
    const std::string fer = e.Fiche("VDXVCOMP", "CodeCIP", FerInjectable).at("CodeSubstance");
    std::set<std::string> classesDuFer;
    for (const Ligne& c : Selon(e.Table("VDXZICLC"), "CodeSubstance", fer)) classesDuFer.insert(c.at("CodeClasse"));
    EXPECT_EQ(classesDuFer, (std::set<std::string>{classes["FER"], classes["SELS DE FER PAR VOIE INJECTABLE"]}));
    const auto direct = Couples(e, classes["FER"], classes["SELS DE FER PAR VOIE INJECTABLE"]);
    const auto miroir = Couples(e, classes["SELS DE FER PAR VOIE INJECTABLE"], classes["FER"]);
    ASSERT_EQ(direct.size(), 1u);
    ASSERT_EQ(miroir.size(), 1u);
    EXPECT_EQ(direct[0].at("Genre") + direct[0].at("Sens") + direct[0].at("VoiesA") + direct[0].at("VoiesB"), "01AA2");
    EXPECT_EQ(miroir[0].at("Genre") + miroir[0].at("Sens") + miroir[0].at("VoiesA") + miroir[0].at("VoiesB"), "02A2A");
}

// --- As the library reads them ------------------------------------------------

class CouplesLus : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        extrait_ = new Extrait;
        AjouteHorsMedicaments(*extrait_);
        extrait_->ImporteMalgreRejets();
        magasin::InitialiseMagasin(867, NombreNumeros, 16);
        ConstruitBase(extrait_->chemin() / "sources", extrait_->chemin() / "base");
    }
    static void TearDownTestSuite() {
        delete extrait_;
        extrait_ = nullptr;
    }
    void SetUp() override {
        DeConnection2_Vdx();
        RemetSession();
        ASSERT_EQ(Connection2_Vdx((extrait_->chemin() / "base").string().c_str(), 0, 0), 1);
    }
    void TearDown() override {
        DeConnection2_Vdx();
        RemetSession();
    }

    // The rows of a prescription as "CIP1>CIP2 second label (level)".
    static std::set<std::string> Lignes(const std::vector<std::string>& prescription) {
        std::set<std::string> lignes;
        for (const FicheInteraction2& r : AnalyseInteractions(session(), prescription))
            lignes.insert(r.CIP1 + ">" + r.CIP2 + " " + r.Libelle2 + " (" + std::to_string(r.Niveau) + ")");
        return lignes;
    }

    static inline Extrait* extrait_ = nullptr;
};

TEST_F(CouplesLus, AProductAloneMeetsWhatIsTakenBesideIt) {
    EXPECT_EQ(Lignes({Warfarine}), (std::set<std::string>{"4444444>0000000 Alcool (boisson ou excipient) (1)",
                                                          "4444444>0000000 Millepertuis (4)"}));
    std::map<std::string, std::string> classes;  // by second label
    for (const FicheInteraction2& r : AnalyseInteractions(session(), {Warfarine})) classes[r.Libelle2] = r.Classe2;
    EXPECT_EQ(classes["Alcool (boisson ou excipient)"], "ALCOOL (BOISSON OU EXCIPIENT)");
    // Mineral oil meets a condom on the skin, not by mouth.
    EXPECT_EQ(Lignes({Vaseline}), (std::set<std::string>{"1100014>0000000 Pr\xE9servatifs en latex (4)"}));
    EXPECT_EQ(Lignes({HuileDeParaffine}), std::set<std::string>{});
}

TEST_F(CouplesLus, StJohnsWortPrescribedIsAProductOfThePrescriptionAndStaysToAvoidOutsideIt) {
    EXPECT_EQ(Lignes({Warfarine, Millepertuis}),
              (std::set<std::string>{"1100017>4444444 WARFARINE VIEUX 5MG CPR SEC B/30 (4)",
                                     "4444444>0000000 Alcool (boisson ou excipient) (1)",
                                     "4444444>0000000 Millepertuis (4)"}));
    EXPECT_EQ(Lignes({Millepertuis}), std::set<std::string>{});
}

TEST_F(CouplesLus, AProductOfARouteFamilyMeetsEveryOtherProductOfThatRoute) {
    EXPECT_EQ(Lignes({Antiacide, Warfarine}),
              (std::set<std::string>{"1100011>4444444 WARFARINE VIEUX 5MG CPR SEC B/30 (2)",
                                     "4444444>0000000 Alcool (boisson ou excipient) (1)",
                                     "4444444>0000000 Millepertuis (4)"}));
    EXPECT_EQ(Lignes({Antiacide, Morphine}), std::set<std::string>{});  // injected
    const auto vaginal = Lignes({Ovule, Spermicide});
    ASSERT_EQ(vaginal.size(), 1u);
    EXPECT_TRUE(vaginal.begin()->starts_with("1100012>1100013 ")) << *vaginal.begin();
    EXPECT_TRUE(vaginal.begin()->ends_with(" (3)")) << *vaginal.begin();
}

}  // namespace
}  // namespace vdx::import::essai
