// The update's reading of its files and its listing of a directory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

#include "maj/etat.h"
#include "maj/lecture.h"
#include "maj/liste.h"
#include "maj/marqueurs.h"
#include "maj/rangees.h"
#include "store/layouts.h"
#include "tests/support/dossier_essai.h"
#include "tests/support/essai_vocabulaire.h"

namespace vdx {
namespace {

using maj::Jeton;

// The tokens of a text, each as "M:", "C:" and its text, until the end.
std::vector<std::string> Jetons(const std::string& texte, size_t tampon = maj::TamponMaj) {
    std::unique_ptr<FILE, int (*)(FILE*)> f(std::tmpfile(), &std::fclose);
    std::fwrite(texte.data(), 1, texte.size(), f.get());
    std::rewind(f.get());
    maj::LecteurMaj lecteur(f.get(), tampon);
    std::vector<std::string> jetons;
    std::string jeton;
    for (Jeton j; (j = lecteur.LireChamp(jeton)) != Jeton::Fin;)
        jetons.push_back((j == Jeton::Marqueur ? "M:" : "C:") + jeton);
    EXPECT_EQ(lecteur.OctetsLus(), texte.size());
    return jetons;
}

TEST(LectureMaj, MarkersFieldsAndLineEnds) {
    using V = std::vector<std::string>;
    EXPECT_EQ(Jetons("|DEBUT|01/02/2026@x@\r\n|LABF|SANO@@Sanofi@\r\n|FIN|"),
              (V{"M:|DEBUT|", "C:01/02/2026", "C:x", "M:|LABF|", "C:SANO", "C:", "C:Sanofi", "M:|FIN|"}));
    // A lone LF is a line end too; a CR inside a field stays in it.
    EXPECT_EQ(Jetons("a@\nb\r\nc@"), (V{"C:a", "C:b\r\nc"}));
    // Cut by the end: what was read.
    EXPECT_EQ(Jetons("|LAB"), (V{"M:|LAB"}));
    EXPECT_EQ(Jetons("abc"), (V{"C:abc"}));
    EXPECT_EQ(Jetons(""), V{});
    EXPECT_THROW(Jetons(std::string(20, 'x') + "@", 10), maj::JetonTropLong);
    EXPECT_EQ(Jetons(std::string(9, 'x') + "@", 10), (V{"C:" + std::string(9, 'x')}));
}

TEST(LectureMaj, SkippingTheRestOfALine) {
    std::unique_ptr<FILE, int (*)(FILE*)> f(std::tmpfile(), &std::fclose);
    const std::string texte = "a@b@c@\r\nd@e\nf@";
    std::fwrite(texte.data(), 1, texte.size(), f.get());
    std::rewind(f.get());
    maj::LecteurMaj lecteur(f.get(), maj::TamponMaj);
    std::string jeton;
    lecteur.LireChamp(jeton);
    lecteur.SauteLigne();
    ASSERT_EQ(lecteur.LireChamp(jeton), Jeton::Champ);
    EXPECT_EQ(jeton, "d");
    lecteur.SauteLigne();  // up to the lone LF
    lecteur.LireChamp(jeton);
    EXPECT_EQ(jeton, "f");
}

TEST(LectureMaj, NumbersOfFields) {
    EXPECT_FLOAT_EQ(maj::LireReel("1,5"), 1.5f);
    EXPECT_FLOAT_EQ(maj::LireReel("-0.25"), -0.25f);
    EXPECT_FLOAT_EQ(maj::LireReel("1 2"), 2.f);
    EXPECT_FLOAT_EQ(maj::LireReel("12abc3"), 123.f);
    EXPECT_FLOAT_EQ(maj::LireReel(""), 0.f);
    EXPECT_FLOAT_EQ(maj::LireReel("3,25\t7"), 7.f);
    EXPECT_EQ(maj::LireEntier("-12x"), -12);
    EXPECT_EQ(maj::LireEntier(" 42"), 42);
    EXPECT_EQ(maj::LireEntier("x1"), 0);
    EXPECT_EQ(maj::LireEntier("99999999999"), 2147483647);
}

TEST(ListeMaj, TheDateOfTheBaseAndTheMarkers) {
    EXPECT_EQ(maj::TitreDeLaDate("02/01/2009"), "RE090102");
    EXPECT_EQ(maj::TitreDeLaDate(""), "RE010101");
    EXPECT_EQ(maj::TitreDeLaDate("2x/0y/2009"), "RE090121");  // a missing digit keeps the template's
    EXPECT_EQ(maj::IndexDuMarqueur("|LABF|"), 1);
    EXPECT_EQ(maj::IndexDuMarqueur("|ZICOU|"), 43);
    EXPECT_EQ(maj::IndexDuMarqueur("|LABF"), std::nullopt);
    maj::ChoisitTypeMaj(260);
    EXPECT_EQ(maj::etatMaj().TypeMaj, 4);
    maj::ChoisitTypeMaj(1);
    EXPECT_EQ(maj::etatMaj().TypeMaj, 1);
    maj::ChoisitTypeMaj(4);
}

TEST(RangeesMaj, EachMarkerHasItsRowAndEachFieldIsAFieldOfItsTable) {
    for (const maj::Marqueur& m : maj::Marqueurs) {
        const maj::Rangee* r = maj::RangeeDuMarqueur(m.texte);
        ASSERT_NE(r, nullptr) << m.texte;
        const Disposition& d = DispositionDe(*TableNommee(r->table));
        for (const maj::ChampRangee& c : maj::ChampsDe(*r)) {
            if (c.genre == maj::ChampRangee::Partie) {
                EXPECT_LT(c.decalage, d.parties.size()) << r->marqueur;
                continue;
            }
            if (c.genre != maj::ChampRangee::Texte && c.genre != maj::ChampRangee::Entier &&
                c.genre != maj::ChampRangee::Reel)
                continue;
            const NatureChamp nature = c.genre == maj::ChampRangee::Texte    ? NatureChamp::Texte
                                       : c.genre == maj::ChampRangee::Entier ? NatureChamp::Entier
                                                                             : NatureChamp::Reel;
            EXPECT_TRUE(std::ranges::any_of(d.champs, [&](const Champ& champ) {
                return champ.decalage == c.decalage && champ.nature == nature;
            })) << r->marqueur << " at " << c.decalage;
        }
    }
    // The rows' lengths, as the files carry them.
    for (const auto& [marqueur, champs] : std::initializer_list<std::pair<const char*, size_t>>{
             {"|PRO|", 29}, {"|ADDON|", 26}, {"|IDPRO|", 34}, {"|PPROE|", 30}, {"|VAMM|", 16}, {"|VAMPT|", 16},
             {"|VAMST|", 30}, {"|VCOMC|", 9}, {"|ZICOU|", 28}, {"|ZICLA|", 7}})
        EXPECT_EQ(maj::ChampsDe(*maj::RangeeDuMarqueur(marqueur)).size(), champs) << marqueur;
}

TEST(ListeMaj, NewerFilesInTheOrderOfTheirNames) {
    essai::DossierEssai dossier;
    for (const char* nom : {"RE090102.VDX", "re090101.vdx", "RE090101.TXT", "RE081231.VDX", "RE090103.VDX"})
        std::ofstream(dossier.Chemin(nom)) << nom;
    const maj::ListeMaj liste = maj::ListeFichiersMaj(dossier.Chemin(""), "RE090101");
    ASSERT_EQ(liste.fichiers.size(), 2u);  // the same date and an older one are not taken
    EXPECT_TRUE(liste.fichiers[0].ends_with("RE090102.VDX"));
    EXPECT_TRUE(liste.fichiers[1].ends_with("RE090103.VDX"));
    EXPECT_EQ(liste.tailleTotale, 24);
    EXPECT_EQ(maj::ListeFichiersMaj(dossier.Chemin("x"), "RE010101").fichiers.size(), 0u);
    // A title of another length ends the listing where it stands by name.
    std::ofstream(dossier.Chemin("RE0901025.VDX")) << "x";
    EXPECT_EQ(maj::ListeFichiersMaj(dossier.Chemin(""), "RE010101").fichiers.size(), 3u);
}

TEST(ListeMaj, At45FilesTheRestWaits) {
    essai::DossierEssai dossier;
    for (int jour = 1; jour <= 28; ++jour)
        for (const char* mois : {"01", "02"}) {
            char nom[16];
            std::snprintf(nom, sizeof nom, "RE10%s%02d.VDX", mois, jour);
            std::ofstream(dossier.Chemin(nom)) << "x";
        }
    const maj::ListeMaj liste = maj::ListeFichiersMaj(dossier.Chemin(""), "RE010101");
    ASSERT_EQ(liste.fichiers.size(), 45u);
    EXPECT_TRUE(liste.fichiers.back().ends_with("RE100217.VDX"));
}

class IsMaj : public essai::SurUneBase<IsMaj> {
public:
    static void Remplit(essai::BaseDeTest&) {}  // the date of the base is 01/06/2026
};

TEST_F(IsMaj, CountsTheFilesNewerThanTheBase) {
    essai::DossierEssai dossier;
    for (const char* nom : {"RE260601.VDX", "RE260602.VDX", "RE260701.vdx"}) std::ofstream(dossier.Chemin(nom)) << "x";
    const std::string sans = dossier.Chemin("");
    const std::string avec = sans.substr(0, sans.size() - 1);
    EXPECT_EQ(IsMaj_Vdx(sans.c_str()), 2);
    EXPECT_EQ(IsMaj_Vdx(avec.c_str()), 2);
    EXPECT_EQ(IsMaj_Vdx((sans + "absent").c_str()), 0);
    EXPECT_EQ(IsMaj_Vdx(nullptr), -10);
    EXPECT_EQ(IsMaj_Vdx(""), -10);
    EXPECT_EQ(GetMajError_Vdx(7), 0);
    EXPECT_EQ(SetTypeMaj_Vdx(2), 1);
    SetTypeMaj_Vdx(4);
    DeConnection2_Vdx();
    EXPECT_EQ(IsMaj_Vdx(sans.c_str()), -2);
}

}  // namespace
}  // namespace vdx
