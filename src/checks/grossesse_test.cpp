// The pregnancy control: which row of the pregnancy table a product gets
// at a term, its wording, and the rows delivered by ControleGrossesseAFSSAPS.
#include "checks/grossesse.h"
#include "exports/internes.h"

#include <gtest/gtest.h>

#include "platform/codepage.h"
#include "platform/hote.h"
#include "tests/support/composition_essai.h"
#include "session/cadre.h"
#include "session/messages.h"
#include "session/resultat.h"

namespace vdx {
namespace {

using codepage::VersUtf8;
using essai::BaseDeTest;

// A row of the pregnancy table.
struct Ligne {
    int32_t substance;
    int32_t periode = 0;
    int32_t niveau = 0;
    const char* voie = "";
    int32_t partenaires[3] = {};
    const char* rang = "00";
    const char* libelle = "";
    const char* texte = "";
};

void AjouteLigne(BaseDeTest& b, const Ligne& l) {
    b.Ajoute("VDXYGRSS", {{"CodeSubstance", l.substance}, {"Rang", l.rang}, {"CodeVoie", l.voie},
                          {"Partenaire1", l.partenaires[0]}, {"Partenaire2", l.partenaires[1]},
                          {"Partenaire3", l.partenaires[2]}, {"LibelleGrossesse", l.libelle},
                          {"NiveauGrossesse", l.niveau}, {"PeriodeGrossesse", l.periode}, {"TexteGrossesse", l.texte}});
}

// A product of `substances` in that order, given by `voies`.
void AjouteProduit(BaseDeTest& b, const std::string& cip, std::initializer_list<int32_t> substances,
                   std::initializer_list<const char*> voies = {"ORAL"}) {
    int rang = 0;
    for (int32_t s : substances)
        b.Ajoute("VDXVCOMP", {{"CodeCIP", cip}, {"Rang", "00" + std::to_string(++rang)}, {"CodeSubstance", s}});
    for (const char* v : voies) b.Ajoute("VDXIDPVO", {{"CodeCIP", cip}, {"CodeVoie", v}});
}

class Grossesse : public essai::SurUneBase<Grossesse> {
public:
    static void Remplit(BaseDeTest& b) {
        essai::RemplitComposition(b);  // 3000001: 2202 then 4242, ORAL and RECT
        AjouteLigne(b, {.substance = 2202, .niveau = 1});
        // Periods 0 to 4 and an unknown one; levels 0 to 4 and an unknown one.
        for (int32_t n : {0, 1, 2, 3, 4, 5, 7}) {
            AjouteLigne(b, {.substance = 5100 + n, .periode = n});
            AjouteProduit(b, std::to_string(3100000 + n), {5100 + n});
            AjouteLigne(b, {.substance = 5200 + n, .niveau = n});
            AjouteProduit(b, std::to_string(3200000 + n), {5200 + n});
        }
        // Routes.
        AjouteLigne(b, {.substance = 5301, .voie = "RECT"});
        AjouteProduit(b, "3300001", {5301}, {"ORAL", "RECT"});
        AjouteLigne(b, {.substance = 5302, .voie = "IV"});
        AjouteProduit(b, "3300002", {5302});
        AjouteLigne(b, {.substance = 5303});
        AjouteProduit(b, "3300003", {5303}, {"IV"});
        AjouteProduit(b, "3300004", {5303}, {});
        AjouteLigne(b, {.substance = 5305, .voie = "IVD"});
        AjouteProduit(b, "3300005", {5305}, {"IV", "IVD"});
        // Partners.
        AjouteLigne(b, {.substance = 5401, .partenaires = {5402, 0, 0}});
        AjouteLigne(b, {.substance = 5402, .partenaires = {0, 0, 5401}});
        AjouteLigne(b, {.substance = 5403, .niveau = 2});
        AjouteProduit(b, "3400001", {5401, 5402, 5403});
        AjouteLigne(b, {.substance = 5404, .partenaires = {0, 5404, 0}});
        AjouteProduit(b, "3400002", {5404});
        // Synonyms: 5501 has no row of its own; 5503 is read before its synonym.
        b.Ajoute("VDXWSYNC", {{"CodeSubstance", 5501}, {"CodeSynonyme", 5502}})
            .Ajoute("VDXWSYNC", {{"CodeSubstance", 5503}, {"CodeSynonyme", 5504}});
        AjouteLigne(b, {.substance = 5502});
        AjouteLigne(b, {.substance = 5503});
        AjouteLigne(b, {.substance = 5504});
        AjouteProduit(b, "3500001", {5501});
        AjouteProduit(b, "3500002", {5503});
        // The first row that passes.
        AjouteLigne(b, {.substance = 5601, .periode = 1});
        AjouteLigne(b, {.substance = 5602});
        AjouteProduit(b, "3600001", {5601, 5602});
        AjouteLigne(b, {.substance = 5603, .periode = 1});
        AjouteLigne(b, {.substance = 5603, .rang = "01"});
        AjouteProduit(b, "3600002", {5603});
        AjouteLigne(b, {.substance = 5604, .rang = "05"});
        AjouteProduit(b, "3600003", {5604});
        AjouteLigne(b, {.substance = 5606});
        AjouteProduit(b, "3600004", {5605});  // no row: the next key is 5606's
        // Texts of the marketing authorisation.
        AjouteLigne(b, {.substance = 5700});
        for (const char* cip : {"3700001", "3700002", "3700003"}) AjouteProduit(b, cip, {5700});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "3700001"}, {"Rtf4", "{\\rtf1 quatre}"}, {"Texte5", "cinq"},
                              {"Rtf5", "{\\rtf1 Grossesse\\par fi\\'e8vre}"}, {"Texte6", "six"}});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "3700002"}, {"Texte5", "cinq"}, {"Rtf6", "{\\rtf1 six}"}});
        // A full row.
        AjouteLigne(b, {.substance = 5800, .periode = 3, .niveau = 3, .libelle = "Tératogène",
                        .texte = "À éviter au 3e trimestre"});
        AjouteProduit(b, "3800001", {5800});
        b.Ajoute("VDXVAMPT", {{"CodeCIP", "3800001"}, {"Rtf5", "{\\rtf1 Voir le RCP}"}});
    }

