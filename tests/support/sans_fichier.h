// For the tests of a missing file: a base of the identity and what a test
// adds, one of its files removed, connected in memory mode for the life of
// the object and disconnected after.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/notices.h"
#include "session/session.h"
#include "store/fixture.h"
#include "store/magasin.h"
#include "tests/support/identite.h"
#include "vdx32/vdx32.h"

namespace vdx::essai {

class ConnexionSansFichier {
public:
    explicit ConnexionSansFichier(const char* fichier, const std::function<void(BaseDeTest&)>& remplit = {}) {
        AjouteIdentite(base_);
        if (remplit) remplit(base_);
        const std::string chemin = base_.Repertoire() + "/" + fichier;
        magasin::MarqueRemplace(chemin.c_str());
        std::filesystem::remove(chemin);
        DeConnection2_Vdx();
        RemetSession();
        connecte_ = Connection_Vdx(base_.Repertoire().c_str(), ModeMemoire, 0) == 1;
    }
    ~ConnexionSansFichier() {
        DeConnection2_Vdx();
        RemetSession();
    }
    ConnexionSansFichier(const ConnexionSansFichier&) = delete;
    ConnexionSansFichier& operator=(const ConnexionSansFichier&) = delete;

    bool Connecte() const { return connecte_; }
    const std::string& Repertoire() { return base_.Repertoire(); }

private:
    NoticesMemorisees notices_;
    NoticesEnPlace enPlace_{notices_};
    BaseDeTest base_;
    bool connecte_ = false;
};

}  // namespace vdx::essai
