#include "platform/notices.h"

#include <string>

#include "platform/notices_systeme.h"

namespace vdx {

namespace {

GestionnaireBoite gestionnaireBoite = nullptr;
void* contexteBoite = nullptr;
GestionnaireProgression gestionnaireProgression = nullptr;
void* contexteProgression = nullptr;

class NoticesParDefaut : public Notices {
public:
    void BoiteMessage(std::string_view texte, std::string_view titre, int32_t style) override {
        if (gestionnaireBoite) {
            std::string t(texte), ti(titre);
            gestionnaireBoite(contexteBoite, t.c_str(), ti.c_str(), style);
            return;
        }
        systeme::MontreBoite(texte, titre, style);
    }

    bool AgentPresent(std::string_view nom) override { return systeme::AgentPresent(nom); }
    void NotifieAgent(std::string_view nom, std::string_view texte) override { systeme::NotifieAgent(nom, texte); }

    void Progression(int32_t fait, int32_t total, std::string_view libelle) override {
        if (!gestionnaireProgression) return;
        std::string l(libelle);
        gestionnaireProgression(contexteProgression, fait, total, l.c_str());
    }
};

NoticesParDefaut noticesParDefaut;
Notices* noticesInstallees = nullptr;

}  // namespace

Notices& notices() {
    return noticesInstallees ? *noticesInstallees : noticesParDefaut;
}

void InstalleNotices(Notices* n) {
    noticesInstallees = n;
}

void InstalleGestionnaireBoite(GestionnaireBoite f, void* contexte) {
    gestionnaireBoite = f;
    contexteBoite = f ? contexte : nullptr;
}

void InstalleGestionnaireProgression(GestionnaireProgression f, void* contexte) {
    gestionnaireProgression = f;
    contexteProgression = f ? contexte : nullptr;
}

}  // namespace vdx