protected:
    static std::vector<AlerteGrossesse> Alertes(const std::string& cip, int32_t terme) {
        return AlertesGrossesse(cip, terme);
    }
    // The substance whose row the product gets, 0 for none.
    static int32_t Substance(const std::string& cip, int32_t terme = 0) {
        const auto alertes = Alertes(cip, terme);
        EXPECT_LE(alertes.size(), 1u) << cip;
        return alertes.empty() ? 0 : alertes[0].CodeSubstance;
    }
    // The flat text of a call in memory mode, or its code.
    static std::string Plat(const char* code, int32_t terme) {
        const int32_t n = ControleGrossesseAFSSAPS(code, terme, nullptr);
        return n > 0 ? Memoire() : std::to_string(n);
    }
};

const Gabarit GabaritAlerte{TypeChamp::Texte,  TypeChamp::Texte,  TypeChamp::Texte,  TypeChamp::Texte,
                            TypeChamp::Texte,  TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Entier,
                            TypeChamp::Entier, TypeChamp::Entier, TypeChamp::Texte,  TypeChamp::Texte,
                            TypeChamp::Texte,  TypeChamp::Texte};

// The host's array of alerts, freed at the end.
struct Sortie {
    SAFEARRAY* tableau = essai::TableauDeFiches(14);
    ~Sortie() {
        if (!tableau) return;
        VideTableau(tableau, GabaritAlerte);
        SafeArrayDestroy(tableau);
    }
    int32_t Appelle(const char* code, int32_t terme) { return ControleGrossesseAFSSAPS(code, terme, &tableau); }
    unsigned Nombre() const { return hote::NombreElements(tableau); }
    void* Fiche() const { return tableau->pvData; }
    std::string Texte(uint32_t champ) const { return essai::Texte(*hote::Chaine(Fiche(), champ)); }
    int32_t Entier(uint32_t champ) const { return hote::Entier(Fiche(), champ); }
};

TEST_F(Grossesse, EachPeriodCoversItsWeeksAndTermZeroCoversAll) {
    // The periods of products 3100000 + p whose row applies at a term.
    const auto periodes = [](int32_t terme) {
        std::vector<int32_t> p;
        for (int32_t n : {0, 1, 2, 3, 4, 5})
            if (Substance(std::to_string(3100000 + n), terme)) p.push_back(n);
        return p;
    };
    using V = std::vector<int32_t>;
    EXPECT_EQ(periodes(0), (V{0, 1, 2, 3, 4}));
    EXPECT_EQ(periodes(1), (V{0, 1}));
    EXPECT_EQ(periodes(13), (V{0, 1}));
    EXPECT_EQ(periodes(14), (V{0, 2, 4}));
    EXPECT_EQ(periodes(26), (V{0, 2, 4}));
    EXPECT_EQ(periodes(27), (V{0, 3, 4}));
    EXPECT_EQ(periodes(39), (V{0, 3, 4}));
    EXPECT_EQ(periodes(40), V{});  // beyond the pregnancy, even for the whole of it
    const char* textes[] = {"Toute la grossesse", "1er trimestre", "2eme trimestre", "3e trimestre",
                            "A partir du 2eme trimestre"};
    for (int32_t n = 0; n < 5; ++n) EXPECT_EQ(Alertes(std::to_string(3100000 + n), 0).at(0).Periode, textes[n]);
}

