#include "store/sources.h"

#include <stdlib.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "platform/chemin.h"
#include "platform/codepage.h"
#include "store/cles.h"
#include "store/fixture.h"
#include "store/magasin.h"

namespace vdx {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const Disposition& Dispo(const char* table) { return *DispositionNommee(table); }

OptionsConstruction Options(bool remplace, Emplacement emplacement = Emplacement::Base) {
    OptionsConstruction options;
    options.remplace = remplace;
    options.emplacement = emplacement;
    return options;
}

class Dossier {
public:
    Dossier() {
        chemin_ = essai::DossierTemporaire("vdx32-sources-XXXXXX");
    }
    ~Dossier() { essai::SupprimeDossier(chemin_.string()); }
    fs::path operator/(const std::string& nom) const { return chemin_ / nom; }
    const fs::path& chemin() const { return chemin_; }

private:
    fs::path chemin_;
};

void Ecrit(const fs::path& fichier, const std::string& texte) {
    fs::create_directories(fichier.parent_path());
    std::ofstream(fichier, std::ios::binary) << texte;
}

std::string Lit(const fs::path& fichier) {
    std::ifstream entree(fichier, std::ios::binary);
    std::ostringstream texte;
    texte << entree.rdbuf();
    return texte.str();
}

std::map<std::string, std::string> Fichiers(const fs::path& dossier) {
    std::map<std::string, std::string> fichiers;
    for (const auto& e : fs::directory_iterator(dossier)) fichiers[e.path().filename().string()] = Lit(e.path());
    return fichiers;
}

// --- Generated records: every column of every layout --------------------

// A text of the field's whole capacity in code page 1252, with what the
// sources must escape or convert; its first bytes tell records and columns
// apart, so that keys stay unique.
std::string TexteGenere(std::string_view table, std::string_view colonne, int rang, size_t capacite) {
    unsigned h = 0;
    for (char c : std::string(table) + std::string(colonne)) h = h * 31 + static_cast<unsigned char>(c);
    std::string texte{static_cast<char>('A' + rang), static_cast<char>('a' + h % 26)};
    const std::string motif = "\xE9\t\\\n\xFF\x80 x;\r\xC7";
    while (texte.size() < capacite) texte += motif;
    return codepage::VersUtf8(texte.substr(0, capacite));
}

Enregistrement Genere(const Disposition& d, int rang) {
    const std::string table = d.table->nom;
    Redaction r(d, table + " genere");
    for (const Colonne& c : Colonnes(d)) {
        if (c.genre == GenreColonne::Partie) {
            r.Pose(c, d.corps == Corps::OctetsFinal
                          ? "00ff100" + std::to_string(rang)
                          : codepage::VersUtf8("Chapitre \xE9\t\\\n" + std::string(1, static_cast<char>('a' + rang)) +
                                               c.nom));
        } else if (c.champ.nature == NatureChamp::Texte) {
            const size_t capacite = c.champ.plein ? c.champ.largeur : c.champ.largeur - 1u;
            r.Pose(c, TexteGenere(table, c.nom, rang, capacite));
        } else if (c.champ.nature == NatureChamp::Entier) {
            r.Pose(c, std::to_string(-1000 * (rang + 1) - c.champ.decalage % 100));
        } else {
            r.Pose(c, rang ? "-0.1" : "3.4028235e+38");
        }
    }
    return std::move(r).Termine();
}

std::string SourceGeneree(const Disposition& d) {
    std::ostringstream texte;
    EcritSource(texte, d, {Genere(d, 0), Genere(d, 1)});
    return texte.str();
}

TEST(Sources, EveryLayoutSurvivesWritingAndReading) {
    for (const Disposition& d : Dispositions()) {
        SCOPED_TRACE(d.table->nom);
        const std::vector<Enregistrement> fiches{Genere(d, 0), Genere(d, 1)};
        std::ostringstream texte;
        EcritSource(texte, d, fiches);
        const Source relue = LitSource(d, texte.str(), "essai.tsv");
        ASSERT_EQ(relue.fiches.size(), 2u);
        for (size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(relue.fiches[i].fiche, fiches[i].fiche);
            EXPECT_EQ(relue.fiches[i].cle, fiches[i].cle);
            EXPECT_EQ(Valeurs(d, relue.fiches[i]), Valeurs(d, fiches[i]));
        }
    }
}

TEST(Sources, ValuesAreEscapedAndConverted) {
    const Disposition& d = Dispo("VDXPRO");
    const std::string source =
        "Libelle\tCodeCIP\tDrapeaux\n"
        "Caf\xC3\xA9ine \\\\ \\t \xE2\x82\xAC\\r\\n\t3000001\t-3\r\n";
    const Source s = LitSource(d, source, "VDXPRO.tsv");
    ASSERT_EQ(s.fiches.size(), 1u);
    const Fiche f(s.fiches[0].fiche);
    EXPECT_EQ(f.Texte(VDXPRO::Libelle), "Caf\xE9ine \\ \t \x80\r\n");
    EXPECT_EQ(f.Texte(VDXPRO::CodeCIP), "3000001");
    EXPECT_EQ(f.Entier(VDXPRO::Drapeaux), -3);
    EXPECT_EQ(f.Texte(VDXPRO::CodeRubrique), "");  // a column left out stays zero

    std::ostringstream sortie;
    EcritSource(sortie, d, s.fiches);
    const std::string texte = sortie.str();
    EXPECT_EQ(texte.substr(0, texte.find('\n')).rfind("CodeCIP\tLibelle\tCodeLaboratoire", 0), 0u);
    EXPECT_NE(texte.find("\n3000001\tCaf\xC3\xA9ine \\\\ \\t \xE2\x82\xAC\\r\\n\t"), std::string::npos);

    FicheEcrite presentation(VDXIDPRO::Longueur);
    presentation.Reel(VDXIDPRO::QuantitePresentation, 0.1f);
    const std::vector<std::string> valeurs = Valeurs(Dispo("VDXIDPRO"), {presentation.Octets(), {}, {}, {}});
    EXPECT_NE(std::find(valeurs.begin(), valeurs.end(), "0.1"), valeurs.end());
}

TEST(Sources, BadSourcesAreRefusedWithFileLineAndField) {
    const struct {
        const char* table;
        std::string contenu;
        std::string message;
    } cas[] = {
        {"VDXPRO", "CodeCIP\tLibelle\n3000001\tCaf\xE9\n", "VDXPRO.tsv:2: Libelle: pas de l'UTF-8"},
        {"VDXPRO", "CodeCIP\tLibelle\n3000001\tOK\n3000002\t\xCE\xA9mega\n", "VDXPRO.tsv:3: Libelle: pas de l'UTF-8, ou un caractere hors du code 1252, a l'octet 1"},
        {"VDXPRO", "CodeCIP\tLibelle\n3000001\n", "VDXPRO.tsv:2: 1 valeurs pour 2 colonnes"},
        {"VDXPRO", "CodeCIP\tLibelle\n3000001\tA\tB\n", "VDXPRO.tsv:2: 3 valeurs pour 2 colonnes"},
        {"VDXPRO", "CodeCIP\n30000011\n", "VDXPRO.tsv:2: CodeCIP: texte trop long : 8 octets pour 7 au plus"},
        {"VDXPRO", "Libelle\n" + std::string(33, 'E') + "\xC3\xA9\xC3\xA9\n", "VDXPRO.tsv:2: Libelle: texte trop long : 35 octets pour 34 au plus"},
        {"VDXPRO", "CodeCIP\tPrix\n", "VDXPRO.tsv:1: Prix: pas de colonne de ce nom dans VDXPRO"},
        {"VDXPRO", "CodeCIP\tCodeCIP\n", "VDXPRO.tsv:1: CodeCIP: colonne en double"},
        {"VDXPRO", "Drapeaux\n12a\n", "VDXPRO.tsv:2: Drapeaux: entier de 32 bits attendu"},
        {"VDXPRO", "Drapeaux\n2147483648\n", "VDXPRO.tsv:2: Drapeaux: entier de 32 bits attendu"},
        {"VDXPRO", "Drapeaux\n\n", "VDXPRO.tsv:2: Drapeaux: entier de 32 bits attendu"},
        {"VDXIDPRO", "Rapport\n1,5\n", "VDXIDPRO.tsv:2: Rapport: nombre decimal attendu"},
        {"VDXPRO", "Libelle\nA\\qB\n", "VDXPRO.tsv:2: Libelle: barre oblique inverse isolee"},
        {"VDXPRO", "Libelle\nA\\0B\n", "VDXPRO.tsv:2: Libelle: NUL dans un texte"},
        {"TEXU", "Texte\nA\\0B\n", "TEXU.tsv:2: Texte: NUL dans un texte"},  // a text behind the record too
        {"VDXZNOTG", "CodeCIP\tImage\n3000001\t0g\n", "VDXZNOTG.tsv:2: Image: octets en hexadecimal attendus"},
        {"VDXPRO", "", "VDXPRO.tsv:1: la premiere ligne doit nommer les colonnes"},
    };
    for (const auto& c : cas) {
        SCOPED_TRACE(c.message);
        try {
            LitSource(Dispo(c.table), c.contenu, std::string(c.table) + ".tsv");
            ADD_FAILURE() << "accepted";
        } catch (const ErreurSource& e) {
            EXPECT_EQ(std::string(e.what()).substr(0, c.message.size()), c.message) << e.what();
        }
    }
    // An accented letter is one byte of its field, though two of UTF-8.
    EXPECT_NO_THROW(LitSource(Dispo("VDXPRO"), "Libelle\n" + std::string(32, 'E') + "\xC3\xA9\xC3\xA9\n", "VDXPRO.tsv"));
}

// --- Bases ----------------------------------------------------------------

class Base : public ::testing::Test {
protected:
    void SetUp() override { magasin::InitialiseMagasin(867, NombreNumeros, 16); }

