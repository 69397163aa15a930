#include "medecin/verrou.h"

#include <fstream>

#include "session/cadre.h"
#include "session/codes.h"
#include "store/magasin.h"

namespace vdx::medecin {

namespace {
constexpr size_t TailleRecord = 64;
}  // namespace

VerrouMedecin::VerrouMedecin(const std::string& dossier) {
    const std::string chemin = dossier + FichierVerrou;
    std::ofstream(chemin, std::ios::app | std::ios::binary);
    systeme::EtatFichier etat;
    if (systeme::DecritChemin(chemin.c_str(), etat))
        record_ = systeme::RecordPartage::Ouvre(etat.identite, chemin.c_str(), TailleRecord);
    if (!record_ || !record_->Verrouille(0, true, true)) throw Echec{EchecMagasin, magasin::OuvertureImpossible, 0, chemin};
}

VerrouMedecin::~VerrouMedecin() { record_->Deverrouille(0); }

}  // namespace vdx::medecin
