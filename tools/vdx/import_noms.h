// Names of substances compared across sources: the medicine database names
// a salt ("CHLORHYDRATE DE RANITIDINE", "RANITIDINE (CHLORHYDRATE DE)",
// "WARFARINE SODIQUE"), the interaction thesaurus the molecule, upper case
// without accents.
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

// The base substances by the forms of their names.
class IndexNoms {
public:
    void Ajoute(int code, std::string_view nom);
    // The substances a name stands for: those of the same folded name, or of
    // the same molecule; for a name with a bracket ("X (ET, PAR
    // EXTRAPOLATION, Y)") the part before it too; and the final E of a word
    // aside ("BUPROPION"). Failing those, the names that begin with its
    // molecule as words, a bracket excepted ("INSULINE" for "INSULINE
    // GLULISINE", not "SODIUM" for "SODIUM (OXYBATE DE)"). Empty when none.
    std::set<int> Cherche(std::string_view nom) const;

private:
    std::map<std::string, std::set<int>> parNom_;
    std::map<std::string, std::set<int>> parNomPublie_;  // the folded names alone
};

}  // namespace vdx::import
