// What an import writes of the posology: the vocabularies the codes of a
// posology refer to, from the hand-kept tables, and the routes named by the
// medicine database. The public data hold no posology, terrain or limit:
// those tables stay empty.
#include <set>

#include "posology/vocabulaire.h"
#include "tools/vdx/import_base.h"
#include "tools/vdx/import_codes.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

void EcritMots(const char* table, const std::vector<MotPosologie>& mots, Sortie& sortie) {
    for (const MotPosologie& m : mots) sortie.Ajoute(table, {{"Code", std::to_string(m.code)}, {"Libelle", m.libelle}});
}

}  // namespace

void EcritPosologie(const Bdpm& bdpm, Sortie& sortie) {
    EcritMots("VDXPDUR", PeriodesPosologie(), sortie);
    for (const FacteurPeriodes& f : FacteursPeriodes())
        sortie.Ajoute("VDXPDURC",
                      {{"Cle", CodeDureeSurTrois(f.de) + CodeDureeSurTrois(f.vers)}, {"Facteur", TexteNombre(f.facteur)}});
    for (const MomentPosologie& m : MomentsPosologie())
        sortie.Ajoute("VDXPMOM", {{"Code", std::to_string(m.code)},
                                  {"Libelle", m.libelle},
                                  {"Multiplicateur", TexteNombre(m.multiplicateur)}});
    EcritMots("VDXPSPE", SpecificationsPosologie(), sortie);
    EcritMots("VDXPNAT", NaturesPosologie(), sortie);
    for (const ProfilPosologie& p : ProfilsPosologie())
        sortie.Ajoute("VDXPPRO", {{"Code", std::to_string(p.code)},
                                  {"Libelle", p.libelle},
                                  {"TypeProfil", std::to_string(p.type)},
                                  {"ValeurProfil", p.valeur}});
    // The routes of the whole database numbered in the order of their folded
    // names, each told by its first spelling in that order, so that a code
    // stays the same whatever an import selects.
    std::map<std::string, std::string> voies;
    for (const Specialite& s : bdpm.specialites)
        for (const std::string& v : s.voies) {
            std::string& libelle = voies[Plie(v)];
            if (libelle.empty() || v < libelle) libelle = v;
        }
    int code = 0;
    for (const auto& [plie, libelle] : voies)
        sortie.Ajoute("VDXPVOI", {{"Code", std::to_string(++code)}, {"Libelle", libelle}});
}

}  // namespace vdx::import
