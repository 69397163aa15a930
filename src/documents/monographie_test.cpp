// The monograph as a page: which chapters stand and where, the regulatory
// rows, the characters of the page, the file and the checks of the exports.
#include "documents/monographie.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "documents/fiche_produit.h"
#include "session/session.h"
#include "session/tables.h"
#include "session/messages.h"
#include "store/fixture.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/essai_produits.h"
#include "tests/support/sans_fichier.h"

namespace vdx {
namespace {

using essai::BaseDeTest;

// 3000001: main texts with chapter 1 (a text of every hard character), an
// empty chapter 2 and chapter 5; further texts with chapter 4
// (incompatibility) and 3 (storage); the dates of chapters 5 and 17 only;
// price 10,01 for 2 UCD, rated 65 %; a class path and a notorious excipient.
// 3000002: no text at all, price 0, rate 0, kosher rating 10. 3000004, the
// deleted one, has a chapter. 9000001, a line by common name, has two
// products and a text of its own that the page leaves out.
class Monographie : public essai::SurUneBaseEnContexte<Monographie> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitProduits(b);
        b.Ajoute("VDXPRO", {{"CodeCIP", "3000016"},
                            {"Libelle", "IBUPROFENE 200MG"},
                            {"CodeRubrique", "10"},
                            {"DonneeEco2", "0001001"},
                            {"CodeTSS", "3"},
                            {"CodeTVA", "1"}});
        b.Ajoute("VDXPROA", {{"CodeCIP", "3000016"}, {"NombreUCD", 2}, {"Mediel", 10}});
        b.Ajoute("VDXPROA", {{"CodeCIP", "3000010"}, {"CodeStatut", 1}});
        b.Ajoute("VDXTSS", {{"Code", "3"}, {"Taux", 65.0}});
        b.Ajoute("VDXTVA", {{"Code", "1"}, {"Taux", 2.1}});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "3000001"},
                              {"Rtf1", "{\\rtf1 Über Ère å <b>x</b>\\par fin}"},
                              {"Rtf5", "{\\rtf1 Grossesse}"}});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "3000004"}, {"Rtf1", "{\\rtf1 Retir\\'e9}"}});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "9000001"}, {"Rtf1", "{\\rtf1 Texte de la ligne}"}});
        b.Ajoute("VDXVAMST", {{"CodeCIP", "3000001"}, {"Rtf4", "{\\rtf1 Aucune}"}, {"Rtf3", "{\\rtf1 Au frais}"}});
        b.Ajoute("VDXVAMDT", {{"CodeCIP", "3000001"}, {"CodeChapitre", "05"}, {"DateChapitre", "2016/11/03"}});
        b.Ajoute("VDXVAMDT", {{"CodeCIP", "3000001"}, {"CodeChapitre", "17"}, {"DateChapitre", "2015-01-02"}});
        b.Ajoute("VDXVAMPC", {{"CodeCIP", "3000001"}, {"TypeAMM", "1"}, {"CodeTerme", "IN00000001"}});
        b.Ajoute("VDXVAMM", {{"CodeTerme", "IN00000001"}, {"TypeAMM", "1"}, {"Libelle", "Fièvre"}});
        b.Ajoute("VDXYATC", {{"CodeClasse", "N"}, {"Libelle", "Système nerveux"}});
        b.Ajoute("VDXYATC", {{"CodeClasse", "N02BE01"}, {"Libelle", "Paracétamol"}});
        b.Ajoute("VDXYATCP", {{"CodeClasse", "N02BE01"}, {"CodeCIP", "3000001"}});
        b.Ajoute("VDXVEXC", {{"CodeSubstance", 7101}, {"Libelle", "ASPARTAM"}});
        b.Ajoute("VDXVCOME", {{"CodeCIP", "3000001"}, {"Rang", "001"}, {"CodeSubstance", 7101}, {"QuantiteTexte", "*"}});
        b.Ajoute("VDXVCOME", {{"CodeCIP", "3000003"}, {"Rang", "001"}, {"CodeSubstance", 7101}, {"QuantiteTexte", "*"}});
        for (const char* cip : {"3000001", "3000003"})
            b.Ajoute("VDXYDCIP", {{"CodeDCI", "9000001"}, {"CodeCIP", cip}});
        // 3000007 has a link of another kind, then its own monograph.
        b.Ajoute("VDXYLIEN", {{"NumeroLien", "00001"}, {"NomDocument", "fiche.pdf"}});
        b.Ajoute("VDXYLIEN", {{"NumeroLien", "00002"}, {"NomDocument", "skenan.htm"}});
        b.Ajoute("VDXYLCIP", {{"CodeCIP", "3000007"}, {"NumeroLien", "00001"}, {"TypeLien", VDXYLCIP::LienTransparence}});
        b.Ajoute("VDXYLCIP", {{"CodeCIP", "3000007"}, {"NumeroLien", "00002"}, {"TypeLien", VDXYLCIP::LienMonographie}});
        b.Ajoute("VDXYLBIN", {{"NomDocument", "fiche.pdf"}, {"Document", "25504446"}});
        b.Ajoute("VDXYLBIN", {{"NomDocument", "skenan.htm"}, {"Document", "3c703e536be96e616e3c2f703e"}});
    }

    static std::string Page(const char* cip, FormeMonographie forme = FormeMonographie::Complete) {
        return PageMonographie(session(), cip, forme, "");
    }
    static size_t Compte(const std::string& page, std::string_view texte) {
        size_t n = 0;
        for (size_t p = page.find(texte); p != std::string::npos; p = page.find(texte, p + 1)) ++n;
        return n;
    }
    // The summary's link to a chapter.
    static std::string Lien(std::string_view ancre) { return "<a href=\"#" + std::string(ancre) + "\""; }
};

