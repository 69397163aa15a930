// Names of substances compared across sources: the medicine database names
// a salt in several ways ("SODIUM (VALPROATE DE)", "VALPROATE DE SODIUM",
// "VALPROATE SODIQUE"), a mineral salt by its anion ("CARBONATE DE
// CALCIUM"), a plant by the part and the extract ("MILLEPERTUIS (EXTRAIT SEC
// DE)"); the interaction thesaurus names the molecule, the acid, the element
// or the plant, upper case without accents.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vdx::import {

// The molecule a folded name stands for, its salt, hydration and "base"
// words taken away; the name itself when nothing would be left.
std::string NomSansSel(std::string_view nomPlie);

// The keys of a folded name, each in its loose spelling (a final S or E of
// a word and the hyphens inside one aside, so that ALISKIRENE meets
// ALISKIREN).
struct ClesNom {
    // The name itself however written: its brackets turned round, its
    // qualities (hydrates, "BASE", "ELEMENT"...) left out, a salt's cation
    // as a word or as an adjective.
    std::set<std::string> propres;
    // What it holds: the molecule of a salt or an ester, the acid of a
    // "XATE" of a cation ("ACIDE XIQUE"), the element of a mineral salt
    // (CARBONATE DE CALCIUM holds CALCIUM, LOSARTAN POTASSIQUE holds no
    // potassium), the plant of an extract. None for a homeopathic stock.
    std::set<std::string> contenus;
};
ClesNom Cles(std::string_view nomPlie);

// Whether `base` names the substance `sel` is a form of ("RANITIDINE BASE"
// of "RANITIDINE (CHLORHYDRATE DE)"), not only what it is expressed as
// ("IODE" of "IOPAMIDOL").
bool EstSaBase(std::string_view sel, std::string_view base);

// The substances of the medicine database by the keys of their names.
class IndexNoms {
public:
    // Files a spelling of substance `code`; every spelling of a code is filed.
    void Ajoute(int code, std::string_view nom);
    // The substances a thesaurus name stands for: those that are the name or
    // hold it (by its own keys, or those of the name it is known under in
    // the medicine database); failing those, the names that begin with it
    // as whole words ("INSULINE" for "INSULINE GLULISINE", "INTERFERON
    // ALFA" for "INTERFERON ALFA-2A", not "SODIUM" for "SODIUM (OXYBATE
    // DE)"). A name of salt words alone ("SELS") stands for nothing.
    std::set<int> Cherche(std::string_view nom) const;
    // At most `n` published names nearest a name that matched nothing:
    // those sharing the beginning of one of its words, longest shared
    // beginning first.
    std::vector<std::string> Proches(std::string_view nom, size_t n) const;

private:
    std::map<std::string, std::set<int>> parCle_;
    std::map<std::string, std::set<int>> parNomPublie_;  // the folded names alone
};

}  // namespace vdx::import
