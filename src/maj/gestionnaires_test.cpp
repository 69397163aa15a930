// The rows of every table through the update: the sample's sources written
// as an update file and applied to a base without them give the tables that
// the builder makes, key by key; then the rules of the rows one by one.
#include "maj/gestionnaires.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "maj/ecriture.h"
#include "maj/marqueurs.h"
#include "platform/notices.h"
#include "session/session.h"
#include "store/fixture.h"
#include "store/magasin.h"
#include "store/sources.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;

using Index = std::vector<std::pair<std::string, std::string>>;

// Every key of every index of a table with its record, the base closed.
std::vector<Index> ClesDe(const fs::path& base, const char* table) {
    magasin::InitialiseMagasin(867, NombreNumeros, 16);
    const Disposition& d = *DispositionNommee(table);
    std::vector<Index> cles;
    for (size_t n = 0; n < d.cles.size(); ++n) cles.push_back(LitIndex(base, d, n));
    magasin::TermineMagasin();
    return cles;
}

// Applies the update files of `dossier` to `base` in a connection of its own.
int32_t Applique(const std::string& base, const std::string& dossier, bool grandTampon = false) {
    DeConnection2_Vdx();
    RemetSession();
    if (Connection_Vdx(base.c_str(), ModeMemoire, 0) != 1) return -9999;
    const int32_t resultat = grandTampon ? ExecuteMaj2_Vdx(dossier.c_str()) : ExecuteMaj_Vdx(dossier.c_str());
    DeConnection2_Vdx();
    RemetSession();
    return resultat;
}

// The tables whose rows an update file carries.
std::set<std::string> TablesPortees() {
    std::set<std::string> tables{"VDXLABP", "VDXVPRO", "VDXIDFOP", "VDXFAMP", "VDXPTEXT", "VDXVEXC"};
    for (const maj::Rangee& r : maj::Rangees)
        if (r.regle != maj::Regle::Aucune) tables.insert(r.table);
    return tables;
}

TEST(AllerRetourMaj, TheSampleWrittenAndAppliedGivesTheBuiltTablesKeyByKey) {
    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
    essai::DossierEssai dossier;
    const std::vector<Source> sources = LitSources(VDX_ECHANTILLON);
    const std::set<std::string> portees = TablesPortees();
    // The base without the rows of the update: its own records of the
    // tables filed from VDXPRO stay, as the update leaves them.
    std::vector<Source> sans = sources;
    for (Source& s : sans) {
        const std::string nom = s.disposition->table->nom;
        if (portees.count(nom) && nom != "VDXVPRO" && nom != "VDXLABP") s.fiches.clear();
    }
    magasin::InitialiseMagasin(867, NombreNumeros, 16);
    ConstruitBase(sources, dossier.Chemin("attendue"));
    ConstruitBase(sans, dossier.Chemin("obtenue"));
    fs::create_directories(dossier.Chemin("maj"));
    for (const char* date : {"30/12/2099", "31/12/2099"}) {
        std::ofstream fichier(dossier.Chemin((std::string("maj/RE99123") + date[1] + ".VDX").c_str()), std::ios::binary);
        maj::EcritMaj(sources, fichier, date);
    }
    // Each file once: the second applies the same rows over the first's.
    ASSERT_EQ(Applique(dossier.Chemin("obtenue"), dossier.Chemin("maj")), 1);
    EXPECT_TRUE(notices.boites.empty());
    for (const std::string& table : portees) {
        const std::vector<Index> attendues = ClesDe(dossier.Chemin("attendue"), table.c_str());
        const std::vector<Index> obtenues = ClesDe(dossier.Chemin("obtenue"), table.c_str());
        ASSERT_EQ(attendues.size(), obtenues.size()) << table;
        for (size_t n = 0; n < attendues.size(); ++n) {
            EXPECT_EQ(attendues[n].size(), obtenues[n].size()) << table << " key " << n;
            EXPECT_TRUE(attendues[n] == obtenues[n]) << table << " key " << n;
        }
        // The sample holds no hierarchy of interaction classes.
        if (table != "VDXVPRO" && table != "VDXLABP" && table != "VDXZICLP") {
            EXPECT_FALSE(attendues.at(0).empty()) << table << ": the sample has no rows of it";
        }
    }
    // Every answer reads those tables: one shows that a connection sees them.
    ASSERT_EQ(Connection_Vdx(dossier.Chemin("obtenue").c_str(), ModeMemoire, 0), 1);
    EXPECT_EQ(LibelleProduit_Vdx("2192156", nullptr), 1);
    EXPECT_EQ(session().ChaineMemoire.value_or(""), "PRAVASTATINE EVOLUGE 20MG CPR B/28");
    DeConnection2_Vdx();
    RemetSession();
}