    // The position under a key, looked up through the store as a reader does.
    static magasin::Position Cherche(const fs::path& base, const char* table, int numero, const std::string& cle) {
        using namespace magasin;
        const Table& t = *TableNommee(table);
        EXPECT_EQ(OpenCtFile(t.index(), (base / t.fichierIndex).string().c_str(), LectureSeule), 0);
        const Position p = CleEgale(t.cle(numero), cle.data());
        CloseCtFile(t.index(), LectureSeule);
        return p;
    }

    static std::vector<std::string> Textes(const fs::path& base, const char* table, const ChampTexte& champ) {
        std::vector<std::string> textes;
        for (const Enregistrement& e : LitTable(base, Dispo(table))) textes.emplace_back(Fiche(e.fiche).Texte(champ));
        return textes;
    }

    Dossier dossier_;
};

TEST_F(Base, AnEmptySourceDirectoryGivesAValidEmptyBase) {
    fs::create_directories(dossier_ / "sources");
    const RapportConstruction rapport = ConstruitBase(dossier_ / "sources", dossier_ / "base");
    EXPECT_EQ(rapport.fiches, 0u);
    for (const Table& t : Catalogue()) {
        SCOPED_TRACE(t.nom);
        EXPECT_EQ(fs::exists(dossier_ / "base" / t.fichierDonnees), t.emplacement == Emplacement::Base);
        EXPECT_EQ(fs::exists(dossier_ / "base" / t.fichierIndex), t.emplacement == Emplacement::Base);
    }
    EXPECT_TRUE(LitTable(dossier_ / "base", Dispo("VDXZICOU")).empty());
    EXPECT_TRUE(TablesSourcees(dossier_ / "base").empty());
    VideBase(dossier_ / "base", dossier_ / "vidage");
    EXPECT_TRUE(fs::is_empty(dossier_ / "vidage"));
}

TEST_F(Base, EveryLayoutSurvivesBuildAndDump) {
    for (Emplacement emplacement : {Emplacement::Base, Emplacement::Medecin}) {
        const fs::path sources = dossier_ / "sources", base = dossier_ / "base", vidage = dossier_ / "vidage";
        for (const Disposition& d : Dispositions())
            if (d.table->emplacement == emplacement) Ecrit(sources / (std::string(d.table->nom) + ".tsv"), SourceGeneree(d));
        const RapportConstruction rapport = ConstruitBase(sources, base, Options(false, emplacement));
        EXPECT_TRUE(rapport.avertissements.empty());
        VideBase(base, vidage, emplacement);
        const auto attendus = Fichiers(sources), obtenus = Fichiers(vidage);
        EXPECT_EQ(attendus.size(), obtenus.size());
        for (const auto& [nom, texte] : attendus) EXPECT_EQ(obtenus.count(nom) ? obtenus.at(nom) : "(absent)", texte) << nom;
        for (const fs::path& p : {sources, base, vidage}) essai::SupprimeDossier(p.string());
    }
}

TEST_F(Base, ProductsAreFiledByCategoryAndLaboratoryAndTheirLabelsMadeUnique) {
    const std::string plein = "DOLIPRANE 1000MG CPR SECABLE BT/08";  // 34 bytes
    Ecrit(dossier_ / "sources" / "VDXPRO.tsv",
          "CodeCIP\tLibelle\tCodeRubrique\tCodeLaboratoire\tSuppression\n"
          "3000001\tDOLIPRANE 500MG\t10\tSANO\t\n"
          "2000002\tDOLIPRANE 500MG\t40\tSANO\tA01012020\n"
          "3000003\t" + plein + "\t81\tUPSA\t\n"
          "3000004\t" + plein + "\t81\tUPSA\t\n");
    // A record of VDXVPRO of its own, beside those filed from VDXPRO.
    Ecrit(dossier_ / "sources" / "VDXVPRO.tsv", "Categorie\tLibelle\tCodeCIP\tMarque\nM\tDOLIPRANE 500MG\t3000001\tC\n");
    const fs::path base = dossier_ / "base";
    ConstruitBase(dossier_ / "sources", base);

    EXPECT_EQ(Textes(base, "VDXPRO", VDXPRO::Libelle),
              (std::vector<std::string>{"DOLIPRANE 500MG.", "DOLIPRANE 500MG", plein, plein.substr(0, 33) + "9"}));
    EXPECT_NE(Cherche(base, "VDXPRO", 1, CleLibelleProduit("DOLIPRANE 500MG.")), 0u);
    EXPECT_NE(Cherche(base, "VDXPRO", 1, CleLibelleProduit(plein.substr(0, 33) + "9")), 0u);

    // By category then label: 10 and a code beginning with 3 is "S", 40 "V", 81 "T".
    EXPECT_EQ(Textes(base, "VDXVPRO", VDXVPRO::Categorie),
              (std::vector<std::string>{"M", "S", "T", "T", "V", "Z", "Z", "Z", "Z"}));
    EXPECT_EQ(Textes(base, "VDXVPRO", VDXVPRO::CodeCIP),
              (std::vector<std::string>{"3000001", "3000001", "3000003", "3000004", "2000002", "3000003", "3000004",
                                        "3000001", "2000002"}));
    EXPECT_EQ(Textes(base, "VDXVPRO", VDXVPRO::Suppression)[4], "A01012020");
    EXPECT_NE(Cherche(base, "VDXVPRO", 0, CleCategorie('Z', "DOLIPRANE 500MG.")), 0u);
    EXPECT_EQ(Textes(base, "VDXLABP", VDXLABP::CodeCIP),
              (std::vector<std::string>{"2000002", "3000001", "3000003", "3000004"}));

    // The dump gives the products with their points, and of VDXVPRO only
    // the record of its own; a second build from it gives the same base.
    VideBase(base, dossier_ / "vidage");
    const auto vidage = Fichiers(dossier_ / "vidage");
    EXPECT_EQ(vidage.size(), 2u);
    EXPECT_EQ(vidage.count("VDXLABP.tsv"), 0u);
    EXPECT_NE(vidage.at("VDXPRO.tsv").find("\n2000002\tDOLIPRANE 500MG.\t"), std::string::npos);
    ConstruitBase(dossier_ / "vidage", dossier_ / "base2");
    VideBase(dossier_ / "base2", dossier_ / "vidage2");
    EXPECT_EQ(Fichiers(dossier_ / "vidage2"), vidage);
    EXPECT_EQ(Textes(dossier_ / "base2", "VDXVPRO", VDXVPRO::Categorie), Textes(base, "VDXVPRO", VDXVPRO::Categorie));
}

// A killed build leaves its directory beside the base: the next build
// removes those of processes that no longer run, never a running one's.
// A base names the tables it was built of, so that a table missing from the
// sources is told from one that is empty in them; the names are the
// builder's own records, neither dumped nor taken back from an older dump.
TEST_F(Base, ABaseNamesTheTablesThatCameFromSources) {
    const fs::path sources = dossier_ / "sources", base = dossier_ / "base", vidage = dossier_ / "vidage";
    Ecrit(sources / "VDXYALD.tsv", "Code\tLibelle\n1\tPremier\n");
    Ecrit(sources / "VDXZICOU.tsv", "ClasseA\tClasseB\n");  // a source without records
    Ecrit(sources / "VDXDAT.tsv", "Numero\tTexte\n1\t01/06/2026\n100\tVDXPRO\n");
    const RapportConstruction rapport = ConstruitBase(sources, base);
    const std::vector<std::string> attendues{"VDXDAT", "VDXZICOU", "VDXYALD"};  // in the order of the catalogue
    EXPECT_EQ(TablesSourcees(base), attendues);
    EXPECT_EQ(std::ranges::count(rapport.sansSource, "VDXPRO"), 1);
    EXPECT_EQ(std::ranges::count(rapport.sansSource, "VDXZICOU"), 0);

    VideBase(base, vidage);
    EXPECT_EQ(Fichiers(vidage).at("VDXDAT.tsv"), "Numero\tTexte\n1\t01/06/2026\n");
    ConstruitBase(vidage, base, Options(true));
    EXPECT_EQ(TablesSourcees(base), (std::vector<std::string>{"VDXDAT", "VDXYALD"}));  // the empty one was not dumped
}

TEST_F(Base, ABuildRemovesWhatKilledBuildsLeft) {
    const fs::path base = dossier_ / "base";
    Ecrit(dossier_ / "bonnes" / "VDXYALD.tsv", "Code\tLibelle\n1\tPremier\n");
    const fs::path abandonnee = dossier_ / ".base.construction-999999999-abcdef";
    const fs::path enCours = dossier_ / (".base.construction-" + std::to_string(chemin::NumeroProcessus()) + "-ghijkl");
    fs::create_directories(abandonnee);
    fs::create_directories(enCours);
    Ecrit(abandonnee / "VDXYALD.DAT", "");
    ConstruitBase(dossier_ / "bonnes", base);
    EXPECT_FALSE(fs::exists(abandonnee));
    EXPECT_TRUE(fs::exists(enCours));
    EXPECT_EQ(Textes(base, "VDXYALD", VDXYALD::Libelle), std::vector<std::string>{"Premier"});
}

TEST_F(Base, AFailedBuildLeavesTheBaseAsItWas) {
    const fs::path base = dossier_ / "base";
    Ecrit(dossier_ / "bonnes" / "VDXYALD.tsv", "Code\tLibelle\n1\tPremier\n");
    ConstruitBase(dossier_ / "bonnes", base);

    Ecrit(dossier_ / "mauvaises" / "VDXYALD.tsv", "Code\tLibelle\n2\tDeux\n2\tDeux encore\n");
    try {
        ConstruitBase(dossier_ / "mauvaises", base, Options(true));
        ADD_FAILURE() << "a duplicate first key was accepted";
    } catch (const ErreurSource& e) {
        EXPECT_STREQ(e.what(), "VDXYALD.tsv:3: cle deja presente dans VDXYALD.NDX");
    }
    EXPECT_THROW(ConstruitBase(dossier_ / "bonnes", base), ErreurSource);  // not replaced unless asked
    EXPECT_EQ(Textes(base, "VDXYALD", VDXYALD::Libelle), std::vector<std::string>{"Premier"});
    // Nothing is left beside it but the sources.
    size_t entrees = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(dossier_.chemin())) ++entrees;
    EXPECT_EQ(entrees, 3u);

