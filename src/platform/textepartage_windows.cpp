// The shared text slot on Windows: the clipboard, as CF_TEXT. The clipboard
// is held by one program at a time; a busy one is tried again for up to a
// second.
#include <windows.h>

#include <cstring>
#include <string>
#include <system_error>

#include "platform/hote.h"

namespace vdx::hote {

namespace {

[[noreturn]] void Echec(const std::string& quoi) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), quoi);
}

// The clipboard, opened for the life of the object.
class PressePapiers {
public:
    PressePapiers() {
        for (int essai = 0; essai < 100; ++essai) {
            if (OpenClipboard(nullptr)) return;
            Sleep(10);
        }
        Echec("presse-papiers occupe");
    }
    ~PressePapiers() { CloseClipboard(); }
    PressePapiers(const PressePapiers&) = delete;
    PressePapiers& operator=(const PressePapiers&) = delete;
};

}  // namespace

std::string CheminTextePartage() { return "CF_TEXT"; }

void PoseTextePartage(std::string_view texte) {
    // CF_TEXT ends at its first NUL.
    const std::string_view utile = texte.substr(0, texte.find('\0'));
    HGLOBAL bloc = GlobalAlloc(GMEM_MOVEABLE, utile.size() + 1);
    if (!bloc) Echec("presse-papiers: memoire");
    char* octets = static_cast<char*>(GlobalLock(bloc));
    if (!octets) {
        GlobalFree(bloc);
        Echec("presse-papiers: memoire");
    }
    std::memcpy(octets, utile.data(), utile.size());
    octets[utile.size()] = '\0';
    GlobalUnlock(bloc);
    PressePapiers ouvert;
    // Once set, the block belongs to the system.
    if (!EmptyClipboard() || !SetClipboardData(CF_TEXT, bloc)) {
        GlobalFree(bloc);
        Echec("presse-papiers: ecriture");
    }
}

std::string PrendTextePartage() {
    PressePapiers ouvert;
    HANDLE donnees = GetClipboardData(CF_TEXT);
    if (!donnees) return {};
    const char* octets = static_cast<const char*>(GlobalLock(donnees));
    if (!octets) Echec("presse-papiers: lecture");
    const size_t taille = GlobalSize(donnees);
    std::string texte(octets, strnlen(octets, taille));
    GlobalUnlock(donnees);
    return texte;
}

}  // namespace vdx::hote