TEST_F(Grossesse, EachLevelHasItsNameColourAndSentence) {
    struct Attendu {
        const char* nom;
        const char* couleur;
        const char* phrase;
    };
    const Attendu attendus[] = {
        {"Possible", "Vert",
         "L'utilisation du médicament est possible pendant la grossesse car les données disponibles sont "
         "rassurantes"},
        {"Envisageable", "Vert clair",
         "L'utilisation du médicament est envisageable pendant la grossesse car les données disponibles sont "
         "globalement rassurantes et doivent etre enrichies"},
        {"A éviter par prudence", "Jaune",
         "L'utilisation du médicament est à éviter par prudence pendant la grossesse car les données disponibles "
         "sont rassurantes mais encore parcellaires"},
        {"Déconseillé", "Orange",
         "L'utilisation du médicament est déconseillée pendant la grossesse en raison d'une suspicion d'effet "
         "malformatif ou foetotoxique, mais elle n'est pas formellement proscrite si le bénéfice thérapeutique le "
         "justifie"},
        {"Contre-indiqué", "Rouge",
         "L'utilisation du médicament est formellement proscrite ( contre-indiquée) pendant la grossesse en raison "
         "d'un risque malformatif ou foetotoxique prouvé dans l'espèce humaine. Une contraception efficace est "
         "obligatoire pour prescrire ce médicament"},
    };
    for (int32_t n = 0; n < 5; ++n) {
        const AlerteGrossesse a = Alertes(std::to_string(3200000 + n), 0).at(0);
        EXPECT_EQ(a.NiveauGrossesse, n);
        EXPECT_EQ(VersUtf8(a.NomNiveau), attendus[n].nom);
        EXPECT_EQ(a.Couleur, attendus[n].couleur);
        EXPECT_EQ(VersUtf8(a.PhraseNiveau), attendus[n].phrase) << n;
    }
    // A level the table does not know keeps its row, without wording.
    const AlerteGrossesse inconnu = Alertes("3200007", 0).at(0);
    EXPECT_EQ(inconnu.NiveauGrossesse, 7);
    EXPECT_EQ(inconnu.NomNiveau + inconnu.Couleur + inconnu.PhraseNiveau, "");
}

TEST_F(Grossesse, ARowOfOneRouteIsForThatRouteAlone) {
    EXPECT_EQ(Substance("3300001"), 5301);  // through the product's second route
    EXPECT_EQ(Substance("3300002"), 0);     // another route
    EXPECT_EQ(Substance("3300003"), 5303);  // a row for all routes
    EXPECT_EQ(Substance("3300004"), 0);     // a product without route is never looked up
    EXPECT_EQ(Substance("3300005"), 0);     // the route IVD is taken into IV, which holds it
}

TEST_F(Grossesse, ARowWithAPartnerNeverPasses) {
    // Both partners are in the product, and still their rows are passed by.
    const auto alertes = Alertes("3400001", 0);
    ASSERT_EQ(alertes.size(), 1u);
    EXPECT_EQ(alertes[0].CodeSubstance, 5403);
    EXPECT_EQ(alertes[0].Partenaire1 + alertes[0].Partenaire2 + alertes[0].Partenaire3, 0);
    EXPECT_EQ(Substance("3400002"), 0);  // its own partner
}

TEST_F(Grossesse, ASynonymOfAComponentGivesItsRow) {
    EXPECT_EQ(Substance("3500001"), 5502);
    EXPECT_EQ(Substance("3500002"), 5503);  // the component before its synonym
}

TEST_F(Grossesse, AProductGetsOneRowTheFirstThatPasses) {
    EXPECT_EQ(Substance("3600001", 0), 5601);
    EXPECT_EQ(Substance("3600001", 20), 5602);  // the first one is for the first trimester
    EXPECT_EQ(Substance("3600002", 20), 0);     // only the first row of a substance is read
    EXPECT_EQ(Substance("3600003"), 5604);      // whatever its rank
    EXPECT_EQ(Substance("3600004"), 0);         // the key found is another substance's
    ReconnecteEnTableau();
    Sortie s;
    EXPECT_EQ(s.Appelle("3600001", 0), 1);
    EXPECT_EQ(s.Nombre(), 1u);
}

TEST_F(Grossesse, TheProductTextIsItsPregnancyChapterInRtf) {
    EXPECT_EQ(Alertes("3700001", 0).at(0).TexteProduit, "Grossesse\r\nfi\xE8vre");
    EXPECT_EQ(Alertes("3700002", 0).at(0).TexteProduit, "Information provisoirement indisponible.");
    EXPECT_EQ(Alertes("3700003", 0).at(0).TexteProduit, "");  // no record
}

