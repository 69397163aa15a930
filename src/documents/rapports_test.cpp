// The HTML reports: the words of the counts, the grouping by severity, the
// table that closes a pair, the texts, each member's page byte for byte,
// and the frame of the exports around their check.
#include "documents/rapports.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "session/session.h"
#include "store/fixture.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/essai_interactions.h"
#include "tests/support/essai_vocabulaire.h"
#include "tests/support/sans_fichier.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

size_t Compte(const std::string& page, std::string_view texte) {
    size_t n = 0;
    for (size_t p = page.find(texte); p != std::string::npos; p = page.find(texte, p + 1)) ++n;
    return n;
}

FicheInteraction2 Ligne(const char* cip1, const char* cip2, int32_t niveau, const char* gravite) {
    FicheInteraction2 r;
    r.CIP1 = cip1;
    r.CIP2 = cip2;
    r.Libelle1 = std::string("PRODUIT ") + cip1;
    r.Libelle2 = std::string("PRODUIT ") + cip2;
    r.Classe1 = "CLASSE A";
    r.Classe2 = "CLASSE B";
    r.Niveau = niveau;
    r.LibelleGravite = gravite;
    r.TexteType = "Risque";
    r.Texte2 = "Texte";
    return r;
}

// Two rows of one pair (the first with a conduct and a text on two lines),
// a substance taken outside, a row of level 0, a product's own message.
Controle<FicheInteraction2> Prescription() {
    Controle<FicheInteraction2> c;
    FicheInteraction2 a = Ligne("3000001", "3000002", 3, "Association d\xE9" "conseill\xE9" "e");
    a.Texte2 = "Risque\r\nh\xE9morragique < 5 % & plus";
    a.Texte4 = "Surveiller l'INR";
    FicheInteraction2 b = Ligne("3000001", "3000002", 3, "Association d\xE9" "conseill\xE9" "e");
    b.CodeCondition = "0000000103";
    b.LibelleCondition = "Hypertension";
    c.lignes = {a, b, Ligne("3000001", SansSecondProduit, 1, "A prendre en compte"),
                Ligne("3000002", "3000003", 0, "Information"), Ligne("3000003", "3000003", 2, "Pr\xE9" "caution")};
    c.code = static_cast<int32_t>(c.lignes.size());
    return c;
}

std::string Chapitre(const std::string& cip) { return "Chapitre\r\nde " + cip; }

TEST(RapportInteractions, TheCountsAreWordedByNumber) {
    Controle<FicheInteraction2> aucune;
    EXPECT_NE(RapportInteractions(aucune, "", Chapitre).find("Il n'y a pas d'interactions d&eacute;tect&eacute;es."),
              std::string::npos);
    Controle<FicheInteraction2> une;
    une.lignes = {Ligne("3000001", "3000002", 2, "Pr\xE9" "caution")};
    const std::string page = RapportInteractions(une, "", Chapitre);
    EXPECT_NE(page.find("1 Interaction</font>"), std::string::npos);
    EXPECT_NE(page.find(">Interaction 1/1</a>"), std::string::npos);
    EXPECT_NE(RapportInteractions(Prescription(), "", Chapitre).find("5 Interactions </font>"), std::string::npos);
    // A failed check: the head, the list and the body empty.
    Controle<FicheInteraction2> echec;
    echec.code = -500;
    const std::string vide = RapportInteractions(echec, "", Chapitre);
    EXPECT_EQ(vide.find("Il n'y a pas"), std::string::npos);
    EXPECT_EQ(vide.find("<TR"), std::string::npos);
    EXPECT_TRUE(vide.ends_with("</TABLE></p></blockquote></div>\r\n</BODY></HTML>"));
}

