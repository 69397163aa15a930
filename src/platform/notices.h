// Notices to the person at the host: message boxes, the agent notification
// and the update's progress display. All go through one small interface;
// the default one writes message boxes to standard error, tests install
// their own, and a host can install a message-box handler of its own.
//
// The default notices on Windows: MessageBoxA without owner; the agent is
// the window titled `nom` (FindWindowExA), sent the text by SendMessageA
// WM_COPYDATA, dwData 3. On Linux:
// - BoiteMessage: the host's handler if one is installed; otherwise one line
//   on standard error, "titre: texte" in UTF-8, the title without its
//   surrounding blanks, each run of line breaks of the text shown as " / ".
// - AgentPresent(nom): a socket file named `nom` stands in the user's runtime
//   directory (hote::RepertoireExecution(): $XDG_RUNTIME_DIR, else $TMPDIR,
//   else /tmp).
// - NotifieAgent(nom, texte): the bytes of the text (code page 1252, no
//   terminator: what the Windows agent gets as lpData of WM_COPYDATA, dwData
//   3) sent as one datagram to that socket, without blocking; if the agent's
//   socket is a stream socket, over one non-blocking connection instead.
//   Silent on every failure, and when there is no agent.
// - Progression: the host's callback if one is installed; otherwise nothing.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "vdx32/vdx32.h"

namespace vdx {

// Styles of message box, as the Windows API numbers them.
inline constexpr int32_t StyleSimple = 0;
inline constexpr int32_t StyleExclamation = 48;

class Notices {
public:
    virtual ~Notices() = default;
    // Texts in code page 1252.
    virtual void BoiteMessage(std::string_view texte, std::string_view titre, int32_t style) = 0;
    // Whether an agent window titled `nom` is there to be notified.
    virtual bool AgentPresent(std::string_view nom) = 0;
    virtual void NotifieAgent(std::string_view nom, std::string_view texte) = 0;
    virtual void Progression(int32_t fait, int32_t total, std::string_view libelle) = 0;
};

// The notices in force; never null.
Notices& notices();
// Installs other notices (null restores the default). Not owned.
void InstalleNotices(Notices* n);

// A host's message-box handler and progress callback, used by the default notices.
//
// The message-box handler is called, on the thread of the export, for every
// message box the library would show, instead of the line on standard
// error: `texte` and `titre` are NUL-terminated texts in code page 1252,
// valid for the call only; `style` is the Windows MessageBox style (0 plain,
// 48 exclamation). Its result, like MessageBox's, is ignored. It must not
// call the library's exports. The progress callback is called likewise with
// the work done out of `total` and a label in code page 1252. `contexte` is
// handed back as given. A null function removes the handler.
using GestionnaireBoite = VdxBoiteMessage;
using GestionnaireProgression = VdxProgression;
void InstalleGestionnaireBoite(GestionnaireBoite f, void* contexte);
void InstalleGestionnaireProgression(GestionnaireProgression f, void* contexte);

// Notices that keep what they are given, for tests and for programs that
// want to show things their own way. Agents in `agents` are present; each
// notification is kept whether or not its agent is.
class NoticesMemorisees : public Notices {
public:
    struct Boite {
        std::string texte, titre;
        int32_t style;
    };
    struct Notification {
        std::string nom, texte;
    };
    struct Etape {
        int32_t fait, total;
        std::string libelle;
    };

    void BoiteMessage(std::string_view texte, std::string_view titre, int32_t style) override {
        boites.push_back({std::string(texte), std::string(titre), style});
    }
    bool AgentPresent(std::string_view nom) override { return agents.count(std::string(nom)) != 0; }
    void NotifieAgent(std::string_view nom, std::string_view texte) override {
        notifications.push_back({std::string(nom), std::string(texte)});
    }
    void Progression(int32_t fait, int32_t total, std::string_view libelle) override {
        etapes.push_back({fait, total, std::string(libelle)});
    }

    std::vector<Boite> boites;
    std::vector<Notification> notifications;
    std::vector<Etape> etapes;
    std::set<std::string> agents;
};

// Installs notices for the life of a scope, then puts back those that were
// in force before.
class NoticesEnPlace {
public:
    explicit NoticesEnPlace(Notices& n) : precedentes_(&notices()) { InstalleNotices(&n); }
    ~NoticesEnPlace() { InstalleNotices(precedentes_); }
    NoticesEnPlace(const NoticesEnPlace&) = delete;
    NoticesEnPlace& operator=(const NoticesEnPlace&) = delete;

private:
    Notices* precedentes_;
};

}  // namespace vdx