// A small base dated 01/06/2026, rows applied to it by update files.
class LignesMaj : public ::testing::Test {
protected:
    void SetUp() override {
        essai::AjouteIdentite(base_);
        DeConnection2_Vdx();
        RemetSession();
    }
    void TearDown() override {
        DeConnection2_Vdx();
        RemetSession();
    }
    // One update file of these rows, each day a new one.
    int32_t Maj(const std::string& lignes, bool grandTampon = false) {
        char nom[16], date[16];
        std::snprintf(nom, sizeof nom, "RE2606%02d.VDX", ++jour_);
        std::snprintf(date, sizeof date, "%02d/06/2026", jour_);
        std::ofstream(dossier_.Chemin(nom), std::ios::binary) << "|DEBUT|" << date << "@x@\r\n" << lignes << "|FIN|\r\n";
        return Applique(base_.Repertoire(), dossier_.Chemin(""), grandTampon);
    }
    // The keys of a table's key number, as texts up to their first NUL.
    std::vector<std::string> Cles(const char* table, size_t numero = 0) {
        std::vector<std::string> cles;
        const std::vector<Index> index = ClesDe(base_.Repertoire(), table);
        for (const auto& [cle, fiche] : index.at(numero))
            cles.push_back(cle.substr(0, cle.find_last_not_of('\0') + 1));
        return cles;
    }
    std::vector<std::string> Fiches(const char* table) {
        std::vector<std::string> fiches;
        const std::vector<Index> index = ClesDe(base_.Repertoire(), table);
        for (const auto& [cle, fiche] : index.at(0)) fiches.push_back(fiche);
        return fiches;
    }
    std::string Libelle(const char* code) {
        EXPECT_EQ(Connection_Vdx(base_.Repertoire().c_str(), ModeMemoire, 0), 1);
        const std::string libelle = LibelleProduit_Vdx(code, nullptr) == 1 ? session().ChaineMemoire.value_or("") : "";
        DeConnection2_Vdx();
        RemetSession();
        return libelle;
    }
    // A row of `marqueur`: its fields, each followed by "@".
    static std::string Rangee(const char* marqueur, const std::vector<std::string>& champs) {
        std::string ligne = marqueur;
        for (const std::string& c : champs) ligne += c + "@";
        return ligne + "\r\n";
    }
    static std::string Produit(const std::string& code, const std::string& libelle, const std::string& labo,
                               const char* rubrique = "10", const char* mouvement = "") {
        std::vector<std::string> champs(29);
        champs[0] = code, champs[1] = libelle, champs[5] = "0000100", champs[7] = rubrique;
        champs[24] = labo, champs[28] = mouvement;
        return Rangee("|PRO|", champs);
    }

    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
    essai::BaseDeTest base_;
    essai::DossierEssai dossier_;
    int jour_ = 1;
};

TEST_F(LignesMaj, TheKeyRuleComparesWholeKeys) {
    base_.Ajoute("VDXCLA", {{"CodeClasse", "A01"}, {"Libelle", "Classe A01"}, {"LibelleCle", "CLASSE A01"}});
    ASSERT_EQ(Maj("|CLA|A@Classe A@CLASSE A@@\r\n|PIND|7@Sept@@\r\n|PIND|7@Sept encore@@\r\n"), 1);
    EXPECT_EQ(Cles("VDXCLA"), (std::vector<std::string>{"A", "A01"}));
    EXPECT_EQ(Cles("VDXCLA", 1), (std::vector<std::string>{"CLASSE A", "CLASSE A01"}));
    const std::vector<std::string> indications = Fiches("VDXPIND");
    ASSERT_EQ(indications.size(), 1u);
    EXPECT_EQ(Fiche(indications[0]).Entier(VDXPIND::Code), 7);
    EXPECT_EQ(Fiche(indications[0]).Texte(VDXPIND::Libelle), "Sept encore");
}