TEST(RapportInteractions, SeveritiesHeadTheirRunsAndPairsCloseOnce) {
    const std::string page = RapportInteractions(Prescription(), "", Chapitre);
    EXPECT_EQ(Compte(page, "<STRONG>Association d&eacute;conseill&eacute;e</STRONG></font></TD></TR>"), 1u);
    EXPECT_EQ(Compte(page, "<font color=\"#ffb000\"><STRONG>A prendre en compte</STRONG></font></TD></TR>"), 1u);
    // Level 0 opens no font tag, and the heading still closes one.
    EXPECT_NE(page.find("<TR><TD  colspan=\"2\"><STRONG>Information</STRONG></font></TD></TR>"), std::string::npos);
    // The message of one product apart, by its label alone.
    const size_t messages = page.find("<STRONG>Messages Produits</STRONG>");
    ASSERT_NE(messages, std::string::npos);
    EXPECT_LT(page.find("PRODUIT 3000002 et PRODUIT 3000003"), messages);
    EXPECT_NE(page.find("#Interaction5\" class=\"TexteLien\"><STRONG><i>PRODUIT 3000003</i>"), std::string::npos);
    // The pair of the first two rows once, after the second; none for the
    // substance taken outside; one column for a product's own message.
    EXPECT_EQ(Compte(page, "<table border=\"1\" cellpadding=\"20\">"), 3u);
    const size_t paire = page.find("<table border=\"1\" cellpadding=\"20\">");
    EXPECT_GT(paire, page.find("name=\"Interaction2\""));
    EXPECT_LT(paire, page.find("name=\"Interaction3\""));
    EXPECT_NE(page.find("<STRONG>PRODUIT 3000001</STRONG><BR>Chapitre<BR>de 3000001</p></td><td valign=\"top\">"),
              std::string::npos);
    EXPECT_EQ(Compte(page, "Chapitre<BR>de 3000003"), 2u);  // the pair of row 4, then the message's single column
    EXPECT_EQ(Compte(page, "<STRONG>PRODUIT 3000003</STRONG><BR>Chapitre<BR>de 3000003</p></td></tr>"), 2u);
}

TEST(RapportInteractions, TextsKeepTheirCharactersAndBreakTheirLines) {
    const std::string page = RapportInteractions(Prescription(), "st\"y&le.css", Chapitre);
    EXPECT_NE(page.find("<link rel=\"stylesheet\" href=\"st&quot;y&amp;le.css\" type=\"text/css\">"), std::string::npos);
    EXPECT_NE(page.find("Risque<BR>h&eacute;morragique < 5 % & plus<BR>"), std::string::npos);
    EXPECT_EQ(Compte(page, "Conduite &agrave; tenir :"), 1u);
    EXPECT_NE(page.find("<BR>Conduite &agrave; tenir :<BR>Surveiller l'INR<BR>"), std::string::npos);
    EXPECT_NE(page.find("Risque<BR>Hypertension<BR>"), std::string::npos);  // the condition of the second row
    EXPECT_EQ(RapportInteractions(Prescription(), "", Chapitre).find("stylesheet"), std::string::npos);
}

// Each member's page on rows alone, byte for byte against its file; with
// VDX_GOLDEN set the files are written again.
std::string Golden(const std::string& nom, const std::string& page) {
    const std::string chemin = std::string(VDX_DONNEES_ESSAI) + "/rapports/" + nom + ".html";
    if (std::getenv("VDX_GOLDEN")) std::ofstream(chemin, std::ios::binary) << page;
    return essai::LitFichier(chemin);
}

