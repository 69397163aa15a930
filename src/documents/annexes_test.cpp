// The side documents of a product: the notice and its pictures on disk, the
// links and the documents written byte for byte, the transparency sheets,
// the texts of pharmacy products by kind, the history and its page, the
// identity sheet as a page, a product's own monograph, and bad arguments.
#include "documents/annexes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "session/valeurs_hote.h"
#include "store/sources.h"
#include "tests/support/essai_produits.h"
#include "tests/support/tableau_hote.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;
using essai::BaseDeTest;

const std::string Png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), Gif = "GIF89a\x01\x00\x01\x00", Pdf("%PDF-1.4\r\n\0\x01%%EOF", 17);

// 3000001: a notice with two pictures, and 3000011 a picture of its own;
// 3000002: a notice with an empty HTML section; 3000004 a picture named
// out of its directory, 3000010 a picture named "full". 3000003: a document linked
// twice, a transparency sheet, under the long-term illness 12; 3000007: its
// own monograph. Texts of pharmacy products: 6000002 (category 60), 7000001
// (40, two texts), 6000001 (no product: the second kind), 3000001 (a code
// that has none). History of
// 3000001: two changes, the older one second in the sources.
void Remplit(BaseDeTest& b) {
    essai::RemplitProduits(b);
    for (auto [cip, libelle, rubrique] : {std::tuple{"6000002", "COMPRESSES", "60"}, {"7000001", "VERMIFUGE CHIEN", "40"}})
        b.Ajoute("VDXPRO", {{"CodeCIP", cip}, {"Libelle", libelle}, {"CodeRubrique", rubrique}});
    b.Ajoute("VDXZNOT", {{"CodeCIP", "3000001"}, {"Texte", "Notice en texte"}, {"Rtf", "{\\rtf1 Notice}"},
                         {"Html", "<HTML><BODY><img src=\"logo.png\"><p>Notice</p></BODY></HTML>"}});
    for (const char* cip : {"3000004", "3000010"}) b.Ajoute("VDXZNOT", {{"CodeCIP", cip}, {"Html", "<p>Notice</p>"}});
    b.Ajoute("VDXZNOT", {{"CodeCIP", "3000002"}, {"Texte", ""}, {"Html", ""}});
    for (auto [cip, nom, octets] : {std::tuple{"3000001", "logo.png", Png}, {"3000001", "schema.gif", Gif},
                                    {"3000011", "autre.png", Png}, {"3000004", "../evade.png", Png},
                                    {"3000010", "full", Gif}})
        b.Ajoute("VDXZNOTG", {{"CodeCIP", cip}, {"NomImage", nom}, {"Image", VersHexa(octets)}});
    for (auto [numero, titre, document] : {std::tuple{"00001", "Notice de bon usage", "bon-usage.pdf"},
                                           {"00002", "Rappel", "bon-usage.pdf"}, {"00003", "Avis de la commission", "ct.htm"},
                                           {"00004", "Monographie", "skenan.htm"}})
        b.Ajoute("VDXYLIEN", {{"NumeroLien", numero}, {"Libelle", titre}, {"NomDocument", document}, {"DateLien", "01/02/2017"}});
    for (auto [cip, numero, type] : {std::tuple{"3000003", "00001", VDXYLCIP::LienDocument},
                                     {"3000003", "00002", VDXYLCIP::LienDocument},
                                     {"3000003", "00003", VDXYLCIP::LienTransparence},
                                     {"3000007", "00004", VDXYLCIP::LienMonographie}})
        b.Ajoute("VDXYLCIP", {{"CodeCIP", cip}, {"NumeroLien", numero}, {"TypeLien", type}});
    for (auto [nom, octets] : {std::pair{"bon-usage.pdf", Pdf}, {"ct.htm", std::string("<p>SMR important</p>")},
                               {"skenan.htm", std::string("<p>Skenan</p>")}})
        b.Ajoute("VDXYLBIN", {{"NomDocument", nom}, {"Document", VersHexa(octets)}});
    b.Ajoute("VDXYALD", {{"Code", "12"}, {"Libelle", "Hypertension artérielle sévère"}});
    b.Ajoute("VDXYALDC", {{"Code", "3000003"}, {"CodeLie", "12"}});
    for (auto [cip, numero] : {std::pair{"6000002", "00001"}, {"7000001", "00003"}, {"7000001", "00002"},
                               {"6000001", "00004"}, {"3000001", "00001"}})
        b.Ajoute("VDXZAPPC", {{"CodeCIP", cip}, {"NumeroTexte", numero}});
    b.Ajoute("VDXZAPTX", {{"NumeroTexte", "00001"}, {"Texte1", "Pansement"}, {"Rtf1", "{\\rtf1 Pansement}"},
                          {"Texte5", "Liste des accessoires"}});
    b.Ajoute("VDXZAPTX", {{"NumeroTexte", "00002"}, {"Texte4", "Chiens"}});
    b.Ajoute("VDXZAPTX", {{"NumeroTexte", "00003"}, {"Texte1", "Non soumis"}, {"Rtf2", "{\\rtf1 sans texte}"}});
    b.Ajoute("VDXZAPTX", {{"NumeroTexte", "00004"}, {"Texte1", "Un dispositif"}, {"Texte2", "Hors AMM"}, {"Texte3", "Perdu"}});
    b.Ajoute("VDXPHIMP", {{"CodeCIP", "3000001"}, {"DateModification", "20170301"}, {"Texte", "Arrêt de commercialisation\r\nsuite"}});
    b.Ajoute("VDXPHIMP", {{"CodeCIP", "3000001"}, {"DateModification", "19980721"}, {"Texte", "Autorisation de mise sur le marché"}});
}

