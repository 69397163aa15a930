#include "tools/vdx/import.h"

#include <algorithm>

#include "tools/vdx/import_base.h"
#include "tools/vdx/import_texte.h"

namespace vdx::import {
namespace {

// "2016-08" of a directory named "interactions-2016-08".
std::string AnneeMois(const std::filesystem::path& dossier) {
    std::string nom = std::filesystem::absolute(dossier).lexically_normal().filename().string();
    if (nom.empty()) nom = std::filesystem::absolute(dossier).lexically_normal().parent_path().filename().string();
    return nom.size() >= 7 ? nom.substr(nom.size() - 7) : "";
}

// The presentations that hold a name of the medicine database near a
// thesaurus name that matched nothing: what the matching may have missed.
size_t PresentationsProches(const Bdpm& bdpm, const RapportImport& rapport) {
    std::set<std::string> proches;
    for (const auto& n : rapport.nomsSansSubstance) proches.insert(n.proches.begin(), n.proches.end());
    std::set<std::string> specialites;
    for (const Composant& c : bdpm.composants)
        if (proches.count(Plie(c.nom))) specialites.insert(c.cis);
    return static_cast<size_t>(std::ranges::count_if(bdpm.presentations, [&](const Presentation& p) { return specialites.count(p.cis) > 0; }));
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
    EcritAllergies(thesaurus, substances, selection, sortie);
    EcritVigilance(bdpm, thesaurus, substances, selection, sortie);
    EcritPosologie(bdpm, sortie);
    EcritDocuments(bdpm, selection, sortie);
    EcritLignesDC(bdpm, selection, sortie, rapport);
    EcritInteractions(thesaurus, substances, selection, AnneeMois(options.thesaurus), sortie, journal, rapport);
    if (journal.Rejets() && !options.continuer) {
        std::string motifs;
        for (const std::string& r : journal.Resume()) motifs += "\n  " + r;
        throw ErreurImport(std::to_string(journal.Rejets()) + " line(s) left out, no source written (--keep-going writes them all the same):" + motifs);
    }
    sortie.Ecrit(options.sources);
    rapport.presentationsProches = PresentationsProches(bdpm, rapport);

    rapport.comptes = sortie.Comptes();
    rapport.rejets = journal.Resume();
    rapport.lignesRejetees = journal.Rejets();
    return rapport;
}

}  // namespace vdx::import
