// For the platform's tests: a fresh directory that stands as the user's
// runtime directory (XDG_RUNTIME_DIR) for the life of the object.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/fichiers.h"

namespace vdx::test {

class VariableEnv {
public:
    explicit VariableEnv(const char* nom) : nom_(nom) {
        if (const char* v = ::getenv(nom)) ancienne_ = v;
    }
    ~VariableEnv() {
        if (ancienne_) Pose(*ancienne_);
        else Enleve();
    }
#ifdef _WIN32
    void Pose(const std::string& valeur) { ::_putenv_s(nom_, valeur.c_str()); }
    void Enleve() { ::_putenv_s(nom_, ""); }
#else
    void Pose(const std::string& valeur) { ::setenv(nom_, valeur.c_str(), 1); }
    void Enleve() { ::unsetenv(nom_); }
#endif

private:
    const char* nom_;
    std::optional<std::string> ancienne_;
};

class RepertoireExecutionTemporaire {
public:
    RepertoireExecutionTemporaire() : xdg_("XDG_RUNTIME_DIR") {
        std::string modele = (std::filesystem::temp_directory_path() / "vdx-plat-XXXXXX").string();
        if (!systeme::CreeDossierUnique(modele)) throw std::runtime_error("mkdtemp: " + modele);
        chemin_ = modele;
        xdg_.Pose(chemin_);
    }
    ~RepertoireExecutionTemporaire() {
        std::error_code ignoree;
        std::filesystem::remove_all(chemin_, ignoree);
    }
    const std::string& chemin() const { return chemin_; }
    std::string operator/(const std::string& nom) const { return chemin_ + "/" + nom; }

private:
    VariableEnv xdg_;
    std::string chemin_;
};

}  // namespace vdx::test