TEST_F(LignesMaj, TheParentRuleRebuildsEachParentsRows) {
    base_.Ajoute("VDXCLAP", {{"CodeClasse", "X"}, {"CodeCIP", "3000001"}})
        .Ajoute("VDXCLAP", {{"CodeClasse", "Y"}, {"CodeCIP", "3000001"}})
        .Ajoute("VDXCLAP", {{"CodeClasse", "X"}, {"CodeCIP", "3000009"}});
    // 3000001 gets Z alone; 3000009, absent from the file, keeps its row.
    ASSERT_EQ(Maj("|CLAP|Z@3000001@@\r\n"), 1);
    EXPECT_EQ(Cles("VDXCLAP", 1), (std::vector<std::string>{"3000001Z      ", "3000009X      "}));
    EXPECT_EQ(Cles("VDXCLAP"), (std::vector<std::string>{"X      3000009", "Z      3000001"}));
    // Rows of a parent split by another's: the second group deletes the first.
    ASSERT_EQ(Maj("|CLAP|A@3000001@@\r\n|CLAP|B@3000001@@\r\n|CLAP|C@3000002@@\r\n|CLAP|D@3000001@@\r\n"), 1);
    EXPECT_EQ(Cles("VDXCLAP", 1), (std::vector<std::string>{"3000001D      ", "3000002C      ", "3000009X      "}));
    // A failed file leaves nothing; the next run starts with no parent and
    // rebuilds the product's rows.
    EXPECT_EQ(Maj("|CLAP|E@3000001@@\r\n|CLAP|F@3000001@@\r\n|CLAP|G@@@\r\n"), 0);
    EXPECT_EQ(notices.boites.size(), 1u);  // the empty parent
    EXPECT_EQ(Cles("VDXCLAP", 1), (std::vector<std::string>{"3000001D      ", "3000002C      ", "3000009X      "}));
    fs::remove(dossier_.Chemin("RE260604.VDX"));
    ASSERT_EQ(Maj("|CLAP|E@3000001@@\r\n|CLAP|F@3000001@@\r\n"), 1);
    EXPECT_EQ(Cles("VDXCLAP", 1),
              (std::vector<std::string>{"3000001E      ", "3000001F      ", "3000002C      ", "3000009X      "}));
}

TEST_F(LignesMaj, ProductsKeepTheirLabelsUniqueAndTheirIndexesWithThem) {
    base_.Ajoute("VDXLAB", {{"CodeLaboratoire", "LAB1"}, {"Libelle", "Un"}});
    ASSERT_EQ(Maj(Produit("3000001", "DOLIPRANE 1000", "LAB1") + Produit("3000002", "DOLIPRANE 1000", "LAB1") +
                  Produit("3000003", std::string(34, 'Z'), "LAB1") + Produit("3000004", std::string(34, 'Z'), "LAB1") +
                  Produit("3000005", "ABSENT", "LAB1", "10", "M")),
              1);
    EXPECT_EQ(Libelle("3000001"), "DOLIPRANE 1000");
    EXPECT_EQ(Libelle("3000002"), "DOLIPRANE 1000.");
    EXPECT_EQ(Libelle("3000004"), std::string(33, 'Z') + "[");
    EXPECT_EQ(Cles("VDXPRO"), (std::vector<std::string>{"3000001", "3000002", "3000003", "3000004"}));
    // The same row again leaves its label as it was.
    ASSERT_EQ(Maj(Produit("3000002", "DOLIPRANE 1000", "LAB1")), 1);
    EXPECT_EQ(Libelle("3000002"), "DOLIPRANE 1000.");
    // A new label and laboratory move the label key, both category records
    // and the laboratory's record.
    ASSERT_EQ(Maj(Produit("3000002", "EFFERALGAN", "LAB2", "40")), 1);
    const std::vector<std::string> libelles = Cles("VDXPRO", 1);
    ASSERT_EQ(libelles.size(), 4u);
    EXPECT_TRUE(libelles[0].starts_with("DOLIPRANE") && libelles[1].starts_with("EFFERALGAN")) << libelles[1];
    EXPECT_EQ(Cles("VDXLABP"), (std::vector<std::string>{"LAB13000001", "LAB13000003", "LAB13000004", "LAB23000002"}));
    const std::vector<std::string> categories = Cles("VDXVPRO");
    EXPECT_EQ(std::ranges::count_if(categories, [](const std::string& c) { return c.starts_with("VEFFERALGAN"); }), 1);
    EXPECT_EQ(std::ranges::count_if(categories, [](const std::string& c) { return c.starts_with("ZEFFERALGAN"); }), 1);
    EXPECT_EQ(std::ranges::count_if(categories, [](const std::string& c) { return c.find("DOLIPRANE") != std::string::npos; }), 2);
    EXPECT_EQ(categories.size(), 8u);
}

