// Notices that a test reads back instead of showing them.
#pragma once

#include <string>
#include <vector>

#include "platform/notices.h"

namespace vdx::essai {

struct Boite {
    std::string texte;
    std::string titre;
    int32_t style;
};

class NoticesEssai : public Notices {
public:
    NoticesEssai() { InstalleNotices(this); }
    ~NoticesEssai() override { InstalleNotices(nullptr); }

    void BoiteMessage(std::string_view texte, std::string_view titre, int32_t style) override {
        boites.push_back({std::string(texte), std::string(titre), style});
    }
    bool AgentPresent(std::string_view) override { return agent; }
    void NotifieAgent(std::string_view, std::string_view texte) override { envois.emplace_back(texte); }
    void Progression(int32_t, int32_t, std::string_view) override {}

    std::vector<Boite> boites;
    std::vector<std::string> envois;
    bool agent = false;
};

}  // namespace vdx::essai
