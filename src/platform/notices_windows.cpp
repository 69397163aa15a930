#include "platform/notices_systeme.h"

#include <windows.h>

#include <string>

namespace vdx::systeme {

namespace {

// What WM_COPYDATA's dwData says to the agent: a text to show.
constexpr ULONG_PTR TexteAgent = 3;

HWND FenetreAgent(std::string_view nom) {
    const std::string titre(nom);
    return nom.empty() || titre.find('\0') != std::string::npos ? nullptr
                                                                 : FindWindowExA(nullptr, nullptr, nullptr, titre.c_str());
}

}  // namespace

void MontreBoite(std::string_view texte, std::string_view titre, int32_t style) {
    const std::string t(texte), ti(titre);
    MessageBoxA(nullptr, t.c_str(), ti.c_str(), static_cast<UINT>(style));
}

bool AgentPresent(std::string_view nom) { return FenetreAgent(nom) != nullptr; }

void NotifieAgent(std::string_view nom, std::string_view texte) {
    const HWND agent = FenetreAgent(nom);
    if (!agent) return;
    std::string octets(texte);
    COPYDATASTRUCT donnees{TexteAgent, static_cast<DWORD>(octets.size()), octets.data()};
    SendMessageA(agent, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&donnees));
}

}  // namespace vdx::systeme