TEST_F(LignesMaj, ChapterTextsIdentificationAndTheRowsOfTwoTables) {
    base_.Ajoute("VDXVAMPT", {{"CodeCIP", "3000001"}, {"Texte1", "ancien"}});
    // A link filed under another form than its product's: found by its code.
    base_.Ajoute("VDXIDPRO", {{"CodeCIP", "3000005"}, {"CodeForme", "CPR "}})
        .Ajoute("VDXIDFOP", {{"CodeForme", "SOL "}, {"CodeCIP", "3000005"}});
    std::vector<std::string> textes(16), vides(16), identification(34);
    textes[0] = "3000002", textes[1] = "un##deux", vides[0] = "3000001";
    identification[0] = "3000002", identification[3] = "CPR", identification[5] = "2,5";
    std::string lignes = Rangee("|VAMPT|", textes) + Rangee("|VAMPT|", vides) + Rangee("|IDPRO|", identification);
    identification[3] = "GEL";
    lignes += Rangee("|IDPRO|", identification);
    identification[0] = "3000005";
    lignes += Rangee("|IDPRO|", identification);
    lignes += Rangee("|VCOMC|", {"12", "Paracetamol", "1", "", "", "", "", "", ""});
    lignes += Rangee("|VCOMC|", {"13", "", "", "Lactose", "Lactose EEN", "", "", "", ""});
    ASSERT_EQ(Maj(lignes), 1);
    const std::vector<std::string> chapitres = Fiches("VDXVAMPT");
    ASSERT_EQ(chapitres.size(), 1u);  // all texts empty: the record goes, none added
    EXPECT_EQ(Fiche(chapitres[0]).Section(1), "un\r\ndeux");
    EXPECT_EQ(Cles("VDXIDFOP"), (std::vector<std::string>{"GEL 3000002", "GEL 3000005"}));
    const std::vector<std::string> produits = Fiches("VDXIDPRO");
    ASSERT_EQ(produits.size(), 2u);
    EXPECT_EQ(Fiche(produits[0]).Texte(VDXIDPRO::CodeForme), "GEL ");
    EXPECT_FLOAT_EQ(Fiche(produits[0]).Reel(VDXIDPRO::QuantitePresentation), 2.5f);
    ASSERT_EQ(Cles("VDXVPA", 1).size(), 1u);
    EXPECT_TRUE(Cles("VDXVPA", 1)[0].starts_with("PARACETAMOL"));
    EXPECT_EQ(Cles("VDXVEXC", 2).size(), 1u);
    EXPECT_EQ(Fiches("VDXVEXC").size(), 1u);
    // A text of 100,000 bytes passes with the larger buffer.
    const std::string long_(100000, 'x');
    std::vector<std::string> chapitre(30);
    chapitre[0] = "3000003", chapitre[1] = long_;
    EXPECT_EQ(Maj(Rangee("|VAMST|", chapitre), true), 1);
    ASSERT_EQ(Fiches("VDXVAMST").size(), 1u);
    EXPECT_EQ(Fiche(Fiches("VDXVAMST")[0]).Section(1), long_);
}

