// The prescription lines by common name as the import makes them: the
// wording of a line from a speciality's components, the reasons for none,
// and codes that stay from one extract to the next.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_dci.h"

namespace vdx::import {
namespace {

// Texts of the public files are code page 1252: "\xC9" is "É".
Composant Substance(std::string nom, std::string dosage, std::string nature = "SA", std::string lien = "1",
                    std::string reference = "un comprim\xE9") {
    Composant c;
    c.cis = "60000000";
    c.element = "comprim\xE9";
    c.nom = std::move(nom);
    c.dosage = std::move(dosage);
    c.reference = std::move(reference);
    c.nature = std::move(nature);
    c.lien = std::move(lien);
    return c;
}

Specialite Forme(std::string forme, std::vector<std::string> voies = {"orale"}) {
    Specialite s;
    s.cis = "60000000";
    s.forme = std::move(forme);
    s.voies = std::move(voies);
    s.procedure = "Proc\xE9" "dure nationale";
    return s;
}

LigneOuMotif Ligne(const Specialite& s, const std::vector<Composant>& composants) {
    std::vector<const Composant*> c;
    for (const Composant& x : composants) c.push_back(&x);
    return LigneDeSpecialite(s, ComposantsExprimes(c));
}

TEST(LignesDC, DosagesInThePrescribersUnit) {
    EXPECT_EQ(DosageDeLigne("1000 mg"), "1 g");
    EXPECT_EQ(DosageDeLigne("1 000 mg"), "1 g");
    EXPECT_EQ(DosageDeLigne("1 g"), "1 g");
    EXPECT_EQ(DosageDeLigne("1500 mg"), "1,5 g");
    EXPECT_EQ(DosageDeLigne("0,5 g"), "500 mg");
    EXPECT_EQ(DosageDeLigne("125,00 mg"), "125 mg");
    EXPECT_EQ(DosageDeLigne("62,5 mg"), "62,5 mg");
    EXPECT_EQ(DosageDeLigne("1234 mg"), "1234 mg");  // not a round number of grams
    EXPECT_EQ(DosageDeLigne("2000 microgrammes"), "2 mg");
    EXPECT_EQ(DosageDeLigne("50 microgrammes"), "50 microgrammes");
    EXPECT_EQ(DosageDeLigne("35 mg \xE9quivalent \xE0 32,5 mg d'acide"), "35 mg");
    EXPECT_EQ(DosageDeLigne("1,5 g (soit 0,75 %)"), "1,5 g");
    EXPECT_EQ(DosageDeLigne(""), std::nullopt);
    EXPECT_EQ(DosageDeLigne("mg"), std::nullopt);
    EXPECT_EQ(DosageDeLigne("0 mg"), std::nullopt);
    EXPECT_EQ(DosageDeLigne("500"), std::nullopt);
}

TEST(LignesDC, TheWordingOfALine) {
    // A salt is shown as its therapeutic fraction, without its water;
    // substances sort by name, an acid by its own; coating and scoring aside.
    const auto augmentin = Ligne(Forme("poudre pour suspension buvable"),
                                 {Substance("AMOXICILLINE TRIHYDRAT\xC9" "E", ""),
                                  Substance("AMOXICILLINE ANHYDRE", "1000 mg", "FT"),
                                  Substance("CLAVULANATE DE POTASSIUM", "", "SA", "2"),
                                  Substance("ACIDE CLAVULANIQUE", "125,00 mg", "FT", "2")});
    ASSERT_TRUE(augmentin.ligne);
    EXPECT_EQ(augmentin.ligne->libelle, "AMOXICILLINE 1 g + ACIDE CLAVULANIQUE 125 mg, poudre pour suspension buvable");
    const auto coumadine = Ligne(Forme("comprim\xE9 pellicul\xE9 s\xE9" "cable"), {Substance("WARFARINE SODIQUE", "2 mg")});
    EXPECT_EQ(coumadine.ligne->libelle, "WARFARINE SODIQUE 2 mg, comprim\xE9");
    // "(e)" agrees with the form; the database's inverted names read in order.
    EXPECT_EQ(Ligne(Forme("g\xE9lule gastro-r\xE9sistant(e)"), {Substance("OM\xC9PRAZOLE", "20 mg")}).ligne->libelle,
              "OM\xC9PRAZOLE 20 mg, g\xE9lule gastro-r\xE9sistante");
    EXPECT_EQ(Ligne(Forme("comprim\xE9 effervescent(e) s\xE9" "cable"), {Substance("PARAC\xC9TAMOL", "1000 mg")}).ligne->libelle,
              "PARAC\xC9TAMOL 1 g, comprim\xE9 effervescent");
    EXPECT_EQ(Ligne(Forme("comprim\xE9"), {Substance("C\xC9LIPROLOL (CHLORHYDRATE DE)", "200 mg"),
                                            Substance("ESTRADIOL (VAL\xC9RATE D')", "1 mg", "SA", "2")})
                  .ligne->libelle,
              "CHLORHYDRATE DE C\xC9LIPROLOL 200 mg + VAL\xC9RATE D'ESTRADIOL 1 mg, comprim\xE9");
    // Only the last parenthesis of a name is its inverted head.
    EXPECT_EQ(Ligne(Forme("poudre"), {Substance("ISPAGHUL (T\xC9GUMENT DE LA GRAINE D') (POUDRE DE)", "3 g")}).ligne->libelle,
              "POUDRE DE ISPAGHUL (T\xC9GUMENT DE LA GRAINE D') 3 g, poudre");
    // A dosage for a measure carries it; for a unit, not.
    EXPECT_EQ(Ligne(Forme("solution buvable"), {Substance("OXOM\xC9MAZINE", "33 mg", "SA", "1", "100 ml de solution")})
                  .ligne->libelle,
              "OXOM\xC9MAZINE 33 mg/100 ml, solution buvable");
    EXPECT_EQ(Ligne(Forme("solution injectable"), {Substance("M\xC9THOTREXATE", "25 mg", "SA", "1", "1 ml")}).ligne->libelle,
              "M\xC9THOTREXATE 25 mg/ml, solution injectable");
    EXPECT_EQ(Ligne(Forme("solution injectable"), {Substance("X", "25 mg", "SA", "1", "une ampoule de 2 ml")}).ligne->libelle,
              "X 25 mg, solution injectable");
}

TEST(LignesDC, OneLineForWhatAPrescriberCannotTellApart) {
    const auto doliprane = Ligne(Forme("comprim\xE9"), {Substance("PARAC\xC9TAMOL", "1000 mg")});
    const auto generique = Ligne(Forme("comprim\xE9 pellicul\xE9"), {Substance("PARAC\xC9TAMOL", "1 g")});
    const auto effervescent = Ligne(Forme("comprim\xE9 effervescent(e)"), {Substance("PARAC\xC9TAMOL", "1000 mg")});
    const auto rectal = Ligne(Forme("comprim\xE9", {"rectale"}), {Substance("PARAC\xC9TAMOL", "1000 mg")});
    EXPECT_EQ(doliprane.ligne->cle, generique.ligne->cle);
    EXPECT_NE(doliprane.ligne->cle, effervescent.ligne->cle);
    EXPECT_NE(doliprane.ligne->cle, rectal.ligne->cle);
    // The order of the routes or of the components changes nothing.
    EXPECT_EQ(Ligne(Forme("comprim\xE9", {"orale", "sublinguale"}), {Substance("A", "1 mg"), Substance("B", "2 mg", "SA", "2")}).ligne->cle,
              Ligne(Forme("comprim\xE9", {"sublinguale", "orale"}), {Substance("B", "2 mg", "SA", "2"), Substance("A", "1 mg")}).ligne->cle);
}

TEST(LignesDC, SpecialitiesWithoutALineAreToldWhy) {
    Specialite homeo = Forme("granules");
    homeo.procedure = "Enreg hom\xE9o (Proc. Nat.)";
    EXPECT_EQ(Ligne(homeo, {Substance("ARNICA", "5 mg")}).motif, SansLigne::Homeopathie);
    EXPECT_EQ(Ligne(Forme("granules"), {Substance("ARNICA MONTANA", "2 CH \xE0 30CH")}).motif, SansLigne::Homeopathie);
    EXPECT_EQ(Ligne(Forme("comprim\xE9"), {Substance("A", "1 mg"), Substance("B", "")}).motif, SansLigne::SansDosage);
    EXPECT_FALSE(Ligne(Forme("comprim\xE9"), {Substance("A", "1 mg"), Substance("B", "")}).ligne);
    Composant autre = Substance("B", "2 mg", "SA", "2");
    autre.element = "g\xE9lule";
    EXPECT_EQ(Ligne(Forme("comprim\xE9 et g\xE9lule"), {Substance("A", "1 mg"), autre}).motif, SansLigne::PlusieursElements);
    EXPECT_EQ(Ligne(Forme("comprim\xE9"), {}).motif, SansLigne::SansSubstance);
}

TEST(LignesDC, CodesStayWhateverTheOtherLines) {
    std::set<std::string> cles;
    for (int i = 0; i < 5000; ++i) cles.insert("ORALE;|COMPRIME|SUBSTANCE " + std::to_string(i * 7919 % 100003) + "=1 MG|");
    const auto codes = CodesLignesDC(cles);
    std::set<std::string> vus;
    for (const auto& [cle, code] : codes) {
        EXPECT_TRUE(code.size() == 7 && code[0] == ChiffreLigneDC && code.find_first_not_of("0123456789") == std::string::npos) << code;
        vus.insert(code);
    }
    EXPECT_EQ(vus.size(), cles.size());
    // A key keeps the code it has alone unless another key's hash took it
    // first; of two keys of one hash the first in byte order keeps it, the
    // other takes the next free code.
    std::map<std::string, std::vector<std::string>> parCode;
    for (const std::string& cle : cles) parCode[CodesLignesDC({cle}).at(cle)].push_back(cle);
    size_t collisions = 0;
    for (const auto& [seul, meme] : parCode) {
        if (meme.size() < 2) continue;
        ++collisions;
        const auto paire = CodesLignesDC({meme[0], meme[1]});
        EXPECT_EQ(paire.at(std::min(meme[0], meme[1])), seul);
        EXPECT_NE(paire.at(std::max(meme[0], meme[1])), seul);
    }
    EXPECT_GT(collisions, 0u) << "5000 keys in a million codes meet";
    // Half the keys: those that kept their own code keep it.
    std::set<std::string> moitie;
    for (const std::string& cle : cles)
        if (cle.size() % 2 == 0) moitie.insert(cle);
    const auto codesMoitie = CodesLignesDC(moitie);
    for (const std::string& cle : moitie) {
        if (codes.at(cle) == CodesLignesDC({cle}).at(cle)) {
            EXPECT_EQ(codesMoitie.at(cle), codes.at(cle)) << cle;
        }
    }
}

}  // namespace
}  // namespace vdx::import