TEST(RapportsGolden, EachMemberByteForByte) {
    Controle<AlerteCI> ci;
    ci.lignes = {{0, 1, "3000001", "PRODUIT A", "0000000103", "Hypertension", "I10"},
                 {9, -1, "3000001", "PRODUIT A", "0000000202", "Grossesse", ""},
                 {20, 1, "3000002", "PRODUIT B", "0000000104", "Insuffisance r\xE9nale", "N18"},
                 {30, -1, "3000002", "PRODUIT B", "0000000304", "Sujet \xE2g\xE9", ""}};
    Controle<FicheAllergie> allergies, notoires;
    allergies.lignes = {{1, "3000001", "PRODUIT A", "0000000501", "P\xE9nicillines"},
                        {2, "3000002", "PRODUIT B", "30501", "P\xE9nicillines -> AMOXICILLINE"}};
    notoires.lignes = {{2, "3000003", "PRODUIT C", "7101", "ASPARTAM"}};
    Controle<FicheSurdosage> surdosage;
    surdosage.lignes = {{"3000001", "3000002", "PRODUIT A", "PRODUIT B", "", "", "", "", "2202", "PARAC\xC9TAMOL",
                         "", "", RedondanceSubstance},
                        {"3000003", "3000004", "PRODUIT C", "PRODUIT D", "", "", "", "", "", "", "M01", "AINS",
                         RedondanceClasse}};
    Controle<RMOProduit> rmo;
    rmo.lignes = {{"3000001", "PRODUIT A", {"M01", "CNAM", "01/02/2016", "Deux AINS", "Il n'y a pas lieu\r\nd'associer"}},
                  {"3000002", "PRODUIT B", {"3000002", "HAS", "", "Dur\xE9" "e", "Pas plus de 5 jours"}}};
    Controle<LigneIPC> ipc;
    ipc.lignes = {{1, "3000001", "PRODUIT A", "3000002", "PRODUIT B", "00045", "CEFTRIAXONE", "00432", "CALCIUM", 1,
                   "Incompatible", "L", "M\xEAme ligne de perfusion", "Pr\xE9" "cipit\xE9\r\ncalcique", "RCP",
                   "intraveineuse", "intraveineuse", 0},
                  {2, "3000001", "PRODUIT A", "3000002", "PRODUIT B", "3000001", "Tout composant confondu", "*",
                   "Tout Produit", 2, "A \xE9viter", "Y", "Site en Y", "Trouble", "Fabricant", "intraveineuse",
                   "Voie inconnue", 1}};
    const auto nonDC = [](const std::string& code) { return code == "3000002"; };
    const std::pair<const char*, std::string> pages[] = {
        {"interactions", RapportInteractions(Prescription(), "vdx.css", Chapitre)},
        {"contre-indications", RapportContreIndications(ci, 1, {30, 0}, "", "")},
        {"contre-indications-2", RapportContreIndications(ci, 2, {0, 1}, "Patient", "")},
        {"allergies", RapportAllergies(allergies, &notoires, nonDC, "")},
        {"surdosage", RapportSurdosage(surdosage, "")},
        {"rmo", RapportRMO({}, "")},
        {"rmo-lignes", RapportRMO(rmo, "")},
        {"ipc", RapportIPC(ipc, "")},
        {"ipc-aucune", RapportIPC({}, "")},
        {"ipc-fiche", FicheIPC(ipc.lignes, "")},
        {"ipc-fiche-vide", FicheIPC({}, "")},
    };
    for (const auto& [nom, page] : pages) EXPECT_EQ(page, Golden(nom, page)) << nom;
}

// The exports around their check, on the interaction fixture.
class Rapports : public essai::SurUneBase<Rapports> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::interactions::RemplitInteractions(b, true);
        b.Ajoute("VDXVAMST", {{"CodeCIP", essai::interactions::Actiskenan}, {"Rtf1", "{\\rtf1 Morphine\\par seule}"}});
    }
    std::string Chemin(const char* nom) const { return dossier_.Chemin(nom); }
    static std::string Lu(const std::string& chemin) { return essai::LitFichier(chemin); }
    essai::DossierEssai dossier_;
};

TEST_F(Rapports, TheCheckRunsInMode0AndItsCountComesBack) {
    const std::string fichier = Chemin("i.html");
    const std::string liste = std::string(essai::interactions::Actiskenan) + "@" + essai::interactions::Codoliprane;
    session().ChaineMemoire = liste;
    session().ChainesUnicode = 1;
    const int32_t lignes = Interactions2_Vdx(nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, "");
    ASSERT_GT(lignes, 0);
    session().ChaineMemoire = liste;
    EXPECT_EQ(InteractionsHtml_Vdx(nullptr, fichier.c_str(), ""), lignes);
    EXPECT_EQ(session().ModeSortie, ModeMemoire);
    EXPECT_EQ(session().ChainesUnicode, 1);
    const std::string page = Lu(fichier);
    EXPECT_NE(page.find("Morphine<BR>seule"), std::string::npos);  // ChapitreIAM of the first product
    EXPECT_NE(page.find("Information indisponible"), std::string::npos);
    EXPECT_EQ(ChapitreIAM(essai::interactions::Codoliprane), "Information indisponible");

    // An unopenable file: the count all the same, nothing written.
    session().ChaineMemoire = liste;
    EXPECT_EQ(InteractionsHtml_Vdx(nullptr, Chemin("absent/i.html").c_str(), ""), lignes);
    EXPECT_FALSE(std::filesystem::exists(Chemin("absent")));
}