TEST_F(LignesMaj, BadRowsFailTheirFileAndLeaveTheBase) {
    base_.Ajoute("VDXCLAP", {{"CodeClasse", "X"}, {"CodeCIP", "3000001"}});
    // A row shorter than its list does not eat the next row's marker.
    EXPECT_EQ(Maj("|PPTER|5@E@\r\n|PIND|7@Sept@@\r\n"), 0);
    EXPECT_TRUE(Fiches("VDXPIND").empty());
    // An empty parent: the row fails, nothing deleted.
    EXPECT_EQ(Maj("|CLAP|Y@@@\r\n"), 0);
    EXPECT_EQ(Cles("VDXCLAP").size(), 1u);
    EXPECT_EQ(notices.boites.size(), 2u);
    // Numbers that read what they can, a text cut to its width.
    for (const char* nom : {"RE260602.VDX", "RE260603.VDX"}) fs::remove(dossier_.Chemin(nom));
    ASSERT_EQ(Maj("|PMON|abc@" + std::string(80, 'L') + "@1,2,3@@\r\n"), 1);
    const std::vector<std::string> moments = Fiches("VDXPMOM");
    ASSERT_EQ(moments.size(), 1u);
    EXPECT_EQ(Fiche(moments[0]).Entier(VDXPMOM::Code), 0);
    EXPECT_EQ(Fiche(moments[0]).Texte(VDXPMOM::Libelle), std::string(51, 'L'));
    EXPECT_FLOAT_EQ(Fiche(moments[0]).Reel(VDXPMOM::Multiplicateur), maj::LireReel("1,2,3"));
}

// A record of the raw product file: code, label, the rest zeros.
std::string FicheBrute(const char* code, const std::string& libelle) {
    FicheEcrite f(VDXPRO::Longueur);
    EXPECT_TRUE(f.Texte(VDXPRO::CodeCIP, code) && f.Texte(VDXPRO::Libelle, libelle));
    return f.Octets();
}

TEST(ReconstructionProduits, RawRecordsBecomeTheTableWithItsKeys) {
    NoticesMemorisees notices;
    NoticesEnPlace enPlace{notices};
    essai::DossierEssai dossier;
    // A header of no known size, with digits but never seven in a row; a
    // block of other bytes; two products of one label; the last record cut.
    std::string brut = "EN-TETE 2026 v123456 ";
    brut += FicheBrute("3000001", "DOLIPRANE 1000");
    brut += std::string(VDXPRO::Longueur, 'x');
    brut += FicheBrute("3000002", "DOLIPRANE 1000");
    brut += FicheBrute("3000003", "ETC.");
    brut += FicheBrute("3000004", "COUPE").substr(0, 100);
    std::ofstream(dossier.Chemin("VDXPRO.DAT"), std::ios::binary) << brut;
    ASSERT_EQ(RebuildVDXPRO_Vdx(dossier.Chemin("").c_str()), 1);
    EXPECT_TRUE(notices.boites.empty());
    EXPECT_FALSE(fs::exists(dossier.Chemin("VDXPROtmp.dat")));
    const std::vector<Index> cles = ClesDe(dossier.Chemin(""), "VDXPRO");
    ASSERT_EQ(cles[0].size(), 3u);
    EXPECT_EQ(cles[0][0].first, "3000001");
    EXPECT_EQ(Fiche(cles[0][1].second).Texte(VDXPRO::Libelle), "DOLIPRANE 1000.");
    std::vector<std::string> libelles;
    for (const auto& [cle, fiche] : cles[1]) libelles.push_back(cle.substr(0, cle.find('\0')));
    EXPECT_EQ(libelles, (std::vector<std::string>{"DOLIPRANE 1000", "DOLIPRANE 1000.", "ETC."}));
    // The steps of the creation, heard by the progress callback.
    ASSERT_FALSE(notices.etapes.empty());
    EXPECT_EQ(notices.etapes.front().libelle, "CreateDataFile : 0");
    // No raw file: its message box, and 0; no directory: -10.
    fs::remove(dossier.Chemin("VDXPRO.DAT"));
    EXPECT_EQ(RebuildVDXPRO_Vdx(dossier.Chemin("").c_str()), 0);
    ASSERT_EQ(notices.boites.size(), 1u);
    EXPECT_EQ(notices.boites[0].texte, "Une erreur est survenue lors de l'ouverture du fichier PRO.");
    EXPECT_EQ(RebuildVDXPRO_Vdx(""), -10);
}

}  // namespace
}  // namespace vdx