TEST_F(Grossesse, TheRowGoesOutInEveryMode) {
    const std::string phrase = messages::PhraseDeconseille;
    EXPECT_EQ(VersUtf8(Plat("3800001", 30)), "3800001@inconnu !@Tératogène@" + VersUtf8(phrase) +
                                                 "@Voir le RCP@5800@0@0@0@3@Orange@Déconseillé@3e trimestre@"
                                                 "À éviter au 3e trimestre");

    ReconnecteEnTableau();
    Sortie s;
    ASSERT_EQ(s.Appelle("3800001", 30), 1);
    ASSERT_EQ(s.Nombre(), 1u);
    EXPECT_EQ(s.Texte(0), "3800001");
    EXPECT_EQ(s.Texte(1), "inconnu !");
    EXPECT_EQ(VersUtf8(s.Texte(2)), "Tératogène");
    EXPECT_EQ(s.Texte(3), phrase);
    EXPECT_EQ(s.Texte(4), "Voir le RCP");
    const int32_t entiers[] = {5800, 0, 0, 0, 3};
    for (uint32_t c = 0; c < 5; ++c) EXPECT_EQ(s.Entier(5 + c), entiers[c]) << c;
    EXPECT_EQ(s.Texte(10), "Orange");
    EXPECT_EQ(VersUtf8(s.Texte(11)), "Déconseillé");
    EXPECT_EQ(s.Texte(12), "3e trimestre");
    EXPECT_EQ(VersUtf8(s.Texte(13)), "À éviter au 3e trimestre");

    // A term beyond the pregnancy empties the array.
    EXPECT_EQ(s.Appelle("3800001", 40), 0);
    EXPECT_EQ(s.Nombre(), 0u);

    ReconnecteEnTableau(1);
    ASSERT_EQ(s.Appelle("3800001", 30), 1);
    const BSTR nom = *hote::Chaine(s.Fiche(), 11);
    ASSERT_EQ(SysStringLen(nom), 11u);
    EXPECT_EQ(nom[1], u'\u00E9');
}

TEST_F(Grossesse, BadArgumentsAndUnknownProducts) {
    EXPECT_EQ(Plat(nullptr, 0), "-10");
    EXPECT_EQ(Plat("300000", 0), "-13");
    EXPECT_EQ(Plat("3800001", -1), "-20");
    ASSERT_EQ(SetString_Vdx("avant"), 1);
    EXPECT_EQ(ControleGrossesseAFSSAPS("3800001", 40, nullptr), 0);
    EXPECT_EQ(Memoire(), "");
    EXPECT_EQ(Plat("3999998", 0), "0");

    ActiveCIP13_Vdx(1);
    EXPECT_EQ(Plat("3400930000011", 0).substr(0, 19), "3000001@inconnu !@@");  // mapped to 3000001
    EXPECT_EQ(Plat("3400930000999", 0), "-13");                                // no mapping
    ActiveCIP13_Vdx(0);

    ReconnecteEnTableau();
    EXPECT_EQ(ControleGrossesseAFSSAPS("3800001", 0, nullptr), VDX_ARGUMENT3);
    SAFEARRAY* petit = essai::TableauDeFiches(7);
    EXPECT_EQ(ControleGrossesseAFSSAPS("3800001", 0, &petit), VDX_ARGUMENT3);
    SafeArrayDestroy(petit);
    EXPECT_EQ(ControleGrossesseAFSSAPS("3800001", -5, nullptr), VDX_ARGUMENT2);  // the term comes first

    session().BaseFichiers = "/pas/de/base/";
    Sortie s;
    EXPECT_EQ(s.Appelle("3800001", 0), VDX_ECHEC_MAGASIN);
    EXPECT_EQ(session().FichierErreur, "VDXYGRSS.DAT");
    DeConnection2_Vdx();
    EXPECT_EQ(s.Appelle("3800001", 0), VDX_NON_CONNECTE);
}

TEST_F(Grossesse, TablesHeldByTheCallerStayOpen) {
    TablesOuvertes tables = TablesGrossesse();
    session().BaseFichiers = "/pas/de/base/";  // no second open could succeed
    EXPECT_EQ(AlertesGrossesse("3500001", 0).at(0).CodeSubstance, 5502);
    EXPECT_EQ(AlertesGrossesse("3700001", 0).at(0).TexteProduit, "Grossesse\r\nfi\xE8vre");
    EXPECT_NO_THROW(tables.Ferme());
    EXPECT_THROW(AlertesGrossesse("3500001", 0), Echec);
}

}  // namespace
}  // namespace vdx
