#include "tools/vdx/import.h"

#include "tools/vdx/import_base.h"

namespace vdx::import {
namespace {

// "2016-08" of a directory named "interactions-2016-08".
std::string AnneeMois(const std::filesystem::path& dossier) {
    std::string nom = std::filesystem::absolute(dossier).lexically_normal().filename().string();
    if (nom.empty()) nom = std::filesystem::absolute(dossier).lexically_normal().parent_path().filename().string();
    return nom.size() >= 7 ? nom.substr(nom.size() - 7) : "";
}

}  // namespace

RapportImport Importe(const OptionsImport& options) {
    RapportImport rapport;
    Journal journal;
    const Bdpm bdpm = LitBdpm(options.bdpm, journal);
    const Thesaurus thesaurus = LitThesaurus(options.thesaurus, journal);

    const Substances substances = NumeroteSubstances(bdpm.composants);
    const Selection selection = Selectionne(bdpm, substances, options.filtre, rapport.filtreSansSubstance);
    Sortie sortie;
    EcritProduits(bdpm, selection, sortie, journal);
    EcritComposition(bdpm, substances, selection, sortie);
    EcritInteractions(thesaurus, substances, selection, AnneeMois(options.thesaurus), sortie, journal, rapport);
    sortie.Ecrit(options.sources);

    rapport.comptes = sortie.Comptes();
    rapport.rejets = journal.Resume();
    rapport.lignesRejetees = journal.Rejets();
    return rapport;
}

}  // namespace vdx::import