class Annexes : public essai::SurUneBase<Annexes> {
public:
    static void Remplit(BaseDeTest& b) { vdx::Remplit(b); }

    void SetUp() override {
        essai::SurUneBase<Annexes>::SetUp();
        dossier_ = fs::temp_directory_path() / ("vdx-annexes-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                                                "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(dossier_);
        fs::create_directories(dossier_);
    }
    void TearDown() override {
        fs::remove_all(dossier_);
        essai::SurUneBase<Annexes>::TearDown();
    }

    std::string Chemin(const char* nom) const { return (dossier_ / nom).string(); }
    static std::string Lu(const fs::path& fichier) {
        std::ifstream f(fichier, std::ios::binary);
        std::stringstream s;
        s << f.rdbuf();
        return s.str();
    }

    fs::path dossier_;
};

TEST_F(Annexes, TheNoticeAndItsPicturesBesideIt) {
    const std::string notice = Chemin("notice.html");
    ASSERT_EQ(NoticeHtml_Vdx("3000001", notice.c_str()), 1);
    EXPECT_EQ(Lu(notice), "<HTML><BODY><img src=\"logo.png\"><p>Notice</p></BODY></HTML>");
    EXPECT_EQ(Lu(dossier_ / "logo.png"), Png);
    EXPECT_EQ(Lu(dossier_ / "schema.gif"), Gif);
    EXPECT_FALSE(fs::exists(dossier_ / "autre.png"));  // the neighbouring code's

    const std::string vide = Chemin("vide.html");
    ASSERT_EQ(NoticeHtml_Vdx("3000002", vide.c_str()), 1);
    EXPECT_EQ(Lu(vide), "Information provisoirement indisponible.");
    const std::string aucune = Chemin("aucune.html");
    EXPECT_EQ(NoticeHtml_Vdx("3000003", aucune.c_str()), 0);
    EXPECT_FALSE(fs::exists(aucune));

    // A name alone: the notice and its pictures in the working directory.
    const fs::path ici = fs::current_path();
    fs::current_path(dossier_);
    const int32_t seul = NoticeHtml_Vdx("3000001", "seule.html");
    fs::current_path(ici);
    EXPECT_EQ(seul, 1);
    EXPECT_TRUE(fs::exists(dossier_ / "seule.html"));

    // A picture's name out of the directory: nothing written.
    const std::string evade = Chemin("evade.html");
    EXPECT_EQ(NoticeHtml_Vdx("3000004", evade.c_str()), VDX_CODE_MAL_FORME);
    EXPECT_FALSE(fs::exists(evade));
    EXPECT_FALSE(fs::exists(dossier_.parent_path() / "evade.png"));

    EXPECT_EQ(NoticeHtml_Vdx("300000", notice.c_str()), VDX_CODE_MAL_FORME);
    EXPECT_EQ(NoticeHtml_Vdx("30000011", notice.c_str()), VDX_CODE_MAL_FORME);
    EXPECT_EQ(NoticeHtml_Vdx(nullptr, notice.c_str()), VDX_ARGUMENT1);
    EXPECT_EQ(NoticeHtml_Vdx("3000001", nullptr), VDX_ARGUMENT2);
}

#ifndef _WIN32
TEST_F(Annexes, APictureThatCantBeWrittenLeavesTheNoticeStanding) {
    // The picture "full" beside /dev/full is /dev/full, which refuses every
    // byte, as a full disk does.
    session().FichierErreur.clear();
    EXPECT_EQ(NoticeHtml_Vdx("3000010", "/dev/full"), 1);
    EXPECT_EQ(session().FichierErreur, "/dev/full");
}
#endif

TEST_F(Annexes, TheNoticeInThreeStrings) {
    ASSERT_EQ(ProduitNotice_Vdx("3000001", nullptr, 1), 1);
    EXPECT_EQ(Memoire(), "Notice en texte@{\\rtf1 Notice}@DOLIPRANE 500MG CPR");
    ASSERT_EQ(ProduitNotice_Vdx("3000002", nullptr, 1), 1);
    EXPECT_EQ(Memoire(), "Information provisoirement indisponible@@DOLIPRANE 1000MG CPR");
    EXPECT_EQ(ProduitNotice_Vdx("3000001", nullptr, 2), VDX_ARGUMENT3);
    ReconnecteEnTableau();
    VdxTexteNotice t{};
    ASSERT_EQ(ProduitNotice_Vdx("3000003", &t, 1), 1);
    EXPECT_EQ(essai::Texte(t.Texte), "Information provisoirement indisponible");
    EXPECT_EQ(essai::Texte(t.Titre), "DOLIPRANE 500MG CPR.");
    for (BSTR b : {t.Texte, t.Rtf, t.Titre}) SysFreeString(b);
}

TEST_F(Annexes, LinksOneADocumentAndTheDocumentsByteForByte) {
    // A code that sorts just before a linked one has none.
    EXPECT_EQ(ExisteLien_Vdx("3000002"), 0);
    EXPECT_EQ(ExisteLien_Vdx("3000003"), 1);
    EXPECT_EQ(ExisteLien_Vdx("300003"), VDX_CODE_MAL_FORME);
    ASSERT_EQ(ListeLien_Vdx("3000003", nullptr), 2);
    EXPECT_EQ(Memoire(), "00001@Notice de bon usage@bon-usage.pdf@1\r\n00003@Avis de la commission@ct.htm@2");
    EXPECT_EQ(ExisteFicheTransparence_Vdx("3000003"), 1);
    EXPECT_EQ(ExisteFicheTransparence_Vdx("3000007"), 0);
    ASSERT_EQ(FicheTransparence_Vdx("3000003", nullptr), 1);
    EXPECT_EQ(Memoire(), "00003@Avis de la commission@ct.htm@2@Hypertension art\xE9rielle s\xE9v\xE8re");
    EXPECT_EQ(FicheTransparence_Vdx("3000007", nullptr), 0);

    const std::string pdf = Chemin("document.pdf");
    ASSERT_EQ(GenererLien_Vdx("bon-usage.pdf", pdf.c_str()), 1);
    EXPECT_EQ(Lu(pdf), Pdf);
    EXPECT_EQ(GenererLien_Vdx("absent.pdf", pdf.c_str()), VDX_CODE_INCONNU);
    EXPECT_EQ(GenererLien_Vdx("", pdf.c_str()), VDX_ARGUMENT1);
    EXPECT_EQ(GenererLien_Vdx("ct.htm", nullptr), VDX_ARGUMENT2);

    ReconnecteEnTableau();
    EXPECT_EQ(ListeLien_Vdx("3000003", nullptr), VDX_ARGUMENT2);
    SAFEARRAY* liens = essai::TableauDeFiches(4);
    ASSERT_EQ(ListeLien_Vdx("3000003", &liens), 2);
    const auto* l = static_cast<VdxLien*>(liens->pvData);
    EXPECT_EQ(essai::Texte(l[1].NomDocument), "ct.htm");
    EXPECT_EQ(l[1].TypeLien, VDXYLCIP::LienTransparence);
    VideTableau(liens, GabaritDe<LigneLien>());
    SafeArrayDestroy(liens);

    DeConnection2_Vdx();
    EXPECT_EQ(ExisteLien_Vdx("3000003"), VDX_NON_CONNECTE);
    EXPECT_EQ(GenererLien_Vdx("ct.htm", pdf.c_str()), VDX_NON_CONNECTE);
    EXPECT_EQ(NoticeHtml_Vdx("3000001", pdf.c_str()), VDX_NON_CONNECTE);
}

TEST_F(Annexes, TextsOfPharmacyProductsByKind) {
    // The titles of the product's kind, the empty fields left out, the
    // texts in key order, the plain field of each pair.
    ASSERT_EQ(ProduitTextePharm_Vdx("6000002", nullptr), 2);
    EXPECT_EQ(Memoire(), "Propri\xE9t\xE9s d'utilisation@Pansement\r\nSituation@Liste des accessoires");
    ASSERT_EQ(ProduitTextePharm_Vdx("7000001", nullptr), 2);
    EXPECT_EQ(Memoire(), "Esp\xE8" "ces cibles@Chiens\r\nParam\xE8tres l\xE9gaux@Non soumis");
    // The second kind: two titles, a third text beyond them is not given.
    ASSERT_EQ(ProduitTextePharm_Vdx("6000001", nullptr), 2);
    EXPECT_EQ(Memoire(), "Descriptif@Un dispositif\r\nSituation@Hors AMM");
    EXPECT_EQ(ProduitTextePharm_Vdx("3000001", nullptr), 0);  // a code beginning with "3"
    ReconnecteEnTableau();
    SAFEARRAY* textes = essai::TableauDeFiches(2);
    ASSERT_EQ(ProduitTextePharm_Vdx("6000002", &textes), 2);
    EXPECT_EQ(essai::Texte(static_cast<VdxTextePharm*>(textes->pvData)[1].Texte), "Liste des accessoires");
    VideTableau(textes, GabaritDe<TextePharmacie>());
    SafeArrayDestroy(textes);
}

TEST_F(Annexes, HistoryInDateOrderAndItsPage) {
    ASSERT_EQ(Historique_Vdx("3000001", nullptr), 2);
    EXPECT_EQ(Memoire(), "21/07/1998@Autorisation de mise sur le march\xE9\r\n"
                         "01/03/2017@Arr\xEAt de commercialisation\r\nsuite");
    EXPECT_EQ(Historique_Vdx("3000002", nullptr), 0);
    const std::string page = Chemin("historique.html");
    ASSERT_EQ(HistoriqueHtml_Vdx("3000001", page.c_str(), "st\"y&le.css"), 2);
    const std::string html = Lu(page);
    EXPECT_NE(html.find("<TITLE>Historique</TITLE>"), std::string::npos);
    EXPECT_NE(html.find("Modifications importantes pour DOLIPRANE 500MG CPR"), std::string::npos);
    EXPECT_NE(html.find("Arr&ecirc;t de commercialisation<BR>suite"), std::string::npos);
    EXPECT_NE(html.find("href=\"st&quot;y&amp;le.css\""), std::string::npos);
    EXPECT_LT(html.find("21/07/1998"), html.find("01/03/2017"));
    // No change: the page still, with its head and an empty table.
    EXPECT_EQ(HistoriqueHtml_Vdx("3000002", page.c_str(), ""), 0);
    EXPECT_NE(Lu(page).find("Modifications importantes pour DOLIPRANE 1000MG CPR"), std::string::npos);
}

TEST_F(Annexes, TheIdentitySheetAndTheMonographsOwnDocumentOrPharmacyTexts) {
    const std::string page = Chemin("identite.html");
    ASSERT_EQ(InteroperabiliteHtml_Vdx("3000001", page.c_str(), ""), 1);
    const std::string html = Lu(page);
    EXPECT_NE(html.find("class=\"tableau_contour\""), std::string::npos);
    EXPECT_NE(html.find("<tr bgcolor=\"#DADADA\"><td width=\"44%\" class=\"Texte\"><font face=\"Arial\"><b>Libell&eacute;"),
              std::string::npos);
    EXPECT_NE(html.find("<tr><td width=\"44%\" class=\"Texte\"><font face=\"Arial\"><b>Code Identifiant"), std::string::npos);
    EXPECT_NE(html.find("DOLIPRANE 500MG CPR"), std::string::npos);
    const std::string autre = Chemin("inconnu.html");
    EXPECT_EQ(InteroperabiliteHtml_Vdx("3999999", autre.c_str(), ""), VDX_CODE_INCONNU);
    EXPECT_FALSE(fs::exists(autre));

    const std::string monographie = Chemin("skenan.html");
    ASSERT_EQ(MonographieHtml_Vdx("3000007", monographie.c_str(), ""), 1);
    const std::string m = Lu(monographie);
    EXPECT_NE(m.find("<STYLE>.Texte{"), std::string::npos);
    EXPECT_TRUE(m.ends_with("<p>Skenan</p>"));

    // A pharmacy product's texts are chapters of its monograph.
    const std::string vermifuge = Chemin("vermifuge.html");
    ASSERT_EQ(MonographieHtml_Vdx("7000001", vermifuge.c_str(), ""), 1);
    const std::string v = Lu(vermifuge);
    EXPECT_NE(v.find("<a href=\"#Pharmacie1\" class=\"TexteLien\">Esp&egrave;ces cibles</a>"), std::string::npos);
    EXPECT_LT(v.find("Chiens"), v.find("Non soumis"));
}

TEST(NomDeFichier, APictureNameIsAPlainFileName) {
    for (const char* nom : {"logo.png", "a b.gif", "x"}) EXPECT_TRUE(NomDeFichierSimple(nom)) << nom;
    for (const char* nom : {"", "../x.png", "a/b.png", "a\\b.png", "a..b", "a\tb"}) EXPECT_FALSE(NomDeFichierSimple(nom)) << nom;
    EXPECT_EQ(DossierDe("/srv/notice.html"), "/srv/");
    EXPECT_EQ(DossierDe("C:\\notices\\n.html"), "C:\\notices\\");
    EXPECT_EQ(DossierDe("n.html"), "");
}

}  // namespace
}  // namespace vdx
