// The import of the public medicine data into base sources, on the small
// extracts of tests/extrait_import.h: what each table receives, the awkward
// rows, bad input, determinism, the filter, and a build of the result.
#include <stdlib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "store/fiche.h"
#include "store/layouts.h"
#include "store/layouts/produits.h"
#include "store/magasin.h"
#include "session/session.h"
#include "store/sources.h"
#include "tests/support/extrait_import.h"
#include "tools/vdx/import.h"
#include "tools/vdx/import_codes.h"
#include "tools/vdx/import_libelle.h"
#include "tools/vdx/import_lecture.h"
#include "tools/vdx/import_noms.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import::essai {
namespace {

// --- Reading ---------------------------------------------------------------------

TEST(ImportLecture, RaggedLinesAreToldAndLeftOutExtraColumnsIgnored) {
    Dossier d;
    Ecrit(d.chemin() / "t.txt", "a\tb\tc\r\nd\te\r\n\r\nf\tg\th\ti\tj\nk\tl");
    Journal journal;
    const auto lignes = LitTableau(d.chemin() / "t.txt", 3, "", journal);
    ASSERT_EQ(lignes.size(), 2u);
    EXPECT_EQ(lignes[0].champs, (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(lignes[1].champs, (std::vector<std::string>{"f", "g", "h"}));
    EXPECT_EQ(lignes[1].numero, 4u);
    EXPECT_EQ(journal.Rejets(), 2u);
    ASSERT_EQ(journal.Resume().size(), 2u);
    EXPECT_EQ(journal.Resume()[0], "t.txt: 1 line, 2 columns where 3 are expected (first line 2)");
    EXPECT_EQ(journal.Resume()[1], "t.txt: 1 line, last line without its line end, cut short (first line 5)");
}

// A NUL byte no text of a base can hold: its line is told and left out,
// never handed on to fail the writing of the sources.
TEST(ImportLecture, ALineWithANulByteIsLeftOut) {
    Dossier d;
    Ecrit(d.chemin() / "t.txt", std::string("a\tb\n", 4) + std::string("c\0d\te\n", 6));
    Journal journal;
    const auto lignes = LitTableau(d.chemin() / "t.txt", 2, "", journal);
    ASSERT_EQ(lignes.size(), 1u);
    ASSERT_EQ(journal.Resume().size(), 1u);
    EXPECT_EQ(journal.Resume()[0], "t.txt: 1 line, a NUL byte in the line (first line 2)");
}

TEST(ImportLecture, OptionalColumnsAreEmptyWhenLeftOut) {
    Dossier d;
    Ecrit(d.chemin() / "t.txt", "tete\nx\ty\n");
    Journal journal;
    const auto lignes = LitTableau(d.chemin() / "t.txt", 2, "tete", journal, 2);
    ASSERT_EQ(lignes.size(), 1u);
    EXPECT_EQ(lignes[0].champs, (std::vector<std::string>{"x", "y", "", ""}));
}

// A thesaurus that would silently give no interaction is refused: an empty
// file, a file without its header line (its first couple would be taken
// for one), a file whose writer stopped in the middle of a line.
TEST(ImportLecture, ABrokenThesaurusIsRefusedNamingTheFileAndTheLine) {
    const auto message = [](Extrait& e) {
        try {
            e.Importe();
        } catch (const ErreurImport& x) {
            return std::string(x.what());
        }
        return std::string("no failure");
    };
    Extrait vide;
    vide.Pose("interactions-2016-08/couples.tsv", "");
    EXPECT_EQ(message(vide), "couples.tsv: no line of data");
    Extrait sansEntete;
    const std::string couples = CouplesThesaurus;
    sansEntete.Pose("interactions-2016-08/couples.tsv", couples.substr(couples.find('\n') + 1));
    EXPECT_EQ(message(sansEntete), "couples.tsv: line 1 is not the header line (\"protagoniste1...\")");
    Extrait coupe;
    coupe.Pose("interactions-2016-08/couples.tsv", couples.substr(0, couples.rfind("Risque de choc")));
    EXPECT_NE(message(coupe).find("couples.tsv: 1 line, last line without its line end, cut short (first line 4)"),
              std::string::npos)
        << message(coupe);
    EXPECT_FALSE(fs::exists(coupe.chemin() / "sources"));
}

TEST(ImportLecture, HtmlIsReadAsPlainText) {
    EXPECT_EQ(TexteSansBalises("Pris en charge :<br><br>- Hypertension&nbsp;art&amp;co <b>x</b>&lt;1&gt; &eacute;"),
              "Pris en charge : - Hypertension art&co x <1> &eacute;");
    EXPECT_EQ(TexteSansBalises("<p>coupé <i"), "coupé");
}

TEST(ImportLecture, Utf8AndCodePage1252GiveTheSameText) {
    EXPECT_EQ(VersCp1252("PARAC\xC3\x89TAMOL"), "PARAC\xC9TAMOL");
    EXPECT_EQ(VersCp1252("PARAC\xC9TAMOL"), "PARAC\xC9TAMOL");
    EXPECT_EQ(VersCp1252("\xE2\x80\x99"), "\x92");  // a right quote
    EXPECT_EQ(VersCp1252("\xE4\xB8\xAD"), "?");      // no place in code page 1252
}

TEST(ImportLecture, AMissingFileIsNamed) {
    Extrait e;
    fs::remove(e.chemin() / "bdpm/CIS_CPD_bdpm.txt");
    try {
        e.Importe();
        FAIL() << "no error";
    } catch (const ErreurImport& x) {
        EXPECT_NE(std::string(x.what()).find("CIS_CPD_bdpm.txt"), std::string::npos) << x.what();
    }
    EXPECT_FALSE(fs::exists(e.chemin() / "sources"));
}

TEST(ImportLecture, BadLinesOfTheExtractAreCountedWithTheirReason) {
    Extrait e;
    e.Ajoute("bdpm/CIS_CIP_bdpm.txt", "60000001\t1111113\n");                       // ragged
    e.Ajoute("bdpm/CIS_CIP_bdpm.txt", "69999999\t7777777\tx\ty\tz\t01/01/2010\t\t\t\t\t\t\t\n");  // unknown CIS
    e.Ajoute("bdpm/CIS_COMPO_bdpm.txt", "60000001\tcomprimé\t2202\tPARAC");        // cut short
    // Lines left out fail the import, and nothing is written...
    EXPECT_THROW(e.Importe(), ErreurImport);
    EXPECT_FALSE(fs::exists(e.chemin() / "sources"));
    // ...unless it is to go on all the same.
    const RapportImport r = e.ImporteMalgreRejets();
    EXPECT_EQ(r.lignesRejetees, 3u);
    const std::string tout = [&] {
        std::string t;
        for (const auto& s : r.rejets) t += s + "\n";
        return t;
    }();
    EXPECT_NE(tout.find("CIS_CIP_bdpm.txt: 1 line, 2 columns where 12 are expected (first line 6)"), std::string::npos) << tout;
    EXPECT_NE(tout.find("CIS_CIP_bdpm.txt: 1 line, presentation of a CIS that CIS_bdpm.txt lacks (first line 7)"),
              std::string::npos) << tout;
    EXPECT_NE(tout.find("CIS_COMPO_bdpm.txt: 1 line, last line without its line end, cut short (first line 6)"),
              std::string::npos) << tout;
    EXPECT_EQ(e.Table("VDXPRO").size(), 5u);
}

// --- Labels and names --------------------------------------------------------------

TEST(ImportLibelle, ALabelIsNameDosageFormAndBoxWithinItsRoom) {
    EXPECT_EQ(LibelleProduit("DOLIPRANE 1000 mg, comprimé", Cp1252("comprimé"), Cp1252("plaquette(s) PVC de 8 comprimé(s)")),
              "DOLIPRANE 1000MG CPR B/8");
    EXPECT_EQ(LibelleProduit(Cp1252("RANITIDINE ÉLÉ 150 mg, comprimé effervescent"), Cp1252("comprimé effervescent(e)"),
                             "tube(s) de 20 comprimé(s)"),
              "RANITIDINE ELE 150MG CPR EFF B/20");
    EXPECT_EQ(Boite("20 ampoule(s) en verre de 10 ml"), "20X10ML");
    EXPECT_EQ(Boite("1 flacon(s) de 100 ml"), "100ML");
    EXPECT_EQ(Boite("28 plaquette(s) de 1 comprimé(s)"), "B/28");
    EXPECT_EQ(Boite("1 dispositif"), "B/1");
    EXPECT_EQ(Boite("flacon(s) en verre"), "");
    // Too long: the form loses its later words, the name is cut before its dosage.
    const std::string l = LibelleProduit("AMOXICILLINE ACIDE CLAVULANIQUE LABORATOIRE 500 mg/62,5 mg, poudre",
                                         "poudre pour suspension buvable", "1 flacon(s) de 60 ml");
    EXPECT_LE(l.size(), LongueurLibelle);
    EXPECT_NE(l.find("500MG/62,5MG PDR 60ML"), std::string::npos) << l;
    EXPECT_EQ(l.substr(0, 12), "AMOXICILLINE");
    // Words between brackets go before anything is cut; a label with room keeps them.
    EXPECT_EQ(LibelleProduit("MORPHINE (CHLORHYDRATE DE) LAVOISIER 10 mg/ml, solution injectable",
                             "solution injectable", "10 ampoule(s) de 1 ml"),
              "MORPHINE LAVOIS 10MG/ML SOL 10X1ML");
    EXPECT_EQ(LibelleProduit("FER (SULFATE DE) 80 mg, comprimé", Cp1252("comprimé"), "30 comprimé(s)"),
              "FER (SULFATE DE) 80MG CPR B/30");
}

TEST(ImportLibelle, FormsThatReplaceOneAnotherShareTheirFamily) {
    EXPECT_EQ(FamilleForme(Cp1252("comprimé pelliculé")), FamilleForme(Cp1252("comprimé sécable")));
    EXPECT_NE(FamilleForme(Cp1252("comprimé")), FamilleForme(Cp1252("comprimé à libération prolongée")));
    EXPECT_NE(FamilleForme(Cp1252("gélule")), FamilleForme(Cp1252("gélule gastro-résistant(e)")));
    for (const char* f : {"comprimé", "gélule", "solution injectable", "sirop", "crème", "collyre", "autre chose"})
        EXPECT_EQ(std::string("ABJD").find(FamilleForme(Cp1252(f))[0]), std::string::npos) << f;
}

// The package of a label in UTF-8: "2 plaquette/plaquettes de 20 comprimé/comprimés".
std::string Paquet(const std::string& libelle) {
    const auto c = LitConditionnement(Cp1252(libelle));
    if (!c) return "-";
    std::ostringstream s;
    s << c->contenants << " " << c->contenant.singulier << "/" << c->contenant.pluriel << " de " << c->quantite << " "
      << c->unite.singulier << "/" << c->unite.pluriel << (c->mesure ? " (mesure)" : "");
    return codepage::VersUtf8(s.str());
}

TEST(ImportLibelle, APackageIsReadFromLabelsOfEveryShape) {
    const std::pair<const char*, const char*> cas[] = {
        {"plaquette(s) thermoformée(s) PVC-Aluminium de 24  comprimé(s)", "1 plaquette/plaquettes de 24 comprimé/comprimés"},
        {"2 plaquette(s) thermoformée(s) PVC PVDC aluminium de 20 comprimé(s)", "2 plaquette/plaquettes de 20 comprimé/comprimés"},
        {"30 récipient(s) unidose(s) polyéthylène basse densité (PEBD) de 0,3 ml",
         "30 récipient unidose/récipients unidoses de 0.3 ml/ml (mesure)"},
        {"flacon(s) PEHD avec fermeture de sécurité enfant de 30 comprimé(s)", "1 flacon/flacons de 30 comprimé/comprimés"},
        {"2 stylos préremplis de 0,4 ml avec 2 tampon(s)", "2 stylo prérempli/stylos préremplis de 0.4 ml/ml (mesure)"},
        {"1 bouteille acier de 15 l- robinet laiton", "1 bouteille/bouteilles de 15 l/l (mesure)"},
        {"1 flacon(s) en verre de 500 unité(s)", "1 flacon/flacons de 500 U/U (mesure)"},
        // A kit is its first item; a count alone makes each container a unit.
        {"1 flacon(s) en verre - 1 ampoule(s) en verre de 5 ml", "1 flacon/flacons de 1 flacon/flacons"},
        {"flacon(s) en verre", "-"},
        {"plaquette(s) thermoformée(s) PVC PVDC aluminium de 30", "-"},
        {"1 flacon(s) en verre de 370 MBq/ml", "-"},
        {"1 à 4 flacon(s) en verre", "-"},
    };
    for (const auto& [libelle, paquet] : cas) EXPECT_EQ(Paquet(libelle), paquet) << libelle;
    // The box of the product label is read from the same package.
    EXPECT_EQ(Boite(Cp1252("2 plaquette(s) thermoformée(s) PVC PVDC aluminium de 20 comprimé(s)")), "B/40");
    EXPECT_EQ(Boite(Cp1252("30 récipient(s) unidose(s) polyéthylène de 0,3 ml")), "30X0,3ML");
    EXPECT_EQ(Boite("1 flacon(s) en verre - 1 ampoule(s) en verre de 5 ml"), "B/1");
}

TEST(ImportNoms, SaltsAndBasesMeetAndOtherNamesDont) {
    EXPECT_EQ(NomSansSel("CHLORHYDRATE DE RANITIDINE"), "RANITIDINE");
    EXPECT_EQ(NomSansSel("RANITIDINE (CHLORHYDRATE DE)"), "RANITIDINE");
    EXPECT_EQ(NomSansSel("WARFARINE SODIQUE"), "WARFARINE");
    EXPECT_EQ(NomSansSel("CHLORHYDRATE D'AMIODARONE"), "AMIODARONE");
    EXPECT_EQ(NomSansSel("CHLORURE DE SODIUM"), "SODIUM");
    IndexNoms index;
    index.Ajoute(1, Cp1252("RANITIDINE (CHLORHYDRATE DE)"));
    index.Ajoute(2, "RANITIDINE BASE");
    index.Ajoute(3, Cp1252("HOMATROPINE (BROMHYDRATE D')"));
    index.Ajoute(4, "SODIUM (OXYBATE DE)");
    index.Ajoute(5, "CHLORHYDRATE DE BUPROPIONE");
    index.Ajoute(6, "INSULINE GLULISINE");
    index.Ajoute(7, "ETODOLIQUE ACIDE");
    EXPECT_EQ(index.Cherche("RANITIDINE"), (std::set<int>{1, 2}));
    EXPECT_EQ(index.Cherche("OXYBATE DE SODIUM"), (std::set<int>{4}));
    EXPECT_EQ(index.Cherche("BUPROPION"), (std::set<int>{5}));
    EXPECT_EQ(index.Cherche("INSULINE"), (std::set<int>{6}));
    EXPECT_EQ(index.Cherche("ACIDE ETODOLIQUE"), (std::set<int>{7}));
    EXPECT_EQ(index.Cherche("THEOPHYLLINE (ET, PAR EXTRAPOLATION, AMINOPHYLLINE)"), std::set<int>{});
    EXPECT_TRUE(index.Cherche("ATROPINE").empty());
    EXPECT_TRUE(index.Cherche("SODIUM").empty());
}

// Spellings of the March 2017 extract, each under the code it is published
// with, and the thesaurus names that must (or must not) reach them.
TEST(ImportNoms, RealSpellingsReachTheNameTheThesaurusGives) {
    const std::map<int, const char*> publies = {
        {5562, "SODIUM (VALPROATE DE)"},          {5563, "VALPROATE DE SODIUM"},
        {5564, "VALPROATE SODIQUE"},              {25252, "VALPROÏQUE (ACIDE)"},
        {3271, "NAPROXÈNE"},                      {12855, "NAPROXÈNE SODIQUE"},
        {25037, "IOPAMIDOL"},                     {101, "CARBONATE DE CALCIUM"},
        {102, "CALCIUM (CHLORURE DE) DIHYDRATÉ"}, {103, "CALCIUM ÉLÉMENT"},
        {104, "FOLINATE DE CALCIUM"},             {105, "ATORVASTATINE CALCIQUE TRIHYDRATÉE"},
        {106, "CHLORURE DE POTASSIUM"},           {107, "PHOSPHATE DIPOTASSIQUE"},
        {108, "LOSARTAN POTASSIQUE"},             {109, "SULFATE FERREUX HEPTAHYDRATÉ"},
        {110, "FERREUX (SULFATE) DESSÉCHÉ"},      {111, "COMPLEXE D'HYDROXYDE FERRIQUE - SACCHAROSE"},
        {112, "CARBONATE DE LITHIUM"},            {113, "MILLEPERTUIS (SOMMITÉ FLEURIE) (EXTRAIT SEC DE)"},
        {114, "EXTRAIT SEC DE MILLEPERTUIS"},     {115, "HYPERICUM PERFORATUM POUR PRÉPARATIONS HOMÉOPATHIQUES"},
        {116, "BOURDAINE (ÉCORCE DE)"},           {117, "ALISKIRÈNE (HÉMIFUMARATE D')"},
        {118, "PALMITATE DE PALIPÉRIDONE"},       {119, "MALÉATE ACIDE DE LISURIDE"},
        {120, "HYDROXYDE D'ALUMINIUM"},           {121, "INTERFÉRON ALFA-2A"},
        {122, "COLISTIMÉTHATE SODIQUE"},          {123, "RANÉLATE DE STRONTIUM NONAHYDRATÉ"},
        {124, "CLODRONATE DE SODIUM ANHYDRE"},    {125, "VIRUS DE LA FIÈVRE JAUNE, SOUCHE 17D-204 (VIVANT, ATTÉNUÉ)"},
        {126, "CALCIUM (GLUBIONATE DE)"},
    };
    IndexNoms index;
    for (const auto& [code, nom] : publies) index.Ajoute(code, Cp1252(nom));
    const std::pair<const char*, std::set<int>> attendus[] = {
        {"ACIDE VALPROIQUE", {5562, 5563, 5564, 25252}},
        {"VALPROIQUE (ACIDE)", {5562, 5563, 5564, 25252}},
        {"SODIUM (VALPROATE DE)", {5562, 5563, 5564}},
        {"NAPROXENE", {3271, 12855}},
        {"IOPAMIDOL", {25037}},
        // A mineral salt reaches its element; a drug's salt doesn't.
        {"CALCIUM", {101, 102, 103, 126}},
        {"POTASSIUM", {106, 107}},
        {"LOSARTAN", {108}},
        {"FER", {109, 110, 111}},
        {"SELS DE FER", {109, 110, 111}},
        {"LITHIUM", {112}},
        {"STRONTIUM", {123}},
        {"ACIDE FOLINIQUE", {104}},
        {"ATORVASTATINE", {105}},
        // A name the thesaurus gives a salt stands for that salt alone.
        {"POTASSIUM (CITRATE DE)", {}},
        {"SODIUM (CHLORURE DE)", {}},
        // Plants by their extracts, never a homeopathic stock.
        {"MILLEPERTUIS", {113, 114}},
        {"BOURDAINE", {116}},
        // Spellings, esters, acid salts, known synonyms, strains.
        {"ALISKIREN", {117}},
        {"PALIPERIDONE", {118}},
        {"LISURIDE", {119}},
        {"ALUMINIUM (SELS)", {120}},
        {"INTERFERON ALFA", {121}},
        {"COLISTINE", {122}},
        {"ACIDE CLODRONIQUE", {124}},
        {"VIRUS DE LA FIEVRE JAUNE", {125}},
        // Salt words alone stand for nothing.
        {"SELS", {}},
        {"SELS DE", {}},
    };
    for (const auto& [nom, codes] : attendus) EXPECT_EQ(index.Cherche(nom), codes) << nom;
    // A salt's base is the fraction that names its molecule, not the iodine
    // a contrast medium is expressed as.
    EXPECT_TRUE(EstSaBase(Cp1252("RANITIDINE (CHLORHYDRATE DE)"), "RANITIDINE BASE"));
    EXPECT_TRUE(EstSaBase(Cp1252("MALÉATE DE TIMOLOL"), "TIMOLOL BASE"));
    EXPECT_FALSE(EstSaBase("IOPAMIDOL", "IODE"));
    // What matched nothing is told with the names of the database near it.
    EXPECT_EQ(index.Proches("CALCIUM (OROTATE DE)", 2).size(), 2u);
    EXPECT_TRUE(index.Proches("ROFECOXIB", 3).empty());
}

// --- Products ---------------------------------------------------------------------

TEST(ImportProduits, EachPresentationIsAProductWithItsCodesAndFlags) {
    Extrait e;
    e.Importe();
    const Ligne doliprane = e.Fiche("VDXPRO", "CodeCIP", "1111111");
    EXPECT_EQ(doliprane.at("Libelle"), "DOLIPRANE 1000MG CPR B/8");
    // The price without the fee, the fee, the price with it, in cents.
    EXPECT_EQ(doliprane.at("DonneeEco2"), "0000196");
    EXPECT_EQ(doliprane.at("DonneeEco1"), "0000102");
    EXPECT_EQ(doliprane.at("DonneeEco3"), "0000298");
    EXPECT_EQ(doliprane.at("LibelleEco"), "");
    EXPECT_EQ(doliprane.at("CodeRubrique"), "10");
    EXPECT_EQ(doliprane.at("Drapeaux"), "4");  // reference of its group
    EXPECT_EQ(doliprane.at("CodeTableau"), "");
    EXPECT_EQ(doliprane.at("Suppression"), "");
    EXPECT_EQ(doliprane.at("CodeLaboratoire"), doliprane.at("Laboratoire"));
    EXPECT_EQ(e.Fiche("VDXLAB", "CodeLaboratoire", doliprane.at("CodeLaboratoire")).at("Libelle"), "SANOFI AVENTIS FRANCE");
    const Ligne tss = e.Fiche("VDXTSS", "Code", doliprane.at("CodeTSS"));
    EXPECT_EQ(tss.at("Taux"), "65");

    // Stopped, two rates, no price, two holders, generic, list II.
    const Ligne ranitidine = e.Fiche("VDXPRO", "CodeCIP", "2222222");
    EXPECT_EQ(ranitidine.at("Suppression"), "A29102015");
    EXPECT_EQ(ranitidine.at("DonneeEco2"), "0000000");
    EXPECT_EQ(ranitidine.at("DonneeEco3"), "0000000");
    EXPECT_EQ(ranitidine.at("CodeTSS"), doliprane.at("CodeTSS"));  // the highest of 30% and 65%
    EXPECT_EQ(ranitidine.at("Drapeaux"), "2");
    EXPECT_EQ(ranitidine.at("CodeTableau"), "C");
    EXPECT_EQ(e.Fiche("VDXLAB", "CodeLaboratoire", ranitidine.at("CodeLaboratoire")).at("Libelle"), "TEVA SANTE");
    EXPECT_NE(ranitidine.at("CodeTVA"), "");

    // A narcotic of list I reserved to hospitals, priced beyond a thousand.
    const Ligne morphine = e.Fiche("VDXPRO", "CodeCIP", "3333333");
    EXPECT_EQ(morphine.at("CodeTableau"), "B");
    EXPECT_EQ(morphine.at("Drapeaux"), "8");
    EXPECT_EQ(morphine.at("DonneeEco2"), "0284983");
    EXPECT_EQ(morphine.at("LibelleEco"), "indications");
    EXPECT_EQ(e.Fiche("VDXPRO", "CodeCIP", "4444444").at("CodeTableau"), "A");

    const Ligne proa = e.Fiche("VDXPROA", "CodeCIP", "3333333");
    EXPECT_EQ(proa.at("GenCode"), "3400933333333");
    EXPECT_EQ(proa.at("CodeStatut"), "3");  // a European authorisation
    EXPECT_EQ(proa.at("Prescription1"), "1");
    EXPECT_EQ(proa.at("Prescription2"), "18");
    EXPECT_EQ(e.Fiche("VDXCIP13", "CodeCIP", "2222222").at("CIP13"), "3400922222222");
    EXPECT_EQ(e.Fiche("VDXYCSCP", "CodeCIP", "2222222").at("CodeCIS"), "60000002");
    EXPECT_EQ(e.Fiche("VDXDAT", "Numero", "0").at("Texte"), "Source : Base de données publique des médicaments, mars 2017");
    EXPECT_EQ(e.Fiche("VDXDAT", "Numero", "1").at("Texte"), "16/03/2017");
}

TEST(ImportProduits, TheAuthorisationsDateTheConditionsAsAChapterAndTheSpecialitysLabel) {
    Extrait e;
    e.Importe();
    EXPECT_EQ(e.Fiche("VDXVAMDT", "CodeCIP", "3333333").at("CodeChapitre"), "00");
    EXPECT_EQ(e.Fiche("VDXVAMDT", "CodeCIP", "3333333").at("DateChapitre"), "2002/01/01");
    const Ligne chapitre = e.Fiche("VDXVAMST", "CodeCIP", "3333333");
    // The conditions in one order whatever the lines' order.
    EXPECT_EQ(chapitre.at("Texte11"), "liste I - réservé à l'usage HOSPITALIER - stupéfiants");
    // The sources double the backslashes.
    EXPECT_EQ(chapitre.at("Rtf11"),
              "{\\\\rtf1\\\\ansi liste I - r\\\\'e9serv\\\\'e9 \\\\'e0 l'usage HOSPITALIER - stup\\\\'e9fiants}");
    EXPECT_EQ(chapitre.at("Texte1"), "");
    EXPECT_TRUE(Selon(e.Table("VDXVAMST"), "CodeCIP", "1111111").empty());  // no condition
    EXPECT_EQ(e.Fiche("VDXYCIS", "CodeCIS", "60000003").at("Libelle"), "MORPHINE LAB 10 mg/ml, solution injectable");
    EXPECT_EQ(RtfDe("{a\\b}"), "{\\rtf1\\ansi \\{a\\\\b\\}}");
}

TEST(ImportProduits, RoutesGroupsAndIdentification) {
    Extrait e;
    e.Importe();
    const auto voies = Selon(e.Table("VDXIDPVO"), "CodeCIP", "3333333");
    ASSERT_EQ(voies.size(), 2u);
    for (const Ligne& v : voies) EXPECT_EQ(v.at("CodeVoie")[0], 'A') << v.at("CodeVoie");
    const std::string orale = e.Fiche("VDXIDPVO", "CodeCIP", "1111111").at("CodeVoie");
    EXPECT_EQ(e.Fiche("VDXIDVOI", "CodeVoie", orale).at("Libelle"), "orale");
    EXPECT_EQ(e.Fiche("VDXIDVOI", "CodeVoie", "A").at("Libelle"), "voie générale");

    EXPECT_EQ(e.Fiche("VDXCLA", "CodeClasse", "G00007").at("LibelleCle"),
              "RANITIDINE 150 MG - AZANTAC 150 MG, COMPRIME EFFERVESCENT");
    EXPECT_EQ(Selon(e.Table("VDXCLAP"), "CodeClasse", "G00009").size(), 2u);  // both presentations of the speciality
    // A class a set of active substances, named by the fraction that
    // expresses a salt, numbered in the order of the labels.
    EXPECT_EQ(e.Fiche("VDXCLA", "CodeClasse", "S00002").at("Libelle"), "RANITIDINE BASE");
    EXPECT_EQ(Selon(e.Table("VDXCLAP"), "CodeClasse", "S00002").at(0).at("CodeCIP"), "2222222");
    EXPECT_EQ(Selon(e.Table("VDXCLAP"), "CodeClasse", "S00001").size(), 2u);  // paracetamol

    const Ligne id = e.Fiche("VDXIDPRO", "CodeCIP", "4444444");
    EXPECT_EQ(id.at("Denomination"), "WARFARINE VIEUX");
    EXPECT_EQ(id.at("Dosage"), "5 mg");
    EXPECT_EQ(id.at("QuantitePresentation"), "30");
    EXPECT_EQ(e.Fiche("VDXIDFOR", "CodeForme", id.at("CodeForme")).at("Libelle"), "comprimé sécable");
    EXPECT_EQ(e.Fiche("VDXIDFOP", "CodeCIP", "4444444").at("CodeForme"), id.at("CodeForme"));
}

TEST(ImportProduits, TheIdentificationTellsThePackageInItsWords) {
    Extrait e;
    const char* const ajouts[] = {"60000003\t3333334\t2 flacon(s) en verre de 50 ml", "60000003\t3333335\tflacon(s) en verre",
                                  "60000004\t4444445\t3 plaquette(s) de 14 comprimé(s)"};
    for (const char* debut : ajouts)
        e.Ajoute("bdpm/CIS_CIP_bdpm.txt",
                 std::string(debut) + "\tPrésentation active\tDéclaration de commercialisation\t01/02/2012\t\toui\t100%\t\t\t\t\n");
    e.Importe();
    const auto mot = [&](const char* table, const Ligne& id, const char* colonne) {
        return e.Fiche(table, "Code", id.at(colonne)).at("Libelle");
    };
    // Contents as the posology reads them: units × quantity per unit / ratio, in units of take.
    const auto contenu = [&](const char* cip) {
        const Ligne id = e.Fiche("VDXIDPRO", "CodeCIP", cip);
        const double n = std::stod(id.at("QuantitePresentation")) * std::stod(id.at("QuantiteUnitePresentation")) /
                         std::stod(id.at("Rapport"));
        const Ligne prise = e.Fiche("VDXPUPRI", "Code", id.at("CodeUnitePrise"));
        return std::to_string(static_cast<int>(n)) + " " + prise.at(n > 1 ? "LibellePluriel" : "Libelle");
    };

    const Ligne comprimes = e.Fiche("VDXIDPRO", "CodeCIP", "4444444");  // plaquette(s) de 30 comprimé(s), sécable
    EXPECT_EQ(mot("VDXIDPRE", comprimes, "CodePresentation"), "comprimé");
    EXPECT_EQ(mot("VDXIDUPR", comprimes, "CodeUnitePresentation"), "comprimé");
    EXPECT_EQ(mot("VDXIDCON", comprimes, "CodeContenant"), "plaquette");
    EXPECT_EQ(comprimes.at("AvecContenance"), "1");
    EXPECT_EQ(comprimes.at("Secabilite"), "2");
    EXPECT_EQ(contenu("4444444"), "30 comprimés");
    EXPECT_EQ(contenu("4444445"), "42 comprimés");

    const Ligne flacons = e.Fiche("VDXIDPRO", "CodeCIP", "3333334");
    EXPECT_EQ(mot("VDXIDPRE", flacons, "CodePresentation"), "flacon");
    EXPECT_EQ(flacons.at("QuantitePresentation"), "2");
    EXPECT_EQ(mot("VDXIDUPR", flacons, "CodeUnitePresentation"), "ml");
    EXPECT_EQ(flacons.at("QuantiteUnitePresentation"), "50");
    EXPECT_EQ(mot("VDXIDCON", flacons, "CodeContenant"), "flacon");
    EXPECT_EQ(flacons.at("Secabilite"), "0");
    EXPECT_EQ(contenu("3333334"), "100 ml");
    EXPECT_EQ(contenu("3333333"), "10 ampoules");  // single doses: counted, not 10 ml

    // The dosage's unit as the second unit, when the dosage is a unit of
    // take's: 5 mg a tablet of warfarin, the base's 150 mg of ranitidine;
    // none for a solution dosed by the ml.
    EXPECT_EQ(mot("VDXPUPRI", comprimes, "CodeUnitePrise2"), "mg");
    EXPECT_EQ(comprimes.at("AvecContenance2"), "1");
    EXPECT_EQ(comprimes.at("Rapport2"), "0.2");
    EXPECT_FLOAT_EQ(1 / std::stof(e.Fiche("VDXIDPRO", "CodeCIP", "2222222").at("Rapport2")), 150);
    EXPECT_EQ(e.Fiche("VDXIDPRO", "CodeCIP", "3333333").at("CodeUnitePrise2"), "0");

    // A label without a package is no error: no words.
    const Ligne inconnu = e.Fiche("VDXIDPRO", "CodeCIP", "3333335");
    for (const char* colonne : {"CodePresentation", "QuantitePresentation", "CodeContenant", "CodeUnitePrise", "AvecContenance"})
        EXPECT_EQ(inconnu.at(colonne), "0") << colonne;

    // Only the words of the products kept, under the codes of the whole import.
    e.Importe({"warfarine"}, "filtre");
    const auto conteneurs = e.Table("VDXIDCON", "filtre");
    ASSERT_EQ(conteneurs.size(), 1u);
    EXPECT_EQ(conteneurs[0].at("Code"), comprimes.at("CodeContenant"));
    EXPECT_EQ(e.Table("VDXPUPRI", "filtre").size(), 2u);  // comprimé, mg
}

// --- Composition ----------------------------------------------------------------------

TEST(ImportComposition, TheSaltAndTheFractionItIsExpressedAsAreBothOnTheProduct) {
    Extrait e;
    e.Importe();
    // The salt first, then its fraction: a thesaurus name may stand for either.
    const auto composants = Selon(e.Table("VDXVCOMP"), "CodeCIP", "2222222");
    ASSERT_EQ(composants.size(), 2u);
    EXPECT_EQ(composants[0].at("CodeSubstance") + " " + composants[0].at("QuantiteTexte"), "25783 168 mg");
    const std::string base = composants[1].at("CodeSubstance");
    EXPECT_EQ(composants[1].at("QuantiteTexte"), "150 mg");
    EXPECT_EQ(composants[1].at("Quantite"), "150");
    EXPECT_EQ(e.Fiche("VDXVPAU", "Code", composants[1].at("CodeUnite")).at("LibelleUnite"), "mg");
    // The published 49632 is a concept's number here: renumbered below 30001.
    EXPECT_LE(std::stoi(base), 30000);
    EXPECT_EQ(e.Fiche("VDXVPA", "CodeSubstance", base).at("Libelle"), "RANITIDINE BASE");
    EXPECT_EQ(e.Fiche("VDXVCOMG", "CodeCIP", "2222222").at("TexteComposition"), "Ranitidine base 150 mg pour un comprimé.");
    EXPECT_EQ(e.Fiche("VDXVPAE", "Code", e.Fiche("VDXVCOMG", "CodeCIP", "2222222").at("CodeExprime")).at("LibelleExprime"),
              "un comprimé");
    // The reverse index finds the product from the salt as from its base.
    EXPECT_EQ(Selon(e.Table("VDXVPAP"), "CodeCIP", "2222222").size(), 2u);
    EXPECT_EQ(e.Fiche("VDXWSYNC", "CodeSubstance", "25783").at("CodeSynonyme"), base);
    EXPECT_EQ(e.Fiche("VDXWPEFI", "CodeEnfant", "25783").at("CodeParent"), base);
    EXPECT_EQ(e.Fiche("VDXWPEFI", "CodeEnfant", "2202").at("CodeParent"), "2202");
    EXPECT_EQ(e.Fiche("VDXWPEFI", "CodeEnfant", "99999").at("CodeParent"), "99999");
    // A salt without its fraction and without a base of its name is its own parent.
    EXPECT_EQ(e.Fiche("VDXWPEFI", "CodeEnfant", "678").at("CodeParent"), "678");
}

TEST(ImportComposition, SubstancesAreNamedSaltsAndBasesAreSynonymsBothWaysFamiliesAreConcepts) {
    Extrait e;
    e.Importe();
    const std::string base = Selon(e.Table("VDXVCOMP"), "CodeCIP", "2222222").at(1).at("CodeSubstance");
    EXPECT_EQ(e.Fiche("VDXWSYNC", "CodeSubstance", base).at("CodeSynonyme"), "25783");
    EXPECT_EQ(e.Fiche("VDXVEXC", "CodeSubstance", base).at("Libelle"), "RANITIDINE BASE");
    EXPECT_EQ(e.Fiche("VDXVEXC", "CodeSubstance", "30001").at("Libelle"), "PENICILLINES");
    // No penicillin in the extract: a concept without component.
    EXPECT_TRUE(e.Table("VDXWCCCO").empty());
}

TEST(ImportVigilance, ClassesAtRiskGoToTheirProductsAndTheHeatWaveCategoriesAreFiled) {
    Extrait e;
    e.Importe();
    // Antivitamins K, second of the list: the warfarin sodium product, its
    // salt found by the thesaurus's name of the base.
    EXPECT_EQ(e.Fiche("VDXCLA", "CodeClasse", "T002").at("Libelle"), "ANTIVITAMINES K");
    std::set<std::string> produits;
    for (const auto& l : Selon(e.Table("VDXCLAP"), "CodeClasse", "T002")) produits.insert(l.at("CodeCIP"));
    EXPECT_EQ(produits, std::set<std::string>{"4444444"});
    EXPECT_EQ(e.Table("VDXCLAR").size(), ClassesARisque().size());
    EXPECT_TRUE(Selon(e.Table("VDXCLAP"), "CodeClasse", "T001").empty());
    EXPECT_EQ(e.Fiche("VDXYCAAR", "LettreCanicule", "D").at("Libelle"), "Diur\xC3\xA9tiques");
    EXPECT_TRUE(e.Table("VDXYCACO").empty());  // no diuretic, NSAID, neuroleptic in the extract
}

TEST(ImportPosologie, TheVocabulariesAreFiledAndTheRoutesNumberedByName) {
    Extrait e;
    e.Importe();
    // Routes of the whole database, in the order of their folded names.
    EXPECT_EQ(e.Fiche("VDXPVOI", "Code", "1").at("Libelle"), "intraveineuse");
    EXPECT_EQ(e.Fiche("VDXPVOI", "Code", "2").at("Libelle"), "orale");
    EXPECT_EQ(e.Fiche("VDXPVOI", "Code", "3").at("Libelle"), "sous-cutan\xC3\xA9" "e");
    EXPECT_EQ(e.Table("VDXPVOI").size(), 3u);
    EXPECT_EQ(e.Fiche("VDXPDURC", "Cle", "020040").at("Facteur"), "24");
    EXPECT_EQ(e.Fiche("VDXPDURC", "Cle", "060070").at("Facteur"), "12");
    EXPECT_EQ(e.Fiche("VDXPDURC", "Cle", "050040").at("Facteur"), "0.142857");
    EXPECT_EQ(e.Table("VDXPDURC").size(), 49u);
    EXPECT_EQ(e.Fiche("VDXPMOM", "Code", "6").at("Multiplicateur"), "3");
    // The public data hold no posology.
    EXPECT_TRUE(e.Table("VDXPPROD").empty());
    EXPECT_TRUE(e.Table("VDXPPTER").empty());
}

// --- Side documents ---------------------------------------------------------------------

// Bytes of a source column in hexadecimal.
std::string DepuisHexa(const std::string& hexa) {
    std::string octets;
    for (size_t i = 0; i + 1 < hexa.size(); i += 2) octets += static_cast<char>(std::stoi(hexa.substr(i, 2), nullptr, 16));
    return octets;
}

TEST(ImportDocuments, OneTransparencySheetASpecialityItsOpinionsNewestFirstLinkedToEachPresentation) {
    Extrait e;
    e.Importe();
    ASSERT_EQ(e.Table("VDXYLBIN").size(), 1u);  // DOLIPRANE alone has opinions
    const Ligne lien = e.Fiche("VDXYLIEN", "NumeroLien", "00001");
    EXPECT_EQ(lien.at("NomDocument"), "transparence-60000001.htm");
    EXPECT_EQ(lien.at("DateLien"), "20/06/2016");
    const auto liens = e.Table("VDXYLCIP");
    ASSERT_EQ(liens.size(), 2u);
    for (const Ligne& l : liens) {
        EXPECT_EQ(l.at("NumeroLien"), "00001");
        EXPECT_EQ(l.at("TypeLien"), "2");
    }
    const std::string document = DepuisHexa(e.Fiche("VDXYLBIN", "NomDocument", "transparence-60000001.htm").at("Document"));
    EXPECT_NE(document.find("DOLIPRANE 1000 mg, comprim\xE9"), std::string::npos);
    const size_t recent = document.find("20/06/2016"), milieu = document.find("01/03/2013"), ancien = document.find("15/01/2010"),
                 asmr = document.find("(ASMR)");
    EXPECT_LT(recent, milieu);
    EXPECT_LT(milieu, ancien);
    EXPECT_LT(ancien, asmr);
    EXPECT_NE(document.find("SMR &lt;important&gt;."), std::string::npos);
}

TEST(ImportDocuments, TheHistoryOfEachPresentationByDayWithTheAlertAsOfTheExtract) {
    Extrait e;
    std::string specialites = Specialites;
    specialites.replace(specialites.find("01/01/2003\t\t"), 12, "01/01/2003\tAlerte\t");
    e.Pose("bdpm/CIS_bdpm.txt", specialites);
    e.Importe();
    const auto dolipranes = Selon(e.Table("VDXPHIMP"), "CodeCIP", "1111111");
    ASSERT_EQ(dolipranes.size(), 2u);
    EXPECT_EQ(dolipranes[0].at("DateModification"), "20000101");
    EXPECT_EQ(dolipranes[0].at("Texte"), "Autorisation de mise sur le march\xC3\xA9");
    EXPECT_EQ(dolipranes[1].at("DateModification"), "20110316");
    EXPECT_EQ(dolipranes[1].at("Texte"), "D\xC3\xA9" "claration de commercialisation");
    EXPECT_EQ(e.Fiche("VDXPHIMP", "DateModification", "20151029").at("Texte"),
              "D\xC3\xA9" "claration d'arr\xC3\xAAt de commercialisation");
    const auto warfarine = Selon(e.Table("VDXPHIMP"), "CodeCIP", "4444444");
    ASSERT_EQ(warfarine.size(), 3u);
    EXPECT_EQ(warfarine[2].at("DateModification"), "20170316");  // the latest date of the extract
    EXPECT_EQ(warfarine[2].at("Texte"), "Alerte");
}

// --- Interactions -----------------------------------------------------------------------

TEST(ImportInteractions, CouplesInBothOrdersWithTheirSeverityKindAndTexts) {
    Extrait e;
    const RapportImport r = e.Importe();
    std::map<std::string, std::string> classes;
    for (const Ligne& c : e.Table("VDXZICLA")) classes[c.at("Libelle")] = c.at("CodeClasse");
    const std::string avk = classes.at("ANTIVITAMINES K"), paracetamol = classes.at("PARACETAMOL");
    EXPECT_EQ(e.Fiche("VDXZICLC", "CodeSubstance", "678").at("CodeClasse"), avk);
    EXPECT_EQ(e.Fiche("VDXZICLC", "CodeSubstance", "2202").at("CodeClasse"), paracetamol);

    const auto couples = e.Table("VDXZICOU");
    const auto direct = Selon(Selon(couples, "ClasseA", avk), "ClasseB", paracetamol);
    const auto miroir = Selon(Selon(couples, "ClasseA", paracetamol), "ClasseB", avk);
    ASSERT_EQ(direct.size(), 1u);
    ASSERT_EQ(miroir.size(), 1u);
    EXPECT_EQ(direct[0].at("Sens"), "1");
    EXPECT_EQ(miroir[0].at("Sens"), "2");
    for (const Ligne& c : {direct[0], miroir[0]}) {
        EXPECT_EQ(c.at("Genre"), "0");
        EXPECT_EQ(c.at("FiltreA"), "T");
        EXPECT_EQ(c.at("VoiesA"), "A");
        EXPECT_EQ(e.Fiche("VDXZIGRA", "Code", c.at("CodeGravite")).at("Niveau"), "2");
        EXPECT_EQ(c.at("Texte2"), "Risque d'augmentation de l'effet de l'antivitamine K.");
        EXPECT_EQ(c.at("Texte4"), "Controle plus frequent de l'INR.");
        EXPECT_EQ(c.at("Reference2"), "août 2016");
        const std::string type = e.Fiche("VDXZITYP", "Code", c.at("CodeType")).at("TexteType");
        EXPECT_NE(type.find("$1"), std::string::npos);
        EXPECT_NE(type.find("$2"), std::string::npos);
    }

    // Combined levels: the highest, and the whole text.
    const auto combine = Selon(Selon(couples, "ClasseA", classes.at("MORPHINIQUES")), "ClasseB", classes.at("RANITIDINE"));
    ASSERT_EQ(combine.size(), 1u);
    EXPECT_EQ(e.Fiche("VDXZIGRA", "Code", combine[0].at("CodeGravite")).at("Niveau"), "4");
    EXPECT_EQ(combine[0].at("Texte4"), "Contre-indication avec X. Association deconseillee avec Y.");
    EXPECT_EQ(combine[0].at("Texte1"), "Voir aussi : morphiniques");
    EXPECT_EQ(e.Fiche("VDXZITYP", "Code", combine[0].at("CodeType")).at("TexteType"),
              "Majoration de la dépression centrale avec $1 et $2");

    // A description that only repeats the risk, cut short, is no conduct.
    const auto repete =
        Selon(Selon(couples, "ClasseA", classes.at("MORPHINE")), "ClasseB", classes.at("SELS DE FER PAR VOIE INJECTABLE"));
    ASSERT_EQ(repete.size(), 1u);
    EXPECT_EQ(repete[0].at("Texte2"), "Risque de choc anaphylactique.");
    EXPECT_EQ(repete[0].at("Texte4"), "");

    // A protagonist named with its route keeps it as a filter.
    const auto fer = Selon(couples, "ClasseA", classes.at("SELS DE FER PAR VOIE INJECTABLE"));
    ASSERT_EQ(fer.size(), 1u);
    EXPECT_EQ(fer[0].at("VoiesA"), "A2");
    EXPECT_EQ(fer[0].at("VoiesB"), "A");
    EXPECT_EQ(e.Table("VDXZIGRA").size(), 4u);

    // FLUINDIONE is in no product of the extract: counted, never invented.
    EXPECT_EQ(r.substancesThesaurus, 5u);
    EXPECT_EQ(r.substancesTrouvees, 4u);
    EXPECT_EQ(NomsSansSubstance(r), std::vector<std::string>{"FLUINDIONE"});
}

// --- The whole import -------------------------------------------------------------------

TEST(Import, TheSameFilesGiveTheSameBytesWhateverTheirEncoding) {
    Extrait cp1252, utf8(true);
    cp1252.Importe({}, "un");
    cp1252.Importe({}, "deux");
    utf8.Importe({}, "un");
    size_t fichiers = 0;
    for (const auto& f : fs::directory_iterator(cp1252.chemin() / "un")) {
        const std::string nom = f.path().filename().string();
        EXPECT_EQ(Lit(f.path()), Lit(cp1252.chemin() / "deux" / nom)) << nom;
        EXPECT_EQ(Lit(f.path()), Lit(utf8.chemin() / "un" / nom)) << nom;
        ++fichiers;
    }
    EXPECT_GT(fichiers, 25u);
}

// The lines of every published file in another order give the same
// sources, names shown included: a substance shows its most frequent
// spelling, the first in byte order among as frequent ones.
TEST(Import, LinesInAnotherOrderGiveTheSameBytes) {
    Extrait e;
    e.Ajoute("bdpm/CIS_CIP_bdpm.txt", "60000002\t2222223\ttube(s) de 10 comprimé(s)\tPrésentation active\t"
                                      "Déclaration de commercialisation\t01/02/2012\t3400922222223\toui\t65%\t\t\t\t\n");
    e.Ajoute("bdpm/CIS_COMPO_bdpm.txt", "60000001\tcomprimé\t2202\tPARACETAMOL\t1000 mg\tun comprimé\tSA\t2\t\n"
                                        "60000004\tcomprimé\t2202\tPARACETAMOL\t1 g\tun comprimé\tSA\t2\t\n");
    e.Importe({}, "un");
    for (const char* fichier : {"bdpm/CIS_bdpm.txt", "bdpm/CIS_CIP_bdpm.txt", "bdpm/CIS_COMPO_bdpm.txt",
                                "bdpm/CIS_GENER_bdpm.txt", "bdpm/CIS_CPD_bdpm.txt", "bdpm/CIS_HAS_SMR_bdpm.txt",
                                "interactions-2016-08/substances.txt",
                                "interactions-2016-08/substance-classes.tsv", "interactions-2016-08/couples.tsv"}) {
        const fs::path chemin = e.chemin() / fichier;
        std::vector<std::string> lignes;
        std::istringstream texte(Lit(chemin));
        for (std::string l; std::getline(texte, l);) lignes.push_back(l);
        // The thesaurus files keep their header line first.
        const size_t debut = std::string_view(fichier).ends_with(".tsv") ? 1 : 0;
        std::reverse(lignes.begin() + static_cast<std::ptrdiff_t>(std::min(debut, lignes.size())), lignes.end());
        std::string inverse;
        for (const std::string& l : lignes) inverse += l + "\n";
        Ecrit(chemin, inverse);
    }
    e.Importe({}, "deux");
    size_t fichiers = 0;
    for (const auto& f : fs::directory_iterator(e.chemin() / "un")) {
        EXPECT_EQ(Lit(f.path()), Lit(e.chemin() / "deux" / f.path().filename())) << f.path().filename();
        ++fichiers;
    }
    EXPECT_GT(fichiers, 25u);
    const auto paracetamol = Selon(e.Table("VDXVPA", "deux"), "CodeSubstance", "2202");
    ASSERT_EQ(paracetamol.size(), 1u);
    EXPECT_EQ(paracetamol[0].at("Libelle"), "PARACETAMOL");
}

TEST(Import, TheFilterKeepsThePresentationsOfASubstanceAndTheirInteractions) {
    Extrait e;
    const RapportImport r = e.Importe({"warfarine", "inconnue"});
    const auto produits = e.Table("VDXPRO");
    ASSERT_EQ(produits.size(), 1u);
    EXPECT_EQ(produits[0].at("CodeCIP"), "4444444");
    EXPECT_EQ(r.filtreSansSubstance, std::vector<std::string>{"inconnue"});
    EXPECT_EQ(e.Table("VDXZICOU").size(), 2u);  // the antivitamin K couple, both ways
    EXPECT_EQ(e.Table("VDXZICLC").size(), 1u);
    EXPECT_EQ(e.Table("VDXVPA").size(), 1u);
}

// Two more warfarin specialities: one not reimbursed, one reimbursed with a
// second substance.
void AjouteWarfarines(Extrait& e) {
    e.Ajoute("bdpm/CIS_bdpm.txt",
             "60000005\tWARFARINE NOUVELLE 2 mg, comprimé\tcomprimé\torale\tAutorisation active\tProcédure nationale\t"
             "Commercialisée\t01/01/2003\t\t\t LABO\tNon\r\n"
             "60000006\tWARFARINE PARACETAMOL 5 mg/500 mg, comprimé\tcomprimé\torale\tAutorisation active\t"
             "Procédure nationale\tCommercialisée\t01/01/2003\t\t\t LABO\tNon\r\n");
    e.Ajoute("bdpm/CIS_CIP_bdpm.txt",
             "60000005\t5555555\tplaquette(s) de 20 comprimé(s)\tPrésentation active\tDéclaration de "
             "commercialisation\t01/02/2012\t3400955555555\tnon\t\t\t\t\t\r\n"
             "60000006\t6666666\tplaquette(s) de 20 comprimé(s)\tPrésentation active\tDéclaration de "
             "commercialisation\t01/02/2012\t3400966666666\toui\t65%\t3,00\t4,02\t1,02\t\r\n");
    e.Ajoute("bdpm/CIS_COMPO_bdpm.txt",
             "60000005\tcomprimé\t678\tWARFARINE SODIQUE\t2 mg\tun comprimé\tSA\t1\t\r\n"
             "60000006\tcomprimé\t678\tWARFARINE SODIQUE\t5 mg\tun comprimé\tSA\t1\t\r\n"
             "60000006\tcomprimé\t2202\tPARACÉTAMOL\t500 mg\tun comprimé\tSA\t2\t\r\n");
}

TEST(Import, ALimitKeepsTheReimbursedSpecialitiesOfFewerSubstancesFirst) {
    Extrait e;
    AjouteWarfarines(e);
    const auto cips = [&e](const std::string& sortie) {
        std::set<std::string> codes;
        for (const Ligne& l : e.Table("VDXPRO", sortie)) codes.insert(l.at("CodeCIP"));
        return codes;
    };
    e.Importe({"warfarine"}, "une", 1);
    EXPECT_EQ(cips("une"), (std::set<std::string>{"4444444"}));
    e.Importe({"warfarine"}, "deux", 2);
    EXPECT_EQ(cips("deux"), (std::set<std::string>{"4444444", "6666666"}));
    e.Importe({"warfarine"}, "toutes");
    EXPECT_EQ(cips("toutes"), (std::set<std::string>{"4444444", "5555555", "6666666"}));
    // Each substance has its own limit.
    e.Importe({"warfarine", "paracetamol"}, "chacune", 1);
    EXPECT_EQ(cips("chacune"), (std::set<std::string>{"1111111", "1111112", "4444444"}));
    // A speciality named by its CIS code comes besides the limit.
    e.Importe({"warfarine", "60000005"}, "cis", 1);
    EXPECT_EQ(cips("cis"), (std::set<std::string>{"4444444", "5555555"}));
}

TEST(Import, TheSourcesBuildABaseWhoseLabelsAreUnique) {
    Extrait e;
    // A second group whose label begins as the first's, beyond the room of the class label key.
    e.Ajoute("bdpm/CIS_GENER_bdpm.txt", "11\tPARACETAMOL 1000 mg - DOLIPRANE 1000 mg, gélule\t60000001\t1\t3\t\r\n");
    e.Importe();
    EXPECT_EQ(e.Fiche("VDXDAT", "Numero", "3").at("Texte"), VersionLibrairie);
    magasin::InitialiseMagasin(867, NombreNumeros, 16);
    const RapportConstruction rapport = ConstruitBase(e.chemin() / "sources", e.chemin() / "base");
    EXPECT_EQ(rapport.avertissements, std::vector<std::string>{});
    // The groups, the classes at risk when doubled, the classes of the four
    // sets of active substances.
    EXPECT_EQ(LitTable(e.chemin() / "base", *DispositionNommee("VDXCLA")).size(), 3u + ClassesARisque().size() + 4u);
    std::set<std::string> libelles;
    for (const Enregistrement& p : LitTable(e.chemin() / "base", *DispositionNommee("VDXPRO")))
        libelles.insert(std::string(vdx::Fiche(p.fiche).Texte(VDXPRO::Libelle)));
    EXPECT_EQ(libelles, (std::set<std::string>{"DOLIPRANE 1000MG CPR B/8", "DOLIPRANE 1000MG CPR B/8.",
                                               "MORPHINE LAB 10MG/ML SOL 10X1ML",
                                               "RANITIDINE ELE 150MG CPR EFF B/20", "WARFARINE VIEUX 5MG CPR SEC B/30"}));
    // Each product filed under its category and under all products.
    EXPECT_EQ(LitTable(e.chemin() / "base", *DispositionNommee("VDXVPRO")).size(), 10u);
    EXPECT_EQ(LitTable(e.chemin() / "base", *DispositionNommee("VDXLABP")).size(), 5u);
}

}  // namespace
}  // namespace vdx::import::essai