TEST_F(Monographie, ChaptersStandOnlyWithATextAndTheirDatesOnlyWhereKept) {
    const std::string page = Page("3000001");
    EXPECT_NE(page.find("<TITLE>DOLIPRANE 500MG CPR</TITLE>"), std::string::npos);
    for (const char* ancre : {"Indications", "Grossesse_allaitement", "Incompatibilite", "Conservation", "Classes ATC",
                              "Composition", "Economique", "Int&eacute;roperabilit&eacute;"})
        EXPECT_EQ(Compte(page, Lien(ancre)), 1u) << ancre;
    // An empty field, and chapters the record lacks, are neither in the
    // summary nor in the body.
    for (const char* ancre : {"Contre_indications", "Posologies", "Interactions", "Aspect", "Forme_et_presentation"}) {
        EXPECT_EQ(Compte(page, Lien(ancre)), 0u) << ancre;
        EXPECT_EQ(Compte(page, "name=\"" + std::string(ancre) + "\""), 0u) << ancre;
    }
    EXPECT_NE(page.find(" - <font face=\"Arial\"><strong><a href=\"#Classes ATC\""), std::string::npos);
    // Dates turned round with their own separators, on two chapters only.
    EXPECT_EQ(Compte(page, " AMM du "), 2u);
    EXPECT_NE(page.find(" AMM du 03/11/2016 "), std::string::npos);
    EXPECT_NE(page.find(" AMM du 02-01-2015 "), std::string::npos);
    // Inside the incompatibility chapter alone; before the pregnancy text
    // its source line.
    EXPECT_EQ(Compte(page, "Donn&eacute;es de l'AMM:"), 1u);
    const size_t incompatibilite = page.find("name=\"Incompatibilite\"");
    EXPECT_GT(page.find("Donn&eacute;es de l'AMM:"), incompatibilite);
    EXPECT_LT(page.find("Donn&eacute;es de l'AMM:"), page.find("name=\"Conservation\""));
    EXPECT_LT(page.find("Source RCP du "), page.find(">Grossesse</font>"));
    // The list of the terms before the text of their chapter.
    EXPECT_LT(page.find("<li class=\"Texte\">Fi&egrave;vre</li>"), page.find("&uuml;ber"));
    EXPECT_NE(page.find("<b>N</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">Syst&egrave;me"),
              std::string::npos);
    EXPECT_NE(page.find("ASPARTAM <STRONG>(excipient &agrave; effet notoire)</STRONG>"), std::string::npos);
    EXPECT_TRUE(page.ends_with("</p><p>&nbsp; </p></div>\r\n</BODY></HTML>"));
}

TEST_F(Monographie, AProductWithoutTextsOrRecordsStillGetsWhatCanBeMade) {
    const std::string sansTexte = Page("3000002");
    EXPECT_EQ(Compte(sansTexte, "class=\"TexteLien\""), 1u);  // the regulatory data alone
    EXPECT_NE(sansTexte.find(Lien("Economique")), std::string::npos);
    // A code no table holds: no title, no chapter, the page whole.
    const std::string inconnu = Page("3999998");
    EXPECT_EQ(inconnu.find("<TITLE>"), std::string::npos);
    EXPECT_EQ(Compte(inconnu, "class=\"TexteLien\""), 0u);
    EXPECT_TRUE(inconnu.ends_with("</BODY></HTML>"));
}

TEST_F(Monographie, TheDeletedProductShowsItsRedLineAndItsChapters) {
    const std::string page = Page("3000004");
    EXPECT_NE(page.find("<font face=\"Arial\" color=\"#ff0000\">( Produit supprim&eacute; depuis le 15/03/2017)"),
              std::string::npos);
    EXPECT_NE(page.find("Retir&eacute;"), std::string::npos);
    EXPECT_EQ(Page("3000001").find("#ff0000"), std::string::npos);
}

TEST_F(Monographie, AProductWithItsOwnMonographGetsItInstead) {
    const std::string page = Page("3000007");
    EXPECT_TRUE(page.starts_with("<link rel=\"stylesheet\" type=\"text/css\" href=\"monographie.css\">\r\n<STYLE>.Texte{"));
    EXPECT_TRUE(page.ends_with("</STYLE>\r\n<p>Sk\xE9nan</p>"));
    EXPECT_NE(Page("3000007", FormeMonographie::Courte).find("<TITLE>SKENAN"), std::string::npos);
}

TEST_F(Monographie, ALineByCommonNameListsItsProductsThenTheMadeChapters) {
    const std::string page = Page("9000001");
    EXPECT_NE(page.find("<TITLE>Parac&eacute;tamol 500 mg cp</TITLE>"), std::string::npos);
    const size_t phrase = page.find("synth&egrave;se raisonn&eacute;e");
    ASSERT_NE(phrase, std::string::npos);
    EXPECT_LT(phrase, page.find("<li class=\"Texte\">DOLIPRANE 500MG CPR</li>"));
    EXPECT_EQ(page.find("Texte de la ligne"), std::string::npos);
    EXPECT_EQ(page.find("Economique"), std::string::npos);
    // Its products' notorious excipients, once.
    EXPECT_EQ(Compte(page, "<li class=\"Texte\">ASPARTAM</li>"), 1u);
}

TEST_F(Monographie, RegulatoryRowsLeftOutOrWorded) {
    const std::string avecPrix = Page("3000016");
    EXPECT_NE(avecPrix.find(">10,01<"), std::string::npos);
    EXPECT_NE(avecPrix.find(">65 % <"), std::string::npos);
    EXPECT_NE(avecPrix.find(">2,1 % <"), std::string::npos);
    EXPECT_NE(avecPrix.find("Prix par UCD - Euros:</b></font></td><td width=\"56%\" class=\"Texte\"><font "
                            "face=\"Arial\">5,01<"),
              std::string::npos);
    EXPECT_NE(avecPrix.find("kitniot - lait non surveill&eacute; (source MEDIEL)"), std::string::npos);
    EXPECT_EQ(avecPrix.find("Dopant"), std::string::npos);

    const std::string sansPrix = Page("3000002");
    EXPECT_NE(sansPrix.find(">Prix Libre<"), std::string::npos);
    EXPECT_NE(sansPrix.find(">Non rembours&eacute;<"), std::string::npos);
    EXPECT_EQ(sansPrix.find("Base de remboursement"), std::string::npos);
    EXPECT_EQ(sansPrix.find("Nombre d'UCD"), std::string::npos);
    EXPECT_NE(sansPrix.find(">Aucune information MEDIEL disponible <"), std::string::npos);

    const std::string reference = Page("3000001");
    for (const char* rangee : {"N&deg; AMM</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">3400930000011",
                               "R&eacute;f&eacute;rent</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">OUI",
                               "M&eacute;dicament T2A</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">OUI",
                               "Condition de d&eacute;livrance</b></font></td><td width=\"56%\" class=\"Texte\"><font "
                               "face=\"Arial\">Prescription hospitali&egrave;re<",
                               "Statut</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">AMM - Liste I<"})
        EXPECT_NE(reference.find(rangee), std::string::npos) << rangee;
    EXPECT_EQ(reference.find("G&eacute;n&eacute;rique"), std::string::npos);

    const std::string dopant = Page("3000010");
    EXPECT_NE(dopant.find("M&eacute;dicament dopant*"), std::string::npos);
    EXPECT_EQ(dopant.find("M&eacute;dicament T2A</b></font></td><td width=\"56%\" class=\"Texte\"><font face=\"Arial\">OUI"),
              std::string::npos);
}

TEST_F(Monographie, StoredTextsPassTheTableAndOnlyFramedLinesBreak) {
    const std::string page = Page("3000001");
    EXPECT_NE(page.find("&uuml;ber &ecirc;re &aring; <b>x</b><BR>fin"), std::string::npos);
    EXPECT_EQ(page.find("\r\n<BR>"), std::string::npos);
    EXPECT_NE(page.find("</table>\r\n"), std::string::npos);  // the page's own lines stay
    for (const char octet : page) EXPECT_FALSE(octet == '\xDC' || octet == '\xC8' || octet == '\xE9') << page;
}

TEST_F(Monographie, TheShortFormKeepsTheTermsAndLeavesTheFurtherTexts) {
    const std::string page = Page("3000001", FormeMonographie::Courte);
    EXPECT_NE(page.find(Lien("Indications")), std::string::npos);
    EXPECT_NE(page.find(Lien("Economique")), std::string::npos);
    for (const char* ancre : {"Grossesse_allaitement", "Incompatibilite", "Conservation"})
        EXPECT_EQ(page.find(Lien(ancre)), std::string::npos) << ancre;
}

TEST(MonographieMontants, HalfCentsRoundUpAndDatesTurnRound) {
    EXPECT_EQ(PrixParUCD(1001, 2), 501);
    EXPECT_EQ(PrixParUCD(1000, 3), 333);
    EXPECT_EQ(PrixParUCD(1000, 8), 125);
    EXPECT_EQ(Montant(501), "5,01");
    EXPECT_EQ(Montant(7), "0,07");
    EXPECT_EQ(DateJourMoisAn("2016/11/03"), "03/11/2016");
    EXPECT_EQ(DateJourMoisAn("1998-07-21"), "21-07-1998");
    EXPECT_EQ(DateJourMoisAn("03112016"), "03112016");
    EXPECT_EQ(TexteMedielMonographie(1), "Casher pour P\xE2que (source MEDIEL)");
    for (int32_t autre : {0, 11, -1}) EXPECT_EQ(TexteMedielMonographie(autre), "Aucune information MEDIEL disponible ");
}

// The exports over files.
class MonographieFichier : public Monographie {
protected:
    std::string Chemin(const char* nom) const { return dossier_.Chemin(nom); }
    static std::string Lu(const std::string& chemin) { return essai::LitFichier(chemin); }
    essai::DossierEssai dossier_;
};

TEST_F(MonographieFichier, EachCallReplacesTheFileAndAnUnwritablePathWritesNothing) {
    const std::string fichier = Chemin("m.html");
    ASSERT_EQ(MonographieHtml_Vdx("3000001", fichier.c_str(), "a\"b&c.css"), 1);
    const std::string premiere = Lu(fichier);
    EXPECT_NE(premiere.find("href=\"a&quot;b&amp;c.css\""), std::string::npos);
    ASSERT_EQ(MonographieHtml_Vdx("3000002", fichier.c_str(), ""), 1);
    EXPECT_EQ(Lu(fichier), PageMonographie(session(), "3000002", FormeMonographie::Complete, ""));
    EXPECT_EQ(Lu(fichier).find("stylesheet"), std::string::npos);

    const std::string impossible = Chemin("absent/m.html");
    EXPECT_EQ(MonographieHtml_Vdx("3000001", impossible.c_str(), ""), 1);
    EXPECT_FALSE(std::filesystem::exists(impossible));

    ASSERT_EQ(InfoHtml_Vdx("3000010", fichier.c_str(), ""), 1);
    const std::string info = Lu(fichier);
    EXPECT_EQ(Compte(info, ">OUI<"), 2u);  // doping and generic
    EXPECT_EQ(Compte(info, ">NON<"), 5u);
    EXPECT_LT(info.find(">g&eacute;n&eacute;rique<"), info.find(">Mediel<"));
}

TEST_F(MonographieFichier, BadArgumentsAndTheAgent) {
    const std::string fichier = Chemin("m.html");
    const char* f = fichier.c_str();
    for (auto* exporte : {MonographieHtml_Vdx, MonographieHtml2_Vdx, InfoHtml_Vdx}) {
        EXPECT_EQ(exporte(nullptr, f, ""), -10);
        EXPECT_EQ(exporte("", f, ""), -10);
        EXPECT_EQ(exporte("3000009", f, ""), -10);  // an accessory
        EXPECT_EQ(exporte("300000", f, ""), -13);
        EXPECT_EQ(exporte("30000011", f, ""), -13);
        EXPECT_EQ(exporte("3000001", nullptr, ""), -20);
        EXPECT_EQ(exporte("3000001", "", ""), -20);
        EXPECT_EQ(exporte("3000001", f, nullptr), 1);
    }
    ActiveCIP13_Vdx(1);
    EXPECT_EQ(MonographieHtml_Vdx("3400930000011", f, ""), 1);
    EXPECT_NE(Lu(fichier).find("DOLIPRANE 500MG CPR"), std::string::npos);

    notices.agents.insert(messages::FenetreAgent);
    ReconnecteEnTableau();
    DeConnection2_Vdx();
    EXPECT_EQ(MonographieHtml_Vdx("3000001", f, ""), -2);
    ASSERT_EQ(notices.notifications.size(), 1u);
    EXPECT_EQ(notices.notifications[0].texte, "MonographieHtml@CodeCIP=3000001@");
    for (auto* exporte : {MonographieHtml2_Vdx, InfoHtml_Vdx}) EXPECT_EQ(exporte("3000001", f, ""), -2);
}

TEST(MonographieSansTable, AMissingChapterTableFailsTheCallAndWritesNothing) {
    essai::ConnexionSansFichier base("VDXVAMST.NDX", essai::RemplitProduits);
    ASSERT_TRUE(base.Connecte());
    const std::string page = base.Repertoire() + "/m.html";
    EXPECT_EQ(MonographieHtml_Vdx("3000001", page.c_str(), ""), -500);
    EXPECT_EQ(session().FichierErreur, "VDXVAMST.NDX");
    EXPECT_FALSE(TablesOuvertes::Tenues());  // the data file opened before the failure let go
    EXPECT_FALSE(std::filesystem::exists(page));
    EXPECT_EQ(MonographieHtml2_Vdx("3000001", page.c_str(), ""), 1);  // the short form reads no further text
}

}  // namespace
}  // namespace vdx