TEST_F(Rapports, BadListsAndNamesWriteNoFile) {
    const std::string fichier = Chemin("i.html");
    const char* f = fichier.c_str();
    session().ChaineMemoire = "";
    EXPECT_EQ(InteractionsHtml_Vdx(nullptr, f, ""), -12);
    session().ChaineMemoire = "3000001";
    EXPECT_EQ(InteractionsHtml_Vdx(nullptr, nullptr, ""), -20);
    session().ChaineMemoire = "3000001";
    EXPECT_EQ(SurdosageHtml_Vdx(nullptr, f, nullptr), -20);
    EXPECT_FALSE(std::filesystem::exists(fichier));
    ReconnecteEnTableau();
    EXPECT_EQ(InteractionsHtml_Vdx(nullptr, f, ""), -10);
    SAFEARRAY* troue = essai::TableauDeChaines({"3000001", "", "3000002"});
    EXPECT_EQ(Interactions2Html_Vdx(&troue, nullptr, nullptr, f, "", 0, 0, 0, 0, ""), -12);
    hote::Detruit(troue);
    SAFEARRAY* vide = essai::TableauDeChaines({});
    EXPECT_EQ(ContreIndicationsProfilHtml_Vdx(&vide, &vide, &vide, &vide, 0, 0, 0, 0, "", f, ""), -10);
    hote::Detruit(vide);
    EXPECT_FALSE(std::filesystem::exists(fichier));
    DeConnection2_Vdx();
    EXPECT_EQ(RMOHtml_Vdx(nullptr, nullptr, nullptr, f, ""), -2);
}

TEST_F(Rapports, ChecksWithoutRowsWriteTheirNonePage) {
    const std::string fichier = Chemin("r.html");
    session().ChaineMemoire = "3000001";
    EXPECT_EQ(RMOHtml_Vdx(nullptr, nullptr, nullptr, fichier.c_str(), ""), 0);
    EXPECT_NE(Lu(fichier).find("Il n'y a pas de RMO d&eacute;tect&eacute;es."), std::string::npos);
    session().ChaineMemoire = "3000001@3000002";
    EXPECT_EQ(IPC_InfoHtml_Vdx(nullptr, fichier.c_str(), ""), 0);
    EXPECT_EQ(Compte(Lu(fichier), "Information provisoirement indisponible<"), 2u);
}

TEST(RapportsSansTable, AFailingCheckWritesItsHeadAndReturnsItsCode) {
    essai::ConnexionSansFichier base("VDXZICOU.NDX",
                                     [](BaseDeTest& b) { essai::interactions::RemplitInteractions(b, true); });
    ASSERT_TRUE(base.Connecte());
    session().ModeSortie = ModeMemoire;
    session().ChainesUnicode = 1;
    const std::string fichier = base.Repertoire() + "/i.html";
    session().ChaineMemoire = "3000001@3000002";
    EXPECT_EQ(InteractionsHtml_Vdx(nullptr, fichier.c_str(), ""), -500);
    EXPECT_EQ(session().ModeSortie, ModeMemoire);
    EXPECT_EQ(session().ChainesUnicode, 1);
    const std::string page = essai::LitFichier(fichier);
    EXPECT_TRUE(page.starts_with("<HTML>"));
    EXPECT_EQ(page.find("<TR"), std::string::npos);
}

}  // namespace
}  // namespace vdx