    Ecrit(base / "notes.txt", "");
    EXPECT_THROW(ConstruitBase(dossier_ / "bonnes", base, Options(true)), ErreurSource);
    EXPECT_TRUE(fs::exists(base / "notes.txt"));
    EXPECT_THROW(ConstruitBase(dossier_ / "inconnu", dossier_ / "autre"), ErreurSource);
    Ecrit(dossier_ / "etrange" / "VDXFOO.tsv", "Code\n");
    EXPECT_THROW(ConstruitBase(dossier_ / "etrange", dossier_ / "autre"), ErreurSource);
}

TEST_F(Base, AFurtherKeyAlreadyHeldLeavesTheRecordOutOfItWithAWarning) {
    const std::string libelle(30, 'C');  // classes alike in the first 26 bytes of their folded label
    Ecrit(dossier_ / "sources" / "VDXCLA.tsv",
          "CodeClasse\tLibelle\tLibelleCle\nA01\tUn\t" + libelle + "1\nA02\tDeux\t" + libelle + "2\n");
    const RapportConstruction rapport = ConstruitBase(dossier_ / "sources", dossier_ / "base");
    EXPECT_EQ(rapport.fiches, 3u);  // the two classes, and VDXDAT's record naming VDXCLA
    ASSERT_EQ(rapport.avertissements.size(), 1u);
    EXPECT_EQ(rapport.avertissements[0], "VDXCLA.tsv:3: cle 5 deja presente, la fiche n'y est pas");
    EXPECT_EQ(LitTable(dossier_ / "base", Dispo("VDXCLA")).size(), 2u);
}

