#include "store/layouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace vdx {
namespace {

// Faults of declaration that no single test of a reader would see: a field
// beyond its record, two fields on the same bytes, a key made of a field
// the record does not hold, a key longer than its parts.

TEST(Dispositions, EveryTableOfTheCatalogueHasItsLayout) {
    ASSERT_EQ(Dispositions().size(), Catalogue().size());
    for (const Table& t : Catalogue()) {
        SCOPED_TRACE(t.nom);
        const Disposition& d = DispositionDe(t);
        EXPECT_EQ(d.table, &t);
        EXPECT_EQ(d.cles.size(), t.nombreCles());
        EXPECT_EQ(d.corps == Corps::Fixe, t.genre == Genre::Fixe);
    }
    EXPECT_EQ(DispositionNommee("VDXNUL"), nullptr);
}

TEST(Dispositions, FieldsLieInsideTheirRecordAndDoNotOverlap) {
    for (const Disposition& d : Dispositions()) {
        SCOPED_TRACE(d.table->nom);
        uint32_t fin = 0;
        for (const Champ& c : d.champs) {
            SCOPED_TRACE(c.nom);
            EXPECT_GE(c.decalage, fin);
            fin = c.decalage + c.largeur;
            EXPECT_LE(fin, d.longueur);
            EXPECT_TRUE(c.nature == NatureChamp::Texte || c.largeur == 4);
            EXPECT_TRUE(c.nature == NatureChamp::Texte ? c.largeur >= 1 : !c.plein);
        }
        std::set<std::string> noms;
        for (const Colonne& c : Colonnes(d)) EXPECT_TRUE(noms.insert(c.nom).second) << c.nom;
        EXPECT_EQ(d.parties.empty(), d.corps == Corps::Fixe);
        EXPECT_EQ(d.longueurs.size(), d.corps == Corps::TextesMesures ? d.parties.size() : 0u);
        // The body begins behind the fields of the fixed part.
        if (d.corps == Corps::TexteFinal || d.corps == Corps::OctetsFinal) {
            EXPECT_LE(fin, d.debutCorps);
        }
        if (d.corps == Corps::TextesMesures) {
            EXPECT_EQ(d.debutCorps, d.longueur);
        }
    }
}

TEST(Dispositions, KeysAreMadeOfFieldsOfTheRecordOrOfAnOutsideKey) {
    for (const Disposition& d : Dispositions()) {
        SCOPED_TRACE(d.table->nom);
        if (!d.champsCle.empty()) {
            EXPECT_NE(d.corps, Corps::Fixe);
        }
        for (size_t k = 0; k < d.cles.size(); ++k) {
            SCOPED_TRACE(k);
            const Cle& cle = d.cles[k];
            EXPECT_GE(cle.longueur, 1);
            EXPECT_LE(cle.longueur, 511);
            const std::vector<Champ>& source = k == 0 && !d.champsCle.empty() ? d.champsCle : d.champs;
            uint32_t total = 0;
            for (const PartieCle& p : cle.parties) {
                SCOPED_TRACE(p.champ.nom);
                total += p.longueur;
                EXPECT_TRUE(std::any_of(source.begin(), source.end(), [&](const Champ& c) {
                    return c.decalage == p.champ.decalage && std::string(c.nom) == p.champ.nom;
                }));
                const bool texte = p.champ.nature == NatureChamp::Texte;
                EXPECT_EQ(texte, p.pli == Pli::Majuscules || p.pli == Pli::Libelle ||
                                     (texte && p.pli == Pli::Brut));
                if (!texte && p.pli == Pli::Brut) {
                    EXPECT_EQ(p.longueur, 4);
                }
            }
            EXPECT_LE(total, cle.longueur);
            if (cle.unicite) {
                EXPECT_EQ(cle.unicite->seuil, cle.longueur - 1);
                EXPECT_LE(cle.unicite->libelle.decalage + cle.unicite->seuil, d.longueur - 1);
            }
        }
    }
}

}  // namespace
}  // namespace vdx
