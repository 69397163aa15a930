// For the tests of the composition: the small product base of
// essai_produits.h with components, texts of composition, reverse indexes,
// synonyms, a concept, classes and routes. Texts are given in UTF-8.
//
//   2202 PARACÉTAMOL, active in 3000001, 3000003, 3000010, the deleted
//        3000004, the hospital's 3000005, the line by common name 9000001
//        and the unknown 3111111; excipient of 3000001 (also active there)
//        and of 3000002. Synonyms: 2203 ACÉTAMINOPHÈNE (active in 3000015)
//        and the concept 35000, whose component 1099 is active in 3000007.
//   30000 active in 3000008; the concept 30001 (component 1099) has a key
//        of its own in VDXVPAP, for 3000009, that must not be read.
//   99999, a concept too (component 2203); its own key in VDXVPAP, for
//        3000009, is not read either. 7001 LACTOSE, excipient of 3000002
//        and 3000006.
#pragma once

#include "tests/support/essai_produits.h"

namespace vdx::essai {

inline void RemplitComposition(BaseDeTest& b) {
    RemplitProduits(b);
    b.Ajoute("VDXVPA", {{"CodeSubstance", 2202}, {"Libelle", "PARACÉTAMOL"}})
        .Ajoute("VDXVPA", {{"CodeSubstance", 2203}, {"Libelle", "ACÉTAMINOPHÈNE"}})
        .Ajoute("VDXVPA", {{"CodeSubstance", 1099}, {"Libelle", "SULFATE DE MORPHINE"}})
        .Ajoute("VDXVEXC", {{"CodeSubstance", 7001}, {"Libelle", "LACTOSE"}, {"LibelleEEN", "LACTOSE"}})
        .Ajoute("VDXVPAU", {{"Code", 1}, {"LibelleUnite", "mg"}})
        .Ajoute("VDXVPAE", {{"Code", 1}, {"LibelleExprime", "un comprimé"}})
        .Ajoute("VDXVPAE", {{"Code", 2}, {"LibelleExprime", "une gélule"}});

    // Only the first byte of CodeExprime is read: 257 is the basis 1.
    b.Ajoute("VDXVCOMG", {{"CodeCIP", "3000001"}, {"CodeExprime", 257},
                          {"TexteComposition", "Paracétamol 500 mg pour un comprimé"}});
    b.Ajoute("VDXVCOMP", {{"CodeCIP", "3000001"}, {"Rang", "001"}, {"CodeSubstance", 2202},
                          {"QuantiteTexte", "500 mg"}, {"Quantite", 500.0}, {"CodeUnite", 1}});
    b.Ajoute("VDXVCOMP", {{"CodeCIP", "3000001"}, {"Rang", "002"}, {"CodeSubstance", 4242}, {"CodeUnite", 9}});
    // A text and no component; the next key is another product's.
    b.Ajoute("VDXVCOMG", {{"CodeCIP", "3000002"}, {"CodeExprime", 1}, {"TexteComposition", "Paracétamol 1 g"}});
    // A record of four bytes: no text.
    b.Ajoute("VDXVCOMG", {{"CodeCIP", "3000003"}, {"CodeExprime", 2}});
    b.Ajoute("VDXVCOMP", {{"CodeCIP", "3000003"}, {"Rang", "001"}, {"CodeSubstance", 1099},
                          {"QuantiteTexte", "0,5 mg"}, {"Quantite", 0.5}, {"CodeUnite", 1}});
    // A text and no key at or above the code.
    b.Ajoute("VDXVCOMG", {{"CodeCIP", "3900000"}, {"CodeExprime", 1}, {"TexteComposition", "Rien"}});

    const auto actif = [&b](const char* substance, const char* cip) {
        b.Ajoute("VDXVPAP", {{"CodeSubstance", substance}, {"CodeCIP", cip}});
    };
    for (const char* cip : {"3000001", "3000003", "3000010", "3000004", "3000005", "9000001", "3111111"})
        actif("02202", cip);
    actif("02203", "3000015");
    actif("01099", "3000007");
    actif("30000", "3000008");
    actif("30001", "3000009");
    actif("99999", "3000009");
    for (auto [substance, cip] : {std::pair{"02202", "3000001"}, {"02202", "3000002"}, {"07001", "3000002"},
                                  {"07001", "3000006"}})
        b.Ajoute("VDXVEXCP", {{"CodeSubstance", substance}, {"CodeCIP", cip}});
    b.Ajoute("VDXWSYNC", {{"CodeSubstance", 2202}, {"CodeSynonyme", 2203}})
        .Ajoute("VDXWSYNC", {{"CodeSubstance", 2202}, {"CodeSynonyme", 35000}})
        .Ajoute("VDXWCCCO", {{"CodeConcept", 35000}, {"CodeComposant", 1099}})
        .Ajoute("VDXWCCCO", {{"CodeConcept", 30001}, {"CodeComposant", 1099}})
        .Ajoute("VDXWCCCO", {{"CodeConcept", 99999}, {"CodeComposant", 2203}});

    b.Ajoute("VDXCLA", {{"CodeClasse", "A01"}, {"Libelle", "Antalgiques"}, {"LibelleCle", "ANTALGIQUES"}})
        .Ajoute("VDXCLA", {{"CodeClasse", "A01B"}, {"Libelle", "Antalgiques non opiacés"},
                           {"LibelleCle", "ANTALGIQUES NON OPIACES"}})
        .Ajoute("VDXCLAP", {{"CodeClasse", "A01B"}, {"CodeCIP", "3000001"}})
        .Ajoute("VDXCLAP", {{"CodeClasse", "Z99"}, {"CodeCIP", "3000001"}})
        .Ajoute("VDXCLAP", {{"CodeClasse", "A01"}, {"CodeCIP", "3000007"}});

    b.Ajoute("VDXIDVOI", {{"CodeVoie", "ORAL"}, {"Libelle", "Voie orale"}})
        .Ajoute("VDXIDPVO", {{"CodeCIP", "3000001"}, {"CodeVoie", "ORAL"}})
        .Ajoute("VDXIDPVO", {{"CodeCIP", "3000001"}, {"CodeVoie", "RECT"}});
}

}  // namespace vdx::essai