TEST(BaseDeTest, BuildsFromRecordsByFieldName) {
    essai::BaseDeTest base;
    base.Ajoute("VDXYALD", {{"Code", "1"}, {"Libelle", "Accident vasculaire cérébral invalidant"}})
        .AjouteAvecCles("VDXYALD", {{"Code", 2}, {"Libelle", "Insuffisance cardiaque"}}, {{0, "99"}});
    std::vector<Enregistrement> fiches = LitTable(base.Repertoire(), Dispo("VDXYALD"));
    ASSERT_EQ(fiches.size(), 2u);
    EXPECT_EQ(Fiche(fiches[0].fiche).Texte(VDXYALD::Libelle), "Accident vasculaire c\xE9r\xE9" "bral invalidant");
    EXPECT_EQ(Fiche(fiches[1].fiche).Texte(VDXYALD::Code), "2");  // under the key given, "99"

    // More records: the base is built again in the same place.
    base.Ajoute("VDXYALD", {{"Code", "3"}, {"Libelle", "Diab\xC3\xA8te"}});
    fiches = LitTable(base.Repertoire(), Dispo("VDXYALD"));
    ASSERT_EQ(fiches.size(), 3u);
    EXPECT_EQ(Fiche(fiches[1].fiche).Texte(VDXYALD::Libelle), "Diab\xE8te");

    EXPECT_THROW(base.Ajoute("VDXYALD", {{"Prix", "1"}}), ErreurSource);
    EXPECT_THROW(base.Ajoute("VDXYALD", {{"Code", "100"}}), ErreurSource);
    EXPECT_THROW(base.Ajoute("PRO", {{"CodeCIP", "3000001"}}), ErreurSource);

    essai::BaseDeTest medecin(Emplacement::Medecin);
    medecin.Ajoute("PRO", {{"CodeCIP", "3000001"}, {"Libelle", "Mon produit"}, {"Commentaire", "à jeun"}});
    medecin.Ajoute("POSO", {{"CodePosologie", "#3000001000"}, {"DoseMin", 0.5}, {"CodeUnite", -1}});
    EXPECT_TRUE(fs::exists(fs::path(medecin.Repertoire()) / "PRO.NDX"));
    EXPECT_FALSE(fs::exists(fs::path(medecin.Repertoire()) / "VDXPRO.DAT"));
    const std::vector<Enregistrement> poso = LitTable(medecin.Repertoire(), Dispo("POSO"));
    ASSERT_EQ(poso.size(), 1u);
    EXPECT_EQ(Fiche(poso[0].fiche).Reel(POSO::DoseMin), 0.5f);
    EXPECT_EQ(Fiche(poso[0].fiche).Entier(POSO::CodeUnite), -1);
}

}  // namespace
}  // namespace vdx
