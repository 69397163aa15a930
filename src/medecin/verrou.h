// The hold of a doctor's base by one process for an edit, a migration or
// the finishing of what a killed process left: an exclusive lock on the
// shared record of the base's lock file, waited for, released when the
// holder ends however it ends.
#pragma once

#include <memory>
#include <string>

#include "platform/fichiers.h"

namespace vdx::medecin {

inline constexpr char FichierVerrou[] = "MEDECIN.LCK";

class VerrouMedecin {
public:
    // Throws Echec(-500) naming the lock file when it can't be made.
    explicit VerrouMedecin(const std::string& dossier);
    ~VerrouMedecin();
    VerrouMedecin(const VerrouMedecin&) = delete;
    VerrouMedecin& operator=(const VerrouMedecin&) = delete;

private:
    std::unique_ptr<systeme::RecordPartage> record_;
};

}  // namespace vdx::medecin
